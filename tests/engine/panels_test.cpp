// Every panel in both languages, both ways up, at each text size: nothing is cut, nothing lies over anything else,
// nothing leaves the screen, and keys reach every button.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include <godot_cpp/classes/base_button.hpp>
#include <godot_cpp/classes/input_event_key.hpp>
#include <godot_cpp/classes/line_edit.hpp>
#include <godot_cpp/classes/scroll_container.hpp>
#include <godot_cpp/classes/sub_viewport.hpp>
#include <godot_cpp/classes/texture_rect.hpp>

#include "engine_test.h"
#include "fake_store.h"
#include "find_control.h"
#include "game/interface/hud.h"
#include "game/interface/menu.h"
#include "game/interface/title_scene.h"
#include "game/kit/focus_ring.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "game/ports/garden_shop.h"
#include "game/ports/offers.h"
#include "save_kit.h"

using namespace tilm;

namespace {

constexpr float slack = 1.5f; // rounding of containers

std::string shown(Control *control) {
    String text = control->get_class();
    if (const Label *l = Object::cast_to<Label>(control)) {
        text = l->get_text();
    } else if (const Button *b = Object::cast_to<Button>(control)) {
        text = "[" + b->get_text() + "]" + String(b->get_name());
    }
    return std::string(text.utf8().get_data());
}

bool is_leaf(Control *control) {
    return Object::cast_to<Label>(control) != nullptr || Object::cast_to<BaseButton>(control) != nullptr ||
           Object::cast_to<LineEdit>(control) != nullptr || Object::cast_to<TextureRect>(control) != nullptr ||
           control->has_meta("keys");
}

ScrollContainer *scroll_above(Node *node) {
    for (Node *n = node->get_parent(); n != nullptr; n = n->get_parent()) {
        if (ScrollContainer *scroll = Object::cast_to<ScrollContainer>(n)) {
            return scroll;
        }
    }
    return nullptr;
}

// Where a control is, untouched by the animation that it may still be in.
void look(Node *area, const Vector2 &screen, const std::string &where) {
    std::vector<Control *> leaves;
    for (Control *c : all_of<Control>(area)) {
        if (c->is_visible_in_tree() && is_leaf(c) && c->get_name() != StringName("Backdrop")) {
            leaves.push_back(c);
        }
    }
    EXPECT_FALSE(leaves.empty()) << where;
    const Rect2 window(Vector2(-slack, -slack), screen + Vector2(2 * slack, 2 * slack));
    for (Control *c : leaves) {
        const Vector2 least = c->get_combined_minimum_size();
        EXPECT_GE(c->get_size().x + slack, least.x) << where << ": cut " << shown(c);
        EXPECT_GE(c->get_size().y + slack, least.y) << where << ": cut " << shown(c);
        if (Label *l = Object::cast_to<Label>(c)) {
            EXPECT_EQ(l->get_visible_line_count(), l->get_line_count()) << where << ": lines lost in " << shown(c);
            if (l->get_autowrap_mode() != TextServer::AUTOWRAP_OFF) { // else its least width holds the text
                const PackedStringArray words = Lang::t(l->get_text()).replace("\n", " ").split(" ");
                for (int64_t i = 0; i < words.size(); ++i) {
                    const int size = l->get_theme_font_size("font_size");
                    const double wide =
                        l->get_theme_font("font")->get_string_size(words[i], HORIZONTAL_ALIGNMENT_LEFT, -1, size).x;
                    EXPECT_LE(wide, l->get_size().x + slack) << where << ": word broken in " << shown(c);
                }
            }
        }
        Rect2 rect = c->get_global_rect();
        if (const ScrollContainer *scroll = scroll_above(c)) {
            const Rect2 list = scroll->get_global_rect();
            EXPECT_GE(rect.position.x + slack, list.position.x) << where << ": out of the list " << shown(c);
            EXPECT_LE(rect.position.x + rect.size.x, list.position.x + list.size.x + slack)
                << where << ": out of the list " << shown(c);
            EXPECT_TRUE(window.encloses(list)) << where << ": the list leaves the screen";
        } else {
            EXPECT_TRUE(window.encloses(rect)) << where << ": off the screen " << shown(c);
        }
    }
    for (size_t a = 0; a < leaves.size(); ++a) {
        for (size_t b = a + 1; b < leaves.size(); ++b) {
            // A list's rows pass below what stands round the list.
            if (scroll_above(leaves[a]) != scroll_above(leaves[b]) || leaves[a]->is_ancestor_of(leaves[b]) ||
                leaves[b]->get_name() == StringName("Goal")) { // the strip itself is the button
                continue;
            }
            const Rect2 first = leaves[a]->get_global_rect().grow(-slack);
            EXPECT_FALSE(first.intersects(leaves[b]->get_global_rect().grow(-slack)))
                << where << ": " << shown(leaves[a]) << " lies over " << shown(leaves[b]) << " from "
                << leaves[a]->get_global_rect().position.y << " and " << leaves[b]->get_global_rect().position.y;
        }
    }
}

class FakeOffers : public Offers {
public:
    FakeOffers() { Offers::set_current(this); }
    ~FakeOffers() override { Offers::set_current(nullptr); }
    std::vector<Offer> list() const override { return rows; }
    String buy(const String &id) override {
        bought = id;
        return refusal;
    }
    String show(const String &id) override {
        shown = id;
        return String();
    }
    std::vector<Offer> rows;
    String bought;
    String shown;
    String refusal;
};

class FakeGarden : public GardenShop {
public:
    FakeGarden() { GardenShop::set_current(this); }
    ~FakeGarden() override { GardenShop::set_current(nullptr); }
    std::vector<DecorOffer> list() const override { return rows; }
    int charm() const override { return sum; }
    String buy(const String &type) override {
        bought = type;
        return refusal;
    }
    std::vector<DecorOffer> rows;
    int sum = 12;
    String bought;
    String refusal;
};

struct Form {
    const char *name;
    Vector2i screen;
};
// What the windows of 720 x 1560 and 1250 x 720 come to in the interface's own units.
constexpr int form_count = 2;
const Form forms[form_count] = {{"tall", Vector2i(720, 1560)}, {"wide", Vector2i(2170, 1250)}};

template <class Body>
void each_form(Body body) {
    for (const Form &form : forms) {
        for (const int size : {100, 125, 150}) {
            for (const char *language : {"en", "ar"}) {
                UI::set_text_size(size);
                Lang::apply(language);
                body(form.screen, std::string(form.name) + " " + std::to_string(size) + "% " + language);
            }
        }
    }
    UI::set_text_size(100);
    Lang::apply("en");
}

SubViewport *screen_of(const Vector2i &size) {
    SubViewport *screen = add<SubViewport>();
    screen->set_size(size);
    return screen;
}

void press_key(Hud *hud, Key code) {
    Ref<InputEventKey> key;
    key.instantiate();
    key->set_keycode(code);
    key->set_physical_keycode(code);
    key->set_pressed(true);
    hud->get_viewport()->push_input(key);
}

} // namespace

