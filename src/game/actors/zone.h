#pragma once
// The zone class of the game.

#include "farm_items/zone_core.h"

namespace tilm {
using namespace godot;

class Zone : public ZoneCore {
    GDCLASS(Zone, ZoneCore)

public:
    // A zone on the floor; `mode` is "take" or "give".
    static Ref<Zone> make(const String &mode, PileCore *pile, const Vector3 &pos, const Vector2 &size,
                          const String &group = String());

protected:
    static void _bind_methods() {}
};

} // namespace tilm
