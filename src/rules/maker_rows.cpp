#include "rules/plan_rows.h"

namespace tilm::rules {

namespace {

// clang-format off
// Costs of the building, of its crew, of its belt.
constexpr MakerRow MAKERS[] = {
    {"bread_factory", false, "BAKERY", "food", 41,
     {6000, 4000, 8000, 15000, 25000}, {5000, 10000, 18000}, {6000, 7000, 14000},
     "food_depot", {"land_food"}, 0xef6c00,
     {{"flour", 1}, {"egg", 1}}, "bread", 2},
    {"mayo_factory", false, "MAYO", "food", 48,
     {18000, 10000, 20000, 35000, 55000}, {14000, 28000, 50000}, {15000, 15000, 28000},
     "food_depot", {"land_food", "oil_press"}, 0xfdd835,
     {{"egg", 1}, {"oil", 1}}, "mayo", 1},
    {"cookie_factory", false, "COOKIES", "food", 55,
     {30000, 18000, 35000, 60000, 90000}, {25000, 50000, 90000}, {24000, 24000, 45000},
     "food_depot", {"mayo_factory", "bread_factory@3"}, 0x6d4c41,
     {{"flour", 1}, {"oil", 1}, {"egg", 1}}, "cookies", 1},
    {"donut_factory", false, "DONUTS", "sweets", 65,
     {70000, 40000, 80000, 140000, 220000}, {60000, 120000, 200000}, {60000, 60000, 110000},
     "sweets_depot", {"land_sweets"}, 0xec407a,
     {{"flour", 1}, {"oil", 1}, {"milk", 1}}, "donut", 1},
    {"cake_factory", false, "CAKES", "sweets", 72,
     {120000, 70000, 140000, 250000, 400000}, {100000, 200000, 350000}, {100000, 100000, 180000},
     "sweets_depot", {"donut_factory"}, 0xab47bc,
     {{"flour", 1}, {"egg", 1}, {"milk", 1}, {"oil", 1}}, "cake", 1},
    {"icecream_factory", false, "ICE CREAM", "sweets", 79,
     {180000, 100000, 200000, 350000, 550000}, {150000, 300000, 500000}, {150000, 150000, 260000},
     "sweets_depot", {"cake_factory"}, 0x29b6f6,
     {{"milk", 1}, {"egg", 1}, {"flour", 1}}, "icecream", 1},
    {"fish_rest", true, "FISH GRILL", "court", 209,
     {1200000, 800000, 1500000, 2500000, 4000000}, {600000, 1200000, 2000000}, {800000, 1600000},
     "court_depot", {"land_court"}, 0x0288d1,
     {{"fish", 1}, {"lettuce", 1}}, "grilled_fish", 1},
    {"grill_rest", true, "CHICKEN GRILL", "court", 216,
     {2000000, 1200000, 2200000, 3500000, 5500000}, {900000, 1800000, 3000000}, {1200000, 2400000},
     "court_depot", {"fish_rest"}, 0xef6c00,
     {{"drumstick", 2}, {"tomato", 1}}, "grilled_chicken", 1},
    {"steak_rest", true, "STEAKHOUSE", "court", 223,
     {3000000, 2000000, 3500000, 5500000, 8000000}, {1300000, 2600000, 4200000}, {1800000, 3600000},
     "court_depot", {"grill_rest"}, 0x6d4c41,
     {{"meat", 2}, {"tomato", 1}, {"lettuce", 1}, {"potato", 1}}, "steak", 1},
    {"burger_joint", true, "BURGERS", "burger", 234,
     {4500000, 3000000, 5000000, 8000000, 12000000}, {2000000, 4000000, 6500000}, {2500000, 5000000},
     "burger_depot", {"land_burger"}, 0xe53935,
     {{"meat", 1}, {"cheese", 1}, {"bread", 1}, {"tomato", 1}, {"lettuce", 1}, {"potato", 1}}, "burger", 1},
};

constexpr TradeRow TRADES[] = {
    {"carpenter", -81, "CARPENTER", {400, 8000, 90000}, 0, ""},
    {"electric", -75, "ELECTRICIAN", {600, 12000, 120000}, 0, ""},
    {"vet", -69, "VET CLINIC", {800, 15000, 150000}, 0, ""},
    {"pharmacy", -63, "PHARMACY", {500}, 0, ""},
    {"plumber", -63, "PLUMBER", {2500}, 1, "worker_homes"},
    {"appliance", -63, "APPLIANCE REPAIR", {3500}, 2, "worker_homes"},
};
// clang-format on

} // namespace

std::span<const MakerRow> maker_rows() {
    return MAKERS;
}

std::span<const TradeRow> trade_rows() {
    return TRADES;
}

} // namespace tilm::rules
