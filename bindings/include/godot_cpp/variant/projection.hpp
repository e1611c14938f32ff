#pragma once

#include <godot_cpp/variant/transform3d.hpp>
#include <godot_cpp/variant/vector4.hpp>

namespace godot {

struct Projection {
    Vector4 columns[4] = {Vector4(1, 0, 0, 0), Vector4(0, 1, 0, 0), Vector4(0, 0, 1, 0), Vector4(0, 0, 0, 1)};

    constexpr Projection() = default;
    GDE_FROM_VARIANT(Projection)
    constexpr Projection(const Vector4 &x, const Vector4 &y, const Vector4 &z, const Vector4 &w)
        : columns{x, y, z, w} {}
    Projection(const Transform3D &t);

    const Vector4 &operator[](int i) const { return columns[i]; }
    Vector4 &operator[](int i) { return columns[i]; }

    static Projection create_perspective(real_t fovy_degrees, real_t aspect, real_t z_near, real_t z_far,
                                         bool flip_fov = false);
    static Projection create_orthogonal(real_t left, real_t right, real_t bottom, real_t top, real_t z_near,
                                        real_t z_far);
    real_t determinant() const;
    Projection inverse() const;
    Vector4 xform(const Vector4 &v) const {
        return columns[0] * v.x + columns[1] * v.y + columns[2] * v.z + columns[3] * v.w;
    }
    // With the division by w.
    Vector3 xform(const Vector3 &v) const {
        const Vector4 r = xform(Vector4(v.x, v.y, v.z, 1));
        return Vector3(r.x, r.y, r.z) / r.w;
    }
    Projection operator*(const Projection &p) const {
        return Projection(xform(p.columns[0]), xform(p.columns[1]), xform(p.columns[2]), xform(p.columns[3]));
    }
    Vector4 operator*(const Vector4 &v) const { return xform(v); }
    bool operator==(const Projection &p) const {
        return columns[0] == p.columns[0] && columns[1] == p.columns[1] && columns[2] == p.columns[2] &&
               columns[3] == p.columns[3];
    }
    bool operator!=(const Projection &p) const { return !(*this == p); }

    operator String() const;
    operator Transform3D() const;
};

} // namespace godot
