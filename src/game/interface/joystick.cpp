#include "game/interface/joystick.h"

#include <algorithm>

#include <godot_cpp/classes/input_event_mouse_button.hpp>
#include <godot_cpp/classes/input_event_mouse_motion.hpp>
#include <godot_cpp/classes/input_event_screen_drag.hpp>
#include <godot_cpp/classes/input_event_screen_touch.hpp>
#include <godot_cpp/core/class_db.hpp>

#include "names.h"

namespace tilm {
namespace {

constexpr float reach = 92.0f;    // full speed at this distance from the base
constexpr float dead = 0.12f;     // share of the reach that does nothing
constexpr float tap_slip = 14.0f; // a touch that moved less may be a tap
constexpr double tap_time = 0.3;
constexpr int emulated_device = -1; // mouse events that the engine makes from touches, and the other way round

} // namespace

void Joystick::_bind_methods() {
    ClassDB::bind_method(D_METHOD("vector"), &Joystick::vector);
    ClassDB::bind_method(D_METHOD("release"), &Joystick::release);
    ADD_SIGNAL(MethodInfo("tapped", PropertyInfo(Variant::VECTOR2, "screen_position")));
}

void Joystick::_ready() {
    set_mouse_filter(MOUSE_FILTER_IGNORE); // whatever no button takes comes as unhandled input
    set_anchors_and_offsets_preset(PRESET_FULL_RECT);
    set_layout_direction(LAYOUT_DIRECTION_LTR);
    set_process(false);
}

Vector2 Joystick::vector() const {
    if (pointer == none) {
        return Vector2();
    }
    const Vector2 pull = (knob - base) / reach;
    const float length = static_cast<float>(pull.length());
    if (length < dead) {
        return Vector2();
    }
    const float strength = std::min((length - dead) / (1.0f - dead), 1.0f);
    return pull / length * strength;
}

void Joystick::release() {
    pointer = none;
    queue_redraw();
}

void Joystick::press(int id, const Vector2 &at) {
    pointer = id;
    base = knob = start = at;
    held_for = 0.0;
    wandered = false;
    set_process(true);
    queue_redraw();
}

void Joystick::move(const Vector2 &to) {
    knob = to;
    if (start.distance_to(to) > tap_slip) {
        wandered = true;
    }
    // The base trails a finger that runs far, so that turning back answers at once.
    const Vector2 pull = knob - base;
    if (pull.length() > reach * 1.25f) {
        base = knob - pull.normalized() * reach * 1.25f;
    }
    queue_redraw();
}

void Joystick::lift(const Vector2 &at) {
    const bool tap = !wandered && held_for < tap_time;
    release();
    if (tap) {
        emit_signal(TM_NAME("tapped"), at);
    }
}

void Joystick::_unhandled_input(const Ref<InputEvent> &event) {
    if (pointer != none || !is_visible_in_tree()) {
        return;
    }
    if (const InputEventScreenTouch *touch = Object::cast_to<InputEventScreenTouch>(event.ptr())) {
        if (touch->is_pressed() && touch->get_device() != emulated_device) {
            press(touch->get_index(), touch->get_position());
        }
    } else if (const InputEventMouseButton *button = Object::cast_to<InputEventMouseButton>(event.ptr())) {
        if (button->is_pressed() && button->get_button_index() == MOUSE_BUTTON_LEFT &&
            button->get_device() != emulated_device) {
            press(mouse, button->get_position());
        }
    }
}

void Joystick::_input(const Ref<InputEvent> &event) {
    if (pointer == none) {
        return;
    }
    if (pointer == mouse) {
        if (const InputEventMouseMotion *motion = Object::cast_to<InputEventMouseMotion>(event.ptr())) {
            move(motion->get_position());
        } else if (const InputEventMouseButton *button = Object::cast_to<InputEventMouseButton>(event.ptr())) {
            if (!button->is_pressed() && button->get_button_index() == MOUSE_BUTTON_LEFT) {
                lift(button->get_position());
            }
        }
        return;
    }
    if (const InputEventScreenDrag *drag = Object::cast_to<InputEventScreenDrag>(event.ptr())) {
        if (drag->get_index() == pointer) {
            move(drag->get_position());
        }
    } else if (const InputEventScreenTouch *touch = Object::cast_to<InputEventScreenTouch>(event.ptr())) {
        if (!touch->is_pressed() && touch->get_index() == pointer) {
            lift(touch->get_position());
        }
    }
}

void Joystick::_process(double delta) {
    held_for += delta;
    const float target = pointer != none && wandered ? 1.0f : 0.0f;
    const float step = static_cast<float>(delta) * 7.0f;
    const float before = shown;
    shown = shown < target ? std::min(shown + step, target) : std::max(shown - step, target);
    if (shown != before) {
        queue_redraw();
    }
    if (pointer == none && shown <= 0.0f) {
        set_process(false);
    }
}

void Joystick::_draw() {
    if (shown <= 0.0f) {
        return;
    }
    Vector2 pull = knob - base;
    if (pull.length() > reach) {
        pull = pull.normalized() * reach;
    }
    draw_circle(base, reach, Color(0.08f, 0.10f, 0.18f, 0.28f * shown));
    draw_arc(base, reach, 0.0f, 6.2832f, 48, Color(1, 1, 1, 0.55f * shown), 5.0f, true);
    draw_circle(base + pull + Vector2(0, 4), 40.0f, Color(0, 0, 0, 0.25f * shown));
    draw_circle(base + pull, 40.0f, Color(1, 1, 1, 0.85f * shown));
    draw_arc(base + pull, 40.0f, 0.0f, 6.2832f, 36, Color(0.08f, 0.10f, 0.18f, 0.5f * shown), 3.0f, true);
}

} // namespace tilm
