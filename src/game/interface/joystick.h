#pragma once
// The floating walking stick: appears where a finger (or the left mouse button) goes down outside any button, and gives
// the wished direction. Short touches that do not move are taps.

#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/input_event.hpp>
#include <godot_cpp/variant/vector2.hpp>

namespace tilm {
using namespace godot;

class Joystick : public Control {
    GDCLASS(Joystick, Control)

public:
    Vector2 vector() const; // length 0 .. 1, x to the right, y down the screen; zero while not held
    bool held() const { return pointer != none; }
    void release(); // lets go, as when a panel opens

    void _ready() override;
    void _unhandled_input(const Ref<InputEvent> &event) override;
    void _input(const Ref<InputEvent> &event) override;
    void _draw() override;
    void _process(double delta) override;

protected:
    static void _bind_methods(); // signal tapped(screen position)

private:
    static constexpr int none = -2;
    static constexpr int mouse = -1;

    void press(int id, const Vector2 &at);
    void move(const Vector2 &to);
    void lift(const Vector2 &at);

    int pointer = none;
    Vector2 base;
    Vector2 knob;
    Vector2 start;
    double held_for = 0.0;
    float shown = 0.0f; // fades in and out
    bool wandered = false;
};

} // namespace tilm
