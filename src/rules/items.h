#pragma once
// How tall one unit of a good lies in a pile or on a back.

#include <string_view>

namespace tilm::rules {

// Metres; 0.3 for a kind that is in no table.
float item_height(std::string_view kind);

// True for the money items "bill", "gold" and "case".
bool is_money_item(std::string_view kind);

} // namespace tilm::rules
