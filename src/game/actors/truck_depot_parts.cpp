// How a loading bay is put together, what its boards tell, and what engine scripts may call on it.

#include <algorithm>

#include <godot_cpp/classes/property_tweener.hpp>

#include "game/actors/cash_tile.h"
#include "game/actors/pile.h"
#include "game/actors/truck_depot.h"
#include "game/actors/zone.h"
#include "game/art/models.h"
#include "game/art/scenery.h"
#include "game/art/truck_models.h"
#include "names.h"
#include "rules/trucks.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr double bay_z = 5.85;
constexpr double zone_back = -1.25; // of the truck, where people load
constexpr double pop_seconds = 0.9;
const Vector3 bed_place(0, 0.84f, 0.85f);
const Vector2 zone_size(3.0f, 1.8f);
const Color lime(0.773f, 0.961f, 0.259f); // c5f542
const Color amber(1.0f, 0.792f, 0.157f);  // ffca28
const Color red(1.0f, 0.322f, 0.322f);    // ff5252
const Color gold(1.0f, 0.835f, 0.310f);   // ffd54f

} // namespace

void TruckDepot::build(double x, Farm *owner) {
    if (owner == nullptr || owner->root() == nullptr || get_parent() != nullptr) {
        ERR_PRINT("TILMARCH truck " + group + ": needs a farm, and not to stand yet");
        return;
    }
    world.set(owner->root());
    set_position(Vector3((real_t)x, 0, (real_t)bay_z));
    owner->root()->add_child(this);

    for (Node3D *made : {truck_models::truck(colour), truck_models::gold_truck()}) {
        made->set_rotation(Vector3(0, (real_t)Math_PI, 0));
        made->set_position(Vector3(0, 0, 26.0f));
        made->set_visible(false);
        add_child(made);
        bodies.push_back(made);
    }
    Pile *bed = memnew(Pile);
    bed->set_name("Bed");
    bed->set_cols(3);
    bed->set_rows(4);
    bed->set_spacing(Vector2(0.52f, 0.55f));
    bed->set_layer_h(0.34);
    bed->set_show_limit(12);
    bed->set_no_sign(true);
    bed->set_position(bed_place);
    body.set(Object::cast_to<Node3D>(bodies[0]));
    body.get()->add_child(bed);

    const Vector3 floor((real_t)x, 0, (real_t)(bay_z + zone_back));
    zone = Zone::make("give", bed, floor, zone_size, group);
    zone->set_active(false);
    set_meta("zone", zone);
    owner->zone_list().push_back(zone);
    Node3D *plate = Scenery::zone_plate(zone_size, is_dock() ? "DOCK" : "TRUCK");
    plate->set_position(Vector3(0, 0, (real_t)zone_back));
    add_child(plate);

    CashTile *tile = memnew(CashTile);
    tile->set_name(group + "_cash");
    tile->set_position(floor + Vector3(2.6f, 0, 0));
    owner->root()->add_child(tile);
    cash.set(tile);

    board = Models::label3d(String(), 38, Color(1, 1, 1), Vector3(0, 3.6f, 0), this);
    board->set_vertical_alignment(VERTICAL_ALIGNMENT_TOP); // more lines grow downwards, away from the clock
    clock_board = Models::label3d(String(), 44, lime, Vector3(0, 4.55f, 0), this);
    vip_sign = Models::label3d("VIP", 64, gold, Vector3(0, 5.5f, 0), this);
    show_boards(false);
    Node3D *bay = truck_models::bay(is_dock());
    bay->set_position(Vector3(0, 0, (real_t)zone_back));
    add_child(bay);
    if (is_dock()) {
        star_nodes = truck_models::star_markers(this, Vector3(-2.15f, 0, (real_t)zone_back));
        set_meta("stars", star_nodes);
        set_stars(stars);
    }
    core_join(bed);
}

void TruckDepot::set_stars(int64_t n) {
    stars = std::clamp<int64_t>(n, 0, 3);
    for (int64_t i = 0; i < star_nodes.size(); i++) {
        if (MeshInstance3D *star = Object::cast_to<MeshInstance3D>(star_nodes[i].get_validated_object())) {
            truck_models::light_star(star, i < stars);
        }
    }
}

void TruckDepot::show_boards(bool on) {
    if (board == nullptr) {
        return;
    }
    board->set_visible(on);
    clock_board->set_visible(on);
    vip_sign->set_visible(on && vip);
}

String TruckDepot::get_board_text() const {
    return board != nullptr && board->is_visible() ? board_text : String();
}

String TruckDepot::get_clock_text() const {
    return clock_board != nullptr && clock_board->is_visible() ? clock_text : String();
}

