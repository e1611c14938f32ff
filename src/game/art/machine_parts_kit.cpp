#include "game/art/machine_parts_kit.h"

#include <cmath>

#include "game/art/house_parts.h"
#include "game/art/shapes.h"

namespace tilm::machine_parts {

using pal::col;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;
using shapes::rnd;

void site(Node3D *at, const Color &earth) {
    house_parts::trodden(at, earth);
    for (const float x : {-2.05f, 2.05f}) {
        put(at, bevel_box(Vector3(1.6f, 0.09f, 1.55f), 0.03f), pal::WOOD_DARK, Vector3(x, 0.045f, 0.72f));
        for (int i = 0; i < 4; i++) {
            put(at, bevel_box(Vector3(1.54f, 0.06f, 0.34f), 0.02f),
                pal::tone(pal::WOOD_LIGHT, rnd(x > 0 ? 201 : 202, i, -0.06f, 0.10f)),
                Vector3(x, 0.11f, 0.165f + 0.37f * float(i)));
        }
    }
}

void hall(Node3D *at, const Vector3 &foot, const Vector3 &size, Wall wall, const Color &paint) {
    const float w = float(size.x), h = float(size.y), d = float(size.z);
    const float front = d / 2;
    put(at, bevel_box(size, 0.05f), paint, foot + Vector3(0, h / 2, 0));
    put(at, bevel_box(Vector3(w + 0.14f, 0.24f, d + 0.14f), 0.05f), pal::tone(pal::STONE, -0.05f),
        foot + Vector3(0, 0.12f, 0));
    if (wall == Wall::wood) {
        house_parts::planks(at, foot + Vector3(0, 0.2f, front + 0.01f), w, h - 0.25f, int(w / 0.4f),
                            pal::tone(paint, -0.16f));
    }
    if (wall == Wall::plaster || wall == Wall::wood) {
        const Color post = wall == Wall::wood ? pal::tone(paint, -0.3f) : col(pal::WOOD);
        for (const float side : {-1.0f, 1.0f}) {
            put(at, bevel_box(Vector3(0.18f, h, 0.18f), 0.04f), post,
                foot + Vector3(side * (w / 2 - 0.03f), h / 2, front - 0.02f));
        }
        put(at, bevel_box(Vector3(w, 0.15f, 0.12f), 0.03f), post, foot + Vector3(0, h - 0.1f, front));
        return;
    }
    if (wall == Wall::brick || wall == Wall::stone) {
        const bool brick = wall == Wall::brick;
        const int count = brick ? 16 : 11;
        for (int i = 0; i < count; i++) {
            const Vector3 size_i =
                brick ? Vector3(0.32f, 0.12f, 0.06f) : Vector3(rnd(211, i, 0.3f, 0.5f), 0.22f, 0.08f);
            put(at, bevel_box(size_i, 0.02f), pal::tone(paint, rnd(212, i, -0.16f, 0.16f)),
                foot + Vector3(rnd(213, i, -0.5f, 0.5f) * (w - 0.5f), rnd(214, i, 0.15f, 0.95f) * h, front));
        }
        for (const float side : {-1.0f, 1.0f}) {
            for (int i = 0; i * 0.4f < h - 0.2f; i++) {
                put(at, bevel_box(Vector3(i % 2 ? 0.22f : 0.32f, 0.34f, 0.22f), 0.03f), pal::tone(pal::CREAM, -0.08f),
                    foot + Vector3(side * (w / 2 - 0.06f), 0.3f + 0.4f * float(i), front - 0.06f));
            }
        }
    }
}

void flat_roof(Node3D *at, const Vector3 &top, const Vector3 &size, const Color &color) {
    const float w = float(size.x), d = float(size.z);
    put(at, bevel_box(Vector3(w + 0.2f, 0.16f, d + 0.2f), 0.04f), pal::tone(color, -0.12f), top + Vector3(0, 0.06f, 0));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, bevel_box(Vector3(w + 0.34f, 0.34f, 0.18f), 0.05f), color,
            top + Vector3(0, 0.16f, side * (d / 2 + 0.08f)));
        put(at, bevel_box(Vector3(0.18f, 0.34f, d + 0.2f), 0.05f), pal::tone(color, 0.08f),
            top + Vector3(side * (w / 2 + 0.08f), 0.16f, 0));
    }
}

void awning(Node3D *at, const Vector3 &pos, float width, const Color &color) {
    const int stripes = int(std::lround(width / 0.4f)) | 1;
    const float each = width / float(stripes);
    for (int i = 0; i < stripes; i++) {
        const Color cloth = i % 2 ? col(pal::WHITE) : color;
        const float x = each * (float(i) + 0.5f - float(stripes) / 2.0f);
        put(at, bevel_box(Vector3(each, 0.08f, 0.72f), 0.02f), cloth, pos + Vector3(x, -0.14f, 0.3f),
            Vector3(26, 0, 0));
        put(at,
            shapes::extrude({Vector2(-each / 2, 0.14f), Vector2(-each * 0.28f, 0.02f), Vector2(0, -0.03f),
                             Vector2(each * 0.28f, 0.02f), Vector2(each / 2, 0.14f)},
                            0.06f),
            pal::tone(cloth, -0.05f), pos + Vector3(x, -0.43f, 0.61f));
    }
}

void chimney(Node3D *at, float foot_y, const Color &color) {
    const Vector3 p(0.95f, 0, -0.4f);
    put(at, loft({{foot_y, 0.24f, 0.24f}, {2.6f, 0.19f, 0.19f}}, 8, 0.7f), color, p);
    put(at, loft({{2.55f, 0.27f, 0.27f}, {2.74f, 0.27f, 0.27f}}, 8, 0.7f), pal::tone(color, -0.15f), p);
    put(at, loft({{2.7f, 0.16f, 0.16f}, {2.84f, 0.15f, 0.15f}}, 8, 0.5f), pal::INK, p);
}

void shop_front(Node3D *at, const Vector3 &pos, float width, const Color &trim) {
    const float door = 0.72f;
    const Vector3 gate = pos + Vector3(-width / 2 + door / 2 + 0.25f, 0, 0);
    put(at, bevel_box(Vector3(door + 0.18f, 1.32f, 0.12f), 0.03f), trim, gate + Vector3(0, 0.68f, 0.02f));
    put(at, bevel_box(Vector3(door, 1.2f, 0.12f), 0.03f), pal::WOOD, gate + Vector3(0, 0.64f, 0.06f));
    put(at, bevel_box(Vector3(door * 0.62f, 0.42f, 0.10f), 0.02f), pal::SKY, gate + Vector3(0, 0.92f, 0.10f));
    const float wide = width - door - 0.95f;
    house_parts::window(at, pos + Vector3(width / 2 - wide / 2 - 0.25f, 0.85f, 0.03f), wide, 0.7f, trim);
}

void tank(Node3D *at, const Vector3 &foot, float radius, float height, const Color &color) {
    put(at,
        loft({{0, radius * 0.9f, radius * 0.9f},
              {0.1f, radius, radius},
              {height - 0.2f, radius, radius},
              {height, radius * 0.7f, radius * 0.7f},
              {height + 0.12f, 0, 0}},
             11),
        color, foot);
    for (const float y : {0.3f, 0.75f}) {
        put(at,
            loft({{height * y, radius * 1.05f, radius * 1.05f}, {height * y + 0.12f, radius * 1.05f, radius * 1.05f}},
                 11),
            pal::tone(color, -0.22f), foot);
    }
}

} // namespace tilm::machine_parts
