#pragma once

#include <godot_cpp/variant/quaternion.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace godot {

// A 3x3 matrix kept as rows; columns are the axes.
struct Basis {
    Vector3 rows[3] = {Vector3(1, 0, 0), Vector3(0, 1, 0), Vector3(0, 0, 1)};

    constexpr Basis() = default;
    GDE_FROM_VARIANT(Basis)
    constexpr Basis(real_t xx, real_t xy, real_t xz, real_t yx, real_t yy, real_t yz, real_t zx, real_t zy, real_t zz)
        : rows{Vector3(xx, xy, xz), Vector3(yx, yy, yz), Vector3(zx, zy, zz)} {}
    constexpr Basis(const Vector3 &x_axis, const Vector3 &y_axis, const Vector3 &z_axis)
        : rows{Vector3(x_axis.x, y_axis.x, z_axis.x), Vector3(x_axis.y, y_axis.y, z_axis.y),
               Vector3(x_axis.z, y_axis.z, z_axis.z)} {}
    Basis(const Quaternion &q) { set_quaternion(q); }
    Basis(const Quaternion &q, const Vector3 &scale) {
        set_quaternion(q);
        scale_columns(scale);
    }
    Basis(const Vector3 &axis, real_t angle) { set_axis_angle(axis, angle); }
    Basis(const Vector3 &axis, real_t angle, const Vector3 &scale) {
        set_axis_angle(axis, angle);
        scale_columns(scale);
    }
    static Basis from_euler(const Vector3 &euler, EulerOrder order = EULER_ORDER_YXZ) {
        Basis b;
        b.set_euler(euler, order);
        return b;
    }
    static Basis from_scale(const Vector3 &s) { return Basis(s.x, 0, 0, 0, s.y, 0, 0, 0, s.z); }
    static Basis looking_at(const Vector3 &target, const Vector3 &up = Vector3(0, 1, 0), bool use_model_front = false);

    const Vector3 &operator[](int row) const { return rows[row]; }
    Vector3 &operator[](int row) { return rows[row]; }
    Vector3 get_column(int i) const { return Vector3(rows[0][i], rows[1][i], rows[2][i]); }
    void set_column(int i, const Vector3 &v) {
        rows[0][i] = v.x;
        rows[1][i] = v.y;
        rows[2][i] = v.z;
    }
    void set_columns(const Vector3 &x, const Vector3 &y, const Vector3 &z) { *this = Basis(x, y, z); }
    Vector3 get_main_diagonal() const { return Vector3(rows[0][0], rows[1][1], rows[2][2]); }
    void set(real_t xx, real_t xy, real_t xz, real_t yx, real_t yy, real_t yz, real_t zx, real_t zy, real_t zz) {
        *this = Basis(xx, xy, xz, yx, yy, yz, zx, zy, zz);
    }
    void set_zero() { *this = Basis(0, 0, 0, 0, 0, 0, 0, 0, 0); }

    real_t determinant() const {
        return rows[0][0] * (rows[1][1] * rows[2][2] - rows[2][1] * rows[1][2]) -
               rows[1][0] * (rows[0][1] * rows[2][2] - rows[2][1] * rows[0][2]) +
               rows[2][0] * (rows[0][1] * rows[1][2] - rows[1][1] * rows[0][2]);
    }
    void invert();
    Basis inverse() const {
        Basis b = *this;
        b.invert();
        return b;
    }
    void transpose() { *this = transposed(); }
    Basis transposed() const { return Basis(rows[0], rows[1], rows[2]); }
    void orthonormalize();
    Basis orthonormalized() const {
        Basis b = *this;
        b.orthonormalize();
        return b;
    }
    void orthogonalize();
    Basis orthogonalized() const {
        Basis b = *this;
        b.orthogonalize();
        return b;
    }

    void rotate(const Vector3 &axis, real_t angle) { *this = rotated(axis, angle); }
    Basis rotated(const Vector3 &axis, real_t angle) const { return Basis(axis, angle) * *this; }
    void rotate_local(const Vector3 &axis, real_t angle) { *this = rotated_local(axis, angle); }
    Basis rotated_local(const Vector3 &axis, real_t angle) const { return *this * Basis(axis, angle); }
    void rotate(const Vector3 &euler, EulerOrder order = EULER_ORDER_YXZ) { *this = from_euler(euler, order) * *this; }
    Basis rotated(const Vector3 &euler, EulerOrder order = EULER_ORDER_YXZ) const {
        return from_euler(euler, order) * *this;
    }
    void rotate(const Quaternion &q) { *this = Basis(q) * *this; }
    Basis rotated(const Quaternion &q) const { return Basis(q) * *this; }
    void scale(const Vector3 &s) {
        for (int i = 0; i < 3; ++i) {
            rows[i] *= s[i];
        }
    }
    Basis scaled(const Vector3 &s) const {
        Basis b = *this;
        b.scale(s);
        return b;
    }
    void scale_local(const Vector3 &s) { scale_columns(s); }
    Basis scaled_local(const Vector3 &s) const {
        Basis b = *this;
        b.scale_columns(s);
        return b;
    }

