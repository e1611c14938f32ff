#pragma once
// What running boosts put on the player: the shoes of speed, the big bag, the paw that floats over his head.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm::gear_models {
using namespace godot;

// "shoe_L", "shoe_R" (from the knee's end down), "bag" (its front to +z) or "paw"; an empty node, with a log line, for
// any other name.
Node3D *build(const String &name);

} // namespace tilm::gear_models
