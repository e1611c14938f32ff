#pragma once
// The per-frame engine of a belt: goods ride a polyline from a pile to a zone's pile, queue without pushing, and wait
// for room.

#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/packed_float64_array.hpp>

#include "farm_items/item_kinds.h"
#include "farm_items/item_list.h"
#include "farm_items/zone_core.h"
#include "fields.h"
#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class ConveyorCore : public Node3D {
    GDCLASS(ConveyorCore, Node3D)

public:
    ConveyorCore();
    // What still rides goes back to the source, or is freed with it.
    ~ConveyorCore() override;

    TM_FIELD(Ref<ZoneCore>, dst, Ref<ZoneCore>())
    TM_FIELD(double, speed, 2.0)        // units a second
    TM_FIELD(double, spacing, 0.75)     // least gap along the belt
    TM_FIELD(double, height, 0.12)      // surface above the path
    TM_FIELD(double, force_after, -1.0) // seconds until the head is pushed into a full zone; negative: never
    TM_FIELD(double, force_clock, 0.0)

    void set_src(PileCore *pile) { src.set(pile); }
    PileCore *get_src() const { return src.get(); }
    void set_kinds(const Array &list);
    Array get_kinds() const { return kind_names; }

    // The path of the belt and the node that plays its sounds (`Sfx`, or null). Starts the belt.
    void core_join(const Array &points, Node *sfx);

    // The head first. Goods that are set while they ride keep their place, others start at the beginning.
    Array get_items() const { return items.to_array(); }
    void set_items(const Array &from);
    PackedFloat64Array get_offsets() const;
    double get_total() const { return total; }
    int riding() const { return items.size(); }
    Vector3 point_at(double distance) const;

    // One frame of `dt` seconds; far off view it gathers time and runs four times a second.
    void step(double dt);
    void _process(double dt) override;

protected:
    static void _bind_methods();

private:
    struct Kind {
        String name;
        KindId id;
    };
    // Parallel to `items`.
    struct Rider {
        ItemCore *item;
        double offset;
    };

    static void lost_item(void *self, ItemCore *it);
    bool is_near() const;
    bool is_shown() const;
    void advance(double way);
    void place_riders();
    void deliver(double d);
    void feed();
    int riding_of(KindId id) const;
    Vector3 lift() const { return Vector3(0, (real_t)(height + 0.05), 0); }

    LiveRef<PileCore> src;
    LiveRef<Node> sfx;
    Array kind_names;
    std::vector<Kind> kinds;
    ItemList items;
    std::vector<Rider> riders;
    std::vector<Vector3> path;
    std::vector<double> lengths; // of each segment
    double total = 0;
    double slow_clock = 0;
};

} // namespace tilm
