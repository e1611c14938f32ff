#include "rules/staff.h"

#include <array>

namespace tilm::rules {

int staff_level(int64_t experience) {
    static constexpr std::array<int64_t, staff_top_level - 1> below = {25, 75, 150, 250, 375, 525, 700, 900, 1125};
    int level = 1;
    for (int64_t limit : below) {
        if (experience < limit) {
            break;
        }
        ++level;
    }
    return level;
}

double staff_speed(double base, int level) {
    return (1.0 + (level - 1) * 0.07) * base;
}

int64_t staff_capacity(int64_t base, int level, int64_t extra, bool covering) {
    return (base + level - 1 + extra) * (covering ? 2 : 1);
}

} // namespace tilm::rules
