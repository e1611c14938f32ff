#include "game/art/machine_houses.h"

#include <cmath>
#include <vector>

#include <godot_cpp/core/error_macros.hpp>

#include "game/art/house_parts.h"
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

void sacks(Node3D *at, const Vector3 &p, int count, const Color &cloth) {
    for (int i = 0; i < count; i++) {
        put(at, loft({{0, 0.26f, 0.2f}, {0.12f, 0.31f, 0.25f}, {0.48f, 0.25f, 0.2f}, {0.58f, 0.13f, 0.1f}}, 8, 0.4f),
            pal::tone(cloth, i % 2 ? -0.05f : 0.0f),
            p + Vector3(0.42f * float(i % 2), 0.46f * float(i / 2), 0.1f * float(i % 2)), Vector3(0, float(i) * 35, 0));
    }
}

// Tower with the wheel of sails before it, which turns on its own.
void mill(Node3D *at, const Color &roof_color) {
    site(at, col(pal::SAND));
    const Vector3 home(-0.6f, 0, -0.95f);
    put(at, loft({{0, 1.38f, 1.3f}, {0.35f, 1.3f, 1.22f}}, 10), pal::STONE, home);
    put(at, loft({{0.3f, 1.24f, 1.16f}, {2.2f, 1.06f, 1.0f}, {4.0f, 0.9f, 0.88f}}, 10), pal::PLASTER, home);
    put(at, loft({{1.75f, 1.14f, 1.07f}, {1.95f, 1.12f, 1.05f}}, 10), pal::WOOD, home);
    put(at, loft({{3.9f, 1.12f, 1.1f}, {4.15f, 1.08f, 1.06f}, {4.9f, 0.62f, 0.62f}, {5.3f, 0, 0}}, 10), roof_color,
        home);
    put(at, loft({{-0.5f, 0.14f, 0.14f}, {0.5f, 0.14f, 0.14f}}, 7), pal::WOOD_DARK, Vector3(-0.6f, 4.5f, 0.1f),
        Vector3(90, 0, 0));
    double_door(at, home + Vector3(0, 0.05f, 1.2f), 0.85f, 1.15f, col(pal::WOOD), col(pal::WOOD_DARK));
    window(at, home + Vector3(0, 2.55f, 1.0f), 0.42f, 0.45f, col(pal::WOOD_DARK));
    // The store behind, whose chimney takes the dust away.
    hall(at, Vector3(1.1f, 0, -1.35f), Vector3(1.7f, 1.25f, 1.6f), Wall::wood, col(pal::WOOD_LIGHT));
    roof(at, Vector3(1.1f, 1.25f, -1.35f), 0.9f, 0.65f, 1.7f, pal::tone(roof_color, -0.1f));
    chimney(at, 1.2f, col(pal::STONE));
    sacks(at, Vector3(0.75f, 0.03f, 0.0f), 3, col(pal::WHITE));
}

