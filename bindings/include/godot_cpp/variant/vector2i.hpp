#pragma once

#include <godot_cpp/variant/vector2.hpp>

namespace godot {

struct Vector2i {
    enum Axis : int { AXIS_X, AXIS_Y };
    static constexpr int AXIS_COUNT = 2;

    union {
        struct {
            union {
                int32_t x;
                int32_t width;
            };
            union {
                int32_t y;
                int32_t height;
            };
        };
        int32_t coord[2] = {0};
    };

    constexpr Vector2i() : x(0), y(0) {}
    constexpr Vector2i(int32_t p_x, int32_t p_y) : x(p_x), y(p_y) {}

    int32_t &operator[](int i) { return coord[i]; }
    const int32_t &operator[](int i) const { return coord[i]; }

    Axis min_axis_index() const { return x < y ? AXIS_X : AXIS_Y; }
    Axis max_axis_index() const { return x < y ? AXIS_Y : AXIS_X; }
    Vector2i min(const Vector2i &v) const { return Vector2i(MIN(x, v.x), MIN(y, v.y)); }
    Vector2i max(const Vector2i &v) const { return Vector2i(MAX(x, v.x), MAX(y, v.y)); }
    Vector2i mini(int32_t s) const { return Vector2i(MIN(x, s), MIN(y, s)); }
    Vector2i maxi(int32_t s) const { return Vector2i(MAX(x, s), MAX(y, s)); }
    int64_t length_squared() const { return int64_t(x) * x + int64_t(y) * y; }
    double length() const { return std::sqrt(double(length_squared())); }
    int64_t distance_squared_to(const Vector2i &v) const { return (v - *this).length_squared(); }
    double distance_to(const Vector2i &v) const { return (v - *this).length(); }
    Vector2i sign() const { return Vector2i(SIGN(x), SIGN(y)); }
    Vector2i abs() const { return Vector2i(ABS(x), ABS(y)); }
    Vector2i clamp(const Vector2i &lo, const Vector2i &hi) const {
        return Vector2i(CLAMP(x, lo.x, hi.x), CLAMP(y, lo.y, hi.y));
    }
    Vector2i clampi(int32_t lo, int32_t hi) const { return Vector2i(CLAMP(x, lo, hi), CLAMP(y, lo, hi)); }
    Vector2i snapped(const Vector2i &s) const {
        return Vector2i(int32_t(Math::snapped(int64_t(x), int64_t(s.x))),
                        int32_t(Math::snapped(int64_t(y), int64_t(s.y))));
    }
    real_t aspect() const { return width / real_t(height); }

    constexpr Vector2i operator+(const Vector2i &v) const { return Vector2i(x + v.x, y + v.y); }
    constexpr Vector2i operator-(const Vector2i &v) const { return Vector2i(x - v.x, y - v.y); }
    constexpr Vector2i operator*(const Vector2i &v) const { return Vector2i(x * v.x, y * v.y); }
    constexpr Vector2i operator/(const Vector2i &v) const { return Vector2i(x / v.x, y / v.y); }
    constexpr Vector2i operator%(const Vector2i &v) const { return Vector2i(x % v.x, y % v.y); }
    constexpr Vector2i operator*(int32_t s) const { return Vector2i(x * s, y * s); }
    constexpr Vector2i operator/(int32_t s) const { return Vector2i(x / s, y / s); }
    constexpr Vector2i operator%(int32_t s) const { return Vector2i(x % s, y % s); }
    constexpr Vector2i operator-() const { return Vector2i(-x, -y); }
    void operator+=(const Vector2i &v) { *this = *this + v; }
    void operator-=(const Vector2i &v) { *this = *this - v; }
    void operator*=(int32_t s) { *this = *this * s; }
    void operator/=(int32_t s) { *this = *this / s; }
    constexpr bool operator==(const Vector2i &v) const { return x == v.x && y == v.y; }
    constexpr bool operator!=(const Vector2i &v) const { return x != v.x || y != v.y; }
    constexpr bool operator<(const Vector2i &v) const { return x == v.x ? y < v.y : x < v.x; }
    constexpr bool operator>(const Vector2i &v) const { return x == v.x ? y > v.y : x > v.x; }
    constexpr bool operator<=(const Vector2i &v) const { return x == v.x ? y <= v.y : x < v.x; }
    constexpr bool operator>=(const Vector2i &v) const { return x == v.x ? y >= v.y : x > v.x; }

    operator String() const;
    constexpr operator Vector2() const { return Vector2(real_t(x), real_t(y)); }
};

constexpr Vector2i operator*(int32_t s, const Vector2i &v) {
    return v * s;
}
inline Vector2::operator Vector2i() const {
    return Vector2i(int32_t(x), int32_t(y));
}

using Size2i = Vector2i;
using Point2i = Vector2i;

} // namespace godot
