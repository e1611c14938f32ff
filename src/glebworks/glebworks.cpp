#include "glebworks/glebworks.h"

#include <cmath>
#include <limits>

#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/variant/array.hpp>

#include "glebworks/mesh_cluster.h"
#include "glebworks/pose_batch.h"

namespace tilm {

namespace {

constexpr double everywhere = std::numeric_limits<double>::infinity();

// Packed arrays reach a script's call as copies, so the result goes back as [vertices, normals, colours, indices].
Array cluster_copy(PackedVector3Array vertices, PackedVector3Array normals, PackedColorArray colors,
                   PackedInt32Array indices, int grid) {
    cluster_arrays(vertices, normals, colors, indices, grid);
    Array out;
    out.push_back(vertices);
    out.push_back(normals);
    out.push_back(colors);
    out.push_back(indices);
    return out;
}

// Plain data, so they need no release; dead nodes fall out at their next visit.
SlowList &slow_list() {
    static SlowList list;
    return list;
}

SlowList &timed_list() {
    static SlowList list;
    return list;
}

} // namespace

Glebworks::View Glebworks::view = {-everywhere, -everywhere, everywhere, everywhere};

void Glebworks::_bind_methods() {
    ClassDB::bind_static_method("Glebworks", D_METHOD("set_view", "r"), &Glebworks::set_view);
    ClassDB::bind_static_method("Glebworks", D_METHOD("get_view"), &Glebworks::get_view);
    ClassDB::bind_static_method("Glebworks", D_METHOD("in_view", "p", "margin"), &Glebworks::in_view);
    ClassDB::bind_static_method("Glebworks", D_METHOD("slow_add", "n"), &Glebworks::slow_add);
    ClassDB::bind_static_method("Glebworks", D_METHOD("slow_remove", "n"), &Glebworks::slow_remove);
    ClassDB::bind_static_method("Glebworks", D_METHOD("slow_tick", "dt"), &Glebworks::slow_tick);
    ClassDB::bind_static_method("Glebworks", D_METHOD("slow_count"), &Glebworks::slow_count);
    ClassDB::bind_static_method("Glebworks", D_METHOD("timed_add", "n", "every"), &Glebworks::timed_add);
    ClassDB::bind_static_method("Glebworks", D_METHOD("timed_remove", "n"), &Glebworks::timed_remove);
    ClassDB::bind_static_method("Glebworks", D_METHOD("timed_tick", "dt"), &Glebworks::timed_tick);
    ClassDB::bind_static_method("Glebworks", D_METHOD("square_at", "squares", "p"), &Glebworks::square_at);
    ClassDB::bind_static_method("Glebworks", D_METHOD("pose_add", "root", "body", "limbs", "mm"), &PoseBatch::pose_add);
    ClassDB::bind_static_method("Glebworks", D_METHOD("sync_poses"), &PoseBatch::sync_poses);
    ClassDB::bind_static_method("Glebworks", D_METHOD("push_moving", "mm", "owners"), &PoseBatch::push_moving);
    ClassDB::bind_static_method("Glebworks", D_METHOD("cluster", "vertices", "normals", "colors", "indices", "g"),
                                &cluster_copy);
}

void Glebworks::set_view(const Rect2 &r) {
    const Rect2 v = r.abs();
    const Vector2 end = v.position + v.size;
    if (!v.position.is_finite() || !end.is_finite()) {
        ERR_PRINT("Glebworks.set_view: a rectangle of no numbers was ignored.");
        return;
    }
    view = {v.position.x, v.position.y, end.x, end.y};
}

void Glebworks::see_everything() {
    view = {-everywhere, -everywhere, everywhere, everywhere};
}

Rect2 Glebworks::get_view() {
    if (!std::isfinite(view.x0)) {
        return Rect2();
    }
    return Rect2((real_t)view.x0, (real_t)view.z0, (real_t)(view.x1 - view.x0), (real_t)(view.z1 - view.z0));
}

void Glebworks::slow_add(Node *node) {
    slow_list().add(node);
}

void Glebworks::slow_add_step(Node *node, SlowList::Step fn) {
    slow_list().add(node, fn);
}

void Glebworks::slow_remove(Node *node) {
    slow_list().remove(node);
}

void Glebworks::slow_tick(double dt) {
    slow_list().tick(dt);
}

int Glebworks::slow_count() {
    return slow_list().count();
}

void Glebworks::timed_add(Node *node, double every) {
    timed_list().add(node, nullptr, every);
}

void Glebworks::timed_add_step(Node *node, double every, SlowList::Step fn) {
    timed_list().add(node, fn, every);
}

void Glebworks::timed_remove(Node *node) {
    timed_list().remove(node);
}

void Glebworks::timed_tick(double dt) {
    timed_list().tick_timed(dt);
}

int Glebworks::square_at(const PackedVector3Array &squares, const Vector3 &p) {
    const Vector3 *square = squares.ptr();
    const int64_t n = squares.size();
    for (int64_t i = 0; i < n; i++) {
        if (std::fabs(p.x - square[i].x) < square[i].y && std::fabs(p.z - square[i].z) < square[i].y) {
            return (int)i;
        }
    }
    return -1;
}

} // namespace tilm
