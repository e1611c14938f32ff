#pragma once

#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/core/math.hpp>
#include <godot_cpp/variant/vector2.hpp>

namespace godot {

class String;
struct Basis;
struct Vector3i;

struct Vector3 {
    enum Axis : int { AXIS_X, AXIS_Y, AXIS_Z };
    static constexpr int AXIS_COUNT = 3;

    union {
        struct {
            real_t x;
            real_t y;
            real_t z;
        };
        real_t coord[3] = {0};
    };

    constexpr Vector3() : x(0), y(0), z(0) {}
    constexpr Vector3(real_t p_x, real_t p_y, real_t p_z) : x(p_x), y(p_y), z(p_z) {}

    const real_t &operator[](int i) const { return coord[i]; }
    real_t &operator[](int i) { return coord[i]; }

    Axis min_axis_index() const { return x < y ? (x < z ? AXIS_X : AXIS_Z) : (y < z ? AXIS_Y : AXIS_Z); }
    Axis max_axis_index() const { return x < y ? (y < z ? AXIS_Z : AXIS_Y) : (x < z ? AXIS_Z : AXIS_X); }
    Vector3 min(const Vector3 &v) const { return Vector3(MIN(x, v.x), MIN(y, v.y), MIN(z, v.z)); }
    Vector3 max(const Vector3 &v) const { return Vector3(MAX(x, v.x), MAX(y, v.y), MAX(z, v.z)); }
    Vector3 minf(real_t s) const { return Vector3(MIN(x, s), MIN(y, s), MIN(z, s)); }
    Vector3 maxf(real_t s) const { return Vector3(MAX(x, s), MAX(y, s), MAX(z, s)); }

    real_t length() const { return std::sqrt(length_squared()); }
    real_t length_squared() const { return x * x + y * y + z * z; }
    void normalize() {
        const real_t l2 = length_squared();
        if (l2 == 0) {
            x = y = z = 0;
        } else {
            const real_t l = std::sqrt(l2);
            x /= l;
            y /= l;
            z /= l;
        }
    }
    Vector3 normalized() const {
        Vector3 v = *this;
        v.normalize();
        return v;
    }
    bool is_normalized() const { return Math::is_equal_approx(length_squared(), 1, real_t(UNIT_EPSILON)); }
    Vector3 inverse() const { return Vector3(1 / x, 1 / y, 1 / z); }
    Vector3 limit_length(real_t len = 1.0) const {
        const real_t l = length();
        return l > 0 && len < l ? *this / l * len : *this;
    }
    void zero() { x = y = z = 0; }
    void snap(const Vector3 &s) { *this = snapped(s); }
    Vector3 snapped(const Vector3 &s) const {
        return Vector3(Math::snapped(x, s.x), Math::snapped(y, s.y), Math::snapped(z, s.z));
    }
    Vector3 snappedf(real_t s) const { return snapped(Vector3(s, s, s)); }
    void rotate(const Vector3 &axis, real_t angle);
    Vector3 rotated(const Vector3 &axis, real_t angle) const;

    Vector3 lerp(const Vector3 &to, real_t w) const {
        return Vector3(Math::lerp(x, to.x, w), Math::lerp(y, to.y, w), Math::lerp(z, to.z, w));
    }
    Vector3 slerp(const Vector3 &to, real_t w) const;
    Vector3 cubic_interpolate(const Vector3 &b, const Vector3 &pre, const Vector3 &post, real_t w) const {
        return Vector3(real_t(Math::cubic_interpolate(x, b.x, pre.x, post.x, w)),
                       real_t(Math::cubic_interpolate(y, b.y, pre.y, post.y, w)),
                       real_t(Math::cubic_interpolate(z, b.z, pre.z, post.z, w)));
    }
    Vector3 bezier_interpolate(const Vector3 &c1, const Vector3 &c2, const Vector3 &end, real_t t) const {
        return Vector3(real_t(Math::bezier_interpolate(x, c1.x, c2.x, end.x, t)),
                       real_t(Math::bezier_interpolate(y, c1.y, c2.y, end.y, t)),
                       real_t(Math::bezier_interpolate(z, c1.z, c2.z, end.z, t)));
    }
    Vector3 move_toward(const Vector3 &to, real_t delta) const {
        const Vector3 vd = to - *this;
        const real_t len = vd.length();
        return len <= delta || len < real_t(CMP_EPSILON) ? to : *this + vd / len * delta;
    }

    Vector3 cross(const Vector3 &v) const { return Vector3(y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x); }
    real_t dot(const Vector3 &v) const { return x * v.x + y * v.y + z * v.z; }
    Basis outer(const Vector3 &v) const;
    Vector2 octahedron_encode() const;
    static Vector3 octahedron_decode(const Vector2 &oct);

