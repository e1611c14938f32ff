#pragma once

#include <godot_cpp/variant/internal/packed_array.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace godot {

class PackedVector3Array
    : public internal::PackedBase<PackedVector3Array, Vector3, GDEXTENSION_VARIANT_TYPE_PACKED_VECTOR3_ARRAY> {
    GDE_PACKED_ARRAY(PackedVector3Array, Vector3, GDEXTENSION_VARIANT_TYPE_PACKED_VECTOR3_ARRAY,
                     packed_vector3_array_operator_index)

#include <godot_cpp/gen/packed_vector3_array_methods.inc>
};

} // namespace godot
