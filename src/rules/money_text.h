#pragma once
// Numbers as the player reads them.

#include <cstdint>
#include <string>

namespace tilm::rules {

// 1234567 -> "1,234,567".
std::string group_digits(int64_t n);

// Short form for goals: plain below 10,000, then "12.3K", "1.23M", "1.23B".
std::string short_number(int64_t n);

// Short form for farm cards: one decimal with K, M or B from 1,000 up, plain below.
std::string short_money(int64_t n);

} // namespace tilm::rules
