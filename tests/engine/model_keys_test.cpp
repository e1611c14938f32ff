// Every key of the model table: it has a builder, draws something, costs no more than its class may and has its size.

#include <algorithm>
#include <set>
#include <string>

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/control.hpp>

#include "engine_test.h"
#include "game/art/avatar_models.h"
#include "game/art/canteen_models.h"
#include "game/art/decor.h"
#include "game/art/model_keys.h"
#include "game/art/models.h"
#include "game/art/service_models.h"
#include "model_measure.h"
#include "rules/garden.h"
#include "rules/goods.h"
#include "rules/items.h"

namespace tilm {
namespace {

std::string narrow(const String &text) {
    return text.utf8().get_data();
}

TEST(ModelKeys, EachHasABuilderWithinTheLimitsOfItsClass) {
    std::set<std::string> seen;
    for (const ModelKey &key : model_keys()) {
        const std::string name = narrow(key.key);
        EXPECT_TRUE(seen.insert(name).second) << name << " is there twice";
        ASSERT_NE(key.family->make, nullptr) << name;
        Node3D *node = Models::model(key.key);
        ASSERT_NE(node, nullptr) << name;
        for (const std::string &fault : faults_of(node, limits_of(key.family->group))) {
            ADD_FAILURE() << name << " is " << fault;
        }
        const Measure m = measured(node);
        if (key.family->group == ModelClass::good || key.family->group == ModelClass::money) {
            const float layer = rules::item_height(narrow(key.name));
            EXPECT_NEAR(m.box.size.y, layer, layer * 0.45f + 0.06f) << name;
        }
        memdelete(node);
    }
    expect_engine_error("no model of the key");
    EXPECT_EQ(Models::model("castle"), nullptr);
}

// What the test above looks for is found.
TEST(ModelKeys, ABadModelIsToldByItsFault) {
    const ModelLimits limits = {ModelClass::building, 20, 0.5f, 2, 3};
    const auto fault_of = [&limits](Node3D *node) {
        const std::vector<std::string> faults = faults_of(node, limits);
        memdelete(node);
        return faults.size() == 1 ? faults[0].substr(0, faults[0].find(':')) : std::to_string(faults.size());
    };
    const auto box = [](const Vector3 &size, const Vector3 &at, int subdivided = 0) {
        Node3D *root = memnew(Node3D);
        const Ref<BoxMesh> mesh = Models::box(size, Color(), at, root)->get_mesh();
        mesh->set_subdivide_depth(subdivided);
        return root;
    };
    EXPECT_EQ(faults_of(nullptr, limits), std::vector<std::string>{"no model"});
    EXPECT_EQ(fault_of(memnew(Node3D)), "no mesh");
    EXPECT_EQ(fault_of(Models::bake("nothing_there", Models::builder([] { return memnew(Node3D); }))), "empty mesh");
    EXPECT_EQ(fault_of(box(Vector3(1, 1, 1), Vector3(0, 0.5f, 0))), "0");
    EXPECT_EQ(fault_of(box(Vector3(1, 1, 1), Vector3(0, 0.5f, 0), 4)), "too many triangles");
    EXPECT_EQ(fault_of(box(Vector3(1, 0.4f, 1), Vector3(0, 0.2f, 0))), "too low");
    EXPECT_EQ(fault_of(box(Vector3(1, 2.1f, 1), Vector3(0, 1.05f, 0))), "too high");
    EXPECT_EQ(fault_of(box(Vector3(1, 1, 3.1f), Vector3(0, 0.5f, 0))), "too wide");
    EXPECT_EQ(fault_of(box(Vector3(1, 1, 1), Vector3(0, 1, 0))), "off the ground");
    EXPECT_EQ(limits_of(ModelClass::good).triangles, 250);
    EXPECT_EQ(limits_of(ModelClass::person).triangles, 1500);
    EXPECT_EQ(limits_of(ModelClass::animal).triangles, 1200);
    EXPECT_EQ(limits_of(ModelClass::building).triangles, 6000);
}

TEST(ModelKeys, TheTableKnowsWhatTheFarmSells) {
    std::set<std::string> keys;
    for (const ModelKey &key : model_keys()) {
        keys.insert(narrow(key.key));
    }
    for (const rules::Good &good : rules::goods()) {
        EXPECT_TRUE(keys.count("item_" + std::string(good.kind))) << good.kind;
    }
    for (const rules::DecorRow &row : rules::decor_rows()) {
        EXPECT_TRUE(keys.count(std::string(row.key))) << row.type;
    }
    // What farms ask for by name.
    for (const char *key : {"trough_corn",        "trough_hay",     "tree",           "tree_pine",
                            "tree_birch",         "mill_sails",     "decor_fountain", "decor_fountain_water",
                            "decor_fountain_jet", "decor_pedestal", "decor_blades",   "hand_egg",
                            "hand_stool",         "veil_hat",       "tool_vet",       "meat_tray",
                            "chicken_tray",       "chicken_piece",  "canteen_meal",   "cook_raw_steak",
                            "cook_done_steak",    "supply_van",     "map_signpost",   "wall_lamp",
                            "road_post",          "heater",         "pharmacy",       "service_carpenter",
                            "worker_homes_8",     "wolf",           "depot",          "trade_box",
                            "zone_plate_28x20",   "home_sleeper",   "ahwa_floor",     "ahwa_kiosk",
                            "ahwa_stock",         "qahwagi_tray_0", "qahwagi_tray_1", "cart_body_1",
                            "cart_wheel_1",       "truck_gold"}) {
        EXPECT_TRUE(keys.count(key)) << key;
    }
    const PackedStringArray avatars = AvatarModels::ids();
    for (int64_t i = 0; i < avatars.size(); i++) {
        EXPECT_TRUE(keys.count("look_avatar_" + narrow(avatars[i]))) << narrow(avatars[i]);
        EXPECT_EQ(String(AvatarModels::look_of(avatars[i])["id"]), avatars[i]);
    }
    EXPECT_EQ(AvatarModels::look_of("nobody"), AvatarModels::look_of(avatars[0]));
}

TEST(Avatars, EveryFaceDrawsWithoutAnError) {
    Control *canvas = memnew(Control);
    canvas->set_size(Vector2(160, 120));
    int drawn = 0;
    // Any builder may stand for the listener: what it returns is not looked at.
    const Callable draw = Models::builder([canvas, &drawn]() -> Node3D * {
        const PackedStringArray avatars = AvatarModels::ids();
        for (int64_t i = 0; i < avatars.size(); i++, drawn++) {
            AvatarModels::draw_face(canvas, AvatarModels::look_of(avatars[i]));
        }
        Dictionary odd;
        odd["skin"] = "no colour";
        odd["hat"] = "crown";
        AvatarModels::draw_face(canvas, odd);
        return nullptr;
    });
    canvas->connect("draw", draw);
    stage()->add_child(canvas);
    step(3);
    EXPECT_EQ(drawn, 14);
    memdelete(canvas);
}

TEST(Venues, NodesThatOthersReachForAreThere) {
    const auto has = [](Node3D *tree, const char *path) {
        const bool found = tree->get_node_or_null(NodePath(path)) != nullptr;
        memdelete(tree);
        return found;
    };
    EXPECT_TRUE(has(Models::model("wall_lamp"), "Bulb"));
    EXPECT_TRUE(has(Models::model("road_post"), "Bulb"));
    EXPECT_TRUE(has(Models::model("brazier"), "Flame"));
    EXPECT_TRUE(has(Models::model("brazier"), "Glow"));
    EXPECT_TRUE(has(Models::model("worker_homes_3"), "Screen"));
    EXPECT_TRUE(has(Models::model("bank"), "Sign"));
    EXPECT_TRUE(has(Models::model("pharmacy"), "NightGlow"));
    EXPECT_TRUE(has(ServiceModels::hut("vet"), "NightGlow"));
    EXPECT_TRUE(has(Models::model("wolf"), "Body/LegBR"));
    EXPECT_TRUE(has(Models::model("tool_vet"), "Needle"));
    for (const char *path : {"Neck/Head/Jaw", "Tail", "LegFL/Low"}) {
        EXPECT_TRUE(has(Models::model("pet_horse"), (std::string("Body/") + path).c_str())) << path;
    }
    Node3D *cut = Models::model("cut_loin");
    EXPECT_EQ(cut->get_name(), StringName("Loin"));
    memdelete(cut);
    // Levels beyond the top wear the top's model.
    Node3D *top = CanteenModels::hall(9);
    EXPECT_EQ(Object::cast_to<MeshInstance3D>(top)->get_mesh()->get_name(), String("canteen_6"));
    memdelete(top);
}

TEST(Gardens, WindmillTurnsAndOnlyTheStatueThrowsAShadow) {
    const Dictionary table = Decor::table();
    ASSERT_EQ(table.size(), 9);
    for (const rules::DecorRow &row : rules::decor_rows()) {
        Node3D *node = Decor::build(row.type.data());
        stage()->add_child(node);
        for (MeshInstance3D *part : mesh_baker::meshes_below(node)) {
            const bool casts = part->get_cast_shadows_setting() != GeometryInstance3D::SHADOW_CASTING_SETTING_OFF;
            EXPECT_EQ(casts, row.type == "statue") << row.type;
        }
        const Measure m = measured(node);
        EXPECT_LE(std::max(m.box.size.x, m.box.size.z) / 2, row.radius * 1.45f) << row.type << " outgrows its ground";
        if (row.type == "windmill") {
            auto *hub = Object::cast_to<Node3D>(node->get_node_or_null(NodePath("hub")));
            ASSERT_NE(hub, nullptr);
            step(30);
            EXPECT_GT(std::abs(hub->get_rotation().z), 0.3);
        }
        memdelete(node);
    }
}

TEST(Gardens, PricesCharmAndRefusalsFollowWhatStands) {
    Array placed;
    const auto place = [&placed](const char *type, double x, double z) {
        Dictionary d;
        d["type"] = type;
        d["x"] = x;
        d["z"] = z;
        placed.push_back(d);
    };
    EXPECT_EQ(Decor::refusal("flowers", placed, 399, false), String("NOT ENOUGH MONEY"));
    EXPECT_EQ(Decor::refusal("flowers", placed, 400, false), String());
    EXPECT_EQ(Decor::refusal("friends", placed, 0, false), String("PLAY WITH FRIENDS TO UNLOCK IT"));
    EXPECT_EQ(Decor::refusal("friends", placed, 0, true), String());
    place("friends", 3, 9);
    EXPECT_EQ(Decor::refusal("friends", placed, 0, true), String("YOU HAVE IT ALREADY"));
    for (int i = 0; i < 10; i++) {
        place("flowers", -90, 9);
    }
    placed.push_back("no decoration");
    EXPECT_EQ(Decor::next_price("flowers", placed), 3730);
    EXPECT_EQ(Decor::charm(placed), 18);
    for (int i = 0; i < 4; i++) {
        place("gazebo", -90, 12);
    }
    EXPECT_EQ(Decor::charm(placed), 50);

    PackedFloat32Array lands;
    lands.push_back(0);
    const Vector3 spot = Decor::find_spot("bench", 3, {}, placed, {}, lands);
    EXPECT_EQ(spot, Vector3(2.5f, 0, 12)) << "the statue stands at the nearest one";
    EXPECT_FALSE(Decor::find_spot("bench", 3, {}, placed, {}, {}).is_finite());
    EXPECT_FALSE(Decor::find_spot("castle", 3, {}, placed, {}, lands).is_finite());
}

} // namespace
} // namespace tilm
