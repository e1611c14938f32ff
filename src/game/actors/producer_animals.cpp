#include "game/actors/producer_animals.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include <godot_cpp/variant/utility_functions.hpp>

#include "game/actors/producer.h"
#include "game/art/models.h"
#include "glebworks/pose_batch.h"
#include "names.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr int fish_kinds = 3; // "fish0" to "fish2"

// Two feeding places at the trough and a drinking place, local to the producer.
constexpr int spot_count = 3;
const float spots[spot_count][2] = {{-2.1f, 1.25f}, {-1.5f, 1.3f}, {2.2f, 0.5f}};

float between(double a, double b) {
    return static_cast<float>(UtilityFunctions::randf_range(a, b));
}

bool chance(double p) {
    return UtilityFunctions::randf() < p;
}

ProducerAnimals::Gait gait_of(std::string_view product) {
    return product == "fish"    ? ProducerAnimals::Gait::fins
           : product == "honey" ? ProducerAnimals::Gait::wings
                                : ProducerAnimals::Gait::legs;
}

} // namespace

ProducerAnimals::ProducerAnimals(Producer *p_owner, const rules::ProducerKind &p_kind)
    : owner(p_owner), kind(p_kind),
      product(String::utf8(p_kind.product.data(), static_cast<int>(p_kind.product.size()))),
      gait(gait_of(p_kind.product)), pace(gait == Gait::wings  ? 1.5f
                                          : gait == Gait::fins ? 0.7f
                                          : p_kind.big         ? 0.75f
                                                               : 0.95f) {}

ProducerAnimals::Model ProducerAnimals::make_model(const String &what, Node3D *parent) const {
    Model m;
    m.root = Models::animal(what);
    if (m.root == nullptr) {
        return m;
    }
    const float size = Models::pen_scale(what);
    m.root->set_scale(Vector3(size, size, size));
    parent->add_child(m.root);
    m.pose = PoseBatch::find(m.root);
    m.body = Object::cast_to<Node3D>(m.root->get_node_or_null(NodePath("Body")));
    for (int i = 0; m.body != nullptr && i < m.body->get_child_count() && m.leg_count < 4; ++i) {
        Node3D *child = Object::cast_to<Node3D>(m.body->get_child(i));
        if (child != nullptr && String(child->get_name()).begins_with("Leg")) {
            m.legs[m.leg_count++] = child;
        }
    }
    return m;
}

Vector3 ProducerAnimals::yard_spot() const {
    switch (gait) {
    case Gait::fins: {
        const float turn = between(0, 2 * std::numbers::pi);
        const float out = std::sqrt(between(0.05, 1));
        return Vector3(std::cos(turn) * out * 1.9f, 0.06f, std::sin(turn) * out * 1.1f - 0.5f);
    }
    case Gait::wings:
        return Vector3(between(-2.3, 2.3), between(0.7, 1.9), between(-1.2, 1.5));
    case Gait::legs:
        break;
    }
    return Vector3(between(-2, 2), 0, between(-0.5, 1.35));
}

ProducerAnimals::Animal ProducerAnimals::make() {
    Animal a;
    a.node = memnew(Node3D);
    owner->add_child(a.node);
    // A pond holds three kinds.
    const bool swims = gait == Gait::fins;
    a.full = make_model(swims ? product + String::num_int64(count() % fish_kinds) : product, a.node);
    a.at = a.goal = yard_spot();
    a.face = between(-std::numbers::pi, std::numbers::pi);
    a.phase = between(0, 6);
    a.timer = between(0.2, 3);
    a.node->set_position(a.at);
    a.node->set_rotation(Vector3(0, a.face, 0));
    Array legs;
    for (int i = 0; i < a.full.leg_count; ++i) {
        legs.push_back(a.full.legs[i]);
    }
    a.view[TM_NAME("legs")] = legs;
    return a;
}

void ProducerAnimals::set_count(int n) {
    n = std::max(0, n);
    while (count() > n) {
        herd.back().node->queue_free();
        herd.pop_back();
        shared.pop_back();
    }
    while (count() < n) {
        herd.push_back(make());
        shared.push_back(herd.back().view);
        publish(herd.back());
    }
}

