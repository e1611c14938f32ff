#include "game/art/service_models.h"

#include <iterator>

#include "game/art/house_parts.h"
#include "game/art/icon_models.h"
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

struct Trade {
    const char *trade, *title;
    uint32_t wall, roof;
    const char *shirt, *hat;
};
// clang-format off
constexpr Trade TRADES[] = {
    {"carpenter", "CARPENTER", 0xe2b77c, 0x7c4f2e, "c77b30", "cap"},
    {"electric", "ELECTRICIAN", 0xb9c6d3, 0x2f4f7f, "f4b400", "helmet"},
    {"vet", "VET CLINIC", 0xfbeed5, 0x2f9d8a, "4db6ac", ""},
    {"plumber", "PLUMBER", 0, 0, "1e6fc0", "cap"},
    {"appliance", "APPLIANCE REPAIR", 0, 0, "ff8f3a", "cap"},
};

// What stands at the hut and on its roof, so that each is known from afar.
constexpr Piece CARPENTER[] = {
    // A saw as tall as a man leans over the roof.
    {Form::box, pal::WOOD, {0.5f, 0.46f, 0.16f}, {-1.0f, 3.3f, 0.75f}, {0, 0, -35}},
    {Form::box, pal::METAL, {2.2f, 0.44f, 0.09f}, {0.15f, 2.62f, 0.75f}, {0, 0, -35}, 0.85f},
    {Form::box, pal::WOOD_LIGHT, {2.4f, 0.16f, 0.3f}, {-1.9f, 0.05f, 0.9f}, {0, 78, 0}},
    {Form::box, 0xe0b070, {2.4f, 0.16f, 0.3f}, {-1.6f, 0.05f, 0.9f}, {0, 84, 0}},
    {Form::box, pal::WOOD_LIGHT, {2.3f, 0.16f, 0.3f}, {-1.75f, 0.21f, 0.9f}, {0, 80, 0}},
    {Form::box, pal::WOOD, {1.0f, 0.12f, 0.55f}, {1.75f, 0.62f, 1.0f}, {}},
    {Form::post, pal::WOOD_DARK, {0.14f, 0.62f, 0.4f}, {1.4f, 0, 1.0f}, {}},
    {Form::post, pal::WOOD_DARK, {0.14f, 0.62f, 0.4f}, {2.1f, 0, 1.0f}, {}},
    {Form::rod, pal::STRAW, {0.6f, 0.12f, 0.5f}, {1.75f, 0, 1.5f}, {}, 0.5f},
};
constexpr Piece ELECTRIC[] = {
    // A mast with insulators, a transformer, a cable drum.
    {Form::rod, pal::WOOD_DARK, {0.22f, 4.1f, 0.22f}, {1.75f, 0, -1.2f}, {}, 0.8f},
    {Form::box, pal::WOOD, {1.7f, 0.16f, 0.16f}, {1.75f, 3.65f, -1.2f}, {}},
    {Form::rod, pal::SKY, {0.18f, 0.3f, 0.18f}, {1.1f, 3.8f, -1.2f}, {}, 0.6f},
    {Form::rod, pal::SKY, {0.18f, 0.3f, 0.18f}, {2.4f, 3.8f, -1.2f}, {}, 0.6f},
    {Form::rod, pal::STONE_DARK, {0.56f, 0.75f, 0.56f}, {1.75f, 2.5f, -0.95f}, {}},
    {Form::disc, pal::WOOD_LIGHT, {1.0f, 0.12f, 1.0f}, {-1.95f, 0.5f, 1.05f}, {}},
    {Form::disc, pal::WOOD_LIGHT, {1.0f, 0.12f, 1.0f}, {-1.45f, 0.5f, 1.05f}, {}},
    {Form::disc, pal::ORANGE, {0.68f, 0.5f, 0.68f}, {-1.7f, 0.5f, 1.05f}, {}},
    {Form::box, pal::STONE_DARK, {0.7f, 1.05f, 0.5f}, {1.55f, 0, 0.75f}, {}},
    {Form::box, pal::YELLOW, {0.5f, 0.5f, 0.08f}, {1.55f, 0.35f, 1.0f}, {}},
};
constexpr Piece VET[] = {
    // A cross on a tower, a kennel with its dish, a paw on the door.
    {Form::box, pal::WHITE, {0.42f, 1.4f, 0.3f}, {0, 2.6f, 0.35f}, {}},
    {Form::box, pal::WHITE, {1.4f, 0.42f, 0.3f}, {0, 3.09f, 0.35f}, {}},
    {Form::box, pal::GREEN, {0.26f, 1.22f, 0.34f}, {0, 2.69f, 0.37f}, {}},
    {Form::box, pal::GREEN, {1.22f, 0.26f, 0.34f}, {0, 3.17f, 0.37f}, {}},
    {Form::box, pal::WOOD, {0.8f, 0.55f, 0.75f}, {1.9f, 0, 0.7f}, {}},
    {Form::gable, pal::RED, {1.0f, 0.45f, 0.9f}, {1.9f, 0.52f, 0.7f}, {}},
    {Form::ball, pal::INK, {0.36f, 0.44f, 0.2f}, {1.9f, 0.2f, 1.04f}, {}},
    {Form::rod, pal::RED, {0.26f, 0.1f, 0.26f}, {1.4f, 0, 1.3f}, {}, 0.8f},
};
constexpr Piece NO_EXTRAS[] = {{Form::box, pal::STONE, {0.2f, 0.1f, 0.2f}, {}, {}}};

