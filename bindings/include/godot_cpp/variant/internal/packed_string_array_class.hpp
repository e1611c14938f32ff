#pragma once

#include <godot_cpp/variant/internal/packed_array.hpp>
#include <godot_cpp/variant/internal/string_class.hpp>

namespace godot {

class PackedStringArray
    : public internal::PackedBase<PackedStringArray, String, GDEXTENSION_VARIANT_TYPE_PACKED_STRING_ARRAY> {
    GDE_PACKED_ARRAY(PackedStringArray, String, GDEXTENSION_VARIANT_TYPE_PACKED_STRING_ARRAY,
                     packed_string_array_operator_index)

#include <godot_cpp/gen/packed_string_array_methods.inc>
};

} // namespace godot
