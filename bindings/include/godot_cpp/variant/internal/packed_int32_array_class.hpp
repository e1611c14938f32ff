#pragma once

#include <godot_cpp/variant/internal/packed_array.hpp>

namespace godot {

class PackedInt32Array
    : public internal::PackedBase<PackedInt32Array, int32_t, GDEXTENSION_VARIANT_TYPE_PACKED_INT32_ARRAY> {
    GDE_PACKED_ARRAY(PackedInt32Array, int32_t, GDEXTENSION_VARIANT_TYPE_PACKED_INT32_ARRAY,
                     packed_int32_array_operator_index)

#include <godot_cpp/gen/packed_int32_array_methods.inc>
};

} // namespace godot