class PanelsTest : public testing::Test {
protected:
    void SetUp() override {
        Lang::setup();
        offers.rows = {{"coop_b", "COOP", "producer", "egg", "EGG FARM", 90, 12, true, "egg"},
                       {"homes", "ANOTHER WORKERS' HOME", "homes", "", "CATTLE RANCH", 1250000, 140, false, ""},
                       {"mill", "BIGGER INPUT LV4\nHELPER IS THE LIMIT", "machine", "flour", "FOOD FACTORY", 8400, 3,
                        false, "flour"}};
        garden.rows = {{"flowers", "FLOWER BED", 1, 400, 0, true},
                       {"statue", "GOLDEN HEN STATUE", 6, 139698390, 10, false},
                       {"friends", "FRIENDSHIP STATUE", 8, 0, 1, false}};
    }
    void TearDown() override {
        tree()->set_pause(false);
        UI::set_text_size(100);
        Lang::apply("en");
    }
    Hud *hud_in(SubViewport *screen) {
        Hud *hud = memnew(Hud);
        screen->add_child(hud);
        return hud;
    }

    FakeStore store;
    FakeOffers offers;
    FakeGarden garden;
};

TEST_F(PanelsTest, NothingIsCutOrCovered) {
    each_form([&](const Vector2i &size, const std::string &where) {
        SubViewport *screen = screen_of(size);
        Hud *hud = hud_in(screen);
        const Vector2 room(size);
        const std::vector<std::pair<std::string, std::function<void()>>> panels = {
            {"pause", [&] { hud->_show_pause(); }},
            {"how to", [&] { hud->_show_how_to(); }},
            {"build", [&] { hud->_show_build(); }},
            {"decor", [&] { hud->_show_decor(); }},
            {"offline", [&] { hud->show_offline(30000, 123456789); }},
            {"victory", [&] { hud->show_victory(132, 2147483647); }},
            {"tabs",
             [&] {
                 hud->_open_panel("GOALS", Array::make("STARS", "DAILY", "AREA", "ALBUM", "CO-OP"), "AREA", Callable(),
                                  Callable(hud, "_fill_how_to"));
             }},
        };
        for (const auto &[name, open] : panels) {
            open();
            step(30); // the box has grown to its size
            look(hud->get_overlay(), room, where + " " + name);
            hud->close_panel();
        }
        step(2);
        memdelete(screen);
    });
}

