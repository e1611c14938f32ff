// The save file in ordinary life: settings, farms, visits.

#include <cstdint>

#include "game/kit/lang.h"
#include "save_kit.h"

namespace tilm {
namespace {

TEST_F(SaveTest, FirstStartHasDefaultsAndTouchesNothing) {
    const Save *save = open();
    EXPECT_TRUE(save->sound_on && save->music_on && save->notify_on && save->vibrate_on);
    EXPECT_FALSE(save->moved || save->notify_asked || save->voice_open);
    EXPECT_DOUBLE_EQ(save->vol_voice, 0.8);
    EXPECT_EQ(save->zoom, 1);
    EXPECT_EQ(save->quality, 0);
    EXPECT_TRUE(save->farms.is_empty());
    EXPECT_TRUE(save->data.is_empty());
    EXPECT_FALSE(save->has_progress());
    EXPECT_EQ(save->farm_id(), "");
    EXPECT_FALSE(exists());
}

TEST_F(SaveTest, EverythingComesBack) {
    Save *save = open();
    save->sound_on = false;
    save->moved = true;
    save->vol_music = 0.25;
    save->avatar = "u:0123456789abcdef";
    save->zoom = 2;
    save->quality = 3;
    save->lang = "ar";
    save->name = String::utf8("حسن \"the\" farmer\n");
    save->net_nudge_at = 1700000000;
    save->coop["goal"] = 4;
    save->data = farm(3000000000000);
    save->write();
    const String token = save->net_token(); // keeps itself

    Save *back = open();
    EXPECT_FALSE(back->sound_on);
    EXPECT_TRUE(back->moved && back->music_on);
    EXPECT_DOUBLE_EQ(back->vol_music, 0.25);
    EXPECT_EQ(back->avatar, "u:0123456789abcdef");
    EXPECT_EQ(back->zoom, 2);
    EXPECT_EQ(back->quality, 3);
    EXPECT_EQ(back->lang, "ar");
    EXPECT_EQ(back->name, String::utf8("حسن \"the\" farmer\n"));
    EXPECT_EQ(back->net_nudge_at, 1700000000);
    EXPECT_EQ(read_whole(back->coop, "goal"), 4);
    EXPECT_EQ(back->net_tok, token);
    EXPECT_EQ(token.length(), 16);
    EXPECT_TRUE(token.is_valid_hex_number(false));
    EXPECT_EQ(money(back), 3000000000000);
    EXPECT_EQ(back->data["money"].get_type(), Variant::INT);
    EXPECT_EQ(read_table(back->data, "levels")["coop_a"].get_type(), Variant::INT);
    EXPECT_EQ(read_text(row(back, 0), "name"), "FARM 1");
    EXPECT_EQ(back->farm_id().length(), 8);
    EXPECT_EQ(back->find_farm(back->farm_id()), 0);
    EXPECT_EQ(back->find_farm("ffff"), -1);
    EXPECT_TRUE(back->has_progress());
    EXPECT_FALSE(exists(".tmp"));
}

TEST_F(SaveTest, FileIsShortSortedAndKeepsTheOneBefore) {
    Save *save = open();
    save->vol_music = static_cast<double>(0.8F); // as a slider gives it
    save->data = farm(1);
    save->write();
    const std::string first = bytes();
    EXPECT_NE(first.find("\"vol_music\":0.8,"), std::string::npos) << first;
    EXPECT_NE(first.find("\"version\":3,"), std::string::npos);
    EXPECT_NE(first.find("\"money\":1}"), std::string::npos);
    EXPECT_LT(first.find("\"active\""), first.find("\"avatar\""));
    EXPECT_LT(first.find("\"quality\""), first.find("\"zoom\""));
    save->data = farm(2);
    save->write();
    EXPECT_EQ(bytes(".bak"), first);
    save->data = farm(3);
    save->write();
    EXPECT_NE(bytes(".bak").find("\"money\":2}"), std::string::npos);
}

TEST_F(SaveTest, SevenFarms) {
    Save *save = open();
    for (int i = 0; i < 6; ++i) {
        EXPECT_TRUE(save->new_farm());
    }
    EXPECT_EQ(save->active, 5);
    const std::string before = bytes();
    EXPECT_FALSE(save->new_farm());
    EXPECT_EQ(save->farms.size(), 6);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(read_text(row(save, 5), "name"), "FARM 6");
    EXPECT_NE(save->farm_id(0), save->farm_id(1));
}

TEST_F(SaveTest, NewFarmTakesTheFirstFreeNameAndKeepsThePlayedOne) {
    Save *save = open();
    save->data = farm(50); // played, never written
    EXPECT_TRUE(save->new_farm());
    EXPECT_EQ(save->farms.size(), 2);
    EXPECT_EQ(row_money(save, 0), 50);
    EXPECT_TRUE(save->data.is_empty());
    EXPECT_TRUE(save->new_farm());
    save->delete_farm(1);
    EXPECT_TRUE(save->new_farm());
    EXPECT_EQ(read_text(row(save, 2), "name"), "FARM 2");
    EXPECT_EQ(row_money(open(), 0), 50);
}

TEST_F(SaveTest, SwitchingWritesBothFarms) {
    Save *save = open();
    save->new_farm();
    save->data = farm(11);
    save->new_farm();
    save->data = farm(22);
    EXPECT_TRUE(save->switch_farm(0));
    EXPECT_EQ(money(save), 11);
    EXPECT_FALSE(save->switch_farm(2));
    EXPECT_FALSE(save->switch_farm(-1));
    const Save *back = open();
    EXPECT_EQ(back->active, 0);
    EXPECT_EQ(money(back), 11);
    EXPECT_EQ(row_money(back, 1), 22);
}

TEST_F(SaveTest, DeletingFollowsTheActiveFarm) {
    Save *save = open();
    for (int i = 0; i < 4; ++i) {
        save->new_farm();
        save->data = farm(i);
    }
    save->switch_farm(2);
    save->delete_farm(0); // before the active one
    EXPECT_EQ(save->active, 1);
    EXPECT_EQ(money(save), 2);
    save->delete_farm(2); // behind it
    EXPECT_EQ(save->active, 1);
    save->delete_farm(1); // the active one, the last of the list
    EXPECT_EQ(save->active, 0);
    EXPECT_EQ(money(save), 1);
    save->delete_farm(7);
    EXPECT_EQ(save->farms.size(), 1);
    save->delete_farm(0);
    ASSERT_EQ(save->farms.size(), 1);
    EXPECT_EQ(read_text(row(save, 0), "name"), "FARM 1");
    EXPECT_TRUE(save->data.is_empty());
    EXPECT_TRUE(open()->data.is_empty());
}

TEST_F(SaveTest, AVisitIsNeverWritten) {
    Save *save = open();
    save->data = farm(100);
    save->write();
    const Dictionary friends = farm(999999);
    save->enter_visit(friends);
    EXPECT_TRUE(save->is_visiting());
    EXPECT_EQ(money(save), 999999);
    save->write();
    EXPECT_EQ(money(open()), 100);
    EXPECT_FALSE(save->new_farm());
    EXPECT_FALSE(save->switch_farm(0));
    save->enter_visit(farm(5)); // straight on to another friend
    save->write();
    EXPECT_EQ(money(open()), 100);
    EXPECT_EQ(read_whole(save->own_farm(), "money"), 100);
    save->leave_visit();
    EXPECT_EQ(money(save), 100);
    save->leave_visit();
    EXPECT_EQ(money(save), 100);
    EXPECT_FALSE(save->is_visiting());
}

TEST_F(SaveTest, Progress) {
    Save *save = open();
    Dictionary levels;
    levels["coop_a"] = 3;
    levels["field_corn"] = 1;
    save->data["money"] = 0;
    save->data["levels"] = levels;
    EXPECT_FALSE(save->has_progress());
    levels["stall_egg"] = 1;
    EXPECT_TRUE(save->has_progress());
    levels.clear();
    save->data["money"] = 1;
    EXPECT_TRUE(save->has_progress());

    save->write();
    EXPECT_DOUBLE_EQ(save->farm_progress(0), 0.0);
    levels["coop_a"] = 5;
    EXPECT_GT(save->farm_progress(0), 0.0);
    EXPECT_LT(save->farm_progress(0), 0.01);
    levels["coop_a"] = 1000000;
    EXPECT_DOUBLE_EQ(save->farm_progress(0), 1.0);
    EXPECT_DOUBLE_EQ(save->farm_progress(4), 0.0);
}

TEST_F(SaveTest, StoreOffersTheSettingsToLowerRooms) {
    Save *save = open();
    Store *store = Store::current();
    ASSERT_EQ(store, static_cast<Store *>(save));
    store->put_setting("sound_on", false);
    EXPECT_FALSE(save->sound_on);
    store->put_setting("sound_on", "no"); // wrong type: stays
    EXPECT_FALSE(save->sound_on);
    store->put_setting("vol_voice", 7.0);
    EXPECT_DOUBLE_EQ(save->vol_voice, 1.0);
    store->put_setting("zoom", 0);
    EXPECT_EQ(store->setting("zoom"), Variant(0));
    store->put_setting("name", "MONA");
    EXPECT_EQ(as<String>(store->setting("name")), "MONA");
    expect_engine_error("TILMARCH no setting named colour");
    EXPECT_EQ(store->setting("colour"), Variant());
}

TEST_F(SaveTest, ScriptsReachEverythingByName) {
    Object *save = open();
    EXPECT_TRUE(as<bool>(save->call("new_farm")));
    save->set("zoom", 2);
    save->call("set_moved", true);
    save->set("player_name", "MONA");
    save->call("write");
    EXPECT_EQ(as<int64_t>(save->call("get_zoom")), 2);
    EXPECT_EQ(as<String>(save->call("farm_id")), as<String>(save->call("farm_id", 0)));
    EXPECT_EQ(as<int64_t>(save->call("find_farm", save->call("farm_id"))), 0);
    EXPECT_EQ(as<Array>(save->get("farms")).size(), 1);
    for (const char *name : {"read", "write", "enter_visit", "leave_visit", "set_lang", "has_progress", "switch_farm",
                             "new_farm", "delete_farm", "farm_progress", "farm_id", "find_farm", "net_token", "args",
                             "get_data", "get_net_done", "get_coop", "get_vol_ambience", "get_voice_open"}) {
        EXPECT_TRUE(save->has_method(name)) << name;
    }
    EXPECT_EQ(open()->name, "MONA");
}

TEST_F(SaveTest, StartReadsDebugWordsAndChoosesTheLanguage) {
    put("--save=second\n  --lang=ar\t--trmiss", "");
    std::filesystem::rename(native(), native_path("user://debug_args.txt"));
    Save *save = add<Save>();
    EXPECT_TRUE(save->args().has("--lang=ar"));
    EXPECT_TRUE(save->args().has("--trmiss"));
    EXPECT_EQ(save->path, "user://save_second.json");
    EXPECT_TRUE(Lang::arabic());
    EXPECT_EQ(save->lang, ""); // the word is for this run only
    save->set_lang("en");
    EXPECT_TRUE(std::filesystem::exists(native_path("user://save_second.json")));

    std::ofstream(native_path("user://debug_args.txt")) << "--save=../../evil --save= --lang=";
    expect_engine_error("TILMARCH bad save name in --save=../../evil: ignored");
    expect_engine_error("TILMARCH bad save name in --save=: ignored");
    Save *careful = add<Save>();
    EXPECT_EQ(careful->path, "user://save.json");
    std::filesystem::remove(native_path("user://debug_args.txt"));
}

TEST_F(SaveTest, AnotherFileCanBeLookedAt) {
    Save *save = open();
    save->data = farm(7);
    save->new_farm();
    save->data = farm(8);
    save->write();
    const std::string before = bytes();
    EXPECT_EQ(read_whole(Save::peek_farm(path), "money"), 8);
    EXPECT_TRUE(Save::peek_farm("user://none.json").is_empty());
    put("{", ".cut");
    EXPECT_TRUE(Save::peek_farm(path + String(".cut")).is_empty());
    EXPECT_EQ(bytes(), before);
}

} // namespace
} // namespace tilm
