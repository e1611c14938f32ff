#pragma once

#include <godot_cpp/variant/internal/packed_array.hpp>
#include <godot_cpp/variant/internal/string_class.hpp>

namespace godot {

class PackedByteArray
    : public internal::PackedBase<PackedByteArray, uint8_t, GDEXTENSION_VARIANT_TYPE_PACKED_BYTE_ARRAY> {
    GDE_PACKED_ARRAY(PackedByteArray, uint8_t, GDEXTENSION_VARIANT_TYPE_PACKED_BYTE_ARRAY,
                     packed_byte_array_operator_index)

#include <godot_cpp/gen/packed_byte_array_methods.inc>
};

} // namespace godot
