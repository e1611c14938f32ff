#pragma once
// The arrow at the player's feet that points to the tile to buy next, and bobs over it when it is near.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class GuideArrow {
public:
    void build(Node *parent);
    // No target hides it.
    void aim(bool has_target, const Vector3 &at);
    void step(const Vector3 &player, double delta);

private:
    Node3D *node = nullptr;
    Vector3 target;
    bool wanted = false;
    float clock = 0;
};

} // namespace tilm
