#pragma once
// The van that flies past a depot and fills its pile for free.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/variant/array.hpp>

#include "farm_items/zone_core.h"
#include "fields.h"
#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class SupplyVan : public Node3D {
    GDCLASS(SupplyVan, Node3D)

public:
    TM_FIELD(Ref<ZoneCore>, zone, Ref<ZoneCore>())
    TM_FIELD(Array, kinds, Array())
    TM_FIELD(double, timer, 0.0) // seconds to the next trip
    TM_FIELD(bool, busy, false)  // on a trip

    // A loose van for the pile and zone of a depot.
    static SupplyVan *build(PileCore *stock, const Ref<ZoneCore> &give, const Array &goods);

    void set_pile(PileCore *p) { pile.set(p); }
    PileCore *get_pile() const { return pile.get(); }
    // At least 1; widens the depot's limits.
    void set_level(int64_t l);
    int64_t get_level() const { return level; }
    Node3D *get_model() const { return model; }

    // One frame of `dt` seconds; far off view it gathers time and runs four times a second.
    void step(double dt);
    void drop();
    void _process(double dt) override;
    void _ready() override;

protected:
    static void _bind_methods();

private:
    void start_trip();
    void trip_done();
    void widen();

    LiveRef<PileCore> pile;
    Node3D *model = nullptr; // a child, hidden between trips
    Ref<Tween> trip;
    int64_t level = 1;
    double slow_clock = 0;
};

} // namespace tilm
