#include "game/actors/player.h"

#include <algorithm>
#include <cmath>

#include "game/actors/money_stack.h"
#include "game/actors/person_look.h"
#include "game/actors/player_gear.h"
#include "game/actors/stack_carrier.h"
#include "game/art/models.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double walk_speed = 6.0;
constexpr int arms_room = 14;
constexpr int arms_shown = 8;
constexpr double body_radius = 0.35; // kept clear of solids
constexpr double far_reach = 40.0;
constexpr double stand_off = 0.7; // from a chair that is left
constexpr double seat_to_body = 0.72;
constexpr double aside = 0.31; // half a tower's width
constexpr double money_height = 0.98;
constexpr real_t money_back = 0.42f;

Vector3 clamp_into(const Vector3 &p, const Rect2 &r) {
    return Vector3(std::clamp<double>(p.x, r.position.x, r.position.x + r.size.x), p.y,
                   std::clamp<double>(p.z, r.position.y, r.position.y + r.size.y));
}

bool holds(const Rect2 &r, const Vector3 &p) {
    return p.x >= r.position.x && p.x <= r.position.x + r.size.x && p.z >= r.position.y &&
           p.z <= r.position.y + r.size.y;
}

std::vector<Rect2> rects_of(const Array &from) {
    std::vector<Rect2> out;
    for (int64_t i = 0; i < from.size(); ++i) {
        if (from[i].get_type() == Variant::RECT2) {
            out.push_back(from[i]);
        } else {
            ERR_PRINT("TILMARCH player solids: entry is not a Rect2, left out");
        }
    }
    return out;
}

Array array_of(const std::vector<Rect2> &from) {
    Array out;
    for (const Rect2 &r : from) {
        out.push_back(r);
    }
    return out;
}

} // namespace

Player::~Player() = default;
Player::Player() = default;

void Player::_ready() {
    if (in_editor()) {
        set_process(false);
        return;
    }
    if (get_model() == nullptr) {
        Dictionary look = PersonLook::of_role("farmer", "f1c27d");
        look["hd"] = true;
        set_look(look);
    }
    speed = walk_speed;
    tower->set_capacity(arms_room);
    tower->set_show_limit(arms_shown);
    max_label = Models::label3d("MAX!", 60, Color(1.0f, 0.322f, 0.322f), Vector3(), this);
    max_label->set_as_top_level(true);
    max_label->set_visible(false);
}

void Player::set_look(const Dictionary &look) {
    const Array ids = gear != nullptr ? gear->worn() : Array();
    if (gear != nullptr) {
        gear->wear(Array());
    }
    if (money != nullptr && money->get_parent() != nullptr) {
        money->get_parent()->remove_child(money);
    }
    build(look);
    if (money == nullptr) {
        money = memnew(MoneyStack);
        money->set_name("Money");
        money->set_base(Vector3(0, money_height, money_back));
    }
    get_model()->add_child(money);
    if (gear == nullptr) {
        gear = std::make_unique<PlayerGear>(this);
    }
    gear->wear(ids);
}

void Player::wear_boosts(const Array &ids) {
    if (gear != nullptr) {
        gear->wear(ids);
    }
}

Array Player::worn() const {
    return gear != nullptr ? gear->worn() : Array();
}

Dictionary Player::get_gear() const {
    return gear != nullptr ? gear->nodes() : Dictionary();
}

CPUParticles3D *Player::get_trail() const {
    return gear != nullptr ? gear->trail_node() : nullptr;
}

double Player::get_gear_clock() const {
    return gear != nullptr ? gear->get_clock() : 0.0;
}

void Player::set_solids(const Array &rects) {
    solids = rects_of(rects);
}

Array Player::get_solids() const {
    return array_of(solids);
}

void Player::set_far_solids(const Array &rects) {
    far_solids = rects_of(rects);
}

Array Player::get_far_solids() const {
    return array_of(far_solids);
}

bool Player::inside(const Vector3 &p) const {
    return holds(first_area, p) || (second_area.size.x > 0 && holds(second_area, p));
}

bool Player::at_home(const Vector3 &p) const {
    return inside(p.is_finite() ? p : get_position());
}

