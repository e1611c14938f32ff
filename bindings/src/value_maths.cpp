// Maths of the value types beyond their headers. What runs rarely asks the engine, so that both agree.

#include <cmath>

#include <godot_cpp/core/generated_support.hpp>
#include <godot_cpp/gen/value_hashes.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

using internal::BuiltinRef;
using internal::gde;

#define GDE_TO_STRING(m_class)                                                                                         \
    m_class::operator String() const {                                                                                 \
        return Variant(*this).stringify();                                                                             \
    }
GDE_TO_STRING(Vector2)
GDE_TO_STRING(Vector2i)
GDE_TO_STRING(Vector3)
GDE_TO_STRING(Vector3i)
GDE_TO_STRING(Vector4)
GDE_TO_STRING(Vector4i)
GDE_TO_STRING(Rect2)
GDE_TO_STRING(Rect2i)
GDE_TO_STRING(Color)
GDE_TO_STRING(Plane)
GDE_TO_STRING(Quaternion)
GDE_TO_STRING(Basis)
GDE_TO_STRING(AABB)
GDE_TO_STRING(Transform2D)
GDE_TO_STRING(Transform3D)
GDE_TO_STRING(Projection)
#undef GDE_TO_STRING

// One line for each method of a value type that the engine computes.
#define GDE_ASK(m_ret, m_type, m_name, m_hash, m_count, ...)                                                           \
    static constinit BuiltinRef m{GDEXTENSION_VARIANT_TYPE_##m_type, m_name, m_hash};                                  \
    const void *args[] = {__VA_ARGS__};                                                                                \
    m_ret ret;                                                                                                         \
    m.call(this, args, &ret, m_count);                                                                                 \
    return ret

// --- Vector3

Vector3 Vector3::slerp(const Vector3 &to, real_t w) const {
    const real_t from_sq = length_squared();
    const real_t to_sq = to.length_squared();
    if (from_sq == 0 || to_sq == 0) {
        return lerp(to, w);
    }
    Vector3 axis = cross(to);
    const real_t axis_sq = axis.length_squared();
    if (axis_sq == 0) {
        return lerp(to, w);
    }
    axis /= std::sqrt(axis_sq);
    const real_t from_len = std::sqrt(from_sq);
    const real_t len = Math::lerp(from_len, std::sqrt(to_sq), w);
    return rotated(axis, angle_to(to) * w) * (len / from_len);
}

Basis Vector3::outer(const Vector3 &v) const {
    return Basis(x * v.x, x * v.y, x * v.z, y * v.x, y * v.y, y * v.z, z * v.x, z * v.y, z * v.z);
}

Vector2 Vector3::octahedron_encode() const {
    Vector3 n = *this / (std::fabs(x) + std::fabs(y) + std::fabs(z));
    Vector2 o(n.x, n.y);
    if (n.z < 0) {
        o = Vector2((1 - std::fabs(n.y)) * (n.x >= 0 ? 1 : -1), (1 - std::fabs(n.x)) * (n.y >= 0 ? 1 : -1));
    }
    return o * 0.5f + Vector2(0.5f, 0.5f);
}

Vector3 Vector3::octahedron_decode(const Vector2 &oct) {
    const Vector2 f(oct.x * 2 - 1, oct.y * 2 - 1);
    Vector3 n(f.x, f.y, 1 - std::fabs(f.x) - std::fabs(f.y));
    const real_t t = CLAMP(-n.z, 0.0f, 1.0f);
    n.x += n.x >= 0 ? -t : t;
    n.y += n.y >= 0 ? -t : t;
    return n.normalized();
}

// --- Transform3D, AABB, Plane

Transform3D Transform3D::interpolate_with(const Transform3D &to, real_t w) const {
    const Basis b(basis.get_rotation_quaternion().slerp(to.basis.get_rotation_quaternion(), w).normalized(),
                  basis.get_scale().lerp(to.basis.get_scale(), w));
    return Transform3D(b, origin.lerp(to.origin, w));
}

AABB Transform3D::xform(const AABB &box) const {
    const Vector3 lo = box.position, hi = box.get_end();
    Vector3 tmin = origin, tmax = origin;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            const real_t e = basis[i][j] * lo[j], f = basis[i][j] * hi[j];
            tmin[i] += MIN(e, f);
            tmax[i] += MAX(e, f);
        }
    }
    return AABB(tmin, tmax - tmin);
}

Plane Transform3D::xform(const Plane &plane) const {
    const Basis b = basis.inverse().transposed();
    const Vector3 normal = b.xform(plane.normal).normalized();
    return Plane(normal, normal.dot(xform(plane.normal * plane.d)));
}

bool AABB::intersects_plane(const Plane &plane) const {
    bool over = false, under = false;
    for (int i = 0; i < 8; ++i) {
        (plane.distance_to(get_endpoint(i)) > 0 ? over : under) = true;
    }
    return under && over;
}

