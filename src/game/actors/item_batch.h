#pragma once
// The world's one drawer of goods; also runs the pose batch of people and animals each frame.

#include "farm_items/item_batch_core.h"

namespace tilm {
using namespace godot;

class ItemBatch : public ItemBatchCore {
    GDCLASS(ItemBatch, ItemBatchCore)

public:
    void _ready() override;
    void _process(double dt) override;

protected:
    static void _bind_methods() {}
};

} // namespace tilm
