#pragma once
// Puts the light of an hour on the farm: sun, sky, fog, and the shaders' global parameters. Called by whoever keeps the
// clock; without one it stays a spring noon.

#include <godot_cpp/classes/node3d.hpp>

#include "rules/daylight.h"

namespace tilm {
using namespace godot;

struct FarmLight {
    // `light` is what Scenery::light() returned. Cheap when nothing has changed that shows.
    static void apply(Node3D *light, const rules::SkyState &sky);
    // For one season: `season` 0..3 from spring, `wet` and `snow` 0..1.
    static void apply(Node3D *light, double hour, int season, float wet, float snow);
    // Once more as last told, after the sun's own settings were changed.
    static void refresh(Node3D *light);
    static const rules::SkyState &current();
    static bool night_now(); // lamps are lit
    // Things with this group are shown by night only.
    static constexpr const char *NIGHT_GROUP = "night_glow";
};

} // namespace tilm