std::span<const Piece> extras_of(const Trade &t) {
    return t.trade[0] == 'c' ? std::span<const Piece>(CARPENTER)
         : t.trade[0] == 'e' ? std::span<const Piece>(ELECTRIC)
         : t.trade[0] == 'v' ? std::span<const Piece>(VET) : std::span<const Piece>(NO_EXTRAS);
}

constexpr Piece DAMAGE_CARPENTER[] = {
    // A fence that gave way: one post stands, one leans, its rails are snapped into splinters.
    {Form::post, pal::WOOD_DARK, {0.22f, 0.95f, 0.22f}, {-0.62f, 0, 0}, {0, 0, 4}, 0.85f},
    {Form::cone, pal::CREAM, {0.26f, 0.16f, 0.26f}, {-0.69f, 0.94f, 0}, {0, 0, 4}},
    {Form::post, pal::WOOD_DARK, {0.22f, 0.90f, 0.22f}, {0.55f, 0, 0}, {0, 0, -34}, 0.85f},
    {Form::box, pal::WOOD_LIGHT, {0.62f, 0.16f, 0.10f}, {-0.36f, 0.60f, 0.10f}, {0, 0, -12}},
    {Form::cone, pal::CREAM, {0.15f, 0.34f, 0.09f}, {-0.08f, 0.62f, 0.10f}, {0, 0, -104}},
    {Form::box, pal::WOOD_LIGHT, {0.55f, 0.16f, 0.10f}, {-0.34f, 0.26f, 0.10f}, {0, 0, 18}},
    {Form::cone, pal::CREAM, {0.15f, 0.30f, 0.09f}, {-0.10f, 0.42f, 0.10f}, {0, 0, -70}},
    {Form::box, pal::WOOD_LIGHT, {0.85f, 0.10f, 0.18f}, {0.30f, 0.0f, 0.42f}, {0, 24, 0}},
    {Form::cone, pal::CREAM, {0.16f, 0.32f, 0.10f}, {-0.08f, 0.05f, 0.59f}, {0, 24, 92}},
    {Form::rod, pal::METAL, {0.05f, 0.30f, 0.05f}, {0.18f, 0.08f, 0.42f}, {0, 0, 24}},
};
constexpr Piece DAMAGE_ELECTRIC[] = {
    {Form::box, pal::STONE_DARK, {0.5f, 0.7f, 0.3f}, {0, 0, 0}, {0, 0, -9}},
    {Form::box, pal::INK, {0.36f, 0.4f, 0.34f}, {0, 0.18f, 0.02f}, {0, 0, -9}},
    {Form::rod, pal::ORANGE, {0.07f, 0.6f, 0.07f}, {0.2f, 0.35f, 0.1f}, {0, 0, -70}},
    {Form::rod, pal::BLUE, {0.07f, 0.55f, 0.07f}, {-0.15f, 0.4f, 0.12f}, {0, 0, 60}},
    {Form::cone, pal::YELLOW, {0.2f, 0.5f, 0.1f}, {0.05f, 0.6f, 0.1f}, {0, 0, 24}},
    {Form::cone, pal::YELLOW, {0.2f, 0.5f, 0.1f}, {-0.02f, 0.68f, 0.1f}, {0, 0, -156}},
};
constexpr Piece DAMAGE_VET[] = {
    // The animal doctor's case with a green cross, a fever thermometer against it and a roll of bandage.
    {Form::box, 0x2f9d8a, {0.90f, 0.14f, 0.60f}, {-0.10f, 0, 0}, {}, 0.96f},
    {Form::box, pal::WHITE, {0.86f, 0.40f, 0.56f}, {-0.10f, 0.10f, 0}, {}, 0.9f},
    {Form::box, pal::GREEN, {0.48f, 0.06f, 0.17f}, {-0.10f, 0.48f, 0}, {}},
    {Form::box, pal::GREEN, {0.17f, 0.06f, 0.48f}, {-0.10f, 0.48f, 0}, {}},
    {Form::box, pal::METAL, {0.26f, 0.12f, 0.08f}, {-0.10f, 0.30f, 0.29f}, {}},
    {Form::rod, pal::WHITE, {0.15f, 0.84f, 0.15f}, {0.66f, 0.10f, 0.14f}, {0, 0, 16}},
    {Form::rod, pal::RED, {0.07f, 0.42f, 0.07f}, {0.69f, 0.14f, 0.21f}, {0, 0, 16}},
    {Form::ball, pal::RED, {0.28f, 0.28f, 0.28f}, {0.66f, 0.14f, 0.14f}, {}},
    {Form::rod, pal::CREAM, {0.34f, 0.22f, 0.34f}, {-0.50f, 0, 0.48f}, {}},
    {Form::rod, pal::SAND, {0.14f, 0.24f, 0.14f}, {-0.50f, 0, 0.48f}, {}},
};
constexpr Piece DAMAGE_PLUMBER[] = {
    {Form::rod, pal::BLUE, {1.2f, 0.04f, 0.9f}, {}, {}, 0.9f},
    {Form::rod, pal::SKY, {0.7f, 0.05f, 0.5f}, {0.1f, 0.01f, 0.05f}, {}, 0.8f},
    {Form::rod, 0xc07a3c, {0.18f, 0.6f, 0.18f}, {-0.1f, 0, -0.1f}, {}},
    {Form::rod, 0xc07a3c, {0.18f, 0.45f, 0.18f}, {-0.1f, 0.55f, -0.1f}, {0, 0, -62}},
    {Form::cone, pal::SKY, {0.3f, 0.55f, 0.3f}, {0.4f, 0.85f, -0.1f}, {0, 0, -150}},
    {Form::ball, pal::SKY, {0.14f, 0.18f, 0.14f}, {0.55f, 0.5f, 0.05f}, {}},
};
constexpr Piece DAMAGE_APPLIANCE[] = {
    {Form::box, pal::WHITE, {0.7f, 0.8f, 0.6f}, {0, 0.03f, 0}, {0, 10, -8}},
    {Form::ball, pal::INK, {0.46f, 0.46f, 0.16f}, {0.05f, 0.42f, 0.28f}, {0, 10, 0}},
    {Form::box, pal::ORANGE, {0.6f, 0.12f, 0.1f}, {-0.02f, 0.66f, 0.28f}, {0, 10, -8}},
    {Form::ball, pal::STONE_DARK, {0.34f, 0.3f, 0.3f}, {0.15f, 1.0f, 0}, {}},
    {Form::ball, pal::STONE, {0.26f, 0.24f, 0.24f}, {0.0f, 1.22f, 0}, {}},
    {Form::rod, pal::STONE_DARK, {0.16f, 0.05f, 0.16f}, {0.55f, 0, 0.3f}, {}},
};
struct Damage { const char *trade; std::span<const Piece> rows; };
constexpr Damage DAMAGES[] = {
    {"carpenter", DAMAGE_CARPENTER}, {"electric", DAMAGE_ELECTRIC}, {"vet", DAMAGE_VET},
    {"plumber", DAMAGE_PLUMBER}, {"appliance", DAMAGE_APPLIANCE},
};

