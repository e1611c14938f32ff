#include "game/art/addon_models.h"

#include <iterator>

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

struct Prop {
    const char *key;
    std::span<const Piece> rows;
};

const Prop *find(std::span<const Prop> table, const String &key) {
    for (const Prop &row : table) {
        if (key == String(row.key)) {
            return &row;
        }
    }
    return nullptr;
}

// clang-format off
// Tools of the farm hands. The grip is at the origin, what works hangs or points away from it.
constexpr Piece BASKET[] = {
    {Form::rod, pal::WOOD, {0.30f, 0.20f, 0.30f}, {0, -0.34f, 0}, {}, 1.25f},
    {Form::rod, pal::WOOD_LIGHT, {0.42f, 0.06f, 0.42f}, {0, -0.18f, 0}, {}},
    {Form::box, pal::WOOD_DARK, {0.06f, 0.22f, 0.06f}, {-0.17f, -0.16f, 0}, {0, 0, -20}},
    {Form::box, pal::WOOD_DARK, {0.06f, 0.22f, 0.06f}, {0.17f, -0.16f, 0}, {0, 0, 20}},
    {Form::box, pal::WOOD_DARK, {0.30f, 0.06f, 0.07f}, {0, -0.02f, 0}, {}},
    {Form::ball, pal::WHITE, {0.16f, 0.16f, 0.16f}, {-0.07f, -0.12f, 0.03f}, {}},
    {Form::ball, pal::CREAM, {0.16f, 0.16f, 0.16f}, {0.08f, -0.12f, -0.03f}, {}},
};
constexpr Piece FRUIT_BASKET[] = {
    {Form::rod, pal::WOOD, {0.34f, 0.22f, 0.34f}, {0, -0.36f, 0}, {}, 1.3f},
    {Form::box, pal::WOOD_DARK, {0.06f, 0.24f, 0.06f}, {-0.2f, -0.18f, 0}, {0, 0, -20}},
    {Form::box, pal::WOOD_DARK, {0.06f, 0.24f, 0.06f}, {0.2f, -0.18f, 0}, {0, 0, 20}},
    {Form::box, pal::WOOD_DARK, {0.34f, 0.06f, 0.07f}, {0, -0.02f, 0}, {}},
    {Form::ball, pal::RED, {0.18f, 0.18f, 0.18f}, {-0.09f, -0.12f, 0.05f}, {}},
    {Form::ball, pal::RED, {0.18f, 0.18f, 0.18f}, {0.1f, -0.12f, 0.03f}, {}},
    {Form::ball, pal::ORANGE, {0.18f, 0.18f, 0.18f}, {0.0f, -0.10f, -0.1f}, {}},
};
constexpr Piece ORANGE_BASKET[] = {
    {Form::box, pal::WOOD_LIGHT, {0.52f, 0.24f, 0.34f}, {0, -0.38f, 0}, {}, 1.08f},
    {Form::box, pal::WOOD_DARK, {0.56f, 0.05f, 0.38f}, {0, -0.20f, 0}, {}},
    {Form::box, pal::WOOD_DARK, {0.06f, 0.22f, 0.06f}, {-0.22f, -0.18f, 0}, {}},
    {Form::box, pal::WOOD_DARK, {0.06f, 0.22f, 0.06f}, {0.22f, -0.18f, 0}, {}},
    {Form::box, pal::WOOD_DARK, {0.50f, 0.06f, 0.07f}, {0, -0.02f, 0}, {}},
    {Form::ball, pal::ORANGE, {0.20f, 0.20f, 0.20f}, {-0.13f, -0.13f, 0.04f}, {}},
    {Form::ball, pal::ORANGE, {0.20f, 0.20f, 0.20f}, {0.13f, -0.13f, 0.05f}, {}},
    {Form::ball, 0xffa63f, {0.20f, 0.20f, 0.20f}, {0.0f, -0.11f, -0.06f}, {}},
};
constexpr Piece BUCKET[] = {
    {Form::rod, pal::METAL, {0.26f, 0.28f, 0.26f}, {0, -0.46f, 0}, {}, 1.3f},
    {Form::rod, pal::STONE_DARK, {0.36f, 0.05f, 0.36f}, {0, -0.21f, 0}, {}},
    {Form::rod, pal::WHITE, {0.28f, 0.04f, 0.28f}, {0, -0.175f, 0}, {}},
    {Form::box, pal::STONE_DARK, {0.04f, 0.24f, 0.04f}, {-0.13f, -0.2f, 0}, {0, 0, -28}},
    {Form::box, pal::STONE_DARK, {0.04f, 0.24f, 0.04f}, {0.13f, -0.2f, 0}, {0, 0, 28}},
    {Form::box, pal::WOOD, {0.18f, 0.06f, 0.07f}, {0, -0.02f, 0}, {}},
};
constexpr Piece SHEARS[] = {
    {Form::box, pal::METAL, {0.09f, 0.42f, 0.05f}, {-0.06f, 0.10f, 0}, {0, 0, 9}, 0.5f},
    {Form::box, pal::METAL, {0.09f, 0.42f, 0.05f}, {0.06f, 0.10f, 0}, {0, 0, -9}, 0.5f},
    {Form::box, pal::RED, {0.10f, 0.26f, 0.09f}, {-0.10f, -0.14f, 0}, {0, 0, -14}},
    {Form::box, pal::RED, {0.10f, 0.26f, 0.09f}, {0.10f, -0.14f, 0}, {0, 0, 14}},
    {Form::ball, pal::STONE_DARK, {0.09f, 0.09f, 0.10f}, {0, 0.10f, 0}, {}},
};
constexpr Piece SMOKER[] = {
    {Form::rod, pal::METAL, {0.26f, 0.32f, 0.26f}, {0, -0.16f, -0.12f}, {}},
    {Form::cone, pal::STONE_DARK, {0.26f, 0.22f, 0.26f}, {0, 0.16f, -0.12f}, {}},
    {Form::rod, pal::STONE_DARK, {0.09f, 0.18f, 0.09f}, {0, 0.28f, -0.14f}, {-60, 0, 0}},
    {Form::box, pal::BROWN, {0.22f, 0.30f, 0.10f}, {0, -0.15f, 0.08f}, {12, 0, 0}, 0.8f},
};
constexpr Piece ROD_AND_LINE[] = {
    {Form::rod, pal::WOOD, {0.06f, 1.5f, 0.06f}, {0, -0.2f, 0}, {-38, 0, 0}, 0.4f},
    {Form::rod, pal::RED, {0.08f, 0.24f, 0.08f}, {0, -0.2f, 0}, {-38, 0, 0}},
    {Form::disc, pal::METAL, {0.14f, 0.08f, 0.14f}, {0.05f, 0.06f, -0.1f}, {}},
    {Form::box, pal::WHITE, {0.03f, 0.75f, 0.03f}, {0, 0.22f, -0.92f}, {}},
    {Form::ball, pal::RED, {0.11f, 0.14f, 0.11f}, {0, 0.2f, -0.92f}, {}},
};
constexpr Piece BOTTLE[] = {
    {Form::rod, pal::WHITE, {0.18f, 0.32f, 0.18f}, {0, -0.16f, 0}, {}},
    {Form::rod, pal::ORANGE, {0.16f, 0.08f, 0.16f}, {0, 0.15f, 0}, {}, 0.7f},
    {Form::cone, pal::PINK, {0.10f, 0.16f, 0.10f}, {0, 0.22f, 0}, {}},
};
constexpr Piece CATCH_NET[] = {
    {Form::rod, pal::WOOD, {0.06f, 0.8f, 0.06f}, {0, -0.3f, 0}, {}},
    {Form::rod, pal::RED, {0.58f, 0.06f, 0.58f}, {0, 0.72f, -0.05f}, {90, 0, 0}},
    {Form::rod, pal::CREAM, {0.52f, 0.26f, 0.52f}, {0, 0.72f, 0}, {98, 0, 0}, 0.75f},
    {Form::cone, pal::WHITE, {0.40f, 0.30f, 0.40f}, {0, 0.68f, 0.24f}, {112, 0, 0}},
};
constexpr Piece SIEVE[] = {
    {Form::rod, pal::WOOD, {0.56f, 0.10f, 0.56f}, {0, -0.05f, -0.2f}, {}, 1.05f},
    {Form::rod, pal::STRAW, {0.48f, 0.03f, 0.48f}, {0, 0.04f, -0.2f}, {}},
    {Form::ball, pal::RED, {0.12f, 0.10f, 0.12f}, {-0.1f, 0.09f, -0.15f}, {}},
    {Form::ball, pal::RED, {0.12f, 0.10f, 0.12f}, {0.1f, 0.09f, -0.25f}, {}},
    {Form::ball, pal::GREEN, {0.12f, 0.10f, 0.12f}, {0.02f, 0.09f, -0.08f}, {}},
};
constexpr Piece STOOL[] = {
    {Form::rod, pal::WOOD_LIGHT, {0.42f, 0.09f, 0.42f}, {0, 0.28f, 0}, {}},
    {Form::rod, pal::WOOD_DARK, {0.09f, 0.32f, 0.09f}, {0.14f, 0, 0.08f}, {-8, 0, 10}},
    {Form::rod, pal::WOOD_DARK, {0.09f, 0.32f, 0.09f}, {-0.14f, 0, 0.08f}, {-8, 0, -10}},
    {Form::rod, pal::WOOD_DARK, {0.09f, 0.32f, 0.09f}, {0, 0, -0.15f}, {12, 0, 0}},
};
constexpr Prop HANDS[] = {
    {"egg", BASKET}, {"milk", BUCKET}, {"wool", SHEARS}, {"honey", SMOKER}, {"fish", ROD_AND_LINE},
    {"calf", BOTTLE}, {"hen", CATCH_NET}, {"apple", FRUIT_BASKET}, {"orange", ORANGE_BASKET}, {"bean", SIEVE},
    {"stool", STOOL},
};

