#include "game/interface/hud.h"

#include <cmath>

#include <godot_cpp/classes/camera3d.hpp>
#include <godot_cpp/classes/input.hpp>
#include <godot_cpp/classes/input_event_key.hpp>
#include <godot_cpp/classes/input_event_mouse_button.hpp>
#include <godot_cpp/classes/input_event_screen_touch.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/viewport.hpp>
#include <godot_cpp/core/class_db.hpp>

#include "game/interface/build_panel.h"
#include "game/interface/decor_panel.h"
#include "game/interface/hud_frame.h"
#include "game/interface/joystick.h"
#include "game/interface/milestone_panels.h"
#include "game/interface/money_pops.h"
#include "game/interface/panel_host.h"
#include "game/interface/pause_panel.h"
#include "game/interface/prompt_stack.h"
#include "game/interface/side_deck.h"
#include "game/interface/toast_lane.h"
#include "game/kit/focus_ring.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "game/ports/store.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "statics.h"

namespace tilm {
namespace {

constexpr int translation_changed = 2010;

String *first_tab = nullptr;

void release() {
    delete first_tab;
    first_tab = nullptr;
}

} // namespace

Hud::Hud() {
    set_process_mode(PROCESS_MODE_ALWAYS);
    set_layer(10);
}

Hud::~Hud() {
    if (Notices::current() == this) {
        Notices::set_current(nullptr);
    }
}

void Hud::setup_statics() {
    if (first_tab == nullptr) {
        first_tab = new String("BUY");
    }
    Statics::on_release(&release);
}

String Hud::start_tab() {
    return first_tab != nullptr ? *first_tab : String("BUY");
}

void Hud::set_start_tab(const String &tab) {
    if (first_tab != nullptr) {
        *first_tab = tab;
    }
}

void Hud::_bind_methods() {
    ClassDB::bind_static_method("Hud", D_METHOD("start_tab"), &Hud::start_tab);
    ClassDB::bind_static_method("Hud", D_METHOD("set_start_tab", "tab"), &Hud::set_start_tab);
    ClassDB::bind_method(D_METHOD("toast", "text", "level"), &Hud::toast, DEFVAL(0));
    ClassDB::bind_method(D_METHOD("_open_panel", "title", "tabs", "tab", "on_tab", "fill"), &Hud::_open_panel);
    ClassDB::bind_method(D_METHOD("close_panel"), &Hud::close_panel);
    ClassDB::bind_method(D_METHOD("refresh_panel"), &Hud::refresh_panel);
    ClassDB::bind_method(D_METHOD("panel_open"), &Hud::panel_open);
    ClassDB::bind_method(D_METHOD("panel_content"), &Hud::content);
    ClassDB::bind_method(D_METHOD("_prompt", "key", "title", "sub", "yes", "on_yes", "on_no", "options"), &Hud::_prompt,
                         DEFVAL(Dictionary()));
    ClassDB::bind_method(D_METHOD("remove_prompt", "key"), &Hud::remove_prompt);
    ClassDB::bind_method(D_METHOD("fly_money", "amount", "from"), &Hud::fly_money);
    ClassDB::bind_method(D_METHOD("set_money", "amount"), &Hud::set_money);
    ClassDB::bind_method(D_METHOD("set_gold", "eggs"), &Hud::set_gold);
    ClassDB::bind_method(D_METHOD("set_level_line", "level", "percent"), &Hud::set_level_line);
    ClassDB::bind_method(D_METHOD("set_mood", "mood"), &Hud::set_mood);
    ClassDB::bind_method(D_METHOD("set_next_goal", "text", "have", "need", "picture"), &Hud::set_next_goal,
                         DEFVAL(String()));
    ClassDB::bind_method(D_METHOD("show_hint", "on"), &Hud::show_hint);
    ClassDB::bind_method(D_METHOD("joystick"), &Hud::joystick);
    ClassDB::bind_method(D_METHOD("offer_panel", "name", "open"), &Hud::offer_panel);
    ClassDB::bind_method(D_METHOD("toggle_deck"), &Hud::toggle_deck);
    ClassDB::bind_method(D_METHOD("_show_pause"), &Hud::_show_pause);
    ClassDB::bind_method(D_METHOD("_show_how_to"), &Hud::_show_how_to);
    ClassDB::bind_method(D_METHOD("_show_build"), &Hud::_show_build);
    ClassDB::bind_method(D_METHOD("_fill_build"), &Hud::_fill_build);
    ClassDB::bind_method(D_METHOD("_show_decor"), &Hud::_show_decor);
    ClassDB::bind_method(D_METHOD("_fill_decor"), &Hud::_fill_decor);
    ClassDB::bind_method(D_METHOD("open_offered", "name"), &Hud::open_offered);
    ClassDB::bind_method(D_METHOD("walk_bars", "on"), &Hud::walk_bars);
    ClassDB::bind_method(D_METHOD("get_overlay"), &Hud::get_overlay);
    ClassDB::bind_method(D_METHOD("get_panel_box"), &Hud::get_panel_box);
    ClassDB::bind_method(D_METHOD("get_lane"), &Hud::get_lane);
    ClassDB::bind_method(D_METHOD("get_waiting"), &Hud::get_waiting);
    ClassDB::bind_method(D_METHOD("get_prompts"), &Hud::get_prompts);
    ClassDB::bind_method(D_METHOD("get_deck_open"), &Hud::get_deck_open);
    ClassDB::bind_method(D_METHOD("show_offline", "seconds", "paid"), &Hud::show_offline);
    ClassDB::bind_method(D_METHOD("show_victory", "level", "money"), &Hud::show_victory);
    ClassDB::bind_method(D_METHOD("_fill_pause"), &Hud::_fill_pause);
    ClassDB::bind_method(D_METHOD("_fill_how_to"), &Hud::_fill_how_to);
    ClassDB::bind_method(D_METHOD("home_pressed"), &Hud::home_pressed);
    ClassDB::bind_method(D_METHOD("save_pressed"), &Hud::save_pressed);
    ClassDB::bind_method(D_METHOD("zoom_pressed"), &Hud::zoom_pressed);
    ClassDB::bind_method(D_METHOD("_relayout"), &Hud::_relayout);
    ADD_SIGNAL(MethodInfo("home_pressed"));
    ADD_SIGNAL(MethodInfo("save_pressed"));
    ADD_SIGNAL(MethodInfo("zoom_pressed", PropertyInfo(Variant::INT, "step")));
}

void Hud::_ready() {
    if (in_editor()) {
        return;
    }
    Notices::set_current(this);
    root = memnew(Control);
    root->set_name("Root");
    root->set_theme(UI::theme());
    root->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    add_child(root);
    UI::fill_parent(root);
    UI::mirror(root);

    stick = memnew(Joystick);
    stick->set_name("Joystick");
    root->add_child(stick);
    frame = std::make_unique<HudFrame>(this, root);
    deck = std::make_unique<SideDeck>(this, frame->side());
    deck->on_toggled = [this](bool open) { frame->make_way(open); };
    prompts = std::make_unique<PromptStack>(root);
    pops = std::make_unique<MoneyPops>(root);
    panels = std::make_unique<PanelHost>(root);
    toasts = std::make_unique<ToastLane>(root);
    ring = std::make_unique<FocusRing>(this);
    panels->on_closed = [this] {
        watched = nullptr;
        toasts->make_way(false);
        if (paused_by_panel) {
            paused_by_panel = false;
            if (is_inside_tree()) {
                get_tree()->set_pause(false);
            }
        }
    };
    root->connect(TM_NAME("resized"), Callable(this, TM_NAME("_relayout")));
    _relayout();
    show_hint(true);
}

void Hud::_notification(int what) {
    if (what == translation_changed && root != nullptr) {
        UI::mirror(root);
        _relayout();
        if (toasts) {
            toasts->follow_language();
        }
        if (panels && panels->is_open()) {
            // Texts that were laid out for the other direction are made anew once the press is over.
            call_deferred(TM_NAME("refresh_panel"));
        }
    }
}

void Hud::_relayout() {
    if (!frame) {
        return;
    }
    const Vector2 screen = root->get_size();
    frame->relayout(screen);
    toasts->relayout(screen);
    prompts->relayout(screen);
}

void Hud::_process(double delta) {
    if (!frame) {
        return;
    }
    prompts->step(delta);
    toasts->keep_below(frame->bars_end());
    toasts->step(delta);
    frame->step(delta);
    step_watched(delta);
    read_pad();
    if (frame->hint_shown()) {
        const bool keys =
            Input::get_singleton()
                ->get_vector(TM_NAME("ui_left"), TM_NAME("ui_right"), TM_NAME("ui_up"), TM_NAME("ui_down"))
                .length() > 0.1;
        if (keys || stick->vector().length() > 0.1) {
            set_setting("moved", true);
            frame->show_hint(false);
        }
    }
}

void Hud::_input(const Ref<InputEvent> &event) {
    if (!frame) {
        return;
    }
    ring->see(event);
    bool released = false;
    if (const InputEventScreenTouch *touch = Object::cast_to<InputEventScreenTouch>(event.ptr())) {
        finger_down = touch->is_pressed();
        released = !finger_down;
    } else if (const InputEventMouseButton *button = Object::cast_to<InputEventMouseButton>(event.ptr())) {
        if (button->get_button_index() == MOUSE_BUTTON_LEFT) {
            finger_down = button->is_pressed();
            released = !finger_down;
        }
    }
    if (released && refresh_pending) {
        refresh_pending = false;
        call_deferred(TM_NAME("refresh_panel"));
    }
    if (finger_down && bar_keys) {
        walk_bars(false);
    }
    read_keys(event);
}

void Hud::read_keys(const Ref<InputEvent> &event) {
    const InputEventKey *key = Object::cast_to<InputEventKey>(event.ptr());
    if (key != nullptr && key->is_echo()) {
        return;
    }
    if (event->is_action_pressed(TM_NAME("ui_cancel"))) {
        if (panel_open()) {
            close_panel();
        } else if (bar_keys) {
            walk_bars(false);
        } else if (key != nullptr) {
            _show_pause();
        } else {
            return;
        }
    } else if (key != nullptr && event->is_action_pressed(TM_NAME("ui_focus_next")) && !keys_taken()) {
        walk_bars(true);
    } else if (panel_open() && ring->keys_used() && ring->focused() == nullptr && event->is_pressed()) {
        ring->start(panels->panel_box());
    } else {
        return;
    }
    get_viewport()->set_input_as_handled();
}

void Hud::read_pad() {
    const Input *input = Input::get_singleton();
    const bool start = input->is_joy_button_pressed(0, JOY_BUTTON_START);
    const bool back = input->is_joy_button_pressed(0, JOY_BUTTON_BACK);
    if (start && !pad_start) {
        panel_open() ? close_panel() : _show_pause();
    }
    if (back && !pad_back && !panel_open()) {
        walk_bars(!bar_keys);
    }
    pad_start = start;
    pad_back = back;
}

void Hud::walk_bars(bool on) {
    if (!frame || on == bar_keys || (on && panel_open())) {
        return;
    }
    bar_keys = on;
    for (Node *area : {static_cast<Node *>(prompts->box()), static_cast<Node *>(frame->side()),
                       static_cast<Node *>(frame->left())}) {
        UI::let_focus(area, on);
    }
    if (on) {
        stick->release();
        const bool asked = FocusRing::first_reachable(prompts->box()) != nullptr;
        ring->use_keys();
        ring->start(asked ? static_cast<Node *>(prompts->box()) : static_cast<Node *>(frame->side()));
    }
}

// Money comes in while a list is open: what can be paid now shows at once.
void Hud::step_watched(double delta) {
    constexpr double look_every = 0.4;
    watch_timer -= delta;
    if (watched == nullptr || watch_timer > 0.0) {
        return;
    }
    watch_timer = look_every;
    const uint64_t now = watched();
    if (now != watched_state) {
        watched_state = now;
        refresh_panel();
    }
}

void Hud::watch(uint64_t (*state)()) {
    watched = panel_open() ? state : nullptr;
    watched_state = state();
}

void Hud::toast(const String &text, int level) {
    if (toasts) {
        toasts->add(text, level);
    }
}

void Hud::notice(const String &text, ToastLevel level) {
    toast(text, static_cast<int>(level));
}

void Hud::_open_panel(const String &title, const Array &tabs, const String &tab, const Callable &on_tab,
                      const Callable &fill) {
    open_form(title, tabs, tab, on_tab, fill, PanelForm());
}

void Hud::open_form(const String &title, const Array &tabs, const String &tab, const Callable &on_tab,
                    const Callable &fill, const PanelForm &form) {
    if (!panels) {
        return;
    }
    deck->close();
    walk_bars(false);
    stick->release();
    refresh_pending = false;
    panels->open(title, tabs, tab, on_tab, fill, form);
    toasts->make_way(true);
    ring->start(panels->content());
    if (ring->keys_used() && ring->focused() == nullptr) {
        ring->start(panels->panel_box());
    }
}

void Hud::close_panel() {
    if (panels) {
        panels->close();
    }
}

// While a finger is down the panel stays as it is: no button goes from under a press.
void Hud::refresh_panel() {
    if (!panels || !panels->is_open()) {
        return;
    }
    if (finger_down) {
        refresh_pending = true;
        return;
    }
    panels->refill();
}

bool Hud::panel_open() const {
    return panels && panels->is_open();
}

VBoxContainer *Hud::content() const {
    return panels ? panels->content() : nullptr;
}

void Hud::_prompt(const String &key, const String &title, const String &sub, const String &yes, const Callable &on_yes,
                  const Callable &on_no, const Dictionary &options) {
    if (prompts) {
        prompts->open(key, title, sub, yes, on_yes, on_no, options);
    }
}

void Hud::remove_prompt(const String &key) {
    if (prompts) {
        prompts->remove(key);
    }
}

void Hud::fly_money(int64_t amount, const Vector3 &from) {
    if (!pops || amount == 0) {
        return;
    }
    const Camera3D *camera = get_viewport()->get_camera_3d();
    if (camera == nullptr || camera->is_position_behind(from)) {
        return;
    }
    HudFrame *bars = frame.get();
    pops->fly(amount, camera->unproject_position(from), frame->money_spot(),
              UI::callback(this, [bars] { bars->bump_money(); }));
}

void Hud::set_money(int64_t amount) {
    if (frame) {
        frame->set_money(amount);
    }
}

void Hud::set_gold(int64_t eggs) {
    if (frame) {
        frame->set_gold(eggs);
    }
}

void Hud::set_level_line(int level, int percent) {
    if (frame) {
        frame->set_level_line(level, percent);
    }
}

void Hud::set_mood(double mood) {
    if (frame) {
        frame->set_mood(mood);
    }
}

void Hud::set_next_goal(const String &text, int64_t have, int64_t need, const String &picture) {
    if (frame) {
        frame->set_next_goal(text, have, need, picture);
    }
}

void Hud::show_hint(bool on) {
    if (frame) {
        frame->show_hint(on && !bool(stored_setting("moved", false)));
    }
}

void Hud::offer_panel(const String &name, const Callable &open) {
    if (!deck || !(deck->offer(name, open) || frame->offer(name, open))) {
        WARN_PRINT("TILMARCH no side button \"" + name + "\"");
    }
}

bool Hud::open_offered(const String &name) {
    return deck && deck->press(name);
}

void Hud::toggle_deck() {
    if (deck) {
        deck->toggle();
    }
}

void Hud::_show_pause() {
    _open_panel("PAUSED", Array(), "", Callable(), Callable(this, TM_NAME("_fill_pause")));
    if (panels && is_inside_tree()) {
        paused_by_panel = true;
        get_tree()->set_pause(true);
    }
}

void Hud::_fill_pause() {
    if (VBoxContainer *box = content()) {
        fill_pause_panel(this, box);
    }
}

void Hud::_show_build() {
    _open_panel("BUILD", Array(), "", Callable(), Callable(this, TM_NAME("_fill_build")));
    watch(&build_panel_state);
}

void Hud::_fill_build() {
    if (VBoxContainer *box = content()) {
        fill_build_panel(this, box);
    }
}

void Hud::_show_decor() {
    _open_panel("DECOR", Array(), "", Callable(), Callable(this, TM_NAME("_fill_decor")));
    watch(&decor_panel_state);
}

void Hud::_fill_decor() {
    if (VBoxContainer *box = content()) {
        fill_decor_panel(this, box);
    }
}

Control *Hud::get_overlay() const {
    return panels ? panels->layer() : nullptr;
}

Control *Hud::get_panel_box() const {
    return panels ? panels->panel_box() : nullptr;
}

Control *Hud::get_lane() const {
    return toasts ? toasts->box() : nullptr;
}

int64_t Hud::get_waiting() const {
    return toasts ? toasts->waiting() : 0;
}

Control *Hud::get_prompts() const {
    return prompts ? prompts->box() : nullptr;
}

bool Hud::get_deck_open() const {
    return deck && deck->is_open();
}

void Hud::_show_how_to() {
    const bool paused = paused_by_panel;
    _open_panel("HOW TO PLAY", Array(), "", Callable(), Callable(this, TM_NAME("_fill_how_to")));
    if (paused && is_inside_tree()) {
        paused_by_panel = true;
        get_tree()->set_pause(true);
    }
}

void Hud::_fill_how_to() {
    if (VBoxContainer *box = content()) {
        fill_how_to_panel(box);
    }
}

void Hud::show_offline(int64_t seconds, int64_t paid) {
    PanelForm form;
    form.height = 4.9f * static_cast<float>(UI::text_size());
    form.close_text = "COLLECT";
    form.close_color = "43a047";
    form.on_close_press = UI::callback(this, [] {
        Sfx::sound(TM_NAME("money_in"));
        Sfx::vibrate(100);
    });
    open_form("WELCOME BACK!", Array(), "", Callable(),
              UI::callback(this, [this, seconds, paid] { fill_offline_panel(content(), seconds, paid); }), form);
}

void Hud::show_victory(int64_t level, int64_t money) {
    PanelForm form;
    form.height = 4.9f * static_cast<float>(UI::text_size());
    form.close_text = "KEEP PLAYING";
    form.close_color = "43a047";
    open_form("YOU DID IT!", Array(), "", Callable(),
              UI::callback(this, [this, level, money] { fill_victory_panel(content(), level, money); }), form);
}

void Hud::home_pressed() {
    close_panel();
    emit_signal(TM_NAME("home_pressed"));
}

void Hud::save_pressed() {
    emit_signal(TM_NAME("save_pressed"));
}

void Hud::zoom_pressed() {
    const int64_t now = stored_setting("zoom", 1);
    const int64_t step = (std::max<int64_t>(now, 0) + 1) % 3;
    set_setting("zoom", step);
    emit_signal(TM_NAME("zoom_pressed"), step);
}

void Hud::set_setting(const char *key, const Variant &value) {
    store_setting(key, value);
}

} // namespace tilm
