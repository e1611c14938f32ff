#pragma once

#include <godot_cpp/variant/internal/packed_array.hpp>
#include <godot_cpp/variant/vector2.hpp>

namespace godot {

class PackedVector2Array
    : public internal::PackedBase<PackedVector2Array, Vector2, GDEXTENSION_VARIANT_TYPE_PACKED_VECTOR2_ARRAY> {
    GDE_PACKED_ARRAY(PackedVector2Array, Vector2, GDEXTENSION_VARIANT_TYPE_PACKED_VECTOR2_ARRAY,
                     packed_vector2_array_operator_index)

#include <godot_cpp/gen/packed_vector2_array_methods.inc>
};

} // namespace godot
