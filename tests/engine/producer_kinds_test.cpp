// All kinds of producers: intervals, feed and hunger, illness, the hand's whole round, and the same output unseen.

#include <cmath>
#include <map>
#include <vector>

#include <gtest/gtest.h>

#include <godot_cpp/variant/utility_functions.hpp>

#include "engine_test.h"
#include "fake_farm.h"
#include "farm_items/pile_core.h"
#include "game/actors/farm_hand.h"
#include "game/actors/producer.h"
#include "glebworks/far_list.h"
#include "glebworks/glebworks.h"

namespace tilm {
namespace {

// Counts the illnesses that are reported to it, and takes them or not.
class Vet : public Node {
    GDCLASS(Vet, Node)

public:
    bool sick(Object *, const String &cause) {
        reports[std::string(cause.utf8().get_data())] += 1;
        return takes;
    }
    std::map<std::string, int> reports;
    bool takes = true;

protected:
    static void _bind_methods() { ClassDB::bind_method(D_METHOD("sick", "producer", "cause"), &Vet::sick); }
};

const test::RegisterClasses probes([] { GDREGISTER_CLASS(Vet); });

struct Case {
    const char *product;
    double unit[3];    // seconds a unit at levels 1, 5 and 20
    double seasons[4]; // factors
    int meals;         // of a feed item
};
const Case cases[] = {
    {"egg", {4.0 / 3, 4.0 / 11, 4.0 / 41}, {1, 1, 1, 1}, 3},
    {"milk", {6.5 / 2, 6.5 / 6, 6.5 / 21}, {1, 1, 1, 1}, 2},
    {"fish", {5.0 / 3, 5.0 / 11, 5.0 / 41}, {1, 1, 1, 1}, 0},
    {"calf", {9.0 / 2, 9.0 / 6, 9.0 / 21}, {1, 1, 1, 1}, 1},
    {"hen", {6.0 / 3, 6.0 / 11, 6.0 / 41}, {1, 1, 1, 1}, 1},
    {"honey", {7.0 / 4, 7.0 / 16, 7.0 / 61}, {1.2, 1.0, 0.8, 0.25}, 0},
    {"apple", {4.0 / 2, 4.0 / 6, 4.0 / 21}, {1.0, 1.1, 1.3, 0.3}, 0},
    {"orange", {4.0 / 2, 4.0 / 6, 4.0 / 21}, {1.0, 1.2, 1.1, 0.5}, 0},
    {"wool", {8.0 / 2, 8.0 / 6, 8.0 / 21}, {1, 1, 1, 1}, 1},
    {"bean", {4.0 / 2, 4.0 / 6, 4.0 / 21}, {1.0, 1.15, 1.1, 0.6}, 0},
};

class ProducerKindTest : public testing::Test {
protected:
    FakeFarm farm{stage()};
    ~ProducerKindTest() override { Glebworks::see_everything(); }

