// What a sale brings to the dollar, and the alarm of a stall that loses its customers.

#include "rules/shop.h"
#include "shop_kit.h"

namespace tilm {
namespace {

struct Sale {
    int64_t level, base;
    double charm;
    bool night;
    double quality;
    bool vip;
    double mood;
    int64_t each;
};

TEST(CounterPrices, ToTheDollar) {
    const Sale sales[] = {
        {1, 4, 0, false, 1.0, false, 1.0, 4},      {1, 4, 0, false, 1.0, false, 0.7, 3}, // 2.8
        {1, 4, 0, false, 1.0, false, 0.4, 2},                                            // 1.6
        {1, 2, 0, false, 1.0, false, 0.4, 1},                                            // 0.8
        {1, 1, 0, false, 1.0, false, 0.4, 1},                                            // 0.4: nothing is given away
        {2, 30, 0, false, 1.0, false, 1.0, 41},                                          // 40.5, half away from zero
        {5, 4, 0, true, 1.0, true, 1.0, 45},                                             // 9.6 is a unit of 10
        {3, 4, 50, true, 1.0, false, 1.0, 13},                                           // 7 x 1.2 x 1.5
        {3, 4, 50, true, 1.0, true, 0.7, 26},      // 26.46: only the whole is rounded
        {1, 4, 125, false, 1.0, false, 0.7, 4},    // 4.2
        {1, 4, 0, false, 1.18, false, 1.0, 5},     // a coop at level 20
        {10, 55, 20, true, 1.24, true, 1.0, 1374}, // 228 x 1.62 x 3.72
    };
    Shop shop;
    int64_t sum = 0;
    for (const Sale &s : sales) {
        shop.stall->set_base_price(s.base);
        shop.stall->set_level(s.level);
        SellCounter::set_price_factor(rules::price_factor(s.charm, s.night));
        SellCounter::price_mults()["egg"] = s.quality;
        EXPECT_EQ(shop.stall->_pay("egg", 3, s.vip, s.mood, false), s.each * 3) << "each " << s.each;
        sum += s.each * 3;
    }
    EXPECT_EQ(shop.cash(), sum);
    SellCounter::price_mults().clear();
    SellCounter::price_mults()["milk"] = 2.0; // another good's maker
    SellCounter::set_price_factor(1.0);
    shop.stall->set_base_price(4);
    shop.stall->set_level(1);
    EXPECT_EQ(shop.stall->_pay("egg", 1, false, 1.0, false), 4);
    shop.stall->set_level(-3);
    EXPECT_EQ(shop.stall->unit_price(), 4);
}

TEST(CounterPrices, QuietMoneyWaitsAsOneBillOfItsUnit) {
    Shop shop;
    EXPECT_EQ(shop.stall->_pay("egg", 5, true, 1.0, true), 60);
    EXPECT_EQ(shop.stall->cash_tile()->get_bills().size(), 1);
    EXPECT_EQ(shop.stall->cash_tile()->get_pending_unit(), 12);
    EXPECT_TRUE(shop.stall->get_settle_pending());
    int calls = 0;
    while (shop.stall->get_settle_pending() && calls < 20) {
        shop.stall->settle_cash();
        calls++;
    }
    EXPECT_EQ(shop.stall->cash_tile()->get_bills().size(), 5);
    EXPECT_EQ(calls, 5); // one bill a call, and one to find nothing left
    EXPECT_EQ(shop.cash(), 60);
    memdelete(shop.stall->cash_tile()); // without a tile the farm itself takes it
    EXPECT_EQ(shop.stall->_pay("egg", 5, false, 1.0, true), 20);
    EXPECT_EQ(shop.place.farm.money, 20);
    shop.stall->set_settle_pending(true);
    shop.stall->settle_cash();
    EXPECT_FALSE(shop.stall->get_settle_pending());
}

TEST(CounterPrices, ThreeLossesInTwentySecondsRingTheAlarm) {
    Shop shop;
    const auto lose_at = [&](double t) {
        shop.stall->set_clock(t);
        shop.stall->_pay("egg", 0, false, 0.4, false);
        return shop.stall->recent_losses();
    };
    EXPECT_EQ(lose_at(0), 1);
    EXPECT_EQ(lose_at(10), 2);
    EXPECT_EQ(lose_at(20.1), 2); // the first is too long ago
    EXPECT_EQ(lose_at(30), 0);   // 10, 20.1 and 30: the alarm rang and counting begins anew
    EXPECT_EQ(lose_at(31), 1);
    shop.stall->_pay("egg", 2, false, 0.7, false); // no loss
    EXPECT_EQ(shop.stall->recent_losses(), 1);
}

} // namespace
} // namespace tilm
