// Factory goods, medicine and money.

#include <cmath>

#include <godot_cpp/classes/torus_mesh.hpp>

#include "game/art/item_models.h"
#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm::item_models {

using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;

void sack(Node3D *at, const Color &cloth, const Color &mark, float w, float h) {
    put(at,
        loft({{0, w * 0.85f, w * 0.72f},
              {h * 0.12f, w * 1.05f, w * 0.9f},
              {h * 0.55f, w, w * 0.85f},
              {h * 0.82f, w * 0.72f, w * 0.62f}},
             8, 0.5f),
        cloth, Vector3());
    put(at, loft({{h * 0.80f, w * 0.5f, w * 0.45f}, {h, w * 0.78f, w * 0.7f}}, 8, 0.3f), pal::tone(cloth, -0.06f),
        Vector3());
    put(at, loft({{h * 0.76f, w * 0.68f, w * 0.6f}, {h * 0.86f, w * 0.62f, w * 0.54f}}, 8, 0.4f), mark, Vector3());
}

void bottle(Node3D *at, const Color &body, const Color &cap, const Color &label, float w, float h) {
    put(at,
        loft({{0, w, w}, {h * 0.58f, w, w}, {h * 0.76f, w * 0.45f, w * 0.45f}, {h * 0.9f, w * 0.42f, w * 0.42f}}, 9),
        body, Vector3());
    put(at, loft({{h * 0.16f, w * 1.05f, w * 1.05f}, {h * 0.46f, w * 1.05f, w * 1.05f}}, 9), label, Vector3());
    put(at, loft({{h * 0.86f, w * 0.58f, w * 0.58f}, {h * 1.02f, w * 0.55f, w * 0.55f}}, 8), cap, Vector3());
}

void jar(Node3D *at, const Color &filling, const Color &lid, float w, float h) {
    put(at, loft({{0, w * 0.9f, w * 0.9f}, {h * 0.1f, w, w}, {h * 0.68f, w, w}, {h * 0.78f, w * 0.8f, w * 0.8f}}, 9),
        filling, Vector3());
    put(at, loft({{h * 0.76f, w * 0.95f, w * 0.95f}, {h, w * 0.92f, w * 0.92f}}, 9), lid, Vector3());
}

void plate(Node3D *at, float r) {
    put(at, loft({{0, r * 0.6f, r * 0.6f}, {0.06f, r, r}, {0.045f, r * 0.75f, r * 0.75f}}, 12), pal::WHITE, Vector3());
}