constexpr Piece HAMMER[] = {
    {Form::rod, pal::WOOD, {0.08f, 0.52f, 0.08f}, {0, -0.12f, 0}, {}},
    {Form::box, pal::STONE_DARK, {0.34f, 0.15f, 0.16f}, {0, 0.34f, 0}, {}, 0.95f},
    {Form::box, pal::METAL, {0.08f, 0.18f, 0.18f}, {0.18f, 0.325f, 0}, {}},
};
constexpr Piece TESTER[] = {
    {Form::rod, pal::YELLOW, {0.13f, 0.26f, 0.13f}, {0, -0.14f, 0}, {}, 0.85f},
    {Form::rod, pal::RED, {0.14f, 0.06f, 0.14f}, {0, 0.1f, 0}, {}},
    {Form::rod, pal::METAL, {0.05f, 0.36f, 0.05f}, {0, 0.14f, 0}, {}},
    {Form::box, pal::METAL, {0.09f, 0.06f, 0.03f}, {0, 0.48f, 0}, {}},
};
constexpr Piece SYRINGE[] = {
    {Form::rod, pal::WHITE, {0.17f, 0.36f, 0.17f}, {0, -0.06f, 0}, {}},
    {Form::rod, pal::GREEN, {0.18f, 0.18f, 0.18f}, {0, 0.08f, 0}, {}},
    {Form::rod, pal::METAL, {0.20f, 0.05f, 0.20f}, {0, -0.10f, 0}, {}},
    {Form::rod, pal::METAL, {0.06f, 0.20f, 0.06f}, {0, -0.28f, 0}, {}},
    {Form::rod, pal::STONE_DARK, {0.18f, 0.05f, 0.18f}, {0, -0.30f, 0}, {}},
};
constexpr Piece NEEDLE[] = {{Form::cone, pal::METAL, {0.06f, 0.26f, 0.06f}, {0, 0, 0}, {}}};
constexpr Piece WRENCH[] = {
    {Form::box, pal::RED, {0.10f, 0.46f, 0.07f}, {0, -0.14f, 0}, {}, 0.85f},
    {Form::box, pal::METAL, {0.28f, 0.12f, 0.10f}, {0, 0.30f, 0}, {}},
    {Form::box, pal::METAL, {0.09f, 0.18f, 0.10f}, {-0.10f, 0.38f, 0}, {}},
    {Form::box, pal::METAL, {0.09f, 0.18f, 0.10f}, {0.10f, 0.38f, 0}, {}},
};
constexpr Piece TOOL_CASE[] = {
    {Form::box, pal::ORANGE, {0.44f, 0.24f, 0.22f}, {0, -0.40f, 0}, {}},
    {Form::box, pal::INK, {0.46f, 0.05f, 0.24f}, {0, -0.30f, 0}, {}},
    {Form::box, pal::INK, {0.06f, 0.14f, 0.06f}, {-0.10f, -0.16f, 0}, {}},
    {Form::box, pal::INK, {0.06f, 0.14f, 0.06f}, {0.10f, -0.16f, 0}, {}},
    {Form::box, pal::INK, {0.26f, 0.06f, 0.07f}, {0, -0.04f, 0}, {}},
    {Form::box, pal::METAL, {0.09f, 0.09f, 0.24f}, {0, -0.34f, 0}, {}},
};
constexpr Prop TOOLS[] = {
    {"carpenter", HAMMER}, {"electric", TESTER}, {"vet", SYRINGE}, {"plumber", WRENCH}, {"appliance", TOOL_CASE},
};