    Vector3 get_euler(EulerOrder order = EULER_ORDER_YXZ) const;
    Vector3 get_euler_normalized(EulerOrder order = EULER_ORDER_YXZ) const {
        Basis b = orthonormalized();
        if (b.determinant() < 0) {
            b.scale(Vector3(-1, -1, -1));
        }
        return b.get_euler(order);
    }
    void set_euler(const Vector3 &euler, EulerOrder order = EULER_ORDER_YXZ);
    Quaternion get_quaternion() const;
    Quaternion get_rotation_quaternion() const;
    void set_quaternion(const Quaternion &q);
    void set_axis_angle(const Vector3 &axis, real_t angle);
    Vector3 get_scale_abs() const {
        return Vector3(get_column(0).length(), get_column(1).length(), get_column(2).length());
    }
    Vector3 get_scale() const { return get_scale_abs() * real_t(SIGN(determinant())); }
    float get_uniform_scale() const {
        return (get_column(0).length() + get_column(1).length() + get_column(2).length()) / 3.0f;
    }

    real_t tdotx(const Vector3 &v) const { return rows[0][0] * v[0] + rows[1][0] * v[1] + rows[2][0] * v[2]; }
    real_t tdoty(const Vector3 &v) const { return rows[0][1] * v[0] + rows[1][1] * v[1] + rows[2][1] * v[2]; }
    real_t tdotz(const Vector3 &v) const { return rows[0][2] * v[0] + rows[1][2] * v[1] + rows[2][2] * v[2]; }
    Vector3 xform(const Vector3 &v) const { return Vector3(rows[0].dot(v), rows[1].dot(v), rows[2].dot(v)); }
    Vector3 xform_inv(const Vector3 &v) const { return Vector3(tdotx(v), tdoty(v), tdotz(v)); }
    Basis lerp(const Basis &to, real_t w) const {
        Basis b;
        for (int i = 0; i < 3; ++i) {
            b.rows[i] = rows[i].lerp(to.rows[i], w);
        }
        return b;
    }
    Basis slerp(const Basis &to, real_t w) const;

    bool is_orthogonal() const {
        const Vector3 x = get_column(0), y = get_column(1), z = get_column(2);
        return Math::is_zero_approx(x.dot(y)) && Math::is_zero_approx(x.dot(z)) && Math::is_zero_approx(y.dot(z));
    }
    bool is_rotation() const {
        return is_orthogonal() && Math::is_equal_approx(determinant(), 1, real_t(UNIT_EPSILON));
    }
    bool is_equal_approx(const Basis &b) const {
        return rows[0].is_equal_approx(b.rows[0]) && rows[1].is_equal_approx(b.rows[1]) &&
               rows[2].is_equal_approx(b.rows[2]);
    }
    bool is_finite() const { return rows[0].is_finite() && rows[1].is_finite() && rows[2].is_finite(); }

    Vector3 operator*(const Vector3 &v) const { return xform(v); }
    Basis operator*(const Basis &m) const {
        return Basis(m.tdotx(rows[0]), m.tdoty(rows[0]), m.tdotz(rows[0]), m.tdotx(rows[1]), m.tdoty(rows[1]),
                     m.tdotz(rows[1]), m.tdotx(rows[2]), m.tdoty(rows[2]), m.tdotz(rows[2]));
    }
    void operator*=(const Basis &m) { *this = *this * m; }
    Basis operator*(real_t s) const {
        Basis b = *this;
        b *= s;
        return b;
    }
    void operator*=(real_t s) {
        for (Vector3 &row : rows) {
            row *= s;
        }
    }
    Basis operator+(const Basis &m) const {
        Basis b = *this;
        for (int i = 0; i < 3; ++i) {
            b.rows[i] += m.rows[i];
        }
        return b;
    }
    bool operator==(const Basis &m) const {
        return rows[0] == m.rows[0] && rows[1] == m.rows[1] && rows[2] == m.rows[2];
    }
    bool operator!=(const Basis &m) const { return !(*this == m); }

    operator String() const;
    operator Quaternion() const { return get_quaternion(); }

private:
    void scale_columns(const Vector3 &s) {
        for (Vector3 &row : rows) {
            row *= s;
        }
    }
};

inline Vector3 Vector3::rotated(const Vector3 &axis, real_t angle) const {
    return Basis(axis, angle).xform(*this);
}
inline void Vector3::rotate(const Vector3 &axis, real_t angle) {
    *this = rotated(axis, angle);
}

} // namespace godot
