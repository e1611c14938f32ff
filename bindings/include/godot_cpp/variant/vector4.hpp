#pragma once

#include <godot_cpp/core/math.hpp>

namespace godot {

class String;
struct Vector4i;

struct Vector4 {
    enum Axis : int { AXIS_X, AXIS_Y, AXIS_Z, AXIS_W };
    static constexpr int AXIS_COUNT = 4;

    union {
        struct {
            real_t x;
            real_t y;
            real_t z;
            real_t w;
        };
        real_t coord[4] = {0};
        real_t components[4];
    };

    constexpr Vector4() : x(0), y(0), z(0), w(0) {}
    constexpr Vector4(real_t p_x, real_t p_y, real_t p_z, real_t p_w) : x(p_x), y(p_y), z(p_z), w(p_w) {}

    real_t &operator[](int i) { return coord[i]; }
    const real_t &operator[](int i) const { return coord[i]; }

    real_t length_squared() const { return dot(*this); }
    real_t length() const { return std::sqrt(length_squared()); }
    void normalize() {
        const real_t l2 = length_squared();
        *this = l2 == 0 ? Vector4() : *this / std::sqrt(l2);
    }
    Vector4 normalized() const {
        Vector4 v = *this;
        v.normalize();
        return v;
    }
    real_t distance_to(const Vector4 &v) const { return (v - *this).length(); }
    real_t dot(const Vector4 &v) const { return x * v.x + y * v.y + z * v.z + w * v.w; }
    Vector4 lerp(const Vector4 &to, real_t t) const {
        return Vector4(Math::lerp(x, to.x, t), Math::lerp(y, to.y, t), Math::lerp(z, to.z, t), Math::lerp(w, to.w, t));
    }
    Vector4 abs() const { return Vector4(std::fabs(x), std::fabs(y), std::fabs(z), std::fabs(w)); }
    bool is_equal_approx(const Vector4 &v) const {
        return Math::is_equal_approx(x, v.x) && Math::is_equal_approx(y, v.y) && Math::is_equal_approx(z, v.z) &&
               Math::is_equal_approx(w, v.w);
    }
    bool is_finite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z) && std::isfinite(w); }

    constexpr Vector4 operator+(const Vector4 &v) const { return Vector4(x + v.x, y + v.y, z + v.z, w + v.w); }
    constexpr Vector4 operator-(const Vector4 &v) const { return Vector4(x - v.x, y - v.y, z - v.z, w - v.w); }
    constexpr Vector4 operator*(const Vector4 &v) const { return Vector4(x * v.x, y * v.y, z * v.z, w * v.w); }
    constexpr Vector4 operator/(const Vector4 &v) const { return Vector4(x / v.x, y / v.y, z / v.z, w / v.w); }
    constexpr Vector4 operator*(real_t s) const { return Vector4(x * s, y * s, z * s, w * s); }
    constexpr Vector4 operator/(real_t s) const { return Vector4(x / s, y / s, z / s, w / s); }
    constexpr Vector4 operator-() const { return Vector4(-x, -y, -z, -w); }
    Vector4 &operator+=(const Vector4 &v) { return *this = *this + v; }
    Vector4 &operator-=(const Vector4 &v) { return *this = *this - v; }
    Vector4 &operator*=(real_t s) { return *this = *this * s; }
    Vector4 &operator/=(real_t s) { return *this = *this / s; }
    constexpr bool operator==(const Vector4 &v) const { return x == v.x && y == v.y && z == v.z && w == v.w; }
    constexpr bool operator!=(const Vector4 &v) const { return !(*this == v); }

    operator String() const;
};

constexpr Vector4 operator*(real_t s, const Vector4 &v) {
    return v * s;
}

} // namespace godot

#include <godot_cpp/variant/vector4i.hpp>