constexpr Piece VEIL[] = {
    {Form::rod, pal::STRAW, {1.10f, 0.06f, 1.10f}, {0, 0.50f, 0}, {}, 0.96f},
    {Form::rod, pal::STRAW_DARK, {0.64f, 0.26f, 0.64f}, {0, 0.53f, 0}, {}, 0.8f},
    {Form::rod, pal::WHITE, {0.67f, 0.08f, 0.67f}, {0, 0.55f, 0}, {}},
    // The net: bars all round leave the face to be seen.
    {Form::box, pal::INK, {0.05f, 0.52f, 0.04f}, {-0.26f, 0, -0.38f}, {}},
    {Form::box, pal::INK, {0.05f, 0.52f, 0.04f}, {0, 0, -0.46f}, {}},
    {Form::box, pal::INK, {0.05f, 0.52f, 0.04f}, {0.26f, 0, -0.38f}, {}},
    {Form::box, pal::INK, {0.05f, 0.52f, 0.04f}, {-0.45f, 0, -0.05f}, {}},
    {Form::box, pal::INK, {0.05f, 0.52f, 0.04f}, {0.45f, 0, -0.05f}, {}},
    {Form::rod, pal::WHITE, {0.90f, 0.16f, 0.90f}, {0, -0.12f, 0}, {}, 1.05f},
};

