#pragma once
// Where the staff lives, sleeps and parks: the row of worker homes by level, its annexes, the trades vans.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class HomeModels : public RefCounted {
    GDCLASS(HomeModels, RefCounted)

protected:
    static void _bind_methods() {}

public:
    static constexpr int top_level = 8;
    // Level 1..8: min(5, level + 1) houses in a row, front to +z, with a child `Screen`: the lit windows, which the
    // owner shows at night.
    static Node3D *homes(int level);
    // The row of two that is built behind the farm when the homes are full.
    static Node3D *annex();
    // Somebody asleep under a blanket, the head to -z.
    static Node3D *sleeper();
    // The van of "plumber" or "appliance", its nose to -z.
    static Node3D *van(const String &trade);
};

} // namespace tilm
