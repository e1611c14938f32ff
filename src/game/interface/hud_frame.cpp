#include "game/interface/hud_frame.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/core/object.hpp>

#include "game/art/icons.h"
#include "game/interface/hud.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "names.h"

namespace tilm {
namespace {

const Color pill_dark(0.10f, 0.13f, 0.22f, 0.82f);
constexpr double goal_flag = 30.0;
constexpr double goal_thing = 52.0;            // a picture shows more than a sign does
constexpr double money_write_gap = 1.0 / 30.0; // the counter's text changes at most this often

Panel *bar_fill(Control *track, const Color &color) {
    Panel *fill = memnew(Panel);
    fill->add_theme_stylebox_override(TM_NAME("panel"), UI::box(color, 7));
    fill->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    fill->set_anchor(SIDE_BOTTOM, 1.0);
    track->add_child(fill);
    return fill;
}

Panel *bar_track(Control *parent, double width, double height) {
    Panel *track = memnew(Panel);
    track->add_theme_stylebox_override(TM_NAME("panel"), UI::box(Color(1, 1, 1, 0.22f), 7));
    track->set_custom_minimum_size(Vector2(width, height));
    track->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    parent->add_child(track);
    return track;
}

void set_fill(Panel *fill, double share) {
    fill->set_anchor(SIDE_RIGHT, std::clamp(share, 0.0, 1.0), true, false);
    fill->set_visible(share > 0.005);
}

} // namespace

HudFrame::HudFrame(Hud *hud, Control *root) {
    build_left(root);
    build_right(hud, root);
    build_offers();
    build_goal(hud);
    build_hint(root);
}

PanelContainer *HudFrame::pill(Control *parent, const Color &color) {
    PanelContainer *panel = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style = UI::box(color, 28, Color(1, 1, 1, 0.16f), 2, 4);
    style->set_content_margin(SIDE_TOP, 4);
    style->set_content_margin(SIDE_BOTTOM, 4);
    panel->add_theme_stylebox_override(TM_NAME("panel"), style);
    panel->set_h_size_flags(Control::SIZE_SHRINK_BEGIN);
    panel->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    parent->add_child(panel);
    return panel;
}

void HudFrame::build_left(Control *root) {
    left_box = memnew(VBoxContainer);
    left_box->add_theme_constant_override(TM_NAME("separation"), 10);
    left_box->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    left_box->set_position(Vector2(20, 24));
    root->add_child(left_box);

    wealth = memnew(BoxContainer);
    wealth->add_theme_constant_override(TM_NAME("separation"), 10);
    wealth->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    left_box->add_child(wealth);

    money_pill = pill(wealth, pill_dark);
    HBoxContainer *money_row = memnew(HBoxContainer);
    money_row->add_theme_constant_override(TM_NAME("separation"), 10);
    money_row->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    money_pill->add_child(money_row);
    TextureRect *bill = UI::icon_rect("money", 50);
    money_row->add_child(bill);
    money_label = UI::label("$0", 44, UI::hex("ffffff"));
    money_label->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
    money_row->add_child(money_label);

    gold_pill = pill(wealth, pill_dark);
    HBoxContainer *gold_row = memnew(HBoxContainer);
    gold_row->add_theme_constant_override(TM_NAME("separation"), 8);
    gold_pill->add_child(gold_row);
    TextureRect *egg = UI::icon_rect("golden_egg", 40);
    gold_row->add_child(egg);
    gold_label = UI::label("0", 36, UI::hex("ffe082"));
    gold_label->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
    gold_row->add_child(gold_label);
    gold_pill->set_visible(false);

    level_pill = pill(left_box, pill_dark);
    HBoxContainer *level_row = memnew(HBoxContainer);
    level_row->add_theme_constant_override(TM_NAME("separation"), 10);
    level_pill->add_child(level_row);
    level_star = memnew(Hud::StarBadge);
    level_star->set_custom_minimum_size(Vector2(48, 48));
    level_row->add_child(level_star);
    VBoxContainer *level_column = memnew(VBoxContainer);
    level_column->add_theme_constant_override(TM_NAME("separation"), 3);
    level_column->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    level_row->add_child(level_column);
    level_label = UI::label("", 28, UI::hex("ffd54f"));
    level_column->add_child(level_label);
    level_fill = bar_fill(bar_track(level_column, 250, 12), UI::hex("ffb300"));
    set_fill(level_fill, 0.0);
    level_pill->set_visible(false);

    mood_pill = pill(left_box, pill_dark);
    HBoxContainer *mood_row = memnew(HBoxContainer);
    mood_row->add_theme_constant_override(TM_NAME("separation"), 8);
    mood_pill->add_child(mood_row);
    mood_icon = UI::icon_rect("smile", 36);
    mood_row->add_child(mood_icon);
    mood_label = UI::label("", 26);
    mood_row->add_child(mood_label);
    mood_pill->set_visible(false);
}

void HudFrame::build_right(Hud *hud, Control *root) {
    side_box = memnew(VBoxContainer);
    side_box->add_theme_constant_override(TM_NAME("separation"), 14);
    side_box->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    side_box->set_anchors_preset(Control::PRESET_TOP_RIGHT);
    side_box->set_h_grow_direction(Control::GROW_DIRECTION_BEGIN);
    side_box->set_offset(SIDE_RIGHT, -20);
    side_box->set_offset(SIDE_LEFT, -20);
    side_box->set_offset(SIDE_TOP, 24);
    root->add_child(side_box);

    Button *pause = UI::button("", UI::hex("1e88e5"), 40, Vector2(92, 92));
    UI::set_icon(pause, "pause");
    pause->set_tooltip_text("PAUSE");
    pause->connect(TM_NAME("pressed"), Callable(hud, TM_NAME("_show_pause")));
    pause->set_h_size_flags(Control::SIZE_SHRINK_END);
    side_box->add_child(pause);

    Button *zoom = UI::button("", UI::hex("00897b"), 40, Vector2(92, 92));
    UI::set_icon(zoom, "zoom");
    zoom->set_tooltip_text("ZOOM");
    zoom->connect(TM_NAME("pressed"), Callable(hud, TM_NAME("zoom_pressed")));
    zoom->set_h_size_flags(Control::SIZE_SHRINK_END);
    side_box->add_child(zoom);
}

void HudFrame::build_offers() {
    HBoxContainer *row = memnew(HBoxContainer);
    row->add_theme_constant_override(TM_NAME("separation"), 10);
    row->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    left_box->add_child(row);
    static constexpr const char *icons[] = {"tasks", "top"};
    static constexpr const char *colors[] = {"6d4c41", "b45309"};
    for (size_t i = 0; i < std::size(places); ++i) {
        Button *b = UI::button(places[i].name, UI::hex(colors[i]), 24, Vector2(150, 66));
        UI::set_icon(b, icons[i]);
        b->set_visible(false);
        Place *place = &places[i];
        b->connect(TM_NAME("pressed"), UI::callback(b, [place] {
                       if (place->open.is_valid()) {
                           place->open.call();
                       }
                   }));
        row->add_child(b);
        places[i].button = b;
    }
    row->set_visible(false);
}

bool HudFrame::offer(const String &name, const Callable &open) {
    for (Place &place : places) {
        if (name == String(place.name)) {
            place.open = open;
            place.button->set_visible(open.is_valid());
            Object::cast_to<Control>(place.button->get_parent())
                ->set_visible(places[0].open.is_valid() || places[1].open.is_valid());
            return true;
        }
    }
    return false;
}

void HudFrame::build_goal(Hud *hud) {
    goal_pill = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style = UI::box(pill_dark, 24, UI::hex("4dd0e1"), 3, 4);
    style->set_content_margin(SIDE_TOP, 6);
    style->set_content_margin(SIDE_BOTTOM, 8);
    goal_pill->add_theme_stylebox_override(TM_NAME("panel"), style);
    goal_pill->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    left_box->add_child(goal_pill);
    VBoxContainer *column = memnew(VBoxContainer);
    column->add_theme_constant_override(TM_NAME("separation"), 4);
    goal_pill->add_child(column);
    HBoxContainer *row = memnew(HBoxContainer);
    row->add_theme_constant_override(TM_NAME("separation"), 16);
    column->add_child(row);
    row->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    column->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    goal_picture = UI::icon_rect("flag", goal_flag);
    row->add_child(goal_picture);
    goal_label = UI::label("", 26, UI::hex("ffffff"));
    goal_label->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    goal_label->set_horizontal_alignment(HORIZONTAL_ALIGNMENT_LEFT);
    row->add_child(goal_label);
    goal_count = UI::label("", 26, UI::hex("b2ebf2"));
    goal_count->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
    row->add_child(goal_count);
    goal_fill = bar_fill(bar_track(column, 300, 14), UI::hex("4dd0e1"));
    set_fill(goal_fill, 0.0);
    // The whole strip is a button without a face: it opens the list of what can be bought.
    Button *open = UI::button("", pill_dark, 26, Vector2(0, 0));
    open->set_name("Goal");
    open->set_tooltip_text("BUILD");
    for (const StringName &state :
         {TM_NAME("normal"), TM_NAME("hover"), TM_NAME("pressed"), TM_NAME("hover_pressed"), TM_NAME("disabled")}) {
        open->add_theme_stylebox_override(state, UI::box(Color(1, 1, 1, 0), 24));
    }
    open->connect(TM_NAME("pressed"), Callable(hud, TM_NAME("_show_build")));
    goal_pill->add_child(open);
    goal_pill->set_visible(false);
}

// A long name goes to a second line rather than under the buttons at the other side.
void HudFrame::fit_goal() {
    const String shown = Lang::t(goal_label->get_text());
    const bool longer = UI::text_width(shown, 26) > goal_room;
    goal_label->set_autowrap_mode(longer ? TextServer::AUTOWRAP_WORD_SMART : TextServer::AUTOWRAP_OFF);
    goal_label->set_custom_minimum_size(Vector2(longer ? static_cast<float>(goal_room) : 0.0f, 0));
}

void HudFrame::build_hint(Control *root) {
    VBoxContainer *box = memnew(VBoxContainer);
    box->set_anchors_preset(Control::PRESET_CENTER_BOTTOM);
    box->set_h_grow_direction(Control::GROW_DIRECTION_BOTH);
    box->set_v_grow_direction(Control::GROW_DIRECTION_BEGIN);
    box->set_offset(SIDE_BOTTOM, -150);
    box->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    hint = box;
    // A ring with a finger that runs round it, drawn: no picture needed.
    hint_hand = memnew(Control);
    hint_hand->set_custom_minimum_size(Vector2(190, 130));
    hint_hand->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    Control *hand = hint_hand;
    hand->connect(TM_NAME("draw"), UI::callback(hand, [this, hand] {
                      const Vector2 center = hand->get_size() * 0.5f;
                      const float a = static_cast<float>(time) * 2.4f;
                      const Vector2 tip = center + Vector2(std::cos(a) * 44.0f, std::sin(a) * 26.0f);
                      hand->draw_circle(center, 54.0f, Color(0.08f, 0.10f, 0.18f, 0.30f));
                      hand->draw_arc(center, 54.0f, 0.0f, 6.2832f, 40, Color(1, 1, 1, 0.75f), 5.0f, true);
                      hand->draw_circle(tip + Vector2(0, 3), 25.0f, Color(0, 0, 0, 0.3f));
                      hand->draw_circle(tip, 25.0f, Color(1, 1, 1, 0.95f));
                  }));
    box->add_child(hint_hand);
    box->add_child(UI::label("DRAG TO MOVE", 40, UI::hex("ffffff")));
    hint->set_visible(false);
    root->add_child(hint);
}

void HudFrame::set_money(int64_t amount) {
    if (money_known && amount == money) {
        return;
    }
    money = amount;
    if (!money_known) {
        money_known = true;
        money_shown = static_cast<double>(amount);
        write_money();
    }
}

void HudFrame::write_money() {
    const int64_t shown = std::llround(money_shown);
    if (shown == money_written) {
        return;
    }
    money_written = shown;
    money_label->set_text(UI::money(shown));
    money_label->add_theme_color_override(TM_NAME("font_color"), shown < 0 ? UI::hex("ff8a80") : UI::hex("ffffff"));
}

void HudFrame::set_gold(int64_t eggs) {
    if (eggs == gold) {
        return;
    }
    gold = eggs;
    gold_label->set_text(String::num_int64(eggs));
    gold_pill->set_visible(eggs > 0);
}

void HudFrame::set_level_line(int new_level, int new_percent) {
    if (new_level == level && new_percent == percent) {
        return;
    }
    if (level >= 0 && new_level > level) {
        level_star->jump();
    }
    level = new_level;
    percent = new_percent;
    level_label->set_text("LV " + String::num_int64(level) + "  MY FARM " + String::num_int64(percent) + "%");
    set_fill(level_fill, percent / 100.0);
    level_pill->set_visible(true);
}

void HudFrame::set_mood(double mood) {
    const int shown =
        std::isfinite(mood) && mood >= 0.0 ? static_cast<int>(std::lround(std::min(mood, 1.0) * 100.0)) : -1;
    const int band = shown < 0 ? 0 : (mood >= 0.85 ? 3 : (mood >= 0.6 ? 2 : 1));
    if (shown == mood_percent && band == mood_band) {
        return;
    }
    mood_percent = shown;
    mood_band = band;
    mood_pill->set_visible(shown >= 0);
    if (shown < 0) {
        return;
    }
    const double m = std::min(mood, 1.0);
    const Color color = UI::hex(m >= 0.85 ? "3ddc84" : (m >= 0.6 ? "f2b73a" : "f26f6f"));
    mood_label->set_text("HAPPY " + String::num_int64(shown) + "%");
    mood_label->add_theme_color_override(TM_NAME("font_color"), color);
    mood_icon->set_texture(UI::icon(m >= 0.6 ? "smile" : "sad"));
}

void HudFrame::set_next_goal(const String &text, int64_t have, int64_t need, const String &picture) {
    if (text == goal_text && have == goal_have && need == goal_need && picture == goal_key) {
        return;
    }
    goal_have = have;
    goal_need = need;
    goal_pill->set_visible(!text.is_empty() && !way_made);
    if (text.is_empty()) {
        goal_text = text;
        return;
    }
    if (text != goal_text) {
        goal_text = text;
        goal_label->set_text("NEXT: " + text.get_slice("\n", 0));
        fit_goal();
    }
    if (picture != goal_key) {
        goal_key = picture;
        const float side = picture.is_empty() ? goal_flag : goal_thing;
        goal_picture->set_texture(picture.is_empty() ? UI::icon("flag") : Icons::of(picture));
        goal_picture->set_custom_minimum_size(Vector2(side, side));
    }
    const int64_t shown = std::clamp<int64_t>(have, 0, std::max<int64_t>(need, 0));
    goal_count->set_text(UI::money_short(shown) + "/" + UI::money_short(need).trim_prefix("$"));
    set_fill(goal_fill, need > 0 ? static_cast<double>(shown) / static_cast<double>(need) : 0.0);
}

void HudFrame::show_hint(bool on) {
    hint->set_visible(on);
}

void HudFrame::step(double delta) {
    time += delta;
    if (hint->is_visible()) {
        hint_hand->queue_redraw();
    }
    const double gap = static_cast<double>(money) - money_shown;
    if (gap == 0.0) {
        return;
    }
    const double part = gap * (1.0 - std::exp(-9.0 * delta));
    money_shown = std::abs(gap) < 1.0 ? static_cast<double>(money) : money_shown + part;
    write_wait -= delta;
    if (write_wait <= 0.0 || money_shown == static_cast<double>(money)) {
        write_wait = money_write_gap;
        write_money();
    }
}

void HudFrame::relayout(const Vector2 &screen) {
    const bool wide = screen.x > screen.y;
    wide_screen = wide;
    const Vector4 safe = UI::safe_margins(screen);
    const bool mirrored = Lang::arabic(); // the left box stands at the right then, and the screen's margins do not turn
    const float near = 20.0f + (mirrored ? safe.z : safe.x);
    const float far = 20.0f + (mirrored ? safe.x : safe.z);
    left_box->set_offset(SIDE_LEFT, near);
    left_box->set_offset(SIDE_TOP, 24.0f + safe.y);
    side_box->set_offset(SIDE_RIGHT, -far);
    side_box->set_offset(SIDE_LEFT, -far);
    side_box->set_offset(SIDE_TOP, 24.0f + safe.y);
    // Large letters need the whole width for the money alone.
    const bool large = !wide && UI::text_size() > 100;
    wealth->set_vertical(large);
    Node *row = goal_label->get_parent();
    Node *count_home = large ? row->get_parent() : row;
    if (goal_count->get_parent() != count_home) {
        goal_count->get_parent()->remove_child(goal_count);
        count_home->add_child(goal_count);
        if (large) {
            count_home->move_child(goal_count, 1);
        }
    }
    // Beside the text: buttons of the other side, flag, margins, and the count while it stands in the same line.
    const double around = (large ? 250.0 : 430.0) + goal_thing - goal_flag;
    goal_room = std::max(160.0, (wide ? 0.4 * screen.x : screen.x) - around);
    fit_goal();
    hint->set_offset(SIDE_BOTTOM, wide ? -60 : -150);
}

double HudFrame::bars_end() const {
    return left_box->get_position().y + left_box->get_size().y;
}

void HudFrame::make_way(bool deck_open) {
    way_made = deck_open && !wide_screen;
    goal_pill->set_visible(!goal_text.is_empty() && !way_made);
}

Vector2 HudFrame::money_spot() const {
    return money_label->get_global_rect().get_center();
}

void HudFrame::bump_money() {
    money_pill->set_pivot_offset(money_pill->get_size() * 0.5);
    const Ref<Tween> tween = money_pill->create_tween();
    tween->tween_property(money_pill, NodePath("scale"), Vector2(1.08f, 1.08f), 0.06);
    tween->tween_property(money_pill, NodePath("scale"), Vector2(1, 1), 0.12);
}

} // namespace tilm
