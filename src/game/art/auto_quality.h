#pragma once
// Applies the level of graphics quality and, on phones and with --autoq, steps it down for good while frames are slow.

#include <godot_cpp/classes/node.hpp>

#include "fields.h"

namespace tilm {
using namespace godot;

class AutoQuality : public Node {
    GDCLASS(AutoQuality, Node)

public:
    void _ready() override;
    void _process(double delta) override;

    // Sets viewport, shadow atlas and sun by the level in force.
    void apply();
    // --quality= if given, else the saved setting.
    int level() const;

    TM_FIELD(double, wait, 12.0)      // seconds before the next measurement
    TM_FIELD(int64_t, start_ticks, 0) // of the measurement, microseconds
    TM_FIELD(int64_t, frames, 0)      // since then

protected:
    static void _bind_methods();

private:
    int fixed = -1;        // --quality=
    bool own_scale = true; // without --scale3d=
    void measure();
};

} // namespace tilm