TEST_F(PanelsTest, BarsKeepClearOfEachOther) {
    each_form([&](const Vector2i &size, const std::string &where) {
        SubViewport *screen = screen_of(size);
        Hud *hud = hud_in(screen);
        store.values["moved"] = false;
        hud->set_money(1234567890);
        hud->set_gold(128);
        hud->set_level_line(42, 77);
        hud->set_mood(0.7);
        hud->set_next_goal("ANOTHER WORKERS' HOME", 1200000, 5400000);
        hud->offer_panel("TASKS", UI::callback(hud, [] {}));
        hud->offer_panel("TOP 10", UI::callback(hud, [] {}));
        for (const char *name : {"FRIENDS", "BOOST", "STYLE", "DECOR", "GOALS"}) {
            hud->offer_panel(name, UI::callback(hud, [] {}));
        }
        hud->toggle_deck();
        hud->show_hint(true);
        step_seconds(2.5); // the counter has run to its sum
        look(hud, Vector2(size), where + " bars");
        hud->toggle_deck();
        hud->show_hint(false);
        Dictionary options;
        options["alt"] = "LATER";
        options["icon"] = UI::icon("gift");
        hud->_prompt("gift", "A GIFT IS WAITING FOR YOU", "YOUR WAREHOUSE IS FULL, COME COLLECT", "COLLECT", Callable(),
                     Callable(), options);
        hud->toast("YOU PLAY THIS FARM WITH FRIENDS. LEAVE THE GAME TO SWITCH FARMS.", 2);
        hud->toast("NOT ENOUGH MONEY", 0);
        step(40);
        look(hud, Vector2(size), where + " prompt and toasts");
        step(2);
        memdelete(screen);
    });
}

TEST_F(PanelsTest, KeysWalkPanelsAndBars) {
    SubViewport *screen = screen_of(Vector2i(720, 1560));
    Hud *hud = hud_in(screen);
    step(2);
    press_key(hud, KEY_ESCAPE);
    step();
    ASSERT_TRUE(hud->panel_open()) << "ESC pauses";
    ASSERT_NE(screen->gui_get_focus_owner(), nullptr) << "keys begin at once";
    EXPECT_NE(screen->gui_get_focus_owner()->find_child("FocusRing", false, false), nullptr) << "and one sees where";
    std::set<Control *> seen;
    for (int i = 0; i < 40; ++i) {
        seen.insert(screen->gui_get_focus_owner());
        press_key(hud, KEY_DOWN);
        step();
    }
    size_t reachable = 0;
    for (Control *c : all_of<Control>(hud->get_overlay())) {
        reachable += c->is_visible_in_tree() && (Object::cast_to<BaseButton>(c) != nullptr || c->has_meta("keys"));
    }
    EXPECT_GE(seen.size(), reachable) << "every button, switch and bar is reached";

    Control *bar = nullptr;
    for (Control *c : all_of<Control>(hud->get_overlay())) {
        bar = bar == nullptr && c->has_meta("keys") ? c : bar;
    }
    ASSERT_NE(bar, nullptr);
    bar->grab_focus();
    press_key(hud, KEY_LEFT);
    step();
    EXPECT_NEAR(double(store.values["vol_music"]), 0.7, 1e-9) << "volume by keys";
    press_key(hud, KEY_ESCAPE);
    step();
    EXPECT_FALSE(hud->panel_open());

    EXPECT_FALSE(hud->keys_taken());
    press_key(hud, KEY_TAB);
    step();
    EXPECT_TRUE(hud->keys_taken()) << "the farmer stands while keys walk the bars";
    EXPECT_NE(screen->gui_get_focus_owner(), nullptr);
    press_key(hud, KEY_ENTER);
    step();
    Ref<InputEventKey> up;
    up.instantiate();
    up->set_keycode(KEY_ENTER);
    up->set_physical_keycode(KEY_ENTER);
    screen->push_input(up);
    step();
    EXPECT_TRUE(hud->panel_open()) << "the first of them pauses";
    EXPECT_TRUE(tree()->is_paused());
}

