#include "register.h"

#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/godot.hpp>

#include "farm_animals/pet_core.h"
#include "farm_belts/conveyor_core.h"
#include "farm_belts/truck_core.h"
#include "farm_fields/field_core.h"
#include "farm_fields/producer_core.h"
#include "farm_items/cash_core.h"
#include "farm_items/item_batch_core.h"
#include "farm_items/item_core.h"
#include "farm_items/money_core.h"
#include "farm_items/pile_core.h"
#include "farm_items/stack_core.h"
#include "farm_items/zone_core.h"
#include "farm_shop/counter_core.h"
#include "farm_shop/customer_brain.h"
#include "farm_shop/hauler_brain.h"
#include "farm_shop/machine_core.h"
#include "farm_shop/worker_brain.h"
#include "game/actors/cash_tile.h"
#include "game/actors/conveyor.h"
#include "game/actors/crop_field.h"
#include "game/actors/customer.h"
#include "game/actors/farm_hand.h"
#include "game/actors/ghost.h"
#include "game/actors/harvester.h"
#include "game/actors/hauler.h"
#include "game/actors/item.h"
#include "game/actors/item_batch.h"
#include "game/actors/machine.h"
#include "game/actors/money_stack.h"
#include "game/actors/pet.h"
#include "game/actors/pile.h"
#include "game/actors/player.h"
#include "game/actors/producer.h"
#include "game/actors/sell_counter.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/supply_van.h"
#include "game/actors/truck_depot.h"
#include "game/actors/unlock_tile.h"
#include "game/actors/walker.h"
#include "game/actors/worker.h"
#include "game/actors/zone.h"
#include "game/art/addon_models.h"
#include "game/art/auto_quality.h"
#include "game/art/avatar_models.h"
#include "game/art/buildings.h"
#include "game/art/canteen_models.h"
#include "game/art/coffee_models.h"
#include "game/art/decor.h"
#include "game/art/farmhouse_model.h"
#include "game/art/fx_lod.h"
#include "game/art/grill_food.h"
#include "game/art/home_models.h"
#include "game/art/icon_models.h"
#include "game/art/icons.h"
#include "game/art/models.h"
#include "game/art/pet_models.h"
#include "game/art/prim_store.h"
#include "game/art/service_models.h"
#include "game/art/shadow_cull.h"
#include "game/automation/bot_actions.h"
#include "game/data/farm_data.h"
#include "game/interface/hud.h"
#include "game/interface/joystick.h"
#include "game/interface/menu.h"
#include "game/interface/star_badge.h"
#include "game/interface/title_scene.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "game/shell/cinematic.h"
#include "game/shell/game_log.h"
#include "game/shell/loading.h"
#include "game/shell/main.h"
#include "game/shell/save.h"
#include "game/shell/world.h"
#include "game/sound/sfx.h"
#include "glebworks/glebworks.h"
#include "glebworks/shadow_cull_core.h"
#include "glebworks/walker_brain.h"
#include "glebworks/walker_core.h"

namespace tilm {

namespace {

std::vector<const char *> s_registered;

template <class T>
void add(const char *name) {
    godot::ClassDB::register_class<T>(false, true, false);
    s_registered.push_back(name);
}

#define TM_ADD(m_class) add<m_class>(#m_class)

// Before the first class: values of engine types cannot exist any earlier.
void setup_statics() {
    Hud::setup_statics();
    Icons::setup_statics();
    Models::setup_statics();
    Customer::setup_statics();
    Decor::setup_statics();
    FarmData::setup_statics();
    Lang::setup_statics();
    Main::setup_statics();
    PetModels::setup_statics();
    UI::setup_statics();
    World::setup_statics();
    SellCounter::setup_statics();
}

} // namespace

const std::vector<const char *> &registered_classes() {
    return s_registered;
}

void register_core_classes() {
    TM_ADD(Glebworks);
    TM_ADD(WalkerBrain);
    TM_ADD(WalkerCore);
    TM_ADD(ShadowCullCore);
    TM_ADD(ItemCore);
    TM_ADD(ItemBatchCore);
    TM_ADD(PileCore);
    TM_ADD(ZoneCore);
    TM_ADD(CashCore);
    TM_ADD(StackCore);
    TM_ADD(HaulerBrain);
    TM_ADD(WorkerBrain);
    TM_ADD(CustomerBrain);
    TM_ADD(CounterCore);
    TM_ADD(MachineCore);
    TM_ADD(TruckCore);
    TM_ADD(ConveyorCore);
    TM_ADD(ProducerCore);
    TM_ADD(PetCore);
    TM_ADD(FieldCore);
    TM_ADD(MoneyCore);
}

void register_game_classes() {
    setup_statics();
    TM_ADD(AddonModels);
    TM_ADD(AutoQuality);
    TM_ADD(AvatarModels);
    TM_ADD(BotActions);
    TM_ADD(Buildings);
    TM_ADD(Walker);
    TM_ADD(CanteenModels);
    TM_ADD(CashTile);
    TM_ADD(Cinematic);
    TM_ADD(CoffeeModels);
    TM_ADD(Conveyor);
    TM_ADD(CropField);
    TM_ADD(Customer);
    TM_ADD(Decor);
    TM_ADD(FarmData);
    TM_ADD(FarmHand);
    TM_ADD(FarmhouseModel);
    TM_ADD(FxLod);
    TM_ADD(GameLog);
    TM_ADD(Ghost);
    TM_ADD(GrillFood);
    TM_ADD(Harvester);
    TM_ADD(Hauler);
    TM_ADD(HomeModels);
    TM_ADD(Hud);
    TM_ADD(IconModels);
    TM_ADD(Icons);
    TM_ADD(Item);
    TM_ADD(ItemBatch);
    TM_ADD(Joystick);
    TM_ADD(Lang);
    TM_ADD(Loading);
    TM_ADD(Machine);
    TM_ADD(Main);
    TM_ADD(Menu);
    TM_ADD(Models);
    TM_ADD(MoneyStack);
    TM_ADD(Pet);
    TM_ADD(PetModels);
    TM_ADD(Pile);
    TM_ADD(Player);
    TM_ADD(PrimStore);
    TM_ADD(Producer);
    TM_ADD(Save);
    TM_ADD(SellCounter);
    TM_ADD(ServiceModels);
    TM_ADD(Sfx);
    TM_ADD(ShadowCull);
    TM_ADD(StackCarrier);
    add<Hud::StarBadge>("StarBadge");
    TM_ADD(SupplyVan);
    TM_ADD(TitleScene);
    TM_ADD(TruckDepot);
    TM_ADD(UI);
    TM_ADD(UnlockTile);
    TM_ADD(Worker);
    TM_ADD(World);
    TM_ADD(Zone);
}

void initialize_module(godot::ModuleInitializationLevel level) {
    if (level != godot::MODULE_INITIALIZATION_LEVEL_SCENE) {
        return;
    }
    register_core_classes();
    register_game_classes();
}

void uninitialize_module(godot::ModuleInitializationLevel) {}

} // namespace tilm
