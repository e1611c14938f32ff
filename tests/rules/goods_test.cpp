#include "rules/goods.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "rules/items.h"

namespace tilm::rules {
namespace {

int price(std::string_view kind) {
    const Good *good = find_good(kind);
    return good == nullptr ? -1 : good->price;
}

TEST(Goods, TableIsCompleteAndUnique) {
    std::set<std::string_view> kinds;
    int sum = 0;
    for (const Good &g : goods()) {
        EXPECT_TRUE(kinds.insert(g.kind).second) << g.kind;
        EXPECT_GT(g.price, 0) << g.kind;
        EXPECT_FALSE(g.title.empty()) << g.kind;
        sum += g.price;
    }
    EXPECT_EQ(kinds.size(), 38U);
    EXPECT_EQ(goods().front().kind, "egg");
    EXPECT_EQ(goods().back().kind, "coffee");
    EXPECT_EQ(sum, 2500);
    EXPECT_EQ(price("juice"), 95);
    EXPECT_EQ(price("apple_juice"), 95);
    EXPECT_EQ(price("breakfast"), 420);
    EXPECT_EQ(price("unicorn"), -1);
    EXPECT_EQ(find_good("corn")->title, "CHICKEN FEED");
}

TEST(Goods, AlbumAndMarketHoldEveryStoredGoodOnce) {
    std::multiset<std::string_view> album;
    for (const AlbumGroup &group : album_groups()) {
        for (std::string_view kind : group.kinds) {
            album.insert(kind);
            ASSERT_NE(find_good(kind), nullptr) << kind;
        }
    }
    EXPECT_EQ(album_groups()[0].kinds.size(), 17U);
    EXPECT_EQ(album_groups()[1].kinds.size(), 15U);
    EXPECT_EQ(album_groups()[2].kinds.size(), 5U);
    const std::multiset<std::string_view> market(market_goods().begin(), market_goods().end());
    for (const Good &g : goods()) {
        const size_t times = g.kind == "juice" ? 0 : 1; // an idea of the press, never in a pile
        EXPECT_EQ(album.count(g.kind), times) << g.kind;
        EXPECT_EQ(market.count(g.kind), times) << g.kind;
        EXPECT_EQ(g.group == Group::none, times == 0) << g.kind;
    }
    EXPECT_EQ(album.size(), market.size());
    const auto in_group = [](size_t i, std::string_view kind) {
        const auto &kinds = album_groups()[i].kinds;
        return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
    };
    for (const Good &g : goods()) {
        EXPECT_EQ(in_group(0, g.kind), g.group == Group::farm) << g.kind;
        EXPECT_EQ(in_group(1, g.kind), g.group == Group::factory) << g.kind;
        EXPECT_EQ(in_group(2, g.kind), is_dish(g.kind)) << g.kind;
    }
}

TEST(Goods, HeightsAndBeds) {
    EXPECT_FLOAT_EQ(item_height("meat"), 0.2F);
    EXPECT_FLOAT_EQ(item_height("calf"), 0.62F);
    EXPECT_FLOAT_EQ(item_height("bean"), 0.44F);
    EXPECT_FLOAT_EQ(item_height("choco"), 0.26F);
    EXPECT_FLOAT_EQ(item_height("water"), 0.42F);
    EXPECT_FLOAT_EQ(item_height("bill"), 0.07F);
    EXPECT_FLOAT_EQ(item_height("unicorn"), 0.3F);
    EXPECT_TRUE(is_money_item("case"));
    EXPECT_FALSE(is_money_item("egg"));
    for (const Good &g : goods()) {
        EXPECT_GE(item_height(g.kind), 0.2F) << g.kind;
    }
    EXPECT_EQ(bed_colors().size(), 7U);
    EXPECT_EQ(bed_color("sunflower"), 0x6d8f3aU);
    EXPECT_TRUE(is_live_animal("hen"));
    EXPECT_FALSE(is_live_animal("egg"));
}

} // namespace
} // namespace tilm::rules
