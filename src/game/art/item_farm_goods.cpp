// Goods that come straight from fields and animals.

#include <cmath>

#include "game/art/item_models.h"
#include "game/art/model_rigs.h"
#include "game/art/shapes.h"

namespace tilm::item_models {
namespace {

using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;

void egg(Node3D *at) {
    put(at,
        loft({{0, 0, 0},
              {0.035f, 0.105f, 0.105f},
              {0.13f, 0.165f, 0.165f},
              {0.23f, 0.135f, 0.135f},
              {0.31f, 0.07f, 0.07f},
              {0.345f, 0, 0}},
             9),
        0xfff1dc, Vector3(), Vector3(0, 20, 0));
}

void corn(Node3D *at) {
    put(at, loft({{0.03f, 0.08f, 0.08f}, {0.12f, 0.14f, 0.14f}, {0.28f, 0.12f, 0.12f}, {0.42f, 0.0f, 0.0f}}, 8),
        pal::YELLOW, Vector3());
    // Husks fold outward, so that the cob is known from above.
    for (int i = 0; i < 3; i++) {
        put(at,
            loft({{0, 0.08f, 0.06f},
                  {0.14f, 0.12f, 0.06f, 0, 0.11f},
                  {0.22f, 0.08f, 0.04f, 0, 0.19f},
                  {0.19f, 0, 0, 0, 0.27f}},
                 6),
            i == 1 ? pal::LEAF : pal::GREEN, Vector3(), Vector3(0, 60.0f + 120.0f * float(i), 0));
    }
}

void hay(Node3D *at) {
    put(at, bevel_box(Vector3(0.50f, 0.35f, 0.38f), 0.06f), pal::STRAW, Vector3(0, 0.175f, 0));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, bevel_box(Vector3(0.085f, 0.38f, 0.41f), 0.005f), pal::RED_DARK, Vector3(side * 0.125f, 0.178f, 0));
    }
    put(at, loft({{0, 0.06f, 0.04f}, {0.1f, 0, 0}}, 4), pal::STRAW_DARK, Vector3(0.0f, 0.31f, 0.1f),
        Vector3(50, 0, 30));
}

void wheat(Node3D *at) {
    put(at, loft({{0, 0.17f, 0.17f}, {0.13f, 0.085f, 0.085f}, {0.2f, 0.12f, 0.12f}}, 8), pal::STRAW_DARK, Vector3());
    put(at, loft({{0.1f, 0.105f, 0.105f}, {0.16f, 0.105f, 0.105f}}, 8), pal::RED, Vector3());
    for (int i = 0; i < 6; i++) {
        const float a = float(i) * 1.047f;
        put(at, loft({{0, 0.03f, 0.03f}, {0.08f, 0.075f, 0.06f}, {0.19f, 0, 0}}, 6), i % 2 ? pal::YELLOW : pal::STRAW,
            Vector3(0.10f * std::cos(a), 0.19f, 0.10f * std::sin(a)), Vector3(22 * std::sin(a), 0, -22 * std::cos(a)));
    }
    put(at, loft({{0.18f, 0.06f, 0.06f}, {0.30f, 0.085f, 0.085f}, {0.41f, 0, 0}}, 6), pal::YELLOW, Vector3());
}

void sunflower(Node3D *at) {
    for (int i = 0; i < 9; i++) {
        put(at, ball(Vector3(0.09f, 0.05f, 0.15f), 5, 2), i % 2 ? pal::YELLOW : pal::ORANGE,
            Vector3(0.185f * std::sin(float(i) * 0.698f), 0.17f, 0.185f * std::cos(float(i) * 0.698f)),
            Vector3(-14, float(i) * 40, 0));
    }
    put(at, ball(Vector3(0.165f, 0.10f, 0.165f), 9, 4), pal::BROWN, Vector3(0, 0.20f, 0));
    put(at, loft({{0, 0.07f, 0.07f}, {0.14f, 0.10f, 0.10f}}, 6), pal::LEAF, Vector3());
}

