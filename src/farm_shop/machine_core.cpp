#include "farm_shop/machine_core.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/core/error_macros.hpp>

#include "farm_items/world_place.h"
#include "glebworks/glebworks.h"
#include "glebworks/water_meta.h"
#include "names.h"
#include "rules/machine_rules.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr double view_margin = 8.0;
constexpr int64_t most_inputs = 62; // bits of the need mask
constexpr int64_t most_units = 1000;
const Vector3 late_hand(2.05f, 1.4f, 0.6f);

} // namespace

double MachineCore::boost = 1.0;

void MachineCore::set_boost(double v) {
    if (!std::isfinite(v) || v <= 0) {
        ERR_PRINT("TILMARCH machine boost must be above 0; left as it was");
        return;
    }
    boost = v;
}

void MachineCore::set_smoke(CPUParticles3D *particles) {
    smoke.set(particles);
    running_shown = -1;
}

void MachineCore::slow_join() {
    flavored = !flavors.is_empty();
    needs = flattened(recipe);
    flavor_list.clear();
    const Array kinds = flavors.keys();
    for (int64_t i = 0; i < kinds.size(); ++i) {
        const String kind = kinds[i];
        flavor_list.push_back({item_kinds::intern(kind), kind, flattened(read_table(flavors, kinds[i]))});
    }
    shown_mask = -1;
    Glebworks::slow_add(this);
}

// A recipe with a bad row is no recipe: a machine must not make goods from less than it should.
MachineCore::Needs MachineCore::flattened(const Dictionary &from) const {
    Needs list;
    const Array kinds = from.keys();
    for (int64_t i = 0; i < kinds.size(); ++i) {
        const String kind = kinds[i];
        const int64_t n = read_whole(from, kinds[i]);
        if (kind.is_empty() || n < 1 || n > most_units || i >= most_inputs) {
            ERR_PRINT("TILMARCH machine " + String(get_name()) + ": bad recipe row \"" + kind + "\", it stands still");
            return Needs();
        }
        list.push_back({item_kinds::intern(kind), static_cast<int>(n), kind, "used:" + kind});
    }
    return list;
}

double MachineCore::interval() const {
    return rules::machine_interval(level, boost);
}

bool MachineCore::all_there(const Needs &list) const {
    const PileCore *in = input.get();
    if (in == nullptr || list.empty()) {
        return false;
    }
    for (const Need &need : list) {
        if (in->count_of(need.id) < need.n) {
            return false;
        }
    }
    return true;
}

int MachineCore::flavor_index(bool capped) const {
    const PileCore *out = output.get();
    if (out == nullptr) {
        return -1;
    }
    const int share = rules::flavor_cap(static_cast<int>(flavor_list.size()));
    int best = -1;
    int fewest = 0;
    for (size_t i = 0; i < flavor_list.size(); ++i) {
        const int held = out->count_of(flavor_list[i].id);
        if ((capped && held >= share) || (best >= 0 && held >= fewest) || !all_there(flavor_list[i].needs)) {
            continue;
        }
        best = static_cast<int>(i);
        fewest = held;
    }
    return best;
}

String MachineCore::flavor(bool capped) const {
    const int i = flavor_index(capped);
    return i < 0 ? String() : flavor_at(i).kind;
}

int64_t MachineCore::short_inputs() const {
    const PileCore *in = input.get();
    if (in == nullptr || (flavored && flavor_index(false) >= 0)) {
        return 0;
    }
    int64_t mask = 0;
    for (size_t i = 0; i < needs.size(); ++i) {
        if (in->count_of(needs[i].id) < needs[i].n) {
            mask |= int64_t(1) << i;
        }
    }
    return mask;
}

bool MachineCore::full() const {
    const int held = output.get()->count();
    return held >= rules::machine_output_room || held + meat_pending >= rules::machine_cap(level);
}

