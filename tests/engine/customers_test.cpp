// Customers as people: labels, bubble, crown, pool; and stalls that are given nonsense.

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>

#include "find_control.h"
#include "shop_kit.h"

namespace tilm {
namespace {

Label3D *face_of(Customer *customer) {
    for (int i = 0; i < customer->get_child_count(); ++i) {
        Label3D *label = Object::cast_to<Label3D>(customer->get_child(i));
        if (label != nullptr && label->get_text() != String() && !label->get_text().begins_with("LV")) {
            return label;
        }
    }
    return nullptr;
}

TEST(Customers, ShowMoodOrderAndMoney) {
    Shop shop;
    Customer *customer = shop.seat("egg", 2);
    Label3D *face = face_of(customer);
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->get_text(), String(":)"));
    EXPECT_EQ(face->get_font_size(), 34);
    EXPECT_EQ(face->get_position().y, 2.25f);
    shop.run(0.1);
    EXPECT_EQ(face->get_position().y, 2.85f); // the order is up
    const std::pair<double, const char *> moods[] = {{30.5, ":|"}, {60.5, ":("}, {3.0, ":)"}};
    for (const auto &[wait, text] : moods) {
        customer->mind()->set_wait(wait);
        shop.run(0.05);
        EXPECT_EQ(face->get_text(), String(text));
    }
    Node3D *bubble = customer->mind()->get_bubble();
    Label3D *number = all_of<Label3D>(bubble)[0];
    MeshInstance3D *cloud = Object::cast_to<MeshInstance3D>(bubble->get_node_or_null(NodePath("Cloud")));
    const Ref<Mesh> plain = cloud->get_mesh();
    EXPECT_EQ(number->get_text(), String("2"));
    customer->receive(Item::spawn("egg", Vector3()));
    EXPECT_EQ(number->get_text(), String("1"));
    EXPECT_EQ(cloud->get_mesh(), plain);
    EXPECT_EQ(bubble->get_scale().x, 1.25f);
    step_seconds(0.2);
    EXPECT_EQ(bubble->get_scale().x, 1.0f);
    customer->receive(Item::spawn("egg", Vector3()));
    EXPECT_EQ(number->get_text(), String("0"));
    EXPECT_NE(cloud->get_mesh(), plain);
    shop.stall->_process(FRAME);
    EXPECT_TRUE(customer->mind()->get_leaving());
    EXPECT_FALSE(bubble->is_visible());
    EXPECT_EQ(face->get_text(), String("+$8"));
    EXPECT_EQ(face->get_font_size(), 64);
    const Array way = customer->get_path();
    ASSERT_EQ(way.size(), 2);
    EXPECT_EQ(Vector3(way[0]), Vector3(12.3f, 0, customer->get_position().z + 0.6f));
    EXPECT_EQ(Vector3(way[1]), Vector3(12.3f, 0, 24));
    step_seconds(1.0);
    EXPECT_NEAR(face->get_scale().x, 0.01, 1e-4);

    shop.run(12.0);
    ASSERT_EQ(customer->get_parent(), nullptr);
    Customer *again = shop.seat("egg", 3, true);
    ASSERT_EQ(again, customer);
    EXPECT_EQ(face->get_text(), String(":)"));
    EXPECT_EQ(face->get_font_size(), 56);
    EXPECT_EQ(face->get_scale().x, 1.0f);
    EXPECT_EQ(number->get_text(), String("5"));
    EXPECT_EQ(cloud->get_mesh(), plain);
    EXPECT_NE(again->get_model()->get_node_or_null(NodePath("Body/Head")), nullptr);
    expect_engine_error("customer set up twice");
    again->setup("milk", 9, false);
    EXPECT_EQ(again->mind()->get_want(), 5);
}

TEST(Customers, EightAreKeptForLater) {
    Shop shop;
    Array pool;
    std::vector<Customer *> all;
    for (int i = 0; i < 10; ++i) {
        Customer *customer = shop.place.put<Customer>();
        customer->setup("egg", 2, false);
        customer->set_pool(pool);
        customer->receive(Item::spawn("egg", Vector3()));
        customer->gone();
        customer->gone(); // twice is once
        all.push_back(customer);
    }
    EXPECT_EQ(pool.size(), 8);
    EXPECT_EQ(all[7]->get_parent(), nullptr);
    EXPECT_EQ(all[0]->get_stack()->count(), 0);
    EXPECT_TRUE(all[8]->is_queued_for_deletion());
    EXPECT_TRUE(all[9]->is_queued_for_deletion());
    for (int i = 0; i < 8; ++i) {
        memdelete(all[static_cast<size_t>(i)]);
    }
}

TEST(Customers, StallsOutlastNonsense) {
    Workplace place;
    Dictionary row;
    row["id"] = "stall_bad";
    row["pos"] = Vector2(5, 4);
    row["product"] = "moon_rock";
    SellCounter *bad = memnew(SellCounter);
    expect_engine_error("stall stall_bad: no good is called \"moon_rock\"");
    EXPECT_FALSE(bad->build(row, &place.farm));
    EXPECT_EQ(place.farm.zones.size(), 0);
    EXPECT_EQ(bad->get_parent(), nullptr);
    row["product"] = "juice";
    Array kinds;
    kinds.push_back("apple_juice");
    kinds.push_back("moon_rock");
    row["products"] = kinds;
    expect_engine_error("it is not sold there");
    ASSERT_TRUE(bad->build(row, &place.farm));
    Glebworks::slow_remove(bad);
    EXPECT_EQ(bad->get_products().size(), 1);
    EXPECT_EQ(Array(bad->zone()->get_accepts().keys()).size(), 1);
    EXPECT_EQ(bad->zone()->room("apple_juice"), 96);
    Array junk;
    junk.push_back(7);
    junk.push_back(Variant());
    expect_engine_error("a product that is no kind is left out", 2);
    bad->set_products(junk);
    EXPECT_EQ(String(bad->get_products()[0]), String("juice"));
    bad->set_level(-100);
    EXPECT_EQ(bad->get_level(), 1);

    Shop shop;
    shop.stock("egg", 3);
    Customer *customer = shop.seat("egg", 4);
    shop.trade(0.2);
    EXPECT_EQ(customer->mind()->get_got(), 1);
    memdelete(shop.stall->get_stock()); // the shelf goes with what lies on it
    EXPECT_EQ(shop.stall->stocked(), 0);
    shop.stall->give(customer);
    shop.trade(1.0);
    EXPECT_EQ(customer->mind()->get_got(), 1);
    customer->mind()->set_wait(91);
    shop.trade(0.1);
    EXPECT_EQ(shop.cash(), 2); // it pays for the one in its hands
    Glebworks::set_view(ELSEWHERE);
    shop.stall->add_ghost("egg", -4, false, 91, false);
    shop.stall->add_ghost("egg", 4, true, 91, false);
    shop.trade(3.0);
    EXPECT_EQ(shop.stall->ghost_count(), 0);
    EXPECT_EQ(shop.cash(), 2);
}

} // namespace
} // namespace tilm
