#include "rules/offline.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace tilm::rules {
namespace {

TEST(Offline, AbsencesThatArePaid) {
    struct Case {
        int64_t away;
        int64_t levels;
        double rate;
        int64_t seconds;
        int64_t paid;
    };
    const Case cases[] = {
        {119, 50, 10.0, 0, 0},                     // too short
        {120, 50, 10.0, 120, 360},                 // just long enough
        {-5000, 50, 10.0, 0, 0},                   // the clock was set back
        {100000, 3, 10.0, 0, 0},                   // too small a farm
        {1000, 10, 0.0, 1000, 570},                // income unknown: 1.9 a second
        {1000, 10, -3.0, 1000, 570},               // a damaged save
        {259200, 40, 2.0, 28800, 17280},           // three days count as eight hours
        {120, 4, 0.25, 120, 0},                    // 9.0 is not worth a dialog
        {150, 4, 0.2445, 150, 11},                 // 11.0025 is
        {28800, 2172, 1e15, 28800, 8640000425984}, // a damaged save pays what the best farm could
    };
    for (const Case &c : cases) {
        const OfflinePay pay = offline_pay(c.away, c.levels, c.rate);
        EXPECT_EQ(pay.seconds, c.seconds) << c.away << " s, " << c.levels << " levels";
        EXPECT_EQ(pay.paid, c.paid) << c.away << " s, " << c.levels << " levels";
    }
    EXPECT_TRUE(offline_pay(28800, 4, 1).capped());
    EXPECT_FALSE(offline_pay(28799, 4, 1).capped());
    EXPECT_EQ(offline_pay(1000, 10, std::numeric_limits<double>::quiet_NaN()).paid, 570);
    EXPECT_EQ(offline_pay(1000, 10, std::numeric_limits<double>::infinity()).paid, 570);
}

TEST(Offline, AveragesFollowTheIncome) {
    EarnRates rates;
    rates.take_in(600, 60.0); // the first minute is taken as it is, by both
    EXPECT_DOUBLE_EQ(rates.fast, 10.0);
    EXPECT_DOUBLE_EQ(rates.slow, 10.0);
    rates.take_in(1200, 60.0);
    EXPECT_DOUBLE_EQ(rates.fast, 13.0);
    EXPECT_DOUBLE_EQ(rates.slow, 10.5);
    rates = {4.0, 0.0};
    rates.take_in(0, 60.0); // an old save without the slow one begins with the new fast one
    EXPECT_DOUBLE_EQ(rates.fast, 2.8);
    EXPECT_DOUBLE_EQ(rates.slow, 2.8);
    for (int minute = 0; minute < 500; minute++) {
        rates.take_in(60, 60.0);
    }
    EXPECT_NEAR(rates.fast, 1.0, 1e-6);
    EXPECT_NEAR(rates.slow, 1.0, 1e-6);
}

TEST(Offline, AbsenceInWords) {
    EXPECT_EQ(absence_text(120), "2 MIN");
    EXPECT_EQ(absence_text(3599), "59 MIN");
    EXPECT_EQ(absence_text(3600), "1H 0M");
    EXPECT_EQ(absence_text(28800), "8H 0M");
}

} // namespace
} // namespace tilm::rules