void oil_press(Node3D *at, const Color &roof_color) {
    site(at, col(pal::SAND));
    const Vector3 home(-0.75f, 0, -1.45f);
    hall(at, home, Vector3(2.6f, 1.55f, 1.9f), Wall::wood, col(0xd7a24a));
    put(at, shapes::gable(2.55f, 1.0f, 1.8f), 0xd7a24a, home + Vector3(0, 1.52f, 0));
    roof(at, home + Vector3(0, 1.52f, 0), 1.36f, 1.05f, 2.0f, roof_color);
    double_door(at, home + Vector3(0, 0.1f, 0.96f), 1.1f, 1.15f, col(pal::WOOD), col(pal::CREAM));
    // A sunflower over the door.
    for (int i = 0; i < 10; i++) {
        const float a = float(i) * 0.6283f;
        put(at, ball(Vector3(0.15f, 0.09f, 0.06f), 6, 3), pal::YELLOW,
            home + Vector3(0.36f * std::cos(a), 1.95f + 0.36f * std::sin(a), 1.0f), Vector3(0, 0, a * 57.2958f));
    }
    put(at, ball(Vector3(0.27f, 0.27f, 0.13f), 9, 4), pal::BROWN, home + Vector3(0, 1.95f, 1.02f));
    // A bottle taller than the house, and the tank that fills it.
    const Vector3 bottle(1.35f, 0.03f, -1.75f);
    put(at,
        loft({{0, 0.72f, 0.72f},
              {0.12f, 0.80f, 0.80f},
              {1.95f, 0.80f, 0.80f},
              {2.5f, 0.30f, 0.30f},
              {3.15f, 0.26f, 0.26f}},
             12),
        0xf0b63a, bottle);
    put(at, loft({{0.55f, 0.83f, 0.83f}, {1.45f, 0.83f, 0.83f}}, 12), pal::CREAM, bottle);
    put(at, ball(Vector3(0.3f, 0.34f, 0.12f), 8, 4), pal::YELLOW, bottle + Vector3(0, 1.0f, 0.78f));
    put(at, loft({{3.05f, 0.34f, 0.34f}, {3.5f, 0.31f, 0.31f}}, 10), pal::GREEN, bottle);
    tank(at, Vector3(2.35f, 0.03f, -0.75f), 0.36f, 1.2f, col(pal::METAL));
    chimney(at, 0.0f, col(pal::STONE_DARK));
    barrel(at, Vector3(0.3f, 0.03f, 0.35f), 1.0f);
    barrel(at, Vector3(-0.35f, 0.03f, 0.45f), 0.85f);
}

void butcher(Node3D *at, const Color &roof_color) {
    site(at, col(0xc9b79c));
    const Vector3 home(0, 0, -1.4f);
    const Vector3 size(3.9f, 2.0f, 2.1f);
    hall(at, home, size, Wall::brick, col(0xd98a76));
    flat_roof(at, home + Vector3(0, 2.0f, 0), size, roof_color);
    shop_front(at, home + Vector3(0, 0.1f, 1.06f), 3.7f, col(pal::WHITE));
    awning(at, home + Vector3(0.35f, 1.85f, 1.06f), 3.1f, roof_color);
    chimney(at, 1.9f, col(0xb5604e));
    // The joint that everybody sees from afar.
    const Vector3 sign(-0.5f, 3.1f, -0.9f);
    put(at, ball(Vector3(1.25f, 0.82f, 0.34f), 11, 5), 0xc73b44, sign, Vector3(0, 0, -12));
    put(at, ball(Vector3(1.05f, 0.64f, 0.38f), 11, 5), 0xf0707a, sign + Vector3(0.02f, 0.0f, 0.03f),
        Vector3(0, 0, -12));
    put(at, ball(Vector3(0.29f, 0.26f, 0.41f), 8, 4), pal::WHITE, sign + Vector3(0.36f, 0.05f, 0.04f));
    put(at, ball(Vector3(0.14f, 0.13f, 0.46f), 7, 3), 0xf0b0a0, sign + Vector3(0.36f, 0.05f, 0.05f));
    for (const float x : {-0.5f, 0.5f}) {
        put(at, bevel_box(Vector3(0.14f, 0.7f, 0.14f), 0.03f), pal::WOOD_DARK, sign + Vector3(x, -0.6f, 0));
    }
}

void poultry(Node3D *at, const Color &roof_color) {
    site(at, col(pal::SAND));
    const Vector3 home(0, 0, -1.5f);
    hall(at, home, Vector3(3.9f, 1.35f, 1.9f), Wall::plaster, col(0xfff0cf));
    for (int i = 0; i < 5; i++) {
        put(at, bevel_box(Vector3(0.88f, 0.15f, 2.35f), 0.04f), pal::tone(roof_color, i % 2 ? 0.12f : 0.0f),
            home + Vector3(-1.72f + 0.86f * float(i), 1.55f, 0.05f), Vector3(13, 0, 0));
    }
    shop_front(at, home + Vector3(0, 0.1f, 0.96f), 3.6f, col(pal::WOOD));
    chimney(at, 1.3f, col(pal::STONE));
    // A drumstick stands on the roof.
    const Vector3 leg(-0.55f, 1.75f, -1.5f);
    put(at,
        loft({{0, 0.5f, 0.45f},
              {0.35f, 0.72f, 0.62f},
              {0.85f, 0.6f, 0.52f},
              {1.3f, 0.26f, 0.24f},
              {1.45f, 0.14f, 0.14f}},
             10),
        0xc9742e, leg, Vector3(0, 0, -16));
    put(at, loft({{1.35f, 0.13f, 0.13f}, {1.85f, 0.12f, 0.12f}}, 7), pal::WHITE, leg, Vector3(0, 0, -16));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, ball(Vector3(0.17f, 0.16f, 0.16f), 7, 4), pal::WHITE,
            leg + Vector3(0.52f + side * 0.13f, 1.84f - side * 0.03f, 0));
    }
    crate(at, Vector3(0.1f, 0.03f, 0.3f), 0.95f, 12);
}

