#pragma once

#include <string_view>

#include <godot_cpp/variant/char_string.hpp>
#include <godot_cpp/variant/opaque.hpp>

namespace godot {

class String : public internal::Opaque<GDEXTENSION_VARIANT_TYPE_STRING, 1> {
    friend class Variant;

public:
    constexpr String() = default;
    GDE_FROM_VARIANT(String)
    String(const StringName &name);
    String(const NodePath &path);
    // Plain text in UTF-8; ASCII needs no decoding.
    String(const char *text);
    String(const wchar_t *text);
    String(const char16_t *text);
    String(const char32_t *text);

    static String utf8(const char *text, int64_t len = -1);
    static String utf16(const char16_t *text, int64_t len = -1);
    static String num_real(double v, bool trailing = true);
    int64_t parse_utf8(const char *text, int64_t len = -1);
    CharString utf8() const;
    CharString ascii() const;
    CharString latin1() const { return ascii(); }
    Char16String utf16() const;
    Char32String utf32() const;
    CharWideString wide_string() const;

    // Zero-terminated code points.
    const char32_t *ptr() const;
    const char32_t *get_data() const { return ptr(); }
    char32_t *ptrw();
    // With the closing zero, 0 if empty.
    int64_t size() const;
    int64_t resize(int64_t size);

    const char32_t &operator[](int64_t i) const;
    char32_t &operator[](int64_t i);
    bool operator==(const String &o) const;
    bool operator==(const char *o) const;
    bool operator==(const wchar_t *o) const { return *this == String(o); }
    bool operator==(const char16_t *o) const { return *this == String(o); }
    bool operator==(const char32_t *o) const { return *this == String(o); }
    bool operator==(const StringName &o) const;
    template <typename T>
    bool operator!=(const T &o) const {
        return !(*this == o);
    }
    bool operator<(const String &o) const;
    bool operator<=(const String &o) const { return !(o < *this); }
    bool operator>(const String &o) const { return o < *this; }
    bool operator>=(const String &o) const { return !(*this < o); }
    String operator+(const String &o) const;
    String operator+(const char *o) const;
    String operator+(const char32_t *o) const { return *this + String(o); }
    String operator+(char32_t c) const;
    String &operator+=(const String &o);
    String &operator+=(const char *o);
    String &operator+=(const char32_t *o) { return *this += String(o); }
    String &operator+=(char32_t c);
    String operator%(const Variant &values) const;

    bool operator!() const { return !words[0]; }

    // The other builtin methods, as the engine tells them:
#include <godot_cpp/gen/string_methods.inc>
};

inline bool operator==(const char *a, const String &b) {
    return b == a;
}
inline bool operator!=(const char *a, const String &b) {
    return !(b == a);
}
inline String operator+(const char *a, const String &b) {
    return String(a) + b;
}
inline String operator+(const char32_t *a, const String &b) {
    return String(a) + b;
}
inline String operator+(char32_t a, const String &b) {
    return (String() + a) + b;
}

String itos(int64_t v);
String uitos(uint64_t v);
String rtos(double v);
String rtoss(double v);
// Case-insensitive, digits by value.
struct NaturalNoCaseComparator {
    bool operator()(const String &a, const String &b) const;
};
struct NoCaseComparator {
    bool operator()(const String &a, const String &b) const;
};

} // namespace godot