Vector3 Player::home_point() const {
    return inside(get_position()) || !has_home ? get_position() : home;
}

Vector3 Player::nearest_land(const Vector3 &p) const {
    if (inside(p)) {
        return p;
    }
    const bool in_second = !holds(first_area, home_point()) && second_area.size.x > 0;
    return clamp_into(p, in_second ? second_area : first_area);
}

void Player::sit_on(Node3D *seat, double seat_y) {
    if (seat == nullptr) {
        if (is_sitting()) {
            stand_up(false);
        }
        return;
    }
    chair.set(seat);
    seat_height = seat_y;
    velocity = Vector3();
    const Vector3 at = seat->get_global_position();
    set_position(Vector3(at.x, 0, at.z));
    if (get_model() != nullptr) {
        get_model()->set_rotation(Vector3(0, seat->get_global_rotation().y, 0));
    }
}

void Player::stand_up(bool move_off) {
    Node3D *seat = chair.get();
    if (move_off && seat != nullptr) {
        const Vector3 ahead = -seat->get_global_transform().basis.get_column(2);
        const Vector3 at = seat->get_global_position() + ahead * stand_off;
        set_position(Vector3(at.x, 0, at.z));
    }
    chair.set(nullptr);
    if (get_model() != nullptr) {
        get_model()->set_position(Vector3());
        get_model()->set_rotation(Vector3());
    }
    animate(0.0);
}

void Player::_process(double dt) {
    step(dt);
}

void Player::step(double dt) {
    if (get_model() == nullptr) {
        return;
    }
    gear->step(dt, velocity.length(), is_sitting());
    step_towers(dt);
    if (step_chair(dt)) {
        step_max(dt);
        return;
    }
    velocity = velocity.lerp(input.limit_length(1.0) * speed * speed_mult, 1.0 - std::exp(-16.0 * dt));
    Vector3 p = keep_inside(get_position() + velocity * dt);
    if (inside(p)) {
        home = p;
        has_home = true;
    }
    for (const Rect2 &solid : solids) {
        p = push_out(p, solid);
    }
    if (free_roam > 0.0 && !inside(p)) {
        for (const Rect2 &solid : far_solids) {
            if (holds(solid.grow(far_reach), p)) {
                p = push_out(p, solid);
            }
        }
    }
    set_position(p);
    face(velocity, dt);
    animate(dt);
    step_max(dt);
}

// The land's edges let the walker slide along them. With free roam there are none: a wish that leads off the land is
// followed whole, so no slide along one axis is ever looked for.
Vector3 Player::keep_inside(const Vector3 &to) const {
    if (free_roam > 0.0) {
        return to;
    }
    const Rect2 &a = first_area;
    const bool beyond = to.x < a.position.x - 1.0 || to.x > a.position.x + a.size.x + 1.0;
    return clamp_into(to, second_area.size.x > 0 && beyond ? second_area : a);
}

Vector3 Player::push_out(const Vector3 &p, const Rect2 &solid) {
    const Rect2 r = solid.grow(body_radius);
    const double left = p.x - r.position.x;
    const double right = r.position.x + r.size.x - p.x;
    const double top = p.z - r.position.y;
    const double bottom = r.position.y + r.size.y - p.z;
    if (left <= 0 || right <= 0 || top <= 0 || bottom <= 0) {
        return p;
    }
    // Ties go in this order, whatever the last digit says.
    const double least = std::min({left, right, top, bottom}) + 1e-5;
    if (left <= least) {
        return Vector3(p.x - left, p.y, p.z);
    }
    if (right <= least) {
        return Vector3(p.x + right, p.y, p.z);
    }
    if (top <= least) {
        return Vector3(p.x, p.y, p.z - top);
    }
    return Vector3(p.x, p.y, p.z + bottom);
}

