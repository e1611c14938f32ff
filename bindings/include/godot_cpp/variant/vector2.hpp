#pragma once

#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/core/math.hpp>

namespace godot {

class String;
struct Vector2i;

struct Vector2 {
    enum Axis : int { AXIS_X, AXIS_Y };
    static constexpr int AXIS_COUNT = 2;

    union {
        struct {
            union {
                real_t x;
                real_t width;
            };
            union {
                real_t y;
                real_t height;
            };
        };
        real_t coord[2] = {0};
    };

    constexpr Vector2() : x(0), y(0) {}
    constexpr Vector2(real_t p_x, real_t p_y) : x(p_x), y(p_y) {}

    real_t &operator[](int i) { return coord[i]; }
    const real_t &operator[](int i) const { return coord[i]; }

    static Vector2 from_angle(real_t angle) { return Vector2(std::cos(angle), std::sin(angle)); }

    Axis min_axis_index() const { return x < y ? AXIS_X : AXIS_Y; }
    Axis max_axis_index() const { return x < y ? AXIS_Y : AXIS_X; }
    Vector2 min(const Vector2 &v) const { return Vector2(MIN(x, v.x), MIN(y, v.y)); }
    Vector2 max(const Vector2 &v) const { return Vector2(MAX(x, v.x), MAX(y, v.y)); }
    Vector2 minf(real_t s) const { return Vector2(MIN(x, s), MIN(y, s)); }
    Vector2 maxf(real_t s) const { return Vector2(MAX(x, s), MAX(y, s)); }

    real_t length() const { return std::sqrt(x * x + y * y); }
    real_t length_squared() const { return x * x + y * y; }
    void normalize() {
        real_t l = x * x + y * y;
        if (l != 0) {
            l = std::sqrt(l);
            x /= l;
            y /= l;
        }
    }
    Vector2 normalized() const {
        Vector2 v = *this;
        v.normalize();
        return v;
    }
    bool is_normalized() const { return Math::is_equal_approx(length_squared(), 1, real_t(UNIT_EPSILON)); }
    Vector2 limit_length(real_t len = 1.0) const {
        const real_t l = length();
        return l > 0 && len < l ? *this / l * len : *this;
    }
    real_t distance_to(const Vector2 &v) const { return (*this - v).length(); }
    real_t distance_squared_to(const Vector2 &v) const { return (*this - v).length_squared(); }
    real_t angle() const { return std::atan2(y, x); }
    real_t angle_to(const Vector2 &v) const { return std::atan2(cross(v), dot(v)); }
    real_t angle_to_point(const Vector2 &v) const { return (v - *this).angle(); }
    Vector2 direction_to(const Vector2 &v) const { return (v - *this).normalized(); }
    real_t dot(const Vector2 &v) const { return x * v.x + y * v.y; }
    real_t cross(const Vector2 &v) const { return x * v.y - y * v.x; }
    Vector2 posmod(real_t m) const { return Vector2(Math::fposmod(x, m), Math::fposmod(y, m)); }
    Vector2 posmodv(const Vector2 &m) const { return Vector2(Math::fposmod(x, m.x), Math::fposmod(y, m.y)); }
    Vector2 project(const Vector2 &to) const { return to * (dot(to) / to.length_squared()); }
    Vector2 plane_project(real_t d, const Vector2 &v) const { return v - *this * (dot(v) - d); }
    Vector2 lerp(const Vector2 &to, real_t w) const { return Vector2(Math::lerp(x, to.x, w), Math::lerp(y, to.y, w)); }
    Vector2 slerp(const Vector2 &to, real_t w) const {
        const real_t from_sq = length_squared();
        const real_t to_sq = to.length_squared();
        if (from_sq == 0 || to_sq == 0) {
            return lerp(to, w);
        }
        const real_t from_len = std::sqrt(from_sq);
        const real_t len = Math::lerp(from_len, std::sqrt(to_sq), w);
        return rotated(angle_to(to) * w) * (len / from_len);
    }
    Vector2 cubic_interpolate(const Vector2 &b, const Vector2 &pre, const Vector2 &post, real_t w) const {
        return Vector2(real_t(Math::cubic_interpolate(x, b.x, pre.x, post.x, w)),
                       real_t(Math::cubic_interpolate(y, b.y, pre.y, post.y, w)));
    }
    Vector2 bezier_interpolate(const Vector2 &c1, const Vector2 &c2, const Vector2 &end, real_t t) const {
        return Vector2(real_t(Math::bezier_interpolate(x, c1.x, c2.x, end.x, t)),
                       real_t(Math::bezier_interpolate(y, c1.y, c2.y, end.y, t)));
    }
    Vector2 move_toward(const Vector2 &to, real_t delta) const {
        const Vector2 vd = to - *this;
        const real_t len = vd.length();
        return len <= delta || len < real_t(CMP_EPSILON) ? to : *this + vd / len * delta;
    }
    Vector2 slide(const Vector2 &n) const { return *this - n * dot(n); }
    Vector2 bounce(const Vector2 &n) const { return -reflect(n); }
    Vector2 reflect(const Vector2 &n) const { return n * (real_t(2) * dot(n)) - *this; }
    Vector2 orthogonal() const { return Vector2(y, -x); }
    Vector2 rotated(real_t by) const {
        const real_t s = std::sin(by);
        const real_t c = std::cos(by);
        return Vector2(x * c - y * s, x * s + y * c);
    }
    Vector2 sign() const { return Vector2(real_t(SIGN(x)), real_t(SIGN(y))); }
    Vector2 abs() const { return Vector2(std::fabs(x), std::fabs(y)); }
    Vector2 floor() const { return Vector2(std::floor(x), std::floor(y)); }
    Vector2 ceil() const { return Vector2(std::ceil(x), std::ceil(y)); }
    Vector2 round() const { return Vector2(std::round(x), std::round(y)); }
    Vector2 snapped(const Vector2 &s) const { return Vector2(Math::snapped(x, s.x), Math::snapped(y, s.y)); }
    Vector2 snappedf(real_t s) const { return Vector2(Math::snapped(x, s), Math::snapped(y, s)); }
    Vector2 clamp(const Vector2 &lo, const Vector2 &hi) const {
        return Vector2(CLAMP(x, lo.x, hi.x), CLAMP(y, lo.y, hi.y));
    }
    Vector2 clampf(real_t lo, real_t hi) const { return Vector2(CLAMP(x, lo, hi), CLAMP(y, lo, hi)); }
    real_t aspect() const { return width / height; }

