#pragma once
// The farm plan as it is written: one row per thing that a farm can buy, in the order in which the farm is built and
// the next purchase is looked for. Prices are those of the first farm; plan.h finishes them.

#include <cstdint>
#include <span>
#include <string_view>

#include "rules/few.h"
#include "rules/regions.h"

namespace tilm::rules {

struct Need {
    std::string_view kind;
    int units = 1;
};
using Recipe = Few<Need, 6>;

struct Flavor {
    std::string_view kind;
    Recipe recipe;
};

// Which kinds a supply van brings to which machine.
struct Supply {
    std::string_view machine;
    Few<std::string_view, 3> kinds;
};

constexpr Vec2 NO_PLACE = {-9999.0F, -9999.0F};

struct PlanRow {
    std::string_view id = {};
    std::string_view kind = {};
    std::string_view title = {};
    std::string_view region = {};
    Vec2 pos = {};
    Few<int64_t, 8> costs = {};
    Few<std::string_view, 2> req = {}; // "id", or "id@N" for level N
    std::string_view maker = {};       // set on rows that a MakerRow fills in
    std::string_view product = {};
    Few<std::string_view, 2> products = {};
    Recipe recipe = {};
    int yield = 0; // 0: not told
    Few<Flavor, 2> flavors = {};
    uint32_t roof = 0;
    Few<std::string_view, 6> kinds = {}; // hauler: none means any
    std::string_view dst = {};           // hauler: target, "@feed", or targets joined by "|"
    std::string_view field = {};
    std::string_view crop = {};
    Rect rect = {};
    Vec2 pallet = {};
    uint32_t color = 0;
    Vec2 pad = NO_PLACE; // where the row pattern does not give it
    bool no_pad = false;
    Rect block = {};
    std::string_view target = {};
    Few<Supply, 2> machines = {};
};

// A factory or restaurant with its crew and its belt. The plan says where each of the three stands in the order.
struct MakerRow {
    std::string_view id;
    bool restaurant;
    std::string_view title;
    std::string_view region;
    float x;
    Few<int64_t, 5> costs;
    Few<int64_t, 3> crew_costs;
    Few<int64_t, 3> belt_costs;
    std::string_view depot;
    Few<std::string_view, 2> req;
    uint32_t roof;
    Recipe recipe;
    std::string_view product;
    int yield;
};

// Service providers: one entry per price.
struct TradeRow {
    std::string_view trade;
    float x;
    std::string_view title;
    Few<int64_t, 3> costs;
    int row; // first row of tiles, counted from the front
    std::string_view req;
};

std::span<const PlanRow> plan_rows_start();   // eggs, dairy, mill
std::span<const PlanRow> plan_rows_food();    // food, oil, sweets
std::span<const PlanRow> plan_rows_ranch();   // fish, ranch, poultry, creamery
std::span<const PlanRow> plan_rows_court();   // garden, court, burger
std::span<const PlanRow> plan_rows_orchard(); // apiary, orchard, wool
std::span<const PlanRow> plan_rows_coffee();  // diner, coffee, new lands, housing, security
std::span<const MakerRow> maker_rows();
std::span<const TradeRow> trade_rows();

} // namespace tilm::rules
