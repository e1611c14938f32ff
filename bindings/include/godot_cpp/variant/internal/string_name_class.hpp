#pragma once

#include <godot_cpp/variant/internal/string_class.hpp>

namespace godot {

class StringName : public internal::Opaque<GDEXTENSION_VARIANT_TYPE_STRING_NAME, 1> {
    friend class Variant;

public:
    constexpr StringName() = default;
    GDE_FROM_VARIANT(StringName)
    StringName(const String &text);
    StringName(const char *text) : StringName(text, false) {}
    // is_static: the name lives as long as the process, the engine need not count it.
    StringName(const char *text, bool is_static);
    StringName(const wchar_t *text) : StringName(String(text)) {}
    StringName(const char16_t *text) : StringName(String(text)) {}
    StringName(const char32_t *text) : StringName(String(text)) {}

    // Names are interned: equal names are the same data.
    const void *data_unique_pointer() const { return words[0]; }
    bool operator==(const StringName &o) const { return words[0] == o.words[0]; }
    bool operator!=(const StringName &o) const { return words[0] != o.words[0]; }
    bool operator<(const StringName &o) const { return words[0] < o.words[0]; }
    bool operator==(const String &o) const { return String(*this) == o; }
    bool operator!=(const String &o) const { return !(String(*this) == o); }
    bool operator==(const char *o) const { return String(*this) == o; }
    bool operator!=(const char *o) const { return !(String(*this) == o); }
    String operator+(const String &o) const { return String(*this) + o; }
    String operator+(const char *o) const { return String(*this) + o; }
    String operator%(const Variant &values) const { return String(*this) % values; }

#include <godot_cpp/gen/string_name_methods.inc>
};

inline bool operator==(const char *a, const StringName &b) {
    return b == a;
}
inline String operator+(const String &a, const StringName &b) {
    return a + String(b);
}
inline String operator+(const char *a, const StringName &b) {
    return String(a) + String(b);
}
// Alphabetical order instead of the order of addresses.
struct StringNameAlphCompare {
    bool operator()(const StringName &a, const StringName &b) const { return String(a) < String(b); }
};

// A name made once per place of use.
#define SNAME(m_text)                                                                                                  \
    ([]() -> const ::godot::StringName & {                                                                             \
        static ::godot::internal::StaticName sname{m_text};                                                            \
        return sname.name();                                                                                           \
    })()

} // namespace godot
