#include "rules/surface_table.h"

namespace tilm::rules {
namespace {

// Type numbers of the engine's binary form. A header with any higher bit set is of a kind that is not written here.
enum : uint32_t { NIL = 0, STRING = 4, DICTIONARY = 27, ARRAY = 28 };
constexpr uint32_t SLOTS = 13;

// Bytes of one element, 0 for a type that no slot holds.
uint32_t element_size(uint32_t type) {
    switch (type) {
    case 30: // whole numbers
    case 32: // real numbers
        return 4;
    case 35: // Vector2
        return 8;
    case 36: // Vector3
        return 12;
    case 37: // Color
        return 16;
    default:
        return 0;
    }
}

struct Reader {
    std::span<const uint8_t> left;

    bool number(uint32_t &n) {
        if (left.size() < 4) {
            return false;
        }
        n = uint32_t(left[0]) | uint32_t(left[1]) << 8 | uint32_t(left[2]) << 16 | uint32_t(left[3]) << 24;
        left = left.subspan(4);
        return true;
    }
    bool exactly(uint32_t wanted) {
        uint32_t n = 0;
        return number(n) && n == wanted;
    }
    bool skip(uint64_t bytes) {
        if (left.size() < bytes) {
            return false;
        }
        left = left.subspan(size_t(bytes));
        return true;
    }
    bool string() {
        uint32_t length = 0;
        if (!exactly(STRING) || !number(length) || left.size() < length) {
            return false;
        }
        // Names of shapes are plain text; the engine logs an error for bytes that are none.
        for (const uint8_t c : left.first(length)) {
            if (c == 0 || c > 0x7E) {
                return false;
            }
        }
        return skip((uint64_t(length) + 3) / 4 * 4);
    }
    bool slot() {
        uint32_t type = 0, count = 0;
        if (!number(type)) {
            return false;
        }
        if (type == NIL) {
            return true;
        }
        const uint64_t each = element_size(type);
        return each > 0 && number(count) && skip(count * each);
    }
    bool surface() {
        if (!exactly(ARRAY) || !exactly(SLOTS)) {
            return false;
        }
        for (uint32_t i = 0; i < SLOTS; i++) {
            if (!slot()) {
                return false;
            }
        }
        return true;
    }
};

} // namespace

bool is_surface_table(std::span<const uint8_t> bytes) {
    Reader reader{bytes};
    uint32_t count = 0;
    if (!reader.exactly(DICTIONARY) || !reader.number(count)) {
        return false;
    }
    for (uint32_t i = 0; i < count; i++) {
        if (!reader.string() || !reader.surface()) {
            return false;
        }
    }
    return reader.left.empty();
}

} // namespace tilm::rules
