#include <gtest/gtest.h>

#include <godot_cpp/classes/line_edit.hpp>
#include <godot_cpp/classes/texture_rect.hpp>

#include "engine_test.h"
#include "find_control.h"
#include "game/interface/menu.h"
#include "game/interface/title_scene.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "save_kit.h"

using namespace tilm;

namespace {

class MenuTest : public SaveTest {
protected:
    void SetUp() override {
        SaveTest::SetUp();
        Menu::forget_later();
        save = open();
    }
    void TearDown() override {
        if (menu != nullptr) {
            memdelete(menu);
        }
        TitleScene::release();
        step(2);
        SaveTest::TearDown();
    }

    void show() {
        menu = memnew(Menu);
        menu->connect("play_pressed", UI::callback(menu, [this] { ++plays; }));
        stage()->add_child(menu);
        step(3);
    }
    LineEdit *edit() {
        const auto edits = all_of<LineEdit>(menu);
        return edits.empty() ? nullptr : edits.front();
    }

    Save *save = nullptr;
    Menu *menu = nullptr;
    int plays = 0;
};

} // namespace

TEST_F(MenuTest, AsksForANameAndKeepsSixteenLetters) {
    show();
    EXPECT_NE(label_of(menu, "WHAT'S YOUR NAME?"), nullptr);
    ASSERT_NE(edit(), nullptr);
    edit()->set_text("    ");
    ASSERT_TRUE(press(menu, "SAVE"));
    EXPECT_NE(label_of(menu, "WHAT'S YOUR NAME?"), nullptr) << "blanks alone are no name";
    edit()->set_text("  ABCDEFGHIJKLMNOPQRST ");
    ASSERT_TRUE(press(menu, "SAVE"));
    EXPECT_EQ(String(save->setting("name")), String("ABCDEFGHIJKLMNOP"));
    EXPECT_TRUE(exists()) << "written at once";
    EXPECT_NE(label_of(menu, "WELCOME, FARMER!"), nullptr);
    EXPECT_NE(button_of(menu, "PLAY"), nullptr);
}

TEST_F(MenuTest, LaterHoldsForTheRun) {
    show();
    ASSERT_TRUE(press(menu, "LATER"));
    EXPECT_NE(button_of(menu, "PLAY"), nullptr);
    EXPECT_EQ(edit(), nullptr);
    step(2);
    memdelete(menu);
    show();
    EXPECT_EQ(edit(), nullptr) << "the question does not come back";
    ASSERT_TRUE(press(menu, "PLAY"));
    EXPECT_EQ(plays, 1);
}

TEST_F(MenuTest, ProgressIsWelcomedBack) {
    save->put_setting("name", "SALMA");
    save->data = farm(250);
    save->write();
    show();
    EXPECT_NE(label_of(menu, "WELCOME BACK, FARMER!"), nullptr);
    EXPECT_NE(label_of(menu, String::utf8("SALMA  •  FARM 1")), nullptr);
    EXPECT_NE(button_of(menu, "CONTINUE"), nullptr);
}

TEST_F(MenuTest, FarmsAreAddedUpToSix) {
    save->put_setting("name", "SALMA");
    save->write();
    show();
    for (int i = 2; i <= 6; ++i) {
        menu->_show_farms();
        step();
        ASSERT_TRUE(press(menu, "NEW FARM"));
    }
    EXPECT_EQ(plays, 5);
    EXPECT_EQ(save->farms.size(), 6);
    menu->_show_farms();
    step();
    Button *fresh = button_of(menu, "NEW FARM");
    ASSERT_NE(fresh, nullptr);
    EXPECT_TRUE(fresh->is_disabled());
    EXPECT_NE(button_of(menu, "PLAYING"), nullptr);
    EXPECT_EQ(int64_t(save->active), 5);
    ASSERT_TRUE(press(menu, "PLAY")) << "the first other farm";
    EXPECT_EQ(plays, 6);
}

TEST_F(MenuTest, DeletingAsksTwice) {
    save->put_setting("name", "SALMA");
    save->data = farm(900);
    save->write();
    show();
    menu->_show_farms();
    step();
    EXPECT_NE(label_of(menu, String("0%    $900")), nullptr);
    ASSERT_TRUE(press(menu, "X"));
    EXPECT_EQ(money(save), 900) << "one press leaves the farm alone";
    EXPECT_NE(button_of(menu, "SURE?"), nullptr);
    menu->_show_farms();
    step();
    EXPECT_EQ(button_of(menu, "SURE?"), nullptr) << "a new list asks anew";
    ASSERT_TRUE(press(menu, "X"));
    ASSERT_TRUE(press(menu, "SURE?"));
    step();
    ASSERT_EQ(save->farms.size(), 1);
    EXPECT_EQ(String(row(save, 0)["name"]), String("FARM 1"));
    EXPECT_EQ(money(save), -1);
    EXPECT_NE(label_of(menu, "NEW"), nullptr);
}

TEST_F(MenuTest, RowsOutsideTheListAreNone) {
    show();
    EXPECT_EQ(menu->_farm_row(-1), nullptr);
    EXPECT_EQ(menu->_farm_row(99), nullptr);
}

TEST_F(MenuTest, UpdateSheetMayBeKeptOrMustBeTaken) {
    save->put_setting("name", "SALMA");
    show();
    Dictionary info;
    info["version"] = "99.1";
    Dictionary notes;
    Array lines;
    lines.push_back("BIG NEWS");
    notes["en"] = lines;
    info["notes"] = notes;
    info["min"] = "0.0.1";
    menu->_show_update(info);
    step();
    EXPECT_NE(label_of(menu, "NEW VERSION 99.1"), nullptr);
    EXPECT_NE(label_of(menu, String::utf8("• BIG NEWS")), nullptr);
    ASSERT_TRUE(press(menu, "KEEP PLAYING THIS VERSION"));
    step(2);
    EXPECT_EQ(label_of(menu, "NEW VERSION 99.1"), nullptr);

    info["min"] = "99.0";
    info["notes"] = "not a table";
    menu->_show_update(info);
    step();
    EXPECT_NE(label_of(menu, "THIS VERSION IS TOO OLD, PLEASE UPDATE"), nullptr);
    EXPECT_EQ(button_of(menu, "KEEP PLAYING THIS VERSION"), nullptr);
    EXPECT_NE(button_of(menu, "DOWNLOAD"), nullptr);
}

TEST_F(MenuTest, BackdropLivesOnceAndIsShared) {
    save->put_setting("name", "SALMA");
    show();
    step(5);
    TitleScene *scene = TitleScene::current();
    ASSERT_NE(scene, nullptr);
    TextureRect *other = TitleScene::backdrop();
    stage()->add_child(other);
    step(2);
    EXPECT_EQ(TitleScene::current(), scene);
    memdelete(menu);
    menu = nullptr;
    step(2);
    EXPECT_EQ(TitleScene::current(), scene) << "outlives the menu while the loading screen shows it";
    TitleScene::release();
    step(2);
    EXPECT_EQ(TitleScene::current(), nullptr);
}

TEST_F(MenuTest, ArabicCardIsMirrored) {
    Lang::setup();
    Lang::apply("ar");
    save->put_setting("name", "SALMA");
    show();
    EXPECT_NE(button_of(menu, "ENGLISH"), nullptr);
    EXPECT_NE(button_of(menu, "PLAY"), nullptr) << "texts stay English inside";
    Lang::apply("en");
    step(3);
    EXPECT_NE(button_of(menu, String::utf8("العربية")), nullptr);
}
