// The hand-written part of the opaque builtin types.

#include <algorithm>
#include <cstring>
#include <string>

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

// --- String

String::String(const StringName &name) {
    if (name.data_unique_pointer()) {
        static const GDExtensionPtrConstructor make =
            gde.variant_get_ptr_constructor(GDEXTENSION_VARIANT_TYPE_STRING, 2);
        const void *args[] = {name._native_ptr()};
        make(words, args);
    }
}

String::String(const NodePath &path) {
    const void *args[] = {path._native_ptr()};
    construct(3, args);
}

static bool is_ascii(const char *text, size_t len) {
    for (size_t i = 0; i < len; ++i) {
        if (static_cast<unsigned char>(text[i]) >= 0x80) {
            return false;
        }
    }
    return true;
}

static void new_from_utf8(void *words, const char *text, size_t len) {
    if (len == 0) {
        return;
    }
    if (is_ascii(text, len)) {
        gde.string_new_with_latin1_chars_and_len(words, text, GDExtensionInt(len));
    } else {
        gde.string_new_with_utf8_chars_and_len(words, text, GDExtensionInt(len));
    }
}

String::String(const char *text) {
    if (text) {
        new_from_utf8(words, text, std::strlen(text));
    }
}

String::String(const wchar_t *text) {
    if (text && *text) {
        gde.string_new_with_wide_chars_and_len(words, text, GDExtensionInt(std::char_traits<wchar_t>::length(text)));
    }
}

String::String(const char16_t *text) {
    if (text && *text) {
        gde.string_new_with_utf16_chars_and_len(words, text, GDExtensionInt(std::char_traits<char16_t>::length(text)));
    }
}

String::String(const char32_t *text) {
    if (text && *text) {
        gde.string_new_with_utf32_chars_and_len(words, text, GDExtensionInt(std::char_traits<char32_t>::length(text)));
    }
}

String String::utf8(const char *text, int64_t len) {
    String s;
    if (text) {
        new_from_utf8(s.words, text, len < 0 ? std::strlen(text) : size_t(len));
    }
    return s;
}

String String::utf16(const char16_t *text, int64_t len) {
    String s;
    if (text && len != 0) {
        const size_t n = len < 0 ? std::char_traits<char16_t>::length(text) : size_t(len);
        gde.string_new_with_utf16_chars_and_len(s.words, text, GDExtensionInt(n));
    }
    return s;
}

String String::num_real(double v, bool trailing) {
    if (v == double(int64_t(v)) && !trailing) {
        return num_int64(int64_t(v));
    }
    const String s = Variant(v).stringify();
    return trailing || !s.ends_with(".0") ? s : s.substr(0, s.length() - 2);
}

int64_t String::parse_utf8(const char *text, int64_t len) {
    *this = utf8(text, len);
    return OK;
}

CharString String::utf8() const {
    std::string out;
    if (words[0]) {
        out.resize(size_t(gde.string_to_utf8_chars(words, nullptr, 0)));
        gde.string_to_utf8_chars(words, out.data(), GDExtensionInt(out.size()));
    }
    return CharString(std::move(out));
}

CharString String::ascii() const {
    std::string out;
    if (words[0]) {
        out.resize(size_t(gde.string_to_latin1_chars(words, nullptr, 0)));
        gde.string_to_latin1_chars(words, out.data(), GDExtensionInt(out.size()));
    }
    return CharString(std::move(out));
}

Char16String String::utf16() const {
    std::u16string out;
    if (words[0]) {
        out.resize(size_t(gde.string_to_utf16_chars(words, nullptr, 0)));
        gde.string_to_utf16_chars(words, out.data(), GDExtensionInt(out.size()));
    }
    return Char16String(std::move(out));
}

Char32String String::utf32() const {
    return Char32String(std::u32string(ptr(), size_t(length())));
}

CharWideString String::wide_string() const {
    std::wstring out;
    for (const char32_t *p = ptr(); *p; ++p) {
        out.push_back(wchar_t(*p));
    }
    return CharWideString(std::move(out));
}

const char32_t *String::ptr() const {
    return words[0] ? static_cast<const char32_t *>(words[0]) : U"";
}

char32_t *String::ptrw() {
    return words[0] ? gde.string_operator_index(words, 0) : nullptr;
}

