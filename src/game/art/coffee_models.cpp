#include "game/art/coffee_models.h"

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
using shapes::rnd;

constexpr uint32_t BRASS = 0xe0a92a;

// clang-format off
constexpr Piece STOCK[] = {
    {Form::box, pal::WOOD_DARK, {2.2f, 0.10f, 1.4f}, {}, {}},
    {Form::box, pal::WOOD, {2.0f, 0.06f, 0.36f}, {0, 0.09f, -0.45f}, {}},
    {Form::box, pal::WOOD_LIGHT, {2.0f, 0.06f, 0.36f}, {0, 0.09f, 0}, {}},
    {Form::box, pal::WOOD, {2.0f, 0.06f, 0.36f}, {0, 0.09f, 0.45f}, {}},
    {Form::post, 0xc9a06a, {0.42f, 0.55f, 0.36f}, {1.35f, 0, -0.30f}, {0, 20, 0}, 0.75f},
    {Form::ball, pal::CHOCOLATE, {0.28f, 0.14f, 0.24f}, {1.35f, 0.55f, -0.30f}, {}},
    {Form::post, 0xb98f58, {0.40f, 0.48f, 0.34f}, {1.38f, 0, 0.22f}, {0, -25, 0}, 0.75f},
};
constexpr Piece TABLE[] = {
    {Form::rod, BRASS, {0.44f, 0.05f, 0.44f}, {}, {}, 0.8f},
    {Form::rod, pal::WOOD_DARK, {0.12f, 0.55f, 0.12f}, {0, 0.04f, 0}, {}, 0.8f},
    {Form::rod, BRASS, {0.74f, 0.06f, 0.74f}, {0, 0.55f, 0}, {}, 1.04f},
    {Form::rod, 0xf3c757, {0.58f, 0.02f, 0.58f}, {0, 0.605f, 0}, {}},
};
constexpr Piece STOOL[] = {
    {Form::rod, 0xb23a3a, {0.36f, 0.10f, 0.36f}, {0, 0.26f, 0}, {}, 0.9f},
    {Form::rod, pal::WOOD, {0.40f, 0.05f, 0.40f}, {0, 0.22f, 0}, {}},
    {Form::post, pal::WOOD_DARK, {0.08f, 0.24f, 0.08f}, {0.13f, 0, 0.13f}, {}},
    {Form::post, pal::WOOD_DARK, {0.08f, 0.24f, 0.08f}, {-0.13f, 0, 0.13f}, {}},
    {Form::post, pal::WOOD_DARK, {0.08f, 0.24f, 0.08f}, {0.13f, 0, -0.13f}, {}},
    {Form::post, pal::WOOD_DARK, {0.08f, 0.24f, 0.08f}, {-0.13f, 0, -0.13f}, {}},
};
constexpr Piece CUP[] = {
    {Form::rod, pal::WHITE, {0.20f, 0.025f, 0.20f}, {}, {}, 1.15f},
    {Form::rod, pal::WHITE, {0.09f, 0.11f, 0.09f}, {0, 0.025f, 0}, {}, 1.45f},
    {Form::rod, pal::CHOCOLATE, {0.11f, 0.02f, 0.11f}, {0, 0.125f, 0}, {}},
    {Form::box, pal::WHITE, {0.06f, 0.06f, 0.03f}, {0.085f, 0.06f, 0}, {}},
};
constexpr Piece GLASS[] = {
    {Form::rod, BRASS, {0.20f, 0.025f, 0.20f}, {}, {}, 1.15f},
    {Form::rod, 0xc2531f, {0.09f, 0.14f, 0.09f}, {0, 0.025f, 0}, {}, 1.2f},
    {Form::rod, pal::SKY, {0.115f, 0.04f, 0.115f}, {0, 0.16f, 0}, {}, 1.05f},
    {Form::ball, pal::GREEN, {0.06f, 0.05f, 0.04f}, {0.02f, 0.21f, 0}, {}},
};
constexpr Piece TRAY[] = {
    {Form::rod, BRASS, {0.46f, 0.04f, 0.46f}, {}, {}, 1.08f},
};
// The big coffee pot with its long spout, on the kiosk's counter and, larger, on its roof.
constexpr Piece POT[] = {
    {Form::rod, BRASS, {0.40f, 0.26f, 0.40f}, {}, {}, 0.62f},
    {Form::rod, BRASS, {0.24f, 0.20f, 0.24f}, {0, 0.25f, 0}, {}, 1.35f},
    {Form::rod, pal::CHOCOLATE, {0.30f, 0.05f, 0.30f}, {0, 0.44f, 0}, {}, 0.8f},
    {Form::ball, BRASS, {0.09f, 0.09f, 0.09f}, {0, 0.52f, 0}, {}},
    {Form::box, pal::WOOD_DARK, {0.50f, 0.08f, 0.09f}, {-0.36f, 0.33f, 0}, {0, 0, -18}},
    {Form::rod, BRASS, {0.10f, 0.30f, 0.10f}, {0.15f, 0.12f, 0}, {0, 0, -50}, 0.6f},
};
constexpr Piece COUNTER[] = {
    {Form::box, pal::STONE_DARK, {4.0f, 0.14f, 2.0f}, {}, {}},
    {Form::box, 0x2e6b43, {3.4f, 1.0f, 0.5f}, {0, 0.1f, 0.62f}, {}},
    {Form::box, pal::WOOD_LIGHT, {3.7f, 0.13f, 0.72f}, {0, 1.08f, 0.62f}, {}},
    {Form::box, 0xf4d9a8, {3.5f, 2.3f, 0.2f}, {0, 0.1f, -0.80f}, {}},
    {Form::box, pal::WOOD_DARK, {3.0f, 0.09f, 0.32f}, {0, 1.55f, -0.6f}, {}},
    {Form::box, pal::METAL, {0.75f, 0.62f, 0.46f}, {1.0f, 1.2f, 0.5f}, {}, 0.9f},
    {Form::box, pal::RED, {0.80f, 0.16f, 0.50f}, {1.0f, 1.76f, 0.5f}, {}, 0.85f},
    {Form::rod, pal::CHOCOLATE, {0.22f, 0.34f, 0.22f}, {-1.0f, 1.63f, -0.6f}, {}},
    {Form::rod, BRASS, {0.22f, 0.30f, 0.22f}, {-0.5f, 1.63f, -0.6f}, {}},
    {Form::rod, 0xc2531f, {0.22f, 0.34f, 0.22f}, {0.0f, 1.63f, -0.6f}, {}},
    {Form::rod, pal::GREEN, {0.22f, 0.30f, 0.22f}, {0.5f, 1.63f, -0.6f}, {}},
};
// clang-format on

