#pragma once

#include <godot_cpp/variant/internal/packed_array.hpp>
#include <godot_cpp/variant/vector4.hpp>

namespace godot {

class PackedVector4Array
    : public internal::PackedBase<PackedVector4Array, Vector4, GDEXTENSION_VARIANT_TYPE_PACKED_VECTOR4_ARRAY> {
    GDE_PACKED_ARRAY(PackedVector4Array, Vector4, GDEXTENSION_VARIANT_TYPE_PACKED_VECTOR4_ARRAY,
                     packed_vector4_array_operator_index)

#include <godot_cpp/gen/packed_vector4_array_methods.inc>
};

} // namespace godot
