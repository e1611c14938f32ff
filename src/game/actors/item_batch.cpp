#include "game/actors/item_batch.h"

#include "game/art/models.h"
#include "glebworks/pose_batch.h"
#include "names.h"

namespace tilm {

namespace {

constexpr int after_all_goods = 1000; // process priority: the goods of this frame have moved by then

} // namespace

void ItemBatch::_ready() {
    if (in_editor()) {
        return;
    }
    set_mat(Models::farm_material());
    configure(-31.0, 5.2);
    set_process_priority(after_all_goods);
}

void ItemBatch::_process(double) {
    if (in_editor()) {
        return;
    }
    PoseBatch::sync_poses();
    push();
}

} // namespace tilm
