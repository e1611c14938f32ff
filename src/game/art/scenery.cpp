#include "game/art/scenery.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/plane_mesh.hpp>

#include "game/art/art_materials.h"
#include "game/art/art_state.h"
#include "game/art/farm_light.h"
#include "game/art/farmhouse_model.h"
#include "game/art/house_parts.h"
#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm {
namespace {

using pal::col;
using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;
using shapes::rnd;

constexpr float BEDS_Z = 2.95f;   // from the farmhouse's middle
constexpr float FAR_TEXT = 70.0f; // words that belong to the land are read from afar

Label3D *land_text(const String &text, int size, const Color &color, const Vector3 &pos, Node *parent, int outline) {
    Label3D *label = Models::label3d(text, size, color, pos, parent, false, outline);
    label->set_visibility_range_end(FAR_TEXT);
    return label;
}

// The border between lands: stout posts, three rails, a cap on each post.
Node3D *region_fence(float length) {
    Node3D *at = memnew(Node3D);
    const int spans = std::max(1, int(std::lround(length / 1.86f)));
    const float pitch = length / float(spans);
    for (int i = 0; i <= spans; i++) {
        const float z = -length / 2 + pitch * float(i);
        const float tall = rnd(201, i, 1.0f, 1.12f);
        put(at, loft({{0, 0.15f, 0.15f}, {tall, 0.13f, 0.13f}}, 8, 0.8f),
            pal::tone(pal::WOOD, rnd(202, i, -0.1f, 0.06f)), Vector3(0, 0, z), Vector3(0, rnd(203, i, -8, 8), 0));
        // Hewn tops, no paler than the rails: a row of white caps would be the first thing one sees of a farm.
        put(at, loft({{0, 0.15f, 0.15f}, {0.04f, 0.15f, 0.15f}, {0.11f, 0.05f, 0.05f}}, 8, 0.8f),
            pal::tone(pal::WOOD_LIGHT, rnd(212, i, 0.05f, 0.16f)), Vector3(0, tall, z));
        if (i == spans) {
            break;
        }
        for (int rail = 0; rail < 3; rail++) {
            put(at, bevel_box(Vector3(0.10f, 0.16f, pitch + 0.1f), 0.03f),
                pal::tone(pal::WOOD_LIGHT, rnd(204 + rail, i, -0.08f, 0.10f)),
                Vector3(0.02f * float(rail % 2), 0.24f + 0.30f * float(rail), z + pitch / 2),
                Vector3(rnd(208 + rail, i, -1.2f, 1.2f), 0, 0));
        }
        if (i % 4 == 2) {
            house_parts::bush(at, Vector3(rnd(211, i, -0.3f, 0.3f), 0, z + pitch / 2), rnd(212, i, 0.35f, 0.5f),
                              col(i % 8 == 2 ? pal::LEAF : pal::LEAF_DARK), i);
        }
    }
    return at;
}

Node3D *bench_tree() {
    Node3D *at = memnew(Node3D);
    for (const float x : {-0.75f, 0.75f}) {
        put(at, bevel_box(Vector3(0.14f, 0.46f, 0.5f), 0.03f), pal::STONE_DARK, Vector3(x, 0.23f, 0));
        put(at, bevel_box(Vector3(0.14f, 0.95f, 0.12f), 0.03f), pal::STONE_DARK, Vector3(x, 0.55f, -0.26f),
            Vector3(10, 0, 0));
    }
    for (int i = 0; i < 3; i++) {
        put(at, bevel_box(Vector3(1.9f, 0.08f, 0.16f), 0.03f), pal::tone(pal::WOOD_LIGHT, rnd(221, i, -0.06f, 0.06f)),
            Vector3(0, 0.48f, -0.16f + 0.18f * float(i)));
    }
    for (int i = 0; i < 2; i++) {
        put(at, bevel_box(Vector3(1.9f, 0.17f, 0.08f), 0.03f), pal::WOOD,
            Vector3(0, 0.72f + 0.22f * float(i), -0.26f + 0.035f * float(i)), Vector3(10, 0, 0));
    }
    return at;
}

Node3D *sign_tree() {
    Node3D *at = memnew(Node3D);
    for (const float x : {-1.2f, 1.2f}) {
        put(at, loft({{0, 0.12f, 0.12f}, {1.75f, 0.09f, 0.09f}, {1.86f, 0, 0}}, 7, 0.5f), pal::WOOD_DARK,
            Vector3(x, 0, 0));
        house_parts::bush(at, Vector3(x * 1.05f, 0, 0.15f), 0.3f, col(pal::LEAF), int(x * 10));
    }
    put(at, bevel_box(Vector3(2.9f, 0.82f, 0.16f), 0.06f), pal::WOOD_LIGHT, Vector3(0, 1.15f, 0.05f),
        Vector3(-32, 0, 0));
    put(at, bevel_box(Vector3(2.65f, 0.58f, 0.18f), 0.05f), pal::WOOD, Vector3(0, 1.16f, 0.065f), Vector3(-32, 0, 0));
    house_parts::flowers(at, Vector3(0, 0, 0.3f), 0.9f, 8, 9);
    house_parts::lantern(at, Vector3(1.2f, 1.86f, 0), 0.9f);
    return at;
}

// Trodden earth: one strip with wavering edges and a darker rim. Patches side by side would look like scales.
void trodden(Node3D *at, const Vector2 &size, const Vector3 &pos, int seed) {
    const int steps = std::max(14, int(size.y / 0.5f));
    for (const float rim : {0.09f, 0.0f}) {
        // Denser towards the ends, which are round.
        const auto along = [&](int i) { return std::sin(1.5708f * (float(i) / float(steps) * 2.0f - 1.0f)); };
        const auto edge = [&](int i, int side) {
            const float t = along(i);
            const float wave =
                0.10f * std::sin(t * size.y * 0.62f + 2.1f * float(side)) + 0.04f * rnd(seed + side, i, -1.0f, 1.0f);
            const float end = std::sqrt(std::max(0.0f, 1.0f - std::pow(std::fabs(t), 2.0f * size.y / size.x)));
            return (size.x * 0.45f * (1.0f + wave) + rim) * end;
        };
        std::vector<Vector2> outline;
        const float half = size.y / 2 + rim;
        for (int i = 0; i <= steps; i++) {
            outline.emplace_back(edge(i, 0), half * along(i));
        }
        for (int i = steps - 1; i > 0; i--) {
            outline.emplace_back(-edge(i, 1), half * along(i));
        }
        put(at, shapes::extrude(outline, 0.012f), rim > 0 ? pal::col(0xb3935f) : pal::col(0xcfae78),
            pos + Vector3(0, rim > 0 ? -0.006f : 0.006f, 0), Vector3(-90, 0, 0));
    }
}

// Round a house that stands at the origin with its door to +z; nothing but flowers where one walks to the door.
Node3D *homestead_tree() {
    Node3D *at = memnew(Node3D);
    // Trodden earth from the door to the road side, flat stones on it.
    trodden(at, Vector2(1.75f, 3.9f), Vector3(-0.75f, 0.008f, 3.5f), 251);
    for (int i = 0; i < 5; i++) {
        const float z = 2.1f + 0.72f * float(i);
        put(at, loft({{0, 0.30f, 0.22f}, {0.03f, 0.26f, 0.18f}}, 7), pal::tone(0xdcc49a, rnd(254, i, -0.06f, 0.06f)),
            Vector3(-0.75f + (i % 2 ? 0.28f : -0.22f), 0.018f, z), Vector3(0, rnd(255, i, 0, 90), 0));
    }
    // Wood pile against the west wall, a chopping block with its axe.
    for (int row = 0; row < 3; row++) {
        for (int i = 0; i < 4 - row; i++) {
            const Vector3 end(-3.35f, 0.15f + 0.25f * float(row), -2.0f + 0.30f * (float(i) + 0.5f * float(row)));
            put(at, loft({{-0.42f, 0.14f, 0.14f}, {0.42f, 0.14f, 0.14f}}, 7),
                pal::tone(pal::WOOD, rnd(256, i + 5 * row, -0.1f, 0.1f)), end, Vector3(0, 0, 90));
            put(at, loft({{-0.43f, 0.10f, 0.10f}, {0.43f, 0.10f, 0.10f}}, 7), pal::SAND, end, Vector3(0, 0, 90));
        }
    }
    put(at, loft({{0, 0.3f, 0.3f}, {0.42f, 0.27f, 0.27f}}, 9), pal::WOOD, Vector3(-3.3f, 0, -0.1f));
    put(at, bevel_box(Vector3(0.07f, 0.62f, 0.07f), 0.02f), pal::WOOD_LIGHT, Vector3(-3.22f, 0.68f, -0.1f),
        Vector3(0, 0, -24));
    put(at, bevel_box(Vector3(0.26f, 0.15f, 0.06f), 0.02f), pal::METAL, Vector3(-3.2f, 0.45f, -0.1f),
        Vector3(0, 0, -24));
    // Vegetable beds between the house and the bench.
    for (int bed = 0; bed < 2; bed++) {
        const float x = -3.2f + 1.15f * float(bed);
        put(at, bevel_box(Vector3(1.0f, 0.16f, 0.95f), 0.04f), pal::SOIL, Vector3(x, 0.06f, BEDS_Z));
        put(at, bevel_box(Vector3(1.08f, 0.11f, 1.03f), 0.04f), pal::WOOD, Vector3(x, 0.05f, BEDS_Z));
        for (int i = 0; i < 6; i++) {
            const Vector3 spot(x - 0.30f + 0.30f * float(i % 3), 0.15f, BEDS_Z - 0.22f + 0.44f * float(i / 3));
            put(at, ball(Vector3(0.15f, 0.13f, 0.15f), 7, 3), bed ? pal::LEAF_LIGHT : pal::GREEN, spot);
            if (bed == 0) {
                put(at, ball(Vector3(0.07f, 0.07f, 0.07f), 6, 3), pal::RED, spot + Vector3(0.08f, 0.08f, 0.06f));
            }
        }
    }
    // Mail box and a lantern at the gate.
    put(at, loft({{0, 0.06f, 0.06f}, {0.85f, 0.05f, 0.05f}}, 6), pal::WOOD_DARK, Vector3(0.45f, 0, 3.5f));
    put(at, bevel_box(Vector3(0.32f, 0.28f, 0.5f), 0.1f), pal::BLUE, Vector3(0.45f, 0.98f, 3.5f));
    put(at, bevel_box(Vector3(0.04f, 0.22f, 0.12f), 0.02f), pal::RED, Vector3(0.63f, 1.12f, 3.42f));
    put(at, loft({{0, 0.11f, 0.11f}, {0.15f, 0.07f, 0.07f}, {1.55f, 0.06f, 0.06f}}, 7), pal::WOOD_DARK,
        Vector3(-1.75f, 0, 3.1f));
    house_parts::lantern(at, Vector3(-1.75f, 1.55f, 3.1f), 1.25f);
    house_parts::flowers(at, Vector3(1.1f, 0, 2.95f), 0.5f, 7, 21);
    house_parts::flowers(at, Vector3(-1.75f, 0, 3.15f), 0.35f, 5, 22);
    return at;
}

Node3D *path_tree(const Vector2 &size) {
    Node3D *at = memnew(Node3D);
    trodden(at, size, Vector3(), 231);
    const int steps = std::max(2, int(size.y / 1.1f));
    for (int i = 0; i < steps * 2; i++) {
        const float z = size.y * rnd(235, i, -0.46f, 0.46f);
        const float r = rnd(236, i, 0.16f, 0.3f);
        put(at, loft({{0, r, r * 0.8f}, {0.025f, r * 0.85f, r * 0.68f}}, 7),
            pal::tone(0xdcc49a, rnd(237, i, -0.06f, 0.08f)), Vector3(size.x * rnd(238, i, -0.33f, 0.33f), 0.012f, z),
            Vector3(0, rnd(239, i, 0, 90), 0));
    }
    return at;
}

Node3D *plate_tree(const Vector2 &size) {
    Node3D *at = memnew(Node3D);
    const float x = size.x / 2, z = size.y / 2, w = 0.11f;
    const Color line = col(pal::WHITE);
    put(at, bevel_box(Vector3(size.x - w, 0.02f, size.y - w), 0.008f), pal::tone(pal::GRASS_DEEP, -0.10f),
        Vector3(0, 0.008f, 0));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, bevel_box(Vector3(size.x, 0.03f, w), 0.012f), line, Vector3(0, 0.014f, side * z));
        put(at, bevel_box(Vector3(w, 0.03f, size.y), 0.012f), line, Vector3(side * x, 0.014f, 0));
        put(at, loft({{0, 0.13f, 0.13f}, {0.035f, 0.11f, 0.11f}}, 8), line, Vector3(side * x, 0, z));
        put(at, loft({{0, 0.13f, 0.13f}, {0.035f, 0.11f, 0.11f}}, 8), line, Vector3(side * x, 0, -z));
    }
    return at;
}

