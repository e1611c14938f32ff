// Trucks at their bays: coming and going, orders, pay in time and late, stars, and what the save keeps.

#include <limits>
#include <memory>
#include <set>

#include "farm_belts/conveyor_core.h"
#include "game/actors/cash_tile.h"
#include "game/actors/sell_counter.h"
#include "game/actors/truck_depot.h"
#include "game/data/farm_data.h"
#include "game/ports/notices.h"
#include "game/shell/logistics.h"
#include "staff_kit.h"
#include "world_kit.h"

namespace tilm {

namespace {

class TruckFarm : public FakeFarm {
public:
    using FakeFarm::FakeFarm;
    Array stall_list() override { return stalls; }
    Array truck_list() override { return trucks; }
    bool is_night() const override { return night; }
    void order_done(Object *, int64_t reward, double mult) override {
        orders++;
        last_reward = reward;
        last_mult = mult;
    }
    void note_mood(double mood, const String &src) override { moods[key(src)] = mood; }
    void tip(const String &what) override { events["tip " + key(what)]++; }

    Array stalls, trucks;
    std::map<std::string, double> moods;
    bool night = false;
    int orders = 0;
    int64_t last_reward = 0;
    double last_mult = 0;
};

class Words : public Notices {
public:
    Words() { set_current(this); }
    ~Words() override { set_current(nullptr); }
    void notice(const String &text, ToastLevel level) override {
        said.push_back(FakeFarm::key(text) + "/" + std::to_string(static_cast<int>(level)));
    }
    void fly_money(int64_t amount, const Vector3 &) override { flown += amount; }
    std::vector<std::string> said;
    int64_t flown = 0;
};

class Trucks : public testing::Test {
protected:
    Trucks() : farm(root()) { Glebworks::see_everything(); }
    ~Trucks() override { TruckDepot::set_tips_factor(1.0); }

    TruckDepot *bay(const char *group, const char *product = "", double x = 0) {
        TruckDepot *truck = memnew(TruckDepot);
        truck->set_group(group);
        Array goods;
        if (product[0] != '\0') {
            goods.push_back(product);
        }
        truck->set_goods(goods);
        truck->build(x, &farm);
        truck->set_process(false);
        farm.trucks.push_back(truck);
        return truck;
    }
    void stall(const char *kind, float x) {
        SellCounter *made = memnew(SellCounter);
        Array kinds;
        kinds.push_back(kind);
        made->set_goods(kind, kinds);
        made->set_position(Vector3(x, 0, 4.6f));
        farm.ground->add_child(made);
        farm.stalls.push_back(made);
    }
    static void order(TruckDepot *truck, std::initializer_list<std::pair<const char *, int>> lines) {
        Dictionary d;
        for (const auto &[kind, n] : lines) {
            d[kind] = n;
        }
        truck->set_order(d);
    }
    static void park(TruckDepot *truck, std::initializer_list<std::pair<const char *, int>> lines) {
        order(truck, lines);
        truck->set_elapsed(0);
        truck->set_good_time(30);
        truck->_parked();
    }
    static void load(TruckDepot *truck, const char *kind, int n) { Workplace::fill(truck->get_bed(), kind, n); }
    int goods_alive() const {
        int n = 0;
        for (int i = 0; i < farm.ground->get_child_count(); i++) {
            ItemCore *it = Object::cast_to<ItemCore>(farm.ground->get_child(i));
            n += it != nullptr && !Item::is_money(it->get_kind()) ? 1 : 0;
        }
        return n;
    }

