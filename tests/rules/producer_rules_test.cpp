#include "rules/producers.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "rules/machine_perks.h"

namespace tilm::rules {
namespace {

TEST(ProducerKinds, EveryRowIsSound) {
    std::set<std::string_view> seen;
    for (const ProducerKind &k : producer_kinds()) {
        SCOPED_TRACE(std::string(k.product));
        EXPECT_TRUE(seen.insert(k.product).second);
        EXPECT_EQ(producer_kind(k.product), &k);
        EXPECT_FALSE(k.title.empty());
        EXPECT_FALSE(k.plural.empty());
        EXPECT_GT(k.base, 0.0);
        // A feed without meals would never be used up, meals without feed never be made.
        EXPECT_EQ(k.feed.empty(), k.meals == 0);
        EXPECT_TRUE(k.feed.empty() || k.feed == "corn" || k.feed == "hay");
        // Trees and shrubs show no animals; what is fetched needs somebody to fetch it.
        EXPECT_EQ(visible_animals(k, 1) == 0, k.per == 0);
        EXPECT_GT(k.work_seconds, 1.0);
    }
    EXPECT_EQ(seen.size(), 10u);
    EXPECT_EQ(producer_kind("gold"), nullptr);
    EXPECT_EQ(producer_kind(""), nullptr);
}

TEST(ProducerKinds, CountsByLevel) {
    const ProducerKind &coop = *producer_kind("egg");
    EXPECT_EQ(animal_count(coop, 1), 3);
    EXPECT_EQ(animal_count(coop, 7), 15);
    EXPECT_EQ(visible_animals(coop, 5), 11);
    EXPECT_EQ(visible_animals(coop, 20), 11); // the yard holds no more
    const ProducerKind &orchard = *producer_kind("apple");
    EXPECT_EQ(animal_count(orchard, 1), 2);
    EXPECT_EQ(visible_animals(orchard, 9), 0);
    EXPECT_EQ(tray_room(1), 24);
    EXPECT_EQ(tray_room(5), 24);
    EXPECT_EQ(tray_room(20), 39);
}

TEST(Production, SecondsForAUnit) {
    const ProducerKind &coop = *producer_kind("egg");
    EXPECT_DOUBLE_EQ(unit_seconds(coop, 1, 0, 1, 1), 4.0 / 3);
    EXPECT_DOUBLE_EQ(unit_seconds(coop, 1, 2, 2, 1), 4.0 / 3 / 1.7 / 2);
    const ProducerKind &hives = *producer_kind("honey");
    EXPECT_DOUBLE_EQ(unit_seconds(hives, 1, 0, 1, season_factor("honey", 3)), 7.0 / 4 / 0.25);
    // A season factor of nothing stops production; it must not divide by zero.
    EXPECT_GT(unit_seconds(hives, 1, 0, 1, 0), 1000.0);
}

TEST(Production, SeasonsTouchOnlyWhatGrowsOutside) {
    for (int season = -1; season <= 4; ++season) {
        for (const ProducerKind &k : producer_kinds()) {
            const double f = season_factor(k.product, season);
            const bool grows = k.product == "honey" || k.per == 0;
            if (!grows || season < 0 || season > 3) {
                EXPECT_EQ(f, 1.0) << k.product << season;
            } else if (season == 3) {
                EXPECT_LT(f, 0.7) << k.product;
            }
        }
    }
    EXPECT_EQ(season_factor("honey", 0), 1.2);
    EXPECT_EQ(season_factor("apple", 2), 1.3);
    EXPECT_EQ(season_factor("orange", 1), 1.2);
    EXPECT_EQ(season_factor("bean", 1), 1.15);
}

TEST(Production, IllnessAndFeedPurchases) {
    EXPECT_DOUBLE_EQ(overwork_chance(1), 0.006);
    EXPECT_DOUBLE_EQ(overwork_chance(20), 0.12);
    EXPECT_DOUBLE_EQ(overwork_chance(21), 0.12);
    EXPECT_EQ(feed_to_buy(0), 12);
    EXPECT_EQ(feed_to_buy(7), 12);
    EXPECT_EQ(feed_to_buy(8), 0);
    EXPECT_EQ(feed_to_buy(60), 0);
}

TEST(MachinePerks, EveryLevelBringsExactlyOne) {
    for (int level = 1; level < 20; ++level) {
        const int speed = speed_steps(level + 1) - speed_steps(level);
        const int room = cap_steps(level + 1) - cap_steps(level);
        EXPECT_EQ(speed + room, 1) << level;
        EXPECT_EQ(speed == 1, next_perk_is_speed(level)) << level;
    }
    EXPECT_EQ(cap_steps(0), 0);
    EXPECT_EQ(cap_steps(1), 0);
}

} // namespace
} // namespace tilm::rules
