// Garden decorations of a whole farm: bought, placed, charming, saved, found again, and what a damaged save gives.

#include "game/actors/player.h"
#include "game/actors/sell_counter.h"
#include "game/actors/truck_depot.h"
#include "game/art/decor.h"
#include "game/data/farm_data.h"
#include "game/interface/hud.h"
#include "game/ports/garden_shop.h"
#include "game/ports/session.h"
#include "rules/garden.h"
#include "safe_read.h"
#include "world_kit.h"

namespace tilm {
namespace {

// Writes down what the farm tells the missions.
class ToldWorld : public World {
    GDCLASS(ToldWorld, World)
public:
    void mission_event(const String &type, const String &kind, int64_t n) override {
        told += vformat("%s|%s|%d;", type, kind, n);
        World::mission_event(type, kind, n);
    }
    String told;

protected:
    static void _bind_methods() {}
};
const test::RegisterClasses probes([] { GDREGISTER_CLASS(ToldWorld); });

class Heard : public Notices {
public:
    Heard() : before(Notices::current()) { Notices::set_current(this); }
    ~Heard() override { Notices::set_current(before); }
    void notice(const String &text, ToastLevel level) override { last = vformat("%d %s", int64_t(level), text); }
    void fly_money(int64_t, const Vector3 &) override {}
    String last;

private:
    Notices *before;
};

class Room : public Session {
public:
    Room() { set_current(this); }
    ~Room() override { set_current(nullptr); }
    bool in_session() const override { return false; }
    void post_activity(const String &, int) override {}
    void sold(const String &, int64_t) override {}
    bool reward_earned(const String &key) const override { return key == String("statue"); }
};

Dictionary row(const Variant &type, const Variant &x, const Variant &z) {
    Dictionary d;
    d["type"] = type;
    d["x"] = x;
    d["z"] = z;
    return d;
}

class DecorationsTest : public FarmTest {
protected:
    void open(int64_t money = 0, const Array &decor = Array()) {
        Dictionary doc, levels;
        levels["coop_a"] = 1;
        doc["levels"] = levels;
        doc["money"] = money;
        doc["decor"] = decor;
        save->set_data(doc);
        raise_world();
    }
    void raise_world() {
        FarmTest::open<ToldWorld>();
        step();
    }
    ToldWorld *told_world() const { return Object::cast_to<ToldWorld>(world); }
    Node3D *model(int index) const {
        Node *ground = world->get_node_or_null(NodePath("Decorations"));
        return ground != nullptr && index < ground->get_child_count()
                   ? Object::cast_to<Node3D>(ground->get_child(index))
                   : nullptr;
    }
    int models() const {
        Node *ground = world->get_node_or_null(NodePath("Decorations"));
        return ground != nullptr ? ground->get_child_count() : 0;
    }
    static Vector3 place(const Dictionary &d) {
        return Vector3(static_cast<float>(read_real(d, "x")), 0, static_cast<float>(read_real(d, "z")));
    }
    static std::string types(const Array &rows) {
        String all;
        for (int64_t i = 0; i < rows.size(); i++) {
            all += read_text(rows[i], "type") + " ";
        }
        return all.utf8().get_data();
    }
};

TEST_F(DecorationsTest, IsPaidPlacedToldSavedAndFoundAgain) {
    open(2000);
    Heard heard;
    EXPECT_EQ(String(world->call("buy_decor", "fountain")), String("NOT ENOUGH MONEY"));
    EXPECT_EQ(world->money_now(), 2000);
    EXPECT_EQ(models(), 0);
    told_world()->told = "";
    EXPECT_EQ(String(world->call("buy_decor", "flowers")), String());
    EXPECT_EQ(world->money_now(), 1600);
    EXPECT_EQ(world->unaccounted_money(), 0);
    EXPECT_EQ(told_world()->told, String("decor||1;"));
    EXPECT_EQ(heard.last, String("1 FLOWER BED! +1 CHARM"));
    EXPECT_EQ(world->get_charm(), 1.0);
    ASSERT_EQ(models(), 1);
    EXPECT_LT(model(0)->get_scale().x, 0.2) << "pops in";
    step_seconds(0.7);
    EXPECT_NEAR(model(0)->get_scale().x, 1.0, 1e-3);

    // Near the player, clear of the stall and its customers, on one of the three rows.
    const Array rows = world->get("decor");
    ASSERT_EQ(rows.size(), 1);
    const Vector3 at = place(rows[0]);
    EXPECT_EQ(model(0)->get_position(), at);
    const Array stalls = world->stall_list();
    ASSERT_GT(stalls.size(), 0);
    for (int64_t i = 0; i < stalls.size(); i++) {
        const double x = Object::cast_to<SellCounter>(stalls[i])->get_position().x;
        EXPECT_GE(std::abs(x - at.x), 2.2 - 1e-4);
        EXPECT_GE(std::abs(x + 2.3 - at.x), 2.2 - 1e-4);
    }
    const Array trucks = world->truck_list();
    for (int64_t i = 0; i < trucks.size(); i++) {
        EXPECT_GE(std::abs(Object::cast_to<Node3D>(trucks[i])->get_position().x - at.x), 2.2 - 1e-4);
    }

    EXPECT_EQ(String(world->call("buy_decor", "flowers")), String()) << "the second costs 500";
    EXPECT_EQ(world->money_now(), 1100);
    EXPECT_EQ(String(world->call("buy_decor", "bench")), String());
    EXPECT_EQ(world->money_now(), 400);
    const Array bought = world->get("decor");
    EXPECT_EQ(types(bought), "flowers flowers bench ");
    EXPECT_GE(place(bought[1]).distance_to(at), 2.2 - 1e-4);

    // A purchase is on the disk at once; the farm that is built from it is the same.
    world->set_money(7); // never saved
    memdelete(world);
    world = nullptr;
    step();
    save->read();
    raise_world();
    EXPECT_EQ(world->get("decor"), Variant(bought));
    EXPECT_EQ(world->get_charm(), 3.0);
    ASSERT_EQ(models(), 3);
    EXPECT_EQ(model(0)->get_position(), at);
    EXPECT_EQ(model(0)->get_scale(), Vector3(1, 1, 1));
    EXPECT_EQ(world->unaccounted_money(), 0);
    EXPECT_EQ(String(world->call("buy_decor", "castle")), String("NOT AVAILABLE"));
}

TEST_F(DecorationsTest, TheNearestFreeSpotIsTakenAndMoreLandAdvisedWhenNoneIsLeft) {
    open();
    // Beds fill the lawn before the player first and go on before the next land, open or not; the service land has
    // none.
    const Array rows = FarmData::regions();
    for (int beds = 0; beds < 60; beds++) {
        world->set_money(900000000000000);
        ASSERT_EQ(world->buy_decor("flowers"), String());
    }
    const Array placed = world->get("decor");
    ASSERT_EQ(placed.size(), 60);
    float farthest = 0;
    for (int64_t i = 0; i < placed.size(); i++) {
        const float x = place(placed[i]).x;
        farthest = std::max(farthest, std::abs(x - world->player_pos().x));
        bool before_a_land = false;
        for (int64_t k = 0; k < rows.size(); k++) {
            const Dictionary land = rows[k];
            before_a_land = before_a_land || (read_text(land, "id") != "service" &&
                                              std::abs(x - static_cast<float>(read_real(land, "x"))) <= 10.5f);
        }
        EXPECT_TRUE(before_a_land) << x;
    }
    EXPECT_GT(farthest, 13.0f) << "the farm's own lawn does not hold 60 beds";
    EXPECT_EQ(world->get_charm(), 50.0);

    // Something on every spot of every lawn.
    for (int64_t k = 0; k < rows.size(); k++) {
        for (float x = -10.5f; x <= 10.5f; x += 1.0f) {
            for (const float z : {9.0f, 12.0f, 15.0f}) {
                Node3D *thing = memnew(Node3D);
                thing->set_meta("lawn", true);
                thing->set_position(Vector3(static_cast<float>(read_real(Dictionary(rows[k]), "x")) + x, 0, z));
                world->add_child(thing);
            }
        }
    }
    const String answer = world->buy_decor("flowers");
    EXPECT_EQ(answer, String("NO FREE LAND: DAIRY FARM OPENS AFTER ") +
                          String(FarmData::entry_by_id("coop_b")["title"]) + String(" LEVEL 2"));
    const int64_t money = world->money_now();
    EXPECT_EQ(world->buy_decor("flowers"), answer);
    EXPECT_EQ(world->money_now(), money) << "nothing is taken";

    Dictionary levels = world->get_levels();
    levels["coop_b"] = 2;
    levels["stall_egg2"] = 1;
    EXPECT_EQ(world->no_land_hint(false), String("NO FREE LAND: DAIRY FARM OPENS AFTER MY FARM LEVEL 4"));
    levels["stack"] = 3; // the farm's own level
    levels["shoes"] = 30;
    ASSERT_TRUE(world->unlocked("land_dairy"));
    EXPECT_EQ(world->no_land_hint(false), String("NO FREE LAND: BUY DAIRY FARM FOR $700"));
    world->hud()->_show_decor();
    EXPECT_EQ(String(world->call("no_land_hint", true)), String("NO FREE LAND: BUY DAIRY FARM FOR $700"));
    EXPECT_FALSE(world->hud()->panel_open());
    const Array plan = FarmData::plan();
    for (int64_t i = 0; i < plan.size(); i++) {
        if (read_text(plan[i], "kind") == "land") {
            levels[read_text(plan[i], "id")] = 1;
        }
    }
    EXPECT_EQ(world->no_land_hint(false), String("NO FREE LAND: THE WHOLE FARM IS BUILT"));
}

TEST_F(DecorationsTest, TheFriendsStatueIsEarnedAndStandsOnce) {
    open(0);
    EXPECT_EQ(world->buy_decor("friends"), String("PLAY WITH FRIENDS TO UNLOCK IT"));
    Room room;
    const std::vector<DecorOffer> list = GardenShop::current()->list();
    ASSERT_EQ(list.size(), 9u);
    EXPECT_TRUE(list[8].payable);
    EXPECT_FALSE(list[0].payable);
    EXPECT_EQ(world->buy_decor("friends"), String());
    EXPECT_EQ(world->money_now(), 0);
    EXPECT_EQ(world->get_charm(), 8.0);
    EXPECT_EQ(world->buy_decor("friends"), String("YOU HAVE IT ALREADY"));
    EXPECT_EQ(models(), 1);
}

TEST_F(DecorationsTest, DamagedRowsLoseNothingThatWasPaid) {
    Array rows;
    rows.push_back(row("flowers", 5.5, 12));
    rows.push_back(row("castle", 2.5, 9.0)); // of a later version
    rows.push_back("no row");
    rows.push_back(row(42, 1, 9));
    rows.push_back(row("bench", "left", 9));
    rows.push_back(row("lamp", 5.6, 12.1)); // in the flower bed
    rows.push_back(row("gazebo", 1e30, 9));
    rows.push_back(row("tree", 0, -8)); // in the coop
    rows.push_back(row("friends", -5.5, 15));
    rows.push_back(row("friends", 9.5, 15));
    expect_engine_error("decor: 3 rows are no decorations: dropped");
    expect_engine_error("decor: 1 decorations of unknown types: kept, not shown");
    expect_engine_error("decor: 4 decorations had no possible place: moved to a free one");
    open(100, rows);
    EXPECT_EQ(types(world->get("decor")), "flowers friends bench lamp gazebo tree castle ");
    EXPECT_EQ(world->get_charm(), 1.0 + 8 + 1 + 2 + 10 + 2);
    EXPECT_EQ(models(), 6);
    const Array placed = world->get("decor");
    for (int64_t i = 0; i < placed.size(); i++) {
        const Vector3 a = place(placed[i]);
        EXPECT_TRUE(a.z >= 9 && a.z <= 15 && std::abs(a.x) < 11) << i;
        const rules::DecorRow *mine = rules::find_decor(read_text(placed[i], "type").utf8().get_data());
        for (int64_t k = 0; mine != nullptr && k < i; k++) {
            const rules::DecorRow *other = rules::find_decor(read_text(placed[k], "type").utf8().get_data());
            if (other != nullptr) {
                EXPECT_GE(a.distance_to(place(placed[k])), mine->radius + other->radius + 0.39f) << i << " " << k;
            }
        }
    }
    // What was mended is mended for good.
    world->save_now();
    close();
    save->read();
    expect_engine_error("decor: 1 decorations of unknown types: kept, not shown");
    raise_world();
    EXPECT_EQ(world->get("decor"), Variant(placed));
}

TEST_F(DecorationsTest, TooManyAreKeptAndASectionOfTheWrongTypeIsEmpty) {
    Array rows;
    for (int i = 0; i < 2000; i++) {
        rows.push_back(row("lamp", 5.5, 12)); // all in one place
    }
    expect_engine_error("decorations had no possible place: moved to a free one");
    expect_engine_error("decorations have no possible place: kept, not shown");
    open(0, rows);
    EXPECT_EQ(Array(world->get("decor")).size(), 2000);
    EXPECT_GT(models(), 10);
    EXPECT_LE(models(), 600) << "however many a save asks for";
    EXPECT_EQ(world->get_charm(), 50.0);
    close();
    Dictionary doc = save->get_data().duplicate();
    doc["decor"] = 17;
    save->set_data(doc);
    raise_world();
    EXPECT_EQ(Array(world->get("decor")).size(), 0);
    EXPECT_EQ(world->get_charm(), 0.0);
}

TEST_F(DecorationsTest, AVisitShowsThemAndSellsNone) {
    Array rows;
    rows.push_back(row("windmill", 5.5, 12));
    WorldOptions::get().visit_peer = 3;
    open(1000000, rows);
    EXPECT_EQ(models(), 1);
    EXPECT_TRUE(GardenShop::current()->list().empty());
    EXPECT_EQ(world->buy_decor("flowers"), String("NOT AVAILABLE"));
    EXPECT_FALSE(world->hud()->open_offered("DECOR"));
    EXPECT_EQ(world->money_now(), 1000000);
}

} // namespace
} // namespace tilm
