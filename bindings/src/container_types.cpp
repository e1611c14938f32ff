// Array, Dictionary, Callable and Signal beyond what the engine's own methods do.

#include <godot_cpp/core/generated_support.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

using internal::gde;

namespace internal {

const void *native_ptr_of(const Array &a) {
    return a._native_ptr();
}

void out_of_bounds(int64_t index) {
    ERR_PRINT("Index " + itos(index) + " is out of bounds.");
}

void builtin_construct(GDExtensionVariantType type, int32_t constructor, void *dest, const void *const *args) {
    gde.variant_get_ptr_constructor(type, constructor)(dest, args);
}

} // namespace internal

// Equality and order as the engine's operators have them.
template <typename A>
static bool evaluate(GDExtensionVariantOperator op, const A &a, const A &b) {
    uint8_t result = 0;
    gde.variant_get_ptr_operator_evaluator(op, A::GDE_TYPE, A::GDE_TYPE)(a._native_ptr(), b._native_ptr(), &result);
    return result != 0;
}

// --- Callable, Signal

Callable::Callable(const Object *object, const StringName &method) {
    GodotObject *owner = internal::owner_of(object);
    const void *args[] = {&owner, method._native_ptr()};
    construct(2, args);
}

bool Callable::operator==(const Callable &o) const {
    return evaluate(GDEXTENSION_VARIANT_OP_EQUAL, *this, o);
}

Signal::Signal(const Object *object, const StringName &signal) {
    GodotObject *owner = internal::owner_of(object);
    const void *args[] = {&owner, signal._native_ptr()};
    construct(2, args);
}

bool Signal::operator==(const Signal &o) const {
    return evaluate(GDEXTENSION_VARIANT_OP_EQUAL, *this, o);
}

// --- Dictionary, Array

// Stands in for what is not there; fresh for each look-up, so that nobody's write shows up elsewhere.
static Variant &null_variant() {
    alignas(Variant) static thread_local unsigned char raw[sizeof(Variant)];
    Variant &v = *reinterpret_cast<Variant *>(raw);
    v.clear();
    return v;
}

Dictionary::Dictionary(std::initializer_list<KeyValue<Variant, Variant>> entries) {
    for (const KeyValue<Variant, Variant> &e : entries) {
        (*this)[e.key] = e.value;
    }
}

Dictionary::Dictionary(const Dictionary &base, int64_t key_type, const StringName &key_class_name,
                       const Variant &key_script, int64_t value_type, const StringName &value_class_name,
                       const Variant &value_script) {
    const void *args[] = {base._native_ptr(), &key_type,   key_class_name._native_ptr(),
                          &key_script,        &value_type, value_class_name._native_ptr(),
                          &value_script};
    construct(2, args);
}

const Variant *Dictionary::getptr(const Variant &key) const {
    if (!words[0] || !has(key)) {
        return nullptr;
    }
    return static_cast<const Variant *>(gde.dictionary_operator_index_const(words, &key));
}

const Variant &Dictionary::operator[](const Variant &key) const {
    const Variant *v = getptr(key);
    return v ? *v : null_variant();
}

Variant &Dictionary::operator[](const Variant &key) {
    Variant *v = static_cast<Variant *>(gde.dictionary_operator_index(_native_ptr(), &key));
    return v ? *v : null_variant();
}

bool Dictionary::operator==(const Dictionary &o) const {
    return evaluate(GDEXTENSION_VARIANT_OP_EQUAL, *this, o);
}

void Dictionary::set_typed(uint32_t key_type, const StringName &key_class_name, const Variant &key_script,
                           uint32_t value_type, const StringName &value_class_name, const Variant &value_script) {
    gde.dictionary_set_typed(_native_ptr(), GDExtensionVariantType(key_type), key_class_name._native_ptr(), &key_script,
                             GDExtensionVariantType(value_type), value_class_name._native_ptr(), &value_script);
}

Array::Array(std::initializer_list<Variant> items) {
    resize(int64_t(items.size()));
    int64_t i = 0;
    for (const Variant &v : items) {
        (*this)[i++] = v;
    }
}

Array::Array(const Array &base, int64_t type, const StringName &class_name, const Variant &script) {
    const void *args[] = {base._native_ptr(), &type, class_name._native_ptr(), &script};
    construct(2, args);
}

#define GDE_ARRAY_FROM(m_class, m_constructor)                                                                         \
    Array::Array(const m_class &from) {                                                                                \
        const void *args[] = {from._native_ptr()};                                                                     \
        construct(m_constructor, args);                                                                                \
    }
GDE_ARRAY_FROM(PackedByteArray, 3)
GDE_ARRAY_FROM(PackedInt32Array, 4)
GDE_ARRAY_FROM(PackedInt64Array, 5)
GDE_ARRAY_FROM(PackedFloat32Array, 6)
GDE_ARRAY_FROM(PackedFloat64Array, 7)
GDE_ARRAY_FROM(PackedStringArray, 8)
GDE_ARRAY_FROM(PackedVector2Array, 9)
GDE_ARRAY_FROM(PackedVector3Array, 10)
GDE_ARRAY_FROM(PackedColorArray, 11)
GDE_ARRAY_FROM(PackedVector4Array, 12)
#undef GDE_ARRAY_FROM

const Variant &Array::operator[](int64_t index) const {
    const void *v = gde.array_operator_index_const(_native_ptr(), index);
    if (unlikely(v == nullptr)) {
        internal::out_of_bounds(index);
        return null_variant();
    }
    return *static_cast<const Variant *>(v);
}

Variant &Array::operator[](int64_t index) {
    void *v = gde.array_operator_index(_native_ptr(), index);
    if (unlikely(v == nullptr)) {
        internal::out_of_bounds(index);
        return null_variant();
    }
    return *static_cast<Variant *>(v);
}

bool Array::operator==(const Array &o) const {
    return evaluate(GDEXTENSION_VARIANT_OP_EQUAL, *this, o);
}

bool Array::operator<(const Array &o) const {
    return evaluate(GDEXTENSION_VARIANT_OP_LESS, *this, o);
}

Array Array::operator+(const Array &o) const {
    Array sum = duplicate();
    sum.append_array(o);
    return sum;
}

void Array::set_typed(uint32_t type, const StringName &class_name, const Variant &script) {
    gde.array_set_typed(_native_ptr(), GDExtensionVariantType(type), class_name._native_ptr(), &script);
}

// Elements lie side by side.
Array::Iterator Array::begin() {
    return is_empty() ? nullptr : &(*this)[0];
}

Array::Iterator Array::end() {
    return begin() + size();
}

Array::ConstIterator Array::begin() const {
    return is_empty() ? nullptr : &(*this)[0];
}

Array::ConstIterator Array::end() const {
    return begin() + size();
}

} // namespace godot
