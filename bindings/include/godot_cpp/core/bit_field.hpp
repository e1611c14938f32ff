#pragma once

#include <godot_cpp/variant/variant.hpp>

namespace godot {

// A set of flags from an enum.
template <typename T>
class BitField {
    int64_t value = 0;

public:
    constexpr BitField() = default;
    constexpr BitField(int64_t v) : value(v) {}
    constexpr BitField(T v) : value(int64_t(v)) {}
    constexpr BitField &set_flag(T f) {
        value |= int64_t(f);
        return *this;
    }
    constexpr void clear_flag(T f) { value &= ~int64_t(f); }
    constexpr bool has_flag(T f) const { return value & int64_t(f); }
    constexpr void clear() { value = 0; }
    constexpr bool is_empty() const { return value == 0; }
    constexpr operator int64_t() const { return value; }
    constexpr operator Variant() const { return value; }
    constexpr BitField operator|(const BitField &o) const { return BitField(value | o.value); }
    constexpr BitField operator&(const BitField &o) const { return BitField(value & o.value); }
};

} // namespace godot
