// Zones, claims, the player's hand at a zone, the slow and timed lists, squares.

#include <godot_cpp/classes/ref_counted.hpp>

#include "game/actors/pickup.h"
#include "game/actors/pile.h"
#include "game/actors/zone.h"
#include "goods_kit.h"

using namespace godot;

namespace tilm {
namespace {

Dictionary levels(const char *kind, int n) {
    Dictionary d;
    d[kind] = n;
    return d;
}

TEST(Zones, RoomFollowsLevelsModeAndPile) {
    Yard yard;
    Pile *pile = yard.put<Pile>();
    Ref<Zone> zone = Zone::make("give", pile, Vector3(), Vector2(2.4f, 1.8f), "stall_egg");
    zone->set_accepts(levels("egg", 3));
    EXPECT_EQ(zone->room("egg"), 3);
    EXPECT_EQ(zone->room("milk"), 0);
    for (int i = 0; i < 5; i++) {
        pile->add(Item::spawn("egg", Vector3()), 0.0);
    }
    EXPECT_EQ(zone->room("egg"), -2);
    Array kinds;
    kinds.push_back("milk");
    kinds.push_back("egg");
    EXPECT_FALSE(zone->has_room_for_any(kinds));
    pile->drop("egg", 3);
    EXPECT_TRUE(zone->has_room_for_any(kinds));
    zone->set_active(false);
    EXPECT_EQ(zone->room("egg"), 0);
    zone->set_active(true);
    zone->set_mode("take");
    EXPECT_EQ(zone->room("egg"), 0);
    zone->set_mode("give");
    Dictionary odd;
    odd["egg"] = "many";
    odd["milk"] = 4.0;
    zone->set_accepts(odd);
    EXPECT_EQ(zone->room("egg"), -2);
    EXPECT_EQ(zone->room("milk"), 4);
    expect_engine_error("another word was ignored");
    zone->set_mode("sideways");
    EXPECT_EQ(zone->get_mode(), String("give"));
    memdelete(pile);
    EXPECT_EQ(zone->get_pile(), nullptr);
    EXPECT_EQ(zone->room("milk"), 0);
}

TEST(Zones, PointsAndOrder) {
    Yard yard;
    Pile *pile = yard.put<Pile>();
    Ref<Zone> a = Zone::make("take", pile, Vector3(0, 0, 0), Vector2(2, 2));
    Ref<Zone> b = Zone::make("take", pile, Vector3(1, 0, 0), Vector2(2, 2));
    Ref<Zone> c = Zone::make("take", pile, Vector3(0.5f, 0, 0), Vector2(2, 2));
    c->set_active(false);
    EXPECT_TRUE(a->has_point(Vector3(0.999f, 50, -0.999f)));
    EXPECT_FALSE(a->has_point(Vector3(1.0f, 0, 0))); // the edge is outside
    Array zones;
    zones.push_back(b);
    zones.push_back(c);
    zones.push_back(Variant());
    zones.push_back(a);
    const Array hit = ZoneCore::at(zones, Vector3(0.5f, 0, 0));
    ASSERT_EQ(hit.size(), 2);
    EXPECT_EQ(Object::cast_to<Zone>(hit[0]), b.ptr());
    EXPECT_EQ(Object::cast_to<Zone>(hit[1]), a.ptr());
}

TEST(Zones, ClaimsReplaceReleaseAndDieWithTheirOwner) {
    Yard yard;
    Ref<Zone> zone = Zone::make("give", yard.put<Pile>(), Vector3(), Vector2(1, 1));
    Node3D *one = yard.put<Node3D>();
    Node3D *two = yard.put<Node3D>();
    const uint64_t id1 = one->get_instance_id();
    const uint64_t id2 = two->get_instance_id();
    zone->claim(id1, "egg", 5);
    zone->claim(id2, "egg", 2);
    EXPECT_EQ(zone->claimed("egg", id1), 2);
    EXPECT_EQ(zone->claimed("egg", id2), 5);
    EXPECT_EQ(zone->claimed("egg", 0), 7);
    EXPECT_EQ(zone->claimed("milk", 0), 0);
    zone->claim(id1, "milk", 4); // a claimant holds one claim
    EXPECT_EQ(zone->claimed("egg", 0), 2);
    EXPECT_EQ(zone->claimed("milk", 0), 4);
    zone->release(id1);
    EXPECT_EQ(zone->claimed("milk", 0), 0);
    memdelete(two);
    EXPECT_EQ(zone->claimed("egg", 0), 0);
    EXPECT_EQ(zone->claim_count(), 0);
    zone->claim(id1, "egg", -3);
    EXPECT_EQ(zone->claim_count(), 0);
}

TEST(Zones, ClaimsLapseAfterThreeMinutes) {
    Yard yard;
    Ref<Zone> zone = Zone::make("give", yard.put<Pile>(), Vector3(), Vector2(1, 1));
    zone->claim(1, "egg", 5);
    const int64_t now = ZoneCore::now_msec();
    EXPECT_EQ(zone->claimed_at("egg", 0, now + ZoneCore::claim_msec - 1000), 5);
    EXPECT_EQ(zone->claimed_at("egg", 0, now + ZoneCore::claim_msec + 1), 0);
    EXPECT_EQ(zone->claim_count(), 0);
}

TEST(Hands, OneGoodAZoneAStep) {
    Yard yard;
    Pile *tray = yard.put<Pile>();
    Pile *counter = yard.put<Pile>();
    for (int i = 0; i < 6; i++) {
        tray->add(Item::spawn("egg", Vector3()), 0.0);
    }
    Ref<Zone> take = Zone::make("take", tray, Vector3(), Vector2(2, 2));
    Ref<Zone> give = Zone::make("give", counter, Vector3(), Vector2(2, 2));
    Array zones;
    zones.push_back(give);
    zones.push_back(take);
    StackCore *stack = yard.put<StackCore>();
    stack->set_capacity(3);
    Pickup hand;
    hand.zone_step(zones, Vector3(5, 0, 0), stack);
    EXPECT_EQ(stack->count(), 0);
    for (int i = 0; i < 5; i++) {
        hand.zone_step(zones, Vector3(), stack); // a give zone that accepts nothing takes nothing
    }
    EXPECT_EQ(stack->count(), 3);
    EXPECT_EQ(tray->count(), 3);
    EXPECT_TRUE(hand.stack_full_told());
    give->set_accepts(levels("egg", 2));
    hand.zone_step(zones, Vector3(), stack);
    EXPECT_EQ(counter->count(), 1);
    EXPECT_EQ(stack->count(), 3); // both zones worked in one step
    EXPECT_EQ(tray->count(), 2);
    hand.zones(zones, Vector3(), stack, 0.054);
    EXPECT_EQ(counter->count(), 1);
    hand.zones(zones, Vector3(), stack, 0.002);
    EXPECT_EQ(counter->count(), 2);
    hand.zones(zones, Vector3(), stack, 1e9); // a frame however long stays a handful of steps
    EXPECT_EQ(counter->count(), 2);
    EXPECT_EQ(tray->count() + stack->count() + counter->count(), 6);
}

class Stepper {
public:
    static void step(Node *node, double dt) { steps.push_back({node, dt}); }
    struct Step {
        Node *node;
        double dt;
    };
    static inline std::vector<Step> steps;
};

TEST(SlowList, AQuarterOfTheNodesEachFrameWithTheirOwnTime) {
    Yard yard;
    SlowList list;
    std::vector<Node3D *> nodes;
    for (int i = 0; i < 4; i++) {
        nodes.push_back(yard.put<Node3D>());
        list.add(nodes.back(), &Stepper::step);
    }
    Stepper::steps.clear();
    for (int i = 0; i < 8; i++) {
        list.tick(0.1);
    }
    ASSERT_EQ(Stepper::steps.size(), 8u);
    for (size_t i = 0; i < 8; i++) {
        EXPECT_EQ(Stepper::steps[i].node, nodes[i % 4]);
        EXPECT_NEAR(Stepper::steps[i].dt, i < 4 ? 0.1 * (double)(i + 1) : 0.4, 1e-9);
    }
    nodes.push_back(yard.put<Node3D>());
    list.add(nodes.back(), &Stepper::step);
    Stepper::steps.clear();
    list.tick(0.1);
    EXPECT_EQ(Stepper::steps.size(), 2u);
    // A dead node leaves; the order of the rest is kept and nobody loses time.
    memdelete(nodes[3]);
    yard.top->remove_child(nodes[1]);
    Stepper::steps.clear();
    double total = 0.0;
    for (int i = 0; i < 40; i++) {
        list.tick(0.05);
    }
    EXPECT_EQ(list.count(), 4);
    for (const Stepper::Step &s : Stepper::steps) {
        EXPECT_NE(s.node, nodes[1]); // out of the tree
        total += s.node == nodes[0] ? s.dt : 0.0;
    }
    EXPECT_NEAR(total, 2.0, 0.35);
    list.tick(0.0);
    const size_t before = Stepper::steps.size();
    for (int i = 0; i < 8; i++) {
        list.tick(0.0);
    }
    EXPECT_LE(Stepper::steps.size(), before + 4); // no time, no step
    memdelete(nodes[1]);
}

TEST(SlowList, TimedNodesStepWhenTheirTimeHasCome) {
    Yard yard;
    SlowList list;
    Node3D *node = yard.put<Node3D>();
    list.add(node, &Stepper::step, 0.25);
    Stepper::steps.clear();
    for (int i = 0; i < 100; i++) {
        list.tick_timed(0.01);
    }
    EXPECT_GE(Stepper::steps.size(), 3u);
    EXPECT_LE(Stepper::steps.size(), 4u);
    list.remove(node);
    EXPECT_EQ(list.count(), 0);
}

TEST(SlowList, OwnFrameStepOfAGoodIsReached) {
    Yard yard;
    Item *egg = Item::spawn("egg", Vector3());
    egg->fly_to(Vector3(1, 0, 0), 1.0);
    Glebworks::slow_add(egg);
    EXPECT_FALSE(egg->is_processing());
    Glebworks::slow_tick(0.5);
    EXPECT_NEAR(egg->get_flight_t(), 0.5, 1e-6);
    Glebworks::slow_remove(egg);
    Glebworks::slow_tick(0.5);
    EXPECT_NEAR(egg->get_flight_t(), 0.5, 1e-6);
}

TEST(Ground, SquaresAndView) {
    Yard yard;
    PackedVector3Array squares;
    squares.push_back(Vector3(0, 1, 0)); // x, half, z
    squares.push_back(Vector3(1, 2, 1));
    EXPECT_EQ(Glebworks::square_at(squares, Vector3(0.5f, 9, 0.5f)), 0);
    EXPECT_EQ(Glebworks::square_at(squares, Vector3(1.0f, 0, 0)), 1); // the edge is outside
    EXPECT_EQ(Glebworks::square_at(squares, Vector3(9, 0, 0)), -1);
    EXPECT_EQ(Glebworks::square_at(PackedVector3Array(), Vector3()), -1);
    Glebworks::set_view(Rect2(0, 0, 10, 5));
    EXPECT_TRUE(Glebworks::in_view(Vector3(-2.9f, 0, 7.9f), 3.0));
    EXPECT_FALSE(Glebworks::in_view(Vector3(-3.1f, 0, 0), 3.0));
    Glebworks::set_view(Rect2(10, 5, -10, -5)); // drawn from the other corner
    EXPECT_TRUE(Glebworks::in_view(Vector3(1, 0, 1), 0.0));
}

} // namespace
} // namespace tilm
