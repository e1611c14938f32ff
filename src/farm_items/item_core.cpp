#include "farm_items/item_core.h"

#include <cmath>

#include <godot_cpp/core/error_macros.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_items/item_batch_core.h"
#include "farm_items/item_list.h"
#include "farm_items/world_place.h"
#include "glebworks/glebworks.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double view_margin = 3.0;
constexpr double pi = 3.14159265358979323846;

} // namespace

ItemCore::ItemCore() = default;

ItemCore::~ItemCore() {
    GoodsLedger::died(this);
    // Its children are gone by now: only the books are put right.
    mesh_id = 0;
    leave_rest();
    leave_moving();
    for (ItemList *list : lists) {
        if (list) {
            list->forget(this);
        }
    }
}

void ItemCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("wake"), &ItemCore::wake);
    ClassDB::bind_method(D_METHOD("place", "pos"), &ItemCore::place);
    ClassDB::bind_method(D_METHOD("fly_to", "pos", "dur"), &ItemCore::fly_to);
    ClassDB::bind_method(D_METHOD("is_flying"), &ItemCore::is_flying);
    ClassDB::bind_method(D_METHOD("is_batched"), &ItemCore::is_batched);
    ClassDB::bind_method(D_METHOD("core_gait", "speed", "swing", "rate"), &ItemCore::core_gait);
    ClassDB::bind_method(D_METHOD("core_legs", "legs"), &ItemCore::core_legs);
    ClassDB::bind_method(D_METHOD("rig_shown", "on"), &ItemCore::rig_shown);
    ClassDB::bind_method(D_METHOD("get_rig_shown"), &ItemCore::get_rig_shown);
    ClassDB::bind_method(D_METHOD("get_legs"), &ItemCore::get_legs);

    TM_BIND_FIELD(ItemCore, Variant::STRING, kind);
    TM_BIND_FIELD(ItemCore, Variant::INT, value);
    TM_BIND_FIELD(ItemCore, Variant::FLOAT, height);
    TM_BIND_FIELD(ItemCore, Variant::VECTOR3, target);
    TM_BIND_FIELD(ItemCore, Variant::FLOAT, target_yaw);
    TM_BIND_FIELD(ItemCore, Variant::FLOAT, follow_speed);
    TM_BIND_FIELD(ItemCore, Variant::BOOL, animal);
    TM_BIND_FIELD(ItemCore, Variant::BOOL, hide_on_arrival);
    TM_BIND_FIELD(ItemCore, Variant::FLOAT, gait_speed);
    TM_BIND_FIELD(ItemCore, Variant::FLOAT, gait_swing);
    TM_BIND_FIELD(ItemCore, Variant::FLOAT, gait_rate);
    TM_BIND_FIELD(ItemCore, Variant::FLOAT, gait_phase);
    TM_BIND_FIELD(ItemCore, Variant::OBJECT, mesh_node);
}

void ItemCore::set_kind(const String &k) {
    kind = k;
    kind_id = item_kinds::intern(k);
}

void ItemCore::start() {
    leave_rest();
    set_process(true);
}

void ItemCore::wake() {
    start();
}

void ItemCore::set_target(const Vector3 &v) {
    if (!v.is_finite()) {
        ERR_PRINT("ItemCore: a target that is no number was ignored.");
        return;
    }
    aimed = true;
    if (v == target && !is_processing()) {
        return;
    }
    target = v;
    start();
}

void ItemCore::set_target_yaw(double v) {
    if (!std::isfinite(v)) {
        ERR_PRINT("ItemCore: a turn that is no number was ignored.");
        return;
    }
    if (nearly(v, target_yaw) && !is_processing()) {
        return;
    }
    target_yaw = v;
    start();
}

void ItemCore::place(const Vector3 &pos) {
    if (!pos.is_finite()) {
        ERR_PRINT("ItemCore: a place that is no number was ignored.");
        return;
    }
    start();
    if (is_inside_tree()) {
        set_global_position(pos);
    } else {
        set_position(pos);
    }
    target = pos;
    flight_t = 1.0;
    aimed = true;
}

