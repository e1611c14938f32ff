#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "rules/json_guard.h"
#include "rules/money_text.h"

namespace tilm::rules {
namespace {

TEST(MoneyText, GroupsDigits) {
    EXPECT_EQ(group_digits(0), "0");
    EXPECT_EQ(group_digits(999), "999");
    EXPECT_EQ(group_digits(1000), "1,000");
    EXPECT_EQ(group_digits(-123456), "-123,456");
    EXPECT_EQ(group_digits(1234567890), "1,234,567,890");
    EXPECT_EQ(group_digits(std::numeric_limits<int64_t>::min()), "-9,223,372,036,854,775,808");
}

TEST(MoneyText, ShortForms) {
    EXPECT_EQ(short_number(9999), "9999");
    EXPECT_EQ(short_number(10000), "10.0K");
    EXPECT_EQ(short_number(1230000), "1.23M");
    EXPECT_EQ(short_number(4500000000), "4.50B");
    EXPECT_EQ(short_money(999), "999");
    EXPECT_EQ(short_money(1500), "1.5K");
    EXPECT_EQ(short_money(3000000000), "3.0B");
    EXPECT_EQ(short_money(-5), "-5");
}

TEST(JsonGuard, RefusesWhatWouldHurtAParser) {
    EXPECT_EQ(json_refusal(R"({"a": [1, {"b": "]]]}}}"}], "c": "\"["})"), "");
    EXPECT_EQ(json_refusal(""), "empty");
    EXPECT_EQ(json_refusal(" \n\t"), "empty");
    EXPECT_EQ(json_refusal(R"({"a": 1)"), "cut off");
    EXPECT_EQ(json_refusal(R"({"a": "text)"), "cut off");
    EXPECT_EQ(json_refusal(R"({"a": "text\)"), "cut off");
    EXPECT_EQ(json_refusal("{}]"), "unbalanced brackets");
    EXPECT_EQ(json_refusal(std::string("{\"a\\\0\": 1}", 10)), "a zero byte");
    EXPECT_EQ(json_refusal(std::string(10000, '[') + std::string(10000, ']')), "nested too deep");
    EXPECT_EQ(json_refusal(std::string(64, '[') + std::string(64, ']')), "");
    EXPECT_EQ(json_refusal(std::string(65, '[') + std::string(65, ']')), "nested too deep");
    EXPECT_EQ(json_refusal("[12345]", {.bytes = 6}), "too large");
}

TEST(JsonGuard, GrammarIsReadThroughToTheEnd) {
    for (const char *good :
         {"{}", " { } ", R"({"a":1})", R"({"a":[1,-2.5,3e9,0,0.5,-0,1E-3],"b":{"c":[[],{}]}})",
          R"({"":"\"\\\/\b\f\n\r\t\u00e9\uFFFD","n":null,"t":true,"f":false})", "{\"a\":\"\x01\"}"}) {
        EXPECT_TRUE(is_json_object(good)) << good;
    }
    for (const char *bad : {"",
                            "[]",
                            "1",
                            "null",
                            "{",
                            "}",
                            "{}}",
                            "{} x",
                            R"({"a"})",
                            R"({"a":})",
                            R"({a:1})",
                            R"({"a":1,})",
                            R"({,"a":1})",
                            R"({"a":1 "b":2})",
                            R"({"a":[1,]})",
                            R"({"a":[1 2]})",
                            R"({"a":[1})",
                            R"({"a":01})",
                            R"({"a":1.})",
                            R"({"a":.5})",
                            R"({"a":1e})",
                            R"({"a":+1})",
                            R"({"a":-})",
                            R"({"a":inf})",
                            R"({"a":tru})",
                            R"({"a":"x)",
                            R"({"a":"\x"})",
                            R"({"a":"\u12g4"})",
                            R"({"a":"\ud800"})",
                            R"({"a":"\u0000"})",
                            R"({"a":"\)",
                            R"({"a":"\u00)"}) {
        EXPECT_FALSE(is_json_object(bad)) << bad;
    }
    const auto nested = [](int n) { return "{\"a\":" + std::string(n, '[') + std::string(n, ']') + "}"; };
    EXPECT_TRUE(is_json_object(nested(63)));
    EXPECT_FALSE(is_json_object(nested(64)));
    EXPECT_FALSE(is_json_object(nested(100000)));
    EXPECT_FALSE(is_json_object("{\"a\":1}", {.bytes = 4}));
}

TEST(JsonGuard, RepairsOnlyWhatIsMalformed) {
    const std::string good = "a \xC3\xA9 \xD8\xB9 \xE2\x82\xAC \xF0\x9F\x90\x94 z";
    EXPECT_EQ(repaired_utf8(good), good);
    EXPECT_EQ(good_utf8_prefix(good + "12345678\xFF"), good.size() + 8);
    EXPECT_EQ(repaired_utf8(std::string("12345678\xFF") + "12345678"), "12345678?12345678");
    EXPECT_EQ(repaired_utf8(""), "");
    EXPECT_EQ(repaired_utf8("a\xFF"
                            "b\xC3"),
              "a?b?");
    EXPECT_EQ(repaired_utf8("\xC0\xAF"), "??");           // an over-long slash
    EXPECT_EQ(repaired_utf8("\xED\xA0\x80"), "???");      // half of a surrogate pair
    EXPECT_EQ(repaired_utf8("\xF5\x80\x80\x80"), "????"); // beyond the last character
    EXPECT_EQ(repaired_utf8("\xE2\x82"), "??");           // cut off
}

} // namespace
} // namespace tilm::rules
