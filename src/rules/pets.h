#pragma once
// The pets, the horse's levels and its carts: what they cost, carry and where they walk.

#include <span>
#include <string_view>

namespace tilm::rules {

struct Pet {
    std::string_view key;
    std::string_view name;
    int price; // dollars
    std::string_view text;
    double beside, behind; // heel spot: off the lead's right axis (times `side`), and behind it
    double side;           // +1 right, -1 left
    double top;            // units a second at heel; 0: as fast as its lead and a little more
    double home_x, home_z; // where it stays when it is sent home
};

struct Cart {
    std::string_view name;
    int size; // goods for each level of the horse
    int price;
    int cols, rows; // cells of its bed
};

std::span<const Pet> pets();
const Pet *find_pet(std::string_view key);

constexpr int horse_level_max = 5;
std::span<const int> horse_prices(); // by level 0..5
std::span<const Cart> carts();
// The cart of a level, null for 0 and for levels beyond the last.
const Cart *cart_of_level(int cart_lv);
// Goods that `n` loads of the cart at `index` hold, 0 without such a cart.
int cart_capacity(int n, int index);
// Size of a horse of a level, 1 at level 1.
double horse_scale(int horse_lv);

} // namespace tilm::rules
