#pragma once
// The per-frame engine of a truck: its clocks, its order against the goods on its bed. It tells its subclass by name.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string_name.hpp>

#include "farm_items/item_kinds.h"
#include "farm_items/pile_core.h"
#include "fields.h"
#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class TruckCore : public Node3D {
    GDCLASS(TruckCore, Node3D)

public:
    enum State { AWAY = 0, ARRIVE = 1, WAIT = 2, LEAVE = 3 };

    TM_FIELD(int, state, AWAY)
    TM_FIELD(double, t, 4.0)          // seconds to the next arrival
    TM_FIELD(double, elapsed, 0.0)    // seconds at the dock
    TM_FIELD(double, good_time, 30.0) // seconds for the best pay
    TM_FIELD(bool, hurried, false)    // the warning of this visit was given

    void set_order(const Dictionary &v) {
        order = v;
        order_changed();
    }
    Dictionary get_order() const { return order; }
    // Call it after a change inside `order`.
    void order_changed();

    // Starts the truck. The bed is owned elsewhere; null once it is freed.
    void core_join(PileCore *bed_pile);
    PileCore *get_bed() const { return bed.get(); }

    double speed_mult() const;

    // One frame of `dt` seconds; far off view it gathers time and runs four times a second.
    void step(double dt);
    void _process(double dt) override;

protected:
    static void _bind_methods();

    Dictionary order; // kind -> count

private:
    struct Line {
        KindId kind;
        int64_t count;
    };

    void step_wait(double d, bool near);
    bool order_met() const;
    void tell(const StringName &method);

    std::vector<Line> lines;
    LiveRef<PileCore> bed;
    double slow_clock = 0;
    double board_clock = 0;
};

} // namespace tilm
