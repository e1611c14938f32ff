#include <gtest/gtest.h>

#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/translation_server.hpp>

#include "engine_test.h"
#include "fake_store.h"
#include "find_control.h"
#include "game/kit/embedded_text.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "rules/translator.h"

using namespace tilm;

namespace {

class LangTest : public testing::Test {
protected:
    void SetUp() override {
        Lang::setup();
        Lang::apply("ar");
    }
    void TearDown() override { Lang::apply("en"); }

    static String tr(const String &text) { return stage()->tr(text); }
    static String ar(const char *text) { return String::utf8(text); }
};

} // namespace

TEST_F(LangTest, HookServesTheEngine) {
    EXPECT_EQ(TranslationServer::get_singleton()->get_locale(), String("en"));
    EXPECT_TRUE(Lang::arabic());
    EXPECT_EQ(tr("SURE?"), ar("متأكد؟"));
    EXPECT_EQ(tr("SOLD 12 EGGS +$48"), ar("بعت \u206612\u2069 بيض \u2066+$48\u2069"));
    EXPECT_EQ(tr("12:30"), String("12:30"));
    EXPECT_EQ(tr("NOT A KNOWN TEXT AT ALL"), String("NOT A KNOWN TEXT AT ALL"));
    EXPECT_EQ(Lang::t("WATER 40%"), ar("مية \u206640%\u2069"));
    Lang::apply("en");
    EXPECT_EQ(tr("SURE?"), String("SURE?"));
    EXPECT_EQ(Lang::t("WATER 40%"), String("WATER 40%"));
}

TEST_F(LangTest, ControlsReadTheirTextAnew) {
    Label *label = UI::label("CONTINUE", 30);
    stage()->add_child(label);
    step();
    const double arabic_width = label->get_minimum_size().x;
    Lang::apply("en");
    step();
    EXPECT_NE(label->get_minimum_size().x, arabic_width);
    EXPECT_EQ(label->get_text(), String("CONTINUE")) << "the control keeps its English";
}

TEST_F(LangTest, UnknownLanguageIsEnglish) {
    expect_engine_error("unknown language");
    Lang::apply("xx");
    EXPECT_FALSE(Lang::arabic());
    EXPECT_EQ(tr("SURE?"), String("SURE?"));
}

TEST_F(LangTest, SetupTwiceAndShutdown) {
    Lang::setup();
    EXPECT_EQ(tr("SURE?"), ar("متأكد؟"));
    Lang::shutdown();
    EXPECT_EQ(tr("SURE?"), String("SURE?"));
    Lang::shutdown();
    Lang::setup();
    EXPECT_EQ(tr("SURE?"), ar("متأكد؟"));
}

TEST_F(LangTest, EmbeddedTablesAreTheFiles) {
    std::vector<std::string> problems;
    rules::Translator t;
    t.load(embedded_text("ar/exact.tsv"), embedded_text("ar/templates.tsv"), embedded_text("ar/combinations.tsv"),
           problems);
    EXPECT_TRUE(problems.empty());
    EXPECT_GT(t.exact_count(), 250u);
    EXPECT_GT(t.sentence_count(), 50u);
    EXPECT_EQ(t.combination_count(), 9u);
    EXPECT_TRUE(embedded_text("ar/none.tsv").empty());
}

