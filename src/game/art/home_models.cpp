#include "game/art/home_models.h"

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
using shapes::put;

constexpr float PITCH = 1.62f; // from house to house
constexpr uint32_t WALLS[] = {0xf6d28b, 0x9cc9e0, 0xf2a48e, 0xb9d68a, 0xd9b4e0};
constexpr uint32_t ROOFS[] = {pal::RED_DARK, 0x3f5f8a, 0x6a4a33, 0x2f7d6a, 0x6b4b8f};

float unit_x(int unit, int units) {
    return (float(unit) - float(units - 1) / 2) * PITCH;
}

// One narrow house; its walls grow a little from house to house, so that the row's skyline is uneven.
void unit_house(Node3D *at, int unit, int units, int level) {
    // Beyond the fourth level one house after the other gets a second storey.
    const bool better = level >= 5, storey = unit < level - 4;
    const float tall = 1.45f + 0.22f * float((unit * 2) % 3) + (storey ? 0.85f : 0.0f);
    const Vector3 home(unit_x(unit, units), 0, -0.6f);
    const Color wall = col(WALLS[unit % 5]);
    put(at, bevel_box(Vector3(1.5f, tall, 1.7f), 0.04f, 0.98f), wall, home + Vector3(0, tall / 2, 0));
    put(at, shapes::gable(1.46f, 0.85f, 1.64f), wall, home + Vector3(0, tall - 0.02f, 0));
    put(at, bevel_box(Vector3(1.6f, 0.22f, 1.8f), 0.05f), pal::STONE_DARK, home + Vector3(0, 0.1f, 0));
    roof(at, home + Vector3(0, tall, 0), 0.76f, 0.9f, 1.7f, col(ROOFS[unit % 5]));
    put(at, bevel_box(Vector3(0.56f, 1.0f, 0.12f), 0.03f), pal::CREAM, home + Vector3(-0.34f, 0.6f, 0.86f));
    put(at, bevel_box(Vector3(0.42f, 0.9f, 0.14f), 0.03f), pal::tone(ROOFS[unit % 5], -0.1f),
        home + Vector3(-0.34f, 0.55f, 0.88f));
    put(at, bevel_box(Vector3(0.56f, 0.52f, 0.12f), 0.03f), pal::CREAM, home + Vector3(0.34f, 0.95f, 0.86f));
    put(at, bevel_box(Vector3(0.42f, 0.38f, 0.14f), 0.02f), 0x4a6c88, home + Vector3(0.34f, 0.95f, 0.88f));
    put(at, bevel_box(Vector3(0.66f, 0.12f, 0.3f), 0.03f), pal::STONE, home + Vector3(-0.34f, 0.06f, 1.1f));
    if (unit % 2 == 0) {
        put(at, bevel_box(Vector3(0.28f, 0.85f, 0.28f), 0.04f), 0xb5654a, home + Vector3(0.45f, tall + 0.65f, -0.45f));
    } else {
        flowers(at, home + Vector3(0.36f, 0.02f, 1.15f), 0.2f, 3, unit);
        if (level >= 7) { // each house has its own stove, and a tall flue tells it
            put(at, bevel_box(Vector3(0.36f, 1.7f, 0.36f), 0.04f), pal::STONE,
                home + Vector3(-0.3f, tall + 0.95f, -0.35f));
            put(at, bevel_box(Vector3(0.5f, 0.2f, 0.5f), 0.04f), pal::STONE_DARK,
                home + Vector3(-0.3f, tall + 1.85f, -0.35f));
        }
    }
    if (storey) {
        put(at, bevel_box(Vector3(0.95f, 0.52f, 0.12f), 0.03f), pal::CREAM, home + Vector3(0, 1.85f, 0.86f));
        put(at, bevel_box(Vector3(0.80f, 0.38f, 0.14f), 0.02f), 0x4a6c88, home + Vector3(0, 1.85f, 0.88f));
    }
    if (better) {
        put(at, bevel_box(Vector3(0.62f, 0.14f, 0.22f), 0.03f), pal::WOOD, home + Vector3(0.34f, 0.62f, 0.98f));
        flowers(at, home + Vector3(0.34f, 0.64f, 0.98f), 0.18f, 3, unit + 4);
    }
}

