#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "rules/stacking.h"

namespace tilm::rules {
namespace {

TEST(Stacking, TowerColumnsGrowWithCapacityUpToTheLimit) {
    const struct {
        int capacity, max_cols, cols;
    } rows[] = {{0, 3, 1},   {14, 3, 1},  {15, 3, 2}, {26, 3, 2}, {27, 3, 3},
                {500, 3, 3}, {500, 2, 2}, {20, 1, 1}, {20, 0, 1}};
    for (const auto &r : rows) {
        EXPECT_EQ(tower_columns(r.capacity, r.max_cols), r.cols) << r.capacity << " of " << r.max_cols;
    }
}

TEST(Stacking, PilePlacesFillRowsThenLayersAroundTheCentre) {
    PileGrid grid;
    grid.cols = 4;
    grid.rows = 2;
    grid.spacing_x = 0.5;
    grid.spacing_z = 0.4;
    grid.layer_h = 0.3;
    double sum_x = 0.0;
    double sum_z = 0.0;
    for (int i = 0; i < 8; i++) {
        const Place p = pile_place(grid, i);
        EXPECT_DOUBLE_EQ(p.y, 0.0);
        sum_x += p.x;
        sum_z += p.z;
    }
    EXPECT_NEAR(sum_x, 0.0, 1e-12);
    EXPECT_NEAR(sum_z, 0.0, 1e-12);
    const Place first = pile_place(grid, 0);
    EXPECT_DOUBLE_EQ(first.x, -0.75);
    EXPECT_DOUBLE_EQ(first.z, -0.2);
    EXPECT_DOUBLE_EQ(pile_place(grid, 3).x, 0.75);
    EXPECT_DOUBLE_EQ(pile_place(grid, 4).z, 0.2);
    EXPECT_DOUBLE_EQ(pile_place(grid, 17).y, 0.6);
    EXPECT_DOUBLE_EQ(pile_place(grid, 17).x, pile_place(grid, 1).x);
}

TEST(Stacking, PilePlacesStopAtTheShowLimitAndInAFlatPile) {
    PileGrid grid;
    grid.show_limit = 8;
    const Place last = pile_place(grid, 7);
    const Place beyond = pile_place(grid, 30);
    EXPECT_EQ(std::tie(beyond.x, beyond.y, beyond.z), std::tie(last.x, last.y, last.z));

    PileGrid flat;
    flat.flat = true;
    const Place corner = pile_place(flat, 8);
    const Place overflow = pile_place(flat, 20);
    EXPECT_EQ(std::tie(overflow.x, overflow.y, overflow.z), std::tie(corner.x, corner.y, corner.z));

    PileGrid broken;
    broken.cols = 0;
    broken.rows = -2;
    EXPECT_TRUE(std::isfinite(pile_place(broken, 5).y)); // one column of one cell
    EXPECT_DOUBLE_EQ(pile_place(broken, -5).y, 0.0);
}

TEST(Stacking, MoneyTiersAndCounts) {
    const struct {
        int64_t total;
        int tier, count;
    } rows[] = {{0, -1, 0},    {-50, -1, 0},   {1, 0, 2},      {4, 0, 4},       {100, 0, 19},     {999, 0, 60},
                {1000, 1, 11}, {19999, 1, 48}, {20000, 2, 10}, {200000, 2, 30}, {1000000, 2, 30}, {INT64_MAX, 2, 30}};
    for (const auto &r : rows) {
        const MoneyShow show = money_show(r.total);
        EXPECT_EQ(show.tier, r.tier) << r.total;
        EXPECT_EQ(show.count, r.count) << r.total;
    }
}

TEST(Stacking, MoreMoneyOfATierNeverShowsLess) {
    MoneyShow before = money_show(1);
    for (int64_t total = 1; total < 300000; total += 37) {
        const MoneyShow show = money_show(total);
        ASSERT_GE(show.tier, before.tier) << total;
        if (show.tier == before.tier) {
            ASSERT_GE(show.count, before.count) << total;
        }
        before = show;
    }
}

} // namespace
} // namespace tilm::rules
