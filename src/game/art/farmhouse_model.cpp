#include "game/art/farmhouse_model.h"

#include <algorithm>

#include "game/art/house_parts.h"
#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm {
namespace {

using namespace house_parts;
using pal::col;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;

Node3D *tree_of(int stage) {
    Node3D *at = memnew(Node3D);
    const Color wall = col(stage > 1 ? pal::PLASTER : 0xf6d9a0), trim = col(pal::WHITE);
    const Color tiles = col(stage > 2 ? 0x3f6ea8 : 0xc9553f);
    const Vector3 home(-0.6f, 0, -0.5f);
    walls(at, home, Vector3(4.4f, 1.9f, 3.0f), 1.35f, wall, trim);
    roof(at, home + Vector3(0, 1.9f, 0), 2.25f, 1.42f, 3.2f, tiles);
    // The first stage adds a wing whose roof turns its slope to the front, the second a tower on it.
    const Vector3 wing = home + Vector3(3.05f, 0, 0.45f);
    if (stage > 1) {
        put(at, bevel_box(Vector3(1.5f, 3.0f, 1.5f), 0.05f, 0.97f), wall, wing + Vector3(0.1f, 2.45f, -0.2f));
        put(at, loft({{0, 1.25f, 1.25f}, {0.25f, 1.1f, 1.1f}, {1.3f, 0, 0}}, 8, 0.8f), tiles,
            wing + Vector3(0.1f, 3.9f, -0.2f));
        window(at, wing + Vector3(0.1f, 3.3f, 0.56f), 0.6f, 0.6f, trim);
    }
    if (stage > 2) {
        put(at, loft({{0, 0.06f, 0.06f}, {0.8f, 0.05f, 0.05f}}, 6), pal::STONE_DARK,
            wing + Vector3(0.1f, 5.05f, -0.2f));
        put(at, bevel_box(Vector3(0.7f, 0.4f, 0.08f), 0.02f), pal::YELLOW, wing + Vector3(0.45f, 5.6f, -0.2f));
    }
    if (stage > 0) {
        put(at, bevel_box(Vector3(2.0f, 1.5f, 2.1f), 0.05f), pal::tone(wall, -0.04f), wing + Vector3(0, 0.8f, 0));
        put(at, bevel_box(Vector3(2.3f, 0.16f, 1.6f), 0.05f), tiles, wing + Vector3(0, 1.86f, 0.55f),
            Vector3(32, 0, 0));
        put(at, bevel_box(Vector3(2.3f, 0.16f, 1.6f), 0.05f), pal::tone(tiles, -0.08f),
            wing + Vector3(0, 1.86f, -0.65f), Vector3(-32, 0, 0));
        window(at, wing + Vector3(0, 0.95f, 1.07f), 0.65f, 0.55f, trim);
    }
    // Porch.
    const float front = 1.02f;
    put(at, bevel_box(Vector3(3.0f, 0.2f, 1.2f), 0.05f), pal::WOOD, home + Vector3(-0.2f, 0.12f, front + 1.05f));
    for (const float x : {-1.55f, 1.15f}) {
        put(at, bevel_box(Vector3(0.16f, 1.5f, 0.16f), 0.04f), trim, home + Vector3(x, 0.9f, front + 1.5f));
    }
    put(at, bevel_box(Vector3(3.3f, 0.14f, 1.35f), 0.05f), pal::tone(tiles, 0.06f),
        home + Vector3(-0.2f, 1.72f, front + 1.0f), Vector3(14, 0, 0));
    put(at, bevel_box(Vector3(0.95f, 1.42f, 0.12f), 0.04f), trim, home + Vector3(-0.2f, 0.9f, front + 0.5f));
    put(at, bevel_box(Vector3(0.72f, 1.26f, 0.14f), 0.03f), pal::TEAL, home + Vector3(-0.2f, 0.85f, front + 0.52f));
    put(at, shapes::ball(Vector3(0.06f, 0.06f, 0.06f), 6, 3), pal::YELLOW, home + Vector3(0.03f, 0.85f, front + 0.62f));
    window(at, home + Vector3(-1.45f, 1.15f, front + 0.49f), 0.6f, 0.6f, trim);
    window(at, home + Vector3(1.2f, 1.15f, front + 0.49f), 0.6f, 0.6f, trim);
    window(at, home + Vector3(0, 2.35f, front + 0.45f), 0.55f, 0.5f, trim);
    lantern(at, home + Vector3(0.55f, 1.15f, front + 0.6f), 0.8f);
    for (int step = 0; step < 2; step++) {
        put(at, bevel_box(Vector3(1.1f, 0.12f, 0.4f), 0.03f), pal::STONE,
            home + Vector3(-0.2f, 0.06f, front + 1.75f + 0.3f * float(step)));
    }
    // Chimney, rain barrel, beds of flowers.
    put(at, bevel_box(Vector3(0.55f, 1.6f, 0.55f), 0.05f), 0xb5654a, home + Vector3(1.25f, 2.9f, -0.6f));
    put(at, bevel_box(Vector3(0.7f, 0.18f, 0.7f), 0.05f), pal::STONE, home + Vector3(1.25f, 3.7f, -0.6f));
    barrel(at, Vector3(stage > 0 ? 3.2f : 1.75f, 0, stage > 0 ? 1.55f : 1.3f), 1.2f);
    flowers(at, Vector3(-2.6f, 0, 1.5f), 0.6f, 8, 5);
    flowers(at, Vector3(1.0f, 0, 1.7f), 0.5f, 6, 8);
    bush(at, Vector3(-3.2f, 0, 0.6f), 0.6f, col(pal::LEAF), 3);
    bush(at, Vector3(stage > 0 ? 1.55f : 1.3f, 0, stage > 0 ? 1.35f : 1.9f), stage > 0 ? 0.45f : 0.35f,
         col(pal::LEAF_DARK), 5);
    if (stage > 0) {
        fence_run(at, Vector3(-3.6f, 0, 2.6f), Vector3(-1.4f, 0, 2.6f), trim, 0.5f);
        fence_run(at, Vector3(0.2f, 0, 2.6f), Vector3(3.6f, 0, 2.6f), trim, 0.5f);
    }
    return at;
}

} // namespace

Node3D *FarmhouseModel::build(int stage) {
    const int s = std::clamp(stage, 0, 3);
    return Models::bake(String("house_farmer_") + String::num_int64(s), Models::builder([s]() { return tree_of(s); }));
}

} // namespace tilm
