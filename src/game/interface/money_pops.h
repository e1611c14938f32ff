#pragma once
// Sums that rise from a place in the farm and fly to the money counter. A fixed few labels, used in turn.

#include <array>
#include <cstdint>

#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/variant/vector2.hpp>

namespace tilm {
using namespace godot;

class MoneyPops {
public:
    explicit MoneyPops(Control *root);

    // From a screen point to the counter; done() runs on landing.
    void fly(int64_t amount, const Vector2 &from, const Vector2 &to, const Callable &on_landed);
    int64_t flown() const { return count; }

private:
    static constexpr size_t most = 8;
    std::array<Label *, most> labels{};
    std::array<Ref<Tween>, most> tweens;
    size_t next = 0;
    int64_t count = 0;
};

} // namespace tilm
