// Belts and the supply van: what rides keeps its gaps, its number and its way, near the camera and far from it.

#include "engine_test.h"
#include "game/actors/conveyor.h"
#include "game/actors/supply_van.h"
#include "goods_kit.h"
#include "staff_kit.h"

namespace tilm {

namespace {

class Belts : public testing::Test {
protected:
    void SetUp() override {
        source = yard.put<Pile>(Vector3(0, 0, 2));
        target = yard.give("machine", "egg", 20, Vector3(10, 0, 0));
        belt = yard.put<ConveyorCore>();
        belt->set_src(source);
        belt->set_dst(target);
        belt->set_kinds(list({"egg"}));
        belt->core_join(path(10), nullptr);
        belt->set_process(false);
    }
    static Array list(std::initializer_list<Variant> values) {
        Array out;
        for (const Variant &v : values) {
            out.push_back(v);
        }
        return out;
    }
    static Array path(double length) { return list({Vector3(), Vector3((real_t)length, 0, 0)}); }
    void run(int steps, double dt = 0.25) {
        for (int i = 0; i < steps; i++) {
            belt->step(dt);
        }
    }
    int there(const char *kind = "egg") const { return Workplace::held(target, kind); }
    int all() const { return source->count() + belt->riding() + target->get_pile()->count(); }
    void expect_offsets(std::initializer_list<double> wanted) const {
        const PackedFloat64Array real = belt->get_offsets();
        ASSERT_EQ(real.size(), (int64_t)wanted.size());
        int64_t i = 0;
        for (double w : wanted) {
            EXPECT_NEAR(real[i], w, 1e-9) << i;
            i++;
        }
    }

