// Bakeries, sweet factories and grills.

#include <cmath>
#include <vector>

#include <godot_cpp/classes/torus_mesh.hpp>

#include "game/art/house_parts.h"
#include "game/art/machine_houses.h"
#include "game/art/machine_parts_kit.h"
#include "game/art/shapes.h"

namespace tilm::machine_houses {
namespace {

using namespace house_parts;
using namespace machine_parts;
using pal::col;
using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;
using shapes::rnd;

Ref<Mesh> ring(float inner, float outer) {
    Ref<TorusMesh> mesh;
    mesh.instantiate();
    mesh->set_inner_radius(inner);
    mesh->set_outer_radius(outer);
    mesh->set_rings(16);
    mesh->set_ring_segments(9);
    return mesh;
}

void sprinkles(Node3D *at, const Vector3 &middle, float radius, int count, float front) {
    const uint32_t paints[] = {pal::YELLOW, pal::TEAL, pal::WHITE, pal::RED, pal::GREEN};
    for (int i = 0; i < count; i++) {
        const float a = float(i) * 6.2832f / float(count);
        const float r = radius * rnd(301, i, 0.88f, 1.12f);
        put(at, bevel_box(Vector3(0.2f, 0.08f, 0.08f), 0.02f), paints[i % 5],
            middle + Vector3(r * std::cos(a), r * std::sin(a), front), Vector3(0, 0, rnd(302, i, 0, 180)));
    }
}

void bakery(Node3D *at, const Color &roof_color) {
    site(at, col(0xd8b98c));
    const Vector3 home(-0.3f, 0, -1.45f);
    hall(at, home, Vector3(3.3f, 1.5f, 1.9f), Wall::brick, col(0xe3a173));
    put(at, shapes::gable(3.25f, 1.15f, 1.8f), 0xe3a173, home + Vector3(0, 1.47f, 0));
    roof(at, home + Vector3(0, 1.47f, 0), 1.7f, 1.2f, 2.0f, roof_color);
    // The oven's mouth glows in the front.
    std::vector<Vector2> arch = {Vector2(-0.62f, 0), Vector2(0.62f, 0)};
    std::vector<Vector2> mouth = {Vector2(-0.44f, 0), Vector2(0.44f, 0)};
    for (int i = 0; i <= 6; i++) {
        const float a = 3.1416f * float(i) / 6.0f;
        arch.emplace_back(0.62f * std::cos(a), 0.5f + 0.55f * std::sin(a));
        mouth.emplace_back(0.44f * std::cos(a), 0.42f + 0.42f * std::sin(a));
    }
    put(at, shapes::extrude(arch, 0.2f), pal::STONE, home + Vector3(0.75f, 0.25f, 0.95f));
    put(at, shapes::extrude(mouth, 0.22f), pal::CHOCOLATE, home + Vector3(0.75f, 0.25f, 0.97f));
    put(at, ball(Vector3(0.36f, 0.2f, 0.1f), 8, 4), pal::ORANGE, home + Vector3(0.75f, 0.42f, 1.07f));
    put(at, ball(Vector3(0.2f, 0.13f, 0.1f), 8, 4), pal::YELLOW, home + Vector3(0.75f, 0.4f, 1.12f));
    double_door(at, home + Vector3(-0.8f, 0.1f, 0.96f), 0.9f, 1.1f, col(pal::WOOD), col(pal::CREAM));
    // A loaf across the ridge.
    const Vector3 loaf = home + Vector3(0, 2.95f, 0.45f);
    put(at, loft({{-1.25f, 0.2f, 0.22f}, {-0.9f, 0.44f, 0.42f}, {0.9f, 0.44f, 0.42f}, {1.25f, 0.2f, 0.22f}}, 10),
        0xd48a3c, loaf, Vector3(0, 0, 84));
    for (int i = 0; i < 4; i++) {
        put(at, bevel_box(Vector3(0.16f, 0.62f, 0.16f), 0.05f), 0xf6d9a0,
            loaf + Vector3(-0.75f + 0.5f * float(i), 0.2f - 0.05f * float(i) + 0.1f, 0.32f), Vector3(-42, 0, -24));
    }
    chimney(at, 1.4f, col(0xb5604e));
}

void mayo(Node3D *at, const Color &roof_color) {
    site(at, col(0xd9d4c0));
    const Vector3 home(-0.75f, 0, -1.5f);
    const Vector3 size(2.5f, 1.5f, 1.8f);
    hall(at, home, size, Wall::plaster, col(pal::WHITE));
    flat_roof(at, home + Vector3(0, 1.5f, 0), size, roof_color);
    shop_front(at, home + Vector3(0, 0.1f, 0.92f), 2.4f, roof_color);
    // A jar as tall as the house, with a label and an egg before it.
    const Vector3 jar_at(1.35f, 0.03f, -1.65f);
    put(at, loft({{0, 0.88f, 0.88f}, {0.15f, 0.98f, 0.98f}, {2.0f, 0.98f, 0.98f}, {2.3f, 0.72f, 0.72f}}, 13), 0xfff7dc,
        jar_at);
    put(at, loft({{0.6f, 1.01f, 1.01f}, {1.5f, 1.01f, 1.01f}}, 13), roof_color, jar_at);
    put(at, ball(Vector3(0.3f, 0.38f, 0.14f), 9, 5), pal::WHITE, jar_at + Vector3(0, 1.05f, 0.98f));
    put(at, loft({{2.25f, 0.9f, 0.9f}, {2.65f, 0.88f, 0.88f}}, 13), pal::BLUE, jar_at);
    for (int i = 0; i < 3; i++) {
        put(at, ball(Vector3(0.34f, 0.44f, 0.34f), 9, 5), pal::tone(pal::CREAM, 0.1f * float(i)),
            home + Vector3(-0.72f + 0.72f * float(i), 2.0f, 0.3f * float(i % 2)));
    }
    chimney(at, 0.0f, col(pal::METAL));
}

void cookie(Node3D *at, const Color &roof_color) {
    site(at, col(0xcdb08a));
    const Vector3 home(-0.2f, 0, -1.5f);
    const Vector3 size(3.3f, 1.4f, 1.8f);
    hall(at, home, size, Wall::wood, col(0xdcae72));
    flat_roof(at, home + Vector3(0, 1.4f, 0), size, roof_color);
    shop_front(at, home + Vector3(0, 0.1f, 0.92f), 3.1f, col(pal::WHITE));
    // A cookie with a bite taken out.
    const Vector3 cookie_at(-0.55f, 2.85f, -1.3f);
    std::vector<Vector2> outline;
    for (int i = 0; i <= 15; i++) {
        const float a = 1.15f + 5.35f * float(i) / 15.0f;
        outline.emplace_back(1.25f * std::cos(a), 1.25f * std::sin(a));
    }
    outline.emplace_back(0.72f, 0.42f);
    outline.emplace_back(0.42f, 0.66f);
    put(at, shapes::extrude(outline, 0.42f), 0xc98a45, cookie_at);
    put(at, shapes::extrude(outline, 0.30f), 0xdca35c, cookie_at + Vector3(-0.02f, -0.02f, 0.10f), Vector3(),
        Vector3(0.93f, 0.93f, 1));
    for (int i = 0; i < 8; i++) {
        const float a = 1.6f + 0.62f * float(i), r = i % 2 ? 0.42f : 0.85f;
        put(at, ball(Vector3(0.17f, 0.15f, 0.12f), 7, 3), pal::CHOCOLATE,
            cookie_at + Vector3(r * std::cos(a), r * std::sin(a), 0.27f));
    }
    chimney(at, 1.3f, col(0x8a5a3a));
    crate(at, Vector3(0.0f, 0.03f, 0.3f), 0.95f, -10);
}

void donut(Node3D *at, const Color &roof_color) {
    site(at, col(0xe0c3c8));
    const Vector3 home(0, 0, -1.5f);
    const Vector3 size(3.7f, 1.45f, 1.8f);
    hall(at, home, size, Wall::plaster, col(0xffe3ee));
    flat_roof(at, home + Vector3(0, 1.45f, 0), size, roof_color);
    shop_front(at, home + Vector3(0, 0.1f, 0.92f), 3.5f, col(pal::WHITE));
    awning(at, home + Vector3(0.35f, 1.45f, 0.92f), 2.8f, roof_color);
    // The donut lies on the roof and leans towards the road.
    Node3D *lying = shapes::joint(at, "Donut", Vector3(-0.55f, 2.42f, -1.45f));
    lying->set_rotation_degrees(Vector3(-62, 0, 0));
    put(lying, ring(0.48f, 1.56f), 0xd99a52, Vector3(), Vector3(90, 0, 0));
    put(lying, ring(0.54f, 1.47f), roof_color, Vector3(0, 0.02f, 0.15f), Vector3(90, 0, 0));
    sprinkles(lying, Vector3(), 1.02f, 16, 0.62f);
    chimney(at, 1.35f, col(pal::METAL));
}

void cake(Node3D *at, const Color &roof_color) {
    site(at, col(0xd9c6d6));
    const Vector3 home(-0.3f, 0, -1.35f);
    // The house is the cake: three tiers with icing that runs down.
    const float radius[] = {1.75f, 1.3f, 0.85f};
    const uint32_t sponge[] = {0xfff0dc, 0xffd9e6, 0xfff0dc};
    for (int tier = 0; tier < 3; tier++) {
        const float y = 0.05f + (tier == 0   ? 0.0f
                                 : tier == 1 ? 1.35f
                                             : 2.3f),
                    h = tier == 0 ? 1.35f : 0.95f, r = radius[tier];
        put(at, loft({{0, r, r * 0.74f}, {h, r * 0.98f, r * 0.72f}}, 14), sponge[tier], home + Vector3(0, y, 0));
        put(at, loft({{h - 0.2f, r * 1.04f, r * 0.78f}, {h + 0.06f, r * 1.0f, r * 0.75f}}, 14), roof_color,
            home + Vector3(0, y, 0));
        const int drops = 11 - 2 * tier;
        for (int i = 0; i < drops; i++) {
            const float a = -0.2f + 3.54f * float(i) / float(drops - 1);
            put(at, ball(Vector3(0.15f, rnd(311 + tier, i, 0.2f, 0.34f), 0.12f), 7, 4), roof_color,
                home + Vector3(r * 1.0f * std::cos(a), y + h - 0.22f, r * 0.75f * std::sin(a)));
        }
    }
    put(at, ball(Vector3(0.3f, 0.3f, 0.3f), 9, 5), pal::RED, home + Vector3(0, 3.52f, 0));
    put(at, loft({{0, 0.04f, 0.04f}, {0.4f, 0.03f, 0.03f}}, 5), pal::LEAF_DARK, home + Vector3(0.03f, 3.75f, 0),
        Vector3(0, 0, -18));
    double_door(at, home + Vector3(0, 0.05f, 1.26f), 0.85f, 0.95f, col(pal::CHOCOLATE), col(pal::WHITE));
    chimney(at, 0.9f, col(pal::PINK));
    for (int i = 0; i < 2; i++) {
        const Vector3 p(1.75f + 0.5f * float(i), 0.03f, -1.7f + 0.5f * float(i));
        put(at, loft({{0, 0.13f, 0.13f}, {1.0f - 0.25f * float(i), 0.12f, 0.12f}}, 7), i ? pal::SKY : pal::YELLOW, p);
        put(at, ball(Vector3(0.1f, 0.18f, 0.1f), 7, 4), pal::ORANGE, p + Vector3(0, 1.2f - 0.25f * float(i), 0));
    }
}

void icecream(Node3D *at, const Color &roof_color) {
    site(at, col(0xc9dbe3));
    const Vector3 home(-0.2f, 0, -1.5f);
    const Vector3 size(3.3f, 1.4f, 1.8f);
    hall(at, home, size, Wall::plaster, col(0xe9f7ff));
    flat_roof(at, home + Vector3(0, 1.4f, 0), size, roof_color);
    shop_front(at, home + Vector3(0, 0.1f, 0.92f), 3.1f, col(pal::WHITE));
    awning(at, home + Vector3(0.3f, 1.42f, 0.92f), 2.6f, col(pal::PINK));
    const Vector3 cone(-0.55f, 1.5f, -1.45f);
    put(at, loft({{0, 0.14f, 0.14f}, {1.15f, 0.66f, 0.66f}, {1.28f, 0.7f, 0.7f}}, 11), 0xd9a055, cone);
    for (int i = 0; i < 2; i++) {
        put(at,
            loft({{0.35f + 0.4f * float(i), 0.34f + 0.19f * float(i), 0.34f + 0.19f * float(i)},
                  {0.45f + 0.4f * float(i), 0.38f + 0.19f * float(i), 0.38f + 0.19f * float(i)}},
                 11),
            0xb87f3c, cone);
    }
    put(at, ball(Vector3(0.78f, 0.62f, 0.78f), 12, 6), pal::PINK, cone + Vector3(0, 1.55f, 0));
    put(at, ball(Vector3(0.58f, 0.5f, 0.58f), 11, 6), pal::WHITE, cone + Vector3(0.06f, 2.15f, 0));
    put(at, ball(Vector3(0.17f, 0.17f, 0.17f), 8, 4), pal::RED, cone + Vector3(0.1f, 2.72f, 0.05f));
    put(at, bevel_box(Vector3(0.16f, 0.95f, 0.16f), 0.03f), pal::BROWN, cone + Vector3(0.5f, 2.2f, 0),
        Vector3(0, 0, -28));
    chimney(at, 1.35f, col(pal::METAL));
}

void grill_bed(Node3D *at, const Vector3 &p) {
    put(at, bevel_box(Vector3(1.1f, 0.5f, 0.6f), 0.06f), pal::INK, p + Vector3(0, 0.45f, 0));
    put(at, bevel_box(Vector3(0.95f, 0.08f, 0.46f), 0.02f), pal::ORANGE, p + Vector3(0, 0.72f, 0));
    for (int i = 0; i < 5; i++) {
        put(at, bevel_box(Vector3(0.07f, 0.07f, 0.6f), 0.02f), pal::STONE_DARK,
            p + Vector3(-0.4f + 0.2f * float(i), 0.78f, 0));
    }
    for (const float x : {-0.42f, 0.42f}) {
        put(at, bevel_box(Vector3(0.1f, 0.3f, 0.4f), 0.02f), pal::STONE_DARK, p + Vector3(x, 0.15f, 0));
    }
}

void fish_grill(Node3D *at, const Color &roof_color) {
    site(at, col(pal::SAND));
    const Vector3 home(-0.2f, 0, -1.5f);
    hall(at, home, Vector3(3.3f, 1.35f, 1.8f), Wall::wood, col(0xe8f4fb));
    for (int i = 0; i < 5; i++) {
        put(at, bevel_box(Vector3(0.75f, 0.14f, 2.3f), 0.04f), i % 2 ? col(pal::WHITE) : roof_color,
            home + Vector3(-1.48f + 0.74f * float(i), 1.52f, 0.08f), Vector3(12, 0, 0));
    }
    shop_front(at, home + Vector3(0, 0.1f, 0.92f), 3.1f, roof_color);
    // A fish leaps over the roof.
    const Vector3 fish(-0.55f, 2.6f, -1.2f);
    put(at, ball(Vector3(1.2f, 0.62f, 0.42f), 12, 6), 0xf08a4b, fish, Vector3(0, 0, 10));
    put(at, ball(Vector3(0.95f, 0.4f, 0.44f), 10, 5), 0xffd2a0, fish + Vector3(-0.05f, -0.2f, 0.02f),
        Vector3(0, 0, 10));
    put(at, shapes::extrude({Vector2(0, 0), Vector2(0.75f, -0.62f), Vector2(0.58f, 0), Vector2(0.75f, 0.62f)}, 0.2f),
        0xd86a2e, fish + Vector3(1.0f, 0.18f, 0), Vector3(0, 0, 10));
    put(at, shapes::extrude({Vector2(-0.4f, 0), Vector2(0.4f, 0), Vector2(0.25f, 0.5f), Vector2(-0.05f, 0.42f)}, 0.14f),
        0xd86a2e, fish + Vector3(0, 0.5f, 0), Vector3(0, 0, 10));
    put(at, ball(Vector3(0.15f, 0.15f, 0.1f), 8, 4), pal::WHITE, fish + Vector3(-0.78f, 0.0f, 0.34f));
    put(at, ball(Vector3(0.07f, 0.07f, 0.07f), 6, 3), pal::INK, fish + Vector3(-0.8f, 0.0f, 0.43f));
    grill_bed(at, Vector3(0.1f, 0.03f, 0.1f));
    chimney(at, 1.3f, col(pal::STONE_DARK));
}

void chicken_grill(Node3D *at, const Color &roof_color) {
    site(at, col(0xd8b98c));
    // A round stone oven with a tall hood; the counter stands beside it under a roof of its own.
    const Vector3 home(-0.2f, 0, -1.5f);
    const Vector3 oven = home + Vector3(-0.55f, 0, 0);
    put(at, loft({{0, 1.35f, 1.05f}, {0.25f, 1.35f, 1.05f}, {1.3f, 1.25f, 0.98f}}, 13), 0xcfc4b0, oven);
    put(at, loft({{1.2f, 1.5f, 1.18f}, {1.34f, 1.5f, 1.18f}, {2.0f, 0.78f, 0.66f}, {2.35f, 0.62f, 0.54f}}, 13),
        roof_color, oven);
    for (int i = 0; i < 9; i++) {
        const float a = 0.25f + 2.64f * float(i) / 8.0f;
        put(at, bevel_box(Vector3(0.4f, 0.24f, 0.1f), 0.03f), pal::tone(pal::STONE, rnd(331, i, -0.16f, 0.1f)),
            oven + Vector3(1.33f * std::cos(a), rnd(332, i, 0.3f, 1.05f), 1.02f * std::sin(a)),
            Vector3(0, 90 - a * 57.2958f, 0));
    }
    put(at, ball(Vector3(0.56f, 0.42f, 0.14f), 10, 5), pal::CHOCOLATE, oven + Vector3(0.05f, 0.68f, 1.0f));
    put(at, ball(Vector3(0.36f, 0.22f, 0.1f), 8, 4), pal::ORANGE, oven + Vector3(0.05f, 0.55f, 1.1f));
    hall(at, home + Vector3(1.45f, 0, 0.05f), Vector3(1.35f, 1.05f, 1.5f), Wall::wood, col(pal::WOOD_LIGHT));
    put(at, bevel_box(Vector3(1.65f, 0.14f, 1.95f), 0.04f), pal::tone(roof_color, -0.1f),
        home + Vector3(1.45f, 1.16f, 0.12f), Vector3(10, 0, 0));
    window(at, home + Vector3(1.45f, 0.62f, 0.82f), 0.85f, 0.5f, col(pal::WOOD_DARK));
    // A roast bird turns on its spit above the hood.
    const Vector3 bird = home + Vector3(-0.55f, 3.15f, 0.1f);
    put(at, bevel_box(Vector3(2.5f, 0.1f, 0.1f), 0.03f), pal::METAL, bird);
    for (const float side : {-1.0f, 1.0f}) {
        put(at, bevel_box(Vector3(0.12f, 1.75f, 0.12f), 0.03f), pal::STONE_DARK,
            bird + Vector3(side * 1.15f, -0.85f, 0));
    }
    put(at, ball(Vector3(0.78f, 0.6f, 0.58f), 11, 6), 0xc9702c, bird);
    put(at, ball(Vector3(0.5f, 0.42f, 0.45f), 10, 5), 0xe08f42, bird + Vector3(-0.2f, 0.24f, 0.1f));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, loft({{0, 0.27f, 0.24f}, {0.5f, 0.13f, 0.13f}}, 8), 0xb8602a, bird + Vector3(0.4f, 0.15f, side * 0.4f),
            Vector3(side * 30, 0, -55));
        put(at, ball(Vector3(0.13f, 0.13f, 0.13f), 7, 3), pal::WHITE, bird + Vector3(0.88f, 0.42f, side * 0.58f));
    }
    grill_bed(at, Vector3(0.1f, 0.03f, 0.1f));
    chimney(at, 0.0f, col(pal::STONE));
}

