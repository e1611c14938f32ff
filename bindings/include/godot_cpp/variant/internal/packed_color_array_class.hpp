#pragma once

#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/internal/packed_array.hpp>

namespace godot {

class PackedColorArray
    : public internal::PackedBase<PackedColorArray, Color, GDEXTENSION_VARIANT_TYPE_PACKED_COLOR_ARRAY> {
    GDE_PACKED_ARRAY(PackedColorArray, Color, GDEXTENSION_VARIANT_TYPE_PACKED_COLOR_ARRAY,
                     packed_color_array_operator_index)

#include <godot_cpp/gen/packed_color_array_methods.inc>
};

} // namespace godot