constexpr Piece WATER_TANK[] = {
    {Form::rod, pal::STONE, {1.3f, 0.14f, 1.3f}, {}, {}},
    {Form::post, pal::WOOD_DARK, {0.16f, 1.0f, 0.16f}, {0.42f, 0.1f, 0.42f}, {}},
    {Form::post, pal::WOOD_DARK, {0.16f, 1.0f, 0.16f}, {-0.42f, 0.1f, 0.42f}, {}},
    {Form::post, pal::WOOD_DARK, {0.16f, 1.0f, 0.16f}, {0.42f, 0.1f, -0.42f}, {}},
    {Form::post, pal::WOOD_DARK, {0.16f, 1.0f, 0.16f}, {-0.42f, 0.1f, -0.42f}, {}},
    {Form::rod, pal::WOOD, {1.2f, 0.9f, 1.2f}, {0, 1.05f, 0}, {}, 0.95f},
    {Form::rod, pal::STONE_DARK, {1.24f, 0.09f, 1.24f}, {0, 1.22f, 0}, {}},
    {Form::rod, pal::STONE_DARK, {1.20f, 0.09f, 1.20f}, {0, 1.68f, 0}, {}},
    {Form::cone, pal::BLUE, {1.4f, 0.5f, 1.4f}, {0, 1.94f, 0}, {}},
    {Form::rod, 0xc07a3c, {0.13f, 0.9f, 0.13f}, {0, 0.2f, 0.5f}, {}},
    {Form::rod, 0xc07a3c, {0.13f, 0.26f, 0.13f}, {0, 0.3f, 0.48f}, {90, 0, 0}},
    {Form::box, pal::RED, {0.26f, 0.07f, 0.07f}, {0, 0.42f, 0.58f}, {}},
    {Form::ball, pal::SKY, {0.12f, 0.16f, 0.12f}, {0, 0.16f, 0.74f}, {}},
};
constexpr Piece WELL[] = {
    {Form::rod, pal::STONE_DARK, {1.8f, 0.16f, 1.8f}, {}, {}},
    {Form::rod, pal::STONE, {1.5f, 0.7f, 1.5f}, {0, 0.1f, 0}, {}, 0.94f},
    {Form::rod, 0xd0ccc2, {1.56f, 0.14f, 1.56f}, {0, 0.74f, 0}, {}},
    {Form::rod, pal::BLUE, {1.14f, 0.04f, 1.14f}, {0, 0.86f, 0}, {}},
    {Form::post, pal::WOOD_DARK, {0.17f, 1.5f, 0.17f}, {-0.68f, 0.6f, 0}, {}},
    {Form::post, pal::WOOD_DARK, {0.17f, 1.5f, 0.17f}, {0.68f, 0.6f, 0}, {}},
    {Form::disc, pal::WOOD, {0.26f, 1.3f, 0.26f}, {0, 1.6f, 0}, {}},
    {Form::gable, pal::RED, {1.5f, 0.62f, 2.0f}, {0, 2.05f, 0}, {0, 90, 0}},
    {Form::box, pal::CREAM, {0.06f, 0.42f, 0.06f}, {0.1f, 1.15f, 0}, {}},
    {Form::rod, pal::METAL, {0.30f, 0.28f, 0.30f}, {0.1f, 0.92f, 0}, {}, 1.2f},
    {Form::box, pal::STONE_DARK, {0.09f, 0.34f, 0.09f}, {0.84f, 1.42f, 0}, {}},
};
// Two chests back to back with arrows that go round: goods for goods.
constexpr Piece TRADE_BOX[] = {
    {Form::box, pal::STONE_DARK, {2.2f, 0.12f, 1.5f}, {}, {}},
    {Form::box, pal::WOOD, {1.8f, 0.75f, 1.1f}, {0, 0.1f, 0}, {}, 0.97f},
    {Form::box, pal::PURPLE, {1.86f, 0.16f, 1.16f}, {0, 0.42f, 0}, {}},
    {Form::disc, pal::WOOD_LIGHT, {0.72f, 1.86f, 1.1f}, {0, 0.86f, 0}, {}},
    {Form::disc, pal::PURPLE, {0.78f, 0.26f, 1.16f}, {-0.55f, 0.86f, 0}, {}},
    {Form::disc, pal::PURPLE, {0.78f, 0.26f, 1.16f}, {0.55f, 0.86f, 0}, {}},
    {Form::box, pal::YELLOW, {0.34f, 0.36f, 0.12f}, {0, 0.5f, 0.56f}, {}},
    {Form::box, pal::GREEN, {0.8f, 0.18f, 0.18f}, {-0.1f, 1.75f, 0}, {}},
    {Form::cone, pal::GREEN, {0.46f, 0.36f, 0.2f}, {0.28f, 1.84f, 0}, {0, 0, -90}},
    {Form::box, pal::ORANGE, {0.8f, 0.18f, 0.18f}, {0.1f, 1.38f, 0}, {}},
    {Form::cone, pal::ORANGE, {0.46f, 0.36f, 0.2f}, {-0.28f, 1.47f, 0}, {0, 0, 90}},
};
constexpr Prop PROPS[] = {{"water_tank", WATER_TANK}, {"water_well", WELL}, {"trade_box", TRADE_BOX}};

