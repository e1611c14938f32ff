#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "rules/goods.h"
#include "rules/plan.h"
#include "rules/regions.h"
#include "rules/translator.h"

using namespace tilm::rules;

namespace {

const std::string on = "\xE2\x81\xA6";
const std::string off = "\xE2\x81\xA9";

std::string file_text(const std::string &name) {
    std::ifstream in(std::string(TILMARCH_TEST_DATA) + "/../../lang/ar/" + name, std::ios::binary);
    EXPECT_TRUE(in.good()) << name;
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// Marks where the engine would isolate, in plain letters.
std::string shown(const std::string &text) {
    std::string out = text;
    for (const auto &[mark, sign] : {std::pair{on, std::string("<")}, std::pair{off, std::string(">")}}) {
        for (size_t at = out.find(mark); at != std::string::npos; at = out.find(mark)) {
            out.replace(at, mark.size(), sign);
        }
    }
    return out;
}

Translator small() {
    Translator t;
    std::vector<std::string> problems;
    t.load("EGGS\tبيض\nMILK\tلبن\nTWO\\nLINES\tسطر\\nسطرين\n",
           "SOLD {#} {} +${#}\tبعت {0} {1} +${2}\nGO TO {}\tروح لـ {0}\nGIFT {} TO {}\tلـ {1} هدية {0}\n"
           "{} STOPPED - NO WATER\t{0} وقف\n{} +{#} STOPPED - NO WATER\t{0} +{1} وقفوا\nNEED {#} NOW\tمحتاج {0}\n",
           "{} + {}\t{0} + {1}\n{} {#}/{#}\t{0} {1}/{2}\n{}: {}\t{0}: {1}\n", problems);
    EXPECT_TRUE(problems.empty()) << problems.front();
    return t;
}

} // namespace

TEST(Translator, ExactBlanksAndLines) {
    Translator t = small();
    EXPECT_EQ(t.message("EGGS"), "بيض");
    EXPECT_EQ(t.message("  EGGS   "), "  بيض   ") << "blanks around stay around";
    EXPECT_EQ(t.message("TWO\nLINES"), "سطر\nسطرين");
    EXPECT_EQ(t.message("EGGS\nMILK"), "بيض\nلبن");
    EXPECT_EQ(t.message("EGGS   MILK"), "بيض   لبن");
    EXPECT_EQ(t.message("EGGS  MILK"), "بيض  لبن");
    EXPECT_EQ(t.message("NOBODY KNOWS"), "NOBODY KNOWS");
    EXPECT_EQ(t.message(""), "");
}

TEST(Translator, TemplatesTakeTheMostSpecificRow) {
    Translator t = small();
    EXPECT_EQ(shown(t.message("SOLD 12 EGGS +$48")), "بعت <12> بيض <+$48>");
    EXPECT_EQ(shown(t.message("GO TO MILK")), "روح لـ لبن");
    EXPECT_EQ(shown(t.message("GIFT EGGS TO MILK")), "لـ لبن هدية بيض") << "holes in another order";
    EXPECT_EQ(shown(t.message("EGGS +3 STOPPED - NO WATER")), "بيض <+3> وقفوا");
    EXPECT_EQ(shown(t.message("EGGS STOPPED - NO WATER")), "بيض وقف");
    EXPECT_EQ(shown(t.message("NEED 5K NOW")), "محتاج <5K>") << "K counts as part of a number";
    EXPECT_EQ(t.message("NEED 5X NOW"), "NEED 5X NOW") << "other letters do not";
    EXPECT_EQ(shown(t.message("GO TO زينب")), "روح لـ زينب") << "letters of several bytes are never cut";
}

TEST(Translator, CombinationsRecurse) {
    Translator t = small();
    EXPECT_EQ(shown(t.message("EGGS + MILK")), "بيض + لبن");
    EXPECT_EQ(shown(t.message("EGGS 3/10")), "بيض <3/10>");
    EXPECT_EQ(shown(t.message("EGGS: MILK 3/10")), "بيض: لبن <3/10>");
    EXPECT_EQ(shown(t.message("MILK + GO TO EGGS")), "لبن + روح لـ بيض");
}

TEST(Translator, NumbersNeverReachTables) {
    Translator t = small();
    for (const char *text : {"II", "12:30", "$1,234", "+5%", "3.5K", "", "-", "7 / 9", "1.2B"}) {
        EXPECT_EQ(t.message(text), text);
    }
    EXPECT_EQ(t.cache_size(), 0u);
    EXPECT_TRUE(is_number_text("10:05"));
    EXPECT_FALSE(is_number_text("5 EGGS"));
}

TEST(Translator, CacheIsBoundedAndMissesAreHeardOnce) {
    Translator t = small();
    std::vector<std::string> misses;
    t.on_miss = [&](const std::string &s) { misses.push_back(s); };
    t.message("WHO KNOWS");
    t.message("WHO KNOWS");
    t.translate_cached("$1.9K");
    EXPECT_EQ(misses, std::vector<std::string>{"WHO KNOWS"}) << "numbers are no texts";
    for (int i = 0; t.cache_size() < Translator::cache_limit; ++i) {
        t.message("UNKNOWN TEXT " + std::string(1, static_cast<char>('A' + i % 26)) + "-" + std::to_string(i) + "x");
        ASSERT_LT(i, 10000);
    }
    EXPECT_EQ(t.cache_size(), Translator::cache_limit);
    t.message("ONE TOO MANY");
    EXPECT_LE(t.cache_size(), 2u);
    EXPECT_TRUE(t.in_cache("ONE TOO MANY"));
}

TEST(Translator, Isolation) {
    EXPECT_EQ(shown(isolate_numbers("مية 75% و -$3,000 في 12:30")), "مية <75%> و <-$3,000> في <12:30>");
    EXPECT_EQ(shown(isolate_numbers("مفيش - أرقام $")), "مفيش - أرقام $");
    EXPECT_EQ(shown(isolate_latin("سلمى Farm 22 قالت +$5 و Ali.B")), "سلمى <Farm 22> قالت <+$5> و <Ali.B>");
    EXPECT_EQ(shown(isolate_latin("a" + on + "b" + off)), "<ab>") << "marks in the text are taken out";
    EXPECT_EQ(shown(isolate_latin("-سلمى$")), "-سلمى$");
}

TEST(Translator, BadRowsAreSkippedAndNamed) {
    Translator t;
    std::vector<std::string> problems;
    t.load("EGGS\tبيض\nNO TAB HERE\nEGGS\tبيض تاني\nA\tB\tC\n\tEMPTY\nEMPTY\t\nMILK\tلبن",
           "GO TO {}\tروح\nWITH {#}\tمع {1}\nBROKEN {\tمكسور {0}\nNO HOLE\tمن غير\nFINE {}\tتمام {0}\nBAD {}\tوحش {0} "
           "{x}\n{}\tده {0}\n",
           "", problems);
    EXPECT_EQ(t.exact_count(), 2u);
    EXPECT_EQ(t.sentence_count(), 1u);
    EXPECT_EQ(problems.size(), 11u);
    EXPECT_EQ(t.message("EGGS"), "بيض") << "the first of two rows stays";
    EXPECT_EQ(t.message("MILK"), "لبن") << "a last line without an end counts";
    EXPECT_EQ(t.message("FINE EGGS"), "تمام بيض");
}

TEST(Translator, HopelessTextsEndQuickly) {
    SentenceRow row;
    ASSERT_TRUE(compile_row("{} A {} A {} A {} A {}!", "{0}{1}{2}{3}{4}", row));
    std::string text;
    for (int i = 0; i < 4000; ++i) {
        text += "X A ";
    }
    std::vector<std::string_view> holes;
    EXPECT_FALSE(match_row(row, text + "?", holes));
    EXPECT_FALSE(match_row(row,
                           text + " Q!!"
                                  "?",
                           holes));
}

// The shipped tables: no row is lost, every template matches a sentence made from itself.
TEST(LangTables, EveryRowHolds) {
    Translator t;
    std::vector<std::string> problems;
    t.load(file_text("exact.tsv"), file_text("templates.tsv"), file_text("combinations.tsv"), problems);
    for (const std::string &p : problems) {
        ADD_FAILURE() << p;
    }
    EXPECT_GE(t.exact_count(), 250u);
    EXPECT_EQ(t.combination_count(), 9u);
    EXPECT_EQ(t.message("ALL $"), "الكل $");
    EXPECT_EQ(t.message("SURE?"), "متأكد؟");
    EXPECT_EQ(shown(t.message("WATER 40%")), "مية <40%>");
    EXPECT_EQ(t.message("NEED APPLE OR ORANGE"), "محتاج التفاح أو البرتقان");
    EXPECT_EQ(t.message("NEED\nMEAT + TOMATO\n+ POTATO"), "محتاج\nلحمة + الطماطم\n+ البطاطس");
    EXPECT_EQ(shown(t.message("BUY 3 EGGS AT THE MARKET NOW")), "اشتري <3> بيض من السوق دلوقتي");

    std::vector<std::string> ignored;
    for (const TablePair &row : read_table(file_text("exact.tsv"), ignored)) {
        SCOPED_TRACE(row.english);
        EXPECT_TRUE(has_letter(row.english)) << "can never be asked for";
        EXPECT_FALSE(is_number_text(row.english));
        EXPECT_EQ(row.english.find("{"), std::string::npos) << "a hole in the wrong table";
        EXPECT_NE(row.english.front(), ' ');
        EXPECT_NE(row.english.back(), ' ');
        bool arabic = false;
        for (const unsigned char c : row.translation) {
            arabic = arabic || (c >= 0xD8 && c <= 0xDB);
        }
        EXPECT_TRUE(arabic) << row.translation;
    }
    for (const TablePair &row : read_table(file_text("templates.tsv"), ignored)) {
        SCOPED_TRACE(row.english);
        SentenceRow compiled;
        ASSERT_TRUE(compile_row(row.english, row.translation, compiled));
        std::string sample;
        for (size_t i = 0; i < compiled.pieces.size(); ++i) {
            sample += compiled.pieces[i];
            if (i < compiled.words.size()) {
                sample += compiled.words[i] ? "EGGS" : "7";
            }
        }
        std::vector<std::string_view> holes;
        EXPECT_TRUE(match_row(compiled, sample, holes));
        EXPECT_NE(t.translate_cached(sample), sample);
    }
}

// Sentences are cut at the longest row that fits: a name that ends like a row ("FOOD FACTORY") must not draw the words
// before it into its hole.
TEST(LangTables, EveryNameReadsInEverySentence) {
    std::set<std::string> names;
    std::set<std::string> lands;
    std::vector<std::string> faults;
    for (const PlanEntry &entry : build_plan(faults)) {
        names.insert(entry.title);
    }
    for (const Region &region : regions()) {
        names.emplace(region.title);
        lands.emplace(region.title);
    }
    for (const Good &good : goods()) {
        names.emplace(good.title);
        std::string id(good.kind);
        std::transform(id.begin(), id.end(), id.begin(), [](unsigned char c) { return std::toupper(c); });
        names.insert(id);
    }
    EXPECT_GT(names.size(), 150u);

    Translator t;
    std::vector<std::string> problems;
    t.load(file_text("exact.tsv"), file_text("templates.tsv"), file_text("combinations.tsv"), problems);
    std::set<std::string> missed;
    t.on_miss = [&](const std::string &text) { missed.insert(text); };
    for (const std::string shape : {"@",
                                    "NEXT: @",
                                    "NEXT: @ AT LEVEL 7",
                                    "LEVEL 7! NEXT: @ AT LEVEL 8",
                                    "LEVEL 7! @ IS OPEN",
                                    "@ IS OPEN",
                                    "@ OPEN!",
                                    "@ HIRED!",
                                    "@ BUILT!",
                                    "@ FASTER!",
                                    "@ HOLDS MORE!",
                                    "MORE @!",
                                    "@ LV7",
                                    "@ LV 7",
                                    "@ +1",
                                    "GO TO @",
                                    "NEED @",
                                    "NEEDS @",
                                    "NEED @ OR @",
                                    "BUILT @",
                                    "UPGRADED @",
                                    "OPENS WITH @",
                                    "NEW LAND: @",
                                    "BOUGHT NEW LAND: @",
                                    "@ 3/12",
                                    "VIP TRUCK! @ + @",
                                    "VIP TRUCK COMING TO @!",
                                    "@ 3 STARS! +$900",
                                    "@ 1 STAR! +$900",
                                    "SOLD 7 @ +$90",
                                    "SELL 7 @",
                                    "@ STOPPED - NO WATER",
                                    "@ +3 STOPPED - NO WATER",
                                    "MISSED BANK PAYMENT! @ FROZEN",
                                    "THE BANK TOOK @!",
                                    "BUY 3 @ AT THE MARKET NOW",
                                    "3 @ ON THE WAY!",
                                    "@ REACHED LV7"}) {
        for (const std::string &name : names) {
            std::string text = shape;
            if (lands.count(name) > 0 && shape.ends_with("BUILT!")) {
                continue; // lands open, they are not built
            }
            for (size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at + name.size())) {
                text.replace(at, 1, name);
            }
            const std::string arabic = t.message(text);
            const bool latin = std::any_of(arabic.begin(), arabic.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
            EXPECT_FALSE(latin) << text << " = " << shown(arabic);
        }
    }
    EXPECT_TRUE(missed.empty()) << *missed.begin();
}
