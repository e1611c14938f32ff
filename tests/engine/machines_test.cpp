// Machines: batches and their limits, flavours, goods owed to cooks, labels, zones, and what they refuse to be.

#include <gtest/gtest.h>

#include "engine_test.h"
#include "fake_farm.h"
#include "game/actors/machine.h"
#include "game/data/farm_data.h"
#include "glebworks/glebworks.h"
#include "names.h"

namespace tilm {
namespace {

const Rect2 elsewhere(500, 500, 10, 10);

class MachineTest : public testing::Test {
protected:
    FakeFarm farm{stage()};

    void SetUp() override { Glebworks::see_everything(); }
    void TearDown() override {
        Glebworks::see_everything();
        MachineCore::set_boost(1);
    }

    static Dictionary counts(std::initializer_list<std::pair<const char *, int>> rows) {
        Dictionary d;
        for (const auto &[kind, n] : rows) {
            d[kind] = n;
        }
        return d;
    }
    static Dictionary row(const char *product, const Dictionary &recipe, int yield = 1) {
        Dictionary e;
        e["id"] = "works";
        e["title"] = "WORKS";
        e["product"] = product;
        e["recipe"] = recipe;
        e["yield"] = yield;
        e["pos"] = Vector2(31, -8.5f);
        return e;
    }
    static Dictionary juice_row() {
        Dictionary e = row("juice", counts({{"apple", 2}, {"orange", 2}}), 2);
        Dictionary flavors;
        flavors["apple_juice"] = counts({{"apple", 2}});
        flavors["orange_juice"] = counts({{"orange", 2}});
        e["flavors"] = flavors;
        return e;
    }
    Machine *stand(const Dictionary &entry, int level = 1) {
        Machine *m = Machine::build(entry);
        EXPECT_NE(m, nullptr);
        farm.ground->add_child(m);
        m->set_process(false); // the tests step it
        m->set_level(level);
        return m;
    }
    Machine *mill(int level = 1) { return stand(row("flour", counts({{"wheat", 1}})), level); }

