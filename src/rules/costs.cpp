#include "rules/costs.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "rules/regions.h"
#include "rules/rounding.h"

namespace tilm::rules {

namespace {

constexpr std::array<std::string_view, 4> KEEP_PRICE = {"bread_factory", "bread_factory_crew", "land_food", "final"};

int64_t to_hundreds(double v) {
    return round_half_away(v / 100.0) * 100;
}

} // namespace

float region_scale(std::string_view region) {
    for (const RegionScale &row : region_scales()) {
        if (row.region == region) {
            return row.scale;
        }
    }
    return 1.0F;
}

bool keeps_price(std::string_view entry_id) {
    return std::find(KEEP_PRICE.begin(), KEEP_PRICE.end(), entry_id) != KEEP_PRICE.end();
}

int64_t scaled_cost(int64_t cost, float scale) {
    if (scale == 1.0F) {
        return cost;
    }
    // Single precision on purpose: it decides which way some halves fall.
    const float product = static_cast<float>(cost) * scale;
    return to_hundreds(static_cast<double>(product));
}

bool is_levelled(std::string_view kind) {
    const auto kinds = levelled_kinds();
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

double cost_growth(std::string_view kind) {
    return kind == "harvester" ? 1.12 : 1.3;
}

void extend_costs(std::vector<int64_t> &costs, double growth, size_t length) {
    if (costs.empty()) {
        return;
    }
    double v = static_cast<double>(costs.back()) * 1.5;
    while (costs.size() < length) {
        costs.push_back(to_hundreds(v));
        v *= growth;
    }
}

bool gets_third_level(std::string_view dst, size_t levels) {
    return levels == 2 && !dst.starts_with("stall") && !dst.starts_with("@") && !dst.starts_with("dock") &&
           dst != "ahwa";
}

std::vector<int64_t> water_worker_costs() {
    std::vector<int64_t> costs = {0};
    for (size_t i = 0; i + 1 < WATER_LEVELS; ++i) {
        costs.push_back(round_half_away(600.0 * std::pow(1.55, static_cast<double>(i)) / 10.0) * 10);
    }
    return costs;
}

std::vector<int64_t> guard_costs() {
    std::vector<int64_t> costs;
    for (size_t i = 0; i < FULL_LEVELS; ++i) {
        costs.push_back(to_hundreds(std::pow(1.3, static_cast<double>(i)) * 1500.0));
    }
    double running = static_cast<double>(costs.back());
    while (costs.size() < GUARD_LEVELS) {
        running = static_cast<double>(to_hundreds(running * 1.08));
        costs.push_back(safe_int(running));
    }
    return costs;
}

int64_t annex_cost(int64_t cost, int64_t k) {
    return to_hundreds((static_cast<double>(k) * 0.5 + 1.0) * static_cast<double>(cost));
}

} // namespace tilm::rules