void creamery(Node3D *at, const Color &roof_color) {
    site(at, col(0xd8d2c4));
    const Vector3 home(-0.35f, 0, -1.35f);
    put(at, loft({{0, 1.75f, 1.3f}, {0.25f, 1.7f, 1.26f}}, 12, 0.2f), pal::STONE, home);
    put(at, loft({{0.2f, 1.6f, 1.18f}, {1.45f, 1.58f, 1.16f}}, 12, 0.2f), pal::WHITE, home);
    put(at, loft({{1.15f, 1.63f, 1.21f}, {1.3f, 1.63f, 1.21f}}, 12, 0.2f), pal::BLUE, home);
    // Its roof is a wheel of cheese; the wedge is cut out towards the road.
    std::vector<Vector2> wheel = {Vector2(0.15f, -0.1f)};
    for (int i = 0; i <= 13; i++) {
        const float a = -0.75f + 5.25f * float(i) / 13.0f;
        wheel.emplace_back(1.95f * std::cos(a), 1.5f * std::sin(a));
    }
    const Vector3 cheese = home + Vector3(0, 1.95f, 0);
    put(at, shapes::extrude(wheel, 0.95f), roof_color, cheese, Vector3(-90, 0, 0));
    put(at, shapes::extrude(wheel, 0.1f), pal::tone(roof_color, -0.2f), cheese + Vector3(0, -0.46f, 0),
        Vector3(-90, 0, 0), Vector3(1.03f, 1.03f, 1));
    const Vector3 holes[] = {
        {-0.9f, 0.47f, 0.2f}, {-0.2f, 0.47f, -0.6f}, {0.9f, 0.47f, -0.5f}, {-1.2f, 0.47f, -0.5f}, {1.3f, 0.47f, 0.2f}};
    for (int i = 0; i < 5; i++) {
        const float r = rnd(221, i, 0.15f, 0.26f);
        put(at, ball(Vector3(r, 0.07f, r * 0.85f), 8, 3), pal::tone(roof_color, -0.25f), cheese + holes[i]);
    }
    for (int i = 0; i < 4; i++) {
        const float a = 2.05f + 0.32f * float(i);
        put(at, ball(Vector3(0.16f, 0.17f, 0.08f), 8, 3), pal::tone(roof_color, -0.25f),
            cheese + Vector3(1.92f * std::cos(a), 0.18f - 0.3f * float(i % 2), 1.48f * std::sin(a)),
            Vector3(0, 90 - a * 57.2958f, 0));
    }
    double_door(at, home + Vector3(0, 0.1f, 1.17f), 0.95f, 1.0f, col(pal::BLUE), col(pal::WHITE));
    tank(at, Vector3(1.95f, 0.03f, -1.75f), 0.5f, 1.7f, col(pal::METAL));
    chimney(at, 0.2f, col(pal::METAL));
    for (int i = 0; i < 2; i++) {
        put(at, loft({{0, 0.2f, 0.2f}, {0.4f, 0.2f, 0.2f}, {0.5f, 0.12f, 0.12f}, {0.58f, 0.15f, 0.15f}}, 9), pal::METAL,
            Vector3(-0.45f + 0.5f * float(i), 0.03f, 0.35f + 0.12f * float(i)));
    }
}

