#include "game/actors/money_stack.h"

#include <algorithm>

#include <godot_cpp/core/error_macros.hpp>

#include "farm_items/world_place.h"
#include "game/actors/item.h"
#include "names.h"
#include "rules/items.h"
#include "rules/stacking.h"

namespace tilm {

namespace {

constexpr const char *tier_kinds[] = {"bill", "gold", "case"};
constexpr double grow_seconds = 0.2;
constexpr double shrink_seconds = 0.15;
constexpr double spend_seconds = 0.25;
constexpr double gain_seconds = 0.22;
constexpr double born_scale = 0.2;
constexpr double gone_scale = 0.01;

} // namespace

void MoneyStack::_bind_methods() {
    ClassDB::bind_method(D_METHOD("show_money", "total", "from_item", "to_pos"), &MoneyStack::show_money);
    ClassDB::bind_method(D_METHOD("get_tier"), &MoneyStack::get_tier);
    ClassDB::bind_method(D_METHOD("bars"), &MoneyStack::bars);
}

void MoneyStack::_notification(int what) {
    if (what != NOTIFICATION_PREDELETE) {
        return;
    }
    while (!items.empty()) {
        items.remove_at(items.size() - 1)->queue_free();
    }
    for (const Scaling &s : scaling) {
        if (ItemCore *it = Object::cast_to<ItemCore>(ObjectDB::get_instance(s.id))) {
            it->queue_free();
        }
    }
    scaling.clear();
}

void MoneyStack::show_money(int64_t total, Object *from_item, const Variant &to_pos) {
    ItemCore *source = Object::cast_to<ItemCore>(from_item);
    if (!Item::items_root()) {
        ERR_PRINT("MoneyStack::show_money with no World items root");
        if (source) {
            source->queue_free();
        }
        return;
    }
    const rules::MoneyShow show = rules::money_show(total);
    if (show.tier >= 0 && show.tier != tier) {
        while (!items.empty()) {
            shrink_away(items.remove_at(items.size() - 1));
        }
        tier = show.tier;
        set_tier_h((double)rules::item_height(tier_kinds[tier]));
    }
    while (items.size() > show.count) {
        ItemCore *it = items.remove_at(items.size() - 1);
        if (to_pos.get_type() == Variant::VECTOR3) {
            it->fly_to(to_pos, spend_seconds);
            scale_over(it, 1.0, spend_seconds, true);
        } else {
            shrink_away(it);
        }
    }
    const String kind = tier_kinds[tier];
    while (items.size() < show.count) {
        const Vector3 slot = slot_global(items.size());
        if (source && source->get_kind() == kind) {
            items.push(source);
            source->fly_to(slot, gain_seconds);
            source = nullptr;
            continue;
        }
        Item *it = Item::spawn(kind, slot);
        it->set_target_yaw(yaw_of(world_transform(this)) + 1.57079632679489661923);
        it->set_scale(Vector3(1, 1, 1) * (real_t)born_scale);
        items.push(it);
        scale_over(it, 1.0, grow_seconds, false);
    }
    if (source) {
        source->fly_to(slot_global(std::max(0, items.size() - 1)), gain_seconds);
        scale_over(source, 1.0, gain_seconds, true);
    }
}

void MoneyStack::shrink_away(ItemCore *it) {
    scale_over(it, gone_scale, shrink_seconds, true);
}

void MoneyStack::scale_over(ItemCore *it, double to, double dur, bool free_after) {
    const uint64_t id = it->get_instance_id();
    const double from = it->get_scale().x;
    for (Scaling &s : scaling) {
        if (s.id == id) {
            s = {id, 0.0, dur, from, to, free_after};
            return;
        }
    }
    scaling.push_back({id, 0.0, dur, from, to, free_after});
}

void MoneyStack::step_scaling(double dt) {
    for (size_t i = 0; i < scaling.size();) {
        Scaling &s = scaling[i];
        ItemCore *it = Object::cast_to<ItemCore>(ObjectDB::get_instance(s.id));
        if (!it) {
            s = scaling.back();
            scaling.pop_back();
            continue;
        }
        s.t = std::min(1.0, s.t + dt / s.dur);
        if (s.from != s.to) {
            it->set_scale(Vector3(1, 1, 1) * (real_t)(s.from + (s.to - s.from) * s.t));
            // A resting instance would keep its old size.
            it->wake();
        }
        if (s.t >= 1.0) {
            if (s.free_after) {
                it->queue_free();
            }
            s = scaling.back();
            scaling.pop_back();
            continue;
        }
        i++;
    }
}

void MoneyStack::_process(double dt) {
    if (in_editor()) {
        return;
    }
    step_scaling(dt);
    MoneyCore::_process(dt);
}

} // namespace tilm
