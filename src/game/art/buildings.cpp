#include "game/art/buildings.h"

#include <algorithm>
#include <cmath>

#include "game/art/house_parts.h"
#include "game/art/machine_houses.h"
#include "game/art/models.h"
#include "game/art/producer_houses.h"
#include "game/art/scenery.h"
#include "game/art/shapes.h"

namespace tilm {
namespace {

using namespace house_parts;
using pal::col;
using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;
using shapes::rnd;

Node3D *stall_tree(const Color &color) {
    Node3D *at = memnew(Node3D);
    const Color paint = color.lerp(Color(1, 1, 1), 0.08f);
    // Counter: a solid body with a striped cloth, a thick board on top.
    put(at, bevel_box(Vector3(3.05f, 0.86f, 0.95f), 0.05f), pal::WOOD, Vector3(0.1f, 0.45f, 0));
    put(at, bevel_box(Vector3(3.3f, 0.13f, 1.25f), 0.05f), pal::WOOD_LIGHT, Vector3(0.1f, 0.95f, 0));
    constexpr int STRIPES = 8;
    const float width = 3.06f / STRIPES;
    for (int i = 0; i < STRIPES; i++) {
        const Color cloth = i % 2 ? col(pal::WHITE) : paint;
        const float x = 0.1f + width * (float(i) + 0.5f - STRIPES / 2.0f);
        put(at,
            shapes::extrude({Vector2(-width / 2, 0.14f), Vector2(0, 0.0f), Vector2(width / 2, 0.14f),
                             Vector2(width / 2, 0.62f), Vector2(-width / 2, 0.62f)},
                            0.07f),
            cloth, Vector3(x, 0.28f, 0.52f));
    }
    // Awning on two posts behind the goods: it slopes to the customers and ends in scallops.
    for (const float x : {-1.38f, 1.58f}) {
        put(at, loft({{0, 0.085f, 0.085f}, {2.5f, 0.07f, 0.07f}}, 6, 0.6f), pal::WOOD_DARK, Vector3(x, 0, -0.62f));
        put(at, bevel_box(Vector3(0.28f, 0.16f, 0.28f), 0.05f), pal::STONE, Vector3(x, 0.08f, -0.62f));
    }
    const float cover = 3.5f / STRIPES;
    for (int i = 0; i < STRIPES; i++) {
        const Color cloth = i % 2 ? col(pal::WHITE) : paint;
        const float x = 0.1f + cover * (float(i) + 0.5f - STRIPES / 2.0f);
        put(at, bevel_box(Vector3(cover, 0.10f, 0.74f), 0.025f), cloth, Vector3(x, 2.48f, -0.52f), Vector3(24, 0, 0));
        put(at,
            shapes::extrude({Vector2(-cover / 2, 0.16f), Vector2(-cover * 0.3f, 0.03f), Vector2(0, -0.02f),
                             Vector2(cover * 0.3f, 0.03f), Vector2(cover / 2, 0.16f)},
                            0.08f),
            pal::tone(cloth, -0.05f), Vector3(x, 2.16f, -0.20f), Vector3(-6, 0, 0));
    }
    put(at, loft({{-1.72f, 0.09f, 0.09f}, {1.72f, 0.09f, 0.09f}}, 6), pal::tone(paint, -0.15f),
        Vector3(0.1f, 2.64f, -0.86f), Vector3(0, 0, 90));
    // A crate and a jar of coins break the symmetry.
    crate(at, Vector3(-1.62f, 0, 0.45f), 0.9f, 14);
    put(at, ball(Vector3(0.17f, 0.15f, 0.17f), 8, 4), paint, Vector3(-1.62f, 0.46f, 0.45f));
    put(at, loft({{0, 0.10f, 0.10f}, {0.2f, 0.11f, 0.11f}, {0.24f, 0.08f, 0.08f}}, 8), pal::SKY,
        Vector3(-1.18f, 1.01f, 0.3f));
    put(at, loft({{0.02f, 0.075f, 0.075f}, {0.13f, 0.085f, 0.085f}}, 8), pal::YELLOW, Vector3(-1.18f, 1.05f, 0.34f));
    return at;
}

Node3D *trough_tree(const String &kind) {
    Node3D *at = memnew(Node3D);
    put(at, bevel_box(Vector3(1.2f, 0.14f, 1.9f), 0.03f), pal::WOOD, Vector3(0, 0.13f, 0));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, bevel_box(Vector3(0.12f, 0.34f, 1.98f), 0.03f), pal::WOOD_LIGHT, Vector3(side * 0.60f, 0.27f, 0),
            Vector3(0, 0, side * -12));
        put(at, bevel_box(Vector3(1.2f, 0.34f, 0.12f), 0.03f), pal::WOOD_LIGHT, Vector3(0, 0.25f, side * 0.96f));
        for (const float z : {-0.7f, 0.7f}) {
            put(at, bevel_box(Vector3(0.16f, 0.2f, 0.2f), 0.03f), pal::WOOD_DARK, Vector3(side * 0.48f, 0.08f, z));
        }
    }
    const uint32_t feed = kind == String("hay") ? pal::STRAW_DARK : pal::YELLOW;
    put(at, loft({{0.12f, 0.5f, 0.85f}, {0.215f, 0.46f, 0.8f}}, 10, 0.8f), feed, Vector3());
    put(at, bevel_box(Vector3(0.5f, 0.3f, 0.08f), 0.03f), pal::CREAM, Vector3(0, 0.30f, 1.03f));
    put(at, ball(Vector3(0.09f, 0.11f, 0.05f), 7, 3), feed, Vector3(0, 0.30f, 1.07f));
    return at;
}

