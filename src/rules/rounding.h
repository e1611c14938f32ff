#pragma once
// The one way that the game rounds, and number conversions that cannot misbehave.

#include <cmath>
#include <cstdint>
#include <limits>

namespace tilm::rules {

// A double as a whole number: not-a-number gives 0, what lies outside gives the nearest end.
inline int64_t safe_int(double v) {
    constexpr double LIMIT = 9223372036854775808.0;
    if (std::isnan(v)) {
        return 0;
    }
    if (v >= LIMIT) {
        return std::numeric_limits<int64_t>::max();
    }
    if (v < -LIMIT) {
        return std::numeric_limits<int64_t>::min();
    }
    return static_cast<int64_t>(v);
}

// Half away from zero.
inline int64_t round_half_away(double v) {
    return safe_int(std::round(v));
}

} // namespace tilm::rules
