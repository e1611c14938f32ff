#include "game/kit/focus_ring.h"

#include <godot_cpp/classes/base_button.hpp>
#include <godot_cpp/classes/input_event_mouse_button.hpp>
#include <godot_cpp/classes/input_event_screen_touch.hpp>
#include <godot_cpp/classes/panel.hpp>
#include <godot_cpp/classes/viewport.hpp>

#include "game/kit/ui.h"
#include "names.h"

namespace tilm {
namespace {

constexpr float gap = 7.0f; // between the control and the ring

Panel *ring_of(uint64_t id) {
    Panel *ring = Object::cast_to<Panel>(ObjectDB::get_instance(id));
    return ring != nullptr && !ring->is_queued_for_deletion() ? ring : nullptr;
}

} // namespace

FocusRing::FocusRing(Node *owner) : owner(owner) {
    owner->get_viewport()->connect(TM_NAME("gui_focus_changed"),
                                   UI::callback_arg(owner, [this](const Variant &) { show(); }));
}

Control *FocusRing::focused() const {
    return owner->is_inside_tree() ? owner->get_viewport()->gui_get_focus_owner() : nullptr;
}

void FocusRing::see(const Ref<InputEvent> &event) {
    if (Object::cast_to<InputEventMouseButton>(event.ptr()) != nullptr ||
        Object::cast_to<InputEventScreenTouch>(event.ptr()) != nullptr) {
        keys = false;
        hide();
        return;
    }
    for (const StringName &action :
         {TM_NAME("ui_left"), TM_NAME("ui_right"), TM_NAME("ui_up"), TM_NAME("ui_down"), TM_NAME("ui_focus_next"),
          TM_NAME("ui_focus_prev"), TM_NAME("ui_accept"), TM_NAME("ui_cancel")}) {
        if (event->is_action_pressed(action)) {
            keys = true;
            show();
            return;
        }
    }
}

Control *FocusRing::first_reachable(Node *area) {
    if (Control *control = Object::cast_to<Control>(area)) {
        if (!control->is_visible() || control->is_queued_for_deletion()) {
            return nullptr;
        }
        const BaseButton *button = Object::cast_to<BaseButton>(control);
        if (control->get_focus_mode() == Control::FOCUS_ALL && (button == nullptr || !button->is_disabled())) {
            return control;
        }
    }
    for (int i = 0; i < area->get_child_count(); ++i) {
        if (Control *found = first_reachable(area->get_child(i))) {
            return found;
        }
    }
    return nullptr;
}

void FocusRing::start(Node *area) {
    if (!keys || area == nullptr) {
        return;
    }
    if (Control *first = first_reachable(area)) {
        first->grab_focus();
        show();
    }
}

void FocusRing::show() {
    Control *on = focused();
    if (!keys || on == nullptr) {
        hide();
        return;
    }
    Panel *ring = ring_of(ring_id);
    if (ring != nullptr && ring->get_parent() == on) {
        ring->set_visible(true);
        return;
    }
    if (ring != nullptr) {
        ring->get_parent()->remove_child(ring);
        ring->queue_free();
    }
    ring = memnew(Panel);
    ring_id = ring->get_instance_id();
    ring->set_name("FocusRing");
    // Yellow within dark: one of the two stands out from whatever lies behind.
    const Ref<StyleBoxFlat> style = UI::box(Color(0, 0, 0, 0), 34, UI::hex("ffeb3b"), 6);
    style->set_draw_center(false);
    style->set_shadow_size(5);
    style->set_shadow_color(UI::hex("0d1b2a"));
    ring->add_theme_stylebox_override(TM_NAME("panel"), style);
    ring->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    on->add_child(ring, false, Node::INTERNAL_MODE_BACK);
    ring->set_anchors_and_offsets_preset(Control::PRESET_FULL_RECT);
    for (const Side side : {SIDE_LEFT, SIDE_TOP}) {
        ring->set_offset(side, -gap);
    }
    for (const Side side : {SIDE_RIGHT, SIDE_BOTTOM}) {
        ring->set_offset(side, gap);
    }
}

void FocusRing::hide() {
    if (Panel *ring = ring_of(ring_id)) {
        ring->set_visible(false);
    }
}

} // namespace tilm
