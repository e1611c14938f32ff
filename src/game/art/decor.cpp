#include "game/art/decor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/art/house_parts.h"
#include "game/art/models.h"
#include "game/art/pieces.h"
#include "rules/garden.h"
#include "statics.h"

namespace tilm {
namespace {

using pal::col;
using pieces::Form;
using pieces::Piece;
using shapes::put;

constexpr uint32_t GOLD = 0xffc81f;

Ref<Material> *s_water = nullptr; // what water wears when the farm gives no material of its own
Dictionary *s_table = nullptr;

// clang-format off
constexpr Piece BENCH[] = {
    {Form::box, pal::STONE, {1.7f, 0.06f, 0.9f}, {}, {}},
    {Form::box, pal::STONE_DARK, {0.14f, 0.42f, 0.55f}, {-0.62f, 0.04f, 0.02f}, {}},
    {Form::box, pal::STONE_DARK, {0.14f, 0.42f, 0.55f}, {0.62f, 0.04f, 0.02f}, {}},
    {Form::box, pal::WOOD, {1.6f, 0.09f, 0.20f}, {0, 0.44f, 0.20f}, {}},
    {Form::box, pal::WOOD_LIGHT, {1.6f, 0.09f, 0.20f}, {0, 0.44f, -0.03f}, {}},
    {Form::box, pal::WOOD, {1.6f, 0.20f, 0.09f}, {0, 0.62f, -0.24f}, {-10, 0, 0}},
    {Form::box, pal::WOOD_LIGHT, {1.6f, 0.20f, 0.09f}, {0, 0.88f, -0.29f}, {-10, 0, 0}},
    {Form::box, pal::STONE_DARK, {0.12f, 0.66f, 0.10f}, {-0.62f, 0.42f, -0.30f}, {-10, 0, 0}},
    {Form::box, pal::STONE_DARK, {0.12f, 0.66f, 0.10f}, {0.62f, 0.42f, -0.30f}, {-10, 0, 0}},
};
constexpr Piece LAMP[] = {
    {Form::rod, pal::STONE_DARK, {0.56f, 0.18f, 0.56f}, {}, {}, 0.75f},
    {Form::rod, 0x2f4f46, {0.18f, 2.0f, 0.18f}, {0, 0.15f, 0}, {}, 0.65f},
    {Form::rod, 0x2f4f46, {0.30f, 0.12f, 0.30f}, {0, 0.55f, 0}, {}, 0.6f},
    {Form::rod, 0x2f4f46, {0.20f, 0.18f, 0.20f}, {0, 2.05f, 0}, {}, 1.9f},
    {Form::rod, 0xfff1b0, {0.34f, 0.46f, 0.34f}, {0, 2.22f, 0}, {}, 1.2f},
    {Form::cone, 0x2f4f46, {0.66f, 0.34f, 0.66f}, {0, 2.66f, 0}, {}},
    {Form::ball, GOLD, {0.12f, 0.14f, 0.12f}, {0, 3.02f, 0}, {}},
};
constexpr Piece FOUNTAIN[] = {
    {Form::rod, pal::STONE_DARK, {2.30f, 0.16f, 2.30f}, {}, {}, 0.97f},
    {Form::rod, pal::STONE, {2.10f, 0.36f, 2.10f}, {0, 0.12f, 0}, {}, 1.04f},
    {Form::rod, 0xd0ccc2, {2.24f, 0.12f, 2.24f}, {0, 0.46f, 0}, {}},
    {Form::rod, pal::STONE, {0.56f, 0.95f, 0.56f}, {0, 0.30f, 0}, {}, 0.55f},
    {Form::rod, 0xd0ccc2, {0.40f, 0.22f, 0.40f}, {0, 1.15f, 0}, {}, 2.6f},
    {Form::rod, pal::STONE, {0.24f, 0.4f, 0.24f}, {0, 1.30f, 0}, {}, 0.7f},
    {Form::ball, 0xd0ccc2, {0.26f, 0.28f, 0.26f}, {0, 1.74f, 0}, {}},
};
constexpr Piece FOUNTAIN_WATER[] = {
    {Form::rod, pal::SKY, {1.94f, 0.04f, 1.94f}, {0, 0.55f, 0}, {}},
    {Form::rod, pal::SKY, {0.94f, 0.04f, 0.94f}, {0, 1.34f, 0}, {}},
};
constexpr Piece FOUNTAIN_JET[] = {
    {Form::cone, pal::WHITE, {0.20f, 0.7f, 0.20f}, {0, 0, 0}, {}},
    {Form::cone, pal::SKY, {0.14f, 0.62f, 0.14f}, {0.16f, 0.0f, 0}, {0, 0, -24}},
    {Form::cone, pal::SKY, {0.14f, 0.62f, 0.14f}, {-0.16f, 0.0f, 0}, {0, 0, 24}},
    {Form::cone, pal::SKY, {0.14f, 0.62f, 0.14f}, {0, 0.0f, 0.16f}, {24, 0, 0}},
    {Form::cone, pal::SKY, {0.14f, 0.62f, 0.14f}, {0, 0.0f, -0.16f}, {-24, 0, 0}},
};
constexpr Piece PEDESTAL[] = {
    {Form::post, pal::STONE_DARK, {1.05f, 0.20f, 1.05f}, {}, {}, 0.95f},
    {Form::post, pal::STONE, {0.80f, 0.75f, 0.80f}, {0, 0.18f, 0}, {}, 0.86f},
    {Form::post, 0xd0ccc2, {0.80f, 0.16f, 0.80f}, {0, 0.90f, 0}, {}, 1.1f},
    {Form::box, GOLD, {0.46f, 0.26f, 0.06f}, {0, 0.42f, 0.38f}, {}},
};
// Two people who hold hands, cast in one metal.
constexpr Piece FRIENDS[] = {
    {Form::post, GOLD, {0.20f, 0.62f, 0.18f}, {-0.24f, 1.06f, 0}, {}, 1.4f},
    {Form::ball, GOLD, {0.34f, 0.34f, 0.32f}, {-0.24f, 1.86f, 0}, {}},
    {Form::post, GOLD, {0.20f, 0.54f, 0.18f}, {0.24f, 1.06f, 0}, {}, 1.4f},
    {Form::ball, GOLD, {0.32f, 0.32f, 0.30f}, {0.24f, 1.76f, 0}, {}},
    {Form::rod, GOLD, {0.10f, 0.50f, 0.10f}, {-0.72f, 1.94f, 0}, {0, 0, -138}},
    {Form::rod, GOLD, {0.10f, 0.50f, 0.10f}, {0.72f, 1.86f, 0}, {0, 0, 138}},
    {Form::rod, GOLD, {0.14f, 0.26f, 0.14f}, {-0.13f, 1.42f, 0.06f}, {0, 0, -90}},
    {Form::ball, pal::RED, {0.20f, 0.20f, 0.14f}, {-0.06f, 2.24f, 0}, {}},
    {Form::ball, pal::RED, {0.20f, 0.20f, 0.14f}, {0.08f, 2.24f, 0}, {}},
    {Form::cone, pal::RED, {0.32f, 0.26f, 0.14f}, {0.01f, 2.20f, 0}, {0, 0, 180}},
};
constexpr Piece WINDMILL[] = {
    {Form::rod, pal::STONE_DARK, {2.5f, 0.34f, 2.5f}, {}, {}, 0.94f},
    {Form::rod, 0xe8f0f5, {2.0f, 2.5f, 2.0f}, {0, 0.3f, 0}, {}, 0.62f},
    {Form::rod, pal::BLUE, {1.56f, 0.2f, 1.56f}, {0, 1.5f, 0}, {}, 0.96f},
    {Form::rod, pal::BLUE, {1.5f, 0.3f, 1.5f}, {0, 2.72f, 0}, {}, 0.92f},
    {Form::cone, pal::BLUE, {1.4f, 0.85f, 1.4f}, {0, 3.0f, 0}, {}},
    {Form::box, pal::WOOD, {0.56f, 1.0f, 0.2f}, {0, 0.3f, 0.84f}, {-6, 0, 0}, 0.9f},
    {Form::ball, pal::YELLOW, {0.1f, 0.1f, 0.1f}, {0.15f, 0.8f, 0.94f}, {}},
    {Form::box, pal::SKY, {0.36f, 0.40f, 0.16f}, {0, 1.9f, 0.68f}, {-6, 0, 0}},
    {Form::rod, pal::WOOD_DARK, {0.24f, 0.5f, 0.24f}, {0, 2.55f, 0.5f}, {90, 0, 0}},
};
constexpr Piece GAZEBO[] = {
    {Form::rod, pal::STONE, {3.0f, 0.2f, 3.0f}, {}, {0, 15, 0}, 0.97f},
    {Form::rod, pal::WOOD_LIGHT, {2.7f, 0.08f, 2.7f}, {0, 0.18f, 0}, {0, 15, 0}},
    {Form::rod, pal::TEAL, {3.2f, 0.55f, 3.2f}, {0, 2.15f, 0}, {0, 15, 0}, 0.62f},
    {Form::cone, 0x52c9bd, {2.0f, 0.72f, 2.0f}, {0, 2.68f, 0}, {0, 15, 0}},
    {Form::ball, GOLD, {0.24f, 0.28f, 0.24f}, {0, 3.46f, 0}, {}},
    {Form::rod, pal::WHITE, {3.1f, 0.14f, 3.1f}, {0, 2.06f, 0}, {0, 15, 0}},
    {Form::rod, pal::WOOD, {0.9f, 0.5f, 0.9f}, {0, 0.24f, 0}, {}, 0.8f},
};
// clang-format on

Node3D *flowers_tree() {
    Node3D *at = memnew(Node3D);
    put(at, shapes::loft({{0, 0.86f, 0.86f}, {0.20f, 0.80f, 0.80f}}, 12), pal::STONE, Vector3());
    put(at, shapes::loft({{0.1f, 0.74f, 0.74f}, {0.24f, 0.66f, 0.66f}}, 12), pal::SOIL_DARK, Vector3());
    const uint32_t paints[] = {pal::RED, pal::YELLOW, pal::PINK, pal::WHITE, pal::PURPLE, pal::ORANGE};
    for (int i = 0; i < 13; i++) {
        // One in the middle, then rings of four and eight.
        const float r = i == 0 ? 0.0f : i < 5 ? 0.30f : 0.58f, a = float(i) * (i < 5 ? 1.571f : 0.785f);
        const float tall = 0.62f - r * 0.5f;
        const Vector3 p(r * std::cos(a), 0.2f, r * std::sin(a));
        put(at, shapes::loft({{0, 0.12f, 0.12f}, {tall, 0.03f, 0.03f}}, 5), i % 2 ? pal::LEAF : pal::LEAF_DARK, p);
        put(at, shapes::ball(Vector3(0.17f, 0.12f, 0.17f), 6, 3), paints[(i * 5) % 6], p + Vector3(0, tall, 0),
            Vector3(0, float(i) * 31, 0));
    }
    return at;
}

Node3D *blades_tree() {
    Node3D *at = memnew(Node3D);
    put(at, shapes::ball(Vector3(0.20f, 0.20f, 0.16f), 8, 4), pal::RED, Vector3());
    for (int i = 0; i < 4; i++) {
        Node3D *arm = shapes::joint(at, "Arm", Vector3());
        arm->set_rotation_degrees(Vector3(0, 0, 90.0f * float(i)));
        put(arm, shapes::bevel_box(Vector3(0.11f, 1.5f, 0.09f), 0.02f), pal::WOOD_DARK, Vector3(0, 0.75f, 0));
        put(arm, shapes::bevel_box(Vector3(0.42f, 1.05f, 0.05f), 0.015f, 1.0f), i % 2 ? pal::RED : pal::WHITE,
            Vector3(0.24f, 0.95f, 0.02f));
    }
    return at;
}

Node3D *gazebo_tree() {
    Node3D *at = pieces::tree_of(GAZEBO);
    for (int i = 0; i < 6; i++) {
        const float a = float(i) * 1.0472f + 0.5236f;
        const Vector3 p(1.28f * std::cos(a), 0.18f, 1.28f * std::sin(a));
        put(at, shapes::loft({{0, 0.10f, 0.10f}, {0.2f, 0.075f, 0.075f}, {1.95f, 0.075f, 0.075f}}, 7), pal::WHITE, p);
        // Rails between the posts, the front left open.
        if (i != 1) {
            const float b = a - 0.5236f + 1.0472f;
            const Vector3 middle(1.12f * std::cos(b), 0.72f, 1.12f * std::sin(b));
            const float yaw = 90.0f - b * 57.2958f;
            put(at, shapes::bevel_box(Vector3(1.25f, 0.10f, 0.10f), 0.03f), pal::WHITE, middle, Vector3(0, yaw, 0));
            put(at, shapes::bevel_box(Vector3(1.2f, 0.4f, 0.05f), 0.02f), pal::CREAM, middle - Vector3(0, 0.28f, 0),
                Vector3(0, yaw, 0));
        }
    }
    return at;
}

template <size_t N>
MeshInstance3D *baked(const char *key, const Piece (&rows)[N], bool shadow) {
    const std::span<const Piece> all(rows);
    return Models::bake(key, Models::builder([all] { return pieces::tree_of(all); }), shadow);
}

Ref<Material> water_or(const Ref<Material> &given) {
    if (given.is_valid()) {
        return given;
    }
    if (s_water == nullptr) {
        s_water = new Ref<Material>(Models::color_material(col(pal::SKY), 0.15f));
    }
    return *s_water;
}

void swing(Node3D *node, const char *property, const Variant &there, const Variant &back, double secs) {
    const Ref<Tween> tween = node->create_tween();
    tween->set_loops();
    tween->tween_property(node, NodePath(property), there, secs);
    tween->tween_property(node, NodePath(property), back, secs);
}

void golden(Node3D *statue) {
    // One metal from beak to foot: the rig's mesh is shared with the living hens, so that only this node is painted.
    for (int32_t i = 0; i < statue->get_child_count(); i++) {
        if (auto *drawn = Object::cast_to<GeometryInstance3D>(statue->get_child(i))) {
            drawn->set_material_override(Models::color_material(col(GOLD), 0.35f));
        }
    }
}

std::string narrow(const String &text) {
    return text.utf8().get_data();
}

const rules::DecorRow *row_of(const String &type) {
    return rules::find_decor(narrow(type));
}

} // namespace

void Decor::setup_statics() {
    Statics::on_release([] {
        delete s_water;
        delete s_table;
        s_water = nullptr;
        s_table = nullptr;
    });
}

Dictionary Decor::table() {
    if (s_table == nullptr) {
        s_table = new Dictionary;
        for (const rules::DecorRow &row : rules::decor_rows()) {
            Dictionary d;
            d["name"] = row.name.data();
            d["charm"] = row.charm;
            d["price"] = row.price;
            d["r"] = row.radius;
            d["key"] = row.key.data();
            if (!row.coop.empty()) {
                d["coop"] = row.coop.data();
            }
            (*s_table)[row.type.data()] = d;
        }
    }
    return *s_table;
}

Node3D *Decor::build(const String &type, const Ref<Material> &material) {
    Node3D *root = memnew(Node3D);
    if (type == String("flowers")) {
        root->add_child(Models::bake("decor_flowers", Models::fn_node(&flowers_tree), false));
    } else if (type == String("bench")) {
        root->add_child(baked("decor_bench", BENCH, false));
    } else if (type == String("tree")) {
        MeshInstance3D *tree = Models::any_tree(float(UtilityFunctions::randf()));
        tree->set_scale(Vector3(1.25f, 1.25f, 1.25f));
        tree->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
        root->add_child(tree);
    } else if (type == String("lamp")) {
        root->add_child(baked("decor_lamp", LAMP, false));
    } else if (type == String("fountain")) {
        root->add_child(baked("decor_fountain", FOUNTAIN, false));
        MeshInstance3D *water = baked("decor_fountain_water", FOUNTAIN_WATER, false);
        water->set_material_override(water_or(material));
        root->add_child(water);
        swing(water, "position:y", 0.03, 0.0, 1.1);
        MeshInstance3D *jet = baked("decor_fountain_jet", FOUNTAIN_JET, false);
        jet->set_material_override(water_or(material));
        jet->set_position(Vector3(0, 1.72f, 0));
        root->add_child(jet);
        swing(jet, "scale:y", 1.35, 0.8, 0.6);
    } else if (type == String("statue")) {
        root->add_child(baked("decor_pedestal", PEDESTAL, true));
        Node3D *hen = Models::animal("egg");
        golden(hen);
        hen->set_position(Vector3(0, 1.06f, 0));
        hen->set_rotation_degrees(Vector3(0, 150, 0));
        root->add_child(hen);
    } else if (type == String("friends")) {
        MeshInstance3D *foot = baked("decor_pedestal", PEDESTAL, false);
        const Ref<StandardMaterial3D> tinted = Models::vertex_material()->duplicate();
        tinted->set_albedo(Color::from_string("f48fb1", Color(1, 1, 1)));
        foot->set_material_override(tinted);
        root->add_child(foot);
        root->add_child(baked("decor_friends", FRIENDS, false));
    } else if (type == String("windmill")) {
        root->add_child(baked("decor_windmill", WINDMILL, false));
        Node3D *hub = shapes::joint(root, "hub", Vector3(0, 2.6f, 1.0f));
        hub->add_child(Models::bake("decor_blades", Models::fn_node(&blades_tree), false));
        const Ref<Tween> tween = hub->create_tween();
        tween->set_loops();
        tween->tween_property(hub, NodePath("rotation:z"), 6.283185307, 5.0)->as_relative();
    } else if (type == String("gazebo")) {
        root->add_child(Models::bake("decor_gazebo", Models::fn_node(&gazebo_tree), false));
    } else {
        WARN_PRINT("TILMARCH no decoration of the type " + type.left(40));
    }
    return root;
}

int Decor::count(const String &type, const Array &placed) {
    int n = 0;
    for (int64_t i = 0; i < placed.size(); i++) {
        const Dictionary one = placed[i].get_type() == Variant::DICTIONARY ? Dictionary(placed[i]) : Dictionary();
        n += String(one.get("type", "")) == type ? 1 : 0;
    }
    return n;
}

int64_t Decor::next_price(const String &type, const Array &placed) {
    const rules::DecorRow *row = row_of(type);
    return row == nullptr ? -1 : rules::decor_price(*row, count(type, placed));
}

int Decor::charm(const Array &placed) {
    int sum = 0;
    for (const rules::DecorRow &row : rules::decor_rows()) {
        sum = std::min(rules::CHARM_LIMIT, sum + row.charm * count(row.type.data(), placed));
    }
    return sum;
}

String Decor::refusal(const String &type, const Array &placed, double money, bool earned) {
    const rules::DecorRow *row = row_of(type);
    if (row == nullptr) {
        WARN_PRINT("TILMARCH no decoration of the type " + type.left(40));
        return "NOT ENOUGH MONEY";
    }
    if (!row->coop.empty()) {
        if (!earned) {
            return "PLAY WITH FRIENDS TO UNLOCK IT";
        }
        if (count(type, placed) > 0) {
            return "YOU HAVE IT ALREADY";
        }
    }
    return money < double(next_price(type, placed)) ? "NOT ENOUGH MONEY" : "";
}

Vector3 Decor::find_spot(const String &type, float player_x, const PackedFloat32Array &blocked_x, const Array &placed,
                         const PackedVector2Array &lawn, const PackedFloat32Array &lands) {
    constexpr float NOWHERE = std::numeric_limits<float>::infinity();
    const rules::DecorRow *row = row_of(type);
    if (row == nullptr) {
        return Vector3(NOWHERE, NOWHERE, NOWHERE);
    }
    std::vector<float> blocked, centres;
    std::vector<rules::DecorPlaced> standing;
    std::vector<rules::Vec2> grown;
    for (int64_t i = 0; i < blocked_x.size(); i++) {
        blocked.push_back(blocked_x[i]);
    }
    for (int64_t i = 0; i < lands.size(); i++) {
        centres.push_back(lands[i]);
    }
    for (int64_t i = 0; i < lawn.size(); i++) {
        grown.push_back({float(lawn[i].x), float(lawn[i].y)});
    }
    for (int64_t i = 0; i < placed.size(); i++) {
        const Dictionary one = placed[i].get_type() == Variant::DICTIONARY ? Dictionary(placed[i]) : Dictionary();
        if (const rules::DecorRow *its = row_of(one.get("type", ""))) {
            standing.push_back({{float(double(one.get("x", 0.0))), float(double(one.get("z", 0.0)))}, its->radius});
        }
    }
    const auto spot = rules::decor_spot({blocked, standing, grown}, centres, player_x, row->radius);
    return spot ? Vector3(spot->x, 0, spot->y) : Vector3(NOWHERE, NOWHERE, NOWHERE);
}

} // namespace tilm
