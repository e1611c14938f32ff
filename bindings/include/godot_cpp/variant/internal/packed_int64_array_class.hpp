#pragma once

#include <godot_cpp/variant/internal/packed_array.hpp>

namespace godot {

class PackedInt64Array
    : public internal::PackedBase<PackedInt64Array, int64_t, GDEXTENSION_VARIANT_TYPE_PACKED_INT64_ARRAY> {
    GDE_PACKED_ARRAY(PackedInt64Array, int64_t, GDEXTENSION_VARIANT_TYPE_PACKED_INT64_ARRAY,
                     packed_int64_array_operator_index)

#include <godot_cpp/gen/packed_int64_array_methods.inc>
};

} // namespace godot
