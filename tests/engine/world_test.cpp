// A whole farm in the engine: built from its document, played by the bot, saved and found as left.

#include <memory>

#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_items/pile_core.h"
#include "game/actors/cash_tile.h"
#include "game/actors/crop_field.h"
#include "game/actors/hauler.h"
#include "game/actors/item.h"
#include "game/actors/machine.h"
#include "game/actors/player.h"
#include "game/actors/producer.h"
#include "game/actors/sell_counter.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/unlock_tile.h"
#include "game/data/farm_data.h"
#include "game/interface/hud.h"
#include "game/kit/ui.h"
#include "game/ports/notices.h"
#include "game/ports/offers.h"
#include "world_kit.h"

namespace tilm {

namespace {

class WorldTest : public FarmTest {
protected:
    ZoneCore *zone(const String &group) const {
        Array zones = world->zone_list();
        for (int i = 0; i < zones.size(); i++) {
            ZoneCore *z = Object::cast_to<ZoneCore>(zones[i]);
            if (z->get_group() == group) {
                return z;
            }
        }
        return nullptr;
    }

    CashTile *egg_cash() const {
        SellCounter *stall = Object::cast_to<SellCounter>(world->node_of("stall_egg"));
        return stall ? stall->cash_tile() : nullptr;
    }