void juice_press(Node3D *at, const Color &roof_color) {
    site(at, col(0xbfd48a));
    const Vector3 home(0, 0, -1.45f);
    const Vector3 size(3.5f, 1.5f, 1.9f);
    hall(at, home, size, Wall::plaster, col(0xfff3da));
    flat_roof(at, home + Vector3(0, 1.5f, 0), size, col(pal::LEAF));
    shop_front(at, home + Vector3(0, 0.1f, 0.96f), 3.3f, col(pal::WHITE));
    awning(at, home + Vector3(0.3f, 1.5f, 0.96f), 2.8f, roof_color);
    // Half an orange with a straw, its cut face to the front.
    const Vector3 fruit(-0.45f, 2.75f, -1.35f);
    put(at, ball(Vector3(1.05f, 1.05f, 0.62f), 12, 6), pal::ORANGE, fruit + Vector3(0, 0, -0.1f));
    put(at, loft({{0, 0.94f, 0.94f}, {0.12f, 0.9f, 0.9f}}, 12), pal::CREAM, fruit + Vector3(0, 0, 0.46f),
        Vector3(90, 0, 0));
    for (int i = 0; i < 6; i++) {
        const float a = float(i) * 1.0472f + 0.52f;
        put(at,
            shapes::extrude({Vector2(0.12f, 0), Vector2(0.8f, -0.36f), Vector2(0.86f, 0), Vector2(0.8f, 0.36f)}, 0.1f),
            i % 2 ? col(0xffb02e) : col(0xffa01f), fruit + Vector3(0, 0, 0.58f), Vector3(0, 0, a * 57.2958f));
    }
    put(at, loft({{0, 0.1f, 0.1f}, {1.7f, 0.1f, 0.1f}}, 7), pal::RED, fruit + Vector3(0.35f, 0.3f, -0.2f),
        Vector3(0, 0, -24));
    chimney(at, 1.4f, col(pal::METAL));
    crate(at, Vector3(-0.25f, 0.03f, 0.35f), 1.0f, 8);
    for (int i = 0; i < 4; i++) {
        put(at, ball(Vector3(0.14f, 0.14f, 0.14f), 7, 3), i % 2 ? pal::RED : pal::ORANGE,
            Vector3(-0.37f + 0.22f * float(i % 2), 0.5f, 0.24f + 0.22f * float(i / 2)));
    }
}

void weaver(Node3D *at, const Color &roof_color) {
    site(at, col(0xc6c99a));
    const Vector3 home(-0.55f, 0, -1.5f);
    hall(at, home, Vector3(2.5f, 2.05f, 1.8f), Wall::plaster, col(0xf3e6ff));
    put(at, shapes::gable(2.45f, 1.25f, 1.7f), 0xf3e6ff, home + Vector3(0, 2.02f, 0));
    roof(at, home + Vector3(0, 2.02f, 0), 1.3f, 1.3f, 1.9f, roof_color);
    for (const float side : {-1.0f, 1.0f}) {
        put(at, bevel_box(Vector3(0.13f, 1.35f, 0.08f), 0.02f), pal::WOOD, home + Vector3(side * 0.72f, 1.45f, 0.92f),
            Vector3(0, 0, side * 32));
    }
    double_door(at, home + Vector3(0, 0.1f, 0.9f), 0.9f, 1.1f, col(pal::PURPLE), col(pal::WOOD));
    window(at, home + Vector3(0, 2.3f, 0.88f), 0.5f, 0.5f, col(pal::WOOD));
    // A ball of yarn with its needles, and blankets on the line.
    const Vector3 yarn(1.55f, 2.1f, -1.75f);
    put(at, bevel_box(Vector3(1.5f, 1.35f, 1.3f), 0.06f), pal::WOOD_LIGHT, Vector3(1.5f, 0.68f, -1.75f));
    put(at, ball(Vector3(0.86f, 0.84f, 0.86f), 11, 6), pal::PINK, yarn);
    for (int i = 0; i < 4; i++) {
        put(at, shapes::arc(0.87f, 0.1f, 0.13f, 3.0f, 7), pal::tone(pal::PINK, i % 2 ? -0.14f : 0.2f), yarn,
            Vector3(float(i) * 25 - 60, float(i) * 40, float(i) * 45));
    }
    for (const float side : {-1.0f, 1.0f}) {
        put(at, loft({{-0.2f, 0.06f, 0.06f}, {1.45f, 0.05f, 0.05f}}, 6), pal::WOOD_LIGHT,
            yarn + Vector3(side * 0.1f, 0.2f, 0), Vector3(-14, 0, side * -28));
        put(at, ball(Vector3(0.12f, 0.12f, 0.12f), 7, 3), pal::YELLOW,
            yarn + Vector3(side * 0.1f + side * 0.66f, 1.44f, -0.3f));
    }
    chimney(at, 0.0f, col(0xb98fc4));
    for (const float x : {0.45f, 2.5f}) {
        put(at, loft({{0, 0.08f, 0.08f}, {1.4f, 0.07f, 0.07f}}, 6), pal::WOOD_DARK, Vector3(x, 0, -0.75f));
    }
    put(at, bevel_box(Vector3(2.2f, 0.06f, 0.06f), 0.02f), pal::CREAM, Vector3(1.47f, 1.32f, -0.75f));
    const uint32_t cloths[] = {pal::TEAL, pal::YELLOW, pal::RED};
    for (int i = 0; i < 3; i++) {
        put(at, bevel_box(Vector3(0.52f, 0.78f, 0.09f), 0.03f), cloths[i],
            Vector3(0.85f + 0.62f * float(i), 0.95f, -0.73f));
        put(at, bevel_box(Vector3(0.54f, 0.12f, 0.11f), 0.02f), pal::WHITE,
            Vector3(0.85f + 0.62f * float(i), 0.75f, -0.73f));
    }
}

