#pragma once
// Any value of the engine. Numbers, short vectors and the like live inside and are read and written directly; the
// engine's functions do the rest. The layout is checked once when the module is loaded.

#include <array>
#include <concepts>
#include <cstring>

#include <godot_cpp/core/object_id.hpp>
#include <godot_cpp/variant/aabb.hpp>
#include <godot_cpp/variant/basis.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/internal/rid_class.hpp>
#include <godot_cpp/variant/plane.hpp>
#include <godot_cpp/variant/projection.hpp>
#include <godot_cpp/variant/quaternion.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/transform2d.hpp>
#include <godot_cpp/variant/transform3d.hpp>
#include <godot_cpp/variant/vector2.hpp>
#include <godot_cpp/variant/vector3.hpp>
#include <godot_cpp/variant/vector4.hpp>

#include <godot_cpp/variant/internal/string_class.hpp>

#include <godot_cpp/variant/internal/node_path_class.hpp>
#include <godot_cpp/variant/internal/string_name_class.hpp>

#include <godot_cpp/variant/internal/array_class.hpp>
#include <godot_cpp/variant/internal/callable_class.hpp>
#include <godot_cpp/variant/internal/dictionary_class.hpp>
#include <godot_cpp/variant/internal/packed_byte_array_class.hpp>
#include <godot_cpp/variant/internal/packed_color_array_class.hpp>
#include <godot_cpp/variant/internal/packed_float32_array_class.hpp>
#include <godot_cpp/variant/internal/packed_float64_array_class.hpp>
#include <godot_cpp/variant/internal/packed_int32_array_class.hpp>
#include <godot_cpp/variant/internal/packed_int64_array_class.hpp>
#include <godot_cpp/variant/internal/packed_string_array_class.hpp>
#include <godot_cpp/variant/internal/packed_vector2_array_class.hpp>
#include <godot_cpp/variant/internal/packed_vector3_array_class.hpp>
#include <godot_cpp/variant/internal/packed_vector4_array_class.hpp>
#include <godot_cpp/variant/internal/signal_class.hpp>

namespace godot {

template <typename T>
class BitField;

class Variant {
    int32_t type = 0;
    alignas(8) unsigned char mem[16];

public:
    enum Type : int {
        NIL,
        BOOL,
        INT,
        FLOAT,
        STRING,
        VECTOR2,
        VECTOR2I,
        RECT2,
        RECT2I,
        VECTOR3,
        VECTOR3I,
        TRANSFORM2D,
        VECTOR4,
        VECTOR4I,
        PLANE,
        QUATERNION,
        AABB,
        BASIS,
        TRANSFORM3D,
        PROJECTION,
        COLOR,
        STRING_NAME,
        NODE_PATH,
        RID,
        OBJECT,
        CALLABLE,
        SIGNAL,
        DICTIONARY,
        ARRAY,
        PACKED_BYTE_ARRAY,
        PACKED_INT32_ARRAY,
        PACKED_INT64_ARRAY,
        PACKED_FLOAT32_ARRAY,
        PACKED_FLOAT64_ARRAY,
        PACKED_STRING_ARRAY,
        PACKED_VECTOR2_ARRAY,
        PACKED_VECTOR3_ARRAY,
        PACKED_COLOR_ARRAY,
        PACKED_VECTOR4_ARRAY,
        VARIANT_MAX
    };

    enum Operator : int {
        OP_EQUAL,
        OP_NOT_EQUAL,
        OP_LESS,
        OP_LESS_EQUAL,
        OP_GREATER,
        OP_GREATER_EQUAL,
        OP_ADD,
        OP_SUBTRACT,
        OP_MULTIPLY,
        OP_DIVIDE,
        OP_NEGATE,
        OP_POSITIVE,
        OP_MODULE,
        OP_POWER,
        OP_SHIFT_LEFT,
        OP_SHIFT_RIGHT,
        OP_BIT_AND,
        OP_BIT_OR,
        OP_BIT_XOR,
        OP_BIT_NEGATE,
        OP_AND,
        OP_OR,
        OP_XOR,
        OP_NOT,
        OP_IN,
        OP_MAX
    };

private:
    // The engine keeps something outside of the value for these types.
    static constexpr bool is_owning(int32_t t) {
        constexpr uint64_t mask = 1ull << STRING | 1ull << TRANSFORM2D | 1ull << AABB | 1ull << BASIS |
                                  1ull << TRANSFORM3D | 1ull << PROJECTION | 1ull << STRING_NAME | 1ull << NODE_PATH |
                                  1ull << OBJECT | 1ull << CALLABLE | 1ull << SIGNAL | 1ull << DICTIONARY |
                                  ~0ull << ARRAY;
        return (mask >> t) & 1;
    }

