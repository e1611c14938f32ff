// Plants of the fields and the three kinds of trees.

#include <cmath>

#include "game/art/art_materials.h"
#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm {
namespace {

using shapes::ball;
using shapes::loft;
using shapes::put;
using shapes::rnd;

void leaf(Node3D *at, const Vector3 &pos, float yaw, float reach, float rise, const Color &color, float width = 0.05f) {
    put(at, shapes::blade(width * 2, rise, reach), color, pos, Vector3(0, yaw, 0));
}

void corn_plant(Node3D *at) {
    put(at, loft({{0, 0.045f, 0.045f}, {0.95f, 0.025f, 0.025f}}, 5), pal::LEAF, Vector3());
    for (int i = 0; i < 5; i++) {
        leaf(at, Vector3(0, 0.12f + 0.15f * float(i), 0), 137.0f * float(i), 0.30f - 0.03f * float(i), 0.22f,
             pal::tone(i % 2 ? pal::GREEN : pal::LEAF, rnd(101, i, 0, 0.1f)), 0.07f);
    }
    put(at, loft({{0, 0.06f, 0.06f}, {0.12f, 0.075f, 0.075f}, {0.26f, 0, 0}}, 6), pal::YELLOW,
        Vector3(0.07f, 0.52f, 0.05f), Vector3(12, 0, -24));
    put(at, loft({{0, 0.02f, 0.02f}, {0.08f, 0.06f, 0.06f}, {0.2f, 0, 0}}, 5), pal::STRAW, Vector3(0, 0.9f, 0));
}

void wheat_plant(Node3D *at) {
    for (int i = 0; i < 3; i++) {
        const float a = float(i) * 2.1f;
        const Vector3 foot(0.09f * std::sin(a), 0, 0.09f * std::cos(a));
        const float tall = rnd(102, i, 0.48f, 0.62f);
        const Vector3 lean(rnd(103, i, -9, 9), 0, rnd(104, i, -9, 9));
        put(at, shapes::blade(0.05f, tall * 1.2f, 0.02f), pal::STRAW_DARK, foot, lean);
        put(at, loft({{tall - 0.04f, 0.03f, 0.03f}, {tall + 0.08f, 0.06f, 0.05f}, {tall + 0.26f, 0, 0}}, 4),
            i % 2 ? pal::STRAW : pal::YELLOW, foot, lean);
    }
}

void sunflower_plant(Node3D *at) {
    put(at, loft({{0, 0.04f, 0.04f}, {0.85f, 0.03f, 0.03f}}, 5), pal::LEAF, Vector3());
    leaf(at, Vector3(0, 0.25f, 0), 30, 0.26f, 0.12f, pal::col(pal::GREEN), 0.10f);
    leaf(at, Vector3(0, 0.42f, 0), 200, 0.24f, 0.12f, pal::col(pal::LEAF), 0.10f);
    Node3D *face = shapes::joint(at, "Face", Vector3(0, 0.88f, 0.03f));
    face->set_rotation_degrees(Vector3(24, 0, 0));
    put(face, loft({{0, 0.24f, 0.24f}, {0.045f, 0.22f, 0.22f}}, 9), pal::YELLOW, Vector3());
    put(face, loft({{0.02f, 0.13f, 0.13f}, {0.09f, 0.10f, 0.10f}}, 7), pal::BROWN, Vector3());
}

void tomato_plant(Node3D *at) {
    put(at, loft({{0, 0.03f, 0.03f}, {0.72f, 0.025f, 0.025f}}, 4), pal::WOOD, Vector3(0.05f, 0, 0));
    put(at, ball(Vector3(0.17f, 0.16f, 0.17f), 6, 3), pal::LEAF, Vector3(0, 0.20f, 0));
    put(at, ball(Vector3(0.15f, 0.16f, 0.15f), 6, 3), pal::LEAF_DARK, Vector3(0.02f, 0.42f, 0));
    const Vector3 fruit[] = {
        {0.12f, 0.18f, 0.10f}, {-0.13f, 0.28f, 0.07f}, {0.05f, 0.40f, 0.14f}, {-0.04f, 0.16f, -0.15f}};
    for (const Vector3 &p : fruit) {
        put(at, ball(Vector3(0.075f, 0.07f, 0.075f), 6, 3), pal::RED, p);
    }
}

void lettuce_plant(Node3D *at) {
    for (int i = 0; i < 6; i++) {
        leaf(at, Vector3(0, 0, 0), 60.0f * float(i), 0.17f, 0.17f, pal::col(i % 2 ? pal::GREEN : pal::LEAF_LIGHT),
             0.10f);
    }
    put(at, ball(Vector3(0.11f, 0.11f, 0.11f), 6, 3), pal::LEAF_LIGHT, Vector3(0, 0.10f, 0));
}

void potato_plant(Node3D *at) {
    put(at, ball(Vector3(0.20f, 0.09f, 0.20f), 7, 3), pal::SOIL_DARK, Vector3(0, 0.02f, 0));
    for (int i = 0; i < 5; i++) {
        leaf(at, Vector3(0, 0.06f, 0), 72.0f * float(i) + 10, 0.16f, 0.22f,
             pal::col(i % 2 ? pal::LEAF : pal::LEAF_DARK), 0.07f);
    }
    put(at, ball(Vector3(0.045f, 0.035f, 0.045f), 5, 3), pal::WHITE, Vector3(0, 0.27f, 0));
    put(at, ball(Vector3(0.07f, 0.055f, 0.06f), 6, 3), 0xd3a866, Vector3(0.13f, 0.07f, 0.10f));
}

void hay_plant(Node3D *at) {
    for (int i = 0; i < 7; i++) {
        leaf(at, Vector3(0.05f * std::sin(float(i) * 2.0f), 0, 0.05f * std::cos(float(i) * 2.0f)), 51.0f * float(i),
             rnd(105, i, 0.08f, 0.2f), rnd(106, i, 0.34f, 0.52f), pal::tone(pal::GRASS, rnd(107, i, -0.12f, 0.2f)),
             0.05f);
    }
}

Node3D *crop_tree(const String &crop) {
    struct Row {
        const char *crop;
        void (*build)(Node3D *);
    };
    static const Row rows[] = {{"corn", corn_plant},           {"hay", hay_plant},       {"wheat", wheat_plant},
                               {"sunflower", sunflower_plant}, {"tomato", tomato_plant}, {"lettuce", lettuce_plant},
                               {"potato", potato_plant}};
    Node3D *root = memnew(Node3D);
    for (const Row &row : rows) {
        if (crop == String(row.crop)) {
            row.build(root);
            return root;
        }
    }
    hay_plant(root);
    return root;
}

Node3D *round_tree() {
    Node3D *at = memnew(Node3D);
    put(at, loft({{0, 0.27f, 0.25f}, {0.35f, 0.16f, 0.16f}, {1.3f, 0.12f, 0.12f}}, 7), pal::WOOD_DARK, Vector3());
    put(at, ball(Vector3(0.98f, 0.80f, 0.95f), 9, 5), pal::LEAF, Vector3(0, 1.85f, 0));
    put(at, ball(Vector3(0.66f, 0.58f, 0.66f), 8, 5), pal::tone(pal::LEAF, 0.13f), Vector3(-0.22f, 2.40f, 0.1f),
        Vector3(0, 30, 0));
    put(at, ball(Vector3(0.60f, 0.50f, 0.60f), 8, 4), pal::tone(pal::LEAF, -0.10f), Vector3(0.62f, 1.58f, 0.28f),
        Vector3(0, 50, 0));
    put(at, ball(Vector3(0.50f, 0.42f, 0.50f), 8, 4), pal::tone(pal::LEAF, -0.05f), Vector3(-0.66f, 1.60f, 0.36f));
    return at;
}

Node3D *pine_tree() {
    Node3D *at = memnew(Node3D);
    put(at, loft({{0, 0.2f, 0.2f}, {0.7f, 0.14f, 0.14f}}, 6), pal::WOOD_DARK, Vector3());
    const float radius[] = {0.98f, 0.78f, 0.54f};
    for (int i = 0; i < 3; i++) {
        const float y = 0.55f + 0.72f * float(i);
        put(at,
            loft({{y, radius[i] * 0.8f, radius[i] * 0.8f},
                  {y + 0.16f, radius[i], radius[i]},
                  {y + 1.12f, 0.0f, 0.0f, 0.04f}},
                 8),
            pal::tone(0x2f7d4f, -0.06f + 0.10f * float(i)), Vector3(), Vector3(0, float(i) * 23, 0));
    }
    return at;
}

Node3D *birch_tree() {
    Node3D *at = memnew(Node3D);
    put(at, loft({{0, 0.17f, 0.17f}, {0.5f, 0.12f, 0.12f, 0.03f}, {1.8f, 0.09f, 0.09f, -0.04f}}, 7), 0xf0ece2,
        Vector3());
    for (int i = 0; i < 4; i++) {
        put(at, ball(Vector3(0.08f, 0.045f, 0.06f), 5, 3), pal::INK,
            Vector3(0.07f * (i % 2 ? 1.0f : -1.0f), 0.35f + 0.3f * float(i), 0.10f));
    }
    put(at,
        loft({{1.05f, 0.28f, 0.28f},
              {1.5f, 0.66f, 0.62f},
              {2.2f, 0.60f, 0.58f, 0.05f},
              {2.85f, 0.30f, 0.30f},
              {3.1f, 0, 0}},
             8),
        pal::LEAF_LIGHT, Vector3());
    put(at, ball(Vector3(0.42f, 0.36f, 0.40f), 7, 4), pal::tone(pal::LEAF_LIGHT, -0.12f), Vector3(0.40f, 1.55f, 0.25f));
    put(at, ball(Vector3(0.36f, 0.34f, 0.36f), 7, 4), pal::tone(pal::LEAF_LIGHT, 0.12f), Vector3(-0.3f, 2.45f, 0.15f));
    return at;
}

} // namespace

Ref<Mesh> Models::crop_mesh(const String &crop) {
    const Ref<ArrayMesh> mesh = baked_mesh(String("crop_") + crop, builder([crop]() { return crop_tree(crop); }));
    if (mesh->get_surface_count() > 0 && mesh->surface_get_material(0).is_null()) {
        Ref<ShaderMaterial> material;
        material.instantiate();
        material->set_shader(shader_material(art_shader::TUFT)->get_shader());
        material->set_shader_parameter("solid", 0.75);
        material->set_shader_parameter("sway", 0.05);
        mesh->surface_set_material(0, material);
    }
    return mesh;
}

MeshInstance3D *Models::any_tree(float v) {
    MeshInstance3D *tree = v < 0.6f    ? bake("tree", fn_node(&round_tree))
                           : v < 0.82f ? bake("tree_pine", fn_node(&pine_tree))
                                       : bake("tree_birch", fn_node(&birch_tree));
    tree->set_material_override(tree_material());
    return tree;
}

} // namespace tilm
