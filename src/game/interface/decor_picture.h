#pragma once
// Small flat pictures of the garden decorations, drawn without a picture file.

#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

// A square control of `size` that shows the decoration of this type; a bare lawn for an unknown one.
Control *decor_picture(const String &type, double size);

} // namespace tilm
