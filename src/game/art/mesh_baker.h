#pragma once
// Turns a tree of MeshInstance3D into one surface: simplifying, merging with shade and colour, clustering.

#include <vector>

#include <godot_cpp/classes/array_mesh.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/packed_color_array.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>
#include <godot_cpp/variant/packed_vector2_array.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/transform3d.hpp>

namespace tilm {
using namespace godot;

namespace mesh_baker {

// One limb of a rig: vertices below `node` turn about `pivot` (y, z of the body's space).
struct Limb {
    const Node3D *node;
    Vector2 pivot;
    float number;
};

struct MergeOptions {
    float shade_height = 0;  // 0: no shade
    int grid = 0;            // 0: no clustering
    std::vector<Limb> limbs; // not empty: UV and UV2 carry the limb channels
};

// What a model key's prefix asks for.
float shade_height_of(const String &key);
int grid_of(const String &key);

// All mesh nodes below `root` (not itself), depth first.
std::vector<MeshInstance3D *> meshes_below(Node *root);
// The node's transform in the space of `root`, whose own transform is left out.
Transform3D local_to(const Node3D *node, const Node *root);
// A colour's factor at height y with normal component ny: darker towards the foot, a little lighter on top.
float shade_factor(float y, float normal_y, float shade_height);

// Removes mesh nodes whose visible size is under `smallest` and caps the detail of the others.
void simplify(Node3D *root, float smallest);
// The coarser pass for goods and houses.
void simplify_more(Node3D *root);
// Merges into one mesh named `key`; logs and gives a mesh without surface when nothing is left.
Ref<ArrayMesh> merge(const std::vector<MeshInstance3D *> &meshes, const Node *root, const String &key,
                     const MergeOptions &options);

} // namespace mesh_baker
} // namespace tilm
