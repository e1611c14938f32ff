#pragma once
// One builder per producer, each a loose tree of parts that Buildings bakes.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

namespace producer_houses {

Node3D *build(const String &product);

} // namespace producer_houses
} // namespace tilm
