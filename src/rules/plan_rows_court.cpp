#include "rules/plan_rows.h"

namespace tilm::rules {

namespace {

// clang-format off
constexpr PlanRow ROWS[] = {
    {.id = "land_garden", .kind = "land", .title = "VEGGIE GARDEN", .region = "creamery", .pos = {178.5F, -2.2F},
     .costs = {530000}, .req = {"barn_e", "stall_cheese@2"}, .target = "garden"},
    {.id = "field_tomato", .kind = "field", .title = "TOMATOES", .region = "garden", .pos = {184.3F, -12},
     .costs = {0}, .req = {"land_garden"}, .crop = "tomato", .rect = {180.8F, -17, 7, 10},
     .pallet = {184.3F, -4.6F}},
    {.id = "field_lettuce", .kind = "field", .title = "LETTUCE", .region = "garden", .pos = {192, -12}, .costs = {0},
     .req = {"land_garden"}, .crop = "lettuce", .rect = {188.5F, -17, 7, 10}, .pallet = {192, -4.6F}},
    {.id = "tomato_workers", .kind = "workers", .title = "WORKERS", .region = "garden", .pos = {181.5F, 1.2F},
     .costs = {400000, 800000, 1400000}, .req = {"land_garden"}, .field = "field_tomato"},
    {.id = "stall_tomato", .kind = "stall", .title = "TOMATO STALL", .region = "garden", .pos = {188, 4.6F},
     .costs = {350000, 350000, 700000, 1200000}, .req = {"tomato_workers"}, .product = "tomato", .color = 0xe53935},
    {.id = "lettuce_workers", .kind = "workers", .title = "WORKERS", .region = "garden", .pos = {186.2F, -2.2F},
     .costs = {500000, 1000000, 1700000}, .req = {"tomato_workers"}, .field = "field_lettuce"},
    {.id = "stall_lettuce", .kind = "stall", .title = "LETTUCE STALL", .region = "garden", .pos = {194, 4.6F},
     .costs = {400000, 400000, 800000, 1300000}, .req = {"lettuce_workers"}, .product = "lettuce",
     .color = 0x558b2f},
    {.id = "veggie_hauler", .kind = "hauler", .title = "VEGGIE SELLER", .region = "garden", .pos = {191, 1.2F},
     .costs = {450000, 900000}, .req = {"stall_tomato", "stall_lettuce"}, .kinds = {"tomato", "lettuce", "potato"},
     .dst = "stall_tomato|stall_lettuce|stall_potato"},
    {.id = "tomato_harvester", .kind = "harvester", .title = "HARVESTER", .region = "garden", .pos = {182, -2.2F},
     .costs = {1200000}, .req = {"tomato_workers@2"}, .field = "field_tomato", .color = 0xc62828},
    {.id = "lettuce_harvester", .kind = "harvester", .title = "HARVESTER", .region = "garden", .pos = {190, -2.2F},
     .costs = {1400000}, .req = {"lettuce_workers@2"}, .field = "field_lettuce", .color = 0x2e7d32},
    {.id = "field_potato", .kind = "field", .title = "POTATOES", .region = "garden", .pos = {199.7F, -12},
     .costs = {0}, .req = {"lettuce_workers"}, .crop = "potato", .rect = {196.2F, -17, 7, 10},
     .pallet = {199.7F, -4.6F}},
    {.id = "potato_workers", .kind = "workers", .title = "WORKERS", .region = "garden", .pos = {197, 1.2F},
     .costs = {550000, 1100000, 1800000}, .req = {"lettuce_workers"}, .field = "field_potato"},
    {.id = "stall_potato", .kind = "stall", .title = "POTATO STALL", .region = "garden", .pos = {200.5F, 4.6F},
     .costs = {420000, 420000, 850000, 1400000}, .req = {"potato_workers"}, .product = "potato", .color = 0xa1887f},
    {.id = "potato_hauler", .kind = "hauler", .title = "POTATO SELLER", .region = "garden", .pos = {203, 1.2F},
     .costs = {480000, 950000}, .req = {"stall_potato"}, .kinds = {"potato"}, .dst = "stall_potato"},
    {.id = "potato_harvester", .kind = "harvester", .title = "HARVESTER", .region = "garden", .pos = {194.5F, -2.2F},
     .costs = {1500000}, .req = {"potato_workers@2"}, .field = "field_potato", .color = 0x8d6e63},
    {.id = "truck_garden", .kind = "truck", .title = "MARKET TRUCK", .region = "garden", .pos = {182.5F, 4.6F},
     .costs = {900000}, .req = {"stall_potato"}},
    {.id = "truck_garden_loader", .kind = "hauler", .title = "TRUCK LOADER", .region = "garden",
     .pos = {184.5F, 1.2F}, .costs = {1000000, 2000000}, .req = {"truck_garden"}, .dst = "truck_garden"},
    {.id = "land_court", .kind = "land", .title = "FOOD COURT", .region = "garden", .pos = {202.5F, -2.2F},
     .costs = {740000}, .req = {"stall_tomato", "stall_lettuce"}, .target = "court"},
    {.id = "court_depot", .kind = "depot", .title = "DEPOT", .region = "court", .pos = {205.6F, -4.4F},
     .costs = {1500000, 1000000, 2000000, 3500000}, .req = {"fish_rest"},
     .kinds = {"fish", "lettuce", "tomato", "drumstick", "meat", "potato"}},
    {.id = "fish_rest", .kind = "restaurant", .maker = "fish_rest"},
    {.id = "fish_rest_crew", .kind = "crew", .maker = "fish_rest"},
    {.id = "grill_rest", .kind = "restaurant", .maker = "grill_rest"},
    {.id = "grill_rest_crew", .kind = "crew", .maker = "grill_rest"},
    {.id = "steak_rest", .kind = "restaurant", .maker = "steak_rest"},
    {.id = "steak_rest_crew", .kind = "crew", .maker = "steak_rest"},
    {.id = "fish_rest_belt", .kind = "belt", .maker = "fish_rest"},
    {.id = "grill_rest_belt", .kind = "belt", .maker = "grill_rest"},
    {.id = "steak_rest_belt", .kind = "belt", .maker = "steak_rest"},
    {.id = "land_burger", .kind = "land", .title = "BURGER TOWN", .region = "court", .pos = {226.5F, -2.2F},
     .costs = {1000000}, .req = {"steak_rest", "fish_rest@2"}, .target = "burger"},
    {.id = "burger_depot", .kind = "depot", .title = "DEPOT", .region = "burger", .pos = {230.6F, -4.4F},
     .costs = {2500000, 1500000, 3000000, 5000000}, .req = {"burger_joint"},
     .kinds = {"meat", "cheese", "bread", "tomato", "lettuce", "potato"}},
    {.id = "burger_joint", .kind = "restaurant", .maker = "burger_joint"},
    {.id = "burger_joint_crew", .kind = "crew", .maker = "burger_joint"},
    {.id = "burger_joint_belt", .kind = "belt", .maker = "burger_joint"},
    {.id = "pond_d", .kind = "producer", .title = "FISH POND", .region = "burger", .pos = {241, -8},
     .costs = {2000000, 600000, 1000000, 1600000, 2500000}, .req = {"burger_joint"}, .product = "fish"},
    {.id = "calf_pen_c", .kind = "producer", .title = "CALF PEN", .region = "burger", .pos = {248, -8},
     .costs = {3000000, 900000, 1500000, 2400000, 3800000}, .req = {"burger_joint@2"}, .product = "calf"},
};
// clang-format on

} // namespace

std::span<const PlanRow> plan_rows_court() {
    return ROWS;
}

} // namespace tilm::rules
