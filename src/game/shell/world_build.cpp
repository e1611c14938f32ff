#include <cmath>

#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/classes/viewport.hpp>
#include <godot_cpp/variant/callable_method_pointer.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_shop/hauler_brain.h"
#include "game/actors/item.h"
#include "game/actors/item_batch.h"
#include "game/actors/player.h"
#include "game/art/auto_quality.h"
#include "game/art/fx_lod.h"
#include "game/art/scenery.h"
#include "game/art/shadow_cull.h"
#include "game/automation/bot_actions.h"
#include "game/data/farm_data.h"
#include "game/interface/hud.h"
#include "game/interface/joystick.h"
#include "game/shell/assembly.h"
#include "game/shell/cinematic.h"
#include "game/shell/farm_document.h"
#include "game/shell/offer_desk.h"
#include "game/shell/purse.h"
#include "game/shell/save.h"
#include "game/shell/world.h"
#include "game/shell/world_options.h"
#include "names.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr uint64_t STEP_BUDGET_USEC = 12000;
constexpr int TILES_A_FRAME = 12; // their texts are laid out at the end of the frame

} // namespace

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
    GoodsLedger::open();
    HaulerBrain::clear_hens();
    build_scene();
    set_under_construction(this);
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

    Node3D *house = Scenery::farmhouse(0);
    house->set_name("Farmhouse");
    house->set_position(Vector3(10, 0, -17));
    add_child(house);
    Node3D *yard = Scenery::homestead();
    yard->set_position(house->get_position());
    add_child(yard);
    add_solid(Rect2(6.6, -20.2, 6.8, 6.0));
    Node3D *bench = Scenery::bench();
    bench->set_position(Vector3(6.9, 0, -12.6));
    add_child(bench);
    camera.build(this);
    hud_node = memnew(Hud);
    hud_node->set_process_mode(PROCESS_MODE_DISABLED);
    hud_node->set_visible(false); // until the first step of the build: this frame has enough to do
    add_child(hud_node);
    hud_node->connect("home_pressed", callable_mp(this, &World::go_to_menu));
    hud_node->connect("save_pressed", callable_mp(this, &World::save_on_request));
    hud_node->connect("zoom_pressed", callable_mp(this, &World::zoom_to));
    hud_node->joystick()->connect("tapped", callable_mp(this, &World::_on_tap));
    if (!visiting) {
        hud_node->offer_panel("DECOR", Callable(hud_node, "_show_decor"));
    }
    cinema = memnew(Cinematic);
    cinema->set_name("Cinematic");
    add_child(cinema);
    cinema->setup(&camera);
    cinema->connect("ended", callable_mp(this, &World::_on_cine_ended));
    Scenery::light(this);
    add_child(memnew(FxLod));
    if (WorldOptions::get().autoplay) {
        bot = memnew(BotActions);
        add_child(bot);
        bot->setup(this);
    }
    arrow.build(this);
    offers = std::make_unique<OfferDesk>(*this);
    shadow_cull = memnew(ShadowCull);
    shadow_cull->set_process_mode(PROCESS_MODE_ALWAYS); // looks at what stands while the rest is being built
    add_child(shadow_cull);
    get_viewport()->connect("size_changed", callable_mp(this, &World::_fit_cam));
    camera.set_distance(static_cast<float>(WorldOptions::get().zoom));
    camera.place(player->get_position());
}

bool World::build_step() {
    switch (stage) {
    case 0: {
        if (!hud_node->is_visible()) {
            hud_node->set_visible(true);
            return false; // its layout has this frame for itself
        }
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
        if (raise_levels() && land.write_words()) {
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
        if (!garden_laid) {
            garden_laid = true;
            if (!visiting) { // a friend's pets are the friend's
                pets.load(document->opened());
            }
            garden.load(document->opened());
        } else if (garden.raise(Time::get_singleton()->get_ticks_usec() + STEP_BUDGET_USEC)) {
            stage = 4;
        }
        return false;
    case 4:
        if (!state_laid) {
            state_laid = document->load_state(Time::get_singleton()->get_ticks_usec() + STEP_BUDGET_USEC);
        } else if (purchases.lay_ahead(TILES_A_FRAME)) {
            stage = 5;
        }
        return false;
    case 5:
        document->load_feed(); // with a frame to itself: each trough's goods are laid out
        stage = 6;
        return false;
    case 6:
        finish_ready();
        stage = 7;
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

String World::build_note() const {
    const Array entries = FarmData::plan();
    if (stage == 1 && entry_index < entries.size()) {
        return Dictionary(entries[entry_index]).get("id", String());
    }
    return vformat("stage %d", stage);
}

double World::build_progress() const {
    double all = MAX(1.0, static_cast<double>(FarmData::plan().size()));
    return MIN(1.0, entry_index / all) * 0.92;
}

void World::finish_ready() {
    const WorldOptions &options = WorldOptions::get();
    building_now = false;
    just_built = true;
    if (options.max_farm) {
        money = 3000000000;
    }
    purse->rebase();
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
    pets.settle();
    add_child(memnew(AutoQuality)); // not earlier: the frames of a load tell nothing
    if (options.hide_player) {
        player->set_position(Vector3(at.x, at.y, 40));
    }
    if (!visiting) {
        if (first_run && !bot && !options.given_place()) {
            cinema->play_intro(at);
        }
        _offline_check(Save::get() ? Save::get()->get_data() : Dictionary());
    }
    set_under_construction(nullptr);
    shadow_cull->set_process_mode(PROCESS_MODE_INHERIT);
    hud_node->set_process_mode(PROCESS_MODE_ALWAYS);
    set_process_mode(PROCESS_MODE_INHERIT);
    emit_signal(TM_NAME("built"));
}

} // namespace tilm
