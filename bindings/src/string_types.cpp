// String, StringName and NodePath beyond what the engine's own methods do.

#include <cstring>
#include <string>

#include <godot_cpp/core/generated_support.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

using internal::gde;

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
    uint8_t same = 0;
    gde.variant_get_ptr_operator_evaluator(GDEXTENSION_VARIANT_OP_EQUAL, GDE_TYPE, GDE_TYPE)(words, o.words, &same);
    return same != 0;
}

} // namespace godot
