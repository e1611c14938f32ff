#include "rules/money_text.h"

#include <cstdio>

namespace tilm::rules {

namespace {

std::string with_unit(const char *format, double value) {
    char text[48];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

} // namespace

std::string group_digits(int64_t n) {
    std::string text = std::to_string(n);
    const size_t first = n < 0 ? 1 : 0;
    for (size_t at = text.size(); at > first + 3;) {
        at -= 3;
        text.insert(at, 1, ',');
    }
    return text;
}

std::string short_number(int64_t n) {
    const double v = static_cast<double>(n);
    if (n < 10000) {
        return std::to_string(n);
    }
    if (n < 1000000) {
        return with_unit("%.1fK", v / 1e3);
    }
    if (n < 1000000000) {
        return with_unit("%.2fM", v / 1e6);
    }
    return with_unit("%.2fB", v / 1e9);
}

std::string short_money(int64_t n) {
    const double v = static_cast<double>(n);
    if (n >= 1000000000) {
        return with_unit("%.1fB", v / 1e9);
    }
    if (n >= 1000000) {
        return with_unit("%.1fM", v / 1e6);
    }
    if (n >= 1000) {
        return with_unit("%.1fK", v / 1e3);
    }
    return std::to_string(n);
}

} // namespace tilm::rules
