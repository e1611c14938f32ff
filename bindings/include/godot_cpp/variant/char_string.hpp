#pragma once
// Text in the encodings of the outside world, as String::utf8() and friends return it.

#include <string>

#include <godot_cpp/core/defs.hpp>

namespace godot {

template <typename T>
class CharStringT {
public:
    CharStringT() = default;
    explicit CharStringT(std::basic_string<T> s) : text(std::move(s)) {}

    // Without the closing zero.
    int64_t length() const { return int64_t(text.size()); }
    // With the closing zero, 0 if empty.
    int64_t size() const { return text.empty() ? 0 : int64_t(text.size()) + 1; }
    bool is_empty() const { return text.empty(); }
    T *ptrw() { return text.data(); }
    const T *ptr() const { return text.c_str(); }
    const T *get_data() const { return text.c_str(); }
    T operator[](int64_t i) const { return text[size_t(i)]; }
    bool operator==(const CharStringT &o) const { return text == o.text; }
    bool operator<(const CharStringT &o) const { return text < o.text; }

private:
    std::basic_string<T> text;
};

using CharString = CharStringT<char>;
using Char16String = CharStringT<char16_t>;
using Char32String = CharStringT<char32_t>;
using CharWideString = CharStringT<wchar_t>;

} // namespace godot
