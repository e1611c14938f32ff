// How a machine is put together, and what engine scripts may call on it.

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/property_tweener.hpp>

#include "farm_items/world_place.h"
#include "game/actors/machine.h"
#include "game/actors/pile.h"
#include "game/actors/zone.h"
#include "game/art/buildings.h"
#include "game/art/models.h"
#include "game/art/palette.h"
#include "game/art/scenery.h"
#include "game/data/farm_data.h"
#include "game/ports/farm.h"

namespace tilm {

namespace {

const float pile_x = 2.05f;
const float pile_z = 0.72f;
const float zone_z = 2.3f;
const Vector2 zone_size(2.0f, 1.6f);
constexpr int shown_goods = 8;
constexpr double input_layer = 0.32;

Pile *grid(const Vector3 &at, int cols, int rows, const Vector2 &spacing, double layer) {
    Pile *pile = memnew(Pile);
    pile->set_cols(cols);
    pile->set_rows(rows);
    pile->set_spacing(spacing);
    pile->set_layer_h(layer);
    pile->set_show_limit(shown_goods);
    pile->set_position(at);
    return pile;
}

} // namespace

void Machine::build_piles() {
    body = Buildings::machine(product, roof);
    add_child(body);
    Buildings::light_front(this, product);
    if (Node3D *moving = Buildings::anim(product)) {
        body->add_child(moving);
        Ref<Tween> turning = moving->create_tween();
        turning->set_loops();
        turning->tween_property(moving, NodePath("rotation:z"), 6.2831853, 9.0)->as_relative();
    }
    const float floor_y = Buildings::machine_floor;
    const Vector3 in_at(-pile_x, floor_y, pile_z);
    Pile *in = nullptr;
    if (recipe.has("calf")) {
        in = grid(in_at, 1, 3, Vector2(0, 0.45f), input_layer);
        in->set_flat(true);
    } else if (recipe.has("hen")) {
        in = grid(in_at, 2, 3, Vector2(0.45f, 0.40f), input_layer);
        in->set_flat(true);
    } else {
        in = grid(in_at, 2, 2, Vector2(0.42f, 0.55f), input_layer);
    }
    in->set_name("Input");
    add_child(in);
    set_input(in);
    Pile *out = grid(Vector3(pile_x, floor_y, pile_z), 2, 2, Vector2(0.42f, 0.55f), FarmData::item_height(product));
    out->set_name("Output");
    add_child(out);
    set_output(out);
}

Ref<ZoneCore> Machine::give_point(const Vector2 &size, const String &group) {
    const Vector3 at = world_position(this) + Vector3(-pile_x, 0, zone_z);
    Ref<Zone> zone = Zone::make("give", get_input(), at, size, group);
    zone->set_owner_group(carry_to);
    return zone;
}

void Machine::build_zones() {
    Array zones;
    give_zone = give_point(zone_size, id);
    zones.push_back(give_zone);
    if (!alias.is_empty() && alias != id) {
        // A repeated machine is fed by the helpers of the first one too. Its point has no floor: it is not for the
        // player, who would give twice.
        repeat_zone = give_point(Vector2(), alias);
        zones.push_back(repeat_zone);
    }
    Array kinds = flavors.keys();
    if (kinds.is_empty()) {
        kinds.push_back(product);
    }
    const Vector3 at = world_position(this) + Vector3(pile_x, 0, zone_z);
    for (int64_t i = 0; i < kinds.size(); ++i) {
        Ref<Zone> zone = Zone::make("take", get_output(), at, zone_size, id + "_out");
        zone->set_makes(kinds[i]);
        take_zones.push_back(zone);
        zones.push_back(zone);
    }
    if (Farm *farm = Farm::current()) {
        Array all = farm->zone_list();
        all.append_array(zones);
    }
    const char *const words[] = {"INPUT", "TAKE"};
    for (int side = 0; side < 2; ++side) {
        Node3D *plate = Scenery::zone_plate(zone_size, words[side]);
        plate->set_position(Vector3(side == 0 ? -pile_x : pile_x, 0, zone_z));
        add_child(plate);
    }
}

void Machine::build_labels() {
    level_label = Models::label3d("", 52, Color(1, 1, 1), Vector3(0, 0.95f, 1.35f), this);
    need_label = Models::label3d("", 40, Color::html("ffab40"), Vector3(-pile_x, 2.0f, 1.0f), this);
    need_label->set_visible(false);
}

void Machine::build_smoke() {
    Ref<BoxMesh> puff;
    puff.instantiate();
    puff->set_size(Vector3(0.2f, 0.2f, 0.2f));
    puff->set_material(Models::color_material(Color(0.93f, 0.92f, 0.90f)));
    CPUParticles3D *smoke = memnew(CPUParticles3D);
    smoke->set_name("Smoke");
    smoke->set_emitting(false);
    smoke->set_amount(8);
    smoke->set_lifetime(1.4);
    smoke->set_mesh(puff);
    smoke->set_direction(Vector3(0, 1, 0));
    smoke->set_spread(16);
    smoke->set_gravity(Vector3(0.15f, 0.35f, 0));
    smoke->set_param_min(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 0.5);
    smoke->set_param_max(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 0.9);
    smoke->set_param_min(CPUParticles3D::PARAM_SCALE, 0.5);
    smoke->set_param_max(CPUParticles3D::PARAM_SCALE, 1.3);
    smoke->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    smoke->set_position(Vector3(0.95f, 2.9f, -0.4f));
    add_child(smoke);
    set_smoke(smoke);
}

Array Machine::solids() const {
    Rect2 house = Buildings::machine_solid();
    const Vector3 at = world_position(this);
    house.position += Vector2(at.x, at.z);
    return Array::make(house);
}

void Machine::_bind_methods() {
    ClassDB::bind_static_method("Machine", D_METHOD("build", "entry"), &Machine::build);
    ClassDB::bind_static_method("Machine", D_METHOD("speed_steps", "l"), &Machine::speed_steps);
    ClassDB::bind_static_method("Machine", D_METHOD("cap_steps", "l"), &Machine::cap_steps);
    ClassDB::bind_static_method("Machine", D_METHOD("next_perk", "l"), &Machine::next_perk);
    ClassDB::bind_method(D_METHOD("input_cap"), &Machine::input_cap);
    ClassDB::bind_method(D_METHOD("set_level", "l"), &Machine::set_level);
    ClassDB::bind_method(D_METHOD("missing"), &Machine::missing);
    ClassDB::bind_method(D_METHOD("has_input"), &Machine::has_input);
    ClassDB::bind_method(D_METHOD("show_need"), &Machine::show_need);
    ClassDB::bind_method(D_METHOD("make"), &Machine::make);
    ClassDB::bind_method(D_METHOD("deliver_meat", "from"), &Machine::deliver_meat);
    ClassDB::bind_method(D_METHOD("solids"), &Machine::solids);
    ClassDB::bind_method(D_METHOD("get_give_zone"), &Machine::get_give_zone);
    ClassDB::bind_method(D_METHOD("get_take_zones"), &Machine::get_take_zones);
    ClassDB::bind_method(D_METHOD("get_need_text"), &Machine::get_need_text);
    TM_BIND_FIELD(Machine, Variant::OBJECT, cook);
    TM_BIND_FIELD(Machine, Variant::OBJECT, world);
    TM_BIND_FIELD(Machine, Variant::STRING, id);
    TM_BIND_FIELD(Machine, Variant::STRING, title);
    TM_BIND_FIELD(Machine, Variant::STRING, product);
    TM_BIND_FIELD(Machine, Variant::INT, yield);
    TM_BIND_FIELD(Machine, Variant::STRING, alias);
    TM_BIND_FIELD(Machine, Variant::STRING, carry_to);
    TM_BIND_FIELD(Machine, Variant::COLOR, roof);
}

} // namespace tilm
