#include <gtest/gtest.h>

#include <godot_cpp/classes/input.hpp>
#include <godot_cpp/classes/input_event_mouse_button.hpp>
#include <godot_cpp/classes/input_event_mouse_motion.hpp>
#include <godot_cpp/classes/input_event_screen_drag.hpp>
#include <godot_cpp/classes/input_event_screen_touch.hpp>
#include <godot_cpp/classes/progress_bar.hpp>
#include <godot_cpp/classes/sub_viewport.hpp>

#include "engine_test.h"
#include "fake_store.h"
#include "find_control.h"
#include "game/interface/hud.h"
#include "game/interface/joystick.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"

using namespace tilm;

namespace {

class HudTest : public testing::Test {
protected:
    void SetUp() override {
        root()->set_content_scale_size(Vector2i(720, 1560));
        hud = add<Hud>();
        step(2);
    }
    void TearDown() override {
        tree()->set_pause(false);
        Lang::apply("en");
    }

    Ref<InputEventScreenTouch> touch(int finger, const Vector2 &at, bool down) {
        Ref<InputEventScreenTouch> event;
        event.instantiate();
        event->set_index(finger);
        event->set_position(at);
        event->set_pressed(down);
        return event;
    }
    void drag(int finger, const Vector2 &at) {
        Ref<InputEventScreenDrag> event;
        event.instantiate();
        event->set_index(finger);
        event->set_position(at);
        hud->joystick()->_input(event);
    }

    FakeStore store;
    Hud *hud = nullptr;
};

int fills = 0;

Callable counting_fill(Hud *hud, const char *text) {
    fills = 0;
    return UI::callback(hud, [hud, text] {
        ++fills;
        hud->content()->add_child(UI::button(text, UI::hex("43a047"), 30, Vector2(200, 70)));
    });
}

} // namespace

TEST_F(HudTest, MoneyCountsUp) {
    hud->set_money(100);
    EXPECT_NE(label_of(hud, "$100"), nullptr) << "the first sum stands at once";
    hud->set_money(5100);
    step(2);
    EXPECT_EQ(label_of(hud, "$5,100"), nullptr) << "it runs there";
    step_seconds(2.0);
    EXPECT_NE(label_of(hud, "$5,100"), nullptr);
    hud->set_money(-20);
    step_seconds(2.0);
    EXPECT_NE(label_of(hud, "-$20"), nullptr);
}

TEST_F(HudTest, BarsShowWhatTheyAreTold) {
    hud->set_level_line(3, 12);
    EXPECT_NE(label_of(hud, "LV 3  MY FARM 12%"), nullptr);
    hud->set_mood(0.874);
    EXPECT_NE(label_of(hud, "HAPPY 87%"), nullptr);
    hud->set_mood(-1.0);
    EXPECT_EQ(label_of(hud, "HAPPY 87%"), nullptr);
    hud->set_mood(NAN);
    hud->set_next_goal("COOP", 30, 120);
    EXPECT_NE(label_of(hud, "NEXT: COOP"), nullptr);
    EXPECT_NE(label_of(hud, "$30/120"), nullptr);
    hud->set_next_goal("", 0, 0);
    EXPECT_EQ(label_of(hud, "NEXT: COOP"), nullptr);
    hud->set_gold(4);
    EXPECT_NE(label_of(hud, "4"), nullptr);
}

TEST_F(HudTest, SameToastThreeTimesIsOneRow) {
    for (int i = 0; i < 3; ++i) {
        hud->toast("GAME SAVED!", 1);
    }
    step(2);
    int rows = 0;
    for (Label *l : all_of<Label>(hud)) {
        rows += l->get_text() == String("GAME SAVED!") ? 1 : 0;
    }
    EXPECT_EQ(rows, 1);
    EXPECT_NE(label_of(hud, String::utf8("×3")), nullptr);
    step_seconds(4.0);
    EXPECT_EQ(label_of(hud, "GAME SAVED!"), nullptr);
}

