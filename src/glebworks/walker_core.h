#pragma once
// Everyone who walks: follows way points with an eased velocity, swings limbs, and leaves the per-frame loop when it is
// off screen (see FarList). Decisions live in its WalkerBrain or in a derived class.
// Positions are read and written in the parent's space: walkers stand under a root at the origin.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/string_name.hpp>

#include "fields.h"
#include "glebworks/walker_brain.h"

namespace tilm {
using namespace godot;

class StackCore;

class WalkerCore : public Node3D {
    GDCLASS(WalkerCore, Node3D)

    friend class FarList;

public:
    ~WalkerCore() override;

    TM_FIELD(double, speed, 3.4)       // units a second
    TM_FIELD(double, rest_mult, 1.0)   // set by the workday
    TM_FIELD(double, cover_speed, 1.0) // 1.2 while covering for somebody
    TM_FIELD(double, phase, 0.0)       // walk cycle, radians
    TM_FIELD(Vector3, velocity, Vector3())
    TM_FIELD(bool, idle, false)
    TM_FIELD(int64_t, idle_count, -1)
    TM_FIELD(double, rest_wait, 0.0)
    TM_FIELD(double, rest_interval, 0.0) // seconds between rest_due() calls
    TM_FIELD(double, far_clock, 0.0)
    TM_FIELD(bool, asleep, false)
    TM_FIELD(bool, far_skip, false) // the far list leaves its brain alone

    // Way points, the next one first. Only x and z matter. The Array is a copy.
    void set_path(const Array &points);
    Array get_path() const;
    const std::vector<Vector3> &way() const { return path; }
    void clear_path() { path.clear(); }
    // C++ shorthands of walk_to.
    void go(const Vector3 &a);
    void go(const Vector3 &a, const Vector3 &b);
    void go(const Vector3 &a, const Vector3 &b, const Vector3 &c);

    void set_brain(const Ref<WalkerBrain> &b);
    Ref<WalkerBrain> get_brain() const { return brain; }

    // `parts`: body, left leg, right leg, left arm, right arm; missing ones may be null. All live as long as the walker
    // or until the next core_bind.
    void core_bind(Node3D *model, StackCore *stack, const Array &parts);
    void walk_to(const Array &points) { set_path(points); }
    bool arrived() const { return path.empty(); }
    void face(const Vector3 &dir, double dt);
    bool core_step(double dt); // true if it moved and stands on screen
    double lod(double dt);     // seconds that the brain is to step now
    bool rest_step(double dt); // true: on a break, the brain does nothing
    void core_animate(double dt, bool carrying);
    static void tick_far(double dt);
    static void set_boost(double v) { boost = v; }
    static double get_boost() { return boost; }

    // Asked every rest_interval seconds with the seconds since the last time: is the walker on a break?
    virtual bool rest_due(double t);

    void _process(double dt) override;
    // What the far list runs for a walker without a brain.
    virtual void far_frame(double dt) { _process(dt); }

    Node3D *get_model() const { return model; }
    StackCore *get_stack() const { return stack; }
    Vector3 forward() const; // of the model, unit length on the ground
    double effective_speed() const { return speed * rest_mult * cover_speed * boost; }
    bool in_far_list() const { return listed; }
    // Tells the pose batch that the model's nodes were turned.
    void pose_moved() const;

protected:
    static void _bind_methods();

    enum Part { body, leg_l, leg_r, arm_l, arm_r, part_count };

    void follow_path(double dt); // plain, without easing

    std::vector<Vector3> path;
    Ref<WalkerBrain> brain;
    Node3D *model = nullptr;
    StackCore *stack = nullptr;
    Node3D *parts[part_count] = {};
    double body_y = 0.0; // height of the body at rest
    int pose = -1;

private:
    bool listed = false;  // has an entry in the far list
    bool ticking = false; // the far list is inside its brain
    double stamp = 0.0;   // far clock of the list at the last far step

    static double boost;
};

} // namespace tilm