void ProducerAnimals::publish(Animal &a) {
    Dictionary &v = a.view;
    v[TM_NAME("n")] = a.node;
    v[TM_NAME("state")] = a.state;
    v[TM_NAME("goal")] = a.goal;
    v[TM_NAME("face")] = a.face;
    v[TM_NAME("phase")] = a.phase;
    v[TM_NAME("feed")] = a.feed;
    v[TM_NAME("lie")] = a.lie;
    v[TM_NAME("drink")] = a.drink;
    v[TM_NAME("rush")] = a.rush;
    v[TM_NAME("graze")] = a.graze;
    if (kind.product == "wool") {
        v[TM_NAME("shorn")] = a.shorn;
    }
}

void ProducerAnimals::choose(Animal &a) {
    a.feed = a.drink = a.graze = false;
    a.rush = chance(0.08);
    if (kind.product == "calf" && chance(0.3)) {
        a.state = lying;
        a.timer = between(7, 14);
        publish(a);
        return;
    }
    a.feed = gait == Gait::legs && chance(kind.big ? 0.3 : 0.45);
    if (a.feed) {
        const int spot = static_cast<int>(UtilityFunctions::randi_range(0, spot_count - 1));
        a.drink = spot == spot_count - 1;
        a.goal = Vector3(spots[spot][0] + between(-0.12, 0.12), 0, spots[spot][1] + between(-0.08, 0.08));
    } else {
        a.goal = yard_spot();
    }
    a.state = walking;
    publish(a);
}

void ProducerAnimals::arrive(Animal &a) {
    a.rush = false;
    if (a.feed) {
        a.state = eating;
        a.timer = between(2.5, 5);
        // Towards the trough, or the water.
        a.face = a.drink ? between(-1.9, -1.2) : between(-0.3, 0.3) + static_cast<float>(std::numbers::pi);
    } else {
        a.state = resting;
        a.graze = chance(0.5);
        a.timer = gait == Gait::legs ? between(1, 4) : between(0, 0.8);
    }
    publish(a);
}

// True while it is on its way.
bool ProducerAnimals::walk(Animal &a, float dt) {
    const Vector3 way = a.goal - a.at;
    const float left = way.length();
    const float speed = pace * (a.rush ? 2.1f : 1.0f);
    if (left <= std::max(0.04f, speed * dt)) {
        return false;
    }
    a.at += way * (speed * dt / left);
    const float wanted = std::atan2(-way.x, -way.z);
    const float turn = std::remainder(wanted - a.face, 2 * std::numbers::pi_v<float>);
    a.face += turn * (1.0f - std::exp(-8.0f * dt));
    return true;
}

void ProducerAnimals::pose(Animal &a, float dt, bool moving) {
    Model &m = shown(a);
    a.phase += dt * (moving ? (a.rush ? 16.0f : kind.big ? 7.0f : 11.0f) : 2.0f);
    float lift = 0;
    if (a.hop < 0.22f) {
        a.hop += dt;
        lift = a.hop < 0.1f ? a.hop / 0.1f * 0.25f : std::max(0.0f, 0.22f - a.hop) / 0.12f * 0.25f;
    }
    const float low = a.state == lying ? 1.0f : 0.0f;
    a.lie += (low - a.lie) * (1.0f - std::exp(-4.0f * dt));
    if (gait == Gait::wings) {
        lift += std::sin(a.phase * 2.3f) * 0.12f;
    }
    const float wriggle = gait == Gait::fins ? std::sin(a.phase * 1.6f) * 0.25f : 0.0f;
    a.node->set_position(a.at + Vector3(0, lift - a.lie * 0.16f, 0));
    a.node->set_rotation(Vector3(0, a.face + wriggle, 0));
    if (m.body == nullptr || gait != Gait::legs) {
        return;
    }
    for (int i = 0; i < m.leg_count; ++i) {
        const float sense = i == 0 || i == 3 ? 1.0f : -1.0f;
        const float swing = moving ? std::sin(a.phase) * 0.55f * sense : a.lie * 1.35f * (i < 2 ? -1.0f : 1.0f);
        Vector3 turn = m.legs[i]->get_rotation();
        turn.x += (swing - turn.x) * (1.0f - std::exp(-14.0f * dt));
        m.legs[i]->set_rotation(turn);
    }
    // Head down to feed: the whole body tips, far more in a hen than in a cow.
    const bool down = (a.state == eating || (a.state == resting && a.graze)) && !moving;
    const float tip =
        down ? (kind.big ? -0.1f : -0.32f) * (0.6f + 0.4f * std::sin(a.phase * (kind.big ? 1.2f : 4.0f))) : 0.0f;
    Vector3 turn = m.body->get_rotation();
    turn.x += (tip - turn.x) * (1.0f - std::exp(-9.0f * dt));
    m.body->set_rotation(turn);
    if (m.pose >= 0) {
        PoseBatch::mark_moved(m.pose);
    }
}

