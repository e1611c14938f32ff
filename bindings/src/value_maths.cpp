// Maths of the value types beyond their headers. What runs rarely asks the engine, so that both agree.

#include <cmath>
#include <cstdio>

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

// --- Quaternion

Quaternion::Quaternion(const Vector3 &axis, real_t angle) : Quaternion(0, 0, 0, 0) {
    const real_t d = axis.length();
    if (d != 0) {
        const real_t s = std::sin(angle * 0.5f) / d;
        *this = Quaternion(axis.x * s, axis.y * s, axis.z * s, std::cos(angle * 0.5f));
    }
}

Quaternion::Quaternion(const Vector3 &from, const Vector3 &to) {
    const void *args[] = {&from, &to};
    internal::builtin_construct(GDEXTENSION_VARIANT_TYPE_QUATERNION, 4, this, args);
}

Quaternion Quaternion::from_euler(const Vector3 &euler) {
    const real_t a1 = euler.y * 0.5f, a2 = euler.x * 0.5f, a3 = euler.z * 0.5f;
    const real_t c1 = std::cos(a1), s1 = std::sin(a1), c2 = std::cos(a2), s2 = std::sin(a2), c3 = std::cos(a3),
                 s3 = std::sin(a3);
    return Quaternion(s1 * c2 * s3 + c1 * s2 * c3, s1 * c2 * c3 - c1 * s2 * s3, -s1 * s2 * c3 + c1 * c2 * s3,
                      s1 * s2 * s3 + c1 * c2 * c3);
}

