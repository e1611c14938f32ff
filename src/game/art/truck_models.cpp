#include "game/art/truck_models.h"

#include <cmath>

#include <godot_cpp/classes/plane_mesh.hpp>

#include "game/art/art_state.h"
#include "game/art/buildings.h"
#include "game/art/house_parts.h"
#include "game/art/icon_models.h"
#include "game/art/models.h"
#include "game/art/shapes.h"
#include "names.h"

namespace tilm::truck_models {

namespace {

using pal::col;
using pal::tone;
using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;

constexpr uint32_t GOLD = 0xffca28;
constexpr uint32_t BELT = 0x37474f;
constexpr uint32_t RAIL = 0xfbc02d;
constexpr float rail_off = 0.27f;

void wheel(Node3D *at, const Vector3 &place, float size) {
    put(at, loft({{-0.15f, size * 0.94f, size * 0.94f}, {-0.09f, size, size}, {0.15f, size, size}}, 11), pal::INK,
        place, Vector3(0, 0, place.x < 0 ? 90 : -90));
    put(at, loft({{-0.17f, size * 0.5f, size * 0.5f}, {0.18f, size * 0.42f, size * 0.42f}}, 9), pal::METAL, place,
        Vector3(0, 0, place.x < 0 ? 90 : -90));
}

Node3D *truck_tree(const Color &paint, bool crowned) {
    Node3D *at = memnew(Node3D);
    const Color dark = tone(paint, -0.28f);
    const Color light = tone(paint, 0.22f);
    put(at, bevel_box(Vector3(1.3f, 0.22f, 4.1f), 0.05f), pal::STONE_DARK, Vector3(0, 0.52f, 0.05f));
    // Cab, a little too big for its frame.
    put(at, bevel_box(Vector3(1.86f, 0.95f, 1.45f), 0.14f, 0.97f), paint, Vector3(0, 1.0f, -1.35f));
    put(at, bevel_box(Vector3(1.74f, 0.78f, 1.2f), 0.16f, 0.82f), paint, Vector3(0, 1.78f, -1.22f));
    put(at, bevel_box(Vector3(1.5f, 0.14f, 1.06f), 0.06f, 0.9f), light, Vector3(0, 2.2f, -1.2f));
    put(at, bevel_box(Vector3(1.34f, 0.5f, 0.14f), 0.05f), pal::SKY, Vector3(0, 1.76f, -1.8f), Vector3(9, 0, 0));
    put(at, bevel_box(Vector3(0.5f, 0.34f, 0.05f), 0.02f), pal::WHITE, Vector3(-0.3f, 1.84f, -1.87f),
        Vector3(9, 0, -12));
    put(at, bevel_box(Vector3(1.72f, 0.42f, 0.62f), 0.05f), pal::SKY, Vector3(0, 1.74f, -1.22f));
    // Face: grille, lamps, bumper.
    put(at, bevel_box(Vector3(0.96f, 0.36f, 0.12f), 0.05f), dark, Vector3(0, 1.0f, -2.06f));
    for (int i = 0; i < 3; i++) {
        put(at, bevel_box(Vector3(0.84f, 0.05f, 0.08f), 0.02f), pal::METAL, Vector3(0, 0.9f + 0.1f * float(i), -2.11f));
    }
    put(at, bevel_box(Vector3(1.98f, 0.26f, 0.26f), 0.08f), pal::WHITE, Vector3(0, 0.58f, -2.08f));
    for (const float x : {-1.0f, 1.0f}) {
        put(at, ball(Vector3(0.18f, 0.18f, 0.10f), 9, 4), pal::YELLOW, Vector3(x * 0.7f, 1.02f, -2.05f));
        put(at, bevel_box(Vector3(0.14f, 0.3f, 0.2f), 0.05f), dark, Vector3(x * 1.05f, 1.62f, -1.72f));
        put(at, bevel_box(Vector3(0.06f, 0.1f, 0.3f), 0.03f), light, Vector3(x * 0.93f, 1.12f, -1.0f));
        // Mud guards and wheels.
        for (const float z : {-1.32f, 1.1f}) {
            put(at, bevel_box(Vector3(0.36f, 0.16f, 1.02f), 0.07f), dark,
                Vector3(x * 0.83f, 0.88f - (z > 0 ? 0.08f : 0), z));
            wheel(at, Vector3(x * 0.84f, 0.42f, z), 0.42f);
        }
        put(at, bevel_box(Vector3(0.22f, 0.14f, 0.08f), 0.03f), pal::RED, Vector3(x * 0.7f, 0.62f, 2.1f));
    }
    // Flatbed of planks with low sides; the back is open for loading.
    put(at, bevel_box(Vector3(1.94f, 0.12f, 2.62f), 0.04f), pal::WOOD_DARK, Vector3(0, 0.73f, 0.8f));
    for (int i = 0; i < 6; i++) {
        put(at, bevel_box(Vector3(0.29f, 0.07f, 2.54f), 0.02f),
            tone(pal::WOOD_LIGHT, shapes::rnd(71, i, -0.10f, 0.08f)), Vector3(-0.775f + 0.31f * float(i), 0.80f, 0.8f));
    }
    put(at, bevel_box(Vector3(1.96f, 0.72f, 0.12f), 0.05f), dark, Vector3(0, 1.12f, -0.5f));
    for (const float x : {-0.97f, 0.97f}) {
        put(at, bevel_box(Vector3(0.10f, 0.16f, 2.5f), 0.04f), paint, Vector3(x, 0.96f, 0.8f));
        put(at, bevel_box(Vector3(0.10f, 0.12f, 2.5f), 0.04f), light, Vector3(x, 1.2f, 0.8f));
        for (const float z : {-0.35f, 0.8f, 1.95f}) {
            put(at, bevel_box(Vector3(0.15f, 0.56f, 0.15f), 0.03f), pal::WOOD_DARK, Vector3(x, 1.0f, z));
        }
    }
    // Exhaust behind the cab.
    put(at, loft({{0, 0.09f, 0.09f}, {1.25f, 0.09f, 0.09f}, {1.38f, 0.12f, 0.12f}}, 8), pal::METAL,
        Vector3(-0.8f, 1.1f, -0.62f));
    if (crowned) {
        for (int i = 0; i < 5; i++) {
            const float x = -0.5f + 0.25f * float(i);
            put(at, loft({{0, 0.12f, 0.12f}, {i % 2 ? 0.28f : 0.4f, 0, 0}}, 6), pal::YELLOW, Vector3(x, 2.24f, -1.2f));
            put(at, ball(Vector3(0.07f, 0.07f, 0.07f), 7, 4), i % 2 ? pal::RED : pal::PURPLE,
                Vector3(x, 2.26f + (i % 2 ? 0.28f : 0.4f), -1.2f));
        }
        put(at, bevel_box(Vector3(1.24f, 0.12f, 0.3f), 0.04f), pal::ORANGE, Vector3(0, 2.28f, -1.2f));
    }
    return at;
}

Node3D *balloon_tree() {
    Node3D *at = memnew(Node3D);
    const uint32_t paints[] = {pal::TEAL, pal::CREAM};
    // Gores of two colours: each a narrow ball turned about the upright.
    for (int i = 0; i < 8; i++) {
        const float a = float(i) * 0.7854f;
        put(at, ball(Vector3(0.62f, 1.05f, 0.75f), 7, 5), paints[i % 2],
            Vector3(std::cos(a) * 0.5f, 4.1f, std::sin(a) * 0.5f), Vector3(0, -float(i) * 45.0f, 0));
    }
    put(at, ball(Vector3(0.35f, 0.16f, 0.35f), 8, 4), pal::ORANGE, Vector3(0, 5.1f, 0));
    put(at, loft({{0, 0.22f, 0.22f}, {0.5f, 0.55f, 0.55f}}, 9), pal::ORANGE, Vector3(0, 2.75f, 0));
    for (const float x : {-0.6f, 0.6f}) {
        for (const float z : {-0.25f, 1.3f}) {
            const Vector3 low(x, 1.95f, z);
            const Vector3 way = Vector3(x * 0.5f, 3.1f, (z - 0.5f) * 0.5f) - low;
            Node3D *rope = shapes::joint(at, "Rope", low + way * 0.5f);
            rope->set_rotation(Vector3(std::asin((float)way.z / (float)way.length()), 0,
                                       -std::asin((float)way.x / (float)way.length())));
            put(rope, bevel_box(Vector3(0.07f, way.length(), 0.07f), 0.02f), pal::WOOD_DARK, Vector3());
        }
    }
    return at;
}

Node3D *bay_tree(bool dock) {
    Node3D *at = memnew(Node3D);
    for (const float x : {-1.72f, 1.72f}) {
        put(at, loft({{0, 0.20f, 0.20f}, {0.12f, 0.17f, 0.17f}}, 8), pal::STONE_DARK, Vector3(x, 0, 0.95f));
        for (int i = 0; i < 4; i++) {
            put(at, loft({{0.10f + 0.17f * float(i), 0.125f, 0.125f}, {0.27f + 0.17f * float(i), 0.125f, 0.125f}}, 8),
                i % 2  ? pal::WHITE
                : dock ? pal::BLUE
                       : pal::RED,
                Vector3(x, 0, 0.95f));
        }
        put(at, ball(Vector3(0.14f, 0.10f, 0.14f), 8, 4), pal::YELLOW, Vector3(x, 0.82f, 0.95f));
    }
    for (int i = 0; i < 5; i++) {
        put(at, bevel_box(Vector3(0.5f, 0.16f, 0.22f), 0.05f), i % 2 ? pal::INK : pal::YELLOW,
            Vector3(-1.0f + 0.5f * float(i), 0.07f, 1.0f));
    }
    if (dock) {
        house_parts::crate(at, Vector3(2.2f, 0, 1.5f), 0.9f, 14);
        house_parts::crate(at, Vector3(2.15f, 0.38f, 1.48f), 0.75f, -18);
    } else {
        house_parts::barrel(at, Vector3(-2.1f, 0, 1.4f), 0.95f);
        house_parts::crate(at, Vector3(-2.7f, 0, 1.5f), 0.9f, 20);
    }
    return at;
}

Node3D *depot_tree() {
    Node3D *at = memnew(Node3D);
    put(at, bevel_box(Vector3(3.0f, 0.10f, 2.5f), 0.05f), pal::STONE_DARK, Vector3(0, 0.04f, -0.2f));
    for (int i = 0; i < 6; i++) {
        put(at, bevel_box(Vector3(0.45f, 0.07f, 2.34f), 0.025f),
            tone(pal::WOOD_LIGHT, shapes::rnd(72, i, -0.1f, 0.08f)),
            Vector3(-1.175f + 0.47f * float(i), 0.105f, -0.2f));
    }
    // A back wall of planks under a small striped roof: a store that is open to the front.
    for (const float x : {-1.42f, 1.42f}) {
        put(at, bevel_box(Vector3(0.18f, 1.75f, 0.18f), 0.04f), pal::WOOD_DARK, Vector3(x, 0.87f, -1.34f));
        put(at, bevel_box(Vector3(0.16f, 0.5f, 0.16f), 0.04f), pal::WOOD, Vector3(x, 0.25f, 0.96f));
    }
    for (int i = 0; i < 3; i++) {
        put(at, bevel_box(Vector3(2.8f, 0.34f, 0.10f), 0.03f), tone(pal::WOOD, shapes::rnd(73, i, -0.06f, 0.1f)),
            Vector3(0, 0.38f + 0.42f * float(i), -1.36f));
    }
    for (int i = 0; i < 7; i++) {
        put(at, bevel_box(Vector3(0.46f, 0.10f, 0.72f), 0.04f), i % 2 ? pal::CREAM : pal::TEAL,
            Vector3(-1.38f + 0.46f * float(i), 1.72f, -1.18f), Vector3(22, 0, 0));
    }
    put(at, bevel_box(Vector3(3.3f, 0.12f, 0.14f), 0.04f), pal::WOOD_DARK, Vector3(0, 1.86f, -1.48f));
    house_parts::barrel(at, Vector3(-1.75f, 0, -0.6f), 0.8f);
    return at;
}

// The board leans back to the camera, which looks down steeply.
constexpr float board_tilt = -42.0f;
const Vector3 board_place(0, 1.2f, 0);

Node3D *star_board_tree() {
    Node3D *at = memnew(Node3D);
    for (const float x : {-0.62f, 0.62f}) {
        put(at, loft({{0, 0.10f, 0.10f}, {1.2f, 0.08f, 0.08f}}, 6, 0.6f), pal::WOOD_DARK, Vector3(x, 0, -0.06f));
    }
    Node3D *board = shapes::joint(at, "Board", board_place);
    board->set_rotation_degrees(Vector3(board_tilt, 0, 0));
    put(board, bevel_box(Vector3(1.74f, 0.70f, 0.12f), 0.07f), pal::WOOD_LIGHT, Vector3());
    put(board, bevel_box(Vector3(1.58f, 0.56f, 0.08f), 0.05f), pal::WOOD_DARK, Vector3(0, 0, 0.05f));
    return at;
}

Node3D *belt_tree(float length, float height) {
    Node3D *at = memnew(Node3D);
    put(at, bevel_box(Vector3(0.5f, 0.06f, length), 0.01f), BELT, Vector3(0, height - 0.035f, 0));
    for (const float x : {-rail_off, rail_off}) {
        put(at, bevel_box(Vector3(0.06f, 0.05f, length), 0.015f), RAIL, Vector3(x, height + 0.01f, 0));
        put(at, bevel_box(Vector3(0.05f, 0.06f, length), 0.01f), tone(BELT, -0.3f), Vector3(x, height - 0.045f, 0));
    }
    const int legs = std::max(1, int(std::lround(length / 1.4f)));
    for (int i = 0; i <= legs; i++) {
        const float z = (float(i) / float(legs) - 0.5f) * (length - 0.2f);
        put(at, bevel_box(Vector3(0.66f, height * 0.8f + 0.02f, 0.12f), 0.02f), pal::STONE_DARK,
            Vector3(0, height * 0.4f - 0.02f, z));
    }
    return at;
}

} // namespace

Node3D *truck(const Color &colour) {
    return Models::bake(String("truck_") + colour.to_html(false),
                        Models::builder([colour]() { return truck_tree(colour, false); }));
}

Node3D *gold_truck() {
    return Models::bake("truck_gold", Models::builder([]() { return truck_tree(col(GOLD), true); }));
}

Node3D *flying_van() {
    Node3D *at = memnew(Node3D);
    at->add_child(Buildings::supply_van());
    at->add_child(Models::bake("supply_balloon", Models::fn_node(&balloon_tree)));
    return at;
}

Node3D *bay(bool dock) {
    return Models::bake(dock ? "bay_dock" : "bay_market", Models::builder([dock]() { return bay_tree(dock); }));
}

Node3D *depot() {
    return Models::bake("depot", Models::fn_node(&depot_tree));
}

Array star_markers(Node3D *parent, const Vector3 &at) {
    Node3D *post = Models::bake("star_board", Models::fn_node(&star_board_tree));
    post->set_position(at);
    parent->add_child(post);
    Node3D *board = shapes::joint(post, "Stars", board_place);
    board->set_rotation_degrees(Vector3(board_tilt, 0, 0));
    Array stars;
    for (int i = 0; i < 3; i++) {
        MeshInstance3D *star =
            IconModels::star(0.27f, 0.125f, 0.10f, col(GOLD), Vector3(-0.5f + 0.5f * float(i), 0, 0.13f), board);
        star->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
        light_star(star, false);
        stars.push_back(star);
    }
    return stars;
}

void light_star(MeshInstance3D *star, bool on) {
    star->set_material_override(Models::color_material(on ? col(GOLD) : Color(0.66f, 0.58f, 0.50f), 0.85f, on));
    const float size = on ? 1.0f : 0.82f;
    star->set_scale(Vector3(size, size, size));
}

Node3D *belt_piece(float length, float height) {
    Node3D *at = memnew(Node3D);
    const String key = vformat("belt_%d_%d", int64_t(std::lround(length * 100)), int64_t(std::lround(height * 100)));
    at->add_child(Models::bake(key, Models::builder([length, height]() { return belt_tree(length, height); }), false));
    Ref<PlaneMesh> surface;
    surface.instantiate();
    surface->set_size(Vector2(0.48f, length));
    MeshInstance3D *strip = memnew(MeshInstance3D);
    strip->set_name("Strip");
    strip->set_mesh(surface);
    strip->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    strip->set_position(Vector3(0, height + 0.004f, 0));
    at->add_child(strip);
    return at;
}

Ref<Material> belt_material(double speed) {
    const String key = vformat("belt@%.2f", speed);
    Ref<ShaderMaterial> material = art().shaders.get(key, Variant());
    if (material.is_null()) {
        material.instantiate();
        material->set_shader(Models::shader_material("belt")->get_shader());
        material->set_shader_parameter(TM_NAME("speed"), speed);
        art().shaders[key] = material;
    }
    return material;
}

} // namespace tilm::truck_models