// Every row of the tables, asked for as a control asks: the whole translation comes, each hole where the row wants it,
// each number isolated.
TEST_F(LangTest, EveryRowComesThroughTheHook) {
    const auto plain = [](const String &text) { return std::string(text.utf8().get_data()); };
    const auto shown = [&](const std::string &english) { return plain(stage()->tr(String::utf8(english.c_str()))); };
    std::vector<std::string> problems;
    rules::Translator sure;
    sure.load(embedded_text("ar/exact.tsv"), embedded_text("ar/templates.tsv"), embedded_text("ar/combinations.tsv"),
              problems);
    for (const rules::TablePair &row : rules::read_table(embedded_text("ar/exact.tsv"), problems)) {
        EXPECT_EQ(shown(row.english), rules::isolate_numbers(row.translation)) << row.english;
    }
    const char *words[] = {"EGGS", "MILK", "WHEAT"};
    int other_rows = 0;
    for (const rules::TablePair &row : rules::read_table(embedded_text("ar/templates.tsv"), problems)) {
        SCOPED_TRACE(row.english);
        rules::SentenceRow compiled;
        ASSERT_TRUE(rules::compile_row(row.english, row.translation, compiled));
        std::string sample;
        std::vector<std::string> values;
        for (size_t i = 0; i < compiled.pieces.size(); ++i) {
            sample += compiled.pieces[i];
            if (i < compiled.words.size()) {
                const std::string filling =
                    compiled.words[i] ? words[i % 3] : std::to_string(3 + 4 * i) + (i % 2 == 1 ? ",250" : "");
                sample += filling;
                values.push_back(compiled.words[i] ? sure.translate_cached(filling) : filling);
            }
        }
        const std::string expected = rules::isolate_numbers(rules::fill_format(row.translation, values));
        if (rules::is_number_text(sample)) {
            EXPECT_EQ(shown(sample), sample) << "a length of time stands as it is, unless within a sentence";
            continue;
        }
        const std::string got = shown(sample);
        // A more specific row may win: it must then hold the same numbers, isolated, and the same words.
        if (got != expected) {
            for (size_t i = 0; i < values.size(); ++i) {
                EXPECT_NE(got.find(values[i]), std::string::npos) << sample << " lost " << values[i] << ": " << got;
            }
            EXPECT_NE(got, sample);
            ++other_rows;
        }
    }
    EXPECT_LE(other_rows, 12) << "rows that others hide";
}

TEST_F(LangTest, LengthOfTimeWithinASentence) {
    EXPECT_EQ(tr("3H 7M"), String("3H 7M"));
    EXPECT_EQ(tr("YOU WERE AWAY 3H 7M"), ar("كنت غايب \u20663\u2069 ساعة و \u20667\u2069 دقيقة"));
}

TEST_F(LangTest, TextsDrawnByHandAreIsolatedToo) {
    EXPECT_EQ(Lang::t("12:30"), ar("\u206612:30\u2069"));
    EXPECT_EQ(Lang::t("NO ROW 5 KNOWS THIS AT ALL"), ar("NO ROW \u20665\u2069 KNOWS THIS AT ALL"));
    EXPECT_EQ(Lang::t("  SURE?"), ar("  متأكد؟")) << "blanks stay";
    const int64_t before = Lang::cache_size();
    EXPECT_EQ(tr("II"), String("II"));
    EXPECT_EQ(tr("10:45"), String("10:45"));
    EXPECT_EQ(Lang::t("10:45"), ar("\u206610:45\u2069"));
    EXPECT_EQ(Lang::cache_size(), before) << "numbers are not kept";
    for (int i = 0; i < 7000; ++i) {
        stage()->tr("UNKNOWN " + String::num_int64(i) + "X TEXT");
        ASSERT_LE(Lang::cache_size(), 3001);
    }
    EXPECT_EQ(tr("SURE?"), ar("متأكد؟")) << "after the cache was emptied";
}

TEST_F(LangTest, IsolateForNamesAndChat) {
    EXPECT_EQ(UI::isolate(ar("سلمى Farm 22")), ar("سلمى \u2066Farm 22\u2069"));
    EXPECT_EQ(UI::isolate(""), String(""));
    Lang::apply("en");
    EXPECT_EQ(UI::isolate("Ali 5"), String("Ali 5"));
}

TEST_F(LangTest, LanguageButtonShowsTheOther) {
    FakeStore store;
    Button *b = UI::lang_button(28, Vector2(200, 70));
    stage()->add_child(b);
    EXPECT_EQ(b->get_text(), String("ENGLISH"));
    b->emit_signal("pressed");
    EXPECT_FALSE(Lang::arabic());
    EXPECT_EQ(b->get_text(), ar("العربية"));
    EXPECT_EQ(String(store.values["lang"]), String("en"));
    EXPECT_EQ(store.writes, 1);
    b->emit_signal("pressed");
    EXPECT_TRUE(Lang::arabic());
}

