#pragma once
// Where a remote player is drawn: its position samples read a tenth of a second in the past.

#include <vector>

namespace tilm::rules {

struct GhostSample {
    double t = 0; // seconds
    double x = 0, z = 0;
    double heading = 0; // radians
    double vx = 0, vz = 0;
};

struct GhostPlace {
    double x = 0, z = 0;
    double heading = 0;
};

constexpr double ghost_delay = 0.1;      // seconds in the past
constexpr double ghost_age_limit = 0.25; // seconds that a last sample is carried on along its velocity

// The place at time `now`. `samples` are in the order of their times and must not be empty.
GhostPlace ghost_place(const std::vector<GhostSample> &samples, double now);

} // namespace tilm::rules
