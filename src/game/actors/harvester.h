#pragma once
// The harvesting machine: drives serpentines over its field, cuts, and ships what it has cut to the pallet.

#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>

#include "fields.h"
#include "glebworks/live_ref.h"
#include "rules/field_rules.h"

namespace tilm {
using namespace godot;

class CropField;
class PileCore;

class Harvester : public Node3D {
    GDCLASS(Harvester, Node3D)

public:
    // Makes the harvester of a plan entry (`color`) for `field`; add it to the tree at once after. Null without a
    // field.
    static Harvester *build(const Dictionary &entry, CropField *field);
    // Bakes its models ahead of its building.
    static void warm(const Color &paint);
    void setup(CropField *field, PileCore *pallet, const Color &paint);
    void set_level(int l);
    int get_level() const { return level; }
    // Sends carried goods to the pallet as far as it has room.
    void _ship();
    // Drives and cuts for `dt` seconds.
    void step(double dt);

    TM_FIELD(int, carried, 0)
    TM_FIELD(int, tally, 0)
    TM_FIELD(double, speed, 2.8)
    TM_FIELD(int, cells, rules::cells_per_good) // cut plants for one good
    int get_cursor() const { return cursor; }
    CropField *get_field() const;
    PileCore *get_pallet() const { return pallet.get(); }

    void _ready() override;
    void _process(double dt) override;

protected:
    static void _bind_methods();

private:
    void drive(double dt);
    void cut();
    Vector3 forward() const;

    LiveRef<CropField> field;
    LiveRef<PileCore> pallet;
    int level = 1;
    int cursor = 0;
    double far_clock = 0;
    std::vector<rules::RoutePoint> route;
    rules::RoutePoint parking;
    Vector3 velocity;
    Node3D *rollers = nullptr;
    Color paint = Color(0.94f, 0.42f, 0);
};

} // namespace tilm
