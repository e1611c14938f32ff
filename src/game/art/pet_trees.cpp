// The pets as trees of joints, before they are merged: the dog, cat and pig stand about knee-high, the horse carries
// its pack at 0.95.

#include "game/art/models.h"
#include "game/art/pet_models.h"
#include "game/art/shapes.h"

namespace tilm {
namespace {

using shapes::ball;
using shapes::bevel_box;
using shapes::joint;
using shapes::loft;
using shapes::put;

const Vector3 LAID(-90, 0, 0); // a loft's y runs to -z, the front

struct Frame {
    float hip;               // height of the leg joints
    float across, fore, aft; // where the legs stand
    float thick;
    Color coat, foot;
    float foot_long; // paws reach forward, hooves hardly
};

void add_legs(Node3D *body, const Frame &f) {
    const char *const names[] = {"LegFL", "LegFR", "LegBL", "LegBR"};
    for (int i = 0; i < 4; i++) {
        const bool front = i < 2;
        const float t = f.thick * (front ? 1.0f : 1.12f), half = f.hip * 0.5f;
        Node3D *leg =
            joint(body, names[i], Vector3((i % 2 == 0 ? -1.0f : 1.0f) * f.across, f.hip, front ? f.fore : f.aft));
        put(leg,
            loft({{-half - 0.02f, t * 0.8f, t * 0.85f}, {0.0f, t * 1.2f, t * 1.35f}, {0.1f, t, t * 1.2f}}, 6, 0.3f),
            f.coat, Vector3());
        Node3D *low = joint(leg, "Low", Vector3(0, -half, 0));
        put(low, loft({{0.06f - half, t * 0.72f, t * 0.72f}, {0.03f, t * 0.82f, t * 0.85f}}, 6, 0.3f), f.coat,
            Vector3());
        put(low,
            loft({{-half, t * 1.0f, t * (1.0f + f.foot_long), 0, -t * f.foot_long * 0.8f},
                  {0.1f - half, t * 0.8f, t * 0.85f}},
                 7, 0.4f),
            f.foot, Vector3());
    }
}

void eyes(Node3D *head, float x, float y, float z, float size) {
    for (const float side : {-1.0f, 1.0f}) {
        put(head, ball(Vector3(size * 0.7f, size, size * 0.7f), 6, 3), pal::INK, Vector3(side * x, y, z));
        put(head, ball(Vector3(size * 0.28f, size * 0.3f, size * 0.25f), 4, 2), pal::WHITE,
            Vector3(side * (x + size * 0.12f), y + size * 0.4f, z - size * 0.55f));
    }
}

Node3D *head_of(Node3D *body, const Vector3 &neck_at, const Vector3 &head_at, const Vector3 &jaw_at) {
    Node3D *neck = joint(body, "Neck", neck_at);
    Node3D *head = joint(neck, "Head", head_at);
    joint(head, "Jaw", jaw_at);
    return head;
}

Node3D *below(Node3D *node, const char *name) {
    return Object::cast_to<Node3D>(node->get_node_or_null(NodePath(name)));
}

void build_dog(Node3D *body) {
    const Color coat = pal::col(0xd08a45), pale = pal::col(0xf7e3c0), dark = pal::col(0x8f5527);
    add_legs(body, {0.33f, 0.13f, -0.24f, 0.26f, 0.068f, coat, pale, 0.7f});
    put(body,
        loft({{-0.40f, 0.10f, 0.11f, 0, 0.05f},
              {-0.30f, 0.17f, 0.17f, 0, 0.02f},
              {0.0f, 0.175f, 0.175f, 0, 0.01f},
              {0.24f, 0.205f, 0.21f, 0, 0.01f},
              {0.36f, 0.15f, 0.16f, 0, 0.05f}},
             9),
        coat, Vector3(0, 0.44f, 0), LAID);
    put(body, ball(Vector3(0.15f, 0.17f, 0.12f), 8, 4), pale, Vector3(0, 0.42f, -0.27f)); // chest
    put(body, ball(Vector3(0.15f, 0.06f, 0.22f), 8, 3), dark, Vector3(0, 0.585f, 0.06f)); // saddle patch
    Node3D *head = head_of(body, Vector3(0, 0.54f, -0.26f), Vector3(0, 0.19f, -0.09f), Vector3(0, -0.06f, -0.13f));
    Node3D *neck = below(body, "Neck");
    put(neck, loft({{-0.12f, 0.14f, 0.15f, 0, 0.04f}, {0.16f, 0.115f, 0.12f, 0, -0.05f}}, 8), coat, Vector3());
    put(neck, loft({{0.0f, 0.145f, 0.15f}, {0.06f, 0.14f, 0.145f}}, 8), pal::RED, Vector3(0, 0.02f, -0.01f),
        Vector3(-14, 0, 0));
    put(neck, ball(Vector3(0.04f, 0.045f, 0.03f), 6, 3), pal::YELLOW, Vector3(0, -0.02f, -0.16f));
    put(head,
        loft({{-0.14f, 0.12f, 0.12f}, {0.0f, 0.19f, 0.175f, 0, 0.02f}, {0.12f, 0.165f, 0.145f}, {0.19f, 0.09f, 0.08f}},
             9),
        coat, Vector3(0, 0.02f, 0), LAID);
    put(head, loft({{0, 0.105f, 0.085f}, {0.14f, 0.085f, 0.07f}, {0.19f, 0.05f, 0.04f}}, 8, 0.3f), pale,
        Vector3(0, -0.03f, -0.14f), LAID);
    put(head, ball(Vector3(0.048f, 0.04f, 0.035f), 7, 3), pal::INK, Vector3(0, 0.015f, -0.33f));
    put(head, ball(Vector3(0.05f, 0.09f, 0.02f), 6, 3), pale, Vector3(0, 0.13f, -0.155f), Vector3(-24, 0, 0));
    eyes(head, 0.085f, 0.085f, -0.155f, 0.036f);
    for (const float side : {-1.0f, 1.0f}) {
        put(head, loft({{-0.2f, 0.035f, 0.07f}, {-0.08f, 0.045f, 0.085f}, {0.03f, 0.03f, 0.055f}}, 7), dark,
            Vector3(side * 0.185f, 0.11f, 0.01f), Vector3(8, 0, side * 20));
    }
    Node3D *jaw = below(head, "Jaw");
    put(jaw, loft({{0, 0.075f, 0.03f}, {0.13f, 0.055f, 0.025f}}, 7, 0.3f), pal::tone(pale, -0.1f),
        Vector3(0, -0.04f, 0), LAID);
    put(jaw, ball(Vector3(0.035f, 0.015f, 0.06f), 6, 2), pal::PINK, Vector3(0, -0.01f, -0.09f));
    Node3D *tail = joint(body, "Tail", Vector3(0, 0.52f, 0.36f));
    put(tail, loft({{-0.02f, 0.05f, 0.05f}, {0.16f, 0.06f, 0.06f, 0, 0.04f}, {0.30f, 0.02f, 0.02f, 0, -0.02f}}, 7),
        coat, Vector3(), Vector3(38, 0, 0));
    put(tail, ball(Vector3(0.045f, 0.06f, 0.045f), 6, 3), pale, Vector3(0, 0.22f, 0.19f));
}

void build_cat(Node3D *body) {
    const Color coat = pal::col(0xf0913c), pale = pal::col(0xfff0d8), stripe = pal::col(0xbf6420);
    add_legs(body, {0.24f, 0.095f, -0.17f, 0.19f, 0.05f, coat, pale, 0.6f});
    put(body,
        loft({{-0.29f, 0.08f, 0.085f, 0, 0.03f},
              {-0.20f, 0.135f, 0.13f, 0, 0.01f},
              {0.05f, 0.13f, 0.125f, 0, 0.0f},
              {0.20f, 0.13f, 0.135f, 0, 0.01f},
              {0.27f, 0.09f, 0.1f, 0, 0.03f}},
             9),
        coat, Vector3(0, 0.33f, 0), LAID);
    for (int i = 0; i < 3; i++) {
        put(body, loft({{-0.02f, 0.138f, 0.132f}, {0.02f, 0.138f, 0.132f}}, 9), stripe,
            Vector3(0, 0.345f, -0.06f + 0.11f * float(i)), LAID);
    }
    put(body, ball(Vector3(0.1f, 0.12f, 0.08f), 8, 4), pale, Vector3(0, 0.30f, -0.20f));
    Node3D *head = head_of(body, Vector3(0, 0.40f, -0.19f), Vector3(0, 0.14f, -0.06f), Vector3(0, -0.07f, -0.1f));
    Node3D *neck = below(body, "Neck");
    put(neck, loft({{-0.1f, 0.1f, 0.1f, 0, 0.02f}, {0.1f, 0.085f, 0.085f, 0, -0.03f}}, 8), coat, Vector3());
    put(neck, loft({{0.0f, 0.108f, 0.108f}, {0.045f, 0.1f, 0.1f}}, 8), pal::TEAL, Vector3(0, 0.005f, 0),
        Vector3(-10, 0, 0));
    put(neck, ball(Vector3(0.032f, 0.032f, 0.032f), 6, 3), pal::YELLOW, Vector3(0, -0.01f, -0.12f));
    put(head, ball(Vector3(0.19f, 0.155f, 0.155f), 10, 5), coat, Vector3(0, 0.02f, 0));
    put(head, ball(Vector3(0.095f, 0.07f, 0.07f), 8, 3), pale, Vector3(0, -0.04f, -0.115f));
    put(head, ball(Vector3(0.025f, 0.018f, 0.02f), 5, 3), pal::PINK, Vector3(0, -0.005f, -0.185f));
    for (int i = -1; i <= 1; i++) {
        put(head, bevel_box(Vector3(0.028f, 0.02f, 0.11f), 0.008f), stripe, Vector3(0.055f * float(i), 0.155f, -0.06f),
            Vector3(34, 0, 0));
    }
    eyes(head, 0.08f, 0.04f, -0.13f, 0.038f);
    for (const float side : {-1.0f, 1.0f}) {
        put(head, loft({{0, 0.07f, 0.045f}, {0.14f, 0.0f, 0.0f, side * 0.02f}}, 5), coat,
            Vector3(side * 0.11f, 0.12f, 0.01f), Vector3(0, 0, side * -12));
        put(head, loft({{0, 0.042f, 0.02f}, {0.09f, 0.0f, 0.0f, side * 0.012f}}, 5), pal::PINK,
            Vector3(side * 0.11f, 0.125f, -0.028f), Vector3(0, 0, side * -12));
    }
    put(below(head, "Jaw"), ball(Vector3(0.05f, 0.025f, 0.05f), 6, 3), pal::tone(pale, -0.1f),
        Vector3(0, -0.015f, -0.03f));
    Node3D *tail = joint(body, "Tail", Vector3(0, 0.38f, 0.26f));
    put(tail,
        loft({{-0.02f, 0.04f, 0.04f},
              {0.14f, 0.042f, 0.042f, 0, 0.07f},
              {0.28f, 0.04f, 0.04f, 0, 0.07f},
              {0.4f, 0.03f, 0.03f, 0, 0.0f}},
             7),
        coat, Vector3(), Vector3(14, 0, 0));
    put(tail, ball(Vector3(0.036f, 0.055f, 0.036f), 6, 3), stripe, Vector3(0, 0.385f, 0.1f));
}

void build_pig(Node3D *body) {
    const Color coat = pal::col(0xf6a3b5), snout = pal::col(0xe57f98), spot = pal::col(0xd98096);
    add_legs(body, {0.27f, 0.15f, -0.2f, 0.24f, 0.075f, coat, pal::col(0x7b4a50), 0.15f});
    put(body,
        loft({{-0.42f, 0.12f, 0.12f, 0, 0.04f},
              {-0.30f, 0.24f, 0.225f, 0, 0.01f},
              {0.0f, 0.27f, 0.25f, 0, -0.01f},
              {0.24f, 0.24f, 0.225f, 0, 0.01f},
              {0.36f, 0.15f, 0.15f, 0, 0.03f}},
             10),
        coat, Vector3(0, 0.43f, 0), LAID);
    put(body, ball(Vector3(0.09f, 0.12f, 0.15f), 7, 3), spot, Vector3(0.205f, 0.5f, 0.1f), Vector3(0, 0, 24));
    put(body, ball(Vector3(0.13f, 0.06f, 0.11f), 7, 3), spot, Vector3(-0.06f, 0.655f, 0.0f), Vector3(0, 0, 8));
    Node3D *head = head_of(body, Vector3(0, 0.46f, -0.28f), Vector3(0, 0.06f, -0.14f), Vector3(0, -0.1f, -0.1f));
    put(below(body, "Neck"), loft({{-0.1f, 0.2f, 0.2f}, {0.14f, 0.185f, 0.185f, 0, 0.03f}}, 9), coat, Vector3(), LAID);
    put(head,
        loft({{-0.14f, 0.16f, 0.16f},
              {0.02f, 0.205f, 0.195f, 0, 0.01f},
              {0.13f, 0.15f, 0.14f, 0, -0.02f},
              {0.18f, 0.1f, 0.09f, 0, -0.03f}},
             9),
        coat, Vector3(0, 0.02f, 0), LAID);
    put(head, loft({{0, 0.09f, 0.075f}, {0.1f, 0.1f, 0.082f}, {0.12f, 0.08f, 0.065f}}, 9), snout,
        Vector3(0, -0.025f, -0.15f), LAID);
    for (const float side : {-1.0f, 1.0f}) {
        put(head, ball(Vector3(0.02f, 0.03f, 0.012f), 5, 3), pal::tone(snout, -0.45f),
            Vector3(side * 0.037f, -0.02f, -0.272f));
        put(head, loft({{-0.02f, 0.085f, 0.035f}, {0.09f, 0.07f, 0.03f, 0, -0.02f}, {0.16f, 0.0f, 0.0f, 0, -0.09f}}, 6),
            snout, Vector3(side * 0.13f, 0.16f, 0.0f), Vector3(-16, 0, side * -26));
    }
    eyes(head, 0.105f, 0.085f, -0.135f, 0.034f);
    put(below(head, "Jaw"), loft({{0, 0.085f, 0.035f}, {0.1f, 0.06f, 0.025f}}, 7), pal::tone(coat, -0.08f),
        Vector3(0, 0.0f, -0.02f), LAID);
    Node3D *tail = joint(body, "Tail", Vector3(0, 0.54f, 0.4f));
    // A curl in four short pieces.
    const Vector3 curl[] = {{0.0f, 0.0f, 0.03f}, {0.04f, 0.05f, 0.07f}, {0.0f, 0.1f, 0.09f}, {-0.045f, 0.07f, 0.11f}};
    for (int i = 0; i < 4; i++) {
        put(tail, ball(Vector3(0.04f, 0.036f, 0.04f) * (1.0f - 0.12f * float(i)), 6, 3), snout, curl[i]);
    }
}

void build_horse(Node3D *body) {
    const Color coat = pal::col(0x9c5a2e), mane = pal::col(0x3f2719), pale = pal::col(0xf4e2c6);
    add_legs(body, {0.58f, 0.17f, -0.4f, 0.42f, 0.082f, coat, pal::col(0x35281f), 0.2f});
    put(body,
        loft({{-0.64f, 0.13f, 0.15f, 0, 0.05f},
              {-0.5f, 0.245f, 0.235f, 0, 0.03f},
              {-0.1f, 0.24f, 0.225f, 0, 0.0f},
              {0.32f, 0.245f, 0.245f, 0, 0.01f},
              {0.54f, 0.18f, 0.2f, 0, 0.05f}},
             10),
        coat, Vector3(0, 0.72f, 0), LAID);
    // Blanket, pack saddle and girth.
    put(body, loft({{-0.3f, 0.262f, 0.245f}, {0.3f, 0.262f, 0.245f}}, 8), pal::RED, Vector3(0, 0.733f, 0.03f), LAID);
    for (const float end : {-1.0f, 1.0f}) {
        put(body, loft({{-0.03f, 0.27f, 0.252f}, {0.03f, 0.27f, 0.252f}}, 8), pal::YELLOW,
            Vector3(0, 0.733f, 0.03f + end * 0.28f), LAID);
    }
    for (const float side : {-1.0f, 1.0f}) {
        put(body, loft({{-0.03f, 0.16f, 0.35f}, {0.03f, 0.15f, 0.34f}}, 4, 1), pal::WOOD,
            Vector3(side * 0.29f, 0.92f, 0.02f), Vector3(0, 0, side * 6));
        put(body, loft({{-0.13f, 0.03f, 0.24f}, {0.13f, 0.03f, 0.27f}}, 4, 1), pal::WOOD_DARK,
            Vector3(side * 0.28f, 0.78f, 0.02f));
    }
    Node3D *head = head_of(body, Vector3(0, 0.84f, -0.46f), Vector3(0, 0.44f, -0.26f), Vector3(0, -0.09f, -0.12f));
    Node3D *neck = below(body, "Neck");
    put(neck,
        loft({{-0.22f, 0.17f, 0.24f, 0, 0.1f},
              {0.0f, 0.155f, 0.205f, 0, 0.0f},
              {0.28f, 0.125f, 0.16f, 0, -0.15f},
              {0.5f, 0.11f, 0.13f, 0, -0.24f}},
             9, 0.2f),
        coat, Vector3());
    for (int i = 0; i < 5; i++) {
        const float t = float(i) / 4.0f;
        put(neck, ball(Vector3(0.055f, 0.125f, 0.105f), 5, 2), i % 2 == 0 ? mane : pal::tone(mane, 0.1f),
            Vector3(i % 2 == 0 ? 0.03f : -0.03f, 0.02f + 0.48f * t, 0.2f - 0.28f * t), Vector3(-30, 0, 0));
    }
    put(head,
        loft({{-0.16f, 0.11f, 0.13f},
              {0.0f, 0.15f, 0.165f, 0, 0.0f},
              {0.16f, 0.12f, 0.12f, 0, -0.03f},
              {0.34f, 0.1f, 0.095f, 0, -0.06f}},
             9, 0.25f),
        coat, Vector3(0, 0.02f, 0), Vector3(-112, 0, 0));
    put(head, loft({{0, 0.105f, 0.1f}, {0.1f, 0.115f, 0.1f}, {0.15f, 0.08f, 0.07f}}, 8, 0.35f), pale,
        Vector3(0, -0.155f, -0.27f), Vector3(-112, 0, 0));
    put(head, ball(Vector3(0.05f, 0.12f, 0.03f), 6, 3), pale, Vector3(0, 0.092f, -0.125f), Vector3(-137, 0, 0));
    put(head, ball(Vector3(0.075f, 0.1f, 0.09f), 7, 3), mane, Vector3(0, 0.18f, -0.03f), Vector3(-20, 0, 0));
    eyes(head, 0.135f, 0.03f, -0.1f, 0.042f);
    for (const float side : {-1.0f, 1.0f}) {
        put(head, loft({{0, 0.05f, 0.04f}, {0.08f, 0.055f, 0.04f}, {0.2f, 0, 0, side * 0.02f}}, 6), coat,
            Vector3(side * 0.085f, 0.14f, 0.06f), Vector3(8, 0, side * -10));
        put(head, ball(Vector3(0.02f, 0.025f, 0.02f), 5, 3), pal::tone(pale, -0.5f),
            Vector3(side * 0.05f, -0.175f, -0.405f));
        put(head, loft({{-0.018f, 0.012f, 0.16f}, {0.018f, 0.012f, 0.16f}}, 4, 1), pal::RED_DARK,
            Vector3(side * 0.135f, -0.03f, -0.12f), Vector3(-32, 0, 0));
    }
    put(below(head, "Jaw"), loft({{0, 0.075f, 0.035f}, {0.17f, 0.06f, 0.03f}}, 7, 0.3f), pal::tone(coat, -0.15f),
        Vector3(0, -0.06f, -0.05f), Vector3(-112, 0, 0));
    Node3D *tail = joint(body, "Tail", Vector3(0, 0.84f, 0.6f));
    put(tail,
        loft({{-0.56f, 0.03f, 0.03f, 0, 0.14f},
              {-0.4f, 0.09f, 0.08f, 0, 0.15f},
              {-0.12f, 0.075f, 0.07f, 0, 0.1f},
              {0.03f, 0.045f, 0.05f}},
             7),
        mane, Vector3());
}

} // namespace

Node3D *PetModels::tree(const String &kind) {
    const struct {
        const char *kind;
        void (*build)(Node3D *body);
    } builders[] = {{"dog", build_dog}, {"cat", build_cat}, {"pig", build_pig}, {"horse", build_horse}};
    for (const auto &row : builders) {
        if (kind == row.kind) {
            Node3D *root = memnew(Node3D);
            row.build(joint(root, "Body", Vector3()));
            return root;
        }
    }
    return nullptr;
}

} // namespace tilm
