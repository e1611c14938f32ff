#pragma once
// Arithmetic of stalls: moods, prices, how fast customers come and are served.

#include <cstdint>

namespace tilm::rules {

inline constexpr int queue_limit = 5;
inline constexpr int vip_extra = 2; // units a VIP buys on top of its order
inline constexpr double vip_share = 0.07;
inline constexpr double swap_seconds = 3.0; // before an empty kind, on a mixed stall
inline constexpr double swap_penalty = 6.0; // seconds of waiting that a changed order costs

// 1.0, 0.7 or 0.4 after `wait` seconds; patience stretches the limits of 30 and 60.
double mood_after(double wait, double patience);
// More than 90 seconds, stretched by patience.
bool gives_up(double wait, double patience);

int64_t unit_price(int64_t level, int64_t base);
// The farm's factors. `charm` is the sum of its decorations', `calm` and `crowd` are boosts.
double customer_patience(double charm, bool calm);
double customer_gap(bool night, bool crowd);
double price_factor(double charm, bool night);

// Seconds for one unit over the counter.
double serving_delay(int64_t level);
// 0 up to a quarter of a full counter (96 goods), 1 when full.
double counter_fullness(int64_t stocked);
// Seconds to the next customer.
double spawn_gap(bool rush, double mult, int64_t stocked);
// Units that a full counter adds to an order of 2 to 4.
int64_t order_bonus(int64_t stocked);
// What one unit sells for, at least 1. `unit` already holds the farm's price factor.
int64_t price_each(double unit, double kind_mult, bool vip, double mood);
// Share of one kind in the 96 places of a stall.
int64_t stock_share(int64_t kinds);

} // namespace tilm::rules
