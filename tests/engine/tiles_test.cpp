// Price tiles and purchases: draining, what stands when, the order of a purchase, and the other ways to buy.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engine_test.h"
#include "fake_farm.h"
#include "game/actors/unlock_tile.h"
#include "game/data/farm_data.h"
#include "game/shell/purchases.h"
#include "game/shell/tile_titles.h"

namespace tilm {
namespace {

Dictionary row(const char *id, const char *kind, std::initializer_list<int64_t> costs,
               std::initializer_list<const char *> req = {}) {
    Dictionary e;
    e["id"] = id;
    e["kind"] = kind;
    e["title"] = String(id).to_upper();
    e["pos"] = Vector2(5, -8);
    Array c;
    for (const int64_t cost : costs) {
        c.push_back(cost);
    }
    e["costs"] = c;
    Array r;
    for (const char *id_needed : req) {
        r.push_back(id_needed);
    }
    e["req"] = r;
    return e;
}

// A farm of a few entries that notes what a purchase does and in which order.
class Shop : public PurchaseHost {
public:
    FakeFarm fake{stage()};
    Purchases desk{*this};
    Array entries;
    Dictionary level_table;
    int at_level = 1;
    Dictionary gates;
    std::vector<std::string> calls;
    UnlockTile *finished = nullptr;
    bool guard_wanted = false;
    bool lot_free = false;
    bool level_rises = false;
    int64_t reserve = 0;

    Farm &farm() override { return fake; }
    Node3D *tile_parent() override { return fake.ground; }
    // Somebody must listen; the tests call the desk themselves.
    Callable tile_done_call() override { return Callable(fake.ground, "is_ancestor_of"); }
    Array plan() override { return entries; }
    Dictionary levels() override { return level_table; }
    int farm_level() override { return at_level; }
    int gate_of(const String &id) override { return static_cast<int>(static_cast<int64_t>(gates.get(id, 0))); }
    void apply_level(const Dictionary &entry, int level, bool) override {
        calls.push_back("apply");
        level_table[entry["id"]] = level;
        at_level += level_rises ? 1 : 0;
    }
    bool building() override { return false; }
    Vector3 player_pos() override { return Vector3(); }
    void burst(const Vector3 &) override { calls.push_back("burst"); }
    void recalc() override { calls.push_back("recalc"); }
    void level_up() override { calls.push_back("level_up"); }
    void buzz(int) override { calls.push_back("buzz"); }
    void announce(const String &, int) override { calls.push_back("announce"); }
    double elapsed() override { return 12.5; }
    void log_line(const String &line) override { log = FakeFarm::key(line); }
    void progress() override { calls.push_back("progress"); }
    void save() override { calls.push_back("save"); }
    void after(double sec, const Callable &) override { later = sec; }
    Callable refresh_call() override { return Callable(); }
    bool wants_guard() override { return guard_wanted; }
    bool free_lot() override { return lot_free; }
    int64_t loan_reserve() override { return reserve; }

    std::string log;
    double later = 0;
};

class TileTest : public testing::Test {
protected:
    Shop shop;

