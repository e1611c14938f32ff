#pragma once
// The farm's level, which follows from one number: the sum of the levels of everything bought.

#include <cstdint>

namespace tilm::rules {

// Total levels at which farm level n ends: round(6 n^1.7); 0 for n below 1.
int64_t level_threshold(int64_t n);

// The farm's level (1 or more) with this total.
int64_t level_for(int64_t total);

// The total that level n starts at, as the interface shows it; level 1 shows that of level 2.
int64_t level_points(int64_t n);

} // namespace tilm::rules
