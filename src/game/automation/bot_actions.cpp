#include "game/automation/bot_actions.h"

#include <cmath>

#include "farm_items/pile_core.h"
#include "farm_items/zone_core.h"
#include "game/actors/cash_tile.h"
#include "game/actors/crop_field.h"
#include "game/actors/player.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/unlock_tile.h"
#include "game/art/avatar_models.h"
#include "game/art/farm_light.h"
#include "game/art/model_keys.h"
#include "game/art/models.h"
#include "game/shell/world.h"

namespace tilm {

namespace {

constexpr double LOOK_SECONDS = 0.25;
constexpr double REACH = 0.35;
constexpr double BAN_SECONDS = 10.0;
constexpr double SPARE_SECONDS = 8.0; // beyond twice the straight way
constexpr double GUARD_REACH = 1.7;   // a tile laid under the player asks him to step off first
constexpr double GUARD_STEP = 2.4;

double flat(const Vector3 &a, const Vector3 &b) {
    return Vector2(a.x - b.x, a.z - b.z).length();
}

template <class T>
T *live(uint64_t id) {
    return Object::cast_to<T>(ObjectDB::get_instance(id));
}

} // namespace

Array BotActions::model_rows() {
    Array rows;
    for (const ModelKey &key : model_keys()) {
        Array row;
        row.push_back(key.key);
        row.push_back(model_class_name(key.family->group));
        row.push_back(key.family->make != nullptr);
        rows.push_back(row);
    }
    return rows;
}

Node3D *BotActions::model(const String &key) {
    return Models::model(key);
}

void BotActions::set_sky(Object *light, double hour, int season, double wet, double snow) {
    FarmLight::apply(Object::cast_to<Node3D>(light), hour, season, static_cast<float>(wet), static_cast<float>(snow));
}

void BotActions::dump_prims() {
    Models::dump_prims();
}

void BotActions::draw_face(Object *control, const String &avatar) {
    if (auto *on = Object::cast_to<Control>(control)) {
        AvatarModels::draw_face(on, AvatarModels::look_of(avatar));
    }
}

void BotActions::_bind_methods() {
    ClassDB::bind_method(D_METHOD("setup", "world"), &BotActions::setup);
    ClassDB::bind_method(D_METHOD("wish", "dt"), &BotActions::wish);
    ClassDB::bind_method(D_METHOD("get_doing"), &BotActions::get_doing);
    ClassDB::bind_static_method("BotActions", D_METHOD("model_rows"), &BotActions::model_rows);
    ClassDB::bind_static_method("BotActions", D_METHOD("model", "key"), &BotActions::model);
    ClassDB::bind_static_method("BotActions", D_METHOD("set_sky", "light", "hour", "season", "wet", "snow"),
                                &BotActions::set_sky);
    ClassDB::bind_static_method("BotActions", D_METHOD("dump_prims"), &BotActions::dump_prims);
    ClassDB::bind_static_method("BotActions", D_METHOD("draw_face", "control", "avatar"), &BotActions::draw_face);
}

void BotActions::setup(Object *world) {
    World *farm = Object::cast_to<World>(world);
    if (!farm) {
        ERR_PRINT("TILMARCH bot: no farm to play");
    }
    world_id = farm ? farm->get_instance_id() : 0;
}

World *BotActions::farm() const {
    return world_id ? live<World>(world_id) : nullptr;
}

Vector2 BotActions::wish(double dt) {
    World *world = farm();
    if (!world || world->is_building()) {
        return Vector2();
    }
    look_clock -= dt;
    if (look_clock <= 0) {
        look(LOOK_SECONDS - look_clock);
        look_clock = LOOK_SECONDS;
    }
    if (errand.kind == BotErrand::NONE) {
        return Vector2();
    }
    const Vector3 me = world->player_pos();
    return path.steer(Vector2(me.x, me.z), REACH, dt);
}

void BotActions::look(double dt) {
    for (BotBan &ban : bans) {
        ban.seconds -= dt;
    }
    std::erase_if(bans, [](const BotBan &ban) { return ban.seconds <= 0; });
    World &world = *farm();
    patience -= dt;
    at_goal = flat(world.player_pos(), goal) < 2 * REACH ? at_goal + dt : 0.0;
    if (errand.kind != BotErrand::NONE && patience <= 0) {
        bans.push_back({errand.target, BAN_SECONDS});
        errand = BotErrand();
    }
    // A purchase waits for nothing; every other errand is seen through.
    BotErrand purchase = errand.kind == BotErrand::BUY ? BotErrand() : buying_errand(world, bans);
    if (purchase.kind != BotErrand::NONE) {
        begin(purchase);
    } else if (errand.kind == BotErrand::NONE || finished()) {
        begin(choose_errand(world, bans));
    } else if (path.take_stuck()) {
        plan_way();
    } else if (errand.kind == BotErrand::CUT && flat(world.player_pos(), goal) < 1.2) {
        CropField *field = live<CropField>(errand.target);
        goal = field->random_alive(world.player_pos(), 3.0);
        plan_way();
    } else if (errand.kind == BotErrand::BUY) {
        step_off_tile();
    }
}

bool BotActions::finished() const {
    const World &world = *farm();
    const StackCarrier &tower = *world.farmer()->carrier();
    switch (errand.kind) {
    case BotErrand::COLLECT: {
        const CashTile *tile = live<CashTile>(errand.target);
        return !tile || tile->total() == 0;
    }
    case BotErrand::BUY: {
        const UnlockTile *tile = live<UnlockTile>(errand.target);
        return !tile || tile->is_done() || world.money_now() <= 0;
    }
    case BotErrand::GIVE: {
        const ZoneCore *zone = live<ZoneCore>(errand.target);
        return !zone || !zone->get_active() || const_cast<ZoneCore *>(zone)->room(errand.good) <= 0 ||
               !tower.has_kind(errand.good);
    }
    case BotErrand::PICK:
    case BotErrand::CUT: {
        int have = 0;
        for (const ItemCore *item : tower.list()) {
            have += item->get_kind() == errand.good ? 1 : 0;
        }
        if (tower.is_full() || have >= errand.until) {
            return true;
        }
        if (const CropField *field = live<CropField>(errand.target)) {
            return field->alive_ratio() < 0.02;
        }
        const ZoneCore *zone = live<ZoneCore>(errand.target);
        return !zone || !zone->get_pile() || zone->get_pile()->count() == 0 || at_goal > 4.0;
    }
    default:
        return true;
    }
}

void BotActions::begin(const BotErrand &next) {
    errand = next;
    goal = next.pos;
    at_goal = 0;
    if (errand.kind == BotErrand::NONE) {
        return;
    }
    const Player &player = *farm()->farmer();
    const double speed = std::max(0.5, player.get_speed() * player.get_speed_mult());
    patience = 2.0 * flat(player.get_position(), goal) / speed + SPARE_SECONDS;
    if (errand.kind == BotErrand::CUT) {
        patience += 20.0;
    }
    step_off_tile();
    plan_way();
}

void BotActions::step_off_tile() {
    if (errand.kind != BotErrand::BUY) {
        return;
    }
    World &world = *farm();
    const UnlockTile *tile = live<UnlockTile>(errand.target);
    if (!tile) {
        return;
    }
    const Vector3 at = tile->get_position();
    const bool off = world.tile_office().step_off_guarded() && flat(world.player_pos(), at) < GUARD_REACH;
    const Vector3 aim = off ? at + Vector3(0, 0, at.z > 0 ? -GUARD_STEP : GUARD_STEP) : at;
    if (aim != goal) {
        goal = aim;
        plan_way();
    }
}

void BotActions::plan_way() {
    const Player &player = *farm()->farmer();
    const Array rects = player.get_solids();
    std::vector<Rect2> solids;
    solids.reserve(rects.size());
    for (int i = 0; i < rects.size(); i++) {
        solids.push_back(rects[i]);
    }
    const Vector3 me = player.get_position();
    Rect2 area = player.get_first_area();
    if (player.get_second_area().size.x > 0) {
        area = area.merge(player.get_second_area());
    }
    path.plan(Vector2(me.x, me.z), Vector2(goal.x, goal.z), area, solids);
}

} // namespace tilm
