// Sizes that the farm's places ask of single models: what goods lie on, what people sit at, what stands in a row.

#include <cmath>
#include <string>

#include "engine_test.h"
#include "game/art/item_models.h"
#include "game/art/models.h"
#include "model_measure.h"
#include "rules/items.h"

namespace tilm {
namespace {

Measure measure_of(const std::string &key) {
    Node3D *node = Models::model(String(key.c_str()));
    EXPECT_NE(node, nullptr) << key;
    if (node == nullptr) {
        return {};
    }
    const Measure m = measured(node);
    memdelete(node);
    return m;
}

struct Span {
    float least, most;
};
constexpr float ANY = 1000;

// Full sizes along x, y and z.
struct Need {
    const char *key;
    Span x, y, z;
    const char *why;
};
// clang-format off
constexpr Need NEEDS[] = {
    {"tray", {2.4f, 2.8f}, {0, 0.35f}, {1.5f, 2.0f}, "4 x 3 goods, 0.6 x 0.5 apart, within its zone"},
    {"trough_corn", {0.84f, 1.6f}, {0, 0.6f}, {1.52f, 2.2f}, "2 x 4 goods, 0.42 x 0.38 apart"},
    {"trough_hay", {0.84f, 1.6f}, {0, 0.6f}, {1.52f, 2.2f}, "2 x 4 goods, 0.42 x 0.38 apart"},
    {"depot", {2.4f, 5}, {0, 2.5f}, {1.5f, 3.5f}, "5 x 3 goods, 0.48 x 0.5 apart"},
    {"cash_mat", {1.1f, 2.2f}, {0, 0.1f}, {0.72f, 2.2f}, "2 x 3 bills, 0.55 x 0.36 apart"},
    {"table_stall", {2.5f, 4}, {0, 3}, {1, 2}, "4 x 2 goods, 0.62 x 0.48 apart"},
    {"zone_plate_28x20", {2.8f, 3.1f}, {0, 0.1f}, {2.0f, 2.3f}, "its zone and a rim"},
    {"path_20_155", {2.0f, 2.4f}, {0, 0.2f}, {15.5f, 16.4f}, "from the lane to the stall"},
    {"ahwa_floor", {11.95f, 12.05f}, {0, 0.2f}, {5.25f, 5.35f}, "12.0 by 5.3"},
    {"ahwa_stock", {1.32f, 3.2f}, {0, 1}, {0.8f, 1.6f}, "3 x 2 coffees, 0.44 x 0.4 apart"},
    {"ahwa_table", {0.5f, 0.8f}, {0.5f, 0.75f}, {0.5f, 0.8f}, "guests sit 0.58 from its middle"},
    {"ahwa_stool", {0.3f, 0.45f}, {0.25f, 0.4f}, {0.3f, 0.45f}, "a seated body sinks by 0.3"},
    {"canteen_meal", {0.2f, 0.5f}, {0, 0.25f}, {0.2f, 0.5f}, "three abreast, 0.85 apart"},
    {"security_office", {2, 6}, {2, 5}, {2, 4.3f}, "guards start 2.5 before it"},
    {"service_carpenter", {2, 5.4f}, {2, 4.5f}, {2, 4.6f}, "its worker strolls before it"},
    {"map_walk", {19.95f, 20.05f}, {0, 0.3f}, {2, 6}, "pieces of 20"},
    {"map_street", {33.9f, 34.1f}, {0, 0.3f}, {3.5f, 4.1f}, "blocks of 30 every 34"},
    {"map_road", {13.95f, 14.05f}, {0, 0.3f}, {13.95f, 14.05f}, "a road 14 wide"},
    {"map_cross", {13.95f, 14.05f}, {0, 0.3f}, {13.95f, 14.05f}, "a road 14 wide"},
    {"map_farm_road", {23.95f, 24.3f}, {0, 0.3f}, {2, 5}, "a land of 24"},
    {"map_farm_path", {23.95f, 24.3f}, {0, 0.3f}, {1, 3}, "a land of 24"},
    {"map_farm_fence", {23.95f, 24.3f}, {0.5f, 1.5f}, {0, 0.5f}, "a land of 24"},
    {"map_star", {0.4f, 0.62f}, {0.4f, 0.7f}, {0, 0.3f}, "0.62 apart"},
    {"map_star_max", {0.4f, 0.62f}, {0.4f, 0.7f}, {0, 0.3f}, "0.62 apart"},
    {"map_lava_seg", {5, 6.5f}, {0, 0.6f}, {1, 5}, "steps of 5"},
    {"map_fall_wall", {7, 30}, {17, 30}, {1, 20}, "a fall of 7 x 17 before it"},
    {"map_bldg0", {5, 15}, {5, 20}, {5, 15}, "four on a block of 30"},
    {"map_lamp", {0.2f, 1}, {1.5f, 2}, {0.2f, 1}, "its head is 1.6 up"},
    {"supply_van", {1, 2.4f}, {1.2f, 2.6f}, {2.4f, 4}, "the road, at 0.8"},
    {"wolf", {0.3f, 1}, {0.8f, 1.6f}, {1, 2.5f}, "no taller than a man at 1.25"},
};
// clang-format on

TEST(ModelSizes, PlacesAskForThem) {
    for (const Need &need : NEEDS) {
        const AABB box = measure_of(need.key).box;
        const Span *spans[] = {&need.x, &need.y, &need.z};
        for (int axis = 0; axis < 3; axis++) {
            EXPECT_GE(box.size[axis], spans[axis]->least) << need.key << " axis " << axis << ": " << need.why;
            EXPECT_LE(box.size[axis], spans[axis]->most) << need.key << " axis " << axis << ": " << need.why;
        }
    }
    for (int i = 0; i < 6; i++) {
        const AABB box = measure_of("map_bldg" + std::to_string(i)).box;
        EXPECT_LE(std::max(box.size.x, box.size.z), 15) << i << ": plots are 15 apart";
    }
}

// Whatever is laid on a model neither floats nor sinks in.
TEST(ModelSizes, SurfacesLieWhereGoodsAreLaid) {
    const Measure stall = measure_of("table_stall");
    for (const float x : {-0.9f, 0.35f, 1.6f}) {
        EXPECT_NEAR(surface_at(stall, x, -0.05f, 1.2f), 1.02f, 0.03f) << x;
    }
    for (const char *level : {"1", "2", "3", "4", "5", "6"}) {
        const Measure hall = measure_of(std::string("canteen_") + level);
        const int tables = std::min(4, level[0] - '0' + 1);
        for (int table = 0; table < tables; table++) {
            const float x = table % 2 ? 1.75f : -1.75f, z = table < 2 ? -0.1f : 1.55f;
            for (int seat = 0; seat < 6; seat++) {
                const float dx = 0.85f * float(seat % 3 - 1) * 0.42f, dz = (seat < 3 ? -0.48f : 0.48f) * 0.42f;
                EXPECT_NEAR(surface_at(hall, x + dx, z + dz, 0.9f), 0.72f, 0.015f) << level << " seat " << seat;
            }
        }
    }
    // Both trucks' beds, 3 x 4 goods 0.52 x 0.55 apart round (0, 0.84, 0.85).
    for (const char *key : {"truck_gold", "truck_e5484d"}) {
        const Measure truck = measure_of(key);
        for (const float x : {-0.5f, 0.5f}) {
            for (const float z : {0.1f, 0.85f, 1.6f}) {
                EXPECT_NEAR(surface_at(truck, x, z, 1.0f), 0.84f, 0.03f) << key << " " << x << " " << z;
            }
        }
    }
}

// Goods lie half a metre apart and on each other by their layer's height.
TEST(ModelSizes, GoodsFitTheirPiles) {
    const PackedStringArray kinds = item_models::kinds();
    for (int64_t i = 0; i < kinds.size(); i++) {
        const std::string kind = kinds[i].utf8().get_data();
        MeshInstance3D *node = Models::item_model(kinds[i]);
        const AABB box = node->get_mesh()->get_aabb();
        memdelete(node);
        const float layer = rules::item_height(kind);
        EXPECT_LT(box.get_end().y, layer + 0.09f) << kind << " sticks into the good on it";
        EXPECT_GT(box.get_end().y, layer - 0.06f) << kind << " does not bear the good on it";
        const bool animal = kind == "calf" || kind == "hen";
        if (animal) {
            continue; // they have trays of their own
        }
        EXPECT_LE(box.size.x, rules::is_money_item(kind) ? 0.56f : 0.63f) << kind;
        EXPECT_LE(box.size.z, rules::is_money_item(kind) ? 0.4f : 0.63f) << kind;
        EXPECT_LT(std::abs(box.get_center().x), 0.08f) << kind << " lies off its place";
        EXPECT_LT(std::abs(box.get_center().z), 0.08f) << kind << " lies off its place";
    }
}

// Labels stand at 2.25 over bare heads and hair.
TEST(ModelSizes, PeopleStayUnderTheirLabels) {
    for (const char *style : {"short", "long", "bun", "bald", "spiky", "curly", "buzz", "side", "pigtails", "ponytail",
                              "puffs", "hijab", "scarf"}) {
        EXPECT_LT(measure_of(std::string("look_hair_") + style).box.get_end().y, 2.15f) << style;
    }
}

} // namespace
} // namespace tilm