Node3D *homes_tree(int units, int level) {
    Node3D *at = memnew(Node3D);
    put(at, bevel_box(Vector3(PITCH * float(units) + 0.5f, 0.1f, 2.9f), 0.04f), pal::tone(pal::SAND, -0.12f),
        Vector3(0, 0, -0.1f));
    for (int i = 0; i < units; i++) {
        unit_house(at, i, units, level);
    }
    const float side = PITCH * float(units) / 2;
    // A washing line tells that people live here.
    for (const float x : {-0.9f, 0.9f}) {
        put(at, shapes::loft({{0, 0.06f, 0.06f}, {1.15f, 0.05f, 0.05f}}, 6), pal::WOOD_DARK,
            Vector3(side + 0.1f, 0, -0.2f + x));
    }
    put(at, bevel_box(Vector3(0.04f, 0.04f, 1.8f), 0.01f), pal::WHITE, Vector3(side + 0.1f, 1.1f, -0.2f));
    const uint32_t cloth[] = {pal::RED, pal::WHITE, pal::BLUE};
    for (int i = 0; i < 3; i++) {
        put(at, bevel_box(Vector3(0.07f, 0.42f, 0.4f), 0.02f, 1.1f), cloth[i],
            Vector3(side + 0.1f, 0.88f, -0.75f + 0.52f * float(i)), Vector3(float(i) * 4 - 4, 0, 0));
    }
    if (level >= 6) {
        bush(at, Vector3(-side - 0.35f, 0, 0.4f), 0.5f, col(pal::LEAF), 7);
    }
    if (level >= 7) {
        barrel(at, Vector3(-side - 0.3f, 0, -0.8f), 1.1f);
        // An arbour over the bench of the yard's open end.
        for (const float z : {-0.4f, 0.95f}) {
            put(at, shapes::loft({{0, 0.09f, 0.09f}, {2.0f, 0.07f, 0.07f}}, 6), pal::WHITE,
                Vector3(-side - 0.55f, 0, z));
        }
        put(at, bevel_box(Vector3(0.9f, 0.12f, 1.9f), 0.03f), pal::WHITE, Vector3(-side - 0.45f, 2.05f, 0.28f));
        bush(at, Vector3(-side - 0.45f, 1.95f, 0.28f), 0.5f, col(pal::LEAF_DARK), 9);
    }
    if (level >= 8) {
        put(at, shapes::loft({{0, 0.10f, 0.10f}, {5.3f, 0.07f, 0.07f}}, 6), pal::METAL, Vector3(-side, 0, -1.6f));
        put(at, bevel_box(Vector3(1.7f, 0.95f, 0.08f), 0.02f), pal::TEAL, Vector3(-side + 0.9f, 4.75f, -1.6f));
    }
    return at;
}

// The windows once more, as lights: a mesh of their own, so that it can be shown by itself.
MeshInstance3D *screen(int units) {
    MeshInstance3D *node = Models::bake(vformat("home_windows_%d", units), Models::builder([units] {
                                            Node3D *at = memnew(Node3D);
                                            for (int i = 0; i < units; i++) {
                                                put(at, bevel_box(Vector3(0.40f, 0.36f, 0.05f), 0.02f), 0xffe082,
                                                    Vector3(unit_x(i, units) + 0.34f, 0.95f, 0.34f));
                                            }
                                            return at;
                                        }),
                                        false);
    node->set_name("Screen");
    node->set_material_override(Models::color_material(pal::col(0xffe082), 1, true));
    return node;
}

