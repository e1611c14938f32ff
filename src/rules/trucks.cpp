#include "rules/trucks.h"

#include <algorithm>
#include <cmath>

#include "rules/rounding.h"

namespace tilm::rules {

namespace {

// Levels and scales far beyond any game: the sums below stay whole numbers.
int64_t sane(int64_t n) {
    return std::clamp<int64_t>(n, 0, 1000000);
}

double pay_limit(double elapsed, double good_time) {
    if (elapsed <= good_time) {
        return good_time;
    }
    return good_time * (elapsed <= truck_slow_after * good_time ? truck_slow_after : truck_late_after);
}

} // namespace

double truck_speed_mult(double elapsed, double good_time) {
    if (elapsed <= good_time) {
        return 1.0;
    }
    return elapsed <= truck_slow_after * good_time ? 0.75 : 0.5;
}

bool truck_hurries(double elapsed, double good_time) {
    return elapsed > truck_slow_after * good_time;
}

bool truck_is_late(double elapsed, double good_time) {
    return elapsed >= truck_late_after * good_time;
}

int64_t main_order_count(int64_t roll, int64_t served) {
    return roll + std::min<int64_t>(2 * sane(served), 18) + 6;
}

int64_t dock_order_count(int64_t roll, int64_t served, int64_t base) {
    return roll + std::min<int64_t>(sane(served), 8) + 3 * sane(base) + 5;
}

int64_t vip_order_count(int64_t count) {
    return safe_int(static_cast<double>(count) * 1.4);
}

int64_t vip_second_count(int64_t base) {
    return 2 * sane(base) + 6;
}

double truck_good_time(int64_t goods, bool vip, bool night) {
    double seconds = 25.0 + 2.5 * static_cast<double>(goods);
    if (vip) {
        seconds *= 0.8;
    }
    return night ? seconds * 1.4 : seconds;
}

int64_t truck_reward(double value, const TruckPay &pay) {
    const double starred = 1.0 + static_cast<double>(pay.stars) * 0.15;
    const double paid = pay.speed_mult * (pay.dock ? 1.8 : 2.5) * value;
    return safe_int(pay.tips * (starred * paid * (pay.vip ? 2.2 : 1.0)));
}

int64_t truck_late_pay(int64_t value) {
    return safe_int(static_cast<double>(value) * 0.4);
}

int64_t truck_seconds_left(double elapsed, double good_time) {
    return std::max<int64_t>(0, safe_int(std::ceil(pay_limit(elapsed, good_time) - elapsed)));
}

int dock_stars(int64_t done_before) {
    if (done_before >= 14) {
        return 3;
    }
    if (done_before >= 7) {
        return 2;
    }
    return done_before >= 2 ? 1 : 0;
}

double van_pause(int64_t level, bool night) {
    const double every = std::max(6.0, std::pow(0.85, static_cast<double>(level - 1)) * 22.0);
    return std::max(0.0, every * (night ? 2.0 : 1.0) - van_trip_seconds);
}

int64_t van_rounds(int64_t level) {
    return sane(level) * 2 + 6;
}

int64_t van_kind_limit(int64_t level) {
    return sane(level) * 8 + 16;
}

} // namespace tilm::rules
