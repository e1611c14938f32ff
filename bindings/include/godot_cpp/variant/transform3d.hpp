#pragma once

#include <godot_cpp/variant/aabb.hpp>
#include <godot_cpp/variant/basis.hpp>
#include <godot_cpp/variant/plane.hpp>

namespace godot {

class PackedVector3Array;
struct Projection;

struct Transform3D {
    Basis basis;
    Vector3 origin;

    constexpr Transform3D() = default;
    GDE_FROM_VARIANT(Transform3D)
    constexpr Transform3D(const Basis &b, const Vector3 &o = Vector3()) : basis(b), origin(o) {}
    constexpr Transform3D(const Vector3 &x, const Vector3 &y, const Vector3 &z, const Vector3 &o)
        : basis(x, y, z), origin(o) {}
    constexpr Transform3D(real_t xx, real_t xy, real_t xz, real_t yx, real_t yy, real_t yz, real_t zx, real_t zy,
                          real_t zz, real_t ox, real_t oy, real_t oz)
        : basis(xx, xy, xz, yx, yy, yz, zx, zy, zz), origin(ox, oy, oz) {}

    // Swift inverse for pure rotation and translation.
    void invert() { *this = inverse(); }
    Transform3D inverse() const {
        const Basis b = basis.transposed();
        return Transform3D(b, b.xform(-origin));
    }
    void affine_invert() { *this = affine_inverse(); }
    Transform3D affine_inverse() const {
        const Basis b = basis.inverse();
        return Transform3D(b, b.xform(-origin));
    }

    Transform3D rotated(const Vector3 &axis, real_t angle) const {
        const Basis b(axis, angle);
        return Transform3D(b * basis, b.xform(origin));
    }
    Transform3D rotated_local(const Vector3 &axis, real_t angle) const {
        return Transform3D(basis * Basis(axis, angle), origin);
    }
    void rotate(const Vector3 &axis, real_t angle) { *this = rotated(axis, angle); }
    void rotate_basis(const Vector3 &axis, real_t angle) { basis.rotate(axis, angle); }
    void set_look_at(const Vector3 &eye, const Vector3 &target, const Vector3 &up = Vector3(0, 1, 0),
                     bool use_model_front = false) {
        basis = Basis::looking_at(target - eye, up, use_model_front);
        origin = eye;
    }
    Transform3D looking_at(const Vector3 &target, const Vector3 &up = Vector3(0, 1, 0),
                           bool use_model_front = false) const {
        Transform3D t = *this;
        t.set_look_at(origin, target, up, use_model_front);
        return t;
    }
    void scale(const Vector3 &s) {
        basis.scale(s);
        origin *= s;
    }
    Transform3D scaled(const Vector3 &s) const { return Transform3D(basis.scaled(s), origin * s); }
    Transform3D scaled_local(const Vector3 &s) const { return Transform3D(basis.scaled_local(s), origin); }
    void scale_basis(const Vector3 &s) { basis.scale(s); }
    void translate_local(const Vector3 &v) { origin += basis.xform(v); }
    void translate_local(real_t x, real_t y, real_t z) { translate_local(Vector3(x, y, z)); }
    Transform3D translated(const Vector3 &v) const { return Transform3D(basis, origin + v); }
    Transform3D translated_local(const Vector3 &v) const { return Transform3D(basis, origin + basis.xform(v)); }

    const Basis &get_basis() const { return basis; }
    void set_basis(const Basis &b) { basis = b; }
    const Vector3 &get_origin() const { return origin; }
    void set_origin(const Vector3 &o) { origin = o; }
    void orthonormalize() { basis.orthonormalize(); }
    Transform3D orthonormalized() const { return Transform3D(basis.orthonormalized(), origin); }
    Transform3D interpolate_with(const Transform3D &to, real_t w) const;

    Vector3 xform(const Vector3 &v) const { return basis.xform(v) + origin; }
    Vector3 xform_inv(const Vector3 &v) const { return basis.xform_inv(v - origin); }
    AABB xform(const AABB &box) const;
    Plane xform(const Plane &plane) const;

    bool is_equal_approx(const Transform3D &t) const {
        return basis.is_equal_approx(t.basis) && origin.is_equal_approx(t.origin);
    }
    bool is_finite() const { return basis.is_finite() && origin.is_finite(); }
    bool operator==(const Transform3D &t) const { return basis == t.basis && origin == t.origin; }
    bool operator!=(const Transform3D &t) const { return !(*this == t); }

    Transform3D operator*(const Transform3D &t) const { return Transform3D(basis * t.basis, xform(t.origin)); }
    void operator*=(const Transform3D &t) { *this = *this * t; }
    Vector3 operator*(const Vector3 &v) const { return xform(v); }
    AABB operator*(const AABB &box) const { return xform(box); }
    Plane operator*(const Plane &plane) const { return xform(plane); }
    Transform3D operator*(real_t s) const { return Transform3D(basis * s, origin * s); }

    operator String() const;
};

} // namespace godot