Node3D *mat_tree() {
    Node3D *at = memnew(Node3D);
    put(at, loft({{0, 1.0f, 1.0f}, {0.03f, 0.97f, 0.97f}}, 16, 0.85f), pal::WHITE, Vector3(0, -0.005f, 0));
    put(at, loft({{0, 0.89f, 0.89f}, {0.045f, 0.87f, 0.87f}}, 16, 0.85f), 0x3f9d5a, Vector3(0, -0.005f, 0));
    put(at, loft({{0, 0.42f, 0.42f}, {0.055f, 0.42f, 0.42f}}, 14), 0x57b871, Vector3());
    return at;
}

Node3D *pole_tree() {
    Node3D *at = memnew(Node3D);
    put(at, loft({{0, 0.08f, 0.08f}, {1.7f, 0.06f, 0.06f}}, 6), pal::WOOD_DARK, Vector3());
    put(at, bevel_box(Vector3(0.9f, 0.5f, 0.1f), 0.05f), pal::INK, Vector3(0, 1.75f, 0.05f), Vector3(-25, 0, 0));
    put(at, bevel_box(Vector3(1.0f, 0.6f, 0.07f), 0.05f), pal::WOOD_LIGHT, Vector3(0, 1.75f, 0.02f),
        Vector3(-25, 0, 0));
    return at;
}

