#pragma once
// Arithmetic of truck orders, their pay, dock stars and the supply van.

#include <cstdint>

namespace tilm::rules {

inline constexpr double truck_slow_after = 1.6; // times the good time: the pay falls to a half
inline constexpr double truck_late_after = 4.0; // times the good time: the trader leaves
inline constexpr double van_trip_seconds = 4.6; // drive in, unload, drive out
inline constexpr int van_stock = 24;            // of each kind in a depot without a van

// Share of the pay after `elapsed` seconds at the dock: 1, 0.75 or 0.5.
double truck_speed_mult(double elapsed, double good_time);
bool truck_hurries(double elapsed, double good_time);
bool truck_is_late(double elapsed, double good_time);

// Goods of one kind on an order, from a roll of 0..4 (market truck) or 0..2 (dock) and the orders done before.
int64_t main_order_count(int64_t roll, int64_t served);
int64_t dock_order_count(int64_t roll, int64_t served, int64_t base);
int64_t vip_order_count(int64_t count);
int64_t vip_second_count(int64_t base);
// Seconds for the best pay, from the goods on all lines.
double truck_good_time(int64_t goods, bool vip, bool night);

struct TruckPay {
    double tips = 1.0;
    int64_t stars = 0;
    double speed_mult = 1.0;
    bool dock = false;
    bool vip = false;
};
// What an order pays whose goods are worth `value` dollars.
int64_t truck_reward(double value, const TruckPay &pay);
// What a trader who leaves pays for goods worth `value` dollars.
int64_t truck_late_pay(int64_t value);
// Seconds to the next fall of the pay, rounded up, 0 at the least.
int64_t truck_seconds_left(double elapsed, double good_time);

// Stars after a quick order, from the quick orders done before it.
int dock_stars(int64_t done_before);

// Seconds that the van rests between two trips.
double van_pause(int64_t level, bool night);
// Rounds of one good each kind that a trip brings.
int64_t van_rounds(int64_t level);
// What a depot with a van holds of each kind, at least.
int64_t van_kind_limit(int64_t level);

} // namespace tilm::rules
