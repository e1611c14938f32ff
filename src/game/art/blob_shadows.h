#pragma once
// Soft dark spots on the ground under people, animals, buildings and trees, for when the sun throws no shadow: one
// draw.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/directional_light3d.hpp>
#include <godot_cpp/classes/geometry_instance3d.hpp>
#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/variant/aabb.hpp>

#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class BlobShadows {
public:
    // Remembers a piece of geometry with its world bounds if it is one that throws a spot.
    void take(GeometryInstance3D *g, const AABB &bounds);
    // Once a frame: nothing while the sun throws shadows. The spots are drawn below `parent`.
    void step(Node *parent);
    const Node *node() const { return drawn.get(); }
    int shown() const { return count; } // spots of the last step
    int known() const { return int(spots.size()); }

private:
    struct Spot {
        uint64_t id;
        GeometryInstance3D *node;
        Vector2 half, mid; // x, z; mid from the node's position
        float lift;        // above the ground
    };

    std::vector<Spot> spots;
    LiveRef<MultiMeshInstance3D> drawn;
    LiveRef<DirectionalLight3D> sun;
    Ref<MultiMesh> mesh;
    int count = 0;
    size_t cursor = 0; // of drop_one_dead()

    bool sun_throws();
    void build(Node *parent);
    void lay();
    void drop_one_dead();
};

} // namespace tilm
