#pragma once

#include <godot_cpp/variant/vector3.hpp>

namespace godot {

struct Vector3i {
    enum Axis : int { AXIS_X, AXIS_Y, AXIS_Z };
    static constexpr int AXIS_COUNT = 3;

    union {
        struct {
            int32_t x;
            int32_t y;
            int32_t z;
        };
        int32_t coord[3] = {0};
    };

    constexpr Vector3i() : x(0), y(0), z(0) {}
    constexpr Vector3i(int32_t p_x, int32_t p_y, int32_t p_z) : x(p_x), y(p_y), z(p_z) {}

    const int32_t &operator[](int i) const { return coord[i]; }
    int32_t &operator[](int i) { return coord[i]; }

    Vector3i min(const Vector3i &v) const { return Vector3i(MIN(x, v.x), MIN(y, v.y), MIN(z, v.z)); }
    Vector3i max(const Vector3i &v) const { return Vector3i(MAX(x, v.x), MAX(y, v.y), MAX(z, v.z)); }
    int64_t length_squared() const { return int64_t(x) * x + int64_t(y) * y + int64_t(z) * z; }
    double length() const { return std::sqrt(double(length_squared())); }
    int64_t distance_squared_to(const Vector3i &v) const { return (v - *this).length_squared(); }
    double distance_to(const Vector3i &v) const { return (v - *this).length(); }
    void zero() { x = y = z = 0; }
    Vector3i abs() const { return Vector3i(ABS(x), ABS(y), ABS(z)); }
    Vector3i sign() const { return Vector3i(SIGN(x), SIGN(y), SIGN(z)); }
    Vector3i clamp(const Vector3i &lo, const Vector3i &hi) const {
        return Vector3i(CLAMP(x, lo.x, hi.x), CLAMP(y, lo.y, hi.y), CLAMP(z, lo.z, hi.z));
    }

    constexpr Vector3i operator+(const Vector3i &v) const { return Vector3i(x + v.x, y + v.y, z + v.z); }
    constexpr Vector3i operator-(const Vector3i &v) const { return Vector3i(x - v.x, y - v.y, z - v.z); }
    constexpr Vector3i operator*(const Vector3i &v) const { return Vector3i(x * v.x, y * v.y, z * v.z); }
    constexpr Vector3i operator/(const Vector3i &v) const { return Vector3i(x / v.x, y / v.y, z / v.z); }
    constexpr Vector3i operator*(int32_t s) const { return Vector3i(x * s, y * s, z * s); }
    constexpr Vector3i operator/(int32_t s) const { return Vector3i(x / s, y / s, z / s); }
    constexpr Vector3i operator%(int32_t s) const { return Vector3i(x % s, y % s, z % s); }
    constexpr Vector3i operator-() const { return Vector3i(-x, -y, -z); }
    Vector3i &operator+=(const Vector3i &v) { return *this = *this + v; }
    Vector3i &operator-=(const Vector3i &v) { return *this = *this - v; }
    Vector3i &operator*=(int32_t s) { return *this = *this * s; }
    constexpr bool operator==(const Vector3i &v) const { return x == v.x && y == v.y && z == v.z; }
    constexpr bool operator!=(const Vector3i &v) const { return x != v.x || y != v.y || z != v.z; }
    constexpr bool operator<(const Vector3i &v) const { return x == v.x ? (y == v.y ? z < v.z : y < v.y) : x < v.x; }

    operator String() const;
    constexpr operator Vector3() const { return Vector3(real_t(x), real_t(y), real_t(z)); }
};

constexpr Vector3i operator*(int32_t s, const Vector3i &v) {
    return v * s;
}
inline Vector3::operator Vector3i() const {
    return Vector3i(int32_t(x), int32_t(y), int32_t(z));
}

} // namespace godot
