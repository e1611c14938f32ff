// How staff levels grow.

#include <gtest/gtest.h>

#include "rules/staff.h"

namespace tilm::rules {
namespace {

TEST(Staff, EachLevelBeginsAtItsExperience) {
    const int64_t begins[] = {0, 25, 75, 150, 250, 375, 525, 700, 900, 1125};
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(staff_level(begins[i]), i + 1);
        if (i > 0) {
            EXPECT_EQ(staff_level(begins[i] - 1), i);
        }
    }
    EXPECT_EQ(staff_level(1000000), 10);
    EXPECT_EQ(staff_level(-5), 1); // a damaged save
}

TEST(Staff, LevelsRaiseSpeedAndLoad) {
    EXPECT_DOUBLE_EQ(staff_speed(3.3, 1), 3.3);
    EXPECT_NEAR(staff_speed(3.3, 10), 3.3 * 1.63, 1e-12);
    EXPECT_EQ(staff_capacity(5, 1, 0, false), 5);
    EXPECT_EQ(staff_capacity(5, 4, 20, false), 28);
    EXPECT_EQ(staff_capacity(5, 4, 20, true), 56);
}

} // namespace
} // namespace tilm::rules
