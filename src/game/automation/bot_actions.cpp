#include "game/automation/bot_actions.h"

#include <cmath>
#include <limits>

#include "farm_items/pile_core.h"
#include "game/actors/cash_tile.h"
#include "game/actors/crop_field.h"
#include "game/actors/player.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/unlock_tile.h"
#include "game/art/avatar_models.h"
#include "game/art/model_keys.h"
#include "game/art/models.h"
#include "game/shell/world.h"

namespace tilm {

namespace {

constexpr double LOOK_SECONDS = 0.25;
constexpr double STUCK_SECONDS = 0.8;
constexpr double STUCK_WAY = 0.25;
constexpr double SIDESTEP_SECONDS = 0.7;
constexpr double ROAD_Z = 1.2;       // the walkway before the buildings is free of obstacles
constexpr double WORTH_A_WALK = 4.0; // goods on a tray, dollars on a mat

double flat(const Vector3 &a, const Vector3 &b) {
    return Vector2(a.x - b.x, a.z - b.z).length();
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
    return world_id ? Object::cast_to<World>(ObjectDB::get_instance(world_id)) : nullptr;
}

Vector2 BotActions::wish(double dt) {
    World *world = farm();
    if (!world || world->is_building()) {
        return Vector2();
    }
    look_clock -= dt;
    linger -= dt;
    if (look_clock <= 0) {
        look_clock = LOOK_SECONDS;
        choose();
    }
    return has_goal ? steer(dt) : Vector2();
}

void BotActions::choose() {
    if (linger > 0) {
        return;
    }
    if (aim_at_cash() || aim_at_tile() || aim_at_delivery() || aim_at_goods() || aim_at_crop()) {
        return;
    }
    doing = "nothing";
    has_goal = false;
}

void BotActions::aim(const String &what, const Vector3 &at, double within) {
    doing = what;
    goal = at;
    reach = within;
    has_goal = true;
}

bool BotActions::aim_at_cash() {
    Vector3 me = farm()->player_pos();
    const CashTile *best = nullptr;
    for (const CashTile *tile : farm()->cash_list()) {
        int64_t sum = tile->total();
        double way = flat(me, tile->get_position());
        if (sum > 0 && (static_cast<double>(sum) >= WORTH_A_WALK || way < 3.0) &&
            (!best || way < flat(me, best->get_position()))) {
            best = tile;
        }
    }
    if (best) {
        aim("collecting money", best->get_position(), 0.4);
    }
    return best != nullptr;
}

bool BotActions::aim_at_tile() {
    UnlockTile *tile = Object::cast_to<UnlockTile>(farm()->next_tile());
    if (!tile) {
        return false;
    }
    Vector3 at = tile->get_position();
    // A tile laid under the player asks him to step off first.
    if (farm()->tile_office().step_off_guarded() && flat(farm()->player_pos(), at) < 1.7) {
        aim("stepping off", at + Vector3(0, 0, at.z > 0 ? -2.4f : 2.4f), 0.3);
        return true;
    }
    aim("buying " + tile->entry_id(), at, 0.3);
    return true;
}

bool BotActions::aim_at_delivery() {
    StackCarrier *tower = farm()->farmer()->carrier();
    if (tower->count() == 0 || (field_id != 0 && !tower->is_full())) {
        return false;
    }
    field_id = 0;
    Vector3 me = farm()->player_pos();
    double best_score = -std::numeric_limits<double>::infinity();
    Ref<ZoneCore> best;
    Array zones = farm()->zone_list();
    for (int i = 0; i < zones.size(); i++) {
        Ref<ZoneCore> zone = zones[i];
        if (!zone->get_active() || !zone->is_give()) {
            continue;
        }
        Array kinds = zone->get_accepts().keys();
        for (int k = 0; k < kinds.size(); k++) {
            int room = zone->room(kinds[k]);
            if (room <= 0 || !tower->has_kind(kinds[k])) {
                continue;
            }
            // Hungry animals first, then the emptiest place nearby.
            double hungry = zone->get_group().ends_with("_feed") && room > 20 ? 100.0 : 0.0;
            double score = hungry + MIN(room, 40) - flat(me, zone->get_pos());
            if (score > best_score) {
                best_score = score;
                best = zone;
            }
        }
    }
    if (best.is_null()) {
        return false;
    }
    aim("delivering to " + best->get_group(), best->get_pos(), 0.3);
    return true;
}

bool BotActions::wanted_anywhere(const String &kind) const {
    Array zones = farm()->zone_list();
    for (int i = 0; i < zones.size(); i++) {
        Ref<ZoneCore> zone = zones[i];
        if (zone->room(kind) > 0) {
            return true;
        }
    }
    return false;
}

bool BotActions::aim_at_goods() {
    StackCarrier *tower = farm()->farmer()->carrier();
    if (tower->is_full()) {
        return false;
    }
    Vector3 me = farm()->player_pos();
    Ref<ZoneCore> best;
    double best_way = std::numeric_limits<double>::infinity();
    Array zones = farm()->zone_list();
    for (int i = 0; i < zones.size(); i++) {
        Ref<ZoneCore> zone = zones[i];
        PileCore *pile = zone->get_pile();
        if (!pile || !zone->get_active() || !zone->is_take() || pile->count() < WORTH_A_WALK ||
            !wanted_anywhere(zone->get_makes())) {
            continue;
        }
        double way = flat(me, zone->get_pos());
        if (way < best_way) {
            best_way = way;
            best = zone;
        }
    }
    if (best.is_null()) {
        return false;
    }
    aim("fetching " + best->get_makes(), best->get_pos(), 0.3);
    if (best_way < 1.0) {
        linger = 0.6;
    }
    return true;
}

bool BotActions::aim_at_crop() {
    World *world = farm();
    StackCarrier *tower = world->farmer()->carrier();
    Vector3 me = world->player_pos();
    CropField *best = nullptr;
    for (CropField *field : world->field_list()) {
        if (wanted_anywhere(field->get_crop()) && (!best || flat(me, field->centre()) < flat(me, best->centre()))) {
            best = field;
        }
    }
    if (!best || tower->is_full()) {
        field_id = 0;
        return false;
    }
    if (best->alive_ratio() < 0.05 && tower->count() > 0) {
        field_id = 0; // bare: sell what there is
        return false;
    }
    field_id = best->get_instance_id();
    bool inside = best->contains(me);
    aim("cutting " + best->get_crop(), best->random_alive(inside ? me : Vector3(INFINITY, 0, INFINITY), 3.0), 0.4);
    return true;
}

// Straight to the goal, by the road for long ways; a wall in between is passed by a step aside.
Vector2 BotActions::steer(double dt) {
    Vector3 me = farm()->player_pos();
    if (flat(me, goal) <= reach) {
        stuck_clock = 0;
        return Vector2();
    }
    Vector3 next = goal;
    bool far_x = std::abs(me.x - goal.x) > 3.0;
    if (far_x && std::abs(me.z - goal.z) > 4.0 && std::abs(me.z - ROAD_Z) > 0.5) {
        next = Vector3(me.x, 0, ROAD_Z);
    } else if (far_x && std::abs(me.z - ROAD_Z) <= 0.6) {
        next = Vector3(goal.x, 0, ROAD_Z);
    }
    Vector2 way(next.x - me.x, next.z - me.z);
    way = way.length() > 0.001f ? way.normalized() : Vector2();
    stuck_clock += dt;
    if (stuck_clock >= STUCK_SECONDS) {
        if (flat(me, last) < STUCK_WAY) {
            sidestep = SIDESTEP_SECONDS;
            side = -side;
        }
        last = me;
        stuck_clock = 0;
    }
    if (sidestep > 0) {
        sidestep -= dt;
        return Vector2(-way.y, way.x) * static_cast<float>(side);
    }
    // Slow down at the goal, so that it is not overrun.
    double slow = next == goal ? MIN(1.0, flat(me, goal) / 0.8 + 0.15) : 1.0;
    return way * static_cast<float>(slow);
}

} // namespace tilm
