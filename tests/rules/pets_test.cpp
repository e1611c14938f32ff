// Pets, horses and carts, and what friends say that they carry.

#include <string>

#include <gtest/gtest.h>

#include "rules/carry_text.h"
#include "rules/ghost_path.h"
#include "rules/goods.h"
#include "rules/pets.h"

namespace tilm::rules {
namespace {

using Carried = std::vector<std::pair<std::string_view, int>>;

TEST(PetRows, EveryRowIsWhole) {
    ASSERT_EQ(pets().size(), 4u);
    int before = 0;
    for (const Pet &pet : pets()) {
        EXPECT_EQ(find_pet(pet.key), &pet);
        EXPECT_GT(pet.price, before) << pet.key; // dearer by row
        before = pet.price;
        EXPECT_FALSE(pet.name.empty() || pet.text.empty()) << pet.key;
        EXPECT_EQ(pet.side * pet.side, 1.0) << pet.key;
        EXPECT_GT(pet.beside * pet.behind, 0.0) << pet.key;
        // Home is on the first land, off the house and its walls.
        EXPECT_TRUE(pet.home_x > -11.4 && pet.home_x < 11.4 && pet.home_z > -31 && pet.home_z < 5.2) << pet.key;
        EXPECT_TRUE(pet.home_x < 6.6 - 0.35 || pet.home_z > -14.2 + 0.35) << pet.key;
    }
    EXPECT_EQ(find_pet("hen"), nullptr);
    EXPECT_EQ(horse_prices().size(), size_t{horse_level_max + 1});
    for (const Cart &cart : carts()) {
        EXPECT_LE(cart.cols * cart.rows, 12) << cart.name;
        EXPECT_GT(cart.size * cart.price, 0) << cart.name;
    }
    EXPECT_EQ(cart_of_level(0), nullptr);
    EXPECT_EQ(cart_of_level(1)->name, "SMALL CART");
    EXPECT_EQ(cart_of_level(4), nullptr);
    EXPECT_EQ(cart_capacity(3, 1), 60);
    EXPECT_EQ(cart_capacity(3, 3), 0);
    EXPECT_DOUBLE_EQ(horse_scale(1), 1.0);
    EXPECT_DOUBLE_EQ(horse_scale(5), 1.2);
}

TEST(CarryText, BelievesOnlyKnownGoodsAndSaneCounts) {
    const struct {
        const char *text;
        Carried carried;
    } cases[] = {
        {"", {}},
        {"egg:3,milk:2", {{"egg", 3}, {"milk", 2}}},
        {"egg:61", {{"egg", 60}}},
        {"egg:99999999999999999999999", {{"egg", 60}}},
        {"egg:-5,milk:-99999999999999999999", {{"egg", 0}, {"milk", 0}}},
        {"egg:abc,milk:2x,wheat:3.9", {{"egg", 0}, {"milk", 2}, {"wheat", 3}}},
        {"egg,milk:1", {{"milk", 1}}},
        {"bill:40,case:2,$:9,EGG:2, egg:2,a:cow:1", {}},
        {":::,,,:,5:5,egg::7", {{"egg", 0}}},
        {"egg:1,egg:7,milk:1,egg:4", {{"egg", 4}, {"milk", 1}}},
    };
    for (const auto &row : cases) {
        EXPECT_EQ(parse_carry(row.text), row.carried) << row.text;
    }
    EXPECT_EQ(parse_carry(std::string(50'000'000, ',') + "egg:1"), Carried()); // not read to its end
    std::string all;
    for (const Good &good : goods()) {
        all += std::string(good.kind) + ":60,";
    }
    EXPECT_EQ(parse_carry(all).size(), goods().size()); // all that a player can honestly hold is read
}

TEST(GhostPath, ReadsATenthOfASecondBack) {
    std::vector<GhostSample> s = {{1.0, 0, 0, 3.0, 0, 0}, {1.2, 2, 1, -3.0, 4, -2}};
    EXPECT_NEAR(ghost_place(s, 1.2).x, 1.0, 1e-9); // half way, at 1.1
    EXPECT_NEAR(ghost_place(s, 1.2).z, 0.5, 1e-9);
    EXPECT_NEAR(ghost_place(s, 1.2).heading, 3.14159265, 1e-6); // the short way round
    EXPECT_DOUBLE_EQ(ghost_place(s, 1.4).x, 2.4);               // 0.1 s beyond the last, at its velocity
    EXPECT_DOUBLE_EQ(ghost_place(s, 9.0).x, 3.0);               // and no further than 0.25 s
    EXPECT_DOUBLE_EQ(ghost_place(s, 9.0).z, 0.5);
    EXPECT_DOUBLE_EQ(ghost_place(s, 1.05).heading, 3.0); // before the first
    s.insert(s.begin() + 1, {1.0, 1, 1, 0, 0, 0});       // two of one moment
    EXPECT_DOUBLE_EQ(ghost_place(s, 1.1).x, 1.0);
}

} // namespace
} // namespace tilm::rules