TEST_F(PanelsTest, TextSizeIsChosenAndKept) {
    SubViewport *screen = screen_of(Vector2i(720, 1560));
    Hud *hud = hud_in(screen);
    hud->_show_pause();
    step(2);
    Label *title = label_of(hud, "PAUSED");
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->get_theme_font_size("font_size"), 50);
    ASSERT_TRUE(press(hud, "100%"));
    step(2);
    EXPECT_EQ(int64_t(store.values["text_size"]), 125);
    EXPECT_EQ(label_of(hud, "PAUSED")->get_theme_font_size("font_size"), 63) << "what stands grows too";
    ASSERT_TRUE(press(hud, "125%"));
    step(2);
    ASSERT_TRUE(press(hud, "150%"));
    step(2);
    EXPECT_EQ(UI::text_size(), 100);
    EXPECT_EQ(label_of(hud, "PAUSED")->get_theme_font_size("font_size"), 50);
    UI::set_text_size(-7);
    EXPECT_EQ(UI::text_size(), 100);
    UI::set_text_size(9999);
    EXPECT_EQ(UI::text_size(), 150);
}

TEST_F(PanelsTest, BuildListBuysAndShows) {
    SubViewport *screen = screen_of(Vector2i(720, 1560));
    Hud *hud = hud_in(screen);
    hud->_show_build();
    step(2);
    int badges = 0;
    for (TextureRect *picture : all_of<TextureRect>(hud->get_panel_box())) {
        EXPECT_TRUE(picture->get_texture().is_valid());
        badges += picture->find_child("Good", false, false) != nullptr ? 1 : 0;
    }
    EXPECT_EQ(badges, 1) << "the mill's good; a coop's picture shows its own, homes have none";
    ASSERT_TRUE(press(hud, "$90"));
    EXPECT_EQ(offers.bought, String("coop_b"));
    offers.refusal = "NOT ENOUGH MONEY";
    ASSERT_TRUE(press(hud, "$8.4K"));
    step();
    EXPECT_NE(label_of(hud, "NOT ENOUGH MONEY"), nullptr);
    offers.rows.erase(offers.rows.begin());
    step_seconds(0.6);
    EXPECT_EQ(button_of(hud, "$90"), nullptr) << "what is sold leaves the list by itself";
    for (Button *b : all_of<Button>(hud->get_overlay())) {
        if (String(b->get_name()) == String("Show")) {
            b->emit_signal("pressed");
            break;
        }
    }
    EXPECT_EQ(offers.shown, String("homes"));
    EXPECT_FALSE(hud->panel_open());
    offers.rows.clear();
    hud->_show_build();
    EXPECT_NE(label_of(hud, "NOTHING IS FOR SALE RIGHT NOW."), nullptr);
}