Node3D *tray_tree() {
    Node3D *at = memnew(Node3D);
    put(at, bevel_box(Vector3(2.7f, 0.10f, 1.75f), 0.04f), pal::WOOD_DARK, Vector3(0, 0.05f, 0));
    for (int i = 0; i < 5; i++) {
        put(at, bevel_box(Vector3(2.62f, 0.07f, 0.30f), 0.025f), pal::tone(pal::WOOD_LIGHT, rnd(91, i, -0.05f, 0.10f)),
            Vector3(0, 0.105f, -0.66f + 0.33f * float(i)));
    }
    for (const float x : {-1.3f, 1.3f}) {
        for (const float z : {-0.82f, 0.82f}) {
            put(at, loft({{0, 0.09f, 0.09f}, {0.26f, 0.08f, 0.08f}, {0.32f, 0, 0}}, 6), pal::WOOD, Vector3(x, 0, z));
        }
    }
    return at;
}

Node3D *pallet_tree() {
    Node3D *at = memnew(Node3D);
    for (const float x : {-1.0f, 0.0f, 1.0f}) {
        put(at, bevel_box(Vector3(0.22f, 0.10f, 2.3f), 0.03f), pal::WOOD_DARK, Vector3(x, 0.05f, 0));
    }
    for (int i = 0; i < 6; i++) {
        put(at, bevel_box(Vector3(2.36f, 0.07f, 0.32f), 0.025f), pal::tone(pal::WOOD_LIGHT, rnd(92, i, -0.10f, 0.08f)),
            Vector3(rnd(93, i, -0.03f, 0.03f), 0.13f, -1.0f + 0.4f * float(i)), Vector3(0, rnd(94, i, -1.5f, 1.5f), 0));
    }
    return at;
}

Node3D *bed_tree(const Vector2 &size, const Color &soil, bool frame) {
    Node3D *at = memnew(Node3D);
    const Color dark = pal::tone(soil, -0.22f);
    put(at, bevel_box(Vector3(size.x + 0.5f, 0.10f, size.y + 0.5f), 0.05f), dark, Vector3(0, 0.0f, 0));
    const int rows = std::max(2, int(std::lround(size.y / 0.84f)));
    const float pitch = size.y / float(rows);
    for (int i = 0; i < rows; i++) {
        const float z = -size.y / 2 + pitch * (float(i) + 0.5f);
        put(at,
            loft({{-size.x / 2 - 0.1f, pitch * 0.46f, 0.02f},
                  {-size.x / 2 + 0.1f, pitch * 0.42f, 0.10f},
                  {size.x / 2 - 0.1f, pitch * 0.42f, 0.10f},
                  {size.x / 2 + 0.1f, pitch * 0.46f, 0.02f}},
                 6),
            pal::tone(soil, rnd(95, i, -0.04f, 0.06f)), Vector3(0, 0.03f, z), Vector3(90, 90, 0));
    }
    if (frame) {
        const float x = size.x / 2 + 0.22f, z = size.y / 2 + 0.22f;
        for (const float side : {-1.0f, 1.0f}) {
            put(at, bevel_box(Vector3(size.x + 0.6f, 0.24f, 0.16f), 0.04f), 0x8a5a35, Vector3(0, 0.08f, side * z));
            put(at, bevel_box(Vector3(0.16f, 0.24f, size.y + 0.6f), 0.04f), 0x8a5a35, Vector3(side * x, 0.08f, 0));
            put(at, loft({{0, 0.13f, 0.13f}, {0.32f, 0.12f, 0.12f}}, 6), 0x6b4226, Vector3(x, 0, side * z));
            put(at, loft({{0, 0.13f, 0.13f}, {0.32f, 0.12f, 0.12f}}, 6), 0x6b4226, Vector3(-x, 0, side * z));
        }
    }
    return at;
}

