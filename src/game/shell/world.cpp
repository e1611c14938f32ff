#include "game/shell/world.h"

#include <cmath>

#include <godot_cpp/classes/cpu_particles3d.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/scene_tree_timer.hpp>
#include <godot_cpp/classes/sphere_mesh.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/classes/viewport.hpp>
#include <godot_cpp/classes/window.hpp>
#include <godot_cpp/variant/callable_method_pointer.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/actors/cash_tile.h"
#include "game/actors/hauler.h"
#include "game/actors/item.h"
#include "game/actors/item_batch.h"
#include "game/actors/player.h"
#include "game/actors/producer.h"
#include "game/actors/sell_counter.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/unlock_tile.h"
#include "game/art/models.h"
#include "game/art/scenery.h"
#include "game/automation/bot_actions.h"
#include "game/data/farm_data.h"
#include "game/interface/hud.h"
#include "game/interface/joystick.h"
#include "game/kit/ui.h"
#include "game/ports/session.h"
#include "game/shell/assembly.h"
#include "game/shell/farm_document.h"
#include "game/shell/purse.h"
#include "game/shell/save.h"
#include "game/shell/world_options.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/levels.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr uint64_t STEP_BUDGET_USEC = 12000;
constexpr double BURST_LIFE = 0.9;

World *s_under_construction = nullptr;

} // namespace

World::World()
    : purchases(*this), assembly(std::make_unique<Assembly>(*this)), purse(std::make_unique<Purse>(*this)),
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

void World::_ready() {
    if (in_editor()) {
        return;
    }
    Save *save = Save::get();
    Dictionary doc = save ? save->get_data() : Dictionary();
    first_run = doc.is_empty();
    document->open(doc);
    FarmData::strip_extras();
    set_process_mode(PROCESS_MODE_DISABLED);
    Farm::set_current(this);
    build_scene();
    s_under_construction = this;
}

void World::build_scene() {
    items = memnew(Node3D);
    items->set_name("Items");
    add_child(items);
    Item::set_items_root(items);
    batch = memnew(ItemBatch);
    add_child(batch);
    Scenery::ground(this);
    land.build(this);

    player = memnew(Player);
    player->set_name("Player");
    player->set_position(Vector3(-2.5, 0, 2.9));
    add_child(player);

    Node3D *house = Scenery::farmhouse();
    house->set_position(Vector3(10, 0, -17));
    add_child(house);
    add_solid(Rect2(6.6, -20.2, 6.8, 6.0));
    Node3D *bench = Scenery::bench();
    bench->set_position(Vector3(6.9, 0, -12.6));
    add_child(bench);
    Array rows = FarmData::regions();
    for (int i = 0; i < rows.size(); i++) {
        Dictionary row = rows[i];
        Node3D *sign = Scenery::region_sign(row["title"]);
        sign->set_position(Vector3(static_cast<double>(row["x"]) + 9.2, 0, 6.6));
        add_child(sign);
    }
    camera.build(this);
    hud_node = memnew(Hud);
    hud_node->set_process_mode(PROCESS_MODE_DISABLED);
    add_child(hud_node);
    hud_node->connect("home_pressed", callable_mp(this, &World::go_to_menu));
    hud_node->connect("save_pressed", callable_mp(this, &World::save_on_request));
    hud_node->connect("zoom_pressed", callable_mp(this, &World::zoom_to));
    hud_node->joystick()->connect("tapped", callable_mp(this, &World::_on_tap));
    Scenery::light(this);
    if (WorldOptions::get().autoplay) {
        bot = memnew(BotActions);
        add_child(bot);
        bot->setup(this);
    }
    arrow.build(this);
    get_viewport()->connect("size_changed", callable_mp(this, &World::_fit_cam));
    camera.set_distance(static_cast<float>(WorldOptions::get().zoom));
    camera.place(player->get_position());
}

