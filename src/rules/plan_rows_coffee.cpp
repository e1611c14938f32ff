#include "rules/plan_rows.h"

namespace tilm::rules {

namespace {

// clang-format off
constexpr PlanRow ROWS[] = {
    {.id = "land_diner", .kind = "land", .title = "DINER", .region = "wool", .pos = {322.5F, -2.2F},
     .costs = {3500000}, .req = {"stall_blanket", "sheep_b"}, .target = "diner"},
    {.id = "diner_kitchen", .kind = "machine", .title = "DINER", .region = "diner", .pos = {331, -8.5F},
     .costs = {12000000, 7000000, 14000000, 24000000}, .req = {"land_diner"}, .product = "breakfast",
     .recipe = {{"honey", 1}, {"bread", 1}, {"orange_juice", 1}}, .yield = 1, .roof = 0xd84315},
    {.id = "diner_bakery", .kind = "machine", .title = "DINER BAKERY", .region = "diner", .pos = {342.5F, -8.5F},
     .costs = {0, 5000000, 10000000, 16000000}, .req = {"diner_kitchen"}, .product = "bread",
     .recipe = {{"flour", 1}}, .yield = 2, .roof = 0xc47a3a},
    {.id = "diner_feeder", .kind = "hauler", .title = "KITCHEN HELPER", .region = "diner", .pos = {328.5F, 1.2F},
     .costs = {6000000, 12000000}, .req = {"diner_kitchen"}, .kinds = {"honey", "bread", "orange_juice"},
     .dst = "diner_kitchen"},
    {.id = "diner_pantry", .kind = "pantry", .title = "PANTRY VAN", .region = "diner", .pos = {326, -2.2F},
     .costs = {8000000, 10000000, 16000000}, .req = {"diner_kitchen"},
     .machines = {{"diner_kitchen", {"honey", "orange_juice"}}, {"diner_bakery", {"flour"}}}},
    {.id = "diner_tables", .kind = "tables", .title = "TABLES", .region = "diner", .pos = {340, -1},
     .costs = {10000000, 6000000, 9000000, 14000000, 20000000}, .req = {"diner_kitchen"}, .pad = {335.5F, 1.2F}},
    {.id = "diner_waiter", .kind = "waiter", .title = "WAITER", .region = "diner", .pos = {332.5F, 1.2F},
     .costs = {7000000, 12000000, 18000000}, .req = {"diner_tables"}},
    {.id = "land_coffee", .kind = "land", .title = "COFFEE FARM", .region = "diner", .pos = {346.5F, -7.2F},
     .costs = {4700000}, .req = {"diner_tables", "diner_kitchen@2"}, .target = "coffee"},
    {.id = "bean_farm_a", .kind = "producer", .title = "COFFEE FARM", .region = "coffee", .pos = {352, -8},
     .costs = {4000000, 1100000, 1800000, 2900000, 4500000}, .req = {"land_coffee"}, .product = "bean"},
    {.id = "stall_bean", .kind = "stall", .title = "BEAN STALL", .region = "coffee", .pos = {354.5F, 4.6F},
     .costs = {3000000, 3000000, 6000000, 9500000}, .req = {"bean_farm_a"}, .product = "bean", .color = 0x8d5a3b},
    {.id = "bean_hauler", .kind = "hauler", .title = "BEAN SELLER", .region = "coffee", .pos = {357, 1.2F},
     .costs = {3200000, 6400000}, .req = {"stall_bean"}, .kinds = {"bean"}, .dst = "stall_bean"},
    {.id = "bean_farm_b", .kind = "producer", .title = "COFFEE FARM", .region = "coffee", .pos = {358, -8},
     .costs = {5500000, 1400000, 2300000, 3600000, 5500000}, .req = {"bean_farm_a@2", "stall_bean"},
     .product = "bean"},
    {.id = "coffee_grinder", .kind = "machine", .title = "COFFEE GRINDER", .region = "coffee",
     .pos = {367.5F, -8.5F}, .costs = {7500000, 4800000, 9500000, 16000000}, .req = {"bean_farm_b"},
     .product = "coffee", .recipe = {{"bean", 2}}, .yield = 1, .roof = 0x5d4037},
    {.id = "grinder_feeder", .kind = "hauler", .title = "GRINDER HELPER", .region = "coffee", .pos = {365, 1.2F},
     .costs = {3800000, 7600000}, .req = {"coffee_grinder"}, .kinds = {"bean"}, .dst = "coffee_grinder"},
    {.id = "stall_coffee", .kind = "stall", .title = "COFFEE STALL", .region = "coffee", .pos = {362, 4.6F},
     .costs = {5000000, 5000000, 10000000, 16000000}, .req = {"coffee_grinder"}, .product = "coffee",
     .color = 0x5d4037},
    {.id = "coffee_hauler", .kind = "hauler", .title = "COFFEE SELLER", .region = "coffee", .pos = {370.5F, 1.2F},
     .costs = {4200000, 8400000}, .req = {"stall_coffee"}, .kinds = {"coffee"}, .dst = "stall_coffee"},
    {.id = "truck_coffee", .kind = "truck", .title = "MARKET TRUCK", .region = "coffee", .pos = {350, 4.6F},
     .costs = {6500000}, .req = {"stall_coffee"}},
    {.id = "truck_coffee_loader", .kind = "hauler", .title = "TRUCK LOADER", .region = "coffee",
     .pos = {348.6F, -2.2F}, .costs = {7000000, 14000000}, .req = {"truck_coffee"}, .dst = "truck_coffee"},
    {.id = "ahwa", .kind = "ahwa", .title = "AHWA", .region = "coffee", .pos = {362.8F, -11},
     .costs = {9000000, 3000000, 4500000, 6500000, 9000000, 12000000, 16000000, 21000000}, .req = {"coffee_grinder"},
     .block = {356.6F, -22.4F, 12.4F, 9.4F}},
    {.id = "ahwa_helper", .kind = "hauler", .title = "AHWA HELPER", .region = "coffee", .pos = {361.6F, -2.2F},
     .costs = {3000000, 6000000}, .req = {"ahwa"}, .kinds = {"coffee"}, .dst = "ahwa"},
    {.id = "land_ext1", .kind = "land", .title = "NEW LAND 1", .region = "coffee", .pos = {370.5F, -2.2F},
     .costs = {6000000}, .req = {"ahwa"}, .target = "ext1"},
    {.id = "land_ext2", .kind = "land", .title = "NEW LAND 2", .region = "ext1", .pos = {394.5F, -2.2F},
     .costs = {7500000}, .req = {"land_ext1"}, .target = "ext2"},
    {.id = "land_ext3", .kind = "land", .title = "NEW LAND 3", .region = "ext2", .pos = {418.5F, -2.2F},
     .costs = {9500000}, .req = {"land_ext2"}, .target = "ext3"},
    {.id = "land_ext4", .kind = "land", .title = "NEW LAND 4", .region = "ext3", .pos = {442.5F, -2.2F},
     .costs = {12000000}, .req = {"land_ext3"}, .target = "ext4"},
    {.id = "land_ext5", .kind = "land", .title = "NEW LAND 5", .region = "ext4", .pos = {466.5F, -2.2F},
     .costs = {15000000}, .req = {"land_ext4"}, .target = "ext5"},
    {.id = "land_ext6", .kind = "land", .title = "NEW LAND 6", .region = "ext5", .pos = {490.5F, -2.2F},
     .costs = {19000000}, .req = {"land_ext5"}, .target = "ext6"},
    {.id = "qahwagi", .kind = "qahwagi", .title = "QAHWAGI", .region = "coffee", .pos = {367.8F, 1.2F},
     .costs = {4000000, 5000000, 7000000, 10000000}, .req = {"ahwa"}},
    {.id = "worker_homes", .kind = "homes", .title = "WORKERS' HOMES", .region = "eggs", .pos = {1, -17.6F},
     .costs = {9000, 6000, 12000, 25000, 50000, 90000, 160000, 260000}, .req = {"land_mill"},
     .block = {-2.9F, -30, 7.8F, 10.6F}},
    {.id = "canteen", .kind = "canteen", .title = "WORKERS' CANTEEN", .region = "eggs", .pos = {6, -21.2F},
     .costs = {14000, 9000, 18000, 35000, 65000, 110000}, .req = {"worker_homes"},
     .block = {4.7F, -29.4F, 8.1F, 9.6F}},
    {.id = "security", .kind = "security", .title = "SECURITY OFFICE", .region = "service", .pos = {-72, -28},
     .costs = {3000}, .req = {"land_food"}},
    {.id = "guards", .kind = "guards", .title = "GUARD", .region = "service", .pos = {-65, -28},
     .req = {"security"}},
};
// clang-format on

} // namespace

std::span<const PlanRow> plan_rows_coffee() {
    return ROWS;
}

} // namespace tilm::rules
