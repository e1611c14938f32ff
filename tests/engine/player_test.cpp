// The farmer: land edges, solids, the MAX! sign, towers, chairs, gear.

#include <limits>

#include <godot_cpp/classes/cpu_particles3d.hpp>
#include <godot_cpp/classes/label3d.hpp>

#include "game/actors/money_stack.h"
#include "game/actors/player.h"
#include "staff_kit.h"

using namespace godot;

namespace tilm {
namespace {

constexpr double FRAME = 1.0 / 60.0;

class Yardman {
public:
    Yardman() {
        player = place.put<Player>();
        player->set_process(false);
    }
    Vector3 walk(const Vector3 &direction, double seconds) {
        player->set_input(direction);
        for (int i = static_cast<int>(std::lround(seconds / FRAME)); i > 0; --i) {
            player->step(FRAME);
        }
        player->set_input(Vector3());
        return player->get_position();
    }
    void put(const Vector3 &p) {
        player->set_position(p);
        player->set_velocity(Vector3());
    }

    Workplace place;
    Player *player;
};

TEST(Players, WalksAtItsPaceAndStopsAtTheEdgeOfTheLand) {
    Yardman yard;
    Player *player = yard.player;
    EXPECT_EQ(player->get_speed(), 6.0);
    EXPECT_EQ(player->get_stack()->get_capacity(), 14);
    EXPECT_EQ(player->get_stack()->get_show_limit(), 8);
    player->set_first_area(Rect2(-11.4f, -31, 22.8f, 36.2f));
    const Vector3 p = yard.walk(Vector3(1, 0, 0), 1.0);
    EXPECT_GT(p.x, 5.3);
    EXPECT_LT(p.x, 6.0);
    player->set_speed_mult(1.5);
    EXPECT_NEAR(yard.walk(Vector3(1, 0, 1), 3.0).x, 11.4, 1e-3);
    EXPECT_NEAR(player->get_position().z, 5.2, 1e-3); // slid along both edges
    yard.walk(Vector3(8, 0, 0), 0.1);                 // a wish longer than 1 is not faster
    EXPECT_LE(player->get_velocity().length(), 9.0 + 1e-3);
    EXPECT_TRUE(player->at_home(Vector3(11.4f, 0, 5.2f)));
    EXPECT_FALSE(player->at_home(Vector3(11.5f, 0, 0)));
}

TEST(Players, KeepsToTheSecondAreaWhenItIsThere) {
    Yardman yard;
    Player *player = yard.player;
    player->set_first_area(Rect2(-10, -10, 20, 20));
    player->set_second_area(Rect2(-60, -10, 20, 20));
    yard.put(Vector3(-41, 0, 0));
    EXPECT_NEAR(yard.walk(Vector3(1, 0, 0), 1.0).x, -40, 1e-3);
    yard.put(Vector3(-9, 0, 0));
    EXPECT_NEAR(yard.walk(Vector3(-1, 0, 0), 1.0).x, -10, 1e-3);
    // Up to 1 beyond the first area belongs to the first, even where the second begins sooner.
    player->set_second_area(Rect2(10.5f, -10, 20, 20));
    yard.put(Vector3(10.9f, 0, 3));
    EXPECT_NEAR(yard.walk(Vector3(), FRAME).x, 10, 1e-4);
    yard.put(Vector3(11.1f, 0, 12));
    EXPECT_NEAR(yard.walk(Vector3(), FRAME).x, 11.1, 1e-4);
    EXPECT_NEAR(player->get_position().z, 10, 1e-4);
    EXPECT_EQ(player->nearest_land(Vector3(50, 0, 0)), Vector3(30.5f, 0, 0));
    player->set_second_area(Rect2());
    yard.put(Vector3(-41, 0, 0));
    EXPECT_NEAR(yard.walk(Vector3(1, 0, 0), FRAME).x, -10, 1e-3);
}

TEST(Players, RemembersHomeWhileItRoams) {
    Yardman yard;
    Player *player = yard.player;
    player->set_first_area(Rect2(-10, -10, 20, 20));
    const real_t inf = std::numeric_limits<real_t>::infinity();
    yard.put(Vector3(30, 0, 0));
    player->set_free_roam(1.0);
    EXPECT_EQ(player->home_point(), Vector3(30, 0, 0)); // never was at home
    yard.put(Vector3(9.5f, 0, 0));
    yard.walk(Vector3(1, 0, 0), 2.0);
    EXPECT_GT(player->get_position().x, 15);
    EXPECT_FALSE(player->at_home(Vector3(inf, inf, inf)));
    EXPECT_LE(player->home_point().x, 10);
    EXPECT_GT(player->home_point().x, 9.4);
    Array far_solids;
    far_solids.push_back(Rect2(25, -5, 4, 10));
    player->set_far_solids(far_solids);
    yard.put(Vector3(22, 0, 0));
    EXPECT_NEAR(yard.walk(Vector3(1, 0, 0), 2.0).x, 24.65, 1e-3);
}

TEST(Players, SlidesRoundSolids) {
    Yardman yard;
    Player *player = yard.player;
    player->add_solid(Rect2(2, -2, 4, 4));
    EXPECT_NEAR(yard.walk(Vector3(1, 0, 0.3f), 0.6).x, 1.65, 1e-3);
    EXPECT_GT(player->get_position().z, 0.3);
    yard.walk(Vector3(1, 0, 0.6f), 3.0);
    EXPECT_GT(player->get_position().x, 6.35); // came round the corner
    // Inside at a corner: out by the nearest edge, and at a tie the left one first.
    yard.put(Vector3(5.9f, 0, 2.2f));
    yard.walk(Vector3(), FRAME);
    EXPECT_NEAR(player->get_position().z, 2.35, 1e-4);
    EXPECT_NEAR(player->get_position().x, 5.9, 1e-4);
    yard.put(Vector3(4, 0, 0));
    yard.walk(Vector3(), FRAME);
    EXPECT_NEAR(player->get_position().x, 1.65, 1e-4);
    const struct {
        Vector3 inside, out;
    } corners[] = {
        {{1.85f, 0, -2.15f}, {1.65f, 0, -2.15f}},                                 // left before top
        {{6.15f, 0, -2.15f}, {6.35f, 0, -2.15f}},                                 // right before top
        {{6.15f, 0, 2.15f}, {6.35f, 0, 2.15f}},                                   // right before bottom
        {{6.05f, 0, -2.2f}, {6.05f, 0, -2.35f}},  {{1.65f, 0, 0}, {1.65f, 0, 0}}, // on the edge is not inside
    };
    for (const auto &corner : corners) {
        yard.put(corner.inside);
        yard.walk(Vector3(), FRAME);
        EXPECT_LT(player->get_position().distance_to(corner.out), 1e-4) << corner.inside.x << " " << corner.inside.z;
    }
    player->set_far_solids(player->get_solids()); // these count only off the land
    player->set_solids(Array());
    player->set_free_roam(1.0);
    yard.put(Vector3(3, 0, 0));
    EXPECT_EQ(yard.walk(Vector3(), FRAME), Vector3(3, 0, 0));
    player->set_first_area(Rect2(-50, -50, 40, 40));
    EXPECT_NEAR(yard.walk(Vector3(), FRAME).x, 1.65, 1e-4);
    expect_engine_error("entry is not a Rect2");
    Array bad;
    bad.push_back("fence");
    player->set_solids(bad);
    EXPECT_TRUE(player->get_solids().is_empty());
}

TEST(Players, CarriesGoodsBesideMoneyAndShowsMax) {
    Yardman yard;
    Player *player = yard.player;
    StackCarrier *stack = player->carrier();
    for (int i = 0; i < 13; ++i) {
        stack->add(Item::spawn("egg", Vector3()));
    }
    yard.walk(Vector3(), 1.0);
    EXPECT_NEAR(stack->get_base().x, 0, 1e-3);
    Label3D *sign = nullptr;
    for (int i = 0; i < player->get_child_count(); ++i) {
        Label3D *label = Object::cast_to<Label3D>(player->get_child(i));
        sign = label != nullptr && label->get_text() == String("MAX!") ? label : sign;
    }
    ASSERT_NE(sign, nullptr);
    EXPECT_FALSE(sign->is_visible());
    player->money_stack()->show_money(500, nullptr, Variant());
    stack->add(Item::spawn("egg", Vector3()));
    yard.walk(Vector3(), FRAME);
    const double ease = 1 - std::exp(-12.0 * FRAME);
    EXPECT_NEAR(stack->get_base().x, -0.31 * ease, 1e-5);
    EXPECT_NEAR(player->money_stack()->get_base().x, 0.31 * ease, 1e-5);
    EXPECT_NEAR(player->money_stack()->get_base().y, 0.98, 1e-5);
    EXPECT_NEAR(sign->get_global_position().y - stack->top_global().y, 0.5 + 0.08 * std::sin(FRAME * 6), 1e-4);
    yard.walk(Vector3(), 2.0);
    EXPECT_NEAR(stack->get_base().x, -0.31, 1e-3);
    EXPECT_NEAR(player->money_stack()->get_base().x, 0.31, 1e-3);
    EXPECT_TRUE(sign->is_visible());
    EXPECT_NEAR(player->get_max_clock(), 2.0 + FRAME, 1e-6);
    stack->set_capacity(30); // three columns, and room again
    yard.walk(Vector3(), 2.0);
    EXPECT_NEAR(player->money_stack()->get_base().x, 0.93, 1e-3);
    EXPECT_FALSE(sign->is_visible());
    EXPECT_EQ(player->get_max_clock(), 0.0);
    stack->set_capacity(14);
    yard.walk(Vector3(), FRAME);
    EXPECT_TRUE(sign->is_visible());
    player->set_max_muted(true);
    yard.walk(Vector3(), FRAME);
    EXPECT_FALSE(sign->is_visible());
    while (stack->count() > 0) {
        stack->take("")->queue_free();
    }
    yard.walk(Vector3(), 2.0);
    EXPECT_NEAR(stack->get_base().x, 0, 1e-3);
    EXPECT_NEAR(player->money_stack()->get_base().x, 0, 1e-3);
}

TEST(Players, SitsUntilItWantsToWalk) {
    Yardman yard;
    Player *player = yard.player;
    Node3D *bench = yard.place.put<Node3D>(Vector3(3, 0, 3));
    player->sit_on(bench, 0.5);
    yard.walk(Vector3(0.1f, 0, 0), 1.0);
    EXPECT_TRUE(player->is_sitting());
    EXPECT_EQ(player->get_position(), Vector3(3, 0, 3));
    EXPECT_NEAR(player->get_model()->get_position().y, 0.5 - 0.72, 1e-3);
    yard.walk(Vector3(1, 0, 0), FRAME);
    EXPECT_FALSE(player->is_sitting());
    EXPECT_NEAR(player->get_position().z, 2.3, 0.01); // in front of the bench
    EXPECT_EQ(player->get_model()->get_position(), Vector3());
    player->sit_on(bench, 0.5);
    memdelete(bench);
    yard.walk(Vector3(), FRAME);
    EXPECT_FALSE(player->is_sitting());
}

TEST(Players, WearsWhatBoostsGive) {
    Yardman yard;
    Player *player = yard.player;
    Array ids;
    ids.push_back("turbo");
    ids.push_back("bag");
    ids.push_back("cash");
    ids.push_back("animals");
    player->wear_boosts(ids);
    EXPECT_EQ(player->worn(), ids);
    EXPECT_NE(player->get_model()->find_child("gear*", true, false), nullptr);
    yard.walk(Vector3(1, 0, 0), 0.5);
    CPUParticles3D *trail = Object::cast_to<CPUParticles3D>(player->get_node_or_null(NodePath("Trail")));
    ASSERT_NE(trail, nullptr);
    EXPECT_TRUE(trail->is_emitting());
    Dictionary look;
    look["shirt"] = "112233";
    player->set_look(look); // other clothes, the same gear
    EXPECT_EQ(player->worn().size(), 4);
    EXPECT_EQ(player->get_stack()->get_capacity(), 14);
    ids.clear();
    player->wear_boosts(ids);
    step(1);
    EXPECT_EQ(player->worn().size(), 0);
    EXPECT_EQ(player->get_model()->find_child("gear*", true, false), nullptr);
    yard.walk(Vector3(), 0.1);
    EXPECT_FALSE(trail->is_emitting());
    expect_engine_error("boost to wear: not a name");
    ids.push_back(3);
    ids.push_back("cash");
    player->wear_boosts(ids);
    const Dictionary gear = player->call("get_gear"); // as a script asks
    EXPECT_EQ(gear.keys(), player->worn());
    const Array signs = gear["cash"];
    Node3D *sign = Object::cast_to<Node3D>(signs[0]);
    ASSERT_NE(sign, nullptr);
    const double clock = player->get_gear_clock();
    yard.walk(Vector3(), FRAME);
    EXPECT_NEAR(sign->get_position().y, 2.75 + 0.07 * std::sin(3 * (clock + FRAME)), 1e-5);
    EXPECT_EQ(sign->get_position().x, 0);
    player->wear_boosts(Array());
}

} // namespace
} // namespace tilm