int64_t String::size() const {
    return words[0] ? length() + 1 : 0;
}

int64_t String::resize(int64_t size) {
    return gde.string_resize(words, size);
}

static char32_t &no_character(int64_t i) {
    static char32_t zero;
    internal::out_of_bounds(i);
    zero = 0;
    return zero;
}

const char32_t &String::operator[](int64_t i) const {
    const char32_t *c = gde.string_operator_index_const(words, i);
    return c ? *c : no_character(i);
}

char32_t &String::operator[](int64_t i) {
    char32_t *c = gde.string_operator_index(words, i);
    return c ? *c : no_character(i);
}

bool String::operator==(const String &o) const {
    const char32_t *a = ptr(), *b = o.ptr();
    if (a == b) {
        return true;
    }
    while (*a == *b) {
        if (!*a) {
            return true;
        }
        ++a;
        ++b;
    }
    return false;
}

bool String::operator==(const char *o) const {
    const char32_t *a = ptr();
    for (const char *b = o ? o : "";; ++a, ++b) {
        if (static_cast<unsigned char>(*b) >= 0x80) {
            return *this == String(o);
        }
        if (*a != char32_t(*b)) {
            return false;
        }
        if (!*b) {
            return true;
        }
    }
}

bool String::operator==(const StringName &o) const {
    return *this == String(o);
}

bool String::operator<(const String &o) const {
    const char32_t *a = ptr(), *b = o.ptr();
    while (*a && *a == *b) {
        ++a;
        ++b;
    }
    return *a < *b;
}

String String::operator+(const String &o) const {
    String s = *this;
    s += o;
    return s;
}

String String::operator+(const char *o) const {
    String s = *this;
    s += o;
    return s;
}

String &String::operator+=(const char *o) {
    if (!words[0] || !o || !is_ascii(o, std::strlen(o))) {
        return *this += String(o);
    }
    gde.string_operator_plus_eq_cstr(words, o);
    return *this;
}

String String::operator+(char32_t c) const {
    String s = *this;
    s += c;
    return s;
}

String &String::operator+=(const String &o) {
    if (!words[0]) {
        *this = o;
    } else if (o.words[0]) {
        gde.string_operator_plus_eq_string(words, o.words);
    }
    return *this;
}

String &String::operator+=(char32_t c) {
    gde.string_operator_plus_eq_char(words, c);
    return *this;
}

String String::operator%(const Variant &values) const {
    Variant ret;
    bool valid = false;
    Variant::evaluate(Variant::OP_MODULE, *this, values, ret, valid);
    return valid ? ret.operator String() : *this;
}

String vformat_array(const String &text, const Array &values) {
    return text % Variant(values);
}

String itos(int64_t v) {
    return String::num_int64(v);
}

String uitos(uint64_t v) {
    return String::num_uint64(int64_t(v));
}

String rtos(double v) {
    return String::num(v);
}

String rtoss(double v) {
    return String::num_scientific(v);
}

bool NaturalNoCaseComparator::operator()(const String &a, const String &b) const {
    return a.naturalnocasecmp_to(b) < 0;
}

bool NoCaseComparator::operator()(const String &a, const String &b) const {
    return a.nocasecmp_to(b) < 0;
}

// --- StringName, NodePath

StringName::StringName(const String &text) {
    if (text.ptr()[0]) {
        static const GDExtensionPtrConstructor make =
            gde.variant_get_ptr_constructor(GDEXTENSION_VARIANT_TYPE_STRING_NAME, 2);
        const void *args[] = {text._native_ptr()};
        make(words, args);
    }
}

StringName::StringName(const char *text, bool is_static) {
    if (!text || !*text) {
        return;
    }
    const size_t len = std::strlen(text);
    if (is_ascii(text, len)) {
        gde.string_name_new_with_latin1_chars(words, text, is_static);
    } else {
        gde.string_name_new_with_utf8_chars_and_len(words, text, GDExtensionInt(len));
    }
}

NodePath::NodePath(const String &path) {
    const void *args[] = {path._native_ptr()};
    construct(2, args);
}

bool NodePath::operator==(const NodePath &o) const {
    return evaluate(GDEXTENSION_VARIANT_OP_EQUAL, *this, o);
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