    template <typename T>
    void put(Type t, const T &v) {
        static_assert(sizeof(T) <= sizeof(mem));
        type = t;
        std::memcpy(mem, static_cast<const void *>(&v), sizeof(T));
    }
    template <typename T>
    T take() const {
        T v;
        std::memcpy(static_cast<void *>(&v), mem, sizeof(T));
        return v;
    }
    void from(Type t, const void *value);
    void to(Type t, void *value) const;
    template <typename T>
    T value(Type t) const;
    int64_t to_int_slow() const;
    double to_float_slow() const;

public:
    Variant() = default;
    Variant(std::nullptr_t) {}
    Variant(const Variant &o) {
        if (is_owning(o.type)) {
            internal::gde.variant_new_copy(this, &o);
        } else {
            type = o.type;
            std::memcpy(mem, o.mem, sizeof(mem));
        }
    }
    Variant(Variant &&o) noexcept : type(o.type) {
        std::memcpy(mem, o.mem, sizeof(mem));
        o.type = NIL;
    }
    explicit Variant(GDExtensionConstVariantPtr p) : Variant(*static_cast<const Variant *>(p)) {}
    ~Variant() {
        if (is_owning(type)) {
            internal::gde.variant_destroy(this);
        }
    }
    Variant &operator=(const Variant &o) {
        if (this != &o) {
            *this = Variant(o);
        }
        return *this;
    }
    Variant &operator=(Variant &&o) noexcept {
        std::swap(type, o.type);
        unsigned char tmp[16];
        std::memcpy(tmp, mem, 16);
        std::memcpy(mem, o.mem, 16);
        std::memcpy(o.mem, tmp, 16);
        return *this;
    }

    Variant(bool v) { put(BOOL, v); }
    template <typename T>
    requires(std::is_integral_v<T> && !std::is_same_v<T, bool>) Variant(T v) { put(INT, int64_t(v)); }
    template <typename T>
    requires std::is_enum_v<T> Variant(T v) { put(INT, int64_t(v)); }
    template <typename T>
    requires std::is_floating_point_v<T> Variant(T v) { put(FLOAT, double(v)); }
    template <typename T>
    Variant(const BitField<T> &v) {
        put(INT, int64_t(v));
    }
    Variant(const ObjectID &v) { put(INT, int64_t(uint64_t(v))); }
    Variant(const String &v) : Variant(String(v), 0) {}
    Variant(String &&v) : Variant(std::move(v), 0) {}
    Variant(const char *v) : Variant(String(v), 0) {}
    Variant(const wchar_t *v) : Variant(String(v), 0) {}
    Variant(const char16_t *v) : Variant(String(v), 0) {}
    Variant(const char32_t *v) : Variant(String(v), 0) {}
    Variant(const StringName &v);
    Variant(const NodePath &v) { from(NODE_PATH, v._native_ptr()); }
    Variant(const Vector2 &v) { put(VECTOR2, v); }
    Variant(const Vector2i &v) { put(VECTOR2I, v); }
    Variant(const Rect2 &v) { put(RECT2, v); }
    Variant(const Rect2i &v) { put(RECT2I, v); }
    Variant(const Vector3 &v) { put(VECTOR3, v); }
    Variant(const Vector3i &v) { put(VECTOR3I, v); }
    Variant(const Transform2D &v) { from(TRANSFORM2D, &v); }
    Variant(const Vector4 &v) { put(VECTOR4, v); }
    Variant(const Vector4i &v) { put(VECTOR4I, v); }
    Variant(const Plane &v) { put(PLANE, v); }
    Variant(const Quaternion &v) { put(QUATERNION, v); }
    Variant(const godot::AABB &v) { from(AABB, &v); }
    Variant(const Basis &v) { from(BASIS, &v); }
    Variant(const Transform3D &v) { from(TRANSFORM3D, &v); }
    Variant(const Projection &v) { from(PROJECTION, &v); }
    Variant(const Color &v) { put(COLOR, v); }
    Variant(const godot::RID &v) { put(RID, v); }
    Variant(const Object *v);
    Variant(const Callable &v);
    Variant(const Signal &v);
    Variant(const Dictionary &v);
    Variant(const Array &v);
    Variant(const PackedByteArray &v);
    Variant(const PackedInt32Array &v);
    Variant(const PackedInt64Array &v);
    Variant(const PackedFloat32Array &v);
    Variant(const PackedFloat64Array &v);
    Variant(const PackedStringArray &v);
    Variant(const PackedVector2Array &v);
    Variant(const PackedVector3Array &v);
    Variant(const PackedColorArray &v);
    Variant(const PackedVector4Array &v);

