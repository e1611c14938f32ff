#pragma once

#include <godot_cpp/variant/vector3.hpp>

namespace godot {

struct Quaternion {
    union {
        struct {
            real_t x;
            real_t y;
            real_t z;
            real_t w;
        };
        real_t components[4] = {0, 0, 0, 1.0};
    };

    constexpr Quaternion() : x(0), y(0), z(0), w(1) {}
    constexpr Quaternion(real_t p_x, real_t p_y, real_t p_z, real_t p_w) : x(p_x), y(p_y), z(p_z), w(p_w) {}
    Quaternion(const Vector3 &axis, real_t angle);
    Quaternion(const Vector3 &arc_from, const Vector3 &arc_to);
    static Quaternion from_euler(const Vector3 &euler);

    real_t &operator[](int i) { return components[i]; }
    const real_t &operator[](int i) const { return components[i]; }

    real_t length_squared() const { return dot(*this); }
    real_t length() const { return std::sqrt(length_squared()); }
    void normalize() { *this /= length(); }
    Quaternion normalized() const { return *this / length(); }
    bool is_normalized() const { return Math::is_equal_approx(length_squared(), 1, real_t(UNIT_EPSILON)); }
    Quaternion inverse() const { return Quaternion(-x, -y, -z, w); }
    Quaternion log() const;
    Quaternion exp() const;
    real_t dot(const Quaternion &q) const { return x * q.x + y * q.y + z * q.z + w * q.w; }
    real_t angle_to(const Quaternion &to) const {
        const real_t d = dot(to);
        return Math::acos(d * d * 2 - 1);
    }
    Vector3 get_euler(EulerOrder order = EULER_ORDER_YXZ) const;
    Quaternion slerp(const Quaternion &to, real_t weight) const;
    Quaternion slerpni(const Quaternion &to, real_t weight) const;
    Quaternion spherical_cubic_interpolate(const Quaternion &b, const Quaternion &pre_a, const Quaternion &post_b,
                                           real_t weight) const;
    Vector3 get_axis() const;
    real_t get_angle() const { return 2 * Math::acos(w); }
    Vector3 xform(const Vector3 &v) const {
        const Vector3 u(x, y, z);
        const Vector3 uv = u.cross(v);
        return v + ((uv * w) + u.cross(uv)) * real_t(2);
    }
    Vector3 xform_inv(const Vector3 &v) const { return inverse().xform(v); }

    bool is_equal_approx(const Quaternion &q) const {
        return Math::is_equal_approx(x, q.x) && Math::is_equal_approx(y, q.y) && Math::is_equal_approx(z, q.z) &&
               Math::is_equal_approx(w, q.w);
    }
    bool is_finite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z) && std::isfinite(w); }

    constexpr Quaternion operator*(const Quaternion &q) const {
        return Quaternion(w * q.x + x * q.w + y * q.z - z * q.y, w * q.y + y * q.w + z * q.x - x * q.z,
                          w * q.z + z * q.w + x * q.y - y * q.x, w * q.w - x * q.x - y * q.y - z * q.z);
    }
    Vector3 operator*(const Vector3 &v) const { return xform(v); }
    constexpr Quaternion operator+(const Quaternion &q) const { return Quaternion(x + q.x, y + q.y, z + q.z, w + q.w); }
    constexpr Quaternion operator-(const Quaternion &q) const { return Quaternion(x - q.x, y - q.y, z - q.z, w - q.w); }
    constexpr Quaternion operator*(real_t s) const { return Quaternion(x * s, y * s, z * s, w * s); }
    constexpr Quaternion operator/(real_t s) const { return *this * (real_t(1) / s); }
    constexpr Quaternion operator-() const { return Quaternion(-x, -y, -z, -w); }
    void operator*=(const Quaternion &q) { *this = *this * q; }
    void operator*=(real_t s) { *this = *this * s; }
    void operator/=(real_t s) { *this = *this / s; }
    constexpr bool operator==(const Quaternion &q) const { return x == q.x && y == q.y && z == q.z && w == q.w; }
    constexpr bool operator!=(const Quaternion &q) const { return !(*this == q); }

    operator String() const;
};

constexpr Quaternion operator*(real_t s, const Quaternion &q) {
    return q * s;
}

} // namespace godot