bool World::build_step() {
    switch (stage) {
    case 0: {
        Dictionary doc = Save::get() ? Save::get()->get_data() : Dictionary();
        earn_rate = read_real(doc, "earn_rate");
        earn_slow = read_real(doc, "earn_slow", earn_rate);
        open_region("eggs", true);
        open_region("service", true);
        staff = read_table(doc, "staff").duplicate();
        saved_levels = document->saved_levels();
        stage = 1;
        return false;
    }
    case 1:
        if (raise_levels()) {
            stage = 2;
        }
        return false;
    case 2:
        purchases.auto_free();
        document->load_core();
        buy_cheapest(WorldOptions::get().stage);
        stage = 3;
        return false;
    case 3:
        stage = 4;
        return false;
    case 4:
        document->load_state();
        stage = 5;
        return false;
    case 5:
        finish_ready();
        stage = 6;
        return true;
    default:
        return true;
    }
}

// Raises the plan's entries to their saved levels, in order, until the frame's time is used up; true at the end.
bool World::raise_levels() {
    uint64_t start = Time::get_singleton()->get_ticks_usec();
    Array entries = FarmData::plan();
    bool full = WorldOptions::get().max_farm;
    while (entry_index < entries.size()) {
        Dictionary e = entries[entry_index];
        Array costs = e["costs"];
        int64_t wanted = full ? static_cast<int64_t>(e.get("base", costs.size()))
                              : static_cast<int64_t>(saved_levels.get(e["id"], 0));
        int level_now = level_of(e["id"]);
        if (level_now < MIN(wanted, static_cast<int64_t>(costs.size()))) {
            assembly->apply(e, level_now + 1, true);
        } else {
            entry_index++;
        }
        if (Time::get_singleton()->get_ticks_usec() - start > STEP_BUDGET_USEC) {
            return false;
        }
    }
    return true;
}

// --stage=: the `n` cheapest things on offer stand as if they had been bought, one after the other.
void World::buy_cheapest(int n) {
    for (; n > 0; n--) {
        Array entries = FarmData::plan();
        Dictionary best;
        for (int i = 0; i < entries.size(); i++) {
            Dictionary e = entries[i];
            int64_t cost = purchases.price(e);
            if (cost > 0 && can_build(e["kind"]) && purchases.unlocked(e) &&
                (best.is_empty() || cost < purchases.price(best))) {
                best = e;
            }
        }
        if (best.is_empty()) {
            return;
        }
        apply_level(best, level_of(best["id"]) + 1, true);
        purchases.auto_free();
    }
}

double World::build_progress() const {
    double all = MAX(1.0, static_cast<double>(FarmData::plan().size()));
    return MIN(1.0, entry_index / all) * 0.92;
}

