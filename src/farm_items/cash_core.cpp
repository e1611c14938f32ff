#include "farm_items/cash_core.h"

#include <godot_cpp/core/class_db.hpp>

#include "farm_items/world_place.h"
#include "fields.h"

namespace tilm {

CashCore::CashCore() : bills(this, nullptr, ItemList::Role::index) {}
CashCore::~CashCore() = default;

void CashCore::_bind_methods() {
    ClassDB::bind_static_method("CashCore", D_METHOD("near", "tiles", "p", "reach"), &CashCore::near);
    TM_BIND_FIELD(CashCore, Variant::ARRAY, bills);
}

Array CashCore::near(const Array &tiles, const Vector3 &p, double reach) {
    Array out;
    const double reach2 = reach * reach;
    for (int64_t i = 0; i < tiles.size(); i++) {
        const CashCore *tile = Object::cast_to<CashCore>(tiles[i].get_validated_object());
        if (tile && !tile->bills.empty() && reach >= 0.0 &&
            world_position(tile).distance_squared_to(p) <= (real_t)reach2) {
            out.push_back(tiles[i]);
        }
    }
    return out;
}

} // namespace tilm