Node3D *stone_tree(int variant) {
    Node3D *at = memnew(Node3D);
    for (int i = 0; i <= variant % 3; i++) {
        const float r = rnd(241 + variant, i, 0.16f, 0.30f);
        put(at, ball(Vector3(r, r * 0.62f, r * 0.85f), 7, 3),
            pal::tone(pal::STONE, rnd(242 + variant, i, -0.14f, 0.10f)),
            Vector3(0.3f * float(i), r * 0.22f, 0.14f * float(i % 2)), Vector3(0, rnd(243, i + variant, 0, 180), 8));
    }
    return at;
}

} // namespace

Node3D *Scenery::fence(float length) {
    return Models::bake(String("fence_") + String::num_int64(int64_t(std::lround(length * 10))),
                        Models::builder([length]() { return region_fence(length); }));
}

Node3D *Scenery::rail_fence(float length) {
    return Models::bake(String("rail_") + String::num_int64(int64_t(std::lround(length * 10))),
                        Models::builder([length]() {
                            Node3D *at = memnew(Node3D);
                            house_parts::fence_run(at, Vector3(-length / 2, 0, 0), Vector3(length / 2, 0, 0),
                                                   col(pal::WOOD_LIGHT), 0.6f);
                            return at;
                        }));
}

Node3D *Scenery::cover(float x) {
    Node3D *node = memnew(Node3D);
    Ref<BoxMesh> box;
    box.instantiate();
    box->set_size(Vector3(24, 0.05f, 40.2f));
    MeshInstance3D *dark = Models::mesh_instance(box, Color(1, 1, 1), Vector3(x, 0.07f, -13.9f), node, false);
    dark->set_material_override(Models::shader_material(art_shader::COVER)); // (0.08, 0.16, 0.06), 0.45 opaque
    return node;
}