Node3D *floor_tree() {
    Node3D *at = memnew(Node3D);
    put(at, bevel_box(Vector3(12.0f, 0.10f, 5.3f), 0.05f), pal::WOOD_DARK, Vector3(0, 0.0f, 0));
    constexpr int BOARDS = 10;
    const float pitch = 5.2f / BOARDS;
    for (int i = 0; i < BOARDS; i++) {
        put(at, bevel_box(Vector3(11.8f, 0.07f, pitch * 0.94f), 0.02f),
            pal::tone(pal::WOOD_LIGHT, rnd(61, i, -0.12f, 0.08f)),
            Vector3(rnd(62, i, -0.04f, 0.04f), 0.045f, -2.6f + pitch * (float(i) + 0.5f)));
    }
    // Two woven runners under the tables.
    for (const float z : {-0.9f, 0.9f}) {
        put(at, bevel_box(Vector3(10.6f, 0.03f, 1.05f), 0.01f), 0xb23a3a, Vector3(0, 0.085f, z));
        for (const float edge : {-0.4f, 0.4f}) {
            put(at, bevel_box(Vector3(10.4f, 0.03f, 0.12f), 0.01f), pal::CREAM, Vector3(0, 0.095f, z + edge));
        }
    }
    return at;
}

Node3D *kiosk_tree() {
    Node3D *at = pieces::tree_of(COUNTER);
    for (const float x : {-1.65f, 1.65f}) {
        for (const float z : {-0.75f, 0.75f}) {
            put(at, loft({{0, 0.13f, 0.13f}, {2.45f, 0.10f, 0.10f}}, 8, 0.7f), 0x1b5e20, Vector3(x, 0.05f, z));
        }
    }
    Node3D *cover = shapes::joint(at, "Roof", Vector3(0, 2.35f, 0));
    const float tiers[][3] = {{0, 2.25f, 1.45f}, {0.32f, 1.8f, 1.1f}, {0.64f, 1.25f, 0.72f}};
    for (const auto &tier : tiers) {
        put(cover, loft({{tier[0], tier[1], tier[2]}, {tier[0] + 0.42f, tier[1] * 0.74f, tier[2] * 0.7f}}, 8, 0.85f),
            pal::tone(0x1b7a3a, tier[0] * 0.25f), Vector3());
    }
    put(cover, bevel_box(Vector3(2.3f, 0.5f, 0.14f), 0.04f), 0x1b5e20, Vector3(0, -0.12f, 1.12f));
    Node3D *pot = shapes::joint(cover, "Pot", Vector3(0, 1.02f, 0));
    pot->set_scale(Vector3(2.0f, 2.0f, 2.0f));
    pieces::put_all(pot, POT);
    pieces::put_all(shapes::joint(at, "Small", Vector3(-1.0f, 1.21f, 0.6f)), POT);
    return at;
}

} // namespace

