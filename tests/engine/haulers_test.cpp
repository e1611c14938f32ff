// Carriers at work: choosing, claiming, sharing, giving up.

#include "staff_kit.h"

using namespace godot;

namespace tilm {
namespace {

TEST(Haulers, TwoShareAProducerAndAStallWithoutOverDelivering) {
    Workplace place;
    Ref<Zone> tray = place.take("egg", 30, Vector3(0, 0, -6));
    Ref<Zone> stall = place.give("stall_egg", "egg", 12, Vector3(8, 0, 4));
    Hauler *a = place.hire({"egg"}, "stall_egg", Vector3(2, 0, 0));
    Hauler *b = place.hire({"egg"}, "stall_egg", Vector3(-2, 0, 0));
    place.run(60.0, [&] {
        const int on_the_way = Workplace::carried(a) + Workplace::carried(b);
        ASSERT_LE(Workplace::held(stall, "egg") + on_the_way, 12);
        ASSERT_EQ(Workplace::held(stall, "egg") + on_the_way + Workplace::held(tray, "egg"), 30);
    });
    EXPECT_EQ(Workplace::held(stall, "egg"), 12);
    EXPECT_TRUE(a->quiet());
    EXPECT_TRUE(b->quiet());
    EXPECT_EQ(stall->claim_count(), 0);
    EXPECT_EQ(tray->claim_count(), 0);
    EXPECT_EQ(static_cast<int64_t>(place.farm.staff["helper#1"]) + static_cast<int64_t>(place.farm.staff["helper#2"]),
              12);
}

TEST(Haulers, AClaimOfAllTheRoomSendsTheNextOneElsewhere) {
    Workplace place;
    place.take("egg", 30, Vector3(0, 0, -6));
    Ref<Zone> small = place.give("stall_egg", "egg", 5, Vector3(8, 0, 4));
    Ref<Zone> other = place.give("truck", "egg", 4, Vector3(-8, 0, 4));
    Hauler *a = place.hire({"egg"}, "stall_egg|truck");
    Hauler *b = place.hire({"egg"}, "stall_egg|truck");
    place.run(0.1);
    EXPECT_EQ(a->mind()->get_destination(), small);
    EXPECT_EQ(b->mind()->get_destination(), other);
    EXPECT_EQ(small->room("egg") - small->claimed("egg", static_cast<uint64_t>(b->get_instance_id())), 0);
}

TEST(Haulers, ClaimsEndWithTheirHaulerOrAfterThreeMinutes) {
    Workplace place;
    Ref<Zone> tray = place.take("egg", 30, Vector3(0, 0, -60));
    Ref<Zone> stall = place.give("stall_egg", "egg", 5, Vector3(8, 0, 4));
    Hauler *a = place.hire({"egg"}, "stall_egg");
    Hauler *b = place.hire({"egg"}, "stall_egg");
    place.run(0.5);
    ASSERT_EQ(stall->claimed("egg", 0), 5);
    ASSERT_EQ(tray->claimed("egg", 0), 5);
    EXPECT_TRUE(b->quiet());
    memdelete(a);
    EXPECT_EQ(stall->claim_count(), 0);
    EXPECT_EQ(tray->claim_count(), 0);
    place.run(1.5);
    EXPECT_EQ(stall->claimed("egg", 0), 5); // the other one has it now
    b->set_process(false);
    EXPECT_EQ(stall->claimed_at("egg", 0, ZoneCore::now_msec() + ZoneCore::claim_msec - 1000), 5);
    EXPECT_EQ(stall->claimed_at("egg", 0, ZoneCore::now_msec() + ZoneCore::claim_msec), 0);
}

TEST(Haulers, HungryTroughsComeBeforeTheStall) {
    Workplace place;
    Ref<Zone> pallet = place.take("corn", 27, Vector3(0, 0, -6));
    Ref<Zone> trough = place.give("coop_a_feed", "corn", 40, Vector3(-6, 0, -6));
    Ref<Zone> stall = place.give("stall_corn", "corn", 96, Vector3(6, 0, 4));
    place.hire({"corn"}, "stall_corn");
    place.run(60.0);
    EXPECT_EQ(Workplace::held(pallet, "corn"), 20); // only what exceeds the reserve
    EXPECT_EQ(Workplace::held(stall, "corn"), 7);
    Hauler *feeder = place.hire({"corn"}, "@feed");
    place.run(0.1);
    EXPECT_TRUE(feeder->needed());
    place.run(60.0);
    EXPECT_FALSE(feeder->needed());
    // With the trough past its half nothing holds the seller back: all corn found a place.
    EXPECT_EQ(Workplace::held(trough, "corn") + Workplace::held(stall, "corn"), 27);
    EXPECT_GE(Workplace::held(trough, "corn"), 20);
}

TEST(Haulers, MachinesComeBeforeTheSeller) {
    Workplace place;
    Ref<Zone> pallet = place.take("wheat", 19, Vector3(0, 0, -6));
    Ref<Zone> mill = place.give("flour_mill", "wheat", 10, Vector3(-6, 0, -2));
    Ref<Zone> stall = place.give("stall_wheat", "wheat", 96, Vector3(6, 0, 4));
    place.hire({"wheat"}, "stall_wheat");
    place.run(10.0);
    EXPECT_EQ(Workplace::held(stall, "wheat"), 0);
    Workplace::fill(mill->get_pile(), "wheat", 10);
    place.run(60.0);
    EXPECT_EQ(Workplace::held(stall, "wheat"), 19);
    EXPECT_EQ(Workplace::held(pallet, "wheat"), 0);
    mill->get_pile()->drop("wheat", 1);
    Workplace::fill(pallet->get_pile(), "wheat", 20); // plenty for both
    place.run(10.0);
    EXPECT_LT(Workplace::held(pallet, "wheat"), 20);
}

TEST(Haulers, HensGoToStallAndPlantInTurn) {
    Workplace place;
    Ref<Zone> house = place.take("hen", 0, Vector3(0, 0, -4));
    Ref<Zone> stall = place.give("stall_hen", "hen", 500, Vector3(6, 0, 4));
    Ref<Zone> plant = place.give("poultry_plant", "hen", 500, Vector3(-6, 0, -2));
    place.hire({"hen"}, "poultry_plant", Vector3(0, 0, -3));
    place.hire({"hen"}, "stall_hen", Vector3(0, 0, -3));
    int step = 0;
    place.run(240.0, [&] {
        if (++step % 180 == 0) {
            Workplace::fill(house->get_pile(), "hen", 1);
        }
    });
    const int sold = Workplace::held(stall, "hen");
    const int cut = Workplace::held(plant, "hen");
    EXPECT_EQ(HaulerBrain::hens_to_stall(), sold);
    EXPECT_GT(sold + cut, 60);
    EXPECT_LE(std::abs(sold - cut), 10); // two loads
}

TEST(Haulers, AStallThatAsksForHensHoldsThePlantBack) {
    Workplace place;
    Ref<Zone> house = place.take("hen", 30, Vector3(0, 0, -4));
    Ref<Zone> stall = place.give("stall_hen", "hen", 500, Vector3(6, 0, 4));
    Ref<Zone> plant = place.give("poultry_plant", "hen", 500, Vector3(-6, 0, -2));
    place.hire({"hen"}, "poultry_plant", Vector3(0, 0, -3));
    place.run(90.0);
    ASSERT_EQ(Workplace::held(plant, "hen"), 30); // nobody else asked
    ASSERT_EQ(HaulerBrain::hens_to_plant(), 30);
    place.hire({"hen"}, "stall_hen", Vector3(0, 0, -3));
    place.run(1.5);
    EXPECT_EQ(HaulerBrain::hens_to_plant(), 20); // a lead of 20 is all that is held against it
    for (int i = 0; i < 4; ++i) {
        Workplace::fill(house->get_pile(), "hen", 4); // never plenty, and the plant still has room
        place.run(12.0);
    }
    EXPECT_EQ(Workplace::held(plant, "hen"), 30);
    EXPECT_EQ(Workplace::held(stall, "hen"), 16);
    Workplace::fill(house->get_pile(), "hen", 60); // now there are enough for both
    place.run(6.0);
    EXPECT_LT(Workplace::held(house, "hen"), 56);
    place.run(60.0);
    EXPECT_GT(Workplace::held(plant, "hen"), 30);
    EXPECT_GT(Workplace::held(stall, "hen"), 16);
}

TEST(Haulers, AFullDestinationSendsTheLoadElsewhereOrHome) {
    Workplace place;
    Ref<Zone> tray = place.take("egg", 5, Vector3(0, 0, -6));
    Ref<Zone> first = place.give("stall_a", "egg", 9, Vector3(6, 0, 4));
    Ref<Zone> second = place.give("stall_b", "egg", 2, Vector3(-6, 0, 4));
    Hauler *hauler = place.hire({"egg"}, "stall_a|stall_b");
    auto until = [&](int64_t state) {
        for (int i = 0; i < 60 && hauler->mind()->get_state() != state; ++i) {
            place.run(0.5);
        }
        ASSERT_EQ(hauler->mind()->get_state(), state);
    };
    until(HaulerBrain::to_destination);
    ASSERT_EQ(hauler->mind()->get_destination(), first);
    Workplace::fill(first->get_pile(), "egg", 9); // the player was quicker
    place.run(15.0);
    EXPECT_EQ(Workplace::held(second, "egg"), 2);
    EXPECT_EQ(Workplace::carried(hauler), 3);
    place.run(25.0); // nowhere to put the rest: home
    EXPECT_EQ(Workplace::carried(hauler), 0);
    EXPECT_EQ(Workplace::held(tray, "egg"), 3);
    EXPECT_EQ(tray->claim_count() + first->claim_count() + second->claim_count(), 0);
    EXPECT_TRUE(hauler->can_break());

    second->get_pile()->drop("egg", 2);
    until(HaulerBrain::to_destination);
    Workplace::fill(second->get_pile(), "egg", 2);
    tray->set_active(false); // sold meanwhile
    place.run(30.0);
    EXPECT_EQ(Workplace::carried(hauler), 0);
    EXPECT_LE(Workplace::held(tray, "egg"), 3);
}

TEST(Haulers, WithoutKindsTheDestinationDecides) {
    Workplace place;
    place.take("egg", 20, Vector3(0, 0, -6));
    place.take("milk", 20, Vector3(3, 0, -6));
    Ref<Zone> truck = place.give("truck", "", 0, Vector3(6, 0, 2));
    Hauler *loader = place.hire({}, "truck");
    place.run(3.0);
    EXPECT_TRUE(loader->quiet()); // it accepts nothing yet
    Dictionary order;
    order["milk"] = 3;
    truck->set_accepts(order);
    place.run(20.0);
    EXPECT_EQ(Workplace::held(truck, "milk"), 3);
    Dictionary next;
    next["egg"] = 2;
    truck->set_accepts(next);
    place.run(20.0);
    EXPECT_EQ(Workplace::held(truck, "egg"), 2);
    EXPECT_EQ(Workplace::held(truck, "milk"), 3);
}

TEST(Haulers, ChooseTheSourceByStockAndWay) {
    Workplace place;
    Ref<Zone> near_one = place.take("egg", 21, Vector3(2, 0, -2));
    Ref<Zone> far_one = place.take("egg", 24, Vector3(80, 0, -2));
    Ref<Zone> late = place.give("stall_egg", "egg", 96, Vector3(6, 0, 4));
    Hauler *hauler = place.hire({"egg"}, "stall_egg");
    place.run(0.1);
    EXPECT_EQ(hauler->mind()->get_source(), near_one);
    EXPECT_EQ(hauler->way().size(), 3u); // along the road in front of the buildings
    near_one->set_active(false);
    hauler->reset();
    place.run(1.2);
    EXPECT_EQ(hauler->mind()->get_source(), far_one);
    late->set_active(false);
    hauler->reset();
    place.run(1.2);
    EXPECT_TRUE(hauler->quiet());
}

TEST(Haulers, GiveUpTheirClaimsForABreak) {
    Workplace place;
    Ref<Zone> tray = place.take("egg", 30, Vector3(0, 0, -40));
    Ref<Zone> stall = place.give("stall_egg", "egg", 5, Vector3(8, 0, 4));
    Hauler *hauler = place.hire({"egg"}, "stall_egg");
    place.run(0.1);
    EXPECT_FALSE(hauler->can_break()); // under way to the source
    hauler->before_break();
    EXPECT_EQ(stall->claim_count() + tray->claim_count(), 0);
    hauler->after_break();
    EXPECT_TRUE(hauler->can_break());
    place.run(1.2);
    EXPECT_EQ(stall->claimed("egg", 0), 5);
}

TEST(Haulers, DriedUpSourceAndFreedPilesEndTheTripQuietly) {
    Workplace place;
    Ref<Zone> tray = place.take("egg", 5, Vector3(0, 0, -6));
    Ref<Zone> stall = place.give("stall_egg", "egg", 5, Vector3(8, 0, 4));
    Hauler *hauler = place.hire({"egg"}, "stall_egg");
    place.run(0.2);
    ASSERT_EQ(hauler->mind()->get_state(), HaulerBrain::to_source);
    tray->get_pile()->drop("egg", 5);
    place.run(6.0);
    EXPECT_TRUE(hauler->can_break());
    Workplace::fill(tray->get_pile(), "egg", 5);
    place.run(2.0);
    ASSERT_FALSE(hauler->can_break());
    memdelete(stall->get_pile());
    memdelete(tray->get_pile());
    place.run(30.0);
    EXPECT_EQ(Workplace::carried(hauler), 0);
}

} // namespace
} // namespace tilm
