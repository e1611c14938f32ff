// The picture of a remote player: what its record may say, what it carries, how it moves.

#include <limits>

#include "game/actors/ghost.h"
#include "game/actors/pet.h"
#include "game/ports/outfits.h"
#include "staff_kit.h"

using namespace godot;

namespace tilm {
namespace {

constexpr double FRAME = 1.0 / 60.0;

Dictionary record(const Variant &carried) {
    Dictionary m;
    m["c"] = carried;
    return m;
}

int goods_alive() {
    int n = 0;
    for (int i = 0; i < Item::items_root()->get_child_count(); ++i) {
        n += Object::cast_to<Item>(Item::items_root()->get_child(i)) != nullptr ? 1 : 0;
    }
    return n;
}

TEST(Ghosts, CarryWhatTheirTextSaysUpToSixty) {
    Workplace place;
    Ghost *ghost = place.put<Ghost>(Vector3(3, 0, 1));
    StackCore *stack = ghost->get_stack();
    ghost->set_info(record("egg:3,milk:2"));
    EXPECT_EQ(stack->count_kind("egg"), 3);
    EXPECT_EQ(stack->count_kind("milk"), 2);
    const Array before = stack->get_items();
    ghost->set_info(record("milk:4,egg:1,gold:9"));
    EXPECT_EQ(stack->count_kind("egg"), 1);
    EXPECT_EQ(stack->count_kind("milk"), 4);
    EXPECT_EQ(stack->get_items()[0], before[0]); // what stays is not made anew
    ghost->set_info(record("egg:50,milk:50"));
    EXPECT_EQ(stack->count_kind("egg"), 50);
    EXPECT_EQ(stack->count_kind("milk"), 10);
    step(2);
    EXPECT_EQ(goods_alive(), 60);
    ghost->set_info(record(Array())); // no text at all
    EXPECT_EQ(stack->count(), 0);
    ghost->set_info(record("egg:5"));
    place.farm.ground->remove_child(ghost);
    memdelete(ghost);
    step(2);
    EXPECT_EQ(goods_alive(), 0); // its goods went with it
}

TEST(Ghosts, BelieveNothingInARecord) {
    Workplace place;
    Ghost *ghost = place.put<Ghost>();
    Array pets;
    for (const Variant &v : {Variant("cat"), Variant(3), Variant(), Variant("cat"), Variant("dragon"),
                             Variant(String("x").repeat(1000000)), Variant(Dictionary())}) {
        pets.push_back(v);
    }
    Dictionary m;
    m["av"] = 12;
    m["o"] = Array();
    m["cap"] = -7;
    m["pets"] = pets;
    m["hl"] = std::numeric_limits<double>::quiet_NaN();
    m["cl"] = "9";
    m["horse"] = 1;
    m["c"] = String("egg:1,").repeat(500000);
    ghost->set_info(m);
    EXPECT_EQ(ghost->get_stack()->get_capacity(), 1);
    ASSERT_EQ(ghost->get_pets().size(), 2);
    EXPECT_EQ(ghost->get_stack()->count(), 1);
    Pet *cat = Object::cast_to<Pet>(ghost->get_pets()[0]);
    Pet *horse = Object::cast_to<Pet>(ghost->get_pets()[1]);
    EXPECT_TRUE(cat->get_remote());
    EXPECT_EQ(horse->get_horse_lv(), 1);
    EXPECT_EQ(horse->get_cart_lv(), 0);
    m["cap"] = static_cast<int64_t>(1) << 60;
    m["hl"] = 3;
    m["cl"] = 2;
    pets.clear();
    pets.push_back("horse");
    ghost->set_info(m);
    ASSERT_EQ(ghost->get_pets().size(), 1);
    EXPECT_EQ(ghost->get_pets()[0], Variant(horse));
    EXPECT_EQ(ghost->get_stack()->total_cap(), 2000 + 60);
    ghost->set_info(Dictionary());
    EXPECT_EQ(ghost->get_pets().size(), 0);
    EXPECT_EQ(ghost->get_stack()->total_cap(), 14);
    const Dictionary read = ghost->parse_carry("egg:99,bill:3,milk:-2,wheat:x");
    EXPECT_EQ(read.size(), 3);
    EXPECT_EQ(static_cast<int>(read["egg"]), 60);
    EXPECT_EQ(static_cast<int>(read["milk"]), 0);
    step(2);
}

TEST(Ghosts, MoveAsTheirSamplesTell) {
    Workplace place;
    Ghost *ghost = place.put<Ghost>();
    Dictionary m;
    Array pets;
    pets.push_back("cat");
    m["pets"] = pets;
    ghost->set_info(m);
    ghost->follow(1.0, FRAME); // nothing is known yet
    EXPECT_EQ(ghost->get_position(), Vector3());
    const double nan = std::numeric_limits<double>::quiet_NaN();
    ghost->add_sample(nan, Vector2(), 0, Vector2());
    ghost->add_sample(1.0, Vector2(static_cast<real_t>(nan), 0), 0, Vector2());
    ghost->add_sample(1.0, Vector2(40, 0), 1.0, Vector2());
    ghost->add_sample(0.5, Vector2(-90, 0), 1.0, Vector2()); // came late
    EXPECT_EQ(ghost->sample_count(), 1);
    ghost->follow(1.0, FRAME); // more than 6 away: it jumps, and the cat with it
    EXPECT_EQ(ghost->get_position(), Vector3(40, 0, 0));
    EXPECT_LT(Object::cast_to<Pet>(ghost->get_pets()[0])->get_global_position().distance_to(Vector3(40, 0, 0)), 2.0);
    ghost->add_sample(2.0, Vector2(45, 0), 1.0, Vector2());
    ghost->follow(2.1, FRAME);
    const double ease = 1 - std::exp(-22.0 * FRAME);
    EXPECT_NEAR(ghost->get_position().x, 40 + 5 * ease, 1e-4);
    EXPECT_NEAR(ghost->get_velocity().x, 5 * ease / FRAME * (1 - std::exp(-12.0 * FRAME)), 1e-3);
    for (int i = 0; i < 100; ++i) {
        ghost->add_sample(3.0 + i, Vector2(45, 0), 0, Vector2());
    }
    EXPECT_LE(ghost->sample_count(), 32);
}

} // namespace
} // namespace tilm