    Producer *make(const char *product, const char *region = "eggs", int level = 1) {
        Dictionary e;
        e["id"] = "house";
        e["product"] = product;
        e["region"] = region;
        e["pos"] = Vector2(10, -8);
        Producer *p = Producer::build(e);
        farm.ground->add_child(p);
        p->set_process(false);
        if (FarmHand *hand = p->get_hand()) {
            hand->set_process(false);
        }
        p->set_level(level);
        return p;
    }
    static void fill(PileCore *pile, const String &kind, int n) {
        for (int i = 0; i < n; ++i) {
            pile->add(Item::spawn(kind, pile->get_global_position()), 0.05);
        }
    }
    static void empty(PileCore *pile) {
        while (ItemCore *item = pile->take(String())) {
            memdelete(item);
        }
    }
    // Steps house and hand at 60 Hz with trough and tray tended; returns what the tray got, the hand's load included.
    static int output(Producer *p, double seconds) {
        int made = 0;
        for (int i = 0; i < static_cast<int>(std::lround(seconds * 60)); ++i) {
            PileCore *trough = p->get_trough();
            if (trough != nullptr && trough->count() < 4) {
                fill(trough, p->feed_kind(), 4);
            }
            p->step(1.0 / 60);
            if (FarmHand *hand = p->get_hand()) {
                if (hand->is_processing() || !hand->get_asleep()) {
                    hand->_process(1.0 / 60);
                }
            }
            FarList::tick(1.0 / 60);
            made += p->get_tray()->count();
            empty(p->get_tray());
        }
        return made + p->get_catch_pending();
    }
};

TEST_F(ProducerKindTest, SecondsForAUnitByLevelBoostFeedAndSeason) {
    const int levels[3] = {1, 5, 20};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.product);
        Producer *p = make(c.product);
        for (int i = 0; i < 3; ++i) {
            p->set_level(levels[i]);
            for (int season = 0; season < 4; ++season) {
                farm.season_index = season;
                const double plain = c.unit[i] / c.seasons[season];
                EXPECT_NEAR(p->interval(), plain, 1e-12);
                farm.animals = 2;
                EXPECT_NEAR(p->interval(), plain / 2, 1e-12);
                farm.feed = 3;
                EXPECT_NEAR(p->interval(), plain / 2 / 2.05, 1e-12);
                farm.animals = 1;
                farm.feed = 0;
            }
        }
        Farm::set_current(nullptr); // without a farm nothing but the level counts
        EXPECT_NEAR(p->interval(), c.unit[2], 1e-12);
        Farm::set_current(&farm);
        memdelete(p);
    }
}

TEST_F(ProducerKindTest, WatchedOrNotItMakesTheSameInTenMinutes) {
    for (const Case &c : cases) {
        // Above that the bees of an apiary are quicker than its hand.
        const bool quick = std::string(c.product) == "honey";
        for (const int level : {1, quick ? 5 : 20}) {
            SCOPED_TRACE(std::string(c.product) + " at level " + std::to_string(level));
            int made[2] = {};
            for (const bool seen : {true, false}) {
                UtilityFunctions::seed(11); // where the hand looks differs a little from run to run
                Producer *p = make(c.product, "eggs", level);
                Glebworks::set_view(seen ? Rect2(-20, -20, 60, 40) : Rect2(900, 900, 10, 10));
                made[seen] = output(p, 600);
                memdelete(p);
            }
            farm.zones.clear();
            const double due = 600 / c.unit[level == 1 ? 0 : quick ? 1 : 2] * c.seasons[0];
            EXPECT_NEAR(made[1], due, 0.02 * due + 1.5);
            EXPECT_NEAR(made[0], made[1], 0.01 * due + 1);
        }
    }
}

TEST_F(ProducerKindTest, AFeedItemIsWorthItsMealsAndNothingIsMadeWithout) {
    for (const Case &c : cases) {
        if (c.meals == 0) {
            continue;
        }
        SCOPED_TRACE(c.product);
        Producer *p = make(c.product);
        fill(p->get_trough(), p->feed_kind(), 2);
        for (int i = 0; i < 60 * 60; ++i) {
            p->step(1.0 / 60);
            ASSERT_LT(p->get_work_t(), p->interval() + 1e-9);
        }
        EXPECT_EQ(p->get_tray()->count() + p->get_catch_pending(), 2 * c.meals);
        fill(p->get_trough(), p->feed_kind(), 1);
        p->step(0.001);
        EXPECT_EQ(p->get_tray()->count() + p->get_catch_pending(), 2 * c.meals + 1) << "the first meal works at once";
        EXPECT_EQ(p->get_fed(), c.meals - 1);
        memdelete(p);
    }
}

TEST_F(ProducerKindTest, HungerMakesSickAtSeventyFiveOrSparesTwentySeconds) {
    Vet *vet = memnew(Vet);
    farm.ground->add_child(vet);
    farm.service_node = vet;
    Producer *barn = make("milk", "dairy");
    barn->set_hunger(74.9);
    barn->set_overwork_t(1e6);
    vet->takes = false;
    barn->step(0.25);
    EXPECT_EQ(barn->get_hunger(), 55.0);
    EXPECT_EQ(vet->reports["hunger"], 1);
    for (int i = 0; i < 79; ++i) {
        barn->step(0.25);
    }
    EXPECT_EQ(vet->reports["hunger"], 1);
    vet->takes = true;
    barn->step(0.25); // twenty seconds after
    EXPECT_EQ(vet->reports["hunger"], 2);
    EXPECT_EQ(barn->get_hunger(), 0.0);
}

