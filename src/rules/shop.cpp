#include "rules/shop.h"

#include <algorithm>
#include <cmath>

#include "rules/rounding.h"

namespace tilm::rules {

namespace {
constexpr double full_counter = 96.0;
}

double mood_after(double wait, double patience) {
    if (wait <= 30.0 * patience) {
        return 1.0;
    }
    return wait <= 60.0 * patience ? 0.7 : 0.4;
}

bool gives_up(double wait, double patience) {
    return wait > 90.0 * patience;
}

int64_t unit_price(int64_t level, int64_t base) {
    return round_half_away((static_cast<double>(level - 1) * 0.35 + 1.0) * static_cast<double>(base));
}

double customer_patience(double charm, bool calm) {
    return (charm / 100.0 + 1.0) * (calm ? 2.0 : 1.0);
}

double customer_gap(bool night, bool crowd) {
    return (night ? 2.0 : 1.0) * (crowd ? 0.5 : 1.0);
}

double price_factor(double charm, bool night) {
    return (charm * 0.004 + 1.0) * (night ? 1.5 : 1.0);
}

double serving_delay(int64_t level) {
    return std::pow(0.85, static_cast<double>(level - 1)) * 0.16;
}

double counter_fullness(int64_t stocked) {
    return std::clamp((static_cast<double>(stocked) / full_counter - 0.25) / 0.75, 0.0, 1.0);
}

double spawn_gap(bool rush, double mult, int64_t stocked) {
    double gap = (rush ? 0.45 : 1.4) * mult * (1.0 - 0.6 * counter_fullness(stocked));
    return stocked == 0 ? gap * 3.0 : gap;
}

int64_t order_bonus(int64_t stocked) {
    return round_half_away(counter_fullness(stocked) * 4.0);
}

int64_t price_each(double unit, double kind_mult, bool vip, double mood) {
    return std::max<int64_t>(1, round_half_away(kind_mult * (vip ? 3.0 : 1.0) * unit * mood));
}

int64_t stock_share(int64_t kinds) {
    return 96 / std::max<int64_t>(1, kinds);
}

} // namespace tilm::rules
