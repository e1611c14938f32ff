#include "farm_items/money_core.h"

#include <algorithm>

#include "farm_items/item_core.h"
#include "farm_items/world_place.h"
#include "glebworks/glebworks.h"

namespace tilm {

namespace {

constexpr double view_margin = 8.0;
constexpr double half_pi = 1.57079632679489661923;

} // namespace

MoneyCore::MoneyCore() : items(this) {}
MoneyCore::~MoneyCore() = default;

void MoneyCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("count"), &MoneyCore::count);
    ClassDB::bind_method(D_METHOD("slot_global", "i"), &MoneyCore::slot_global);
    ClassDB::bind_method(D_METHOD("get_sway"), &MoneyCore::get_sway);
    ClassDB::bind_method(D_METHOD("set_sway", "v"), &MoneyCore::set_sway);
    TM_BIND_FIELD(MoneyCore, Variant::ARRAY, items);
    TM_BIND_FIELD(MoneyCore, Variant::VECTOR3, base);
    TM_BIND_FIELD(MoneyCore, Variant::FLOAT, tier_h);
    ADD_PROPERTY(PropertyInfo(Variant::VECTOR3, "sway"), "set_sway", "get_sway");
}

void MoneyCore::_ready() {
    last_pos = get_global_position();
}

Vector3 MoneyCore::slot_in(const Transform3D &xf, int i) const {
    const int layer = i / 2;
    const Vector3 at((real_t)(i % 2 * 0.34 - 0.17 + base.x), (real_t)(layer * tier_h + base.y), base.z);
    const double lean = layer / 20.0;
    return xf.xform(at) + sway * (real_t)(lean * lean * 0.6);
}

Vector3 MoneyCore::slot_global(int i) const {
    return slot_in(world_transform(this), std::max(0, i));
}

void MoneyCore::_process(double dt) {
    const Vector3 pos = get_global_position();
    if (items.empty() || !Glebworks::in_view(pos, view_margin)) {
        sway = Vector3();
        velocity = Vector3();
        last_pos = pos;
        return;
    }
    if (dt > 0.0) {
        velocity += ((pos - last_pos) / (real_t)dt - velocity) * (real_t)eased(8.0, dt);
        sway += (velocity * (real_t)-0.03 - sway) * (real_t)eased(6.0, dt);
    }
    last_pos = pos;
    const Transform3D xf = get_global_transform();
    const double yaw = yaw_of(xf) + half_pi;
    for (int i = 0; i < items.size(); i++) {
        ItemCore *it = items[i];
        const Vector3 at = slot_in(xf, i);
        // A lean too small to see does not keep the money awake.
        if (it->target.distance_squared_to(at) > 1e-8f) {
            it->set_target(at);
        }
        if (!nearly(it->target_yaw, yaw)) {
            it->set_target_yaw(yaw);
        }
        it->follow_speed = 30.0 - std::min(18.0, i * 0.5);
    }
}

} // namespace tilm
