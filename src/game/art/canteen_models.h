#pragma once
// The staff's canteen: the hall with its tables by level, a meal on its tray, the cook.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class CanteenModels : public RefCounted {
    GDCLASS(CanteenModels, RefCounted)

protected:
    static void _bind_methods() {}

public:
    static constexpr int top_level = 6;
    // Level 1..6, front to +z. Tables stand at (-1.75 or 1.75, -0.1 or 1.55), their tops at 0.72; the kitchen is behind
    // them. Baked under canteen_<level>.
    static Node3D *hall(int level);
    // A tray with a bowl, bread and a cup, facing -z.
    static Node3D *meal();
    // The look of the person who cooks here.
    static Dictionary cook_look();
};

} // namespace tilm
