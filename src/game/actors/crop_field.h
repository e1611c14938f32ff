#pragma once
// A crop field of the farm: bed, fences, plants, and the pallet where its harvest waits.

#include <godot_cpp/variant/dictionary.hpp>

#include "farm_fields/field_core.h"
#include "farm_items/zone_core.h"
#include "glebworks/live_ref.h"

namespace tilm {

class PileCore;

class CropField : public FieldCore {
    GDCLASS(CropField, FieldCore)

public:
    // Makes the field of a plan entry (id, crop, rect, pallet, bed) with its zone; add it to the tree at once after.
    // Null with one log line for an entry without a usable rect or crop.
    static CropField *build(const Dictionary &entry);
    // Bakes the ground and the fences of a plan entry ahead of its building.
    static void warm(const Dictionary &entry);
    // Lays the bed and plants crop `k` over the world rectangle `r`; a second call replants.
    void setup(const String &k, const Rect2 &r);

    String get_crop() const { return crop; }
    String get_id() const { return id; }
    PileCore *get_pallet() const { return pallet.get(); }
    Ref<ZoneCore> get_take_zone() const { return take_zone; }
    int get_cells() const { return rules::cells_per_good; }
    Vector3 centre() const;
    // Where a worker of level `n` (from 1), number `i` of his pair, puts his goods down.
    Vector3 drop_spot(int i, int n) const;

    void _ready() override;

protected:
    static void _bind_methods();

private:
    void build_pallet(const Vector2 &at);

    String crop;
    String id;
    LiveRef<PileCore> pallet;
    LiveRef<Node> bed;
    LiveRef<Node> plants;
    Ref<ZoneCore> take_zone;
    Dictionary entry;
};

} // namespace tilm
