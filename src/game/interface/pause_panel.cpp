#include "game/interface/pause_panel.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/input_event_mouse_button.hpp>
#include <godot_cpp/classes/input_event_mouse_motion.hpp>
#include <godot_cpp/classes/label.hpp>

#include "game/art/icons.h"
#include "game/interface/hud.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "game/ports/store.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {
namespace {

constexpr int steps = 10;

const Color text_color = Color(0.16f, 0.20f, 0.25f);

HBoxContainer *row_of(VBoxContainer *content, const String &text, const String &icon) {
    HBoxContainer *row = memnew(HBoxContainer);
    row->add_theme_constant_override(TM_NAME("separation"), 14);
    row->set_custom_minimum_size(Vector2(0, 58));
    if (!icon.is_empty()) {
        TextureRect *rect = UI::icon_rect(icon, 38);
        row->add_child(rect);
    }
    Label *label = UI::label(text, 30, text_color);
    label->add_theme_constant_override(TM_NAME("outline_size"), 0);
    label->set_horizontal_alignment(HORIZONTAL_ALIGNMENT_LEFT);
    label->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    row->add_child(label);
    content->add_child(row);
    return row;
}

void add_switch(Hud *hud, VBoxContainer *content, const char *text, const char *icon, const char *key) {
    HBoxContainer *row = row_of(content, text, icon);
    row->add_child(UI::toggle(stored_setting(key, true), 1.15, UI::callback_arg(hud, [key](const Variant &on) {
                                  store_setting(key, static_cast<bool>(on));
                                  if (Sfx *sfx = Sfx::get()) {
                                      if (String(key) == String("music_on")) {
                                          sfx->set_music(on);
                                      }
                                      sfx->apply_volumes();
                                  }
                                  if (String(key) == String("vibrate_on") && static_cast<bool>(on)) {
                                      Sfx::vibrate(60);
                                  }
                              })));
}

void add_volume(VBoxContainer *content, const char *text, const char *icon, const char *group) {
    HBoxContainer *row = row_of(content, text, icon);
    const String name = group;
    const double now = stored_setting((String("vol_") + name).utf8().get_data(), 0.8);
    row->add_child(volume_bar(now, UI::text_size() > 100 ? 210 : 300, [name](double v) {
        if (Sfx *sfx = Sfx::get()) {
            sfx->set_volume(name, v);
            if (name == String("effects")) {
                sfx->play(TM_NAME("ui_tap"));
            }
        } else if (Store *store = Store::current()) {
            store->put_setting(StringName("vol_" + name), v);
        }
        if (Store *store = Store::current()) {
            store->write();
        }
    }));
}

Button *wide_button(Hud *hud, VBoxContainer *content, const char *text, const char *color, const char *icon,
                    const StringName &method) {
    Button *b = UI::button(text, UI::hex(color), 34, Vector2(420, 88));
    UI::set_icon(b, icon);
    b->set_h_size_flags(Control::SIZE_SHRINK_CENTER);
    b->connect(TM_NAME("pressed"), Callable(hud, method));
    content->add_child(b);
    return b;
}

void add_text_size(Hud *hud, VBoxContainer *content) {
    HBoxContainer *row = row_of(content, "TEXT SIZE", "text_size");
    Button *b = UI::button(String::num_int64(UI::text_size()) + "%", UI::hex("00897b"), 28, Vector2(160, 72));
    b->set_name("TextSize");
    b->connect(TM_NAME("pressed"), UI::callback(hud, [hud] {
                   const int now = UI::text_size();
                   const int next = now >= 150 ? 100 : now + 25;
                   store_setting("text_size", next);
                   UI::set_text_size(next);
                   hud->_relayout();
                   hud->call_deferred(TM_NAME("refresh_panel"));
               }));
    row->add_child(b);
}

void heading(VBoxContainer *content, const char *text) {
    content->add_child(UI::label(text, 32, UI::hex("ffca28")));
}

} // namespace

void store_setting(const char *key, const Variant &value) {
    if (Store *store = Store::current()) {
        store->put_setting(StringName(key), value);
        store->write();
    }
}

Variant stored_setting(const char *key, const Variant &fallback) {
    const Store *store = Store::current();
    const Variant value = store != nullptr ? store->setting(StringName(key)) : Variant();
    return value.get_type() == Variant::NIL ? fallback : value;
}

