#include "farm_belts/conveyor_core.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/core/error_macros.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_items/item_core.h"
#include "farm_items/pile_core.h"
#include "farm_items/world_place.h"
#include "glebworks/glebworks.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double far_step = 0.25; // seconds between steps off view
constexpr double near_margin = 8.0;
constexpr double shown_margin = 12.0;
constexpr double end_slack = 0.01;
constexpr double ride_speed = 40.0;
constexpr double step_on = 0.25; // seconds of the flight onto the belt
constexpr double step_off = 0.3;

} // namespace

ConveyorCore::ConveyorCore() : items(this, &ConveyorCore::lost_item) {}

ConveyorCore::~ConveyorCore() {
    PileCore *home = src.get();
    while (!riders.empty()) {
        ItemCore *it = riders.back().item;
        riders.pop_back();
        items.remove(it);
        if (!it->is_inside_tree()) {
            continue; // the whole farm goes
        }
        if (home != nullptr && home->is_inside_tree()) {
            home->add(it, step_on);
        } else {
            GoodsLedger::leave(it, "thrown away");
        }
    }
}

void ConveyorCore::lost_item(void *self, ItemCore *it) {
    ConveyorCore *belt = static_cast<ConveyorCore *>(self);
    auto at = std::find_if(belt->riders.begin(), belt->riders.end(), [it](const Rider &r) { return r.item == it; });
    if (at == belt->riders.end()) {
        return;
    }
    if (at == belt->riders.begin()) {
        belt->force_clock = 0;
    }
    belt->riders.erase(at);
}

void ConveyorCore::set_kinds(const Array &list) {
    kind_names = list;
    kinds.clear();
    for (int64_t i = 0; i < list.size(); i++) {
        const String name = list[i];
        if (!name.is_empty()) {
            kinds.push_back({name, item_kinds::intern(name)});
        }
    }
}

void ConveyorCore::set_items(const Array &from) {
    const std::vector<Rider> before = riders;
    items.assign(from);
    riders.clear();
    for (ItemCore *it : items) {
        auto at = std::find_if(before.begin(), before.end(), [it](const Rider &r) { return r.item == it; });
        riders.push_back({it, at == before.end() ? 0.0 : at->offset});
    }
}

PackedFloat64Array ConveyorCore::get_offsets() const {
    PackedFloat64Array out;
    for (const Rider &r : riders) {
        out.push_back(r.offset);
    }
    return out;
}

void ConveyorCore::core_join(const Array &points, Node *sounds) {
    path.clear();
    lengths.clear();
    total = 0;
    sfx.set(sounds);
    for (int64_t i = 0; i < points.size(); i++) {
        const Variant &v = points[i];
        const Vector3 p = v.get_type() == Variant::VECTOR3 ? static_cast<Vector3>(v) : Vector3(NAN, NAN, NAN);
        if (!p.is_finite()) {
            ERR_PRINT("TILMARCH belt: a point of its path is no place and was left out");
            continue;
        }
        if (!path.empty()) {
            lengths.push_back(path.back().distance_to(p));
            total += lengths.back();
        }
        path.push_back(p);
    }
    set_process(true);
}

Vector3 ConveyorCore::point_at(double distance) const {
    if (path.size() < 2) {
        return path.empty() ? Vector3() : path.front();
    }
    size_t i = 0;
    while (i + 1 < lengths.size() && distance > lengths[i]) {
        distance -= lengths[i];
        i++;
    }
    const double share = lengths[i] > 0.0 ? distance / lengths[i] : 0.0;
    return path[i].lerp(path[i + 1], (real_t)share);
}

// A belt's node may stand at the world's origin whatever its path: the ends tell, too.
bool ConveyorCore::is_near() const {
    return Glebworks::in_view(world_position(this), near_margin) || Glebworks::in_view(path.front(), near_margin) ||
           Glebworks::in_view(path.back(), near_margin);
}

bool ConveyorCore::is_shown() const {
    return Glebworks::in_view(path.front(), shown_margin) || Glebworks::in_view(path.back(), shown_margin);
}

void ConveyorCore::_process(double dt) {
    step(dt);
}

