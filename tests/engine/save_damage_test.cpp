// Save files that are not as they should be, and disks that do not take them.

#include <cmath>
#include <limits>
#include <random>

#include "rules/json_guard.h"
#include "save_kit.h"

namespace tilm {
namespace {

class SaveDamage : public SaveTest {
protected:
    // Two good writes: the file holds 200, its backup 100.
    void two_writes() {
        Save *save = open();
        save->data = farm(100);
        save->write();
        save->data = farm(200);
        save->write();
    }
};

TEST_F(SaveDamage, WhateverCannotBeReadIsSetAsideAndTheBackupTaken) {
    two_writes();
    const std::string good = bytes();
    const std::string backup = bytes(".bak");
    const std::string deep(10000, '[');
    const std::pair<const char *, std::string> damages[] = {
        {"cut", good.substr(0, good.size() / 2)},
        {"cut inside a text", good.substr(0, good.find("FARM") + 2)},
        {"empty", ""},
        {"blank", " \n\n"},
        {"no object", "[1, 2, 3]"},
        {"a bare word", "null"},
        {"rubbish", "\x01\x02\xFF\xFE rubbish"},
        {"zero bytes", std::string(4096, '\0')},
        {"closed too often", good + "}"},
        {"nested 10,000 deep", "{\"farm\":" + deep + std::string(10000, ']') + "}"},
        {"nested 10,000 deep and cut", "{\"farm\":" + deep},
        {"nested objects",
         [] {
             std::string text;
             for (int i = 0; i < 10000; ++i) {
                 text += "{\"a\":";
             }
             return text + "1" + std::string(10000, '}');
         }()},
        {"huge", "{\"name\":\"" + std::string(40U << 20U, 'x') + "\"}"},
    };
    for (const auto &[what, content] : damages) {
        SCOPED_TRACE(what);
        put(content);
        put(backup, ".bak");
        expect_engine_error("TILMARCH save " + path + String(" unreadable: kept as .corrupt"));
        expect_engine_error("TILMARCH save restored from " + path + String(".bak"));
        Save *save = open();
        EXPECT_EQ(money(save), 100);
        EXPECT_TRUE(bytes(".corrupt") == content);
        EXPECT_FALSE(exists());
        save->write(); // and life goes on
        EXPECT_EQ(money(open()), 100);
    }
}

TEST_F(SaveDamage, MissingFileWithABackupIsRestoredWithoutASetAside) {
    two_writes();
    std::filesystem::remove(native());
    expect_engine_error("TILMARCH save restored from");
    EXPECT_EQ(money(open()), 100);
    EXPECT_FALSE(exists(".corrupt"));
}

TEST_F(SaveDamage, NeitherUsableIsAFirstStartAndLosesNeither) {
    put("{\"farms\": [", "");
    put("also bad", ".bak");
    expect_engine_error("TILMARCH save " + path + String(" unreadable: kept as .corrupt"));
    expect_engine_error("TILMARCH save " + path + String(".bak unreadable: kept as .corrupt"));
    Save *save = open();
    EXPECT_TRUE(save->farms.is_empty());
    EXPECT_EQ(bytes(".corrupt"), "{\"farms\": [");
    EXPECT_EQ(bytes(".bak.corrupt"), "also bad");
    save->data = farm(5);
    save->write();
    EXPECT_EQ(money(open()), 5);
}

TEST_F(SaveDamage, AFolderInThePlaceOfTheFile) {
    std::filesystem::create_directory(native());
    expect_engine_error("unreadable: kept as .corrupt");
    Save *save = open();
    save->data = farm(5);
    save->write();
    EXPECT_EQ(money(open()), 5);
}

TEST_F(SaveDamage, WrongTypesReadAsDefaultsAndTheRestSurvives) {
    const std::string wrong =
        R"({"sound_on":"yes","music_on":false,"vol_music":"loud","vol_voice":9,"zoom":7,"quality":-2,"lang":5,)"
        R"("name":["x"],"net_tok":"../etc/passwd","net_done":[],"net_nudge_at":1e999,"coop":3,"active":9,)"
        R"("farms":[{"id":"aa","name":"ONE","farm":{"money":12.0,"levels":{"coop_a":2.0,"barn_a":"two","stack":-4},)"
        R"("paid":7,"won":"no","trucks":3.0,"missions":{},"state":{"piles":{"x@1,2":{"egg":3.0,"milk":null},"y@0,0":5},)"
        R"("cash":{"1,1":30.0},"px":"left","pz":2.5},"new_thing":[1]}},17,"row",null,)"
        R"({"name":"NO FARM","farm":[1]},{"farm":{"money":1e400}}]})";
    put(wrong);
    expect_engine_error("bad values read as defaults, a copy is kept as .corrupt");
    const Save *save = open();
    EXPECT_EQ(bytes(".corrupt"), wrong);
    EXPECT_TRUE(save->sound_on);
    EXPECT_FALSE(save->music_on);
    EXPECT_DOUBLE_EQ(save->vol_music, 0.8);
    EXPECT_DOUBLE_EQ(save->vol_voice, 1.0);
    EXPECT_EQ(save->zoom, 2);
    EXPECT_EQ(save->quality, 0);
    EXPECT_EQ(save->lang, "");
    EXPECT_EQ(save->name, "");
    EXPECT_EQ(save->net_tok, "");
    EXPECT_TRUE(save->net_done.is_empty() && save->coop.is_empty());
    ASSERT_EQ(save->farms.size(), 3);
    EXPECT_EQ(save->active, 2);
    EXPECT_EQ(read_text(row(save, 1), "name"), "NO FARM");
    EXPECT_EQ(read_text(row(save, 2), "name"), "FARM 3");
    EXPECT_EQ(save->farm_id(2).length(), 8);
    EXPECT_EQ(row_money(save, 2), 0);
    const Dictionary one = read_table(row(save, 0), "farm");
    EXPECT_EQ(one["money"], Variant(12));
    const Dictionary levels = read_table(one, "levels");
    EXPECT_EQ(levels["coop_a"], Variant(2));
    EXPECT_FALSE(levels.has("barn_a"));
    EXPECT_EQ(levels["stack"], Variant(0));
    EXPECT_FALSE(one.has("paid") || one.has("won") || one.has("missions"));
    EXPECT_EQ(one["trucks"], Variant(3));
    EXPECT_TRUE(one.has("new_thing"));
    const Dictionary state = read_table(one, "state");
    const Dictionary pile = read_table(read_table(state, "piles"), "x@1,2");
    EXPECT_EQ(pile["egg"], Variant(3));
    EXPECT_FALSE(pile.has("milk") || read_table(state, "piles").has("y@0,0"));
    EXPECT_EQ(read_table(state, "cash")["1,1"], Variant(30));
    EXPECT_FALSE(state.has("px"));
    EXPECT_DOUBLE_EQ(read_real(state, "pz"), 2.5);
}

TEST_F(SaveDamage, OldFormWithOneFarm) {
    put(R"({"version":1,"zoom":7,"farm":{"money":77,"levels":{"coop_a":3}}})");
    const Save *save = open();
    ASSERT_EQ(save->farms.size(), 1);
    EXPECT_EQ(read_text(row(save, 0), "name"), "FARM 1");
    EXPECT_EQ(money(save), 77);
    EXPECT_EQ(read_whole(read_table(save->data, "levels"), "coop_a"), 3);
    EXPECT_EQ(save->zoom, 2);
    put(R"({"farms":[],"farm":[]})");
    EXPECT_TRUE(open()->data.is_empty());
}

TEST_F(SaveDamage, IndicesAreClamped) {
    put(R"({"zoom":-3,"active":9,"farms":[{"farm":{"money":1}},{"farm":{"money":2}}]})");
    Save *save = open();
    EXPECT_EQ(save->active, 1);
    EXPECT_EQ(money(save), 2);
    EXPECT_EQ(save->zoom, 0);
    save->active = 40; // a caller's mistake
    save->write();
    EXPECT_EQ(open()->active, 1);
    put(R"({"active":-5,"farms":[5,6]})");
    expect_engine_error("farms[0], farms[1]");
    const Save *empty = open();
    EXPECT_EQ(empty->active, 0);
    EXPECT_EQ(empty->farms.size(), 1);
}

TEST_F(SaveDamage, MalformedTextIsMended) {
    put("{\"name\":\"A\xFFZ\xC3\",\"farms\":[{\"name\":\"\xD9\x85\",\"farm\":{\"money\":3}}]}");
    const Save *save = open();
    EXPECT_EQ(save->name, "A?Z?");
    EXPECT_EQ(read_text(row(save, 0), "name"), String::utf8("م"));
    EXPECT_EQ(money(save), 3);
}

TEST_F(SaveDamage, NumbersThatAreNoneAreNotWritten) {
    Save *save = open();
    save->data = farm(40);
    save->data["earn_rate"] = std::numeric_limits<double>::infinity();
    save->data["earn_slow"] = std::nan("");
    save->vol_music = -std::numeric_limits<double>::infinity();
    Array pit;
    for (int i = 0; i < 200; ++i) {
        Array outer;
        outer.append(pit);
        pit = outer;
    }
    save->net_await["pit"] = pit;
    expect_engine_error("4 values that cannot be stored were left out");
    save->write();
    EXPECT_EQ(bytes().find("inf"), std::string::npos);
    EXPECT_EQ(bytes().find("nan"), std::string::npos);
    const Save *back = open();
    EXPECT_EQ(money(back), 40);
    EXPECT_DOUBLE_EQ(read_real(back->data, "earn_rate", -1), 0.0);
    // The farm that is being played is not touched.
    EXPECT_TRUE(std::isinf(as<double>(save->data["earn_rate"])));
}

TEST_F(SaveDamage, UnwritableFolderKeepsTheGameRunning) {
    path = "user://no_such_folder/save.json";
    expect_engine_error("TILMARCH cannot write user://no_such_folder/save.json.tmp");
    Save *save = open();
    save->data = farm(9);
    save->write();
    EXPECT_EQ(money(save), 9);
    std::filesystem::create_directory(native_path("user://no_such_folder"));
    save->write(); // the next try
    EXPECT_EQ(money(open()), 9);
}

TEST_F(SaveDamage, FullDiskKeepsTheOldSave) {
    two_writes();
    const std::string before = bytes();
    const std::string backup = bytes(".bak");
    std::filesystem::create_symlink("/dev/full", native(".tmp"));
    expect_engine_error("TILMARCH save write failed (28): the old save is kept");
    Save *save = open();
    save->data = farm(300);
    save->write();
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(bytes(".bak"), backup);
    EXPECT_FALSE(std::filesystem::is_symlink(native(".tmp")));
    save->write();
    EXPECT_EQ(money(open()), 300);
}

TEST_F(SaveDamage, AFileThatDoesNotReadBackDoesNotReplaceTheOldOne) {
    two_writes();
    const std::string before = bytes();
    std::filesystem::create_symlink("/dev/null", native(".tmp")); // takes every byte and gives none back
    expect_engine_error("): the old save is kept");
    Save *save = open();
    save->data = farm(300);
    save->write();
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(money(open()), 200);
}

TEST_F(SaveDamage, LeftoversOfAKilledWriteAreOverwritten) {
    two_writes();
    put("half a docum", ".tmp");
    Save *save = open();
    EXPECT_EQ(money(save), 200);
    save->data = farm(201);
    save->write();
    EXPECT_EQ(money(open()), 201);
    EXPECT_FALSE(exists(".tmp"));
}

// Our own reading of the grammar decides whether a save may replace the old one: the engine's parser has to agree.
TEST_F(SaveDamage, WhatOurGrammarAcceptsTheEngineReads) {
    Save *save = open();
    save->data = farm(12);
    save->name = String::utf8("م \"\\/\n\t");
    save->write();
    const std::string good = bytes();
    ASSERT_TRUE(rules::is_json_object(good));
    std::mt19937 dice(7); // the same texts each time
    const std::string alphabet = "{}[]\",:\\/untrefals0123456789.-+eE \n\x01\xD9";
    int accepted = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string text = good;
        for (unsigned changes = dice() % 3 + 1; changes > 0; --changes) {
            const size_t at = dice() % text.size();
            const char c = alphabet[dice() % alphabet.size()];
            switch (dice() % 3) {
            case 0:
                text[at] = c;
                break;
            case 1:
                text.insert(at, 1, c);
                break;
            default:
                text.erase(at, dice() % 3 + 1);
            }
        }
        if (rules::is_json_object(text)) {
            ++accepted;
            Dictionary doc;
            ASSERT_TRUE(parse_document(text, doc)) << text;
        }
    }
    EXPECT_GT(accepted, 1000);
    EXPECT_LT(accepted, 19000);
}

} // namespace
} // namespace tilm
