#pragma once
// How hired people grow: levels by experience, speed and load by level.

#include <cstdint>

namespace tilm::rules {

inline constexpr int staff_top_level = 10;

// 1 to 10.
int staff_level(int64_t experience);
double staff_speed(double base, int level);
int64_t staff_capacity(int64_t base, int level, int64_t extra, bool covering);

} // namespace tilm::rules
