// How people look: a chunky figure of 1.9 with a big head, drawn from the keys of a look.

#include <cmath>

#include "game/art/model_rigs.h"
#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm::model_rigs {
namespace {

using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;

constexpr float HIP = 0.60f;
constexpr float SHOULDER = 1.13f;
constexpr float NECK = 1.22f;

Color look_color(const Dictionary &look, const char *key, const char *fallback) {
    const Variant value = look.get(key, fallback);
    if (value.get_type() == Variant::COLOR) {
        return value;
    }
    const String text = value;
    return Color::from_string(text, Color::from_string(fallback, Color(1, 1, 1)));
}

bool has(const Dictionary &look, const char *key) {
    return look.has(key) && look[key].booleanize() && String(look[key]) != String("none");
}

void add_leg(Node3D *body, const char *name, float x, const Color &pants, const Color &shoes) {
    Node3D *leg = shapes::joint(body, name, Vector3(x, HIP, 0));
    Node3D *knee = shapes::joint(leg, "Knee", Vector3(0, -0.28f, 0));
    put(leg, loft({{-0.32f, 0.115f, 0.13f}, {0.04f, 0.15f, 0.155f}}, 8, 0.7f), pants, Vector3());
    put(knee, loft({{-0.22f, 0.125f, 0.135f}, {0.02f, 0.115f, 0.13f}}, 8, 0.7f), pal::tone(pants, -0.06f), Vector3());
    put(knee, bevel_box(Vector3(0.25f, 0.16f, 0.38f), 0.05f, 0.85f), shoes, Vector3(0, -0.24f, -0.05f));
}

void add_arm(Node3D *body, const char *name, float x, const Color &sleeve, const Color &skin) {
    Node3D *arm = shapes::joint(body, name, Vector3(x, SHOULDER - 0.03f, 0));
    Node3D *elbow = shapes::joint(arm, "Elbow", Vector3(0, -0.24f, 0));
    const float out = x > 0 ? 0.03f : -0.03f;
    put(arm, loft({{-0.27f, 0.10f, 0.11f}, {-0.02f, 0.125f, 0.13f}, {0.07f, 0.07f, 0.08f}}, 8, 0.5f), sleeve,
        Vector3(out, 0, 0));
    put(elbow, loft({{-0.17f, 0.075f, 0.085f}, {0.02f, 0.08f, 0.09f}}, 8, 0.5f), skin, Vector3(out, 0, 0));
    put(elbow, ball(Vector3(0.095f, 0.10f, 0.105f), 8, 3), skin, Vector3(out, -0.21f, -0.01f));
}

void add_hair(Node3D *head, const String &style, const Color &hair, bool hatted) {
    if (style == String("bald")) {
        return;
    }
    if (style == String("hijab") || style == String("scarf")) {
        put(head,
            loft({{-0.10f, 0.30f, 0.30f, 0, 0.05f},
                  {0.12f, 0.36f, 0.36f, 0, 0.05f},
                  {0.36f, 0.37f, 0.37f, 0, 0.04f},
                  {0.58f, 0.27f, 0.27f, 0, 0.05f},
                  {0.68f, 0.0f, 0.0f, 0, 0.05f}},
                 10),
            hair, Vector3(0, 0, 0.045f));
        put(head, loft({{0.41f, 0.352f, 0.34f}, {0.56f, 0.30f, 0.29f}, {0.66f, 0.1f, 0.1f}}, 10), hair, Vector3());
        put(head, loft({{-0.22f, 0.30f, 0.26f}, {0.0f, 0.28f, 0.25f}}, 10), pal::tone(hair, -0.12f),
            Vector3(0, 0, 0.03f));
        if (style == String("scarf")) {
            // Knotted at the nape, its ends hang down the back.
            put(head, ball(Vector3(0.13f, 0.11f, 0.11f), 7, 3), pal::tone(hair, -0.12f), Vector3(0, 0.10f, 0.42f));
            for (const float side : {-1.0f, 1.0f}) {
                put(head, loft({{-0.34f, 0.12f, 0.04f}, {0, 0.05f, 0.05f}}, 6), hair,
                    Vector3(side * 0.07f, 0.08f, 0.44f), Vector3(-12, 0, side * 16));
            }
            put(head, bevel_box(Vector3(0.60f, 0.09f, 0.30f), 0.03f), pal::tone(hair, 0.25f), Vector3(0, 0.52f, -0.16f),
                Vector3(10, 0, 0));
        }
        return;
    }
    if (style == String("buzz")) {
        put(head,
            loft({{0.30f, 0.345f, 0.26f, 0, 0.10f},
                  {0.44f, 0.345f, 0.33f, 0, 0.02f},
                  {0.57f, 0.27f, 0.26f},
                  {0.635f, 0.11f, 0.11f},
                  {0.645f, 0, 0}},
                 10),
            hair, Vector3());
        return;
    }
    // The cap of hair sits back and down the neck, so that the face stays free; a hat hides its crown and the lock.
    if (hatted) {
        put(head,
            loft({{0.18f, 0.34f, 0.27f, 0, 0.10f}, {0.38f, 0.37f, 0.34f, 0, 0.045f}, {0.54f, 0.31f, 0.31f, 0, 0.02f}},
                 9),
            hair, Vector3());
    } else {
        put(head,
            loft({{0.18f, 0.34f, 0.27f, 0, 0.10f},
                  {0.38f, 0.37f, 0.34f, 0, 0.045f},
                  {0.54f, 0.31f, 0.31f, 0, 0.02f},
                  {0.66f, 0.15f, 0.16f, 0, 0.02f},
                  {0.69f, 0, 0, 0, 0.02f}},
                 9),
            hair, Vector3());
    }
    put(head, bevel_box(Vector3(0.52f, 0.15f, 0.15f), 0.06f, 0.8f), hair, Vector3(0.03f, 0.50f, -0.26f),
        Vector3(16, 0, -5));
    if (style == String("long")) {
        put(head,
            loft({{-0.24f, 0.24f, 0.10f, 0, 0.22f}, {0.10f, 0.33f, 0.17f, 0, 0.18f}, {0.34f, 0.34f, 0.20f, 0, 0.13f}},
                 8),
            hair, Vector3());
    }
    if (style == String("bun")) {
        // Under a hat the bun slips down to the neck.
        put(head, ball(Vector3(0.18f, 0.16f, 0.17f), 8, 4), pal::tone(hair, 0.05f),
            hatted ? Vector3(0, 0.26f, 0.40f) : Vector3(0, 0.66f, 0.18f));
    }
    if (style == String("ponytail")) {
        put(head, loft({{-0.30f, 0.05f, 0.05f}, {-0.1f, 0.13f, 0.12f}, {0.1f, 0.10f, 0.10f}}, 7), hair,
            Vector3(0, 0.38f, 0.42f), Vector3(20, 0, 0));
    }
    if (style == String("pigtails")) {
        for (const float side : {-1.0f, 1.0f}) {
            put(head, loft({{-0.42f, 0, 0}, {-0.24f, 0.11f, 0.11f}, {0, 0.07f, 0.07f}}, 6), hair,
                Vector3(side * 0.38f, 0.36f, 0.06f), Vector3(0, 0, side * 16));
            put(head, ball(Vector3(0.08f, 0.06f, 0.08f), 6, 3), pal::RED, Vector3(side * 0.385f, 0.33f, 0.06f));
        }
    }
    if (style == String("puffs")) {
        for (const float side : {-1.0f, 1.0f}) {
            put(head, ball(Vector3(0.15f, 0.18f, 0.15f), 7, 4), hair, Vector3(side * 0.42f, 0.42f, 0.08f));
        }
    }
    if (style == String("side")) {
        // A heavy lock swept over one eye.
        put(head, loft({{-0.05f, 0.05f, 0.06f}, {0.16f, 0.17f, 0.12f}, {0.34f, 0.12f, 0.10f}}, 7), hair,
            Vector3(-0.20f, 0.40f, -0.24f), Vector3(14, 0, 58));
    }
    if (style == String("spiky")) {
        for (int i = 0; i < 7; i++) {
            const float a = float(i) * 1.05f, r = i == 6 ? 0.0f : 0.22f;
            put(head, loft({{0, 0.13f, 0.13f}, {0.30f, 0, 0}}, 5), hair,
                Vector3(r * std::cos(a), 0.56f, r * std::sin(a) + 0.02f),
                Vector3(r * 130 * std::sin(a), 0, -r * 130 * std::cos(a)));
        }
    } else if (style == String("curly")) {
        for (int i = 0; i < 8; i++) {
            const float a = float(i) * 0.898f + 0.4f, low = i < 7 ? 0.0f : 0.18f;
            const float r = i < 7 ? 0.30f : 0.0f;
            put(head, ball(Vector3(0.17f, 0.15f, 0.17f), 5, 3), pal::tone(hair, i % 2 ? 0.06f : 0.0f),
                Vector3(r * std::cos(a), 0.50f + low, r * std::sin(a) + 0.05f));
        }
    }
}

void add_hat(Node3D *head, const String &hat, const Dictionary &look) {
    const Color band = look_color(look, "shirt", "e5484d");
    if (hat == String("tophat")) {
        put(head, loft({{0.50f, 0.46f, 0.46f}, {0.56f, 0.46f, 0.46f}}, 10), pal::INK, Vector3());
        put(head, loft({{0.54f, 0.29f, 0.29f}, {1.0f, 0.33f, 0.33f}}, 10), pal::INK, Vector3());
        put(head, loft({{0.56f, 0.305f, 0.305f}, {0.66f, 0.31f, 0.31f}}, 10), pal::RED, Vector3());
    } else if (hat == String("chef")) {
        put(head, loft({{0.46f, 0.32f, 0.32f}, {0.68f, 0.33f, 0.33f}}, 9), pal::WHITE, Vector3());
        put(head, loft({{0.64f, 0.34f, 0.34f}, {0.78f, 0.46f, 0.45f}, {0.94f, 0.40f, 0.40f}, {1.0f, 0.1f, 0.1f}}, 8),
            pal::WHITE, Vector3(0, 0, 0.02f));
    } else if (hat == String("crown")) {
        put(head, loft({{0.52f, 0.30f, 0.30f}, {0.68f, 0.32f, 0.32f}}, 8), pal::YELLOW, Vector3());
        for (int i = 0; i < 5; i++) {
            const float a = float(i) * 1.2566f;
            put(head, loft({{0, 0.09f, 0.06f}, {0.2f, 0, 0}}, 4), pal::YELLOW,
                Vector3(0.29f * std::cos(a), 0.66f, 0.29f * std::sin(a)));
        }
    } else if (hat == String("helmet")) {
        put(head,
            loft({{0.36f, 0.42f, 0.44f},
                  {0.44f, 0.40f, 0.42f},
                  {0.62f, 0.33f, 0.35f},
                  {0.74f, 0.12f, 0.14f},
                  {0.75f, 0, 0}},
                 10),
            pal::YELLOW, Vector3());
    } else {
        // Straw hat: the farmer's and anyone's who works in the field.
        const bool cowboy = hat == String("cowboy");
        const uint32_t straw = cowboy ? pal::WOOD_DARK : pal::STRAW;
        put(head, loft({{0.455f, 0.50f, 0.50f}, {0.50f, 0.58f, 0.58f}, {0.54f, 0.34f, 0.34f}}, 11), straw,
            Vector3(0, -0.01f, 0.01f), Vector3(-5, 0, 2));
        put(head, loft({{0.50f, 0.35f, 0.35f}, {0.62f, 0.34f, 0.34f}, {0.78f, 0.26f, 0.27f}, {0.80f, 0.1f, 0.1f}}, 10),
            pal::tone(straw, 0.08f), Vector3(0, -0.01f, 0.01f), Vector3(-5, 0, 2));
        put(head, loft({{0.52f, 0.362f, 0.362f}, {0.61f, 0.355f, 0.355f}}, 10), cowboy ? pal::col(pal::CREAM) : band,
            Vector3(0, -0.01f, 0.01f), Vector3(-5, 0, 2));
    }
}

void add_head(Node3D *body, const Dictionary &look) {
    const Color skin = look_color(look, "skin", "f2c29b");
    const Color hair = look_color(look, "hair", "6b3b1f");
    Node3D *head = shapes::joint(body, "Head", Vector3(0, NECK, 0));
    put(head,
        loft({{0, 0.17f, 0.17f},
              {0.06f, 0.26f, 0.25f},
              {0.22f, 0.335f, 0.315f},
              {0.42f, 0.335f, 0.32f},
              {0.56f, 0.26f, 0.25f},
              {0.62f, 0.1f, 0.1f}},
             10),
        skin, Vector3());
    const String style = look.get("style", "short");
    const bool wrapped = style == String("hijab") || style == String("scarf"); // the cloth covers the ears
    for (const float side : {-1.0f, 1.0f}) {
        put(head, ball(Vector3(0.05f, 0.075f, 0.035f), 6, 3), pal::INK, Vector3(side * 0.125f, 0.31f, -0.295f));
        put(head, ball(Vector3(0.06f, 0.04f, 0.02f), 6, 2), pal::tone(skin.lerp(pal::col(pal::PINK), 0.5f), 0.0f),
            Vector3(side * 0.20f, 0.20f, -0.265f), Vector3(0, side * 28, 0));
        if (!wrapped) {
            put(head, ball(Vector3(0.06f, 0.08f, 0.06f), 6, 3), pal::tone(skin, -0.06f),
                Vector3(side * 0.335f, 0.28f, 0.02f));
        }
    }
    put(head, ball(Vector3(0.055f, 0.05f, 0.06f), 6, 3), pal::tone(skin, -0.08f), Vector3(0, 0.24f, -0.33f));
    const bool hatted = has(look, "hat") || has(look, "cap");
    add_hair(head, style, hair, hatted);
    if (has(look, "beard")) {
        put(head, loft({{-0.06f, 0.14f, 0.10f}, {0.06f, 0.28f, 0.20f}, {0.17f, 0.30f, 0.22f}}, 8), hair,
            Vector3(0, 0, -0.11f));
    }
    if (hatted) {
        const String hat = has(look, "hat") ? String(look["hat"]) : String("cap");
        if (hat == String("cap")) {
            const Color cloth = look_color(look, "cap", "e5484d");
            put(head, loft({{0.44f, 0.385f, 0.38f}, {0.56f, 0.36f, 0.36f}, {0.70f, 0.22f, 0.22f}, {0.74f, 0, 0}}, 10),
                cloth, Vector3(0, 0, 0.01f));
            put(head, bevel_box(Vector3(0.46f, 0.07f, 0.30f), 0.03f, 0.9f), pal::tone(cloth, -0.12f),
                Vector3(0, 0.46f, -0.44f), Vector3(-8, 0, 0));
        } else {
            add_hat(head, hat, look);
        }
    }
    const String extra = look.get("acc", "");
    if (extra == String("glasses")) {
        for (const float side : {-1.0f, 1.0f}) {
            put(head, loft({{-0.02f, 0.105f, 0.09f}, {0.02f, 0.105f, 0.09f}}, 7), pal::INK,
                Vector3(side * 0.13f, 0.31f, -0.34f), Vector3(90, 0, 0));
            put(head, loft({{-0.025f, 0.07f, 0.06f}, {0.025f, 0.07f, 0.06f}}, 7), pal::SKY,
                Vector3(side * 0.13f, 0.31f, -0.345f), Vector3(90, 0, 0));
        }
    } else if (extra == String("flower")) {
        put(head, ball(Vector3(0.11f, 0.11f, 0.06f), 6, 3), pal::PINK, Vector3(0.30f, 0.50f, -0.16f));
        put(head, ball(Vector3(0.05f, 0.05f, 0.05f), 5, 3), pal::YELLOW, Vector3(0.32f, 0.51f, -0.22f));
    } else if (extra == String("mask")) {
        put(head, loft({{0.24f, 0.345f, 0.325f}, {0.38f, 0.352f, 0.332f}}, 10), pal::INK, Vector3());
        for (const float side : {-1.0f, 1.0f}) {
            put(head, ball(Vector3(0.065f, 0.05f, 0.02f), 6, 3), pal::WHITE, Vector3(side * 0.13f, 0.31f, -0.335f));
            put(head, ball(Vector3(0.03f, 0.035f, 0.02f), 5, 3), pal::INK, Vector3(side * 0.12f, 0.31f, -0.355f));
        }
    } else if (extra == String("freckles")) {
        for (int i = 0; i < 6; i++) {
            const float side = i < 3 ? -1.0f : 1.0f;
            put(head, ball(Vector3(0.018f, 0.018f, 0.012f), 4, 2), pal::tone(skin, -0.35f),
                Vector3(side * (0.13f + 0.05f * float(i % 3)), 0.21f + 0.03f * float(i % 2),
                        -0.305f + 0.02f * float(i % 3)));
        }
    }
    if (bool(look.get("girl", false))) {
        for (const float side : {-1.0f, 1.0f}) {
            put(head, ball(Vector3(0.04f, 0.016f, 0.018f), 4, 2), pal::INK, Vector3(side * 0.185f, 0.345f, -0.285f),
                Vector3(0, 0, side * 24));
        }
    }
}

} // namespace

