// Orders, pay and stars of trucks, and the trips of the supply van.

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "rules/trucks.h"

namespace tilm::rules {
namespace {

TEST(Trucks, PayFallsAfterTheGoodTimeAndAtItsLimits) {
    EXPECT_EQ(truck_speed_mult(30.0, 30.0), 1.0);
    EXPECT_EQ(truck_speed_mult(30.001, 30.0), 0.75);
    EXPECT_EQ(truck_speed_mult(48.0, 30.0), 0.75);
    EXPECT_EQ(truck_speed_mult(48.001, 30.0), 0.5);
    EXPECT_FALSE(truck_hurries(48.0, 30.0));
    EXPECT_TRUE(truck_hurries(48.001, 30.0));
    EXPECT_FALSE(truck_is_late(119.999, 30.0));
    EXPECT_TRUE(truck_is_late(120.0, 30.0));
    EXPECT_EQ(truck_seconds_left(0.0, 30.0), 30);
    EXPECT_EQ(truck_seconds_left(29.2, 30.0), 1);
    EXPECT_EQ(truck_seconds_left(30.5, 30.0), 18);
    EXPECT_EQ(truck_seconds_left(60.0, 30.0), 60);
    EXPECT_EQ(truck_seconds_left(500.0, 30.0), 0);
}

TEST(Trucks, OrdersGrowWithTheOrdersDone) {
    EXPECT_EQ(main_order_count(0, 0), 6);
    EXPECT_EQ(main_order_count(4, 3), 16);
    EXPECT_EQ(main_order_count(4, 9), 28);
    EXPECT_EQ(main_order_count(4, std::numeric_limits<int64_t>::max()), 28);
    EXPECT_EQ(main_order_count(0, -5), 6);
    EXPECT_EQ(dock_order_count(0, 0, 1), 8);
    EXPECT_EQ(dock_order_count(2, 8, 1), 18);
    EXPECT_EQ(dock_order_count(2, 99, 2), 21);
    EXPECT_EQ(vip_order_count(8), 11);
    EXPECT_EQ(vip_order_count(10), 14);
    EXPECT_EQ(vip_second_count(1), 8);
    EXPECT_DOUBLE_EQ(truck_good_time(0, false, false), 25.0);
    EXPECT_DOUBLE_EQ(truck_good_time(10, false, false), 50.0);
    EXPECT_DOUBLE_EQ(truck_good_time(10, true, false), 40.0);
    EXPECT_DOUBLE_EQ(truck_good_time(10, true, true), 56.0);
}

TEST(Trucks, PayCountsTimeStarsVisitsAndTips) {
    EXPECT_EQ(truck_reward(100, {}), 250);
    EXPECT_EQ(truck_reward(100, {.speed_mult = 0.75}), 187); // 187.5
    EXPECT_EQ(truck_reward(100, {.dock = true}), 180);
    EXPECT_EQ(truck_reward(100, {.stars = 2, .dock = true}), 234);
    EXPECT_EQ(truck_reward(100, {.speed_mult = 0.5, .dock = true, .vip = true}), 198);
    EXPECT_EQ(truck_reward(100, {.tips = 1.5}), 375);
    EXPECT_EQ(truck_late_pay(99), 39); // 39.6
    EXPECT_EQ(truck_late_pay(0), 0);
}

TEST(Trucks, StarsComeWithTheThirdEighthAndFifteenthQuickOrder) {
    EXPECT_EQ(dock_stars(1), 0);
    EXPECT_EQ(dock_stars(2), 1);
    EXPECT_EQ(dock_stars(6), 1);
    EXPECT_EQ(dock_stars(7), 2);
    EXPECT_EQ(dock_stars(13), 2);
    EXPECT_EQ(dock_stars(14), 3);
}

TEST(Vans, TripsComeOftenerWithTheLevelAndRarerAtNight) {
    EXPECT_DOUBLE_EQ(van_pause(1, false), 17.4);
    EXPECT_DOUBLE_EQ(van_pause(1, true), 39.4);
    EXPECT_DOUBLE_EQ(van_pause(2, false), 22.0 * 0.85 - 4.6);
    EXPECT_DOUBLE_EQ(van_pause(20, false), 6.0 - 4.6);
    EXPECT_EQ(van_rounds(1), 8);
    EXPECT_EQ(van_rounds(3), 12);
    EXPECT_EQ(van_kind_limit(1), 24);
    EXPECT_EQ(van_kind_limit(3), 40);
}

} // namespace
} // namespace tilm::rules