void milk(Node3D *at) {
    put(at, loft({{0, 0.155f, 0.155f}, {0.24f, 0.165f, 0.165f}, {0.32f, 0.085f, 0.085f}, {0.38f, 0.08f, 0.08f}}, 9),
        pal::WHITE, Vector3());
    put(at, loft({{0.08f, 0.172f, 0.172f}, {0.19f, 0.176f, 0.176f}}, 9), pal::BLUE, Vector3());
    put(at, loft({{0.36f, 0.105f, 0.105f}, {0.43f, 0.10f, 0.10f}}, 8), pal::BLUE, Vector3());
}

void fish(Node3D *at) {
    // Two thirds of a pond's fish: on its tray one lies every half metre.
    Node3D *lie = shapes::joint(at, "Lie", Vector3(0.05f, 0.115f, -0.06f));
    lie->set_scale(Vector3(0.7f, 0.8f, 0.7f));
    Node3D *tree = model_rigs::animal_tree("fish");
    lie->add_child(tree);
    tree->set_rotation_degrees(Vector3(0, 0, 90));
    tree->set_position(Vector3(0.22f, 0, 0));
}

// Live animals as goods: many lie on one pallet, so that they are drawn with a third of a pen animal's facets.
void carried_calf(Node3D *at) {
    const Color coat = pal::col(0xc98350);
    put(at, loft({{-0.27f, 0.11f, 0.12f}, {-0.02f, 0.165f, 0.15f}, {0.25f, 0.12f, 0.12f}}, 6, 0.3f), coat,
        Vector3(0, 0.34f, 0), Vector3(-90, 0, 0));
    put(at, loft({{-0.06f, 0.10f, 0.09f}, {0.16f, 0.10f, 0.09f}}, 6, 0.4f), coat, Vector3(0, 0.49f, -0.27f),
        Vector3(-90, 0, 0));
    put(at, loft({{0, 0.10f, 0.06f}, {0.08f, 0.08f, 0.05f}}, 6, 0.4f), pal::PINK, Vector3(0, 0.455f, -0.42f),
        Vector3(-90, 0, 0));
    put(at, ball(Vector3(0.05f, 0.11f, 0.13f), 5, 2), pal::WHITE, Vector3(0.135f, 0.36f, 0.05f));
    put(at, ball(Vector3(0.11f, 0.05f, 0.11f), 5, 2), pal::WHITE, Vector3(-0.04f, 0.465f, 0.1f));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, ball(Vector3(0.08f, 0.035f, 0.03f), 4, 2), pal::WHITE, Vector3(side * 0.16f, 0.56f, -0.26f),
            Vector3(0, 0, side * 14));
        put(at, ball(Vector3(0.03f, 0.035f, 0.03f), 4, 2), pal::INK, Vector3(side * 0.075f, 0.53f, -0.39f));
        for (const float z : {-0.17f, 0.17f}) {
            put(at, loft({{0, 0.05f, 0.055f}, {0.28f, 0.055f, 0.06f}}, 4, 0.5f), pal::tone(coat, -0.25f),
                Vector3(side * 0.10f, 0, z));
        }
    }
    put(at, ball(Vector3(0.035f, 0.12f, 0.035f), 4, 2), pal::CHOCOLATE, Vector3(0, 0.3f, 0.28f), Vector3(-16, 0, 0));
}

