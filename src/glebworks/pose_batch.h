#pragma once
// Draws each rigged person or animal as one instance: writes the body's transform and four limb angles of everybody who
// moved into their MultiMesh. Bound as statics of Glebworks.

#include <cstdint>

#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>

namespace tilm {
using namespace godot;

class PoseBatch {
public:
    // `body` and the up to four `limbs` are plain nodes below `root`; `mm` has one instance with custom data. The pose
    // is dropped when the root is freed.
    static void pose_add(Node3D *root, Node3D *body, const Array &limbs, const Ref<MultiMesh> &mm);
    // Once a frame. Moved poses are written at once, all others are looked at on every tenth call.
    static void sync_poses();
    // Rewrites a mesh's instances from its owners' global transforms; dead owners are left out.
    static void push_moving(const Ref<MultiMesh> &mm, const Array &owners);

    // The pose of a model root, -1 without one; mark it whenever its nodes were turned.
    static int find(const Node3D *root);
    static void mark_moved(int pose);

    static int count();
    static int written(); // instances written by the last sync_poses()
};

} // namespace tilm
