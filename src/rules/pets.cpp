#include "rules/pets.h"

#include <algorithm>
#include <array>

namespace tilm::rules {

namespace {

constexpr std::array<Pet, 4> pet_rows = {{
    {"dog", "GUARD DOG", 8000, "CHASES FOXES AWAY", 1.0, 2.0, -1, 7.5, 8.6, -12.9},
    {"cat", "CASH CAT", 20000, "COLLECTS CASH NEAR YOU", 0.8, 1.1, -1, 7.5, 9.6, -12.6},
    {"pig", "TRUFFLE PIG", 35000, "FINDS GOLDEN EGGS + LIGHTNING GOLD", 0.4, 3.2, 1, 7.5, 10.7, -12.9},
    {"horse", "PACK HORSE", 60000, "CARRIES AS MUCH AS YOU DO", 0.9, 2.3, 1, 0, 5.4, -18.4},
}};

constexpr std::array<int, horse_level_max + 1> level_prices = {0, 0, 40000, 90000, 180000, 350000};

constexpr std::array<Cart, 3> cart_rows = {{
    {"SMALL CART", 10, 30000, 2, 2},
    {"FARM WAGON", 20, 120000, 2, 3},
    {"BIG WAGON", 30, 300000, 3, 4},
}};

} // namespace

std::span<const Pet> pets() {
    return pet_rows;
}

const Pet *find_pet(std::string_view key) {
    const auto *it = std::find_if(pet_rows.begin(), pet_rows.end(), [&](const Pet &p) { return p.key == key; });
    return it == pet_rows.end() ? nullptr : it;
}

std::span<const int> horse_prices() {
    return level_prices;
}

std::span<const Cart> carts() {
    return cart_rows;
}

const Cart *cart_of_level(int cart_lv) {
    return cart_lv < 1 || cart_lv > static_cast<int>(cart_rows.size()) ? nullptr
                                                                       : &cart_rows[static_cast<size_t>(cart_lv - 1)];
}

int cart_capacity(int n, int index) {
    return index < 0 || index >= static_cast<int>(cart_rows.size()) ? 0
                                                                    : cart_rows[static_cast<size_t>(index)].size * n;
}

double horse_scale(int horse_lv) {
    return 0.05 * (horse_lv - 1) + 1.0;
}

} // namespace tilm::rules
