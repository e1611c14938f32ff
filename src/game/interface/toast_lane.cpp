#include "game/interface/toast_lane.h"

#include <algorithm>
#include <string>

#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/panel_container.hpp>
#include <godot_cpp/classes/property_tweener.hpp>

#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {
namespace {

constexpr double slide = 0.22;
constexpr int font_size = 30;
constexpr int tall_room = 3; // rows; a wide screen has little height to spare
constexpr int wide_room = 1;

struct Look {
    const char *face;
    const char *edge;
    const char *glyph; // "" for none
};

const Look &look_of(int level) {
    static constexpr Look looks[] = {{"33415c", "8d99ae", ""},
                                     {"2e7d32", "a5d6a7", "check"},
                                     {"b45309", "ffd180", "bang"},
                                     {"b71c1c", "ff8a80", "cross"}};
    return looks[std::clamp(level, 0, 3)];
}

std::string plain(const String &text) {
    const CharString utf8 = text.utf8();
    return std::string(utf8.get_data(), static_cast<size_t>(utf8.length()));
}

} // namespace

ToastLane::ToastLane(Control *root) {
    lane = memnew(VBoxContainer);
    lane->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    lane->add_theme_constant_override(TM_NAME("separation"), 8);
    lane->set_anchors_preset(Control::PRESET_CENTER_TOP);
    lane->set_h_grow_direction(Control::GROW_DIRECTION_BOTH);
    root->add_child(lane);
}

void ToastLane::relayout(const Vector2 &screen) {
    tall = screen.y > 1.15 * screen.x;
    queue.set_limits(tall ? tall_room : wide_room, tall ? 4 : 6);
    const Vector4 safe = UI::safe_margins(screen);
    top = 24.0f + safe.y;
    below_bars = (tall ? 350.0f : 28.0f) + safe.y;
    text_room = tall ? std::min(560.0, screen.x - 160.0) : 620.0;
    lane->set_offset(SIDE_TOP, below_bars);
}

void ToastLane::keep_below(double bars_end) {
    const float wanted = static_cast<float>(bars_end) + 16.0f;
    if (tall && wanted != below_bars) {
        below_bars = wanted;
        make_way(over_panel);
    }
}

void ToastLane::make_way(bool panel_open) {
    over_panel = panel_open;
    lane->set_offset(SIDE_TOP, panel_open ? top : below_bars);
}

void ToastLane::add(const String &text, int level) {
    if (text.strip_edges().is_empty()) {
        return;
    }
    level = std::clamp(level, 0, 3);
    const std::string key = plain(text);
    if (rules::is_refusal(key)) {
        level = 3;
        Sfx::sound(TM_NAME("ui_deny"));
    }
    queue.add(key, level, static_cast<size_t>(text.length()));
    sync();
}

void ToastLane::step(double delta) {
    for (const int id : queue.step(delta)) {
        leave(id);
    }
}

// Brings the rows on the screen into line with the queue's lane.
void ToastLane::sync() {
    for (const rules::ToastQueue::Toast &toast : queue.lane()) {
        const auto it = shown.find(toast.id);
        if (it == shown.end()) {
            shown.emplace(toast.id, make_row(toast));
        } else if (toast.count > 1) {
            it->second.count->set_text(String::utf8("×") + String::num_int64(toast.count));
            it->second.count->set_visible(true);
            // The count makes it wider.
            const Vector2 size = it->second.panel->get_combined_minimum_size();
            it->second.slot->set_custom_minimum_size(Vector2(size.x, it->second.slot->get_custom_minimum_size().y));
            UI::pop(it->second.panel, 0.94);
        }
    }
}

// Wrapped by its translation, so that the row has its whole size at once.
void ToastLane::write(Row &row) const {
    UI::mirror(row.line);
    row.label->set_text(UI::wrapped(Lang::t(row.text), font_size, text_room));
}

