#include "farm_shop/hauler_brain.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>

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
constexpr double distance_cost = 0.15; // goods that a unit of way is worth
constexpr int64_t plenty = 20;
constexpr int64_t plenty_animals = 6;
constexpr int64_t trough_reserve = 20; // left at the source while troughs are hungry
constexpr int64_t hen_lead = 20;
constexpr int64_t hen_msec = 90000;

// What each processing machine has the first claim to.
struct MachineNeed {
    const char *machine;
    const char *kind;
};
constexpr MachineNeed machine_needs[] = {
    {"coffee_grinder", "bean"}, {"ahwa", "coffee"},  {"flour_mill", "wheat"},
    {"oil_press", "sunflower"}, {"butcher", "calf"}, {"poultry_plant", "hen"},
};

bool is_group(const ZoneCore *zone, const char *name) {
    return zone->get_group() == name || zone->get_owner_group() == name;
}

} // namespace

double HaulerBrain::road_z = 1.2;
int64_t HaulerBrain::last_stall_trip = -1;
int64_t HaulerBrain::hen_stall = 0;
int64_t HaulerBrain::hen_plant = 0;

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
        kinds.push_back(k[i]);
    }
}

Array HaulerBrain::get_kinds() const {
    Array out;
    for (const String &k : kinds) {
        out.push_back(k);
    }
    return out;
}

void HaulerBrain::set_dst_group(const String &g) {
    dst_group = g;
    to_feed = g == "@feed";
    dst_names.clear();
    const PackedStringArray names = g.split("|");
    for (int64_t i = 0; i < names.size(); ++i) {
        if (!names[i].is_empty()) {
            dst_names.push_back(names[i]);
        }
    }
    seen_zones = -1;
}

void HaulerBrain::clear_hens() {
    last_stall_trip = -1;
    hen_stall = 0;
    hen_plant = 0;
}

void HaulerBrain::refresh_lists() {
    if (zones.size() == seen_zones) {
        return;
    }
    seen_zones = zones.size();
    destinations.clear();
    takes.clear();
    feeds.clear();
    machines.clear();
    for (int64_t i = 0; i < zones.size(); ++i) {
        Ref<ZoneCore> zone = zones[i];
        if (zone.is_null()) {
            continue;
        }
        const String group = zone->get_group();
        const String owner = zone->get_owner_group();
        const bool feed = group.ends_with("_feed");
        auto named = [&](const String &name) { return name == group || (!owner.is_empty() && name == owner); };
        if (to_feed ? feed : std::any_of(dst_names.begin(), dst_names.end(), named)) {
            destinations.push_back(zone);
        }
        if (zone->is_take()) {
            takes.push_back(zone);
        }
        if (feed) {
            feeds.push_back(zone);
        }
        for (const MachineNeed &need : machine_needs) {
            if (is_group(zone.ptr(), need.machine)) {
                machines.push_back(zone);
                break;
            }
        }
    }
}

// With no kinds of its own a hauler carries whatever the destination takes.
const std::vector<String> &HaulerBrain::kinds_for(const ZoneCore *zone) const {
    if (!kinds.empty()) {
        return kinds;
    }
    accepted.clear();
    const Array keys = zone->get_accepts().keys();
    for (int64_t i = 0; i < keys.size(); ++i) {
        accepted.push_back(keys[i]);
    }
    return accepted;
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

void HaulerBrain::step_choose() {
    refresh_lists();
    candidates.clear();
    for (const Ref<ZoneCore> &zone : destinations) {
        if (!zone->get_active()) {
            continue;
        }
        for (const String &k : kinds_for(zone.ptr())) {
            const int64_t want = zone->room(k) - zone->claimed(k, walker_id);
            if (want > 0) {
                candidates.push_back({want, zone.ptr(), k});
            }
        }
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate &a, const Candidate &b) { return a.want > b.want; });
    for (const Candidate &c : candidates) {
        if (try_candidate(c)) {
            return;
        }
    }
    rest(rest_seconds);
}

bool HaulerBrain::try_candidate(const Candidate &c) {
    int64_t available = 0;
    ZoneCore *from = best_source(c.kind, c.zone, available);
    const bool hen = c.kind == "hen";
    const bool much = from != nullptr && available >= (hen || c.kind == "calf" ? plenty_animals : plenty);
    const bool troughs_first = feed_first(c.kind);
    if (troughs_first && !much) {
        return false;
    }
    if (hen && hens_forbid(c.zone, available)) {
        return false;
    }
    if (!much) {
        const bool stalls_turn = hen && is_group(c.zone, "stall_hen") && hen_stall <= hen_plant;
        if (from == nullptr || (!stalls_turn && machine_wants(c.kind))) {
            return false;
        }
    }
    int64_t n = std::min<int64_t>(walker->get_stack()->get_capacity(), c.want);
    if (troughs_first) {
        n = std::min(n, available - trough_reserve);
    }
    if (n < 1) {
        return false;
    }
    drop_claims();
    source = Ref<ZoneCore>(from);
    destination = Ref<ZoneCore>(c.zone);
    kind = c.kind;
    source->claim(walker_id, kind, static_cast<int>(n));
    destination->claim(walker_id, kind, static_cast<int>(n));
    state = to_source;
    route_to(source->get_pos());
    return true;
}

