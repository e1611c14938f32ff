#pragma once

#include <godot_cpp/variant/internal/packed_array.hpp>

namespace godot {

class PackedFloat32Array
    : public internal::PackedBase<PackedFloat32Array, float, GDEXTENSION_VARIANT_TYPE_PACKED_FLOAT32_ARRAY> {
    GDE_PACKED_ARRAY(PackedFloat32Array, float, GDEXTENSION_VARIANT_TYPE_PACKED_FLOAT32_ARRAY,
                     packed_float32_array_operator_index)

#include <godot_cpp/gen/packed_float32_array_methods.inc>
};

} // namespace godot
