#pragma once
// The water tank of a building: a Dictionary that hangs on its node as the meta `water`.

#include <godot_cpp/core/object.hpp>
#include <godot_cpp/variant/dictionary.hpp>

#include "names.h"
#include "safe_read.h"

namespace tilm {

// Whether the node has a tank and it is empty; what has no tank, or one that tells no level, never is.
inline bool water_dry(const godot::Object *node) {
    if (!node->has_meta(TM_NAME("water"))) {
        return false;
    }
    const godot::Variant tank = node->get_meta(TM_NAME("water"));
    return tank.get_type() == godot::Variant::DICTIONARY && read_real(tank, TM_NAME("level"), 1.0) <= 0.0;
}

} // namespace tilm