constexpr Piece PHARMACY[] = {
    {Form::box, 0xc9ccd2, {5.0f, 0.1f, 4.0f}, {0, 0, 0.2f}, {}},
    {Form::box, pal::WHITE, {3.4f, 2.1f, 2.3f}, {0, 0.05f, -0.6f}, {}, 0.98f},
    {Form::box, 0x2f9d6a, {3.5f, 0.4f, 2.4f}, {0, 0.05f, -0.6f}, {}},
    {Form::box, 0x2f9d6a, {3.8f, 0.3f, 2.7f}, {0, 2.1f, -0.6f}, {}, 0.96f},
    {Form::box, 0x5c86a8, {1.3f, 1.0f, 0.14f}, {0.85f, 0.7f, 0.5f}, {}},
    {Form::box, pal::SKY, {0.6f, 0.45f, 0.14f}, {0.6f, 1.15f, 0.53f}, {}},
    {Form::box, pal::GREEN, {0.9f, 1.4f, 0.14f}, {-0.85f, 0.1f, 0.5f}, {}},
    {Form::box, pal::SKY, {0.6f, 0.6f, 0.16f}, {-0.85f, 0.75f, 0.52f}, {}},
    {Form::box, pal::INK, {2.5f, 0.5f, 0.16f}, {0, 1.72f, 0.62f}, {}},
    // A mortar with its pestle, as high as a man, on the flat roof.
    {Form::rod, pal::METAL, {0.9f, 0.2f, 0.9f}, {0, 2.38f, -0.5f}, {}, 0.6f},
    {Form::rod, pal::GREEN, {0.7f, 0.85f, 0.7f}, {0, 2.55f, -0.5f}, {}, 1.75f},
    {Form::rod, pal::WHITE, {1.28f, 0.14f, 1.28f}, {0, 3.34f, -0.5f}, {}},
    {Form::rod, pal::WHITE, {0.2f, 1.2f, 0.2f}, {0.15f, 3.2f, -0.5f}, {0, 0, -28}, 1.5f},
    {Form::ball, pal::WHITE, {0.4f, 0.34f, 0.4f}, {0.72f, 4.25f, -0.5f}, {}},
    {Form::box, pal::WHITE, {0.2f, 0.6f, 0.12f}, {0, 2.7f, 0.02f}, {}},
    {Form::box, pal::WHITE, {0.6f, 0.2f, 0.12f}, {0, 2.9f, 0.02f}, {}},
    {Form::box, pal::WOOD, {0.9f, 0.3f, 0.4f}, {1.9f, 0.05f, 1.1f}, {}},
    {Form::ball, pal::LEAF, {0.5f, 0.5f, 0.5f}, {1.75f, 0.5f, 1.1f}, {}},
    {Form::ball, pal::LEAF_DARK, {0.42f, 0.42f, 0.42f}, {2.1f, 0.48f, 1.1f}, {}},
};
constexpr Piece BANK[] = {
    {Form::box, pal::STONE, {4.6f, 0.2f, 3.6f}, {0, 0, 0}, {}},
    {Form::box, pal::STONE, {4.2f, 0.2f, 3.2f}, {0, 0.2f, 0}, {}},
    {Form::box, 0xe9e2d2, {3.4f, 2.0f, 2.2f}, {0, 0.4f, -0.3f}, {}},
    {Form::rod, pal::WHITE, {0.44f, 1.9f, 0.44f}, {-1.5f, 0.4f, 1.15f}, {}, 0.85f},
    {Form::rod, pal::WHITE, {0.44f, 1.9f, 0.44f}, {-0.55f, 0.4f, 1.15f}, {}, 0.85f},
    {Form::rod, pal::WHITE, {0.44f, 1.9f, 0.44f}, {0.55f, 0.4f, 1.15f}, {}, 0.85f},
    {Form::rod, pal::WHITE, {0.44f, 1.9f, 0.44f}, {1.5f, 0.4f, 1.15f}, {}, 0.85f},
    {Form::box, 0x2f5d50, {0.8f, 1.4f, 0.12f}, {0, 0.4f, 0.82f}, {}},
    {Form::box, 0xd9d0bc, {4.2f, 0.4f, 3.0f}, {0, 2.3f, 0}, {}},
    {Form::gable, 0xd9d0bc, {4.3f, 1.1f, 3.0f}, {0, 2.68f, 0}, {}},
    {Form::gable, 0x2f5d50, {3.5f, 0.85f, 3.1f}, {0, 2.74f, 0}, {}},
    {Form::rod, pal::YELLOW, {0.60f, 0.2f, 0.60f}, {0, 3.14f, 1.5f}, {90, 0, 0}},
    {Form::box, 0xb98a1e, {0.12f, 0.36f, 0.1f}, {0, 2.96f, 1.7f}, {}},
};
// clang-format on

