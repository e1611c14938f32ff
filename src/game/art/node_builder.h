#pragma once
// A Callable around a C++ function that builds a node.

#include <functional>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/callable.hpp>

namespace tilm {
using namespace godot;

Callable make_node_builder(std::function<Node3D *()> fn);

} // namespace tilm
