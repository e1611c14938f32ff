#pragma once
// How the hand-written prices of the plan become the prices of the game.

#include <cstdint>
#include <string_view>
#include <vector>

namespace tilm::rules {

constexpr size_t FULL_LEVELS = 20; // length of a finished cost list of a levelled kind
constexpr size_t WATER_LEVELS = 26;
constexpr size_t GUARD_LEVELS = 60;

// Cost factor of a region, 1 for one that has none.
float region_scale(std::string_view region);

// A few entries keep the first farm's prices wherever they stand.
bool keeps_price(std::string_view entry_id);

// One cost at a region's factor, to whole hundreds. A factor of exactly 1 changes nothing.
int64_t scaled_cost(int64_t cost, float scale);

// True for kinds that level past their written list.
bool is_levelled(std::string_view kind);

// Growth from one added level to the next.
double cost_growth(std::string_view kind);

// Continues a list that is not empty to `length` elements.
void extend_costs(std::vector<int64_t> &costs, double growth, size_t length = FULL_LEVELS);

// Carriers between two buildings get a third level at twice the second.
bool gets_third_level(std::string_view dst, size_t levels);

std::vector<int64_t> water_worker_costs();
std::vector<int64_t> guard_costs();

// First price of the k-th annex (from 1): half a price more each.
int64_t annex_cost(int64_t cost, int64_t k);

} // namespace tilm::rules