Node3D *CoffeeModels::floor() {
    return Models::bake("ahwa_floor", Models::fn_node(&floor_tree), false);
}

Node3D *CoffeeModels::kiosk() {
    return Models::bake("ahwa_kiosk", Models::fn_node(&kiosk_tree));
}

Node3D *CoffeeModels::stock() {
    return Models::bake("ahwa_stock", Models::builder([] { return pieces::tree_of(STOCK); }));
}

Node3D *CoffeeModels::table() {
    return Models::bake("ahwa_table", Models::builder([] { return pieces::tree_of(TABLE); }));
}

Node3D *CoffeeModels::stool() {
    return Models::bake("ahwa_stool", Models::builder([] { return pieces::tree_of(STOOL); }));
}

Node3D *CoffeeModels::drink(const String &which) {
    const bool cup = which == String("cup");
    return Models::bake(cup ? "ahwa_cup" : "ahwa_glass",
                        Models::builder([cup] { return cup ? pieces::tree_of(CUP) : pieces::tree_of(GLASS); }), false);
}

Node3D *CoffeeModels::tray(int which) {
    const bool coffee = which == 1;
    return Models::bake(coffee ? "qahwagi_tray_1" : "qahwagi_tray_0", Models::builder([coffee] {
                            Node3D *at = pieces::tree_of(TRAY);
                            for (const float x : {-0.1f, 0.11f}) {
                                Node3D *drink = shapes::joint(at, "Drink", Vector3(x, 0.035f, x * 0.6f));
                                coffee ? pieces::put_all(drink, CUP) : pieces::put_all(drink, GLASS);
                            }
                            if (coffee) {
                                Node3D *pot = shapes::joint(at, "Pot", Vector3(0.02f, 0.035f, -0.12f));
                                pot->set_scale(Vector3(0.45f, 0.45f, 0.45f));
                                pieces::put_all(pot, POT);
                            }
                            return at;
                        }),
                        false);
}

Dictionary CoffeeModels::server_look(int index) {
    Dictionary look;
    look["skin"] = index % 2 ? "c68642" : "e0ac69";
    look["shirt"] = index % 2 ? "1b5e20" : "8d3b3b";
    look["pants"] = "2b2b33";
    look["hair"] = "212121";
    look["cap"] = "b23a3a";
    look["apron"] = true;
    return look;
}

} // namespace tilm
