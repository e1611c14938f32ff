#include "rules/levels.h"

#include <algorithm>
#include <cmath>

#include "rules/rounding.h"

namespace tilm::rules {

namespace {
constexpr double FACTOR = 6.0;
constexpr double EXPONENT = 1.7;
} // namespace

int64_t level_threshold(int64_t n) {
    return n < 1 ? 0 : round_half_away(FACTOR * std::pow(static_cast<double>(n), EXPONENT));
}

int64_t level_for(int64_t total) {
    if (total < level_threshold(1)) {
        return 1;
    }
    // The inverse power lands on the level or beside it; the whole-number threshold decides.
    const double guess = std::pow(static_cast<double>(total) / FACTOR, 1.0 / EXPONENT);
    int64_t n = std::max<int64_t>(1, safe_int(guess) - 1);
    while (n > 1 && total < level_threshold(n - 1)) {
        --n;
    }
    while (total >= level_threshold(n) && level_threshold(n) < level_threshold(n + 1)) {
        ++n;
    }
    return n;
}

int64_t level_points(int64_t n) {
    return level_threshold(std::max<int64_t>(n, 2) - 1);
}

} // namespace tilm::rules
