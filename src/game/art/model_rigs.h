#pragma once
// Rigged people and animals: one instanced mesh each, whose limbs the shader bends by angles that the pose batch
// writes.

#include <godot_cpp/classes/material.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

namespace model_rigs {

// Replaces the meshes below `body` by one rigged MultiMeshInstance3D named `Mesh` beside it and registers the pose.
// The up to four `limbs` keep their nodes, so that they can be turned and worn on; `tail` (may be null) only swishes.
void make_rig(Node3D *root, Node3D *body, const Array &limbs, const Node *tail, const String &key,
              const Ref<Material> &material, float cull_margin);
// The joints that the rig of this key leaves, so that its tree need not be built again; null before the first one.
Node3D *known_body(const String &key);
// Makes one mesh of all opaque ones that hang on the same joint, joint by joint: a tree that is moved by its joints
// costs a draw for each of them and not for each button. Looks of the same `key` share the meshes.
void merge_parts(Node3D *part, const String &key);
// The person tree without a rig: Body, LegL, LegR (Knee), ArmL, ArmR (Elbow), Head.
Node3D *person_tree(const Dictionary &look);
// The animal tree without a rig, null for a product that has none.
Node3D *animal_tree(const String &product);

} // namespace model_rigs
} // namespace tilm
