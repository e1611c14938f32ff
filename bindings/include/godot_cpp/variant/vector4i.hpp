#pragma once

#include <godot_cpp/variant/vector4.hpp>

namespace godot {

struct Vector4i {
    enum Axis : int { AXIS_X, AXIS_Y, AXIS_Z, AXIS_W };
    static constexpr int AXIS_COUNT = 4;

    union {
        struct {
            int32_t x;
            int32_t y;
            int32_t z;
            int32_t w;
        };
        int32_t coord[4] = {0};
    };

    constexpr Vector4i() : x(0), y(0), z(0), w(0) {}
    constexpr Vector4i(int32_t p_x, int32_t p_y, int32_t p_z, int32_t p_w) : x(p_x), y(p_y), z(p_z), w(p_w) {}

    int32_t &operator[](int i) { return coord[i]; }
    const int32_t &operator[](int i) const { return coord[i]; }

    constexpr Vector4i operator+(const Vector4i &v) const { return Vector4i(x + v.x, y + v.y, z + v.z, w + v.w); }
    constexpr Vector4i operator-(const Vector4i &v) const { return Vector4i(x - v.x, y - v.y, z - v.z, w - v.w); }
    constexpr Vector4i operator*(int32_t s) const { return Vector4i(x * s, y * s, z * s, w * s); }
    constexpr Vector4i operator-() const { return Vector4i(-x, -y, -z, -w); }
    constexpr bool operator==(const Vector4i &v) const { return x == v.x && y == v.y && z == v.z && w == v.w; }
    constexpr bool operator!=(const Vector4i &v) const { return !(*this == v); }

    operator String() const;
    constexpr operator Vector4() const { return Vector4(real_t(x), real_t(y), real_t(z), real_t(w)); }
};

} // namespace godot