void World::finish_ready() {
    const WorldOptions &options = WorldOptions::get();
    document->load_feed();
    building_now = false;
    if (options.max_farm) {
        money = 3000000000;
    }
    recalc();
    purchases.refresh_tiles();
    progress();
    show_bars();
    purse->show();
    Vector3 at = player->get_position();
    if (std::isfinite(options.at_x)) {
        at.x = options.at_x;
    }
    if (std::isfinite(options.at_z)) {
        at.z = options.at_z;
    }
    player->set_position(at);
    int zoom = Save::get() ? static_cast<int>(Save::get()->get_zoom()) : 1;
    camera.set_zoom_option(zoom);
    camera.place(at);
    camera.publish_view();
    if (options.hide_player) {
        player->set_position(Vector3(at.x, at.y, 40));
    }
    s_under_construction = nullptr;
    hud_node->set_process_mode(PROCESS_MODE_ALWAYS);
    set_process_mode(PROCESS_MODE_INHERIT);
    emit_signal(TM_NAME("built"));
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
    case NOTIFICATION_EXIT_TREE:
        _save();
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
    flow.add(vformat("mood:%s%d", src, static_cast<int64_t>(std::round(10.0 * mood))), 1);
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
    land.open(id, quiet);
    player->set_first_area(land.first_area());
    player->set_second_area(land.second_area());
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

// PurchaseHost.

Callable World::tile_done_call() {
    return Callable(this, TM_NAME("_on_tile_done"));
}

Callable World::refresh_call() {
    return Callable(this, TM_NAME("_refresh_tiles"));
}

Array World::plan() {
    return FarmData::plan();
}

int World::gate_of(const String &entry_id) {
    return static_cast<int>(FarmData::unlock_level(entry_id));
}

bool World::can_build(const String &kind) {
    return assembly->can_build(kind);
}

void World::apply_level(const Dictionary &entry, int to, bool quiet) {
    assembly->apply(entry, to, quiet);
}

Vector3 World::player_pos() {
    return player->get_position();
}

void World::burst(const Vector3 &at) {
    _burst(at, Color::html("ffd54f"));
}

void World::recalc() {
    Callable stands;
    for (int i = 0; i < get_child_count(); i++) {
        if (Hauler *hauler = Object::cast_to<Hauler>(get_child(i))) {
            int extra = hauler_extra_room(hauler->get_dst(), levels_by_id,
                                          [this](const String &id) { return node_of(id) != nullptr; });
            if (hauler->get_extra_capacity() != extra) {
                hauler->set_extra_capacity(extra);
                hauler->_staff_apply(false);
            }
        }
    }
    Dictionary mults = SellCounter::price_mults();
    mults.clear();
    mults.merge(price_factors(FarmData::plan(), levels_by_id), true);
}

void World::level_up() {
    int64_t now = level();
    String text = vformat("LEVEL %d!", now);
    Array entries = FarmData::plan();
    Dictionary next;
    int64_t next_gate = 0;
    for (int i = 0; i < entries.size(); i++) {
        Dictionary e = entries[i];
        int64_t gate = FarmData::unlock_level(e["id"]);
        if (gate <= 0 || level_of(e["id"]) > 0) {
            continue;
        }
        if (gate <= now) {
            Notices::say(text + " " + vformat("%s IS OPEN", e["title"]), ToastLevel::good);
            return;
        }
        if (next.is_empty() || gate < next_gate) {
            next = e;
            next_gate = gate;
        }
    }
    if (!next.is_empty()) {
        text += " " + vformat("NEXT: %s AT LEVEL %d", next["title"], next_gate);
    }
    Notices::say(text, ToastLevel::good);
    // The tiles follow with the refresh that every purchase ends with: this one runs inside a tile's own callback.
}

void World::buzz(int ms) {
    Sfx::vibrate(ms);
}

void World::announce(const String &text, int type) {
    if (Session *session = Session::current()) {
        session->post_activity(text, type);
    }
}

void World::log_line(const String &line) {
    UtilityFunctions::print(line);
}

void World::progress() {
    int64_t base_sum = 0;
    int64_t got = 0;
    Array entries = FarmData::plan();
    for (int i = 0; i < entries.size(); i++) {
        Dictionary e = entries[i];
        int64_t base = e["base"];
        base_sum += base;
        got += MIN(static_cast<int64_t>(level_of(e["id"])), base);
    }
    progress_percent = static_cast<int>(100 * got / MAX(int64_t(1), base_sum));
    hud_node->set_level_line(static_cast<int>(level()), progress_percent);
}

void World::after(double sec, const Callable &then) {
    get_tree()->create_timer(sec, false)->connect("timeout", then, CONNECT_ONE_SHOT);
}

// Looks.

void World::_burst(const Vector3 &pos, const Color &color) {
    CPUParticles3D *puff = memnew(CPUParticles3D);
    Ref<SphereMesh> bead;
    bead.instantiate();
    bead->set_radius(0.09);
    bead->set_height(0.18);
    bead->set_radial_segments(6);
    bead->set_rings(3);
    bead->set_material(Models::color_material(color, 0.85f, true));
    puff->set_mesh(bead);
    puff->set_amount(24);
    puff->set_lifetime(BURST_LIFE);
    puff->set_one_shot(true);
    puff->set_explosiveness_ratio(1);
    puff->set_direction(Vector3(0, 1, 0));
    puff->set_spread(70);
    puff->set_param_min(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 3);
    puff->set_param_max(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 6);
    puff->set_param_min(CPUParticles3D::PARAM_SCALE, 0.7);
    puff->set_param_max(CPUParticles3D::PARAM_SCALE, 1.3);
    puff->set_position(pos);
    add_child(puff);
    puff->set_emitting(true);
    after(BURST_LIFE + 0.1, Callable(puff, "queue_free"));
}

void World::_focus(const Vector3 &pos, double seconds) {
    camera.focus(pos, seconds);
}

void World::_fit_cam() {
    camera.fit();
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

void World::leave_visit() {
    if (visiting) {
        emit_signal(TM_NAME("go_home"));
    }
}

void World::_bind_methods() {
    TM_BIND_FIELD(World, Variant::INT, money);
    TM_BIND_FIELD(World, Variant::INT, gold_eggs);
    TM_BIND_FIELD(World, Variant::DICTIONARY, tools);
    TM_BIND_FIELD(World, Variant::BOOL, won);
    TM_BIND_FIELD(World, Variant::FLOAT, earn_rate);
    TM_BIND_FIELD(World, Variant::FLOAT, earn_slow);
    TM_BIND_FIELD(World, Variant::BOOL, magnet);
    ClassDB::bind_method(D_METHOD("get_levels"), &World::get_levels);
    ClassDB::bind_method(D_METHOD("get_paid"), &World::get_paid);
    ClassDB::bind_method(D_METHOD("get_tiles"), &World::get_tiles);
    ClassDB::bind_method(D_METHOD("get_nodes"), &World::get_nodes);
    ClassDB::bind_method(D_METHOD("get_regions"), &World::get_regions);
    ClassDB::bind_method(D_METHOD("get_fences"), &World::get_fences);
    ClassDB::bind_method(D_METHOD("get_zones"), &World::zone_list);
    ClassDB::bind_method(D_METHOD("get_player"), &World::player_object);
    ClassDB::bind_method(D_METHOD("get_hud"), &World::hud_object);
    ClassDB::bind_method(D_METHOD("get_progress_percent"), &World::get_progress_percent);
    ClassDB::bind_method(D_METHOD("get_visiting"), &World::is_visiting);
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
    ClassDB::bind_method(D_METHOD("_save"), &World::_save);
    ClassDB::bind_method(D_METHOD("save_now"), &World::save_now);
    ClassDB::bind_method(D_METHOD("_fit_cam"), &World::_fit_cam);
    ClassDB::bind_method(D_METHOD("_on_tap", "sp"), &World::_on_tap);
    ClassDB::bind_method(D_METHOD("_on_tile_done", "t"), &World::_on_tile_done);
    ClassDB::bind_method(D_METHOD("_refresh_tiles"), &World::_refresh_tiles);
    ClassDB::bind_method(D_METHOD("buy_now", "id"), &World::buy_now);
    ClassDB::bind_method(D_METHOD("buy_guard"), &World::buy_guard);
    ClassDB::bind_method(D_METHOD("next_tile"), &World::next_tile);
    ClassDB::bind_method(D_METHOD("leave_visit"), &World::leave_visit);
    ClassDB::bind_method(D_METHOD("pay", "amount", "to"), &World::pay);
    ClassDB::bind_method(D_METHOD("gain", "amount", "from"), &World::gain);
    ClassDB::bind_method(D_METHOD("spend_quiet", "amount"), &World::spend_quiet);
    ClassDB::bind_method(D_METHOD("_collect", "b"), &World::_collect);
    ClassDB::bind_method(D_METHOD("collect_bill", "b"), &World::collect_bill);
    ClassDB::bind_method(D_METHOD("mission_event", "type", "kind", "n"), &World::mission_event);
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
