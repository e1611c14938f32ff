// Prepared dishes, the list of all kinds, and the cached meshes of goods.

#include <cmath>

#include <godot_cpp/core/error_macros.hpp>

#include "game/art/item_models.h"
#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm {
namespace item_models {
namespace {

using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;

void grilled_fish(Node3D *at) {
    plate(at, 0.27f);
    put(at, loft({{-0.2f, 0.03f, 0.03f}, {-0.08f, 0.09f, 0.07f}, {0.08f, 0.11f, 0.08f}, {0.19f, 0.05f, 0.05f}}, 8),
        0xc9803a, Vector3(0, 0.11f, 0), Vector3(-90, 62, 0));
    put(at, bevel_box(Vector3(0.06f, 0.05f, 0.18f), 0.02f), 0xa05f28, Vector3(-0.2f, 0.11f, 0.1f), Vector3(0, -28, 0));
    put(at, ball(Vector3(0.07f, 0.04f, 0.07f), 7, 3), pal::YELLOW, Vector3(0.12f, 0.1f, 0.13f));
    put(at, ball(Vector3(0.08f, 0.05f, 0.06f), 6, 3), pal::GREEN, Vector3(-0.05f, 0.09f, 0.17f));
}

void grilled_chicken(Node3D *at) {
    plate(at, 0.27f);
    put(at, loft({{-0.16f, 0.08f, 0.07f}, {-0.05f, 0.15f, 0.12f}, {0.1f, 0.13f, 0.11f}, {0.17f, 0.06f, 0.06f}}, 8),
        0xcf7a33, Vector3(0, 0.16f, 0), Vector3(-90, 0, 0));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, loft({{0, 0.075f, 0.075f}, {0.13f, 0.04f, 0.04f}}, 7), 0xb9652a, Vector3(side * 0.11f, 0.17f, 0.05f),
            Vector3(50, 0, side * -30));
        put(at, ball(Vector3(0.04f, 0.04f, 0.04f), 6, 3), pal::WHITE, Vector3(side * 0.17f, 0.27f, 0.17f));
    }
    put(at, ball(Vector3(0.08f, 0.05f, 0.05f), 5, 2), pal::GREEN, Vector3(0, 0.08f, 0.2f));
}

void steak(Node3D *at) {
    plate(at, 0.27f);
    put(at, loft({{0.05f, 0.15f, 0.12f}, {0.13f, 0.17f, 0.13f}, {0.155f, 0.13f, 0.10f}}, 8), 0x7a3b22,
        Vector3(-0.03f, 0, -0.02f), Vector3(0, 20, 0));
    for (int i = 0; i < 2; i++) {
        put(at, bevel_box(Vector3(0.24f, 0.04f, 0.05f), 0.015f), pal::CHOCOLATE,
            Vector3(-0.03f, 0.15f, -0.06f + 0.1f * float(i)), Vector3(0, 35, 0));
    }
    put(at, ball(Vector3(0.06f, 0.05f, 0.06f), 6, 3), pal::RED, Vector3(0.17f, 0.09f, 0.08f));
    put(at, ball(Vector3(0.08f, 0.05f, 0.06f), 5, 2), pal::GREEN, Vector3(0.05f, 0.09f, 0.18f));
}

void burger(Node3D *at) {
    put(at, loft({{0, 0.18f, 0.18f}, {0.08f, 0.2f, 0.2f}}, 9), 0xdb964b, Vector3());
    put(at, loft({{0.08f, 0.23f, 0.23f}, {0.12f, 0.215f, 0.215f}}, 9), pal::GREEN, Vector3(), Vector3(0, 20, 0));
    put(at, loft({{0.12f, 0.2f, 0.2f}, {0.19f, 0.2f, 0.2f}}, 9), pal::BROWN, Vector3());
    put(at, loft({{0.185f, 0.26f, 0.26f}, {0.225f, 0.26f, 0.26f}}, 4), pal::YELLOW, Vector3());
    put(at, loft({{0.22f, 0.21f, 0.21f}, {0.29f, 0.19f, 0.19f}, {0.36f, 0.10f, 0.10f}, {0.375f, 0, 0}}, 9), 0xe3a352,
        Vector3());
    for (int i = 0; i < 5; i++) {
        put(at, ball(Vector3(0.035f, 0.03f, 0.035f), 4, 2), pal::CREAM,
            Vector3(0.1f * std::sin(float(i) * 1.257f), 0.345f, 0.1f * std::cos(float(i) * 1.257f)));
    }
}