void ItemCore::fly_to(const Vector3 &pos, double dur) {
    if (!pos.is_finite()) {
        ERR_PRINT("ItemCore: a flight to no number was ignored.");
        return;
    }
    start();
    target = pos;
    aimed = true;
    if (animal) {
        flight_t = 1.0;
        return;
    }
    fly_start = world_position(this);
    flight_time = dur;
    flight_t = 0.0;
}

MeshInstance3D *ItemCore::get_mesh_node() const {
    return mesh_id ? Object::cast_to<MeshInstance3D>(ObjectDB::get_instance(mesh_id)) : nullptr;
}

void ItemCore::set_mesh_node(MeshInstance3D *mesh) {
    leave_rest();
    leave_moving();
    mesh_id = mesh ? mesh->get_instance_id() : 0;
    mesh_on = mesh && mesh->is_visible();
    refresh_mesh();
    if (mesh && is_inside_tree()) {
        set_process(true);
    }
}

void ItemCore::refresh_mesh() {
    const bool on = !rest_chunk && !fly_chunk && !rig_is_shown;
    if (on == mesh_on) {
        return;
    }
    mesh_on = on;
    if (MeshInstance3D *mesh = get_mesh_node()) {
        // Unseen it need not hear of every movement; seen again it catches up.
        mesh->set_notify_transform(on);
        if (on) {
            mesh->set_transform(mesh->get_transform());
        }
        mesh->set_visible(on);
    }
}

void ItemCore::core_gait(double speed, double swing, double rate) {
    gait_speed = speed;
    gait_swing = swing;
    gait_rate = rate;
}

void ItemCore::core_legs(const Array &rig_legs) {
    legs = rig_legs;
    leg_ids.clear();
    for (int64_t i = 0; i < legs.size(); i++) {
        if (Node3D *leg = Object::cast_to<Node3D>(legs[i].get_validated_object())) {
            leg_ids.push_back(leg->get_instance_id());
        }
    }
    leg_angles.assign(leg_ids.size(), 0.0);
}

void ItemCore::rig_shown(bool on) {
    rig_is_shown = on;
    if (on) {
        leave_rest();
        leave_moving();
    }
    refresh_mesh();
}

void ItemCore::leave_rest() {
    if (rest_chunk) {
        ItemBatchCore::remove_rest(this);
        refresh_mesh();
    }
}

void ItemCore::leave_moving() {
    if (fly_chunk) {
        ItemBatchCore::remove_moving(this);
        refresh_mesh();
    }
}

void ItemCore::_ready() {
    // An item that nobody has sent anywhere stays where it was put.
    if (!aimed) {
        target = get_global_position();
        aimed = true;
    }
}

void ItemCore::_notification(int what) {
    switch (what) {
    case NOTIFICATION_VISIBILITY_CHANGED:
        if (!is_inside_tree()) {
            break;
        }
        shown = is_visible_in_tree();
        if (!shown) {
            leave_rest();
            leave_moving();
        } else if (is_node_ready() && !is_processing()) {
            ItemBatchCore::add_self(this);
        }
        break;
    case NOTIFICATION_ENTER_TREE:
        shown = is_visible_in_tree();
        in_world_space = is_set_as_top_level();
        if (is_node_ready()) {
            set_process(true);
        }
        break;
    case NOTIFICATION_EXIT_TREE:
        leave_rest();
        leave_moving();
        break;
    default:
        break;
    }
}

void ItemCore::settle() {
    if (is_inside_tree()) {
        arrive(shown);
    } else {
        set_position(target);
        flight_t = 1.0;
    }
}

// A top-level item's own position is its world position, and writing it leaves the engine's cached angles alone.
Vector3 ItemCore::standing() const {
    return in_world_space ? get_position() : get_global_position();
}

void ItemCore::move_to(const Vector3 &pos) {
    if (in_world_space) {
        set_position(pos);
    } else {
        set_global_position(pos);
    }
}

void ItemCore::arrive(bool visible) {
    if (standing() != target) {
        move_to(target);
    }
    const Vector3 turn = get_rotation();
    if (turn.y != (real_t)target_yaw) {
        set_rotation(Vector3(turn.x, (real_t)target_yaw, turn.z));
    }
    flight_t = 1.0;
    set_process(false);
    leave_moving();
    if (hide_on_arrival) {
        hide_on_arrival = false;
        set_visible(false);
    } else if (visible) {
        ItemBatchCore::add_self(this);
    }
}

