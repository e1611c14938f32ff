#include "farm_animals/pet_core.h"

#include <algorithm>
#include <cmath>

#include "farm_items/world_place.h"
#include "glebworks/glebworks.h"
#include "glebworks/walker_core.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double near_horse = 3.0; // closer to the target than this it slows down
constexpr double near_other = 2.5;
constexpr double stands_within = 0.08;
constexpr double runs_beyond = 3.2; // from its heel spot
constexpr double runs_until = 0.4;
constexpr double aligns_within = 1.0; // of its heel spot it turns as its lead stands
constexpr real_t hitch_back = 0.7f;   // from the pet to the hitch behind it
constexpr double most_bend = 0.8;     // radians at the hitch
constexpr double view_margin = 4.0;
constexpr double shown_top = 7.5; // the speed at which legs swing widest

Vector3 forward_of(const Node3D *node) {
    if (const WalkerCore *walker = Object::cast_to<WalkerCore>(node)) {
        return walker->forward();
    }
    const Vector3 f = -world_transform(node).basis.get_column(2);
    const double d = std::hypot(f.x, f.z);
    return d < 1e-6 ? Vector3(0, 0, -1) : Vector3(static_cast<real_t>(f.x / d), 0, static_cast<real_t>(f.z / d));
}

void turn_x(const LiveRef<Node3D> &ref, double x) {
    if (Node3D *node = ref.get()) {
        Vector3 r = node->get_rotation();
        r.x = static_cast<real_t>(x);
        node->set_rotation(r);
    }
}

Vector3 back_of(double yaw) {
    return Vector3(static_cast<real_t>(std::sin(yaw)), 0, static_cast<real_t>(std::cos(yaw)));
}

void stand(Node3D *node, const Vector3 &p, double yaw) {
    node->set_global_position(p);
    node->set_rotation(Vector3(0, static_cast<real_t>(yaw), 0));
}

} // namespace

void PetCore::set_lead(const Variant &v) {
    if (v.get_type() == Variant::INT) {
        lead_id = static_cast<uint64_t>(static_cast<int64_t>(v));
        return;
    }
    const Object *node = v.get_type() == Variant::OBJECT ? v.get_validated_object() : nullptr;
    lead_id = node != nullptr ? static_cast<uint64_t>(node->get_instance_id()) : 0;
}

Node3D *PetCore::lead_node() const {
    return lead_id != 0 ? Object::cast_to<Node3D>(ObjectDB::get_instance(lead_id)) : nullptr;
}

void PetCore::core_join(bool is_horse, Object *body_node, const Array &follows) {
    horse = is_horse;
    body.set(Object::cast_to<Node3D>(body_node));
    body_y = body ? body.get()->get_position().y : 0.0;
    follow_list.clear();
    for (int64_t i = 0; i < follows.size(); ++i) {
        if (Node3D *node = Object::cast_to<Node3D>(follows[i].get_validated_object())) {
            follow_list.push_back(
                {LiveRef<Node3D>(node),
                 {LiveRef<Node3D>(Object::cast_to<Node3D>(node->get_node_or_null(NodePath("WheelL")))),
                  LiveRef<Node3D>(Object::cast_to<Node3D>(node->get_node_or_null(NodePath("WheelR"))))}});
        }
    }
}

void PetCore::core_rig(Object *rig, const Array &leg_nodes, Object *tail_node, Object *jaw_node, Object *head_node,
                       Object *neck_node) {
    if (Node3D *root = Object::cast_to<Node3D>(rig)) {
        body.set(root);
        body_y = root->get_position().y;
    }
    legs.clear();
    for (int64_t i = 0; i < leg_nodes.size(); ++i) {
        Node3D *upper = Object::cast_to<Node3D>(leg_nodes[i].get_validated_object());
        Node3D *lower = upper != nullptr ? Object::cast_to<Node3D>(upper->get_node_or_null(NodePath("Low"))) : nullptr;
        legs.push_back({LiveRef<Node3D>(upper), LiveRef<Node3D>(lower)});
    }
    tail.set(Object::cast_to<Node3D>(tail_node));
    jaw.set(Object::cast_to<Node3D>(jaw_node));
    head.set(Object::cast_to<Node3D>(head_node));
    neck.set(Object::cast_to<Node3D>(neck_node));
}

void PetCore::core_set(const Variant &lead, bool home, bool work, double top_speed, const Vector3 &to) {
    set_lead(lead);
    heel_mode = false;
    at_home = home;
    working = work;
    top = top_speed;
    goal = to;
}

void PetCore::core_heel(const Variant &lead, const Vector2 &heel, double to_side) {
    set_lead(lead);
    heel_mode = true;
    at_home = false;
    working = false;
    heel_offset = heel;
    side = to_side;
}

