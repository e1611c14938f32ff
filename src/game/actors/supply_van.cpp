#include "game/actors/supply_van.h"

#include <algorithm>

#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/variant/callable_method_pointer.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_items/pile_core.h"
#include "farm_items/world_place.h"
#include "game/actors/item.h"
#include "game/art/truck_models.h"
#include "game/ports/farm.h"
#include "game/sound/sfx.h"
#include "glebworks/glebworks.h"
#include "names.h"
#include "rules/trucks.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr double far_step = 0.25;
constexpr double near_margin = 8.0;
constexpr float reach = 22.0f; // along x, to either side of the depot
constexpr float flight_height = 1.6f;
constexpr double drive_seconds = 1.6;
constexpr double unload_seconds = 1.4;
constexpr double idle_seconds = 1.0; // before looking for room again
constexpr double drop_flight = 0.45;
constexpr float model_scale = 0.8f;

} // namespace

SupplyVan *SupplyVan::build(PileCore *stock, const Ref<ZoneCore> &give, const Array &goods) {
    SupplyVan *van = memnew(SupplyVan);
    van->set_pile(stock);
    van->set_zone(give);
    van->set_kinds(goods);
    if (give.is_valid()) {
        van->set_position(give->get_pos());
    }
    van->set_level(1);
    return van;
}

void SupplyVan::_ready() {
    if (in_editor()) {
        return;
    }
    model = truck_models::flying_van();
    model->set_scale(Vector3(model_scale, model_scale, model_scale));
    model->set_rotation(Vector3(0, (real_t)(-Math_PI * 0.5), 0)); // its nose to +x
    model->set_visible(false);
    add_child(model);
    set_process(true);
}

void SupplyVan::set_level(int64_t l) {
    level = std::max<int64_t>(1, l);
    widen();
}

void SupplyVan::widen() {
    const int64_t limit = rules::van_kind_limit(level);
    if (zone.is_valid()) {
        Dictionary accepts = zone->get_accepts();
        for (int64_t i = 0; i < kinds.size(); i++) {
            accepts[kinds[i]] = std::max(read_whole(accepts, kinds[i]), limit);
        }
    }
    if (PileCore *p = pile.get()) {
        p->set_max_items(std::max(p->get_max_items(), (int)std::min<int64_t>(limit * kinds.size(), 1000000)));
    }
}

void SupplyVan::_process(double dt) {
    step(dt);
}

void SupplyVan::step(double dt) {
    if (!(dt >= 0.0)) {
        return;
    }
    slow_clock += dt;
    if (slow_clock < far_step && !Glebworks::in_view(world_position(this), near_margin)) {
        return;
    }
    const double d = slow_clock;
    slow_clock = 0;
    if (busy) {
        return;
    }
    timer -= d;
    if (timer > 0.0) {
        return;
    }
    if (zone.is_valid() && zone->has_room_for_any(kinds)) {
        start_trip();
    } else {
        timer = idle_seconds;
    }
}

void SupplyVan::start_trip() {
    const Farm *farm = Farm::current();
    timer = rules::van_pause(level, farm != nullptr && farm->is_night());
    busy = true;
    if (model == nullptr || !is_inside_tree()) {
        drop();
        trip_done();
        return;
    }
    const Vector3 over = zone->get_pos() + Vector3(0, flight_height, 0);
    model->set_global_position(over - Vector3(reach, 0, 0));
    model->set_visible(true);
    trip = create_tween();
    trip->tween_property(model, NodePath("global_position:x"), over.x, drive_seconds)
        ->set_trans(Tween::TRANS_QUAD)
        ->set_ease(Tween::EASE_OUT);
    trip->tween_callback(callable_mp(this, &SupplyVan::drop));
    trip->tween_interval(unload_seconds);
    trip->tween_property(model, NodePath("global_position:x"), over.x + reach, drive_seconds)
        ->set_trans(Tween::TRANS_QUAD)
        ->set_ease(Tween::EASE_IN);
    trip->tween_callback(callable_mp(this, &SupplyVan::trip_done));
}

void SupplyVan::trip_done() {
    if (model != nullptr) {
        model->set_visible(false);
    }
    busy = false;
}

void SupplyVan::drop() {
    PileCore *p = pile.get();
    if (p == nullptr || zone.is_null()) {
        return;
    }
    const Vector3 from = world_position(model != nullptr ? model : this);
    Sfx::sound_at(TM_NAME("toot"), get_instance_id(), from);
    Sfx::sound_at(TM_NAME("crate_thud"), get_instance_id(), from);
    for (int64_t round = rules::van_rounds(level); round > 0; round--) {
        for (int64_t i = 0; i < kinds.size() && !p->is_full(); i++) {
            if (zone->room(kinds[i]) <= 0) {
                continue;
            }
            const Vector3 scatter((real_t)UtilityFunctions::randf_range(-0.4, 0.4), 1.2f,
                                  (real_t)UtilityFunctions::randf_range(-0.3, 0.3));
            const GoodsVerb verb("supplied");
            p->add(Item::spawn(kinds[i], from + scatter), drop_flight);
        }
    }
}

void SupplyVan::_bind_methods() {
    ClassDB::bind_static_method("SupplyVan", D_METHOD("build", "stock", "give", "goods"), &SupplyVan::build);
    ClassDB::bind_method(D_METHOD("step", "dt"), &SupplyVan::step);
    ClassDB::bind_method(D_METHOD("drop"), &SupplyVan::drop);
    ClassDB::bind_method(D_METHOD("get_model"), &SupplyVan::get_model);
    TM_BIND_FIELD(SupplyVan, Variant::OBJECT, pile);
    TM_BIND_FIELD(SupplyVan, Variant::OBJECT, zone);
    TM_BIND_FIELD(SupplyVan, Variant::ARRAY, kinds);
    TM_BIND_FIELD(SupplyVan, Variant::INT, level);
    TM_BIND_FIELD(SupplyVan, Variant::FLOAT, timer);
    TM_BIND_FIELD(SupplyVan, Variant::BOOL, busy);
    ADD_PROPERTY(PropertyInfo(Variant::OBJECT, "model"), "", "get_model");
}

} // namespace tilm
