#pragma once
// Between the engine's strings and the plain ones of the sound rules.

#include <string>
#include <string_view>

#include <godot_cpp/variant/char_string.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/string_name.hpp>

namespace tilm {
using namespace godot;

inline std::string text_of(const StringName &name) {
    const CharString utf8 = String(name).utf8();
    return std::string(utf8.get_data(), static_cast<size_t>(utf8.length()));
}

inline String engine_text(std::string_view text) {
    return String::utf8(text.data(), static_cast<int64_t>(text.size()));
}

} // namespace tilm
