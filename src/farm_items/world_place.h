#pragma once
// World positions of nodes that may not be in the tree yet, and the small maths of turning.

#include <cmath>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/transform3d.hpp>

namespace tilm {
using namespace godot;

inline Transform3D world_transform(const Node3D *n) {
    return n->is_inside_tree() ? n->get_global_transform() : n->get_transform();
}

inline Vector3 world_position(const Node3D *n) {
    return n->is_inside_tree() ? n->get_global_position() : n->get_position();
}

// Turn about the vertical of an upright transform, radians.
inline double yaw_of(const Transform3D &xf) {
    return std::atan2((double)xf.basis.rows[0].z, (double)xf.basis.rows[2].z);
}

// The shorter way from one angle to another, -pi to pi.
inline double angle_between(double from, double to) {
    return std::remainder(to - from, 2.0 * 3.14159265358979323846);
}

// Share of the way that an exponential chase of `rate` a second covers in dt seconds.
inline double eased(double rate, double dt) {
    return 1.0 - std::exp(-rate * dt);
}

// Whether two values are equal within a hundred thousandth.
inline bool nearly(double a, double b) {
    return std::fabs(a - b) <= std::fmax(1e-5, std::fabs(a) * 1e-5);
}

} // namespace tilm
