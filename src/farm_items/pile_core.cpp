#include "farm_items/pile_core.h"

#include <algorithm>

#include "farm_items/goods_ledger.h"
#include "farm_items/world_place.h"
#include "rules/stacking.h"

namespace tilm {

PileCore::PileCore() : items(this, &PileCore::lost_item) {}
PileCore::~PileCore() = default;

void PileCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("count"), &PileCore::count);
    ClassDB::bind_method(D_METHOD("is_full"), &PileCore::is_full);
    ClassDB::bind_method(D_METHOD("count_kind", "k"), &PileCore::count_kind);
    ClassDB::bind_method(D_METHOD("recount"), &PileCore::recount);
    ClassDB::bind_method(D_METHOD("slot_global", "i"), &PileCore::slot_global);
    ClassDB::bind_method(D_METHOD("add", "it", "dur"), &PileCore::add);
    ClassDB::bind_method(D_METHOD("take", "k"), &PileCore::take);
    ClassDB::bind_method(D_METHOD("drop", "k", "n"), &PileCore::drop);
    ClassDB::bind_method(D_METHOD("_reflow"), &PileCore::_reflow);
    ClassDB::bind_method(D_METHOD("_count_sign"), &PileCore::_count_sign);

    TM_BIND_FIELD(PileCore, Variant::ARRAY, items);
    TM_BIND_FIELD(PileCore, Variant::INT, cols);
    TM_BIND_FIELD(PileCore, Variant::INT, rows);
    TM_BIND_FIELD(PileCore, Variant::VECTOR2, spacing);
    TM_BIND_FIELD(PileCore, Variant::FLOAT, layer_h);
    TM_BIND_FIELD(PileCore, Variant::INT, max_items);
    TM_BIND_FIELD(PileCore, Variant::BOOL, flat);
    TM_BIND_FIELD(PileCore, Variant::INT, show_limit);
    TM_BIND_FIELD(PileCore, Variant::FLOAT, sign_height);
    TM_BIND_FIELD(PileCore, Variant::BOOL, no_sign);
}

void PileCore::lost_item(void *self, ItemCore *it) {
    static_cast<PileCore *>(self)->count_up(it->kind_id, -1);
}

void PileCore::count_up(KindId id, int by) {
    for (KindCount &c : counts) {
        if (c.id == id) {
            c.n = std::max(0, c.n + by);
            return;
        }
    }
    if (by > 0) {
        counts.push_back({id, by});
    }
}

int PileCore::count_of(KindId id) const {
    for (const KindCount &c : counts) {
        if (c.id == id) {
            return c.n;
        }
    }
    return 0;
}

int PileCore::count_kind(const String &k) const {
    return count_of(item_kinds::find(k));
}

void PileCore::recount() {
    counts.clear();
    for (const ItemCore *it : items) {
        count_up(it->kind_id, 1);
    }
}

rules::PileGrid PileCore::grid() const {
    return {cols, rows, spacing.x, spacing.y, layer_h, flat, show_limit};
}

Vector3 PileCore::slot_in(const rules::PileGrid &cells, const Transform3D &at, int i) {
    const rules::Place place = rules::pile_place(cells, i);
    return at.xform(Vector3((real_t)place.x, (real_t)place.y, (real_t)place.z));
}

Vector3 PileCore::slot_global(int i) const {
    return slot_in(grid(), world_transform(this), i);
}

void PileCore::add(ItemCore *it, double dur) {
    const int n = items.size();
    if (!items.push(it)) {
        return;
    }
    count_up(it->kind_id, 1);
    const Transform3D at = world_transform(this);
    it->set_target_yaw(yaw_of(at));
    it->fly_to(slot_in(grid(), at, n), dur);
    it->follow_speed = 25.0;
    it->hide_on_arrival = show_limit > 0 && n >= show_limit;
    _count_sign();
}

ItemCore *PileCore::take(const String &k) {
    const bool any = k.is_empty();
    const KindId id = item_kinds::find(k);
    for (int i = items.size() - 1; i >= 0; i--) {
        if (any || items[i]->kind_id == id) {
            ItemCore *it = items[i];
            take_item(it);
            return it;
        }
    }
    return nullptr;
}

bool PileCore::take_item(ItemCore *it) {
    if (!items.remove(it)) {
        return false;
    }
    count_up(it->kind_id, -1);
    it->hide_on_arrival = false;
    if (!it->is_visible()) {
        it->set_visible(true);
    }
    _reflow();
    return true;
}

void PileCore::drop(const String &k, int n) {
    const bool any = k.is_empty();
    const KindId id = item_kinds::find(k);
    for (int i = items.size() - 1; i >= 0 && n > 0; i--) {
        if (any || items[i]->kind_id == id) {
            ItemCore *it = items.remove_at(i);
            count_up(it->kind_id, -1);
            GoodsLedger::leave(it);
            n--;
        }
    }
    _reflow();
}

void PileCore::_reflow() {
    const int shown = show_limit > 0 ? std::min(count(), show_limit) : count();
    const rules::PileGrid cells = grid();
    const Transform3D at = world_transform(this);
    for (int i = 0; i < shown; i++) {
        ItemCore *it = items[i];
        it->hide_on_arrival = false;
        if (!it->is_visible()) {
            it->set_visible(true);
        }
        const Vector3 slot = slot_in(cells, at, i);
        if (it->target != slot) {
            it->set_target(slot);
        }
    }
    _count_sign();
}

} // namespace tilm