constexpr Piece WALL_LAMP[] = {
    {Form::box, 0x35505a, {0.24f, 0.40f, 0.08f}, {0, 0, -0.02f}, {}},
    {Form::box, 0x35505a, {0.09f, 0.08f, 0.36f}, {0, 0.30f, 0.14f}, {}},
    {Form::rod, 0xd9a63a, {0.50f, 0.20f, 0.50f}, {0, 0.16f, 0.30f}, {}, 0.3f},
};
constexpr Piece ROAD_POST[] = {
    {Form::rod, pal::STONE_DARK, {0.42f, 0.22f, 0.42f}, {}, {}, 0.7f},
    {Form::rod, 0x35505a, {0.16f, 2.7f, 0.16f}, {0, 0.15f, 0}, {}, 0.7f},
    {Form::box, 0x35505a, {0.10f, 0.10f, 0.8f}, {0, 2.75f, 0.28f}, {}},
    {Form::rod, 0x35505a, {0.50f, 0.22f, 0.50f}, {0, 2.58f, 0.58f}, {}, 0.35f},
    {Form::ball, 0xe0a92a, {0.18f, 0.18f, 0.18f}, {0, 2.92f, 0}, {}},
};
constexpr Piece HEATER[] = {
    {Form::box, pal::STONE_DARK, {0.9f, 0.14f, 0.42f}, {}, {}},
    {Form::box, 0x5a4046, {0.86f, 0.62f, 0.26f}, {0, 0.12f, -0.04f}, {}},
    {Form::box, pal::ORANGE, {0.74f, 0.09f, 0.12f}, {0, 0.22f, 0.08f}, {}},
    {Form::box, pal::YELLOW, {0.74f, 0.09f, 0.12f}, {0, 0.40f, 0.08f}, {}},
    {Form::box, pal::ORANGE, {0.74f, 0.09f, 0.12f}, {0, 0.58f, 0.08f}, {}},
    {Form::box, pal::METAL, {0.06f, 0.66f, 0.08f}, {-0.25f, 0.12f, 0.15f}, {}},
    {Form::box, pal::METAL, {0.06f, 0.66f, 0.08f}, {0, 0.12f, 0.15f}, {}},
    {Form::box, pal::METAL, {0.06f, 0.66f, 0.08f}, {0.25f, 0.12f, 0.15f}, {}},
};
constexpr Piece SENTRY_BOX[] = {
    {Form::box, pal::STONE, {1.3f, 0.14f, 1.3f}, {}, {}},
    {Form::box, 0x26324a, {1.1f, 2.0f, 0.14f}, {0, 0.1f, -0.46f}, {}},
    {Form::box, pal::WHITE, {0.14f, 2.0f, 0.95f}, {-0.5f, 0.1f, 0}, {}},
    {Form::box, pal::WHITE, {0.14f, 2.0f, 0.95f}, {0.5f, 0.1f, 0}, {}},
    {Form::box, pal::RED, {0.17f, 0.36f, 1.0f}, {-0.5f, 0.35f, 0}, {20, 0, 0}},
    {Form::box, pal::RED, {0.17f, 0.36f, 1.0f}, {0.5f, 0.35f, 0}, {20, 0, 0}},
    {Form::box, pal::RED, {0.17f, 0.36f, 1.0f}, {-0.5f, 1.2f, 0}, {20, 0, 0}},
    {Form::box, pal::RED, {0.17f, 0.36f, 1.0f}, {0.5f, 1.2f, 0}, {20, 0, 0}},
    {Form::box, 0x1f3a68, {1.3f, 0.22f, 1.2f}, {0, 2.05f, 0}, {}},
    {Form::cone, 0x1f3a68, {1.5f, 0.75f, 1.4f}, {0, 2.22f, 0}, {0, 22, 0}},
    {Form::ball, pal::YELLOW, {0.2f, 0.2f, 0.2f}, {0, 2.98f, 0}, {}},
    {Form::box, pal::WOOD, {0.9f, 0.08f, 0.3f}, {0, 0.95f, 0.3f}, {}},
};
constexpr Piece BRAZIER[] = {
    {Form::rod, pal::INK, {0.5f, 0.34f, 0.5f}, {0, 0.42f, 0}, {}, 1.3f},
    {Form::rod, pal::STONE_DARK, {0.68f, 0.07f, 0.68f}, {0, 0.72f, 0}, {}},
    {Form::rod, pal::INK, {0.08f, 0.5f, 0.08f}, {0.2f, 0, 0.12f}, {}},
    {Form::rod, pal::INK, {0.08f, 0.5f, 0.08f}, {-0.2f, 0, 0.12f}, {}},
    {Form::rod, pal::INK, {0.08f, 0.5f, 0.08f}, {0, 0, -0.2f}, {}},
    {Form::rod, pal::WOOD_DARK, {0.14f, 0.5f, 0.14f}, {-0.2f, 0.72f, 0}, {0, 0, -60}},
    {Form::rod, pal::WOOD, {0.14f, 0.5f, 0.14f}, {0.1f, 0.72f, -0.18f}, {60, 20, 0}},
};
constexpr Piece FLAME[] = {
    {Form::cone, pal::ORANGE, {0.44f, 0.66f, 0.44f}, {0, 0.74f, 0}, {}},
    {Form::cone, pal::YELLOW, {0.26f, 0.46f, 0.26f}, {0.06f, 0.76f, 0.08f}, {0, 0, -8}},
    {Form::cone, pal::RED, {0.24f, 0.38f, 0.24f}, {-0.12f, 0.74f, 0.06f}, {0, 0, 14}},
};
constexpr Piece BATON[] = {
    {Form::rod, pal::INK, {0.08f, 0.5f, 0.08f}, {0, -0.1f, 0}, {}, 0.85f},
    {Form::rod, pal::BROWN, {0.09f, 0.14f, 0.09f}, {0, -0.12f, 0}, {}},
    {Form::box, pal::INK, {0.16f, 0.06f, 0.06f}, {0.06f, 0.04f, 0}, {}},
};
constexpr Piece SIGN_ALERT[] = {
    {Form::rod, pal::WOOD_DARK, {0.12f, 1.0f, 0.12f}, {}, {}},
    {Form::gable, pal::INK, {1.06f, 0.94f, 0.10f}, {0, 0.84f, 0}, {}},
    {Form::gable, pal::YELLOW, {0.84f, 0.74f, 0.14f}, {0, 0.90f, 0}, {}},
    {Form::box, pal::INK, {0.12f, 0.30f, 0.18f}, {0, 1.16f, 0}, {}, 1.3f},
    {Form::ball, pal::INK, {0.14f, 0.12f, 0.2f}, {0, 1.04f, 0}, {}},
};
// clang-format on

