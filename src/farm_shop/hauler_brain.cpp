#include "farm_shop/hauler_brain.h"

#include <cmath>

#include <godot_cpp/variant/packed_string_array.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_items/pile_core.h"
#include "farm_items/stack_core.h"
#include "glebworks/walker_core.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double move_every = 0.1; // seconds a good
constexpr double rest_seconds = 1.0;
constexpr double give_up_after = 10.0;
constexpr double look_after = 2.5;

} // namespace

double HaulerBrain::road_z = 1.2;

HaulerBrain::~HaulerBrain() {
    drop_claims();
}

void HaulerBrain::detach() {
    drop_claims();
    WalkerBrain::detach();
}

void HaulerBrain::set_zones(const Array &z) {
    zones = z;
    seen_zones = -1;
}

void HaulerBrain::set_kinds(const Array &k) {
    kinds.clear();
    for (int64_t i = 0; i < k.size(); ++i) {
        kinds.emplace_back(k[i]);
    }
}

Array HaulerBrain::get_kinds() const {
    Array out;
    for (const Cargo &k : kinds) {
        out.push_back(k.name);
    }
    return out;
}

void HaulerBrain::set_dst_group(const String &g) {
    dst_group = g;
    dst_group_id = item_kinds::intern(g);
    to_feed = g == "@feed";
    dst_groups.clear();
    const PackedStringArray names = g.split("|");
    for (int64_t i = 0; i < names.size(); ++i) {
        if (!names[i].is_empty()) {
            dst_groups.push_back(item_kinds::intern(names[i]));
        }
    }
    seen_zones = -1;
}

void HaulerBrain::tick(double dt) {
    if (walker == nullptr) {
        return;
    }
    const double step = walker->lod(dt);
    if (step <= 0.0) {
        return;
    }
    if (walker->rest_step(step) || walker->get_stack() == nullptr) {
        return;
    }
    switch (state) {
    case choose:
        step_choose();
        break;
    case to_source:
        if (walker->arrived()) {
            state = load;
            timer = 0.0;
        }
        break;
    case load:
        step_load(step);
        break;
    case to_destination:
        if (walker->arrived()) {
            state = unload;
            timer = wait_clock = retarget_clock = 0.0;
        }
        break;
    case unload:
        step_unload(step);
        break;
    case give_back:
        step_give_back(step);
        break;
    default:
        timer += step;
        if (timer >= 0.0) {
            state = choose;
        }
        break;
    }
    if (walker != nullptr && walker->core_step(step)) {
        walker->core_animate(step, false);
    }
}

bool HaulerBrain::next_move() {
    if (timer < move_every) {
        return false;
    }
    timer -= move_every;
    return true;
}

void HaulerBrain::step_load(double dt) {
    StackCore *stack = walker->get_stack();
    timer += dt;
    while (state == load && next_move()) {
        PileCore *pile = source.is_valid() && source->get_active() ? source->get_pile() : nullptr;
        const int64_t room = destination.is_null() ? 0
                                                   : destination->room(kind) - destination->claimed(kind, walker_id) -
                                                         stack->count_kind(kind);
        const int64_t reserve = feed_first(Cargo(kind)) ? trough_reserve : 0;
        ItemCore *item = nullptr;
        if (room >= 1 && !stack->is_full() && pile != nullptr &&
            pile->count_kind(kind) - source->claimed(kind, walker_id) > reserve) {
            item = pile->take(kind);
        }
        if (item != nullptr) {
            stack->add(item);
            play(sfx.id(), TM_NAME("worker_pick"));
        } else if (stack->count() > 0 && destination.is_valid()) {
            release(source);
            state = to_destination;
            route_to(destination->get_pos());
        } else {
            rest();
        }
    }
}

String HaulerBrain::fitting_kind(StackCore *stack, const ZoneCore *zone) const {
    for (const Cargo &k : kinds_for(zone)) {
        if (stack->has_kind(k.name) && zone->room_of(k.key, k.id) > 0) {
            return k.name;
        }
    }
    return String();
}

void HaulerBrain::step_unload(double dt) {
    StackCore *stack = walker->get_stack();
    timer += dt;
    while (state == unload && next_move()) {
        PileCore *pile = destination.is_null() ? nullptr : destination->get_pile();
        const String k = pile == nullptr ? String() : fitting_kind(stack, destination.ptr());
        if (!k.is_empty()) {
            pile->add(stack->take(k), 0.25);
            ++delivered;
            if (k == "hen") {
                count_hen(destination.ptr());
            }
            play(sfx.id(), TM_NAME("worker_drop"));
            if (stack->count() == 0) {
                finish();
            }
            continue;
        }
        if (stack->count() == 0) {
            finish();
            continue;
        }
        wait_clock += move_every;
        retarget_clock += move_every;
        if (wait_clock >= give_up_after - 1e-9) {
            release(destination);
            state = give_back;
            timer = 0.0;
            if (source.is_valid() && source->get_active() && source->get_pile() != nullptr) {
                route_to(source->get_pos());
            } else {
                walker->clear_path();
            }
        } else if (retarget_clock > look_after) {
            retarget_clock = 0.0;
            look_elsewhere(stack);
        }
    }
}

