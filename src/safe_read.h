#pragma once
// Reading of values from documents whose types are not sure: a value of the wrong type reads as the default.

#include <cmath>
#include <cstdint>

#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/string_name.hpp>
#include <godot_cpp/variant/variant.hpp>

#include "rules/rounding.h"

namespace tilm {
using namespace godot;

// A value that is known to hold a T.
template <class T>
T as(const Variant &v) {
    return v;
}

// Whole numbers parsed from JSON arrive as doubles. Booleans count as numbers nowhere.
inline int64_t to_whole(const Variant &v, int64_t otherwise) {
    switch (v.get_type()) {
    case Variant::INT:
        return as<int64_t>(v);
    case Variant::FLOAT:
        return std::isfinite(as<double>(v)) ? rules::safe_int(as<double>(v)) : otherwise;
    default:
        return otherwise;
    }
}

inline double to_real(const Variant &v, double otherwise) {
    switch (v.get_type()) {
    case Variant::INT:
        return static_cast<double>(as<int64_t>(v));
    case Variant::FLOAT:
        return std::isfinite(as<double>(v)) ? as<double>(v) : otherwise;
    default:
        return otherwise;
    }
}

inline int64_t read_whole(const Dictionary &d, const Variant &key, int64_t otherwise = 0) {
    return to_whole(d.get(key, Variant()), otherwise);
}

inline double read_real(const Dictionary &d, const Variant &key, double otherwise = 0.0) {
    return to_real(d.get(key, Variant()), otherwise);
}

inline bool read_flag(const Dictionary &d, const Variant &key, bool otherwise = false) {
    const Variant v = d.get(key, Variant());
    return v.get_type() == Variant::BOOL ? as<bool>(v) : otherwise;
}

inline String read_text(const Dictionary &d, const Variant &key, const String &otherwise = String()) {
    const Variant v = d.get(key, Variant());
    return v.get_type() == Variant::STRING || v.get_type() == Variant::STRING_NAME ? as<String>(v) : otherwise;
}

inline Dictionary read_table(const Dictionary &d, const Variant &key) {
    const Variant v = d.get(key, Variant());
    return v.get_type() == Variant::DICTIONARY ? as<Dictionary>(v) : Dictionary();
}

inline Array read_list(const Dictionary &d, const Variant &key) {
    const Variant v = d.get(key, Variant());
    return v.get_type() == Variant::ARRAY ? as<Array>(v) : Array();
}

} // namespace tilm