ZoneCore *HaulerBrain::best_source(const String &k, const ZoneCore *to, int64_t &available) const {
    ZoneCore *best = nullptr;
    double best_score = 0.0;
    const Vector3 here = walker->get_position();
    for (const Ref<ZoneCore> &zone : takes) {
        if (!zone->get_active() || zone->get_makes() != k) {
            continue;
        }
        const PileCore *pile = zone->get_pile();
        const int64_t a = pile == nullptr ? 0 : pile->count_kind(k) - zone->claimed(k, walker_id);
        if (a <= 0) {
            continue;
        }
        const Vector3 at = zone->get_pos();
        const double score =
            static_cast<double>(a) - distance_cost * (here.distance_to(at) + at.distance_to(to->get_pos()));
        if (best == nullptr || score > best_score) {
            best = zone.ptr();
            best_score = score;
            available = a;
        }
    }
    return best;
}

bool HaulerBrain::feed_first(const String &k) const {
    if (to_feed || (k != "corn" && k != "hay")) {
        return false;
    }
    return std::any_of(feeds.begin(), feeds.end(), [&](const Ref<ZoneCore> &zone) {
        return zone->get_active() && zone->room(k) > trough_half;
    });
}

bool HaulerBrain::machine_wants(const String &k) const {
    for (const MachineNeed &need : machine_needs) {
        if (k != need.kind || dst_group == need.machine) {
            continue;
        }
        for (const Ref<ZoneCore> &zone : machines) {
            if (zone->get_active() && is_group(zone.ptr(), need.machine) && zone->room(k) > 0) {
                return true;
            }
        }
    }
    return false;
}

// Keeps hens flowing to both the stall and the plant: what the stall asks for holds the plant's trips back a while.
bool HaulerBrain::hens_forbid(const ZoneCore *to, int64_t available) {
    const int64_t now = static_cast<int64_t>(Time::get_singleton()->get_ticks_msec());
    if (is_group(to, "stall_hen")) {
        last_stall_trip = now;
        hen_plant = std::min(hen_plant, hen_stall + hen_lead);
        return false;
    }
    return is_group(to, "poultry_plant") && last_stall_trip >= 0 && now - last_stall_trip < hen_msec &&
           hen_plant > hen_stall && available < plenty;
}

void HaulerBrain::count_hen(const ZoneCore *to) {
    if (is_group(to, "stall_hen")) {
        ++hen_stall;
    } else if (is_group(to, "poultry_plant")) {
        ++hen_plant;
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
        const int64_t reserve = feed_first(kind) ? trough_reserve : 0;
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
            rest(rest_seconds);
        }
    }
}

String HaulerBrain::fitting_kind(StackCore *stack, const ZoneCore *zone) const {
    for (const String &k : kinds_for(zone)) {
        if (stack->has_kind(k) && zone->room(k) > 0) {
            return k;
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
        for (const String &k : kinds_for(zone.ptr())) {
            const int64_t room = stack->has_kind(k) ? zone->room(k) : 0;
            if (room > best_room) {
                best = zone.ptr();
                best_room = room;
                best_kind = k;
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
            rest(rest_seconds);
            return;
        }
        PileCore *pile = source.is_valid() && source->get_active() ? source->get_pile() : nullptr;
        if (pile != nullptr) {
            pile->add(item, 0.25);
            play(sfx.id(), TM_NAME("worker_drop"));
        } else {
            item->queue_free();
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

void HaulerBrain::rest(double seconds) {
    drop_claims();
    state = resting;
    timer = -seconds;
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
    rest(rest_seconds);
}

bool HaulerBrain::can_break() const {
    const StackCore *stack = walker == nullptr ? nullptr : walker->get_stack();
    return (state == choose || state == resting) && (stack == nullptr || stack->count() == 0);
}

bool HaulerBrain::quiet() const {
    return state == resting && can_break();
}

bool HaulerBrain::feed_busy() const {
    if (!to_feed) {
        return false;
    }
    for (const Ref<ZoneCore> &zone : feeds) {
        if (!zone->get_active()) {
            continue;
        }
        for (const String &k : kinds_for(zone.ptr())) {
            if (zone->room(k) > trough_half) {
                return true;
            }
        }
    }
    return false;
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
