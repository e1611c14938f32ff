#include "game/interface/panel_host.h"

#include <algorithm>
#include <vector>

#include <godot_cpp/classes/center_container.hpp>
#include <godot_cpp/classes/color_rect.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/panel_container.hpp>
#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/scroll_container.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/kit/ui.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {
namespace {

constexpr uint64_t slow_fill_ms = 41;

int node_count(Node *node) {
    int count = 1;
    for (int i = 0; i < node->get_child_count(); ++i) {
        count += node_count(node->get_child(i));
    }
    return count;
}

void collect_reachable(Node *node, std::vector<Control *> &found) {
    Control *control = Object::cast_to<Control>(node);
    if (control != nullptr && control->get_focus_mode() == Control::FOCUS_ALL && control->is_visible_in_tree()) {
        found.push_back(control);
    }
    for (int i = 0; i < node->get_child_count(); ++i) {
        collect_reachable(node->get_child(i), found);
    }
}

std::vector<Control *> reachable(Node *area) {
    std::vector<Control *> found;
    collect_reachable(area, found);
    return found;
}

} // namespace

PanelHost::PanelHost(Control *root) {
    overlay = memnew(Control);
    overlay->set_anchors_and_offsets_preset(Control::PRESET_FULL_RECT);
    overlay->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    root->add_child(overlay);
}

void PanelHost::open(const String &title, const Array &tabs, const String &tab, const Callable &tab_call,
                     const Callable &filler, const PanelForm &form) {
    close();
    overlay->set_modulate(Color(1, 1, 1, 1));
    overlay->set_mouse_filter(Control::MOUSE_FILTER_STOP);
    open_title = title;
    open_tab = tab;
    on_tab = tab_call;
    fill = filler;

    sheet = memnew(Control);
    sheet->set_anchors_and_offsets_preset(Control::PRESET_FULL_RECT);
    sheet->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    overlay->add_child(sheet);
    ColorRect *dark = memnew(ColorRect);
    dark->set_color(Color(0.03f, 0.05f, 0.10f, 0.62f));
    dark->set_anchors_and_offsets_preset(Control::PRESET_FULL_RECT);
    dark->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    sheet->add_child(dark);
    CenterContainer *center = memnew(CenterContainer);
    center->set_anchors_and_offsets_preset(Control::PRESET_FULL_RECT);
    center->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    sheet->add_child(center);

    PanelContainer *frame = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style = UI::box(UI::hex("fff8e1"), 48, UI::hex("ffb300"), 8, 12);
    style->set_content_margin_all(48);
    style->set_content_margin(SIDE_TOP, 44);
    frame->add_theme_stylebox_override(TM_NAME("panel"), style);
    center->add_child(frame);
    box = memnew(VBoxContainer);
    box->add_theme_constant_override(TM_NAME("separation"), 14);
    frame->add_child(box);

    Label *head = UI::label(title, 50, UI::hex("ffca28"));
    UI::fit_width(head, 600);
    box->add_child(head);
    if (!tabs.is_empty()) {
        add_tabs(box, tabs);
    }
    ScrollContainer *scroll = memnew(ScrollContainer);
    const float wanted = tabs.is_empty() ? 760.0f : 690.0f;
    scroll->set_custom_minimum_size(Vector2(600, list_height(form.height > 0 ? form.height : wanted)));
    scroll->set_horizontal_scroll_mode(ScrollContainer::SCROLL_MODE_DISABLED);
    box->add_child(scroll);
    content_box = memnew(VBoxContainer);
    content_box->add_theme_constant_override(TM_NAME("separation"), 12);
    content_box->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    scroll->add_child(content_box);
    refill();

    Button *close_button = UI::button(form.close_text, UI::hex(form.close_color), 34, Vector2(300, 84));
    close_button->set_h_size_flags(Control::SIZE_SHRINK_CENTER);
    close_button->connect(TM_NAME("pressed"), UI::callback(sheet, [this, pressed = form.on_close_press] {
                              close();
                              if (pressed.is_valid()) {
                                  pressed.call();
                              }
                          }));
    box->add_child(close_button);
    UI::let_focus(box, true);

    // The box has its size only after the containers were laid out.
    frame->set_scale(Vector2(0.6f, 0.6f));
    frame->connect(TM_NAME("resized"),
                   UI::callback(frame, [frame] { frame->set_pivot_offset(frame->get_size() * 0.5); }));
    const Ref<Tween> tween = frame->create_tween();
    tween->tween_property(frame, NodePath("scale"), Vector2(1, 1), 0.35)
        ->set_trans(Tween::TRANS_BACK)
        ->set_ease(Tween::EASE_OUT);
    Sfx::sound(TM_NAME("ui_open"));
}

