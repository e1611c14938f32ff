#pragma once
// What a farm earns while nobody plays: running averages of the cash collected, and the pay for an absence.

#include <cstdint>
#include <string>

namespace tilm::rules {

constexpr int64_t absence_least = 120; // seconds
constexpr int64_t absence_most = 28800;
constexpr int64_t absence_levels = 4; // total levels of the smallest farm that is paid
constexpr double rate_period = 60.0;  // seconds between two updates of the averages

// Running averages of the cash collected, dollars a second: the fast one pays absences, the slow one is for reports.
struct EarnRates {
    double fast = 0;
    double slow = 0;

    // Takes in `dollars` collected over `seconds` (above 0).
    void take_in(int64_t dollars, double seconds);
};

struct OfflinePay {
    int64_t seconds = 0; // the part of the absence that counts
    double rate = 0;     // dollars a second, before the discount
    int64_t paid = 0;    // 0: nothing is due
    bool capped() const { return seconds >= absence_most; }
};

// The pay for `away` seconds (may be negative) on a farm with this sum of levels; `fast` as in EarnRates.
OfflinePay offline_pay(int64_t away, int64_t total_levels, double fast);

// "37 MIN" or "2H 5M".
std::string absence_text(int64_t seconds);

} // namespace tilm::rules