void breakfast(Node3D *at) {
    plate(at, 0.28f);
    put(at, ball(Vector3(0.14f, 0.035f, 0.12f), 8, 3), pal::WHITE, Vector3(-0.07f, 0.08f, 0.04f));
    put(at, ball(Vector3(0.065f, 0.05f, 0.065f), 7, 3), pal::YELLOW, Vector3(-0.07f, 0.11f, 0.04f));
    put(at, bevel_box(Vector3(0.17f, 0.06f, 0.17f), 0.02f), 0xd98c45, Vector3(0.1f, 0.1f, -0.09f), Vector3(12, 25, 0));
    put(at, loft({{0.05f, 0.055f, 0.055f}, {0.2f, 0.065f, 0.065f}}, 7), pal::ORANGE, Vector3(0.15f, 0, 0.12f));
}

// What stands for a kind that has no shape: a plain crate, so that a new good is seen and can be handled.
void crate(Node3D *at) {
    put(at, bevel_box(Vector3(0.40f, 0.28f, 0.40f), 0.03f), pal::WOOD_LIGHT, Vector3(0, 0.14f, 0));
    put(at, bevel_box(Vector3(0.42f, 0.07f, 0.42f), 0.02f), pal::WOOD, Vector3(0, 0.22f, 0));
}

Node3D *build_any(const String &kind, bool is_money) {
    Node3D *tree = is_money ? money(kind) : farm_good(kind);
    for (const auto family : {made_good, dish, money}) {
        if (tree == nullptr) {
            tree = family(kind);
        }
    }
    if (tree == nullptr) {
        WARN_PRINT(String("TILMARCH no shape for the good ") + kind);
        tree = memnew(Node3D);
        crate(tree);
    }
    return tree;
}

} // namespace

Node3D *dish(const String &kind) {
    struct Row {
        const char *kind;
        void (*build)(Node3D *);
    };
    static const Row rows[] = {{"grilled_fish", grilled_fish},
                               {"grilled_chicken", grilled_chicken},
                               {"steak", steak},
                               {"burger", burger},
                               {"breakfast", breakfast}};
    for (const Row &row : rows) {
        if (kind == String(row.kind)) {
            Node3D *root = memnew(Node3D);
            row.build(root);
            return root;
        }
    }
    return nullptr;
}

PackedStringArray kinds() {
    PackedStringArray all;
    for (const char *kind : {"egg",    "milk",        "wheat",        "flour",        "sunflower",       "oil",
                             "bread",  "mayo",        "cookies",      "donut",        "icecream",        "cake",
                             "fish",   "calf",        "hen",          "meat",         "drumstick",       "cheese",
                             "tomato", "lettuce",     "potato",       "grilled_fish", "grilled_chicken", "steak",
                             "burger", "corn",        "hay",          "honey",        "apple",           "orange",
                             "juice",  "apple_juice", "orange_juice", "wool",         "blanket",         "breakfast",
                             "bean",   "coffee",      "medicine",     "water",        "berry",           "cocoa",
                             "choco",  "bill",        "gold",         "case"}) {
        all.push_back(kind);
    }
    return all;
}

} // namespace item_models

Ref<ArrayMesh> Models::item_mesh(const String &mesh_key) {
    const bool is_money = mesh_key.begins_with("money_");
    const String kind = mesh_key.substr(is_money ? 6 : 5);
    return baked_mesh(mesh_key, builder([kind, is_money]() -> Node3D * {
                          set_low_detail(true);
                          Node3D *tree = item_models::build_any(kind, is_money);
                          set_low_detail(false);
                          return tree;
                      }));
}

MeshInstance3D *Models::item_model(const String &kind) {
    const bool is_money = kind == String("bill") || kind == String("gold") || kind == String("case");
    MeshInstance3D *node = memnew(MeshInstance3D);
    node->set_mesh(item_mesh((is_money ? String("money_") : String("item_")) + kind));
    node->set_material_override(farm_material());
    return node;
}

} // namespace tilm
