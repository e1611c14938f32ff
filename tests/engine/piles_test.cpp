// Ground piles, cash tiles and the money on the back.

#include "farm_items/money_core.h"
#include "game/actors/cash_tile.h"
#include "game/actors/money_stack.h"
#include "game/actors/pickup.h"
#include "game/actors/pile.h"
#include "goods_kit.h"

using namespace godot;

namespace tilm {
namespace {

TEST(Piles, OverTheShowLimitGoodsVanishAndComeBack) {
    Yard yard;
    Pile *pile = yard.put<Pile>(Vector3(2, 0, 3));
    pile->set_cols(4);
    pile->set_rows(2);
    pile->set_show_limit(8);
    for (int i = 0; i < 9; i++) {
        pile->add(Item::spawn("egg", Vector3(0, 1, 0)), 0.3);
    }
    ItemCore *ninth = pile->list()[8];
    expect_near(ninth->get_target(), pile->slot_global(7), 1e-6);
    EXPECT_TRUE(ninth->is_visible());
    yard.run(1.0);
    EXPECT_FALSE(ninth->is_visible());
    EXPECT_EQ(pile->count(), 9);
    EXPECT_EQ(yard.instances(), 8);
    EXPECT_EQ(yard.processing(), 0);
    EXPECT_EQ(pile->get_sign_text(), String("9"));
    // The second oldest is another kind; taking by kind closes the gap and shows the hidden one in its slot.
    ItemCore *taken = pile->take("egg");
    EXPECT_EQ(taken, ninth);
    EXPECT_TRUE(taken->is_visible());
    EXPECT_EQ(pile->get_sign_text(), String());
    memdelete(taken);
    EXPECT_EQ(pile->take("milk"), nullptr);
}

TEST(Piles, CountsFollowEveryWayInAndOut) {
    Yard yard;
    Pile *pile = yard.put<Pile>();
    pile->set_max_items(5);
    const char *kinds[] = {"egg", "milk", "egg", "corn", "egg"};
    for (const char *kind : kinds) {
        pile->add(Item::spawn(kind, Vector3()), 0.0);
    }
    EXPECT_TRUE(pile->is_full());
    EXPECT_EQ(pile->count_kind("egg"), 3);
    EXPECT_EQ(pile->count_kind("nothing_of_the_kind"), 0);
    pile->drop("egg", 2);
    EXPECT_EQ(pile->count_kind("egg"), 1);
    EXPECT_EQ(pile->list()[0]->get_kind(), String("egg")); // the oldest stayed
    pile->drop("egg", 99);
    pile->drop("corn", -1);
    EXPECT_EQ(pile->count(), 2);
    memdelete(pile->list()[0]); // milk, freed behind the pile's back
    EXPECT_EQ(pile->count_kind("milk"), 0);
    EXPECT_EQ(pile->count(), 1);
    Array replaced;
    replaced.push_back(Item::spawn("hay", Vector3()));
    replaced.push_back(Item::spawn("hay", Vector3()));
    pile->set_items(replaced);
    EXPECT_EQ(pile->count(), 2);
    EXPECT_EQ(pile->count_kind("hay"), 0); // counts wait for recount
    pile->recount();
    EXPECT_EQ(pile->count_kind("hay"), 2);
    EXPECT_EQ(pile->count_kind("corn"), 0);
    EXPECT_EQ(pile->get_items().size(), 2);
}

TEST(Piles, GoodsTurnAndStandWithThePile) {
    Yard yard;
    Pile *pile = yard.put<Pile>(Vector3(10, 0, 0));
    pile->set_rotation(Vector3(0, (float)(M_PI / 2), 0));
    pile->set_cols(2);
    pile->set_rows(1);
    pile->set_spacing(Vector2(1, 1));
    pile->set_layer_h(0.5);
    for (int i = 0; i < 3; i++) {
        pile->add(Item::spawn("egg", Vector3(10, 0, 0)), 0.2);
    }
    yard.run(1.5);
    expect_near(pile->list()[0]->get_global_position(), Vector3(10, 0, 0.5f));
    expect_near(pile->list()[2]->get_global_position(), Vector3(10, 0.5f, 0.5f));
    EXPECT_NEAR(pile->list()[0]->get_rotation().y, M_PI / 2, 1e-4);
    EXPECT_NEAR(pile->list()[0]->get_follow_speed(), 25.0, 1e-9);
}

TEST(Piles, FlatPilesCountWhenTheyOverflow) {
    Yard yard;
    Pile *pile = yard.put<Pile>();
    pile->set_flat(true);
    pile->set_cols(2);
    pile->set_rows(2);
    for (int i = 0; i < 6; i++) {
        pile->add(Item::spawn("egg", Vector3()), 0.1);
    }
    EXPECT_EQ(pile->slot_global(5), pile->slot_global(3));
    EXPECT_EQ(pile->get_sign_text(), String("6"));
    pile->set_no_sign(true);
    pile->_count_sign();
    EXPECT_EQ(pile->get_sign_text(), String());
}

TEST(Cash, SixBillsThenTheNewestGrows) {
    Yard yard;
    CashTile *tile = yard.put<CashTile>(Vector3(1, 0, 1));
    tile->add_money(25, 10, Vector3(0, 1, 0));
    EXPECT_EQ(tile->bill_list().size(), 3);
    EXPECT_EQ(tile->bill_list()[2]->get_value(), 5);
    EXPECT_EQ(tile->get_sign_text(), String());
    tile->add_money(1000000, 10, Vector3());
    EXPECT_EQ(tile->bill_list().size(), 6);
    EXPECT_EQ(tile->total(), 1000025);
    EXPECT_EQ(tile->get_sign_text(), String("$1,000,025"));
    tile->add_money(0, 5, Vector3());
    tile->add_money(-40, 5, Vector3());
    tile->add_money(75, 0, Vector3()); // a unit below one counts as one
    EXPECT_EQ(tile->total(), 1000100);
    tile->add_money(INT64_MAX, 1, Vector3());
    EXPECT_EQ(tile->total(), INT64_MAX); // it stops at the top and never turns negative

    Item *bill = tile->take_bill();
    ASSERT_NE(bill, nullptr);
    EXPECT_EQ(tile->bill_list().size(), 5);
    EXPECT_EQ(tile->get_pile()->count(), 5);
    EXPECT_EQ(tile->get_pile()->count_kind("bill"), 5);
    EXPECT_EQ(tile->get_sign_text(), String());
    memdelete(bill);
    memdelete(tile->bill_list()[0]);
    EXPECT_EQ(tile->bill_list().size(), 4);
    EXPECT_EQ(tile->get_pile()->count(), 4);
}

TEST(Cash, QuietMoneyIsLaidOutLater) {
    Yard yard;
    CashTile *tile = yard.put<CashTile>();
    tile->add_quiet(100, 15);
    EXPECT_EQ(tile->bill_list().size(), 1);
    EXPECT_EQ(tile->total(), 100);
    tile->add_quiet(50, 15);
    EXPECT_EQ(tile->bill_list().size(), 1);
    EXPECT_EQ(tile->total(), 150);
    for (int n = 2; n <= 6; n++) {
        tile->settle();
        EXPECT_EQ(tile->bill_list().size(), n);
        EXPECT_TRUE(tile->has_quiet());
        EXPECT_EQ(tile->total(), 150);
    }
    tile->settle();
    EXPECT_EQ(tile->bill_list().size(), 6);
    EXPECT_FALSE(tile->has_quiet());
    EXPECT_EQ(tile->total(), 150);

    CashTile *small = yard.put<CashTile>();
    small->add_quiet(25, 10);
    int calls = 0;
    while (small->has_quiet() && calls < 10) {
        small->settle();
        calls++;
    }
    EXPECT_EQ(small->bill_list().size(), 3); // 5, 10, 10
    EXPECT_EQ(small->total(), 25);
}

TEST(Cash, FiftyBillsASecondFromTilesInReach) {
    Yard yard;
    CashTile *near_tile = yard.put<CashTile>(Vector3(1.25f, 0, 0));
    CashTile *far_tile = yard.put<CashTile>(Vector3(3, 0, 0));
    near_tile->add_money(6, 1, Vector3());
    far_tile->add_money(6, 1, Vector3());
    Array tiles;
    tiles.push_back(near_tile);
    tiles.push_back(far_tile);
    tiles.push_back(Variant());
    EXPECT_EQ(CashCore::near(tiles, Vector3(), 1.25).size(), 1); // just in reach counts
    Pickup pickup;
    int64_t got = 0;
    const auto collect = [&](Item *bill) {
        got += bill->get_value();
        memdelete(bill);
    };
    for (int i = 0; i < 6; i++) {
        pickup.cash_step(tiles, Vector3(), Pickup::reach, 1.0 / 60.0, collect);
    }
    EXPECT_EQ(got, 5); // a tenth of a second
    for (int i = 0; i < 6; i++) {
        pickup.cash_step(tiles, Vector3(), Pickup::reach, 1.0 / 60.0, collect);
    }
    EXPECT_EQ(got, 6);
    pickup.cash_step(tiles, Vector3(), Pickup::magnet_reach, 1.0, collect);
    EXPECT_EQ(got, 12);
    EXPECT_EQ(CashCore::near(tiles, Vector3(), 10).size(), 0);
}

TEST(Money, TowerFollowsTheSumThroughItsTiers) {
    Yard yard;
    MoneyStack *stack = yard.put<MoneyStack>();
    stack->set_base(Vector3(0, 0.98f, 0.62f));
    stack->show_money(100, nullptr, Variant());
    EXPECT_EQ(stack->count(), 19);
    EXPECT_EQ(stack->get_tier(), 0);
    EXPECT_NEAR(stack->list()[0]->get_scale().x, 0.2, 1e-5);
    yard.run(0.5);
    EXPECT_NEAR(stack->list()[0]->get_scale().x, 1.0, 1e-5);
    expect_near(stack->list()[3]->get_global_position(), Vector3(0.17f, 0.98f + 0.07f, 0.62f));
    EXPECT_EQ(yard.processing(), 0);

    Item *bill = Item::spawn("bill", Vector3(4, 0, 4));
    stack->show_money(111, bill, Variant());
    EXPECT_EQ(stack->count(), 21);
    EXPECT_EQ(stack->list()[19], bill); // the first one missing is the given bill

    stack->show_money(4, nullptr, Vector3(9, 0, 9));
    EXPECT_EQ(stack->count(), 4);
    stack->show_money(20000, nullptr, Variant());
    EXPECT_EQ(stack->get_tier(), 2);
    EXPECT_EQ(stack->count(), 10);
    EXPECT_EQ(stack->bars(), 10);
    EXPECT_NEAR(stack->get_tier_h(), 0.16, 1e-6);
    EXPECT_EQ(stack->list()[0]->get_kind(), String("case"));
    yard.run(0.6);
    int leaving = 0;
    int others = 0;
    for (int i = 0; i < yard.items->get_child_count(); i++) {
        (yard.items->get_child(i)->is_queued_for_deletion() ? leaving : others)++;
    }
    EXPECT_EQ(others, 10); // everything that left the tower is on its way out
    EXPECT_EQ(leaving, 21);

    Item *late = Item::spawn("bill", Vector3(4, 0, 4)); // does not fit: flies in and goes
    stack->show_money(0, late, Variant());
    EXPECT_EQ(stack->count(), 0);
    EXPECT_EQ(stack->get_tier(), 2);
    yard.run(0.6);
    EXPECT_TRUE(late->is_queued_for_deletion());
}

} // namespace
} // namespace tilm