void ProducerAnimals::step(double delta) {
    const float dt = static_cast<float>(delta);
    for (Animal &a : herd) {
        bool moving = false;
        if (a.state == walking) {
            moving = walk(a, dt);
            if (!moving) {
                arrive(a);
            }
        } else if (a.state == held) {
            if (!is_held(a)) {
                choose(a);
            }
        } else {
            a.timer -= dt;
            if (a.timer <= 0) {
                choose(a);
            }
        }
        pose(a, dt, moving);
    }
}

void ProducerAnimals::show_fleece(Animal &a) {
    const bool bare = a.shorn > 0;
    if (bare && a.bare.root == nullptr) {
        a.bare = make_model("wool_shorn", a.node);
    }
    if (a.bare.root != nullptr && a.full.root != nullptr) {
        a.bare.root->set_visible(bare);
        a.full.root->set_visible(!bare);
    }
}

void ProducerAnimals::regrow(double dt) {
    for (Animal &a : herd) {
        if (a.shorn <= 0) {
            continue;
        }
        a.shorn = std::max(0.0f, a.shorn - static_cast<float>(dt));
        a.view[TM_NAME("shorn")] = a.shorn;
        if (a.shorn == 0) {
            show_fleece(a);
        }
    }
}

bool ProducerAnimals::is_held(Animal &a) {
    if (a.state == held && owner->get_lived() >= a.held_until) {
        a.state = resting;
        a.timer = 0;
        publish(a);
    }
    // Others may have put a hand on it through its Dictionary.
    return a.state == held || read_whole(a.view, TM_NAME("state"), a.state) == held;
}

Array ProducerAnimals::views() {
    for (Animal &a : herd) {
        publish(a);
    }
    return shared;
}

Dictionary ProducerAnimals::hold(const Vector3 &near, double sec) {
    Animal *best = nullptr;
    double lowest = std::numeric_limits<double>::infinity();
    const Vector3 base = owner->get_position();
    for (Animal &a : herd) {
        if (is_held(a)) {
            continue;
        }
        const double cost = (base + a.at).distance_to(near) + (a.shorn > 0 ? 50.0 : 0.0);
        if (cost < lowest) {
            lowest = cost;
            best = &a;
        }
    }
    if (best == nullptr) {
        return Dictionary();
    }
    best->goal = best->at;
    best->feed = best->drink = best->rush = false;
    best->state = held;
    best->held_until = owner->get_lived() + sec;
    publish(*best);
    return best->view;
}

void ProducerAnimals::shear(const Dictionary &d) {
    const Node3D *node = Object::cast_to<Node3D>(static_cast<Object *>(d.get(TM_NAME("n"), Variant())));
    for (Animal &a : herd) {
        if (node != nullptr && a.node == node) {
            a.shorn = static_cast<float>(rules::fleece_seconds);
            show_fleece(a);
            publish(a);
            return;
        }
    }
}

int ProducerAnimals::random() const {
    return herd.empty() ? -1 : static_cast<int>(UtilityFunctions::randi_range(0, count() - 1));
}

Vector3 ProducerAnimals::place_of(int i) const {
    return owner->get_position() + herd[static_cast<size_t>(i)].at;
}

} // namespace tilm