    operator bool() const { return booleanize(); }
    template <typename T>
    requires(std::is_integral_v<T> && !std::is_same_v<T, bool>) operator T() const {
        return T(likely(type == INT) ? take<int64_t>() : to_int_slow());
    }
    operator double() const { return likely(type == FLOAT) ? take<double>() : to_float_slow(); }
    operator float() const { return float(likely(type == FLOAT) ? take<double>() : to_float_slow()); }
    operator String() const;
    operator StringName() const;
    operator NodePath() const;
    operator Vector2() const;
    operator Vector2i() const;
    operator Rect2() const;
    operator Rect2i() const;
    operator Vector3() const;
    operator Vector3i() const;
    operator Transform2D() const;
    operator Vector4() const;
    operator Vector4i() const;
    operator Plane() const;
    operator Quaternion() const;
    operator godot::AABB() const;
    operator Basis() const;
    operator Transform3D() const;
    operator Projection() const;
    operator Color() const;
    operator godot::RID() const;
    // Null for an object that is gone.
    operator Object *() const { return get_validated_object(); }
    operator ObjectID() const;
    operator Callable() const;
    operator Signal() const;
    operator Dictionary() const;
    operator Array() const;
    operator PackedByteArray() const;
    operator PackedInt32Array() const;
    operator PackedInt64Array() const;
    operator PackedFloat32Array() const;
    operator PackedFloat64Array() const;
    operator PackedStringArray() const;
    operator PackedVector2Array() const;
    operator PackedVector3Array() const;
    operator PackedColorArray() const;
    operator PackedVector4Array() const;

    Object *get_validated_object() const;
    // 0 if it is no object.
    uint64_t get_object_instance_id() const { return type == OBJECT ? take<uint64_t>() : 0; }
    Type get_type() const { return Type(type); }
    // The interned data if it is a name, else null.
    const void *_name_data() const { return type == STRING_NAME ? take<const void *>() : nullptr; }
    GDExtensionVariantPtr _native_ptr() const { return const_cast<Variant *>(this); }

    bool operator==(const Variant &o) const;
    bool operator!=(const Variant &o) const { return !(*this == o); }
    bool operator<(const Variant &o) const;

    void callp(const StringName &method, const Variant **args, int argcount, Variant &ret, GDExtensionCallError &error);
    template <typename... Args>
    Variant call(const StringName &method, const Args &...args) {
        std::array<Variant, sizeof...(Args) + 1> values{Variant(args)...};
        std::array<const Variant *, sizeof...(Args) + 1> ptrs;
        for (size_t i = 0; i < sizeof...(Args); ++i) {
            ptrs[i] = &values[i];
        }
        Variant ret;
        GDExtensionCallError error;
        callp(method, ptrs.data(), sizeof...(Args), ret, error);
        return ret;
    }
    static void callp_static(Type type, const StringName &method, const Variant **args, int argcount, Variant &ret,
                             GDExtensionCallError &error);
    template <typename... Args>
    static Variant call_static(Type type, const StringName &method, const Args &...args) {
        std::array<Variant, sizeof...(Args) + 1> values{Variant(args)...};
        std::array<const Variant *, sizeof...(Args) + 1> ptrs;
        for (size_t i = 0; i < sizeof...(Args); ++i) {
            ptrs[i] = &values[i];
        }
        Variant ret;
        GDExtensionCallError error;
        callp_static(type, method, ptrs.data(), sizeof...(Args), ret, error);
        return ret;
    }
    static void construct(Type type, const Variant **args, int argcount, Variant &ret, GDExtensionCallError &error);
    static void evaluate(const Operator &op, const Variant &a, const Variant &b, Variant &r_ret, bool &r_valid);