    TruckFarm farm;
    Words words;
};

} // namespace

TEST_F(Trucks, ComeWaitAreLoadedAndGo) {
    stall("egg", 0);
    TruckDepot *truck = bay("truck");
    truck->set_process(true);
    Node3D *body = truck->get_body();
    EXPECT_FALSE(body->is_visible());
    EXPECT_FALSE(truck->get_zone()->get_active());
    step_seconds(3.9);
    EXPECT_EQ(truck->get_state(), TruckCore::AWAY);
    step_seconds(0.2);
    EXPECT_EQ(truck->get_state(), TruckCore::ARRIVE);
    EXPECT_TRUE(body->is_visible());
    EXPECT_GT(body->get_position().z, 15.0f);
    const int64_t n = truck->get_order()["egg"];
    EXPECT_DOUBLE_EQ(truck->get_good_time(), 25.0 + 2.5 * static_cast<double>(n));
    step_seconds(2.2);
    ASSERT_EQ(truck->get_state(), TruckCore::WAIT);
    EXPECT_NEAR(body->get_position().z, 0.0, 1e-4);
    EXPECT_TRUE(truck->get_zone()->get_active());
    EXPECT_EQ(truck->get_zone()->room("egg"), n);
    EXPECT_EQ(farm.events["tip truck"], 1);
    step_seconds(1.0);
    EXPECT_EQ(truck->get_board_text(), vformat("EGG 0/%d", n));
    load(truck, "egg", static_cast<int>(n) + 3); // three too many
    ItemCore *first = truck->get_bed()->list()[0];
    step(1);
    EXPECT_EQ(truck->get_state(), TruckCore::LEAVE);
    EXPECT_EQ(farm.orders, 1);
    EXPECT_EQ(truck->get_served(), 1);
    EXPECT_EQ(truck->get_zone()->get_accepts().size(), 0);
    EXPECT_EQ(truck->get_zone()->room("egg"), 0);
    EXPECT_EQ(truck->get_board_text(), String());
    step_seconds(1.5);
    EXPECT_GT(first->get_target().z, 12.0f); // the goods ride along
    EXPECT_EQ(goods_alive(), n + 3);
    step_seconds(0.6);
    EXPECT_EQ(truck->get_state(), TruckCore::AWAY);
    EXPECT_NEAR(truck->get_t(), 8.0, 0.2);
    EXPECT_FALSE(body->is_visible());
    step(2);
    EXPECT_EQ(goods_alive(), 0);
    EXPECT_EQ(truck->get_bed()->count(), 0);
    // Only the ordered goods were paid, and no more than that.
    EXPECT_EQ(truck->get_cash()->total(),
              static_cast<int64_t>(2.5 * static_cast<double>(n * FarmData::price_of("egg"))));
    EXPECT_EQ(farm.stats["ship:egg"], n);
    farm.night = true;
    truck->_gone();
    EXPECT_EQ(truck->get_t(), 16.0);
}

TEST_F(Trucks, MarketOrdersAreDrawnFromTheStallsNearBy) {
    TruckDepot *truck = bay("truck_mill", "", 100);
    truck->_new_order();
    EXPECT_TRUE(truck->get_order().is_empty());
    EXPECT_DOUBLE_EQ(truck->get_good_time(), 25.0);
    stall("wool", 0);
    truck->_new_order();
    EXPECT_TRUE(truck->get_order().has("wool")); // none near: all
    for (const char *kind : {"egg", "milk", "flour", "bread"}) {
        stall(kind, 130);
        stall(kind, 70);
    }
    for (int64_t served : {int64_t(0), int64_t(3), int64_t(500)}) {
        truck->set_served(served);
        std::set<int64_t> sizes, counts;
        for (int i = 0; i < 300; i++) {
            truck->_new_order();
            const Dictionary lines = truck->get_order();
            sizes.insert(lines.size());
            const Array values = lines.values();
            int64_t sum = 0;
            for (int64_t k = 0; k < values.size(); k++) {
                counts.insert(values[k]);
                sum += static_cast<int64_t>(values[k]);
            }
            EXPECT_FALSE(lines.has("wool"));
            ASSERT_DOUBLE_EQ(truck->get_good_time(), 25.0 + 2.5 * static_cast<double>(sum));
        }
        EXPECT_EQ(sizes, (std::set<int64_t>{1, 2, 3}));
        const int64_t low = 6 + (served == 0 ? 0 : served == 3 ? 6 : 18);
        EXPECT_EQ(counts, (std::set<int64_t>{low, low + 1, low + 2, low + 3, low + 4}));
    }
}

TEST_F(Trucks, DocksOrderTheirProductAndVipsASecondOne) {
    TruckDepot *dock = bay("dock_bread_factory", "bread", 41);
    dock->set_served(3);
    std::set<int64_t> counts;
    for (int i = 0; i < 100; i++) {
        dock->_new_order();
        EXPECT_EQ(dock->get_order().size(), 1);
        counts.insert(dock->get_order()["bread"]);
    }
    EXPECT_EQ(counts, (std::set<int64_t>{11, 12, 13}));
    // A VIP of the only dock, and beside a dock of the same product, stays on one kind.
    TruckDepot *twin = bay("dock_other_bakery", "bread", 48);
    dock->set_next_vip(true);
    dock->arrive();
    EXPECT_TRUE(dock->get_vip());
    EXPECT_FALSE(dock->get_next_vip());
    EXPECT_EQ(dock->get_order().size(), 1);
    const std::set<int64_t> wider{15, 16, 18}; // int(1.4 x 11..13)
    EXPECT_TRUE(wider.contains(dock->get_order()["bread"]));
    EXPECT_DOUBLE_EQ(dock->get_good_time(),
                     (25.0 + 2.5 * static_cast<double>(static_cast<int64_t>(dock->get_order()["bread"]))) * 0.8);
    // The gold body drives, with the bed on it.
    EXPECT_EQ(dock->get_body(), Object::cast_to<Node3D>(dock->get_bodies()[1]));
    EXPECT_EQ(dock->get_bed()->get_parent(), dock->get_body());
    EXPECT_FALSE(Object::cast_to<Node3D>(dock->get_bodies()[0])->is_visible());
    bay("dock_mayo_factory", "mayo", 55);
    bay("truck");
    dock->_new_order();
    EXPECT_EQ(static_cast<int64_t>(dock->get_order()["mayo"]), 8);
    dock->_parked();
    EXPECT_EQ(words.said.back(), "VIP TRUCK! BREAD + MAYO/0");
    EXPECT_EQ(farm.events["tip vip"], 1);
    dock->arrive();
    EXPECT_FALSE(dock->get_vip());
    EXPECT_EQ(dock->get_bed()->get_parent(), dock->get_bodies()[0].get_validated_object());
    farm.night = true;
    twin->_new_order();
    EXPECT_DOUBLE_EQ(twin->get_good_time(),
                     (25.0 + 2.5 * static_cast<double>(static_cast<int64_t>(twin->get_order()["bread"]))) * 1.4);
}

TEST_F(Trucks, TheRewardCountsTimeStarsTipsAndVips) {
    const int64_t egg = FarmData::price_of("egg");
    TruckDepot *truck = bay("truck");
    order(truck, {{"egg", 10}});
    truck->set_good_time(30);
    EXPECT_EQ(truck->reward(), egg * 25);
    truck->set_elapsed(48.0);
    EXPECT_EQ(truck->reward(), static_cast<int64_t>(static_cast<double>(egg) * 10 * 0.75 * 2.5));
    truck->set_elapsed(48.1);
    EXPECT_EQ(truck->reward(), static_cast<int64_t>(static_cast<double>(egg) * 10 * 0.5 * 2.5));
    TruckDepot::set_tips_factor(1.5);
    truck->set_elapsed(0);
    EXPECT_EQ(truck->reward(), static_cast<int64_t>(37.5 * static_cast<double>(egg)));
    TruckDepot::set_tips_factor(1.0);
    TruckDepot *dock = bay("dock_bread_factory", "bread");
    order(dock, {{"bread", 10}});
    dock->set_stars(2);
    dock->set_vip(true);
    EXPECT_EQ(dock->reward(),
              static_cast<int64_t>(1.3 * (1.8 * static_cast<double>(10 * FarmData::price_of("bread"))) * 2.2));
    order(dock, {{"no such good", 10}, {"bread", -4}});
    EXPECT_EQ(dock->reward(), 0);
}

TEST_F(Trucks, AFullBedPaysTheExactSumOnce) {
    TruckDepot *truck = bay("truck");
    park(truck, {{"egg", 7}, {"milk", 2}});
    load(truck, "egg", 7);
    load(truck, "milk", 1);
    truck->step(40.0);
    EXPECT_EQ(truck->get_state(), TruckCore::WAIT);
    EXPECT_EQ(truck->get_board_text(), "EGG 7/7\nMILK 1/2");
    const int64_t due = static_cast<int64_t>(
        0.75 * 2.5 * static_cast<double>(7 * FarmData::price_of("egg") + 2 * FarmData::price_of("milk")));
    EXPECT_EQ(truck->get_clock_text(), vformat("$%d   0:08", due));
    load(truck, "milk", 1);
    truck->step(1.0 / 60);
    EXPECT_EQ(truck->get_cash()->total(), due);
    EXPECT_LE(truck->get_cash()->bill_list().size(), 6);
    EXPECT_EQ(farm.last_reward, due);
    EXPECT_EQ(farm.last_mult, 0.75);
    EXPECT_EQ(farm.moods["truck"], 0.75);
    EXPECT_EQ(words.flown, due);
    EXPECT_TRUE(words.said.empty()); // neither fast nor slow
    for (int i = 0; i < 60; i++) {
        truck->step(0.25);
    }
    EXPECT_EQ(truck->get_cash()->total(), due);
    EXPECT_EQ(farm.stats["ship:egg"], 7);
    EXPECT_EQ(farm.stats["ship:milk"], 2);
    // A slow one says so.
    step_seconds(2.2);
    park(truck, {{"egg", 1}});
    truck->set_elapsed(49);
    load(truck, "egg", 1);
    truck->step(0.1);
    EXPECT_EQ(words.said.back(), "SLOW.../2");
}

TEST_F(Trucks, HurryOnceAndLeaveInTheEndWithTwoFifthsOfTheWorth) {
    TruckDepot *dock = bay("dock_bread_factory", "bread");
    park(dock, {{"bread", 10}});
    load(dock, "bread", 4);
    dock->step(48.0);
    EXPECT_FALSE(dock->get_hurried());
    dock->step(0.01);
    EXPECT_TRUE(dock->get_hurried());
    dock->step(71.9);
    EXPECT_EQ(dock->get_state(), TruckCore::WAIT);
    const int64_t worth = 4 * FarmData::price_of("bread");
    EXPECT_EQ(dock->_delivered_value(), worth);
    dock->step(0.1);
    EXPECT_EQ(dock->get_state(), TruckCore::LEAVE);
    EXPECT_EQ(dock->get_cash()->total(), static_cast<int64_t>(static_cast<double>(worth) * 0.4));
    EXPECT_EQ(words.said.back(), "TRADER LEFT ANGRY!/3");
    EXPECT_EQ(farm.moods["angrytruck"], 0.0);
    EXPECT_EQ(dock->get_served(), 0);
    EXPECT_EQ(farm.orders, 0);
    step_seconds(2.1);
    EXPECT_EQ(dock->get_state(), TruckCore::AWAY);
    EXPECT_EQ(goods_alive(), 0);
    // Nothing on the bed, nothing paid; the late line wins only where an order is open.
    const int64_t before = dock->get_cash()->total();
    dock->set_vip(true);
    park(dock, {{"bread", 10}});
    dock->step(500.0);
    EXPECT_EQ(dock->get_cash()->total(), before);
    EXPECT_EQ(words.said.back(), "VIP TRADER LEFT.../3");
    park(dock, {{"bread", 1}});
    load(dock, "bread", 1);
    dock->step(500.0);
    EXPECT_EQ(dock->get_served(), 1);
}

TEST_F(Trucks, OffViewTheyStepFourTimesASecond) {
    TruckDepot *truck = bay("truck");
    park(truck, {{"egg", 3}});
    Glebworks::set_view(Rect2(500, 500, 5, 5));
    for (int i = 0; i < 14; i++) {
        truck->step(1.0 / 60);
    }
    EXPECT_EQ(truck->get_elapsed(), 0.0);
    load(truck, "egg", 1);
    truck->step(0.05);
    EXPECT_NEAR(truck->get_elapsed(), 14.0 / 60 + 0.05, 1e-9);
    EXPECT_EQ(truck->get_board_text(), "EGG 0/3"); // read by nobody
    Glebworks::see_everything();
}

TEST_F(Trucks, HostileRowsAndDeathsStopNothing) {
    TruckDepot *truck = bay("truck");
    Dictionary odd;
    odd["egg"] = "many";
    odd[7] = 2.0;
    odd["milk"] = Variant();
    truck->set_order(odd);
    EXPECT_EQ(truck->reward(), 0);
    truck->_update_board();
    truck->set_state(99);
    truck->step(1.0);
    truck->set_state(TruckCore::AWAY);
    truck->step(NAN);
    EXPECT_EQ(truck->get_t(), 4.0);
    park(truck, {{"egg", 2}});
    load(truck, "egg", 1);
    memdelete(truck->get_bed());
    truck->step(10);
    EXPECT_EQ(truck->get_state(), TruckCore::WAIT);
    EXPECT_EQ(truck->_delivered_value(), 0);
    // Its cash tile gone, the money goes to the farm itself; with its body gone it still comes and goes.
    memdelete(truck->get_cash());
    memdelete(truck->get_body());
    park(truck, {{"egg", 0}});
    order(truck, {{"egg", 2}});
    truck->on_full();
    EXPECT_EQ(farm.money, FarmData::price_of("egg") * 5);
    EXPECT_EQ(truck->get_state(), TruckCore::AWAY);
    truck->arrive();
    EXPECT_EQ(truck->get_state(), TruckCore::WAIT);
    // A bay without a farm, and one that stands already, are refused.
    expect_engine_error("needs a farm, and not to stand yet", 2);
    TruckDepot *loose = memnew(TruckDepot);
    loose->build(0, nullptr);
    truck->build(0, &farm);
    loose->_update_board();
    loose->arrive();
    EXPECT_EQ(loose->get_state(), TruckCore::WAIT);
    loose->on_full();
    EXPECT_EQ(loose->get_state(), TruckCore::AWAY);
    memdelete(loose);
    // A bare engine has nobody to tell.
    TruckCore *bare = add<TruckCore>();
    bare->core_join(nullptr);
    bare->step(10.0);
    EXPECT_EQ(bare->get_state(), TruckCore::AWAY);
}

TEST_F(Trucks, ScriptsReadAndDriveThem) {
    Object *truck = bay("dock_bread_factory", "bread");
    for (const char *method : {"_new_order", "_parked", "_update_board", "hurry", "on_full", "_gone", "arrive",
                               "on_late", "_leave", "order_changed"}) {
        truck->call(method);
    }
    truck->set("_t", 2.5);
    truck->set("_elapsed", 31.0);
    truck->set("_good_time", 30.0);
    truck->set("_hurried", true);
    truck->set("served", 4);
    EXPECT_EQ((double)truck->get("_t"), 2.5);
    EXPECT_EQ((double)truck->call("speed_mult"), 0.75);
    EXPECT_EQ((int64_t)truck->get("base"), 1);
    EXPECT_EQ((String)truck->get("group"), "dock_bread_factory");
    EXPECT_EQ(Array(truck->get_meta("stars")).size(), 3);
    EXPECT_GE((int64_t)truck->call("reward"), 0);
    EXPECT_EQ((int64_t)truck->call("_delivered_value"), 0);
    truck->call("_set_body", Variant());
}

// In a whole farm.

namespace {

class TruckWorld : public FarmTest {
protected:
    void open(const char *entries = "") {
        Dictionary levels;
        for (const String &id : String(entries).split(" ", false)) {
            levels[id] = 1;
        }
        if (!levels.is_empty()) {
            Dictionary doc;
            doc["levels"] = levels;
            save->data = doc;
        }
        FarmTest::open();
    }
    TruckDepot *truck(const char *id) const { return Object::cast_to<TruckDepot>(world->node_of(id)); }
};

} // namespace

TEST_F(TruckWorld, StarsComeAtThreeEightAndFifteenQuickOrders) {
    open("land_dairy truck");
    TruckDepot *dock = world->trucking().build_dock(FarmData::entry_by_id("bread_factory"));
    EXPECT_EQ(world->node_of("bread_factory_dock"), dock);
    EXPECT_EQ(dock->get_zone()->get_group(), "dock_bread_factory");
    EXPECT_EQ(dock->get_position(), Vector3(41, 0, 5.85f));
    const int64_t before = world->money;
    world->order_done(dock, 100, 0.75); // too slow to count
    world->order_done(truck("truck"), 100, 1.0);
    std::vector<int64_t> stars;
    for (int i = 0; i < 15; i++) {
        world->order_done(dock, 100, 1.0);
        stars.push_back(dock->get_stars());
    }
    EXPECT_EQ(stars, (std::vector<int64_t>{0, 0, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 2, 3}));
    EXPECT_EQ(world->money - before, 3 * 200);
    EXPECT_EQ(world->trucking().star_count(), 3);
    world->call("order_done", Variant(), 5, 1.0); // from a script, with nothing
    EXPECT_EQ(world->money - before, 600);
}

TEST_F(TruckWorld, TheSaveKeepsCountsAndStarsButNoGoodsOnBeds) {
    open("land_dairy truck stall_milk land_mill truck_mill food_depot");
    ASSERT_NE(truck("truck"), nullptr);
    EXPECT_EQ(truck("truck")->get_position(), Vector3(-29, 0, 5.85f));
    truck("truck")->set_served(4);
    truck("truck_mill")->set_served(2);
    Workplace::fill(truck("truck")->get_bed(), "milk", 3);
    TruckDepot *dock = world->trucking().build_dock(FarmData::entry_by_id("bread_factory"));
    dock->set_served(9);
    for (int i = 0; i < 8; i++) {
        world->order_done(dock, 1, 1.0);
    }
    truck("truck")->get_cash()->add_money(77, 10, Vector3());
    // A depot at its second level, a machine's zone, and goods riding between them.
    world->apply_level(FarmData::entry_by_id("food_depot"), 2, true);
    EXPECT_NE(world->node_of("food_depot_van"), nullptr);
    Node *depot = world->node_of("food_depot");
    ASSERT_NE(depot, nullptr);
    Ref<ZoneCore> store = depot->get_meta("zone");
    EXPECT_EQ(store->get_pile()->get_max_items(), 120);
    Workplace::fill(store->get_pile(), "flour", 5);
    world->_save();
    const Dictionary doc = save->data;
    EXPECT_EQ(static_cast<int64_t>(doc["trucks"]), 4);
    EXPECT_EQ(Dictionary(doc["truck_done"]).size(), 2);
    EXPECT_EQ(static_cast<int64_t>(Dictionary(doc["truck_done"])["truck_mill"]), 2);
    EXPECT_EQ(static_cast<int64_t>(Dictionary(doc["truck_done"])["dock_bread_factory"]), 9);
    EXPECT_EQ(static_cast<int64_t>(Dictionary(doc["dock_done"])["dock_bread_factory"]), 8);
    EXPECT_EQ(static_cast<int64_t>(Dictionary(doc["stars"])["dock_bread_factory"]), 2);
    const Dictionary piles = Dictionary(doc["state"])["piles"];
    EXPECT_EQ(piles.size(), 1);
    EXPECT_TRUE(piles.has("food_depot@376,-44"));

    close();
    save->read();
    open();
    EXPECT_EQ(truck("truck")->get_served(), 4);
    EXPECT_EQ(truck("truck_mill")->get_served(), 2);
    EXPECT_EQ(truck("truck")->get_bed()->count(), 0);
    EXPECT_EQ(truck("truck")->get_cash()->total(), 77);
    store = world->node_of("food_depot")->get_meta("zone");
    EXPECT_EQ(store->get_pile()->count_kind("flour"), 5);
    // The dock is built later than the save is read; nothing of it was forgotten meanwhile.
    world->_save();
    dock = world->trucking().build_dock(FarmData::entry_by_id("bread_factory"));
    EXPECT_EQ(dock->get_served(), 9);
    EXPECT_EQ(dock->get_stars(), 2);
    world->order_done(dock, 1, 1.0);
    world->_save();
    EXPECT_EQ(static_cast<int64_t>(Dictionary(save->data["dock_done"])["dock_bread_factory"]), 9);
}

TEST_F(TruckWorld, BeltsJoinDepotMachineAndDock) {
    open("land_food food_depot");
    const Dictionary factory = FarmData::entry_by_id("bread_factory");
    const Dictionary belt = FarmData::entry_by_id("bread_factory_belt");
    world->apply_level(belt, 1, true); // nothing to join yet
    EXPECT_EQ(world->node_of("bread_factory_belt"), nullptr);
    // A machine as a belt sees it: a node and two zones.
    Node3D *machine = memnew(Node3D);
    machine->set_position(Vector3(41, 0, -8.5f));
    world->add_child(machine);
    world->keep_node("bread_factory", machine);
    Array kinds = Dictionary(factory["recipe"]).keys();
    Dictionary accepts;
    for (int64_t i = 0; i < kinds.size(); i++) {
        accepts[kinds[i]] = 4;
    }
    Pile *piles[2];
    for (Pile *&pile : piles) {
        pile = memnew(Pile);
        machine->add_child(pile);
    }
    Ref<Zone> in = Zone::make("give", piles[0], Vector3(39, 0, -6.2f), Vector2(2, 1.6f), "bread_factory");
    in->set_accepts(accepts);
    Ref<Zone> out = Zone::make("take", piles[1], Vector3(43, 0, -6.2f), Vector2(2, 1.6f), "bread_factory_out");
    world->zone_list().push_back(in);
    world->zone_list().push_back(out);
    TruckDepot *dock = world->trucking().build_dock(factory);
    dock->set_t(1000);
    for (int level = 1; level <= 3; level++) {
        world->apply_level(belt, level, true);
    }
    ConveyorCore *feed = Object::cast_to<ConveyorCore>(world->node_of("bread_factory_belt"));
    ConveyorCore *ship = Object::cast_to<ConveyorCore>(world->node_of("bread_factory_belt_out"));
    ASSERT_NE(feed, nullptr);
    ASSERT_NE(ship, nullptr);
    EXPECT_EQ(feed->get_speed(), 3.6);
    EXPECT_EQ(ship->get_speed(), 3.6);
    EXPECT_EQ(feed->get_force_after(), 1.0);
    EXPECT_EQ(ship->get_force_after(), -1.0);
    EXPECT_EQ(ship->get_height(), 0.16);
    EXPECT_NEAR(feed->get_total(), 2.0 + 1.5, 1e-4);
    EXPECT_NEAR(ship->get_total(), 9.1, 1e-4);
    // Goods go in; bread goes out to a waiting truck only.
    Ref<ZoneCore> store = world->node_of("food_depot")->get_meta("zone");
    const String kind = kinds[0];
    Workplace::fill(store->get_pile(), kind.utf8().get_data(), 9);
    Workplace::fill(piles[1], "bread", 5);
    step_seconds(9);
    EXPECT_EQ(piles[0]->count_kind(kind), 4);
    EXPECT_EQ(store->get_pile()->count(), 5);
    EXPECT_EQ(dock->get_bed()->count(), 0);
    Dictionary order;
    order["bread"] = 20;
    dock->set_order(order);
    dock->set_good_time(100);
    dock->_parked();
    step_seconds(2);
    const int riding = ship->riding();
    EXPECT_GT(riding, 0);
    // A save now: what rides is not in it, what lies in piles is.
    world->_save();
    const Dictionary saved = Dictionary(save->data["state"])["piles"];
    int64_t bread = 0;
    for (int64_t i = 0; i < saved.size(); i++) {
        bread += static_cast<int64_t>(Dictionary(saved[saved.keys()[i]]).get("bread", 0));
    }
    EXPECT_EQ(bread + riding + dock->get_bed()->count(), 5);
    step_seconds(5);
    EXPECT_EQ(dock->get_bed()->count_kind("bread"), 5);
}

} // namespace tilm