TEST_F(HudTest, ToastsFollowAChangeOfLanguage) {
    const String english = "GAME SAVED!";
    const String arabic = String::utf8("اللعبة اتحفظت!");
    hud->toast(english, 1);
    step(2); // still sliding in
    Lang::apply("ar");
    EXPECT_EQ(label_of(hud, english), nullptr);
    Label *label = label_of(hud, arabic);
    ASSERT_NE(label, nullptr);
    step(30);
    Control *slot = Object::cast_to<Control>(hud->get_lane()->get_child(0));
    Control *panel = Object::cast_to<Control>(slot->get_child(0));
    EXPECT_EQ(slot->get_custom_minimum_size(), panel->get_combined_minimum_size()) << "as large as its new text asks";
    EXPECT_EQ(panel->get_size(), panel->get_combined_minimum_size());
    EXPECT_EQ(panel->get_modulate().a, 1.0f);
    EXPECT_TRUE(Object::cast_to<Control>(label->get_parent())->is_layout_rtl());
    hud->toast(english, 1);
    EXPECT_EQ(hud->get_lane()->get_child_count(), 1) << "it is still the same toast";
    Lang::apply("en");
    EXPECT_NE(label_of(hud, english), nullptr);
    EXPECT_FALSE(Object::cast_to<Control>(label->get_parent())->is_layout_rtl());
    step_seconds(2.6); // the row of the counted one leaves
    Lang::apply("ar");
    step_seconds(2.0);
    EXPECT_EQ(hud->get_lane()->get_child_count(), 0) << "a change in the middle of leaving keeps nobody here";
}

TEST_F(HudTest, QueuedToastsComeUpWhenRowsLeave) {
    struct Screen {
        Vector2i size;
        int rows;
        int wait;
    };
    for (const Screen &screen : {Screen{Vector2i(2170, 1250), 1, 6}, Screen{Vector2i(720, 1560), 3, 4}}) {
        SubViewport *view = add<SubViewport>();
        view->set_size(screen.size);
        Hud *own = memnew(Hud);
        view->add_child(own);
        step(2);
        for (int i = 0; i < 7; ++i) {
            own->toast("NUMBER " + String::num_int64(i), 1);
        }
        EXPECT_EQ(own->get_lane()->get_child_count(), screen.rows) << "the lane fills";
        EXPECT_EQ(own->get_waiting(), screen.wait);
        EXPECT_EQ(label_of(own, "NUMBER 4"), nullptr);
        step_seconds(25.0);
        EXPECT_EQ(own->get_lane()->get_child_count(), 0) << "all have come and gone";
        EXPECT_EQ(own->get_waiting(), 0);
        own->toast("   ", 1);
        own->toast("LEVELS OUT OF RANGE", 99);
        step();
        EXPECT_NE(label_of(own, "LEVELS OUT OF RANGE"), nullptr);
        memdelete(view);
    }
}

TEST_F(HudTest, NoticesPortReachesTheLane) {
    EXPECT_EQ(Notices::current(), hud);
    Notices::say("NOT ENOUGH MONEY");
    step();
    EXPECT_NE(label_of(hud, "NOT ENOUGH MONEY"), nullptr);
}

TEST_F(HudTest, PanelOpensSwitchesTabsAndCloses) {
    String tab;
    Array tabs;
    tabs.push_back("STARS");
    tabs.push_back("DAILY");
    hud->_open_panel("GOALS", tabs, "STARS", UI::callback_arg(hud, [&tab](const Variant &t) { tab = t; }),
                     counting_fill(hud, "ROW"));
    EXPECT_TRUE(hud->panel_open());
    EXPECT_EQ(fills, 1);
    EXPECT_FALSE(tree()->is_paused()) << "the farm goes on behind a panel";
    ASSERT_TRUE(press(hud, "DAILY"));
    EXPECT_EQ(tab, String("DAILY"));
    EXPECT_EQ(fills, 2);
    ASSERT_TRUE(press(hud, "CLOSE"));
    EXPECT_FALSE(hud->panel_open());
    EXPECT_EQ(hud->content(), nullptr);
    hud->refresh_panel();
    EXPECT_EQ(fills, 2);
}

TEST_F(HudTest, RefreshWaitsForTheFinger) {
    hud->_open_panel("MARKET", Array(), "", Callable(), counting_fill(hud, "BUY"));
    Button *row = button_of(hud, "BUY");
    hud->_input(touch(0, Vector2(10, 10), true));
    hud->refresh_panel();
    hud->refresh_panel();
    step(3);
    EXPECT_EQ(fills, 1);
    EXPECT_EQ(button_of(hud, "BUY"), row) << "the button under the finger is the same";
    hud->_input(touch(0, Vector2(10, 10), false));
    step(2);
    EXPECT_EQ(fills, 2) << "one refill on release";
}

