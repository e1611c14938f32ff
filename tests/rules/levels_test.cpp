#include "rules/levels.h"

#include <limits>

#include <gtest/gtest.h>

#include "rules/rounding.h"

namespace tilm::rules {
namespace {

TEST(Levels, ThresholdsAndTheirLevels) {
    const int64_t told[] = {6, 19, 39, 63, 93, 126, 164, 206, 251, 301};
    for (int64_t n = 1; n <= 10; ++n) {
        EXPECT_EQ(level_threshold(n), told[n - 1]);
    }
    EXPECT_EQ(level_threshold(32), 2172); // level 33 starts here
    EXPECT_EQ(level_threshold(0), 0);
    EXPECT_EQ(level_for(2171), 32);
    EXPECT_EQ(level_for(2172), 33);
    EXPECT_EQ(level_points(1), 6);
    EXPECT_EQ(level_points(2), 6);
    EXPECT_EQ(level_points(3), 19);
}

TEST(Levels, EveryTotalHasTheSmallestLevelWhoseThresholdIsAboveIt) {
    int64_t level = 1;
    for (int64_t total = 0; total <= 20000; ++total) {
        while (total >= level_threshold(level)) {
            ++level;
        }
        ASSERT_EQ(level_for(total), level) << total;
    }
    EXPECT_EQ(level_for(-3), 1);
    EXPECT_GT(level_for(std::numeric_limits<int64_t>::max() / 2), 1000000);
}

TEST(Rounding, IsAwayFromZeroAndNeverOverflows) {
    EXPECT_EQ(round_half_away(2.5), 3);
    EXPECT_EQ(round_half_away(-2.5), -3);
    EXPECT_EQ(round_half_away(-0.4), 0);
    EXPECT_EQ(safe_int(1e300), std::numeric_limits<int64_t>::max());
    EXPECT_EQ(safe_int(-std::numeric_limits<double>::infinity()), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(safe_int(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(safe_int(-7.9), -7);
}

} // namespace
} // namespace tilm::rules
