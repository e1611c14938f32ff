// Single goods: flying, chasing, resting in chunks, leaving them, walking animals.

#include <cmath>

#include "game/actors/item_batch.h"
#include "goods_kit.h"

using namespace godot;

namespace tilm {
namespace {

TEST(Items, KindsBringHeightMeshAndGait) {
    Yard yard;
    Item *milk = Item::spawn("milk", Vector3(1, 0, 2));
    Item *bill = Item::spawn("bill", Vector3());
    Item *odd = Item::spawn("no_such_good", Vector3());
    Item *calf = Item::spawn("calf", Vector3());
    EXPECT_NEAR(milk->get_height(), 0.42, 1e-6);
    EXPECT_NEAR(bill->get_height(), 0.07, 1e-6);
    EXPECT_NEAR(odd->get_height(), 0.3, 1e-6);
    EXPECT_FALSE(milk->get_animal());
    EXPECT_TRUE(calf->get_animal());
    EXPECT_NEAR(calf->get_gait_speed(), 2.4, 1e-9);
    EXPECT_NEAR(calf->get_gait_swing(), 11.0, 1e-9);
    EXPECT_NEAR(calf->get_gait_rate(), 0.45, 1e-9);
    ASSERT_NE(milk->get_mesh_node(), nullptr);
    EXPECT_TRUE(milk->get_mesh_node()->get_mesh().is_valid());
    expect_near(milk->get_global_position(), Vector3(1, 0, 2));
    EXPECT_TRUE(milk->is_set_as_top_level());
}

TEST(Items, FlightArcsLandsExactlyAndGoesToRest) {
    Yard yard;
    Item *egg = Item::spawn("egg", Vector3());
    yard.run(0.1);
    ASSERT_TRUE(egg->is_batched());
    const Vector3 goal(3, 0.5, 4);
    egg->fly_to(goal, 0.5);
    EXPECT_TRUE(egg->is_flying());
    EXPECT_FALSE(egg->is_batched());
    const double d = Vector3().distance_to(goal);
    double highest = 0.0;
    for (int frame = 1; frame <= 29; frame++) {
        yard.run(1.0 / 60.0);
        const double t = frame / 30.0;
        const double y = 0.5 * t + (1.0 + 0.12 * d) * std::sin(M_PI * t);
        expect_near(egg->get_global_position(), Vector3((float)(3 * t), (float)y, (float)(4 * t)), 1e-3);
        highest = std::fmax(highest, egg->get_global_position().y);
        EXPECT_TRUE(egg->in_moving_pool());
        expect_near(yard.batch->written_transform(egg).origin, egg->get_global_position());
        EXPECT_FALSE(egg->get_mesh_node()->is_visible());
    }
    EXPECT_GT(highest, 1.5);
    yard.run(2.0 / 60.0);
    EXPECT_FALSE(egg->is_flying());
    EXPECT_FALSE(egg->is_processing());
    EXPECT_TRUE(egg->is_batched());
    EXPECT_FALSE(egg->in_moving_pool());
    EXPECT_EQ(egg->get_global_position(), goal);
    expect_near(yard.batch->written_transform(egg).origin, goal, 1e-6);
}

TEST(Items, ChaseAndTurnSettleAndEqualTargetsDoNotWake) {
    Yard yard;
    Item *egg = Item::spawn("egg", Vector3());
    egg->set_target(Vector3(1, 0, 0));
    egg->set_target_yaw(3.0);
    yard.run(1.0 / 60.0);
    EXPECT_NEAR(egg->get_global_position().x, 1.0 - std::exp(-22.0 / 60.0), 1e-4);
    yard.run(3.0);
    EXPECT_FALSE(egg->is_processing());
    EXPECT_EQ(egg->get_global_position(), Vector3(1, 0, 0));
    EXPECT_NEAR(egg->get_rotation().y, 3.0, 1e-5);
    egg->set_target(Vector3(1, 0, 0));
    egg->set_target_yaw(3.0 + 2e-5);
    EXPECT_FALSE(egg->is_processing());
    EXPECT_TRUE(egg->is_batched());
    egg->set_target_yaw(-3.0); // 0.28 radians the short way, through pi
    double turned = 0.0;
    double last = 3.0;
    for (int i = 0; i < 120; i++) {
        yard.run(1.0 / 60.0);
        turned += std::fabs(std::remainder(egg->get_rotation().y - last, 2 * M_PI));
        last = egg->get_rotation().y;
    }
    EXPECT_LT(turned, 0.35);
    EXPECT_FALSE(egg->is_processing());
}

TEST(Items, OutsideTheViewAFlightLandsAtOnce) {
    Yard yard;
    Item *egg = Item::spawn("egg", Vector3(100, 0, 0));
    egg->fly_to(Vector3(120, 0, 0), 5.0);
    yard.run(1.0 / 60.0);
    EXPECT_FALSE(egg->is_flying());
    EXPECT_FALSE(egg->is_processing());
    EXPECT_TRUE(egg->is_batched());
    EXPECT_EQ(egg->get_global_position(), Vector3(120, 0, 0));

    Item *inbound = Item::spawn("egg", Vector3(100, 0, 0));
    inbound->fly_to(Vector3(52.9f, 0, 0), 5.0); // within the margin of 3
    yard.run(1.0 / 60.0);
    EXPECT_TRUE(inbound->is_flying());

    Item *hidden = Item::spawn("egg", Vector3(100, 0, 0));
    hidden->set_hide_on_arrival(true);
    yard.run(1.0 / 60.0);
    EXPECT_FALSE(hidden->is_visible());
    EXPECT_FALSE(hidden->get_hide_on_arrival());
    EXPECT_FALSE(hidden->is_batched());
}

TEST(Items, ChunksGoByMeshAndColumnAndStayPacked) {
    Yard yard;
    std::vector<Item *> eggs;
    for (int i = 0; i < 100; i++) {
        eggs.push_back(Item::spawn("egg", Vector3(0.5f + 0.1f * (float)i, 0, 0))); // one column: x 0 to 12
    }
    Item *left = Item::spawn("egg", Vector3(-0.5f, 0, 0));
    Item *milk = Item::spawn("milk", Vector3(1, 0, 0));
    yard.run(0.1);
    EXPECT_EQ(yard.instances(), 102);
    EXPECT_EQ(yard.chunks(), 3);
    EXPECT_EQ(yard.processing(), 0);
    // Leaving from the middle moves the last member into the gap; each must still own its own transform.
    for (int i = 0; i < 100; i += 3) {
        eggs[(size_t)i]->place(eggs[(size_t)i]->get_global_position() + Vector3(0, 5, 0));
    }
    for (Item *egg : eggs) {
        if (egg->is_batched()) {
            expect_near(yard.batch->written_transform(egg).origin, egg->get_global_position(), 1e-6);
        }
    }
    yard.run(0.1);
    EXPECT_EQ(yard.instances(), 102);
    for (Item *egg : eggs) {
        ASSERT_TRUE(egg->is_batched());
        expect_near(yard.batch->written_transform(egg).origin, egg->get_global_position(), 1e-6);
    }
    memdelete(left);
    memdelete(milk);
    EXPECT_EQ(yard.instances(), 100);
    EXPECT_EQ(yard.chunks(), 1);
}

TEST(Items, HiddenGoodsLeaveTheDrawingAndComeBack) {
    Yard yard;
    Item *egg = Item::spawn("egg", Vector3());
    yard.run(0.1);
    egg->set_visible(false);
    EXPECT_EQ(yard.instances(), 0);
    egg->set_visible(true);
    EXPECT_TRUE(egg->is_batched());
    egg->fly_to(Vector3(2, 0, 0), 1.0);
    yard.run(0.1);
    ASSERT_TRUE(egg->in_moving_pool());
    egg->set_visible(false);
    EXPECT_EQ(yard.instances(), 0);
    yard.run(2.0);
    EXPECT_FALSE(egg->is_processing()); // it landed unseen
    EXPECT_EQ(yard.instances(), 0);
    egg->set_visible(true);
    EXPECT_EQ(yard.instances(), 1);
    memdelete(egg->get_mesh_node());
    egg->place(Vector3(1, 0, 0));
    yard.run(0.2);
    EXPECT_EQ(egg->get_mesh_node(), nullptr);
    EXPECT_EQ(yard.instances(), 0);
}

TEST(Items, WithoutABatchGoodsStayNodes) {
    Yard yard;
    Item *egg = Item::spawn("egg", Vector3());
    yard.run(0.1);
    memdelete(yard.batch);
    yard.batch = memnew(ItemBatchCore); // not in the tree
    EXPECT_FALSE(egg->is_batched());
    EXPECT_TRUE(egg->get_mesh_node()->is_visible());
    egg->fly_to(Vector3(1, 0, 0), 0.1);
    yard.run(0.3);
    EXPECT_FALSE(egg->is_processing());
    EXPECT_TRUE(egg->get_mesh_node()->is_visible());
    yard.top->add_child(yard.batch);
}

TEST(Items, AnimalsWalkOnTheirRigAndStandAsAnInstance) {
    Yard yard;
    Item *calf = Item::spawn("calf", Vector3());
    yard.run(0.1);
    ASSERT_TRUE(calf->is_batched());
    calf->fly_to(Vector3(2, 0, 0), 0.25);
    EXPECT_FALSE(calf->is_flying());
    yard.run(1.0 / 60.0);
    EXPECT_NEAR(calf->get_global_position().x, 6.0 / 60.0, 1e-4); // three times the distance a second
    EXPECT_TRUE(calf->get_rig_shown());
    ASSERT_NE(calf->get_rig(), nullptr);
    EXPECT_TRUE(calf->get_rig()->is_visible());
    EXPECT_FALSE(calf->get_mesh_node()->is_visible());
    EXPECT_GE(calf->get_legs().size(), 2);
    yard.run(0.3);
    EXPECT_GT(calf->get_gait_phase(), 0.0);
    EXPECT_LT(std::fabs(std::remainder(calf->get_rotation().y + M_PI / 2, 2 * M_PI)), 0.2); // its front is -z
    yard.run(4.0);
    EXPECT_EQ(calf->get_global_position(), Vector3(2, 0, 0));
    EXPECT_FALSE(calf->is_processing());
    EXPECT_FALSE(calf->get_rig_shown());
    EXPECT_FALSE(calf->get_rig()->is_visible());
    EXPECT_TRUE(calf->is_batched());
}

TEST(Items, RealFramesDriveTheSame) {
    Yard yard;
    ItemBatch *drawer = memnew(ItemBatch);
    memdelete(yard.batch);
    yard.batch = drawer;
    yard.top->add_child(drawer);
    Item *egg = Item::spawn("egg", Vector3());
    Item *hen = Item::spawn("hen", Vector3());
    step(5);
    EXPECT_TRUE(egg->is_batched());
    EXPECT_TRUE(hen->is_batched());
    egg->fly_to(Vector3(2, 0, 0), 0.5);
    hen->fly_to(Vector3(1, 0, 0), 0.5);
    step(15);
    EXPECT_TRUE(egg->in_moving_pool());
    // The drawer pushed after the goods had moved.
    EXPECT_EQ(drawer->written_transform(egg).origin, egg->get_global_position());
    EXPECT_GT(egg->get_global_position().y, 0.5f);
    step_seconds(5.0);
    EXPECT_EQ(yard.processing(), 0);
    EXPECT_EQ(egg->get_global_position(), Vector3(2, 0, 0));
    EXPECT_EQ(hen->get_global_position(), Vector3(1, 0, 0));
    EXPECT_EQ(yard.instances(), 2);
    egg->queue_free();
    step(2);
    EXPECT_EQ(yard.instances(), 1);
}

TEST(Items, BadNumbersAreRefused) {
    Yard yard;
    Item *egg = Item::spawn("egg", Vector3(1, 0, 0));
    for (const char *what : {"a flight to no number", "a target that is no number", "a turn that is no number",
                             "a place that is no number"}) {
        expect_engine_error(what);
    }
    egg->fly_to(Vector3(NAN, 0, 0), 1.0);
    egg->set_target(Vector3(0, INFINITY, 0));
    egg->set_target_yaw(NAN);
    egg->place(Vector3(0, 0, NAN));
    egg->fly_to(Vector3(2, 0, 0), 0.0);
    yard.run(0.05);
    EXPECT_EQ(egg->get_global_position(), Vector3(2, 0, 0));
    egg->fly_to(Vector3(3, 0, 0), -5.0);
    yard.run(0.05);
    EXPECT_EQ(egg->get_global_position(), Vector3(3, 0, 0));
}

TEST(Items, SpawnWithoutARootGivesALooseItem) {
    Yard yard;
    Item::set_items_root(nullptr);
    expect_engine_error("Item::spawn with no World items root");
    Item *egg = Item::spawn("egg", Vector3(1, 2, 3));
    ASSERT_NE(egg, nullptr);
    EXPECT_EQ(egg->get_parent(), nullptr);
    memdelete(egg);
}

} // namespace
} // namespace tilm
