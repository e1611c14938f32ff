#include "rules/daylight.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace tilm::rules {
namespace {

SkyState sky_at(double hour, int season = 0, float wet = 0, float snow = 0) {
    SkyState sky;
    sky.hour = hour;
    sky.season = {};
    sky.season[static_cast<size_t>(season)] = 1;
    sky.wet = wet;
    sky.snow = snow;
    return sky;
}

float apart(const Tint &a, const Tint &b) {
    return std::max({std::fabs(a.r - b.r), std::fabs(a.g - b.g), std::fabs(a.b - b.b)});
}

float apart(const Daylight &a, const Daylight &b) {
    return std::max({apart(a.sun, b.sun), apart(a.ambient, b.ambient), apart(a.top, b.top), apart(a.horizon, b.horizon),
                     apart(a.shade, b.shade), apart(a.rim, b.rim), std::fabs(a.sun_power - b.sun_power),
                     std::fabs(a.ambient_power - b.ambient_power), std::fabs(a.darkness - b.darkness),
                     std::fabs(a.height - b.height) / 90, std::fabs(a.turn - b.turn) / 90,
                     std::fabs(a.fog_end - b.fog_end) / 120});
}

template <class Check>
void every_sky(Check check) {
    for (int season = 0; season < 4; season++) {
        for (const float wet : {0.0F, 1.0F}) {
            for (const float snow : {0.0F, 1.0F}) {
                for (int minute = 0; minute < 24 * 60; minute += 5) {
                    check(sky_at(minute / 60.0, season, wet, snow));
                }
            }
        }
    }
}

TEST(Daylight, NothingJumpsNotEvenAtMidnight) {
    every_sky([](const SkyState &sky) {
        SkyState next = sky;
        next.hour += 1.0 / 60;
        ASSERT_LT(apart(daylight(sky), daylight(next)), 0.02F) << sky.hour;
    });
    for (float k = 0; k < 1; k += 0.01F) {
        for (int season = 0; season < 4; season++) {
            SkyState a = sky_at(9), b = a;
            a.season = b.season = {};
            a.season[0] = 1 - k;
            a.season[static_cast<size_t>(season)] = a.wet = k;
            b.season[0] = 0.99F - k;
            b.season[static_cast<size_t>(season)] = b.wet = k + 0.01F;
            ASSERT_LT(apart(daylight(a), daylight(b)), 0.02F);
        }
    }
}

TEST(Daylight, NeverBlackNeverBurntOutAlwaysCoolInTheShade) {
    const float noon = luma(daylight(SkyState()).ambient);
    every_sky([noon](const SkyState &sky) {
        const Daylight d = daylight(sky);
        const float ambient = luma(d.ambient) * d.ambient_power;
        ASSERT_GT(ambient, 0.6F * noon) << sky.hour;
        // With a shadowed sun of 0.36 on top, as drawn: white still has room to its limit.
        ASSERT_LT(ambient + 0.36F * d.sun_power * luma(d.sun) * 1.5F, 1.05F) << sky.hour;
        ASSERT_GT(d.ambient.b, d.ambient.r) << sky.hour;
        ASSERT_GE(d.height, 25) << sky.hour;
        ASSERT_LE(d.height, 60) << sky.hour;
        ASSERT_GE(d.turn, 20) << sky.hour; // two faces of a box always differ
        ASSERT_LT(d.fog_begin, d.fog_end);
        for (const Tint &c : {d.sun, d.ambient, d.top, d.horizon, d.rim}) {
            ASSERT_GE(std::min({c.r, c.g, c.b}), 0.0F);
            ASSERT_LE(std::max({c.r, c.g, c.b}), 1.07F);
        }
    });
}

TEST(Daylight, HoursSeasonsAndWeatherLookLikeThemselves) {
    const Daylight noon = daylight(sky_at(12)), night = daylight(sky_at(23)), dusk = daylight(sky_at(19.2));
    EXPECT_FLOAT_EQ(noon.height, 50);
    EXPECT_FLOAT_EQ(noon.turn, 40);
    EXPECT_GT(noon.sun.r, noon.sun.b);
    EXPECT_EQ(noon.darkness, 0);
    EXPECT_EQ(night.darkness, 1);
    EXPECT_LT(night.sun_power, 0.5F);
    EXPECT_GT(night.sun.b, night.sun.r);
    EXPECT_GT(dusk.horizon.r, dusk.horizon.b + 0.3F);
    EXPECT_GT(daylight(sky_at(12, 2)).sun.r - daylight(sky_at(12, 2)).sun.b, noon.sun.r - noon.sun.b);
    const Daylight rain = daylight(sky_at(12, 0, 1)), snow = daylight(sky_at(12, 3, 0, 1));
    EXPECT_LT(rain.sun_power, 0.7F);
    EXPECT_LT(luma(rain.horizon), luma(noon.horizon));
    EXPECT_LT(snow.fog_end, rain.fog_end);
    SkyState strike = sky_at(23);
    strike.flash = 1;
    EXPECT_GT(luma(daylight(strike).ambient), 2 * luma(night.ambient) - 0.1F);
    SkyState broken;
    broken.hour = std::numeric_limits<double>::quiet_NaN();
    broken.wet = std::numeric_limits<float>::infinity();
    EXPECT_EQ(apart(daylight(broken), noon), 0);
}

TEST(Daylight, TheDayClockTellsTheHour) {
    EXPECT_DOUBLE_EQ(hour_of_clock(0), 6);
    EXPECT_DOUBLE_EQ(hour_of_clock(330), 19);
    EXPECT_DOUBLE_EQ(hour_of_clock(330 + 7.0 / 11 * 150), 2);
    EXPECT_DOUBLE_EQ(hour_of_clock(480), 6);
    // The night market's span, 345 up to 465, is dark from end to end.
    for (double t = 345; t < 465; t++) {
        SkyState sky;
        sky.hour = hour_of_clock(t);
        EXPECT_GT(daylight(sky).darkness, 0.7F) << t;
    }
}

} // namespace
} // namespace tilm::rules
