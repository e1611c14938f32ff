#pragma once
// The bars of the farm screen: money and golden eggs, pause, zoom, happiness, level line, next goal, walking hint.

#include <cstdint>

#include <godot_cpp/classes/box_container.hpp>
#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/panel.hpp>
#include <godot_cpp/classes/panel_container.hpp>
#include <godot_cpp/classes/texture_rect.hpp>
#include <godot_cpp/classes/v_box_container.hpp>

#include "game/interface/star_badge.h"

namespace tilm {
using namespace godot;

class HudFrame {
public:
    HudFrame(Hud *hud, Control *root);

    void set_money(int64_t amount);
    void set_gold(int64_t eggs);
    void set_level_line(int level, int percent);
    void set_mood(double mood);
    void set_next_goal(const String &text, int64_t have, int64_t need, const String &picture);
    void show_hint(bool on);
    bool hint_shown() const { return hint != nullptr && hint->is_visible(); }
    void step(double delta);
    void relayout(const Vector2 &screen); // after a change of size
    Vector2 money_spot() const;           // where flying money lands, in screen units
    double bars_end() const;              // where the bars of the left end, in units from the top
    void make_way(bool deck_open);        // the side buttons need the room of the next goal
    void bump_money();                    // a small jump of the counter

    VBoxContainer *side() const { return side_box; }
    VBoxContainer *left() const { return left_box; }
    // A place for TASKS and TOP 10: hidden until a system offers its panel; false for any other name.
    bool offer(const String &name, const Callable &open);

private:
    PanelContainer *pill(Control *parent, const Color &color);
    void build_left(Control *root);
    void build_right(Hud *hud, Control *root);
    void build_goal(Hud *hud);
    void build_offers();
    void fit_goal();
    void build_hint(Control *root);
    void write_money();

    struct Place {
        const char *name;
        Button *button = nullptr;
        Callable open;
    };
    Place places[2] = {{"TASKS", nullptr, {}}, {"TOP 10", nullptr, {}}};
    double goal_room = 400.0; // units that the next goal's text may take

    VBoxContainer *left_box = nullptr;
    BoxContainer *wealth = nullptr;
    VBoxContainer *side_box = nullptr;
    PanelContainer *money_pill = nullptr;
    Label *money_label = nullptr;
    PanelContainer *gold_pill = nullptr;
    Label *gold_label = nullptr;
    PanelContainer *level_pill = nullptr;
    Hud::StarBadge *level_star = nullptr;
    Label *level_label = nullptr;
    Panel *level_fill = nullptr;
    PanelContainer *mood_pill = nullptr;
    Label *mood_label = nullptr;
    TextureRect *mood_icon = nullptr;
    PanelContainer *goal_pill = nullptr;
    TextureRect *goal_picture = nullptr;
    Label *goal_label = nullptr;
    Label *goal_count = nullptr;
    Panel *goal_fill = nullptr;
    Control *goal_track = nullptr;
    Control *hint = nullptr;
    Control *hint_hand = nullptr;

    int64_t money = 0;
    double money_shown = 0.0;
    int64_t money_written = -1;
    bool money_known = false;
    double write_wait = 0.0;
    int64_t gold = -1;
    int level = -1;
    int percent = -1;
    bool wide_screen = false;
    bool way_made = false;
    int mood_percent = -2;
    int mood_band = -1; // sad, fair, happy
    String goal_text;
    String goal_key; // of its picture
    int64_t goal_have = -1;
    int64_t goal_need = -1;
    double time = 0.0;
};

} // namespace tilm
