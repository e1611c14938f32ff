#pragma once
// Pieces that the houses of machines share. Fronts face +z; `foot` is the middle of a hall's footprint on the ground.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

namespace machine_parts {

enum class Wall { plaster, stone, wood, brick };

// Trodden ground and the pallets under the input and the output pile.
void site(Node3D *at, const Color &earth);
// Walls of a hall in their material, without a roof.
void hall(Node3D *at, const Vector3 &foot, const Vector3 &size, Wall wall, const Color &paint);
// A flat roof with a raised rim, its middle at `top`.
void flat_roof(Node3D *at, const Vector3 &top, const Vector3 &size, const Color &color);
// A striped awning that hangs from a front at `pos`, scalloped at its edge.
void awning(Node3D *at, const Vector3 &pos, float width, const Color &color);
// A chimney from `foot_y` up to where the smoke leaves.
void chimney(Node3D *at, float foot_y, const Color &color);
// A door and a broad shop window beside it on a front `width` wide; `pos` is the middle of the front's foot.
void shop_front(Node3D *at, const Vector3 &pos, float width, const Color &trim);
// A standing tank with a domed lid and two bands.
void tank(Node3D *at, const Vector3 &foot, float radius, float height, const Color &color);

} // namespace machine_parts
} // namespace tilm
