#pragma once
// A belt as it is seen: dark strips whose marks run with the goods, yellow rails, legs.

#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/variant/array.hpp>

#include "farm_belts/conveyor_core.h"

namespace tilm {
using namespace godot;

class Conveyor : public ConveyorCore {
    GDCLASS(Conveyor, ConveyorCore)

public:
    TM_FIELD(Array, points, Array()) // world positions on the ground; set before it enters the tree

    // A loose belt from `from` into `to`.
    static Conveyor *build(const Array &path, const Array &kinds, PileCore *from, const Ref<ZoneCore> &to);

    // Sets `speed` and lets the marks on the belt run as fast.
    void set_belt_speed(double v);

    void _ready() override;

protected:
    static void _bind_methods();

private:
    void draw();

    Array strips; // MeshInstance3D, children
};

} // namespace tilm