Array PetCore::get_follows() const {
    Array out;
    for (const Follower &follower : follow_list) {
        if (follower.node) {
            out.push_back(follower.node.get());
        }
    }
    return out;
}

Vector3 PetCore::target() const {
    if (!heel_mode) {
        return goal;
    }
    const Node3D *lead = lead_node();
    if (lead == nullptr) {
        return world_position(this);
    }
    const Vector3 ahead = forward_of(lead);
    const Vector3 right(-ahead.z, 0, ahead.x);
    return world_position(lead) + right * (side * heel_offset.x) - ahead * heel_offset.y;
}

void PetCore::_ready() {
    set_process(!in_editor());
}

void PetCore::_process(double dt) {
    core_step(dt);
}

void PetCore::core_step(double dt) {
    if (!asked) {
        asked = true;
        can_think = has_method(TM_NAME("think"));
        can_work = has_method(TM_NAME("_work"));
        can_horse = has_method(TM_NAME("horse_tick"));
    }
    if (can_think) {
        call(TM_NAME("think"), dt);
    }
    const bool lead_lost = lead_node() == nullptr && (heel_mode || lead_id != 0);
    if (lead_lost) {
        _speed = 0.0;
        running = false;
        animate(dt);
        return;
    }
    walk(dt);
    animate(dt);
    if (working && !heel_mode && can_work) {
        const Vector3 way = goal - get_global_position();
        if (std::hypot(way.x, way.z) <= stands_within) {
            call(TM_NAME("_work"), goal, dt);
        }
    }
    if (horse && can_horse) {
        call(TM_NAME("horse_tick"));
    }
}

double PetCore::walk(double dt) {
    const Vector3 to = target();
    const Vector3 from = get_global_position();
    const double dx = to.x - from.x;
    const double dz = to.z - from.z;
    const double d = std::hypot(dx, dz);
    if (!std::isfinite(d)) {
        _speed = 0.0;
        return 0.0;
    }
    running = heel_mode && (d > runs_beyond || (running && d > runs_until));
    const double wanted = d <= stands_within ? 0.0 : top * std::min(1.0, d / (horse ? near_horse : near_other));
    _speed += (wanted - _speed) * eased(8.0, dt);
    // The last steps to a heel spot are taken sideways or back, so that it stands as its lead does.
    const Node3D *lead = heel_mode && d < aligns_within ? lead_node() : nullptr;
    double step = 0.0;
    if (d > stands_within) {
        step = std::min(d, _speed * dt);
        set_global_position(
            Vector3(static_cast<real_t>(from.x + dx / d * step), from.y, static_cast<real_t>(from.z + dz / d * step)));
    }
    if (lead != nullptr) {
        const Vector3 ahead = forward_of(lead);
        turn(std::atan2(-ahead.x, -ahead.z), dt);
    } else if (step > 0.0) {
        turn(std::atan2(-dx, -dz), dt);
    }
    pull();
    return step;
}

void PetCore::turn(double to_yaw, double dt) {
    Vector3 r = get_rotation();
    const double by = angle_between(r.y, to_yaw);
    if (std::abs(by) > 1e-5) {
        r.y = static_cast<real_t>(std::remainder(r.y + by * eased(horse ? 5.0 : 10.0, dt), 2.0 * Math_PI));
        set_rotation(r);
    }
}

// What follows keeps its distance from the hitch at the back of what goes before it, looks at it, and bends only so
// far.
void PetCore::pull() {
    Vector3 ahead = get_global_position();
    double yaw = get_rotation().y;
    for (const Follower &follower : follow_list) {
        Node3D *node = follower.node.get();
        if (node == nullptr) {
            continue;
        }
        const Vector3 from = node->get_global_position();
        ahead += back_of(yaw) * hitch_back;
        double to_yaw = yaw;
        if (std::hypot(ahead.x - from.x, ahead.z - from.z) > 1e-4) {
            const double bend = angle_between(yaw, std::atan2(from.x - ahead.x, from.z - ahead.z));
            to_yaw = yaw + std::clamp(bend, -most_bend, most_bend);
        }
        const Vector3 now = ahead + back_of(to_yaw) * (hitch - hitch_back);
        if (now.distance_squared_to(from) < 1e-10) {
            return;
        }
        stand(node, now, to_yaw);
        for (const LiveRef<Node3D> &ref : follower.wheels) {
            if (Node3D *wheel = ref.get()) {
                const double rolled =
                    (now - from).dot(back_of(to_yaw)) / std::max<double>(0.1, wheel->get_position().y);
                wheel->rotate_x(static_cast<real_t>(rolled));
            }
        }
        ahead = now;
        yaw = to_yaw;
    }
}

void PetCore::jump(const Vector3 &p, double yaw) {
    stand(this, p, yaw);
    _speed = 0.0;
    running = false;
    Vector3 at = p;
    for (const Follower &follower : follow_list) {
        if (Node3D *node = follower.node.get()) {
            at += back_of(yaw) * hitch;
            stand(node, at, yaw);
        }
    }
}

