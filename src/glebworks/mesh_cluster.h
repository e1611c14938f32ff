#pragma once
// Vertex clustering on the engine's packed arrays; Glebworks publishes it.

#include <godot_cpp/variant/packed_color_array.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>

namespace tilm {
using namespace godot;

// The three vertex arrays must have one length; wrong input is logged and left as it is.
void cluster_arrays(PackedVector3Array &vertices, PackedVector3Array &normals, PackedColorArray &colors,
                    PackedInt32Array &indices, int grid);

} // namespace tilm
