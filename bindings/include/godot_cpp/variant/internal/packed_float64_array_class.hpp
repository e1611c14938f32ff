#pragma once

#include <godot_cpp/variant/internal/packed_array.hpp>

namespace godot {

class PackedFloat64Array
    : public internal::PackedBase<PackedFloat64Array, double, GDEXTENSION_VARIANT_TYPE_PACKED_FLOAT64_ARRAY> {
    GDE_PACKED_ARRAY(PackedFloat64Array, double, GDEXTENSION_VARIANT_TYPE_PACKED_FLOAT64_ARRAY,
                     packed_float64_array_operator_index)

#include <godot_cpp/gen/packed_float64_array_methods.inc>
};

} // namespace godot