TEST_F(PanelsTest, DecorPanelTellsCharmAndSells) {
    SubViewport *screen = screen_of(Vector2i(720, 1560));
    Hud *hud = hud_in(screen);
    garden.sum = 12;
    hud->offer_panel("DECOR", Callable(hud, "_show_decor"));
    ASSERT_TRUE(hud->open_offered("DECOR"));
    step(2);
    EXPECT_NE(label_of(hud, "CHARM 12/50:  +12% CUSTOMER PATIENCE,  +4% PRICES"), nullptr);
    EXPECT_NE(label_of(hud, "BUILT ON THE CUSTOMERS' LAWN NEAR YOU"), nullptr);
    EXPECT_NE(label_of(hud, "YOU BUILT 10"), nullptr);
    EXPECT_EQ(label_of(hud, "YOU BUILT 0"), nullptr);
    ASSERT_TRUE(press(hud, "$400"));
    EXPECT_EQ(garden.bought, String("flowers"));
    garden.refusal = "YOU HAVE IT ALREADY";
    ASSERT_TRUE(press(hud, "FREE"));
    step();
    EXPECT_EQ(garden.bought, String("friends"));
    EXPECT_NE(label_of(hud, "YOU HAVE IT ALREADY"), nullptr);
    garden.rows[0] = {"flowers", "FLOWER BED", 1, 500, 1, false};
    garden.sum = 50;
    step_seconds(0.6);
    EXPECT_NE(button_of(hud, "$500"), nullptr) << "what has changed shows by itself";
    EXPECT_NE(label_of(hud, "CHARM 50/50:  +50% CUSTOMER PATIENCE,  +20% PRICES"), nullptr);
    // Keys reach every price.
    std::set<Control *> seen;
    for (int i = 0; i < 12; ++i) {
        press_key(hud, KEY_DOWN);
        step();
        seen.insert(screen->gui_get_focus_owner());
    }
    for (Button *b : all_of<Button>(hud->get_overlay())) {
        EXPECT_TRUE(seen.count(b)) << b->get_text();
    }
}

TEST_F(PanelsTest, SafeMargins) {
    // A notch of 90 pixels at the top and a bar of 60 below, on 1080 x 2340 shown as 720 x 1560.
    const Vector4 m = UI::margins_of(Vector2(1080, 2340), Rect2(0, 90, 1080, 2190), Vector2(720, 1560));
    EXPECT_NEAR(m.x, 0, 1e-4);
    EXPECT_NEAR(m.y, 60, 1e-3);
    EXPECT_NEAR(m.z, 0, 1e-4);
    EXPECT_NEAR(m.w, 40, 1e-3);
    EXPECT_EQ(UI::margins_of(Vector2(0, 0), Rect2(0, 0, 5, 5), Vector2(720, 1560)), Vector4());
    EXPECT_LE(UI::margins_of(Vector2(100, 100), Rect2(90, 90, 10, 10), Vector2(720, 1560)).y, 390.0f)
        << "nonsense never takes the screen";
}

// Pairs of text and ground that the kit and its panels use.
TEST(Contrast, TextStandsOutFromItsGround) {
    struct Pair {
        const char *text;
        const char *ground;
    };
    const auto light = [](const char *rgb) {
        const Color c = UI::hex(rgb).srgb_to_linear();
        return 0.2126 * c.r + 0.7152 * c.g + 0.0722 * c.b;
    };
    const auto ratio = [&](const char *a, const char *b) {
        const double x = light(a);
        const double y = light(b);
        return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
    };
    const char *outline = "141a2e"; // every label and button without a plain ground has it
    for (const char *face : {"ffffff", "ffd54f", "c5e1a5", "ffca28", "b9f6ca", "ff8a80", "ffe082", "3ddc84", "f2b73a",
                             "f26f6f", "b2ebf2", "ffcc80", "cfd8dc", "b0bec5", "c5f542", "ffe0b2"}) {
        EXPECT_GE(ratio(face, outline), 4.5) << face << " on its outline";
    }
    for (const Pair &p :
         {Pair{"29333f", "fff8e1"}, Pair{"29333f", "ffecb3"}, Pair{"5c4038", "ffecb3"}, Pair{"37474f", "fffaf0"},
          Pair{"1b5e20", "fff3c4"}, Pair{"263238", "ffffff"}, Pair{"ffffff", "33415c"}, Pair{"ffffff", "2e7d32"},
          Pair{"ffffff", "b71c1c"}, Pair{"ffffff", "b45309"}}) {
        EXPECT_GE(ratio(p.text, p.ground), 4.5) << p.text << " on " << p.ground;
    }
}