    Vector3 abs() const { return Vector3(std::fabs(x), std::fabs(y), std::fabs(z)); }
    Vector3 floor() const { return Vector3(std::floor(x), std::floor(y), std::floor(z)); }
    Vector3 sign() const { return Vector3(real_t(SIGN(x)), real_t(SIGN(y)), real_t(SIGN(z))); }
    Vector3 ceil() const { return Vector3(std::ceil(x), std::ceil(y), std::ceil(z)); }
    Vector3 round() const { return Vector3(std::round(x), std::round(y), std::round(z)); }
    Vector3 clamp(const Vector3 &lo, const Vector3 &hi) const {
        return Vector3(CLAMP(x, lo.x, hi.x), CLAMP(y, lo.y, hi.y), CLAMP(z, lo.z, hi.z));
    }
    Vector3 clampf(real_t lo, real_t hi) const { return clamp(Vector3(lo, lo, lo), Vector3(hi, hi, hi)); }
    real_t distance_to(const Vector3 &to) const { return (to - *this).length(); }
    real_t distance_squared_to(const Vector3 &to) const { return (to - *this).length_squared(); }
    Vector3 posmod(real_t m) const { return Vector3(Math::fposmod(x, m), Math::fposmod(y, m), Math::fposmod(z, m)); }
    Vector3 posmodv(const Vector3 &m) const {
        return Vector3(Math::fposmod(x, m.x), Math::fposmod(y, m.y), Math::fposmod(z, m.z));
    }
    Vector3 project(const Vector3 &to) const { return to * (dot(to) / to.length_squared()); }
    real_t angle_to(const Vector3 &to) const { return std::atan2(cross(to).length(), dot(to)); }
    real_t signed_angle_to(const Vector3 &to, const Vector3 &axis) const {
        const Vector3 cross_to = cross(to);
        const real_t unsigned_angle = std::atan2(cross_to.length(), dot(to));
        return cross_to.dot(axis) < 0 ? -unsigned_angle : unsigned_angle;
    }
    Vector3 direction_to(const Vector3 &to) const { return (to - *this).normalized(); }
    Vector3 slide(const Vector3 &n) const { return *this - n * dot(n); }
    Vector3 bounce(const Vector3 &n) const { return -reflect(n); }
    Vector3 reflect(const Vector3 &n) const { return n * (real_t(2) * dot(n)) - *this; }

    bool is_equal_approx(const Vector3 &v) const {
        return Math::is_equal_approx(x, v.x) && Math::is_equal_approx(y, v.y) && Math::is_equal_approx(z, v.z);
    }
    bool is_zero_approx() const {
        return Math::is_zero_approx(x) && Math::is_zero_approx(y) && Math::is_zero_approx(z);
    }
    bool is_finite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }
    bool is_same(const Vector3 &v) const { return *this == v; }

    constexpr Vector3 operator+(const Vector3 &v) const { return Vector3(x + v.x, y + v.y, z + v.z); }
    constexpr Vector3 operator-(const Vector3 &v) const { return Vector3(x - v.x, y - v.y, z - v.z); }
    constexpr Vector3 operator*(const Vector3 &v) const { return Vector3(x * v.x, y * v.y, z * v.z); }
    constexpr Vector3 operator/(const Vector3 &v) const { return Vector3(x / v.x, y / v.y, z / v.z); }
    constexpr Vector3 operator*(real_t s) const { return Vector3(x * s, y * s, z * s); }
    constexpr Vector3 operator/(real_t s) const { return Vector3(x / s, y / s, z / s); }
    constexpr Vector3 operator-() const { return Vector3(-x, -y, -z); }
    Vector3 &operator+=(const Vector3 &v) { return *this = *this + v; }
    Vector3 &operator-=(const Vector3 &v) { return *this = *this - v; }
    Vector3 &operator*=(const Vector3 &v) { return *this = *this * v; }
    Vector3 &operator/=(const Vector3 &v) { return *this = *this / v; }
    Vector3 &operator*=(real_t s) { return *this = *this * s; }
    Vector3 &operator/=(real_t s) { return *this = *this / s; }
    constexpr bool operator==(const Vector3 &v) const { return x == v.x && y == v.y && z == v.z; }
    constexpr bool operator!=(const Vector3 &v) const { return x != v.x || y != v.y || z != v.z; }
    constexpr bool operator<(const Vector3 &v) const { return x == v.x ? (y == v.y ? z < v.z : y < v.y) : x < v.x; }
    constexpr bool operator>(const Vector3 &v) const { return v < *this; }
    constexpr bool operator<=(const Vector3 &v) const { return !(v < *this); }
    constexpr bool operator>=(const Vector3 &v) const { return !(*this < v); }

    operator String() const;
    operator Vector3i() const;
};

constexpr Vector3 operator*(float s, const Vector3 &v) {
    return v * s;
}
constexpr Vector3 operator*(double s, const Vector3 &v) {
    return v * real_t(s);
}
constexpr Vector3 operator*(int32_t s, const Vector3 &v) {
    return v * real_t(s);
}
constexpr Vector3 operator*(int64_t s, const Vector3 &v) {
    return v * real_t(s);
}

inline Vector3 vec3_cross(const Vector3 &a, const Vector3 &b) {
    return a.cross(b);
}

} // namespace godot

#include <godot_cpp/variant/vector3i.hpp>
