#include "rules/regions.h"

namespace tilm::rules {

namespace {

// clang-format off
constexpr Region REGIONS[] = {
    {"service",  -72, "SERVICES",      "",              0},
    {"oil",      -48, "OIL PRESS",     "land_oil",      9},
    {"dairy",    -24, "DAIRY FARM",    "land_dairy",    4},
    {"eggs",       0, "EGG FARM",      "",              0},
    {"mill",      24, "FLOUR MILL",    "land_mill",     6},
    {"food",      48, "FOOD FACTORY",  "land_food",     8},
    {"sweets",    72, "SWEET FACTORY", "land_sweets",  13},
    {"fish",      96, "FISH FARM",     "land_fish",    15},
    {"ranch",    120, "CATTLE RANCH",  "land_ranch",   16},
    {"poultry",  144, "POULTRY FARM",  "land_poultry", 17},
    {"creamery", 168, "CREAMERY",      "land_creamery", 18},
    {"garden",   192, "VEGGIE GARDEN", "land_garden",  19},
    {"court",    216, "FOOD COURT",    "land_court",   21},
    {"burger",   240, "BURGER TOWN",   "land_burger",  22},
    {"apiary",   264, "APIARY",        "land_apiary",  23},
    {"orchard",  288, "ORCHARD",       "land_orchard", 24},
    {"wool",     312, "SHEEP FARM",    "land_wool",    25},
    {"diner",    336, "DINER",         "land_diner",   26},
    {"coffee",   360, "COFFEE FARM",   "land_coffee",  27},
    {"ext1",     384, "NEW LAND 1",    "land_ext1",    28},
    {"ext2",     408, "NEW LAND 2",    "land_ext2",    29},
    {"ext3",     432, "NEW LAND 3",    "land_ext3",    30},
    {"ext4",     456, "NEW LAND 4",    "land_ext4",    31},
    {"ext5",     480, "NEW LAND 5",    "land_ext5",    32},
    {"ext6",     504, "NEW LAND 6",    "land_ext6",    33},
};

constexpr RegionScale SCALES[] = {
    {"oil", 0.75F},     {"food", 0.75F},     {"sweets", 0.6F},   {"eggs", 1.0F},     {"dairy", 1.0F},
    {"mill", 1.0F},     {"fish", 0.42F},     {"ranch", 0.3F},    {"poultry", 0.22F}, {"creamery", 0.2F},
    {"garden", 0.21F},  {"court", 0.085F},   {"burger", 0.07F},  {"apiary", 0.07F},  {"orchard", 0.065F},
    {"wool", 0.06F},    {"diner", 0.055F},   {"coffee", 0.05F},  {"ext1", 0.05F},    {"ext2", 0.05F},
    {"ext3", 0.05F},    {"ext4", 0.05F},     {"ext5", 0.05F},    {"ext6", 0.05F},
};

constexpr std::string_view LEVELLED[] = {
    "producer", "machine", "factory", "restaurant", "harvester", "depot", "pantry",
};
// clang-format on

constexpr float LOT_OFFSET = 6.0F;
constexpr float FRONT_ROW = -10.5F;
constexpr float BACK_ROW = -26.0F;

bool in_back_row(int64_t slot) {
    return slot < 2;
}

} // namespace

std::span<const Region> regions() {
    return REGIONS;
}

const Region *find_region(std::string_view id) {
    for (const Region &r : REGIONS) {
        if (r.id == id) {
            return &r;
        }
    }
    return nullptr;
}

std::span<const RegionScale> region_scales() {
    return SCALES;
}

std::span<const std::string_view> levelled_kinds() {
    return LEVELLED;
}

int unlock_level(std::string_view entry_id) {
    for (const Region &r : REGIONS) {
        if (!r.land.empty() && r.land == entry_id) {
            return r.gate;
        }
    }
    return 0;
}

int lot_count(std::string_view region) {
    return region.starts_with("ext") ? 4 : 2;
}

float lot_x(float region_x, int64_t slot) {
    return region_x + (slot % 2 == 0 ? -LOT_OFFSET : LOT_OFFSET);
}

float lot_row(int64_t slot) {
    return in_back_row(slot) ? BACK_ROW : FRONT_ROW;
}

Rect lot_footprint(float region_x, int64_t slot) {
    return {lot_x(region_x, slot) - 4.8F, in_back_row(slot) ? -32.3F : -16.8F, 9.6F, 10.6F};
}

Rect lot_pad(float region_x, int64_t slot) {
    return {lot_x(region_x, slot) - 1.4F, in_back_row(slot) ? -21.6F : -6.1F, 2.8F, 2.8F};
}

Rect lot_bed(float region_x, int64_t slot) {
    return {lot_x(region_x, slot) - 3.3F, in_back_row(slot) ? -30.8F : -15.3F, 6.6F, 7.6F};
}

bool lot_overlaps(float region_x, int64_t slot, const Rect &ground) {
    return lot_footprint(region_x, slot).overlaps(ground) || lot_pad(region_x, slot).overlaps(ground);
}

} // namespace tilm::rules
