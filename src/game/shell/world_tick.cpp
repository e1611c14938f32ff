#include <cmath>

#include <godot_cpp/classes/input.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_shop/machine_core.h"
#include "game/actors/crop_field.h"
#include "game/actors/item.h"
#include "game/actors/player.h"
#include "game/actors/sell_counter.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/truck_depot.h"
#include "game/actors/unlock_tile.h"
#include "game/art/icons.h"
#include "game/automation/bot_actions.h"
#include "game/interface/hud.h"
#include "game/interface/joystick.h"
#include "game/shell/cinematic.h"
#include "game/shell/farm_document.h"
#include "game/shell/offer_desk.h"
#include "game/shell/purse.h"
#include "game/shell/save.h"
#include "game/shell/world.h"
#include "game/sound/sfx.h"
#include "glebworks/glebworks.h"
#include "glebworks/walker_core.h"
#include "names.h"
#include "rules/field_rules.h"
#include "rules/offline.h"
#include "rules/shop.h"

namespace tilm {

namespace {

constexpr double AUTOSAVE_SECONDS = 20.0;
constexpr double GUIDE_SECONDS = 0.2;
constexpr double CUT_AHEAD = 0.35;
constexpr double CUT_RADIUS = 0.8;
constexpr int CUT_MAX = 9999;
constexpr double GOOD_RISE = 0.4;

} // namespace

void World::_process(double delta) {
    if (building_now) {
        return;
    }
    if (just_built) {
        just_built = false; // this frame's time went into the building
        return;
    }
    play_time += delta;
    report.step(delta, bot != nullptr);
    Glebworks::slow_tick(delta);
    Glebworks::timed_tick(delta);
    WalkerCore::tick_far(delta);
    read_input(delta);
    if (!visiting) {
        cut_crops();
        pickup.zones(zones, player->get_position(), player->carrier(), delta);
        double reach = magnet ? Pickup::magnet_reach : Pickup::reach;
        pickup.cash_step(cash_array, player->get_position(), reach, delta, [this](Item *bill) { _collect(bill); });
        purchases.tick(delta);
        purchases.stand_step(player->get_position(), delta);
    }
    show_bars();
    step_meters(delta);
    if (!visiting) {
        autosave_timer += delta;
        if (autosave_timer >= AUTOSAVE_SECONDS) {
            autosave_timer = 0;
            _save();
        }
        guide_timer -= delta;
        if (guide_timer <= 0) {
            guide_timer = GUIDE_SECONDS;
            UnlockTile *asked = purchases.tile_of(offers->wanted());
            UnlockTile *aim = asked != nullptr ? asked : purchases.next_tile();
            arrow.aim(aim != nullptr, aim ? aim->get_position() : Vector3());
            const UnlockTile *goal = aim != nullptr ? aim : purchases.cheapest_tile();
            hud_node->set_next_goal(goal ? goal->get_title() : String(), money, goal ? goal->remaining() : 0,
                                    goal ? Icons::thing_key(goal->entry_kind(), goal->product()) : String());
        }
        arrow.step(player->get_position(), delta);
    }
    if (Sfx *sfx = Sfx::get()) {
        sfx->set_listener(player->get_position());
    }
    step_camera(delta);
}

void World::read_input(double delta) {
    Vector2 wish = hud_node->joystick()->vector();
    if (forced_input != Vector2()) {
        wish = forced_input.limit_length(1.0);
    } else if (bot && !visiting) {
        wish = bot->wish(delta);
    } else if (wish == Vector2()) {
        Input *input = Input::get_singleton();
        wish = input->get_vector(TM_NAME("ui_left"), TM_NAME("ui_right"), TM_NAME("ui_up"), TM_NAME("ui_down"));
        wish.x += static_cast<float>(input->is_physical_key_pressed(KEY_D)) -
                  static_cast<float>(input->is_physical_key_pressed(KEY_A));
        wish.y += static_cast<float>(input->is_physical_key_pressed(KEY_S)) -
                  static_cast<float>(input->is_physical_key_pressed(KEY_W));
        wish = wish.limit_length(1.0);
    }
    if (visiting || hud_node->keys_taken()) {
        wish = Vector2();
    }
    if (cinema->is_playing()) {
        if (wish != Vector2()) {
            cinema->skip();
        }
        if (land_scene() && !bot) {
            wish = Vector2();
        }
    }
    player->set_input(Vector3(wish.x, 0, wish.y));
    if (!moved_told && wish != Vector2()) {
        moved_told = true;
        hud_node->show_hint(false);
        if (Save *save = Save::get()) {
            save->set_moved(true);
        }
    }
}

// Walking through a crop cuts it: three plants are one good.
void World::cut_crops() {
    StackCarrier *tower = player->carrier();
    Vector3 at = player->get_position();
    for (CropField *field : fields) {
        if (tower->is_full() || !field->contains(at)) {
            continue;
        }
        int cut = field->collect_at(at + player->forward() * CUT_AHEAD, CUT_MAX, CUT_RADIUS);
        Variant key = field->get_instance_id();
        int64_t tally = static_cast<int64_t>(crop_tally.get(key, 0)) + cut;
        if (tally == 0) {
            continue;
        }
        while (tally >= field->get_cells() && !tower->is_full()) {
            tally -= field->get_cells();
            const GoodsVerb verb("cut");
            tower->add(Item::spawn(field->get_crop(), tower->top_global() + Vector3(0, GOOD_RISE, 0)));
            Sfx::sound(TM_NAME("item_pick"));
        }
        crop_tally[key] = tally;
    }
}

void World::step_camera(double delta) {
    camera.step(player->get_position(), delta);
    camera.publish_view();
}

void World::show_bars() {
    if (shown_money != money) {
        shown_money = money;
        hud_node->set_money(money);
        hud_node->set_gold(gold_eggs);
    }
}

void World::step_meters(double delta) {
    WalkerCore::set_boost(1.0);
    const bool crops = has_perk(TM_NAME("crops"));
    FieldCore::set_weather_mult(rules::crop_growth(season(), Climate::wet_now(), crops));
    animal_mult = has_perk(TM_NAME("animals")) ? 2.0 : 1.0;
    MachineCore::set_boost(has_perk(TM_NAME("machines")) ? 2.0 : 1.0);
    CustomerBrain::set_patience(rules::customer_patience(charm, has_perk(TM_NAME("calm"))));
    CounterCore::set_spawn_mult(rules::customer_gap(night, has_perk(TM_NAME("crowd"))));
    SellCounter::set_price_factor(rules::price_factor(charm, night));
    TruckDepot::set_tips_factor(has_perk(TM_NAME("tips")) ? 1.5 : 1.0);
    purse->cash_multiplier = 1.0;
    rate_timer += delta;
    if (rate_timer < rules::rate_period) {
        return;
    }
    rules::EarnRates rates{earn_rate, earn_slow};
    rates.take_in(rate_counter, rate_timer);
    earn_rate = rates.fast;
    earn_slow = rates.slow;
    rate_counter = 0;
    rate_timer = 0;
}

} // namespace tilm
