// Walkers in and out of view, and a hauler's choice.

#include "bench_stage.h"

#include <godot_cpp/core/class_db.hpp>

#include "farm_items/item_core.h"
#include "farm_items/pile_core.h"
#include "farm_items/stack_core.h"
#include "farm_items/zone_core.h"
#include "farm_shop/hauler_brain.h"
#include "glebworks/far_list.h"
#include "glebworks/walker_core.h"

namespace tilm::bench {

namespace {

constexpr double step = 1.0 / 60.0;

// Walks to and fro between two points for ever.
class BenchBrain : public WalkerBrain {
    GDCLASS(BenchBrain, WalkerBrain)

public:
    void tick(double dt) override {
        if (walker->arrived()) {
            back = !back;
            walker->go(back ? from : middle, back ? middle : to, back ? to : from);
        }
        WalkerBrain::tick(dt);
    }
    Vector3 from, middle, to;
    bool back = false;

protected:
    static void _bind_methods() {}
};

WalkerCore *walker(Stage &stage, const Vector3 &at) {
    WalkerCore *w = memnew(WalkerCore);
    Node3D *model = memnew(Node3D);
    Node3D *body = memnew(Node3D);
    w->add_child(model);
    model->add_child(body);
    Array parts;
    parts.push_back(body);
    for (int i = 0; i < 4; i++) {
        Node3D *limb = memnew(Node3D);
        body->add_child(limb);
        parts.push_back(limb);
    }
    w->core_bind(model, nullptr, parts);
    w->set_position(at);
    stage.top->add_child(w);
    BenchBrain *brain = memnew(BenchBrain);
    brain->from = at;
    brain->middle = at + Vector3(6, 0, 0);
    brain->to = at + Vector3(6, 0, 9);
    w->set_brain(Ref<WalkerBrain>(brain));
    return w;
}

// The farm of 250 zones; script_staff.gd builds the same one.
constexpr const char *kinds[] = {"wheat", "bean", "corn", "egg", "milk", "tomato", "apple", "hay", "hen", "honey"};
constexpr int levels[] = {60, 55, 50, 40, 40, 40, 40, 40, 40, 40};
constexpr const char *machines[][2] = {{"flour_mill", "wheat"},
                                       {"coffee_grinder", "bean"},
                                       {"oil_press", "sunflower"},
                                       {"butcher", "calf"},
                                       {"poultry_plant", "hen"}};

struct Farm {
    Ref<HaulerBrain> hauler;
    Array zones;
};
Farm *land = nullptr;

void zone(Stage &stage, const char *mode, const String &group, const char *kind, int level, int goods,
          const Vector3 &at) {
    PileCore *pile = memnew(PileCore);
    stage.top->add_child(pile);
    for (int i = 0; i < goods; i++) {
        ItemCore *it = memnew(ItemCore);
        it->set_kind(kind);
        stage.top->add_child(it);
        it->set_process(false);
        pile->add(it, 0.0);
    }
    Ref<ZoneCore> z;
    z.instantiate();
    z->set_mode(mode);
    z->set_pile(pile);
    z->set_group(group);
    z->set_pos(at);
    if (z->is_take()) {
        z->set_makes(kind);
    } else {
        Dictionary accepts;
        accepts[kind] = level;
        z->set_accepts(accepts);
    }
    land->zones.push_back(z);
}

void farm(Stage &stage) {
    land = new Farm;
    for (int i = 0; i < 100; i++) {
        zone(stage, "take", "tray", kinds[i % 10], 0, 4 + i % 15, Vector3(real_t(i % 25), 0, real_t(-6 - i / 25)));
    }
    for (int i = 0; i < 120; i++) {
        zone(stage, "give", String("stall_") + kinds[i % 10], kinds[i % 10], levels[i % 10], 0,
             Vector3(real_t(i % 25), 0, real_t(4 + i / 25)));
    }
    for (int i = 0; i < 20; i++) {
        zone(stage, "give", "coop_" + String::num_int64(i) + "_feed", "corn", 40, 0, Vector3(real_t(i), 0, -20));
    }
    for (int i = 0; i < 10; i++) {
        zone(stage, "give", machines[i % 5][0], machines[i % 5][1], 10, 0, Vector3(real_t(i), 0, -30));
    }
    WalkerCore *w = memnew(WalkerCore);
    StackCore *stack = memnew(StackCore);
    stack->set_capacity(5);
    w->add_child(stack);
    w->core_bind(nullptr, stack, Array());
    stage.top->add_child(w);
    Ref<HaulerBrain> &hauler = land->hauler;
    hauler.instantiate();
    hauler->set_zones(land->zones);
    Array carried;
    for (int i = 0; i < 4; i++) {
        carried.push_back(kinds[i]);
    }
    hauler->set_kinds(carried);
    hauler->set_dst_group("stall_wheat|stall_bean|stall_corn|stall_egg");
    w->set_brain(hauler);
    w->set_process(false);
}

} // namespace

void staff_cases() {
    frames("core walkers", [](Stage &stage) {
        for (int i = 0; i < scaled(300); i++) {
            walker(stage, Vector3(real_t(i % 30 - 20), 0, real_t(i / 10 - 20)));
        }
    });
    frames("script walkers", [](Stage &stage) { scripts()->call("walkers", stage.top, scaled(300)); });
    ops(
        "core far list", 60,
        [](Stage &stage) {
            for (int i = 0; i < scaled(1000); i++) {
                walker(stage, Vector3(real_t(200 + i % 30), 0, real_t(i / 30)))->_process(step);
            }
        },
        [](int n) {
            for (int i = 0; i < n; i++) {
                WalkerCore::tick_far(step);
            }
        });
    ops(
        "script far list", 60, [](Stage &stage) { scripts()->call("far", stage.top, scaled(1000)); },
        [](int n) { scripts()->call("run_far", n); });
    ops("core choice", 20, farm, [](int n) {
        HaulerBrain *hauler = land->hauler.ptr();
        WalkerCore *w = hauler->get_walker();
        for (int i = 0; i < n; i++) {
            w->set_position(Vector3());
            hauler->set_state(HaulerBrain::choose);
            hauler->tick(step);
        }
        if (hauler->get_kind() != "egg") {
            ERR_PRINT("The hauler of the benchmark chose something else.");
        }
    });
    ops(
        "script choice", 20, [](Stage &stage) { scripts()->call("choice", stage.top); },
        [](int n) { scripts()->call("run_choice", n); });
}

void register_staff_classes() {
    GDREGISTER_CLASS(BenchBrain);
}

void drop_farm() {
    delete land;
    land = nullptr;
}

} // namespace tilm::bench
