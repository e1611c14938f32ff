#include "rules/plan_rows.h"

namespace tilm::rules {

namespace {

// clang-format off
constexpr PlanRow ROWS[] = {
    {.id = "land_apiary", .kind = "land", .title = "APIARY", .region = "burger", .pos = {250.5F, -2.2F},
     .costs = {1400000}, .req = {"calf_pen_c", "burger_joint@2"}, .target = "apiary"},
    {.id = "hives_a", .kind = "producer", .title = "APIARY", .region = "apiary", .pos = {256, -8},
     .costs = {3000000, 900000, 1500000, 2400000, 3800000}, .req = {"land_apiary"}, .product = "honey"},
    {.id = "stall_honey", .kind = "stall", .title = "HONEY STALL", .region = "apiary", .pos = {261, 4.6F},
     .costs = {2500000, 2500000, 5000000, 8000000}, .req = {"hives_a"}, .product = "honey", .color = 0xffb300},
    {.id = "honey_hauler", .kind = "hauler", .title = "HONEY SELLER", .region = "apiary", .pos = {257.5F, 1.2F},
     .costs = {2500000, 5000000}, .req = {"stall_honey"}, .kinds = {"honey"}, .dst = "stall_honey"},
    {.id = "hives_b", .kind = "producer", .title = "APIARY", .region = "apiary", .pos = {263, -8},
     .costs = {5000000, 1300000, 2100000, 3300000, 5000000}, .req = {"hives_a@2", "stall_honey"},
     .product = "honey"},
    {.id = "hives_c", .kind = "producer", .title = "APIARY", .region = "apiary", .pos = {270, -8},
     .costs = {8000000, 1800000, 2900000, 4500000, 7000000}, .req = {"hives_b@2"}, .product = "honey"},
    {.id = "truck_apiary", .kind = "truck", .title = "MARKET TRUCK", .region = "apiary", .pos = {268, 4.6F},
     .costs = {5000000}, .req = {"stall_honey"}},
    {.id = "truck_apiary_loader", .kind = "hauler", .title = "TRUCK LOADER", .region = "apiary", .pos = {266, 1.2F},
     .costs = {5500000, 11000000}, .req = {"truck_apiary"}, .dst = "truck_apiary"},
    {.id = "land_orchard", .kind = "land", .title = "ORCHARD", .region = "apiary", .pos = {274.5F, -2.2F},
     .costs = {1900000}, .req = {"hives_b", "stall_honey@2"}, .target = "orchard"},
    {.id = "apple_orchard", .kind = "producer", .title = "APPLE ORCHARD", .region = "orchard", .pos = {280, -8},
     .costs = {3500000, 1000000, 1700000, 2700000, 4200000}, .req = {"land_orchard"}, .product = "apple"},
    {.id = "stall_apple", .kind = "stall", .title = "APPLE STALL", .region = "orchard", .pos = {282.5F, 4.6F},
     .costs = {2800000, 2800000, 5500000, 9000000}, .req = {"apple_orchard"}, .product = "apple", .color = 0xe53935},
    {.id = "fruit_hauler", .kind = "hauler", .title = "APPLE SELLER", .region = "orchard", .pos = {285.5F, 1.2F},
     .costs = {3000000, 6000000}, .req = {"stall_apple"}, .kinds = {"apple"}, .dst = "stall_apple"},
    {.id = "orange_orchard", .kind = "producer", .title = "ORANGE ORCHARD", .region = "orchard", .pos = {287, -8},
     .costs = {5000000, 1300000, 2100000, 3300000, 5000000}, .req = {"apple_orchard@2", "stall_apple"},
     .product = "orange"},
    {.id = "stall_orange", .kind = "stall", .title = "ORANGE STALL", .region = "orchard", .pos = {289, 4.6F},
     .costs = {3200000, 3200000, 6000000, 9500000}, .req = {"orange_orchard"}, .product = "orange",
     .color = 0xfb8c00},
    {.id = "orange_hauler", .kind = "hauler", .title = "ORANGE SELLER", .region = "orchard", .pos = {279, 1.2F},
     .costs = {3000000, 6000000}, .req = {"stall_orange"}, .kinds = {"orange"}, .dst = "stall_orange"},
    {.id = "juice_plant", .kind = "machine", .title = "JUICE PRESS", .region = "orchard", .pos = {295, -8.5F},
     .costs = {7000000, 4500000, 9000000, 15000000}, .req = {"orange_orchard"}, .product = "juice",
     .recipe = {{"apple", 2}, {"orange", 2}}, .yield = 2,
     .flavors = {{"apple_juice", {{"apple", 2}}}, {"orange_juice", {{"orange", 2}}}}, .roof = 0xffa726},
    {.id = "juice_feeder", .kind = "hauler", .title = "JUICE HELPER", .region = "orchard", .pos = {292, 1.2F},
     .costs = {3500000, 7000000}, .req = {"juice_plant"}, .kinds = {"apple", "orange"}, .dst = "juice_plant"},
    {.id = "stall_juice", .kind = "stall", .title = "JUICE STALL", .region = "orchard", .pos = {295.5F, 4.6F},
     .costs = {4500000, 4500000, 9000000, 15000000}, .req = {"juice_plant"}, .product = "apple_juice",
     .products = {"apple_juice", "orange_juice"}, .color = 0xffa726},
    {.id = "juice_hauler", .kind = "hauler", .title = "JUICE SELLER", .region = "orchard", .pos = {298.5F, 1.2F},
     .costs = {4000000, 8000000}, .req = {"stall_juice"}, .kinds = {"apple_juice", "orange_juice"},
     .dst = "stall_juice"},
    {.id = "truck_orchard", .kind = "truck", .title = "MARKET TRUCK", .region = "orchard", .pos = {277, 4.6F},
     .costs = {6000000}, .req = {"stall_juice"}},
    {.id = "truck_orchard_loader", .kind = "hauler", .title = "TRUCK LOADER", .region = "orchard",
     .pos = {277, -2.2F}, .costs = {6500000, 13000000}, .req = {"truck_orchard"}, .dst = "truck_orchard"},
    {.id = "land_wool", .kind = "land", .title = "SHEEP FARM", .region = "orchard", .pos = {298.5F, -2.2F},
     .costs = {2600000}, .req = {"stall_juice", "stall_orange@2"}, .target = "wool"},
    {.id = "sheep_a", .kind = "producer", .title = "SHEEP SHED", .region = "wool", .pos = {305, -8},
     .costs = {4500000, 1200000, 2000000, 3200000, 5000000}, .req = {"land_wool"}, .product = "wool"},
    {.id = "stall_wool", .kind = "stall", .title = "WOOL STALL", .region = "wool", .pos = {304, 4.6F},
     .costs = {3500000, 3500000, 7000000, 11000000}, .req = {"sheep_a"}, .product = "wool", .color = 0xeceff1},
    {.id = "wool_hauler", .kind = "hauler", .title = "WOOL SELLER", .region = "wool", .pos = {307, 1.2F},
     .costs = {3500000, 7000000}, .req = {"stall_wool"}, .kinds = {"wool"}, .dst = "stall_wool"},
    {.id = "sheep_b", .kind = "producer", .title = "SHEEP SHED", .region = "wool", .pos = {311, -8},
     .costs = {6500000, 1600000, 2600000, 4100000, 6300000}, .req = {"sheep_a@2", "stall_wool"}, .product = "wool"},
    {.id = "weaver", .kind = "machine", .title = "WEAVER", .region = "wool", .pos = {318, -8.5F},
     .costs = {9000000, 6000000, 12000000, 20000000}, .req = {"sheep_b"}, .product = "blanket",
     .recipe = {{"wool", 3}}, .yield = 1, .roof = 0xab47bc},
    {.id = "weaver_feeder", .kind = "hauler", .title = "WEAVER HELPER", .region = "wool", .pos = {313, 1.2F},
     .costs = {4500000, 9000000}, .req = {"weaver"}, .kinds = {"wool"}, .dst = "weaver"},
    {.id = "stall_blanket", .kind = "stall", .title = "BLANKET STALL", .region = "wool", .pos = {316.5F, 4.6F},
     .costs = {6000000, 6000000, 12000000, 19000000}, .req = {"weaver"}, .product = "blanket", .color = 0xab47bc},
    {.id = "blanket_hauler", .kind = "hauler", .title = "BLANKET SELLER", .region = "wool", .pos = {319.5F, 1.2F},
     .costs = {5500000, 11000000}, .req = {"stall_blanket"}, .kinds = {"blanket"}, .dst = "stall_blanket"},
    {.id = "truck_wool", .kind = "truck", .title = "MARKET TRUCK", .region = "wool", .pos = {310, 4.6F},
     .costs = {7000000}, .req = {"stall_blanket"}},
    {.id = "truck_wool_loader", .kind = "hauler", .title = "TRUCK LOADER", .region = "wool", .pos = {310, 1.2F},
     .costs = {7500000, 15000000}, .req = {"truck_wool"}, .dst = "truck_wool"},
};
// clang-format on

} // namespace

std::span<const PlanRow> plan_rows_orchard() {
    return ROWS;
}

} // namespace tilm::rules
