// The classes of the module against the full list of the finished game: order, bases, and what is still to come.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <godot_cpp/classes/class_db_singleton.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <gtest/gtest.h>

#include "engine_test.h"
#include "register.h"

using namespace godot;

namespace {

struct Row {
    const char *name;
    const char *base;
};

// Cores first, then game classes by their source files, with Walker before the first class that derives from it.
const Row ALL[] = {
    {"Glebworks", "Object"},
    {"WalkerBrain", "RefCounted"},
    {"WalkerCore", "Node3D"},
    {"ShadowCullCore", "Node"},
    {"ItemCore", "Node3D"},
    {"ItemBatchCore", "Node3D"},
    {"PileCore", "Node3D"},
    {"ZoneCore", "RefCounted"},
    {"CashCore", "Node3D"},
    {"StackCore", "Node3D"},
    {"HaulerBrain", "WalkerBrain"},
    {"WorkerBrain", "WalkerBrain"},
    {"CustomerBrain", "WalkerBrain"},
    {"CounterCore", "Node3D"},
    {"MachineCore", "Node3D"},
    {"TruckCore", "Node3D"},
    {"ConveyorCore", "Node3D"},
    {"ProducerCore", "Node3D"},
    {"PetCore", "Node3D"},
    {"FieldCore", "Node3D"},
    {"MoneyCore", "Node3D"},
    {"Achievements", "RefCounted"},
    {"AddonModels", "RefCounted"},
    {"Ahwa", "Node3D"},
    {"AutoQuality", "Node"},
    {"AvatarModels", "RefCounted"},
    {"AvatarView", "Control"},
    {"Avatars", "RefCounted"},
    {"Bench", "Node"},
    {"Boosts", "Node"},
    {"BotActions", "Node"},
    {"Buildings", "RefCounted"},
    {"Walker", "WalkerCore"},
    {"Butcher", "Walker"},
    {"Canteen", "Node3D"},
    {"CanteenModels", "RefCounted"},
    {"CashTile", "CashCore"},
    {"Cinematic", "Node"},
    {"CoffeeModels", "RefCounted"},
    {"Conveyor", "ConveyorCore"},
    {"CoopUI", "RefCounted"},
    {"CropField", "FieldCore"},
    {"Customer", "Walker"},
    {"Decor", "RefCounted"},
    {"DinerTables", "Node3D"},
    {"DinerWaiter", "Walker"},
    {"FarmAdvisor", "Node"},
    {"FarmAlbum", "Node"},
    {"FarmBank", "Node"},
    {"FarmCoop", "Node"},
    {"FarmDaily", "Node"},
    {"FarmData", "RefCounted"},
    {"FarmEvents", "Node"},
    {"FarmGifts", "Node"},
    {"FarmHand", "Walker"},
    {"FarmSchedule", "Node"},
    {"FarmSecurity", "Node"},
    {"FarmServices", "Node"},
    {"FarmSky", "Node3D"},
    {"FarmSounds", "Node"},
    {"FarmTips", "Node"},
    {"FarmWater", "Node"},
    {"FarmWolves", "Node"},
    {"FarmInbox", "Node"},
    {"FarmhouseModel", "RefCounted"},
    {"FxLod", "Node"},
    {"GameLog", "Node"},
    {"Ghost", "Walker"},
    {"GrillCook", "Walker"},
    {"GrillFood", "RefCounted"},
    {"Guard", "Walker"},
    {"Harvester", "Node3D"},
    {"Hauler", "Walker"},
    {"HomeModels", "RefCounted"},
    {"Hotspot", "Node"},
    {"Hud", "CanvasLayer"},
    {"IconModels", "RefCounted"},
    {"Icons", "Node"},
    {"Item", "ItemCore"},
    {"ItemBatch", "ItemBatchCore"},
    {"Joystick", "Control"},
    {"Lang", "Translation"},
    {"Loading", "CanvasLayer"},
    {"Machine", "MachineCore"},
    {"Main", "Node"},
    {"MapPlot", "Node3D"},
    {"MapScenery", "RefCounted"},
    {"Menu", "CanvasLayer"},
    {"MetaUI", "RefCounted"},
    {"MiniMap", "Control"},
    {"Missions", "RefCounted"},
    {"Models", "RefCounted"},
    {"MoneyStack", "MoneyCore"},
    {"Net", "Node"},
    {"NightFx", "Node3D"},
    {"Pet", "PetCore"},
    {"PetModels", "RefCounted"},
    {"Pile", "PileCore"},
    {"Player", "Walker"},
    {"PoultryButcher", "Walker"},
    {"PrimStore", "Resource"},
    {"Producer", "ProducerCore"},
    {"Qahwagi", "Walker"},
    {"RegionGoals", "Node"},
    {"Reports", "Node"},
    {"RoadLights", "Node3D"},
    {"Save", "Node"},
    {"SellCounter", "CounterCore"},
    {"ServiceModels", "RefCounted"},
    {"ServiceWorker", "Walker"},
    {"Sfx", "Node"},
    {"ShadowCull", "ShadowCullCore"},
    {"SharedMap", "Node3D"},
    {"StackCarrier", "StackCore"},
    {"StarBadge", "Control"},
    {"SupplyVan", "Node3D"},
    {"TeamHelp", "Node"},
    {"TeamUI", "Node"},
    {"TitleScene", "SubViewport"},
    {"TradeHome", "RefCounted"},
    {"TraderMarket", "Node"},
    {"TruckDepot", "TruckCore"},
    {"Tutorial", "Node"},
    {"UI", "RefCounted"},
    {"UnlockTile", "Node3D"},
    {"Updater", "Node"},
    {"VoiceChat", "Node"},
    {"Wardrobe", "RefCounted"},
    {"WaterWorker", "Walker"},
    {"Worker", "Walker"},
    {"WorkerHomes", "Node3D"},
    {"World", "Node3D"},
    {"Zone", "ZoneCore"},
};

} // namespace

TEST(Registry, KeepsOrderAndBasesOfTheFullList) {
    ASSERT_EQ(std::size(ALL), 133u);
    std::vector<std::string> missing;
    std::vector<std::string> expected;
    ClassDBSingleton *db = ClassDBSingleton::get_singleton();
    for (const Row &row : ALL) {
        if (!db->class_exists(row.name)) {
            missing.push_back(row.name);
            continue;
        }
        expected.push_back(row.name);
        EXPECT_EQ(String(db->get_parent_class(row.name)), String(row.base)) << row.name;
        EXPECT_TRUE(db->can_instantiate(row.name)) << row.name;
    }
    std::vector<std::string> order(tilm::registered_classes().begin(), tilm::registered_classes().end());
    EXPECT_EQ(order, expected);
    std::printf("%zu of %zu classes stand; still to come:", expected.size(), std::size(ALL));
    for (const std::string &name : missing) {
        std::printf(" %s", name.c_str());
    }
    std::printf("\n");
}

TEST(Registry, OtherLevelsChangeNothing) {
    size_t before = tilm::registered_classes().size();
    for (ModuleInitializationLevel level :
         {MODULE_INITIALIZATION_LEVEL_CORE, MODULE_INITIALIZATION_LEVEL_SERVERS, MODULE_INITIALIZATION_LEVEL_EDITOR}) {
        tilm::initialize_module(level);
        tilm::uninitialize_module(level);
    }
    tilm::uninitialize_module(MODULE_INITIALIZATION_LEVEL_SCENE);
    EXPECT_EQ(tilm::registered_classes().size(), before);
    EXPECT_TRUE(ClassDBSingleton::get_singleton()->class_exists("World"));
}