    UnlockTile *loose(int64_t price, int64_t paid = 0) {
        UnlockTile *tile = memnew(UnlockTile);
        tile->setup(row("loose", "producer", {price}), paid, "LOOSE", price, 0);
        shop.fake.ground->add_child(tile);
        return tile;
    }
    static void stand(UnlockTile *tile, Farm &farm, double seconds) {
        for (double t = 0; t < seconds - 1e-9; t += 0.01) {
            tile->stand(farm, 0.01);
        }
    }
};

TEST_F(TileTest, DrainsAfterAWaitAndFillsInFortySlices) {
    shop.fake.money = 1000000;
    UnlockTile *tile = loose(100000);
    stand(tile, shop.fake, 0.29);
    EXPECT_EQ(tile->get_paid(), 0);
    stand(tile, shop.fake, 0.33);
    EXPECT_GE(tile->get_paid(), 20000);
    EXPECT_EQ(tile->get_paid() % 2500, 0);
    EXPECT_EQ(shop.fake.money + tile->get_paid(), 1000000);
    stand(tile, shop.fake, 1.0);
    EXPECT_TRUE(tile->is_done());
    EXPECT_EQ(shop.fake.money, 900000);
    stand(tile, shop.fake, 1.0); // a finished tile takes nothing
    EXPECT_EQ(shop.fake.money, 900000);
}

TEST_F(TileTest, APoorPlayerPaysAllHeHasAndSteppingOffStartsTheWaitAgain) {
    shop.fake.money = 5;
    UnlockTile *tile = loose(1000);
    stand(tile, shop.fake, 2);
    EXPECT_EQ(tile->get_paid(), 5);
    EXPECT_EQ(shop.fake.money, 0);
    EXPECT_FALSE(tile->is_done());
    shop.fake.money = 100;
    tile->on_leave();
    EXPECT_EQ(tile->get_stand_time(), 0.0);
    stand(tile, shop.fake, 0.29);
    EXPECT_EQ(shop.fake.money, 100);
    stand(tile, shop.fake, 0.1);
    EXPECT_LT(shop.fake.money, 100);
    EXPECT_EQ(loose(500, 990)->get_paid(), 499);
    EXPECT_EQ(loose(500, -4)->get_paid(), 0);
}

TEST_F(TileTest, LandTilesAreLarger) {
    UnlockTile *land = memnew(UnlockTile);
    land->setup(row("land_x", "land", {700}), 0, "X", 700, 0);
    shop.fake.ground->add_child(land);
    EXPECT_DOUBLE_EQ(land->half(), 1.66);
    EXPECT_DOUBLE_EQ(loose(10)->half(), 1.3);
}

TEST_F(TileTest, FreeEntriesComeByThemselvesInChains) {
    shop.entries.push_back(row("field", "field", {0}));
    shop.entries.push_back(row("stall", "stall", {0, 120}, {"coop"}));
    shop.entries.push_back(row("coop", "producer", {25, 30}, {"field"}));
    shop.desk.refresh_tiles();
    EXPECT_EQ(shop.fake.level_of("field"), 0); // levels are the shop's
    EXPECT_EQ(level_in(shop.level_table, "field"), 1);
    EXPECT_EQ(level_in(shop.level_table, "stall"), 0);
    ASSERT_NE(shop.desk.tile_of("coop"), nullptr);
    EXPECT_EQ(shop.desk.tile_count(), 1);
    shop.level_table["coop"] = 1;
    shop.desk.refresh_tiles();
    EXPECT_EQ(level_in(shop.level_table, "stall"), 1); // free with the coop, and its upgrade is for sale
    ASSERT_NE(shop.desk.tile_of("stall"), nullptr);
    EXPECT_EQ(shop.desk.tile_of("stall")->get_total(), 120);
}

TEST_F(TileTest, GatesShowASignOnlyWhenTheRestHolds) {
    shop.entries.push_back(row("coop", "producer", {25}));
    shop.entries.push_back(row("land_dairy", "land", {700}, {"coop"}));
    shop.gates["land_dairy"] = 4;
    shop.desk.refresh_tiles();
    EXPECT_FALSE(shop.desk.locked_sign_of("land_dairy"));
    shop.level_table["coop"] = 1;
    shop.desk.refresh_tiles();
    EXPECT_TRUE(shop.desk.locked_sign_of("land_dairy"));
    EXPECT_EQ(shop.desk.tile_of("land_dairy"), nullptr);
    EXPECT_EQ(shop.desk.tile_of("coop"), nullptr); // nothing more to buy
    shop.at_level = 4;
    shop.desk.refresh_tiles();
    EXPECT_FALSE(shop.desk.locked_sign_of("land_dairy"));
    EXPECT_NE(shop.desk.tile_of("land_dairy"), nullptr);
}

TEST_F(TileTest, APurchaseRunsInItsOrderAndIsNotDrainedOnAtOnce) {
    Dictionary coop = row("coop", "producer", {25, 30});
    coop["pad"] = Vector2(5, -2);
    shop.entries.push_back(coop);
    shop.fake.money = 500;
    shop.level_rises = true;
    shop.desk.refresh_tiles();
    UnlockTile *tile = shop.desk.tile_of("coop");
    ASSERT_NE(tile, nullptr);
    const Vector3 here(5.2f, 0, -8.3f);
    for (int i = 0; i < 400 && !tile->is_done(); ++i) {
        shop.desk.stand_step(here, 0.01);
    }
    ASSERT_TRUE(tile->is_done());
    EXPECT_EQ(shop.fake.money, 475);
    shop.desk.on_tile_done(tile);
    shop.desk.on_tile_done(tile); // a second signal changes nothing
    const std::vector<std::string> order = {"burst", "apply", "recalc", "level_up", "buzz", "progress", "save"};
    EXPECT_EQ(shop.calls, order);
    EXPECT_EQ(shop.fake.events["upgrade"], 1);
    EXPECT_EQ(shop.fake.events["tutorial upgrade"], 1);
    EXPECT_EQ(shop.fake.events.count("land"), 0u);
    EXPECT_EQ(shop.later, 0.45);
    EXPECT_EQ(shop.log, "TILMARCH bought coop lv1 money_left=475 t=12.5");
    EXPECT_EQ(shop.desk.bought(), 1);
    EXPECT_EQ(level_in(shop.level_table, "coop"), 1);

    shop.desk.refresh_tiles();
    UnlockTile *next = shop.desk.tile_of("coop");
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(next->get_position(), Vector3(5, 0, -2));
    EXPECT_EQ(next->get_level(), 1);
    // Somebody laid it where the player stands: the guard holds until he is 1.6 away from the finished one.
    next->set_position(Vector3(5, 0, -8));
    for (int i = 0; i < 200; ++i) {
        shop.desk.stand_step(here, 0.01);
    }
    EXPECT_EQ(next->get_paid(), 0);
    shop.desk.stand_step(Vector3(5, 0, -6), 0.01);
    for (int i = 0; i < 100; ++i) {
        shop.desk.stand_step(here, 0.01);
    }
    EXPECT_LE(next->get_paid(), 30);
}

TEST_F(TileTest, PaidMoneyOutlivesTheTile) {
    shop.entries.push_back(row("guards", "guards", {1500, 2000}));
    shop.entries.push_back(row("coop", "producer", {100, 300}));
    Dictionary saved;
    saved["coop"] = 40;
    shop.desk.load_paid(saved);
    shop.guard_wanted = true;
    shop.desk.refresh_tiles();
    EXPECT_EQ(shop.desk.tile_of("coop")->get_paid(), 40);
    UnlockTile *guards = shop.desk.tile_of("guards");
    ASSERT_NE(guards, nullptr);
    guards->set_paid(70);
    shop.guard_wanted = false;
    shop.desk.refresh_tiles();
    EXPECT_EQ(shop.desk.tile_of("guards"), nullptr);
    EXPECT_EQ(static_cast<int>(shop.desk.paid_map()["guards"]), 70);
    EXPECT_EQ(static_cast<int>(shop.desk.paid_map()["coop"]), 40);
    shop.guard_wanted = true;
    shop.desk.refresh_tiles();
    EXPECT_EQ(shop.desk.tile_of("guards")->get_paid(), 70);
    // A level that came or went in another way lays the tile anew, with the new price and the old money.
    shop.level_table["coop"] = 1;
    shop.desk.refresh_tiles();
    EXPECT_EQ(shop.desk.tile_of("coop")->get_total(), 300);
    EXPECT_EQ(shop.desk.tile_of("coop")->get_paid(), 40);
}

TEST_F(TileTest, BuyNowAndBuyGuard) {
    shop.entries.push_back(row("coop", "producer", {100, 300}));
    shop.entries.push_back(row("guards", "guards", {1500, 2000}, {"coop"}));
    shop.desk.refresh_tiles();
    shop.fake.money = 90;
    EXPECT_EQ(shop.desk.buy_now("barn"), String("NOT AVAILABLE"));
    EXPECT_EQ(shop.desk.buy_now("coop"), String("NOT ENOUGH MONEY"));
    EXPECT_EQ(shop.fake.money, 90);
    shop.desk.tile_of("coop")->set_paid(20);
    EXPECT_EQ(shop.desk.buy_now("coop"), String());
    EXPECT_EQ(shop.fake.money, 10);
    EXPECT_EQ(shop.desk.buy_now("coop"), String("NOT AVAILABLE")); // being removed
    EXPECT_EQ(shop.desk.buy_guard(), String("NOT AVAILABLE"));
    shop.level_table["coop"] = 1;
    EXPECT_EQ(shop.desk.buy_guard(), String("NOT ENOUGH MONEY"));
    shop.fake.money = 1600;
    EXPECT_EQ(shop.desk.buy_guard(), String());
    EXPECT_EQ(shop.fake.money, 100);
    EXPECT_EQ(level_in(shop.level_table, "guards"), 1);
}

TEST_F(TileTest, TheGuideSavesForLandAndForInstallments) {
    Dictionary coop = row("coop", "producer", {25, 200});
    shop.level_table["coop"] = 1;
    shop.entries.push_back(coop);
    Dictionary land = row("land_ext1", "land", {1000});
    land["target"] = "ext1";
    shop.entries.push_back(land);
    shop.desk.refresh_tiles();
    shop.fake.money = 400;
    EXPECT_EQ(shop.desk.next_tile(), shop.desk.tile_of("coop"));
    shop.fake.money = 600;
    EXPECT_EQ(shop.desk.next_tile(), nullptr);
    shop.fake.money = 1100;
    EXPECT_EQ(shop.desk.next_tile(), shop.desk.tile_of("land_ext1"));
    shop.reserve = 200;
    EXPECT_EQ(shop.desk.next_tile(), nullptr);
    shop.reserve = 0;
    shop.lot_free = true;
    EXPECT_EQ(shop.desk.next_tile(), shop.desk.tile_of("land_ext1")); // the last look stands for a while
    shop.desk.tick(31);
    EXPECT_EQ(shop.desk.next_tile(), shop.desk.tile_of("coop"));
}

TEST_F(TileTest, TitlesByKind) {
    TitleHooks none;
    const auto title = [&](const char *kind, int n, const char *product = "") {
        Dictionary e = row("thing", kind, {1, 2, 3});
        e["product"] = product;
        return FakeFarm::key(tile_title(e, n, none));
    };
    EXPECT_EQ(title("producer", 0, "egg"), "THING");
    EXPECT_EQ(title("producer", 1, "egg"), "EGGS LV2");
    EXPECT_EQ(title("stall", 3), "PRICES LV4");
    EXPECT_EQ(title("hauler", 1), "THING +1");
    EXPECT_EQ(title("machine", 1), "SPEED LV2");
    EXPECT_EQ(title("machine", 2), "BIGGER INPUT LV3");
    EXPECT_EQ(title("factory", 1), "THING LV2\nSPEED UP");
    EXPECT_EQ(title("restaurant", 2), "THING LV3\nBIGGER INPUT");
    EXPECT_EQ(title("guards", 2), "GUARD +1");
    EXPECT_EQ(title("depot", 1), "SUPPLY TRUCK");
    EXPECT_EQ(title("depot", 2), "SUPPLY LV2");
    EXPECT_EQ(title("pantry", 2), "SUPPLY LV3");
    EXPECT_EQ(title("homes", 1), "MORE BEDS");
    EXPECT_EQ(title("shoes", 2), "THING LV3");
    TitleHooks full;
    full.guards = [](int &hired, int &wanted) {
        hired = 3;
        wanted = 8;
        return true;
    };
    full.helper_is_limit = [](const String &id) { return id == "thing"; };
    full.adds_places = [](const String &, int n) { return n < 3; };
    EXPECT_EQ(FakeFarm::key(tile_title(row("guards", "guards", {1}), 3, full)), "GUARD 3/8");
    EXPECT_EQ(FakeFarm::key(tile_title(row("thing", "machine", {1}), 1, full)),
              "BIGGER INPUT LV2\nHELPER IS THE LIMIT");
    EXPECT_EQ(FakeFarm::key(tile_title(row("c", "canteen", {1}), 3, full)), "BETTER FOOD");
    // Belts ask the plan what they serve: a factory gets its truck belt first, a restaurant does not.
    EXPECT_EQ(FakeFarm::key(tile_title(FarmData::entry_by_id("bread_factory_belt"), 1, none)), "TRUCK BELT");
    EXPECT_EQ(FakeFarm::key(tile_title(FarmData::entry_by_id("bread_factory_belt"), 2, none)), "FAST BELTS");
    EXPECT_EQ(FakeFarm::key(tile_title(FarmData::entry_by_id("fish_rest_belt"), 1, none)), "FAST BELTS");
}

TEST_F(TileTest, EveryEntryOfThePlanHasATitleAtEveryLevel) {
    const Array plan = FarmData::plan();
    ASSERT_GT(plan.size(), 200);
    for (int i = 0; i < plan.size(); ++i) {
        const Dictionary e = plan[i];
        const int levels = static_cast<int>(static_cast<Array>(e["costs"]).size());
        for (int n = 0; n < levels; ++n) {
            const String t = tile_title(e, n, TitleHooks());
            ASSERT_FALSE(t.is_empty()) << FakeFarm::key(e["id"]) << n;
        }
    }
}

TEST_F(TileTest, LevelsAboveEightRaisePricesOfEverythingMade) {
    Array plan;
    Dictionary coop_a = row("coop_a", "producer", {1});
    coop_a["product"] = "egg";
    Dictionary coop_b = row("coop_b", "producer", {1});
    coop_b["product"] = "egg";
    Dictionary press = row("press", "machine", {1});
    press["product"] = "juice";
    Dictionary flavors;
    flavors["apple_juice"] = Dictionary();
    flavors["orange_juice"] = Dictionary();
    press["flavors"] = flavors;
    Dictionary stall = row("stall", "stall", {1});
    stall["product"] = "milk";
    for (const Dictionary &e : {coop_a, coop_b, press, stall}) {
        plan.push_back(e);
    }
    Dictionary levels;
    levels["coop_a"] = 12;
    levels["coop_b"] = 8;
    levels["press"] = 10.0; // as read from a document
    levels["stall"] = 20;
    const Dictionary factors = price_factors(plan, levels);
    EXPECT_DOUBLE_EQ(factors["egg"], 1.06);
    EXPECT_DOUBLE_EQ(factors["orange_juice"], 1.04);
    EXPECT_FALSE(factors.has("milk"));
    levels["mill"] = 5;
    const auto stands = [](const String &) { return true; };
    EXPECT_EQ(hauler_extra_room("mill", levels, stands), 8);
    EXPECT_EQ(hauler_extra_room("mill", levels, [](const String &) { return false; }), 0);
    EXPECT_EQ(hauler_extra_room("@feed", levels, stands), 20);
}

} // namespace
} // namespace tilm
