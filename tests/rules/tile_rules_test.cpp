#include "rules/tiles.h"

#include <limits>

#include <gtest/gtest.h>

namespace tilm::rules {
namespace {

int slices_to_fill(int64_t total, int64_t money) {
    TileDrain d;
    d.total = total;
    int n = 0;
    while (!d.full() && n < 1000) {
        const int64_t chunk = d.slice(money);
        if (chunk == 0) {
            break;
        }
        d.paid += chunk;
        money -= chunk;
        ++n;
    }
    return n;
}

TEST(TileDrain, EveryPriceFillsInFortySlicesAtMost) {
    TileDrain d;
    d.total = 30;
    EXPECT_EQ(d.slice(1000), 1);
    d.total = 100000;
    EXPECT_EQ(d.slice(1000000), 2500);
    for (const int64_t price : {1, 25, 30, 39, 40, 41, 79, 81, 1000, 12345, 100000, 24000000}) {
        const int n = slices_to_fill(price, price);
        EXPECT_LE(n, 40) << price;
        EXPECT_GE(n, std::min<int64_t>(price, 21)) << price;
    }
}

TEST(TileDrain, NeverTakesMoreThanThereIsOrIsAsked) {
    TileDrain d;
    d.total = 1000;
    EXPECT_EQ(d.slice(5), 5);
    EXPECT_EQ(d.slice(0), 0);
    EXPECT_EQ(d.slice(-80), 0);
    d.paid = 990;
    EXPECT_EQ(d.slice(1000), 10);
    d.paid = 1000;
    EXPECT_EQ(d.slice(1000), 0);
    EXPECT_EQ(d.share(), 1.0);
    EXPECT_EQ(slices_to_fill(1000, 60), 3); // 25, 25, 10
}

TEST(TileDrain, ANewTileIsNeverFull) {
    EXPECT_EQ(paid_at_setup(990, 500), 499);
    EXPECT_EQ(paid_at_setup(-3, 500), 0);
    EXPECT_EQ(paid_at_setup(17, 500), 17);
    EXPECT_EQ(paid_at_setup(5, 0), 0);
}

TEST(TileLooks, SizesAndLabels) {
    EXPECT_DOUBLE_EQ(tile_half(1.0), 1.3);
    EXPECT_DOUBLE_EQ(tile_half(tile_scale(true)), 1.66);
    EXPECT_EQ(price_label_scale(4), 1.0);
    EXPECT_EQ(price_label_scale(5), 0.8);
    EXPECT_EQ(price_label_scale(6), 0.62);
    EXPECT_EQ(price_label_scale(7), 0.54);
}

TEST(Requirements, IdsWithAndWithoutALevel) {
    EXPECT_EQ(tile_need("coop_a").id, "coop_a");
    EXPECT_EQ(tile_need("coop_a").level, 1);
    EXPECT_EQ(tile_need("coop_a@2").id, "coop_a");
    EXPECT_EQ(tile_need("coop_a@2").level, 2);
    for (const char *odd : {"coop_a@", "coop_a@x", "coop_a@2x", "coop_a@99999999999999"}) {
        EXPECT_EQ(tile_need(odd).id, "coop_a") << odd;
        EXPECT_EQ(tile_need(odd).level, 1) << odd;
    }
    EXPECT_EQ(tile_need("").id, "");
}

TileOffer offer(int64_t price, int level, bool land = false) {
    TileOffer o;
    o.price = o.remaining = price;
    o.level = level;
    o.land = land;
    return o;
}

TEST(NextTile, TakesTheCheapestThatCanBePaid) {
    const std::vector<TileOffer> offers = {offer(300, 1), offer(90, 0), offer(120, 2)};
    EXPECT_EQ(next_tile(offers, 500), 1);
    EXPECT_EQ(next_tile(offers, 89), -1);
    EXPECT_EQ(next_tile(offers, -50), -1);
    EXPECT_EQ(next_tile({}, 500), -1);
    std::vector<TileOffer> half_paid = offers;
    half_paid[0].remaining = 10; // affordable now, but still the dearest
    EXPECT_EQ(next_tile(half_paid, 100), 1);
    EXPECT_EQ(next_tile(half_paid, 80), 0);
    half_paid[0].done = true;
    EXPECT_EQ(next_tile(half_paid, 80), -1);
}

TEST(NextTile, DoesNotSpendTheMoneyForLandOnUpgrades) {
    std::vector<TileOffer> offers = {offer(1000, 0, true), offer(200, 2), offer(100, 1), offer(300, 0)};
    EXPECT_EQ(next_tile(offers, 499), 2); // land is still far: the cheapest
    offers[2].price = offers[2].remaining = 151;
    EXPECT_EQ(next_tile(offers, 499), 2);
    EXPECT_EQ(next_tile(offers, 500), 3); // both upgrades cost above 150
    offers[2].price = offers[2].remaining = 150;
    EXPECT_EQ(next_tile(offers, 500), 2);
    offers[2].extra = true;
    EXPECT_EQ(next_tile(offers, 500), 3);
    // Land that is held back, or done, is nothing to save for.
    offers[0].held_back = true;
    EXPECT_EQ(next_tile(offers, 1500), 2);
    offers[0].held_back = false;
    offers[0].done = true;
    EXPECT_EQ(next_tile(offers, 1500), 2);
}

TEST(Levels, WhatTheyAddToPricesAndToHaulers) {
    EXPECT_EQ(level_price_factor(0, true), 1.0);
    EXPECT_EQ(level_price_factor(8, false), 1.0);
    EXPECT_DOUBLE_EQ(level_price_factor(10, true), 1.03);
    EXPECT_DOUBLE_EQ(level_price_factor(20, false), 1.24);
    EXPECT_EQ(hauler_extra_room("@feed", 0), 20);
    EXPECT_EQ(hauler_extra_room("stall_hen", 3), 20);
    EXPECT_EQ(hauler_extra_room("flour_mill", 3), 12);
    EXPECT_EQ(hauler_extra_room("stall_egg", 0), 0);
}

} // namespace
} // namespace tilm::rules
