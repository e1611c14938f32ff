#pragma once

#include <initializer_list>

#include <godot_cpp/variant/internal/string_name_class.hpp>

namespace godot {

class Array : public internal::Opaque<GDEXTENSION_VARIANT_TYPE_ARRAY, 1, true> {
    friend class Variant;

public:
    constexpr Array() = default;
    GDE_FROM_VARIANT(Array)
    Array(std::initializer_list<Variant> items);
    Array(const Array &base, int64_t type, const StringName &class_name, const Variant &script);
    Array(const PackedByteArray &from);
    Array(const PackedInt32Array &from);
    Array(const PackedInt64Array &from);
    Array(const PackedFloat32Array &from);
    Array(const PackedFloat64Array &from);
    Array(const PackedStringArray &from);
    Array(const PackedVector2Array &from);
    Array(const PackedVector3Array &from);
    Array(const PackedColorArray &from);
    Array(const PackedVector4Array &from);

    template <typename... Args>
    static Array make(const Args &...args) {
        Array a;
        (a.push_back(args), ...);
        return a;
    }

    // An index out of bounds prints an error and gives a null.
    const Variant &operator[](int64_t index) const;
    Variant &operator[](int64_t index);
    bool operator==(const Array &o) const;
    bool operator!=(const Array &o) const { return !(*this == o); }
    bool operator<(const Array &o) const;
    Array operator+(const Array &o) const;

    void set_typed(uint32_t type, const StringName &class_name, const Variant &script);

    using Iterator = Variant *;
    using ConstIterator = const Variant *;
    Iterator begin();
    Iterator end();
    ConstIterator begin() const;
    ConstIterator end() const;

#include <godot_cpp/gen/array_methods.inc>
};

} // namespace godot
