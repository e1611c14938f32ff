#include "game/actors/harvester.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "farm_items/goods_ledger.h"
#include "farm_items/pile_core.h"
#include "game/actors/crop_field.h"
#include "game/actors/item.h"
#include "game/art/models.h"
#include "game/art/palette.h"
#include "game/sound/sfx.h"
#include "glebworks/glebworks.h"
#include "names.h"

namespace tilm {

namespace {

constexpr int load = 10;           // goods that are worth a shipment
constexpr double far_step = 0.25;  // seconds between steps off view
constexpr double slice = 1.0 / 30; // longer steps would jump over way points
constexpr double longest_step = 60;
constexpr double point_reach = 0.25;
constexpr float head_reach = 1.4f; // the cutter ahead of the middle

Node3D *body(const Color &paint) {
    Node3D *tree = memnew(Node3D);
    Models::box(Vector3(1.5f, 0.75f, 2.1f), paint, Vector3(0, 0.85f, 0.15f), tree);
    Models::box(Vector3(1.3f, 0.2f, 1.9f), pal::tone(paint, -0.25f), Vector3(0, 0.42f, 0.15f), tree);
    Models::box(Vector3(1.05f, 0.85f, 0.9f), pal::col(pal::SKY), Vector3(0, 1.55f, -0.25f), tree);
    Models::box(Vector3(1.2f, 0.14f, 1.05f), pal::tone(paint, 0.15f), Vector3(0, 2.02f, -0.25f), tree);
    Models::box(Vector3(0.95f, 0.55f, 0.8f), pal::col(pal::STRAW), Vector3(0, 1.4f, 0.75f), tree);
    Models::cyl(0.07f, 0.09f, 0.9f, pal::col(pal::STONE_DARK), Vector3(0.55f, 1.6f, 0.35f), tree, 8);
    Models::box(Vector3(2.1f, 0.16f, 0.5f), pal::tone(paint, -0.35f), Vector3(0, 0.5f, -1.15f), tree);
    for (const float side : {-1.0f, 1.0f}) {
        for (const bool front : {true, false}) {
            const float r = front ? 0.55f : 0.4f;
            MeshInstance3D *wheel =
                Models::cyl(r, r, 0.3f, pal::col(pal::INK), Vector3(side * 0.85f, r, front ? -0.4f : 0.9f), tree, 12);
            wheel->set_rotation(Vector3(0, 0, 1.5708f));
            MeshInstance3D *hub = Models::cyl(r * 0.45f, r * 0.45f, 0.34f, pal::col(pal::YELLOW),
                                              Vector3(side * 0.85f, r, front ? -0.4f : 0.9f), tree, 10);
            hub->set_rotation(Vector3(0, 0, 1.5708f));
        }
    }
    return tree;
}

Node3D *reel() {
    Node3D *tree = memnew(Node3D);
    MeshInstance3D *axle = Models::cyl(0.09f, 0.09f, 2.2f, pal::col(pal::METAL), Vector3(), tree, 8);
    axle->set_rotation(Vector3(0, 0, 1.5708f));
    for (int i = 0; i < 6; ++i) {
        const float a = static_cast<float>(i) * 1.0472f;
        MeshInstance3D *bat = Models::box(Vector3(2.1f, 0.07f, 0.16f), pal::col(pal::RED),
                                          Vector3(0, std::sin(a) * 0.36f, std::cos(a) * 0.36f), tree);
        bat->set_rotation(Vector3(-a, 0, 0));
    }
    return tree;
}

Node3D *body_model(const Color &color) {
    return Models::bake("harvester_" + color.to_html(false), Models::builder([color]() { return body(color); }));
}

MeshInstance3D *reel_model() {
    return Models::bake("harvester_reel", Models::builder([]() { return reel(); }));
}

} // namespace

void Harvester::warm(const Color &paint) {
    memdelete(body_model(paint));
    memdelete(reel_model());
}

Harvester *Harvester::build(const Dictionary &entry, CropField *field) {
    if (field == nullptr || field->get_pallet() == nullptr) {
        return nullptr;
    }
    Harvester *h = memnew(Harvester);
    h->setup(field, field->get_pallet(), entry.get(TM_NAME("color"), Color(0.94f, 0.42f, 0)));
    return h;
}

void Harvester::setup(CropField *p_field, PileCore *p_pallet, const Color &p_paint) {
    if (p_field == nullptr || p_pallet == nullptr) {
        ERR_PRINT("TILMARCH harvester: no field or no pallet");
        return;
    }
    field.set(p_field);
    pallet.set(p_pallet);
    paint = p_paint;
    const Rect2 r = p_field->get_rect();
    route = rules::serpentine(r.position.x, r.position.y, r.size.x, r.size.y);
    parking = rules::harvester_parking(r.position.x, r.position.y, r.size.x, r.size.y);
    cells = p_field->get_cells();
    set_position(Vector3(parking.x, 0, parking.z));
}

void Harvester::_ready() {
    if (in_editor() || rollers != nullptr) {
        return;
    }
    add_child(body_model(paint));
    rollers = reel_model();
    rollers->set_position(Vector3(0, 0.55f, -head_reach));
    add_child(rollers);
    set_level(level);
}

void Harvester::set_level(int l) {
    level = std::clamp(l, 1, 10000);
    speed = rules::harvester_speed(level);
    if (CropField *f = field.get()) {
        f->set_grow_mult(rules::harvester_growth(level));
    }
    if (PileCore *p = pallet.get()) {
        p->set_max_items(rules::harvester_pallet_room(level));
    }
}

CropField *Harvester::get_field() const {
    return field.get();
}

Vector3 Harvester::forward() const {
    const double yaw = get_rotation().y;
    return Vector3(static_cast<float>(-std::sin(yaw)), 0, static_cast<float>(-std::cos(yaw)));
}

void Harvester::_process(double dt) {
    step(dt);
}

void Harvester::step(double dt) {
    if (!field || !pallet || route.empty() || !(dt >= 0)) {
        return;
    }
    far_clock += dt;
    if (!Glebworks::in_view(get_global_position(), 8.0) && far_clock < far_step) {
        return;
    }
    double left = std::min(far_clock, longest_step);
    far_clock = 0;
    if (rollers != nullptr) {
        rollers->rotate_x(static_cast<float>(-8.0 * left));
    }
    for (; left > 1e-9; left -= slice) {
        drive(std::min(left, slice));
    }
}

void Harvester::drive(double dt) {
    PileCore *goal_pile = pallet.get();
    if (goal_pile == nullptr) {
        return;
    }
    // A full load that finds no room waits at the edge of the field.
    const bool waits = carried >= load && goal_pile->is_full();
    const rules::RoutePoint point = waits ? parking : route[static_cast<size_t>(cursor)];
    Vector3 pos = get_position();
    const Vector3 way(point.x - pos.x, 0, point.z - pos.z);
    Vector3 wanted;
    if (way.length() < point_reach) {
        if (!waits) {
            cursor = (cursor + 1) % static_cast<int>(route.size());
            if (cursor % 2 == 0) {
                _ship();
            }
        }
    } else {
        wanted = way.normalized() * static_cast<float>(speed);
    }
    velocity = velocity.lerp(wanted, static_cast<float>(1.0 - std::exp(-4.0 * dt)));
    pos += velocity * static_cast<float>(dt);
    set_position(pos);
    if (velocity.length_squared() > 0.01f) {
        const double yaw = get_rotation().y;
        const double turn = std::remainder(std::atan2(-velocity.x, -velocity.z) - yaw, 2 * std::numbers::pi);
        set_rotation(Vector3(0, static_cast<float>(yaw + turn * (1.0 - std::exp(-5.0 * dt))), 0));
    }
    if (!waits) {
        cut();
    }
    if (carried >= load) {
        _ship();
    }
}

void Harvester::cut() {
    CropField *f = field.get();
    if (f == nullptr) {
        return;
    }
    // The model faces -z, so its cutter lies on the forward side.
    const int n = f->collect_at(get_position() + forward() * head_reach, 12, 1.15);
    if (n == 0) {
        return;
    }
    tally += rules::harvester_gain(n, level);
    const int good = std::max(1, cells);
    carried += tally / good;
    tally %= good;
}

void Harvester::_ship() {
    CropField *f = field.get();
    PileCore *p = pallet.get();
    if (f == nullptr || p == nullptr) {
        return;
    }
    const int n = std::min(carried, p->get_max_items() - p->count());
    if (n <= 0) {
        return;
    }
    const Vector3 from = get_global_position() + Vector3(0, 1.6f, 0);
    for (int i = 0; i < n; ++i) {
        const GoodsVerb verb("cut");
        p->add(Item::spawn(f->get_crop(), from), 0.3 + i * 0.04);
    }
    carried -= n;
    Sfx::sound_at(TM_NAME("worker_drop"), get_instance_id(), get_global_position());
}

void Harvester::_bind_methods() {
    ClassDB::bind_method(D_METHOD("set_level", "l"), &Harvester::set_level);
    ClassDB::bind_method(D_METHOD("get_level"), &Harvester::get_level);
    ClassDB::bind_method(D_METHOD("_ship"), &Harvester::_ship);
    ClassDB::bind_method(D_METHOD("step", "dt"), &Harvester::step);
    ClassDB::bind_method(D_METHOD("get_cursor"), &Harvester::get_cursor);
    ClassDB::bind_static_method("Harvester", D_METHOD("build", "entry", "field"), &Harvester::build);
    ClassDB::bind_method(D_METHOD("setup", "field", "pallet", "paint"), &Harvester::setup);
    ClassDB::bind_method(D_METHOD("get_field"), &Harvester::get_field);
    ClassDB::bind_method(D_METHOD("get_pallet"), &Harvester::get_pallet);
    TM_BIND_FIELD(Harvester, Variant::INT, cells);
    TM_BIND_FIELD(Harvester, Variant::INT, carried);
    TM_BIND_FIELD(Harvester, Variant::INT, tally);
    TM_BIND_FIELD(Harvester, Variant::FLOAT, speed);
    ADD_PROPERTY(PropertyInfo(Variant::INT, "level"), "set_level", "get_level");
}

} // namespace tilm
