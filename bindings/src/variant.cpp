// Variant beyond what its header does in place.

#include <cmath>
#include <limits>

#include <godot_cpp/core/object.hpp>
#include <godot_cpp/variant/callable_custom.hpp>

namespace godot {

using internal::gde;

namespace {

GDExtensionVariantFromTypeConstructorFunc from_type[Variant::VARIANT_MAX];
GDExtensionTypeFromVariantConstructorFunc to_type[Variant::VARIANT_MAX];

} // namespace

bool Variant::_check_layout() {
    for (int t = BOOL; t < VARIANT_MAX; ++t) {
        from_type[t] = gde.get_variant_from_type_constructor(GDExtensionVariantType(t));
        to_type[t] = gde.get_variant_to_type_constructor(GDExtensionVariantType(t));
    }
    // The same values made by the engine and by us must be the same bytes.
    const auto same = [](Type t, const void *value, const Variant &ours, size_t size) {
        Variant theirs;
        from_type[t](&theirs, const_cast<void *>(value));
        return theirs.type == t && ours.type == t && std::memcmp(theirs.mem, ours.mem, size) == 0;
    };
    const uint8_t yes = 1;
    const int64_t i = 0x0123456789abcdef;
    const double d = 1.25e100;
    const Vector2 v2(1, 2);
    const Rect2 r2(1, 2, 3, 4);
    const Vector3 v3(1, 2, 3);
    const Vector3i v3i(1, 2, 3);
    const Color c(0.1f, 0.2f, 0.3f, 0.4f);
    if (!same(BOOL, &yes, true, 1) || !same(INT, &i, i, 8) || !same(FLOAT, &d, d, 8) || !same(VECTOR2, &v2, v2, 8) ||
        !same(RECT2, &r2, r2, 16) || !same(VECTOR3, &v3, v3, 12) || !same(VECTOR3I, &v3i, v3i, 12) ||
        !same(COLOR, &c, c, 16)) {
        return false;
    }
    // A string inside shares its characters; boxed types lie behind a pointer; packed arrays point to their elements.
    const String s("layout");
    Variant vs;
    from_type[STRING](&vs, s._native_ptr());
    if (vs.take<void *>() != *static_cast<void **>(s._native_ptr()) ||
        gde.string_operator_index_const(s._native_ptr(), 0) != s.ptr()) {
        return false;
    }
    const Transform3D t3(Basis(1, 2, 3, 4, 5, 6, 7, 8, 9), Vector3(10, 11, 12));
    if (std::memcmp(Variant(t3).take<void *>(), &t3, sizeof(t3)) != 0) {
        return false;
    }
    const PackedInt32Array p{1, 2, 3};
    return gde.packed_int32_array_operator_index_const(p._native_ptr(), 0) == p.ptr() && p.ptr()[2] == 3;
}

void Variant::from(Type t, const void *value) {
    from_type[t](this, const_cast<void *>(value));
}

void Variant::to(Type t, void *value) const {
    to_type[t](value, const_cast<Variant *>(this));
}

Variant::Variant(const StringName &v) : type(STRING_NAME) {
    new (mem) StringName(v);
}

Variant::Variant(const Object *v) {
    if (v) {
        GodotObject *owner = v->_owner;
        from(OBJECT, &owner);
    } else {
        put<uint64_t>(OBJECT, 0);
        std::memset(mem, 0, sizeof(mem));
    }
}

#define GDE_VARIANT_OPAQUE(m_class, m_enum)                                                                            \
    Variant::Variant(const m_class &v) {                                                                               \
        from(m_enum, v._native_ptr());                                                                                 \
    }                                                                                                                  \
    Variant::operator m_class() const {                                                                                \
        alignas(m_class) unsigned char raw[sizeof(m_class)] = {};                                                      \
        to(m_enum, raw);                                                                                               \
        return std::move(*reinterpret_cast<m_class *>(raw));                                                           \
    }
GDE_VARIANT_OPAQUE(Callable, CALLABLE)
GDE_VARIANT_OPAQUE(Signal, SIGNAL)
GDE_VARIANT_OPAQUE(PackedByteArray, PACKED_BYTE_ARRAY)
GDE_VARIANT_OPAQUE(PackedInt32Array, PACKED_INT32_ARRAY)
GDE_VARIANT_OPAQUE(PackedInt64Array, PACKED_INT64_ARRAY)
GDE_VARIANT_OPAQUE(PackedFloat32Array, PACKED_FLOAT32_ARRAY)
GDE_VARIANT_OPAQUE(PackedFloat64Array, PACKED_FLOAT64_ARRAY)
GDE_VARIANT_OPAQUE(PackedStringArray, PACKED_STRING_ARRAY)
GDE_VARIANT_OPAQUE(PackedVector2Array, PACKED_VECTOR2_ARRAY)
GDE_VARIANT_OPAQUE(PackedVector3Array, PACKED_VECTOR3_ARRAY)
GDE_VARIANT_OPAQUE(PackedColorArray, PACKED_COLOR_ARRAY)
GDE_VARIANT_OPAQUE(PackedVector4Array, PACKED_VECTOR4_ARRAY)
#undef GDE_VARIANT_OPAQUE

// These lie inside as they are: one word that is shared by copying.
#define GDE_VARIANT_WORD(m_class, m_enum)                                                                              \
    Variant::operator m_class() const {                                                                                \
        if (likely(type == m_enum)) {                                                                                  \
            return *reinterpret_cast<const m_class *>(mem);                                                            \
        }                                                                                                              \
        alignas(m_class) unsigned char raw[sizeof(m_class)] = {};                                                      \
        to(m_enum, raw);                                                                                               \
        return std::move(*reinterpret_cast<m_class *>(raw));                                                           \
    }
GDE_VARIANT_WORD(String, STRING)
GDE_VARIANT_WORD(StringName, STRING_NAME)
GDE_VARIANT_WORD(NodePath, NODE_PATH)
GDE_VARIANT_WORD(Dictionary, DICTIONARY)
GDE_VARIANT_WORD(Array, ARRAY)
#undef GDE_VARIANT_WORD

Variant::Variant(const Dictionary &v) : type(DICTIONARY) {
    new (mem) Dictionary(v);
}
Variant::Variant(const Array &v) : type(ARRAY) {
    new (mem) Array(v);
}

#define GDE_VARIANT_INLINE(m_class, m_enum)                                                                            \
    Variant::operator m_class() const {                                                                                \
        if (likely(type == m_enum)) {                                                                                  \
            return take<m_class>();                                                                                    \
        }                                                                                                              \
        m_class v;                                                                                                     \
        to(m_enum, &v);                                                                                                \
        return v;                                                                                                      \
    }
GDE_VARIANT_INLINE(Vector2, VECTOR2)
GDE_VARIANT_INLINE(Vector2i, VECTOR2I)
GDE_VARIANT_INLINE(Rect2, RECT2)
GDE_VARIANT_INLINE(Rect2i, RECT2I)
GDE_VARIANT_INLINE(Vector3, VECTOR3)
GDE_VARIANT_INLINE(Vector3i, VECTOR3I)
GDE_VARIANT_INLINE(Vector4, VECTOR4)
GDE_VARIANT_INLINE(Vector4i, VECTOR4I)
GDE_VARIANT_INLINE(Plane, PLANE)
GDE_VARIANT_INLINE(Quaternion, QUATERNION)
GDE_VARIANT_INLINE(Color, COLOR)
GDE_VARIANT_INLINE(godot::RID, RID)
#undef GDE_VARIANT_INLINE

#define GDE_VARIANT_BOXED(m_class, m_enum)                                                                             \
    Variant::operator m_class() const {                                                                                \
        if (likely(type == m_enum)) {                                                                                  \
            return *take<const m_class *>();                                                                           \
        }                                                                                                              \
        m_class v;                                                                                                     \
        to(m_enum, &v);                                                                                                \
        return v;                                                                                                      \
    }
GDE_VARIANT_BOXED(Transform2D, TRANSFORM2D)
GDE_VARIANT_BOXED(godot::AABB, AABB)
GDE_VARIANT_BOXED(Basis, BASIS)
GDE_VARIANT_BOXED(Transform3D, TRANSFORM3D)
GDE_VARIANT_BOXED(Projection, PROJECTION)
#undef GDE_VARIANT_BOXED

int64_t Variant::to_int_slow() const {
    switch (type) {
    case FLOAT: {
        const double d = take<double>();
        if (std::isnan(d)) {
            return 0;
        }
        constexpr double limit = 9223372036854775808.0;
        return d >= limit   ? std::numeric_limits<int64_t>::max()
               : d < -limit ? std::numeric_limits<int64_t>::min()
                            : int64_t(d);
    }
    case BOOL:
        return take<uint8_t>() != 0;
    case NIL:
        return 0;
    default: {
        int64_t v = 0;
        to(INT, &v);
        return v;
    }
    }
}

double Variant::to_float_slow() const {
    switch (type) {
    case INT:
        return double(take<int64_t>());
    case BOOL:
        return take<uint8_t>() != 0;
    case NIL:
        return 0;
    default: {
        double v = 0;
        to(FLOAT, &v);
        return v;
    }
    }
}

Object *Variant::get_validated_object() const {
    if (type != OBJECT) {
        return nullptr;
    }
    struct Data {
        ObjectID id;
        GodotObject *object;
    } data;
    static_assert(sizeof(Data) == sizeof(mem));
    std::memcpy(static_cast<void *>(&data), mem, sizeof(mem));
    if (data.id.is_null()) {
        return nullptr;
    }
    // A counted object lives as long as this value; others may be gone.
    GodotObject *object = data.id.is_ref_counted() ? data.object : gde.object_get_instance_from_id(uint64_t(data.id));
    return static_cast<Object *>(internal::wrap_object(object));
}

Variant::operator ObjectID() const {
    return type == OBJECT ? take<ObjectID>() : ObjectID(uint64_t(int64_t(*this)));
}

bool Variant::operator==(const Variant &o) const {
    if (type == o.type && !is_owning(type)) {
        switch (type) {
        case NIL:
            return true;
        case BOOL:
            return take<uint8_t>() == o.take<uint8_t>();
        case INT:
            return take<int64_t>() == o.take<int64_t>();
        case FLOAT:
            return take<double>() == o.take<double>();
        default:
            break;
        }
    }
    if (type == STRING && o.type == STRING) {
        return *reinterpret_cast<const String *>(mem) == *reinterpret_cast<const String *>(o.mem);
    }
    Variant ret;
    bool valid = false;
    evaluate(OP_EQUAL, *this, o, ret, valid);
    return valid && ret.booleanize();
}

bool Variant::operator<(const Variant &o) const {
    if (type != o.type) {
        return type < o.type;
    }
    Variant ret;
    bool valid = false;
    evaluate(OP_LESS, *this, o, ret, valid);
    return valid && ret.booleanize();
}

void Variant::callp(const StringName &method, const Variant **args, int argcount, Variant &ret,
                    GDExtensionCallError &error) {
    Variant result;
    gde.variant_call(this, method._native_ptr(), reinterpret_cast<GDExtensionConstVariantPtr *>(args), argcount,
                     &result, &error);
    ret = std::move(result);
}

void Variant::callp_static(Type type, const StringName &method, const Variant **args, int argcount, Variant &ret,
                           GDExtensionCallError &error) {
    Variant result;
    gde.variant_call_static(GDExtensionVariantType(type), method._native_ptr(),
                            reinterpret_cast<GDExtensionConstVariantPtr *>(args), argcount, &result, &error);
    ret = std::move(result);
}

void Variant::construct(Type type, const Variant **args, int argcount, Variant &ret, GDExtensionCallError &error) {
    Variant result;
    gde.variant_construct(GDExtensionVariantType(type), &result, reinterpret_cast<GDExtensionConstVariantPtr *>(args),
                          argcount, &error);
    ret = std::move(result);
}

void Variant::evaluate(const Operator &op, const Variant &a, const Variant &b, Variant &r_ret, bool &r_valid) {
    GDExtensionBool valid = false;
    Variant result;
    gde.variant_evaluate(GDExtensionVariantOperator(op), &a, &b, &result, &valid);
    r_valid = valid != 0;
    r_ret = std::move(result);
}

void Variant::set(const Variant &key, const Variant &value, bool *r_valid) {
    GDExtensionBool valid = false;
    gde.variant_set(this, &key, &value, &valid);
    if (r_valid) {
        *r_valid = valid != 0;
    }
}

void Variant::set_named(const StringName &name, const Variant &value, bool &r_valid) {
    GDExtensionBool valid = false;
    gde.variant_set_named(this, name._native_ptr(), &value, &valid);
    r_valid = valid != 0;
}

void Variant::set_indexed(int64_t index, const Variant &value, bool &r_valid, bool &r_oob) {
    GDExtensionBool valid = false, oob = false;
    gde.variant_set_indexed(this, index, &value, &valid, &oob);
    r_valid = valid != 0;
    r_oob = oob != 0;
}

void Variant::set_keyed(const Variant &key, const Variant &value, bool &r_valid) {
    GDExtensionBool valid = false;
    gde.variant_set_keyed(this, &key, &value, &valid);
    r_valid = valid != 0;
}

Variant Variant::get(const Variant &key, bool *r_valid) const {
    Variant result;
    GDExtensionBool valid = false;
    gde.variant_get(this, &key, &result, &valid);
    if (r_valid) {
        *r_valid = valid != 0;
    }
    return result;
}

Variant Variant::get_named(const StringName &name, bool &r_valid) const {
    Variant result;
    GDExtensionBool valid = false;
    gde.variant_get_named(this, name._native_ptr(), &result, &valid);
    r_valid = valid != 0;
    return result;
}

Variant Variant::get_indexed(int64_t index, bool &r_valid, bool &r_oob) const {
    Variant result;
    GDExtensionBool valid = false, oob = false;
    gde.variant_get_indexed(this, index, &result, &valid, &oob);
    r_valid = valid != 0;
    r_oob = oob != 0;
    return result;
}

Variant Variant::get_keyed(const Variant &key, bool &r_valid) const {
    Variant result;
    GDExtensionBool valid = false;
    gde.variant_get_keyed(this, &key, &result, &valid);
    r_valid = valid != 0;
    return result;
}

bool Variant::in(const Variant &index, bool *r_valid) const {
    Variant ret;
    bool valid = false;
    evaluate(OP_IN, index, *this, ret, valid);
    if (r_valid) {
        *r_valid = valid;
    }
    return valid && ret.booleanize();
}

bool Variant::iter_init(Variant &r_iter, bool &r_valid) const {
    GDExtensionBool valid = false;
    r_iter.clear();
    const bool more = gde.variant_iter_init(this, &r_iter, &valid) != 0;
    r_valid = valid != 0;
    return more;
}

bool Variant::iter_next(Variant &r_iter, bool &r_valid) const {
    GDExtensionBool valid = false;
    const bool more = gde.variant_iter_next(this, &r_iter, &valid) != 0;
    r_valid = valid != 0;
    return more;
}

Variant Variant::iter_get(const Variant &iter, bool &r_valid) const {
    Variant result;
    GDExtensionBool valid = false;
    gde.variant_iter_get(this, const_cast<Variant *>(&iter), &result, &valid);
    r_valid = valid != 0;
    return result;
}

uint32_t Variant::hash() const {
    return uint32_t(gde.variant_hash(this));
}

uint32_t Variant::recursive_hash(int recursion_count) const {
    return uint32_t(gde.variant_recursive_hash(this, recursion_count));
}

bool Variant::hash_compare(const Variant &o) const {
    return gde.variant_hash_compare(this, &o) != 0;
}

bool Variant::booleanize() const {
    switch (type) {
    case NIL:
        return false;
    case BOOL:
        return take<uint8_t>() != 0;
    case INT:
        return take<int64_t>() != 0;
    default:
        return gde.variant_booleanize(this) != 0;
    }
}

String Variant::stringify() const {
    String s;
    gde.variant_stringify(this, s._native_ptr());
    return s;
}

Variant Variant::duplicate(bool deep) const {
    Variant result;
    gde.variant_duplicate(this, &result, deep);
    return result;
}

bool Variant::has_method(const StringName &method) const {
    return gde.variant_has_method(this, method._native_ptr()) != 0;
}

bool Variant::has_key(const Variant &key, bool *r_valid) const {
    GDExtensionBool valid = false;
    const bool has = gde.variant_has_key(this, &key, &valid) != 0;
    if (r_valid) {
        *r_valid = valid != 0;
    }
    return has;
}

bool Variant::has_member(Type type, const StringName &member) {
    return gde.variant_has_member(GDExtensionVariantType(type), member._native_ptr()) != 0;
}

String Variant::get_type_name(Type type) {
    String s;
    gde.variant_get_type_name(GDExtensionVariantType(type), s._native_ptr());
    return s;
}

bool Variant::can_convert(Type from, Type to) {
    return gde.variant_can_convert(GDExtensionVariantType(from), GDExtensionVariantType(to)) != 0;
}

bool Variant::can_convert_strict(Type from, Type to) {
    return gde.variant_can_convert_strict(GDExtensionVariantType(from), GDExtensionVariantType(to)) != 0;
}

} // namespace godot
