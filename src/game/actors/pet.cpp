#include "game/actors/pet.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/world_place.h"
#include "game/actors/cash_tile.h"
#include "game/actors/player.h"
#include "game/actors/stack_carrier.h"
#include "game/art/pet_models.h"
#include "game/ports/pet_yard.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/pets.h"

namespace tilm {

namespace {

enum Kind { dog, cat, pig, pack_horse }; // as in rules::pets()

constexpr double work_top = 7.5; // units a second
constexpr double home_top = 3.52;
constexpr double wander_top = 2.2;
constexpr double horse_lead = 1.5; // faster than its lead
constexpr double wander_wide = 14.0;
constexpr double wander_within = 0.3;
constexpr double bills_per_second = 30.0;
constexpr double at_hand = 0.2 - 1e-4; // of what it works on; 0.2 itself is too far, whatever the last digit says
constexpr double cash_nearest = 1.6;
constexpr double cash_farthest = 9.0;
constexpr double puddle_reach = 70.0;
constexpr double place_behind = 1.5;

double flat_distance(const Vector3 &a, const Vector3 &b) {
    return std::hypot(a.x - b.x, a.z - b.z);
}

const rules::Pet &row_of(int row) {
    return rules::pets()[static_cast<size_t>(row)];
}

} // namespace

Pet::~Pet() = default;

bool Pet::setup(const String &pet_kind, Object *farm, Object *lead_object) {
    const CharString key = pet_kind.utf8();
    const rules::Pet *found = rules::find_pet(key.get_data());
    if (found == nullptr || model != nullptr) {
        ERR_PRINT(found == nullptr ? String("TILMARCH no such pet: ") + pet_kind.left(40)
                                   : String("TILMARCH pet set up twice: ") + kind);
        return false;
    }
    kind = pet_kind;
    row = static_cast<int>(found - rules::pets().data());
    set_name(kind.capitalize());
    set_world(farm);
    set_lead(lead_object);
    model = PetModels::pet(kind);
    add_child(model);
    Array legs;
    for (const char *leg : {"LegFL", "LegFR", "LegBL", "LegBR"}) {
        legs.push_back(model->get_node_or_null(NodePath(String("Body/") + leg)));
    }
    core_rig(model->get_node_or_null(NodePath("Body")), legs, model->get_node_or_null(NodePath("Body/Tail")),
             model->get_node_or_null(NodePath("Body/Neck/Head/Jaw")),
             model->get_node_or_null(NodePath("Body/Neck/Head")), model->get_node_or_null(NodePath("Body/Neck")));
    join();
    return true;
}

void Pet::join() {
    Array follows;
    if (cart) {
        follows.push_back(cart.get());
    }
    core_join(row == pack_horse, model->get_node_or_null(NodePath("Body")), follows);
}

void Pet::_notification(int what) {
    // A horse that goes stops carrying at once, not when it is freed.
    StackCore *stack = what == NOTIFICATION_EXIT_TREE && row == pack_horse ? lead_stack() : nullptr;
    if (stack != nullptr && stack->get_helper() == this) {
        stack->set_helper(nullptr);
        stack->set_cart(nullptr);
    }
}

void Pet::set_world(Object *farm) {
    world.set(farm);
    yard = PetYard::of(farm);
}

Walker *Pet::leader() const {
    return Object::cast_to<Walker>(lead_node());
}

StackCore *Pet::lead_stack() const {
    const Walker *lead = leader();
    return lead != nullptr ? lead->carrier() : nullptr;
}

bool Pet::is_home() const {
    return !remote && world && yard != nullptr && yard->pet_is_home(kind);
}

void Pet::set_gear(int64_t horse_lv, int64_t cart_lv) {
    if (row != pack_horse) {
        return;
    }
    horse_level = static_cast<int>(std::clamp<int64_t>(horse_lv, 1, rules::horse_level_max));
    const double scale = rules::horse_scale(horse_level);
    model->set_scale(Vector3(1, 1, 1) * static_cast<real_t>(scale));
    const int wanted = static_cast<int>(std::clamp<int64_t>(cart_lv, 0, static_cast<int64_t>(rules::carts().size())));
    if (wanted != cart_level) {
        cart_level = wanted;
        build_cart();
    }
    horse_tick();
}

void Pet::build_cart() {
    if (Node3D *old = cart.get()) {
        remove_child(old);
        old->queue_free();
    }
    cart.set(nullptr);
    if (cart_level > 0) {
        Node3D *node = PetModels::cart(cart_level);
        node->set_name("Cart");
        node->set_as_top_level(true); // it is pulled, not carried
        add_child(node);
        cart.set(node);
    }
    join();
    if (is_inside_tree()) {
        jump(get_global_position(), get_rotation().y);
    }
}

void Pet::horse_tick() {
    StackCore *stack = row == pack_horse ? lead_stack() : nullptr;
    if (stack == nullptr) {
        return;
    }
    stack->set_cart_cap(rules::cart_capacity(horse_level, cart_level - 1));
    if (is_home()) {
        stack->set_helper(nullptr);
        stack->set_cart(nullptr);
        return;
    }
    stack->set_helper(this);
    stack->set_cart(cart.get());
    if (const rules::Cart *bed = rules::cart_of_level(cart_level)) {
        stack->set_cart_grid(Vector2i(bed->cols, bed->rows));
    }
}

Vector3 Pet::into_land(const Vector3 &p) const {
    const Player *lead = Object::cast_to<Player>(lead_node());
    return lead != nullptr ? lead->nearest_land(p) : p;
}

void Pet::place() {
    const Node3D *lead = lead_node();
    if (lead == nullptr || row < 0 || !is_inside_tree()) {
        return;
    }
    const rules::Pet &me = row_of(row);
    const Vector3 at = world_position(lead);
    const Walker *walker = leader();
    const Vector3 ahead = walker != nullptr ? walker->forward() : Vector3(0, 0, -1);
    Vector3 spot;
    if (row == pack_horse || row == cat) {
        spot = at + Vector3(-ahead.z, 0, ahead.x) * (me.side * me.beside) - ahead * place_behind;
    } else {
        spot = into_land(at + Vector3(static_cast<real_t>(UtilityFunctions::randf_range(-4.0, 4.0)), 0,
                                      static_cast<real_t>(UtilityFunctions::randf_range(-4.0, 1.0))));
    }
    jump(Vector3(spot.x, 0, spot.z), std::atan2(-ahead.x, -ahead.z));
    wander_timer = 0.0;
    horse_tick();
}

void Pet::think(double dt) {
    if (row < 0 || lead_node() == nullptr) {
        return;
    }
    const rules::Pet &me = row_of(row);
    if (is_home()) {
        const Vector3 slot(static_cast<real_t>(me.home_x), 0, static_cast<real_t>(me.home_z));
        core_set(get_lead(), true, false, home_top, slot);
        return;
    }
    Vector3 at;
    if (!remote && work_goal(at)) {
        core_set(get_lead(), false, true, work_top, at);
        return;
    }
    if (!remote && (row == dog || row == pig)) {
        wander(dt);
        return;
    }
    heel();
}

void Pet::wander(double dt) {
    wander_timer -= dt;
    if (wander_timer <= 0.0 || flat_distance(get_global_position(), wander_goal) < wander_within) {
        wander_timer = UtilityFunctions::randf_range(1.5, 4.0);
        const Player *lead = Object::cast_to<Player>(lead_node());
        const double middle = lead != nullptr ? lead->home_point().x : world_position(lead_node()).x;
        const double x = middle + UtilityFunctions::randf_range(-wander_wide, wander_wide);
        wander_goal = into_land(
            Vector3(static_cast<real_t>(x), 0, static_cast<real_t>(UtilityFunctions::randf_range(-1.0, 3.2))));
    }
    core_set(get_lead(), false, false, wander_top, wander_goal);
}

void Pet::heel() {
    const rules::Pet &me = row_of(row);
    core_heel(get_lead(), Vector2(static_cast<real_t>(me.beside), static_cast<real_t>(me.behind)), me.side);
    const Walker *lead = leader();
    if ((remote || me.top == 0.0) && lead != nullptr) {
        top = std::max<double>(lead->get_speed(), lead->get_velocity().length()) + horse_lead;
    } else {
        top = me.top > 0.0 ? me.top : work_top;
    }
}

bool Pet::work_goal(Vector3 &at) const {
    const PetQuarry *quarry = PetQuarry::current();
    switch (row) {
    case dog:
        return quarry != nullptr && quarry->fox(at);
    case cat:
        return cash_goal(at);
    case pig:
        return quarry != nullptr && (quarry->golden_egg(at) || quarry->puddle(get_global_position(), puddle_reach, at));
    default:
        return false;
    }
}

// The nearest tile to the player that is out of the player's own reach.
bool Pet::cash_goal(Vector3 &at) const {
    const Node3D *lead = lead_node();
    if (lead == nullptr || !world || yard == nullptr) {
        return false;
    }
    const Vector3 from = world_position(lead);
    const Array &tiles = yard->pet_cash_tiles();
    double best = cash_farthest;
    bool found = false;
    for (int64_t i = 0; i < tiles.size(); ++i) {
        const CashTile *tile = Object::cast_to<CashTile>(tiles[i].get_validated_object());
        if (tile == nullptr || tile->bill_list().empty() || !tile->is_visible_in_tree() || !tile->can_process()) {
            continue;
        }
        const double d = flat_distance(from, tile->get_global_position());
        if (d >= cash_nearest && (d < best || (!found && d <= best))) {
            best = d;
            at = tile->get_global_position();
            found = true;
        }
    }
    return found;
}

void Pet::fetch_cash(const Vector3 &at, double dt) {
    if (!world || yard == nullptr) {
        return;
    }
    cash_clock += bills_per_second * dt;
    if (cash_clock < 1.0) {
        return;
    }
    const Array &tiles = yard->pet_cash_tiles();
    for (int64_t i = 0; i < tiles.size() && cash_clock >= 1.0; ++i) {
        CashTile *tile = Object::cast_to<CashTile>(tiles[i].get_validated_object());
        if (tile == nullptr || flat_distance(at, tile->get_global_position()) >= at_hand) {
            continue;
        }
        while (cash_clock >= 1.0) {
            Item *bill = tile->take_bill();
            if (bill == nullptr) {
                break;
            }
            cash_clock -= 1.0;
            Sfx::sound(TM_NAME("cat_meow"));
            yard->collect_bill(bill);
        }
    }
    if (cash_clock >= 1.0) {
        cash_clock = 0.0; // nothing is saved up for the next bill
    }
}

void Pet::_work(const Vector3 &at, double dt) {
    PetQuarry *quarry = PetQuarry::current();
    switch (row) {
    case dog:
        if (quarry != nullptr) {
            quarry->chase_fox(kind);
        }
        break;
    case cat:
        fetch_cash(at, dt);
        break;
    case pig: {
        Vector3 egg;
        if (quarry != nullptr && quarry->golden_egg(egg) && flat_distance(get_global_position(), egg) < at_hand) {
            Sfx::sound(TM_NAME("pig_oink"));
            quarry->collect_egg(kind);
        } else if (quarry != nullptr) {
            quarry->dig_puddle(at, kind);
        }
        break;
    }
    default:
        break;
    }
}

void Pet::_bind_methods() {
    TM_BIND_FIELD(Pet, Variant::BOOL, remote);
    TM_BIND_FIELD(Pet, Variant::VECTOR3, wander_goal);
    TM_BIND_FIELD(Pet, Variant::FLOAT, wander_timer);
    TM_BIND_FIELD(Pet, Variant::FLOAT, cash_clock);
    TM_BIND_FIELD(Pet, Variant::OBJECT, world);
    ClassDB::bind_method(D_METHOD("setup", "kind", "world", "lead"), &Pet::setup);
    ClassDB::bind_method(D_METHOD("get_kind"), &Pet::get_kind);
    ADD_PROPERTY(PropertyInfo(Variant::STRING, "kind"), "", "get_kind");
    ClassDB::bind_method(D_METHOD("get_model"), &Pet::get_model);
    ClassDB::bind_method(D_METHOD("get_cart"), &Pet::get_cart);
    ClassDB::bind_method(D_METHOD("get_horse_lv"), &Pet::get_horse_lv);
    ClassDB::bind_method(D_METHOD("get_cart_lv"), &Pet::get_cart_lv);
    ADD_PROPERTY(PropertyInfo(Variant::INT, "cart_lv"), "", "get_cart_lv");
    ClassDB::bind_method(D_METHOD("set_gear", "horse_lv", "cart_lv"), &Pet::set_gear);
    ClassDB::bind_method(D_METHOD("place"), &Pet::place);
    ClassDB::bind_method(D_METHOD("think", "dt"), &Pet::think);
    ClassDB::bind_method(D_METHOD("horse_tick"), &Pet::horse_tick);
    ClassDB::bind_method(D_METHOD("_work", "goal", "dt"), &Pet::_work);
}

} // namespace tilm
