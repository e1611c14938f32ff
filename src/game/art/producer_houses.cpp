#include "game/art/producer_houses.h"

#include <cmath>
#include <vector>

#include <godot_cpp/core/error_macros.hpp>

#include "game/art/house_parts.h"
#include "game/art/shapes.h"

namespace tilm::producer_houses {
namespace {

using namespace house_parts;
using pal::col;
using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;
using shapes::rnd;

// A board on the gable with a big emblem on it tells the houses apart from afar.
void emblem_board(Node3D *at, const Vector3 &pos, float radius, const Color &paint) {
    put(at, loft({{-0.06f, radius, radius}, {0.06f, radius * 0.93f, radius * 0.93f}}, 10), paint, pos,
        Vector3(90, 0, 0));
}

void coop(Node3D *at) {
    yard(at, col(pal::SAND), col(pal::WOOD_LIGHT));
    const Color wall = col(0xffc857), trim = col(pal::WHITE);
    const Vector3 home(-0.35f, 0.42f, -1.75f);
    for (const float x : {-1.0f, 1.0f}) {
        for (const float z : {-0.6f, 0.6f}) {
            put(at, bevel_box(Vector3(0.2f, 0.5f, 0.2f), 0.04f), pal::WOOD_DARK,
                Vector3(home.x + x, 0.25f, home.z + z));
        }
    }
    put(at, bevel_box(Vector3(2.75f, 0.18f, 1.85f), 0.05f), pal::WOOD, home);
    put(at, bevel_box(Vector3(2.45f, 1.15f, 1.55f), 0.05f, 0.98f), wall, home + Vector3(0, 0.64f, 0));
    put(at, shapes::gable(2.4f, 1.0f, 1.5f), wall, home + Vector3(0, 1.2f, 0));
    planks(at, home + Vector3(0, 0.1f, 0.765f), 2.4f, 1.1f, 6, pal::tone(wall, -0.16f));
    for (const float x : {-1.19f, 1.19f}) {
        put(at, bevel_box(Vector3(0.17f, 1.2f, 0.17f), 0.04f), trim, home + Vector3(x, 0.66f, 0.76f));
    }
    put(at, bevel_box(Vector3(2.6f, 0.15f, 0.13f), 0.04f), trim, home + Vector3(0, 1.24f, 0.79f));
    roof(at, home + Vector3(0, 1.22f, 0), 1.28f, 1.05f, 1.8f, col(pal::RED));
    // The arched pop-hole and its ramp.
    put(at,
        shapes::extrude({Vector2(-0.42f, 0), Vector2(0.42f, 0), Vector2(0.42f, 0.5f), Vector2(0.26f, 0.78f),
                         Vector2(-0.26f, 0.78f), Vector2(-0.42f, 0.5f)},
                        0.14f),
        trim, home + Vector3(-0.45f, 0.09f, 0.77f));
    put(at,
        shapes::extrude({Vector2(-0.29f, 0), Vector2(0.29f, 0), Vector2(0.29f, 0.46f), Vector2(0.17f, 0.64f),
                         Vector2(-0.17f, 0.64f), Vector2(-0.29f, 0.46f)},
                        0.16f),
        pal::CHOCOLATE, home + Vector3(-0.45f, 0.10f, 0.79f));
    put(at, bevel_box(Vector3(0.72f, 0.09f, 1.15f), 0.03f), pal::WOOD_LIGHT,
        Vector3(home.x - 0.45f, 0.26f, home.z + 1.34f), Vector3(21, 0, 0));
    for (int i = 0; i < 4; i++) {
        put(at, bevel_box(Vector3(0.72f, 0.08f, 0.10f), 0.02f), pal::WOOD,
            Vector3(home.x - 0.45f, 0.45f - 0.1f * float(i), home.z + 0.97f + 0.25f * float(i)), Vector3(21, 0, 0));
    }
    window(at, home + Vector3(0.62f, 0.66f, 0.78f), 0.5f, 0.42f, trim);
    emblem_board(at, home + Vector3(0, 1.66f, 0.77f), 0.33f, col(pal::SKY));
    put(at,
        loft({{-0.24f, 0.02f, 0.02f},
              {-0.14f, 0.16f, 0.12f},
              {0.02f, 0.19f, 0.14f},
              {0.16f, 0.12f, 0.1f},
              {0.25f, 0.02f, 0.02f}},
             9),
        pal::WHITE, home + Vector3(0, 1.66f, 0.87f));
    // Nest boxes with their own lean-to roof, straw pouring out.
    const Vector3 nest = home + Vector3(1.62f, 0.32f, -0.05f);
    put(at, bevel_box(Vector3(0.80f, 0.55f, 1.25f), 0.04f), 0xe0a845, nest);
    put(at, bevel_box(Vector3(1.0f, 0.13f, 1.45f), 0.04f), pal::RED_DARK, nest + Vector3(0.02f, 0.40f, 0),
        Vector3(0, 0, -20));
    for (const float z : {-0.3f, 0.3f}) {
        put(at, ball(Vector3(0.16f, 0.17f, 0.22f), 7, 4), pal::CHOCOLATE, nest + Vector3(0.36f, -0.02f, z));
        put(at, ball(Vector3(0.17f, 0.09f, 0.24f), 7, 3), pal::STRAW, nest + Vector3(0.40f, -0.14f, z));
    }
    // Weather vane, a scatter of straw, a bucket.
    put(at, loft({{0, 0.07f, 0.07f}, {0.5f, 0.06f, 0.06f}}, 5), pal::STONE_DARK, home + Vector3(0, 2.3f, -0.55f));
    put(at,
        shapes::extrude({Vector2(-0.3f, 0.1f), Vector2(0.12f, 0), Vector2(0.34f, 0.26f), Vector2(0.18f, 0.3f),
                         Vector2(0.02f, 0.2f), Vector2(-0.22f, 0.42f)},
                        0.13f),
        pal::INK, home + Vector3(0, 2.75f, -0.55f), Vector3(0, 18, 0));
    for (int i = 0; i < 5; i++) {
        put(at, loft({{0, 0.26f, 0.2f}, {0.07f, 0.14f, 0.1f}}, 7), pal::tone(i % 2 ? pal::STRAW : pal::YELLOW, 0.25f),
            Vector3(rnd(11, i, -2.2f, 2.2f), 0.03f, rnd(12, i, -0.6f, 1.2f)), Vector3(0, float(i) * 50, 0));
    }
    hay_bale(at, Vector3(-2.15f, 0.03f, -2.05f), 15);
    bush(at, Vector3(2.2f, 0, -2.35f), 0.6f, col(pal::LEAF), 4);
    flowers(at, Vector3(-2.25f, 0, 1.3f), 0.35f, 4, 2);
}

void barn(Node3D *at) {
    yard(at, col(0xb9c77a), col(pal::WHITE));
    const Color red = col(0xd9483f), trim = col(pal::WHITE), slate = col(0x6b7f95);
    const Vector3 home(0, 0, -1.85f);
    put(at, bevel_box(Vector3(3.9f, 0.24f, 1.95f), 0.05f), pal::STONE, home + Vector3(0, 0.1f, 0));
    put(at, bevel_box(Vector3(3.7f, 1.55f, 1.75f), 0.04f), red, home + Vector3(0, 0.95f, 0));
    const std::vector<Vector2> front = {Vector2(-1.85f, 0), Vector2(1.85f, 0), Vector2(1.36f, 0.86f), Vector2(0, 1.38f),
                                        Vector2(-1.36f, 0.86f)};
    put(at, shapes::extrude(front, 1.72f), red, home + Vector3(0, 1.68f, 0));
    planks(at, home + Vector3(0, 0.2f, 0.86f), 3.7f, 1.5f, 9, pal::tone(red, -0.14f));
    // Gambrel roof: two folds a side.
    for (const float side : {-1.0f, 1.0f}) {
        put(at, bevel_box(Vector3(1.18f, 0.17f, 2.2f), 0.05f), pal::tone(slate, -0.06f),
            home + Vector3(side * 1.68f, 2.12f, 0), Vector3(0, 0, side * -60));
        put(at, bevel_box(Vector3(1.60f, 0.17f, 2.25f), 0.05f), pal::tone(slate, 0.08f),
            home + Vector3(side * 0.70f, 2.86f, 0), Vector3(0, 0, side * -21));
        put(at, bevel_box(Vector3(0.18f, 1.55f, 0.18f), 0.04f), trim, home + Vector3(side * 1.80f, 0.98f, 0.84f));
        put(at, bevel_box(Vector3(1.05f, 0.14f, 0.14f), 0.03f), trim, home + Vector3(side * 1.60f, 2.10f, 0.88f),
            Vector3(0, 0, side * -60));
        put(at, bevel_box(Vector3(1.46f, 0.14f, 0.14f), 0.03f), trim, home + Vector3(side * 0.68f, 2.78f, 0.88f),
            Vector3(0, 0, side * -21));
    }
    put(at, loft({{-1.15f, 0.16f, 0.13f}, {1.15f, 0.16f, 0.13f}}, 6), pal::tone(slate, 0.2f),
        home + Vector3(0, 3.15f, 0), Vector3(-90, 0, 0));
    double_door(at, home + Vector3(0, 0.2f, 0.88f), 1.5f, 1.3f, pal::tone(red, -0.12f), trim);
    window(at, home + Vector3(-1.32f, 1.0f, 0.87f), 0.42f, 0.44f, trim);
    window(at, home + Vector3(1.32f, 1.0f, 0.87f), 0.42f, 0.44f, trim);
    put(at, bevel_box(Vector3(0.86f, 0.74f, 0.12f), 0.04f), trim, home + Vector3(0, 2.22f, 0.88f));
    put(at, bevel_box(Vector3(0.66f, 0.55f, 0.14f), 0.03f), pal::CHOCOLATE, home + Vector3(0, 2.20f, 0.90f));
    put(at, ball(Vector3(0.36f, 0.17f, 0.16f), 7, 3), pal::STRAW, home + Vector3(0, 2.02f, 0.98f));
    // Silo beside the barn.
    put(at, loft({{0, 0.50f, 0.50f}, {2.5f, 0.48f, 0.48f}}, 10), pal::METAL, Vector3(2.25f, 0, -2.15f));
    put(at, loft({{2.45f, 0.53f, 0.53f}, {2.8f, 0.36f, 0.36f}, {2.98f, 0.0f, 0.0f}}, 10), pal::BLUE,
        Vector3(2.25f, 0, -2.15f));
    for (const float y : {0.7f, 1.5f}) {
        put(at, loft({{y, 0.52f, 0.52f}, {y + 0.13f, 0.52f, 0.52f}}, 10), pal::STONE_DARK, Vector3(2.25f, 0, -2.15f));
    }
    hay_bale(at, Vector3(-2.2f, 0.03f, -1.1f), 80);
    hay_bale(at, Vector3(-2.2f, 0.48f, -1.15f), 65);
}

void pond(Node3D *at) {
    trodden(at, col(0xb9a77c));
    put(at, loft({{0.0f, 2.35f, 1.85f}, {0.085f, 2.3f, 1.8f}}, 14, 0.35f), 0x4aa9dc, Vector3(0, 0, -0.45f));
    put(at, loft({{0.0f, 1.6f, 1.15f}, {0.11f, 1.5f, 1.05f}}, 12, 0.2f), 0x2f88c9, Vector3(-0.1f, 0, -0.4f));
    for (int i = 0; i < 15; i++) {
        const float a = float(i) * 0.419f;
        const float s = rnd(21, i, 0.22f, 0.42f);
        put(at, ball(Vector3(s, s * 0.6f, s * 0.85f), 7, 3), pal::tone(pal::STONE, rnd(22, i, -0.18f, 0.12f)),
            Vector3(2.55f * std::sin(a), 0.06f, -0.5f + 2.05f * std::cos(a) * (std::cos(a) > 0.75f ? 1.04f : 1.0f)),
            Vector3(0, float(i) * 40, 0));
    }
    // Jetty to the front and the fisher's hut behind.
    for (int i = 0; i < 5; i++) {
        put(at, bevel_box(Vector3(1.1f, 0.10f, 0.30f), 0.03f), pal::tone(pal::WOOD_LIGHT, rnd(23, i, -0.08f, 0.08f)),
            Vector3(0.1f, 0.27f, 1.9f - 0.33f * float(i)), Vector3(0, rnd(24, i, -3, 3), 0));
    }
    for (const float x : {-0.4f, 0.6f}) {
        put(at, loft({{0, 0.09f, 0.09f}, {0.55f, 0.08f, 0.08f}}, 6), pal::WOOD_DARK, Vector3(x, 0, 0.5f));
    }
    const Vector3 home(-1.55f, 0.05f, -2.35f);
    walls(at, home, Vector3(1.7f, 1.05f, 1.1f), 0.7f, col(0x5fb4d4), col(pal::WHITE));
    roof(at, home + Vector3(0, 1.05f, 0), 0.9f, 0.72f, 1.25f, col(pal::BLUE));
    window(at, home + Vector3(0, 0.62f, 0.56f), 0.45f, 0.38f, col(pal::WHITE));
    for (int i = 0; i < 4; i++) {
        const Vector3 p(rnd(25, i, -1.4f, 1.6f), 0.11f, rnd(26, i, -1.6f, 0.2f));
        put(at, loft({{0, 0.28f, 0.28f}, {0.03f, 0.26f, 0.26f}}, 8), pal::LEAF, p, Vector3(0, float(i) * 70, 0));
        if (i % 2 == 0) {
            put(at, ball(Vector3(0.13f, 0.11f, 0.13f), 6, 3), pal::PINK, p + Vector3(0, 0.09f, 0));
        }
    }
    for (int i = 0; i < 6; i++) {
        const Vector3 p(1.75f + rnd(27, i, -0.3f, 0.3f), 0, -2.0f + rnd(28, i, -0.3f, 0.3f));
        put(at, loft({{0, 0.05f, 0.05f}, {rnd(29, i, 0.8f, 1.2f), 0.03f, 0.03f}}, 5), pal::LEAF_DARK, p,
            Vector3(rnd(30, i, -8, 8), 0, rnd(31, i, -8, 8)));
        put(at, ball(Vector3(0.08f, 0.20f, 0.08f), 6, 3), pal::BROWN, p + Vector3(0, 0.95f, 0));
    }
}

void calf_pen(Node3D *at) {
    yard(at, col(0xd2b583), col(pal::WOOD));
    const Vector3 home(0, 0, -1.95f);
    for (const float x : {-2.0f, 0.0f, 2.0f}) {
        put(at, bevel_box(Vector3(0.2f, 1.9f, 0.2f), 0.04f), pal::WOOD_DARK, home + Vector3(x, 0.95f, 0.7f));
        put(at, bevel_box(Vector3(0.2f, 1.5f, 0.2f), 0.04f), pal::WOOD_DARK, home + Vector3(x, 0.75f, -0.7f));
    }
    put(at, bevel_box(Vector3(4.2f, 1.35f, 0.16f), 0.04f), pal::WOOD_LIGHT, home + Vector3(0, 0.72f, -0.7f));
    for (int i = 0; i < 5; i++) {
        put(at, bevel_box(Vector3(0.97f, 0.15f, 2.1f), 0.04f), i % 2 ? 0x3f7fb8 : 0x5296cc,
            home + Vector3(-1.9f + 0.95f * float(i), 1.86f, 0.0f), Vector3(15, 0, 0));
    }
    put(at, bevel_box(Vector3(3.9f, 0.10f, 1.4f), 0.03f), pal::STRAW, home + Vector3(0, 0.04f, 0));
    hay_bale(at, home + Vector3(-1.3f, 0.06f, -0.2f), 8);
    hay_bale(at, home + Vector3(-1.35f, 0.52f, -0.25f), -14);
    barrel(at, home + Vector3(1.45f, 0.06f, 0.0f), 1.2f);
    emblem_board(at, home + Vector3(0, 1.62f, 1.02f), 0.36f, col(pal::CREAM));
    put(at, ball(Vector3(0.21f, 0.24f, 0.08f), 8, 4), 0xc98350, home + Vector3(0, 1.62f, 1.09f));
    put(at, ball(Vector3(0.15f, 0.11f, 0.10f), 7, 3), pal::PINK, home + Vector3(0, 1.50f, 1.14f));
}

void hen_house(Node3D *at) {
    yard(at, col(0xdcc08a), col(pal::WOOD_DARK));
    const Vector3 home(0.2f, 0, -1.8f);
    walls(at, home, Vector3(3.4f, 1.35f, 1.6f), 0.95f, col(0xa9643c), col(pal::CREAM));
    planks(at, home + Vector3(0, 0.2f, 0.81f), 3.3f, 1.15f, 8, col(0x8d5030));
    roof(at, home + Vector3(0, 1.35f, 0), 1.75f, 0.98f, 1.8f, col(0x4c9a57));
    for (const float x : {-1.05f, 0.0f, 1.05f}) {
        put(at,
            shapes::extrude(
                {Vector2(-0.27f, 0), Vector2(0.27f, 0), Vector2(0.27f, 0.4f), Vector2(0, 0.62f), Vector2(-0.27f, 0.4f)},
                0.16f),
            pal::CREAM, home + Vector3(x, 0.2f, 0.82f));
        put(at,
            shapes::extrude({Vector2(-0.17f, 0), Vector2(0.17f, 0), Vector2(0.17f, 0.34f), Vector2(0, 0.48f),
                             Vector2(-0.17f, 0.34f)},
                            0.18f),
            pal::CHOCOLATE, home + Vector3(x, 0.2f, 0.85f));
    }
    emblem_board(at, home + Vector3(0, 1.75f, 0.82f), 0.34f, col(pal::YELLOW));
    put(at, ball(Vector3(0.2f, 0.2f, 0.09f), 8, 4), 0xc8703a, home + Vector3(-0.02f, 1.72f, 0.90f));
    put(at, ball(Vector3(0.09f, 0.11f, 0.08f), 6, 3), pal::RED, home + Vector3(0.08f, 1.92f, 0.90f));
    put(at, bevel_box(Vector3(2.2f, 0.12f, 0.12f), 0.03f), pal::WOOD, Vector3(-1.3f, 0.72f, 0.0f), Vector3(0, 90, 0));
    barrel(at, Vector3(-2.2f, 0.03f, -2.1f), 1.1f);
    crate(at, Vector3(2.3f, 0.03f, -1.0f), 1.0f, 20);
}

void apiary(Node3D *at) {
    trodden(at, col(0x9ccf5f));
    const uint32_t paints[] = {pal::YELLOW, pal::SKY, pal::PINK, pal::WHITE, pal::LEAF_LIGHT};
    for (int i = 0; i < 5; i++) {
        const Vector3 p(-1.9f + 0.95f * float(i), 0.05f, i % 2 ? -1.85f : -1.2f);
        Node3D *hive = shapes::joint(at, "Hive", p);
        hive->set_rotation_degrees(Vector3(0, rnd(41, i, -14, 14), 0));
        for (const float x : {-0.26f, 0.26f}) {
            put(hive, bevel_box(Vector3(0.14f, 0.3f, 0.5f), 0.03f), pal::WOOD_DARK, Vector3(x, 0.15f, 0));
        }
        for (int box = 0; box < (i % 2 ? 3 : 2); box++) {
            put(hive, bevel_box(Vector3(0.74f, 0.36f, 0.64f), 0.04f), pal::tone(paints[i], box % 2 ? -0.10f : 0.0f),
                Vector3(0, 0.46f + 0.37f * float(box), 0));
        }
        const float top = i % 2 ? 1.42f : 1.05f;
        put(hive, bevel_box(Vector3(0.90f, 0.15f, 0.80f), 0.05f), pal::WOOD_LIGHT, Vector3(0, top, 0));
        put(hive, bevel_box(Vector3(0.42f, 0.12f, 0.14f), 0.03f), pal::CHOCOLATE, Vector3(0, 0.37f, 0.30f));
    }
    // A straw skep as the landmark.
    for (int i = 0; i < 5; i++) {
        const float r = 0.62f * std::sqrt(1.0f - float(i * i) / 30.0f);
        put(at, loft({{0, r * 0.94f, r * 0.94f}, {0.1f, r, r}, {0.22f, r * 0.9f, r * 0.9f}}, 10),
            i % 2 ? pal::STRAW_DARK : pal::STRAW, Vector3(1.9f, 0.05f + 0.21f * float(i), 0.3f));
    }
    put(at, ball(Vector3(0.2f, 0.2f, 0.12f), 7, 3), pal::CHOCOLATE, Vector3(1.9f, 0.3f, 0.85f));
    flowers(at, Vector3(-1.5f, 0.03f, 0.5f), 1.0f, 14, 3);
    flowers(at, Vector3(0.7f, 0.03f, -0.2f), 0.6f, 7, 4);
    fence_run(at, Vector3(-2.6f, 0, -2.6f), Vector3(2.6f, 0, -2.6f), col(pal::WHITE), 0.55f);
}

// A wheel of blades on a lattice tower draws the water that oranges need.
void wind_pump(Node3D *at, const Vector3 &foot) {
    for (int i = 0; i < 4; i++) {
        const float x = i % 2 ? 0.4f : -0.4f, z = i < 2 ? 0.4f : -0.4f;
        put(at, bevel_box(Vector3(0.12f, 2.7f, 0.12f), 0.02f), pal::METAL, foot + Vector3(x * 0.6f, 1.3f, z * 0.6f),
            Vector3(z > 0 ? -7 : 7, 0, x > 0 ? 7 : -7));
    }
    for (const float y : {0.8f, 1.6f}) {
        put(at, bevel_box(Vector3(0.62f, 0.1f, 0.62f), 0.02f), pal::METAL, foot + Vector3(0, y, 0));
    }
    const Vector3 hub = foot + Vector3(0, 2.75f, 0.32f);
    for (int i = 0; i < 8; i++) {
        const float a = float(i) * 0.785f;
        put(at, bevel_box(Vector3(0.62f, 0.34f, 0.06f), 0.02f, 0.8f), i % 2 ? pal::WHITE : pal::RED,
            hub + Vector3(0.52f * std::cos(a), 0.52f * std::sin(a), 0), Vector3(0, 0, float(i) * 45));
    }
    put(at, ball(Vector3(0.18f, 0.18f, 0.18f), 8, 4), pal::YELLOW, hub + Vector3(0, 0, 0.06f));
    put(at, bevel_box(Vector3(0.08f, 0.5f, 0.8f), 0.02f), pal::RED, hub + Vector3(0, 0, -0.9f));
    put(at, loft({{0, 0.5f, 0.5f}, {0.36f, 0.55f, 0.55f}}, 9), pal::WOOD_LIGHT, foot + Vector3(-0.1f, 0.03f, 0.9f));
    put(at, loft({{0, 0.46f, 0.46f}, {0.02f, 0, 0}}, 9), pal::BLUE, foot + Vector3(-0.1f, 0.36f, 0.9f));
}

void orchard(Node3D *at, uint32_t fruit, uint32_t leaf) {
    trodden(at, col(0x9ccf5f));
    const Vector3 spots[] = {
        {-1.9f, 0, -2.0f}, {0.0f, 0, -2.25f}, {1.9f, 0, -1.95f}, {-1.95f, 0, 0.0f}, {1.95f, 0, 0.1f}};
    const bool oranges = fruit == pal::ORANGE;
    for (int i = 0; i < 5; i++) {
        if (oranges && i == 2) {
            wind_pump(at, spots[i]);
            continue;
        }
        orchard_tree(at, spots[i], rnd(51, i, 0.95f, 1.15f), pal::tone(col(leaf), rnd(52, i, -0.06f, 0.06f)),
                     col(fruit), 60 + i);
    }
    put(at, loft({{0, 0.24f, 0.24f}, {0.34f, 0.34f, 0.34f}}, 9), pal::WOOD_LIGHT, Vector3(-0.4f, 0.04f, -0.7f));
    for (int i = 0; i < 5; i++) {
        put(at, ball(Vector3(0.14f, 0.14f, 0.14f), 7, 3), fruit,
            Vector3(-0.4f + 0.17f * std::sin(float(i) * 1.3f), 0.42f, -0.7f + 0.17f * std::cos(float(i) * 1.3f)));
    }
    if (oranges) {
        // A scarecrow guards the oranges and tells the two orchards apart.
        const Vector3 foot(0.75f, 0, 0.55f);
        put(at, loft({{0, 0.07f, 0.07f}, {1.5f, 0.06f, 0.06f}}, 6), pal::WOOD_DARK, foot);
        put(at, bevel_box(Vector3(1.5f, 0.12f, 0.12f), 0.03f), pal::WOOD, foot + Vector3(0, 1.15f, 0));
        put(at, loft({{0.6f, 0.34f, 0.2f}, {1.3f, 0.26f, 0.18f}}, 8, 0.5f), pal::RED_DARK, foot);
        put(at, ball(Vector3(0.24f, 0.25f, 0.23f), 8, 4), pal::SAND, foot + Vector3(0, 1.55f, 0));
        put(at, loft({{1.66f, 0.46f, 0.46f}, {1.74f, 0.26f, 0.26f}, {2.15f, 0.08f, 0.08f}}, 8), pal::STRAW_DARK, foot);
    }
    // Ladder against the middle tree.
    for (const float x : {-0.2f, 0.2f}) {
        put(at, bevel_box(Vector3(0.12f, 1.7f, 0.12f), 0.02f), pal::WOOD_LIGHT, Vector3(0.55f + x, 0.8f, -1.75f),
            Vector3(-16, 0, 0));
    }
    for (int i = 0; i < 4; i++) {
        put(at, bevel_box(Vector3(0.5f, 0.12f, 0.12f), 0.02f), pal::WOOD,
            Vector3(0.55f, 0.3f + 0.36f * float(i), -1.6f - 0.105f * float(i)));
    }
    fence_run(at, Vector3(-2.7f, 0, -2.75f), Vector3(2.7f, 0, -2.75f), col(pal::WOOD), 0.5f);
}

void sheep_shed(Node3D *at) {
    yard(at, col(0xa9c86a), col(0x9a8f80));
    const Vector3 home(-0.2f, 0, -1.85f);
    put(at, bevel_box(Vector3(3.3f, 1.3f, 1.6f), 0.08f), pal::STONE, home + Vector3(0, 0.65f, 0));
    for (int i = 0; i < 9; i++) {
        put(at, bevel_box(Vector3(rnd(71, i, 0.3f, 0.5f), 0.22f, 0.14f), 0.05f),
            pal::tone(pal::STONE, rnd(72, i, -0.16f, 0.14f)),
            home + Vector3(rnd(73, i, -1.45f, 1.45f), rnd(74, i, 0.2f, 1.1f), 0.79f));
    }
    put(at, shapes::gable(3.2f, 0.95f, 1.5f), pal::WOOD_LIGHT, home + Vector3(0, 1.28f, 0));
    roof(at, home + Vector3(0, 1.3f, 0), 1.7f, 1.0f, 1.75f, col(pal::STRAW_DARK));
    put(at, bevel_box(Vector3(1.3f, 1.1f, 0.14f), 0.04f), pal::WOOD_DARK, home + Vector3(0, 0.55f, 0.79f));
    put(at, bevel_box(Vector3(1.05f, 0.95f, 0.16f), 0.03f), pal::CHOCOLATE, home + Vector3(0, 0.5f, 0.81f));
    emblem_board(at, home + Vector3(0, 1.68f, 0.78f), 0.34f, col(pal::TEAL));
    for (int i = 0; i < 5; i++) {
        put(at, ball(Vector3(0.13f, 0.13f, 0.08f), 7, 3), pal::WHITE,
            home + Vector3(0.13f * std::sin(float(i) * 1.257f), 1.68f + 0.13f * std::cos(float(i) * 1.257f), 0.87f));
    }
    put(at, ball(Vector3(0.10f, 0.13f, 0.08f), 6, 3), 0x4a4148, home + Vector3(0, 1.64f, 0.95f));
    for (int i = 0; i < 3; i++) {
        put(at, ball(Vector3(0.3f, 0.24f, 0.3f), 8, 4), pal::WHITE,
            Vector3(2.15f + 0.15f * float(i % 2), 0.2f + 0.25f * float(i == 2), -2.2f + 0.42f * float(i % 2)));
    }
    bush(at, Vector3(-2.3f, 0, -2.3f), 0.55f, col(pal::LEAF_DARK), 6);
}

void coffee_farm(Node3D *at) {
    trodden(at, col(pal::SOIL));
    for (int i = 0; i < 8; i++) {
        const Vector3 p(-2.1f + 1.4f * float(i % 4), 0.05f, i < 4 ? -1.15f : 0.15f);
        put(at, loft({{0, 0.10f, 0.10f}, {0.4f, 0.08f, 0.08f}}, 6), pal::WOOD_DARK, p);
        put(at, loft({{0.25f, 0.36f, 0.36f}, {0.6f, 0.48f, 0.46f}, {0.95f, 0.3f, 0.3f}, {1.15f, 0.0f, 0.0f}}, 8),
            pal::tone(pal::LEAF_DARK, rnd(81, i, -0.05f, 0.12f)), p, Vector3(0, float(i) * 30, 0));
        for (int b = 0; b < 5; b++) {
            const float a = rnd(82 + i, b) * 3.4f - 0.1f;
            put(at, ball(Vector3(0.12f, 0.12f, 0.12f), 6, 3), b % 3 ? pal::RED : pal::ORANGE,
                p + Vector3(0.43f * std::cos(a), 0.42f + 0.11f * float(b), 0.43f * std::sin(a)) *
                        (1.0f - 0.05f * float(b)));
        }
    }
    const Vector3 home(0.9f, 0.04f, -2.25f);
    walls(at, home, Vector3(2.2f, 1.1f, 1.05f), 0.7f, col(pal::WOOD_LIGHT), col(pal::CREAM));
    roof(at, home + Vector3(0, 1.1f, 0), 1.15f, 0.75f, 1.2f, col(0x7a4a2c));
    window(at, home + Vector3(0.4f, 0.65f, 0.54f), 0.45f, 0.36f, col(pal::CREAM));
    put(at, bevel_box(Vector3(0.5f, 0.8f, 0.13f), 0.03f), pal::CHOCOLATE, home + Vector3(-0.5f, 0.45f, 0.54f));
    for (int i = 0; i < 3; i++) {
        put(at, loft({{0, 0.24f, 0.2f}, {0.1f, 0.30f, 0.26f}, {0.5f, 0.24f, 0.2f}, {0.58f, 0.12f, 0.1f}}, 8, 0.4f),
            0xc9a06a, Vector3(-1.9f + 0.55f * float(i), 0.05f, -2.3f + 0.12f * float(i % 2)),
            Vector3(0, float(i) * 25, 0));
    }
}

} // namespace

Node3D *build(const String &product) {
    struct Row {
        const char *product;
        void (*build)(Node3D *);
    };
    static const Row rows[] = {{"egg", coop},
                               {"milk", barn},
                               {"fish", pond},
                               {"calf", calf_pen},
                               {"hen", hen_house},
                               {"honey", apiary},
                               {"apple", [](Node3D *at) { orchard(at, pal::RED, pal::LEAF); }},
                               {"orange", [](Node3D *at) { orchard(at, pal::ORANGE, pal::LEAF_DARK); }},
                               {"wool", sheep_shed},
                               {"bean", coffee_farm}};
    Node3D *root = memnew(Node3D);
    for (const Row &row : rows) {
        if (product == String(row.product)) {
            row.build(root);
            return root;
        }
    }
    WARN_PRINT(String("TILMARCH no house for the product ") + product);
    walls(root, Vector3(0, 0, -1.8f), Vector3(3, 1.3f, 1.6f), 0.9f, col(pal::PLASTER), col(pal::WOOD));
    roof(root, Vector3(0, 1.3f, -1.8f), 1.6f, 0.95f, 1.8f, col(pal::RED));
    return root;
}

} // namespace tilm::producer_houses