bool MachineCore::may_run() const {
    if (need_mask != 0 || full() || water_dry(this)) {
        return false;
    }
    return flavored ? flavor_index(true) >= 0 : !needs.empty();
}

void MachineCore::show_running(bool on) {
    if (running_shown == static_cast<int8_t>(on)) {
        return;
    }
    running_shown = static_cast<int8_t>(on);
    if (CPUParticles3D *particles = smoke.get()) {
        particles->set_emitting(on);
    }
}

void MachineCore::_process(double dt) {
    step(dt);
}

void MachineCore::step(double dt) {
    const Vector3 pos = world_position(this);
    const bool seen = Glebworks::in_view(pos, view_margin);
    slow_clock += std::max(0.0, dt);
    if (!seen && slow_clock < rules::machine_far_step) {
        return;
    }
    const double d = slow_clock;
    slow_clock = 0;
    if (input.get() == nullptr || output.get() == nullptr) {
        return;
    }
    pend_wait = meat_pending > 0 ? pend_wait + d : 0.0;
    if (pend_wait > rules::cook_patience) {
        call(TM_NAME("deliver_meat"), pos + late_hand);
    }
    need_mask = short_inputs();
    const bool run = may_run();
    show_running(run);
    // What changed out of sight is told once the machine is seen.
    if (seen && need_mask != shown_mask) {
        shown_mask = need_mask;
        call(TM_NAME("show_need"));
    }
    if (!run) {
        clock = 0;
        return;
    }
    clock += d;
    run_batches();
}

void MachineCore::run_batches() {
    const double seconds = interval();
    if (clock < seconds) {
        return;
    }
    const int due = static_cast<int>(std::min(clock / seconds, static_cast<double>(rules::machine_batches)));
    for (int i = 0; i < due; ++i) {
        clock -= seconds;
        call(TM_NAME("make"));
        need_mask = short_inputs();
        if (need_mask != 0 || full() || (flavored && flavor_index(true) < 0)) {
            clock = 0;
            return;
        }
    }
    clock = std::min(clock, seconds);
}

void MachineCore::_bind_methods() {
    TM_BIND_FIELD(MachineCore, Variant::DICTIONARY, recipe);
    TM_BIND_FIELD(MachineCore, Variant::DICTIONARY, flavors);
    TM_BIND_FIELD(MachineCore, Variant::INT, meat_pending);
    TM_BIND_FIELD(MachineCore, Variant::FLOAT, pend_wait);
    TM_BIND_FIELD(MachineCore, Variant::FLOAT, clock);
    TM_BIND_FIELD(MachineCore, Variant::OBJECT, input);
    TM_BIND_FIELD(MachineCore, Variant::OBJECT, output);
    TM_BIND_FIELD(MachineCore, Variant::OBJECT, smoke);
    ClassDB::bind_method(D_METHOD("set_level_raw", "l"), &MachineCore::set_level_raw);
    ClassDB::bind_method(D_METHOD("get_level"), &MachineCore::get_level);
    ClassDB::bind_method(D_METHOD("get_slow_clock"), &MachineCore::get_slow_clock);
    ClassDB::bind_method(D_METHOD("get_need_mask"), &MachineCore::get_need_mask);
    ClassDB::bind_method(D_METHOD("slow_join"), &MachineCore::slow_join);
    ClassDB::bind_method(D_METHOD("interval"), &MachineCore::interval);
    ClassDB::bind_method(D_METHOD("flavor", "capped"), &MachineCore::flavor);
    ClassDB::bind_method(D_METHOD("step", "dt"), &MachineCore::step);
    ClassDB::bind_static_method("MachineCore", D_METHOD("set_boost", "v"), &MachineCore::set_boost);
    ClassDB::bind_static_method("MachineCore", D_METHOD("get_boost"), &MachineCore::get_boost);
    ADD_PROPERTY(PropertyInfo(Variant::INT, "level"), "set_level_raw", "get_level");
}

} // namespace tilm
