#pragma once
// Launch options that a World reads while it builds: set by Main from the command line, before any World is made.

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace tilm {

struct WorldOptions {
    bool max_farm = false;    // every entry stands at its last level
    bool hide_player = false; // the player waits out of sight, the camera keeps its place
    bool autoplay = false;    // the bot plays
    bool coffee = false;
    bool annex = false;
    bool tutorial = false;
    double at_x = std::numeric_limits<double>::infinity(); // start of the player; infinity: as saved
    double at_z = std::numeric_limits<double>::infinity();
    double zoom = 1.0;            // camera distance factor, at least 1
    int stage = 0;                // the n cheapest things to buy after the load
    std::optional<int64_t> money; // set after the load, not on a visit
    int64_t away = -1;            // seconds away for the next load, -1: as measured
    double day_clock = -1.0;      // workday clock 0..480, -1: as saved
    int visit_peer = 0;           // whose farm is shown: 0 the own one

    bool given_place() const { return std::isfinite(at_x) || std::isfinite(at_z); }

    static WorldOptions &get() {
        static WorldOptions options;
        return options;
    }
};

} // namespace tilm