void PanelHost::add_tabs(VBoxContainer *column, const Array &tabs) {
    HBoxContainer *row = memnew(HBoxContainer);
    row->add_theme_constant_override(TM_NAME("separation"), 8);
    row->set_alignment(BoxContainer::ALIGNMENT_CENTER);
    column->add_child(row);
    tab_row = row;
    const int64_t count = tabs.size();
    const float width = count <= 3 ? 190.0f : (count == 4 ? 140.0f : 112.0f);
    for (int64_t i = 0; i < count; ++i) {
        const String name = tabs[i];
        Button *b = UI::button(name, UI::hex("8d6e63"), 24, Vector2(width, 66));
        if (UI::text_size() > 100) {
            UI::fit_width(b, width - 20.0);
        }
        b->set_meta(TM_NAME("tab"), name);
        b->connect(TM_NAME("pressed"), UI::callback(sheet, [this, name] {
                       open_tab = name;
                       style_tabs();
                       if (on_tab.is_valid()) {
                           on_tab.call(name);
                       }
                       refill();
                   }));
        row->add_child(b);
    }
    style_tabs();
}

void PanelHost::style_tabs() {
    if (tab_row == nullptr) {
        return;
    }
    for (int i = 0; i < tab_row->get_child_count(); ++i) {
        if (Button *b = Object::cast_to<Button>(tab_row->get_child(i))) {
            const bool current = String(b->get_meta(TM_NAME("tab"))) == open_tab;
            UI::restyle(b, UI::hex(current ? "ef6c00" : "8d6e63"));
        }
    }
}

// On a low screen the list gives way, so that CLOSE stays in sight.
float PanelHost::list_height(float wanted) const {
    constexpr float around = 380.0f;
    const float room = static_cast<float>(overlay->get_size().y) - around * UI::text_size() / 100.0f;
    return overlay->get_size().y > 0.0f ? std::min(wanted, std::max(room, 240.0f)) : wanted;
}

void PanelHost::refill() {
    if (content_box == nullptr) {
        return;
    }
    // Keys stay at the same place of the list.
    const std::vector<Control *> before = reachable(content_box);
    const auto held = std::find_if(before.begin(), before.end(), [](Control *c) { return c->has_focus(); });
    const size_t place = static_cast<size_t>(held - before.begin());
    const bool restore = held != before.end();
    const uint64_t begin = Time::get_singleton()->get_ticks_msec();
    while (content_box->get_child_count() > 0) {
        Node *child = content_box->get_child(content_box->get_child_count() - 1);
        content_box->remove_child(child);
        child->queue_free(); // a button of it may be the one that asked for the refill
    }
    if (fill.is_valid()) {
        const Callable filler = fill; // it may open another panel
        filler.call();
    }
    if (content_box != nullptr) {
        UI::let_scroll(content_box);
        UI::let_focus(content_box, true);
        const std::vector<Control *> now = reachable(content_box);
        if (restore && !now.empty()) {
            now[std::min(place, now.size() - 1)]->grab_focus();
        }
    }
    const uint64_t took = Time::get_singleton()->get_ticks_msec() - begin;
    if (took >= slow_fill_ms && content_box != nullptr) {
        UtilityFunctions::print("SLOW panel ", static_cast<int64_t>(took), " ms  nodes ", node_count(content_box));
    }
}

void PanelHost::close() {
    if (sheet == nullptr) {
        return;
    }
    Control *old = sheet;
    sheet = nullptr;
    box = nullptr;
    content_box = nullptr;
    tab_row = nullptr;
    fill = Callable();
    on_tab = Callable();
    open_title = String();
    overlay->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    old->set_visible(false);
    old->queue_free();
    if (on_closed) {
        on_closed();
    }
}

} // namespace tilm
