#include "rules/field_rules.h"

#include <map>
#include <set>
#include <vector>

#include <gtest/gtest.h>

namespace tilm::rules {
namespace {

struct Screen {
    std::map<int, float> shown;
    CellGrid::Shown on() {
        return [this](int cell, float scale) { shown[cell] = scale; };
    }
};

TEST(Growth, ShownSizeRisesFasterThanTimeAndEndsAtOne) {
    EXPECT_EQ(growth_scale(0), cut_scale);
    EXPECT_EQ(growth_scale(1), 1.0f);
    EXPECT_EQ(growth_scale(1.5f), 1.0f);
    EXPECT_NEAR(growth_scale(0.5f), 0.625f, 1e-6);
    float last = 0;
    for (float s = 0.01f; s < 1; s += 0.01f) {
        EXPECT_GT(growth_scale(s), s);
        EXPECT_GT(growth_scale(s), last);
        last = growth_scale(s);
    }
    EXPECT_LT(last, 1.0f);
}

TEST(Growth, FiguresOfTheSeasonsWithRainAndBoost) {
    EXPECT_DOUBLE_EQ(crop_growth(0, false, false), 1.3);
    EXPECT_DOUBLE_EQ(crop_growth(1, false, true), 2.2);
    EXPECT_DOUBLE_EQ(crop_growth(2, true, false), 1.8);
    EXPECT_DOUBLE_EQ(crop_growth(3, true, true), 2.4);
    EXPECT_DOUBLE_EQ(crop_growth(-1, false, false), 1.3);
    EXPECT_DOUBLE_EQ(crop_growth(4, false, false), 1.3);
}

TEST(CellGrid, EachStepVisitsTheNextQuarterWithFourTimesItsTime) {
    CellGrid grid;
    grid.build(4, 2);
    for (int cell = 0; cell < 8; ++cell) {
        grid.cut(cell, 3.0f);
    }
    Screen screen;
    const std::vector<std::vector<int>> order = {{2, 3}, {4, 5}, {6, 7}, {0, 1}};
    for (const std::vector<int> &quarter : order) { // 4 x 0.25 s x 3 is just enough
        const int before = grid.alive();
        grid.grow(0.25, 3.0, screen.on());
        EXPECT_EQ(grid.alive(), before + 2);
        for (const int cell : quarter) {
            EXPECT_TRUE(grid.is_alive(cell));
            EXPECT_NEAR(screen.shown[cell], growth_scale(0.75f), 1e-6); // grows in the same step
        }
    }
    EXPECT_EQ(screen.shown[2], 1.0f);
}

TEST(CellGrid, ACutPlantComesBackAfterItsTimeAndGrowsInOneThirdOfASecond) {
    CellGrid grid;
    grid.build(8, 2);
    EXPECT_EQ(grid.alive(), 16);
    EXPECT_TRUE(grid.cut(5, 10.0f));
    EXPECT_FALSE(grid.cut(5, 10.0f)); // only once
    EXPECT_EQ(grid.alive(), 15);
    Screen screen;
    double t = 0;
    while (!grid.is_alive(5) && t < 30) {
        grid.grow(0.05, 1.0, screen.on());
        t += 0.05;
    }
    // Visited every fourth step with four times the time.
    EXPECT_NEAR(t, 10.0, 0.21);
    EXPECT_EQ(grid.alive(), 16);
    EXPECT_EQ(grid.growing(), 1);
    for (int i = 0; i < 7; ++i) {
        grid.grow(0.05, 1.0, screen.on());
    }
    EXPECT_EQ(grid.growing(), 0);
    EXPECT_EQ(screen.shown.size(), 1u); // nothing but the cut plant was touched
    EXPECT_EQ(screen.shown[5], 1.0f);
}

TEST(CellGrid, RateAndSizeOfTheFieldDoNotLeaveCellsBehind) {
    // 3 x 5 does not divide by four: the last cells must come back too. So must a field of fewer than four cells.
    for (const auto &[nx, nz] : {std::pair{3, 5}, {17, 16}, {1, 1}, {3, 1}, {1, 6}}) {
        CellGrid grid;
        grid.build(nx, nz);
        for (int cell = 0; cell < grid.total(); ++cell) {
            grid.cut(cell, 12.0f);
        }
        EXPECT_EQ(grid.alive(), 0);
        Screen screen;
        for (int i = 0; i < 29; ++i) { // 5.8 s at a rate of 2 is not yet enough, or just so
            grid.grow(0.2, 2.0, screen.on());
        }
        EXPECT_LT(grid.alive(), grid.total());
        for (int i = 0; i < 8; ++i) {
            grid.grow(0.2, 2.0, screen.on());
        }
        EXPECT_EQ(grid.alive(), grid.total()) << nx << "x" << nz;
    }
    CellGrid none;
    none.build(0, 4);
    none.grow(1, 1, Screen().on());
    EXPECT_EQ(none.total(), 0);
}

TEST(CellGrid, ASproutThatIsCutStopsGrowing) {
    CellGrid grid;
    grid.build(4, 1);
    Screen screen;
    grid.cut(0, 0.1f);
    while (grid.growing() == 0) {
        grid.grow(0.05, 1.0, screen.on());
    }
    EXPECT_TRUE(grid.cut(0, 1000.0f));
    EXPECT_EQ(grid.growing(), 0);
    screen.shown.clear();
    for (int i = 0; i < 20; ++i) {
        grid.grow(0.05, 1.0, screen.on());
    }
    EXPECT_TRUE(screen.shown.empty());
    EXPECT_FALSE(grid.is_alive(0));
}

TEST(Harvester, FiguresByLevel) {
    EXPECT_DOUBLE_EQ(harvester_speed(1), 2.8);
    EXPECT_DOUBLE_EQ(harvester_speed(11), 4.2);
    EXPECT_DOUBLE_EQ(harvester_growth(1), 1.0);
    EXPECT_DOUBLE_EQ(harvester_growth(3), 1.3);
    EXPECT_EQ(harvester_pallet_room(1), 45);
    EXPECT_EQ(harvester_gain(12, 1), 12);
    EXPECT_EQ(harvester_gain(5, 2), 6); // 5.6
}

TEST(Harvester, RouteCoversTheBedAndStaysInIt) {
    const std::vector<RoutePoint> route = serpentine(13, -17, 10, 10);
    ASSERT_GE(route.size(), 4u);
    ASSERT_EQ(route.size() % 2, 0u);
    std::set<float> rows;
    for (size_t i = 0; i < route.size(); i += 2) {
        EXPECT_EQ(route[i].z, route[i + 1].z); // each row is driven straight
        EXPECT_NE(route[i].x, route[i + 1].x);
        if (i > 0) {
            EXPECT_EQ(route[i].x, route[i - 1].x); // and the next begins where it ended
        }
        rows.insert(route[i].z);
        for (const RoutePoint &p : {route[i], route[i + 1]}) {
            EXPECT_GE(p.x, 13.89f);
            EXPECT_LE(p.x, 22.11f);
        }
    }
    EXPECT_EQ(*rows.begin(), -16.0f);
    EXPECT_GT(*rows.rbegin(), -9.2f);
    EXPECT_LE(*rows.rbegin(), -7.5f);
    EXPECT_TRUE(serpentine(0, 0, 1.5f, 8).empty());
    const RoutePoint park = harvester_parking(13, -17, 10, 10);
    EXPECT_EQ(park.x, 24.5f);
    EXPECT_EQ(park.z, -5.0f);
}

} // namespace
} // namespace tilm::rules
