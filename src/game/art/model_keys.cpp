#include "game/art/model_keys.h"

#include <godot_cpp/core/error_macros.hpp>

#include "game/art/addon_models.h"
#include "game/art/avatar_models.h"
#include "game/art/buildings.h"
#include "game/art/canteen_models.h"
#include "game/art/coffee_models.h"
#include "game/art/decor.h"
#include "game/art/farmhouse_model.h"
#include "game/art/gear_models.h"
#include "game/art/grill_food.h"
#include "game/art/home_models.h"
#include "game/art/icon_models.h"
#include "game/art/map_models.h"
#include "game/art/models.h"
#include "game/art/palette.h"
#include "game/art/pet_models.h"
#include "game/art/scenery.h"
#include "game/art/service_models.h"
#include "game/art/truck_models.h"

namespace tilm {
namespace {

using Name = const String &;

Node3D *dressed(const char *key, const Variant &value) {
    Dictionary look;
    look["shirt"] = "3f8fe0";
    look[key] = value;
    return Models::person(look);
}

// One part of a model that is put together from several keys.
Node3D *part_of(Node3D *whole, int index) {
    Node *part = whole->get_child(index);
    // A joint that turns what it holds.
    if (Object::cast_to<MeshInstance3D>(part) == nullptr) {
        part = part->get_child(0);
    }
    part->get_parent()->remove_child(part);
    memdelete(whole);
    return Object::cast_to<Node3D>(part);
}

Node3D *service_prop(Name n) {
    return n == String("wall_lamp")         ? ServiceModels::wall_lamp()
           : n == String("road_post")       ? ServiceModels::road_post()
           : n == String("heater")          ? ServiceModels::heater()
           : n == String("security_office") ? ServiceModels::security_office()
           : n == String("sentry_box")      ? ServiceModels::sentry_box()
           : n == String("brazier")         ? ServiceModels::brazier()
           : n == String("brazier_flame")   ? part_of(ServiceModels::brazier(), 1)
                                            : ServiceModels::prop(n);
}

Node3D *coffee_prop(Name n) {
    return n == String("floor")   ? CoffeeModels::floor()
           : n == String("kiosk") ? CoffeeModels::kiosk()
           : n == String("stock") ? CoffeeModels::stock()
           : n == String("table") ? CoffeeModels::table()
           : n == String("stool") ? CoffeeModels::stool()
                                  : CoffeeModels::drink(n);
}

Node3D *cart_part(Name level, const char *part) {
    Node3D *cart = PetModels::cart(int(level.to_int()));
    Node *node = cart->get_node_or_null(NodePath(part));
    if (node == nullptr) {
        node = cart->find_child(part, true, false);
    }
    if (node != nullptr) {
        node->get_parent()->remove_child(node);
    }
    memdelete(cart);
    return Object::cast_to<Node3D>(node);
}

Node3D *decor(Name n) {
    return n == String("pedestal")         ? part_of(Decor::build("friends"), 0)
           : n == String("fountain_water") ? part_of(Decor::build("fountain"), 1)
           : n == String("fountain_jet")   ? part_of(Decor::build("fountain"), 2)
           : n == String("blades")         ? part_of(Decor::build("windmill"), 1)
                                           : Decor::build(n);
}

Node3D *ground_thing(Name n) {
    return n == String("tray")         ? Buildings::tray()
           : n == String("pallet")     ? Buildings::pallet()
           : n == String("supply_van") ? Buildings::supply_van()
           : n == String("price_pole") ? Scenery::price_pole()
           : n == String("cash_mat")   ? Scenery::cash_mat()
           : n == String("bench")      ? Scenery::bench()
                                       : Scenery::region_sign();
}

// Numbers of a key that tells sizes in tenths of a metre, as "28x20" or "66_76".
Vector2 size_in(Name n, const char *between) {
    const PackedStringArray parts = n.split(between);
    return Vector2(float(parts[0].to_int()), float(parts[1].to_int())) * 0.1f;
}

// Models whose key tells their size; the table lists a size of each that a farm has.
Node3D *sized(const String &prefix, Name n) {
    return prefix == String("rail_")   ? Scenery::rail_fence(float(n.to_int()) * 0.1f)
           : prefix == String("path_") ? Scenery::path_strip(size_in(n, "_"))
           : prefix == String("bed_b39a52_")
               ? Buildings::field_bed(size_in(n, "_"), Color(0.702f, 0.604f, 0.322f), true)
               : Scenery::zone_plate(size_in(n, "x"), String());
}

Node3D *crop(Name n) {
    MeshInstance3D *node = memnew(MeshInstance3D);
    node->set_mesh(Models::crop_mesh(n));
    node->set_material_override(Models::farm_material());
    return node;
}

Node3D *icon(const String &kind, const String &product) {
    return Models::bake("icon_" + kind + (product.is_empty() ? String() : "_" + product),
                        Models::builder([kind, product] { return IconModels::tile_icon(kind, product); }));
}

// clang-format off
constexpr ModelFamily FAMILIES[] = {
    {"item_", "egg milk wheat flour sunflower oil bread mayo cookies donut icecream cake fish calf hen meat drumstick "
              "cheese tomato lettuce potato grilled_fish grilled_chicken steak burger corn hay honey apple orange juice "
              "apple_juice orange_juice wool blanket breakfast bean coffee medicine water berry cocoa choco",
     ModelClass::good, "piles, towers, belts, orders", [](Name n) -> Node3D * { return Models::item_model(n); }},
    {"money_", "bill gold case", ModelClass::money, "cash tiles, purses", [](Name n) -> Node3D * { return Models::item_model(n); }},

    // People have no key of their own but their look; these names stand for looks.
    {"look_avatar_", "ben sam omar jack ali tom max mona lily sara nour zoe emma hana", ModelClass::person, "the player",
     [](Name n) { return AvatarModels::build(n); }},
    {"look_hair_", "short long bun bald spiky curly buzz side pigtails ponytail puffs hijab scarf", ModelClass::person,
     "customers, staff", [](Name n) { return dressed("style", n); }},
    {"look_hat_", "straw tophat cowboy chef crown helmet", ModelClass::person, "outfits, staff, guests of honour",
     [](Name n) { return dressed("hat", n); }},
    {"look_staff_", "carpenter electric vet plumber appliance security night_guard butcher griller waiter waterman thief",
     ModelClass::person, "services, security, venues", [](Name n) { return Models::person(ServiceModels::staff_look(n)); }},
    {"look_cook", "", ModelClass::person, "the canteen", [](Name) { return Models::person(CanteenModels::cook_look()); }},
    {"look_server_", "0 1", ModelClass::person, "the coffee house",
     [](Name n) { return Models::person(CoffeeModels::server_look(int(n.to_int()))); }},

    {"animal_", "egg milk calf hen honey wool wool_shorn fish0 fish1 fish2", ModelClass::animal, "pens and ponds",
     [](Name n) { return Models::animal(n); }},
    {"", "wolf fox crow", ModelClass::animal, "raids", [](Name n) { return AddonModels::raider(n); }},
    {"pet_", "dog cat pig horse", ModelClass::animal, "the player's pets", [](Name n) { return PetModels::pet(n); }},

    {"house_", "egg milk fish calf hen honey apple orange wool bean", ModelClass::building, "producers",
     [](Name n) { return Buildings::house(n); }},
    {"house_farmer_", "0 1 2 3", ModelClass::building, "the family's house",
     [](Name n) { return FarmhouseModel::build(int(n.to_int())); }},
    {"machine_", "flour oil bread mayo cookies donut icecream cake meat drumstick cheese grilled_fish grilled_chicken "
                 "steak burger juice blanket coffee breakfast", ModelClass::building, "machines, factories, restaurants",
     [](Name n) { return Buildings::machine(n, Buildings::machine_roof()); }},
    {"canteen_", "1 2 3 4 5 6", ModelClass::building, "the staff's lunch",
     [](Name n) { return CanteenModels::hall(int(n.to_int())); }},
    {"worker_homes_", "1 2 3 4 5 6 7 8", ModelClass::building, "the staff's sleep",
     [](Name n) { return HomeModels::homes(int(n.to_int())); }},
    {"worker_annex", "", ModelClass::building, "the staff's sleep", [](Name) { return HomeModels::annex(); }},
    {"service_", "carpenter electric vet", ModelClass::building, "trades", [](Name n) { return ServiceModels::hut(n); }},
    {"pharmacy", "", ModelClass::building, "medicine", [](Name) { return AddonModels::pharmacy(); }},
    {"bank", "", ModelClass::building, "loans", [](Name) { return AddonModels::bank(); }},
    {"", "security_office sentry_box", ModelClass::building, "security", service_prop},
    {"ahwa_", "kiosk", ModelClass::building, "the coffee house", coffee_prop},
    {"decor_", "windmill gazebo", ModelClass::building, "gardens", decor},
    {"table_stall", "", ModelClass::building, "sales counters", [](Name) { return Buildings::stall(pal::col(pal::RED)); }},

    {"trough_", "corn hay", ModelClass::prop, "feed", [](Name n) { return Buildings::trough(n); }},
    {"", "tray pallet supply_van price_pole cash_mat bench region_sign", ModelClass::prop, "the farm's ground", ground_thing},
    {"zone_plate_", "28x20 24x18 17x10", ModelClass::prop, "the ground under a zone", [](Name n) { return sized("zone_plate_", n); }},
    {"path_", "20_155", ModelClass::scenery, "customers' paths", [](Name n) { return sized("path_", n); }},
    {"rail_", "66", ModelClass::prop, "pastures", [](Name n) { return sized("rail_", n); }},
    {"bed_b39a52_", "66_76_1", ModelClass::scenery, "fields", [](Name n) { return sized("bed_b39a52_", n); }},
    {"homestead_yard", "", ModelClass::prop, "the family's yard", [](Name) { return Scenery::homestead(); }},
    {"house_flour", "", ModelClass::building, "the title's mill", [](Name) { return Buildings::mill(); }},
    {"stone_", "0 1 2", ModelClass::prop, "the land", [](Name n) { return Scenery::stone(int(n.to_int())); }},
    {"tree", "", ModelClass::prop, "hedges, gardens", [](Name) -> Node3D * { return Models::any_tree(0.1f); }},
    {"tree_pine", "", ModelClass::prop, "hedges, gardens", [](Name) -> Node3D * { return Models::any_tree(0.7f); }},
    {"tree_birch", "", ModelClass::prop, "hedges, gardens", [](Name) -> Node3D * { return Models::any_tree(0.9f); }},
    {"crop_", "wheat sunflower tomato lettuce potato corn hay", ModelClass::prop, "fields", crop},
    {"mill_sails", "", ModelClass::prop, "the mill", [](Name) { return Buildings::anim("flour"); }},
    {"decor_", "flowers bench lamp fountain fountain_water fountain_jet pedestal blades statue friends", ModelClass::prop,
     "gardens", decor},
    {"hand_", "egg milk wool honey fish calf hen apple orange bean stool", ModelClass::prop, "farm hands",
     [](Name n) { return AddonModels::hand(n); }},
    {"tool_", "carpenter electric vet plumber appliance", ModelClass::prop, "trades", [](Name n) { return AddonModels::tool(n); }},
    {"damage_", "carpenter electric vet plumber appliance", ModelClass::prop, "breakdowns", [](Name n) { return ServiceModels::damage(n); }},
    {"veil_hat", "", ModelClass::prop, "beekeepers", [](Name) { return AddonModels::veil_hat(); }},
    {"", "water_tank water_well trade_box", ModelClass::prop, "water, trade", [](Name n) { return AddonModels::prop(n); }},
    {"", "wall_lamp road_post heater brazier brazier_flame guard_baton guard_badge sign_alert", ModelClass::prop,
     "night, winter, security", service_prop},
    {"cook_raw_", "grilled_fish grilled_chicken steak burger", ModelClass::prop, "grills", [](Name n) { return GrillFood::raw_piece(n); }},
    {"cook_done_", "grilled_fish grilled_chicken steak burger", ModelClass::prop, "grills", [](Name n) { return GrillFood::done_piece(n); }},
    {"", "meat_tray chicken_tray chicken_piece meat_hook cut_shoulder cut_ribs cut_rump cut_loin", ModelClass::prop,
     "butchers", [](Name n) { return GrillFood::butchery(n); }},
    {"canteen_meal", "", ModelClass::prop, "the canteen", [](Name) { return CanteenModels::meal(); }},
    {"ahwa_", "floor stock table stool cup glass", ModelClass::prop, "the coffee house", coffee_prop},
    {"qahwagi_tray_", "0 1", ModelClass::prop, "the coffee house", [](Name n) { return CoffeeModels::tray(int(n.to_int())); }},
    {"home_sleeper", "", ModelClass::prop, "worker homes", [](Name) { return HomeModels::sleeper(); }},
    {"van_", "plumber appliance", ModelClass::prop, "trades at the homes", [](Name n) { return HomeModels::van(n); }},
    {"gear_", "shoe_L shoe_R bag paw", ModelClass::prop, "boosts that are worn",
     [](Name n) { return gear_models::build(n); }},
    {"cart_body_", "1 2 3", ModelClass::prop, "the horse's cart", [](Name n) { return cart_part(n, "Bed"); }},
    {"cart_wheel_", "1 2 3", ModelClass::prop, "the horse's cart", [](Name n) { return cart_part(n, "WheelL"); }},
    {"truck_", "gold e5484d", ModelClass::prop, "loading bays",
     [](Name n) { return n == String("gold") ? truck_models::gold_truck() : truck_models::truck(Color::from_string(n, Color(1, 1, 1))); }},
    {"supply_balloon", "", ModelClass::prop, "depots", [](Name) { return truck_models::flying_van(); }},
    {"bay_", "dock market", ModelClass::prop, "loading bays", [](Name n) { return truck_models::bay(n == String("dock")); }},
    {"depot", "", ModelClass::prop, "depots", [](Name) { return truck_models::depot(); }},
    {"map_", "rock0 rock1 rock2 rock1s basalt0 basalt1 basalt2 cliff cliff_b peak volcano crater lava_pool lava_seg dune0 "
             "dune1 palm cactus camel oasis deadtree fall_wall walk lamp lamp_head lamp_pool street road cross cross_mid "
             "farm_road farm_path farm_fence bldg0 bldg1 bldg2 bldg3 bldg4 bldg5 car0 car1 car2 star star_max signpost hand "
             "trade_truck dock service_carpenter service_electric service_vet", ModelClass::scenery, "the shared map",
     [](Name n) -> Node3D * { return map_models::build(n); }},

    {"icon_", "stall machine restaurant crew depot belt field workers harvester waterman hauler tables truck waiter stack "
              "shoes feed magnet land homes ahwa canteen service security guards final", ModelClass::icon, "price tiles",
     [](Name n) { return icon(n, n == String("machine") || n == String("stall") || n == String("restaurant") ? "bread" : ""); }},
    {"icon_producer_", "egg milk fish calf hen honey apple orange wool bean", ModelClass::icon, "price tiles",
     [](Name n) { return icon("producer", n); }},
};

constexpr ModelLimits LIMITS[] = {
    {ModelClass::good,      250, 0.05f,  0.9f, 1.0f},
    {ModelClass::money,     250, 0.05f,  0.3f, 0.7f},
    {ModelClass::person,   1500, 1.75f,  2.5f, 1.4f},
    {ModelClass::animal,   1200, 0.25f,  1.9f, 2.4f},
    {ModelClass::building, 6000, 1.5f,   6.0f, 9.5f},
    {ModelClass::prop,     3000, 0.02f,  7.0f, 12.2f},
    {ModelClass::scenery,  2500, 0.02f, 40.0f, 65.0f},
    {ModelClass::icon,     3000, 0.2f,   2.2f, 2.4f},
};
// clang-format on

String text_of(std::string_view text) {
    return String::utf8(text.data(), int64_t(text.size()));
}

} // namespace

std::span<const ModelFamily> model_families() {
    return FAMILIES;
}

std::vector<ModelKey> model_keys() {
    std::vector<ModelKey> out;
    for (const ModelFamily &family : FAMILIES) {
        std::string_view rest = family.names;
        do {
            const size_t end = rest.find(' ');
            const String name = text_of(rest.substr(0, end));
            out.push_back({text_of(family.prefix) + name, name, &family});
            rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
        } while (!rest.empty());
    }
    return out;
}

const char *model_class_name(ModelClass group) {
    constexpr const char *NAMES[] = {"goods", "money", "people", "animals", "buildings", "props", "scenery", "icons"};
    return NAMES[size_t(group)];
}

const ModelLimits &limits_of(ModelClass group) {
    return LIMITS[size_t(group)];
}

Node3D *Models::model(const String &key) {
    for (const ModelKey &row : model_keys()) {
        if (row.key == key) {
            return row.family->make(row.name);
        }
    }
    WARN_PRINT("TILMARCH no model of the key " + key.left(60));
    return nullptr;
}

} // namespace tilm
