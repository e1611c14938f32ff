#include "rules/regions.h"

#include <set>

#include <gtest/gtest.h>

#include "rules/costs.h"

namespace tilm::rules {
namespace {

TEST(Land, RegionsStandInAStripWithRisingGates) {
    std::set<std::string_view> ids;
    int last_gate = 12; // sweets opens at 13; from there every land is one level or more above the one before
    for (const Region &r : regions()) {
        EXPECT_TRUE(ids.insert(r.id).second) << r.id;
        EXPECT_EQ(static_cast<int>(r.x) % 24, 0) << r.id;
        if (r.x >= 72) {
            EXPECT_GT(r.gate, last_gate) << r.id;
            last_gate = r.gate;
        }
        EXPECT_EQ(r.land.empty(), r.gate == 0) << r.id;
    }
    EXPECT_EQ(regions().size(), 25U);
    EXPECT_EQ(unlock_level("land_dairy"), 4);
    EXPECT_EQ(unlock_level("land_oil"), 9);
    EXPECT_EQ(unlock_level("land_ext6"), 33);
    EXPECT_EQ(unlock_level("coop_a"), 0);
    EXPECT_EQ(unlock_level(""), 0);
    EXPECT_EQ(find_region("moon"), nullptr);
    EXPECT_FLOAT_EQ(region_scale("court"), 0.085F);
    EXPECT_FLOAT_EQ(region_scale("ext4"), 0.05F);
    EXPECT_FLOAT_EQ(region_scale("service"), 1.0F);
}

TEST(Land, LotGrid) {
    EXPECT_EQ(lot_count("ext1"), 4);
    EXPECT_EQ(lot_count("eggs"), 2);
    for (const int64_t slot : {0, 2}) {
        EXPECT_FLOAT_EQ(lot_x(384, slot), 378);
        EXPECT_FLOAT_EQ(lot_x(384, slot + 1), 390);
    }
    EXPECT_FLOAT_EQ(lot_row(1), -26);
    EXPECT_FLOAT_EQ(lot_row(2), -10.5);
    EXPECT_EQ(lot_footprint(0, 0), (Rect{-10.8F, -32.3F, 9.6F, 10.6F}));
    EXPECT_FLOAT_EQ(lot_footprint(0, 3).y, -16.8F);
    EXPECT_FLOAT_EQ(lot_pad(24, 1).x, 28.6F);
    EXPECT_FLOAT_EQ(lot_pad(24, 2).y, -6.1F);
    EXPECT_FLOAT_EQ(lot_bed(0, 0).x, -9.3F);
    EXPECT_FLOAT_EQ(lot_bed(0, 2).y, -15.3F);
}

TEST(Land, OverlapIsStrict) {
    const Rect a = {0, 0, 2, 2};
    EXPECT_TRUE(a.overlaps({1, 1, 2, 2}));
    EXPECT_TRUE(a.overlaps({0.5F, 0.5F, 1, 1}));
    EXPECT_FALSE(a.overlaps({2, 0, 2, 2})); // touches
    EXPECT_FALSE(a.overlaps({0, -2, 2, 2}));
    EXPECT_TRUE(lot_overlaps(0, 0, {-2.9F, -30, 7.8F, 10.6F})); // the workers' homes reach into the first lot
    EXPECT_FALSE(lot_overlaps(24, 0, {-2.9F, -30, 7.8F, 10.6F}));
    EXPECT_TRUE(lot_overlaps(0, 1, HOMESTEAD));
}

} // namespace
} // namespace tilm::rules