    Workplace yard;
    Pile *source = nullptr;
    Ref<Zone> target;
    ConveyorCore *belt = nullptr;
};

} // namespace

TEST_F(Belts, GoodsRideInTheirGapsAndQueueWithoutPushing) {
    Workplace::fill(source, "egg", 10);
    run(1);
    expect_offsets({0});
    run(1);
    expect_offsets({0.5});
    run(1);
    expect_offsets({1.0, 0});
    run(2);
    expect_offsets({2.0, 1.0, 0});
    // A closed zone: no more are fed, those on the belt wait behind the head.
    target->set_active(false);
    run(60);
    expect_offsets({10.0, 9.25, 8.5});
    EXPECT_EQ(all(), 10);
    EXPECT_EQ(source->count(), 7);
    target->set_active(true);
    run(1);
    EXPECT_EQ(there(), 1);
    expect_offsets({9.25, 8.5, 0});
    run(200);
    EXPECT_EQ(there(), 10);
    EXPECT_EQ(belt->riding(), 0);
}

TEST_F(Belts, NoMoreSetsOutThanTheZoneWants) {
    Workplace::fill(source, "egg", 30);
    int most = 0;
    for (int i = 0; i < 400; i++) {
        run(1, 1.0 / 60);
        most = std::max(most, belt->riding() + there());
    }
    run(400);
    EXPECT_LE(most, 20);
    EXPECT_EQ(there(), 20);
    EXPECT_EQ(source->count(), 10);
}

TEST_F(Belts, TheKindWantedMostGoesFirstAndTiesToTheEarlier) {
    Dictionary accepts;
    accepts["egg"] = 2;
    accepts["milk"] = 3;
    target->set_accepts(accepts);
    belt->set_kinds(list({"egg", "milk", "wheat"}));
    Workplace::fill(source, "egg", 5);
    Workplace::fill(source, "milk", 5);
    Workplace::fill(source, "wheat", 5);
    target->get_pile()->add(Item::spawn("egg", Vector3()), 0.0);
    run(24); // five steps bring the first to the end, none has arrived before
    std::string seen;
    const Array riding = belt->get_items();
    for (int64_t i = 0; i < riding.size(); i++) {
        seen += FakeFarm::key(Object::cast_to<ItemCore>(riding[i])->get_kind()).substr(0, 1);
    }
    // milk 3, milk 2, then both want 1: egg comes first in the list.
    const std::string whole = std::string("mmem").substr(static_cast<size_t>(4 - riding.size()));
    EXPECT_EQ(seen, whole);
    run(100);
    EXPECT_EQ(there("egg"), 2);
    EXPECT_EQ(there("milk"), 3);
    EXPECT_EQ(there("wheat"), 0);
}

TEST_F(Belts, TwoBeltsCountOnlyTheirOwnGoods) {
    Dictionary accepts;
    accepts["egg"] = 2;
    target->set_accepts(accepts);
    Workplace::fill(source, "egg", 6);
    ConveyorCore *other = yard.put<ConveyorCore>();
    other->set_src(source);
    other->set_dst(target);
    other->set_kinds(list({"egg"}));
    other->core_join(path(10), nullptr);
    other->set_process(false);
    for (int i = 0; i < 100; i++) {
        belt->step(0.25);
        other->step(0.25);
    }
    EXPECT_EQ(there(), 2);
    EXPECT_EQ(belt->riding() + other->riding(), 2); // offered more than the room, and held back
    EXPECT_EQ(source->count(), 2);
}

TEST_F(Belts, AfterItsTimeTheHeadIsPushedIn) {
    Workplace::fill(source, "egg", 2);
    belt->set_force_after(1.0);
    run(4);
    ASSERT_EQ(belt->riding(), 2);
    Dictionary full;
    full["egg"] = 0;
    target->set_accepts(full);
    run(17); // the head comes to the end with this step, and its time begins
    expect_offsets({10.0, 9.0});
    EXPECT_DOUBLE_EQ(belt->get_force_clock(), 0.25);
    run(2);
    EXPECT_EQ(there(), 0);
    run(1);
    EXPECT_EQ(there(), 1);
    EXPECT_EQ(belt->get_force_clock(), 0.0);
    // What the zone does not take at all, and a zone that is off, are never forced.
    target->set_accepts(Dictionary());
    run(40);
    target->set_accepts(full);
    target->set_active(false);
    run(40);
    EXPECT_EQ(there(), 1);
    EXPECT_EQ(belt->riding(), 1);
    EXPECT_EQ(belt->get_force_clock(), 0.0);
}

TEST_F(Belts, OffViewOnlyTheOffsetsMove) {
    Workplace::fill(source, "egg", 8);
    Glebworks::set_view(Rect2(300, 300, 10, 10));
    for (int i = 0; i < 14; i++) {
        belt->step(1.0 / 60);
    }
    EXPECT_EQ(belt->riding(), 0); // gathers time
    run(1, 0.05);
    ASSERT_EQ(belt->riding(), 1);
    ItemCore *first = Object::cast_to<ItemCore>(belt->get_items()[0]);
    first->settle();
    const Vector3 start = first->get_global_position();
    run(8);
    expect_near(first->get_global_position(), start);
    EXPECT_GT(belt->get_offsets()[0], 3.9);
    EXPECT_EQ(all(), 8);
    Glebworks::see_everything();
    run(1, 0.0);
    expect_near(first->get_target(), Vector3((real_t)belt->get_offsets()[0], 0.17f, 0));
    EXPECT_EQ(first->get_follow_speed(), 40.0);
    Glebworks::set_view(Rect2(300, 300, 10, 10));
    run(200);
    EXPECT_EQ(there(), 8);
    EXPECT_EQ(all(), 8);
}

TEST_F(Belts, ThePathBendsAndTheLastPieceTakesTheRest) {
    belt->core_join(list({Vector3(), Vector3(3, 0, 0), Vector3(3, 0, -4)}), nullptr);
    EXPECT_DOUBLE_EQ(belt->get_total(), 7.0);
    expect_near(belt->point_at(2), Vector3(2, 0, 0));
    expect_near(belt->point_at(3), Vector3(3, 0, 0));
    expect_near(belt->point_at(5), Vector3(3, 0, -2));
    expect_near(belt->point_at(7), Vector3(3, 0, -4));
}

TEST_F(Belts, HostilePathsSpeedsAndDeathsLoseNothing) {
    Workplace::fill(source, "egg", 12);
    belt->core_join(Array(), nullptr);
    run(10);
    expect_engine_error("a point of its path is no place", 2);
    belt->core_join(list({Vector3(NAN, 0, 0), "here", Vector3()}), nullptr);
    run(10);
    EXPECT_EQ(source->count(), 12);
    // A path without length delivers at once.
    belt->core_join(list({Vector3(1, 0, 0), Vector3(1, 0, 0)}), nullptr);
    run(3);
    EXPECT_EQ(there(), 2);
    belt->core_join(path(10), nullptr);
    for (double bad : {0.0, -3.0, (double)NAN}) {
        belt->set_speed(bad);
        run(20);
        EXPECT_EQ(belt->riding(), 1);
        EXPECT_EQ(belt->get_offsets()[0], 0.0);
    }
    belt->set_speed(2.0);
    run(6, NAN);
    run(6);
    ASSERT_EQ(belt->riding(), 4);
    // A good that is freed on its way leaves the others where they are.
    memdelete(Object::cast_to<ItemCore>(belt->get_items()[1]));
    EXPECT_EQ(belt->riding(), 3);
    expect_offsets({3.0, 1.0, 0});
    // The source goes: the rest still arrives. Then the target's pile goes: it waits.
    const int on_floor = source->count();
    EXPECT_EQ(on_floor, 6);
    memdelete(source);
    run(15);
    EXPECT_EQ(there(), 3);
    memdelete(target->get_pile());
    belt->set_force_after(0.0);
    run(40);
    EXPECT_EQ(belt->riding(), 2);
    EXPECT_EQ(belt->get_src(), nullptr);
}

TEST_F(Belts, ABeltThatIsTakenAwayGivesItsGoodsBack) {
    Workplace::fill(source, "egg", 9);
    run(7);
    ASSERT_EQ(belt->riding(), 4);
    memdelete(belt);
    EXPECT_EQ(source->count(), 9);
    EXPECT_EQ(source->count_kind("egg"), 9);
}

TEST_F(Belts, ScriptsSetABeltUp) {
    Object *node = Object::cast_to<Object>(yard.put<Conveyor>(Vector3(50, 0, 0)));
    node->set("src", source);
    node->set("dst", target);
    node->set("kinds", list({"egg"}));
    node->set("speed", 4.0);
    EXPECT_EQ((double)node->get("speed"), 4.0);
    EXPECT_EQ((double)node->get("spacing"), 0.75);
    EXPECT_EQ((double)node->get("force_after"), -1.0);
    node->call("core_join", path(4), Variant());
    EXPECT_TRUE((bool)node->call("is_processing"));
    EXPECT_EQ((Vector3)node->call("get_global_position"), Vector3()); // stands at the origin whatever its place
    Workplace::fill(source, "egg", 3);
    step_seconds(4);
    EXPECT_EQ(there(), 3);
    EXPECT_EQ(Array(node->get("items")).size(), 0);
}

TEST(SupplyVans, TripsFillTheDepotForFreeAndNoFurther) {
    Workplace yard;
    Pile *pile = yard.put<Pile>();
    pile->set_max_items(10);
    Ref<Zone> zone = Zone::make("give", pile, Vector3(), Vector2(2.6f, 1.6f), "food_depot");
    Dictionary accepts;
    accepts["egg"] = 3;
    accepts["flour"] = 24;
    zone->set_accepts(accepts);
    Array kinds;
    kinds.push_back("egg");
    kinds.push_back("flour");
    SupplyVan *van = SupplyVan::build(pile, zone, kinds);
    yard.farm.ground->add_child(van);
    EXPECT_EQ(static_cast<int64_t>(zone->get_accepts()["egg"]), 24); // at least level x 8 + 16
    EXPECT_EQ(pile->get_max_items(), 48);
    step(2);
    EXPECT_TRUE(van->get_busy());
    EXPECT_TRUE(van->get_model()->is_visible());
    step_seconds(1.7);
    EXPECT_EQ(pile->count_kind("egg"), 8);
    EXPECT_EQ(pile->count_kind("flour"), 8);
    step_seconds(3.1);
    EXPECT_FALSE(van->get_busy());
    EXPECT_FALSE(van->get_model()->is_visible());
    EXPECT_NEAR(van->get_timer(), 17.4, 0.3);
    EXPECT_EQ(yard.farm.money, 0);
    van->set_level(3);
    EXPECT_EQ(pile->get_max_items(), 80);
    for (int i = 0; i < 20; i++) {
        van->drop();
    }
    EXPECT_EQ(pile->count_kind("egg"), 40);
    EXPECT_EQ(pile->count(), 80);
    // Full: it looks again a second later. Then the pile goes in the middle of a trip.
    van->set_timer(0.0);
    step(1);
    EXPECT_FALSE(van->get_busy());
    EXPECT_NEAR(van->get_timer(), 1.0, 1e-9);
    pile->drop("egg", 5);
    step_seconds(1.1);
    EXPECT_TRUE(van->get_busy());
    pile->get_parent()->remove_child(pile);
    memdelete(pile);
    step_seconds(5.0);
    EXPECT_FALSE(van->get_busy());
}

} // namespace tilm
