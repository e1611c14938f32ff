#pragma once
// Chunky building blocks beyond the engine's primitives: lofts, bevelled boxes, gables, extruded outlines. Vertices are
// shared between faces, so clustering never tears them; the shader shows the facets.

#include <vector>

#include <godot_cpp/classes/array_mesh.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/vector2.hpp>
#include <godot_cpp/variant/vector3.hpp>

#include "game/art/palette.h"

namespace tilm {
using namespace godot;

namespace shapes {

// One cross-section of a loft: height, half widths, and how far its centre is off the axis.
struct Ring {
    float y, rx, rz;
    float ox = 0, oz = 0;
};

// A closed skin through `rings` from below to above. `square` 0 is an ellipse, 1 almost a rectangle.
Ref<ArrayMesh> loft(const std::vector<Ring> &rings, int segments = 8, float square = 0);
// Box centred on the origin with bevelled edges; `top` scales the upper face's x and z.
Ref<ArrayMesh> bevel_box(const Vector3 &size, float bevel, float top = 1);
// Ball with few facets, squashed by `half` sizes.
Ref<ArrayMesh> ball(const Vector3 &half, int segments = 8, int rings = 4);
// Triangular prism: a gable of `width` (x), `height` (y) on y 0, `depth` (z), centred.
Ref<ArrayMesh> gable(float width, float height, float depth);
// Outline in x and y, counter-clockwise, extruded along z by `depth`, centred.
Ref<ArrayMesh> extrude(const std::vector<Vector2> &outline, float depth);
// Bent slab with `steps` folds: an arc of `angle` radians about the x axis, `radius`, `width` (x), `thick`.
Ref<ArrayMesh> arc(float radius, float thick, float width, float angle, int steps);

// A single bent leaf of three triangles, seen from both sides only with culling off: `rise` up, `reach` to +z.
Ref<ArrayMesh> blade(float width, float rise, float reach);

// Places a mesh: one coloured node below `parent`. Turns in degrees.
MeshInstance3D *put(Node *parent, const Ref<Mesh> &mesh, const Color &color, const Vector3 &pos,
                    const Vector3 &turn = Vector3(), const Vector3 &scale = Vector3(1, 1, 1));
inline MeshInstance3D *put(Node *parent, const Ref<Mesh> &mesh, uint32_t rgb, const Vector3 &pos,
                           const Vector3 &turn = Vector3(), const Vector3 &scale = Vector3(1, 1, 1)) {
    return put(parent, mesh, pal::col(rgb), pos, turn, scale);
}
// An empty named joint below `parent`.
Node3D *joint(Node *parent, const char *name, const Vector3 &pos);

// A repeatable scatter number in 0..1 for index `i` of series `seed`.
float rnd(int seed, int i);
// The same in low..high.
float rnd(int seed, int i, float low, float high);

} // namespace shapes
} // namespace tilm