TEST_F(ProducerKindTest, OverworkRollsRarelyAndNeverOftenerThanEightTimesInAHundred) {
    Vet *vet = memnew(Vet);
    farm.ground->add_child(vet);
    farm.service_node = vet;
    UtilityFunctions::seed(7);
    for (const auto &[level, chance] : std::map<int, double>{{1, 0.006}, {20, 0.12}, {200, 0.12}}) {
        vet->reports.clear();
        Producer *pond = make("fish", "eggs", level);
        for (int i = 0; i < 10000; ++i) {
            const double next = pond->overwork();
            ASSERT_GE(next, 300);
            ASSERT_LE(next, 480);
        }
        EXPECT_NEAR(vet->reports["work"], 10000 * chance, 4 * std::sqrt(10000 * chance)) << level;
        // The clock rolls as well.
        pond->set_overwork_t(0.1);
        pond->step(0.2);
        EXPECT_GE(pond->get_overwork_t(), 300);
        memdelete(pond);
    }
    farm.service_node = nullptr;
    Producer *alone = make("egg");
    EXPECT_FALSE(alone->services_ready());
    EXPECT_FALSE(alone->sicken_hunger());
    alone->set_overwork_t(0.1);
    alone->step(5);
    EXPECT_NEAR(alone->get_overwork_t(), 0.1, 1e-9) << "without services the clock stands";
}

TEST_F(ProducerKindTest, BoughtFeedComesEveryThreeSecondsWhileItIsPaidFor) {
    farm.money = 12 * 2 + 5;
    Producer *house = make("hen", "poultry");
    house->set_catch_pending(24); // nothing is eaten
    house->step(0.01);
    EXPECT_EQ(house->get_trough()->count_kind("corn"), 12);
    EXPECT_EQ(farm.money, 5);
    empty(house->get_trough());
    for (int i = 0; i < 40; ++i) {
        house->step(0.25); // three tries that cannot be paid
    }
    EXPECT_EQ(house->get_trough()->count(), 0);
    EXPECT_EQ(farm.money, 5);
    farm.money = 100;
    for (int i = 0; i < 12; ++i) {
        house->step(0.25);
    }
    EXPECT_EQ(house->get_trough()->count(), 12);
    EXPECT_EQ(farm.money, 76);
    EXPECT_EQ(farm.stats["bought:corn"], 24);
    farm.money = 10000;
    empty(house->get_trough());
    fill(house->get_trough(), "corn", 7);
    house->_buy_feed();
    EXPECT_EQ(house->get_trough()->count(), 19);
    house->_buy_feed(); // more than 7
    EXPECT_EQ(house->get_trough()->count(), 19);
    // The first two lands grow their own, however rich: their feeder is only helped out when it is hired and late.
    Producer *barn = make("milk", "dairy");
    EXPECT_FALSE(barn->_bought_feed());
    EXPECT_FALSE(barn->_feed_late());
    farm.levels["hay_feeder"] = 1;
    EXPECT_TRUE(barn->_feed_late());
    for (int i = 0; i < 100; ++i) {
        barn->step(0.25); // no services, so no hunger
    }
    EXPECT_EQ(barn->get_trough()->count(), 0);
    barn->set_hunger(12);
    barn->step(0.25);
    EXPECT_EQ(barn->get_trough()->count(), 0) << "not above 12";
    barn->set_hunger(12.5);
    barn->step(0.25);
    EXPECT_GT(barn->get_trough()->count(), 0);
}

