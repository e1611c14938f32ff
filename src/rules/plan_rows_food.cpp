#include "rules/plan_rows.h"

namespace tilm::rules {

namespace {

// clang-format off
constexpr PlanRow ROWS[] = {
    {.id = "bread_factory", .kind = "factory", .maker = "bread_factory"},
    {.id = "bread_factory_crew", .kind = "crew", .maker = "bread_factory"},
    {.id = "food_depot", .kind = "depot", .title = "DEPOT", .region = "food", .pos = {37.6F, -4.4F},
     .costs = {9000, 8000, 16000, 30000}, .req = {"bread_factory"}, .kinds = {"flour", "egg", "oil"}},
    {.id = "bread_factory_belt", .kind = "belt", .maker = "bread_factory"},
    {.id = "stall_bread", .kind = "stall", .title = "BREAD STALL", .region = "food", .pos = {38, 4.6F},
     .costs = {5000, 6000, 12000, 24000}, .req = {"bread_factory"}, .product = "bread", .color = 0xc47a3a,
     .pad = {37.5F, 1.2F}},
    {.id = "bread_hauler", .kind = "hauler", .title = "BREAD SELLER", .region = "food", .pos = {44.5F, 1.2F},
     .costs = {6000, 12000}, .req = {"stall_bread"}, .kinds = {"bread"}, .dst = "stall_bread"},
    {.id = "land_oil", .kind = "land", .title = "OIL PRESS", .region = "dairy", .pos = {-34.5F, -2.2F},
     .costs = {20000}, .req = {"bread_factory@2"}, .target = "oil"},
    {.id = "mayo_factory", .kind = "factory", .maker = "mayo_factory"},
    {.id = "mayo_factory_crew", .kind = "crew", .maker = "mayo_factory"},
    {.id = "cookie_factory", .kind = "factory", .maker = "cookie_factory"},
    {.id = "cookie_factory_crew", .kind = "crew", .maker = "cookie_factory"},
    {.id = "mayo_factory_belt", .kind = "belt", .maker = "mayo_factory"},
    {.id = "cookie_factory_belt", .kind = "belt", .maker = "cookie_factory"},
    {.id = "field_sunflower", .kind = "field", .title = "SUNFLOWERS", .region = "oil", .pos = {-54, -12},
     .costs = {0}, .req = {"land_oil"}, .crop = "sunflower", .rect = {-59, -17, 10, 10}, .pallet = {-54, -4.6F}},
    {.id = "oil_press", .kind = "machine", .title = "OIL PRESS", .region = "oil", .pos = {-41, -8.5F},
     .costs = {10000, 6000, 12000, 22000}, .req = {"land_oil"}, .product = "oil", .recipe = {{"sunflower", 1}},
     .yield = 1, .roof = 0xf9a825},
    {.id = "stall_oil", .kind = "stall", .title = "OIL STALL", .region = "oil", .pos = {-43, 4.6F},
     .costs = {7000, 7000, 15000, 30000}, .req = {"oil_press"}, .product = "oil", .color = 0xf9a825},
    {.id = "sun_workers", .kind = "workers", .title = "WORKERS", .region = "oil", .pos = {-57.5F, 1.2F},
     .costs = {6000, 12000, 22000}, .req = {"land_oil"}, .field = "field_sunflower"},
    {.id = "sun_harvester", .kind = "harvester", .title = "HARVESTER", .region = "oil", .pos = {-53, 1.2F},
     .costs = {18000}, .req = {"sun_workers"}, .field = "field_sunflower", .color = 0xf9a825},
    {.id = "press_feeder", .kind = "hauler", .title = "PRESS HELPER", .region = "oil", .pos = {-48, 1.2F},
     .costs = {9000, 18000}, .req = {"oil_press"}, .kinds = {"sunflower"}, .dst = "oil_press"},
    {.id = "oil_hauler", .kind = "hauler", .title = "OIL HELPER", .region = "oil", .pos = {-38.5F, 1.2F},
     .costs = {11000, 22000}, .req = {"stall_oil"}, .kinds = {"oil"}, .dst = "stall_oil"},
    {.id = "stall_sunflower", .kind = "stall", .title = "SUNFLOWER STALL", .region = "oil", .pos = {-50, 4.6F},
     .costs = {6000, 7000, 15000, 30000}, .req = {"stall_oil"}, .product = "sunflower", .color = 0xfbc02d,
     .pad = {-50.5F, 1.2F}},
    {.id = "sun_hauler", .kind = "hauler", .title = "SUNFLOWER SELLER", .region = "oil", .pos = {-36, 1.2F},
     .costs = {9000, 18000}, .req = {"stall_sunflower"}, .kinds = {"sunflower"}, .dst = "stall_sunflower"},
    {.id = "land_sweets", .kind = "land", .title = "SWEET FACTORY", .region = "food", .pos = {58.5F, -2.2F},
     .costs = {80000}, .req = {"cookie_factory", "stall_oil@2"}, .target = "sweets"},
    {.id = "donut_factory", .kind = "factory", .maker = "donut_factory"},
    {.id = "donut_factory_crew", .kind = "crew", .maker = "donut_factory"},
    {.id = "cake_factory", .kind = "factory", .maker = "cake_factory"},
    {.id = "cake_factory_crew", .kind = "crew", .maker = "cake_factory"},
    {.id = "icecream_factory", .kind = "factory", .maker = "icecream_factory"},
    {.id = "icecream_factory_crew", .kind = "crew", .maker = "icecream_factory"},
    {.id = "sweets_depot", .kind = "depot", .title = "DEPOT", .region = "sweets", .pos = {61.6F, -4.4F},
     .costs = {60000, 40000, 75000, 130000}, .req = {"donut_factory"}, .kinds = {"flour", "oil", "milk", "egg"}},
    {.id = "donut_factory_belt", .kind = "belt", .maker = "donut_factory"},
    {.id = "cake_factory_belt", .kind = "belt", .maker = "cake_factory"},
    {.id = "icecream_factory_belt", .kind = "belt", .maker = "icecream_factory"},
    {.id = "final", .kind = "final", .title = "FARM TYCOON", .region = "eggs", .pos = {0, -14}, .costs = {8000000},
     .req = {"burger_joint@3", "steak_rest@3"}},
};
// clang-format on

} // namespace

std::span<const PlanRow> plan_rows_food() {
    return ROWS;
}

} // namespace tilm::rules
