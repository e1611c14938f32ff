// Crop fields and the harvester.

#include <cmath>

#include <gtest/gtest.h>

#include "engine_test.h"
#include "fake_farm.h"
#include "farm_items/pile_core.h"
#include "game/actors/crop_field.h"
#include "game/actors/harvester.h"
#include "game/data/farm_data.h"
#include "glebworks/glebworks.h"

namespace tilm {
namespace {

class FieldTest : public testing::Test {
protected:
    FakeFarm farm{stage()};

    CropField *make(const char *crop = "wheat", const Rect2 &r = Rect2(13, -17, 10, 10)) {
        Dictionary e;
        e["id"] = "field_x";
        e["crop"] = crop;
        e["rect"] = r;
        e["pallet"] = Vector2(18, -4.6f);
        e["bed"] = Color(0.5f, 0.4f, 0.2f);
        CropField *field = CropField::build(e);
        EXPECT_NE(field, nullptr);
        farm.ground->add_child(field);
        return field;
    }
};

TEST_F(FieldTest, StandsFullOfPlantsWithItsPallet) {
    CropField *field = make();
    EXPECT_EQ(field->get_nx(), 23);
    EXPECT_EQ(field->get_nz(), 23);
    EXPECT_EQ(field->alive_ratio(), 1.0);
    EXPECT_FALSE(field->regrowing());
    ASSERT_EQ(farm.zones.size(), 1);
    EXPECT_EQ(field->get_take_zone()->get_group(), String("field_x"));
    EXPECT_EQ(field->get_take_zone()->get_makes(), String("wheat"));
    EXPECT_EQ(field->centre(), Vector3(18, 0, -12));
    EXPECT_TRUE(field->contains(Vector3(13, 0, -17)));
    EXPECT_TRUE(field->contains(Vector3(23, 0, -7)));
    EXPECT_FALSE(field->contains(Vector3(23.1f, 0, -7)));
    EXPECT_TRUE(field->contains(Vector3(23.4f, 0, -7), 0.5));
}

TEST_F(FieldTest, AFieldWithoutGroundOrCropIsRefusedWithOneLine) {
    expect_engine_error("no crop or no ground");
    EXPECT_EQ(CropField::build(Dictionary()), nullptr);
}

TEST_F(FieldTest, CuttingTakesEachPlantOnceWithinReachAndLimit) {
    CropField *field = make();
    const Vector3 middle(18, 0, -12);
    EXPECT_EQ(field->collect_at(middle, 5, 3.0), 5);
    int all = 5;
    for (int n = 1; n > 0; all += n) {
        n = field->collect_at(middle, 9999, 1.15);
    }
    // A disc of radius 1.15 holds pi r2 / 0.42 / 0.42 plants, give or take jitter and the first five.
    EXPECT_NEAR(all, 23, 9);
    EXPECT_EQ(field->collect_at(middle, 9999, 1.15), 0);
    for (int i = 0; i < 4000; ++i) { // none was left standing in the disc
        const Vector3 p = field->random_alive(Vector3(INFINITY, 0, INFINITY), 0);
        ASSERT_GT(std::hypot(p.x - middle.x, p.z - middle.z), 1.15);
    }
    EXPECT_EQ(field->collect_at(Vector3(30, 0, -12), 9999, 1.0), 0);
    EXPECT_EQ(field->collect_at(middle, 0, 5), 0);
    EXPECT_EQ(field->cells().alive(), 23 * 23 - all);
    // The whole field by one big cut: nothing is missed at the edges.
    EXPECT_EQ(field->collect_at(middle, 9999, 20), 23 * 23 - all);
    EXPECT_EQ(field->alive_ratio(), 0.0);
}

TEST_F(FieldTest, GrowsBackByRateUnlessItIsDry) {
    CropField *field = make("hay", Rect2(-35, -23, 6.5f, 7));
    field->collect_at(field->centre(), 9999, 20);
    Dictionary tank;
    tank["level"] = 0.0;
    field->set_meta("water", tank);
    for (int i = 0; i < 400; ++i) {
        field->grow(0.05);
    }
    EXPECT_EQ(field->alive_ratio(), 0.0);
    tank["level"] = 1.0;
    const double weather = FieldCore::get_weather_mult();
    FieldCore::set_weather_mult(2.0);
    field->set_grow_mult(1.5);
    for (int i = 0; i < 59; ++i) { // 2.95 s at a rate of 3: just under the shortest wait of 9 s
        field->grow(0.05);
    }
    EXPECT_EQ(field->alive_ratio(), 0.0);
    for (int i = 0; i < 46; ++i) {
        field->grow(0.05);
    }
    FieldCore::set_weather_mult(weather);
    EXPECT_EQ(field->alive_ratio(), 1.0);
}

TEST_F(FieldTest, RandomPlantsLiveAndLieNearWhenAsked) {
    CropField *field = make();
    const Vector3 anywhere(INFINITY, 0, INFINITY);
    const Vector3 corner(14, 0, -16);
    int near = 0;
    for (int i = 0; i < 50; ++i) {
        EXPECT_TRUE(field->contains(field->random_alive(anywhere, 3), 0.3));
        const Vector3 p = field->random_alive(corner, 2.5);
        EXPECT_TRUE(field->contains(p, 0.3));
        near += std::hypot(p.x - corner.x, p.z - corner.z) < 2.9;
    }
    EXPECT_EQ(near, 50);
    field->collect_at(field->centre(), 9999, 20);
    EXPECT_EQ(field->random_alive(anywhere, 3), field->centre());
}

TEST_F(FieldTest, AHarvesterFillsThePalletAndKeepsWhatDoesNotFit) {
    CropField *field = make();
    Dictionary row;
    row["color"] = Color(1, 0.5f, 0);
    EXPECT_EQ(Harvester::build(row, nullptr), nullptr);
    Harvester *machine = Harvester::build(row, field);
    ASSERT_NE(machine, nullptr);
    farm.ground->add_child(machine);
    machine->set_process(false);
    machine->set_level(2);
    PileCore *pallet = field->get_pallet();
    EXPECT_EQ(pallet->get_max_items(), 46);
    EXPECT_DOUBLE_EQ(field->get_grow_mult(), 1.15);
    EXPECT_DOUBLE_EQ(machine->get_speed(), 2.94);
    for (int i = 0; i < 60 * 120 && pallet->count() < 46; ++i) {
        machine->step(1.0 / 60);
        field->grow(1.0 / 60);
    }
    EXPECT_EQ(pallet->count(), 46);
    for (int i = 0; i < 60 * 20; ++i) {
        machine->step(1.0 / 60);
    }
    EXPECT_EQ(pallet->count(), 46); // never above
    const int kept = machine->get_carried();
    EXPECT_GE(kept, 10);
    for (int i = 0; i < 20; ++i) {
        pallet->take("wheat")->queue_free();
    }
    machine->_ship();
    EXPECT_EQ(pallet->count(), 26 + std::min(kept, 20));
    EXPECT_EQ(machine->get_carried(), kept - std::min(kept, 20));
}

TEST_F(FieldTest, EveryCropStandsAndADryFieldIsCutAllTheSame) {
    for (const char *crop : {"corn", "hay", "wheat", "sunflower", "tomato", "lettuce", "potato"}) {
        SCOPED_TRACE(crop);
        CropField *field = make(crop, Rect2(0, 0, 6.4f, 5.2f));
        EXPECT_EQ(field->get_nx(), 15);
        EXPECT_EQ(field->get_nz(), 12);
        EXPECT_EQ(field->get_grow_mult(), 1.0);
        EXPECT_EQ(field->get_take_zone()->get_makes(), String(crop));
        Dictionary tank;
        tank["level"] = 0;
        field->set_meta("water", tank);
        EXPECT_EQ(field->collect_at(field->centre(), 9999, 20), 180);
        field->grow(1000);
        EXPECT_EQ(field->alive_ratio(), 0.0);
        EXPECT_TRUE(field->regrowing());
        tank["level"] = 0.1;
        for (int i = 0; i < 5; ++i) {
            field->grow(1000);
        }
        EXPECT_FALSE(field->regrowing());
    }
    CropField *field = make();
    const int nodes = field->get_child_count();
    field->setup("potato", Rect2(0, 0, 2, 2)); // replanted
    step();
    EXPECT_EQ(field->get_child_count(), nodes);
    EXPECT_EQ(field->get_nx(), 4);
    expect_engine_error("no ground to plant");
    field->setup("potato", Rect2(0, 0, INFINITY, 2));
    EXPECT_EQ(field->get_nx(), 4);
    const double before = FieldCore::get_weather_mult();
    FieldCore::set_weather_mult(NAN);
    EXPECT_EQ(FieldCore::get_weather_mult(), before);
}

TEST_F(FieldTest, AHarvesterBringsTheSameUnseen) {
    const double weather = FieldCore::get_weather_mult();
    FieldCore::set_weather_mult(1.3);
    for (const int level : {1, 20}) {
        int brought[2] = {};
        for (const bool seen : {true, false}) {
            CropField *field = make("wheat", Rect2(13, -17, 10, 10));
            Harvester *machine = Harvester::build(Dictionary(), field);
            farm.ground->add_child(machine);
            machine->set_process(false);
            machine->set_level(level);
            Glebworks::set_view(seen ? Rect2(0, -30, 40, 40) : Rect2(900, 900, 5, 5));
            for (int i = 0; i < 60 * 600; ++i) {
                machine->step(1.0 / 60);
                if (i % 4 == 0) {
                    field->grow(4.0 / 60);
                }
                while (ItemCore *item = field->get_pallet()->take(String())) {
                    memdelete(item);
                    ++brought[seen];
                }
            }
            brought[seen] += machine->get_carried();
            memdelete(machine);
            memdelete(field);
        }
        EXPECT_GT(brought[true], 1500);
        EXPECT_NEAR(brought[false], brought[true], 0.03 * brought[true]) << "at level " << level;
    }
    Glebworks::see_everything();
    FieldCore::set_weather_mult(weather);
}

TEST_F(FieldTest, APalletGivesWayToThePriceTileBesideItAndStaysInItsZone) {
    int moved = 0;
    for (const char *id : {"field_corn", "field_wheat"}) {
        const Dictionary row = FarmData::entry_by_id(id);
        CropField *field = CropField::build(row);
        farm.ground->add_child(field);
        step();
        const Vector2 told = row["pallet"];
        const float aside = float(field->get_pallet()->get_global_position().x - told.x);
        EXPECT_LE(std::abs(aside) + 1.15f, 1.6f) << id; // slab and zone, half widths
        moved += std::abs(aside) > 0.01f ? 1 : 0;
    }
    EXPECT_EQ(moved, 1); // only beside the corn field stands a tile so near
}

} // namespace
} // namespace tilm