Node3D *sails_tree() {
    Node3D *at = memnew(Node3D);
    put(at, loft({{-0.25f, 0.2f, 0.2f}, {0.2f, 0.24f, 0.24f}, {0.32f, 0.1f, 0.1f}}, 8), pal::WOOD_DARK, Vector3(),
        Vector3(90, 0, 0));
    for (int i = 0; i < 4; i++) {
        Node3D *arm = shapes::joint(at, "Arm", Vector3(0, 0, 0.1f));
        arm->set_rotation_degrees(Vector3(0, 0, 90.0f * float(i)));
        put(arm, bevel_box(Vector3(0.13f, 2.1f, 0.11f), 0.03f), pal::WOOD_DARK, Vector3(0, 1.1f, 0));
        put(arm, bevel_box(Vector3(0.55f, 1.5f, 0.06f), 0.02f), i % 2 ? pal::CREAM : pal::WHITE,
            Vector3(0.30f, 1.3f, 0.02f));
        for (int bar = 0; bar < 4; bar++) {
            put(arm, bevel_box(Vector3(0.62f, 0.07f, 0.10f), 0.02f), pal::WOOD,
                Vector3(0.30f, 0.65f + 0.43f * float(bar), 0.05f));
        }
    }
    return at;
}

Node3D *mill_tree() {
    Node3D *at = memnew(Node3D);
    const Vector3 home(-0.6f, 0, -0.8f);
    put(at, loft({{0, 1.55f, 1.5f}, {0.35f, 1.5f, 1.45f}}, 10), pal::STONE, home);
    put(at, loft({{0.3f, 1.42f, 1.38f}, {2.2f, 1.16f, 1.12f}, {4.0f, 0.95f, 0.92f}}, 10), pal::PLASTER, home);
    put(at, loft({{1.6f, 1.27f, 1.23f}, {1.8f, 1.25f, 1.21f}}, 10), pal::WOOD, home);
    put(at, loft({{3.9f, 1.15f, 1.12f}, {4.15f, 1.10f, 1.08f}, {4.9f, 0.6f, 0.6f}, {5.3f, 0.0f, 0.0f}}, 10), pal::RED,
        home);
    double_door(at, home + Vector3(0, 0.05f, 1.36f), 0.9f, 1.2f, col(pal::WOOD), col(pal::WOOD_DARK));
    window(at, home + Vector3(0, 2.5f, 1.12f), 0.45f, 0.5f, col(pal::WOOD_DARK));
    for (int i = 0; i < 4; i++) {
        put(at, loft({{0, 0.26f, 0.2f}, {0.12f, 0.31f, 0.25f}, {0.5f, 0.25f, 0.2f}, {0.6f, 0.13f, 0.1f}}, 8, 0.4f),
            pal::WHITE, Vector3(1.3f + 0.5f * float(i % 2), 0.5f * float(i / 3), 0.2f - 0.45f * float(i % 3)),
            Vector3(0, float(i) * 35, 0));
    }
    bush(at, home + Vector3(-1.6f, 0, 0.9f), 0.5f, col(pal::LEAF), 8);
    return at;
}

