#pragma once
// The step engine of a machine: when a batch is due, whether its inputs are there, what waits for a cook.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/cpu_particles3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

#include "farm_items/item_kinds.h"
#include "farm_items/pile_core.h"
#include "fields.h"
#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class MachineCore : public Node3D {
    GDCLASS(MachineCore, Node3D)

public:
    // Read by slow_join() only: call it after a change.
    TM_FIELD(Dictionary, recipe, Dictionary())  // input kind -> units of one batch
    TM_FIELD(Dictionary, flavors, Dictionary()) // product kind -> recipe of its own, empty for most
    TM_FIELD(int, meat_pending, 0)              // units owed to a cook
    TM_FIELD(double, pend_wait, 0)              // seconds since meat_pending became non-zero
    TM_FIELD(double, clock, 0)                  // production clock, seconds

    void set_level_raw(int l) { level = l; }
    int get_level() const { return level; }
    void set_input(PileCore *pile) { input.set(pile); }
    PileCore *get_input() const { return input.get(); }
    void set_output(PileCore *pile) { output.set(pile); }
    PileCore *get_output() const { return output.get(); }
    void set_smoke(CPUParticles3D *particles);
    CPUParticles3D *get_smoke() const { return smoke.get(); }
    double get_slow_clock() const { return slow_clock; }
    int64_t get_need_mask() const { return need_mask; }

    // Flattens recipe and flavours and joins the slow list.
    void slow_join();
    // Seconds of one batch at this level, under the boost.
    double interval() const;
    // The flavour to make next: the one that is fewest in the output, among those whose inputs are there and, if
    // `capped`, whose share of the output is not used up. "" for none.
    String flavor(bool capped) const;
    // `dt` seconds; off view it gathers time and runs four times a second.
    void step(double dt);

    void _process(double dt) override;

    // Process-wide factor on the speed of all machines.
    static void set_boost(double v);
    static double get_boost() { return boost; }

protected:
    static void _bind_methods();

    struct Need {
        KindId id;
        int n;
        String kind;
        String used; // name of its flow counter
    };
    using Needs = std::vector<Need>;
    struct Flavor {
        KindId id;
        String kind;
        Needs needs;
    };

    const Needs &recipe_list() const { return needs; }
    const Flavor &flavor_at(int i) const { return flavor_list[static_cast<size_t>(i)]; }
    bool has_flavors() const { return flavored; }
    int flavor_index(bool capped) const; // -1 for none
    // Whether `list` is a recipe and all of it is in the input.
    bool all_there(const Needs &list) const;
    int64_t short_inputs() const;

private:
    Needs flattened(const Dictionary &from) const;
    bool may_run() const;
    bool full() const;
    void run_batches();
    void show_running(bool on);

    LiveRef<PileCore> input;
    LiveRef<PileCore> output;
    LiveRef<CPUParticles3D> smoke;
    int level = 1;
    double slow_clock = 0;
    int64_t need_mask = 0;   // bit i: recipe entry i is short
    int64_t shown_mask = -1; // what the need label tells
    int8_t running_shown = -1;
    bool flavored = false;
    Needs needs;
    std::vector<Flavor> flavor_list;

    static double boost;
};

} // namespace tilm
