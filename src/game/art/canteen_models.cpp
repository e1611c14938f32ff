#include "game/art/canteen_models.h"

#include <algorithm>

#include "game/art/house_parts.h"
#include "game/art/models.h"
#include "game/art/pieces.h"

namespace tilm {
namespace {

using namespace house_parts;
using pal::col;
using pieces::Form;
using pieces::Piece;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;

// clang-format off
constexpr Piece TABLE[] = {
    {Form::box, pal::WOOD_LIGHT, {2.5f, 0.10f, 0.62f}, {0, 0.62f, 0}, {}},
    {Form::post, pal::WOOD_DARK, {0.16f, 0.64f, 0.44f}, {-0.9f, 0, 0}, {}, 0.8f},
    {Form::post, pal::WOOD_DARK, {0.16f, 0.64f, 0.44f}, {0.9f, 0, 0}, {}, 0.8f},
    {Form::box, pal::WOOD, {2.5f, 0.10f, 0.26f}, {0, 0.26f, 0.50f}, {}},
    {Form::box, pal::WOOD, {2.5f, 0.10f, 0.26f}, {0, 0.26f, -0.50f}, {}},
    {Form::box, pal::WOOD_DARK, {0.14f, 0.28f, 1.10f}, {-1.0f, 0, 0}, {}},
    {Form::box, pal::WOOD_DARK, {0.14f, 0.28f, 1.10f}, {1.0f, 0, 0}, {}},
    {Form::rod, pal::RED, {0.11f, 0.16f, 0.11f}, {0.15f, 0.72f, 0.05f}, {}, 0.6f},
    {Form::rod, pal::WHITE, {0.09f, 0.12f, 0.09f}, {0.02f, 0.72f, -0.05f}, {}, 0.7f},
};
constexpr Piece MEAL[] = {
    {Form::box, pal::TEAL, {0.40f, 0.04f, 0.30f}, {}, {}, 1.06f},
    {Form::rod, pal::WHITE, {0.12f, 0.07f, 0.12f}, {-0.08f, 0.035f, -0.02f}, {}, 1.6f},
    {Form::ball, pal::ORANGE, {0.16f, 0.05f, 0.16f}, {-0.08f, 0.105f, -0.02f}, {}},
    {Form::box, 0xd98c45, {0.12f, 0.07f, 0.09f}, {0.11f, 0.04f, -0.07f}, {0, 25, 0}, 0.8f},
    {Form::rod, pal::SKY, {0.07f, 0.10f, 0.07f}, {0.12f, 0.04f, 0.07f}, {}, 1.2f},
};
constexpr Piece KITCHEN[] = {
    {Form::box, pal::STONE, {5.4f, 0.16f, 5.0f}, {0, -0.08f, 0.25f}, {}},
    {Form::box, pal::WOOD_LIGHT, {2.9f, 0.12f, 0.55f}, {0, 0.98f, -1.02f}, {}},
    {Form::box, pal::WOOD, {2.7f, 0.95f, 0.38f}, {0, 0.05f, -1.05f}, {}},
    {Form::rod, pal::METAL, {0.42f, 0.34f, 0.42f}, {-0.75f, 1.08f, -1.02f}, {}, 1.1f},
    {Form::ball, pal::ORANGE, {0.40f, 0.12f, 0.40f}, {-0.75f, 1.42f, -1.02f}, {}},
    {Form::rod, pal::STONE_DARK, {0.34f, 0.26f, 0.34f}, {0.05f, 1.08f, -1.02f}, {}, 1.15f},
    {Form::box, 0xd98c45, {0.34f, 0.20f, 0.24f}, {0.75f, 1.08f, -1.0f}, {0, 20, 0}, 0.8f},
    {Form::box, 0xe3a352, {0.34f, 0.20f, 0.24f}, {1.05f, 1.08f, -1.05f}, {0, -15, 0}, 0.8f},
    {Form::post, 0xb5654a, {0.52f, 2.1f, 0.52f}, {1.75f, 1.9f, -2.1f}, {}, 0.9f},
    {Form::box, pal::STONE, {0.66f, 0.18f, 0.66f}, {1.75f, 3.95f, -2.1f}, {}},
};
// clang-format on

Node3D *hall_tree(int level) {
    Node3D *at = pieces::tree_of(KITCHEN);
    const Color wall = col(0xf4d9a8), trim = col(0x1d4f59), roofing = col(0x2f8f8a);
    // The kitchen's hall behind the counter, open to the tables.
    const Vector3 home(0, 0, -2.1f);
    put(at, bevel_box(Vector3(4.6f, 2.0f, 0.24f), 0.05f), wall, home + Vector3(0, 1.0f, -0.75f));
    for (const float side : {-1.0f, 1.0f}) {
        put(at, bevel_box(Vector3(0.24f, 2.0f, 1.7f), 0.05f), wall, home + Vector3(side * 2.2f, 1.0f, 0));
        put(at, bevel_box(Vector3(0.22f, 2.05f, 0.22f), 0.05f), trim, home + Vector3(side * 2.2f, 1.0f, 0.85f));
    }
    put(at, bevel_box(Vector3(4.7f, 0.3f, 0.2f), 0.05f), trim, home + Vector3(0, 2.05f, 0.85f));
    put(at, shapes::gable(4.4f, 0.95f, 1.7f), wall, home + Vector3(0, 2.0f, 0));
    roof(at, home + Vector3(0, 2.0f, 0), 2.35f, 1.15f, 1.9f, roofing);
    // A bowl with a spoon on the gable.
    put(at, loft({{0, 0.16f, 0.10f}, {0.12f, 0.36f, 0.14f}, {0.26f, 0.42f, 0.15f}}, 9), pal::WHITE,
        home + Vector3(0, 2.3f, 0.92f));
    put(at, bevel_box(Vector3(0.09f, 0.6f, 0.07f), 0.02f), pal::YELLOW, home + Vector3(0.28f, 2.72f, 0.95f),
        Vector3(0, 0, -28));
    const int tables = std::min(4, level + 1);
    for (int i = 0; i < tables; i++) {
        // On y 0: the trays of the meals stand at 0.72.
        Node3D *table = shapes::joint(at, "Table", Vector3(i % 2 ? 1.75f : -1.75f, 0, i < 2 ? -0.1f : 1.55f));
        pieces::put_all(table, TABLE);
    }
    // Each level changes the outline: a pantry, greenery, an oven and sunshades, a string of lanterns, a cupola like
    // the cover of a dish.
    if (level >= 2) {
        put(at, bevel_box(Vector3(1.2f, 2.3f, 1.6f), 0.05f), pal::WHITE, home + Vector3(-2.9f, 1.15f, 0.1f));
        put(at, bevel_box(Vector3(1.75f, 0.18f, 2.0f), 0.05f), roofing, home + Vector3(-2.95f, 2.4f, 0.1f),
            Vector3(0, 0, 24));
        put(at, bevel_box(Vector3(0.6f, 1.3f, 0.1f), 0.03f), trim, home + Vector3(-2.9f, 0.7f, 0.9f));
    }
    if (level >= 4) {
        const Vector3 oven = home + Vector3(3.05f, 0, 0.6f);
        put(at, bevel_box(Vector3(1.3f, 0.7f, 1.3f), 0.05f), pal::STONE_DARK, oven + Vector3(0, 0.35f, 0));
        put(at, loft({{0, 0.66f, 0.66f}, {0.4f, 0.58f, 0.58f}, {0.75f, 0.2f, 0.2f}, {0.8f, 0, 0}}, 9), 0xb5654a,
            oven + Vector3(0, 0.68f, 0));
        put(at, bevel_box(Vector3(0.5f, 0.36f, 0.2f), 0.05f), pal::INK, oven + Vector3(0, 0.92f, 0.58f));
        put(at, loft({{0, 0.2f, 0.2f}, {1.8f, 0.16f, 0.16f}, {1.8f, 0.28f, 0.28f}, {2.0f, 0.2f, 0.2f}}, 7), pal::INK,
            oven + Vector3(0.1f, 1.2f, -0.3f));
    }
    if (level >= 3) {
        for (const float x : {-3.05f, 3.05f}) {
            bush(at, Vector3(x, 0, 1.9f), 0.45f, col(pal::LEAF), 5);
            flowers(at, Vector3(x, 0, 0.8f), 0.3f, 4, 3);
        }
    }
    for (int i = 0; i < std::min(4, std::max(0, level - 3) * 2); i++) {
        const Vector3 foot(i % 2 ? 1.75f : -1.75f, 0, i < 2 ? 0.75f : 2.4f);
        put(at, loft({{0, 0.06f, 0.06f}, {2.1f, 0.05f, 0.05f}}, 6), pal::WOOD_DARK, foot);
        put(at, loft({{1.75f, 1.15f, 1.15f}, {1.95f, 0.8f, 0.8f}, {2.1f, 0.5f, 0.5f}}, 8), pal::WHITE, foot);
        put(at, loft({{2.09f, 0.55f, 0.55f}, {2.35f, 0, 0}}, 8), i % 2 ? pal::RED : pal::BLUE, foot);
    }
    if (level >= 5) {
        for (const float x : {-2.75f, 2.75f}) {
            put(at, loft({{0, 0.12f, 0.12f}, {4.0f, 0.09f, 0.09f}}, 6), trim, Vector3(x, 0, 2.65f));
        }
        put(at, bevel_box(Vector3(5.5f, 0.09f, 0.09f), 0.01f), trim, Vector3(0, 3.85f, 2.65f));
        for (int i = 0; i < 6; i++) {
            put(at, loft({{0, 0.18f, 0.18f}, {0.3f, 0.36f, 0.36f}, {0.6f, 0.14f, 0.14f}}, 7),
                i % 2 ? pal::CREAM : pal::YELLOW, Vector3(-2.25f + 0.9f * float(i), 3.22f, 2.65f));
        }
    }
    if (level >= CanteenModels::top_level) {
        const Vector3 ridge = home + Vector3(-0.5f, 2.85f, 0);
        put(at, bevel_box(Vector3(1.1f, 0.9f, 1.1f), 0.05f), pal::WHITE, ridge + Vector3(0, 0.45f, 0));
        put(at, bevel_box(Vector3(0.5f, 0.5f, 1.14f), 0.03f), trim, ridge + Vector3(0, 0.45f, 0));
        put(at, bevel_box(Vector3(1.14f, 0.5f, 0.5f), 0.03f), trim, ridge + Vector3(0, 0.45f, 0));
        put(at,
            loft({{0, 0.85f, 0.85f}, {0.12f, 0.82f, 0.82f}, {0.5f, 0.6f, 0.6f}, {0.75f, 0.2f, 0.2f}, {0.8f, 0, 0}}, 10),
            pal::YELLOW, ridge + Vector3(0, 0.9f, 0));
        put(at, shapes::ball(Vector3(0.16f, 0.16f, 0.16f), 8, 4), pal::YELLOW, ridge + Vector3(0, 1.82f, 0));
    }
    return at;
}

} // namespace

Node3D *CanteenModels::hall(int level) {
    const int l = std::clamp(level, 1, top_level);
    return Models::bake(String("canteen_") + String::num_int64(l), Models::builder([l] { return hall_tree(l); }));
}

Node3D *CanteenModels::meal() {
    return Models::bake("canteen_meal", Models::builder([] { return pieces::tree_of(MEAL); }), false);
}

Dictionary CanteenModels::cook_look() {
    Dictionary look;
    look["skin"] = "e0ac69";
    look["shirt"] = "ffffff";
    look["pants"] = "455a64";
    look["hair"] = "3e2723";
    look["hat"] = "chef";
    look["apron"] = true;
    return look;
}

} // namespace tilm
