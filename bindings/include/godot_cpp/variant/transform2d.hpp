#pragma once

#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/vector2.hpp>

namespace godot {

struct Transform2D {
    // x axis, y axis, origin.
    Vector2 columns[3] = {Vector2(1, 0), Vector2(0, 1), Vector2(0, 0)};

    constexpr Transform2D() = default;
    constexpr Transform2D(real_t xx, real_t xy, real_t yx, real_t yy, real_t ox, real_t oy)
        : columns{Vector2(xx, xy), Vector2(yx, yy), Vector2(ox, oy)} {}
    constexpr Transform2D(const Vector2 &x, const Vector2 &y, const Vector2 &o) : columns{x, y, o} {}
    Transform2D(real_t rot, const Vector2 &pos) {
        set_rotation(rot);
        columns[2] = pos;
    }
    Transform2D(real_t rot, const Size2 &scale, real_t skew, const Vector2 &pos) {
        columns[0] = Vector2(std::cos(rot), std::sin(rot)) * scale.x;
        columns[1] = Vector2(-std::sin(rot + skew), std::cos(rot + skew)) * scale.y;
        columns[2] = pos;
    }

    const Vector2 &operator[](int i) const { return columns[i]; }
    Vector2 &operator[](int i) { return columns[i]; }
    const Vector2 &get_origin() const { return columns[2]; }
    void set_origin(const Vector2 &o) { columns[2] = o; }
    real_t get_rotation() const { return std::atan2(columns[0].y, columns[0].x); }
    void set_rotation(real_t rot) {
        const real_t c = std::cos(rot), s = std::sin(rot);
        columns[0] = Vector2(c, s);
        columns[1] = Vector2(-s, c);
    }
    real_t determinant() const { return columns[0].x * columns[1].y - columns[0].y * columns[1].x; }
    Size2 get_scale() const { return Size2(columns[0].length(), real_t(SIGN(determinant())) * columns[1].length()); }

    real_t tdotx(const Vector2 &v) const { return columns[0][0] * v.x + columns[1][0] * v.y; }
    real_t tdoty(const Vector2 &v) const { return columns[0][1] * v.x + columns[1][1] * v.y; }
    Vector2 basis_xform(const Vector2 &v) const { return Vector2(tdotx(v), tdoty(v)); }
    Vector2 basis_xform_inv(const Vector2 &v) const { return Vector2(columns[0].dot(v), columns[1].dot(v)); }
    Vector2 xform(const Vector2 &v) const { return basis_xform(v) + columns[2]; }
    Vector2 xform_inv(const Vector2 &v) const { return basis_xform_inv(v - columns[2]); }
    Rect2 xform(const Rect2 &r) const {
        const Vector2 x = columns[0] * r.size.x, y = columns[1] * r.size.y, pos = xform(r.position);
        Rect2 out(pos, Size2());
        out.expand_to(pos + x);
        out.expand_to(pos + y);
        out.expand_to(pos + x + y);
        return out;
    }

    Transform2D inverse() const {
        Transform2D t = *this;
        std::swap(t.columns[0].y, t.columns[1].x);
        t.columns[2] = t.basis_xform(-columns[2]);
        return t;
    }
    Transform2D affine_inverse() const {
        const real_t idet = real_t(1) / determinant();
        Transform2D t = *this;
        std::swap(t.columns[0].x, t.columns[1].y);
        t.columns[0] *= Vector2(idet, -idet);
        t.columns[1] *= Vector2(-idet, idet);
        t.columns[2] = t.basis_xform(-columns[2]);
        return t;
    }
    Transform2D rotated(real_t angle) const { return Transform2D(angle, Vector2()) * *this; }
    Transform2D rotated_local(real_t angle) const { return *this * Transform2D(angle, Vector2()); }
    Transform2D scaled(const Size2 &s) const { return Transform2D(columns[0] * s, columns[1] * s, columns[2] * s); }
    Transform2D scaled_local(const Size2 &s) const {
        return Transform2D(columns[0] * s.x, columns[1] * s.y, columns[2]);
    }
    Transform2D translated(const Vector2 &v) const { return Transform2D(columns[0], columns[1], columns[2] + v); }
    Transform2D translated_local(const Vector2 &v) const {
        return Transform2D(columns[0], columns[1], columns[2] + basis_xform(v));
    }
    Transform2D orthonormalized() const {
        Vector2 x = columns[0], y = columns[1];
        x.normalize();
        y = y - x * x.dot(y);
        y.normalize();
        return Transform2D(x, y, columns[2]);
    }
    bool is_equal_approx(const Transform2D &t) const {
        return columns[0].is_equal_approx(t.columns[0]) && columns[1].is_equal_approx(t.columns[1]) &&
               columns[2].is_equal_approx(t.columns[2]);
    }
    bool operator==(const Transform2D &t) const {
        return columns[0] == t.columns[0] && columns[1] == t.columns[1] && columns[2] == t.columns[2];
    }
    bool operator!=(const Transform2D &t) const { return !(*this == t); }
    Transform2D operator*(const Transform2D &t) const {
        return Transform2D(basis_xform(t.columns[0]), basis_xform(t.columns[1]), xform(t.columns[2]));
    }
    void operator*=(const Transform2D &t) { *this = *this * t; }
    Vector2 operator*(const Vector2 &v) const { return xform(v); }
    Rect2 operator*(const Rect2 &r) const { return xform(r); }

    operator String() const;
};

} // namespace godot
