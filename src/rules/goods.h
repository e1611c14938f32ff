#pragma once
// The goods: prices, titles and the groups and orders in which lists show them.

#include <cstdint>
#include <span>
#include <string_view>

namespace tilm::rules {

enum class Group { none, farm, factory, dish };

struct Good {
    std::string_view kind;
    std::string_view title;
    int price; // dollars
    Group group;
};

struct AlbumGroup {
    std::string_view title;
    std::span<const std::string_view> kinds; // in the album's order
};

struct BedColor {
    std::string_view crop;
    uint32_t rgb;
};

std::span<const Good> goods();
const Good *find_good(std::string_view kind);
std::span<const AlbumGroup> album_groups();
std::span<const std::string_view> market_goods();
std::span<const BedColor> bed_colors();
uint32_t bed_color(std::string_view crop);  // 0xrrggbb, plain earth for an unknown crop
bool is_dish(std::string_view kind);        // prepared food
bool is_live_animal(std::string_view kind); // walks on its own legs

} // namespace tilm::rules
