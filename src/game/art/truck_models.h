#pragma once
// Models of the loading bays and belts: trucks (nose to -z), the flying supply van, belt pieces, depot, star markers.

#include <godot_cpp/classes/material.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

namespace truck_models {

// Flatbed truck, baked under truck_<colour>; goods stand on it from (0, 0.84, 0.85), 1.7 wide and 2.3 long.
Node3D *truck(const Color &colour);
Node3D *gold_truck();
// The supply van on its balloon.
Node3D *flying_van();
// Posts and wheel stop of a loading bay, about its zone's centre; a dock's are richer.
Node3D *bay(bool dock);
// Floor of a depot about its zone, its top at y 0.14; the goods lie at its back, under the awning.
Node3D *depot();
// A board with three stars; gives the stars, left to right, none lit.
Array star_markers(Node3D *parent, const Vector3 &at);
void light_star(MeshInstance3D *star, bool on);
// One straight piece of belt along -z about its middle, the surface at `height`; its child "Strip" moves.
Node3D *belt_piece(float length, float height);
Ref<Material> belt_material(double speed);

} // namespace truck_models
} // namespace tilm