void Scenery::cover_words(Node3D *cover, const String &title, float x) {
    land_text(title, 170, Color(1, 1, 1), Vector3(x, 0.15f, -7), cover, 26);
    land_text("LOCKED", 90, Color::html("ffd54f"), Vector3(x, 0.15f, -3.8f), cover, 18);
}

Node3D *Scenery::farmhouse(int stage) {
    return FarmhouseModel::build(stage);
}

void Scenery::set_farmhouse_stage(Node3D *house, int stage) {
    auto *shown = Object::cast_to<MeshInstance3D>(house);
    Node3D *next = FarmhouseModel::build(stage);
    if (const auto *model = Object::cast_to<MeshInstance3D>(next); shown != nullptr && model != nullptr) {
        shown->set_mesh(model->get_mesh());
    }
    memdelete(next);
}

Node3D *Scenery::homestead() {
    Node3D *yard = memnew(Node3D);
    yard->set_name("Homestead");
    yard->add_child(Models::bake("homestead_yard", Models::fn_node(&homestead_tree)));
    MeshInstance3D *oak = Models::any_tree(0.1f);
    oak->set_position(Vector3(-3.3f, 0, -3.6f));
    oak->set_scale(Vector3(1.35f, 1.35f, 1.35f));
    yard->add_child(oak);
    Node3D *pool = glow_pool(2.6f);
    pool->set_position(Vector3(-1.4f, 0.035f, 3.2f));
    yard->add_child(pool);
    return yard;
}

