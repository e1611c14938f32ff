// Producers: feeding, hunger, full trays, what the hand carries, and the yard's animals.

#include <gtest/gtest.h>

#include "engine_test.h"
#include "fake_farm.h"
#include "farm_items/pile_core.h"
#include "game/actors/farm_hand.h"
#include "game/actors/producer.h"
#include "glebworks/glebworks.h"
#include "names.h"

namespace tilm {
namespace {

Dictionary plan_row(const char *id, const char *product, const char *region) {
    Dictionary e;
    e["id"] = id;
    e["product"] = product;
    e["region"] = region;
    e["pos"] = Vector2(-7, -8);
    return e;
}

class ProducerTest : public testing::Test {
protected:
    FakeFarm farm{stage()};

    Producer *make(const char *product, const char *region = "eggs", int level = 1) {
        Producer *p = Producer::build(plan_row("house", product, region));
        EXPECT_NE(p, nullptr);
        farm.ground->add_child(p);
        p->set_process(false); // the tests step it
        if (p->get_hand() != nullptr) {
            p->get_hand()->set_process(false);
        }
        p->set_level(level);
        return p;
    }
    static void run(Producer *p, double seconds, double dt = 0.05) {
        for (double t = 0; t < seconds - 1e-9; t += dt) {
            p->step(dt);
        }
    }
    static void fill(PileCore *pile, const String &kind, int n) {
        for (int i = 0; i < n; ++i) {
            pile->add(Item::spawn(kind, pile->get_global_position()), 0.05);
        }
    }
};

TEST_F(ProducerTest, StandsWithItsZonesLabelsAndSolids) {
    Producer *coop = make("egg");
    ASSERT_EQ(farm.zones.size(), 2);
    const Ref<ZoneCore> take = coop->get_take_zone();
    EXPECT_TRUE(take->is_take());
    EXPECT_EQ(take->get_makes(), String("egg"));
    EXPECT_EQ(take->get_group(), String("house"));
    EXPECT_EQ(take->get_pos(), Vector3(-7, 0, -5.4f));
    EXPECT_EQ(take->get_size(), Vector2(2.8f, 2.0f));
    const Ref<ZoneCore> give = coop->get_feed_zone();
    EXPECT_TRUE(give->is_give());
    EXPECT_EQ(give->get_group(), String("house_feed"));
    EXPECT_EQ(give->room("corn"), 40);
    EXPECT_EQ(give->room("hay"), 0);
    EXPECT_EQ(coop->get_tray()->get_max_items(), 24);
    EXPECT_EQ(farm.solids, coop->solids());
    // A pond takes no feed and has no feed zone.
    Producer *pond = make("fish");
    EXPECT_TRUE(pond->get_feed_zone().is_null());
    EXPECT_TRUE(pond->feed_kind().is_empty());
    EXPECT_EQ(farm.zones.size(), 3);
}

TEST_F(ProducerTest, AnUnknownProductIsRefusedWithOneLine) {
    expect_engine_error("unknown product");
    EXPECT_EQ(Producer::build(plan_row("x", "gold", "eggs")), nullptr);
}

TEST_F(ProducerTest, TheFirstMealGivesAUnitAtOnceAndEachFeedItsMeals) {
    Producer *coop = make("egg");
    run(coop, 20);
    EXPECT_EQ(coop->get_tray()->count(), 0);
    EXPECT_LE(coop->get_work_t(), coop->interval() + 1e-9); // the clock never runs ahead
    fill(coop->get_trough(), "corn", 1);
    coop->step(0.01);
    EXPECT_EQ(coop->get_tray()->count(), 1);
    EXPECT_EQ(coop->get_trough()->count(), 0);
    EXPECT_EQ(coop->get_fed(), 2);
    run(coop, 30);
    EXPECT_EQ(coop->get_tray()->count(), 3); // three meals in one corn
    EXPECT_EQ(coop->get_fed(), 0);
}

TEST_F(ProducerTest, ProductionFollowsIntervalAndUpgrades) {
    Producer *coop = make("egg", "eggs", 1);
    EXPECT_DOUBLE_EQ(coop->interval(), 4.0 / 3);
    farm.feed = 2;
    farm.animals = 2;
    EXPECT_DOUBLE_EQ(coop->interval(), 4.0 / 3 / 1.7 / 2);
    Producer *hives = make("honey");
    farm.animals = 1;
    farm.feed = 0;
    farm.season_index = 3;
    EXPECT_DOUBLE_EQ(hives->interval(), 7.0 / 4 / 0.25);
    farm.season_index = 0;
    fill(coop->get_trough(), "corn", 20);
    run(coop, 12.05); // nine intervals of 4/3 s
    EXPECT_EQ(coop->get_tray()->count(), 9);
}

TEST_F(ProducerTest, OffViewItMakesTheSameInCoarserSteps) {
    Producer *coop = make("egg");
    fill(coop->get_trough(), "corn", 20);
    const Rect2 view = Glebworks::get_view();
    Glebworks::set_view(Rect2(500, 500, 10, 10));
    run(coop, 12.3);
    Glebworks::set_view(view);
    EXPECT_EQ(coop->get_tray()->count(), 9);
}

TEST_F(ProducerTest, AFullTrayNeitherEatsNorHungers) {
    Node *services = memnew(Node);
    farm.ground->add_child(services);
    farm.service_node = services;
    Producer *coop = make("egg");
    run(coop, 10);
    EXPECT_GT(coop->get_hunger(), 9.0);
    fill(coop->get_tray(), "egg", 24);
    run(coop, 2);
    EXPECT_LT(coop->get_hunger(), 4.5); // falls three times as fast
    fill(coop->get_trough(), "corn", 5);
    run(coop, 20);
    EXPECT_EQ(coop->get_trough()->count(), 5);
    EXPECT_EQ(coop->get_tray()->count(), 24);
    EXPECT_EQ(coop->get_hunger(), 0.0);
}

TEST_F(ProducerTest, NoHungerWithoutServicesOrWithoutATrough) {
    Producer *coop = make("egg");
    run(coop, 30);
    EXPECT_EQ(coop->get_hunger(), 0.0);
    farm.service_node = farm.ground;
    Producer *pond = make("fish");
    run(pond, 10);
    EXPECT_EQ(pond->get_hunger(), 0.0);
}

TEST_F(ProducerTest, WhatIsCarriedCountsAgainstTheTray) {
    Producer *pond = make("fish");
    fill(pond->get_tray(), "fish", 20);
    run(pond, 60);
    // The patience with the hand ran out in between; nothing got lost or was made too much.
    EXPECT_EQ(pond->get_tray()->count() + pond->get_catch_pending(), 24);
    EXPECT_EQ(pond->get_tray()->count(), 24);
}

TEST_F(ProducerTest, TheHandBringsItsCatchOnceAndKeepsTheCycle) {
    Producer *pond = make("fish");
    FarmHand *hand = pond->get_hand();
    ASSERT_NE(hand, nullptr);
    hand->set_timer(0);
    hand->tick(0.01);
    EXPECT_EQ(hand->get_state(), FarmHand::waiting); // no catch
    EXPECT_NEAR(hand->get_timer(), 1.5, 1e-6);
    pond->set_catch_pending(3);
    bool worked = false;
    bool gate = false;
    int steps = 0;
    hand->set_timer(0);
    for (; steps < 2000 && !(worked && hand->get_state() == FarmHand::waiting); ++steps) {
        hand->tick(0.02);
        worked = worked || hand->get_state() == FarmHand::working;
        if (hand->get_state() == FarmHand::handing && !gate) {
            gate = true;
            EXPECT_EQ(pond->get_catch_pending(), 3); // not before the load is let go
            EXPECT_LT(hand->get_position().distance_to(Vector3(-7, 0, -5.4f)), 0.4);
        }
    }
    EXPECT_TRUE(gate);
    EXPECT_LT(steps, 2000);
    EXPECT_EQ(pond->get_catch_pending(), 0);
    EXPECT_EQ(pond->get_tray()->count(), 3);
    pond->deliver_catch(Vector3());
    EXPECT_EQ(pond->get_tray()->count(), 3);
}

TEST_F(ProducerTest, ACatchWaitsForItsHandNoLongerThanItsPatience) {
    Producer *hives = make("honey");
    hives->set_catch_pending(2);
    fill(hives->get_tray(), "honey", 22); // full: nothing new is made
    run(hives, 24.8);
    EXPECT_EQ(hives->get_catch_pending(), 2);
    run(hives, 0.4);
    EXPECT_EQ(hives->get_catch_pending(), 0);
    EXPECT_EQ(hives->get_tray()->count(), 24);
}

TEST_F(ProducerTest, OnlyFarRegionsBuyTheirFeedAndOnlyForMoney) {
    farm.money = 1000;
    Producer *near = make("egg", "eggs");
    run(near, 8);
    EXPECT_EQ(near->get_trough()->count(), 0);
    EXPECT_EQ(farm.money, 1000);
    Producer *far = make("calf", "ranch");
    far->step(0.01);
    EXPECT_EQ(far->get_trough()->count(), 12);
    EXPECT_EQ(farm.money, 1000 - 12 * 3);
    EXPECT_EQ(farm.stats["bought:hay"], 12);
    fill(far->get_trough(), "hay", 3);
    run(far, 4); // fourteen or fifteen are enough
    EXPECT_EQ(farm.stats["bought:hay"], 12);
    farm.money = 35;
    Producer *poor = make("calf", "burger");
    run(poor, 7);
    EXPECT_EQ(poor->get_trough()->count(), 0);
    EXPECT_EQ(farm.money, 35);
}

TEST_F(ProducerTest, ALateFeederIsHelpedOutOnlyWhenItIsHired) {
    Node *services = memnew(Node);
    farm.ground->add_child(services);
    farm.service_node = services;
    farm.money = 100;
    Producer *coop = make("egg");
    run(coop, 20);
    EXPECT_EQ(farm.money, 100);
    farm.levels["corn_feeder"] = 1;
    run(coop, 3.2);
    EXPECT_EQ(farm.money, 100 - 12 * 2);
    EXPECT_GT(coop->get_trough()->count(), 0);
}

TEST_F(ProducerTest, ADryTankStopsItAndWaterStartsItAgain) {
    Producer *coop = make("egg");
    fill(coop->get_trough(), "corn", 9);
    Dictionary tank;
    tank["level"] = 0.0;
    coop->set_meta("water", tank);
    run(coop, 10);
    EXPECT_EQ(coop->get_tray()->count(), 0);
    tank["level"] = 2.0;
    run(coop, 3);
    EXPECT_GT(coop->get_tray()->count(), 0);
}

TEST_F(ProducerTest, LevelsChangeTrayAndYard) {
    Producer *coop = make("egg");
    EXPECT_EQ(coop->get_animals().size(), 3);
    coop->set_level(20);
    EXPECT_EQ(coop->get_animals().size(), 11);
    EXPECT_EQ(coop->get_tray()->get_max_items(), 39);
    coop->lose_level();
    EXPECT_EQ(coop->get_level(), 19);
    coop->set_level(1);
    EXPECT_EQ(coop->get_animals().size(), 3);
    coop->lose_level();
    EXPECT_EQ(coop->get_level(), 1);
    Producer *orchard = make("apple");
    EXPECT_EQ(orchard->animal_count(), 2);
    EXPECT_EQ(orchard->get_animals().size(), 0);
    EXPECT_EQ(orchard->visible_animals(), 0);
}

TEST_F(ProducerTest, AHandPrefersAWoollySheepAndTheFleeceComesBack) {
    Producer *shed = make("wool", "wool", 2);
    ASSERT_EQ(shed->get_animals().size(), 3);
    const Vector3 here = shed->get_position();
    const Dictionary first = shed->hold_animal(here, 9.0);
    ASSERT_FALSE(first.is_empty());
    EXPECT_EQ(static_cast<int>(first["state"]), 3);
    shed->shear(first);
    EXPECT_EQ(static_cast<double>(first["shorn"]), 30.0);
    run(shed, 9.2); // held no longer, but shorn
    const Dictionary second = shed->hold_animal(here, 9.0);
    const Dictionary third = shed->hold_animal(here, 9.0);
    EXPECT_EQ(static_cast<double>(second["shorn"]), 0.0);
    EXPECT_EQ(static_cast<double>(third["shorn"]), 0.0);
    const Dictionary last = shed->hold_animal(here, 9.0);
    EXPECT_EQ(static_cast<Object *>(last["n"]), static_cast<Object *>(first["n"]));
    EXPECT_TRUE(shed->hold_animal(here, 9.0).is_empty()); // all are held
    run(shed, 21);
    EXPECT_EQ(static_cast<double>(first["shorn"]), 0.0);
}

TEST_F(ProducerTest, StartFeedFillsOnlyTroughsWithRoom) {
    Producer *coop = make("egg");
    EXPECT_EQ(coop->give_start_feed(), 6);
    EXPECT_EQ(coop->get_trough()->count_kind("corn"), 6);
    fill(coop->get_trough(), "corn", 32);
    EXPECT_EQ(coop->give_start_feed(), 2);
    EXPECT_EQ(make("honey")->give_start_feed(), 0);
}

} // namespace
} // namespace tilm