void PetCore::animate(double dt) {
    clock += dt;
    if (!Glebworks::in_view(get_global_position(), view_margin)) {
        return;
    }
    const double pace = std::min(1.0, _speed / shown_top);
    const bool walks = _speed > 0.05;
    stride += ((walks ? 0.35 + 0.45 * pace : 0.0) - stride) * eased(10.0, dt);
    gait += dt * (walks ? (horse ? 5.0 : 8.0) + (horse ? 5.5 : 9.0) * pace : 0.0);
    // A trot moves crosswise; at a run both front legs reach out together.
    for (size_t i = 0; i < legs.size(); ++i) {
        const bool front = i < 2;
        const double shift =
            running ? (front ? 0.0 : Math_PI) + (i % 2 == 0 ? 0.0 : 0.5) : (i == 0 || i == 3 ? 0.0 : Math_PI);
        const double swing = std::sin(gait + shift);
        turn_x(legs[i].upper, swing * stride);
        // The lower half folds while its leg comes forward.
        turn_x(legs[i].lower, -std::max(0.0, std::cos(gait + shift)) * stride * 1.3);
    }
    if (Node3D *root = body.get()) {
        const double bounce = stride * (running ? 0.1 : 0.045);
        Vector3 p = root->get_position();
        p.y = static_cast<real_t>(body_y + std::abs(std::sin(gait)) * bounce);
        root->set_position(p);
        turn_x(body, running ? std::sin(gait) * 0.07 : 0.0);
    }
    // At home or at work in the ground the head goes down; it comes up slowly.
    const bool low = !walks && (at_home || working);
    const double wish = low ? -0.75 + 0.1 * std::sin(3.0 * clock) : running ? -0.2 : 0.04 * std::sin(1.3 * clock);
    neck_x += (wish - neck_x) * eased(3.0, dt);
    turn_x(neck, neck_x);
    turn_x(head, low ? 0.15 * std::sin(5.0 * clock) : -0.4 * neck_x);
    turn_x(jaw, low || running ? -0.18 - 0.12 * std::sin(8.0 * clock) : 0.0);
    if (Node3D *node = tail.get()) {
        Vector3 r = node->get_rotation();
        r.y = static_cast<real_t>(std::sin(clock * (walks ? 9.0 : 3.5)) * (horse ? 0.2 : 0.45));
        node->set_rotation(r);
    }
}

void PetCore::_bind_methods() {
    TM_BIND_FIELD(PetCore, Variant::BOOL, heel_mode);
    TM_BIND_FIELD(PetCore, Variant::BOOL, working);
    TM_BIND_FIELD(PetCore, Variant::BOOL, at_home);
    TM_BIND_FIELD(PetCore, Variant::VECTOR3, goal);
    TM_BIND_FIELD(PetCore, Variant::VECTOR2, heel_offset);
    TM_BIND_FIELD(PetCore, Variant::FLOAT, side);
    TM_BIND_FIELD(PetCore, Variant::FLOAT, top);
    TM_BIND_FIELD(PetCore, Variant::FLOAT, _speed);
    TM_BIND_FIELD(PetCore, Variant::BOOL, horse);
    ClassDB::bind_method(D_METHOD("set_speed", "v"), &PetCore::set_speed);
    ClassDB::bind_method(D_METHOD("get_speed"), &PetCore::get_speed);
    ClassDB::bind_method(D_METHOD("set_lead", "lead"), &PetCore::set_lead);
    ClassDB::bind_method(D_METHOD("get_lead"), &PetCore::get_lead);
    ADD_PROPERTY(PropertyInfo(Variant::INT, "lead"), "set_lead", "get_lead");
    ClassDB::bind_method(D_METHOD("get_body"), &PetCore::get_body);
    ADD_PROPERTY(PropertyInfo(Variant::OBJECT, "body"), "", "get_body");
    ClassDB::bind_method(D_METHOD("core_join", "horse", "body", "follows"), &PetCore::core_join);
    ClassDB::bind_method(D_METHOD("core_rig", "rig", "legs", "tail", "jaw", "head", "neck"), &PetCore::core_rig);
    ClassDB::bind_method(D_METHOD("core_set", "lead", "home", "working", "top", "goal"), &PetCore::core_set);
    ClassDB::bind_method(D_METHOD("core_heel", "lead", "heel", "side"), &PetCore::core_heel);
    ClassDB::bind_method(D_METHOD("core_step", "dt"), &PetCore::core_step);
    ClassDB::bind_method(D_METHOD("target"), &PetCore::target);
    ClassDB::bind_method(D_METHOD("is_running"), &PetCore::is_running);
    ClassDB::bind_method(D_METHOD("get_follows"), &PetCore::get_follows);
}

} // namespace tilm