    void set(const Variant &key, const Variant &value, bool *r_valid = nullptr);
    void set_named(const StringName &name, const Variant &value, bool &r_valid);
    void set_indexed(int64_t index, const Variant &value, bool &r_valid, bool &r_oob);
    void set_keyed(const Variant &key, const Variant &value, bool &r_valid);
    Variant get(const Variant &key, bool *r_valid = nullptr) const;
    Variant get_named(const StringName &name, bool &r_valid) const;
    Variant get_indexed(int64_t index, bool &r_valid, bool &r_oob) const;
    Variant get_keyed(const Variant &key, bool &r_valid) const;
    bool in(const Variant &index, bool *r_valid = nullptr) const;
    bool iter_init(Variant &r_iter, bool &r_valid) const;
    bool iter_next(Variant &r_iter, bool &r_valid) const;
    Variant iter_get(const Variant &iter, bool &r_valid) const;

    uint32_t hash() const;
    uint32_t recursive_hash(int recursion_count) const;
    bool hash_compare(const Variant &o) const;
    bool booleanize() const;
    String stringify() const;
    Variant duplicate(bool deep = false) const;
    bool has_method(const StringName &method) const;
    bool has_key(const Variant &key, bool *r_valid = nullptr) const;
    static bool has_member(Type type, const StringName &member);
    static String get_type_name(Type type);
    static bool can_convert(Type from, Type to);
    static bool can_convert_strict(Type from, Type to);
    bool is_num() const { return type == INT || type == FLOAT; }
    bool is_string() const { return type == STRING || type == STRING_NAME; }
    bool is_array() const { return type >= ARRAY; }
    bool is_null() const { return type == NIL || (type == OBJECT && !get_validated_object()); }
    void clear() { *this = Variant(); }

    // Checks the layout that the inline code relies on; false if the engine's differs.
    static bool _check_layout();

private:
    Variant(String &&v, int) : type(STRING) { new (mem) String(std::move(v)); }
};
static_assert(sizeof(Variant) == 24);

namespace internal {

// A name in the form of a Variant for the time of a call, without a count of its own.
class BorrowedName {
    int32_t type = Variant::STRING_NAME;
    alignas(8) const void *mem[2];

public:
    explicit BorrowedName(const StringName &name) : mem{name.data_unique_pointer(), nullptr} {}
    const Variant *ptr() const { return reinterpret_cast<const Variant *>(this); }
};
static_assert(sizeof(BorrowedName) == sizeof(Variant));

} // namespace internal

// Orders and keys for containers.
struct VariantHasher {
    static uint32_t hash(const Variant &v) { return v.hash(); }
};
struct VariantComparator {
    static bool compare(const Variant &a, const Variant &b) { return a.hash_compare(b); }
};

// "%s has %d" filled in as by the engine's own format operator.
String vformat_array(const String &text, const Array &values);
template <typename... Args>
String vformat(const String &text, const Args &...args) {
    Array values;
    (values.push_back(args), ...);
    return vformat_array(text, values);
}

inline uint32_t hash_murmur3(uint32_t h) {
    h ^= h >> 16;
    h *= 0x85ebca6b;
    h ^= h >> 13;
    h *= 0xc2b2ae35;
    return h ^ (h >> 16);
}

struct Dictionary::Iterator {
    Array keys;
    int64_t index;
    const Variant &operator*() const { return static_cast<const Array &>(keys)[index]; }
    Iterator &operator++() {
        ++index;
        return *this;
    }
    bool operator!=(const Iterator &o) const { return index != o.index; }
    bool operator==(const Iterator &o) const { return index == o.index; }
};
inline Dictionary::Iterator Dictionary::begin() const {
    return {keys(), 0};
}
inline Dictionary::Iterator Dictionary::end() const {
    return {Array(), size()};
}

} // namespace godot
