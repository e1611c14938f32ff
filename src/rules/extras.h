#pragma once
// Buildings that the player may add to free lots, and the plan entries that they copy.

#include <span>
#include <string_view>

namespace tilm::rules {

struct ExtraType {
    std::string_view type;
    std::string_view title;
    std::string_view kind; // of the entry it makes
    std::string_view product;
    std::string_view region;   // where it is at home
    std::string_view plan_id;  // the entry whose prices and recipe it takes
    std::string_view carry_to; // machines: the stall or dock of its output
};

std::span<const ExtraType> extra_types();

} // namespace tilm::rules
