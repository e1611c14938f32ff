#pragma once
// A hired field hand: cuts its field and fills the pallet.

#include "farm_fields/field_core.h"
#include "farm_items/item_core.h"
#include "farm_items/pile_core.h"
#include "farm_shop/worker_brain.h"
#include "game/actors/walker.h"

namespace tilm {
using namespace godot;

class Worker : public Walker {
    GDCLASS(Worker, Walker)

public:
    // Before it enters the tree. `name` is its id ("corn_workers#1_0"), `spot` its drop point at the pallet. It starts
    // at a random living plant, or at `pos` when the field is bare.
    void setup(const String &name, const String &crop, const Vector3 &pos, FieldCore *field, PileCore *pallet,
               const Vector3 &spot);
    void _ready() override;
    ItemCore *new_item(); // one good of the crop, just above the worker

    bool can_break() override;
    bool quiet() override;

    Ref<WorkerBrain> mind() const { return worker_brain; }
    String get_crop() const { return crop; }

protected:
    static void _bind_methods();

private:
    String crop = "corn";
    Vector3 home;
    Vector3 spot;
    LiveRef<FieldCore> field;
    LiveRef<PileCore> pallet;
    Ref<WorkerBrain> worker_brain;
};

} // namespace tilm