void ConveyorCore::step(double dt) {
    if (path.size() < 2 || dst.is_null() || !(dt >= 0.0)) {
        return;
    }
    slow_clock += dt;
    if (slow_clock < far_step && !is_near()) {
        return;
    }
    const double d = slow_clock;
    slow_clock = 0;
    advance(speed > 0.0 ? speed * d : 0.0);
    if (!riders.empty() && is_shown()) {
        place_riders();
    }
    deliver(d);
    feed();
}

void ConveyorCore::advance(double way) {
    double limit = std::max(0.0, total);
    for (Rider &r : riders) {
        r.offset = std::min(r.offset + way, limit);
        limit = std::max(0.0, r.offset - spacing);
    }
}

void ConveyorCore::place_riders() {
    for (const Rider &r : riders) {
        r.item->follow_speed = ride_speed;
        r.item->set_target_yaw(0.0);
        r.item->set_target(point_at(r.offset) + lift());
    }
}

void ConveyorCore::deliver(double d) {
    PileCore *pile = dst->get_pile();
    if (riders.empty() || riders.front().offset < total - end_slack || !dst->active || pile == nullptr) {
        return;
    }
    ItemCore *head = riders.front().item;
    if (dst->room(head->kind) <= 0) {
        if (!(force_after >= 0.0) || !dst->accepts.has(head->kind)) {
            return;
        }
        force_clock += d;
        if (force_clock < force_after) {
            return;
        }
    }
    force_clock = 0;
    riders.erase(riders.begin());
    items.remove(head);
    pile->add(head, step_off);
    if (Node *sounds = sfx.get()) {
        sounds->call(TM_NAME("play_at"), TM_NAME("worker_drop"), static_cast<int64_t>(get_instance_id()), dst->pos);
    }
}

int ConveyorCore::riding_of(KindId id) const {
    return (int)std::count_if(riders.begin(), riders.end(), [id](const Rider &r) { return r.item->kind_id == id; });
}

void ConveyorCore::feed() {
    PileCore *pile = src.get();
    if (pile == nullptr || pile->count() == 0 || !dst->active || (!riders.empty() && riders.back().offset < spacing)) {
        return;
    }
    const Kind *best = nullptr;
    int most = 0;
    for (const Kind &k : kinds) {
        if (pile->count_of(k.id) <= 0) {
            continue;
        }
        const int want = dst->room(k.name) - riding_of(k.id);
        if (want > most) {
            most = want;
            best = &k;
        }
    }
    ItemCore *it = best != nullptr ? pile->take(best->name) : nullptr;
    if (it == nullptr || !items.push(it)) {
        return;
    }
    riders.push_back({it, 0.0});
    it->fly_to(path.front() + lift(), step_on);
}

void ConveyorCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("core_join", "points", "sfx"), &ConveyorCore::core_join);
    ClassDB::bind_method(D_METHOD("step", "dt"), &ConveyorCore::step);
    ClassDB::bind_method(D_METHOD("riding"), &ConveyorCore::riding);
    ClassDB::bind_method(D_METHOD("point_at", "distance"), &ConveyorCore::point_at);
    ClassDB::bind_method(D_METHOD("get_offsets"), &ConveyorCore::get_offsets);
    ClassDB::bind_method(D_METHOD("get_total"), &ConveyorCore::get_total);
    TM_BIND_FIELD(ConveyorCore, Variant::OBJECT, src);
    TM_BIND_FIELD(ConveyorCore, Variant::OBJECT, dst);
    TM_BIND_FIELD(ConveyorCore, Variant::ARRAY, kinds);
    TM_BIND_FIELD(ConveyorCore, Variant::FLOAT, speed);
    TM_BIND_FIELD(ConveyorCore, Variant::FLOAT, spacing);
    TM_BIND_FIELD(ConveyorCore, Variant::FLOAT, height);
    TM_BIND_FIELD(ConveyorCore, Variant::FLOAT, force_after);
    TM_BIND_FIELD(ConveyorCore, Variant::FLOAT, force_clock);
    TM_BIND_FIELD(ConveyorCore, Variant::ARRAY, items);
}

} // namespace tilm
