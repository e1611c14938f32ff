// Prices, moods and paces of stalls.

#include <gtest/gtest.h>

#include "rules/shop.h"

namespace tilm::rules {
namespace {

TEST(Shop, MoodFallsAtLimitsThatPatienceStretches) {
    EXPECT_EQ(mood_after(30.0, 1.0), 1.0);
    EXPECT_EQ(mood_after(30.01, 1.0), 0.7);
    EXPECT_EQ(mood_after(60.0, 1.0), 0.7);
    EXPECT_EQ(mood_after(60.01, 1.0), 0.4);
    EXPECT_FALSE(gives_up(90.0, 1.0));
    EXPECT_TRUE(gives_up(90.01, 1.0));
    EXPECT_EQ(mood_after(59.0, 2.0), 1.0);
    EXPECT_FALSE(gives_up(179.0, 2.0));
}

TEST(Shop, UnitPriceGrowsByAThirdALevel) {
    EXPECT_EQ(unit_price(1, 4), 4);
    EXPECT_EQ(unit_price(2, 4), 5); // 5.4
    EXPECT_EQ(unit_price(3, 4), 7); // 6.8
    EXPECT_EQ(unit_price(5, 50), 120);
}

TEST(Shop, EachUnitIsRoundedAndNeverFree) {
    EXPECT_EQ(price_each(4.0, 1.0, false, 1.0), 4);
    EXPECT_EQ(price_each(4.0, 1.0, true, 1.0), 12);
    EXPECT_EQ(price_each(2.0, 1.0, false, 0.4), 1); // 0.8
    EXPECT_EQ(price_each(1.0, 1.0, false, 0.4), 1); // 0.4 would be 0
    EXPECT_EQ(price_each(4.0, 1.06, false, 0.7), 3);
    EXPECT_EQ(price_each(420.0 * 1.5, 1.1, true, 1.0), 2079);
}

TEST(Shop, FullCountersDrawMoreAndLargerOrders) {
    EXPECT_DOUBLE_EQ(counter_fullness(24), 0.0);
    EXPECT_DOUBLE_EQ(counter_fullness(96), 1.0);
    EXPECT_DOUBLE_EQ(counter_fullness(200), 1.0);
    EXPECT_DOUBLE_EQ(spawn_gap(false, 1.0, 10), 1.4);
    EXPECT_DOUBLE_EQ(spawn_gap(false, 1.0, 0), 4.2);
    EXPECT_NEAR(spawn_gap(false, 1.0, 96), 0.56, 1e-12);
    EXPECT_NEAR(spawn_gap(true, 2.0, 60), 0.45 * 2.0 * 0.7, 1e-12);
    EXPECT_EQ(order_bonus(24), 0);
    EXPECT_EQ(order_bonus(60), 2);
    EXPECT_EQ(order_bonus(96), 4);
}

TEST(Shop, TheFarmsFactors) {
    EXPECT_DOUBLE_EQ(customer_patience(50.0, false), 1.5);
    EXPECT_DOUBLE_EQ(customer_patience(50.0, true), 3.0);
    EXPECT_EQ(customer_gap(true, false), 2.0);
    EXPECT_EQ(customer_gap(true, true), 1.0);
    EXPECT_EQ(customer_gap(false, true), 0.5);
    EXPECT_DOUBLE_EQ(price_factor(50.0, true), 1.8);
    EXPECT_EQ(price_factor(0.0, false), 1.0);
}

TEST(Shop, ServingGetsFasterByLevel) {
    EXPECT_DOUBLE_EQ(serving_delay(1), 0.16);
    EXPECT_NEAR(serving_delay(4), 0.16 * 0.614125, 1e-12);
}

TEST(Shop, MixedStallsShareTheirPlaces) {
    EXPECT_EQ(stock_share(1), 96);
    EXPECT_EQ(stock_share(2), 48);
    EXPECT_EQ(stock_share(5), 19);
    EXPECT_EQ(stock_share(0), 96);
}

} // namespace
} // namespace tilm::rules
