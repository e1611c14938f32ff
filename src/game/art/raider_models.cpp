// The beasts that raid the farm: wolf, fox and crow, each a Body with legs and a tail, facing -z.

#include "game/art/addon_models.h"
#include "game/art/model_rigs.h"
#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm {
namespace {

using shapes::ball;
using shapes::joint;
using shapes::loft;
using shapes::put;

const Vector3 LAID(-90, 0, 0); // lays a loft down: its y runs to -z, its z up

struct Hound {
    float length, height, thick, leg; // half length, height of the back, half width, thickness of a leg
    uint32_t coat, belly, dark, eye;
    float tail, ears, tail_turn; // tail_turn: degrees from upright backwards
};
constexpr Hound WOLF = {0.56f, 0.78f, 0.25f, 0.085f, 0x6f7684, 0xb9bcc4, 0x3b3f4a, pal::YELLOW, 0.30f, 0.26f, 118};
constexpr Hound FOX = {0.42f, 0.54f, 0.18f, 0.06f, 0xe8702a, pal::WHITE, 0x4a2a1e, pal::INK, 0.52f, 0.26f, 58};

void build_hound(Node3D *body, const Hound &h, bool shaggy) {
    const float hip = h.height - h.thick * 0.7f;
    const char *const names[] = {"LegFL", "LegFR", "LegBL", "LegBR"};
    for (int i = 0; i < 4; i++) {
        const Vector3 at((i % 2 ? 1.0f : -1.0f) * h.thick * 0.62f, hip, (i < 2 ? -0.66f : 0.66f) * h.length);
        Node3D *leg = joint(body, names[i], at);
        put(leg, loft({{-hip * 0.6f, h.leg * 0.8f, h.leg * 0.9f}, {0.06f, h.leg * 1.5f, h.leg * 1.9f}}, 7), h.coat,
            Vector3());
        put(leg, loft({{-hip, h.leg, h.leg * 1.25f, 0, -0.03f}, {-hip * 0.55f, h.leg * 0.8f, h.leg * 0.85f}}, 7),
            h.dark, Vector3());
    }
    put(body,
        loft({{-h.length, h.thick * 0.55f, h.thick * 0.6f},
              {-h.length * 0.6f, h.thick * 0.92f, h.thick * 0.95f},
              {h.length * 0.45f, h.thick * 1.12f, h.thick * 1.2f, 0, 0.02f},
              {h.length, h.thick * 0.7f, h.thick * 0.8f, 0, 0.05f}},
             8),
        h.coat, Vector3(0, h.height, 0), LAID);
    put(body, ball(Vector3(h.thick * 0.75f, h.thick * 0.8f, h.length * 0.45f), 7, 4), h.belly,
        Vector3(0, h.height - h.thick * 0.55f, -h.length * 0.62f));
    if (shaggy) {
        // Hackles along the back.
        for (int i = 0; i < 4; i++) {
            put(body, loft({{0, 0.10f, 0.12f}, {0.20f, 0, 0, 0, 0.08f}}, 5), h.dark,
                Vector3(0, h.height + h.thick * 0.85f, -h.length * 0.75f + 0.22f * float(i)), Vector3(24, 0, 0));
        }
    }
    const float k = h.thick / 0.25f;
    put(body, loft({{-0.1f, 0.20f * k, 0.22f * k}, {0.30f * k, 0.17f * k, 0.18f * k, 0, 0.10f}}, 8), h.coat,
        Vector3(0, h.height + 0.08f, -h.length * 0.8f), Vector3(-50, 0, 0));
    Node3D *head = joint(body, "Head", Vector3(0, h.height + 0.30f * k, -h.length - 0.12f));
    head->set_scale(Vector3(k, k, k) * 1.15f);
    put(head,
        loft({{-0.20f, 0.16f, 0.15f},
              {-0.04f, 0.27f, 0.20f},
              {0.10f, 0.22f, 0.18f},
              {0.22f, 0.11f, 0.10f, 0, -0.05f},
              {0.40f, 0.07f, 0.06f, 0, -0.06f}},
             8),
        h.coat, Vector3(), LAID);
    put(head, ball(Vector3(0.19f, 0.09f, 0.17f), 7, 3), h.belly, Vector3(0, -0.10f, -0.12f));
    put(head, ball(Vector3(0.06f, 0.05f, 0.05f), 6, 3), pal::INK, Vector3(0, -0.04f, -0.41f));
    for (const float side : {-1.0f, 1.0f}) {
        put(head, ball(Vector3(0.045f, 0.05f, 0.03f), 6, 3), h.eye, Vector3(side * 0.13f, 0.08f, -0.19f));
        if (h.eye != pal::INK) {
            put(head, ball(Vector3(0.02f, 0.04f, 0.02f), 5, 3), pal::INK, Vector3(side * 0.135f, 0.08f, -0.215f));
        }
        put(head, loft({{0, 0.095f, 0.06f}, {h.ears, 0, 0, side * 0.03f}}, 5), h.coat,
            Vector3(side * 0.15f, 0.12f, 0.02f), Vector3(0, 0, side * -10));
        put(head, loft({{0, 0.05f, 0.03f}, {h.ears * 0.75f, 0, 0, side * 0.03f}}, 5), h.dark,
            Vector3(side * 0.15f, 0.13f, -0.03f), Vector3(0, 0, side * -10));
    }
    if (shaggy) {
        for (const float side : {-1.0f, 1.0f}) {
            put(head, loft({{0, 0.02f, 0.02f}, {0.07f, 0, 0}}, 4), pal::WHITE, Vector3(side * 0.05f, -0.11f, -0.31f),
                Vector3(180, 0, 0));
        }
    }
    Node3D *tail = joint(body, "Tail", Vector3(0, h.height + 0.02f, h.length - 0.04f));
    const float t = h.tail;
    put(tail, loft({{0, 0.06f * k, 0.06f * k}, {t * 0.55f, 0.15f * k, 0.15f * k}, {t, 0.12f * k, 0.12f * k}}, 7),
        h.coat, Vector3(), Vector3(h.tail_turn, 0, 0));
    put(tail, loft({{t * 0.92f, 0.135f * k, 0.135f * k}, {t * 1.5f, 0, 0}}, 7), h.belly, Vector3(),
        Vector3(h.tail_turn, 0, 0));
}

void build_crow(Node3D *body) {
    constexpr uint32_t PLUME = 0x2f2c3d, GLOSS = 0x4b4768;
    for (const float side : {-1.0f, 1.0f}) {
        Node3D *leg = joint(body, side < 0 ? "LegL" : "LegR", Vector3(side * 0.07f, 0.16f, 0));
        put(leg, loft({{-0.16f, 0.02f, 0.02f}, {0.03f, 0.03f, 0.03f}}, 5), pal::ORANGE, Vector3());
        put(leg, ball(Vector3(0.05f, 0.015f, 0.07f), 5, 2), pal::ORANGE, Vector3(0, -0.145f, -0.03f));
        put(body, loft({{-0.30f, 0.02f, 0.04f}, {-0.05f, 0.05f, 0.12f}, {0.14f, 0.03f, 0.08f}}, 6), GLOSS,
            Vector3(side * 0.16f, 0.29f, 0.04f), Vector3(-80, side * 8, 0));
    }
    put(body,
        loft({{-0.24f, 0.06f, 0.06f}, {-0.08f, 0.15f, 0.14f}, {0.12f, 0.16f, 0.15f}, {0.24f, 0.08f, 0.09f, 0, 0.05f}},
             8),
        PLUME, Vector3(0, 0.28f, 0), LAID);
    put(body, ball(Vector3(0.13f, 0.13f, 0.13f), 8, 4), PLUME, Vector3(0, 0.45f, -0.19f));
    put(body, loft({{0, 0.055f, 0.05f}, {0.18f, 0, 0, 0, -0.02f}}, 5), 0xd0a030, Vector3(0, 0.44f, -0.29f), LAID);
    for (const float side : {-1.0f, 1.0f}) {
        put(body, ball(Vector3(0.035f, 0.035f, 0.025f), 5, 3), pal::WHITE, Vector3(side * 0.085f, 0.49f, -0.27f));
        put(body, ball(Vector3(0.018f, 0.02f, 0.02f), 5, 3), pal::INK, Vector3(side * 0.088f, 0.49f, -0.29f));
    }
    Node3D *tail = joint(body, "Tail", Vector3(0, 0.27f, 0.2f));
    for (int i = -1; i <= 1; i++) {
        put(tail, loft({{0, 0.04f, 0.03f}, {0.26f, 0.07f, 0.02f}}, 5), i ? GLOSS : PLUME, Vector3(),
            Vector3(100, 14.0f * float(i), 0));
    }
}

} // namespace

Node3D *AddonModels::raider(const String &kind) {
    if (Node3D *known = model_rigs::known_body(kind + String("/single"))) {
        return Models::animal_rig(known, kind);
    }
    Node3D *body = memnew(Node3D);
    if (kind == String("wolf")) {
        build_hound(body, WOLF, true);
    } else if (kind == String("fox")) {
        build_hound(body, FOX, false);
    } else if (kind == String("crow")) {
        build_crow(body);
    } else {
        memdelete(body);
        return nullptr;
    }
    return Models::animal_rig(body, kind);
}

} // namespace tilm
