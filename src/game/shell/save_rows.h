#pragma once
// Farm documents as they are taken from a file: whole numbers made whole, values of a wrong type left out.

#include <cstdint>

#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

// Mends a farm document in place. Sections of a wrong type go, so that they read as their system's default; each is
// named in `faults`. Keys that are not known stay.
void mend_farm(Dictionary farm, const String &label, PackedStringArray &faults);

// Rows {id, name, farm} from what the file holds under `farms`; rows that are no dictionaries are dropped and named.
Array mended_rows(const Array &stored, PackedStringArray &faults);

Dictionary farm_row(const String &id, const String &name, const Dictionary &farm);

String random_id(); // eight hexadecimal digits

} // namespace tilm
