#pragma once
// Garden decorations: what there is to place, what the next one costs, the charm of them all, and where one fits.

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "rules/regions.h"

namespace tilm::rules {

struct DecorRow {
    std::string_view type, name;
    int charm;
    int64_t price;
    float radius; // of its footprint, metres
    std::string_view key;
    std::string_view coop; // the reward that unlocks it, empty for one that is bought
};

struct DecorPlaced {
    Vec2 at;
    float radius;
};

// What stands in the way of a new decoration.
struct DecorGround {
    std::span<const float> blocked_x;
    std::span<const DecorPlaced> placed;
    std::span<const Vec2> lawn;
};

constexpr int CHARM_LIMIT = 50;

std::span<const DecorRow> decor_rows();
const DecorRow *find_decor(std::string_view type);

// Price of the next one of a type of which `placed` stand: a quarter more each, to whole tens.
int64_t decor_price(const DecorRow &row, int placed);
int decor_charm(std::string_view type);

bool decor_fits(const DecorGround &ground, Vec2 at, float radius);
// The free spot nearest to the player on the lawn before the lands whose centres are `lands`; rows further from the
// farm count as further away. Nothing when all is taken.
std::optional<Vec2> decor_spot(const DecorGround &ground, std::span<const float> lands, float player_x, float radius);

} // namespace tilm::rules
