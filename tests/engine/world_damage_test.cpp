// Farm documents that no game has written: what is wrong is clamped or skipped, all the rest loads.

#include "farm_items/pile_core.h"
#include "farm_items/zone_core.h"
#include "game/actors/cash_tile.h"
#include "game/actors/player.h"
#include "game/actors/stack_carrier.h"
#include "game/shell/farm_document.h"
#include "safe_read.h"
#include "world_kit.h"

namespace tilm {

namespace {

class WorldDamage : public FarmTest {
protected:
    void SetUp() override {
        FarmTest::SetUp();
        levels["field_corn"] = 1;
        levels["stall_corn"] = 1;
        levels["coop_a"] = 2;
        levels["stall_egg"] = 1;
        doc["money"] = 77;
    }
    void open() {
        close();
        doc["levels"] = levels;
        doc["state"] = state;
        save->data = doc;
        FarmTest::open();
    }
    Dictionary saved() {
        world->save_now();
        return save->data;
    }
    Ref<ZoneCore> zone(const String &group) const {
        Array zones = world->zone_list();
        for (int i = 0; i < zones.size(); i++) {
            Ref<ZoneCore> z = zones[i];
            if (z->get_group() == group && z->get_pile()) {
                return z;
            }
        }
        return {};
    }

    Dictionary doc;
    Dictionary levels;
    Dictionary state;
};

} // namespace

TEST_F(WorldDamage, MoneyBelowNothingIsNothing) {
    doc["money"] = -500;
    expect_engine_error("TILMARCH farm: money -500: taken as 0");
    open();
    EXPECT_EQ(world->money_now(), 0);
    EXPECT_EQ(world->level_of("coop_a"), 2);
    EXPECT_EQ(read_whole(saved(), "money", -1), 0);
}

TEST_F(WorldDamage, UnknownEntriesAreKeptAndNotShown) {
    levels["moon_base"] = 3;
    levels["corn_workers"] = -2;
    expect_engine_error("TILMARCH farm: unknown entry moon_base: kept, not shown");
    open();
    EXPECT_EQ(world->level_of("moon_base"), 0);
    EXPECT_EQ(world->node_of("moon_base"), nullptr);
    EXPECT_EQ(world->level_of("corn_workers"), 0);
    EXPECT_EQ(world->level_of("coop_a"), 2);
    EXPECT_EQ(read_whole(read_table(saved(), "levels"), "moon_base"), 3);
}

TEST_F(WorldDamage, LevelsBeyondTheListEndWithIt) {
    levels["coop_a"] = 9000;
    expect_engine_error("TILMARCH farm: coop_a has level 9000 of 20: lowered");
    open();
    EXPECT_EQ(world->level_of("coop_a"), 20);
    EXPECT_EQ(read_whole(read_table(saved(), "levels"), "coop_a"), 20);
}

TEST_F(WorldDamage, GoodsBeyondAPileAndGoodsWithoutAPlaceAreDropped) {
    open();
    const Ref<ZoneCore> stall = zone("stall_egg");
    ASSERT_TRUE(stall.is_valid());
    const int capacity = stall->get_pile()->get_max_items();
    const String key = FarmDocument::pile_key(**stall);
    Dictionary many;
    many["egg"] = 100000;
    many["unheard_of"] = 5;
    Dictionary piles;
    piles[key] = many;
    piles["stall_gone@1,1"] = many;
    Dictionary cash;
    cash["99999,99999"] = 50;
    state["piles"] = piles;
    state["cash"] = cash;
    Array carry;
    carry.push_back("unheard_of");
    carry.push_back("egg");
    state["carry"] = carry;
    expect_engine_error(vformat("TILMARCH farm: %d egg of 100000 do not fit in %s: dropped", 100000 - capacity, key));
    expect_engine_error("TILMARCH unknown good unheard_of in " + key + ": dropped");
    expect_engine_error("TILMARCH unknown good unheard_of on the back: dropped");
    expect_engine_error("TILMARCH farm: no place for the goods of stall_gone@1,1: skipped");
    expect_engine_error("TILMARCH farm: no cash tile at 99999,99999: skipped");
    open();
    EXPECT_EQ(zone("stall_egg")->get_pile()->count(), capacity);
    EXPECT_EQ(world->farmer()->carrier()->count(), 1);
    EXPECT_EQ(world->money_now(), 77);
    for (const CashTile *tile : world->cash_list()) {
        EXPECT_EQ(tile->total(), 0);
    }
}

TEST_F(WorldDamage, AHelperWhoseFieldIsMissingLeavesTheRestStanding) {
    levels["wheat_workers"] = 2;
    levels["truck_loader"] = 1;
    levels["bread_factory_belt"] = 1;
    expect_engine_error("TILMARCH workers for wheat_workers: field not built", 2); // a line a level
    open();
    EXPECT_EQ(world->level_of("coop_a"), 2);
    EXPECT_EQ(world->money_now(), 77);
    step(30);
    EXPECT_EQ(read_whole(read_table(saved(), "levels"), "wheat_workers"), 2);
}

} // namespace tilm