void carried_hen(Node3D *at) {
    const Color plume = pal::col(0xc8703a), tip = pal::col(0x8a4526);
    put(at, loft({{-0.22f, 0.07f, 0.07f, 0, 0.05f}, {-0.04f, 0.19f, 0.155f}, {0.16f, 0.13f, 0.12f, 0, 0.03f}}, 7),
        plume, Vector3(0, 0.24f, 0), Vector3(-90, 0, 0));
    put(at, loft({{0, 0.11f, 0.10f, 0, 0.04f}, {0.15f, 0.09f, 0.09f}, {0.22f, 0.05f, 0.05f}}, 6), plume,
        Vector3(0, 0.26f, -0.12f));
    put(at, loft({{0, 0.035f, 0.03f}, {0.09f, 0, 0}}, 4), pal::ORANGE, Vector3(0, 0.40f, -0.2f), Vector3(-90, 0, 0));
    put(at, ball(Vector3(0.025f, 0.06f, 0.08f), 5, 2), pal::RED, Vector3(0, 0.50f, -0.12f));
    put(at, ball(Vector3(0.025f, 0.05f, 0.025f), 4, 2), pal::RED, Vector3(0, 0.34f, -0.22f));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, ball(Vector3(0.05f, 0.08f, 0.13f), 5, 2), tip, Vector3(side * 0.175f, 0.26f, 0.03f));
        put(at, ball(Vector3(0.02f, 0.03f, 0.025f), 4, 2), pal::INK, Vector3(side * 0.075f, 0.43f, -0.17f));
        put(at, loft({{0, 0.022f, 0.045f, 0, -0.02f}, {0.14f, 0.02f, 0.02f}}, 4), pal::ORANGE,
            Vector3(side * 0.07f, 0, 0));
    }
    for (int i = -1; i <= 1; i++) {
        put(at, loft({{0, 0.03f, 0.03f}, {0.17f, 0.05f, 0.03f}}, 4), i == 0 ? plume : tip,
            Vector3(float(i) * 0.03f, 0.28f, 0.15f), Vector3(40, 0, float(-i) * 26));
    }
}

void tomato(Node3D *at) {
    // Flat and broad beside the apple, with a star of leaves on it.
    put(at,
        loft({{0, 0.13f, 0.13f},
              {0.04f, 0.21f, 0.21f},
              {0.14f, 0.25f, 0.25f},
              {0.23f, 0.20f, 0.20f},
              {0.26f, 0.10f, 0.10f},
              {0.25f, 0, 0}},
             9),
        pal::RED, Vector3());
    for (int i = 0; i < 5; i++) {
        put(at, ball(Vector3(0.055f, 0.035f, 0.15f), 5, 3), pal::LEAF,
            Vector3(0.10f * std::sin(float(i) * 1.257f), 0.265f, 0.10f * std::cos(float(i) * 1.257f)),
            Vector3(14, float(i) * 72, 0));
    }
}

void apple(Node3D *at) {
    // Broad shoulders on a narrow foot.
    put(at,
        loft({{0, 0.08f, 0.08f},
              {0.05f, 0.12f, 0.12f},
              {0.20f, 0.19f, 0.19f},
              {0.28f, 0.15f, 0.15f},
              {0.30f, 0.08f, 0.08f},
              {0.26f, 0, 0}},
             9),
        0xe23d3d, Vector3());
    put(at, ball(Vector3(0.13f, 0.04f, 0.06f), 5, 3), pal::GREEN, Vector3(0.10f, 0.34f, 0), Vector3(0, 30, 20));
    put(at, loft({{0, 0.03f, 0.03f}, {0.14f, 0.025f, 0.025f, 0.03f}}, 5), pal::BROWN, Vector3(0, 0.26f, 0));
}

void orange(Node3D *at) {
    put(at, ball(Vector3(0.185f, 0.165f, 0.185f), 9, 5), pal::ORANGE, Vector3(0, 0.165f, 0));
    put(at, ball(Vector3(0.10f, 0.04f, 0.06f), 5, 3), pal::LEAF, Vector3(0.05f, 0.335f, 0), Vector3(0, -30, 12));
}

void lettuce(Node3D *at) {
    for (int i = 0; i < 6; i++) {
        put(at, ball(Vector3(0.15f, 0.17f, 0.07f), 7, 3), i % 2 ? pal::GREEN : pal::LEAF_LIGHT,
            Vector3(0.13f * std::sin(float(i) * 1.047f), 0.16f, 0.13f * std::cos(float(i) * 1.047f)),
            Vector3(24, float(i) * 60, 0));
    }
    put(at, ball(Vector3(0.13f, 0.15f, 0.13f), 7, 4), pal::LEAF_LIGHT, Vector3(0, 0.21f, 0));
}

void potato(Node3D *at) {
    put(at,
        loft({{-0.24f, 0.05f, 0.05f},
              {-0.16f, 0.135f, 0.13f},
              {0.02f, 0.17f, 0.15f, 0.02f},
              {0.16f, 0.13f, 0.12f, 0.03f},
              {0.23f, 0.04f, 0.04f}},
             8),
        0xc99a5b, Vector3(0, 0.15f, 0), Vector3(0, 35, 90));
    put(at, ball(Vector3(0.06f, 0.03f, 0.05f), 5, 3), 0xa87a45, Vector3(0.05f, 0.29f, 0.03f));
    put(at, ball(Vector3(0.05f, 0.03f, 0.05f), 5, 3), 0xa87a45, Vector3(-0.08f, 0.27f, -0.05f));
}

