#include "rules/offline.h"

#include <algorithm>
#include <cmath>

#include "rules/rounding.h"

namespace tilm::rules {

namespace {

constexpr float DISCOUNT = 0.3f;
constexpr double LEVEL_RATE = 0.15; // dollars a second and level of a farm whose income is not known
constexpr double LEAST_RATE = 0.4;
constexpr double MOST_RATE = 1e9; // beyond what any farm earns: a damaged save
constexpr int64_t LEAST_PAY = 10;

} // namespace

void EarnRates::take_in(int64_t dollars, double seconds) {
    const double rate = static_cast<double>(dollars) / seconds;
    fast = fast <= 0 ? rate : fast + (rate - fast) * 0.3;
    slow = slow <= 0 ? fast : slow + (rate - slow) * 0.05;
}

OfflinePay offline_pay(int64_t away, int64_t total_levels, double fast) {
    OfflinePay out;
    if (away < absence_least || total_levels < absence_levels) {
        return out;
    }
    out.seconds = std::min(away, absence_most);
    const bool known = std::isfinite(fast) && fast > 0;
    out.rate = known ? std::min(fast, MOST_RATE) : static_cast<double>(total_levels) * LEVEL_RATE + LEAST_RATE;
    // In single precision: whole dollars of big sums are those of the formula, not of a finer one.
    const float sum = static_cast<float>(out.seconds) * static_cast<float>(out.rate) * DISCOUNT;
    const int64_t paid = safe_int(sum);
    out.paid = paid < LEAST_PAY ? 0 : paid;
    return out;
}

std::string absence_text(int64_t seconds) {
    const int64_t minutes = std::max<int64_t>(0, seconds) / 60;
    if (minutes < 60) {
        return std::to_string(minutes) + " MIN";
    }
    return std::to_string(minutes / 60) + "H " + std::to_string(minutes % 60) + "M";
}

} // namespace tilm::rules
