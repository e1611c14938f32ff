#include "rules/garden.h"

#include <algorithm>
#include <cmath>

namespace tilm::rules {

namespace {

// clang-format off
constexpr DecorRow ROWS[] = {
    {"flowers",  "FLOWER BED",        1,    400, 0.9F,  "decor_flowers",  ""},
    {"bench",    "PARK BENCH",        1,    700, 0.8F,  "decor_bench",    ""},
    {"tree",     "BIG TREE",          2,   1500, 1.1F,  "tree",           ""},
    {"lamp",     "GARDEN LAMP",       2,   2500, 0.4F,  "decor_lamp",     ""},
    {"fountain", "FOUNTAIN",          4,   6000, 1.15F, "decor_fountain", ""},
    {"statue",   "GOLDEN HEN STATUE", 6,  15000, 0.6F,  "decor_pedestal", ""},
    {"windmill", "WINDMILL",          8,  40000, 1.5F,  "decor_windmill", ""},
    {"gazebo",   "GAZEBO",           10,  90000, 1.55F, "decor_gazebo",   ""},
    {"friends",  "FRIENDSHIP STATUE", 8,      0, 0.7F,  "decor_pedestal", "statue"},
};
// clang-format on

constexpr float HALF_LAND = 12.0F - 1.5F;
constexpr int STEPS = 22; // one metre apart, both ends included
constexpr float SPOT_ROWS[] = {9, 12, 15};

float distance(Vec2 a, Vec2 b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

} // namespace

std::span<const DecorRow> decor_rows() {
    return ROWS;
}

const DecorRow *find_decor(std::string_view type) {
    const auto *found =
        std::find_if(std::begin(ROWS), std::end(ROWS), [type](const auto &r) { return r.type == type; });
    return found == std::end(ROWS) ? nullptr : found;
}

int64_t decor_price(const DecorRow &row, int placed) {
    const double tens = static_cast<double>(row.price) * std::pow(1.25, std::max(0, placed)) / 10.0;
    constexpr double MOST = 9e15; // hundreds of windmills: more than anybody will ever own, still a whole number
    return static_cast<int64_t>(std::round(std::min(tens, MOST / 10.0))) * 10;
}

int decor_charm(std::string_view type) {
    const DecorRow *row = find_decor(type);
    return row == nullptr ? 0 : row->charm;
}

bool decor_fits(const DecorGround &ground, Vec2 at, float radius) {
    return std::all_of(ground.blocked_x.begin(), ground.blocked_x.end(),
                       [&](float x) { return std::fabs(x - at.x) >= 1.3F + radius; }) &&
           std::all_of(ground.placed.begin(), ground.placed.end(),
                       [&](const DecorPlaced &p) { return distance(p.at, at) >= p.radius + radius + 0.4F; }) &&
           std::all_of(ground.lawn.begin(), ground.lawn.end(),
                       [&](Vec2 p) { return distance(p, at) >= radius + 1.2F; });
}

std::optional<Vec2> decor_spot(const DecorGround &ground, std::span<const float> lands, float player_x, float radius) {
    std::optional<Vec2> best;
    float best_score = 0;
    for (const float land : lands) {
        for (int step = 0; step < STEPS; ++step) {
            const float x = land - HALF_LAND + static_cast<float>(step);
            for (const float z : SPOT_ROWS) {
                const float score = z * 0.05F + std::fabs(x - player_x);
                if ((!best || score < best_score) && decor_fits(ground, {x, z}, radius)) {
                    best = Vec2{x, z};
                    best_score = score;
                }
            }
        }
    }
    return best;
}

} // namespace tilm::rules