Node3D *person_tree(const Dictionary &look) {
    Node3D *root = memnew(Node3D);
    Node3D *body = shapes::joint(root, "Body", Vector3());
    const Color skin = look_color(look, "skin", "f2c29b");
    const Color shirt = look_color(look, "shirt", "ffffff");
    const Color pants = look_color(look, "pants", "3d6fb6");
    const Color shoes = look_color(look, "shoes", "4a3226");

    put(body, loft({{0.56f, 0.24f, 0.19f}, {0.68f, 0.275f, 0.215f}, {0.78f, 0.27f, 0.21f}}, 8, 0.55f), pants,
        Vector3());
    put(body,
        loft({{0.76f, 0.275f, 0.215f}, {0.95f, 0.285f, 0.215f}, {1.13f, 0.30f, 0.20f}, {1.24f, 0.17f, 0.14f}}, 8,
             0.55f),
        shirt, Vector3());
    put(body, loft({{1.17f, 0.12f, 0.12f}, {1.27f, 0.11f, 0.11f}}, 7), pal::tone(skin, -0.1f), Vector3());
    if (has(look, "overalls")) {
        const Color cloth = String(look["overalls"]).length() == 6 ? look_color(look, "overalls", "3d6fb6") : pants;
        put(body, bevel_box(Vector3(0.38f, 0.34f, 0.10f), 0.04f, 0.85f), cloth, Vector3(0, 0.92f, -0.19f));
        put(body, bevel_box(Vector3(0.17f, 0.12f, 0.05f), 0.03f), pal::tone(cloth, -0.14f), Vector3(0, 0.90f, -0.25f));
        for (const float side : {-1.0f, 1.0f}) {
            put(body, bevel_box(Vector3(0.085f, 0.06f, 0.50f), 0.02f), cloth, Vector3(side * 0.16f, 1.19f, 0.0f));
            put(body, loft({{0.84f, 0.045f, 0.026f}, {1.20f, 0.045f, 0.026f}}, 4, 1), cloth,
                Vector3(side * 0.13f, 0, 0.215f));
            put(body, ball(Vector3(0.035f, 0.035f, 0.03f), 5, 3), pal::YELLOW, Vector3(side * 0.13f, 1.06f, -0.255f));
        }
    }
    if (has(look, "apron")) {
        put(body, bevel_box(Vector3(0.44f, 0.52f, 0.07f), 0.03f, 0.8f), pal::WHITE, Vector3(0, 0.82f, -0.225f));
        put(body, loft({{0.76f, 0.288f, 0.228f}, {0.82f, 0.288f, 0.228f}}, 8, 0.55f), pal::WHITE, Vector3());
        if (has(look, "blood")) {
            put(body, ball(Vector3(0.1f, 0.07f, 0.02f), 6, 3), pal::RED_DARK, Vector3(0.06f, 0.74f, -0.26f));
        }
    }
    if (has(look, "stripes")) {
        for (const float y : {0.84f, 0.98f}) {
            put(body, loft({{y, 0.29f, 0.222f}, {y + 0.07f, 0.295f, 0.222f}}, 8, 0.55f), pal::WHITE, Vector3());
        }
    }
    add_leg(body, "LegL", -0.14f, pants, shoes);
    add_leg(body, "LegR", 0.14f, pants, shoes);
    add_arm(body, "ArmL", -0.375f, shirt, skin);
    add_arm(body, "ArmR", 0.375f, shirt, skin);
    add_head(body, look);
    return root;
}

} // namespace tilm::model_rigs