// Goods in front and money behind stand side by side, so that neither hides the other from the camera.
void Player::step_towers(double dt) {
    const bool both = tower->goods_count() > 0 && money->count() > 0;
    const double ease = 1.0 - std::exp(-12.0 * dt);
    auto follow = [&](double &now, double goal) {
        now += (goal - now) * ease;
        if (std::abs(goal - now) < 1e-3) {
            now = goal;
        }
    };
    follow(tower_x, both ? -aside : 0.0);
    follow(money_x, both ? 0.62 + aside * (tower->cols() - 1) - aside : 0.0);
    tower->set_side(tower_x);
    Vector3 base = money->get_base();
    double height = base.y;
    follow(height, money_height);
    base = Vector3(static_cast<real_t>(money_x), static_cast<real_t>(height), money_back);
    if (money->get_base() != base) {
        money->set_base(base);
    }
    if (both) {
        money->set_sway(tower->get_sway());
    }
}

bool Player::step_chair(double dt) {
    if (!is_sitting()) {
        return false;
    }
    if (chair.get() == nullptr || input.length() > 0.2) {
        stand_up(true);
        return false;
    }
    Vector3 at = get_model()->get_position();
    at.y += (seat_height - seat_to_body - at.y) * (1.0 - std::exp(-12.0 * dt));
    get_model()->set_position(at);
    for (int part = leg_l; part < part_count; ++part) {
        if (parts[part] != nullptr) {
            parts[part]->set_rotation(Vector3(part <= leg_r ? 1.5 : 0.55, 0, 0));
        }
    }
    pose_moved();
    velocity = Vector3();
    return true;
}

void Player::step_max(double dt) {
    const bool full = tower->is_full() && !max_muted;
    if (max_label == nullptr) {
        return;
    }
    if (max_label->is_visible() != full) {
        max_label->set_visible(full);
    }
    if (!full) {
        max_clock = 0.0;
        return;
    }
    max_clock += dt;
    max_label->set_global_position(tower->top_global() + Vector3(0, 0.5 + 0.08 * std::sin(max_clock * 6.0), 0));
}

void Player::_bind_methods() {
    TM_BIND_FIELD(Player, Variant::VECTOR3, input);
    TM_BIND_FIELD(Player, Variant::FLOAT, speed_mult);
    TM_BIND_FIELD(Player, Variant::RECT2, first_area);
    TM_BIND_FIELD(Player, Variant::RECT2, second_area);
    TM_BIND_FIELD(Player, Variant::FLOAT, free_roam);
    TM_BIND_FIELD(Player, Variant::BOOL, max_muted);
    TM_BIND_FIELD(Player, Variant::ARRAY, solids);
    TM_BIND_FIELD(Player, Variant::ARRAY, far_solids);
    ClassDB::bind_method(D_METHOD("step", "dt"), &Player::step);
    ClassDB::bind_method(D_METHOD("sit_on", "chair", "seat_y"), &Player::sit_on);
    ClassDB::bind_method(D_METHOD("is_sitting"), &Player::is_sitting);
    ClassDB::bind_method(D_METHOD("at_home", "p"), &Player::at_home);
    ClassDB::bind_method(D_METHOD("home_point"), &Player::home_point);
    ClassDB::bind_method(D_METHOD("set_look", "cfg"), &Player::set_look);
    ClassDB::bind_method(D_METHOD("wear_boosts", "ids"), &Player::wear_boosts);
    ClassDB::bind_method(D_METHOD("worn"), &Player::worn);
    ClassDB::bind_method(D_METHOD("nearest_land", "p"), &Player::nearest_land);
    ClassDB::bind_method(D_METHOD("get_gear"), &Player::get_gear);
    ClassDB::bind_method(D_METHOD("get_trail"), &Player::get_trail);
    ClassDB::bind_method(D_METHOD("get_gear_clock"), &Player::get_gear_clock);
    ClassDB::bind_method(D_METHOD("get_max_clock"), &Player::get_max_clock);
    ClassDB::bind_method(D_METHOD("get_chair"), &Player::get_chair);
    ClassDB::bind_method(D_METHOD("get_seat_height"), &Player::get_seat_height);
    ClassDB::bind_method(D_METHOD("add_solid", "r"), &Player::add_solid);
    ClassDB::bind_method(D_METHOD("money_stack"), &Player::money_stack);
}

} // namespace tilm