void ToastLane::follow_language() {
    for (auto &[id, row] : shown) {
        write(row);
        if (row.slot->has_meta(TM_NAME("out"))) {
            continue; // it goes as large as it was
        }
        if (row.entrance.is_valid()) {
            row.entrance->kill();
        }
        const Vector2 size = row.panel->get_combined_minimum_size();
        row.slot->set_custom_minimum_size(size);
        row.panel->set_position(Vector2());
        row.panel->set_size(size);
        row.panel->set_modulate(Color(1, 1, 1));
    }
}

ToastLane::Row ToastLane::make_row(const rules::ToastQueue::Toast &toast) {
    const Look &look = look_of(toast.level);
    Row row;
    row.text = String::utf8(toast.text.data(), static_cast<int64_t>(toast.text.size()));
    row.slot = memnew(Control);
    row.slot->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    row.slot->set_clip_contents(false);
    PanelContainer *panel = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style = UI::box(UI::hex(look.face), 26, UI::hex(look.edge), 3, 6);
    panel->add_theme_stylebox_override(TM_NAME("panel"), style);
    panel->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    panel->set_layout_direction(Control::LAYOUT_DIRECTION_LTR); // it is placed by hand in its slot
    row.panel = panel;
    HBoxContainer *line = memnew(HBoxContainer);
    line->add_theme_constant_override(TM_NAME("separation"), 12);
    line->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    row.line = line;
    panel->add_child(line);
    if (look.glyph[0] != '\0') {
        line->add_child(UI::glyph(look.glyph, 34, UI::hex("ffffff")));
    }
    Label *label = UI::label("", font_size);
    row.label = label;
    label->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
    line->add_child(label);
    row.count = UI::label("", font_size, UI::hex("ffd54f"));
    row.count->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
    row.count->set_visible(false);
    line->add_child(row.count);
    // A row is as large as it came: another text size is for the next ones.
    label->remove_meta(TM_NAME("text_size"));
    write(row);
    row.count->remove_meta(TM_NAME("text_size"));
    row.slot->add_child(panel);
    lane->add_child(row.slot);
    const Vector2 size = panel->get_combined_minimum_size();
    row.slot->set_custom_minimum_size(Vector2(size.x, 0));
    row.slot->set_h_size_flags(Control::SIZE_SHRINK_CENTER);
    panel->set_size(size);

    panel->set_position(Vector2(0, -26));
    panel->set_modulate(Color(1, 1, 1, 0));
    const Ref<Tween> tween = row.slot->create_tween();
    row.entrance = tween;
    tween->set_parallel(true);
    tween->tween_property(row.slot, NodePath("custom_minimum_size:y"), size.y, slide)
        ->set_trans(Tween::TRANS_CUBIC)
        ->set_ease(Tween::EASE_OUT);
    tween->tween_property(panel, NodePath("position:y"), 0.0, slide)
        ->set_trans(Tween::TRANS_BACK)
        ->set_ease(Tween::EASE_OUT);
    tween->tween_property(panel, NodePath("modulate:a"), 1.0, slide);
    return row;
}

void ToastLane::leave(int id) {
    const auto it = shown.find(id);
    if (it == shown.end()) {
        return;
    }
    Control *slot = it->second.slot;
    slot->set_meta(TM_NAME("out"), true);
    const Ref<Tween> tween = slot->create_tween();
    tween->set_parallel(true);
    tween->tween_property(slot, NodePath("custom_minimum_size:y"), 0.0, slide);
    tween->tween_property(it->second.panel, NodePath("position:y"), -26.0, slide);
    tween->tween_property(it->second.panel, NodePath("modulate:a"), 0.0, slide);
    tween->connect(TM_NAME("finished"), UI::callback(slot, [this, slot, id] {
                       slot->queue_free();
                       shown.erase(id);
                       queue.gone(id);
                       sync();
                   }));
}

} // namespace tilm
