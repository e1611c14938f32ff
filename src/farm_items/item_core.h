#pragma once
// One good as a node. It costs a frame step only while it moves; at rest it is an instance in a shared buffer.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>

#include "farm_items/item_kinds.h"
#include "fields.h"

namespace tilm {
using namespace godot;

class ItemList;
struct ItemChunk;

class ItemCore : public Node3D {
    GDCLASS(ItemCore, Node3D)

public:
    ItemCore();
    ~ItemCore() override;

    String kind;
    KindId kind_id = item_kinds::none; // follows `kind`
    uint32_t book = 0;                 // of which farm's books it is part, 0: of none
    const char *leaves_by = nullptr;   // the verb that takes it out of the world
    Vector3 target;
    double target_yaw = 0.0;

    TM_FIELD(int64_t, value, 0)
    TM_FIELD(double, height, 0.3)
    TM_FIELD(double, follow_speed, 22.0)
    TM_FIELD(bool, animal, false)
    TM_FIELD(bool, hide_on_arrival, false)
    TM_FIELD(double, gait_speed, 2.0)
    TM_FIELD(double, gait_swing, 18.0)
    TM_FIELD(double, gait_rate, 0.7)
    TM_FIELD(double, gait_phase, 0.0)

    void set_kind(const String &k);
    String get_kind() const { return kind; }
    void set_target(const Vector3 &v);
    Vector3 get_target() const { return target; }
    void set_target_yaw(double v);
    double get_target_yaw() const { return target_yaw; }
    void set_mesh_node(MeshInstance3D *mesh);
    // The visible mesh, a child; null once it is freed.
    MeshInstance3D *get_mesh_node() const;

    // Leaves the resting chunk and turns processing on.
    void wake();
    // Jumps there.
    void place(const Vector3 &pos);
    // Flies there in `dur` seconds; an animal walks instead.
    void fly_to(const Vector3 &pos, double dur);
    bool is_flying() const { return flight_t < 1.0; }
    bool is_batched() const { return rest_chunk != nullptr; }
    bool in_moving_pool() const { return fly_chunk != nullptr; }
    double get_flight_t() const { return flight_t; }

    void core_gait(double speed, double swing, double rate);
    void core_legs(const Array &rig_legs);
    Array get_legs() const { return legs; }
    void rig_shown(bool on);
    bool get_rig_shown() const { return rig_is_shown; }

    // Ends any movement at the target and goes to rest (or hides, if it was to hide on arrival).
    void settle();

    void _process(double dt) override;
    void _ready() override;

protected:
    static void _bind_methods();
    void _notification(int what);

private:
    friend class ItemBatchCore;
    friend class ItemList;

    void step_good(double dt);
    void step_animal(double dt);
    void arrive(bool visible);
    Vector3 standing() const;
    void move_to(const Vector3 &pos);
    void swing_legs(double dt, bool walking);
    void start();
    void leave_rest();
    void leave_moving();
    // The mesh node draws only while neither an instance nor the rig does.
    void refresh_mesh();

    ItemChunk *rest_chunk = nullptr;
    int rest_index = -1;
    ItemChunk *fly_chunk = nullptr;
    int fly_index = -1;
    Vector3 fly_start;
    double flight_t = 1.0;
    double flight_time = 0.3;
    uint64_t mesh_id = 0;
    Array legs;
    std::vector<uint64_t> leg_ids;
    std::vector<double> leg_angles;
    bool rig_is_shown = false;
    bool aimed = false; // someone has set a target
    bool mesh_on = true;
    bool shown = false;          // visible in the tree
    bool in_world_space = false; // top-level since it entered the tree
    ItemList *lists[2] = {nullptr, nullptr};
};

} // namespace tilm
