#include "rules/machine_rules.h"

#include <algorithm>
#include <cmath>

namespace tilm::rules {

namespace {

constexpr double FIRST_SECONDS = 1.6;
constexpr double STEP_FACTOR = 0.62;
constexpr double SLOW_SECONDS = 0.23642139; // what four steps leave
constexpr double SLOW_GAIN = 0.15;
constexpr int QUICK_LEVELS = 9;

struct CookRow {
    std::string_view product;
    std::string_view cook;
};

constexpr CookRow COOKS[] = {
    {"meat", "Butcher"},           {"drumstick", "PoultryButcher"},
    {"grilled_fish", "GrillCook"}, {"grilled_chicken", "GrillCook"},
    {"steak", "GrillCook"},        {"burger", "GrillCook"},
};

std::string shown_name(const std::string &kind) {
    std::string name = kind;
    for (char &c : name) {
        c = c == '_' ? ' ' : c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return name;
}

std::string joined(std::span<const std::string> kinds, std::string_view by) {
    std::string text;
    for (const std::string &kind : kinds) {
        if (!text.empty()) {
            text += by;
        }
        text += shown_name(kind);
    }
    return text;
}

} // namespace

double machine_interval(int level, double boost) {
    const int steps = std::max(0, speed_steps(level));
    const double seconds = level <= QUICK_LEVELS ? std::pow(STEP_FACTOR, steps) * FIRST_SECONDS
                                                 : SLOW_SECONDS / ((steps - 4) * SLOW_GAIN + 1.0);
    return seconds / boost;
}

int give_limit(int level, int kinds) {
    return std::max(10, (cap_steps(level) * 20 + 20) / std::max(2, kinds));
}

std::string need_text(std::span<const std::string> missing, bool flavors) {
    if (missing.empty()) {
        return std::string();
    }
    if (flavors && missing.size() == 2) {
        return "NEED " + joined(missing, " OR ");
    }
    if (missing.size() >= 3) {
        return "NEED\n" + joined(missing.first(2), " + ") + "\n+ " + joined(missing.subspan(2), " + ");
    }
    return "NEED " + joined(missing, " + ");
}

std::string_view cook_class(std::string_view product) {
    for (const CookRow &row : COOKS) {
        if (row.product == product) {
            return row.cook;
        }
    }
    return {};
}

} // namespace tilm::rules