struct StaffRow {
    const char *role, *skin, *shirt, *pants, *cap, *hat, *extras; // extras: keys that are set, with blanks between
};
// clang-format off
constexpr StaffRow STAFF[] = {
    {"security",    "e0ac69", "1f3a68", "26324a", "1f3a68", "",      ""},
    {"night_guard", "c68642", "26324a", "1f3a68", "26324a", "",      "beard"},
    {"butcher",     "f1c27d", "e8ecef", "455a64", "b8323f", "",      "apron blood"},
    {"griller",     "c68642", "2b2630", "455a64", "",       "chef",  "apron"},
    {"waiter",      "f1c27d", "2b2630", "2b2630", "",       "",      "apron"},
    {"waterman",    "e0ac69", "29a0d8", "1f4f7a", "29a0d8", "",      "overalls"},
    {"thief",       "d9a877", "3a3742", "2b2630", "3a3742", "",      "stripes"},
};
// clang-format on

const Trade &trade_of(const String &name) {
    for (const Trade &t : TRADES) {
        if (name == String(t.trade)) {
            return t;
        }
    }
    return TRADES[0];
}

Node3D *hut_tree(const Trade &t) {
    Node3D *at = memnew(Node3D);
    const Vector3 home(0, 0, -0.5f);
    put(at, bevel_box(Vector3(5.0f, 0.08f, 4.0f), 0.03f), pal::tone(pal::SOIL, 0.25f), Vector3(0, 0, 0.2f));
    walls(at, home, Vector3(2.7f, 1.65f, 2.0f), 1.0f, col(t.wall), pal::tone(t.roof, 0.2f));
    roof(at, home + Vector3(0, 1.65f, 0), 1.4f, 1.05f, 2.1f, col(t.roof));
    double_door(at, home + Vector3(-0.45f, 0.05f, 1.02f), 0.85f, 1.15f, pal::tone(t.roof, 0.3f), col(pal::CREAM));
    window(at, home + Vector3(0.75f, 0.95f, 1.04f), 0.55f, 0.5f, col(pal::CREAM));
    // The board that the letters of the lit sign stand on.
    put(at, bevel_box(Vector3(2.5f, 0.52f, 0.16f), 0.05f), pal::INK, home + Vector3(0, 1.72f, 1.2f));
    pieces::put_all(at, extras_of(t));
    return at;
}