class MenuPanelsTest : public SaveTest {
protected:
    void SetUp() override {
        SaveTest::SetUp();
        Lang::setup();
        Menu::forget_later();
        save = open();
    }
    void TearDown() override {
        TitleScene::release();
        step(2);
        UI::set_text_size(100);
        Lang::apply("en");
        SaveTest::TearDown();
    }
    Save *save = nullptr;
};

TEST_F(MenuPanelsTest, TitleAndItsSheets) {
    Dictionary info;
    info["version"] = "99.1";
    info["min"] = "0.0.1";
    Dictionary notes;
    notes["en"] = Array::make("BIG NEWS FOR EVERYBODY WHO GROWS WHEAT AND BAKES BREAD OF IT");
    notes["ar"] = notes["en"];
    info["notes"] = notes;
    each_form([&](const Vector2i &size, const std::string &where) {
        SubViewport *screen = screen_of(size);
        const auto menu_with = [&](const String &name, double money) {
            save->put_setting("name", name);
            save->data = money > 0 ? farm(money) : Dictionary();
            Menu *menu = memnew(Menu);
            screen->add_child(menu);
            step(45);
            return menu;
        };
        Menu *menu = menu_with("", 0);
        look(menu->find_child("Screen", false, false), Vector2(size), where + " name");
        memdelete(menu);
        menu = menu_with("WWWWWWWWWWWWWWWW", 3000000000.0);
        look(menu->find_child("Screen", false, false), Vector2(size), where + " card");
        menu->_show_farms();
        step(30);
        look(screen->get_child(0)->find_child("Screen", false, false)->get_child(-1), Vector2(size), where + " farms");
        menu->_show_update(info);
        step(30);
        look(screen->get_child(0)->find_child("Screen", false, false)->get_child(-1), Vector2(size), where + " update");
        step(2);
        memdelete(screen);
        step();
    });
}

TEST_F(MenuPanelsTest, NamesOfEveryKind) {
    const auto kept = [](const char *typed) { return Menu::name_from(String::utf8(typed)); };
    EXPECT_EQ(kept("  \t  "), String());
    EXPECT_EQ(kept(" ABCDEFGHIJKLMNOPQRST "), String("ABCDEFGHIJKLMNOP"));
    EXPECT_EQ(Menu::name_from(String("A").repeat(200)).length(), 16);
    EXPECT_EQ(kept("\xE2\x80\xAE"
                   "ALI"
                   "\xE2\x81\xA6"),
              String("ALI"))
        << "marks of direction cannot be smuggled in";
    EXPECT_EQ(kept("\xE2\x80\x8F\xE2\x80\x8E"), String()) << "marks alone are no name";
    EXPECT_EQ(kept("🐔🐔🐔"), String::utf8("🐔🐔🐔"));
    EXPECT_EQ(Menu::name_from(String::utf8("🐔").repeat(40)).length(), 16);
    EXPECT_EQ(kept("سلمى"), String::utf8("سلمى"));
    EXPECT_EQ(kept("A\nB"), String("AB"));
}

TEST_F(MenuPanelsTest, MoreFarmsThanSixAreShownAndPlayed) {
    save->put_setting("name", "SALMA");
    save->write();
    Array rows = save->farms;
    for (int i = 0; i < 9; ++i) {
        Dictionary row;
        row["id"] = "0000000" + String::num_int64(i);
        row["name"] = "FARM " + String::num_int64(20 + i);
        row["farm"] = Dictionary();
        rows.push_back(row);
    }
    save->farms = rows;
    SubViewport *screen = screen_of(Vector2i(720, 1560));
    Menu *menu = memnew(Menu);
    screen->add_child(menu);
    menu->_show_farms();
    step(30);
    EXPECT_NE(label_of(menu, "FARM 28"), nullptr);
    EXPECT_TRUE(button_of(menu, "NEW FARM")->is_disabled());
    look(screen->get_child(0)->find_child("Screen", false, false)->get_child(-1), Vector2(720, 1560), "ten farms");
    EXPECT_FALSE(bool(save->new_farm()));
    memdelete(screen);
}