TEST(UiKit, Money) {
    EXPECT_EQ(UI::money(0), String("$0"));
    EXPECT_EQ(UI::money(999), String("$999"));
    EXPECT_EQ(UI::money(1234567), String("$1,234,567"));
    EXPECT_EQ(UI::money(-1500), String("-$1,500"));
    EXPECT_EQ(UI::money(INT64_MIN), String("-$9,223,372,036,854,775,808"));
    EXPECT_EQ(UI::money_short(950), String("$950"));
    EXPECT_EQ(UI::money_short(1250), String("$1.2K"));
    EXPECT_EQ(UI::money_short(2000000), String("$2.0M"));
    EXPECT_EQ(UI::money_short(3400000000), String("$3.4B"));
}

TEST(UiKit, WrappedTextFitsItsWidth) {
    const String text = "HIRE GUARDS: A DAY AND A NIGHT GUARD\nFOR EVERY TWO AREAS";
    const String wrapped = UI::wrapped(text, 30, 300);
    EXPECT_EQ(wrapped.replace("\n", " "), text.replace("\n", " ")) << "no word is lost";
    const PackedStringArray lines = wrapped.split("\n");
    EXPECT_GT(lines.size(), 2);
    for (int64_t i = 0; i < lines.size(); ++i) {
        EXPECT_LE(UI::text_width(lines[i], 30), 300.0);
    }
    EXPECT_EQ(UI::wrapped("ONEVERYLONGWORDTHATFITSNOWHERE", 30, 40), String("ONEVERYLONGWORDTHATFITSNOWHERE"));
    EXPECT_EQ(UI::wrapped("", 30, 40), String(""));
}

TEST(UiKit, MissingIconIsReportedOnceAndHarmless) {
    expect_engine_error("icon \"no_such_icon\" is missing");
    EXPECT_TRUE(UI::icon("no_such_icon").is_null());
    EXPECT_TRUE(UI::icon("no_such_icon").is_null());
    Button *b = UI::button("TEXT", UI::hex("43a047"), 30, Vector2(100, 60));
    stage()->add_child(b);
    UI::set_icon(b, "no_such_icon");
    step();
    EXPECT_GE(b->get_size().y, 60.0f);
}

TEST(UiKit, CardCountsRepeats) {
    PanelContainer *card = UI::card("HELLO", Ref<Texture2D>(), 500);
    stage()->add_child(card);
    EXPECT_TRUE(UI::card_repeat(card));
    EXPECT_TRUE(UI::card_repeat(card));
    EXPECT_EQ(int64_t(card->get_meta("count")), 3);
    EXPECT_NE(label_of(card, String::utf8("×3")), nullptr);
    Control *plain = add<Control>();
    EXPECT_FALSE(UI::card_repeat(plain));
}

TEST(UiKit, CallbacksDieWithTheirOwner) {
    Control *owner = memnew(Control);
    int calls = 0;
    const Callable c = UI::callback(owner, [&calls] { ++calls; });
    EXPECT_TRUE(c.is_valid());
    c.call();
    EXPECT_EQ(calls, 1);
    memdelete(owner);
    EXPECT_FALSE(c.is_valid());
}

TEST(UiKit, ToggleTellsAndSlides) {
    bool told = false;
    Control *owner = add<Control>();
    Control *t = UI::toggle(false, 1.0, UI::callback_arg(owner, [&told](const Variant &on) { told = on; }));
    owner->add_child(t);
    EXPECT_GE(t->get_custom_minimum_size().y, 48.0f) << "big enough for a finger";
    Object::cast_to<Button>(t)->set_pressed(true);
    EXPECT_TRUE(told);
    step(20);
    EXPECT_NEAR(double(t->get_meta("slide")), 1.0, 1e-6);
}