// Baked when asked for, with a sign that lights up in a child of its own.
Node3D *with_sign(const char *key, std::span<const Piece> rows, const char *child, const char *text, const Color &ink,
                  const Vector3 &at) {
    Node3D *root = memnew(Node3D);
    root->add_child(Models::bake(key, Models::builder([rows] { return pieces::tree_of(rows); })));
    Node3D *sign = shapes::joint(root, child, at);
    Models::label3d(text, 42, ink, Vector3(), sign, false, 8)->set_rotation_degrees(Vector3());
    return root;
}

} // namespace

Node3D *AddonModels::pharmacy() {
    return with_sign("pharmacy", PHARMACY, "NightGlow", "PHARMACY", col(0x7dffb0), Vector3(0, 1.97f, 0.74f));
}

Node3D *AddonModels::bank() {
    return with_sign("bank", BANK, "Sign", "BANK", col(pal::YELLOW), Vector3(0, 2.48f, 1.58f));
}

Node3D *AddonModels::hand(const String &kind) {
    const Prop *row = find(HANDS, kind);
    const std::span<const Piece> rows = row != nullptr ? row->rows : std::span<const Piece>(BASKET);
    return Models::bake(String("hand_") + (row != nullptr ? row->key : "egg"),
                        Models::builder([rows] { return pieces::tree_of(rows); }), false);
}

Node3D *AddonModels::tool(const String &trade) {
    const Prop *row = find(TOOLS, trade);
    if (row == nullptr) {
        row = &TOOLS[0];
    }
    Node3D *node =
        Models::bake(String("tool_") + row->key, Models::builder([row] { return pieces::tree_of(row->rows); }), false);
    if (String(row->key) == String("vet")) {
        MeshInstance3D *needle =
            Models::bake("tool_vet_needle", Models::builder([] { return pieces::tree_of(NEEDLE); }), false);
        needle->set_name("Needle");
        needle->set_position(Vector3(0, 0.30f, 0));
        node->add_child(needle);
    }
    return node;
}

Node3D *AddonModels::veil_hat() {
    return Models::bake("veil_hat", Models::builder([] { return pieces::tree_of(VEIL); }), false);
}

Node3D *AddonModels::prop(const String &key) {
    const Prop *row = find(PROPS, key);
    return row == nullptr ? nullptr : Models::bake(key, Models::builder([row] { return pieces::tree_of(row->rows); }));
}

} // namespace tilm
