#pragma once
// The per-frame engine of a pet: walks to its lead's heel or to a goal, turns, moves its legs and pulls what follows
// it. What to do next is decided by the game class, which it asks by name: think, _work, horse_tick.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/vector2.hpp>

#include "fields.h"
#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class PetCore : public Node3D {
    GDCLASS(PetCore, Node3D)

public:
    TM_FIELD(bool, heel_mode, false) // goes where its lead goes, else to `goal`
    TM_FIELD(bool, working, false)   // calls _work when it stands at the goal
    TM_FIELD(bool, at_home, false)
    TM_FIELD(Vector3, goal, Vector3())
    TM_FIELD(Vector2, heel_offset, Vector2()) // x beside the lead (times side), y behind it
    TM_FIELD(double, side, 1.0)
    TM_FIELD(double, top, 7.5)    // units a second, the wish
    TM_FIELD(double, _speed, 0.0) // units a second, now
    TM_FIELD(bool, horse, false)

    double get_speed() const { return _speed; }
    void set_speed(double v) { _speed = v; }
    // The lead's instance id, 0 for none. A lead that is gone stops the pet where it is.
    int64_t get_lead() const { return static_cast<int64_t>(lead_id); }
    void set_lead(const Variant &node_or_id);
    Node3D *lead_node() const;

    // `body` is the model that bobs; `follows` are nodes in world space that are pulled behind, in order, and whose
    // children `WheelL` and `WheelR` roll.
    void core_join(bool is_horse, Object *body, const Array &follows);
    // Nodes that the gait turns; any may be null. A leg's child `Low` is its lower half.
    void core_rig(Object *rig, const Array &legs, Object *tail, Object *jaw, Object *head, Object *neck);
    void core_set(const Variant &lead, bool home, bool work, double top_speed, const Vector3 &to);
    void core_heel(const Variant &lead, const Vector2 &heel, double to_side);
    // Where it is going now.
    Vector3 target() const;
    bool is_running() const { return running; }
    Array get_follows() const;
    Node3D *get_body() const { return body.get(); }

    void _ready() override;
    void _process(double dt) override;
    // One step of `dt` seconds.
    void core_step(double dt);
    // Stands at `p` from now on, facing `yaw`; what follows stands behind it.
    void jump(const Vector3 &p, double yaw);

    static constexpr real_t hitch = 1.9; // from the pet to what it pulls, in a straight line

protected:
    static void _bind_methods();

private:
    struct Follower {
        LiveRef<Node3D> node;
        LiveRef<Node3D> wheels[2];
    };
    struct Leg {
        LiveRef<Node3D> upper;
        LiveRef<Node3D> lower;
    };

    double walk(double dt); // units moved
    void turn(double to_yaw, double dt);
    void pull();
    void animate(double dt);

    uint64_t lead_id = 0;
    bool running = false;
    bool asked = false; // which calls the class answers is looked up once
    bool can_think = false;
    bool can_work = false;
    bool can_horse = false;
    double gait = 0.0;  // radians
    double clock = 0.0; // seconds, for poses at rest
    double stride = 0.0;
    double body_y = 0.0;
    LiveRef<Node3D> body;
    LiveRef<Node3D> tail, jaw, head, neck;
    double neck_x = 0.0;
    std::vector<Leg> legs;
    std::vector<Follower> follow_list;
};

} // namespace tilm