void roastery(Node3D *at, const Color &roof_color) {
    site(at, col(0xb99b7c));
    const Vector3 home(-0.4f, 0, -1.5f);
    const Vector3 size(3.0f, 1.6f, 1.8f);
    hall(at, home, size, Wall::wood, col(0x9a6440));
    flat_roof(at, home + Vector3(0, 1.6f, 0), size, roof_color);
    shop_front(at, home + Vector3(0, 0.1f, 0.92f), 2.8f, col(pal::CREAM));
    // A cup with its saucer on the roof.
    const Vector3 cup(-0.75f, 1.82f, -1.45f);
    put(at, loft({{0, 0.6f, 0.6f}, {0.1f, 1.1f, 0.95f}, {0.16f, 1.12f, 0.97f}}, 13), pal::WHITE, cup);
    put(at, loft({{0.12f, 0.4f, 0.4f}, {0.35f, 0.66f, 0.66f}, {1.15f, 0.78f, 0.78f}}, 13), pal::CREAM, cup);
    put(at, loft({{0.6f, 0.755f, 0.755f}, {0.85f, 0.775f, 0.775f}}, 13), 0xc0392b, cup);
    put(at, loft({{1.12f, 0.70f, 0.70f}, {1.18f, 0.68f, 0.68f}}, 13), pal::CHOCOLATE, cup);
    put(at, shapes::arc(0.34f, 0.15f, 0.16f, 3.3f, 8), pal::CREAM, cup + Vector3(0.78f, 0.68f, 0), Vector3(0, 90, -75));
    // The copper roaster with its drum.
    put(at, loft({{-0.5f, 0.55f, 0.55f}, {0.5f, 0.55f, 0.55f}}, 11), 0xc9743a, Vector3(1.85f, 0.95f, -1.35f),
        Vector3(90, 0, 0));
    put(at, loft({{0.48f, 0.4f, 0.4f}, {0.58f, 0.34f, 0.34f}}, 11), pal::INK, Vector3(1.85f, 0.95f, -1.35f),
        Vector3(90, 0, 0));
    put(at, loft({{0, 0.2f, 0.2f}, {0.5f, 0.5f, 0.5f}}, 9), 0xe08a4a, Vector3(1.85f, 1.42f, -1.5f));
    for (const float x : {-0.35f, 0.35f}) {
        put(at, bevel_box(Vector3(0.16f, 0.55f, 0.8f), 0.03f), pal::STONE_DARK, Vector3(1.85f + x, 0.27f, -1.35f));
    }
    chimney(at, 0.0f, col(0xc9743a));
    sacks(at, Vector3(-0.5f, 0.03f, 0.15f), 3, col(0xc9a06a));
}

