// Stalls: records out of sight, customers in line, moods, orders, money.

#include "shop_kit.h"

using namespace godot;

namespace tilm {
namespace {

TEST(Counters, BuildsTheWholeStall) {
    Shop shop;
    EXPECT_EQ(shop.stall->get_position(), Vector3(10, 0, 4.6f));
    EXPECT_EQ(shop.stall->cash_tile()->get_position(), Vector3(12.6f, 0, 4.6f));
    ASSERT_EQ(shop.place.farm.zones.size(), 1);
    Ref<ZoneCore> zone = shop.place.farm.zones[0];
    const Ref<ZoneCore> told = shop.stall->get_meta("zone");
    EXPECT_EQ(zone, told);
    EXPECT_EQ(zone->get_group(), String("stall_egg"));
    EXPECT_EQ(zone->room("egg"), 96);
    ASSERT_EQ(shop.place.farm.solids.size(), 1);
    EXPECT_EQ(Rect2(shop.place.farm.solids[0]), Rect2(8.4f, 5.25f, 3.2f, 1.2f));
    Shop mixed({"apple_juice", "orange_juice"});
    Ref<ZoneCore> both = mixed.place.farm.zones[0];
    EXPECT_EQ(both->get_group(), String("stall_x"));
    EXPECT_EQ(both->room("orange_juice"), 48);
    EXPECT_EQ(mixed.stall->slot(2), Vector3(10, 0, 4.6f + 1.6f + 2.3f));
}

TEST(Counters, PricesByLevelMoodVipAndFarm) {
    Shop shop;
    EXPECT_EQ(shop.stall->_pay("egg", 3, false, 1.0, false), 12);
    EXPECT_EQ(shop.stall->_pay("egg", 6, true, 1.0, false), 72);
    shop.stall->set_level(3);
    EXPECT_EQ(shop.stall->unit_price(), 7);
    SellCounter::price_mults()["egg"] = 1.5;
    SellCounter::set_price_factor(1.2);
    EXPECT_EQ(shop.stall->_pay("egg", 2, false, 0.7, false), 18); // round(8.82) each
    EXPECT_EQ(shop.cash(), 12 + 72 + 18);
    EXPECT_EQ(shop.place.farm.stats["sold:egg"], 11);
    EXPECT_EQ(shop.place.farm.events["happy"], 2);
    EXPECT_EQ(shop.place.farm.events["sell"], 11);
}

TEST(Counters, NobodyIsDrawnToAFullLine) {
    Shop shop;
    shop.stall->set_spawn_clock(0);
    shop.trade(60.0);
    EXPECT_EQ(shop.stall->waiting(), 5);
    EXPECT_EQ(shop.stall->ghost_count(), 5);
    EXPECT_LT(shop.stall->get_spawn_clock(), 0);
    shop.stall->pop_ghost();
    shop.stall->_process(0.3);
    EXPECT_EQ(shop.stall->ghost_count(), 5);
    // Nobody can be owed more than 0.3 seconds: an empty counter's 4.2 less that.
    EXPECT_NEAR(shop.stall->get_spawn_clock(), 3.9, 1e-6);
    const Dictionary first = shop.stall->peek_ghost();
    EXPECT_EQ(String(first["kind"]), String("egg"));
    EXPECT_FALSE(static_cast<bool>(first["walk"]));
}

TEST(Counters, SellsOutOfSight) {
    Shop shop;
    shop.stock("egg", 20);
    shop.stall->add_ghost("egg", 3, false, 0, false);
    shop.stall->add_ghost("egg", 4, true, 0, false); // takes 6 at three times the price
    shop.trade(0.9);
    EXPECT_EQ(shop.left("egg"), 20); // 0.16 a unit and 0.45, in steps of 0.3
    shop.trade(0.3);
    EXPECT_EQ(shop.left("egg"), 17);
    EXPECT_EQ(shop.cash(), 12);
    EXPECT_TRUE(shop.stall->get_settle_pending());
    shop.trade(3.0);
    EXPECT_EQ(shop.left("egg"), 11);
    EXPECT_EQ(shop.cash(), 12 + 72);
    EXPECT_EQ(shop.stall->waiting(), 0);
    EXPECT_EQ(shop.place.farm.events["happy"], 2);
    const int64_t bills = shop.stall->cash_tile()->get_bills().size();
    Glebworks::set_view(HERE);
    shop.trade(1.0);
    EXPECT_GT(shop.stall->cash_tile()->get_bills().size(), bills); // laid out now that somebody looks
    EXPECT_EQ(shop.cash(), 12 + 72);
    EXPECT_FALSE(shop.stall->get_settle_pending());
}

TEST(Counters, ImpatientRecordsTakeWhatThereIs) {
    Shop shop;
    shop.stock("egg", 2);
    shop.stall->add_ghost("egg", 4, false, 89.0, false);
    shop.stall->add_ghost("egg", 3, false, 89.0, false);
    shop.trade(0.9);
    EXPECT_EQ(shop.stall->waiting(), 2);
    shop.trade(0.6);
    EXPECT_EQ(shop.left("egg"), 0);
    EXPECT_EQ(shop.cash(), 2 * 2); // 4 x 0.4, rounded
    EXPECT_EQ(shop.stall->recent_losses(), 1);
    shop.trade(2.0);
    EXPECT_EQ(shop.stall->waiting(), 0);
    EXPECT_EQ(shop.cash(), 4);
    EXPECT_EQ(shop.stall->recent_losses(), 2);
    shop.stall->add_ghost("egg", 3, false, 91.0, false);
    shop.trade(2.0);
    EXPECT_EQ(shop.stall->recent_losses(), 0); // the third rang the alarm
    EXPECT_EQ(shop.place.farm.events["happy"], 0);
}

TEST(Counters, MixedStallMovesRecordsAndHeadsOn) {
    Shop shop({"apple_juice", "orange_juice"});
    shop.stock("orange_juice", 10);
    shop.stall->add_ghost("apple_juice", 2, false, 0, false);
    shop.trade(2.7);
    EXPECT_EQ(String(shop.stall->peek_ghost()["kind"]), String("apple_juice"));
    shop.trade(0.7);
    EXPECT_EQ(String(shop.stall->peek_ghost()["kind"]), String("orange_juice"));
    EXPECT_NEAR(static_cast<double>(shop.stall->peek_ghost()["wait"]), 6 + 3.3, 0.4);
    shop.stall->pop_ghost();

    Customer *customer = shop.seat("apple_juice", 9);
    shop.trade(2.9);
    EXPECT_EQ(customer->mind()->get_kind(), String("apple_juice"));
    shop.trade(0.2);
    EXPECT_EQ(customer->mind()->get_kind(), String("orange_juice"));
    EXPECT_GT(customer->mind()->get_wait(), 5.8);
    shop.trade(0.2);
    ASSERT_GE(customer->mind()->get_got(), 1);
    ASSERT_LT(customer->mind()->get_got(), 9);
    shop.stall->get_stock()->drop("orange_juice", 10);
    shop.stock("apple_juice", 10);
    shop.trade(6.0); // one in hand: the order stays
    EXPECT_EQ(customer->mind()->get_kind(), String("orange_juice"));
}

TEST(Counters, ServesTheLineAndUsesCustomersAgain) {
    Shop shop;
    shop.stock("egg", 5);
    Customer *first = shop.seat("egg", 3);
    Customer *second = shop.seat("egg", 2);
    EXPECT_EQ(first->get_position(), shop.stall->slot(0));
    EXPECT_EQ(second->get_position(), shop.stall->slot(1));
    shop.run(1.0);
    EXPECT_TRUE(first->mind()->get_leaving());
    EXPECT_EQ(first->get_stack()->count(), 3);
    EXPECT_EQ(shop.head(), second);
    EXPECT_EQ(shop.cash(), 12);
    shop.run(15.0); // both walk out behind the stall and are kept
    EXPECT_EQ(shop.left("egg"), 0);
    EXPECT_EQ(shop.cash(), 20);
    EXPECT_EQ(shop.stall->get_queue().size(), 0);
    EXPECT_EQ(first->get_parent(), nullptr);
    EXPECT_EQ(first->get_stack()->count(), 0);
    Customer *again = shop.seat("egg", 4, true);
    EXPECT_TRUE(again == first || again == second);
    EXPECT_EQ(again->mind()->get_want(), 6);
    EXPECT_EQ(again->mind()->get_got(), 0);
    EXPECT_FALSE(again->mind()->get_leaving());
}

TEST(Counters, WalkersInShowTheirOrderAtTheHead) {
    Shop shop;
    Glebworks::set_view(HERE);
    shop.stall->add_ghost("egg", 2, false, 7.0, true);
    shop.stall->add_ghost("egg", 2, false, 0, true);
    shop.stall->add_ghost("egg", 2, false, 0, true);
    step(1);
    shop.stall->show_ghosts();
    EXPECT_EQ(shop.stall->get_queue().size(), 2); // two new faces a frame
    EXPECT_EQ(shop.stall->ghost_count(), 1);
    Customer *customer = shop.head();
    EXPECT_EQ(customer->get_position(), Vector3(10, 0, 22));
    EXPECT_EQ(customer->mind()->get_wait(), 7.0);
    shop.run(2.0);
    EXPECT_FALSE(customer->mind()->get_bubble()->is_visible());
    shop.run(5.0);
    EXPECT_LT(customer->get_position().distance_to(shop.stall->slot(0)), 0.4);
    EXPECT_TRUE(customer->mind()->get_bubble()->is_visible());
    EXPECT_GT(customer->mind()->get_wait(), 13.0);
    Customer *second = Object::cast_to<Customer>(shop.stall->get_queue()[1]);
    const double before = second->mind()->get_wait();
    shop.stock("egg", 50); // goods in sight calm the line
    shop.run(1.0);
    EXPECT_LE(second->mind()->get_wait(), before + 0.05);
}

TEST(Counters, WhoWaitsTooLongPaysForWhatItHolds) {
    Shop shop;
    shop.stock("egg", 1);
    Customer *half = shop.seat("egg", 3);
    shop.run(0.5);
    ASSERT_EQ(half->mind()->get_got(), 1);
    half->mind()->set_wait(89.9);
    shop.run(0.5);
    EXPECT_TRUE(half->mind()->get_leaving());
    EXPECT_EQ(shop.cash(), 2); // one egg at the worst mood
    EXPECT_EQ(shop.stall->recent_losses(), 1);
    Customer *empty = shop.seat("egg", 3, false, 91.0);
    shop.run(0.1);
    EXPECT_TRUE(empty->mind()->get_leaving());
    EXPECT_EQ(shop.cash(), 2);
    EXPECT_EQ(shop.stall->recent_losses(), 2);
    CustomerBrain::set_patience(2.0);
    Customer *calm = shop.seat("egg", 3, false, 91.0);
    shop.run(0.1);
    EXPECT_FALSE(calm->mind()->get_leaving());
    EXPECT_EQ(calm->mood_mult(), 0.7);
}

TEST(Counters, FreedCustomersAndCountersLeaveNothingBehind) {
    Shop shop;
    shop.stock("egg", 50);
    Customer *first = shop.seat("egg", 3);
    Customer *second = shop.seat("egg", 9);
    shop.run(0.3);
    memdelete(first);
    shop.run(1.0);
    EXPECT_EQ(shop.head(), second);
    EXPECT_LT(second->get_position().distance_to(shop.stall->slot(0)), 0.4);
    memdelete(shop.stall);
    EXPECT_TRUE(second->mind()->get_leaving());
    shop.place.run(10.0);
    EXPECT_TRUE(second->is_queued_for_deletion()); // no pool to go to any more
    Array noone;
    shop.stall = memnew(SellCounter);
    shop.place.farm.ground->add_child(shop.stall);
    expect_engine_error("only a walker with a CustomerBrain");
    noone.push_back(shop.place.farm.ground);
    shop.stall->set_queue(noone);
    EXPECT_EQ(shop.stall->waiting(), 0);
}

} // namespace
} // namespace tilm
