#pragma once
// The light of an hour: rows of colours through the day, bent by season and weather. Colours are encoded as painted,
// 0..1; strengths are shares of the clear noon's.

#include <array>

namespace tilm::rules {

struct Tint {
    float r = 0, g = 0, b = 0;
};

struct SkyState {
    double hour = 12;                           // 0 up to 24
    std::array<float, 4> season = {1, 0, 0, 0}; // shares of spring, summer, autumn, winter, each 0..1
    float wet = 0;                              // 0..1, rain on the ground
    float snow = 0;                             // 0..1, how thick snow falls
    float flash = 0;                            // 0..1, lightning
};

struct Daylight {
    Tint sun, ambient;
    float sun_power = 1, ambient_power = 1;
    float height = 50, turn = 40; // of the sun: degrees above the ground, and off the camera to the left
    Tint top, horizon;            // of the sky; fog has the horizon's colour
    float fog_begin = 26, fog_end = 120;
    Tint key, shade, rim; // what models multiply sunlight, shadow fill and edge light by
    float darkness = 0;   // 0 by day, 1 by night
};

Daylight daylight(const SkyState &sky);

// Hour of day, 0 up to 24, on the day clock of 480 units: 0 is 06:00, 330 is 19:00.
double hour_of_clock(double t);

// How bright a colour looks, 0..1.
float luma(const Tint &c);

} // namespace tilm::rules
