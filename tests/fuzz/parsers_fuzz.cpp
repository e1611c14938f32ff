// Texts from outside, changed at random: no parser may crash, hang or let through what it promises to refuse. The seed
// of a run is printed; TILMARCH_FUZZ_SEED and TILMARCH_FUZZ_ROUNDS repeat or lengthen it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "rules/carry_text.h"
#include "rules/json_guard.h"
#include "rules/options.h"
#include "rules/translator.h"

using namespace tilm::rules;

namespace {

std::string file_text(const std::string &name) {
    std::ifstream in(std::string(TILMARCH_TEST_DATA) + "/" + name, std::ios::binary);
    EXPECT_TRUE(in.good()) << name;
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

uint64_t setting(const char *name, uint64_t otherwise) {
    const char *given = std::getenv(name);
    return given != nullptr ? std::strtoull(given, nullptr, 10) : otherwise;
}

std::string fault_of(const std::string &text) {
    if (nlohmann::json::accept(text)) {
        return {};
    }
    try {
        return nlohmann::json::parse(text).dump();
    } catch (const std::exception &e) {
        return e.what();
    }
}

class Fuzz : public ::testing::Test {
protected:
    const uint64_t seed = setting("TILMARCH_FUZZ_SEED", std::random_device{}());
    std::mt19937_64 random{seed};
    const uint64_t rounds = setting("TILMARCH_FUZZ_ROUNDS", 4000);

    void SetUp() override { std::fprintf(stderr, "seed %llu\n", static_cast<unsigned long long>(seed)); }

    size_t below(size_t n) { return n == 0 ? 0 : random() % n; }

    // Bytes changed, cut, doubled, and pieces that parsers stumble over put in.
    std::string changed(std::string text) {
        static const std::vector<std::string> pieces = {"{",
                                                        "}",
                                                        "[",
                                                        "]",
                                                        "\"",
                                                        "\\",
                                                        "\\u0000",
                                                        "\\ud800",
                                                        ",",
                                                        ":",
                                                        "-",
                                                        "e",
                                                        "1e999",
                                                        "-0",
                                                        "null",
                                                        "tru",
                                                        "\xff",
                                                        "\xc0\x80",
                                                        "\xed\xa0\x80",
                                                        "\xf4\x90\x80\x80",
                                                        std::string(1, '\0'),
                                                        "{#}",
                                                        "{}",
                                                        "{9}",
                                                        "\t",
                                                        "\n",
                                                        "99999999999999999999",
                                                        "=",
                                                        "--",
                                                        " ",
                                                        "\xD9\x85",
                                                        "$",
                                                        "%",
                                                        std::string(300, '['),
                                                        std::string(70, '{')};
        for (size_t n = 1 + below(6); n > 0; n--) {
            const size_t at = below(text.size() + 1);
            switch (below(5)) {
            case 0:
                text.insert(at, pieces[below(pieces.size())]);
                break;
            case 1:
                text.erase(at, below(40));
                break;
            case 2:
                text.insert(at, text.substr(below(text.size() + 1), below(60)));
                break;
            case 3:
                if (at < text.size()) {
                    text[at] = static_cast<char>(random());
                }
                break;
            default:
                text.resize(below(8) == 0 ? at : text.size());
                break;
            }
        }
        return text;
    }
};

} // namespace

TEST_F(Fuzz, WhatTheGrammarAcceptsParsersAccept) {
    const std::string whole = file_text("full_farm.json");
    size_t accepted = 0;
    for (uint64_t i = 0; i < rounds; i++) {
        // Short ones too: in a long text nearly every change is in a name or a number.
        const size_t from = below(whole.size());
        const std::string text = changed(i % 4 == 0 ? whole : "{\"a\":" + whole.substr(from, below(50)) + "}");
        const std::string fixed = repaired_utf8(text);
        ASSERT_EQ(good_utf8_prefix(fixed), fixed.size());
        ASSERT_EQ(repaired_utf8(fixed), fixed);
        if (is_json_object(text)) {
            accepted++;
            // The engine's parser is milder than this one with control characters and malformed bytes in a string, and
            // reads a number beyond all bounds as infinite.
            std::string strict = fixed;
            std::replace_if(
                strict.begin(), strict.end(), [](unsigned char c) { return c < 0x20; }, ' ');
            const std::string fault = fault_of(strict);
            ASSERT_TRUE(fault.empty() || fault.find("number overflow") != std::string::npos) << fault;
            ASSERT_EQ(json_refusal(text), "") << text;
        }
    }
    EXPECT_GT(accepted, rounds / 100) << "nothing was tried";
}

TEST_F(Fuzz, OptionsCarriesAndSentences) {
    Translator shipped;
    std::vector<std::string> problems;
    const std::string exact = file_text("../../lang/ar/exact.tsv");
    const std::string templates = file_text("../../lang/ar/templates.tsv");
    const std::string combinations = file_text("../../lang/ar/combinations.tsv");
    shipped.load(exact, templates, combinations, problems);
    const std::vector<std::string> texts = {"SOLD 7 EGGS +$90",     "LEVEL 3! NEXT: FOOD FACTORY AT LEVEL 4",
                                            "NEED A + B",           "egg:3,milk:2,wool:60",
                                            "EGGS   7/12\nHAY 3/4", "LV 3  MY FARM 7%"};
    const std::vector<std::string> words = {"--at=3.5",    "--money=100",     "--pets=dog,cat", "--shots=out",
                                            "--every=0.5", "--size=720x1560", "--timescale=8",  "--day=120",
                                            "--quality=2", "--zoom=3"};
    for (uint64_t i = 0; i < rounds; i++) {
        const std::string text = changed(texts[below(texts.size())]);
        shipped.message(text);
        for (const auto &[kind, count] : parse_carry(text)) {
            ASSERT_FALSE(kind.empty());
            ASSERT_GE(count, 0);
            ASSERT_LE(count, carry_max);
        }
        const std::vector<std::string> given = {changed(words[below(words.size())]),
                                                changed(words[below(words.size())])};
        const Options options = parse_options(given);
        ASSERT_GE(options.zoom, 1.0);
        ASSERT_TRUE(options.every > 0.0 && options.shot_width > 0 && options.shot_height > 0) << given[0] << given[1];
        ASSERT_LE(options.quality, 3);
        if (i % 200 == 0) {
            Translator other;
            other.load(changed(exact), changed(templates), changed(combinations), problems);
            other.message(text);
        }
    }
}