namespace {

void flour(Node3D *at) {
    sack(at, pal::col(pal::WHITE), pal::col(pal::WOOD), 0.2f, 0.38f);
    put(at, ball(Vector3(0.09f, 0.10f, 0.04f), 7, 3), pal::STRAW, Vector3(0, 0.17f, 0.165f));
}

void oil(Node3D *at) {
    bottle(at, pal::col(0xf3b52e), pal::col(pal::GREEN), pal::col(pal::CREAM), 0.14f, 0.42f);
    put(at, ball(Vector3(0.07f, 0.06f, 0.03f), 6, 3), pal::YELLOW, Vector3(0, 0.13f, 0.145f));
}

void bread(Node3D *at) {
    put(at,
        loft({{-0.27f, 0.08f, 0.07f, 0, 0.10f},
              {-0.20f, 0.16f, 0.14f, 0, 0.14f},
              {0.20f, 0.16f, 0.14f, 0, 0.14f},
              {0.27f, 0.08f, 0.07f, 0, 0.10f}},
             8, 0.3f),
        0xd98c45, Vector3(), Vector3(-90, 0, 0));
    for (int i = -1; i <= 1; i++) {
        put(at, bevel_box(Vector3(0.24f, 0.07f, 0.08f), 0.03f), pal::CREAM, Vector3(0, 0.262f, 0.14f * float(i)),
            Vector3(0, 24, 0));
    }
}

void mayo(Node3D *at) {
    jar(at, pal::col(0xfff4cf), pal::col(pal::BLUE), 0.16f, 0.37f);
    put(at, loft({{0.09f, 0.168f, 0.168f}, {0.2f, 0.168f, 0.168f}}, 9), pal::YELLOW, Vector3());
}

void cookies(Node3D *at) {
    for (int i = 0; i < 3; i++) {
        put(at, loft({{0, 0.16f, 0.16f}, {0.04f, 0.19f, 0.19f}, {0.085f, 0.15f, 0.15f}}, 9),
            pal::tone(0xd59a53, 0.05f * float(i % 2)),
            Vector3(0.02f * float(i % 2), 0.08f * float(i), -0.015f * float(i)));
    }
    for (int i = 0; i < 5; i++) {
        put(at, ball(Vector3(0.05f, 0.04f, 0.05f), 4, 2), pal::CHOCOLATE,
            Vector3(0.1f * std::sin(float(i) * 1.4f), 0.245f, 0.1f * std::cos(float(i) * 1.4f)));
    }
}

void ring(Node3D *at, float inner, float outer, uint32_t rgb, float y, float squash) {
    Ref<TorusMesh> mesh;
    mesh.instantiate();
    mesh->set_inner_radius(inner);
    mesh->set_outer_radius(outer);
    mesh->set_rings(9);
    mesh->set_ring_segments(5);
    put(at, mesh, rgb, Vector3(0, y, 0), Vector3(), Vector3(1, squash, 1));
}

void donut(Node3D *at) {
    ring(at, 0.07f, 0.25f, 0xd9a05b, 0.105f, 1.15f);
    ring(at, 0.08f, 0.24f, pal::PINK, 0.145f, 1.05f);
    const uint32_t sprinkles[] = {pal::YELLOW, pal::SKY, pal::WHITE, pal::GREEN};
    for (int i = 0; i < 7; i++) {
        const float a = float(i) * 0.898f;
        put(at, ball(Vector3(0.035f, 0.035f, 0.05f), 4, 2), sprinkles[i % 4],
            Vector3(0.16f * std::sin(a), 0.235f, 0.16f * std::cos(a)), Vector3(0, float(i) * 73, 0));
    }
}

void icecream(Node3D *at) {
    put(at, loft({{0, 0.10f, 0.10f}, {0.17f, 0.17f, 0.17f}}, 8), pal::YELLOW, Vector3());
    put(at, loft({{0.13f, 0.18f, 0.18f}, {0.18f, 0.185f, 0.185f}}, 8), pal::RED, Vector3());
    put(at, ball(Vector3(0.12f, 0.12f, 0.12f), 8, 4), pal::PINK, Vector3(-0.06f, 0.23f, 0.02f));
    put(at, ball(Vector3(0.12f, 0.12f, 0.12f), 8, 4), pal::CREAM, Vector3(0.08f, 0.25f, -0.02f));
    put(at, ball(Vector3(0.05f, 0.05f, 0.05f), 6, 3), pal::RED_DARK, Vector3(0.0f, 0.36f, 0));
}

void cake(Node3D *at) {
    put(at, loft({{0, 0.22f, 0.22f}, {0.15f, 0.22f, 0.22f}}, 10), 0xf0c27b, Vector3());
    put(at, loft({{0.13f, 0.232f, 0.232f}, {0.19f, 0.235f, 0.235f}}, 10), pal::WHITE, Vector3());
    put(at, loft({{0.18f, 0.22f, 0.22f}, {0.31f, 0.21f, 0.21f}, {0.335f, 0.15f, 0.15f}}, 10), pal::PINK, Vector3());
    put(at, ball(Vector3(0.07f, 0.07f, 0.07f), 7, 4), pal::RED, Vector3(0, 0.375f, 0));
    for (int i = 0; i < 5; i++) {
        put(at, ball(Vector3(0.055f, 0.05f, 0.055f), 4, 2), pal::WHITE,
            Vector3(0.155f * std::sin(float(i) * 1.257f), 0.335f, 0.155f * std::cos(float(i) * 1.257f)));
    }
}

void meat(Node3D *at) {
    put(at, loft({{0, 0.23f, 0.16f}, {0.05f, 0.26f, 0.18f}, {0.15f, 0.25f, 0.17f}, {0.18f, 0.2f, 0.13f}}, 9, 0.3f),
        pal::RED_DARK, Vector3());
    put(at, loft({{0.12f, 0.2f, 0.12f, 0.02f}, {0.195f, 0.17f, 0.10f, 0.02f}}, 9, 0.2f), 0xe76a68, Vector3());
    put(at, bevel_box(Vector3(0.07f, 0.17f, 0.30f), 0.03f), pal::CREAM, Vector3(-0.22f, 0.1f, 0));
    put(at, loft({{0.17f, 0.06f, 0.06f}, {0.215f, 0.05f, 0.05f}}, 7), pal::WHITE, Vector3(0.06f, 0, 0));
}

void drumstick(Node3D *at) {
    put(at,
        loft({{-0.12f, 0.05f, 0.05f},
              {0.0f, 0.115f, 0.11f},
              {0.14f, 0.15f, 0.14f},
              {0.26f, 0.10f, 0.10f},
              {0.29f, 0.03f, 0.03f}},
             8),
        0xd8863f, Vector3(0, 0.12f, 0.0f), Vector3(-90, 30, 0));
    Node3D *bone = shapes::joint(at, "Bone", Vector3(0, 0.11f, 0));
    bone->set_rotation_degrees(Vector3(-90, 30, 0));
    put(bone, loft({{-0.27f, 0.035f, 0.035f}, {-0.1f, 0.035f, 0.035f}}, 6), pal::WHITE, Vector3());
    for (const float side : {-1.0f, 1.0f}) {
        put(bone, ball(Vector3(0.05f, 0.05f, 0.05f), 6, 3), pal::WHITE, Vector3(side * 0.035f, -0.28f, 0));
    }
}

void cheese(Node3D *at) {
    put(at,
        shapes::extrude(
            {Vector2(-0.25f, -0.17f), Vector2(0.26f, -0.06f), Vector2(0.26f, 0.06f), Vector2(-0.25f, 0.17f)}, 0.28f),
        pal::YELLOW, Vector3(0, 0.14f, 0), Vector3(-90, 0, 0));
    const Vector3 holes[] = {{-0.12f, 0.285f, 0.03f},
                             {0.05f, 0.285f, -0.02f},
                             {-0.02f, 0.16f, 0.115f},
                             {-0.16f, 0.09f, 0.14f},
                             {0.14f, 0.12f, 0.085f}};
    for (const Vector3 &p : holes) {
        put(at, ball(Vector3(0.045f, 0.04f, 0.04f), 6, 3), 0xe0a92a, p);
    }
}

void juice_carton(Node3D *at, uint32_t rgb) {
    put(at, bevel_box(Vector3(0.27f, 0.29f, 0.22f), 0.03f), rgb, Vector3(0, 0.145f, 0));
    put(at, shapes::gable(0.27f, 0.12f, 0.20f), pal::tone(rgb, 0.25f), Vector3(0, 0.285f, 0));
    put(at, ball(Vector3(0.085f, 0.085f, 0.03f), 8, 3), pal::WHITE, Vector3(0, 0.15f, 0.11f));
    put(at, ball(Vector3(0.06f, 0.06f, 0.03f), 7, 3), pal::tone(rgb, -0.2f), Vector3(0, 0.15f, 0.13f));
    put(at, loft({{0, 0.03f, 0.03f}, {0.14f, 0.03f, 0.03f, 0.03f}}, 5), pal::WHITE, Vector3(0.07f, 0.31f, 0.03f));
}

// The two fruit juices stand apart by outline too: an apple on the carton, a glass with a slice on its rim.
void apple_juice(Node3D *at) {
    juice_carton(at, 0x9ccc3c);
    put(at, ball(Vector3(0.09f, 0.085f, 0.09f), 6, 3), pal::RED, Vector3(-0.13f, 0.07f, 0.15f));
}

void orange_juice(Node3D *at) {
    put(at, loft({{0, 0.12f, 0.12f}, {0.36f, 0.19f, 0.19f}}, 8), pal::ORANGE, Vector3());
    put(at, loft({{0, 0.135f, 0.135f}, {0.05f, 0.135f, 0.135f}}, 8), pal::WHITE, Vector3());
    put(at, loft({{0.30f, 0.185f, 0.185f}, {0.38f, 0.20f, 0.20f}}, 8), pal::CREAM, Vector3());
    put(at, loft({{-0.03f, 0.12f, 0.12f}, {0.03f, 0.12f, 0.12f}}, 8), pal::YELLOW, Vector3(0.15f, 0.35f, 0.02f),
        Vector3(90, 20, 0));
    put(at, loft({{0, 0.035f, 0.035f}, {0.15f, 0.035f, 0.035f, -0.05f}}, 5), pal::RED, Vector3(-0.06f, 0.33f, 0));
}

void blanket(Node3D *at) {
    for (int i = 0; i < 3; i++) {
        put(at, bevel_box(Vector3(0.46f, 0.105f, 0.34f), 0.045f), i == 1 ? pal::CREAM : pal::BLUE,
            Vector3(i == 1 ? 0.01f : 0, 0.05f + 0.1f * float(i), 0));
    }
    put(at, bevel_box(Vector3(0.10f, 0.32f, 0.36f), 0.04f), pal::RED, Vector3(-0.11f, 0.155f, 0));
}

void coffee(Node3D *at) {
    put(at, loft({{0, 0.16f, 0.10f}, {0.24f, 0.16f, 0.10f}, {0.31f, 0.155f, 0.045f}}, 8, 0.8f), pal::CHOCOLATE,
        Vector3());
    put(at, bevel_box(Vector3(0.34f, 0.06f, 0.08f), 0.02f), pal::STRAW, Vector3(0, 0.315f, 0));
    put(at, ball(Vector3(0.085f, 0.10f, 0.04f), 7, 3), pal::CREAM, Vector3(0, 0.14f, 0.10f));
    put(at, ball(Vector3(0.045f, 0.06f, 0.04f), 6, 3), pal::BROWN, Vector3(0, 0.14f, 0.125f));
}

void medicine(Node3D *at) {
    put(at, bevel_box(Vector3(0.38f, 0.20f, 0.28f), 0.04f), pal::WHITE, Vector3(0, 0.10f, 0));
    put(at, bevel_box(Vector3(0.20f, 0.06f, 0.07f), 0.015f), pal::RED, Vector3(0, 0.20f, 0));
    put(at, bevel_box(Vector3(0.07f, 0.06f, 0.20f), 0.015f), pal::RED, Vector3(0, 0.20f, 0));
}

void water(Node3D *at) {
    put(at, loft({{0, 0.14f, 0.14f}, {0.34f, 0.19f, 0.19f}}, 9), pal::METAL, Vector3());
    put(at, loft({{0.3f, 0.2f, 0.2f}, {0.35f, 0.205f, 0.205f}}, 9), pal::STONE_DARK, Vector3());
    put(at, ball(Vector3(0.17f, 0.06f, 0.17f), 9, 3), pal::BLUE, Vector3(0, 0.34f, 0));
}

void choco(Node3D *at) {
    put(at, bevel_box(Vector3(0.40f, 0.12f, 0.30f), 0.03f), pal::RED, Vector3(0, 0.06f, 0));
    for (int i = 0; i < 6; i++) {
        put(at, loft({{-0.06f, 0.05f, 0.055f}, {0.06f, 0.035f, 0.04f}}, 6, 0.6f), pal::CHOCOLATE,
            Vector3(-0.12f + 0.12f * float(i % 3), 0.17f, i < 3 ? -0.065f : 0.065f));
    }
}

void bill(Node3D *at) {
    put(at, bevel_box(Vector3(0.54f, 0.075f, 0.30f), 0.02f), 0x58b368, Vector3(0, 0.037f, 0));
    put(at, bevel_box(Vector3(0.42f, 0.03f, 0.20f), 0.01f), 0x8fdc8f, Vector3(0, 0.068f, 0));
    put(at, loft({{0, 0.075f, 0.075f}, {0.03f, 0.07f, 0.07f}}, 8), 0x3f9150, Vector3(0, 0.065f, 0));
    put(at, bevel_box(Vector3(0.07f, 0.088f, 0.315f), 0.015f), pal::CREAM, Vector3(-0.17f, 0.038f, 0));
}

void gold(Node3D *at) {
    put(at, bevel_box(Vector3(0.50f, 0.11f, 0.26f), 0.025f, 0.78f), 0xffc81f, Vector3(0, 0.055f, 0));
    put(at, bevel_box(Vector3(0.26f, 0.03f, 0.10f), 0.01f), 0xffe680, Vector3(0, 0.108f, 0));
}

void money_case(Node3D *at) {
    put(at, bevel_box(Vector3(0.52f, 0.16f, 0.30f), 0.035f), 0x5a4636, Vector3(0, 0.08f, -0.03f));
    put(at, bevel_box(Vector3(0.54f, 0.03f, 0.32f), 0.01f), 0xffc81f, Vector3(0, 0.085f, -0.03f));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, loft({{-0.035f, 0.038f, 0.022f}, {0.035f, 0.038f, 0.022f}}, 4, 1), 0xffc81f,
            Vector3(side * 0.15f, 0.09f, 0.125f));
        put(at, loft({{-0.02f, 0.02f, 0.05f}, {0.02f, 0.02f, 0.05f}}, 4, 1), pal::INK,
            Vector3(side * 0.09f, 0.10f, 0.14f));
    }
    put(at, loft({{-0.02f, 0.11f, 0.02f}, {0.02f, 0.11f, 0.02f}}, 4, 1), pal::INK, Vector3(0, 0.10f, 0.175f));
}

