#include "game/art/map_models.h"

#include <cmath>
#include <iterator>
#include <vector>

#include "game/art/house_parts.h"
#include "game/art/icon_models.h"
#include "game/art/models.h"
#include "game/art/pieces.h"

namespace tilm::map_models {
namespace {

using pal::col;
using pieces::Form;
using pieces::Piece;
using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;
using shapes::Ring;
using shapes::rnd;

constexpr uint32_t ASPHALT = 0x4d525a, LINE = 0xf2ead0, PAVEMENT = 0xb9b6ae, BASALT = 0x4a4246, LAVA = 0xff6a1f,
                   SANDSTONE = 0xd09a5c;

// A lump of rock through uneven rings; `sharp` 0 ends flat, 1 in a point. Darker at its foot.
void rock(Node3D *at, const Vector3 &half, uint32_t paint, int seed, float sharp, int segments = 7) {
    std::vector<Ring> rings;
    constexpr int STEPS = 4;
    for (int i = 0; i <= STEPS; i++) {
        const float t = float(i) / STEPS;
        const float wide = (1.0f - t * t * (0.45f + 0.5f * sharp)) * rnd(seed, i, 0.85f, 1.08f);
        const float last = i == STEPS ? 0.35f * (1.0f - sharp) : wide;
        rings.push_back({float(half.y) * 2 * t, float(half.x) * last, float(half.z) * last,
                         rnd(seed, i + 20, -0.12f, 0.12f) * float(half.x),
                         rnd(seed, i + 40, -0.12f, 0.12f) * float(half.z)});
    }
    rings[0].ox = rings[0].oz = 0;
    const std::vector<Ring> foot(rings.begin(), rings.begin() + 2), body(rings.begin() + 1, rings.end());
    put(at, loft(foot, segments), pal::tone(paint, -0.16f), Vector3());
    put(at, loft(body, segments), paint, Vector3());
}

// A mountain: rock below, a cap of another paint over its upper third.
void mountain(Node3D *at, float width, float height, uint32_t paint, uint32_t cap, float flat) {
    const float r = width / 2;
    put(at, loft({{0, r, r * 0.9f}, {height * 0.3f, r * 0.72f, r * 0.66f, r * 0.05f}}, 9), pal::tone(paint, -0.12f),
        Vector3());
    put(at,
        loft({{height * 0.3f, r * 0.72f, r * 0.66f, r * 0.05f}, {height * 0.68f, r * 0.36f, r * 0.34f, -r * 0.04f}}, 9),
        paint, Vector3());
    put(at,
        loft({{height * 0.64f, r * 0.43f, r * 0.40f, -r * 0.04f},
              {height * 0.78f, r * 0.27f, r * 0.25f},
              {height, r * flat, r * flat}},
             9),
        cap, Vector3());
}

void dune(Node3D *at, float width, float height, float lean) {
    const float r = width / 2;
    put(at,
        loft({{-0.2f, r, r * 0.6f},
              {height * 0.4f, r * 0.72f, r * 0.40f, lean * 0.4f},
              {height * 0.85f, r * 0.34f, r * 0.14f, lean},
              {height, r * 0.08f, r * 0.03f, lean}},
             10),
        0xe8c98a, Vector3());
    put(at, loft({{-0.15f, r * 0.6f, r * 0.3f}, {height * 0.5f, r * 0.24f, r * 0.1f}}, 8), 0xd9b473,
        Vector3(-r * 0.5f, 0, r * 0.4f));
}

void palm(Node3D *at, const Vector3 &foot, float size) {
    const float lean = 0.5f * size;
    put(at,
        loft({{0, 0.26f * size, 0.26f * size},
              {1.6f * size, 0.17f * size, 0.17f * size, lean * 0.3f},
              {3.4f * size, 0.14f * size, 0.14f * size, lean}},
             6),
        0x9a6b3f, foot);
    const Vector3 top = foot + Vector3(lean, 3.4f * size, 0);
    for (int i = 0; i < 6; i++) {
        const float yaw = float(i) * 60;
        Node3D *leaf = shapes::joint(at, "Leaf", top);
        leaf->set_rotation_degrees(Vector3(0, yaw, 0));
        put(leaf, loft({{0, 0.10f, 0.06f}, {0.8f, 0.34f, 0.09f}, {1.7f, 0, 0, 0, -0.5f}}, 4),
            i % 2 ? pal::LEAF : pal::LEAF_DARK, Vector3(), Vector3(72, 0, 0), Vector3(size, size, size));
    }
    put(at, ball(Vector3(0.2f, 0.2f, 0.2f) * size, 6, 3), 0x7a4a28, top + Vector3(0.15f, -0.12f, 0.1f) * size);
}

// A block of flats or offices with bands of windows on its four sides; each is topped by something else.
void city_block(Node3D *at, int kind) {
    struct Row {
        float x, y, z;
        uint32_t wall, band;
        int floors;
    };
    static constexpr Row ROWS[] = {
        {10, 8, 10, 0xc96f4a, 0x5f7f99, 3}, {9, 12, 9, 0x7c93a8, 0xbfe0f0, 5},  {11, 6, 9, 0xe0c58f, 0x4f6f86, 2},
        {8, 14, 8, 0x9fb3a0, 0x37505f, 6},  {10, 10, 8, 0xb9a3c0, 0xf4e6b0, 4}, {9, 9, 10, 0xd9d4c8, 0x3f7fae, 4},
    };
    const Row &r = ROWS[kind];
    put(at, bevel_box(Vector3(r.x + 0.6f, 0.8f, r.z + 0.6f), 0.1f), pal::tone(r.wall, -0.3f), Vector3(0, 0.4f, 0));
    put(at, bevel_box(Vector3(r.x, r.y, r.z), 0.25f, kind == 1 ? 0.86f : 0.97f), r.wall, Vector3(0, r.y / 2, 0));
    for (int i = 0; i < r.floors; i++) {
        const float y = 1.6f + (r.y - 2.4f) * float(i) / float(r.floors - 1 + (r.floors == 1));
        const float k = (kind == 1 ? 1.0f - 0.14f * y / r.y : 1.0f);
        put(at, bevel_box(Vector3((r.x + 0.16f) * k, 0.8f, (r.z - 1.4f) * k), 0.05f), r.band, Vector3(0, y, 0));
        put(at, bevel_box(Vector3((r.x - 1.4f) * k, 0.8f, (r.z + 0.16f) * k), 0.05f), r.band, Vector3(0, y, 0));
    }
    const Vector3 top(0, r.y, 0);
    switch (kind) {
    case 0: // a water tank on legs
        put(at, loft({{0.8f, 1.2f, 1.2f}, {2.6f, 1.2f, 1.2f}, {3.4f, 0, 0}}, 9), pal::WOOD, top + Vector3(2, 0, -2));
        put(at, bevel_box(Vector3(1.6f, 0.9f, 1.6f), 0.1f), pal::STONE_DARK, top + Vector3(2, 0.4f, -2));
        break;
    case 1: // a spire
        put(at, loft({{0, 1.8f, 1.8f}, {1.6f, 1.0f, 1.0f}, {6, 0, 0}}, 8, 0.8f), pal::METAL, top);
        break;
    case 2: // an awning over shops and a great board
        put(at, bevel_box(Vector3(r.x + 0.4f, 0.3f, 1.6f), 0.1f), pal::RED, Vector3(0, 2.4f, r.z / 2 + 0.6f),
            Vector3(16, 0, 0));
        put(at, bevel_box(Vector3(6, 2.6f, 0.5f), 0.1f), pal::YELLOW, top + Vector3(0, 1.5f, 2));
        break;
    case 3: // a stepped crown
        put(at, bevel_box(Vector3(5.6f, 1.6f, 5.6f), 0.2f), r.wall, top + Vector3(0, 0.7f, 0));
        put(at, bevel_box(Vector3(3.4f, 1.6f, 3.4f), 0.2f), pal::tone(r.wall, 0.15f), top + Vector3(0, 2.1f, 0));
        break;
    case 4: // a gable roof
        put(at, shapes::gable(r.x + 0.8f, 3, r.z + 0.8f), pal::tone(pal::PURPLE, -0.2f), top);
        break;
    default: // a dome
        put(at, loft({{0, 3.6f, 3.6f}, {1.4f, 3.2f, 3.2f}, {2.6f, 2.0f, 2.0f}, {3.2f, 0, 0}}, 10), pal::TEAL, top);
        break;
    }
}

// clang-format off
constexpr Piece CACTUS[] = {
    {Form::rod, 0x4f9a4a, {0.62f, 2.6f, 0.62f}, {}, {}, 0.8f},
    {Form::ball, 0x4f9a4a, {0.50f, 0.40f, 0.50f}, {0, 2.6f, 0}, {}},
    {Form::rod, 0x46893f, {0.34f, 0.6f, 0.34f}, {0.15f, 1.2f, 0}, {0, 0, -90}},
    {Form::rod, 0x4f9a4a, {0.34f, 1.0f, 0.34f}, {0.78f, 1.1f, 0}, {}, 0.8f},
    {Form::rod, 0x46893f, {0.34f, 0.55f, 0.34f}, {-0.15f, 0.8f, 0}, {0, 0, 90}},
    {Form::rod, 0x4f9a4a, {0.34f, 0.8f, 0.34f}, {-0.72f, 0.7f, 0}, {}, 0.8f},
    {Form::ball, pal::PINK, {0.26f, 0.2f, 0.26f}, {0.05f, 2.82f, 0}, {}},
};
constexpr Piece CAMEL[] = {
    {Form::ball, 0xd2a05a, {0.85f, 0.85f, 1.8f}, {0, 1.35f, 0}, {}},
    {Form::cone, 0xc28f4b, {0.62f, 0.62f, 0.66f}, {0, 1.62f, 0.32f}, {}},
    {Form::cone, 0xc28f4b, {0.62f, 0.62f, 0.66f}, {0, 1.62f, -0.32f}, {}},
    {Form::rod, 0xd2a05a, {0.36f, 1.0f, 0.36f}, {0, 1.3f, -0.75f}, {-32, 0, 0}, 0.7f},
    {Form::ball, 0xd2a05a, {0.36f, 0.36f, 0.66f}, {0, 2.2f, -1.45f}, {}},
    {Form::rod, 0xb98445, {0.24f, 1.1f, 0.24f}, {0.24f, 0, -0.5f}, {}, 1.2f},
    {Form::rod, 0xb98445, {0.24f, 1.1f, 0.24f}, {-0.24f, 0, -0.5f}, {}, 1.2f},
    {Form::rod, 0xb98445, {0.24f, 1.1f, 0.24f}, {0.24f, 0, 0.5f}, {}, 1.2f},
    {Form::rod, 0xb98445, {0.24f, 1.1f, 0.24f}, {-0.24f, 0, 0.5f}, {}, 1.2f},
    {Form::box, pal::RED, {0.92f, 0.1f, 0.5f}, {0, 1.72f, 0}, {}},
};
constexpr Piece DEADTREE[] = {
    {Form::rod, 0x3b2f2c, {0.6f, 2.2f, 0.6f}, {}, {}, 0.6f},
    {Form::rod, 0x3b2f2c, {0.34f, 1.6f, 0.34f}, {0, 2.0f, 0}, {0, 0, -34}, 0.3f},
    {Form::rod, 0x3b2f2c, {0.30f, 1.5f, 0.30f}, {0, 1.8f, 0}, {14, 0, 38}, 0.3f},
    {Form::rod, 0x3b2f2c, {0.22f, 1.0f, 0.22f}, {0.05f, 1.2f, 0}, {0, 0, -62}, 0.3f},
    {Form::rod, 0x3b2f2c, {0.20f, 0.9f, 0.20f}, {-0.55f, 2.6f, 0.1f}, {20, 0, 4}, 0.3f},
};
constexpr Piece CAR[] = {
    {Form::box, pal::INK, {1.7f, 0.34f, 3.9f}, {0, 0.22f, 0}, {}},
    {Form::box, 0x8fc3e0, {1.5f, 0.62f, 1.9f}, {0, 0.92f, 0.15f}, {}, 0.76f},
    {Form::disc, pal::INK, {0.72f, 0.26f, 0.72f}, {0.8f, 0.36f, 1.2f}, {}},
    {Form::disc, pal::INK, {0.72f, 0.26f, 0.72f}, {-0.8f, 0.36f, 1.2f}, {}},
    {Form::disc, pal::INK, {0.72f, 0.26f, 0.72f}, {0.8f, 0.36f, -1.2f}, {}},
    {Form::disc, pal::INK, {0.72f, 0.26f, 0.72f}, {-0.8f, 0.36f, -1.2f}, {}},
    {Form::ball, pal::YELLOW, {0.3f, 0.24f, 0.14f}, {0.55f, 0.68f, -1.95f}, {}},
    {Form::ball, pal::YELLOW, {0.3f, 0.24f, 0.14f}, {-0.55f, 0.68f, -1.95f}, {}},
};
constexpr Piece LAMP[] = {
    {Form::rod, pal::STONE_DARK, {0.5f, 0.3f, 0.5f}, {}, {}, 0.7f},
    {Form::rod, 0x35505a, {0.18f, 1.5f, 0.18f}, {0, 0.2f, 0}, {}, 0.8f},
};
constexpr Piece LAMP_HEAD[] = {{Form::ball, 0xfff1b0, {0.5f, 0.46f, 0.5f}, {0, 0, 0}, {}}};
constexpr Piece LAMP_POOL[] = {{Form::rod, 0xfff1b0, {3.4f, 0.02f, 3.4f}, {0, 0.02f, 0}, {}}};
constexpr Piece SIGNPOST[] = {
    {Form::rod, pal::STONE, {1.4f, 0.5f, 1.4f}, {}, {}, 0.7f},
    {Form::post, pal::WOOD_DARK, {0.4f, 4.2f, 0.4f}, {0, 0.2f, 0}, {}, 0.8f},
    {Form::box, pal::WOOD_LIGHT, {2.6f, 0.7f, 0.24f}, {0.5f, 3.1f, 0.1f}, {0, 0, 3}},
    {Form::cone, pal::WOOD_LIGHT, {0.9f, 0.5f, 0.3f}, {1.75f, 3.5f, 0.1f}, {0, 0, -88}},
    {Form::box, pal::WOOD, {2.0f, 0.6f, 0.24f}, {-0.4f, 2.2f, 0.1f}, {0, 0, -4}},
    {Form::ball, pal::YELLOW, {0.5f, 0.5f, 0.5f}, {0, 4.5f, 0}, {}},
};
// A passer-by no bigger than a thumb on the map: hat, shirt, trousers.
constexpr Piece HAND[] = {
    {Form::post, pal::BLUE, {0.42f, 0.62f, 0.34f}, {}, {}, 1.1f},
    {Form::post, pal::ORANGE, {0.56f, 0.56f, 0.40f}, {0, 0.56f, 0}, {}, 0.9f},
    {Form::ball, 0xf2c29b, {0.56f, 0.56f, 0.54f}, {0, 1.32f, 0}, {}},
    {Form::rod, pal::STRAW, {0.95f, 0.08f, 0.95f}, {0, 1.48f, 0}, {}, 0.95f},
    {Form::rod, pal::STRAW, {0.50f, 0.24f, 0.50f}, {0, 1.52f, 0}, {}, 0.8f},
};
constexpr Piece TRADE_TRUCK[] = {
    {Form::box, pal::INK, {1.9f, 0.3f, 4.6f}, {0, 0.4f, 0}, {}},
    {Form::box, pal::PURPLE, {2.0f, 1.2f, 1.5f}, {0, 0.6f, -1.5f}, {}, 0.9f},
    {Form::box, 0x8fc3e0, {1.8f, 0.6f, 1.1f}, {0, 1.55f, -1.45f}, {}, 0.82f},
    {Form::box, pal::WOOD_LIGHT, {2.0f, 0.5f, 2.9f}, {0, 0.65f, 0.8f}, {}},
    {Form::box, pal::WOOD, {0.9f, 0.8f, 0.9f}, {-0.4f, 1.1f, 0.2f}, {0, 10, 0}},
    {Form::box, pal::STRAW, {0.9f, 0.7f, 0.9f}, {0.45f, 1.1f, 0.5f}, {0, -14, 0}},
    {Form::ball, pal::RED, {0.9f, 0.7f, 0.9f}, {0, 1.4f, 1.5f}, {}},
    {Form::disc, pal::INK, {0.84f, 0.3f, 0.84f}, {0.95f, 0.42f, -1.5f}, {}},
    {Form::disc, pal::INK, {0.84f, 0.3f, 0.84f}, {-0.95f, 0.42f, -1.5f}, {}},
    {Form::disc, pal::INK, {0.84f, 0.3f, 0.84f}, {0.95f, 0.42f, 1.3f}, {}},
    {Form::disc, pal::INK, {0.84f, 0.3f, 0.84f}, {-0.95f, 0.42f, 1.3f}, {}},
};
constexpr Piece DOCK[] = {
    {Form::box, PAVEMENT, {6.0f, 0.3f, 5.0f}, {}, {}},
    {Form::box, ASPHALT, {3.4f, 0.04f, 4.8f}, {0.8f, 0.3f, 0}, {}},
    {Form::box, pal::YELLOW, {0.2f, 0.05f, 4.6f}, {-0.8f, 0.31f, 0}, {}},
    {Form::box, pal::YELLOW, {0.2f, 0.05f, 4.6f}, {2.4f, 0.31f, 0}, {}},
    {Form::post, pal::WOOD_DARK, {0.3f, 2.6f, 0.3f}, {-2.6f, 0.2f, -2.0f}, {}},
    {Form::post, pal::WOOD_DARK, {0.3f, 2.6f, 0.3f}, {-2.6f, 0.2f, 2.0f}, {}},
    {Form::box, pal::BLUE, {2.4f, 0.2f, 4.8f}, {-1.9f, 2.7f, 0}, {0, 0, 8}},
    {Form::box, pal::WOOD_LIGHT, {0.9f, 0.8f, 0.9f}, {-2.0f, 0.3f, 0.8f}, {0, 12, 0}},
    {Form::box, pal::WOOD, {0.8f, 0.7f, 0.8f}, {-1.9f, 0.3f, -0.5f}, {0, -10, 0}},
    {Form::box, pal::WOOD_LIGHT, {0.7f, 0.6f, 0.7f}, {-1.95f, 1.1f, 0.6f}, {0, 30, 0}},
};
// clang-format on

// A flat piece of way with its markings, `length` along x.
void way(Node3D *at, float length, float width, uint32_t paint, uint32_t edge, int dashes) {
    put(at, bevel_box(Vector3(length, 0.10f, width), 0.03f), edge, Vector3(0, 0.0f, 0));
    put(at, bevel_box(Vector3(length, 0.08f, width * 0.88f), 0.02f), paint, Vector3(0, 0.03f, 0));
    for (int i = 0; i < dashes; i++) {
        const float step = length / float(dashes);
        put(at, bevel_box(Vector3(step * 0.5f, 0.04f, width * 0.035f), 0.01f), LINE,
            Vector3(step * (float(i) + 0.5f) - length / 2, 0.065f, 0));
    }
}

void cross(Node3D *at, bool middle) {
    put(at, bevel_box(Vector3(14, 0.10f, 14), 0.03f), ASPHALT, Vector3(0, 0.01f, 0));
    for (int side = 0; side < 4; side++) {
        for (int i = 0; i < 5; i++) {
            Node3D *turned = shapes::joint(at, "Side", Vector3());
            turned->set_rotation_degrees(Vector3(0, 90.0f * float(side), 0));
            put(turned, bevel_box(Vector3(1.0f, 0.04f, 1.6f), 0.01f), LINE,
                Vector3(-4.4f + 2.2f * float(i), 0.065f, 5.8f));
        }
    }
    if (middle) {
        put(at, loft({{0, 2.6f, 2.6f}, {0.3f, 2.4f, 2.4f}}, 12), PAVEMENT, Vector3());
        put(at, loft({{0.2f, 2.0f, 2.0f}, {0.5f, 1.7f, 1.7f}}, 12), pal::GRASS_DEEP, Vector3());
        house_parts::bush(at, Vector3(0, 0.4f, 0), 1.2f, col(pal::LEAF), 4);
    }
}

void oasis(Node3D *at) {
    put(at, loft({{-0.1f, 11, 8}, {0.12f, 10, 7.2f}}, 14), 0x9cc25a, Vector3());
    put(at, loft({{0.0f, 7, 4.8f}, {0.16f, 6.6f, 4.4f}}, 14), 0xe8d9a0, Vector3());
    put(at, loft({{0.1f, 6, 4}, {0.2f, 5.9f, 3.9f}}, 14), 0x2f9fd0, Vector3());
    for (int i = 0; i < 6; i++) {
        const float a = float(i) * 1.05f + 0.3f;
        palm(at, Vector3(8.2f * std::cos(a), 0, 5.8f * std::sin(a)), rnd(71, i, 0.9f, 1.5f));
    }
    for (int i = 0; i < 5; i++) {
        const float a = float(i) * 1.26f;
        house_parts::bush(at, Vector3(7.3f * std::cos(a), 0, 5.0f * std::sin(a)), 0.7f, col(pal::LEAF), i);
    }
}

void lava_pool(Node3D *at) {
    put(at, loft({{-0.1f, 2.7f, 2.2f}, {0.25f, 2.3f, 1.8f}}, 9), BASALT, Vector3());
    put(at, loft({{0.1f, 1.9f, 1.45f}, {0.3f, 1.8f, 1.35f}}, 9), LAVA, Vector3());
    put(at, loft({{0.2f, 0.9f, 0.6f}, {0.34f, 0.8f, 0.5f}}, 7), pal::YELLOW, Vector3(0.2f, 0, 0.1f));
}

// A broken table mountain: two steps of rock with grass on their ledges, two shoulders above them and a notch between
// the shoulders out of which the water falls into a pool.
void fall_wall(Node3D *at) {
    constexpr uint32_t STONE = 0x9a958c;
    const auto bank = [at](int seed, const Vector3 &foot, const Vector3 &half, float lean, float shade) {
        const float h = 2 * float(half.y), x = half.x, z = half.z;
        const auto ring = [&](float share, float k, int n) {
            return Ring{h * share, x * k * rnd(seed, n, 0.95f, 1.05f), z * k * rnd(seed, n + 5, 0.94f, 1.06f),
                        rnd(seed, n + 10, -0.2f, 0.2f) + lean * share, 0};
        };
        const Vector3 turn(0, rnd(seed, 20, -7, 7), 0);
        put(at, loft({ring(0, 1.14f, 0), ring(0.42f, 1.0f, 1)}, 9, 0.55f), pal::tone(STONE, shade - 0.13f), foot, turn);
        put(at,
            loft({ring(0.40f, 1.02f, 1), ring(0.70f, 0.90f, 2), ring(0.76f, 0.96f, 3), ring(0.97f, 0.83f, 4)}, 9,
                 0.55f),
            pal::tone(STONE, shade), foot, turn);
        put(at, loft({ring(0.95f, 0.90f, 4), ring(1.0f, 0.87f, 4), ring(1.03f, 0.66f, 4)}, 9, 0.55f),
            pal::tone(pal::GRASS_DEEP, shade), foot, turn);
    };
    bank(141, Vector3(-0.6f, 0, -4.6f), Vector3(11.6f, 3.0f, 4.0f), 0.3f, -0.08f);
    bank(142, Vector3(0.9f, 5.2f, -5.6f), Vector3(8.4f, 3.2f, 3.1f), -0.2f, 0.0f);
    bank(143, Vector3(-4.6f, 10.6f, -5.9f), Vector3(3.2f, 4.7f, 2.6f), 0.4f, 0.05f);
    bank(144, Vector3(5.4f, 10.6f, -6.1f), Vector3(2.9f, 3.7f, 2.4f), -0.3f, 0.02f);
    bank(145, Vector3(0.6f, 10.2f, -6.4f), Vector3(3.4f, 3.2f, 2.0f), 0, -0.05f);
    // What breaks the straight foot and the ledges.
    struct Block {
        float x, y, z, half, tall;
    };
    constexpr Block BLOCKS[] = {{-9.6f, 0, -0.9f, 2.3f, 1.9f},   {-6.2f, 0, -0.4f, 1.6f, 1.1f},
                                {6.4f, 0, -0.6f, 2.0f, 1.5f},    {10.2f, 0, -1.6f, 2.5f, 2.6f},
                                {8.6f, 5.6f, -3.2f, 1.5f, 1.5f}, {-8.6f, 5.4f, -3.6f, 1.7f, 1.4f}};
    for (size_t i = 0; i < std::size(BLOCKS); i++) {
        const Block &b = BLOCKS[i];
        rock(shapes::joint(at, "Block", Vector3(b.x, b.y, b.z)), Vector3(b.half, b.tall, b.half * 0.8f), 0x88847f,
             150 + int(i), 0.2f);
    }
    for (const Vector3 &foot :
         {Vector3(-5.2f, 19.9f, -5.5f), Vector3(-3.3f, 19.9f, -6.4f), Vector3(5.6f, 18.0f, -6.2f)}) {
        put(at, loft({{0, 0.22f, 0.22f}, {0.9f, 0.2f, 0.2f}}, 6), pal::WOOD_DARK, foot);
        put(at, loft({{0.6f, 1.15f, 1.15f}, {2.9f, 0, 0}}, 7), pal::LEAF_DARK, foot);
    }
    for (const Vector3 &foot : {Vector3(-6.0f, 6.0f, -2.2f), Vector3(5.4f, 6.0f, -2.3f), Vector3(1.6f, 11.6f, -3.6f)}) {
        house_parts::bush(at, foot, 1.0f, col(pal::LEAF), int(foot.x * 3));
    }
    // The pool, its banks and the foam where the water comes down.
    put(at, loft({{-0.1f, 5.4f, 3.0f}, {0.32f, 5.0f, 2.7f}}, 12), 0x88847f, Vector3(0, 0, 1.9f));
    put(at, loft({{0.2f, 4.5f, 2.3f}, {0.38f, 4.4f, 2.25f}}, 12), 0x2f8fd0, Vector3(0, 0, 1.9f));
    put(at, loft({{0.3f, 3.7f, 0.9f}, {0.44f, 3.5f, 0.75f}}, 12), pal::WHITE, Vector3(0, 0, 0.6f));
}

void cars(Node3D *at, uint32_t paint, bool roof_sign) {
    pieces::put_all(at, CAR);
    put(at, bevel_box(Vector3(1.75f, 0.5f, 3.95f), 0.12f, 0.95f), paint, Vector3(0, 0.68f, 0));
    put(at, bevel_box(Vector3(1.16f, 0.1f, 1.4f), 0.03f), paint, Vector3(0, 1.56f, 0.15f));
    if (roof_sign) {
        put(at, bevel_box(Vector3(0.7f, 0.26f, 0.3f), 0.05f), pal::INK, Vector3(0, 1.72f, 0.15f));
    }
}

// The service huts once more, in a few shapes: seen from the height of the map.
void small_hut(Node3D *at, uint32_t wall, uint32_t tiles, const Piece &mark) {
    put(at, bevel_box(Vector3(2.8f, 1.8f, 2.2f), 0.06f), wall, Vector3(0, 0.9f, 0));
    put(at, bevel_box(Vector3(2.9f, 0.3f, 2.3f), 0.06f), pal::tone(wall, -0.3f), Vector3(0, 0.15f, 0));
    put(at, shapes::gable(3.4f, 1.3f, 2.6f), tiles, Vector3(0, 1.75f, 0));
    put(at, bevel_box(Vector3(0.8f, 1.2f, 0.12f), 0.03f), pal::CREAM, Vector3(0, 0.7f, 1.1f));
    pieces::put_piece(at, mark);
}

template <size_t N>
void rows(Node3D *at, const Piece (&list)[N]) {
    pieces::put_all(at, list);
}

struct Entry {
    const char *name;
    void (*build)(Node3D *);
};

// clang-format off
constexpr Entry ENTRIES[] = {
    {"rock0", [](Node3D *at) { rock(at, Vector3(0.9f, 0.5f, 0.8f), 0x9a9c9c, 1, 0.1f); }},
    {"rock1", [](Node3D *at) { rock(at, Vector3(0.7f, 0.9f, 0.7f), 0x8f9094, 2, 0.4f); }},
    {"rock2", [](Node3D *at) { rock(at, Vector3(1.2f, 0.45f, 0.7f), 0xa5a39c, 3, 0.0f); }},
    {"rock1s", [](Node3D *at) { rock(at, Vector3(0.7f, 0.9f, 0.7f), SANDSTONE, 2, 0.3f); }},
    {"basalt0", [](Node3D *at) { rock(at, Vector3(0.6f, 1.1f, 0.6f), BASALT, 11, 0.0f, 6); }},
    {"basalt1", [](Node3D *at) { rock(at, Vector3(0.9f, 0.6f, 0.8f), 0x544a4c, 12, 0.2f, 6); }},
    {"basalt2", [](Node3D *at) { rock(at, Vector3(0.7f, 1.0f, 0.6f), 0x40383d, 13, 0.9f, 6); }},
    {"cliff", [](Node3D *at) { rock(at, Vector3(3.2f, 3.4f, 2.4f), 0x8b8d8f, 21, 0.05f, 8);
                               put(at, loft({{6.5f, 1.9f, 1.4f}, {7.1f, 1.3f, 1.0f}}, 8), pal::GRASS_DEEP, Vector3()); }},
    {"cliff_b", [](Node3D *at) { rock(at, Vector3(3.2f, 3.4f, 2.4f), BASALT, 22, 0.2f, 8); }},
    {"peak", [](Node3D *at) { mountain(at, 30, 26, 0x7d8a8f, pal::WHITE, 0.03f); }},
    {"volcano", [](Node3D *at) { mountain(at, 60, 36, 0x4a3f42, 0x6b4a44, 0.17f); }},
    {"crater", [](Node3D *at) { put(at, loft({{-0.5f, 6.0f, 5.8f}, {1.2f, 5.2f, 5.0f}}, 11), 0x3a3033, Vector3());
                                put(at, loft({{0.6f, 4.4f, 4.2f}, {1.4f, 4.0f, 3.8f}}, 11), LAVA, Vector3());
                                put(at, loft({{1.2f, 2.2f, 2.0f}, {1.6f, 1.8f, 1.6f}}, 9), pal::YELLOW, Vector3()); }},
    {"lava_pool", lava_pool},
    {"lava_seg", [](Node3D *at) { put(at, bevel_box(Vector3(5.4f, 0.2f, 3.0f), 0.08f), BASALT, Vector3());
                                  put(at, bevel_box(Vector3(5.4f, 0.2f, 1.9f), 0.08f), LAVA, Vector3(0, 0.06f, 0));
                                  put(at, bevel_box(Vector3(3.4f, 0.1f, 0.6f), 0.04f), pal::YELLOW, Vector3(0.3f, 0.16f, 0.1f)); }},
    {"dune0", [](Node3D *at) { dune(at, 16, 3.4f, 1.6f); }},
    {"dune1", [](Node3D *at) { dune(at, 12, 2.4f, -2.0f); }},
    {"palm", [](Node3D *at) { palm(at, Vector3(), 1.3f); }},
    {"cactus", [](Node3D *at) { rows(at, CACTUS); }},
    {"camel", [](Node3D *at) { rows(at, CAMEL); }},
    {"oasis", oasis},
    {"deadtree", [](Node3D *at) { rows(at, DEADTREE); }},
    {"fall_wall", fall_wall},
    {"walk", [](Node3D *at) { way(at, 20, 3.0f, PAVEMENT, 0x8d8b86, 0);
                              for (int i = 0; i < 9; i++) {
                                  put(at, bevel_box(Vector3(0.08f, 0.03f, 2.6f), 0.01f), 0x9c9992, Vector3(-8.0f + 2.0f * float(i), 0.07f, 0));
                              } }},
    {"lamp", [](Node3D *at) { rows(at, LAMP); }},
    {"lamp_head", [](Node3D *at) { rows(at, LAMP_HEAD); }},
    {"lamp_pool", [](Node3D *at) { rows(at, LAMP_POOL); }},
    {"street", [](Node3D *at) { way(at, 34, 4, ASPHALT, PAVEMENT, 8); }},
    {"road", [](Node3D *at) { way(at, 14, 14, ASPHALT, PAVEMENT, 3); }},
    {"cross", [](Node3D *at) { cross(at, false); }},
    {"cross_mid", [](Node3D *at) { cross(at, true); }},
    {"farm_road", [](Node3D *at) { way(at, 24, 4, 0x8d7a62, pal::SOIL, 0); }},
    {"farm_path", [](Node3D *at) { way(at, 24, 1.8f, pal::SAND, 0xc9a873, 0); }},
    {"farm_fence", [](Node3D *at) { house_parts::fence_run(at, Vector3(-12, 0, 0), Vector3(12, 0, 0), col(pal::WOOD_LIGHT), 0.8f); }},
    {"bldg0", [](Node3D *at) { city_block(at, 0); }}, {"bldg1", [](Node3D *at) { city_block(at, 1); }},
    {"bldg2", [](Node3D *at) { city_block(at, 2); }}, {"bldg3", [](Node3D *at) { city_block(at, 3); }},
    {"bldg4", [](Node3D *at) { city_block(at, 4); }}, {"bldg5", [](Node3D *at) { city_block(at, 5); }},
    {"car0", [](Node3D *at) { cars(at, pal::RED, false); }},
    {"car1", [](Node3D *at) { cars(at, pal::YELLOW, true); }},
    {"car2", [](Node3D *at) { cars(at, pal::BLUE, false); }},
    {"star", [](Node3D *at) { IconModels::star(0.30f, 0.13f, 0.14f, col(pal::YELLOW), Vector3(), at); }},
    {"star_max", [](Node3D *at) { IconModels::star(0.32f, 0.14f, 0.12f, col(pal::WHITE), Vector3(), at);
                                  IconModels::star(0.25f, 0.11f, 0.20f, col(pal::PURPLE), Vector3(), at); }},
    {"signpost", [](Node3D *at) { rows(at, SIGNPOST); }},
    {"hand", [](Node3D *at) { rows(at, HAND); }},
    {"trade_truck", [](Node3D *at) { rows(at, TRADE_TRUCK); }},
    {"dock", [](Node3D *at) { rows(at, DOCK); }},
    {"service_carpenter", [](Node3D *at) { small_hut(at, 0xe2b77c, 0x7c4f2e,
        {Form::box, pal::METAL, {1.8f, 0.4f, 0.2f}, {0, 2.5f, 1.35f}, {0, 0, -32}, 0.8f}); }},
    {"service_electric", [](Node3D *at) { small_hut(at, 0xb9c6d3, 0x2f4f7f,
        {Form::cone, pal::YELLOW, {0.8f, 1.5f, 0.24f}, {0.1f, 1.9f, 1.35f}, {0, 0, 14}}); }},
    {"service_vet", [](Node3D *at) { small_hut(at, 0xfbeed5, 0x2f9d8a,
        {Form::box, pal::WHITE, {0.76f, 1.9f, 0.3f}, {0, 2.6f, 0.7f}, {}});
        put(at, bevel_box(Vector3(1.7f, 0.76f, 0.3f), 0.06f), pal::WHITE, Vector3(0, 3.65f, 0.7f));
        put(at, bevel_box(Vector3(0.42f, 1.36f, 0.2f), 0.05f), pal::GREEN, Vector3(0, 3.65f, 0.82f));
        put(at, bevel_box(Vector3(1.36f, 0.42f, 0.2f), 0.05f), pal::GREEN, Vector3(0, 3.65f, 0.82f)); }},
};
// clang-format on

} // namespace

MeshInstance3D *build(const String &name) {
    for (const Entry &entry : ENTRIES) {
        if (name == String(entry.name)) {
            return Models::bake(String("map_") + entry.name, Models::builder([&entry] {
                                    Node3D *at = memnew(Node3D);
                                    entry.build(at);
                                    return at;
                                }),
                                false);
        }
    }
    return nullptr;
}

} // namespace tilm::map_models