TEST_F(HudTest, PromptsByKeyAndTheirAnswers) {
    int yes = 0;
    int no = 0;
    const Callable on_yes = UI::callback(hud, [&yes] { ++yes; });
    const Callable on_no = UI::callback(hud, [&no] { ++no; });
    Dictionary stay;
    stay["auto"] = false;
    hud->_prompt("a", "FIRST", "SUB", "YES A", on_yes, on_no, stay);
    hud->_prompt("a", "SECOND", "SUB", "YES A", on_yes, on_no, stay);
    EXPECT_EQ(label_of(hud, "FIRST"), nullptr) << "one card for a key";
    EXPECT_NE(label_of(hud, "SECOND"), nullptr);
    hud->_prompt("b", "RUNS OUT", "", "YES B", on_yes, on_no, Dictionary());
    step_seconds(19.0);
    EXPECT_NE(label_of(hud, "RUNS OUT"), nullptr);
    step_seconds(1.5);
    EXPECT_EQ(label_of(hud, "RUNS OUT"), nullptr);
    EXPECT_EQ(no, 1) << "as if refused";
    EXPECT_NE(label_of(hud, "SECOND"), nullptr) << "this one waits for ever";
    ASSERT_TRUE(press(hud, "YES A"));
    EXPECT_EQ(yes, 1);
    EXPECT_EQ(label_of(hud, "SECOND"), nullptr);
    hud->remove_prompt("no such key");
}

TEST_F(HudTest, PauseStopsAndResumes) {
    press(hud, ""); // the first button without text is the pause button
    EXPECT_TRUE(hud->panel_open());
    EXPECT_TRUE(tree()->is_paused());
    ASSERT_TRUE(press(hud, "HOW TO PLAY"));
    EXPECT_TRUE(tree()->is_paused()) << "still paused while reading";
    ASSERT_TRUE(press(hud, "CLOSE"));
    EXPECT_FALSE(tree()->is_paused());

    hud->_show_pause();
    ASSERT_TRUE(press(hud, "RESUME"));
    EXPECT_FALSE(tree()->is_paused());
    EXPECT_FALSE(hud->panel_open());

    int saved = 0;
    int home = 0;
    hud->connect("save_pressed", UI::callback(hud, [&saved] { ++saved; }));
    hud->connect("home_pressed", UI::callback(hud, [&home] { ++home; }));
    hud->_show_pause();
    ASSERT_TRUE(press(hud, "SAVE GAME"));
    EXPECT_EQ(saved, 1);
    EXPECT_TRUE(hud->panel_open());
    ASSERT_TRUE(press(hud, "SAVE & MENU"));
    EXPECT_EQ(home, 1);
    EXPECT_FALSE(tree()->is_paused());
}

TEST_F(HudTest, SettingsAreStored) {
    store.values["music_on"] = false;
    hud->_show_pause();
    std::vector<Button *> switches;
    for (Button *b : all_of<Button>(hud)) {
        if (b->is_toggle_mode()) {
            switches.push_back(b);
        }
    }
    ASSERT_EQ(switches.size(), 4u);
    EXPECT_FALSE(switches[1]->is_pressed()) << "shows the stored state";
    switches[0]->set_pressed(false);
    switches[3]->set_pressed(false);
    EXPECT_FALSE(bool(store.values["sound_on"]));
    EXPECT_FALSE(bool(store.values["vibrate_on"]));
    EXPECT_GE(store.writes, 2);
    int64_t step_told = -1;
    hud->connect("zoom_pressed", UI::callback_arg(hud, [&](const Variant &v) { step_told = v; }));
    store.values["zoom"] = 2;
    hud->zoom_pressed();
    EXPECT_EQ(step_told, 0);
    EXPECT_EQ(int64_t(store.values["zoom"]), 0);
}

