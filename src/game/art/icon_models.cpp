#include "game/art/icon_models.h"

#include <cmath>
#include <vector>

#include "game/art/house_parts.h"
#include "game/art/item_models.h"
#include "game/art/model_rigs.h"
#include "game/art/models.h"
#include "game/art/producer_houses.h"
#include "game/art/shapes.h"

namespace tilm {
namespace {

using pal::col;
using shapes::ball;
using shapes::bevel_box;
using shapes::loft;
using shapes::put;

Ref<ArrayMesh> star_mesh(float outer, float inner, float thick) {
    std::vector<Vector2> line;
    for (int i = 0; i < 10; i++) {
        const float a = 1.5708f + float(i) * 0.62832f;
        const float r = i % 2 ? inner : outer;
        line.push_back(Vector2(std::cos(a) * r, std::sin(a) * r));
    }
    return shapes::extrude(line, thick);
}

Node3D *spot(Node3D *at, const Vector3 &pos, float scale, float yaw = 0) {
    Node3D *node = shapes::joint(at, "Spot", pos);
    node->set_scale(Vector3(scale, scale, scale));
    node->set_rotation_degrees(Vector3(0, yaw, 0));
    return node;
}

void good(Node3D *at, const String &kind, const Vector3 &pos, float scale, float yaw = 0) {
    Node3D *tree = item_models::farm_good(kind);
    for (const auto family : {item_models::made_good, item_models::dish, item_models::money}) {
        if (tree == nullptr) {
            tree = family(kind);
        }
    }
    if (tree != nullptr) {
        spot(at, pos, scale, yaw)->add_child(tree);
    }
}

void figure(Node3D *at, const char *shirt, const char *hat, const char *dress, const Vector3 &pos, float scale,
            float yaw = 180) {
    Dictionary look;
    look["shirt"] = shirt;
    look["pants"] = "3f5f9a";
    if (*hat != 0) {
        look["hat"] = hat;
    }
    if (*dress != 0) {
        look[dress] = true;
    }
    spot(at, pos, scale, yaw)->add_child(model_rigs::person_tree(look));
}

void animal(Node3D *at, const String &product, const Vector3 &pos, float scale, float yaw) {
    if (Node3D *tree = model_rigs::animal_tree(product)) {
        spot(at, pos, scale, yaw)->add_child(tree);
    }
}

void producer(Node3D *at, const String &product) {
    const bool big = product == String("milk") || product == String("calf") || product == String("wool");
    put(at, loft({{0, 0.75f, 0.6f}, {0.05f, 0.7f, 0.55f}}, 12), pal::SAND, Vector3());
    if (product == String("apple") || product == String("orange")) {
        house_parts::orchard_tree(at, Vector3(-0.15f, 0.03f, -0.1f), 0.6f, col(pal::LEAF),
                                  col(product == String("apple") ? pal::RED : pal::ORANGE), 3);
        good(at, product, Vector3(0.45f, 0.05f, 0.3f), 0.9f);
    } else if (product == String("bean")) {
        good(at, product, Vector3(0, 0.05f, 0), 1.7f);
    } else {
        animal(at, product, Vector3(big ? -0.1f : -0.22f, 0.04f, 0),
               big                          ? 0.52f
               : product == String("honey") ? 1.5f
                                            : 0.95f,
               145);
        good(at, product == String("calf") || product == String("hen") ? String("hay") : product,
             Vector3(0.48f, 0.04f, 0.3f), 0.85f, 20);
    }
}

void stall(Node3D *at, const String &product) {
    put(at, bevel_box(Vector3(1.2f, 0.36f, 0.45f), 0.04f), pal::WOOD_LIGHT, Vector3(0, 0.18f, 0.1f));
    for (const float x : {-0.55f, 0.55f}) {
        put(at, bevel_box(Vector3(0.09f, 0.95f, 0.09f), 0.02f), pal::WOOD_DARK, Vector3(x, 0.48f, -0.2f));
    }
    for (int i = 0; i < 5; i++) {
        put(at, bevel_box(Vector3(0.27f, 0.09f, 0.62f), 0.03f), i % 2 ? pal::WHITE : pal::RED,
            Vector3(-0.54f + 0.27f * float(i), 0.98f, -0.12f), Vector3(22, 0, 0));
    }
    good(at, product, Vector3(0, 0.36f, 0.14f), 0.85f);
}

void gear(Node3D *at, const Vector3 &pos, float radius) {
    put(at, loft({{-0.09f, radius * 0.8f, radius * 0.8f}, {0.09f, radius * 0.8f, radius * 0.8f}}, 10), pal::STONE_DARK,
        pos, Vector3(90, 0, 0));
    for (int i = 0; i < 8; i++) {
        const float a = float(i) * 0.785f;
        put(at, bevel_box(Vector3(radius * 0.34f, radius * 0.4f, 0.18f), 0.02f), pal::STONE_DARK,
            pos + Vector3(std::sin(a), std::cos(a), 0) * radius * 0.9f, Vector3(0, 0, -float(i) * 45));
    }
    put(at, loft({{-0.11f, radius * 0.35f, radius * 0.35f}, {0.11f, radius * 0.35f, radius * 0.35f}}, 8), pal::YELLOW,
        pos, Vector3(90, 0, 0));
}

void machine(Node3D *at, const String &product) {
    put(at, bevel_box(Vector3(0.95f, 0.7f, 0.6f), 0.05f), pal::PLASTER, Vector3(-0.12f, 0.35f, -0.12f));
    house_parts::roof(at, Vector3(-0.12f, 0.68f, -0.12f), 0.5f, 0.3f, 0.6f, col(pal::RED));
    gear(at, Vector3(0.42f, 0.34f, 0.26f), 0.26f);
    good(at, product == String("juice") ? String("apple_juice") : product, Vector3(-0.32f, 0.02f, 0.42f), 0.9f);
}

void hauler(Node3D *at, const String &) {
    figure(at, "fb8c00", "cap", "", Vector3(0, 0, 0), 0.55f, 160);
    house_parts::crate(at, Vector3(0.08f, 0.42f, 0.36f), 0.75f, 20);
}

void workers(Node3D *at, const String &) {
    figure(at, "7cb342", "straw", "overalls", Vector3(-0.25f, 0, 0), 0.52f, 165);
    good(at, "wheat", Vector3(0.38f, 0, 0.1f), 1.3f);
}

void crew(Node3D *at, const String &) {
    figure(at, "ffffff", "chef", "apron", Vector3(-0.3f, 0, 0), 0.5f, 165);
    figure(at, "ffffff", "chef", "apron", Vector3(0.3f, 0, 0.1f), 0.5f, 195);
}

void waterman(Node3D *at, const String &) {
    figure(at, "3f8fe0", "cap", "", Vector3(-0.25f, 0, 0), 0.52f, 165);
    good(at, "water", Vector3(0.38f, 0, 0.15f), 1.3f);
}

void big_stack(Node3D *at, const String &) {
    for (int i = 0; i < 3; i++) {
        house_parts::crate(at, Vector3(-0.08f + 0.05f * float(i), 0.3f * float(i), 0), 0.75f, 12.0f * float(i) - 8);
    }
    put(at, loft({{0, 0.13f, 0.08f}, {0.32f, 0.13f, 0.08f}}, 4, 0.9f), pal::GREEN, Vector3(0.5f, 0.1f, 0.25f));
    put(at, shapes::extrude({Vector2(-0.28f, 0), Vector2(0.28f, 0), Vector2(0, 0.3f)}, 0.14f), pal::GREEN,
        Vector3(0.5f, 0.42f, 0.25f));
}

void shoes(Node3D *at, const String &) {
    for (int i = 0; i < 2; i++) {
        Node3D *shoe = spot(at, Vector3(-0.22f + 0.42f * float(i), 0, 0.08f - 0.16f * float(i)), 1.0f, 205);
        put(shoe, bevel_box(Vector3(0.32f, 0.13f, 0.86f), 0.05f), pal::WHITE, Vector3(0, 0.07f, 0));
        put(shoe,
            loft({{-0.38f, 0.10f, 0.10f, 0, -0.03f},
                  {-0.2f, 0.14f, 0.13f},
                  {0.12f, 0.14f, 0.16f, 0, 0.02f},
                  {0.36f, 0.13f, 0.2f, 0, 0.06f}},
                 8, 0.4f),
            pal::RED, Vector3(0, 0.23f, 0), Vector3(90, 0, 0));
        put(shoe, loft({{0, 0.16f, 0.16f}, {0.2f, 0.14f, 0.15f}}, 8, 0.5f), pal::RED, Vector3(0, 0.28f, 0.24f));
        put(shoe, bevel_box(Vector3(0.34f, 0.09f, 0.28f), 0.03f), pal::YELLOW, Vector3(0, 0.3f, 0.02f),
            Vector3(-18, 0, 0));
    }
}

void magnet(Node3D *at, const String &) {
    const Ref<ArrayMesh> bow = shapes::arc(0.48f, 0.24f, 0.24f, 3.1416f, 8);
    put(at, bow, pal::RED, Vector3(0, 0.5f, 0), Vector3(-18, 0, 0));
    for (const float x : {-0.36f, 0.36f}) {
        put(at, bevel_box(Vector3(0.24f, 0.28f, 0.24f), 0.02f), pal::RED, Vector3(x, 0.38f, 0.05f));
        put(at, bevel_box(Vector3(0.25f, 0.2f, 0.25f), 0.02f), pal::METAL, Vector3(x, 0.16f, 0.09f));
    }
    good(at, "bill", Vector3(0.02f, 0, 0.25f), 0.8f, 25);
}

void feed(Node3D *at, const String &) {
    Node3D *bag = spot(at, Vector3(-0.1f, 0, 0), 1.9f, 10);
    item_models::sack(bag, col(pal::CREAM), col(pal::RED), 0.2f, 0.4f);
    good(at, "corn", Vector3(0.42f, 0, 0.25f), 1.1f, 20);
    put(at, star_mesh(0.17f, 0.08f, 0.06f), pal::YELLOW, Vector3(-0.1f, 0.35f, 0.36f));
}

void land(Node3D *at, const String &) {
    put(at, bevel_box(Vector3(1.25f, 0.14f, 0.95f), 0.05f), pal::SOIL, Vector3(0, 0.07f, 0));
    put(at, bevel_box(Vector3(1.25f, 0.08f, 0.95f), 0.04f), pal::GRASS, Vector3(0, 0.17f, 0));
    put(at, loft({{0, 0.05f, 0.05f}, {1.05f, 0.04f, 0.04f}}, 6), pal::WOOD_DARK, Vector3(0.05f, 0.2f, 0));
    put(at, shapes::extrude({Vector2(0, 0), Vector2(0.58f, 0.2f), Vector2(0, 0.42f)}, 0.08f), pal::RED,
        Vector3(0.08f, 0.82f, 0));
    house_parts::bush(at, Vector3(-0.38f, 0.18f, 0.1f), 0.26f, col(pal::LEAF), 2);
    house_parts::flowers(at, Vector3(0.38f, 0.18f, 0.25f), 0.14f, 3, 3);
}

void truck(Node3D *at, const String &) {
    Node3D *car = spot(at, Vector3(0, 0, 0), 1.0f, -28);
    put(car, bevel_box(Vector3(0.8f, 0.52f, 0.55f), 0.04f), pal::CREAM, Vector3(-0.2f, 0.45f, 0));
    put(car, bevel_box(Vector3(0.42f, 0.42f, 0.52f), 0.07f, 0.85f), pal::BLUE, Vector3(0.42f, 0.38f, 0));
    put(car, bevel_box(Vector3(0.12f, 0.2f, 0.46f), 0.03f), pal::SKY, Vector3(0.58f, 0.47f, 0));
    for (const float x : {-0.4f, 0.4f}) {
        for (const float z : {-0.28f, 0.28f}) {
            put(car, loft({{-0.07f, 0.16f, 0.16f}, {0.07f, 0.16f, 0.16f}}, 9), pal::INK, Vector3(x, 0.16f, z),
                Vector3(90, 0, 0));
        }
    }
}

void depot(Node3D *at, const String &) {
    house_parts::crate(at, Vector3(-0.3f, 0, 0), 0.95f, 8);
    house_parts::crate(at, Vector3(0.3f, 0, 0.05f), 0.95f, -12);
    house_parts::crate(at, Vector3(0, 0.4f, 0), 0.95f, 20);
}

void belt(Node3D *at, const String &) {
    put(at, bevel_box(Vector3(1.3f, 0.16f, 0.55f), 0.05f), 0x37474f, Vector3(0, 0.2f, 0));
    for (const float z : {-0.3f, 0.3f}) {
        put(at, bevel_box(Vector3(1.3f, 0.2f, 0.09f), 0.03f), 0xfbc02d, Vector3(0, 0.22f, z));
    }
    house_parts::crate(at, Vector3(-0.3f, 0.28f, 0), 0.6f, 10);
    house_parts::crate(at, Vector3(0.32f, 0.28f, 0), 0.6f, -14);
}

void field(Node3D *at, const String &) {
    put(at, bevel_box(Vector3(1.2f, 0.14f, 0.9f), 0.05f), pal::SOIL, Vector3(0, 0.07f, 0));
    for (int i = 0; i < 3; i++) {
        good(at, "wheat", Vector3(-0.35f + 0.35f * float(i), 0.12f, 0.0f), 1.0f, 40.0f * float(i));
    }
}

void harvester(Node3D *at, const String &) {
    Node3D *car = spot(at, Vector3(0, 0, 0), 1.0f, -30);
    put(car, bevel_box(Vector3(0.7f, 0.38f, 0.5f), 0.05f), pal::ORANGE, Vector3(-0.05f, 0.42f, 0));
    put(car, bevel_box(Vector3(0.34f, 0.42f, 0.44f), 0.05f, 0.85f), pal::SKY, Vector3(0.1f, 0.78f, 0));
    put(car, bevel_box(Vector3(0.44f, 0.09f, 0.54f), 0.03f), pal::ORANGE, Vector3(0.1f, 1.02f, 0));
    for (const float z : {-0.3f, 0.3f}) {
        put(car, loft({{-0.08f, 0.28f, 0.28f}, {0.08f, 0.28f, 0.28f}}, 10), pal::INK, Vector3(0.2f, 0.28f, z),
            Vector3(90, 0, 0));
        put(car, loft({{-0.06f, 0.17f, 0.17f}, {0.06f, 0.17f, 0.17f}}, 9), pal::INK, Vector3(-0.34f, 0.17f, z),
            Vector3(90, 0, 0));
    }
    put(car, loft({{-0.45f, 0.17f, 0.17f}, {0.45f, 0.17f, 0.17f}}, 7), pal::YELLOW, Vector3(0.62f, 0.2f, 0),
        Vector3(90, 0, 0));
}

void tables(Node3D *at, const String &) {
    put(at, loft({{0.42f, 0.55f, 0.55f}, {0.52f, 0.55f, 0.55f}}, 12), pal::WOOD_LIGHT, Vector3());
    put(at, loft({{0, 0.22f, 0.22f}, {0.1f, 0.08f, 0.08f}, {0.45f, 0.08f, 0.08f}}, 8), pal::WOOD_DARK, Vector3());
    good(at, "breakfast", Vector3(0, 0.52f, 0), 1.1f);
}

void home(Node3D *at, const String &) {
    house_parts::walls(at, Vector3(0, 0, 0), Vector3(0.95f, 0.5f, 0.7f), 0.36f, col(pal::PLASTER), col(pal::WOOD));
    house_parts::roof(at, Vector3(0, 0.5f, 0), 0.5f, 0.38f, 0.75f, col(pal::BLUE));
    put(at, bevel_box(Vector3(0.24f, 0.4f, 0.09f), 0.02f), pal::WOOD_DARK, Vector3(0, 0.22f, 0.36f));
}

void plate_of(Node3D *at, const String &product) {
    put(at, loft({{0, 0.62f, 0.62f}, {0.07f, 0.72f, 0.72f}, {0.05f, 0.5f, 0.5f}}, 14), pal::WHITE, Vector3());
    good(at, product.is_empty() ? String("burger") : product, Vector3(0, 0.04f, 0), 1.9f);
}

void waiter(Node3D *at, const String &) {
    figure(at, "2b2630", "", "apron", Vector3(-0.1f, 0, 0), 0.55f, 170);
    good(at, "breakfast", Vector3(0.42f, 0.35f, 0.2f), 0.9f);
}

void coffee_house(Node3D *at, const String &) {
    put(at, loft({{0, 0.3f, 0.3f}, {0.1f, 0.38f, 0.38f}, {0.6f, 0.42f, 0.42f}}, 10), pal::WHITE, Vector3(-0.05f, 0, 0));
    put(at, loft({{0.55f, 0.36f, 0.36f}, {0.62f, 0.36f, 0.36f}}, 10), pal::CHOCOLATE, Vector3(-0.05f, 0, 0));
    put(at, bevel_box(Vector3(0.3f, 0.3f, 0.12f), 0.05f), pal::WHITE, Vector3(0.46f, 0.35f, 0));
    for (int i = 0; i < 2; i++) {
        put(at, ball(Vector3(0.07f, 0.16f, 0.07f), 6, 4), pal::CREAM,
            Vector3(-0.15f + 0.2f * float(i), 0.85f + 0.1f * float(i), 0));
    }
}

void canteen(Node3D *at, const String &) {
    put(at, loft({{0.05f, 0.45f, 0.45f}, {0.2f, 0.55f, 0.55f}, {0.45f, 0.58f, 0.58f}}, 11), pal::METAL, Vector3());
    put(at, loft({{0.43f, 0.52f, 0.52f}, {0.48f, 0.5f, 0.5f}}, 11), pal::ORANGE, Vector3());
    put(at, loft({{0, 0.04f, 0.04f}, {0.75f, 0.05f, 0.05f}}, 6), pal::WOOD, Vector3(0.15f, 0.4f, 0),
        Vector3(0, 0, -28));
}

void wrench(Node3D *at, const String &) {
    Node3D *tool = spot(at, Vector3(0, 0.5f, 0), 1.0f);
    tool->set_rotation_degrees(Vector3(-25, 0, -35));
    put(tool, bevel_box(Vector3(0.2f, 0.9f, 0.14f), 0.04f), pal::RED, Vector3());
    put(tool,
        shapes::extrude({Vector2(-0.12f, -0.1f), Vector2(0.12f, -0.1f), Vector2(0.28f, 0.1f), Vector2(0.26f, 0.34f),
                         Vector2(0.12f, 0.34f), Vector2(0.1f, 0.16f), Vector2(-0.1f, 0.16f), Vector2(-0.12f, 0.34f),
                         Vector2(-0.26f, 0.34f), Vector2(-0.28f, 0.1f)},
                        0.16f),
        pal::METAL, Vector3(0, 0.48f, 0));
    gear(at, Vector3(0.34f, 0.3f, 0.2f), 0.22f);
}

void shield(Node3D *at, const String &) {
    const std::vector<Vector2> line = {Vector2(0, -0.1f), Vector2(0.34f, 0.22f),  Vector2(0.42f, 0.82f),
                                       Vector2(0, 0.98f), Vector2(-0.42f, 0.82f), Vector2(-0.34f, 0.22f)};
    std::vector<Vector2> inner;
    for (const Vector2 &p : line) {
        inner.push_back(Vector2(p.x * 0.78f, (p.y - 0.45f) * 0.78f + 0.45f));
    }
    put(at, shapes::extrude(line, 0.18f), pal::METAL, Vector3(0, 0.12f, 0), Vector3(-15, 0, 0));
    put(at, shapes::extrude(inner, 0.24f), pal::BLUE, Vector3(0, 0.12f, 0), Vector3(-15, 0, 0));
    put(at, star_mesh(0.2f, 0.09f, 0.3f), pal::YELLOW, Vector3(0, 0.6f, -0.03f), Vector3(-15, 0, 0));
}

void guard(Node3D *at, const String &) {
    figure(at, "2f4f8f", "cap", "", Vector3(-0.2f, 0, 0), 0.54f, 165);
    Node3D *side = spot(at, Vector3(0.36f, 0, 0.1f), 0.6f);
    shield(side, String());
}

void trophy(Node3D *at, const String &) {
    put(at, bevel_box(Vector3(0.6f, 0.2f, 0.5f), 0.05f), pal::WOOD_DARK, Vector3(0, 0.1f, 0));
    put(at,
        loft({{0.2f, 0.2f, 0.2f},
              {0.28f, 0.08f, 0.08f},
              {0.5f, 0.08f, 0.08f},
              {0.6f, 0.3f, 0.3f},
              {1.05f, 0.42f, 0.42f}},
             10),
        pal::YELLOW, Vector3());
    put(at, loft({{0.9f, 0.3f, 0.3f}, {1.06f, 0.34f, 0.34f}}, 10), pal::STRAW_DARK, Vector3());
    put(at, star_mesh(0.2f, 0.09f, 0.1f), pal::WHITE, Vector3(0, 0.82f, 0.36f), Vector3(-15, 0, 0));
    for (const float x : {-0.46f, 0.46f}) {
        put(at, bevel_box(Vector3(0.12f, 0.36f, 0.12f), 0.04f), pal::YELLOW, Vector3(x, 0.82f, 0));
    }
}

struct Row {
    const char *kind;
    void (*build)(Node3D *, const String &);
};

constexpr Row rows[] = {
    {"producer", producer},   {"stall", stall},     {"machine", machine},     {"factory", machine},
    {"restaurant", plate_of}, {"crew", crew},       {"depot", depot},         {"belt", belt},
    {"field", field},         {"workers", workers}, {"harvester", harvester}, {"waterman", waterman},
    {"hauler", hauler},       {"tables", tables},   {"pantry", truck},        {"waiter", waiter},
    {"stack", big_stack},     {"shoes", shoes},     {"feed", feed},           {"magnet", magnet},
    {"truck", truck},         {"land", land},       {"homes", home},          {"ahwa", coffee_house},
    {"canteen", canteen},     {"qahwagi", waiter},  {"service", wrench},      {"security", shield},
    {"guards", guard},        {"final", trophy}};

const Row *row_of(const String &kind) {
    for (const Row &row : rows) {
        if (kind == String(row.kind)) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace

MeshInstance3D *IconModels::star(float outer, float inner, float thick, const Color &color, const Vector3 &pos,
                                 Node *parent) {
    return Models::mesh_instance(star_mesh(outer, inner, thick), color, pos, parent);
}

bool IconModels::knows(const String &kind) {
    return row_of(kind) != nullptr;
}

Node3D *IconModels::tile_icon(const String &kind, const String &product) {
    Node3D *root = memnew(Node3D);
    if (const Row *row = row_of(kind)) {
        row->build(root, product);
    } else {
        house_parts::crate(root, Vector3(), 1.4f, 15);
    }
    return root;
}

Node3D *IconModels::ground_arrow(const Color &color) {
    return Models::bake(
        String("ground_arrow_") + color.to_html(false), Models::builder([color]() {
            Node3D *root = memnew(Node3D);
            const std::vector<Vector2> line = {Vector2(-0.16f, -0.5f), Vector2(0.16f, -0.5f), Vector2(0.16f, 0.05f),
                                               Vector2(0.42f, 0.05f),  Vector2(0, 0.6f),      Vector2(-0.42f, 0.05f),
                                               Vector2(-0.16f, 0.05f)};
            std::vector<Vector2> wide;
            for (const Vector2 &p : line) {
                wide.push_back(Vector2(p.x * 1.28f, (p.y - 0.04f) * 1.16f + 0.04f));
            }
            put(root, shapes::extrude(wide, 0.09f), pal::WHITE, Vector3(0, 0.05f, 0), Vector3(-90, 0, 0));
            put(root, shapes::extrude(line, 0.13f), color, Vector3(0, 0.07f, 0), Vector3(-90, 0, 0));
            return root;
        }),
        false, true);
}

} // namespace tilm
