#pragma once
// What the shared map's landscapes and the small farms on it are put together from. Fronts face +z; roads and other
// long pieces run along x.

#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

namespace map_models {

// The model of map_<name>, baked under that key, without a shadow; null for a name that is not known.
MeshInstance3D *build(const String &name);

} // namespace map_models
} // namespace tilm
