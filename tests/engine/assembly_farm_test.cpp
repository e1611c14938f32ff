// What the assembly builds for producers, fields, workers and harvesters in a whole world, with the words it says, and
// the factors that the world writes for them each frame.

#include "farm_fields/field_core.h"
#include "farm_items/pile_core.h"
#include "game/actors/crop_field.h"
#include "game/actors/harvester.h"
#include "game/actors/producer.h"
#include "game/actors/worker.h"
#include "game/data/farm_data.h"
#include "game/ports/climate.h"
#include "game/ports/notices.h"
#include "world_kit.h"

namespace tilm {
namespace {

class Heard : public Notices {
public:
    Heard() : before(Notices::current()) { Notices::set_current(this); }
    ~Heard() override { Notices::set_current(before); }
    void notice(const String &text, ToastLevel level) override {
        last = text;
        last_level = level;
        ++count;
    }
    void fly_money(int64_t, const Vector3 &) override {}
    String last;
    ToastLevel last_level = ToastLevel::plain;
    int count = 0;

private:
    Notices *before;
};

class Winter : public Climate {
public:
    Winter() { Climate::set_current(this); }
    ~Winter() override { Climate::set_current(nullptr); }
    int season_index() const override { return season; }
    bool rain_falls() const override { return wet; }
    int season = 3;
    bool wet = true;
};

class AssemblyFarmTest : public FarmTest {
protected:
    void SetUp() override {
        FarmTest::SetUp();
        Dictionary doc;
        Dictionary levels;
        levels["land_dairy"] = 1;
        doc["levels"] = levels;
        save->data = doc;
        open();
    }
    int workers() const {
        int n = 0;
        for (int i = 0; i < world->get_child_count(); ++i) {
            n += Object::cast_to<Worker>(world->get_child(i)) != nullptr;
        }
        return n;
    }
};

TEST_F(AssemblyFarmTest, ProducersFieldsWorkersAndHarvestersByLevel) {
    Heard ears;
    EXPECT_EQ(ears.count, 0);
    const auto hear = [&](const char *id, int level) {
        ears.last = String();
        world->apply_level(FarmData::entry_by_id(id), level, false);
        return ears.last;
    };
    const int64_t zones = world->zone_list().size();
    EXPECT_EQ(hear("barn_a", 1), String("BARN BUILT!"));
    EXPECT_EQ(ears.last_level, ToastLevel::good);
    EXPECT_EQ(world->zone_list().size(), zones + 2);
    Producer *barn = Object::cast_to<Producer>(world->node_of("barn_a"));
    ASSERT_NE(barn, nullptr);
    EXPECT_EQ(barn->get_position(), Vector3(-17, 0, -8));
    EXPECT_EQ(barn->get_trough()->count_kind("hay"), 6) << "a new barn has its free feed";
    EXPECT_EQ(hear("barn_a", 2), String("MORE COWS!"));
    EXPECT_EQ(barn->get_level(), 2);
    EXPECT_EQ(world->level_of("barn_a"), 2);

    EXPECT_EQ(hear("field_wheat", 1), String());
    CropField *field = Object::cast_to<CropField>(world->node_of("field_wheat"));
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->get_crop(), String("wheat"));
    EXPECT_EQ(world->field_list().back(), field);
    EXPECT_LT(field->drop_spot(1, 3).distance_to(Vector3(18 + 0.4f - 0.6f + 0.45f, 0, -4.6f - 1.6f)), 1e-3);

    const int before = workers();
    EXPECT_EQ(hear("wheat_workers", 1), String("WORKERS HIRED!"));
    EXPECT_EQ(hear("wheat_workers", 2), String("WORKERS HIRED!"));
    EXPECT_EQ(workers(), before + 4);
    EXPECT_NE(world->get_node_or_null(NodePath("wheat_workers_2_1")), nullptr);

    EXPECT_EQ(hear("wheat_harvester", 1), String("HARVESTER!"));
    Harvester *machine = Object::cast_to<Harvester>(world->node_of("wheat_harvester"));
    ASSERT_NE(machine, nullptr);
    EXPECT_EQ(field->get_pallet()->get_max_items(), 45);
    EXPECT_EQ(hear("wheat_harvester", 2), String("FASTER HARVESTER!"));
    EXPECT_EQ(machine->get_level(), 2);
    EXPECT_DOUBLE_EQ(field->get_grow_mult(), 1.15);
    EXPECT_EQ(field->get_pallet()->get_max_items(), 46);

    ears.count = 0;
    world->apply_level(FarmData::entry_by_id("barn_a"), 3, true);
    EXPECT_EQ(ears.count, 0) << "quiet at load";
    // A row of an unknown product or without a place builds nothing; its level stands.
    Dictionary bad = FarmData::entry_by_id("barn_b").duplicate();
    bad.erase("pos");
    expect_engine_error("producer barn_b: no place");
    world->apply_level(bad, 1, false);
    EXPECT_EQ(world->node_of("barn_b"), nullptr);
    EXPECT_EQ(world->level_of("barn_b"), 1);
}

TEST_F(AssemblyFarmTest, TheWorldWritesGrowthAndSeasonEachFrame) {
    step(2);
    EXPECT_DOUBLE_EQ(FieldCore::get_weather_mult(), 1.3) << "a dry spring without a sky";
    EXPECT_EQ(world->season(), 0);
    EXPECT_EQ(world->animal_multiplier(), 1.0);
    Winter winter;
    FieldCore::set_weather_mult(9);
    step(1);
    EXPECT_DOUBLE_EQ(FieldCore::get_weather_mult(), 1.2);
    EXPECT_EQ(world->season(), 3);
    winter.wet = false;
    winter.season = 2;
    step(1);
    EXPECT_DOUBLE_EQ(FieldCore::get_weather_mult(), 0.9);
}

} // namespace
} // namespace tilm