Variant AABB::intersects_ray_bind(const Vector3 &from, const Vector3 &dir) const {
    GDE_ASK(Variant, AABB, "intersects_ray", GDE_HASH_AABB_INTERSECTS_RAY, 2, &from, &dir);
}

Variant AABB::intersects_segment_bind(const Vector3 &from, const Vector3 &to) const {
    GDE_ASK(Variant, AABB, "intersects_segment", GDE_HASH_AABB_INTERSECTS_SEGMENT, 2, &from, &to);
}

bool Plane::intersect_3(const Plane &p1, const Plane &p2, Vector3 *result) const {
    const real_t denom = normal.cross(p1.normal).dot(p2.normal);
    if (Math::is_zero_approx(denom)) {
        return false;
    }
    if (result) {
        *result =
            (p1.normal.cross(p2.normal) * d + p2.normal.cross(normal) * p1.d + normal.cross(p1.normal) * p2.d) / denom;
    }
    return true;
}

bool Plane::intersects_ray(const Vector3 &from, const Vector3 &dir, Vector3 *intersection) const {
    const real_t den = normal.dot(dir);
    if (Math::is_zero_approx(den)) {
        return false;
    }
    const real_t dist = (normal.dot(from) - d) / den;
    if (dist > real_t(CMP_EPSILON)) { // the plane lies behind
        return false;
    }
    if (intersection) {
        *intersection = from - dir * dist;
    }
    return true;
}

bool Plane::intersects_segment(const Vector3 &begin, const Vector3 &end, Vector3 *intersection) const {
    const Vector3 segment = begin - end;
    const real_t den = normal.dot(segment);
    if (Math::is_zero_approx(den)) {
        return false;
    }
    const real_t dist = (normal.dot(begin) - d) / den;
    if (dist < real_t(-CMP_EPSILON) || dist > 1 + real_t(CMP_EPSILON)) {
        return false;
    }
    if (intersection) {
        *intersection = begin - segment * dist;
    }
    return true;
}

Variant Plane::intersect_3_bind(const Plane &p1, const Plane &p2) const {
    Vector3 at;
    return intersect_3(p1, p2, &at) ? Variant(at) : Variant();
}

Variant Plane::intersects_ray_bind(const Vector3 &from, const Vector3 &dir) const {
    Vector3 at;
    return intersects_ray(from, dir, &at) ? Variant(at) : Variant();
}

Variant Plane::intersects_segment_bind(const Vector3 &begin, const Vector3 &end) const {
    Vector3 at;
    return intersects_segment(begin, end, &at) ? Variant(at) : Variant();
}

// --- Projection: the engine does it all.

Projection::Projection(const Transform3D &t) {
    const void *args[] = {&t};
    internal::builtin_construct(GDEXTENSION_VARIANT_TYPE_PROJECTION, 2, this, args);
}

Projection::operator Transform3D() const {
    Transform3D t;
    const void *args[] = {this};
    internal::builtin_construct(GDEXTENSION_VARIANT_TYPE_TRANSFORM3D, 4, &t, args);
    return t;
}

Projection Projection::create_perspective(real_t fovy_degrees, real_t aspect, real_t z_near, real_t z_far,
                                          bool flip_fov) {
    static constinit BuiltinRef m{GDEXTENSION_VARIANT_TYPE_PROJECTION, "create_perspective",
                                  GDE_HASH_PROJECTION_CREATE_PERSPECTIVE};
    const double a[] = {fovy_degrees, aspect, z_near, z_far};
    const uint8_t flip = flip_fov;
    const void *args[] = {&a[0], &a[1], &a[2], &a[3], &flip};
    Projection ret;
    m.call(nullptr, args, &ret, 5);
    return ret;
}

Projection Projection::create_orthogonal(real_t left, real_t right, real_t bottom, real_t top, real_t z_near,
                                         real_t z_far) {
    static constinit BuiltinRef m{GDEXTENSION_VARIANT_TYPE_PROJECTION, "create_orthogonal",
                                  GDE_HASH_PROJECTION_CREATE_ORTHOGONAL};
    const double a[] = {left, right, bottom, top, z_near, z_far};
    const void *args[] = {&a[0], &a[1], &a[2], &a[3], &a[4], &a[5]};
    Projection ret;
    m.call(nullptr, args, &ret, 6);
    return ret;
}

real_t Projection::determinant() const {
    GDE_ASK(double, PROJECTION, "determinant", GDE_HASH_PROJECTION_DETERMINANT, 0, nullptr);
}

Projection Projection::inverse() const {
    GDE_ASK(Projection, PROJECTION, "inverse", GDE_HASH_PROJECTION_INVERSE, 0, nullptr);
}

} // namespace godot
