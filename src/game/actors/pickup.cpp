#include "game/actors/pickup.h"

#include <algorithm>

#include "game/actors/cash_tile.h"
#include "game/actors/item.h"
#include "game/actors/zone.h"
#include "game/ports/farm.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double give_seconds = 0.25;
constexpr int most_steps = 4; // a long frame does not turn into a landslide

} // namespace

void Pickup::zones(const Array &zones, const Vector3 &p, StackCore *stack, double dt) {
    zone_clock = std::min(zone_clock + dt, zone_seconds * most_steps);
    while (zone_clock >= zone_seconds) {
        zone_clock -= zone_seconds;
        zone_step(zones, p, stack);
    }
}

void Pickup::zone_step(const Array &zones, const Vector3 &p, StackCore *stack) {
    if (!stack) {
        return;
    }
    if (!stack->is_full()) {
        full_told = false;
    }
    for (int64_t i = 0; i < zones.size(); i++) {
        ZoneCore *zone = Object::cast_to<ZoneCore>(zones[i].get_validated_object());
        if (!zone || !zone->active || !zone->has_point(p)) {
            continue;
        }
        PileCore *pile = zone->get_pile();
        if (!pile) {
            continue;
        }
        if (zone->is_give()) {
            give_one(*zone, *pile, *stack);
        } else if (!stack->is_full() && pile->count() > 0) {
            stack->add(pile->take(String()));
            Sfx::sound(TM_NAME("item_pick"));
        }
        if (stack->is_full() && pile->count() > 0 && !full_told) {
            full_told = true;
            Sfx::sound(TM_NAME("stack_full"));
        }
    }
}

void Pickup::give_one(ZoneCore &zone, PileCore &pile, StackCore &stack) {
    if (stack.count() == 0) {
        return;
    }
    const Array kinds = zone.accepts.keys();
    for (int64_t i = 0; i < kinds.size(); i++) {
        const String kind = kinds[i];
        if (!stack.has_kind(kind) || zone.room(kind) <= 0) {
            continue;
        }
        pile.add(stack.take(kind), give_seconds);
        Sfx::sound(TM_NAME("item_drop"));
        if (zone.get_group().begins_with("stall_")) {
            if (Farm *farm = Farm::current()) {
                farm->tutorial_event("give");
            }
        }
        return;
    }
}

void Pickup::cash_step(const Array &tiles, const Vector3 &p, double radius, double dt,
                       const std::function<void(Item *)> &collect) {
    const Array reached = CashCore::near(tiles, p, radius);
    if (reached.is_empty()) {
        cash_clock = 0.0;
        return;
    }
    cash_clock += dt * bills_per_second;
    while (cash_clock >= 1.0) {
        cash_clock -= 1.0;
        Item *bill = nullptr;
        for (int64_t i = 0; i < reached.size() && !bill; i++) {
            if (CashTile *tile = Object::cast_to<CashTile>(reached[i].get_validated_object())) {
                bill = tile->take_bill();
            }
        }
        if (!bill) {
            cash_clock = 0.0;
            return;
        }
        collect(bill);
    }
}

} // namespace tilm
