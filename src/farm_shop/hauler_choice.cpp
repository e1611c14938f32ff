// How a hauler chooses its next job.

#include "farm_shop/hauler_brain.h"

#include <algorithm>
#include <array>

#include <godot_cpp/classes/time.hpp>

#include "farm_items/pile_core.h"
#include "farm_items/stack_core.h"
#include "glebworks/walker_core.h"

namespace tilm {

namespace {

constexpr double distance_cost = 0.15; // goods that a unit of way is worth
constexpr int64_t plenty = 20;
constexpr int64_t plenty_animals = 6;
constexpr int64_t hen_lead = 20;
constexpr int64_t hen_msec = 90000;

// What each processing machine has the first claim to.
struct MachineNeed {
    KindId machine;
    KindId kind;
};

const std::array<MachineNeed, 6> &machine_needs() {
    using item_kinds::intern;
    static const std::array<MachineNeed, 6> needs = {{
        {intern("coffee_grinder"), intern("bean")},
        {intern("ahwa"), intern("coffee")},
        {intern("flour_mill"), intern("wheat")},
        {intern("oil_press"), intern("sunflower")},
        {intern("butcher"), intern("calf")},
        {intern("poultry_plant"), intern("hen")},
    }};
    return needs;
}

KindId stall_hen() {
    static const KindId id = item_kinds::intern("stall_hen");
    return id;
}

KindId poultry_plant() {
    static const KindId id = item_kinds::intern("poultry_plant");
    return id;
}

} // namespace

int64_t HaulerBrain::last_stall_trip = -1;
int64_t HaulerBrain::hen_stall = 0;
int64_t HaulerBrain::hen_plant = 0;

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
        auto named = [&](KindId id) { return zone->in_group(id); };
        if (to_feed ? zone->is_feed() : std::any_of(dst_groups.begin(), dst_groups.end(), named)) {
            destinations.push_back(zone);
        }
        if (zone->is_take()) {
            takes.push_back(zone);
        }
        if (zone->is_feed()) {
            feeds.push_back(zone);
        }
        for (const MachineNeed &need : machine_needs()) {
            if (zone->in_group(need.machine)) {
                machines.push_back(zone);
                break;
            }
        }
    }
}

// With no kinds of its own a hauler carries whatever the destination takes.
const std::vector<HaulerBrain::Cargo> &HaulerBrain::kinds_for(const ZoneCore *zone) const {
    if (!kinds.empty()) {
        return kinds;
    }
    accepted.clear();
    const Array keys = zone->get_accepts().keys();
    for (int64_t i = 0; i < keys.size(); ++i) {
        accepted.emplace_back(keys[i]);
    }
    return accepted;
}

void HaulerBrain::step_choose() {
    refresh_lists();
    candidates.clear();
    for (const Ref<ZoneCore> &zone : destinations) {
        if (!zone->get_active()) {
            continue;
        }
        for (const Cargo &k : kinds_for(zone.ptr())) {
            const int64_t want = zone->room_of(k.key, k.id) - zone->claimed_of(k.id, walker_id);
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
    rest();
}

bool HaulerBrain::try_candidate(const Candidate &c) {
    int64_t available = 0;
    ZoneCore *from = best_source(c.cargo.id, c.zone, available);
    const String &good = c.cargo.name;
    const bool hen = good == "hen";
    const bool much = from != nullptr && available >= (hen || good == "calf" ? plenty_animals : plenty);
    const bool troughs_first = feed_first(c.cargo);
    if (troughs_first && !much) {
        return false;
    }
    if (hen && hens_forbid(c.zone, available)) {
        return false;
    }
    if (!much) {
        const bool stalls_turn = hen && c.zone->in_group(stall_hen()) && hen_stall <= hen_plant;
        if (from == nullptr || (!stalls_turn && machine_wants(c.cargo))) {
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
    kind = good;
    source->claim(walker_id, kind, static_cast<int>(n));
    destination->claim(walker_id, kind, static_cast<int>(n));
    state = to_source;
    route_to(source->get_pos());
    return true;
}

ZoneCore *HaulerBrain::best_source(KindId id, const ZoneCore *to, int64_t &available) const {
    ZoneCore *best = nullptr;
    double best_score = 0.0;
    const Vector3 here = walker->get_position();
    for (const Ref<ZoneCore> &zone : takes) {
        if (!zone->get_active() || zone->makes_id() != id) {
            continue;
        }
        const PileCore *pile = zone->get_pile();
        const int64_t a = pile == nullptr ? 0 : pile->count_of(id) - zone->claimed_of(id, walker_id);
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

bool HaulerBrain::feed_first(const Cargo &c) const {
    if (to_feed || (c.name != "corn" && c.name != "hay")) {
        return false;
    }
    return std::any_of(feeds.begin(), feeds.end(), [&](const Ref<ZoneCore> &zone) {
        return zone->get_active() && zone->room_of(c.key, c.id) > trough_half;
    });
}

bool HaulerBrain::machine_wants(const Cargo &c) const {
    for (const MachineNeed &need : machine_needs()) {
        if (c.id != need.kind || dst_group_id == need.machine) {
            continue;
        }
        for (const Ref<ZoneCore> &zone : machines) {
            if (zone->get_active() && zone->in_group(need.machine) && zone->room_of(c.key, c.id) > 0) {
                return true;
            }
        }
    }
    return false;
}

// Keeps hens flowing to both the stall and the plant: what the stall asks for holds the plant's trips back a while.
bool HaulerBrain::hens_forbid(const ZoneCore *to, int64_t available) {
    const int64_t now = static_cast<int64_t>(Time::get_singleton()->get_ticks_msec());
    if (to->in_group(stall_hen())) {
        last_stall_trip = now;
        hen_plant = std::min(hen_plant, hen_stall + hen_lead);
        return false;
    }
    return to->in_group(poultry_plant()) && last_stall_trip >= 0 && now - last_stall_trip < hen_msec &&
           hen_plant > hen_stall && available < plenty;
}

void HaulerBrain::count_hen(const ZoneCore *to) {
    if (to->in_group(stall_hen())) {
        ++hen_stall;
    } else if (to->in_group(poultry_plant())) {
        ++hen_plant;
    }
}

bool HaulerBrain::feed_busy() const {
    if (!to_feed) {
        return false;
    }
    for (const Ref<ZoneCore> &zone : feeds) {
        if (!zone->get_active()) {
            continue;
        }
        for (const Cargo &k : kinds_for(zone.ptr())) {
            if (zone->room_of(k.key, k.id) > trough_half) {
                return true;
            }
        }
    }
    return false;
}

} // namespace tilm