void steakhouse(Node3D *at, const Color &roof_color) {
    site(at, col(0xc9a97c));
    const Vector3 home(0, 0, -1.5f);
    // A log house with a wide false front.
    for (int i = 0; i < 5; i++) {
        put(at, loft({{-1.95f, 0.19f, 0.19f}, {1.95f, 0.19f, 0.19f}}, 7), pal::tone(pal::WOOD, i % 2 ? -0.1f : 0.04f),
            home + Vector3(0, 0.22f + 0.34f * float(i), 0.85f), Vector3(0, 0, 90));
    }
    put(at, bevel_box(Vector3(3.7f, 1.75f, 1.7f), 0.05f), pal::WOOD_DARK, home + Vector3(0, 0.88f, -0.05f));
    put(at,
        shapes::extrude({Vector2(-2.1f, 0), Vector2(2.1f, 0), Vector2(2.1f, 0.75f), Vector2(1.2f, 0.75f),
                         Vector2(1.2f, 1.25f), Vector2(-1.2f, 1.25f), Vector2(-1.2f, 0.75f), Vector2(-2.1f, 0.75f)},
                        0.22f),
        roof_color, home + Vector3(0, 1.72f, 0.85f));
    shop_front(at, home + Vector3(0, 0.1f, 1.04f), 3.5f, col(pal::CREAM));
    // A bull's head looks down the road.
    const Vector3 head = home + Vector3(0, 2.75f, 1.0f);
    put(at, loft({{-0.55f, 0.24f, 0.22f}, {-0.2f, 0.34f, 0.3f}, {0.35f, 0.52f, 0.36f}, {0.55f, 0.3f, 0.2f}}, 9),
        0x8a4f2c, head);
    put(at, ball(Vector3(0.34f, 0.22f, 0.24f), 8, 4), 0xf0b9a0, head + Vector3(0, -0.48f, 0.12f));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, loft({{0, 0.17f, 0.17f}, {0.55f, 0.14f, 0.14f}, {0.95f, 0.03f, 0.03f}}, 7), pal::CREAM,
            head + Vector3(side * 0.4f, 0.32f, 0), Vector3(0, 0, side * -62));
        put(at, loft({{0, 0.11f, 0.11f}, {0.5f, 0.02f, 0.02f}}, 7), pal::CREAM, head + Vector3(side * 1.18f, 0.72f, 0),
            Vector3(0, 0, side * 8));
        put(at, ball(Vector3(0.09f, 0.09f, 0.07f), 7, 3), pal::INK, head + Vector3(side * 0.25f, 0.1f, 0.33f));
        put(at, ball(Vector3(0.06f, 0.05f, 0.06f), 6, 3), pal::CHOCOLATE, head + Vector3(side * 0.13f, -0.46f, 0.35f));
    }
    chimney(at, 1.6f, col(pal::STONE));
    barrel(at, Vector3(0.2f, 0.03f, 0.35f), 0.95f);
}