void TruckDepot::_update_board() {
    if (board == nullptr) {
        return;
    }
    const PileCore *bed = get_bed();
    String text;
    const Array kinds = order.keys();
    for (int64_t i = 0; i < kinds.size(); i++) {
        const String kind = kinds[i];
        const int64_t count = read_whole(order, kinds[i]);
        const int64_t there = bed != nullptr ? std::min<int64_t>(bed->count_kind(kind), count) : 0;
        text += (i > 0 ? String("\n") : String()) + vformat("%s %d/%d", kind.to_upper(), there, count);
    }
    if (text != board_text) {
        board_text = text;
        board->set_text(text);
    }
    const double m = speed_mult();
    const int64_t left = rules::truck_seconds_left(elapsed, good_time);
    text = vformat("$%d   %d:%02d", reward(), left / 60, left % 60);
    if (text != clock_text) {
        clock_text = text;
        clock_board->set_text(text);
        clock_board->set_modulate(m >= 1.0 ? lime : m >= 0.75 ? amber : red);
    }
}

void TruckDepot::pop_label(const String &text) {
    if (!is_inside_tree()) {
        return;
    }
    Label3D *label = Models::label3d(text, 64, lime, Vector3(0, 2.6f, 0), this);
    Ref<Tween> rise = label->create_tween();
    rise->set_parallel(true);
    rise->tween_property(label, NodePath("position:y"), 4.2, pop_seconds);
    rise->tween_property(label, NodePath("scale"), Vector3(0.01f, 0.01f, 0.01f), 0.4)->set_delay(0.5);
    rise->chain()->tween_callback(Callable(label, "queue_free"));
}

void TruckDepot::_bind_methods() {
    ClassDB::bind_method(D_METHOD("_new_order"), &TruckDepot::_new_order);
    ClassDB::bind_method(D_METHOD("reward"), &TruckDepot::reward);
    ClassDB::bind_method(D_METHOD("_delivered_value"), &TruckDepot::_delivered_value);
    ClassDB::bind_method(D_METHOD("arrive"), &TruckDepot::arrive);
    ClassDB::bind_method(D_METHOD("hurry"), &TruckDepot::hurry);
    ClassDB::bind_method(D_METHOD("on_full"), &TruckDepot::on_full);
    ClassDB::bind_method(D_METHOD("on_late"), &TruckDepot::on_late);
    ClassDB::bind_method(D_METHOD("_parked"), &TruckDepot::_parked);
    ClassDB::bind_method(D_METHOD("_update_board"), &TruckDepot::_update_board);
    ClassDB::bind_method(D_METHOD("_leave"), &TruckDepot::_leave);
    ClassDB::bind_method(D_METHOD("_set_body", "t"), &TruckDepot::_set_body);
    ClassDB::bind_method(D_METHOD("_gone"), &TruckDepot::_gone);
    ClassDB::bind_method(D_METHOD("get_cash"), &TruckDepot::get_cash);
    ClassDB::bind_method(D_METHOD("get_zone"), &TruckDepot::get_zone);
    ClassDB::bind_method(D_METHOD("get_bodies"), &TruckDepot::get_bodies);
    ClassDB::bind_method(D_METHOD("get_body"), &TruckDepot::get_body);
    ClassDB::bind_method(D_METHOD("get_board_text"), &TruckDepot::get_board_text);
    ClassDB::bind_method(D_METHOD("get_clock_text"), &TruckDepot::get_clock_text);
    ClassDB::bind_static_method("TruckDepot", D_METHOD("set_tips_factor", "v"), &TruckDepot::set_tips_factor);
    ClassDB::bind_static_method("TruckDepot", D_METHOD("get_tips_factor"), &TruckDepot::get_tips_factor);
    TM_BIND_FIELD(TruckDepot, Variant::OBJECT, world);
    TM_BIND_FIELD(TruckDepot, Variant::ARRAY, goods);
    TM_BIND_FIELD(TruckDepot, Variant::INT, base);
    TM_BIND_FIELD(TruckDepot, Variant::INT, level);
    TM_BIND_FIELD(TruckDepot, Variant::COLOR, colour);
    TM_BIND_FIELD(TruckDepot, Variant::STRING, group);
    TM_BIND_FIELD(TruckDepot, Variant::INT, served);
    TM_BIND_FIELD(TruckDepot, Variant::INT, stars);
    TM_BIND_FIELD(TruckDepot, Variant::BOOL, vip);
    TM_BIND_FIELD(TruckDepot, Variant::BOOL, next_vip);
    ADD_PROPERTY(PropertyInfo(Variant::OBJECT, "zone"), "", "get_zone");
    ADD_PROPERTY(PropertyInfo(Variant::OBJECT, "cash"), "", "get_cash");
    ADD_PROPERTY(PropertyInfo(Variant::ARRAY, "bodies"), "", "get_bodies");
}

} // namespace tilm
