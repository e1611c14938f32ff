#include "game/shell/world.h"

namespace tilm {

void World::_bind_methods() {
    TM_BIND_FIELD(World, Variant::INT, money);
    TM_BIND_FIELD(World, Variant::INT, gold_eggs);
    TM_BIND_FIELD(World, Variant::DICTIONARY, tools);
    TM_BIND_FIELD(World, Variant::BOOL, won);
    TM_BIND_FIELD(World, Variant::FLOAT, earn_rate);
    TM_BIND_FIELD(World, Variant::FLOAT, earn_slow);
    TM_BIND_FIELD(World, Variant::BOOL, magnet);
    TM_BIND_FIELD(World, Variant::FLOAT, charm);
    TM_BIND_FIELD(World, Variant::BOOL, night);
    TM_BIND_FIELD(World, Variant::ARRAY, pets);
    TM_BIND_FIELD(World, Variant::ARRAY, pets_home);
    TM_BIND_FIELD(World, Variant::INT, horse_lv);
    TM_BIND_FIELD(World, Variant::INT, cart_lv);
    TM_BIND_FIELD(World, Variant::ARRAY, decor);
    ClassDB::bind_method(D_METHOD("get_levels"), &World::get_levels);
    ClassDB::bind_method(D_METHOD("get_paid"), &World::get_paid);
    ClassDB::bind_method(D_METHOD("get_tiles"), &World::get_tiles);
    ClassDB::bind_method(D_METHOD("get_nodes"), &World::get_nodes);
    ClassDB::bind_method(D_METHOD("get_regions"), &World::get_regions);
    ClassDB::bind_method(D_METHOD("get_fences"), &World::get_fences);
    ClassDB::bind_method(D_METHOD("get_zones"), &World::zone_list);
    ClassDB::bind_method(D_METHOD("get_stalls"), &World::stall_list);
    ClassDB::bind_method(D_METHOD("get_trucks"), &World::truck_list);
    ClassDB::bind_method(D_METHOD("get_player"), &World::player_object);
    ClassDB::bind_method(D_METHOD("get_hud"), &World::hud_object);
    ClassDB::bind_method(D_METHOD("get_progress_percent"), &World::get_progress_percent);
    ClassDB::bind_method(D_METHOD("get_visiting"), &World::is_visiting);
    ClassDB::bind_method(D_METHOD("get_sales"), &World::get_sales);
    ClassDB::bind_method(D_METHOD("get_other_income"), &World::get_other_income);
    ClassDB::bind_method(D_METHOD("get_building"), &World::is_building);

    ClassDB::bind_static_method("World", D_METHOD("level_threshold", "n"), &World::level_threshold);
    ClassDB::bind_static_method("World", D_METHOD("level_for", "total"), &World::level_for);
    ClassDB::bind_method(D_METHOD("total_levels"), &World::total_levels);
    ClassDB::bind_method(D_METHOD("level"), &World::level);
    ClassDB::bind_method(D_METHOD("level_of", "id"), &World::level_of);
    ClassDB::bind_method(D_METHOD("price", "id"), &World::price);
    ClassDB::bind_method(D_METHOD("unlocked", "id"), &World::unlocked);
    ClassDB::bind_method(D_METHOD("region_open", "id"), &World::region_open);
    ClassDB::bind_method(D_METHOD("flow_total", "key"), &World::flow_total);
    ClassDB::bind_method(D_METHOD("build_step"), &World::build_step);
    ClassDB::bind_method(D_METHOD("build_progress"), &World::build_progress);
    ClassDB::bind_method(D_METHOD("build_note"), &World::build_note);
    ClassDB::bind_method(D_METHOD("_save"), &World::_save);
    ClassDB::bind_method(D_METHOD("save_now"), &World::save_now);
    ClassDB::bind_method(D_METHOD("_fit_cam"), &World::_fit_cam);
    ClassDB::bind_method(D_METHOD("_on_tap", "sp"), &World::_on_tap);
    ClassDB::bind_method(D_METHOD("_on_tile_done", "t"), &World::_on_tile_done);
    ClassDB::bind_method(D_METHOD("_refresh_tiles"), &World::_refresh_tiles);
    ClassDB::bind_method(D_METHOD("buy_now", "id"), &World::buy_now);
    ClassDB::bind_method(D_METHOD("buy_guard"), &World::buy_guard);
    ClassDB::bind_method(D_METHOD("buy_decor", "type"), &World::buy_decor);
    ClassDB::bind_method(D_METHOD("no_land_hint", "jump"), &World::no_land_hint);
    ClassDB::bind_method(D_METHOD("next_tile"), &World::next_tile);
    ClassDB::bind_method(D_METHOD("leave_visit"), &World::leave_visit);
    ClassDB::bind_method(D_METHOD("travel_region", "id"), &World::travel_region);
    ClassDB::bind_method(D_METHOD("travel_to", "point", "text"), &World::travel_to);
    ClassDB::bind_method(D_METHOD("force_input", "wish"), &World::force_input);
    ClassDB::bind_method(D_METHOD("pay", "amount", "to"), &World::pay);
    ClassDB::bind_method(D_METHOD("gain", "amount", "from"), &World::gain);
    ClassDB::bind_method(D_METHOD("spend_quiet", "amount"), &World::spend_quiet);
    ClassDB::bind_method(D_METHOD("_collect", "b"), &World::_collect);
    ClassDB::bind_method(D_METHOD("collect_bill", "b"), &World::collect_bill);
    ClassDB::bind_method(D_METHOD("mission_event", "type", "kind", "n"), &World::mission_event);
    ClassDB::bind_method(D_METHOD("order_done", "dock", "reward", "mult"), &World::order_done);
    ClassDB::bind_method(D_METHOD("note_mood", "m", "src"), &World::note_mood);
    ClassDB::bind_method(D_METHOD("_burst", "pos", "c"), &World::_burst);
    ClassDB::bind_method(D_METHOD("_focus", "pos", "dur"), &World::_focus);

    ADD_SIGNAL(MethodInfo("go_menu"));
    ADD_SIGNAL(MethodInfo("go_reload"));
    ADD_SIGNAL(MethodInfo("built"));
    ADD_SIGNAL(MethodInfo("go_home"));
    ADD_SIGNAL(MethodInfo("land_cinematic_done", PropertyInfo(Variant::STRING, "region")));
}

} // namespace tilm
