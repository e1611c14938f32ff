#pragma once
// The in-game interface: bars, toasts, prompts, side deck, and one modal panel at a time. A facade: each of these is a
// plain helper in a file of its own.

#include <cstdint>
#include <memory>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/canvas_layer.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/input_event.hpp>
#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/callable.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/vector3.hpp>

#include "game/ports/notices.h"

namespace tilm {
using namespace godot;

class FocusRing;
class HudFrame;
class Joystick;
class MoneyPops;
class PanelHost;
class PromptStack;
class SideDeck;
class ToastLane;
struct PanelForm;

class Hud : public CanvasLayer, public Notices {
    GDCLASS(Hud, CanvasLayer)

public:
    class StarBadge; // star_badge.h

    Hud();
    ~Hud() override;

    static void setup_statics();
    static String start_tab();
    static void set_start_tab(const String &tab);

    void _ready() override;
    void _process(double delta) override;
    void _input(const Ref<InputEvent> &event) override;

    // The frame's operations, used by every system.
    void toast(const String &text, int level = 0); // 0 plain, 1 good, 2 warning, 3 refusal
    void _open_panel(const String &title, const Array &tabs, const String &tab, const Callable &on_tab,
                     const Callable &fill);
    void close_panel();
    void refresh_panel();
    bool panel_open() const;
    // Keys and pad walk a panel or the bars, not the farmer.
    bool keys_taken() const { return panel_open() || bar_keys; }
    VBoxContainer *content() const; // of the open panel, null without one
    void _prompt(const String &key, const String &title, const String &sub, const String &yes, const Callable &on_yes,
                 const Callable &on_no, const Dictionary &options);
    void remove_prompt(const String &key);
    void fly_money(int64_t amount, const Vector3 &from) override;
    void notice(const String &text, ToastLevel level) override;

    // What the farm shows on the bars.
    void set_money(int64_t amount);
    void set_gold(int64_t eggs);
    void set_level_line(int level, int percent);
    void set_mood(double mood); // mean happiness, 0 .. 1; negative hides the chip
    // Empty text hides the strip; `picture` is a key of Icons, "" for a flag.
    void set_next_goal(const String &text, int64_t have, int64_t need, const String &picture = String());
    void show_hint(bool on); // "DRAG TO MOVE"; ends for good once the player has walked
    Joystick *joystick() const { return stick; }

    // The frame's parts; null where there is none.
    Control *get_overlay() const;
    Control *get_panel_box() const;
    Control *get_lane() const;
    int64_t get_waiting() const;
    Control *get_prompts() const;
    bool get_deck_open() const;

    // Side buttons: a system that exists offers its panel under FRIENDS, BOOST, STYLE, DECOR or GOALS.
    void offer_panel(const String &name, const Callable &open);
    bool open_offered(const String &name); // false: not offered
    void toggle_deck();

    // A keyboard or a pad walks the bars, the deck and the prompts: TAB, or BACK of a pad; again, or ESC, to leave.
    void walk_bars(bool on);

    void _show_pause();
    void _show_build(); // what can be bought now
    void _fill_build();
    void _show_decor(); // garden decorations
    void _fill_decor();
    void _show_how_to();
    // The pay of an absence, once it has been paid: told with a button that only closes.
    void show_offline(int64_t seconds, int64_t paid);
    void show_victory(int64_t level, int64_t money);
    void _fill_pause();
    void _fill_how_to();

    // Each emits the signal of the same name; zoom_pressed(step) also keeps the next step in the settings.
    void home_pressed();
    void save_pressed();
    void zoom_pressed();
    void _relayout();

protected:
    static void _bind_methods();
    void _notification(int what);

private:
    void watch(uint64_t (*state)());
    void open_form(const String &title, const Array &tabs, const String &tab, const Callable &on_tab,
                   const Callable &fill, const PanelForm &form);
    void set_setting(const char *key, const Variant &value);
    void read_keys(const Ref<InputEvent> &event);
    void read_pad();
    void step_watched(double delta);

    std::unique_ptr<HudFrame> frame;
    std::unique_ptr<ToastLane> toasts;
    std::unique_ptr<PromptStack> prompts;
    std::unique_ptr<PanelHost> panels;
    std::unique_ptr<SideDeck> deck;
    std::unique_ptr<MoneyPops> pops;
    std::unique_ptr<FocusRing> ring;
    Joystick *stick = nullptr;
    Control *root = nullptr;
    bool finger_down = false;
    bool refresh_pending = false;
    bool paused_by_panel = false;
    bool bar_keys = false;
    bool pad_start = false; // held in the last frame
    bool pad_back = false;
    // Of an open panel that follows the money: what it shows, as a number. Null for any other.
    uint64_t (*watched)() = nullptr;
    double watch_timer = 0.0;
    uint64_t watched_state = 0;
};

} // namespace tilm
