#pragma once
// What the binder knows of a C++ type: the engine's name for it, how it travels in calls by pointer and by Variant.

#include <type_traits>

#include <godot_cpp/classes/ref.hpp>
#include <godot_cpp/core/bit_field.hpp>
#include <godot_cpp/core/internal/object_cast.hpp>
#include <godot_cpp/core/property_info.hpp>
#include <godot_cpp/variant/typed_array.hpp>
#include <godot_cpp/variant/typed_dictionary.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

namespace internal {

template <typename T>
struct IsRef : std::false_type {};
template <typename T>
struct IsRef<Ref<T>> : std::true_type {
    using Class = T;
};
template <typename T>
struct IsBitField : std::false_type {};
template <typename T>
struct IsBitField<BitField<T>> : std::true_type {};
template <typename T>
struct IsTypedArray : std::false_type {};
template <typename T>
struct IsTypedArray<TypedArray<T>> : std::true_type {
    using Element = ElementOf<T>;
};
template <typename T>
struct IsTypedDictionary : std::false_type {};
template <typename K, typename V>
struct IsTypedDictionary<TypedDictionary<K, V>> : std::true_type {
    using Key = ElementOf<K>;
    using Value = ElementOf<V>;
};

template <typename T>
inline constexpr bool is_object_pointer =
    std::is_pointer_v<T> &&std::is_base_of_v<Object, std::remove_cv_t<std::remove_pointer_t<T>>>;

// The qualified name of an enum, from VARIANT_ENUM_CAST.
template <typename T>
struct EnumName {
    static constexpr const char *text = "";
    static constexpr bool bitfield = false;
};

template <typename T0>
struct TypeOf {
    using T = std::remove_cv_t<std::remove_reference_t<T0>>;

    static constexpr Variant::Type type() {
        if constexpr (std::is_void_v<T>) {
            return Variant::NIL;
        } else if constexpr (std::is_enum_v<T> || IsBitField<T>::value || std::is_same_v<T, ObjectID>) {
            return Variant::INT;
        } else if constexpr (IsTypedArray<T>::value) {
            return Variant::ARRAY;
        } else if constexpr (IsTypedDictionary<T>::value) {
            return Variant::DICTIONARY;
        } else if constexpr (is_object_pointer<T> || IsRef<T>::value) {
            return Variant::OBJECT;
        } else {
            static_assert(!std::is_pointer_v<T>, "A bound method takes engine types, numbers and objects only.");
            return ElementOf<T>::type;
        }
    }
    // The class that an object must have.
    static constexpr const ClassRecord *record() {
        if constexpr (is_object_pointer<T>) {
            return &std::remove_cv_t<std::remove_pointer_t<T>>::_gde_record;
        } else if constexpr (IsRef<T>::value) {
            return &IsRef<T>::Class::_gde_record;
        } else {
            return nullptr;
        }
    }
    static constexpr GDExtensionClassMethodArgumentMetadata metadata() {
        if constexpr (std::is_same_v<T, int8_t>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_INT_IS_INT8;
        } else if constexpr (std::is_same_v<T, int16_t>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_INT_IS_INT16;
        } else if constexpr (std::is_same_v<T, int32_t>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_INT_IS_INT32;
        } else if constexpr (std::is_same_v<T, int64_t>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_INT_IS_INT64;
        } else if constexpr (std::is_same_v<T, uint8_t>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_INT_IS_UINT8;
        } else if constexpr (std::is_same_v<T, uint16_t>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_INT_IS_UINT16;
        } else if constexpr (std::is_same_v<T, uint32_t>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_INT_IS_UINT32;
        } else if constexpr (std::is_same_v<T, uint64_t>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_INT_IS_UINT64;
        } else if constexpr (std::is_same_v<T, float>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_REAL_IS_FLOAT;
        } else if constexpr (std::is_same_v<T, double>) {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_REAL_IS_DOUBLE;
        } else {
            return GDEXTENSION_METHOD_ARGUMENT_METADATA_NONE;
        }
    }
    static PropertyInfo info() {
        PropertyInfo p;
        p.type = type();
        if constexpr (std::is_same_v<T, Variant>) {
            p.usage |= PROPERTY_USAGE_NIL_IS_VARIANT;
        } else if constexpr (is_object_pointer<T> || IsRef<T>::value) {
            p.class_name = record()->name.name();
            if (record()->inherits_named("Resource")) {
                p.hint = PROPERTY_HINT_RESOURCE_TYPE;
                p.hint_string = String(p.class_name);
            }
        } else if constexpr (std::is_enum_v<T>) {
            if (*EnumName<T>::text) {
                p.class_name = enum_qualified_name(EnumName<T>::text);
                p.usage |= EnumName<T>::bitfield ? PROPERTY_USAGE_CLASS_IS_BITFIELD : PROPERTY_USAGE_CLASS_IS_ENUM;
            }
        } else if constexpr (IsTypedArray<T>::value) {
            p.hint = PROPERTY_HINT_ARRAY_TYPE;
            using E = typename IsTypedArray<T>::Element;
            p.hint_string = E::type == Variant::OBJECT ? String(E::class_name()) : Variant::get_type_name(E::type);
        }
        return p;
    }
    static String enum_qualified_name(const char *text);

