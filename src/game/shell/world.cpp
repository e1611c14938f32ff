#include "game/shell/world.h"

#include <cmath>

#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/scene_tree_timer.hpp>

#include "farm_items/goods_ledger.h"
#include "game/actors/cash_tile.h"
#include "game/actors/item.h"
#include "game/actors/item_batch.h"
#include "game/actors/player.h"
#include "game/actors/producer.h"
#include "game/actors/sell_counter.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/truck_depot.h"
#include "game/actors/unlock_tile.h"
#include "game/art/scenery.h"
#include "game/data/farm_data.h"
#include "game/interface/hud.h"
#include "game/kit/ui.h"
#include "game/ports/session.h"
#include "game/shell/assembly.h"
#include "game/shell/cinematic.h"
#include "game/shell/farm_document.h"
#include "game/shell/logistics.h"
#include "game/shell/offer_desk.h"
#include "game/shell/purse.h"
#include "game/shell/save.h"
#include "game/shell/world_options.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/levels.h"

namespace tilm {

namespace {

World *s_under_construction = nullptr;

} // namespace

World::World()
    : report(*this), purchases(*this), assembly(std::make_unique<Assembly>(*this)),
      purse(std::make_unique<Purse>(*this)), logistics(std::make_unique<Logistics>(*this)),
      document(std::make_unique<FarmDocument>(*this)) {
    visiting = WorldOptions::get().visit_peer != 0;
    tools["stack"] = 0;
    tools["shoes"] = 0;
}

World::~World() {
    if (Farm::current() == this) {
        Farm::set_current(nullptr);
    }
    if (s_under_construction == this) {
        s_under_construction = nullptr;
    }
    if (Item::items_root() == items) {
        Item::set_items_root(nullptr);
    }
}

void World::setup_statics() {
    WorldOptions::get() = WorldOptions();
    s_under_construction = nullptr;
}

void World::set_under_construction(World *world) {
    s_under_construction = world;
}

World *World::under_construction() {
    return s_under_construction;
}

int64_t World::level_threshold(int64_t n) {
    return rules::level_threshold(n);
}

int64_t World::level_for(int64_t total) {
    return rules::level_for(total);
}

int64_t World::total_levels() const {
    int64_t total = 0;
    Array values = levels_by_id.values();
    for (int i = 0; i < values.size(); i++) {
        total += static_cast<int64_t>(values[i]);
    }
    return total;
}

int64_t World::level() const {
    return rules::level_for(total_levels());
}

void World::_save() {
    Save *save = Save::get();
    if (!save || building_now || visiting || save->is_visiting()) {
        return;
    }
    save->set_data(document->build());
    save->write();
}

void World::_notification(int what) {
    switch (what) {
    case NOTIFICATION_WM_CLOSE_REQUEST:
    case NOTIFICATION_APPLICATION_PAUSED:
    case NOTIFICATION_APPLICATION_FOCUS_OUT:
        _save();
        break;
    case NOTIFICATION_EXIT_TREE:
        _save();
        GoodsLedger::close();
        break;
    case NOTIFICATION_WM_GO_BACK_REQUEST:
        if (hud_node && !building_now && !hud_node->panel_open()) {
            hud_node->_show_pause();
        }
        break;
    default:
        break;
    }
}

// Money verbs.

int64_t World::money_now() const {
    return money;
}

void World::pay(int64_t amount, const Vector3 &to) {
    purse->pay(amount, to);
}

void World::gain(int64_t amount, const Vector3 &from) {
    purse->gain(amount, from);
}

bool World::spend_quiet(int64_t amount) {
    return purse->spend_quiet(amount);
}

void World::set_money(int64_t sum) {
    money = sum;
    purse->rebase();
}

int64_t World::unaccounted_money() const {
    return purse->unaccounted();
}

void World::rebase_books() {
    purse->rebase();
    for (CashTile *tile : cash_tiles) {
        tile->rebook();
    }
}

int64_t World::get_sales() const {
    return purse->sales;
}

int64_t World::get_other_income() const {
    return purse->other;
}

int64_t World::get_mission_income() const {
    return purse->missions;
}

int64_t World::item_count() const {
    return items ? items->get_child_count() : 0;
}

void World::_collect(Object *bill) {
    Item *item = Object::cast_to<Item>(bill);
    if (!item) {
        ERR_PRINT("TILMARCH collect: not a bill");
        return;
    }
    rate_counter += item->get_value();
    purse->collect(item);
}

// Events.

void World::mission_event(const String &type, const String &kind, int64_t n) {
    if (n > 0 && type == "sell" && Session::current()) {
        Session::current()->sold(kind, n);
    }
}

void World::note_mood(double mood, const String &src) {
    report.flow.add(vformat("mood:%s%d", src, static_cast<int64_t>(std::round(10.0 * mood))), 1);
    moods.push_back(CLAMP(mood, 0.0, 1.0));
    if (moods.size() > 30) {
        moods.erase(moods.begin());
    }
    double sum = 0;
    for (double m : moods) {
        sum += m;
    }
    if (hud_node) {
        hud_node->set_mood(sum / static_cast<double>(moods.size()));
    }
}

void World::order_done(Object *dock, int64_t reward, double mult) {
    logistics->order_done(Object::cast_to<TruckDepot>(dock), reward, mult);
}

// Purchases.

void World::_on_tile_done(Object *tile) {
    if (UnlockTile *done = Object::cast_to<UnlockTile>(tile)) {
        purchases.on_tile_done(done);
    }
}

void World::_refresh_tiles() {
    if (!building_now && !is_queued_for_deletion()) {
        purchases.refresh_tiles();
    }
}

String World::buy_now(const String &id) {
    return purchases.buy_now(id);
}

String World::buy_guard() {
    return purchases.buy_guard();
}

Object *World::next_tile() {
    return purchases.next_tile();
}

int64_t World::price(const String &id) const {
    Dictionary e = FarmData::entry_by_id(id);
    return e.is_empty() ? -1 : purchases.price(e);
}

bool World::unlocked(const String &id) const {
    Dictionary e = FarmData::entry_by_id(id);
    return !e.is_empty() && purchases.unlocked(e);
}

Dictionary World::get_paid() {
    return purchases.paid_map();
}

Dictionary World::get_tiles() const {
    return purchases.tile_table();
}

void World::open_region(const String &id, bool quiet) {
    land.open(id, quiet, land_scene());
    player->set_first_area(land.first_area());
    player->set_second_area(land.second_area());
    // The house grows with the farm; its wing stands where the fence to the mill has gone.
    if (Node3D *house = Object::cast_to<Node3D>(get_node_or_null(NodePath("Farmhouse")))) {
        const int64_t lands = get_regions().size();
        Scenery::set_farmhouse_stage(house, !region_open("mill") ? 0 : lands < 8 ? 1 : lands < 16 ? 2 : 3);
    }
}

void World::show_land(const String &id) {
    Dictionary row = FarmData::region_by_id(id);
    if (!row.is_empty()) {
        cinema->play_land(id, row["title"], Vector3(row["x"], 0, -6));
    }
}

bool World::land_scene() const {
    return cinema && cinema->is_playing() && !cinema->get_region().is_empty();
}

void World::_on_cine_ended(const String &region) {
    if (!region.is_empty()) {
        emit_signal(TM_NAME("land_cinematic_done"), region);
    }
}

void World::_after_cine(double sec, const Callable &then) {
    get_tree()
        ->create_timer(sec, true, false, true)
        ->connect(TM_NAME("timeout"), UI::callback(this, [this, sec, then] {
                      if (land_scene()) {
                          cinema->connect(
                              TM_NAME("ended"),
                              UI::callback_arg(this, [this, sec, then](const Variant &) { _after_cine(sec, then); }),
                              CONNECT_ONE_SHOT);
                      } else {
                          then.call();
                      }
                  }));
}

void World::start_feed(const String &id, Producer *producer) {
    document->give_feed(id, producer);
}

int World::level_of(const String &entry_id) const {
    return static_cast<int>(static_cast<int64_t>(levels_by_id.get(entry_id, 0)));
}

Node *World::node_of(const String &entry_id) const {
    return Object::cast_to<Node>(nodes.get(entry_id, Variant()));
}

Object *World::player_object() const {
    return player;
}

Object *World::hud_object() const {
    return hud_node;
}

Dictionary World::get_nodes() const {
    return nodes;
}

int64_t World::batched_items() const {
    int64_t stats = batch ? batch->stats() : 0;
    return stats & 0xffffffff;
}

Node3D *World::player_node() {
    return player;
}

void World::add_solid(const Rect2 &rect) {
    player->add_solid(rect);
}

void World::add_cash_tile(CashTile *tile) {
    if (!tile) {
        return;
    }
    tile->set_meta("pkey", FarmDocument::cash_key(tile->get_position()));
    cash_tiles.push_back(tile);
    cash_array.push_back(tile);
}

void World::add_stall(SellCounter *stall) {
    if (stall) {
        stalls.push_back(stall);
    }
}

Array World::truck_list() {
    return logistics->list();
}

// A tap on a price tile names it and what it still costs.
void World::_on_tap(const Vector2 &screen_pos) {
    Camera3D *eye = camera.node();
    Vector3 from = eye->project_ray_origin(screen_pos);
    Vector3 along = eye->project_ray_normal(screen_pos);
    if (building_now || along.y > -0.001f) {
        return;
    }
    Vector3 at = from + along * (from.y / -along.y);
    if (UnlockTile *tile = purchases.tile_at(at)) {
        Notices::say(tile->get_title() + "  " + UI::money(tile->remaining()));
    }
}

void World::go_to_menu() {
    _save();
    emit_signal(TM_NAME("go_menu"));
}

void World::save_on_request() {
    _save();
    Notices::say("GAME SAVED!", ToastLevel::good);
}

void World::zoom_to(int step) {
    camera.set_zoom_option(step);
}

void World::travel_region(const String &id) {
    Dictionary row = FarmData::region_by_id(id);
    if (row.is_empty() || !land.is_open(id)) {
        Notices::say("LOCKED: BUY THE LAND FIRST", ToastLevel::warning);
        return;
    }
    player->set_position(Vector3(row["x"], 0, 1.2f));
    Sfx::sound(TM_NAME("travel"));
    Notices::say(row["title"]);
}

void World::travel_to(const Vector3 &point, const String &text) {
    if (!point.is_finite()) {
        ERR_PRINT("TILMARCH travel: no such place");
        return;
    }
    travel_target = player->nearest_land(point);
    player->set_position(*travel_target);
    Sfx::sound(TM_NAME("travel"));
    Notices::say(text);
}

void World::leave_visit() {
    if (visiting) {
        emit_signal(TM_NAME("go_home"));
    }
}

} // namespace tilm
