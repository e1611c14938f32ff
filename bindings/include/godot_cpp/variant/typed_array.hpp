#pragma once

#include <godot_cpp/classes/ref.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

namespace internal {
// The element type of a typed array or dictionary.
template <typename T>
struct ElementOf {
    static constexpr Variant::Type type = Variant::OBJECT;
    static const StringName &class_name() { return T::get_class_static(); }
};
template <typename T>
struct ElementOf<T *> : ElementOf<T> {};
template <typename T>
struct ElementOf<Ref<T>> : ElementOf<T> {};
inline const StringName &no_name() {
    static StaticName none{""};
    return none.name();
}
#define GDE_ELEMENT(m_type, m_enum)                                                                                    \
    template <>                                                                                                        \
    struct ElementOf<m_type> {                                                                                         \
        static constexpr Variant::Type type = Variant::m_enum;                                                         \
        static const StringName &class_name() { return no_name(); }                                                    \
    };
GDE_ELEMENT(Variant, NIL)
GDE_ELEMENT(bool, BOOL)
GDE_ELEMENT(uint8_t, INT)
GDE_ELEMENT(int8_t, INT)
GDE_ELEMENT(uint16_t, INT)
GDE_ELEMENT(int16_t, INT)
GDE_ELEMENT(uint32_t, INT)
GDE_ELEMENT(int32_t, INT)
GDE_ELEMENT(uint64_t, INT)
GDE_ELEMENT(int64_t, INT)
GDE_ELEMENT(float, FLOAT)
GDE_ELEMENT(double, FLOAT)
GDE_ELEMENT(String, STRING)
GDE_ELEMENT(Vector2, VECTOR2)
GDE_ELEMENT(Vector2i, VECTOR2I)
GDE_ELEMENT(Rect2, RECT2)
GDE_ELEMENT(Rect2i, RECT2I)
GDE_ELEMENT(Vector3, VECTOR3)
GDE_ELEMENT(Vector3i, VECTOR3I)
GDE_ELEMENT(Transform2D, TRANSFORM2D)
GDE_ELEMENT(Vector4, VECTOR4)
GDE_ELEMENT(Vector4i, VECTOR4I)
GDE_ELEMENT(Plane, PLANE)
GDE_ELEMENT(Quaternion, QUATERNION)
GDE_ELEMENT(AABB, AABB)
GDE_ELEMENT(Basis, BASIS)
GDE_ELEMENT(Transform3D, TRANSFORM3D)
GDE_ELEMENT(Projection, PROJECTION)
GDE_ELEMENT(Color, COLOR)
GDE_ELEMENT(StringName, STRING_NAME)
GDE_ELEMENT(NodePath, NODE_PATH)
GDE_ELEMENT(RID, RID)
GDE_ELEMENT(Callable, CALLABLE)
GDE_ELEMENT(Signal, SIGNAL)
GDE_ELEMENT(Dictionary, DICTIONARY)
GDE_ELEMENT(Array, ARRAY)
GDE_ELEMENT(PackedByteArray, PACKED_BYTE_ARRAY)
GDE_ELEMENT(PackedInt32Array, PACKED_INT32_ARRAY)
GDE_ELEMENT(PackedInt64Array, PACKED_INT64_ARRAY)
GDE_ELEMENT(PackedFloat32Array, PACKED_FLOAT32_ARRAY)
GDE_ELEMENT(PackedFloat64Array, PACKED_FLOAT64_ARRAY)
GDE_ELEMENT(PackedStringArray, PACKED_STRING_ARRAY)
GDE_ELEMENT(PackedVector2Array, PACKED_VECTOR2_ARRAY)
GDE_ELEMENT(PackedVector3Array, PACKED_VECTOR3_ARRAY)
GDE_ELEMENT(PackedColorArray, PACKED_COLOR_ARRAY)
GDE_ELEMENT(PackedVector4Array, PACKED_VECTOR4_ARRAY)
#undef GDE_ELEMENT
} // namespace internal

template <typename T>
class TypedArray : public Array {
    void set_type() { set_typed(internal::ElementOf<T>::type, internal::ElementOf<T>::class_name(), Variant()); }

public:
    TypedArray() { set_type(); }
    TypedArray(const Array &a) {
        if (a.is_typed() && uint32_t(a.get_typed_builtin()) == uint32_t(internal::ElementOf<T>::type) &&
            a.get_typed_class_name() == internal::ElementOf<T>::class_name()) {
            Array::operator=(a);
        } else {
            set_type();
            assign(a);
        }
    }
    TypedArray(const Variant &v) : TypedArray(Array(v)) {}
    TypedArray(std::initializer_list<Variant> items) {
        set_type();
        for (const Variant &v : items) {
            push_back(v);
        }
    }
    void operator=(const Array &a) { Array::operator=(TypedArray(a)); }
    TypedArray(const TypedArray &) = default;
    TypedArray &operator=(const TypedArray &) = default;

    // Takes over an array that the engine has typed already.
    static TypedArray _gde_adopt(Array &&a) { return TypedArray(std::move(a), 0); }

private:
    TypedArray(Array &&a, int) : Array(std::move(a)) {}
};

} // namespace godot