    // From a Variant that has passed the check of its type.
    static T from_variant(const Variant &v) {
        if constexpr (std::is_same_v<T, Variant>) {
            return v;
        } else if constexpr (std::is_enum_v<T>) {
            static_assert(
                requires { T{0}; }, "An enum that a bound method takes needs a fixed underlying type "
                                    "(enum Kind : int): callers may send any number.");
            return static_cast<T>(int64_t(v));
        } else if constexpr (IsBitField<T>::value) {
            return T(int64_t(v));
        } else if constexpr (is_object_pointer<T>) {
            return Object::cast_to<std::remove_cv_t<std::remove_pointer_t<T>>>(v.get_validated_object());
        } else if constexpr (IsRef<T>::value || IsTypedArray<T>::value || IsTypedDictionary<T>::value) {
            return T(v);
        } else {
            return v.operator T();
        }
    }
    // From and to the memory that calls by pointer use.
    static decltype(auto) from_ptr(const void *p) {
        if constexpr (std::is_same_v<T, bool>) {
            return *static_cast<const uint8_t *>(p) != 0;
        } else if constexpr (std::is_integral_v<T> || std::is_enum_v<T> || IsBitField<T>::value ||
                             std::is_same_v<T, ObjectID>) {
            return static_cast<T>(*static_cast<const int64_t *>(p));
        } else if constexpr (std::is_floating_point_v<T>) {
            return static_cast<T>(*static_cast<const double *>(p));
        } else if constexpr (is_object_pointer<T>) {
            return Object::cast_to<std::remove_cv_t<std::remove_pointer_t<T>>>(object_at(p));
        } else if constexpr (IsRef<T>::value) {
            return T(Object::cast_to<typename IsRef<T>::Class>(object_at(p)));
        } else {
            return *static_cast<const T *>(p);
        }
    }
    static void to_ptr(void *p, const std::conditional_t<std::is_void_v<T>, char, T> &v) {
        if constexpr (std::is_same_v<T, bool>) {
            *static_cast<uint8_t *>(p) = v;
        } else if constexpr (std::is_integral_v<T> || std::is_enum_v<T> || IsBitField<T>::value ||
                             std::is_same_v<T, ObjectID>) {
            *static_cast<int64_t *>(p) = static_cast<int64_t>(v);
        } else if constexpr (std::is_floating_point_v<T>) {
            *static_cast<double *>(p) = static_cast<double>(v);
        } else if constexpr (is_object_pointer<T>) {
            *static_cast<GodotObject **>(p) = owner_of(static_cast<const Wrapped *>(v));
        } else if constexpr (IsRef<T>::value) {
            gde.ref_set_object(p, v._gde_owner());
        } else {
            if constexpr (requires { v._native_ptr(); }) {
                v._native_ptr(); // the engine knows no unmade arrays
            }
            *static_cast<T *>(p) = v;
        }
    }

private:
    static Object *object_at(const void *p) {
        return p ? static_cast<Object *>(wrap_object(*static_cast<GodotObject *const *>(p))) : nullptr;
    }
};

String enum_qualified_name(const char *text);
template <typename T0>
String TypeOf<T0>::enum_qualified_name(const char *text) {
    return internal::enum_qualified_name(text);
}

// What a call from outside must bring for one argument.
struct ArgCheck {
    Variant::Type type;
    const ClassRecord *record;
};
template <typename... P>
struct ArgChecks {
    static constexpr ArgCheck table[sizeof...(P) + 1] = {ArgCheck{TypeOf<P>::type(), TypeOf<P>::record()}...,
                                                         ArgCheck{Variant::NIL, nullptr}};
};

// Whether the arguments fit in number and type (as by the engine's strict conversion); tells the reason if not.
bool check_args(const ArgCheck *checks, int wanted, const Variant *const *args, int64_t given,
                GDExtensionCallError &error);

} // namespace internal

template <typename T>
struct GetTypeInfo {
    static constexpr GDExtensionVariantType VARIANT_TYPE = GDExtensionVariantType(internal::TypeOf<T>::type());
    static constexpr GDExtensionClassMethodArgumentMetadata METADATA = internal::TypeOf<T>::metadata();
    static PropertyInfo get_class_info() { return internal::TypeOf<T>::info(); }
};

template <typename T>
struct VariantCaster {
    static T cast(const Variant &v) { return internal::TypeOf<T>::from_variant(v); }
};

} // namespace godot

#define GDE_ENUM_NAME(m_enum, m_bitfield)                                                                              \
    namespace godot::internal {                                                                                        \
    template <>                                                                                                        \
    struct EnumName<m_enum> {                                                                                          \
        static constexpr const char *text = #m_enum;                                                                   \
        static constexpr bool bitfield = m_bitfield;                                                                   \
    };                                                                                                                 \
    }

// Names an enum for the engine; stands after the class, outside of any namespace.
#define VARIANT_ENUM_CAST(m_enum) GDE_ENUM_NAME(m_enum, false)
#define VARIANT_BITFIELD_CAST(m_enum) GDE_ENUM_NAME(m_enum, true)
