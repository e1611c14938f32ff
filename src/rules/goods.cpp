#include "rules/goods.h"

namespace tilm::rules {

namespace {

// clang-format off
constexpr Good GOODS[] = {
    {"egg", "EGGS", 4, Group::farm},
    {"milk", "MILK", 7, Group::farm},
    {"wheat", "WHEAT", 4, Group::farm},
    {"flour", "FLOUR", 9, Group::factory},
    {"sunflower", "SUNFLOWERS", 4, Group::farm},
    {"oil", "OIL", 11, Group::factory},
    {"bread", "BREAD", 18, Group::factory},
    {"mayo", "MAYO", 22, Group::factory},
    {"cookies", "COOKIES", 30, Group::factory},
    {"donut", "DONUTS", 34, Group::factory},
    {"icecream", "ICE CREAM", 40, Group::factory},
    {"cake", "CAKES", 50, Group::factory},
    {"fish", "FISH", 30, Group::farm},
    {"calf", "CALVES", 60, Group::farm},
    {"hen", "HENS", 25, Group::farm},
    {"meat", "MEAT", 45, Group::factory},
    {"drumstick", "CHICKEN", 22, Group::factory},
    {"cheese", "CHEESE", 40, Group::factory},
    {"tomato", "TOMATOES", 15, Group::farm},
    {"lettuce", "LETTUCE", 15, Group::farm},
    {"potato", "POTATOES", 16, Group::farm},
    {"grilled_fish", "GRILLED FISH", 120, Group::dish},
    {"grilled_chicken", "GRILLED CHICKEN", 140, Group::dish},
    {"steak", "STEAKS", 260, Group::dish},
    {"burger", "BURGERS", 340, Group::dish},
    {"corn", "CHICKEN FEED", 2, Group::farm},
    {"hay", "CATTLE FEED", 3, Group::farm},
    {"honey", "HONEY", 55, Group::farm},
    {"apple", "APPLES", 14, Group::farm},
    {"orange", "ORANGES", 14, Group::farm},
    {"juice", "JUICE", 95, Group::none},
    {"apple_juice", "APPLE JUICE", 95, Group::factory},
    {"orange_juice", "ORANGE JUICE", 95, Group::factory},
    {"wool", "WOOL", 30, Group::farm},
    {"blanket", "BLANKETS", 190, Group::factory},
    {"breakfast", "BREAKFAST", 420, Group::dish},
    {"bean", "COFFEE BEANS", 16, Group::farm},
    {"coffee", "GROUND COFFEE", 110, Group::factory},
};

constexpr std::string_view ALBUM_FARM[] = {
    "egg", "corn", "milk", "hay", "wheat", "sunflower", "fish", "calf", "hen", "tomato", "lettuce", "potato", "honey",
    "apple", "orange", "wool", "bean",
};
constexpr std::string_view ALBUM_FACTORY[] = {
    "flour", "oil", "bread", "mayo", "cookies", "donut", "icecream", "cake", "meat", "drumstick", "cheese",
    "apple_juice", "orange_juice", "blanket", "coffee",
};
constexpr std::string_view ALBUM_DISHES[] = {"grilled_fish", "grilled_chicken", "steak", "burger", "breakfast"};
constexpr AlbumGroup ALBUM[] = {
    {"FARM GOODS", ALBUM_FARM}, {"FACTORY GOODS", ALBUM_FACTORY}, {"DISHES", ALBUM_DISHES},
};

constexpr std::string_view MARKET[] = {
    "egg", "milk", "wheat", "flour", "sunflower", "oil", "fish", "calf", "hen", "meat", "drumstick", "cheese", "tomato",
    "lettuce", "potato", "corn", "hay", "bread", "mayo", "cookies", "donut", "cake", "icecream", "grilled_fish",
    "grilled_chicken", "steak", "burger", "honey", "apple", "orange", "apple_juice", "orange_juice", "wool", "blanket",
    "bean", "coffee", "breakfast",
};

constexpr BedColor BEDS[] = {
    {"wheat", 0xb39a52}, {"sunflower", 0x6d8f3a}, {"tomato", 0x8d6e4a}, {"lettuce", 0x7a5c3a},
    {"potato", 0x6b4a2e}, {"corn", 0x8d6e4a}, {"hay", 0x7a6a3a},
};
// clang-format on

constexpr uint32_t PLAIN_EARTH = 0x7a5c3a;

} // namespace

std::span<const Good> goods() {
    return GOODS;
}

const Good *find_good(std::string_view kind) {
    for (const Good &g : GOODS) {
        if (g.kind == kind) {
            return &g;
        }
    }
    return nullptr;
}

std::span<const AlbumGroup> album_groups() {
    return ALBUM;
}

std::span<const std::string_view> market_goods() {
    return MARKET;
}

std::span<const BedColor> bed_colors() {
    return BEDS;
}

uint32_t bed_color(std::string_view crop) {
    for (const BedColor &b : BEDS) {
        if (b.crop == crop) {
            return b.rgb;
        }
    }
    return PLAIN_EARTH;
}

bool is_dish(std::string_view kind) {
    const Good *good = find_good(kind);
    return good != nullptr && good->group == Group::dish;
}

bool is_live_animal(std::string_view kind) {
    return kind == "calf" || kind == "hen";
}

} // namespace tilm::rules
