#pragma once
// How lower rooms speak to the player: toasts and money pop-ups. Hud implements it; without one nothing is shown.

#include <cstdint>

#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

enum class ToastLevel { plain = 0, good = 1, warning = 2, refusal = 3 };

class Notices {
public:
    virtual ~Notices() = default;

    static Notices *current() { return slot(); }
    static void set_current(Notices *notices) { slot() = notices; }

    virtual void notice(const String &text, ToastLevel level) = 0;
    virtual void fly_money(int64_t amount, const Vector3 &from) = 0;

    // Shows a toast if anybody listens.
    static void say(const String &text, ToastLevel level = ToastLevel::plain) {
        if (Notices *n = current()) {
            n->notice(text, level);
        }
    }

private:
    static Notices *&slot() {
        static Notices *notices = nullptr;
        return notices;
    }
};

} // namespace tilm