// clang-format off
constexpr Piece SLEEPER[] = {
    {Form::box, pal::WOOD, {0.86f, 0.22f, 1.86f}, {}, {}},
    {Form::box, pal::WOOD_DARK, {0.90f, 0.62f, 0.12f}, {0, 0, -0.94f}, {}, 0.9f},
    {Form::box, pal::WHITE, {0.78f, 0.14f, 1.76f}, {0, 0.2f, 0}, {}},
    {Form::box, pal::CREAM, {0.60f, 0.16f, 0.38f}, {0, 0.3f, -0.66f}, {-8, 0, 0}, 0.85f},
    {Form::ball, 0xe0ac69, {0.44f, 0.42f, 0.46f}, {0, 0.58f, -0.58f}, {}},
    {Form::ball, 0x3e2723, {0.47f, 0.36f, 0.34f}, {0, 0.62f, -0.72f}, {}},
    {Form::box, pal::INK, {0.09f, 0.03f, 0.03f}, {-0.10f, 0.78f, -0.50f}, {}},
    {Form::box, pal::INK, {0.09f, 0.03f, 0.03f}, {0.10f, 0.78f, -0.50f}, {}},
    {Form::ball, pal::BLUE, {0.80f, 0.48f, 1.36f}, {0, 0.34f, 0.22f}, {}},
    {Form::box, pal::SKY, {0.76f, 0.16f, 0.24f}, {0, 0.42f, -0.28f}, {12, 0, 0}},
    {Form::ball, pal::BLUE, {0.44f, 0.32f, 0.30f}, {0, 0.48f, 0.74f}, {}},
};
constexpr Piece VAN[] = {
    {Form::box, pal::INK, {1.36f, 0.22f, 2.7f}, {0, 0.26f, 0}, {}},
    {Form::box, pal::WHITE, {1.46f, 1.15f, 1.75f}, {0, 0.46f, 0.50f}, {}, 0.95f},
    {Form::box, pal::WHITE, {1.42f, 0.46f, 2.75f}, {0, 0.42f, 0}, {}, 0.98f},
    {Form::box, 0x5c86a8, {1.28f, 0.62f, 0.95f}, {0, 0.80f, -0.55f}, {}, 0.78f},
    {Form::box, pal::METAL, {1.46f, 0.18f, 0.16f}, {0, 0.34f, -1.40f}, {}},
    {Form::ball, pal::YELLOW, {0.24f, 0.24f, 0.14f}, {-0.48f, 0.68f, -1.37f}, {}},
    {Form::ball, pal::YELLOW, {0.24f, 0.24f, 0.14f}, {0.48f, 0.68f, -1.37f}, {}},
    {Form::disc, pal::INK, {0.60f, 0.24f, 0.60f}, {-0.64f, 0.30f, -0.82f}, {}},
    {Form::disc, pal::INK, {0.60f, 0.24f, 0.60f}, {0.64f, 0.30f, -0.82f}, {}},
    {Form::disc, pal::INK, {0.60f, 0.24f, 0.60f}, {-0.64f, 0.30f, 0.82f}, {}},
    {Form::disc, pal::INK, {0.60f, 0.24f, 0.60f}, {0.64f, 0.30f, 0.82f}, {}},
    {Form::disc, pal::METAL, {0.30f, 0.27f, 0.30f}, {-0.64f, 0.30f, -0.82f}, {}},
    {Form::disc, pal::METAL, {0.30f, 0.27f, 0.30f}, {0.64f, 0.30f, -0.82f}, {}},
    {Form::disc, pal::METAL, {0.30f, 0.27f, 0.30f}, {-0.64f, 0.30f, 0.82f}, {}},
    {Form::disc, pal::METAL, {0.30f, 0.27f, 0.30f}, {0.64f, 0.30f, 0.82f}, {}},
};
// Plumber: a tap and a great drop on the roof, pipes along the side.
constexpr Piece PLUMBER[] = {
    {Form::box, pal::BLUE, {1.50f, 0.34f, 1.77f}, {0, 0.80f, 0.50f}, {}},
    {Form::ball, pal::SKY, {0.52f, 0.56f, 0.52f}, {0, 1.86f, 0.20f}, {}},
    {Form::cone, pal::SKY, {0.46f, 0.46f, 0.46f}, {0, 2.0f, 0.20f}, {}},
    {Form::rod, 0xc07a3c, {0.16f, 1.7f, 0.16f}, {0.50f, 1.68f, 1.35f}, {-90, 0, 0}},
    {Form::rod, 0xc07a3c, {0.16f, 1.7f, 0.16f}, {-0.50f, 1.68f, 1.35f}, {-90, 0, 0}},
};
// Appliances: a washing machine on the roof, its porthole to both sides.
constexpr Piece APPLIANCE[] = {
    {Form::box, pal::ORANGE, {1.50f, 0.34f, 1.77f}, {0, 0.80f, 0.50f}, {}},
    {Form::box, pal::METAL, {0.80f, 0.86f, 0.80f}, {0, 1.58f, 0.45f}, {}},
    {Form::disc, pal::INK, {0.58f, 0.86f, 0.58f}, {0, 1.98f, 0.45f}, {}},
    {Form::disc, pal::SKY, {0.42f, 0.90f, 0.42f}, {0, 1.98f, 0.45f}, {}},
    {Form::box, pal::INK, {0.90f, 0.08f, 0.10f}, {0, 2.02f, 0.45f}, {0, 0, 0}},
};
// clang-format on

} // namespace

Node3D *HomeModels::homes(int level) {
    const int l = std::clamp(level, 1, top_level);
    const int units = std::min(5, l + 1);
    Node3D *root = memnew(Node3D);
    root->add_child(Models::bake(String("worker_homes_") + String::num_int64(l),
                                 Models::builder([units, l] { return homes_tree(units, l); })));
    root->add_child(screen(units));
    return root;
}

Node3D *HomeModels::annex() {
    Node3D *root = memnew(Node3D);
    root->add_child(Models::bake("worker_annex", Models::builder([] { return homes_tree(2, 5); })));
    root->add_child(screen(2));
    return root;
}

Node3D *HomeModels::sleeper() {
    return Models::bake("home_sleeper", Models::builder([] { return pieces::tree_of(SLEEPER); }));
}

Node3D *HomeModels::van(const String &trade) {
    const bool plumber = trade == String("plumber");
    return Models::bake(plumber ? "van_plumber" : "van_appliance", Models::builder([plumber] {
                            Node3D *at = pieces::tree_of(VAN);
                            plumber ? pieces::put_all(at, PLUMBER) : pieces::put_all(at, APPLIANCE);
                            return at;
                        }));
}

} // namespace tilm