TEST_F(ProducerKindTest, EveryHandGoesItsRoundAndBringsTheCatch) {
    const std::map<std::string, double> work = {{"milk", 5.0}, {"wool", 4.0},   {"honey", 2.6}, {"apple", 2.0},
                                                {"bean", 2.2}, {"orange", 2.0}, {"egg", 1.4},   {"fish", 1.4}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.product);
        Producer *p = make(c.product, "eggs", 3);
        FarmHand *hand = p->get_hand();
        const bool brings = p->kind_row()->hand == rules::HandWork::bring;
        ASSERT_EQ(hand != nullptr, work.count(c.product) == 1);
        if (hand == nullptr) {
            memdelete(p);
            continue;
        }
        p->set_catch_pending(brings ? 5 : 0);
        hand->set_timer(0);
        std::vector<int> states = {0};
        double worked = 0;
        bool shorn = false;
        for (int i = 0; i < 60 * 40 && !(states.size() > 4 && states.back() == 0); ++i) {
            hand->tick(1.0 / 60);
            if (hand->get_state() != states.back()) {
                states.push_back(hand->get_state());
                if (states.back() == FarmHand::to_job) {
                    const Vector3 goal = Vector3(hand->get_path().back()) - p->get_position();
                    EXPECT_LE(std::abs(goal.x), 2.0001f);
                    EXPECT_GE(goal.z, -1.2501f);
                    EXPECT_LE(goal.z, 1.4001f);
                }
                if (states.back() == FarmHand::to_gate) {
                    const Array herd = p->get_animals();
                    for (int a = 0; a < herd.size(); ++a) {
                        shorn |= static_cast<double>(static_cast<Dictionary>(herd[a]).get("shorn", 0.0)) == 30.0;
                    }
                }
                if (states.back() == FarmHand::handing) {
                    EXPECT_LT(hand->get_position().distance_to(p->get_position() + Vector3(0, 0, 2.6f)), 0.2);
                    EXPECT_EQ(p->get_tray()->count(), 0);
                }
            }
            worked += hand->get_state() == FarmHand::working ? 1.0 / 60 : 0;
        }
        EXPECT_EQ(states, (std::vector<int>{0, 1, 2, 3, 4, 0}));
        EXPECT_NEAR(worked, work.at(c.product), 0.05);
        EXPECT_EQ(shorn, std::string(c.product) == "wool");
        EXPECT_EQ(p->get_tray()->count(), brings ? 5 : 0);
        EXPECT_EQ(p->get_catch_pending(), 0);
        memdelete(p);
    }
}

TEST_F(ProducerKindTest, TheFisherRowsWhileNothingBitesAndComesBack) {
    Producer *pond = make("fish");
    FarmHand *hand = pond->get_hand();
    std::vector<int> states = {0};
    for (int i = 0; i < 60 * 60 && !(states.size() > 3 && states.back() == 0); ++i) {
        hand->tick(1.0 / 60);
        if (hand->get_state() != states.back()) {
            states.push_back(hand->get_state());
        }
    }
    EXPECT_EQ(states, (std::vector<int>{0, 5, 6, 7, 0}));
    pond->set_catch_pending(1);
    hand->set_timer(0);
    hand->tick(0.01);
    EXPECT_EQ(hand->get_state(), FarmHand::to_job);
    hand->set_state(99); // nonsense ends in a pause
    hand->tick(0.01);
    EXPECT_EQ(hand->get_state(), FarmHand::waiting);
}

TEST_F(ProducerKindTest, AHoldAndAFleeceLastTheirTimeUnseenToo) {
    Producer *shed = make("wool");
    Glebworks::set_view(Rect2(900, 900, 10, 10));
    const Vector3 here = shed->get_position();
    const Dictionary a = shed->hold_animal(here, 9.0);
    const Dictionary b = shed->hold_animal(here, 9.0);
    ASSERT_FALSE(b.is_empty());
    EXPECT_FALSE(static_cast<bool>(a["feed"]));
    EXPECT_TRUE(shed->hold_animal(here, 9.0).is_empty());
    shed->shear(a);
    for (int i = 0; i < 36; ++i) {
        shed->step(0.25);
    }
    EXPECT_EQ(static_cast<double>(a["shorn"]), 21.0);
    // Both are free again: the woolly one is taken, however far.
    const Vector3 at_shorn = here + static_cast<Node3D *>(static_cast<Object *>(a["n"]))->get_position();
    EXPECT_EQ(static_cast<Object *>(shed->hold_animal(at_shorn, 9.0)["n"]), static_cast<Object *>(b["n"]));
    for (int i = 0; i < 83; ++i) {
        shed->step(0.25);
    }
    EXPECT_EQ(static_cast<double>(a["shorn"]), 0.25);
    shed->step(0.25);
    EXPECT_EQ(static_cast<double>(a["shorn"]), 0.0);
    shed->shear(Dictionary()); // of no sheep
    shed->regrow_tick(1e9);
}