Node3D *van_tree() {
    Node3D *at = memnew(Node3D);
    put(at, bevel_box(Vector3(1.5f, 0.3f, 3.1f), 0.06f), pal::STONE_DARK, Vector3(0, 0.45f, 0));
    put(at, bevel_box(Vector3(1.6f, 1.5f, 2.0f), 0.10f), pal::CREAM, Vector3(0, 1.25f, 0.55f));
    put(at, bevel_box(Vector3(1.64f, 0.3f, 2.04f), 0.06f), pal::TEAL, Vector3(0, 0.95f, 0.55f));
    put(at, bevel_box(Vector3(1.5f, 1.05f, 1.0f), 0.16f, 0.86f), pal::TEAL, Vector3(0, 1.05f, -0.95f));
    put(at, bevel_box(Vector3(1.26f, 0.44f, 0.2f), 0.06f), pal::SKY, Vector3(0, 1.28f, -1.38f), Vector3(12, 0, 0));
    put(at, bevel_box(Vector3(1.46f, 0.42f, 0.5f), 0.05f), pal::SKY, Vector3(0, 1.26f, -0.95f));
    put(at, bevel_box(Vector3(1.55f, 0.22f, 0.2f), 0.06f), pal::WHITE, Vector3(0, 0.5f, -1.5f));
    for (const float x : {-0.72f, 0.72f}) {
        put(at, ball(Vector3(0.13f, 0.13f, 0.08f), 8, 4), pal::YELLOW, Vector3(x * 0.75f, 0.78f, -1.45f));
        for (const float z : {-0.95f, 0.95f}) {
            put(at, loft({{-0.14f, 0.36f, 0.36f}, {0.14f, 0.36f, 0.36f}}, 11), pal::INK, Vector3(x, 0.36f, z),
                Vector3(0, 0, 90));
            put(at, loft({{-0.16f, 0.17f, 0.17f}, {0.16f, 0.17f, 0.17f}}, 9), pal::METAL, Vector3(x, 0.36f, z),
                Vector3(0, 0, 90));
        }
    }
    return at;
}

} // namespace

Node3D *Buildings::house(const String &product) {
    return Models::bake(String("house_") + product,
                        Models::builder([product]() { return producer_houses::build(product); }));
}

void Buildings::light_front(Node3D *owner, const String &product) {
    if (product == String("honey") || product == String("apple") || product == String("calf")) {
        return;
    }
    Node3D *pool = Scenery::glow_pool(2.4f);
    pool->set_position(Vector3(-0.1f, 0.065f, 0.0f)); // just above the yard
    owner->add_child(pool);
}

Rect2 Buildings::house_solid(const String &product) {
    if (product == String("fish")) {
        return Rect2(-2.4f, -2.7f, 4.8f, 3.3f);
    }
    if (product == String("honey") || product == String("apple") || product == String("orange")) {
        return Rect2(-2.4f, -2.7f, 4.8f, 1.3f);
    }
    if (product == String("bean")) {
        return Rect2(-2.4f, -2.8f, 4.8f, 2.2f);
    }
    return Rect2(-2.1f, -2.75f, 4.2f, 1.9f);
}

Node3D *Buildings::machine(const String &product, const Color &roof) {
    Node3D *node = memnew(Node3D);
    node->add_child(Models::bake("machine_" + product + "_" + roof.to_html(false),
                                 Models::builder([product, roof]() { return machine_houses::build(product, roof); })));
    return node;
}

Rect2 Buildings::machine_solid() {
    return Rect2(-2.3f, -2.75f, 4.6f, 2.6f);
}

Node3D *Buildings::trough(const String &kind) {
    return Models::bake(String("trough_") + kind, Models::builder([kind]() { return trough_tree(kind); }));
}

Node3D *Buildings::tray() {
    return Models::bake("tray", Models::fn_node(&tray_tree));
}

Node3D *Buildings::stall(const Color &color) {
    return Models::bake(String("table_stall_") + color.to_html(false),
                        Models::builder([color]() { return stall_tree(color); }));
}

Node3D *Buildings::pallet() {
    return Models::bake("pallet", Models::fn_node(&pallet_tree));
}

Node3D *Buildings::field_bed(const Vector2 &size, const Color &soil, bool frame) {
    const String key =
        vformat("bed_%s_%d_%d_%d", soil.to_html(false), int64_t(size.x * 10), int64_t(size.y * 10), int64_t(frame));
    return Models::bake(key, Models::builder([size, soil, frame]() { return bed_tree(size, soil, frame); }), false);
}

Node3D *Buildings::anim(const String &kind) {
    if (kind != String("flour")) {
        return nullptr;
    }
    Node3D *hub = memnew(Node3D);
    hub->set_position(Vector3(-0.6f, 4.5f, 0.5f));
    hub->set_scale(Vector3(0.95f, 0.95f, 0.95f));
    hub->add_child(Models::bake("mill_sails", Models::fn_node(&sails_tree)));
    return hub;
}

Node3D *Buildings::supply_van() {
    return Models::bake("supply_van", Models::fn_node(&van_tree));
}

Node3D *Buildings::mill() {
    return Models::bake("house_flour", Models::fn_node(&mill_tree));
}

} // namespace tilm