Node3D *office_tree() {
    Node3D *at = memnew(Node3D);
    const Vector3 home(0, 0, -0.6f);
    put(at, bevel_box(Vector3(5.2f, 0.1f, 4.0f), 0.03f), pal::STONE_DARK, Vector3(0, 0, 0));
    put(at, bevel_box(Vector3(4.0f, 1.75f, 2.3f), 0.06f, 0.98f), 0xc7d0dc, home + Vector3(0, 0.9f, 0));
    put(at, bevel_box(Vector3(4.1f, 0.45f, 2.4f), 0.05f), 0x1f3a68, home + Vector3(0, 0.25f, 0));
    put(at, bevel_box(Vector3(4.4f, 0.26f, 2.7f), 0.06f), 0x26324a, home + Vector3(0, 1.88f, 0));
    // Watch tower with a searchlight, bars before the window, a shield over the door.
    put(at, bevel_box(Vector3(1.3f, 2.2f, 1.3f), 0.05f, 0.92f), 0xaab6c6, home + Vector3(1.25f, 2.9f, -0.3f));
    put(at, bevel_box(Vector3(1.36f, 0.46f, 1.36f), 0.05f), pal::SKY, home + Vector3(1.25f, 3.55f, -0.3f));
    put(at, shapes::loft({{0, 1.0f, 1.0f}, {0.55f, 0.12f, 0.12f}}, 8, 0.8f), 0x1f3a68,
        home + Vector3(1.25f, 3.95f, -0.3f));
    put(at, shapes::loft({{0, 0.2f, 0.2f}, {0.4f, 0.34f, 0.34f}}, 9), pal::YELLOW, home + Vector3(1.25f, 3.1f, 0.35f),
        Vector3(70, 0, 0));
    put(at, bevel_box(Vector3(0.8f, 1.3f, 0.14f), 0.03f), 0x1f3a68, home + Vector3(0, 0.72f, 1.15f));
    window(at, home + Vector3(-1.3f, 1.1f, 1.16f), 0.7f, 0.6f, col(0x26324a));
    for (const float x : {-1.5f, -1.3f, -1.1f}) {
        put(at, bevel_box(Vector3(0.07f, 0.7f, 0.07f), 0.02f), pal::INK, home + Vector3(x, 1.1f, 1.3f));
    }
    put(at,
        shapes::extrude({Vector2(-0.42f, 0.2f), Vector2(0, -0.5f), Vector2(0.42f, 0.2f), Vector2(0.4f, 0.5f),
                         Vector2(0, 0.6f), Vector2(-0.4f, 0.5f)},
                        0.16f),
        pal::YELLOW, home + Vector3(0, 2.5f, 1.2f));
    IconModels::star(0.3f, 0.13f, 0.12f, col(0x1f3a68), home + Vector3(0, 2.58f, 1.3f), at);
    for (const float x : {-2.2f, 2.2f}) {
        put(at, shapes::loft({{0, 0.22f, 0.22f}, {0.12f, 0.14f, 0.14f}, {0.7f, 0, 0}}, 8), pal::ORANGE,
            Vector3(x, 0.04f, 1.5f));
    }
    return at;
}

