// Every key of the model table: it has a builder, draws something, costs no more than its class may and has its size.

#include <algorithm>
#include <set>
#include <string>

#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>

#include "engine_test.h"
#include "game/art/avatar_models.h"
#include "game/art/canteen_models.h"
#include "game/art/decor.h"
#include "game/art/mesh_baker.h"
#include "game/art/model_keys.h"
#include "game/art/models.h"
#include "game/art/service_models.h"
#include "rules/garden.h"
#include "rules/goods.h"
#include "rules/items.h"

namespace tilm {
namespace {

struct Measure {
    int triangles = 0;
    bool empty = true;
    AABB box;
};

void add_mesh(Measure &m, const Ref<Mesh> &mesh, const Transform3D &place) {
    if (mesh.is_null()) {
        return;
    }
    for (int32_t i = 0; i < mesh->get_surface_count(); i++) {
        const PackedInt32Array indices = mesh->surface_get_arrays(i)[Mesh::ARRAY_INDEX];
        m.triangles += int(indices.size() / 3);
        const AABB box = place.xform(mesh->get_aabb());
        m.box = m.empty ? box : m.box.merge(box);
        m.empty = false;
    }
}

Measure measured(Node3D *root) {
    Measure m;
    TypedArray<Node> all = root->find_children("*", "", true, false);
    all.push_back(root);
    for (int64_t i = 0; i < all.size(); i++) {
        auto *node = Object::cast_to<Node3D>(all[i]);
        if (node == nullptr) {
            continue;
        }
        const Transform3D place = node == root ? Transform3D() : mesh_baker::local_to(node, root);
        if (auto *drawn = Object::cast_to<MeshInstance3D>(node)) {
            add_mesh(m, drawn->get_mesh(), place);
        } else if (auto *many = Object::cast_to<MultiMeshInstance3D>(node)) {
            add_mesh(m, many->get_multimesh()->get_mesh(), place);
        }
    }
    return m;
}

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
        const Measure m = measured(node);
        const ModelLimits &limits = limits_of(key.family->group);
        EXPECT_FALSE(m.empty) << name << " draws nothing";
        EXPECT_GT(m.triangles, 0) << name;
        EXPECT_LE(m.triangles, limits.triangles) << name;
        EXPECT_GE(m.box.size.y, limits.lowest) << name;
        EXPECT_LE(m.box.size.y, limits.highest) << name;
        EXPECT_LE(std::max(m.box.size.x, m.box.size.z), limits.widest) << name;
        if (key.family->group == ModelClass::good || key.family->group == ModelClass::money) {
            const float layer = rules::item_height(narrow(key.name));
            EXPECT_NEAR(m.box.size.y, layer, layer * 0.45f + 0.06f) << name;
        }
        if (key.family->group == ModelClass::building || key.family->group == ModelClass::person) {
            EXPECT_NEAR(m.box.position.y, 0, 0.2) << name << " does not stand on the ground";
        }
        memdelete(node);
    }
    expect_engine_error("no model of the key");
    EXPECT_EQ(Models::model("castle"), nullptr);
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
