// Farm animals as trees of a Body with legs and a tail, all facing -z, sized so that a hen is 0.86 tall and a cow 1.7.

#include <cmath>

#include "game/art/model_rigs.h"
#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm::model_rigs {
namespace {

using shapes::ball;
using shapes::bevel_box;
using shapes::joint;
using shapes::loft;
using shapes::put;
using shapes::Ring;

// Lays a loft down: its y runs to -z (the front), its z up.
const Vector3 LAID(-90, 0, 0);

void eye_pair(Node3D *parent, float x, float y, float z, float size) {
    for (const float side : {-1.0f, 1.0f}) {
        put(parent, ball(Vector3(size * 0.7f, size, size * 0.8f), 6, 3), pal::INK, Vector3(side * x, y, z));
    }
}

void build_hen(Node3D *body, const Color &plume, const Color &tip) {
    for (const float side : {-1.0f, 1.0f}) {
        Node3D *leg = joint(body, side < 0 ? "LegL" : "LegR", Vector3(side * 0.12f, 0.26f, 0.02f));
        put(leg, loft({{-0.24f, 0.03f, 0.03f}, {0.04f, 0.045f, 0.045f}}, 5), pal::ORANGE, Vector3());
        put(leg, bevel_box(Vector3(0.13f, 0.04f, 0.19f), 0.015f), pal::ORANGE, Vector3(0, -0.24f, -0.05f));
    }
    put(body,
        loft({{-0.36f, 0.10f, 0.10f, 0, 0.14f},
              {-0.24f, 0.21f, 0.18f, 0, 0.07f},
              {-0.02f, 0.27f, 0.235f, 0, 0.0f},
              {0.2f, 0.235f, 0.225f, 0, 0.03f},
              {0.34f, 0.13f, 0.14f, 0, 0.08f}},
             9),
        plume, Vector3(0, 0.42f, 0), LAID);
    put(body,
        loft({{0.0f, 0.20f, 0.19f, 0, 0.06f},
              {0.16f, 0.15f, 0.15f, 0, 0.0f},
              {0.30f, 0.155f, 0.155f, 0, -0.015f},
              {0.40f, 0.09f, 0.09f, 0, -0.01f}},
             8),
        plume, Vector3(0, 0.44f, -0.20f));
    put(body, loft({{0, 0.05f, 0.045f}, {0.13f, 0.0f, 0.0f}}, 5), pal::ORANGE, Vector3(0, 0.70f, -0.33f), LAID);
    put(body, ball(Vector3(0.035f, 0.07f, 0.04f), 6, 3), pal::RED, Vector3(0, 0.61f, -0.36f));
    for (int i = 0; i < 3; i++) {
        put(body, ball(Vector3(0.035f, 0.075f - 0.012f * float(i), 0.06f), 6, 3), pal::RED,
            Vector3(0, 0.86f - 0.012f * float(i), -0.29f + 0.085f * float(i)));
    }
    eye_pair(body, 0.135f, 0.74f, -0.27f, 0.035f);
    for (const float side : {-1.0f, 1.0f}) {
        put(body, loft({{-0.22f, 0.03f, 0.05f, 0, 0.06f}, {-0.04f, 0.06f, 0.14f}, {0.16f, 0.04f, 0.10f, 0, 0.02f}}, 7),
            tip, Vector3(side * 0.26f, 0.44f, 0.02f), LAID);
    }
    Node3D *tail = joint(body, "Tail", Vector3(0, 0.54f, 0.28f));
    for (int i = -1; i <= 1; i++) {
        put(tail, loft({{-0.02f, 0.05f, 0.045f}, {0.16f, 0.09f, 0.05f}, {0.27f, 0.04f, 0.03f}}, 6),
            i == 0 ? plume : tip, Vector3(float(i) * 0.06f, 0, 0.02f), Vector3(42, 0, float(-i) * 24));
    }
}

struct Beast {
    float length, width, height, hip; // half length, half width and height of the trunk, height of the leg joints
    Color coat, patch, hoof, face;
};

void add_legs(Node3D *body, const Beast &b, float thick) {
    const char *const names[] = {"LegFL", "LegFR", "LegBL", "LegBR"};
    for (int i = 0; i < 4; i++) {
        const float x = (i % 2 == 0 ? -1.0f : 1.0f) * b.width * 0.62f;
        const float z = (i < 2 ? -1.0f : 1.0f) * b.length * 0.62f;
        Node3D *leg = joint(body, names[i], Vector3(x, b.hip, z));
        put(leg, loft({{0.13f - b.hip, thick * 0.8f, thick * 0.8f}, {0.08f, thick * 1.1f, thick * 1.15f}}, 7, 0.5f),
            b.coat, Vector3());
        put(leg,
            loft({{-b.hip, thick, thick * 1.1f, 0, -0.02f}, {0.15f - b.hip, thick * 0.85f, thick * 0.9f}}, 7, 0.5f),
            b.hoof, Vector3());
    }
}

void build_cow(Node3D *body, bool calf) {
    const Color white = pal::col(pal::WHITE), dark = pal::col(calf ? 0x9c5a34 : 0x3b3540);
    const Beast b = {0.72f,
                     0.44f,
                     0.42f,
                     0.62f,
                     calf ? pal::col(0xc98350) : white,
                     dark,
                     pal::tone(dark, -0.25f),
                     pal::col(pal::PINK)};
    add_legs(body, b, 0.125f);
    const float y = 1.0f;
    put(body,
        loft({{-0.76f, 0.22f, 0.22f, 0, 0.06f},
              {-0.66f, 0.37f, 0.34f, 0, 0.03f},
              {-0.2f, 0.44f, 0.43f, 0, -0.04f},
              {0.32f, 0.43f, 0.40f, 0, -0.02f},
              {0.66f, 0.35f, 0.34f, 0, 0.04f},
              {0.76f, 0.2f, 0.2f, 0, 0.08f}},
             9, 0.45f),
        b.coat, Vector3(0, y, 0), LAID);
    // Patches stand a little off the coat; each lies differently.
    const Color spot = calf ? white : b.patch;
    put(body, ball(Vector3(0.10f, 0.26f, 0.34f), 7, 3), spot, Vector3(0.385f, y + 0.08f, 0.20f), Vector3(18, 0, 12));
    put(body, ball(Vector3(0.10f, 0.24f, 0.26f), 7, 3), spot, Vector3(-0.395f, y + 0.02f, -0.16f), Vector3(-24, 0, -8));
    put(body, ball(Vector3(0.27f, 0.10f, 0.24f), 7, 3), spot, Vector3(-0.10f, y + 0.37f, 0.38f), Vector3(6, 20, 0));
    if (!calf) {
        put(body, ball(Vector3(0.17f, 0.13f, 0.17f), 8, 3), pal::PINK, Vector3(0, 0.60f, 0.36f));
    }
    // Neck and a large head.
    const float k = calf ? 1.12f : 1.0f;
    put(body, loft({{-0.05f, 0.24f, 0.27f}, {0.28f, 0.21f, 0.23f, 0, 0.12f}}, 8, 0.4f), b.coat,
        Vector3(0, y + 0.10f, -0.62f), LAID);
    Node3D *head = joint(body, "Head", Vector3(0, y + 0.30f, -0.86f));
    head->set_scale(Vector3(k, k, k));
    put(head, loft({{-0.16f, 0.25f, 0.24f}, {0.10f, 0.28f, 0.26f}, {0.26f, 0.22f, 0.20f, 0, -0.05f}}, 8, 0.55f),
        calf ? b.coat : white, Vector3(), LAID);
    put(head, loft({{0, 0.235f, 0.175f}, {0.17f, 0.215f, 0.16f}, {0.22f, 0.14f, 0.1f}}, 8, 0.55f), b.face,
        Vector3(0, -0.08f, -0.24f), LAID);
    put(head, ball(Vector3(0.15f, 0.20f, 0.12f), 7, 3), spot, Vector3(0.15f, 0.13f, -0.15f), Vector3(-10, 0, 14));
    eye_pair(head, 0.195f, 0.10f, -0.235f, 0.062f);
    for (const float side : {-1.0f, 1.0f}) {
        put(head, ball(Vector3(0.03f, 0.035f, 0.03f), 5, 3), pal::tone(b.face, -0.45f),
            Vector3(side * 0.09f, -0.06f, -0.46f));
        put(head, ball(Vector3(0.17f, 0.085f, 0.055f), 6, 3), side < 0 ? spot : b.coat,
            Vector3(side * 0.37f, 0.14f, 0.02f), Vector3(0, 0, side * -14));
        if (!calf) {
            put(head, loft({{0, 0.065f, 0.065f}, {0.2f, 0, 0, side * 0.09f}}, 6), pal::CREAM,
                Vector3(side * 0.17f, 0.24f, 0.03f), Vector3(0, 0, side * -18));
        }
    }
    if (!calf) {
        put(body, loft({{0.0f, 0.235f, 0.255f}, {0.07f, 0.235f, 0.255f}}, 8, 0.4f), pal::RED,
            Vector3(0, y + 0.14f, -0.72f), Vector3(-72, 0, 0));
        put(body, ball(Vector3(0.09f, 0.10f, 0.07f), 6, 3), pal::YELLOW, Vector3(0, y - 0.16f, -0.86f));
    }
    Node3D *tail = joint(body, "Tail", Vector3(0, y + 0.24f, 0.74f));
    put(tail, loft({{-0.55f, 0.035f, 0.035f, 0, 0.10f}, {0, 0.05f, 0.05f}}, 5), b.coat, Vector3());
    put(tail, ball(Vector3(0.075f, 0.13f, 0.075f), 6, 3), b.patch, Vector3(0, -0.60f, 0.10f));
}

void build_sheep(Node3D *body, bool shorn) {
    const Color face = pal::col(0x4a4148), wool = pal::col(shorn ? 0xf3d9c6 : pal::WHITE);
    const Beast b = {0.5f, 0.36f, 0.36f, 0.42f, face, face, pal::tone(face, -0.3f), face};
    add_legs(body, b, 0.09f);
    if (shorn) {
        put(body,
            loft(
                {{-0.52f, 0.16f, 0.17f}, {-0.36f, 0.27f, 0.25f}, {0.2f, 0.28f, 0.26f}, {0.50f, 0.17f, 0.18f, 0, 0.05f}},
                8, 0.3f),
            wool, Vector3(0, 0.70f, 0), LAID);
    } else {
        put(body,
            loft({{-0.6f, 0.2f, 0.2f},
                  {-0.46f, 0.38f, 0.34f},
                  {0.0f, 0.46f, 0.42f},
                  {0.40f, 0.37f, 0.34f},
                  {0.56f, 0.2f, 0.2f}},
                 9),
            wool, Vector3(0, 0.76f, 0), LAID);
        for (int i = 0; i < 14; i++) {
            const float turn = float(i) * 2.4f, along = -0.42f + 0.062f * float(i);
            put(body, ball(Vector3(0.19f, 0.17f, 0.19f), 6, 3), pal::tone(wool, i % 3 == 0 ? -0.06f : 0.0f),
                Vector3(0.33f * std::sin(turn), 0.80f + 0.28f * std::fabs(std::cos(turn)), along));
        }
    }
    Node3D *head = joint(body, "Head", Vector3(0, 0.95f, -0.60f));
    put(head,
        loft({{-0.12f, 0.17f, 0.18f},
              {0.08f, 0.20f, 0.19f},
              {0.26f, 0.14f, 0.12f, 0, -0.06f},
              {0.29f, 0.08f, 0.07f, 0, -0.06f}},
             8, 0.4f),
        face, Vector3(), LAID);
    if (!shorn) {
        put(head, ball(Vector3(0.20f, 0.13f, 0.17f), 7, 3), wool, Vector3(0, 0.17f, 0.0f));
    }
    for (const float side : {-1.0f, 1.0f}) {
        put(head, ball(Vector3(0.055f, 0.06f, 0.04f), 6, 3), pal::WHITE, Vector3(side * 0.135f, 0.06f, -0.16f));
        put(head, ball(Vector3(0.03f, 0.04f, 0.03f), 5, 3), pal::INK, Vector3(side * 0.14f, 0.06f, -0.19f));
        put(head, ball(Vector3(0.13f, 0.05f, 0.05f), 6, 3), face, Vector3(side * 0.26f, 0.07f, 0.02f),
            Vector3(0, 0, side * -20));
    }
    Node3D *tail = joint(body, "Tail", Vector3(0, 0.84f, 0.54f));
    put(tail, ball(Vector3(0.11f, 0.12f, 0.10f), 6, 3), wool, Vector3(0, -0.02f, 0.04f));
}

// Three kinds: a silver blue one, a long striped one, a tall golden one.
void build_fish(Node3D *root, int kind) {
    const Color scale = pal::col(kind == 0 ? 0x4fa3d9 : kind == 1 ? 0x7fb04a : 0xf0a830);
    Node3D *body = joint(root, "Shape", Vector3());
    body->set_scale(kind == 0 ? Vector3(1, 1, 1) : kind == 1 ? Vector3(0.85f, 0.8f, 1.25f) : Vector3(1, 1.3f, 0.9f));
    if (kind == 1) {
        for (const float z : {-0.12f, 0.0f, 0.12f}) {
            put(body, ball(Vector3(0.13f, 0.17f, 0.03f), 7, 3), pal::LEAF_DARK, Vector3(0, 0.26f, z));
        }
    }
    put(body,
        loft({{-0.30f, 0.05f, 0.08f},
              {-0.12f, 0.12f, 0.19f},
              {0.10f, 0.14f, 0.22f},
              {0.28f, 0.09f, 0.13f},
              {0.34f, 0.03f, 0.04f}},
             8),
        scale, Vector3(0, 0.22f, 0), LAID);
    put(body, loft({{0.0f, 0.10f, 0.17f}, {0.16f, 0.115f, 0.18f}, {0.26f, 0.06f, 0.10f}}, 8), pal::CREAM,
        Vector3(0, 0.15f, 0.02f), LAID, Vector3(1, 1, 0.7f));
    put(body, loft({{-0.12f, 0.02f, 0.05f}, {0.1f, 0.03f, 0.13f, 0, 0.05f}}, 4), pal::ORANGE, Vector3(0, 0.42f, 0.02f),
        LAID);
    eye_pair(body, 0.10f, 0.27f, -0.22f, 0.04f);
    Node3D *tail = joint(root, "Tail", Vector3(0, 0.22f, 0.28f) * body->get_scale());
    put(tail, loft({{-0.24f, 0.02f, 0.20f}, {-0.13f, 0.03f, 0.08f}, {0.04f, 0.05f, 0.07f}}, 6), pal::ORANGE, Vector3(),
        LAID);
}

void build_bee(Node3D *body) {
    for (int i = 0; i < 4; i++) {
        put(body,
            ball(Vector3(0.135f - 0.02f * std::fabs(float(i) - 1.3f), 0.13f - 0.015f * std::fabs(float(i) - 1.3f),
                         0.06f),
                 8, 3),
            i % 2 == 0 ? pal::YELLOW : pal::INK, Vector3(0, 0.2f, -0.11f + 0.085f * float(i)));
    }
    put(body, ball(Vector3(0.10f, 0.10f, 0.09f), 7, 3), pal::INK, Vector3(0, 0.21f, -0.20f));
    for (const float side : {-1.0f, 1.0f}) {
        put(body, ball(Vector3(0.045f, 0.055f, 0.03f), 5, 3), pal::WHITE, Vector3(side * 0.055f, 0.24f, -0.27f));
        put(body, ball(Vector3(0.17f, 0.02f, 0.10f), 6, 2), pal::SKY, Vector3(side * 0.17f, 0.34f, 0.0f),
            Vector3(0, side * 20, side * 28));
    }
    Node3D *tail = joint(body, "Tail", Vector3(0, 0.2f, 0.2f));
    put(tail, loft({{-0.09f, 0, 0}, {0.02f, 0.05f, 0.05f}}, 5), pal::INK, Vector3(), LAID);
}

} // namespace

Node3D *animal_tree(const String &product) {
    Node3D *root = memnew(Node3D);
    Node3D *body = joint(root, "Body", Vector3());
    if (product == String("egg")) {
        build_hen(body, pal::col(pal::WHITE), pal::col(0xf0dcc0));
    } else if (product == String("hen")) {
        build_hen(body, pal::col(0xc8703a), pal::col(0x8a4526));
    } else if (product == String("milk")) {
        build_cow(body, false);
    } else if (product == String("calf")) {
        build_cow(body, true);
    } else if (product == String("wool")) {
        build_sheep(body, false);
    } else if (product == String("wool_shorn")) {
        build_sheep(body, true);
    } else if (product.begins_with("fish")) {
        build_fish(body, int(product.trim_prefix("fish").to_int()) % 3);
    } else if (product == String("honey")) {
        build_bee(body);
    } else {
        memdelete(root);
        return nullptr;
    }
    return root;
}

} // namespace tilm::model_rigs