struct Row {
    const char *kind;
    void (*build)(Node3D *);
};

Node3D *from_rows(const Row *rows, size_t count, const String &kind) {
    for (size_t i = 0; i < count; i++) {
        if (kind == String(rows[i].kind)) {
            Node3D *root = memnew(Node3D);
            rows[i].build(root);
            return root;
        }
    }
    return nullptr;
}

} // namespace

Node3D *made_good(const String &kind) {
    static const Row rows[] = {{"flour", flour},
                               {"oil", oil},
                               {"bread", bread},
                               {"mayo", mayo},
                               {"cookies", cookies},
                               {"donut", donut},
                               {"icecream", icecream},
                               {"cake", cake},
                               {"meat", meat},
                               {"drumstick", drumstick},
                               {"cheese", cheese},
                               {"juice", [](Node3D *at) { juice_carton(at, pal::YELLOW); }},
                               {"apple_juice", apple_juice},
                               {"orange_juice", orange_juice},
                               {"blanket", blanket},
                               {"coffee", coffee},
                               {"medicine", medicine},
                               {"water", water},
                               {"choco", choco}};
    return from_rows(rows, std::size(rows), kind);
}

Node3D *money(const String &kind) {
    static const Row rows[] = {{"bill", bill}, {"gold", gold}, {"case", money_case}};
    return from_rows(rows, std::size(rows), kind);
}

} // namespace tilm::item_models