void HaulerBrain::look_elsewhere(StackCore *stack) {
    refresh_lists();
    ZoneCore *best = nullptr;
    int64_t best_room = 0;
    String best_kind;
    for (const Ref<ZoneCore> &zone : destinations) {
        if (!zone->get_active()) {
            continue;
        }
        for (const Cargo &k : kinds_for(zone.ptr())) {
            const int64_t room = stack->has_kind(k.name) ? zone->room_of(k.key, k.id) : 0;
            if (room > best_room) {
                best = zone.ptr();
                best_room = room;
                best_kind = k.name;
            }
        }
    }
    if (best == nullptr || best == destination.ptr()) {
        return;
    }
    release(destination);
    destination = Ref<ZoneCore>(best);
    kind = best_kind;
    destination->claim(walker_id, kind, stack->count_kind(kind));
    state = to_destination;
    route_to(destination->get_pos());
}

void HaulerBrain::step_give_back(double dt) {
    if (!walker->arrived()) {
        return;
    }
    timer += dt;
    while (state == give_back && next_move()) {
        ItemCore *item = walker->get_stack()->take(String());
        if (item == nullptr) {
            rest();
            return;
        }
        PileCore *pile = source.is_valid() && source->get_active() ? source->get_pile() : nullptr;
        if (pile != nullptr) {
            pile->add(item, 0.25);
            play(sfx.id(), TM_NAME("worker_drop"));
        } else {
            GoodsLedger::leave(item, "thrown away");
        }
    }
}

void HaulerBrain::finish() {
    release(destination);
    state = choose;
    const int64_t n = delivered;
    delivered = 0;
    walker->call(TM_NAME("work_done"), n);
}

void HaulerBrain::rest() {
    drop_claims();
    state = resting;
    timer = -rest_seconds;
}

void HaulerBrain::route_to(const Vector3 &point) {
    const Vector3 p = walker->get_position();
    if (std::abs(p.z - road_z) > 0.5 && std::abs(p.x - point.x) > 1.0) {
        walker->go(Vector3(p.x, 0, road_z), Vector3(point.x, 0, road_z), point);
    } else {
        walker->go(point);
    }
}

void HaulerBrain::release(const Ref<ZoneCore> &zone) {
    if (zone.is_valid()) {
        zone->release(walker_id);
    }
}

void HaulerBrain::drop_claims() {
    release(source);
    release(destination);
}

void HaulerBrain::reset() {
    rest();
}

bool HaulerBrain::can_break() const {
    const StackCore *stack = walker == nullptr ? nullptr : walker->get_stack();
    return (state == choose || state == resting) && (stack == nullptr || stack->count() == 0);
}

bool HaulerBrain::quiet() const {
    return state == resting && can_break();
}

void HaulerBrain::_bind_methods() {
    TM_BIND_FIELD(HaulerBrain, Variant::ARRAY, zones);
    TM_BIND_FIELD(HaulerBrain, Variant::ARRAY, kinds);
    TM_BIND_FIELD(HaulerBrain, Variant::STRING, dst_group);
    TM_BIND_FIELD(HaulerBrain, Variant::INT, state);
    TM_BIND_FIELD(HaulerBrain, Variant::INT, trough_half);
    TM_BIND_FIELD(HaulerBrain, Variant::OBJECT, sfx);
    ClassDB::bind_method(D_METHOD("can_break"), &HaulerBrain::can_break);
    ClassDB::bind_method(D_METHOD("quiet"), &HaulerBrain::quiet);
    ClassDB::bind_method(D_METHOD("feed_busy"), &HaulerBrain::feed_busy);
    ClassDB::bind_method(D_METHOD("drop_claims"), &HaulerBrain::drop_claims);
    ClassDB::bind_method(D_METHOD("reset"), &HaulerBrain::reset);
    ClassDB::bind_method(D_METHOD("get_source"), &HaulerBrain::get_source);
    ClassDB::bind_method(D_METHOD("get_destination"), &HaulerBrain::get_destination);
    ClassDB::bind_method(D_METHOD("get_kind"), &HaulerBrain::get_kind);
    ClassDB::bind_method(D_METHOD("get_delivered"), &HaulerBrain::get_delivered);
    ClassDB::bind_static_method("HaulerBrain", D_METHOD("set_road_z", "z"), &HaulerBrain::set_road_z);
    ClassDB::bind_static_method("HaulerBrain", D_METHOD("get_road_z"), &HaulerBrain::get_road_z);
}

} // namespace tilm