// One line for each method of a value type that the engine computes.
#define GDE_ASK(m_ret, m_type, m_name, m_hash, m_count, ...)                                                           \
    static constinit BuiltinRef m{GDEXTENSION_VARIANT_TYPE_##m_type, m_name, m_hash};                                  \
    const void *args[] = {__VA_ARGS__};                                                                                \
    m_ret ret;                                                                                                         \
    m.call(this, args, &ret, m_count);                                                                                 \
    return ret

Quaternion Quaternion::log() const {
    GDE_ASK(Quaternion, QUATERNION, "log", GDE_HASH_QUATERNION_LOG, 0, nullptr);
}

Quaternion Quaternion::exp() const {
    GDE_ASK(Quaternion, QUATERNION, "exp", GDE_HASH_QUATERNION_EXP, 0, nullptr);
}

Vector3 Quaternion::get_euler(EulerOrder order) const {
    return Basis(*this).get_euler(order);
}

Quaternion Quaternion::slerp(const Quaternion &to, real_t weight) const {
    real_t cosom = dot(to);
    Quaternion to1 = to;
    if (cosom < 0) {
        cosom = -cosom;
        to1 = -to;
    }
    real_t scale0 = 1 - weight;
    real_t scale1 = weight;
    if (1 - cosom > real_t(CMP_EPSILON)) {
        const real_t omega = std::acos(cosom);
        const real_t sinom = std::sin(omega);
        scale0 = std::sin((1 - weight) * omega) / sinom;
        scale1 = std::sin(weight * omega) / sinom;
    }
    return *this * scale0 + to1 * scale1;
}

Quaternion Quaternion::slerpni(const Quaternion &to, real_t weight) const {
    const real_t d = dot(to);
    if (std::fabs(d) > 0.9999f) {
        return *this;
    }
    const real_t theta = std::acos(d);
    const real_t sin_t = 1 / std::sin(theta);
    return *this * (std::sin((1 - weight) * theta) * sin_t) + to * (std::sin(weight * theta) * sin_t);
}

Quaternion Quaternion::spherical_cubic_interpolate(const Quaternion &b, const Quaternion &pre_a,
                                                   const Quaternion &post_b, real_t weight) const {
    const double w = weight;
    GDE_ASK(Quaternion, QUATERNION, "spherical_cubic_interpolate", GDE_HASH_QUATERNION_SPHERICAL_CUBIC_INTERPOLATE, 4,
            &b, &pre_a, &post_b, &w);
}

Vector3 Quaternion::get_axis() const {
    if (std::fabs(w) > 1 - real_t(CMP_EPSILON)) {
        return Vector3(x, y, z);
    }
    const real_t r = 1 / std::sqrt(1 - w * w);
    return Vector3(x * r, y * r, z * r);
}

// --- Basis

void Basis::invert() {
    const auto cofactor = [this](int r1, int c1, int r2, int c2) {
        return rows[r1][c1] * rows[r2][c2] - rows[r1][c2] * rows[r2][c1];
    };
    const real_t co[3] = {cofactor(1, 1, 2, 2), cofactor(1, 2, 2, 0), cofactor(1, 0, 2, 1)};
    const real_t det = rows[0][0] * co[0] + rows[0][1] * co[1] + rows[0][2] * co[2];
    ERR_FAIL_COND(det == 0);
    const real_t s = 1 / det;
    set(co[0] * s, cofactor(0, 2, 2, 1) * s, cofactor(0, 1, 1, 2) * s, co[1] * s, cofactor(0, 0, 2, 2) * s,
        cofactor(0, 2, 1, 0) * s, co[2] * s, cofactor(0, 1, 2, 0) * s, cofactor(0, 0, 1, 1) * s);
}

void Basis::orthonormalize() {
    Vector3 x = get_column(0), y = get_column(1), z = get_column(2);
    x.normalize();
    y = y - x * x.dot(y);
    y.normalize();
    z = z - x * x.dot(z) - y * y.dot(z);
    z.normalize();
    *this = Basis(x, y, z);
}

void Basis::orthogonalize() {
    const Vector3 scale = get_scale();
    orthonormalize();
    scale_local(scale);
}

Basis Basis::looking_at(const Vector3 &target, const Vector3 &up, bool use_model_front) {
    ERR_FAIL_COND_V_MSG(target.is_zero_approx(), Basis(), "The target vector can't be zero.");
    ERR_FAIL_COND_V_MSG(up.is_zero_approx(), Basis(), "The up vector can't be zero.");
    Vector3 z = target.normalized();
    if (!use_model_front) {
        z = -z;
    }
    Vector3 x = up.cross(z);
    if (x.is_zero_approx()) {
        WARN_PRINT("Target and up vectors are colinear. This is not advised as it may cause unwanted rotation around "
                   "local Z axis.");
        const bool x_is_least = std::fabs(up.x) <= std::fabs(up.y) && std::fabs(up.x) <= std::fabs(up.z);
        x = up.cross(x_is_least ? Vector3(1, 0, 0) : Vector3(0, 1, 0));
    }
    x.normalize();
    return Basis(x, z.cross(x), z);
}

void Basis::set_axis_angle(const Vector3 &axis, real_t angle) {
    const Vector3 sq(axis.x * axis.x, axis.y * axis.y, axis.z * axis.z);
    const real_t c = std::cos(angle), s = std::sin(angle), t = 1 - c;
    const real_t xy = axis.x * axis.y * t, zs = axis.z * s;
    const real_t xz = axis.x * axis.z * t, ys = axis.y * s;
    const real_t yz = axis.y * axis.z * t, xs = axis.x * s;
    set(sq.x + c * (1 - sq.x), xy - zs, xz + ys, xy + zs, sq.y + c * (1 - sq.y), yz - xs, xz - ys, yz + xs,
        sq.z + c * (1 - sq.z));
}

void Basis::set_quaternion(const Quaternion &q) {
    const real_t s = 2 / q.length_squared();
    const real_t xs = q.x * s, ys = q.y * s, zs = q.z * s;
    const real_t wx = q.w * xs, wy = q.w * ys, wz = q.w * zs;
    const real_t xx = q.x * xs, xy = q.x * ys, xz = q.x * zs;
    const real_t yy = q.y * ys, yz = q.y * zs, zz = q.z * zs;
    set(1 - (yy + zz), xy - wz, xz + wy, xy + wz, 1 - (xx + zz), yz - wx, xz - wy, yz + wx, 1 - (xx + yy));
}

void Basis::set_euler(const Vector3 &euler, EulerOrder order) {
    real_t c = std::cos(euler.x), s = std::sin(euler.x);
    const Basis x(1, 0, 0, 0, c, -s, 0, s, c);
    c = std::cos(euler.y);
    s = std::sin(euler.y);
    const Basis y(c, 0, s, 0, 1, 0, -s, 0, c);
    c = std::cos(euler.z);
    s = std::sin(euler.z);
    const Basis z(c, -s, 0, s, c, 0, 0, 0, 1);
    switch (order) {
    case EULER_ORDER_XYZ:
        *this = x * (y * z);
        break;
    case EULER_ORDER_XZY:
        *this = x * z * y;
        break;
    case EULER_ORDER_YXZ:
        *this = y * x * z;
        break;
    case EULER_ORDER_YZX:
        *this = y * z * x;
        break;
    case EULER_ORDER_ZXY:
        *this = z * x * y;
        break;
    case EULER_ORDER_ZYX:
        *this = z * y * x;
        break;
    }
}

Vector3 Basis::get_euler(EulerOrder order) const {
    const int64_t o = order;
    GDE_ASK(Vector3, BASIS, "get_euler", GDE_HASH_BASIS_GET_EULER, 1, &o);
}

Quaternion Basis::get_quaternion() const {
    const Basis &m = *this;
    const real_t trace = m[0][0] + m[1][1] + m[2][2];
    real_t t[4];
    if (trace > 0) {
        real_t s = std::sqrt(trace + 1);
        t[3] = s * 0.5f;
        s = 0.5f / s;
        t[0] = (m[2][1] - m[1][2]) * s;
        t[1] = (m[0][2] - m[2][0]) * s;
        t[2] = (m[1][0] - m[0][1]) * s;
    } else {
        const int i = m[0][0] < m[1][1] ? (m[1][1] < m[2][2] ? 2 : 1) : (m[0][0] < m[2][2] ? 2 : 0);
        const int j = (i + 1) % 3, k = (i + 2) % 3;
        real_t s = std::sqrt(m[i][i] - m[j][j] - m[k][k] + 1);
        t[i] = s * 0.5f;
        s = 0.5f / s;
        t[3] = (m[k][j] - m[j][k]) * s;
        t[j] = (m[j][i] + m[i][j]) * s;
        t[k] = (m[k][i] + m[i][k]) * s;
    }
    return Quaternion(t[0], t[1], t[2], t[3]);
}

Quaternion Basis::get_rotation_quaternion() const {
    Basis m = orthonormalized();
    if (m.determinant() < 0) {
        m.scale(Vector3(-1, -1, -1));
    }
    return m.get_quaternion();
}

Basis Basis::slerp(const Basis &to, real_t w) const {
    Basis b(get_rotation_quaternion().slerp(to.get_rotation_quaternion(), w));
    for (int i = 0; i < 3; ++i) {
        b.rows[i] *= Math::lerp(rows[i].length(), to.rows[i].length(), w);
    }
    return b;
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

// --- Color

Color::Color(const String &code) {
    const void *args[] = {code._native_ptr()};
    internal::builtin_construct(GDEXTENSION_VARIANT_TYPE_COLOR, 5, this, args);
}

Color::Color(const String &code, float p_a) : Color(code) {
    a = p_a;
}

Color::Color(const char *code) : Color(String(code)) {}

Color Color::html(const String &rgba) {
    static constinit BuiltinRef m{GDEXTENSION_VARIANT_TYPE_COLOR, "html", GDE_HASH_COLOR_HTML};
    const void *args[] = {rgba._native_ptr()};
    Color ret;
    m.call(nullptr, args, &ret, 1);
    return ret;
}

bool Color::html_is_valid(const String &color) {
    static constinit BuiltinRef m{GDEXTENSION_VARIANT_TYPE_COLOR, "html_is_valid", GDE_HASH_COLOR_HTML_IS_VALID};
    const void *args[] = {color._native_ptr()};
    uint8_t ret = 0;
    m.call(nullptr, args, &ret, 1);
    return ret != 0;
}

Color Color::from_string(const String &str, const Color &fallback) {
    static constinit BuiltinRef m{GDEXTENSION_VARIANT_TYPE_COLOR, "from_string", GDE_HASH_COLOR_FROM_STRING};
    const void *args[] = {str._native_ptr(), &fallback};
    Color ret;
    m.call(nullptr, args, &ret, 2);
    return ret;
}

Color Color::named(const String &name) {
    return from_string(name, Color());
}

Color Color::named(const String &name, const Color &fallback) {
    return from_string(name, fallback);
}

static uint32_t byte_of(float v) {
    return uint32_t(uint8_t(CLAMP(std::round(v * 255.0f), 0.0f, 255.0f)));
}

uint32_t Color::to_rgba32() const {
    return byte_of(r) << 24 | byte_of(g) << 16 | byte_of(b) << 8 | byte_of(a);
}

uint32_t Color::to_argb32() const {
    return byte_of(a) << 24 | byte_of(r) << 16 | byte_of(g) << 8 | byte_of(b);
}

uint32_t Color::to_abgr32() const {
    return byte_of(a) << 24 | byte_of(b) << 16 | byte_of(g) << 8 | byte_of(r);
}

uint64_t Color::to_rgba64() const {
    const auto word = [](float v) { return uint64_t(uint16_t(CLAMP(std::round(v * 65535.0f), 0.0f, 65535.0f))); };
    return word(r) << 48 | word(g) << 32 | word(b) << 16 | word(a);
}

String Color::to_html(bool alpha) const {
    char text[12];
    std::snprintf(text, sizeof(text), alpha ? "%08x" : "%06x", alpha ? to_rgba32() : to_rgba32() >> 8);
    return text;
}

float Color::get_h() const {
    const float lo = MIN(r, MIN(g, b)), hi = MAX(r, MAX(g, b)), delta = hi - lo;
    if (delta == 0) {
        return 0;
    }
    float h = r == hi ? (g - b) / delta : (g == hi ? 2 + (b - r) / delta : 4 + (r - g) / delta);
    h /= 6.0f;
    return h < 0 ? h + 1 : h;
}

float Color::get_s() const {
    const float lo = MIN(r, MIN(g, b)), hi = MAX(r, MAX(g, b));
    return hi != 0 ? (hi - lo) / hi : 0;
}

float Color::get_v() const {
    return MAX(r, MAX(g, b));
}

void Color::set_hsv(float h, float s, float v, float alpha) {
    a = alpha;
    if (s == 0) {
        r = g = b = v;
        return;
    }
    h = std::fmod(h * 6.0f, 6.0f);
    int i = int(std::floor(h));
    const float f = h - float(i), p = v * (1 - s), q = v * (1 - s * f), t = v * (1 - s * (1 - f));
    const Color sextants[6] = {Color(v, t, p), Color(q, v, p), Color(p, v, t),
                               Color(p, q, v), Color(t, p, v), Color(v, p, q)};
    if (i < 0) { // as the engine takes hues below 0
        i = 5;
    }
    *this = Color(sextants[i], alpha);
}

bool Color::operator<(const Color &c) const {
    return r != c.r ? r < c.r : (g != c.g ? g < c.g : (b != c.b ? b < c.b : a < c.a));
}

} // namespace godot
