#pragma once

#include <godot_cpp/variant/utility_functions.hpp>

namespace godot {

template <typename... Args>
void print_line(const Variant &first, const Args &...args) {
    UtilityFunctions::print(first, args...);
}
template <typename... Args>
void print_error(const Variant &first, const Args &...args) {
    UtilityFunctions::printerr(first, args...);
}
template <typename... Args>
void print_verbose(const Variant &first, const Args &...args) {
    UtilityFunctions::print_verbose(first, args...);
}

} // namespace godot
