#pragma once
// What a remote player carries, as its record tells: "egg:3,milk:2". The text comes from outside.

#include <string_view>
#include <utility>
#include <vector>

namespace tilm::rules {

constexpr int carry_max = 60; // of a kind, and of all that is shown

// The known goods with their counts, each 0..carry_max, in the order in which they first come; a kind that comes again
// takes the later count. A count that is no number is 0. Text beyond any honest length is not read.
std::vector<std::pair<std::string_view, int>> parse_carry(std::string_view text);

} // namespace tilm::rules