void ItemCore::_process(double dt) {
    if (animal) {
        step_animal(dt);
    } else {
        step_good(dt);
    }
}

void ItemCore::step_good(double dt) {
    const bool visible = shown;
    const Vector3 pos = standing();
    if (!Glebworks::in_view(target, view_margin) && !Glebworks::in_view(pos, view_margin)) {
        arrive(visible);
        return;
    }
    if (visible && !fly_chunk) {
        ItemBatchCore::add_moving(this);
    }
    Vector3 next;
    if (flight_t < 1.0) {
        flight_t = flight_time > 0.0 ? std::fmin(1.0, flight_t + dt / flight_time) : 1.0;
        next = fly_start.lerp(target, (real_t)flight_t);
        const double arc = 1.0 + 0.12 * fly_start.distance_to(target);
        next.y += (real_t)(arc * std::sin(pi * flight_t));
    } else {
        next = pos + (target - pos) * (real_t)eased(follow_speed, dt);
    }
    const Vector3 turn = get_rotation();
    const double off = angle_between(turn.y, target_yaw);
    const double yaw = turn.y + off * eased(12.0, dt);
    if (flight_t >= 1.0 && next.distance_squared_to(target) < 2.5e-5 &&
        std::fabs(angle_between(yaw, target_yaw)) < 0.01) {
        arrive(visible);
        return;
    }
    if (next != pos) {
        move_to(next);
    }
    if ((real_t)yaw != turn.y) {
        set_rotation(Vector3(turn.x, (real_t)yaw, turn.z));
    }
}

void ItemCore::step_animal(double dt) {
    const Vector3 pos = standing();
    const double dx = target.x - pos.x;
    const double dz = target.z - pos.z;
    const double d = std::sqrt(dx * dx + dz * dz);
    Vector3 next = pos;
    if (d > 0.002) {
        const double part = std::fmin(d, std::fmax(gait_speed, 3.0 * d) * dt) / d;
        next.x += (real_t)(dx * part);
        next.z += (real_t)(dz * part);
    }
    next.y += (real_t)((target.y - pos.y) * eased(10.0, dt));
    if (std::fabs(target.y - next.y) <= 0.003) {
        next.y = target.y;
    }
    const bool travels = d > 0.08;
    const double wanted = travels ? std::atan2(-dx, -dz) : target_yaw;
    const Vector3 turn = get_rotation();
    const double yaw = turn.y + angle_between(turn.y, wanted) * eased(travels ? 8.0 : 5.0, dt);
    const bool walking = d > 0.03;
    if (walking && !rig_is_shown && has_method(TM_NAME("_show_rig"))) {
        call(TM_NAME("_show_rig"), true);
    }
    if (rig_is_shown) {
        swing_legs(dt, walking);
    }
    if (d < 0.002 && next.y == target.y && std::fabs(angle_between(yaw, target_yaw)) < 0.02) {
        if (rig_is_shown) {
            call(TM_NAME("_show_rig"), false);
        }
        arrive(shown);
        return;
    }
    if (next != pos) {
        move_to(next);
    }
    if ((real_t)yaw != turn.y) {
        set_rotation(Vector3(turn.x, (real_t)yaw, turn.z));
    }
}

void ItemCore::swing_legs(double dt, bool walking) {
    if (walking) {
        gait_phase = std::fmod(gait_phase + gait_swing * dt, 2.0 * pi);
    }
    const double wide = walking ? gait_rate * std::sin(gait_phase) : 0.0;
    const double share = eased(14.0, dt);
    for (size_t i = 0; i < leg_ids.size(); i++) {
        const double wanted = i == 0 || i == 3 ? wide : -wide;
        if (wanted == leg_angles[i]) {
            continue;
        }
        leg_angles[i] += (wanted - leg_angles[i]) * share;
        if (Node3D *leg = Object::cast_to<Node3D>(ObjectDB::get_instance(leg_ids[i]))) {
            const Vector3 turn = leg->get_rotation();
            leg->set_rotation(Vector3((real_t)leg_angles[i], turn.y, turn.z));
        }
    }
}

} // namespace tilm