    static void fill(PileCore *pile, const char *kind, int n) {
        for (int i = 0; i < n; ++i) {
            pile->add(Item::spawn(kind, pile->get_global_position()), 0.05);
        }
    }
    static void run(Machine *m, double seconds, double dt = 0.05) {
        for (int n = static_cast<int>(std::lround(seconds / dt)); n > 0; --n) {
            m->step(dt);
        }
    }
    static int made(const Machine *m) { return m->get_output()->count(); }
    int64_t used(const char *kind) { return farm.stats[std::string("used:") + kind]; }
};

TEST_F(MachineTest, ABatchTakesItsTimeItsInputsAndCountsThem) {
    Machine *m = stand(row("cheese", counts({{"milk", 2}})));
    fill(m->get_input(), "milk", 5);
    run(m, 1.55);
    EXPECT_EQ(made(m), 0);
    run(m, 0.1);
    EXPECT_EQ(made(m), 1);
    EXPECT_EQ(m->get_input()->count(), 3);
    run(m, 1.6);
    EXPECT_EQ(made(m), 2);
    // One milk left is short of a batch: the clock stands at nothing.
    run(m, 10);
    EXPECT_EQ(made(m), 2);
    EXPECT_EQ(m->get_clock(), 0);
    EXPECT_EQ(used("milk"), 4);
    EXPECT_EQ(farm.stats["made:cheese"], 2);
    m->make(); // even when asked
    EXPECT_EQ(made(m), 2);
    EXPECT_EQ(m->get_input()->count_kind("milk"), 1);
    // What was used flies in and is gone a quarter of a second later.
    step_seconds(0.4);
    EXPECT_EQ(farm.ground->get_child_count(), 1 + 1 + 2);
}

TEST_F(MachineTest, TheBoostWorksOnAllMachines) {
    Machine *m = mill();
    fill(m->get_input(), "wheat", 10);
    MachineCore::set_boost(2);
    EXPECT_DOUBLE_EQ(m->interval(), 0.8);
    run(m, 8.05);
    EXPECT_EQ(made(m), 10);
    expect_engine_error("boost must be above 0", 2);
    MachineCore::set_boost(0);
    MachineCore::set_boost(-1);
    EXPECT_EQ(MachineCore::get_boost(), 2);
}

TEST_F(MachineTest, ALongStepMakesEightBatchesAndKeepsOneInterval) {
    Machine *m = mill();
    fill(m->get_input(), "wheat", 30);
    Glebworks::set_view(elsewhere);
    m->step(600);
    EXPECT_EQ(made(m), 8);
    EXPECT_DOUBLE_EQ(m->get_clock(), m->interval());
    m->step(0.25); // what is left of the time is one batch
    EXPECT_EQ(made(m), 9);
}

TEST_F(MachineTest, OutOfSightItStepsFourTimesASecondAndMakesTheSame) {
    Machine *seen = mill(9);
    Machine *unseen = mill(9);
    fill(seen->get_input(), "wheat", 38);
    fill(unseen->get_input(), "wheat", 38);
    for (int i = 0; i < 400; ++i) {
        Glebworks::see_everything();
        seen->step(1.0 / 60);
        Glebworks::set_view(elsewhere);
        const int before = made(unseen);
        unseen->step(1.0 / 60);
        EXPECT_TRUE(made(unseen) == before || unseen->get_slow_clock() == 0);
    }
    EXPECT_EQ(made(seen), 28); // 6.67 s at 0.23642 s
    EXPECT_NEAR(made(unseen), made(seen), 1);
    EXPECT_EQ(made(seen) + seen->get_input()->count(), 38);
    EXPECT_EQ(made(unseen) + unseen->get_input()->count(), 38);
}

TEST_F(MachineTest, AFullOutputStopsItAndNothingIsLost) {
    Machine *m = stand(row("bread", counts({{"flour", 1}}), 2), 4);
    fill(m->get_input(), "flour", 60);
    run(m, 60);
    // The pile stops it at 40 although level 4 would allow 80.
    EXPECT_EQ(made(m), 40);
    EXPECT_EQ(m->get_input()->count(), 40);
    m->get_output()->drop("", 1);
    run(m, 0.7);
    EXPECT_EQ(made(m), 41);
}

TEST_F(MachineTest, ACooksBacklogGrowsBeyondTheOutputAndComesLate) {
    Machine *m = stand(row("steak", counts({{"meat", 1}}), 2), 4);
    Node *cook = memnew(Node);
    farm.ground->add_child(cook);
    m->set_cook(cook);
    fill(m->get_input(), "meat", 100);
    run(m, 40);
    EXPECT_EQ(m->get_meat_pending(), 80);
    EXPECT_EQ(made(m), 0);
    EXPECT_EQ(m->get_input()->count(), 60);
    EXPECT_FALSE(farm.stats.contains("made:steak"));
    // The first batch was due after 0.615 s; 45 s later all of it comes.
    run(m, 5);
    EXPECT_EQ(made(m), 0);
    run(m, 1);
    EXPECT_EQ(made(m), 80);
    EXPECT_EQ(m->get_meat_pending(), 0);
    EXPECT_EQ(m->get_pend_wait(), 0);
    EXPECT_EQ(farm.stats["made:steak"], 80);
    // A cook who hands over himself does so once.
    m->get_output()->drop("", 80);
    run(m, 0.65);
    EXPECT_EQ(m->get_meat_pending(), 2);
    m->deliver_meat(Vector3(1, 1, 1));
    m->deliver_meat(Vector3(1, 1, 1));
    EXPECT_EQ(made(m), 2);
    // Without a cook goods come out at once.
    memdelete(cook);
    run(m, 0.65);
    EXPECT_EQ(made(m), 4);
}

TEST_F(MachineTest, TheScarcerFlavourIsMadeUntilItsShareIsFull) {
    Machine *m = stand(juice_row());
    EXPECT_EQ(m->flavor(false), String());
    fill(m->get_input(), "orange", 2);
    EXPECT_EQ(m->flavor(false), String("orange_juice"));
    fill(m->get_input(), "apple", 4);
    EXPECT_EQ(m->flavor(false), String("apple_juice")); // a tie goes to the earlier
    run(m, 1.65);
    EXPECT_EQ(m->get_output()->count_kind("apple_juice"), 2);
    EXPECT_EQ(m->flavor(true), String("orange_juice"));
    run(m, 1.6);
    EXPECT_EQ(m->get_output()->count_kind("orange_juice"), 2);
    EXPECT_EQ(used("apple"), 2);
    EXPECT_EQ(used("orange"), 2);
    // With apples alone it stops at half of the output, although apples are left.
    fill(m->get_input(), "apple", 40);
    run(m, 60);
    EXPECT_EQ(m->get_output()->count_kind("apple_juice"), 20);
    EXPECT_EQ(m->flavor(false), String("apple_juice"));
    EXPECT_EQ(m->flavor(true), String());
    EXPECT_TRUE(m->missing().is_empty());
    // Oranges set it going again, up to the cap of both.
    fill(m->get_input(), "orange", 30);
    run(m, 60);
    EXPECT_EQ(m->get_output()->count_kind("orange_juice"), 20);
    EXPECT_EQ(made(m), 40);
    EXPECT_EQ(m->get_input()->count(), 42 + 30 - 18 - 18);
}

TEST_F(MachineTest, TheNeedLabelFollowsTheInputWhileSeen) {
    Machine *m = stand(row("burger", counts({{"meat", 1}, {"cheese", 1}, {"orange_juice", 2}})));
    Glebworks::set_view(elsewhere);
    run(m, 1);
    EXPECT_EQ(m->get_need_text(), String()); // nobody looks
    Glebworks::see_everything();
    run(m, 0.1);
    EXPECT_EQ(m->get_need_text(), String("NEED\nMEAT + CHEESE\n+ ORANGE JUICE"));
    EXPECT_EQ(m->get_need_mask(), 7);
    EXPECT_FALSE(m->has_input());
    fill(m->get_input(), "meat", 1);
    fill(m->get_input(), "orange_juice", 1);
    run(m, 0.1);
    EXPECT_TRUE(m->has_input());
    EXPECT_EQ(m->get_need_text(), String("NEED CHEESE + ORANGE JUICE"));
    fill(m->get_input(), "cheese", 1);
    fill(m->get_input(), "orange_juice", 1);
    run(m, 0.1);
    EXPECT_EQ(m->get_need_text(), String());
    // Flavours are alternatives.
    Machine *press = stand(juice_row());
    run(press, 0.1);
    EXPECT_EQ(press->get_need_text(), String("NEED APPLE OR ORANGE"));
    EXPECT_EQ(press->missing().size(), 2);
    fill(press->get_input(), "apple", 2);
    run(press, 0.1);
    EXPECT_EQ(press->get_need_text(), String());
}

TEST_F(MachineTest, SmokeFollowsWorkAndADryTankStopsIt) {
    Machine *m = mill();
    fill(m->get_input(), "wheat", 5);
    run(m, 0.1);
    EXPECT_TRUE(m->get_smoke()->is_emitting());
    Dictionary tank;
    tank["level"] = 0.0;
    m->set_meta("water", tank);
    run(m, 10);
    EXPECT_FALSE(m->get_smoke()->is_emitting());
    EXPECT_EQ(made(m), 0);
    EXPECT_EQ(m->get_clock(), 0);
    tank["level"] = 0.5;
    run(m, 1.65);
    EXPECT_EQ(made(m), 1);
    EXPECT_TRUE(m->get_smoke()->is_emitting());
}

TEST_F(MachineTest, StandsWithPilesZonesAndLimits) {
    Machine *m = mill();
    ASSERT_EQ(farm.zones.size(), 2);
    const Ref<ZoneCore> give = m->get_give_zone();
    EXPECT_TRUE(give->is_give());
    EXPECT_EQ(give->get_group(), String("works"));
    EXPECT_EQ(give->get_owner_group(), String());
    EXPECT_LT(give->get_pos().distance_to(Vector3(28.95f, 0, -6.2f)), 1e-4);
    EXPECT_EQ(give->get_size(), Vector2(2.0f, 1.6f));
    EXPECT_EQ(give->room("wheat"), 10);
    EXPECT_EQ(give->room("flour"), 0);
    const Ref<ZoneCore> take = m->get_take_zones()[0];
    EXPECT_EQ(take->get_group(), String("works_out"));
    EXPECT_EQ(take->get_makes(), String("flour"));
    EXPECT_LT(take->get_pos().distance_to(Vector3(33.05f, 0, -6.2f)), 1e-4);
    EXPECT_EQ(farm.solids, m->solids());
    const PileCore *in = m->get_input();
    EXPECT_EQ(in->get_show_limit(), 8);
    // Up to level 4 the input is laid out for 20, from level 5 on for 30 and a column wider.
    m->set_level(4);
    EXPECT_EQ(m->input_cap(), 20);
    EXPECT_EQ(in->get_cols(), 2);
    EXPECT_EQ(in->get_spacing(), Vector2(0.36f, 0.55f));
    EXPECT_EQ(give->room("wheat"), 20);
    m->set_level(5);
    EXPECT_EQ(in->get_cols(), 3);
    EXPECT_EQ(in->get_spacing(), Vector2(0.42f, 0.55f));
    EXPECT_EQ(give->room("wheat"), 30);
    // Live animals stand side by side, whatever the level.
    Machine *butcher = stand(row("meat", counts({{"calf", 1}}), 2), 9);
    EXPECT_TRUE(butcher->get_input()->get_flat());
    EXPECT_EQ(butcher->get_input()->get_cols(), 1);
    EXPECT_EQ(butcher->get_input()->get_rows(), 3);
    Machine *plant = stand(row("drumstick", counts({{"hen", 1}}), 2), 9);
    EXPECT_EQ(plant->get_input()->get_cols(), 2);
    EXPECT_EQ(plant->get_input()->get_spacing(), Vector2(0.45f, 0.40f));
    // Each flavour has a take zone of its own on the one output.
    Machine *press = stand(juice_row());
    ASSERT_EQ(press->get_take_zones().size(), 2);
    const Ref<ZoneCore> second = press->get_take_zones()[1];
    EXPECT_EQ(second->get_makes(), String("orange_juice"));
    EXPECT_EQ(second->get_pile(), press->get_output());
}

TEST_F(MachineTest, ARepeatedMachineIsFedByTheHelpersOfTheFirst) {
    Dictionary e = row("flour", counts({{"wheat", 1}}));
    e["alias"] = "flour_mill";
    e["carry_to"] = "stall_flour";
    Machine *m = stand(e);
    EXPECT_EQ(m->get_give_zone()->get_owner_group(), String("stall_flour"));
    ASSERT_EQ(farm.zones.size(), 3);
    const Ref<ZoneCore> repeat = farm.zones[1];
    EXPECT_EQ(repeat->get_group(), String("flour_mill"));
    fill(m->get_input(), "wheat", 4);
    EXPECT_EQ(repeat->room("wheat"), 6);
    EXPECT_FALSE(repeat->has_point(repeat->get_pos())); // the player gives once
    m->set_level(5);
    EXPECT_EQ(repeat->room("wheat"), 26);
}

TEST_F(MachineTest, BadRowsGiveNoMachine) {
    expect_engine_error("machine works: no recipe");
    EXPECT_EQ(Machine::build(row("flour", Dictionary())), nullptr);
    expect_engine_error("machine works: unknown product \"gravel\"");
    EXPECT_EQ(Machine::build(row("gravel", counts({{"wheat", 1}}))), nullptr);
    expect_engine_error("machine works: unknown good \"sand\"");
    EXPECT_EQ(Machine::build(row("flour", counts({{"sand", 1}}))), nullptr);
    Dictionary bare = juice_row();
    Dictionary flavors;
    flavors["apple_juice"] = Dictionary();
    bare["flavors"] = flavors;
    expect_engine_error("machine works: a flavour without a recipe");
    EXPECT_EQ(Machine::build(bare), nullptr);
    // A recipe that asks for nothing never makes anything.
    expect_engine_error("bad recipe row \"wheat\"");
    Machine *m = stand(row("flour", counts({{"wheat", 0}})));
    fill(m->get_input(), "wheat", 5);
    run(m, 20);
    EXPECT_EQ(made(m), 0);
    EXPECT_EQ(m->get_input()->count(), 5);
}

TEST_F(MachineTest, EveryMachineOfThePlanWorks) {
    const Array plan = FarmData::plan();
    int stood = 0;
    for (int i = 0; i < plan.size(); ++i) {
        const Dictionary e = plan[i];
        const String kind = e["kind"];
        if (kind != "machine" && kind != "factory" && kind != "restaurant") {
            continue;
        }
        stood += 1;
        Machine *m = stand(e, 3);
        const Array inputs = m->get_recipe().keys();
        for (int k = 0; k < inputs.size(); ++k) {
            const String input = inputs[k];
            fill(m->get_input(), input.utf8().get_data(), m->get_recipe()[input]);
        }
        run(m, 4);
        const int batches = m->get_flavors().is_empty() ? 1 : m->get_flavors().size();
        EXPECT_EQ(made(m), batches * m->get_yield()) << m->get_id();
        EXPECT_EQ(m->get_input()->count(), 0) << m->get_id();
    }
    EXPECT_EQ(stood, 20);
}

TEST_F(MachineTest, AScriptReachesItByName) {
    Machine *m = mill();
    EXPECT_EQ(static_cast<String>(m->call("next_perk", 1)), String("SPEED"));
    EXPECT_EQ(static_cast<int>(m->call("speed_steps", 5)), 2);
    EXPECT_EQ(static_cast<int>(m->call("cap_steps", 5)), 2);
    m->call("set_level_raw", 4);
    EXPECT_NEAR(static_cast<double>(m->call("interval")), 0.61504, 1e-5);
    EXPECT_EQ(static_cast<String>(m->call("flavor", true)), String());
    m->set("meat_pending", 3);
    m->call("deliver_meat", Vector3());
    EXPECT_EQ(made(m), 3);
    EXPECT_EQ(static_cast<Array>(m->call("missing")).size(), 1);
    EXPECT_FALSE(static_cast<bool>(m->call("has_input")));
    EXPECT_EQ(static_cast<int>(m->get("level")), 4);
}

} // namespace
} // namespace tilm
