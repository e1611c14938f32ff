#include "game/actors/walker.h"

#include <cmath>

#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/actors/person_look.h"
#include "game/actors/stack_carrier.h"
#include "game/art/models.h"
#include "game/ports/farm.h"
#include "game/ports/workday.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/staff.h"

namespace tilm {

namespace {
const Color lime(0.773f, 0.961f, 0.259f); // c5f542
constexpr double duty_interval = 1.0;     // seconds between questions to the workday
constexpr double stride = 1.9;            // units of way in one cycle of a full model
} // namespace

bool Walker::rest_due(double t) {
    Workday *day = id.is_empty() ? nullptr : Workday::current();
    if (day == nullptr) {
        rest_interval = duty_interval;
        return false;
    }
    const bool away = day->staff_step(this, t);
    const bool scheduled = !cfg.has("st") || static_cast<int64_t>(cfg["st"]) != 0;
    rest_interval = away || scheduled ? 0.0 : duty_interval;
    return away;
}

void Walker::build(const Dictionary &look) {
    bind_model(Models::person(look));
}

void Walker::bind_model(Node3D *person) {
    if (person == nullptr) {
        ERR_PRINT("TILMARCH walker without a model: " + String(get_name()));
        return;
    }
    Node3D *old = get_model();
    if (tower == nullptr) {
        tower = memnew(StackCarrier);
        tower->set_name("Stack");
    } else if (tower->get_parent() != nullptr) {
        tower->get_parent()->remove_child(tower);
    }
    person->set_name("Model");
    if (old != nullptr) {
        person->set_rotation(old->get_rotation());
        remove_child(old);
        old->queue_free();
    }
    add_child(person);
    person->add_child(tower);
    Array limbs;
    for (const char *part : {"Body", "Body/LegL", "Body/LegR", "Body/ArmL", "Body/ArmR"}) {
        limbs.push_back(person->get_node_or_null(NodePath(part)));
    }
    jointed = PersonLook::has_joints(person);
    core_bind(person, tower, limbs);
    if (plain_staff) {
        apply_capacity();
    }
}

void Walker::animate(double dt) {
    if (seated) {
        return;
    }
    const bool carrying = tower != nullptr && tower->goods_count() > 0 && !plain_staff;
    if (!jointed) {
        core_animate(dt, carrying);
        return;
    }
    const double v = velocity.length();
    const double s01 = std::min(1.0, v / std::max(0.1, speed));
    if (s01 > 0.05) {
        phase += dt * std::max(5.0, v / stride * 2.0 * Math_PI);
    }
    PersonLook::pose_full(model, phase, s01, carrying);
    pose_moved();
}

bool Walker::step_path(double dt) {
    const bool moved = core_step(dt);
    if (moved) {
        animate(dt);
    }
    return moved;
}

void Walker::set_cover(bool on) {
    if (on == covering) {
        return;
    }
    covering = on;
    cover_speed = on ? 1.2 : 1.0;
    apply_capacity();
    if (cover_label == nullptr && on) {
        cover_label = Models::label3d("x2", 44, lime, Vector3(0, 2.6, 0), this);
    }
    if (cover_label != nullptr) {
        cover_label->set_visible(on);
    }
}

void Walker::make_staff(double spd, int64_t cap) {
    plain_staff = true;
    base_speed = spd;
    base_capacity = cap;
    _staff_apply(false);
}

int64_t Walker::experience() const {
    Farm *farm = Farm::current();
    return id.is_empty() || farm == nullptr ? 0 : static_cast<int64_t>(farm->staff_table().get(id, 0));
}

void Walker::apply_capacity() {
    if (tower == nullptr) {
        return;
    }
    if (plain_staff) {
        tower->set_capacity(
            static_cast<int>(rules::staff_capacity(base_capacity, static_cast<int>(level), extra_capacity, covering)));
    } else {
        tower->set_capacity(covering ? tower->get_capacity() * 2 : tower->get_capacity() / 2);
    }
    tower->set_show_limit(tower->cols() * 4);
    tower->touch();
}

void Walker::_staff_apply(bool pop) {
    level = id.is_empty() ? 1 : rules::staff_level(experience());
    speed = rules::staff_speed(base_speed, static_cast<int>(level));
    apply_capacity();
    const String text = "LV" + String::num_int64(level);
    if (level_label == nullptr) {
        level_label = Models::label3d(text, 40, Color(1, 1, 1), Vector3(0, 2.3, 0), this);
        level_label->set_visible(false);
    } else {
        level_label->set_text(text);
    }
    if (!pop) {
        return;
    }
    Sfx::sound(TM_NAME("staff_level"));
    if (!is_inside_tree()) {
        return;
    }
    Label3D *shout = Models::label3d("LEVEL UP!", 56, lime, Vector3(0, 2.4, 0), this);
    Ref<Tween> tween = shout->create_tween();
    tween->tween_property(shout, NodePath("position:y"), 3.6, 1.2);
    tween->tween_property(shout, NodePath("scale"), Vector3(0.01, 0.01, 0.01), 0.5);
    tween->tween_callback(Callable(shout, TM_NAME("queue_free")));
}

void Walker::show_level(bool on) {
    if (level_label != nullptr) {
        level_label->set_visible(on);
    }
}

void Walker::work_done(int64_t n) {
    Farm *farm = Farm::current();
    if (n <= 0 || id.is_empty() || farm == nullptr) {
        return;
    }
    Dictionary table = farm->staff_table();
    const int64_t now = static_cast<int64_t>(table.get(id, 0)) + n;
    table[id] = now;
    if (rules::staff_level(now) == level) {
        return;
    }
    _staff_apply(true);
    const double shown = std::round(speed * 100.0) / 100.0;
    UtilityFunctions::print("TILMARCH staff ", id, " LV", level, " speed=", shown,
                            " cap=", tower == nullptr ? 0 : tower->get_capacity());
}

void Walker::_bind_methods() {
    TM_BIND_FIELD(Walker, Variant::STRING, id);
    TM_BIND_FIELD(Walker, Variant::INT, level);
    TM_BIND_FIELD(Walker, Variant::DICTIONARY, cfg);
    TM_BIND_FIELD(Walker, Variant::INT, extra_capacity);
    TM_BIND_FIELD(Walker, Variant::BOOL, seated);
    ClassDB::bind_method(D_METHOD("build", "cfg"), &Walker::build);
    ClassDB::bind_method(D_METHOD("step_path", "dt"), &Walker::step_path);
    ClassDB::bind_method(D_METHOD("rest_tick", "dt"), &Walker::rest_tick);
    ClassDB::bind_method(D_METHOD("set_cover", "on"), &Walker::set_cover);
    ClassDB::bind_method(D_METHOD("is_covering"), &Walker::is_covering);
    ClassDB::bind_method(D_METHOD("make_staff", "spd", "cap"), &Walker::make_staff);
    ClassDB::bind_method(D_METHOD("work_done", "n"), &Walker::work_done);
    ClassDB::bind_method(D_METHOD("_staff_apply", "pop"), &Walker::_staff_apply);
    ClassDB::bind_method(D_METHOD("show_level", "on"), &Walker::show_level);
    ClassDB::bind_method(D_METHOD("animate", "dt"), &Walker::animate);
    ClassDB::bind_method(D_METHOD("can_break"), &Walker::can_break);
    ClassDB::bind_method(D_METHOD("feed_busy"), &Walker::needed);
    ClassDB::bind_method(D_METHOD("drop_claims"), &Walker::before_break);
    ClassDB::bind_method(D_METHOD("quiet"), &Walker::quiet);
    ClassDB::bind_method(D_METHOD("get_base_speed"), &Walker::get_base_speed);
    ClassDB::bind_method(D_METHOD("get_base_capacity"), &Walker::get_base_capacity);
}

} // namespace tilm