// A lamp: its body baked, its bulb a node of its own that can be darkened.
Node3D *lamp(const char *key, std::span<const Piece> rows, float size, const Vector3 &bulb_at) {
    Node3D *root = memnew(Node3D);
    root->add_child(Models::bake(key, Models::builder([rows] { return pieces::tree_of(rows); })));
    // A node of plain paint, so that one lamp can go dark by another material.
    MeshInstance3D *bulb =
        Models::bake(String(key) + "_bulb", Models::builder([size] {
                         Node3D *at = memnew(Node3D);
                         put(at, shapes::ball(Vector3(size, size, size), 8, 4), pal::CREAM, Vector3());
                         return at;
                     }),
                     false);
    bulb->set_material_override(Models::color_material(col(pal::CREAM)));
    bulb->set_position(bulb_at);
    root->add_child(bulb);
    bulb->set_name("Bulb");
    return root;
}

} // namespace

Node3D *ServiceModels::hut(const String &trade) {
    const Trade &t = trade_of(trade);
    Node3D *root = memnew(Node3D);
    root->add_child(Models::bake(String("service_") + t.trade, Models::builder([&t] { return hut_tree(t); })));
    Node3D *glow = shapes::joint(root, "NightGlow", Vector3(0, 1.72f, 0.80f));
    Label3D *sign = Models::label3d(t.title, 40, col(pal::YELLOW), Vector3(), glow, false, 8);
    sign->set_rotation_degrees(Vector3());
    return root;
}

