// How a producer is put together, and what engine scripts may call on it.

#include "game/actors/farm_hand.h"
#include "game/actors/pile.h"
#include "game/actors/producer.h"
#include "game/actors/producer_animals.h"
#include "game/actors/zone.h"
#include "game/art/buildings.h"
#include "game/art/models.h"
#include "game/art/palette.h"
#include "game/art/scenery.h"
#include "game/data/farm_data.h"
#include "game/ports/farm.h"
#include "game/sound/sfx.h"
#include "glebworks/glebworks.h"
#include "names.h"

#include <godot_cpp/classes/torus_mesh.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

namespace tilm {

namespace {

const float tray_x = 0.9f; // beside the gate, where the hand comes out
const float front_z = 2.6f;
const float trough_x = -2.3f;

} // namespace

void Producer::assemble() {
    animals = std::make_unique<ProducerAnimals>(this, *row);
    add_child(Buildings::house(product));
    Buildings::light_front(this, product);
    level_label = Models::label3d("", 52, Color(1, 1, 1), Vector3(0, 3.5f, -0.6f), this);
    Label3D *full = Models::label3d("FULL!", 44, Color::html("ff7043"), Vector3(tray_x, 1.9f, front_z), this);
    full->set_visible(false);
    core_join(build_tray(), full, row->hand == rules::HandWork::bring, UtilityFunctions::randf_range(300, 480));
    if (!row->feed.empty()) {
        build_trough();
    }
    set_regrows(row->product == "wool");
    if (Farm *farm = Farm::current()) {
        const Array shapes = solids();
        for (int i = 0; i < shapes.size(); ++i) {
            farm->add_solid(shapes[i]);
        }
    }
    set_level(level);
    if (row->hand != rules::HandWork::none) {
        build_hand();
    }
}

PileCore *Producer::build_tray() {
    const Vector3 at(tray_x, 0, front_z);
    Node3D *slab = Buildings::tray();
    slab->set_position(at);
    add_child(slab);
    Pile *tray = memnew(Pile);
    const bool calf = row->product == "calf";
    const bool hen = row->product == "hen";
    tray->set_cols(calf ? 3 : 4);
    tray->set_rows(calf || hen ? 4 : 3);
    tray->set_spacing(calf ? Vector2(0.72f, 0.36f) : hen ? Vector2(0.5f, 0.36f) : Vector2(0.6f, 0.5f));
    tray->set_flat(calf || hen);
    tray->set_show_limit(calf ? 6 : hen ? 8 : 12);
    tray->set_layer_h(FarmData::item_height(product));
    tray->set_max_items(rules::tray_room_floor);
    tray->set_position(at + Vector3(0, 0.14f, 0));
    add_child(tray);
    const Vector3 base = get_position();
    take_zone = Zone::make("take", tray, base + Vector3(0, 0, front_z), Vector2(2.8f, 2.0f), id);
    take_zone->set_makes(product);
    if (Farm *farm = Farm::current()) {
        farm->zone_list().push_back(take_zone);
    }
    return tray;
}

void Producer::build_trough() {
    const Vector3 at(trough_x, 0, front_z - 0.3f);
    const String feed = feed_kind();
    Node3D *box = Buildings::trough(feed);
    box->set_position(at);
    add_child(box);
    Pile *pile = memnew(Pile);
    pile->set_cols(2);
    pile->set_rows(4);
    pile->set_spacing(Vector2(0.42f, 0.38f));
    pile->set_layer_h(FarmData::item_height(feed));
    pile->set_max_items(rules::trough_room);
    pile->set_show_limit(8);
    pile->set_position(at + Vector3(0, 0.22f, 0));
    add_child(pile);
    set_trough(pile);
    feed_zone =
        Zone::make("give", pile, get_position() + Vector3(trough_x, 0, front_z), Vector2(1.7f, 2.0f), id + "_feed");
    Dictionary accepts;
    accepts[feed] = rules::trough_room;
    feed_zone->set_accepts(accepts);
    if (Farm *farm = Farm::current()) {
        farm->zone_list().push_back(feed_zone);
    }
    Node3D *plate = Scenery::zone_plate(Vector2(1.7f, 1.0f), "FEED");
    plate->set_position(Vector3(trough_x, 0, front_z + 1.2f));
    add_child(plate);
    Label3D *hungry = Models::label3d("HUNGRY!", 48, Color::html("ffab40"), Vector3(trough_x + 0.6f, 2.1f, 1.6f), this);
    hungry->set_visible(false);
    set_hungry_label(hungry);
}

void Producer::build_hand() {
    FarmHand *person = memnew(FarmHand);
    hand.set(person);
    person->setup(this);
    add_child(person);
}

Array Producer::solids() const {
    Array shapes;
    Rect2 house = Buildings::house_solid(product);
    if (house.has_area()) {
        const Vector3 at = get_position();
        house.position += Vector2(at.x, at.z);
        shapes.push_back(house);
    }
    return shapes;
}

void Producer::splash(const Vector3 &at, bool big) {
    if (!is_inside_tree() || !Glebworks::in_view(at, 2.0)) {
        return;
    }
    Ref<TorusMesh> ring;
    ring.instantiate();
    ring->set_inner_radius(0.42f);
    ring->set_outer_radius(0.5f);
    ring->set_rings(20);
    ring->set_ring_segments(6);
    MeshInstance3D *node = Models::mesh_instance(ring, pal::tone(pal::SKY, 0.5f), to_local(at), this, false);
    const float size = big ? 1.5f : 0.8f;
    node->set_scale(Vector3(0.1f, 0.1f, 0.1f));
    Ref<Tween> tween = node->create_tween();
    tween->tween_property(node, NodePath("scale"), Vector3(size, 0.12f, size), 0.55);
    tween->tween_property(node, NodePath("scale"), Vector3(size * 1.15f, 0.01f, size * 1.15f), 0.2);
    tween->tween_callback(callable_mp(static_cast<Node *>(node), &Node::queue_free));
    if (big) {
        Sfx::sound_at(TM_NAME("fish_splash"), get_instance_id(), at);
    }
}

void Producer::_bind_methods() {
    ClassDB::bind_static_method("Producer", D_METHOD("build", "entry"), &Producer::build);
    ClassDB::bind_method(D_METHOD("give_start_feed"), &Producer::give_start_feed);
    ClassDB::bind_method(D_METHOD("animal_count"), &Producer::animal_count);
    ClassDB::bind_method(D_METHOD("visible_animals"), &Producer::visible_animals);
    ClassDB::bind_method(D_METHOD("interval"), &Producer::interval);
    ClassDB::bind_method(D_METHOD("solids"), &Producer::solids);
    ClassDB::bind_method(D_METHOD("feed_kind"), &Producer::feed_kind);
    ClassDB::bind_method(D_METHOD("_eat"), &Producer::_eat);
    ClassDB::bind_method(D_METHOD("_bought_feed"), &Producer::_bought_feed);
    ClassDB::bind_method(D_METHOD("_feed_late"), &Producer::_feed_late);
    ClassDB::bind_method(D_METHOD("_buy_feed"), &Producer::_buy_feed);
    ClassDB::bind_method(D_METHOD("services_ready"), &Producer::services_ready);
    ClassDB::bind_method(D_METHOD("sicken_hunger"), &Producer::sicken_hunger);
    ClassDB::bind_method(D_METHOD("overwork"), &Producer::overwork);
    ClassDB::bind_method(D_METHOD("lose_level"), &Producer::lose_level);
    ClassDB::bind_method(D_METHOD("set_level", "l"), &Producer::set_level);
    ClassDB::bind_method(D_METHOD("get_level"), &Producer::get_level);
    ClassDB::bind_method(D_METHOD("animate", "dt"), &Producer::animate);
    ClassDB::bind_method(D_METHOD("regrow_tick", "dt"), &Producer::regrow_tick);
    ClassDB::bind_method(D_METHOD("made"), &Producer::made);
    ClassDB::bind_method(D_METHOD("deliver_catch", "from"), &Producer::deliver_catch);
    ClassDB::bind_method(D_METHOD("splash", "at", "big"), &Producer::splash);
    ClassDB::bind_method(D_METHOD("hold_animal", "near", "sec"), &Producer::hold_animal);
    ClassDB::bind_method(D_METHOD("shear", "d"), &Producer::shear);
    ClassDB::bind_method(D_METHOD("get_animals"), &Producer::get_animals);
    ClassDB::bind_method(D_METHOD("get_take_zone"), &Producer::get_take_zone);
    ClassDB::bind_method(D_METHOD("get_feed_zone"), &Producer::get_feed_zone);
    ClassDB::bind_method(D_METHOD("get_hand"), &Producer::get_hand);
    ClassDB::bind_method(D_METHOD("animals_word"), &Producer::animals_word);
    TM_BIND_FIELD(Producer, Variant::STRING, product);
    TM_BIND_FIELD(Producer, Variant::STRING, id);
    TM_BIND_FIELD(Producer, Variant::STRING, region);
    ADD_PROPERTY(PropertyInfo(Variant::INT, "level"), "set_level", "get_level");
    ADD_PROPERTY(PropertyInfo(Variant::ARRAY, "animals"), "", "get_animals");
}

} // namespace tilm
