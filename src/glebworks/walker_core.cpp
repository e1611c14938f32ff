#include "glebworks/walker_core.h"

#include <cmath>

#include "farm_items/stack_core.h"
#include "glebworks/far_list.h"
#include "glebworks/glebworks.h"
#include "glebworks/pose_batch.h"
#include "names.h"

namespace tilm {

namespace {
constexpr double still = 0.0004;      // squared speed that counts as standing
constexpr double reach = 0.15;        // a way point this near is dropped
constexpr double sleep_margin = 10.0; // beyond the view
constexpr double turn_margin = 6.0;
constexpr double far_interval = 0.1;
constexpr double arm_lift = 1.35;

Vector3 flat(const Vector3 &v) {
    return Vector3(v.x, 0, v.z);
}
} // namespace

double WalkerCore::boost = 1.0;

WalkerCore::~WalkerCore() {
    if (brain.is_valid()) {
        brain->detach();
    }
}

void WalkerCore::set_brain(const Ref<WalkerBrain> &b) {
    if (brain.is_valid()) {
        brain->detach();
    }
    brain = b;
    if (brain.is_valid()) {
        if (WalkerCore *other = brain->get_walker()) {
            other->brain.unref();
        }
        brain->attach(this);
        set_process(true);
    }
}

void WalkerCore::core_bind(Node3D *new_model, StackCore *new_stack, const Array &new_parts) {
    model = new_model;
    stack = new_stack;
    for (int i = 0; i < part_count; ++i) {
        parts[i] = i < new_parts.size() ? Object::cast_to<Node3D>(new_parts[i].get_validated_object()) : nullptr;
    }
    body_y = parts[body] != nullptr ? parts[body]->get_position().y : 0.0;
    pose = PoseBatch::find(model);
}

void WalkerCore::set_path(const Array &points) {
    path.clear();
    for (int64_t i = 0; i < points.size(); ++i) {
        const Variant &point = points[i];
        if (point.get_type() != Variant::VECTOR3) {
            ERR_PRINT("TILMARCH walker path: entry is not a Vector3, left out");
            continue;
        }
        path.push_back(point);
    }
}

Array WalkerCore::get_path() const {
    Array out;
    for (const Vector3 &p : path) {
        out.push_back(p);
    }
    return out;
}

void WalkerCore::go(const Vector3 &a) {
    path.assign({a});
}

void WalkerCore::go(const Vector3 &a, const Vector3 &b) {
    path.assign({a, b});
}

void WalkerCore::go(const Vector3 &a, const Vector3 &b, const Vector3 &c) {
    path.assign({a, b, c});
}

Vector3 WalkerCore::forward() const {
    double yaw = model != nullptr ? model->get_rotation().y : get_rotation().y;
    return Vector3(-std::sin(yaw), 0, -std::cos(yaw));
}

bool WalkerCore::core_step(double dt) {
    const Vector3 p = get_position();
    // Walkers under a shifted parent are drawn elsewhere than their own coordinates say.
    const Vector3 shift = is_inside_tree() ? get_global_position() - p : Vector3();
    if (!Glebworks::in_view(p + shift, sleep_margin)) {
        far_clock += dt;
        if (far_clock >= far_interval) {
            follow_path(far_clock);
            far_clock = 0.0;
        }
        return false;
    }
    far_clock = 0.0;
    Vector3 wanted;
    if (!path.empty()) {
        const Vector3 way = flat(path.front() - p);
        const double d = way.length();
        if (d < reach) {
            path.erase(path.begin());
        } else {
            wanted = way * (effective_speed() / d);
        }
    }
    velocity = velocity.lerp(wanted, 1.0 - std::exp(-10.0 * dt));
    const bool stopped = path.empty() && velocity.length_squared() < still;
    const int64_t carried = stack != nullptr ? stack->count() : 0;
    if (stopped && idle && carried == idle_count) {
        return false;
    }
    idle = stopped;
    idle_count = carried;
    Vector3 now = p + velocity * dt;
    if (!path.empty()) {
        const Vector3 way = flat(path.front() - p);
        const Vector3 step = velocity * dt;
        if (step.length_squared() >= way.length_squared()) {
            now = Vector3(path.front().x, p.y, path.front().z);
        }
    }
    set_position(now);
    if (!Glebworks::in_view(now + shift, turn_margin)) {
        idle = false;
        return false;
    }
    face(velocity, dt);
    return true;
}

void WalkerCore::follow_path(double dt) {
    double budget = effective_speed() * dt;
    velocity = Vector3();
    idle = false;
    if (path.empty()) {
        return;
    }
    Vector3 p = get_position();
    while (!path.empty() && budget > 0.0) {
        const Vector3 way = flat(path.front() - p);
        const double d = way.length();
        if (d > budget) {
            p += way * (budget / d);
            break;
        }
        budget -= d;
        p = Vector3(path.front().x, p.y, path.front().z);
        path.erase(path.begin());
    }
    set_position(p);
}

void WalkerCore::face(const Vector3 &dir, double dt) {
    if (model == nullptr || dir.length_squared() <= still) {
        return;
    }
    Vector3 rotation = model->get_rotation();
    const double yaw = std::atan2(-dir.x, -dir.z);
    const double turn = Math::wrapf(yaw - rotation.y, -Math_PI, Math_PI);
    if (std::abs(turn) < 1e-5) {
        return;
    }
    rotation.y += turn * (1.0 - std::exp(-14.0 * dt));
    model->set_rotation(rotation);
}

double WalkerCore::lod(double dt) {
    if (ticking) {
        return dt;
    }
    if (Glebworks::in_view(is_inside_tree() ? get_global_position() : get_position(), sleep_margin)) {
        return dt;
    }
    asleep = true;
    stamp = FarList::clock();
    set_process(false);
    if (!listed) {
        listed = true;
        FarList::join(this);
    }
    return dt;
}

void WalkerCore::tick_far(double dt) {
    FarList::tick(dt);
}

bool WalkerCore::rest_due(double) {
    return false;
}

bool WalkerCore::rest_step(double dt) {
    rest_wait += dt;
    if (rest_wait < rest_interval) {
        return false;
    }
    const double t = rest_wait;
    rest_wait = 0.0;
    return rest_due(t);
}

void WalkerCore::core_animate(double dt, bool carrying) {
    const double s01 = std::min(1.0, velocity.length() / std::max(0.1, speed));
    if (s01 > 0.05) {
        phase += dt * (7.0 * s01 + 4.0);
    }
    const double swing = std::sin(phase) * 0.7 * s01;
    auto bend = [](Node3D *part, double x) {
        if (part != nullptr) {
            Vector3 r = part->get_rotation();
            r.x = x;
            part->set_rotation(r);
        }
    };
    bend(parts[leg_l], swing);
    bend(parts[leg_r], -swing);
    for (int arm : {arm_l, arm_r}) {
        if (parts[arm] == nullptr) {
            continue;
        }
        Vector3 r = parts[arm]->get_rotation();
        r.x = carrying ? r.x + (arm_lift - r.x) * 0.3 : (arm == arm_l ? -swing : swing) * 0.8;
        parts[arm]->set_rotation(r);
    }
    if (parts[body] != nullptr) {
        Vector3 at = parts[body]->get_position();
        at.y = body_y + (std::abs(std::cos(phase)) - 0.35) * 0.05 * s01;
        parts[body]->set_position(at);
        Vector3 r = parts[body]->get_rotation();
        r.z = std::sin(phase) * 0.045 * s01;
        r.x += (-0.09 * s01 * (carrying ? 0.6 : 1.0) - r.x) * 0.15;
        parts[body]->set_rotation(r);
    }
    pose_moved();
}

void WalkerCore::pose_moved() const {
    PoseBatch::mark_moved(pose);
}

void WalkerCore::_process(double dt) {
    // The brain may replace itself; keep this one for the length of its step.
    Ref<WalkerBrain> current = brain;
    if (current.is_valid()) {
        current->tick(dt);
    } else {
        set_process(false);
    }
}

void WalkerCore::_bind_methods() {
    TM_BIND_FIELD(WalkerCore, Variant::FLOAT, speed);
    TM_BIND_FIELD(WalkerCore, Variant::FLOAT, rest_mult);
    TM_BIND_FIELD(WalkerCore, Variant::FLOAT, cover_speed);
    TM_BIND_FIELD(WalkerCore, Variant::FLOAT, phase);
    TM_BIND_FIELD(WalkerCore, Variant::FLOAT, rest_interval);
    TM_BIND_FIELD(WalkerCore, Variant::FLOAT, far_clock);
    TM_BIND_FIELD(WalkerCore, Variant::VECTOR3, velocity);
    TM_BIND_FIELD(WalkerCore, Variant::ARRAY, path);
    TM_BIND_FIELD(WalkerCore, Variant::BOOL, idle);
    TM_BIND_FIELD(WalkerCore, Variant::INT, idle_count);
    TM_BIND_FIELD(WalkerCore, Variant::FLOAT, rest_wait);
    TM_BIND_FIELD(WalkerCore, Variant::BOOL, asleep);
    TM_BIND_FIELD(WalkerCore, Variant::BOOL, far_skip);
    TM_BIND_FIELD(WalkerCore, Variant::OBJECT, brain);
    ClassDB::bind_method(D_METHOD("core_bind", "model", "stack", "parts"), &WalkerCore::core_bind);
    ClassDB::bind_method(D_METHOD("walk_to", "points"), &WalkerCore::walk_to);
    ClassDB::bind_method(D_METHOD("arrived"), &WalkerCore::arrived);
    ClassDB::bind_method(D_METHOD("face", "dir", "dt"), &WalkerCore::face);
    ClassDB::bind_method(D_METHOD("core_step", "dt"), &WalkerCore::core_step);
    ClassDB::bind_method(D_METHOD("lod", "dt"), &WalkerCore::lod);
    ClassDB::bind_method(D_METHOD("rest_step", "dt"), &WalkerCore::rest_step);
    ClassDB::bind_method(D_METHOD("rest_due", "t"), &WalkerCore::rest_due);
    ClassDB::bind_method(D_METHOD("core_animate", "dt", "carrying"), &WalkerCore::core_animate);
    ClassDB::bind_method(D_METHOD("get_model"), &WalkerCore::get_model);
    ClassDB::bind_method(D_METHOD("get_stack"), &WalkerCore::get_stack);
    ClassDB::bind_method(D_METHOD("forward"), &WalkerCore::forward);
    ClassDB::bind_method(D_METHOD("in_far_list"), &WalkerCore::in_far_list);
    ClassDB::bind_static_method("WalkerCore", D_METHOD("tick_far", "dt"), &WalkerCore::tick_far);
    ClassDB::bind_static_method("WalkerCore", D_METHOD("set_boost", "v"), &WalkerCore::set_boost);
    ClassDB::bind_static_method("WalkerCore", D_METHOD("get_boost"), &WalkerCore::get_boost);
}

} // namespace tilm
