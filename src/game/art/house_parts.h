#pragma once
// Pieces that houses are put together from. All lengths in metres; fronts face +z.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

namespace house_parts {

// Gable roof with its ridge along z: three overlapping rows of shingles on each side, ridge cap included. `at` is the
// middle of the eaves' line, `half` the half width between the walls.
void roof(Node3D *parent, const Vector3 &at, float half, float rise, float depth, const Color &color);
// Walls as a tapered block with corner posts and a triangle under the roof.
void walls(Node3D *parent, const Vector3 &at, const Vector3 &size, float rise, const Color &wall, const Color &trim);
// Boards drawn on a front: upright grooves.
void planks(Node3D *parent, const Vector3 &at, float width, float height, int count, const Color &groove);
void window(Node3D *parent, const Vector3 &at, float width, float height, const Color &frame);
void double_door(Node3D *parent, const Vector3 &at, float width, float height, const Color &door, const Color &trim);
// Post and rail fence from a to b (both on the ground).
void fence_run(Node3D *parent, const Vector3 &a, const Vector3 &b, const Color &wood, float height = 0.62f);
// Ground of a yard with the darker ring of grass round it.
void trodden(Node3D *parent, const Color &ground);
// Fenced yard x -2.75..2.75, z -2.8..1.75 of trodden ground, open in the middle of its front.
void yard(Node3D *parent, const Color &ground, const Color &wood);
void bush(Node3D *parent, const Vector3 &at, float size, const Color &leaf, int seed);
void flowers(Node3D *parent, const Vector3 &at, float radius, int count, int seed);
// Foot at `at`; its glass glows by night.
void lantern(Node3D *parent, const Vector3 &at, float size = 1);
void barrel(Node3D *parent, const Vector3 &at, float size);
void crate(Node3D *parent, const Vector3 &at, float size, float turn);
void hay_bale(Node3D *parent, const Vector3 &at, float turn);
// Two or three stacked tones of a round leafy crown on a trunk, for trees that stand within a house's mesh.
void orchard_tree(Node3D *parent, const Vector3 &at, float size, const Color &leaf, const Color &fruit, int seed);

} // namespace house_parts
} // namespace tilm
