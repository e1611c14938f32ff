// Customers that are plain records: how often they come, what they buy and how they turn into people.

#include "rules/shop.h"
#include "shop_kit.h"

namespace tilm {
namespace {

struct Arrival {
    int goods;
    bool rush;
    double mult;
    double clock; // after this step's time has been taken off
    bool near;
    double next;
};

TEST(CounterRecords, ComeBySupplyRushAndOverdueTime) {
    const Arrival arrivals[] = {
        {24, false, 1, 0, true, 1.4},     {60, false, 1, 0, true, 0.98},  {96, false, 1, 0, true, 0.56},
        {150, false, 1, 0, true, 0.56},   {0, false, 1, 0, true, 4.2},    {0, true, 1, 0, true, 1.35},
        {24, true, 2, 0, true, 0.9},      {24, false, 0.5, 0, true, 0.7}, {24, false, 1, -5, true, 1.4},
        {24, false, 1, -0.2, false, 1.2}, {24, false, 1, -5, false, 1.1}, {0, false, 2, -5, false, 8.1},
    };
    for (const Arrival &a : arrivals) {
        Shop shop;
        shop.stock("egg", a.goods);
        CounterCore::set_rush(a.rush);
        CounterCore::set_spawn_mult(a.mult);
        Glebworks::set_view(a.near ? HERE : ELSEWHERE);
        shop.stall->set_spawn_clock(a.clock + 0.3);
        shop.stall->_process(0.3);
        EXPECT_EQ(shop.stall->waiting(), 1);
        EXPECT_NEAR(shop.stall->get_spawn_clock(), a.next, 1e-9) << a.goods << " goods";
        CounterCore::set_spawn_mult(1.0);
    }
}

TEST(CounterRecords, OrderMoreFromFullShelvesAndOneInFourteenIsVip) {
    Shop shop({"apple_juice", "orange_juice"});
    for (const int goods : {0, 96}) {
        shop.stock("orange_juice", goods);
        int vips = 0;
        int apples = 0;
        for (int i = 0; i < 1000; ++i) {
            shop.stall->set_spawn_clock(0);
            shop.stall->set_pay_clock(-1e6); // nobody buys
            shop.stall->_process(0.3);
            const Dictionary record = shop.stall->peek_ghost();
            const int64_t n = record["n"];
            ASSERT_GE(n, goods == 0 ? 2 : 6);
            ASSERT_LE(n, goods == 0 ? 4 : 8);
            vips += static_cast<bool>(record["vip"]) ? 1 : 0;
            apples += String(record["kind"]) == "apple_juice" ? 1 : 0;
            shop.stall->pop_ghost();
        }
        EXPECT_GT(vips, 35);
        EXPECT_LT(vips, 110);
        EXPECT_NEAR(apples, 500, 80);
    }
}

TEST(CounterRecords, PayWhenTheirServingTimeIsOver) {
    Shop shop;
    shop.stall->set_level(3);
    shop.stock("egg", 20);
    const Array goods = shop.stall->get_stock()->get_items();
    shop.stall->add_ghost("egg", 4, true, 0, false);
    const double t = 0.16 * 0.7225 * 6 + 0.45; // six units for a VIP who ordered four
    shop.stall->set_pay_clock(t - 0.3 - 1e-6);
    shop.stall->_process(0.3);
    EXPECT_EQ(shop.left("egg"), 20);
    shop.stall->set_pay_clock(t - 0.3 + 1e-6);
    shop.stall->_process(0.3);
    EXPECT_EQ(shop.left("egg"), 14);
    EXPECT_EQ(shop.cash(), 6 * 21);
    EXPECT_NEAR(shop.stall->get_pay_clock(), 1e-6, 1e-9); // what is over counts for the next
    for (int i = 14; i < 20; ++i) {
        Item *sold = Object::cast_to<Item>(goods[i].get_validated_object());
        EXPECT_TRUE(sold == nullptr || sold->is_queued_for_deletion()) << "the newest goods go, without a flight";
    }
    shop.stall->set_pay_clock(3.0);
    Glebworks::set_view(HERE);
    shop.stall->_process(FRAME);
    EXPECT_EQ(shop.stall->get_pay_clock(), 0.0);
}

TEST(CounterRecords, WaitOnlyForTheUnitsOrdered) {
    Shop shop;
    shop.stock("egg", 5);
    shop.stall->add_ghost("egg", 4, true, 0, false); // would take six
    shop.stall->add_ghost("egg", 6, false, 0, false);
    shop.trade(30.0);
    EXPECT_EQ(shop.stall->ghost_count(), 2);
    EXPECT_EQ(static_cast<double>(shop.stall->peek_ghost()["wait"]), 0.0); // four lie there
    shop.stock("egg", 1);
    shop.trade(0.6);
    EXPECT_EQ(shop.left("egg"), 0);
    EXPECT_EQ(shop.cash(), 72);
    EXPECT_NEAR(static_cast<double>(shop.stall->peek_ghost()["wait"]), 30.0, 0.7);
    CustomerBrain::set_patience(2.0);
    shop.stall->pop_ghost();
    shop.stall->add_ghost("egg", 6, false, 178.0, false);
    shop.trade(1.8);
    EXPECT_EQ(shop.stall->ghost_count(), 1);
    shop.trade(0.6);
    EXPECT_EQ(shop.stall->ghost_count(), 0);
    EXPECT_EQ(shop.cash(), 72);
    EXPECT_EQ(shop.stall->recent_losses(), 1);
}

TEST(CounterRecords, ChangingTheOrderHoldsThePaymentBack) {
    Shop shop({"apple_juice", "orange_juice"});
    shop.stock("orange_juice", 10);
    shop.stall->add_ghost("apple_juice", 2, false, 0, false);
    for (int i = 0; i < 11; ++i) {
        shop.stall->_process(0.3);
    }
    EXPECT_EQ(String(shop.stall->peek_ghost()["kind"]), String("orange_juice"));
    EXPECT_NEAR(static_cast<double>(shop.stall->peek_ghost()["wait"]), 9.3, 1e-9); // 11 steps and 6 seconds
    EXPECT_EQ(shop.stall->get_pay_clock(), 0.0);
    EXPECT_EQ(shop.stall->get_swap_clock(), 0.0);
    shop.trade(1.2);
    EXPECT_EQ(shop.left("orange_juice"), 8);
}

TEST(CounterRecords, BecomePeopleInTheirPlacesWithTheirWait) {
    Shop shop;
    const double waits[] = {95.0, 20.0, 45.0, 0.0};
    for (const double wait : waits) {
        shop.stall->add_ghost("egg", 3, wait == 45.0, wait, false);
    }
    SellCounter *other = memnew(SellCounter);
    other->set_position(Vector3(14, 0, 4.6f));
    other->set_world(shop.place.farm.ground);
    shop.place.farm.ground->add_child(other);
    other->set_process(false);
    other->add_ghost("egg", 2, false, 0, false);
    Glebworks::set_view(HERE);
    step(1);
    shop.stall->show_ghosts();
    other->show_ghosts();
    EXPECT_EQ(shop.stall->get_queue().size(), 2);
    EXPECT_EQ(other->get_queue().size(), 0); // two new faces a frame, all counters together
    step(1);
    other->show_ghosts();
    shop.stall->show_ghosts();
    EXPECT_EQ(other->get_queue().size(), 1);
    EXPECT_EQ(shop.stall->get_queue().size(), 3);
    step(1);
    shop.stall->show_ghosts();
    ASSERT_EQ(shop.stall->get_queue().size(), 4);
    for (int i = 0; i < 4; ++i) {
        Customer *customer = Object::cast_to<Customer>(shop.stall->get_queue()[i]);
        EXPECT_EQ(customer->get_position(), shop.stall->slot(i));
        EXPECT_NEAR(customer->mind()->get_wait(), waits[i], 0.1);
        EXPECT_EQ(customer->mind()->get_want(), waits[i] == 45.0 ? 5 : 3);
    }
    shop.stall->_process(FRAME); // the first has waited long enough already
    EXPECT_EQ(shop.stall->get_queue().size(), 3);
    EXPECT_EQ(shop.cash(), 0);
}

// Five minutes of orders that are told beforehand, a third of them watched: each good and each dollar once.
TEST(CounterRecords, LookingOnAndOffLosesNothing) {
    Shop shop;
    shop.stock("egg", 400);
    int64_t units = 0;
    int64_t dollars = 0;
    for (int i = 0; i < 60; ++i) {
        if (i < 55) {
            const bool vip = i % 5 == 0;
            const int64_t n = 2 + i % 4;
            shop.stall->add_ghost("egg", n, vip, 0, i % 2 == 0);
            units += n + (vip ? 2 : 0);
            dollars += (n + (vip ? 2 : 0)) * (vip ? 12 : 4);
        }
        Glebworks::set_view(i % 3 == 0 ? HERE : ELSEWHERE);
        step(1);
        shop.place.run(i < 55 ? 4.0 : 20.0, [&] {
            WalkerCore::tick_far(FRAME);
            shop.stall->_process(FRAME);
        });
    }
    EXPECT_EQ(shop.stall->waiting(), 0);
    EXPECT_EQ(shop.left("egg"), 400 - units);
    EXPECT_EQ(shop.place.farm.stats["sold:egg"], units);
    EXPECT_EQ(shop.place.farm.events["happy"], 55);
    EXPECT_EQ(shop.cash(), dollars);
}

// Sold units and dollars of ten minutes, goods always on the shelf.
std::pair<int64_t, int64_t> earn(const Rect2 &view) {
    Shop shop;
    shop.stall->set_spawn_clock(0);
    Glebworks::set_view(view);
    for (int i = 0; i < 600; ++i) {
        shop.stock("egg", 24 - shop.left("egg"));
        step(1);
        shop.run(1.0);
    }
    return {shop.place.farm.stats["sold:egg"], shop.cash()};
}

TEST(CounterRecords, EarnTheSameWatchedOrNot) {
    const auto watched = earn(HERE);
    const auto unwatched = earn(ELSEWHERE);
    EXPECT_NEAR(static_cast<double>(watched.first) / static_cast<double>(unwatched.first), 1.0, 0.12);
    EXPECT_NEAR(static_cast<double>(watched.second) / static_cast<double>(unwatched.second), 1.0, 0.2);
}

} // namespace
} // namespace tilm