TEST_F(HudTest, DeckOffersOnlyWhatExists) {
    EXPECT_EQ(button_of(hud, "GOALS"), nullptr);
    int opened = 0;
    hud->offer_panel("GOALS", UI::callback(hud, [&opened] { ++opened; }));
    hud->toggle_deck();
    step(20);
    ASSERT_NE(button_of(hud, "GOALS"), nullptr);
    EXPECT_EQ(button_of(hud, "FRIENDS"), nullptr) << "no dead buttons";
    ASSERT_TRUE(press(hud, "GOALS"));
    EXPECT_EQ(opened, 1);
    step(30);
    EXPECT_EQ(button_of(hud, "GOALS"), nullptr) << "the deck folds away";
    expect_engine_error("no side button \"NONSENSE\"");
    hud->offer_panel("NONSENSE", Callable());
}

TEST_F(HudTest, WalkingHintGoesForGood) {
    hud->show_hint(true);
    EXPECT_NE(label_of(hud, "DRAG TO MOVE"), nullptr);
    Joystick *stick = hud->joystick();
    stick->_unhandled_input(touch(3, Vector2(300, 900), true));
    drag(3, Vector2(400, 900));
    step(2);
    EXPECT_EQ(label_of(hud, "DRAG TO MOVE"), nullptr);
    EXPECT_TRUE(bool(store.values["moved"]));
    hud->show_hint(true);
    EXPECT_EQ(label_of(hud, "DRAG TO MOVE"), nullptr);
}

TEST_F(HudTest, StickFollowsOneFinger) {
    Joystick *stick = hud->joystick();
    EXPECT_EQ(stick->vector(), Vector2());
    stick->_unhandled_input(touch(0, Vector2(300, 900), true));
    EXPECT_EQ(stick->vector(), Vector2()) << "a finger that rests walks nowhere";
    drag(0, Vector2(330, 900));
    const Vector2 soft = stick->vector();
    EXPECT_GT(soft.x, 0.05f);
    EXPECT_LT(soft.x, 0.6f);
    drag(0, Vector2(300, 500));
    EXPECT_NEAR(stick->vector().length(), 1.0, 1e-5) << "never faster than full";
    EXPECT_LT(stick->vector().y, -0.9f);
    drag(1, Vector2(900, 900));
    EXPECT_LT(stick->vector().y, -0.9f) << "another finger does not steer";
    stick->_input(touch(1, Vector2(900, 900), false));
    EXPECT_TRUE(stick->held());
    stick->_input(touch(0, Vector2(300, 500), false));
    EXPECT_FALSE(stick->held());
    EXPECT_EQ(stick->vector(), Vector2());
}

TEST_F(HudTest, ShortTouchIsATap) {
    Joystick *stick = hud->joystick();
    Vector2 tapped;
    stick->connect("tapped", UI::callback_arg(hud, [&](const Variant &at) { tapped = at; }));
    stick->_unhandled_input(touch(0, Vector2(200, 700), true));
    step(3);
    stick->_input(touch(0, Vector2(203, 702), false));
    EXPECT_EQ(tapped, Vector2(203, 702));
    tapped = Vector2();
    stick->_unhandled_input(touch(0, Vector2(200, 700), true));
    step(30);
    stick->_input(touch(0, Vector2(200, 700), false));
    EXPECT_EQ(tapped, Vector2()) << "a long touch is none";
}

TEST_F(HudTest, OpenPanelTakesTheStick) {
    Joystick *stick = hud->joystick();
    stick->_unhandled_input(touch(0, Vector2(300, 900), true));
    drag(0, Vector2(400, 900));
    hud->_open_panel("X", Array(), "", Callable(), Callable());
    EXPECT_EQ(stick->vector(), Vector2());
}

TEST_F(HudTest, ArabicMirrorsTheBars) {
    Lang::setup();
    hud->set_money(5);
    step(2);
    Label *money = label_of(hud, "$5");
    ASSERT_NE(money, nullptr);
    const float middle = root()->get_visible_rect().size.x * 0.5f;
    EXPECT_LT(money->get_global_position().x, middle);
    Lang::apply("ar");
    step(3);
    EXPECT_GT(money->get_global_position().x, middle) << "money stands at the right in Arabic";
}

TEST_F(HudTest, NothingTouchableIsTooSmall) {
    hud->_show_pause();
    step(3);
    for (Button *b : all_of<Button>(hud)) {
        if (b->is_visible_in_tree()) {
            EXPECT_GE(b->get_size().y, 48.0f) << b->get_text();
            EXPECT_GE(b->get_size().x, 48.0f) << b->get_text();
        }
    }
}
