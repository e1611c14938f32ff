// Prices, charm and places of garden decorations.

#include "rules/garden.h"

#include <vector>

#include <gtest/gtest.h>

namespace tilm::rules {
namespace {

TEST(Decor, EachNextOneCostsAQuarterMoreInWholeTens) {
    const DecorRow &flowers = *find_decor("flowers");
    EXPECT_EQ(decor_price(flowers, 0), 400);
    EXPECT_EQ(decor_price(flowers, 1), 500);
    EXPECT_EQ(decor_price(flowers, 2), 630) << "625 is half way: away from nothing";
    EXPECT_EQ(decor_price(flowers, 10), 3730) << "3725.29";
    EXPECT_EQ(decor_price(*find_decor("gazebo"), 1), 112500);
    EXPECT_EQ(decor_price(*find_decor("friends"), 0), 0);
    EXPECT_GT(decor_price(*find_decor("gazebo"), 100000), 0) << "no overflow";
    EXPECT_EQ(find_decor("castle"), nullptr);
    EXPECT_EQ(decor_charm("castle"), 0);
}

TEST(Decor, TheNearestFreeSpotIsTaken) {
    const float lands[] = {0, 24};
    DecorGround none{};
    // Columns lie at halves: 3.5 is 0.3 away, 4.5 is 0.7; the row nearest to the farm wins.
    EXPECT_EQ(decor_spot(none, lands, 3.8F, 0.9F), (Vec2{3.5F, 9}));
    EXPECT_EQ(decor_spot(none, lands, 4.0F, 0.9F), (Vec2{3.5F, 9})) << "an equal score does not replace the first";
    EXPECT_EQ(decor_spot(none, lands, -90, 0.9F), (Vec2{-10.5F, 9}));
    EXPECT_EQ(decor_spot(none, lands, 900, 0.9F), (Vec2{34.5F, 9}));
    EXPECT_FALSE(decor_spot(none, {}, 0, 0.9F));

    // A counter bars 1.3 and the radius to each side, on all rows; just so much is enough.
    const float counter[] = {3.5F};
    const DecorGround shop{counter, {}, {}};
    EXPECT_TRUE(decor_fits(shop, {5.7F, 9}, 0.9F));
    EXPECT_FALSE(decor_fits(shop, {5.6F, 15}, 0.9F));
    EXPECT_EQ(decor_spot(shop, lands, 3.8F, 0.9F), (Vec2{6.5F, 9}));

    // A gazebo and a bench keep 0.4 between them: 1.55 + 0.8 + 0.4 = 2.75 from one to the other.
    const std::vector<DecorPlaced> placed = {{{3.5F, 9}, 1.55F}};
    const DecorGround garden{{}, placed, {}};
    EXPECT_FALSE(decor_fits(garden, {3.5F, 11.7F}, 0.8F));
    EXPECT_TRUE(decor_fits(garden, {3.5F, 11.75F}, 0.8F));
    EXPECT_EQ(decor_spot(garden, lands, 3.5F, 0.8F), (Vec2{3.5F, 12})) << "0.15 further is nearer than a step aside";
    const Vec2 lawn[] = {{3.5F, 9}};
    EXPECT_FALSE(decor_fits({{}, {}, lawn}, {5.5F, 9}, 0.9F));
    EXPECT_TRUE(decor_fits({{}, {}, lawn}, {5.7F, 9}, 0.9F));
}

} // namespace
} // namespace tilm::rules
