#pragma once
// One builder per machine product, each a loose tree of parts that Buildings bakes.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

namespace machine_houses {

// A plain hall, with a log line, for a product that has no house.
Node3D *build(const String &product, const Color &roof);

// The houses of the two families below; false for a product of neither.
bool build_workshop(Node3D *at, const String &product, const Color &roof);
bool build_eatery(Node3D *at, const String &product, const Color &roof);

} // namespace machine_houses
} // namespace tilm