Node3D *Scenery::glow_pool(float radius) {
    Ref<PlaneMesh> plane = art().glow_plane;
    if (plane.is_null()) {
        plane.instantiate();
        plane->set_size(Vector2(2, 2));
        art().glow_plane = plane;
    }
    MeshInstance3D *pool = memnew(MeshInstance3D);
    pool->set_name("GlowPool");
    pool->set_mesh(plane);
    pool->set_material_override(Models::shader_material(art_shader::GLOW_POOL));
    pool->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    pool->set_scale(Vector3(radius, 1, radius));
    pool->set_visible(FarmLight::night_now());
    pool->add_to_group(FarmLight::NIGHT_GROUP);
    return pool;
}

Node3D *Scenery::bench() {
    return Models::bake("bench", Models::fn_node(&bench_tree));
}

Node3D *Scenery::region_sign() {
    Node3D *node = memnew(Node3D);
    node->add_child(Models::bake("region_sign", Models::fn_node(&sign_tree)));
    Node3D *pool = glow_pool(2.4f);
    pool->set_position(Vector3(1.0f, 0.04f, 0.5f));
    node->add_child(pool);
    return node;
}

void Scenery::sign_words(Node3D *sign, const String &title) {
    Label3D *label = land_text(title, 58, col(pal::CREAM), Vector3(0, 1.24f, 0.17f), sign, 14);
    // Long names shrink to the board; by scale, for each font size draws its glyphs anew.
    label->set_scale(Vector3(1, 1, 1) * (13.0f / float(std::max<int64_t>(title.length(), 13))));
    label->set_rotation_degrees(Vector3(-32, 0, 0));
}

Node3D *Scenery::path_strip(const Vector2 &size) {
    const String key = vformat("path_%d_%d", int64_t(size.x * 10), int64_t(size.y * 10));
    return Models::bake(key, Models::builder([size]() { return path_tree(size); }), false);
}

Node3D *Scenery::zone_plate(const Vector2 &size, const String &text) {
    Node3D *node = memnew(Node3D);
    const String key =
        vformat("zone_plate_%dx%d", int64_t(std::lround(size.x * 10)), int64_t(std::lround(size.y * 10)));
    node->add_child(Models::bake(key, Models::builder([size]() { return plate_tree(size); }), false));
    if (!text.is_empty()) {
        Models::label3d(text, 46, Color(1, 1, 1), Vector3(0, 0.05f, size.y / 2 - 0.34f), node, false, 14);
    }
    return node;
}

Node3D *Scenery::cash_mat() {
    return Models::bake("cash_mat", Models::fn_node(&mat_tree), false);
}

Node3D *Scenery::price_pole() {
    return Models::bake("price_pole", Models::fn_node(&pole_tree));
}

Node3D *Scenery::blob_shadow(float radius) {
    MeshInstance3D *node =
        Models::bake("blob_shadow", Models::builder([]() {
                         Node3D *at = memnew(Node3D);
                         put(at, loft({{0.0f, 1.0f, 1.0f}, {0.006f, 0.9f, 0.9f}}, 14), pal::INK, Vector3());
                         return at;
                     }),
                     false);
    node->set_material_override(Models::color_material(Color(0.10f, 0.12f, 0.18f, 0.22f), 1.0f, true));
    node->set_scale(Vector3(radius, 1, radius));
    return node;
}

Node3D *Scenery::stone(int variant) {
    return Models::bake(String("stone_") + String::num_int64(variant % 3),
                        Models::builder([variant]() { return stone_tree(variant % 3); }), false);
}

} // namespace tilm
