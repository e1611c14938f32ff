// Basis and Quaternion beyond their headers. What runs rarely asks the engine, so that both agree.

#include <cmath>

#include <godot_cpp/core/generated_support.hpp>
#include <godot_cpp/gen/value_hashes.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

using internal::BuiltinRef;
using internal::gde;

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

} // namespace godot