    bool is_equal_approx(const Vector2 &v) const {
        return Math::is_equal_approx(x, v.x) && Math::is_equal_approx(y, v.y);
    }
    bool is_zero_approx() const { return Math::is_zero_approx(x) && Math::is_zero_approx(y); }
    bool is_finite() const { return std::isfinite(x) && std::isfinite(y); }
    bool is_same(const Vector2 &v) const { return x == v.x && y == v.y; }

    constexpr Vector2 operator+(const Vector2 &v) const { return Vector2(x + v.x, y + v.y); }
    constexpr Vector2 operator-(const Vector2 &v) const { return Vector2(x - v.x, y - v.y); }
    constexpr Vector2 operator*(const Vector2 &v) const { return Vector2(x * v.x, y * v.y); }
    constexpr Vector2 operator/(const Vector2 &v) const { return Vector2(x / v.x, y / v.y); }
    constexpr Vector2 operator*(real_t s) const { return Vector2(x * s, y * s); }
    constexpr Vector2 operator/(real_t s) const { return Vector2(x / s, y / s); }
    constexpr Vector2 operator-() const { return Vector2(-x, -y); }
    void operator+=(const Vector2 &v) { *this = *this + v; }
    void operator-=(const Vector2 &v) { *this = *this - v; }
    void operator*=(const Vector2 &v) { *this = *this * v; }
    void operator/=(const Vector2 &v) { *this = *this / v; }
    void operator*=(real_t s) { *this = *this * s; }
    void operator/=(real_t s) { *this = *this / s; }
    constexpr bool operator==(const Vector2 &v) const { return x == v.x && y == v.y; }
    constexpr bool operator!=(const Vector2 &v) const { return x != v.x || y != v.y; }
    constexpr bool operator<(const Vector2 &v) const { return x == v.x ? y < v.y : x < v.x; }
    constexpr bool operator>(const Vector2 &v) const { return x == v.x ? y > v.y : x > v.x; }
    constexpr bool operator<=(const Vector2 &v) const { return x == v.x ? y <= v.y : x < v.x; }
    constexpr bool operator>=(const Vector2 &v) const { return x == v.x ? y >= v.y : x > v.x; }

    operator String() const;
    operator Vector2i() const;
};

constexpr Vector2 operator*(float s, const Vector2 &v) {
    return v * s;
}
constexpr Vector2 operator*(double s, const Vector2 &v) {
    return v * real_t(s);
}
constexpr Vector2 operator*(int32_t s, const Vector2 &v) {
    return v * real_t(s);
}
constexpr Vector2 operator*(int64_t s, const Vector2 &v) {
    return v * real_t(s);
}

using Size2 = Vector2;
using Point2 = Vector2;

} // namespace godot

#include <godot_cpp/variant/vector2i.hpp>
