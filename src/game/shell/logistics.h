#pragma once
// World's trucks, docks, depots and belts: building them from plan entries, what a delivered order brings, their part
// of the save document.

#include <cstdint>

#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

#include "farm_items/zone_core.h"

namespace tilm {
using namespace godot;

class Conveyor;
class TruckDepot;
class World;

class Logistics {
public:
    explicit Logistics(World &world) : world(world) {}

    // A market truck from its plan entry.
    TruckDepot *build_truck(const Dictionary &entry);
    // The dock of a factory, with its star markers; kept as the node `<id>_dock`. For the builder of factories.
    TruckDepot *build_dock(const Dictionary &factory);
    void set_dock_level(const String &factory_id, int level);
    // Raises a depot: its floor at level 1, its van at 2.
    void raise_depot(const Dictionary &entry, int level);
    // Raises the belts of a factory; builds nothing that has no start or end.
    void raise_belt(const Dictionary &entry, int level);

    // A truck was loaded in full: missions, friends, and stars for quick orders at a dock.
    void order_done(TruckDepot *dock, int64_t reward, double mult);

    Array list() const { return trucks; } // TruckDepots, shared
    int64_t star_count() const;

    // Keys `trucks`, `truck_done`, `dock_done` and `stars` of the farm's document.
    void load(const Dictionary &doc);
    void save(Dictionary doc) const;

private:
    World &world;
    Array trucks;
    Dictionary served;    // group -> orders done
    Dictionary dock_done; // group -> quick orders done
    Dictionary stars;     // group -> 1 .. 3

    TruckDepot *build(const String &group, const Array &goods, const Variant &colour, double x);
    void restore(TruckDepot *truck) const;
    ZoneCore *zone_of(const String &group, bool give) const;
    Conveyor *belt(const String &name, const Array &path, const Array &kinds, PileCore *from, ZoneCore *to);
};

} // namespace tilm
