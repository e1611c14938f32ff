#include "game/actors/farm_hand.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/variant/utility_functions.hpp>

#include "game/actors/person_look.h"
#include "game/actors/producer.h"
#include "game/art/models.h"
#include "game/art/palette.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/producers.h"

namespace tilm {

namespace {

const Vector3 gate(0, 0, 2.6f);
const Vector3 gate_side(-0.7f, 0, 1.9f); // on the way to the gate, round the tray
constexpr double hand_time = 0.7;
constexpr double let_go = 0.3; // of the hand time left when the load flies
constexpr double fish_pause = 1.5;
constexpr double no_animal_pause = 2.0;
constexpr double hold_time = 9.0;
constexpr float lean_angle = -0.45f;
constexpr int idle_until_round = 4; // pauses without a catch until the fisher goes for a row

float between(double a, double b) {
    return static_cast<float>(UtilityFunctions::randf_range(a, b));
}

Vector3 spot(double x0, double x1, double z0, double z1) {
    return Vector3(between(x0, x1), 0, between(z0, z1));
}

Dictionary look_of(const String &product) {
    Dictionary look = PersonLook::of_role("worker", PersonLook::random_staff_skin()).duplicate();
    if (product == "fish") {
        look["overalls"] = pal::col(pal::YELLOW);
        look["shirt"] = pal::col(pal::BLUE);
    } else if (product == "honey") {
        look["shirt"] = pal::col(pal::WHITE);
        look["overalls"] = pal::col(pal::CREAM);
    } else if (product == "wool" || product == "milk") {
        look["shirt"] = pal::col(pal::RED);
    }
    return look;
}

Node3D *hull() {
    Node3D *tree = memnew(Node3D);
    Models::box(Vector3(0.9f, 0.16f, 1.5f), pal::col(pal::WOOD_DARK), Vector3(0, 0.02f, 0), tree);
    for (const float side : {-1.0f, 1.0f}) {
        MeshInstance3D *plank =
            Models::box(Vector3(0.1f, 0.34f, 1.6f), pal::col(pal::WOOD), Vector3(side * 0.46f, 0.16f, 0), tree);
        plank->set_rotation(Vector3(0, 0, side * -0.2f));
    }
    for (const float end : {-1.0f, 1.0f}) {
        Models::box(Vector3(0.8f, 0.34f, 0.1f), pal::col(pal::WOOD_LIGHT), Vector3(0, 0.18f, end * 0.78f), tree);
    }
    Models::box(Vector3(0.84f, 0.06f, 0.28f), pal::col(pal::WOOD_LIGHT), Vector3(0, 0.24f, 0.1f), tree);
    return tree;
}

Node3D *oar() {
    Node3D *tree = memnew(Node3D);
    Models::box(Vector3(1.0f, 0.05f, 0.05f), pal::col(pal::WOOD_LIGHT), Vector3(0.4f, 0, 0), tree);
    Models::box(Vector3(0.3f, 0.04f, 0.16f), pal::col(pal::RED), Vector3(0.95f, 0, 0), tree);
    return tree;
}

} // namespace

void FarmHand::setup(Producer *p_home) {
    if (p_home == nullptr || home) {
        return;
    }
    home.set(p_home);
    product = p_home->get_product();
    if (const rules::ProducerKind *row = p_home->kind_row()) {
        work_seconds = row->work_seconds;
    }
    set_speed(2.1);
    set_as_top_level(true);
    build(look_of(product));
    load = Models::item_model(product);
    load->set_position(Vector3(0, 0.95f, -0.45f));
    load->set_visible(false);
    add_child(load);
    if (product == "fish") {
        boat = Models::bake("hand_boat", Models::builder([]() { return hull(); }));
        add_child(boat);
        for (int i = 0; i < 2; ++i) {
            oars[i] = Models::bake("hand_oar", Models::builder([]() { return oar(); }));
            oars[i]->set_position(Vector3(i == 0 ? 0.45f : -0.45f, 0.42f, -0.1f));
            oars[i]->set_rotation(Vector3(0, i == 0 ? 0.0f : 3.1416f, -0.3f));
            boat->add_child(oars[i]);
        }
        boat->set_visible(false);
    }
    set_position(base() + gate_side);
    timer = between(0.3, 1.6);
    set_process(true);
}

Vector3 FarmHand::base() const {
    const Producer *at = home.get();
    return at == nullptr ? Vector3() : at->is_inside_tree() ? at->get_global_position() : at->get_position();
}

Producer *FarmHand::get_home() const {
    return home.get();
}

void FarmHand::_process(double dt) {
    if (!home) {
        set_process(false);
        return;
    }
    const double d = lod(dt);
    if (d > 0) {
        tick(d);
    }
}

void FarmHand::start_job(const Vector3 &local) {
    go(base() + local);
    state = to_job;
}

bool FarmHand::hold_an_animal() {
    held = home.get()->hold_animal(get_position(), hold_time);
    const Node3D *animal = Object::cast_to<Node3D>(static_cast<Object *>(held.get(TM_NAME("n"), Variant())));
    if (animal == nullptr) {
        timer = no_animal_pause;
        return false;
    }
    const Vector3 at = animal->get_position();
    start_job(Vector3(std::clamp(at.x, -2.0f, 2.0f), 0, std::clamp(at.z, -0.6f, 1.4f)));
    return true;
}

void FarmHand::next_fishing_job() {
    if (home.get()->get_catch_pending() >= 1) {
        idle_rounds = 0;
        start_job(spot(-1.6, 1.6, 0.4, 1.3));
        return;
    }
    timer = fish_pause;
    if (++idle_rounds >= idle_until_round) {
        idle_rounds = 0;
        go(base() + spot(-1.4, 1.4, -0.6, 0.9));
        state = rowing_out;
    }
}

void FarmHand::next_job() {
    if (product == "fish") {
        next_fishing_job();
    } else if (product == "milk" || product == "wool") {
        hold_an_animal();
    } else if (product == "egg") {
        start_job(UtilityFunctions::randf() < 0.4 ? Vector3(1.25f, 0, -1.25f) : spot(-2, 2, -0.7, 1.3));
    } else if (product == "honey") {
        start_job(Vector3(1.1f, 0, 0.75f)); // the straw hive in front
    } else if (product == "apple" || product == "orange") {
        start_job(Vector3(-1.15f, 0, 0.45f));
    } else if (product == "bean") {
        start_job(Vector3(0, 0, 0.75f));
    } else {
        timer = no_animal_pause;
    }
}

void FarmHand::to_the_gate(int via) {
    go(base() + gate_side, base() + gate);
    state = via;
}

void FarmHand::tick(double dt) {
    if (!home || !(dt >= 0)) {
        return;
    }
    switch (state) {
    case waiting:
        timer -= dt;
        if (timer <= 0) {
            next_job();
        }
        break;
    case to_job:
        if (arrived()) {
            state = working;
            timer = work_seconds;
            if (product == "milk") {
                Sfx::sound_at(TM_NAME("cow_moo"), get_instance_id(), get_position());
            }
        }
        break;
    case working:
        timer -= dt;
        work(dt);
        if (timer <= 0) {
            finish_work();
        }
        break;
    case to_gate:
        if (arrived()) {
            state = handing;
            timer = hand_time;
        }
        break;
    case handing:
        lean(timer > let_go ? lean_angle : 0.0f, dt);
        if (timer > let_go && timer - dt <= let_go) {
            hand_over();
        }
        timer -= dt;
        if (timer <= 0) {
            state = waiting;
            timer = 0;
        }
        break;
    case rowing_out:
        if (arrived()) {
            state = fishing;
            timer = 2.4;
            home.get()->splash(get_position() + Vector3(0.5f, 0.05f, -0.5f), false);
        }
        break;
    case fishing:
        timer -= dt;
        if (timer <= 0) {
            to_the_gate(rowing_back);
        }
        break;
    case rowing_back:
        if (arrived()) {
            state = waiting;
            timer = fish_pause;
        }
        break;
    default:
        state = waiting;
        timer = fish_pause;
        break;
    }
    if (boat != nullptr) {
        row(dt);
    }
    if (product == "milk" || product == "wool") {
        stand_aside(dt);
    }
    if (core_step(dt)) {
        core_animate(dt, load->is_visible());
    }
}

// Arms at the udder, the fleece, the hive or the branches.
void FarmHand::work(double dt) {
    set_phase(get_phase() + dt * 9.0);
    const float reach = product == "apple" || product == "orange" ? 2.4f : 1.1f;
    for (const int arm : {arm_l, arm_r}) {
        if (parts[arm] != nullptr) {
            const float sway = std::sin(static_cast<float>(get_phase())) * 0.25f * (arm == arm_l ? 1.0f : -1.0f);
            parts[arm]->set_rotation(Vector3(reach + sway, 0, 0));
        }
    }
    pose_moved();
}

void FarmHand::finish_work() {
    if (product == "wool") {
        home.get()->shear(held);
        Sfx::sound_at(TM_NAME("scissors_snip"), get_instance_id(), get_position());
    } else if (product == "fish") {
        home.get()->splash(get_position() + Vector3(0, 0.05f, -0.6f), true);
    }
    held = Dictionary();
    show_load(true);
    to_the_gate(to_gate);
}

void FarmHand::hand_over() {
    show_load(false);
    home.get()->deliver_catch(get_position());
}

void FarmHand::show_load(bool on) {
    load->set_visible(on);
}

void FarmHand::lean(float angle, double dt) {
    if (parts[body] == nullptr) {
        return;
    }
    Vector3 turn = parts[body]->get_rotation();
    turn.x += (angle - turn.x) * static_cast<float>(1.0 - std::exp(-12.0 * dt));
    parts[body]->set_rotation(turn);
    pose_moved();
}

// The spot is the animal's own: only the figure stands in front of it, not inside.
void FarmHand::stand_aside(double dt) {
    Node3D *figure = get_model();
    if (figure == nullptr) {
        return;
    }
    const bool at_animal = state == to_job || state == working;
    Vector3 at = figure->get_position();
    const float goal = at_animal ? 0.55f : 0.0f;
    if (std::abs(goal - at.z) > 0.001f) {
        at.z += (goal - at.z) * static_cast<float>(1.0 - std::exp(-6.0 * dt));
        figure->set_position(at);
        pose_moved();
    }
    if (state == working) {
        face(Vector3(0, 0, -1), dt);
    }
}

// The boat carries the fisher while he is out on the water.
void FarmHand::row(double dt) {
    const bool afloat = get_position().z - base().z < 1.5f;
    if (boat->is_visible() != afloat) {
        boat->set_visible(afloat);
    }
    if (!afloat) {
        return;
    }
    const Vector3 v = get_velocity();
    const bool moving = v.length_squared() > 0.02f;
    row_phase += static_cast<float>(dt) * (moving ? 5.0f : 1.2f);
    boat->set_position(Vector3(0, -0.1f + std::sin(row_phase * 0.7f) * 0.03f, 0));
    if (Node3D *person = get_model()) {
        boat->set_rotation(Vector3(0, person->get_rotation().y, 0));
    }
    const float pull = std::sin(row_phase) * (moving ? 0.6f : 0.08f);
    oars[0]->set_rotation(Vector3(0, pull, -0.3f));
    oars[1]->set_rotation(Vector3(0, 3.1416f - pull, -0.3f));
}

void FarmHand::_bind_methods() {
    ClassDB::bind_method(D_METHOD("setup", "home"), &FarmHand::setup);
    ClassDB::bind_method(D_METHOD("get_home"), &FarmHand::get_home);
    ClassDB::bind_method(D_METHOD("tick", "dt"), &FarmHand::tick);
    ClassDB::bind_method(D_METHOD("get_product"), &FarmHand::get_product);
    ClassDB::bind_method(D_METHOD("set_product", "v"), &FarmHand::set_product);
    ClassDB::bind_method(D_METHOD("get_state"), &FarmHand::get_state);
    ClassDB::bind_method(D_METHOD("set_state", "v"), &FarmHand::set_state);
    ClassDB::bind_method(D_METHOD("get_timer"), &FarmHand::get_timer);
    ClassDB::bind_method(D_METHOD("set_timer", "v"), &FarmHand::set_timer);
    ClassDB::bind_method(D_METHOD("get_held"), &FarmHand::get_held);
    ADD_PROPERTY(PropertyInfo(Variant::STRING, "product"), "set_product", "get_product");
    ADD_PROPERTY(PropertyInfo(Variant::INT, "state"), "set_state", "get_state");
    ADD_PROPERTY(PropertyInfo(Variant::FLOAT, "timer"), "set_timer", "get_timer");
}

} // namespace tilm
