#include "rules/json_guard.h"

#include <cstdint>
#include <cstring>

namespace tilm::rules {

namespace {

constexpr std::string_view BLANKS = " \t\r\n";

bool is_continuation(unsigned char c) {
    return (c & 0xC0U) == 0x80U;
}

} // namespace

std::string_view json_refusal(std::string_view text, const JsonLimits &limits) {
    if (text.size() > limits.bytes) {
        return "too large";
    }
    if (text.find_first_not_of(BLANKS) == std::string_view::npos) {
        return "empty";
    }
    if (text.find('\0') != std::string_view::npos) {
        return "a zero byte";
    }
    int depth = 0;
    bool in_string = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (in_string) {
            if (c == '\\') {
                ++i;
            } else if (c == '"') {
                in_string = false;
            }
            continue;
        }
        if (c == '"') {
            in_string = true;
        } else if (c == '{' || c == '[') {
            if (++depth > limits.depth) {
                return "nested too deep";
            }
        } else if (c == '}' || c == ']') {
            if (--depth < 0) {
                return "unbalanced brackets";
            }
        }
    }
    if (in_string || depth != 0) {
        return "cut off";
    }
    return {};
}

size_t utf8_length(std::string_view text) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80U) {
        return 1;
    }
    size_t length = 0;
    uint32_t point = 0;
    uint32_t least = 0; // shorter forms of the same character are malformed
    if ((lead & 0xE0U) == 0xC0U) {
        length = 2;
        point = lead & 0x1FU;
        least = 0x80;
    } else if ((lead & 0xF0U) == 0xE0U) {
        length = 3;
        point = lead & 0x0FU;
        least = 0x800;
    } else if ((lead & 0xF8U) == 0xF0U) {
        length = 4;
        point = lead & 0x07U;
        least = 0x10000;
    } else {
        return 0;
    }
    if (text.size() < length) {
        return 0;
    }
    for (size_t i = 1; i < length; ++i) {
        if (!is_continuation(byte(i))) {
            return 0;
        }
        point = (point << 6U) | (byte(i) & 0x3FU);
    }
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    return point < least || point > 0x10FFFF || surrogate ? 0 : length;
}

size_t good_utf8_prefix(std::string_view text) {
    constexpr size_t BLOCK = 8;
    constexpr uint64_t HIGH_BITS = 0x8080808080808080U;
    size_t at = 0;
    while (at < text.size()) {
        uint64_t block = HIGH_BITS;
        if (at + BLOCK <= text.size()) {
            std::memcpy(&block, text.data() + at, BLOCK);
        }
        if ((block & HIGH_BITS) == 0) {
            at += BLOCK; // plain ASCII
            continue;
        }
        const size_t length = utf8_length(text.substr(at));
        if (length == 0) {
            return at;
        }
        at += length;
    }
    return at;
}

std::string repaired_utf8(std::string_view text) {
    std::string out;
    for (;;) {
        const size_t good = good_utf8_prefix(text);
        out.append(text.substr(0, good));
        if (good == text.size()) {
            return out;
        }
        out.push_back('?');
        text.remove_prefix(good + 1);
    }
}

} // namespace tilm::rules