    static Dictionary farm(int64_t money, const Dictionary &levels) {
        Dictionary doc;
        doc["money"] = money;
        doc["levels"] = levels;
        return doc;
    }
};

// Hears the toasts in place of the interface while it lives.
class Heard : public Notices {
public:
    Heard() : before(Notices::current()) { Notices::set_current(this); }
    ~Heard() override { Notices::set_current(before); }
    void notice(const String &text, ToastLevel) override { last = text; }
    void fly_money(int64_t, const Vector3 &) override {}
    String last;

private:
    Notices *before;
};

} // namespace

TEST_F(WorldTest, CharmAndNightReachTheStalls) {
    open();
    world->set_charm(50);
    world->set_night(true);
    step(2); // the first frame ends the building
    EXPECT_DOUBLE_EQ(CustomerBrain::get_patience(), 1.5);
    EXPECT_EQ(CounterCore::get_spawn_mult(), 2.0);
    EXPECT_DOUBLE_EQ(SellCounter::get_price_factor(), 1.8);
    world->set_charm(0);
    world->set_night(false);
    step();
    EXPECT_EQ(CustomerBrain::get_patience(), 1.0);
    EXPECT_EQ(SellCounter::get_price_factor(), 1.0);
}

TEST_F(WorldTest, AnEmptyFarmStartsWithWhatIsFree) {
    open();
    EXPECT_EQ(world->money, 0);
    EXPECT_EQ(world->level_of("field_corn"), 1);
    EXPECT_EQ(world->level_of("stall_corn"), 1);
    EXPECT_EQ(world->level_of("coop_a"), 0);
    EXPECT_EQ(world->level(), 1);
    // What can be bought now, and nothing that nobody could build.
    EXPECT_TRUE(world->get_tiles().has("coop_a"));
    EXPECT_TRUE(world->get_tiles().has("stack"));
    EXPECT_FALSE(world->get_tiles().has("coop_b"));
    EXPECT_EQ(world->price("coop_a"), 25);
    EXPECT_TRUE(world->region_open("eggs"));
    EXPECT_FALSE(world->region_open("dairy"));
    // Fences stand where open land meets closed land: both sides of eggs and of the service land.
    EXPECT_EQ(world->get_fences().size(), 3);
}

TEST_F(WorldTest, TheWalkAreaFollowsTheLand) {
    Dictionary levels;
    levels["land_dairy"] = 1;
    save->data = farm(0, levels);
    open();
    Player *player = world->farmer();
    EXPECT_FLOAT_EQ(player->first_area.position.x, -36.0f + 0.6f);
    EXPECT_FLOAT_EQ(player->first_area.get_end().x, 12.0f - 0.6f);
    EXPECT_FLOAT_EQ(player->second_area.size.x, 22.8f);
    // With the oil land the service land joins.
    world->apply_level(FarmData::entry_by_id("land_oil"), 1, true);
    EXPECT_FLOAT_EQ(player->first_area.position.x, -84.0f + 0.6f);
    EXPECT_EQ(player->second_area.size.x, 0.0f);
}

TEST_F(WorldTest, MoneyVerbsKeepTheSum) {
    open();
    world->gain(120, Vector3(0, 1, 0));
    EXPECT_EQ(world->money, 120);
    EXPECT_FALSE(world->spend_quiet(121));
    EXPECT_FALSE(world->spend_quiet(-5));
    EXPECT_TRUE(world->spend_quiet(20));
    world->pay(30, Vector3(1, 0, 1));
    EXPECT_EQ(world->money, 70);
    world->gain(-40, Vector3());
    EXPECT_EQ(world->money, 70);
    Item *bill = Item::spawn("bill", Vector3(0, 1, 0));
    bill->set_value(13);
    world->collect_bill(bill);
    EXPECT_EQ(world->money, 83);
    expect_engine_error("collect: not a bill");
    world->collect_bill(world);
    EXPECT_EQ(world->money, 83);
}

TEST_F(WorldTest, ATileIsBoughtByStandingOnItAndNotAgainAtOnce) {
    save->data = farm(200, Dictionary());
    open();
    UnlockTile *tile = world->tile_office().tile_of("coop_a");
    ASSERT_NE(tile, nullptr);
    Player *player = world->farmer();
    // The load's guard lets nobody pay before he has stepped away from where he appeared.
    player->set_position(tile->get_position());
    step_seconds(3.0);
    EXPECT_EQ(world->level_of("coop_a"), 1);
    EXPECT_EQ(world->money, 175);
    EXPECT_NE(world->node_of("coop_a"), nullptr);
    // The upgrade's tile comes on the pad, and nothing drains where the player stands.
    int64_t before = world->money;
    ASSERT_TRUE(world->get_tiles().has("coop_a"));
    player->set_position(world->tile_office().tile_of("coop_a")->get_position() + Vector3(0, 0, 0));
    step_seconds(0.2);
    EXPECT_EQ(world->money, before);
}

TEST_F(WorldTest, GoodsMoneyAndPlaceComeBackAsLeft) {
    Dictionary levels;
    levels["coop_a"] = 3;
    levels["stall_egg"] = 2;
    levels["stack"] = 2;
    levels["x_helper_9"] = 4; // of a building that is gone: kept
    save->data = farm(77, levels);
    open();
    Producer *coop = Object::cast_to<Producer>(world->node_of("coop_a"));
    ASSERT_NE(coop, nullptr);
    EXPECT_EQ(coop->get_level(), 3);
    EXPECT_EQ(world->farmer()->carrier()->get_capacity(), 14 + 12);
    ZoneCore *stall = zone("stall_egg");
    ASSERT_NE(stall, nullptr);
    for (int i = 0; i < 7; i++) {
        stall->get_pile()->add(Item::spawn("egg", Vector3()), 0);
    }
    for (int i = 0; i < 3; i++) {
        world->farmer()->carrier()->add(Item::spawn("corn", Vector3()));
    }
    ASSERT_NE(egg_cash(), nullptr);
    egg_cash()->add_money(40, 10, Vector3());
    world->farmer()->set_position(Vector3(9.5, 0, -25));
    int trough = zone("coop_a_feed")->get_pile()->count();
    EXPECT_GT(trough, 0) << "a new coop has had its free feed";
    world->save_now();
    Dictionary left = save->data.duplicate(true);
    reopen();
    EXPECT_EQ(world->money, 77);
    EXPECT_EQ(world->level_of("coop_a"), 3);
    EXPECT_EQ(zone("stall_egg")->get_pile()->count_kind("egg"), 7);
    EXPECT_EQ(zone("coop_a_feed")->get_pile()->count(), trough) << "free feed comes once";
    EXPECT_EQ(world->farmer()->carrier()->count_kind("corn"), 3);
    EXPECT_EQ(egg_cash()->total(), 40);
    EXPECT_NEAR(world->farmer()->get_position().x, 9.5, 0.01);
    EXPECT_NEAR(world->farmer()->get_position().z, -25, 0.01);
    world->save_now();
    EXPECT_EQ(static_cast<int64_t>(static_cast<Dictionary>(save->data["levels"])["x_helper_9"]), 4);
    Dictionary state_left = left["state"];
    Dictionary state_now = save->data["state"];
    EXPECT_EQ(Variant(state_left["piles"]).stringify(), Variant(state_now["piles"]).stringify());
}

TEST_F(WorldTest, ADamagedFarmLoadsWhatIsSound) {
    Dictionary levels;
    levels["coop_a"] = 2.0;
    levels["field_corn"] = 1;
    levels["stall_egg"] = "many";
    levels["coop_b"] = -3;
    levels["corn_workers"] = 1e300;
    Dictionary piles;
    Dictionary eggs;
    eggs["egg"] = 500;
    eggs["gravel"] = 3;
    piles["coop_a@-70,-54"] = eggs;
    piles["nowhere@0,0"] = eggs;
    piles["stall_corn@-102,46"] = "corn";
    Dictionary state;
    state["piles"] = piles;
    state["cash"] = Array();
    state["carry"] = Array::make("corn", "gravel", 7);
    state["px"] = 1e30;
    state["pz"] = "here";
    Dictionary doc = farm(50, levels);
    doc["state"] = state;
    doc["staff"] = 5;
    doc["paid"] = Array();
    save->data = doc;
    expect_engine_error("unknown good gravel");
    open();
    EXPECT_EQ(world->level_of("coop_a"), 2);
    EXPECT_EQ(world->level_of("coop_b"), 0);
    Producer *coop = Object::cast_to<Producer>(world->node_of("coop_a"));
    EXPECT_EQ(coop->get_take_zone()->get_pile()->count_kind("egg"), 24) << "no more than the tray holds";
    EXPECT_EQ(world->farmer()->carrier()->count(), 1);
    EXPECT_LT(std::abs(world->farmer()->get_position().x), 600);
}

TEST_F(WorldTest, WorkWithoutItsFieldBuildsNothingAndKeepsItsLevel) {
    Dictionary levels;
    levels["wheat_workers"] = 1;
    levels["wheat_harvester"] = 1;
    save->data = farm(0, levels);
    expect_engine_error("workers for wheat_workers: field not built");
    expect_engine_error("workers for wheat_harvester: field not built");
    open();
    EXPECT_EQ(world->level_of("wheat_workers"), 1);
    EXPECT_EQ(world->level_of("wheat_harvester"), 1);
    EXPECT_EQ(world->node_of("wheat_harvester"), nullptr);
}

TEST_F(WorldTest, MachinesAreBoughtWorkAndComeBack) {
    Dictionary levels;
    levels["land_mill"] = 1;
    levels["flour_mill"] = 2;
    save->data = farm(100000, levels);
    open();
    Machine *mill = Object::cast_to<Machine>(world->node_of("flour_mill"));
    ASSERT_NE(mill, nullptr);
    EXPECT_EQ(mill->get_level(), 2);
    EXPECT_TRUE(world->get_tiles().has("flour_mill")); // its upgrade is for sale
    MachineCore::set_boost(2);
    ASSERT_NE(zone("flour_mill"), nullptr);
    for (int i = 0; i < 9; i++) {
        zone("flour_mill")->get_pile()->add(Item::spawn("wheat", Vector3()), 0);
    }
    step_seconds(4.4); // the farm steps it: four batches of 0.992 s at its own speed
    EXPECT_EQ(MachineCore::get_boost(), 1);
    EXPECT_EQ(zone("flour_mill_out")->get_pile()->count_kind("flour"), 4);
    EXPECT_EQ(world->flow_total("used:wheat"), 4);
    EXPECT_EQ(world->flow_total("made:flour"), 4);
    mill->set_process_mode(Node::PROCESS_MODE_DISABLED); // broken down
    step_seconds(3);
    EXPECT_EQ(zone("flour_mill")->get_pile()->count(), 5);
    world->save_now();
    reopen();
    mill = Object::cast_to<Machine>(world->node_of("flour_mill"));
    ASSERT_NE(mill, nullptr);
    EXPECT_EQ(mill->get_level(), 2);
    EXPECT_EQ(zone("flour_mill")->get_pile()->count_kind("wheat"), 5);
    EXPECT_EQ(zone("flour_mill_out")->get_pile()->count_kind("flour"), 4);
    // Each level says what it brings.
    const Dictionary entry = FarmData::entry_by_id("flour_mill");
    Heard heard;
    world->apply_level(entry, 3, false);
    EXPECT_EQ(heard.last, String("FLOUR MILL HOLDS MORE!"));
    world->apply_level(entry, 4, false);
    EXPECT_EQ(heard.last, String("FASTER FLOUR MILL!"));
    EXPECT_EQ(mill->get_level(), 4);
    world->apply_level(FarmData::entry_by_id("oil_press"), 1, false);
    EXPECT_EQ(heard.last, String("OIL PRESS BUILT!"));
    EXPECT_NE(world->node_of("oil_press"), nullptr);
}

TEST_F(WorldTest, AnAddedMachineBringsWhoFeedsItAndCarriesAway) {
    Dictionary levels;
    levels["land_mill"] = 1;
    save->data = farm(0, levels);
    open();
    Dictionary entry = FarmData::entry_by_id("flour_mill").duplicate(true);
    entry["id"] = "x_mill_1";
    entry["alias"] = "flour_mill";
    entry["carry_to"] = "stall_flour";
    entry["feed_kinds"] = Array::make("wheat");
    entry["out_kinds"] = Array::make("flour");
    world->apply_level(entry, 1, true);
    const Vector3 at(31, 0, -8.5f);
    std::vector<String> to;
    for (int i = 0; i < world->get_child_count(); i++) {
        if (Hauler *hauler = Object::cast_to<Hauler>(world->get_child(i))) {
            const float x = 0.8f * static_cast<float>(to.size()) - 0.4f;
            EXPECT_LT(hauler->get_position().distance_to(at + Vector3(x, 0, 3.4f)), 0.01);
            to.push_back(hauler->get_dst());
        }
    }
    ASSERT_EQ(to.size(), 2u);
    EXPECT_EQ(to[0], String("flour_mill"));
    EXPECT_EQ(to[1], String("stall_flour"));
    // The first fetches wheat from the pallet of the field to the added mill although the other does not stand.
    CropField *field = Object::cast_to<CropField>(world->node_of("field_wheat"));
    ASSERT_NE(field, nullptr);
    for (int i = 0; i < 5; i++) {
        field->get_pallet()->add(Item::spawn("wheat", field->get_pallet()->get_global_position()), 0);
    }
    for (int i = 0; i < 60 && world->flow_total("made:flour") == 0; i++) {
        step_seconds(1);
    }
    EXPECT_GT(world->flow_total("used:wheat"), 0);
    EXPECT_GT(world->flow_total("made:flour"), 0);
}

TEST_F(WorldTest, ABadMachineRowLeavesAnEmptyLotAndItsLevel) {
    open();
    Dictionary entry = FarmData::entry_by_id("flour_mill").duplicate(true);
    entry["id"] = "x_mill_2";
    entry["recipe"] = Dictionary();
    expect_engine_error("machine x_mill_2: no recipe");
    world->apply_level(entry, 1, true);
    EXPECT_EQ(world->node_of("x_mill_2"), nullptr);
    EXPECT_EQ(world->level_of("x_mill_2"), 1);
}

TEST_F(WorldTest, AVisitShowsAndNeverWrites) {
    Dictionary levels;
    levels["coop_a"] = 1;
    save->data = farm(10, levels);
    save->write();
    save->enter_visit(farm(99999, levels));
    WorldOptions::get().visit_peer = 5;
    open();
    EXPECT_EQ(world->money, 99999);
    EXPECT_FALSE(world->spend_quiet(1));
    EXPECT_EQ(world->get_tiles().size(), 0);
    world->save_now();
    close();
    save->leave_visit();
    save->read();
    EXPECT_EQ(static_cast<int64_t>(save->data["money"]), 10);
}

TEST_F(WorldTest, AnAbsenceIsPaidOnceAndThenTold) {
    Dictionary levels;
    levels["coop_a"] = 6; // with the four things that are free: 10 levels
    Dictionary doc = farm(5, levels);
    doc["saved_at"] = static_cast<int64_t>(Time::get_singleton()->get_unix_time_from_system()) - 50;
    save->data = doc;
    open();
    EXPECT_EQ(world->money, 5) << "fifty seconds are no absence";
    close();
    WorldOptions::get().away = 1000;
    open();
    ASSERT_EQ(world->total_levels(), 10);
    EXPECT_EQ(world->money, 575) << "1000 s at 1.9 a second, of which three tenths";
    EXPECT_EQ(WorldOptions::get().away, -1);
    EXPECT_FALSE(world->hud()->panel_open());
    for (int i = 0; i < 400 && !world->hud()->panel_open(); i++) {
        OS::get_singleton()->delay_msec(5);
        step();
    }
    EXPECT_TRUE(world->hud()->panel_open());
    EXPECT_EQ(world->money, 575) << "the panel only tells it";
    world->hud()->close_panel();
    // The next entry finds the time of the last save: nothing is paid twice.
    world->save_now();
    reopen();
    EXPECT_EQ(world->money, 575);
}

TEST_F(WorldTest, ABoughtLandIsShownAndThenTold) {
    save->data = farm(0, Dictionary());
    open();
    String told = "nothing";
    world->connect("land_cinematic_done", UI::callback_arg(world, [&told](const Variant &region) { told = region; }));
    const int64_t fences = world->get_fences().size();
    world->apply_level(FarmData::entry_by_id("land_dairy"), 1, false);
    EXPECT_TRUE(world->region_open("dairy")) << "the land is open at once, whatever is shown";
    EXPECT_EQ(world->get_fences().size(), fences);
    ASSERT_TRUE(world->land_scene());
    EXPECT_EQ(told, String("nothing"));
    // A step just taken does not end the scene, a later one does; the player stands still meanwhile.
    world->force_input(Vector2(1, 0));
    step_seconds(0.5);
    EXPECT_TRUE(world->land_scene());
    EXPECT_EQ(world->farmer()->get_input(), Vector3());
    step_seconds(0.6);
    EXPECT_FALSE(world->land_scene());
    EXPECT_EQ(told, String("dairy"));
    step(2);
    EXPECT_GT(world->farmer()->get_input().x, 0.5);
    // One that nobody cuts short ends by itself, and a land bought meanwhile ends the scene before.
    world->force_input(Vector2());
    world->apply_level(FarmData::entry_by_id("land_mill"), 1, false);
    world->apply_level(FarmData::entry_by_id("land_food"), 1, false);
    EXPECT_EQ(told, String("mill"));
    step_seconds(3.0);
    EXPECT_EQ(told, String("food"));
    EXPECT_FALSE(world->land_scene());
}

TEST_F(WorldTest, TheBooksTellWhatComesAndGoesOutsideTheVerbs) {
    Dictionary levels;
    levels["coop_a"] = 2;
    save->data = farm(100, levels);
    open();
    step_seconds(59.0);
    EXPECT_TRUE(GoodsLedger::take_faults().none()) << "a farm at work keeps its books";
    EXPECT_GT(GoodsLedger::came_by("produced"), 0);
    EXPECT_GT(GoodsLedger::went_by("eaten"), 0);
    EXPECT_EQ(world->unaccounted_money(), 0);
    // A good out of nowhere, one that is simply freed, and money by hand: each is told at the minute.
    expect_engine_error("ledger: 1 milk came from nowhere");
    expect_engine_error("ledger: 1 egg went nowhere");
    expect_engine_error("ledger: 4 dollars too many on the cash tiles, 5 in the purse");
    Item::spawn("milk", Vector3());
    {
        const GoodsVerb verb("given");
        Item::spawn("egg", Vector3())->queue_free();
    }
    egg_cash()->add_money(10, 10, Vector3());
    egg_cash()->bill_list()[0]->set_value(14);
    world->money += 5;
    step_seconds(62.0);
}

TEST_F(WorldTest, TheMapTakesThePlayerToOpenLandOnly) {
    Dictionary levels;
    levels["land_dairy"] = 1;
    save->data = farm(0, levels);
    open();
    Player *player = world->farmer();
    world->travel_region("mill");
    world->travel_region("atlantis");
    EXPECT_LT(player->get_position().distance_to(Vector3(-2.5, 0, 2.9)), 0.1) << "closed or unknown: nobody moves";
    world->travel_region("dairy");
    EXPECT_LT(player->get_position().distance_to(Vector3(-24, 0, 1.2)), 0.1);
    world->travel_to(Vector3(900, 0, 1), "BAKERY TRUCK");
    step(2);
    EXPECT_TRUE(player->at_home(player->get_position())) << "a point outside is met at the land's edge";
    expect_engine_error("travel: no such place");
    world->travel_to(Vector3(INFINITY, 0, 0), "NOWHERE");
}

TEST_F(WorldTest, TheBotPlaysTheFirstLoop) {
    WorldOptions::get().autoplay = true;
    open();
    for (int i = 0; i < 600 && world->flow_total("sold:egg") == 0; i++) {
        step_seconds(1.0);
    }
    EXPECT_GE(world->level_of("coop_a"), 1);
    EXPECT_GE(world->level_of("stall_egg"), 1);
    EXPECT_GT(world->flow_total("sold:egg"), 0);
    EXPECT_GE(world->money, 0);
}

// The list of what can be bought tells the price tiles, and pays through them.
TEST_F(WorldTest, OffersAreTheTilesThatStand) {
    open();
    ASSERT_NE(Offers::current(), nullptr);
    step_seconds(0.5);
    world->set_money(30);
    const std::vector<Offer> before = Offers::current()->list();
    ASSERT_EQ(static_cast<int64_t>(before.size()), world->get_tiles().size());
    for (size_t i = 1; i < before.size(); ++i) {
        EXPECT_LE(before[i - 1].price, before[i].price);
    }
    for (const Offer &offer : before) {
        EXPECT_EQ(offer.payable, offer.price <= 30) << offer.id.utf8().get_data();
        EXPECT_FALSE(offer.land.is_empty());
    }
    EXPECT_EQ(Offers::current()->show("coop_a"), String());
    EXPECT_EQ(Offers::current()->show("no such entry"), String("NOT AVAILABLE"));
    EXPECT_EQ(Offers::current()->buy("coop_a"), String());
    EXPECT_EQ(Offers::current()->buy("coop_a"), String("NOT AVAILABLE")) << "never twice";
    step_seconds(1.0);
    EXPECT_EQ(world->level_of("coop_a"), 1);
    EXPECT_EQ(world->get_money(), 5);
    EXPECT_EQ(Offers::current()->buy("coop_a"), String("NOT ENOUGH MONEY"));
    close();
    EXPECT_EQ(Offers::current(), nullptr) << "no farm, no offers";
}

} // namespace tilm