TEST_F(ProducerKindTest, DamagedRowsAreRefusedAndFreedPilesStopTheWork) {
    Dictionary e;
    e["id"] = "x";
    e["product"] = "egg";
    expect_engine_error("producer x: no place");
    EXPECT_EQ(Producer::build(e), nullptr);
    e["pos"] = Vector2();
    e["product"] = 7;
    expect_engine_error("producer x: unknown product");
    EXPECT_EQ(Producer::build(e), nullptr);

    Producer *coop = make("egg", "eggs", -3);
    EXPECT_EQ(coop->get_level(), 1);
    coop->set_level(2147483647);
    EXPECT_LT(coop->get_tray()->get_max_items(), 20000);
    coop->set_level(1);
    coop->set_meta("water", "wet"); // no tank at all
    fill(coop->get_trough(), "corn", 1);
    coop->step(2);
    EXPECT_EQ(coop->get_tray()->count(), 1);
    memdelete(coop->get_trough());
    coop->set_fed(0);
    expect_engine_error("producer house: its trough is gone"); // once
    for (int i = 0; i < 100; ++i) {
        coop->step(0.25);
    }
    EXPECT_EQ(coop->get_tray()->count(), 1) << "no meals, no eggs";
    memdelete(coop->get_tray());
    coop->set_catch_pending(2);
    coop->step(1);
    coop->made();
    coop->deliver_catch(Vector3());
    EXPECT_EQ(coop->get_catch_pending(), 2);
    // A bare producer and a bare hand do nothing, and fall over nothing.
    expect_engine_error("unknown product \"\"");
    add<Producer>();
    FarmHand *hand = memnew(FarmHand);
    hand->tick(1);
    hand->setup(nullptr);
    memdelete(hand);
}

TEST_F(ProducerKindTest, ScriptsReachEverythingByName) {
    Producer *p = make("wool");
    for (const char *name :
         {"animal_count",    "visible_animals", "interval",  "solids",         "feed_kind",     "_eat",
          "_bought_feed",    "_feed_late",      "_buy_feed", "services_ready", "sicken_hunger", "overwork",
          "lose_level",      "set_level",       "animate",   "regrow_tick",    "made",          "deliver_catch",
          "splash",          "hold_animal",     "shear",     "core_join",      "set_trough",    "set_regrows",
          "set_hungry_label"}) {
        EXPECT_TRUE(p->has_method(name)) << name;
    }
    EXPECT_EQ(static_cast<Object *>(p->get("tray")), p->get_tray());
    EXPECT_EQ(static_cast<Object *>(p->get("trough")), p->get_trough());
    p->set("_fed", 2);
    p->set("_work_t", 1.5);
    p->set("_catch_wait", 3.0);
    p->set("catch_pending", 1);
    p->set("hunger", 7.0);
    EXPECT_EQ(p->get_fed(), 2);
    EXPECT_EQ(p->get_work_t(), 1.5);
    EXPECT_EQ(p->get_catch_wait(), 3.0);
    EXPECT_EQ(p->get_catch_pending(), 1);
    EXPECT_EQ(p->get_hunger(), 7.0);
    const Array animals = p->get("animals");
    ASSERT_EQ(animals.size(), 2);
    const Dictionary sheep = animals[0];
    for (const char *key :
         {"n", "state", "goal", "face", "phase", "feed", "legs", "lie", "drink", "rush", "graze", "shorn"}) {
        EXPECT_TRUE(sheep.has(key)) << key;
    }
    EXPECT_EQ(static_cast<String>(p->get_hand()->get("product")), String("wool"));
    EXPECT_EQ(static_cast<String>(add<FarmHand>()->get("product")), String("milk"));
}

} // namespace
} // namespace tilm