void honey(Node3D *at) {
    jar(at, pal::col(0xf5a623), pal::col(pal::YELLOW), 0.17f, 0.34f);
    put(at, loft({{-0.02f, 0.10f, 0.10f}, {0.02f, 0.10f, 0.10f}}, 6), pal::CREAM, Vector3(0, 0.14f, 0.165f),
        Vector3(90, 0, 0));
}

void wool(Node3D *at) {
    put(at, ball(Vector3(0.2f, 0.17f, 0.2f), 8, 4), pal::WHITE, Vector3(0, 0.18f, 0));
    for (int i = 0; i < 6; i++) {
        put(at, ball(Vector3(0.115f, 0.10f, 0.115f), 6, 3), i % 2 ? 0xf1e9dc : pal::WHITE,
            Vector3(0.15f * std::sin(float(i) * 1.047f), 0.12f + 0.11f * float(i % 2),
                    0.15f * std::cos(float(i) * 1.047f)));
    }
}

void bean(Node3D *at) {
    sack(at, pal::col(0xc9a06a), pal::col(pal::WOOD_DARK), 0.2f, 0.36f);
    put(at, ball(Vector3(0.14f, 0.08f, 0.13f), 8, 3), pal::CHOCOLATE, Vector3(0, 0.38f, 0));
    put(at, ball(Vector3(0.06f, 0.05f, 0.08f), 6, 3), pal::BROWN, Vector3(0.05f, 0.44f, 0.03f), Vector3(0, 40, 20));
}

void berry(Node3D *at) {
    put(at, loft({{0, 0.15f, 0.15f}, {0.14f, 0.2f, 0.2f}}, 8, 0.7f), pal::WOOD_LIGHT, Vector3());
    for (int i = 0; i < 5; i++) {
        put(at, ball(Vector3(0.09f, 0.09f, 0.09f), 6, 3), i % 2 ? pal::PURPLE : pal::RED,
            Vector3(0.1f * std::sin(float(i) * 1.257f), 0.19f + 0.05f * float(i % 2),
                    0.1f * std::cos(float(i) * 1.257f)));
    }
    put(at, ball(Vector3(0.1f, 0.09f, 0.1f), 6, 3), pal::PURPLE, Vector3(0, 0.27f, 0));
}

void cocoa(Node3D *at) {
    put(at, loft({{-0.24f, 0.02f, 0.02f}, {-0.12f, 0.12f, 0.12f}, {0.1f, 0.15f, 0.14f}, {0.26f, 0.02f, 0.02f}}, 7),
        pal::BROWN, Vector3(0, 0.15f, 0), Vector3(0, 25, 82));
    put(at, ball(Vector3(0.09f, 0.06f, 0.07f), 6, 3), pal::CREAM, Vector3(0.02f, 0.29f, 0.04f));
}

} // namespace

Node3D *farm_good(const String &kind) {
    struct Row {
        const char *kind;
        void (*build)(Node3D *);
    };
    static const Row rows[] = {{"egg", egg},
                               {"corn", corn},
                               {"hay", hay},
                               {"wheat", wheat},
                               {"sunflower", sunflower},
                               {"milk", milk},
                               {"fish", fish},
                               {"tomato", tomato},
                               {"apple", apple},
                               {"orange", orange},
                               {"lettuce", lettuce},
                               {"potato", potato},
                               {"honey", honey},
                               {"wool", wool},
                               {"bean", bean},
                               {"berry", berry},
                               {"cocoa", cocoa},
                               {"calf", [](Node3D *at) { carried_calf(at); }},
                               {"hen", [](Node3D *at) { carried_hen(at); }}};
    for (const Row &row : rows) {
        if (kind == String(row.kind)) {
            Node3D *root = memnew(Node3D);
            row.build(root);
            return root;
        }
    }
    return nullptr;
}

} // namespace tilm::item_models
