#include "rules/extras.h"

namespace tilm::rules {

namespace {

// clang-format off
constexpr ExtraType TYPES[] = {
    {"coop", "COOP", "producer", "egg", "eggs", "coop_c", ""},
    {"barn", "BARN", "producer", "milk", "dairy", "barn_c", ""},
    {"pond", "FISH POND", "producer", "fish", "fish", "pond_c", ""},
    {"pen", "CALF PEN", "producer", "calf", "ranch", "calf_pen_b", ""},
    {"henhouse", "HEN HOUSE", "producer", "hen", "poultry", "hen_house_b", ""},
    {"beanfarm", "COFFEE FARM", "producer", "bean", "coffee", "bean_farm_a", ""},
    {"hive", "APIARY", "producer", "honey", "apiary", "hives_a", ""},
    {"appletrees", "APPLE ORCHARD", "producer", "apple", "orchard", "apple_orchard", ""},
    {"orangetrees", "ORANGE ORCHARD", "producer", "orange", "orchard", "orange_orchard", ""},
    {"sheepshed", "SHEEP SHED", "producer", "wool", "wool", "sheep_a", ""},
    {"wheat", "WHEAT FIELD", "field", "wheat", "mill", "wheat_workers", ""},
    {"sunflower", "SUNFLOWER FIELD", "field", "sunflower", "oil", "sun_workers", ""},
    {"tomato", "TOMATO FIELD", "field", "tomato", "garden", "tomato_workers", ""},
    {"lettuce", "LETTUCE FIELD", "field", "lettuce", "garden", "lettuce_workers", ""},
    {"potato", "POTATO FIELD", "field", "potato", "garden", "potato_workers", ""},
    {"corn", "CHICKEN FEED FIELD", "field", "corn", "eggs", "corn_workers", ""},
    {"hay", "CATTLE FEED FIELD", "field", "hay", "dairy", "hay_workers", ""},
    {"mill", "FLOUR MILL", "machine", "flour", "mill", "flour_mill", "stall_flour"},
    {"press", "OIL PRESS", "machine", "oil", "oil", "oil_press", "stall_oil"},
    {"butchery", "BUTCHER", "machine", "meat", "ranch", "butcher", "stall_meat"},
    {"poultry", "POULTRY", "machine", "drumstick", "poultry", "poultry_plant", "stall_drumstick"},
    {"cheese", "CHEESE", "machine", "cheese", "creamery", "cheese_plant", "stall_cheese"},
    {"juice", "JUICE PRESS", "machine", "apple_juice", "orchard", "juice_plant", "stall_juice"},
    {"weaving", "WEAVER", "machine", "blanket", "wool", "weaver", "stall_blanket"},
    {"grinder", "COFFEE GRINDER", "machine", "coffee", "coffee", "coffee_grinder", "stall_coffee"},
    {"bakery", "BAKERY", "machine", "bread", "food", "bread_factory", "dock_bread_factory"},
    {"mayo", "MAYO", "machine", "mayo", "food", "mayo_factory", "dock_mayo_factory"},
    {"cookies", "COOKIES", "machine", "cookies", "food", "cookie_factory", "dock_cookie_factory"},
    {"donuts", "DONUTS", "machine", "donut", "sweets", "donut_factory", "dock_donut_factory"},
    {"cakes", "CAKES", "machine", "cake", "sweets", "cake_factory", "dock_cake_factory"},
    {"icecream", "ICE CREAM", "machine", "icecream", "sweets", "icecream_factory", "dock_icecream_factory"},
    {"fishgrill", "FISH GRILL", "machine", "grilled_fish", "court", "fish_rest", "stall_grilled_fish"},
    {"chickengrill", "CHICKEN GRILL", "machine", "grilled_chicken", "court", "grill_rest", "stall_grilled_chicken"},
    {"steakhouse", "STEAKHOUSE", "machine", "steak", "court", "steak_rest", "stall_steak"},
    {"burgers", "BURGERS", "machine", "burger", "burger", "burger_joint", "stall_burger"},
};
// clang-format on

} // namespace

std::span<const ExtraType> extra_types() {
    return TYPES;
}

} // namespace tilm::rules