void diner(Node3D *at, const Color &roof_color) {
    site(at, col(0xd9d4cc));
    const Vector3 home(0, 0, -1.4f);
    put(at, loft({{0, 2.1f, 1.1f}, {0.3f, 2.08f, 1.08f}}, 14, 0.75f), pal::STONE_DARK, home);
    put(at, loft({{0.25f, 2.02f, 1.02f}, {0.75f, 2.02f, 1.02f}}, 14, 0.75f), roof_color, home);
    put(at, loft({{0.7f, 1.98f, 0.98f}, {1.35f, 1.98f, 0.98f}}, 14, 0.75f), 0x5c86a8, home);
    put(at, loft({{1.3f, 2.06f, 1.06f}, {1.5f, 2.06f, 1.06f}}, 14, 0.75f), pal::METAL, home);
    put(at, loft({{1.48f, 2.16f, 1.14f}, {1.68f, 2.12f, 1.1f}, {1.95f, 1.6f, 0.7f}}, 14, 0.75f), pal::WHITE, home);
    put(at, loft({{1.53f, 2.2f, 1.17f}, {1.62f, 2.2f, 1.17f}}, 14, 0.75f), pal::TEAL, home);
    for (int i = 0; i < 5; i++) {
        put(at, bevel_box(Vector3(0.1f, 0.62f, 0.12f), 0.02f), pal::METAL,
            home + Vector3(-1.3f + 0.65f * float(i), 1.02f, 0.99f));
    }
    put(at, bevel_box(Vector3(0.78f, 1.3f, 0.16f), 0.04f), pal::METAL, home + Vector3(-0.33f, 0.66f, 1.0f));
    put(at, bevel_box(Vector3(0.6f, 1.12f, 0.18f), 0.03f), pal::SKY, home + Vector3(-0.33f, 0.62f, 1.03f));
    // A pole with a fried egg on a plate.
    put(at, bevel_box(Vector3(0.2f, 3.2f, 0.2f), 0.04f), pal::RED, Vector3(-1.35f, 1.9f, -1.2f));
    const Vector3 plate(-1.0f, 3.45f, -1.1f);
    put(at, loft({{0, 0.98f, 0.98f}, {0.12f, 0.92f, 0.92f}}, 14), pal::SKY, plate, Vector3(90, 0, 0));
    put(at, loft({{0.1f, 0.74f, 0.62f}, {0.2f, 0.62f, 0.5f}}, 9), pal::WHITE, plate, Vector3(90, 0, 12));
    put(at, ball(Vector3(0.3f, 0.3f, 0.2f), 9, 4), pal::YELLOW, plate + Vector3(0.06f, 0.02f, 0.22f));
    put(at, ball(Vector3(0.4f, 0.08f, 0.08f), 8, 3), 0xd0573e, plate + Vector3(0.1f, -0.68f, 0.16f), Vector3(0, 0, 8));
    chimney(at, 1.6f, col(pal::METAL));
}

} // namespace

bool build_workshop(Node3D *at, const String &product, const Color &roof) {
    struct Row {
        const char *product;
        void (*build)(Node3D *, const Color &);
    };
    static const Row rows[] = {{"flour", mill},        {"oil", oil_press},   {"meat", butcher},
                               {"drumstick", poultry}, {"cheese", creamery}, {"juice", juice_press},
                               {"blanket", weaver},    {"coffee", roastery}, {"breakfast", diner}};
    for (const Row &row : rows) {
        if (product == String(row.product)) {
            row.build(at, roof);
            return true;
        }
    }
    return false;
}

Node3D *build(const String &product, const Color &roof_color) {
    Node3D *at = memnew(Node3D);
    if (build_workshop(at, product, roof_color) || build_eatery(at, product, roof_color)) {
        return at;
    }
    WARN_PRINT("TILMARCH no house for the machine of " + product);
    site(at, col(pal::SAND));
    const Vector3 home(0, 0, -1.4f);
    hall(at, home, Vector3(3.2f, 1.5f, 1.9f), Wall::plaster, col(pal::PLASTER));
    roof(at, home + Vector3(0, 1.5f, 0), 1.7f, 1.0f, 2.0f, roof_color);
    chimney(at, 1.4f, col(pal::STONE));
    return at;
}

} // namespace tilm::machine_houses