Dictionary ServiceModels::staff_look(const String &trade) {
    Dictionary look;
    look["skin"] = "e0ac69";
    look["hair"] = "3e2723";
    for (const StaffRow &row : STAFF) {
        if (trade == String(row.role)) {
            look["skin"] = row.skin;
            look["shirt"] = row.shirt;
            look["pants"] = row.pants;
            if (row.cap[0] != '\0') {
                look["cap"] = row.cap;
            }
            if (row.hat[0] != '\0') {
                look["hat"] = row.hat;
            }
            const PackedStringArray extras = String(row.extras).split(" ", false);
            for (int64_t i = 0; i < extras.size(); i++) {
                look[extras[i]] = true;
            }
            if (trade == String("thief")) {
                look["acc"] = "mask";
            }
            return look;
        }
    }
    const Trade &t = trade_of(trade);
    look["shirt"] = t.shirt;
    look["pants"] = "37474f";
    if (String(t.hat) == String("cap")) {
        look["cap"] = t.shirt;
    } else if (t.hat[0] != '\0') {
        look["hat"] = t.hat;
    }
    if (trade == String("vet")) {
        look["apron"] = true;
        look["acc"] = "glasses";
    } else {
        look["overalls"] = true;
    }
    return look;
}

Node3D *ServiceModels::damage(const String &trade) {
    const Damage *found = &DAMAGES[0];
    for (const Damage &row : DAMAGES) {
        if (trade == String(row.trade)) {
            found = &row;
        }
    }
    return Models::bake(String("damage_") + found->trade,
                        Models::builder([found] { return pieces::tree_of(found->rows); }));
}

Node3D *ServiceModels::wall_lamp() {
    return lamp("wall_lamp", WALL_LAMP, 0.14f, Vector3(0, 0.13f, 0.30f));
}

Node3D *ServiceModels::road_post() {
    return lamp("road_post", ROAD_POST, 0.16f, Vector3(0, 2.55f, 0.58f));
}

Node3D *ServiceModels::heater() {
    return Models::bake("heater", Models::builder([] { return pieces::tree_of(HEATER); }));
}

Node3D *ServiceModels::security_office() {
    return Models::bake("security_office", Models::fn_node(&office_tree));
}

Node3D *ServiceModels::sentry_box() {
    return Models::bake("sentry_box", Models::builder([] { return pieces::tree_of(SENTRY_BOX); }));
}

Node3D *ServiceModels::brazier() {
    Node3D *root = memnew(Node3D);
    root->add_child(Models::bake("brazier", Models::builder([] { return pieces::tree_of(BRAZIER); })));
    MeshInstance3D *flame =
        Models::bake("brazier_flame", Models::builder([] { return pieces::tree_of(FLAME); }), false, true);
    flame->set_name("Flame");
    root->add_child(flame);
    shapes::joint(root, "Glow", Vector3(0, 1.1f, 0));
    return root;
}

Node3D *ServiceModels::prop(const String &key) {
    if (key == String("guard_baton")) {
        return Models::bake(key, Models::builder([] { return pieces::tree_of(BATON); }));
    }
    if (key == String("sign_alert")) {
        return Models::bake(key, Models::builder([] { return pieces::tree_of(SIGN_ALERT); }));
    }
    if (key == String("guard_badge")) {
        return Models::bake(key, Models::builder([] {
                                Node3D *at = memnew(Node3D);
                                IconModels::star(0.12f, 0.055f, 0.05f, col(pal::YELLOW), Vector3(), at);
                                return at;
                            }));
    }
    return nullptr;
}

} // namespace tilm
