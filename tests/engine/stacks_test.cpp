// The tower on a carrier, its helper and cart, the herd and the signs.

#include <cmath>

#include "game/actors/stack_carrier.h"
#include "goods_kit.h"

using namespace godot;

namespace tilm {
namespace {

int visible_goods(const StackCore *stack) {
    int n = 0;
    for (const ItemCore *it : stack->list()) {
        n += it->is_visible() ? 1 : 0;
    }
    return n;
}

TEST(Stacks, PlayersStackShowsEightKeepsFourteen) {
    Yard yard;
    StackCarrier *stack = yard.put<StackCarrier>();
    stack->set_capacity(14);
    stack->set_show_limit(8);
    for (int i = 0; i < 14; i++) {
        stack->add(Item::spawn("egg", Vector3(1, 0, 1)));
    }
    yard.run(1.0);
    EXPECT_EQ(stack->count(), 14);
    EXPECT_TRUE(stack->is_full());
    EXPECT_EQ(visible_goods(stack), 8);
    EXPECT_NEAR(stack->top_height(), 8 * 0.3, 1e-5);
    EXPECT_EQ(stack->get_sign_text(), String("14"));
    EXPECT_EQ(yard.instances(), 8);
    // A hidden good appears on top of the tower.
    ItemCore *taken = stack->take("");
    ASSERT_NE(taken, nullptr);
    EXPECT_TRUE(taken->is_visible());
    expect_near(taken->get_global_position(), Vector3(0, 0.95f + 2.4f, -0.55f));
    for (int i = 0; i < 5; i++) {
        memdelete(stack->take("egg"));
    }
    EXPECT_EQ(stack->count(), 8);
    EXPECT_EQ(stack->get_sign_text(), String());
    memdelete(taken);
}

TEST(Stacks, TowerColumnsHeightsAndRest) {
    Yard yard;
    StackCore *stack = yard.put<StackCore>(Vector3(5, 0, 5));
    stack->set_capacity(30);
    EXPECT_EQ(stack->cols(), 3);
    const char *kinds[] = {"egg", "milk", "wheat", "egg", "milk", "wheat", "egg"};
    for (const char *kind : kinds) {
        stack->add(Item::spawn(kind, Vector3(5, 1, 5)));
    }
    EXPECT_NEAR(stack->top_height(), 0.9, 1e-5); // three eggs against two of the others
    yard.run(2.0);
    expect_near(stack->list()[4]->get_global_position(), Vector3(5, 0.95f + 0.42f, 4.45f));
    expect_near(stack->list()[6]->get_global_position(), Vector3(5 - 0.62f, 0.95f + 0.6f, 4.45f));
    EXPECT_EQ(yard.processing(), 0);
    EXPECT_EQ(stack->count_kind("milk"), 2);
    EXPECT_FALSE(stack->has_kind("corn"));
    EXPECT_EQ(stack->take("corn"), nullptr);
    ItemCore *milk = stack->take("milk");
    EXPECT_EQ(stack->list()[4]->get_kind(), String("wheat")); // the newest milk left
    yard.run(2.0);
    expect_near(stack->list()[5]->get_global_position(), Vector3(5 + 0.62f, 0.95f + 0.34f, 4.45f));
    memdelete(milk);
    // Moved aside it lays itself out again; the same side changes nothing.
    stack->set_side(1.0);
    yard.run(2.0);
    expect_near(stack->list()[0]->get_global_position(), Vector3(5 - 0.62f + 1.0f, 0.95f, 4.45f));
    stack->set_side(1.000001);
    yard.run(0.1);
    EXPECT_EQ(yard.processing(), 0);
}

TEST(Stacks, RunningLeansTheTowerAndStoppingRestsIt) {
    Yard yard;
    StackCore *stack = yard.put<StackCore>();
    for (int i = 0; i < 12; i++) {
        stack->add(Item::spawn("egg", Vector3()));
    }
    yard.run(1.0);
    for (int i = 0; i < 60; i++) {
        stack->set_global_position(Vector3(0, 0, -6.0f / 60.0f * (float)i));
        yard.run(1.0 / 60.0);
    }
    EXPECT_NEAR(stack->get_sway().z, 6.0 * 0.035, 0.03);
    EXPECT_GT(stack->list()[0]->get_follow_speed(), stack->list()[11]->get_follow_speed());
    yard.run(4.0);
    EXPECT_LT(stack->get_sway().length(), 0.011);
    EXPECT_EQ(yard.processing(), 0);
    // Out of sight nothing follows.
    stack->set_global_position(Vector3(200, 0, 0));
    yard.run(0.5);
    EXPECT_EQ(stack->get_sway(), Vector3());
    EXPECT_LT(stack->list()[0]->get_global_position().x, 1.0f);
    while (stack->count() > 0) {
        memdelete(stack->take(""));
    }
    yard.run(0.1);
    EXPECT_FALSE(stack->is_processing());
}

TEST(Stacks, HelperDoublesTheRoomUntilItIsFreed) {
    Yard yard;
    StackCarrier *stack = yard.put<StackCarrier>();
    stack->set_capacity(14);
    stack->set_show_limit(8);
    stack->set_cart_cap(10);
    Node3D *horse = yard.put<Node3D>(Vector3(10, 0, 0));
    Node3D *cart = yard.put<Node3D>(Vector3(12, 0, 0));
    stack->set_cart(cart);
    EXPECT_EQ(stack->total_cap(), 14); // a cart without a helper adds nothing
    stack->set_helper(horse);
    EXPECT_EQ(stack->total_cap(), 38);
    stack->set_cart(nullptr);
    EXPECT_EQ(stack->total_cap(), 28);
    for (int i = 0; i < 15; i++) {
        stack->add(Item::spawn("egg", Vector3(1, 0, 0)));
    }
    yard.run(1.5);
    EXPECT_NEAR(stack->list()[14]->get_global_position().x, 10.0 - 0.31, 1e-2);
    EXPECT_TRUE(stack->list()[14]->is_visible());
    for (int i = 15; i < 28; i++) {
        stack->add(Item::spawn("egg", Vector3(1, 0, 0)));
    }
    yard.run(1.5);
    EXPECT_TRUE(stack->is_full());
    EXPECT_EQ(visible_goods(stack), 16); // eight in the arms, eight on the helper
    for (int i = 0; i < 13; i++) {
        memdelete(stack->take(""));
    }
    memdelete(horse);
    EXPECT_EQ(stack->total_cap(), 14);
    EXPECT_EQ(stack->count(), 15);
    EXPECT_TRUE(stack->is_full());
    yard.run(1.0);
    EXPECT_EQ(visible_goods(stack), 8);
}

TEST(Stacks, HerdStandsBehindInRowsWithRopes) {
    Yard yard;
    StackCarrier *stack = yard.put<StackCarrier>();
    for (int i = 0; i < 5; i++) {
        stack->add(Item::spawn("hen", Vector3(0, 0, 1)));
    }
    yard.run(5.0);
    expect_near(stack->list()[0]->get_global_position(), Vector3(-1.5f * 0.34f, 0, 0.7f));
    expect_near(stack->list()[4]->get_global_position(), Vector3((-1.5f + 0.3f) * 0.34f, 0, 1.08f));
    EXPECT_EQ(stack->get_rope_count(), 0);
    EXPECT_EQ(stack->goods_count(), 0);
    EXPECT_EQ(stack->count(), 5);

    stack->add(Item::spawn("calf", Vector3(0, 0, 1)));
    stack->add(Item::spawn("calf", Vector3(0, 0, 1)));
    stack->add(Item::spawn("egg", Vector3(0, 0, 1)));
    yard.run(6.0);
    // One calf is enough for the wide grid; of seven animals six are shown.
    expect_near(stack->list()[0]->get_global_position(), Vector3(-0.62f, 0, 0.95f));
    expect_near(stack->list()[3]->get_global_position(), Vector3(-0.62f * 0.7f, 0, 0.95f + 0.78f));
    EXPECT_EQ(stack->get_rope_count(), 1);
    EXPECT_FALSE(stack->list()[6]->is_visible());
    EXPECT_EQ(stack->get_animal_sign_text(), String("7"));
    EXPECT_EQ(yard.processing(), 0);

    ItemCore *hidden = stack->take("calf");
    EXPECT_TRUE(hidden->is_visible());
    expect_near(hidden->get_global_position(), Vector3());
    memdelete(hidden);
    memdelete(stack->take("calf"));
    yard.run(5.0);
    EXPECT_EQ(stack->get_rope_count(), 0);
    EXPECT_EQ(stack->get_animal_sign_text(), String());
    expect_near(stack->list()[0]->get_global_position(), Vector3(-1.5f * 0.34f, 0, 0.7f));
}

TEST(Stacks, FreedAndForeignItemsNeverStay) {
    Yard yard;
    StackCore *stack = yard.put<StackCore>();
    StackCore *other = yard.put<StackCore>();
    Item *egg = Item::spawn("egg", Vector3());
    stack->add(egg);
    expect_engine_error("that it already holds");
    expect_engine_error("was given no item");
    stack->add(egg);
    stack->add(nullptr);
    EXPECT_EQ(stack->count(), 1);
    other->add(egg); // a good is in one place
    EXPECT_EQ(stack->count(), 0);
    EXPECT_EQ(other->count(), 1);
    memdelete(egg);
    EXPECT_EQ(other->count(), 0);
    Item *milk = Item::spawn("milk", Vector3());
    Array mixed;
    mixed.push_back(milk);
    mixed.push_back(17);
    mixed.push_back(milk);
    stack->set_items(mixed);
    EXPECT_EQ(stack->count(), 1);
    memdelete(stack);
    EXPECT_TRUE(milk->is_inside_tree());
}

} // namespace
} // namespace tilm