Control *volume_bar(double value, double width, std::function<void(double)> on_change) {
    Control *bar = memnew(Control);
    bar->set_custom_minimum_size(Vector2(width, 52));
    bar->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    bar->set_layout_direction(Control::LAYOUT_DIRECTION_LTR);
    bar->set_meta(TM_NAME("keys"), true);
    bar->set_meta(TM_NAME("step"), static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * steps)));
    bar->connect(
        TM_NAME("draw"), UI::callback(bar, [bar] {
            const int on = bar->get_meta(TM_NAME("step"));
            const Vector2 size = bar->get_size();
            const float cell = size.x / steps;
            for (int i = 0; i < steps; ++i) {
                const float h = size.y * (0.35f + 0.055f * static_cast<float>(i));
                const Rect2 r(Vector2(cell * static_cast<float>(i) + 3, (size.y - h) * 0.5f), Vector2(cell - 6, h));
                bar->draw_style_box(
                    UI::box(UI::hex(i < on ? "43a047" : "d7ccc8"), 6, UI::hex(i < on ? "1b5e20" : "a1887f"), 2), r);
            }
            if (on == 0) { // silence is told by a sign, not by colour alone
                bar->draw_line(Vector2(6, size.y * 0.5f - 16), Vector2(38, size.y * 0.5f + 16), UI::hex("b71c1c"), 5,
                               true);
            }
        }));
    bar->connect(TM_NAME("gui_input"),
                 UI::callback_arg(bar, [bar, on_change = std::move(on_change)](const Variant &event) {
                     Object *object = event;
                     const auto set_step = [bar, &on_change](int wanted) {
                         const int step = std::clamp(wanted, 0, steps);
                         if (step != static_cast<int>(bar->get_meta(TM_NAME("step")))) {
                             bar->set_meta(TM_NAME("step"), step);
                             bar->queue_redraw();
                             on_change(static_cast<double>(step) / steps);
                         }
                     };
                     if (const InputEvent *keys = Object::cast_to<InputEvent>(object)) {
                         const int now = bar->get_meta(TM_NAME("step"));
                         const bool less = keys->is_action_pressed(TM_NAME("ui_left"), true);
                         if (less || keys->is_action_pressed(TM_NAME("ui_right"), true)) {
                             set_step(now + (less ? -1 : 1));
                             bar->accept_event();
                             return;
                         }
                     }
                     Vector2 at;
                     if (const InputEventMouseButton *button = Object::cast_to<InputEventMouseButton>(object)) {
                         if (!button->is_pressed() || button->get_button_index() != MOUSE_BUTTON_LEFT) {
                             return;
                         }
                         at = button->get_position();
                     } else if (const InputEventMouseMotion *motion = Object::cast_to<InputEventMouseMotion>(object)) {
                         if (!motion->get_button_mask().has_flag(MOUSE_BUTTON_MASK_LEFT)) {
                             return;
                         }
                         at = motion->get_position();
                     } else {
                         return;
                     }
                     const double share = at.x / std::max(1.0f, static_cast<float>(bar->get_size().x));
                     set_step(static_cast<int>(std::floor(share * steps + 0.6)));
                 }));
    return bar;
}

void fill_pause_panel(Hud *hud, VBoxContainer *content) {
    wide_button(hud, content, "RESUME", "43a047", "play", TM_NAME("close_panel"));
    heading(content, "SETTINGS");
    add_switch(hud, content, "SOUND", "sound", "sound_on");
    add_switch(hud, content, "MUSIC", "music", "music_on");
    add_switch(hud, content, "NOTIFICATIONS", "bell", "notify_on");
    add_switch(hud, content, "VIBRATION", "phone", "vibrate_on");
    add_volume(content, "MUSIC", "music", "music");
    add_volume(content, "AMBIENCE", "tree", "ambience");
    add_volume(content, "EFFECTS", "sound", "effects");
    add_volume(content, "VOICE", "mic", "voice");
    HBoxContainer *language = row_of(content, "LANGUAGE", "lang");
    language->add_child(UI::lang_button(28, Vector2(260, 72)));
    add_text_size(hud, content);
    wide_button(hud, content, "HOW TO PLAY", "1e88e5", "help", TM_NAME("_show_how_to"));
    wide_button(hud, content, "SAVE GAME", "00897b", "save", TM_NAME("save_pressed"));
    wide_button(hud, content, "SAVE & MENU", "ef6c00", "home", TM_NAME("home_pressed"));
}

void fill_how_to_panel(VBoxContainer *content) {
    struct Line {
        const char *icon;    // a sign
        const char *picture; // a key of Icons, where things say more than signs
        const char *text;
    };
    static constexpr Line lines[] = {
        {"hi", "", "DRAG ANYWHERE TO WALK. ON A KEYBOARD USE THE ARROW KEYS OR W A S D."},
        {"", "item_corn", "WALK THROUGH RIPE CROPS TO CUT THEM. THEY STACK UP ON YOUR BACK."},
        {"", "icon_stall_egg", "STAND AT A STALL TO PUT YOUR GOODS ON IT. CUSTOMERS COME AND PAY."},
        {"", "money_bill", "WALK OVER THE MONEY TO COLLECT IT."},
        {"tile", "", "STAND ON A PRICE TILE TO BUY. IT FILLS UP AND BUILDS."},
        {"", "icon_producer_egg", "FEED THE HENS AND THEY LAY EGGS. EGGS SELL FOR MORE THAN CORN."},
        {"", "icon_workers", "HIRE HELPERS TO CARRY FOR YOU, AND UPGRADE EVERYTHING."},
        {"save", "", "THE GAME SAVES BY ITSELF."},
    };
    for (const Line &line : lines) {
        HBoxContainer *row = memnew(HBoxContainer);
        row->add_theme_constant_override(TM_NAME("separation"), 18);
        const bool thing = line.picture[0] != '\0';
        TextureRect *icon = thing ? Icons::rect(line.picture, 64) : UI::icon_rect(line.icon, 54);
        icon->set_custom_minimum_size(Vector2(64, icon->get_custom_minimum_size().y));
        row->add_child(icon);
        row->add_child(UI::text_line(line.text, 27, text_color, 500));
        content->add_child(row);
    }
}

} // namespace tilm
