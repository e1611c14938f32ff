#include "rules/carry_text.h"

#include <algorithm>

#include "rules/goods.h"

namespace tilm::rules {

namespace {

constexpr size_t honest_length = 8192; // every good there is, several times over

int count_of(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    int n = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            break;
        }
        n = std::min(n * 10 + (c - '0'), carry_max);
    }
    return negative ? 0 : n;
}

} // namespace

std::vector<std::pair<std::string_view, int>> parse_carry(std::string_view text) {
    std::vector<std::pair<std::string_view, int>> out;
    text = text.substr(0, honest_length);
    while (!text.empty()) {
        const size_t end = std::min(text.find(','), text.size());
        const std::string_view pair = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const size_t colon = pair.find(':');
        if (colon == std::string_view::npos) {
            continue;
        }
        const Good *good = find_good(pair.substr(0, colon));
        if (good == nullptr) {
            continue;
        }
        const int n = count_of(pair.substr(colon + 1));
        auto known = std::find_if(out.begin(), out.end(), [&](const auto &row) { return row.first == good->kind; });
        if (known == out.end()) {
            out.emplace_back(good->kind, n);
        } else {
            known->second = n;
        }
    }
    return out;
}

} // namespace tilm::rules
