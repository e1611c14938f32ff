#include "game/art/grill_food.h"

#include <iterator>

#include "game/art/models.h"
#include "game/art/pieces.h"

namespace tilm {
namespace {

using pieces::Form;
using pieces::Piece;

constexpr uint32_t RAW_FLESH = 0xe98a86, RAW_BIRD = 0xf6c9a8, RAW_FISH = 0x7fb6d6, SEARED = 0x7a3b22, ROAST = 0xc8742c;

// clang-format off
constexpr Piece RAW_FISH_ROWS[] = {
    {Form::ball, RAW_FISH, {0.20f, 0.10f, 0.36f}, {0, 0.05f, 0}, {}},
    {Form::ball, pal::WHITE, {0.15f, 0.07f, 0.28f}, {0, 0.035f, -0.01f}, {}},
    {Form::box, 0x5a94b8, {0.17f, 0.05f, 0.12f}, {0, 0.03f, 0.19f}, {}, 0.7f},
    {Form::ball, pal::INK, {0.045f, 0.045f, 0.045f}, {0.05f, 0.075f, -0.10f}, {}},
};
constexpr Piece DONE_FISH_ROWS[] = {
    {Form::ball, 0xc9803a, {0.20f, 0.10f, 0.36f}, {0, 0.05f, 0}, {}},
    {Form::box, 0x9a5a24, {0.17f, 0.05f, 0.12f}, {0, 0.03f, 0.19f}, {}, 0.7f},
    {Form::box, pal::CHOCOLATE, {0.15f, 0.02f, 0.03f}, {0, 0.085f, -0.05f}, {0, 25, 0}},
    {Form::box, pal::CHOCOLATE, {0.15f, 0.02f, 0.03f}, {0, 0.085f, 0.05f}, {0, 25, 0}},
};
constexpr Piece RAW_BIRD_ROWS[] = {
    {Form::ball, RAW_BIRD, {0.28f, 0.20f, 0.32f}, {0, 0.10f, 0}, {}},
    {Form::rod, RAW_BIRD, {0.14f, 0.16f, 0.14f}, {0.12f, 0.12f, 0.06f}, {60, 0, -25}, 0.5f},
    {Form::rod, RAW_BIRD, {0.14f, 0.16f, 0.14f}, {-0.12f, 0.12f, 0.06f}, {60, 0, 25}, 0.5f},
    {Form::ball, pal::WHITE, {0.07f, 0.07f, 0.07f}, {0.18f, 0.19f, 0.20f}, {}},
    {Form::ball, pal::WHITE, {0.07f, 0.07f, 0.07f}, {-0.18f, 0.19f, 0.20f}, {}},
};
constexpr Piece DONE_BIRD_ROWS[] = {
    {Form::ball, ROAST, {0.28f, 0.20f, 0.32f}, {0, 0.10f, 0}, {}},
    {Form::rod, 0xb0601f, {0.14f, 0.16f, 0.14f}, {0.12f, 0.12f, 0.06f}, {60, 0, -25}, 0.5f},
    {Form::rod, 0xb0601f, {0.14f, 0.16f, 0.14f}, {-0.12f, 0.12f, 0.06f}, {60, 0, 25}, 0.5f},
    {Form::ball, pal::WHITE, {0.07f, 0.07f, 0.07f}, {0.18f, 0.19f, 0.20f}, {}},
    {Form::ball, pal::WHITE, {0.07f, 0.07f, 0.07f}, {-0.18f, 0.19f, 0.20f}, {}},
    {Form::box, SEARED, {0.22f, 0.03f, 0.035f}, {0, 0.18f, -0.03f}, {0, 20, 0}},
};
constexpr Piece RAW_STEAK_ROWS[] = {
    {Form::rod, pal::RED, {0.32f, 0.08f, 0.24f}, {0, 0, 0}, {0, 15, 0}, 0.9f},
    {Form::rod, RAW_FLESH, {0.24f, 0.03f, 0.16f}, {0.01f, 0.07f, 0}, {0, 15, 0}, 0.9f},
    {Form::box, pal::CREAM, {0.05f, 0.085f, 0.22f}, {-0.15f, 0, 0}, {0, 15, 0}},
    {Form::rod, pal::WHITE, {0.07f, 0.03f, 0.07f}, {0.06f, 0.085f, 0.01f}, {}},
};
constexpr Piece DONE_STEAK_ROWS[] = {
    {Form::rod, SEARED, {0.32f, 0.09f, 0.24f}, {0, 0, 0}, {0, 15, 0}, 0.9f},
    {Form::box, pal::STRAW_DARK, {0.05f, 0.09f, 0.22f}, {-0.15f, 0, 0}, {0, 15, 0}},
    {Form::box, pal::CHOCOLATE, {0.22f, 0.03f, 0.04f}, {0, 0.08f, -0.05f}, {0, 40, 0}},
    {Form::box, pal::CHOCOLATE, {0.22f, 0.03f, 0.04f}, {0, 0.08f, 0.05f}, {0, 40, 0}},
};
constexpr Piece RAW_PATTY_ROWS[] = {
    {Form::rod, RAW_FLESH, {0.30f, 0.09f, 0.30f}, {}, {}, 0.92f},
    {Form::ball, pal::RED, {0.10f, 0.03f, 0.08f}, {0.05f, 0.09f, 0.03f}, {}},
    {Form::ball, pal::CREAM, {0.07f, 0.03f, 0.06f}, {-0.06f, 0.09f, -0.04f}, {}},
};
constexpr Piece DONE_PATTY_ROWS[] = {
    {Form::rod, pal::BROWN, {0.30f, 0.09f, 0.30f}, {}, {}, 0.92f},
    {Form::box, pal::YELLOW, {0.27f, 0.03f, 0.27f}, {0, 0.085f, 0}, {0, 45, 0}},
};
constexpr Piece MEAT_TRAY_ROWS[] = {
    {Form::box, pal::METAL, {0.90f, 0.08f, 0.60f}, {}, {}, 1.05f},
    {Form::box, pal::STONE_DARK, {0.80f, 0.03f, 0.50f}, {0, 0.06f, 0}, {}},
    {Form::rod, pal::RED_DARK, {0.34f, 0.13f, 0.26f}, {-0.20f, 0.08f, 0}, {0, 20, 0}, 0.9f},
    {Form::rod, pal::RED, {0.32f, 0.12f, 0.24f}, {0.20f, 0.08f, 0.06f}, {0, -30, 0}, 0.9f},
    {Form::box, pal::CREAM, {0.06f, 0.13f, 0.22f}, {-0.34f, 0.08f, 0}, {0, 20, 0}},
    {Form::rod, pal::WHITE, {0.08f, 0.03f, 0.08f}, {0.23f, 0.195f, 0.06f}, {}},
};
constexpr Piece CHICKEN_TRAY_ROWS[] = {
    {Form::box, pal::METAL, {0.90f, 0.08f, 0.60f}, {}, {}, 1.05f},
    {Form::box, pal::SKY, {0.80f, 0.03f, 0.50f}, {0, 0.06f, 0}, {}},
    {Form::ball, RAW_BIRD, {0.30f, 0.20f, 0.32f}, {-0.20f, 0.16f, 0}, {}},
    {Form::ball, RAW_BIRD, {0.30f, 0.20f, 0.32f}, {0.20f, 0.16f, 0.03f}, {0, 40, 0}},
    {Form::ball, pal::WHITE, {0.08f, 0.08f, 0.08f}, {-0.34f, 0.20f, 0.18f}, {}},
    {Form::ball, pal::WHITE, {0.08f, 0.08f, 0.08f}, {0.36f, 0.20f, 0.18f}, {}},
};
constexpr Piece CHICKEN_PIECE_ROWS[] = {
    {Form::ball, RAW_BIRD, {0.22f, 0.16f, 0.22f}, {0, 0.09f, -0.04f}, {}},
    {Form::rod, pal::WHITE, {0.06f, 0.18f, 0.06f}, {0, 0.09f, 0.03f}, {80, 0, 0}},
    {Form::ball, pal::WHITE, {0.10f, 0.07f, 0.07f}, {0, 0.12f, 0.21f}, {}},
};
// A side of beef; its hook's eye is at the origin, it hangs below.
constexpr Piece MEAT_HOOK_ROWS[] = {
    {Form::rod, pal::METAL, {0.06f, 0.30f, 0.06f}, {0, -0.30f, 0}, {}},
    {Form::ball, pal::STONE_DARK, {0.14f, 0.10f, 0.10f}, {0, -0.02f, 0}, {}},
    {Form::ball, pal::RED_DARK, {0.40f, 0.70f, 0.30f}, {0, -0.60f, 0}, {}},
    {Form::ball, 0xe76a68, {0.30f, 0.46f, 0.12f}, {0, -0.62f, 0.11f}, {}},
    {Form::box, pal::CREAM, {0.30f, 0.05f, 0.06f}, {0, -0.55f, 0.15f}, {}},
    {Form::box, pal::CREAM, {0.32f, 0.05f, 0.06f}, {0, -0.66f, 0.155f}, {}},
    {Form::box, pal::CREAM, {0.28f, 0.05f, 0.06f}, {0, -0.77f, 0.15f}, {}},
    {Form::rod, RAW_FLESH, {0.16f, 0.34f, 0.16f}, {0.08f, -1.20f, 0}, {0, 0, 4}, 1.3f},
    {Form::ball, pal::WHITE, {0.12f, 0.10f, 0.10f}, {0.08f, -1.22f, 0}, {}},
};
constexpr Piece SHOULDER_ROWS[] = {
    {Form::ball, pal::RED_DARK, {0.34f, 0.22f, 0.28f}, {0, 0.11f, 0}, {}},
    {Form::rod, pal::WHITE, {0.08f, 0.22f, 0.08f}, {0.10f, 0.12f, 0}, {0, 0, -80}},
    {Form::ball, RAW_FLESH, {0.10f, 0.16f, 0.16f}, {0.14f, 0.12f, 0}, {}},
};
constexpr Piece RIBS_ROWS[] = {
    {Form::box, pal::RED_DARK, {0.38f, 0.12f, 0.28f}, {0, 0, 0}, {}, 0.92f},
    {Form::box, pal::CREAM, {0.05f, 0.06f, 0.36f}, {-0.13f, 0.09f, 0}, {}},
    {Form::box, pal::CREAM, {0.05f, 0.06f, 0.36f}, {-0.04f, 0.09f, 0}, {}},
    {Form::box, pal::CREAM, {0.05f, 0.06f, 0.36f}, {0.05f, 0.09f, 0}, {}},
    {Form::box, pal::CREAM, {0.05f, 0.06f, 0.36f}, {0.14f, 0.09f, 0}, {}},
};
constexpr Piece RUMP_ROWS[] = {
    {Form::rod, pal::RED, {0.34f, 0.22f, 0.30f}, {}, {}, 0.7f},
    {Form::rod, pal::CREAM, {0.25f, 0.06f, 0.22f}, {0, 0.20f, 0}, {}, 0.85f},
    {Form::rod, pal::WHITE, {0.09f, 0.04f, 0.09f}, {0.02f, 0.25f, 0}, {}},
};
constexpr Piece LOIN_ROWS[] = {
    {Form::box, 0xe76a68, {0.20f, 0.16f, 0.42f}, {}, {}, 0.86f},
    {Form::box, pal::CREAM, {0.18f, 0.05f, 0.38f}, {0, 0.145f, 0}, {}, 0.8f},
    {Form::box, pal::WOOD_LIGHT, {0.21f, 0.17f, 0.04f}, {0, 0, -0.11f}, {}},
    {Form::box, pal::WOOD_LIGHT, {0.21f, 0.17f, 0.04f}, {0, 0, 0.11f}, {}},
};

struct Dish { const char *kind; std::span<const Piece> raw, done; };
constexpr Dish DISHES[] = {
    {"grilled_fish", RAW_FISH_ROWS, DONE_FISH_ROWS},
    {"grilled_chicken", RAW_BIRD_ROWS, DONE_BIRD_ROWS},
    {"steak", RAW_STEAK_ROWS, DONE_STEAK_ROWS},
    {"burger", RAW_PATTY_ROWS, DONE_PATTY_ROWS},
};
struct Cut { const char *key; std::span<const Piece> rows; const char *name = nullptr; };
constexpr Cut CUTS[] = {
    {"meat_tray", MEAT_TRAY_ROWS}, {"chicken_tray", CHICKEN_TRAY_ROWS}, {"chicken_piece", CHICKEN_PIECE_ROWS},
    {"meat_hook", MEAT_HOOK_ROWS}, {"cut_shoulder", SHOULDER_ROWS, "Shoulder"}, {"cut_ribs", RIBS_ROWS, "Ribs"},
    {"cut_rump", RUMP_ROWS, "Rump"}, {"cut_loin", LOIN_ROWS, "Loin"},
};
// clang-format on

// Any other kind is cooked as a steak.
const Dish &dish_of(const String &kind) {
    for (const Dish &dish : DISHES) {
        if (kind == String(dish.kind)) {
            return dish;
        }
    }
    return DISHES[2];
}

} // namespace

Node3D *GrillFood::raw_piece(const String &kind) {
    const Dish &dish = dish_of(kind);
    return Models::bake(String("cook_raw_") + dish.kind, Models::builder([&dish] { return pieces::tree_of(dish.raw); }),
                        false);
}

Node3D *GrillFood::done_piece(const String &kind) {
    const Dish &dish = dish_of(kind);
    return Models::bake(String("cook_done_") + dish.kind,
                        Models::builder([&dish] { return pieces::tree_of(dish.done); }), false);
}

Node3D *GrillFood::plated(const String &kind) {
    return Models::item_model(kind);
}

Node3D *GrillFood::butchery(const String &key) {
    for (const Cut &cut : CUTS) {
        if (key == String(cut.key)) {
            Node3D *node = Models::bake(key, Models::builder([&cut] { return pieces::tree_of(cut.rows); }));
            if (cut.name != nullptr) {
                node->set_name(cut.name);
            }
            return node;
        }
    }
    return nullptr;
}

} // namespace tilm
