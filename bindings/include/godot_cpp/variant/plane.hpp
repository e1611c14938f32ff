#pragma once

#include <godot_cpp/variant/vector3.hpp>

namespace godot {

class Variant;

struct Plane {
    Vector3 normal;
    real_t d = 0;

    constexpr Plane() = default;
    GDE_FROM_VARIANT(Plane)
    constexpr Plane(real_t a, real_t b, real_t c, real_t p_d) : normal(a, b, c), d(p_d) {}
    constexpr Plane(const Vector3 &n, real_t p_d = 0.0) : normal(n), d(p_d) {}
    Plane(const Vector3 &n, const Vector3 &point) : normal(n), d(n.dot(point)) {}
    Plane(const Vector3 &p1, const Vector3 &p2, const Vector3 &p3, ClockDirection dir = CLOCKWISE) {
        normal = dir == CLOCKWISE ? (p1 - p3).cross(p1 - p2) : (p1 - p2).cross(p1 - p3);
        normal.normalize();
        d = normal.dot(p1);
    }

    void set_normal(const Vector3 &n) { normal = n; }
    Vector3 get_normal() const { return normal; }
    void normalize() {
        const real_t l = normal.length();
        *this = l == 0 ? Plane() : Plane(normal / l, d / l);
    }
    Plane normalized() const {
        Plane p = *this;
        p.normalize();
        return p;
    }
    Vector3 get_center() const { return normal * d; }
    Vector3 project(const Vector3 &p) const { return p - normal * distance_to(p); }
    bool is_point_over(const Vector3 &p) const { return normal.dot(p) > d; }
    real_t distance_to(const Vector3 &p) const { return normal.dot(p) - d; }
    bool has_point(const Vector3 &p, real_t tolerance = CMP_EPSILON) const {
        return std::fabs(normal.dot(p) - d) <= tolerance;
    }
    bool intersect_3(const Plane &p1, const Plane &p2, Vector3 *result = nullptr) const;
    bool intersects_ray(const Vector3 &from, const Vector3 &dir, Vector3 *intersection) const;
    bool intersects_segment(const Vector3 &begin, const Vector3 &end, Vector3 *intersection) const;
    // The same for scripts' sake: null where nothing is met.
    Variant intersect_3_bind(const Plane &p1, const Plane &p2) const;
    Variant intersects_ray_bind(const Vector3 &from, const Vector3 &dir) const;
    Variant intersects_segment_bind(const Vector3 &begin, const Vector3 &end) const;

    constexpr Plane operator-() const { return Plane(-normal, -d); }
    bool is_equal_approx(const Plane &p) const {
        return normal.is_equal_approx(p.normal) && Math::is_equal_approx(d, p.d);
    }
    bool is_finite() const { return normal.is_finite() && std::isfinite(d); }
    constexpr bool operator==(const Plane &p) const { return normal == p.normal && d == p.d; }
    constexpr bool operator!=(const Plane &p) const { return !(*this == p); }

    operator String() const;
};

} // namespace godot
