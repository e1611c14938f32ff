// Machines: the timing table, limits, the words of the need label, and cooks.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "rules/goods.h"
#include "rules/machine_rules.h"

namespace tilm::rules {
namespace {

TEST(MachineRules, BatchesGetQuickerAtEvenLevels) {
    const struct {
        int level;
        double seconds;
    } table[] = {{1, 1.6},     {2, 0.992},   {3, 0.992},   {4, 0.61504},  {5, 0.61504}, {6, 0.38132},
                 {7, 0.38132}, {8, 0.23642}, {9, 0.23642}, {10, 0.20558}, {11, 0.20558}};
    for (const auto &row : table) {
        EXPECT_NEAR(machine_interval(row.level, 1), row.seconds, 5e-6) << row.level;
        EXPECT_NEAR(machine_interval(row.level, 2), row.seconds / 2, 5e-6) << row.level;
    }
    for (int level = 1; level < 100; ++level) {
        EXPECT_LE(machine_interval(level + 1, 1), machine_interval(level, 1)) << level;
        EXPECT_GT(machine_interval(level, 1), 0) << level;
    }
}

TEST(MachineRules, RoomOfOutputFlavoursAndInputs) {
    EXPECT_EQ(machine_cap(1), 40);
    EXPECT_EQ(machine_cap(3), 40);
    EXPECT_EQ(machine_cap(4), 80);
    EXPECT_EQ(machine_cap(8), 120);
    EXPECT_EQ(flavor_cap(2), 20);
    EXPECT_EQ(flavor_cap(3), 13);
    EXPECT_EQ(flavor_cap(0), 0);
    EXPECT_EQ(input_cap(1), 10);
    EXPECT_EQ(input_cap(4), 20);
    EXPECT_EQ(input_cap(5), 30);
    // One kind counts as two, and ten are the least.
    EXPECT_EQ(give_limit(1, 1), 10);
    EXPECT_EQ(give_limit(1, 6), 10);
    EXPECT_EQ(give_limit(5, 1), 30);
    EXPECT_EQ(give_limit(5, 2), 30);
    EXPECT_EQ(give_limit(5, 4), 15);
    EXPECT_EQ(give_limit(9, 6), 16);
    EXPECT_EQ(next_perk(1), "SPEED");
    EXPECT_EQ(next_perk(2), "INPUT");
}

TEST(MachineRules, TheNeedLabelNamesWhatIsShort) {
    const auto said = [](std::vector<std::string> kinds, bool flavors) { return need_text(kinds, flavors); };
    EXPECT_EQ(said({}, false), "");
    EXPECT_EQ(said({"wheat"}, false), "NEED WHEAT");
    EXPECT_EQ(said({"orange_juice", "bread"}, false), "NEED ORANGE JUICE + BREAD");
    EXPECT_EQ(said({"apple", "orange"}, true), "NEED APPLE OR ORANGE");
    EXPECT_EQ(said({"apple"}, true), "NEED APPLE");
    EXPECT_EQ(said({"meat", "tomato", "lettuce"}, false), "NEED\nMEAT + TOMATO\n+ LETTUCE");
    EXPECT_EQ(said({"a", "b", "c", "d"}, true), "NEED\nA + B\n+ C + D");
}

TEST(MachineRules, SixProductsHaveCooks) {
    int with_cook = 0;
    for (const Good &good : goods()) {
        with_cook += cook_class(good.kind).empty() ? 0 : 1;
    }
    EXPECT_EQ(with_cook, 6);
    EXPECT_EQ(cook_class("meat"), "Butcher");
    EXPECT_EQ(cook_class("drumstick"), "PoultryButcher");
    EXPECT_EQ(cook_class("burger"), "GrillCook");
    EXPECT_EQ(cook_class("breakfast"), "");
}

} // namespace
} // namespace tilm::rules
