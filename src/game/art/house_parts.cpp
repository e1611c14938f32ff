#include "game/art/house_parts.h"

#include <algorithm>
#include <cmath>

#include "game/art/shapes.h"

namespace tilm::house_parts {

using pal::col;
using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;
using shapes::rnd;

void roof(Node3D *parent, const Vector3 &at, float half, float rise, float depth, const Color &color) {
    constexpr int ROWS = 3;
    const float slope = std::atan2(rise, half);
    const float k = std::min(1.0f, half / 1.1f);
    const float over = 0.34f * k; // the eaves reach beyond the wall
    const float length = std::sqrt(half * half + rise * rise) + over;
    const float row = length / ROWS;
    for (const float side : {-1.0f, 1.0f}) {
        for (int i = 0; i < ROWS; i++) {
            // Measured along the slope from the ridge down; lower rows lie lower, each tilted a little more.
            const float along = row * (float(i) + 0.5f);
            const float x = std::cos(slope) * along;
            const float y = rise - std::sin(slope) * along + (0.09f - 0.015f * float(i)) * k;
            const Color tint = pal::tone(color, i == 1 ? 0.07f : i == 2 ? -0.05f : 0.0f);
            put(parent,
                bevel_box(Vector3(row + 0.10f * k, 0.15f * k, depth + (0.30f + 0.07f * float(i)) * k), 0.05f * k), tint,
                at + Vector3(side * x, y, 0), Vector3(0, 0, -side * (slope * 57.2958f - 3.5f)));
        }
    }
    put(parent,
        loft({{-depth / 2 - 0.24f * k, 0.15f * k, 0.13f * k}, {depth / 2 + 0.24f * k, 0.15f * k, 0.13f * k}}, 6),
        pal::tone(color, 0.14f), at + Vector3(0, rise + 0.13f * k, 0), Vector3(-90, 0, 0));
}

void walls(Node3D *parent, const Vector3 &at, const Vector3 &size, float rise, const Color &wall, const Color &trim) {
    put(parent, bevel_box(size, 0.04f, 0.97f), wall, at + Vector3(0, size.y / 2, 0));
    put(parent, shapes::gable(float(size.x) * 0.97f, rise, float(size.z) * 0.96f), wall,
        at + Vector3(0, size.y - 0.02f, 0));
    put(parent, bevel_box(Vector3(size.x + 0.14f, 0.22f, size.z + 0.14f), 0.05f), pal::tone(pal::STONE, -0.05f),
        at + Vector3(0, 0.10f, 0));
    for (const float x : {-1.0f, 1.0f}) {
        put(parent, bevel_box(Vector3(0.17f, size.y - 0.05f, 0.17f), 0.03f), trim,
            at + Vector3(x * (size.x / 2 - 0.03f), size.y / 2 + 0.08f, size.z / 2 - 0.02f));
    }
    put(parent, bevel_box(Vector3(size.x + 0.04f, 0.15f, 0.14f), 0.03f), trim,
        at + Vector3(0, size.y - 0.02f, size.z / 2 - 0.02f));
}

void planks(Node3D *parent, const Vector3 &at, float width, float height, int count, const Color &groove) {
    for (int i = 1; i < count; i++) {
        const float x = width * (float(i) / float(count) - 0.5f);
        put(parent, bevel_box(Vector3(0.06f, height, 0.05f), 0.01f), groove, at + Vector3(x, height / 2, 0));
    }
}

void window(Node3D *parent, const Vector3 &at, float width, float height, const Color &frame) {
    put(parent, bevel_box(Vector3(width + 0.16f, height + 0.16f, 0.12f), 0.04f), frame, at);
    put(parent, bevel_box(Vector3(width, height, 0.10f), 0.02f), col(0x5c86a8, pal::GLASS), at + Vector3(0, 0, 0.04f));
    put(parent, bevel_box(Vector3(width * 0.45f, height * 0.4f, 0.08f), 0.02f), col(pal::SKY, pal::GLASS),
        at + Vector3(-width * 0.2f, height * 0.2f, 0.07f));
    put(parent, bevel_box(Vector3(0.07f, height, 0.08f), 0.01f), frame, at + Vector3(0, 0, 0.08f));
    put(parent, bevel_box(Vector3(width + 0.26f, 0.10f, 0.24f), 0.03f), frame,
        at + Vector3(0, -height / 2 - 0.09f, 0.07f));
}

void double_door(Node3D *parent, const Vector3 &at, float width, float height, const Color &door, const Color &trim) {
    put(parent, bevel_box(Vector3(width + 0.26f, height + 0.14f, 0.12f), 0.04f), trim,
        at + Vector3(0, height / 2 + 0.04f, 0));
    for (const float side : {-1.0f, 1.0f}) {
        const Vector3 middle = at + Vector3(side * width / 4, height / 2, 0.07f);
        put(parent, bevel_box(Vector3(width / 2 - 0.05f, height, 0.10f), 0.02f), door, middle);
        const float tilt = std::atan2(width / 2 - 0.1f, height - 0.1f) * 57.2958f;
        put(parent, bevel_box(Vector3(0.11f, height * 1.0f, 0.07f), 0.02f), trim, middle + Vector3(0, 0, 0.05f),
            Vector3(0, 0, side * tilt));
        put(parent, bevel_box(Vector3(width / 2 - 0.05f, 0.11f, 0.08f), 0.02f), trim,
            middle + Vector3(0, height / 2 - 0.06f, 0.05f));
        put(parent, bevel_box(Vector3(width / 2 - 0.05f, 0.11f, 0.08f), 0.02f), trim,
            middle + Vector3(0, -height / 2 + 0.06f, 0.05f));
    }
}

void fence_run(Node3D *parent, const Vector3 &a, const Vector3 &b, const Color &wood, float height) {
    const Vector3 way = b - a;
    const float length = float(way.length());
    const int spans = std::max(1, int(std::lround(length / 1.15f)));
    const float yaw = std::atan2(-float(way.z), float(way.x)) * 57.2958f;
    for (int i = 0; i <= spans; i++) {
        const Vector3 p = a + way * (float(i) / float(spans));
        const int seed = int(std::lround((p.x + 31.0f) * 13.0f + p.z * 7.0f));
        const float tall = height * rnd(3, seed, 0.95f, 1.12f);
        put(parent, loft({{0, 0.085f, 0.085f}, {tall, 0.075f, 0.075f}, {tall + 0.09f, 0.0f, 0.0f}}, 6, 0.7f),
            pal::tone(wood, rnd(4, seed, -0.08f, 0.08f)), p,
            Vector3(rnd(5, seed, -3, 3), rnd(6, seed, -12, 12), rnd(7, seed, -3, 3)));
        if (i < spans) {
            const Vector3 middle = a + way * ((float(i) + 0.5f) / float(spans));
            for (int rail = 0; rail < 2; rail++) {
                put(parent, bevel_box(Vector3(length / float(spans) + 0.10f, 0.12f, 0.08f), 0.03f),
                    pal::tone(wood, rnd(8, seed + rail, 0.0f, 0.16f)),
                    middle + Vector3(0, height * (rail ? 0.80f : 0.42f), 0),
                    Vector3(0, yaw, rnd(9, seed + rail, -2.5f, 2.5f)));
            }
        }
    }
}

void trodden(Node3D *parent, const Color &ground) {
    put(parent, loft({{-0.02f, 3.02f, 2.52f}, {0.018f, 2.9f, 2.4f}}, 16, 0.9f), pal::tone(pal::GRASS_DEEP, -0.08f),
        Vector3(0, 0, -0.52f));
    // Paler than asked for: all that lies at a house's foot is shaded.
    put(parent, loft({{-0.02f, 2.75f, 2.25f}, {0.04f, 2.68f, 2.18f}}, 16, 0.9f), pal::tone(ground, 0.28f),
        Vector3(0, 0, -0.52f));
}

void yard(Node3D *parent, const Color &ground, const Color &wood) {
    trodden(parent, ground);
    put(parent, loft({{0.0f, 1.5f, 0.8f}, {0.05f, 1.35f, 0.68f}}, 11, 0.2f), pal::tone(ground, 0.42f),
        Vector3(-0.3f, 0, 0.5f));
    const float left = -2.75f, right = 2.75f, back = -2.8f, front = 1.75f;
    fence_run(parent, Vector3(left, 0, back), Vector3(left, 0, front), wood);
    fence_run(parent, Vector3(right, 0, back), Vector3(right, 0, front), wood);
    fence_run(parent, Vector3(left, 0, back), Vector3(right, 0, back), wood);
    fence_run(parent, Vector3(left, 0, front), Vector3(left + 1.05f, 0, front), wood);
    fence_run(parent, Vector3(right - 1.05f, 0, front), Vector3(right, 0, front), wood);
}

void bush(Node3D *parent, const Vector3 &at, float size, const Color &leaf, int seed) {
    for (int i = 0; i < 3; i++) {
        const float a = float(i) * 2.1f + rnd(seed, i) * 1.2f;
        const float r = size * rnd(seed, 10 + i, 0.55f, 0.8f);
        put(parent, ball(Vector3(r, r * 0.82f, r), 8, 4), pal::tone(leaf, rnd(seed, 20 + i, -0.10f, 0.12f)),
            at + Vector3(std::cos(a) * size * 0.42f, r * 0.6f, std::sin(a) * size * 0.42f),
            Vector3(0, rnd(seed, 30 + i, 0, 90), 0));
    }
}

void flowers(Node3D *parent, const Vector3 &at, float radius, int count, int seed) {
    const uint32_t paints[] = {pal::RED, pal::YELLOW, pal::PINK, pal::WHITE, pal::PURPLE};
    for (int i = 0; i < count; i++) {
        const float a = rnd(seed, i) * 6.283f, r = radius * std::sqrt(rnd(seed, i + 40));
        const Vector3 p = at + Vector3(std::cos(a) * r, 0, std::sin(a) * r);
        put(parent, loft({{0, 0.07f, 0.07f}, {0.20f, 0.035f, 0.035f}}, 5), pal::LEAF, p);
        put(parent, ball(Vector3(0.10f, 0.075f, 0.10f), 6, 3), paints[(i + seed) % 5], p + Vector3(0, 0.24f, 0));
    }
}

void lantern(Node3D *parent, const Vector3 &at, float size) {
    put(parent, loft({{0, 0.13f * size, 0.13f * size}, {0.05f * size, 0.13f * size, 0.13f * size}}, 6), pal::INK, at);
    put(parent, loft({{0, 0.09f * size, 0.09f * size}, {0.24f * size, 0.16f * size, 0.16f * size}}, 6),
        col(0xffe9a8, pal::GLASS), at + Vector3(0, 0.05f * size, 0));
    put(parent, loft({{0, 0.13f * size, 0.13f * size}, {0.12f * size, 0, 0}}, 6), pal::INK,
        at + Vector3(0, 0.28f * size, 0));
}

void barrel(Node3D *parent, const Vector3 &at, float size) {
    put(parent,
        loft({{0, 0.24f * size, 0.24f * size},
              {0.32f * size, 0.30f * size, 0.30f * size},
              {0.64f * size, 0.24f * size, 0.24f * size}},
             9),
        pal::WOOD, at);
    for (const float y : {0.14f, 0.46f}) {
        put(parent,
            loft({{y * size, 0.285f * size, 0.285f * size}, {(y + 0.07f) * size, 0.29f * size, 0.29f * size}}, 9),
            pal::STONE_DARK, at);
    }
}

void crate(Node3D *parent, const Vector3 &at, float size, float turn) {
    Node3D *node = shapes::joint(parent, "Crate", at);
    node->set_rotation_degrees(Vector3(0, turn, 0));
    put(node, bevel_box(Vector3(0.52f, 0.42f, 0.52f) * size, 0.03f), pal::WOOD_LIGHT, Vector3(0, 0.21f * size, 0));
    for (const float y : {0.08f, 0.34f}) {
        put(node, bevel_box(Vector3(0.57f, 0.10f, 0.57f) * size, 0.02f), pal::WOOD, Vector3(0, y * size, 0));
    }
}

void hay_bale(Node3D *parent, const Vector3 &at, float turn) {
    Node3D *node = shapes::joint(parent, "Bale", at);
    node->set_rotation_degrees(Vector3(0, turn, 0));
    put(node, bevel_box(Vector3(0.80f, 0.48f, 0.50f), 0.09f), pal::STRAW, Vector3(0, 0.24f, 0));
    for (const float x : {-0.2f, 0.2f}) {
        put(node, bevel_box(Vector3(0.09f, 0.51f, 0.53f), 0.03f), pal::STRAW_DARK, Vector3(x, 0.24f, 0));
    }
}

void orchard_tree(Node3D *parent, const Vector3 &at, float size, const Color &leaf, const Color &fruit, int seed) {
    put(parent,
        loft({{0, 0.20f * size, 0.20f * size},
              {0.3f * size, 0.12f * size, 0.12f * size},
              {1.0f * size, 0.10f * size, 0.10f * size}},
             7),
        pal::WOOD_DARK, at);
    const Vector3 crown = at + Vector3(0, 1.35f * size, 0);
    put(parent, ball(Vector3(0.74f, 0.60f, 0.72f) * size, 9, 5), leaf, crown, Vector3(0, rnd(seed, 1, 0, 60), 0));
    put(parent, ball(Vector3(0.48f, 0.42f, 0.48f) * size, 8, 4), pal::tone(leaf, 0.12f),
        crown + Vector3(-0.18f, 0.36f, 0.12f) * size);
    put(parent, ball(Vector3(0.42f, 0.36f, 0.42f) * size, 8, 4), pal::tone(leaf, -0.08f),
        crown + Vector3(0.36f, -0.12f, 0.16f) * size);
    for (int i = 0; i < 7; i++) {
        const float a = rnd(seed, 50 + i, -0.6f, 3.7f), lift = rnd(seed, 60 + i, -0.4f, 0.75f);
        const Vector3 out(std::cos(a) * std::cos(lift), std::sin(lift) * 0.85f, std::sin(a) * std::cos(lift));
        put(parent, ball(Vector3(0.15f, 0.15f, 0.15f) * size, 7, 4), fruit, crown + out * 0.72f * size);
    }
}

} // namespace tilm::house_parts