void burger(Node3D *at, const Color &roof_color) {
    site(at, col(0xdcc28e));
    const Vector3 home(-0.15f, 0, -1.25f);
    // The house is the burger.
    put(at, loft({{0, 1.7f, 1.25f}, {0.15f, 1.95f, 1.42f}, {0.85f, 2.0f, 1.45f}, {1.0f, 1.9f, 1.38f}}, 15), 0xe0a050,
        home);
    for (int i = 0; i < 15; i++) {
        const float a = float(i) * 0.4189f;
        put(at, ball(Vector3(0.5f, 0.13f, 0.4f), 7, 3), i % 2 ? pal::GREEN : pal::LEAF_LIGHT,
            home + Vector3(1.8f * std::cos(a), 1.02f + 0.05f * float(i % 2), 1.3f * std::sin(a)),
            Vector3(0, -a * 57.2958f, 0));
    }
    put(at, loft({{1.08f, 1.95f, 1.42f}, {1.2f, 2.02f, 1.46f}, {1.45f, 1.95f, 1.4f}}, 15), 0x6b3a22, home);
    put(at, bevel_box(Vector3(3.15f, 0.1f, 2.25f), 0.03f), pal::YELLOW, home + Vector3(0, 1.5f, 0), Vector3(0, 8, 0));
    put(at, loft({{1.5f, 1.85f, 1.35f}, {1.65f, 1.9f, 1.38f}}, 15), roof_color, home);
    put(at,
        loft({{1.62f, 1.98f, 1.44f}, {1.95f, 1.95f, 1.4f}, {2.45f, 1.5f, 1.08f}, {2.75f, 0.8f, 0.6f}, {2.85f, 0, 0}},
             15),
        0xe8a850, home);
    for (int i = 0; i < 14; i++) {
        const float a = rnd(321, i) * 6.283f, r = rnd(322, i, 0.25f, 0.82f);
        put(at, ball(Vector3(0.12f, 0.07f, 0.08f), 6, 3), pal::CREAM,
            home + Vector3(1.75f * r * std::cos(a), 2.84f - 0.75f * r * r, 1.25f * r * std::sin(a)),
            Vector3(0, rnd(323, i, 0, 180), 0));
    }
    put(at, bevel_box(Vector3(1.0f, 0.95f, 0.5f), 0.05f), pal::WHITE, home + Vector3(0, 0.48f, 1.3f));
    put(at, bevel_box(Vector3(0.78f, 0.8f, 0.5f), 0.04f), pal::RED, home + Vector3(0, 0.44f, 1.35f));
    put(at, bevel_box(Vector3(0.55f, 0.35f, 0.5f), 0.03f), pal::SKY, home + Vector3(0, 0.58f, 1.38f));
    chimney(at, 1.9f, col(pal::METAL));
}

} // namespace

bool build_eatery(Node3D *at, const String &product, const Color &roof) {
    struct Row {
        const char *product;
        void (*build)(Node3D *, const Color &);
    };
    static const Row rows[] = {
        {"bread", bakery},     {"mayo", mayo},         {"cookies", cookie},          {"donut", donut},
        {"cake", cake},        {"icecream", icecream}, {"grilled_fish", fish_grill}, {"grilled_chicken", chicken_grill},
        {"steak", steakhouse}, {"burger", burger}};
    for (const Row &row : rows) {
        if (product == String(row.product)) {
            row.build(at, roof);
            return true;
        }
    }
    return false;
}

} // namespace tilm::machine_houses
