#pragma once
// Scalar maths with the engine's own meaning of each function.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>

#include <godot_cpp/core/math_defs.hpp>

namespace godot::Math {

// Each function comes for double and float, as the engine has them.
#define GDE_MATH_1(m_name, m_fn)                                                                                       \
    inline double m_name(double x) {                                                                                   \
        return m_fn(x);                                                                                                \
    }                                                                                                                  \
    inline float m_name(float x) {                                                                                     \
        return m_fn(x);                                                                                                \
    }                                                                                                                  \
    template <typename T>                                                                                              \
    requires std::is_integral_v<T>                                                                                     \
    inline double m_name(T x) {                                                                                        \
        return m_fn(static_cast<double>(x));                                                                           \
    }
GDE_MATH_1(sin, std::sin)
GDE_MATH_1(cos, std::cos)
GDE_MATH_1(tan, std::tan)
GDE_MATH_1(sinh, std::sinh)
GDE_MATH_1(cosh, std::cosh)
GDE_MATH_1(tanh, std::tanh)
GDE_MATH_1(asinh, std::asinh)
GDE_MATH_1(atan, std::atan)
GDE_MATH_1(sqrt, std::sqrt)
GDE_MATH_1(floor, std::floor)
GDE_MATH_1(ceil, std::ceil)
GDE_MATH_1(round, std::round)
GDE_MATH_1(exp, std::exp)
GDE_MATH_1(log, std::log)
GDE_MATH_1(log2, std::log2)
GDE_MATH_1(log1p, std::log1p)
#undef GDE_MATH_1

inline double asin(double x) {
    return x < -1 ? -PI / 2 : (x > 1 ? PI / 2 : std::asin(x));
}
inline float asin(float x) {
    return x < -1 ? float(-PI / 2) : (x > 1 ? float(PI / 2) : std::asin(x));
}
inline double acos(double x) {
    return x < -1 ? PI : (x > 1 ? 0 : std::acos(x));
}
inline float acos(float x) {
    return x < -1 ? float(PI) : (x > 1 ? 0 : std::acos(x));
}
inline double acosh(double x) {
    return x < 1 ? 0 : std::acosh(x);
}
inline double atanh(double x) {
    return x <= -1 ? -INF : (x >= 1 ? INF : std::atanh(x));
}
inline double atan2(double y, double x) {
    return std::atan2(y, x);
}
inline float atan2(float y, float x) {
    return std::atan2(y, x);
}
inline double pow(double x, double y) {
    return std::pow(x, y);
}
inline float pow(float x, float y) {
    return std::pow(x, y);
}
inline double fmod(double x, double y) {
    return std::fmod(x, y);
}
inline float fmod(float x, float y) {
    return std::fmod(x, y);
}
inline double sinc(double x) {
    return x == 0 ? 1 : std::sin(x) / x;
}
inline double sincn(double x) {
    return sinc(PI * x);
}

inline bool is_nan(double v) {
    return std::isnan(v);
}
inline bool is_nan(float v) {
    return std::isnan(v);
}
inline bool is_inf(double v) {
    return std::isinf(v);
}
inline bool is_inf(float v) {
    return std::isinf(v);
}
inline bool is_finite(double v) {
    return std::isfinite(v);
}
inline bool is_finite(float v) {
    return std::isfinite(v);
}

template <typename T>
constexpr T abs(T v) {
    return v < 0 ? -v : v;
}
inline double abs(double v) {
    return std::fabs(v);
}
inline float abs(float v) {
    return std::fabs(v);
}

inline double deg_to_rad(double v) {
    return v * (PI / 180.0);
}
inline float deg_to_rad(float v) {
    return v * float(PI / 180.0);
}
inline double deg_to_rad(int v) {
    return v * (PI / 180.0);
}
inline double rad_to_deg(double v) {
    return v * (180.0 / PI);
}
inline float rad_to_deg(float v) {
    return v * float(180.0 / PI);
}

inline double lerp(double a, double b, double w) {
    return a + (b - a) * w;
}
inline float lerp(float a, float b, float w) {
    return a + (b - a) * w;
}
inline double inverse_lerp(double a, double b, double v) {
    return (v - a) / (b - a);
}
inline float inverse_lerp(float a, float b, float v) {
    return (v - a) / (b - a);
}
inline double remap(double v, double a0, double a1, double b0, double b1) {
    return lerp(b0, b1, inverse_lerp(a0, a1, v));
}
inline float remap(float v, float a0, float a1, float b0, float b1) {
    return lerp(b0, b1, inverse_lerp(a0, a1, v));
}

inline double fposmod(double x, double y) {
    double v = std::fmod(x, y);
    if ((v < 0 && y > 0) || (v > 0 && y < 0)) {
        v += y;
    }
    return v + 0.0;
}
inline float fposmod(float x, float y) {
    float v = std::fmod(x, y);
    if ((v < 0 && y > 0) || (v > 0 && y < 0)) {
        v += y;
    }
    return v + 0.0f;
}
inline int64_t posmod(int64_t x, int64_t y) {
    if (y == 0) {
        return 0;
    }
    int64_t v = x % y;
    return (v != 0 && ((v < 0) != (y < 0))) ? v + y : v;
}

inline double angle_difference(double from, double to) {
    const double difference = std::fmod(to - from, TAU);
    return std::fmod(2.0 * difference, TAU) - difference;
}
inline float angle_difference(float from, float to) {
    const float difference = std::fmod(to - from, float(TAU));
    return std::fmod(2.0f * difference, float(TAU)) - difference;
}
inline double lerp_angle(double from, double to, double w) {
    return from + angle_difference(from, to) * w;
}
inline float lerp_angle(float from, float to, float w) {
    return from + angle_difference(from, to) * w;
}

inline bool is_equal_approx(double a, double b, double tolerance) {
    return a == b || std::fabs(a - b) < tolerance;
}
inline bool is_equal_approx(float a, float b, float tolerance) {
    return a == b || std::fabs(a - b) < tolerance;
}
inline bool is_equal_approx(double a, double b) {
    return a == b || std::fabs(a - b) < std::max(CMP_EPSILON * std::fabs(a), CMP_EPSILON);
}
inline bool is_equal_approx(float a, float b) {
    return a == b || std::fabs(a - b) < std::max(float(CMP_EPSILON) * std::fabs(a), float(CMP_EPSILON));
}
inline bool is_zero_approx(double v) {
    return std::fabs(v) < CMP_EPSILON;
}
inline bool is_zero_approx(float v) {
    return std::fabs(v) < float(CMP_EPSILON);
}

inline double smoothstep(double from, double to, double v) {
    if (is_equal_approx(from, to)) {
        return from <= to ? (v <= from ? 0.0 : 1.0) : (v <= to ? 1.0 : 0.0);
    }
    const double s = std::clamp((v - from) / (to - from), 0.0, 1.0);
    return s * s * (3.0 - 2.0 * s);
}
inline float smoothstep(float from, float to, float v) {
    return float(smoothstep(double(from), double(to), double(v)));
}
inline double move_toward(double from, double to, double delta) {
    return std::fabs(to - from) <= delta ? to : from + (to > from ? delta : (to < from ? -delta : 0));
}
inline float move_toward(float from, float to, float delta) {
    return std::fabs(to - from) <= delta ? to : from + (to > from ? delta : (to < from ? -delta : 0));
}
inline double rotate_toward(double from, double to, double delta) {
    const double difference = angle_difference(from, to);
    const double distance = std::fabs(difference);
    return from + std::clamp(delta, distance - PI, distance) * (difference >= 0.0 ? 1.0 : -1.0);
}

inline double cubic_interpolate(double from, double to, double pre, double post, double w) {
    return 0.5 * ((from * 2.0) + (-pre + to) * w + (2.0 * pre - 5.0 * from + 4.0 * to - post) * (w * w) +
                  (-pre + 3.0 * from - 3.0 * to + post) * (w * w * w));
}
inline double bezier_interpolate(double start, double control_1, double control_2, double end, double t) {
    const double omt = 1.0 - t;
    return start * omt * omt * omt + control_1 * omt * omt * t * 3.0 + control_2 * omt * t * t * 3.0 + end * t * t * t;
}
inline double bezier_derivative(double start, double control_1, double control_2, double end, double t) {
    const double omt = 1.0 - t;
    return (control_1 - start) * 3.0 * omt * omt + (control_2 - control_1) * 6.0 * omt * t +
           (end - control_2) * 3.0 * t * t;
}

inline double snapped(double v, double step) {
    return step != 0 ? std::floor(v / step + 0.5) * step : v;
}
inline float snapped(float v, float step) {
    return step != 0 ? std::floor(v / step + 0.5f) * step : v;
}
inline int64_t snapped(int64_t v, int64_t step) {
    return step != 0 ? int64_t(std::floor(double(v) / double(step) + 0.5)) * step : v;
}

template <typename T>
inline T clamp(T v, T lo, T hi) {
    return v < lo ? lo : (v > hi ? hi : v);
}
template <typename A, typename B, typename C>
inline auto clamp(A v, B lo, C hi) {
    return v < lo ? lo : (v > hi ? hi : v);
}
template <typename A, typename B>
inline auto max(A a, B b) {
    return a > b ? a : b;
}
template <typename A, typename B>
inline auto min(A a, B b) {
    return a < b ? a : b;
}
template <typename T>
constexpr int sign(T v) {
    return v > 0 ? 1 : (v < 0 ? -1 : 0);
}

inline double wrapf(double v, double lo, double hi) {
    const double range = hi - lo;
    if (is_zero_approx(range)) {
        return lo;
    }
    const double result = v - range * std::floor((v - lo) / range);
    return is_equal_approx(result, hi) ? lo : result;
}
inline float wrapf(float v, float lo, float hi) {
    return float(wrapf(double(v), double(lo), double(hi)));
}
inline int64_t wrapi(int64_t v, int64_t lo, int64_t hi) {
    const int64_t range = hi - lo;
    return range == 0 ? lo : lo + ((((v - lo) % range) + range) % range);
}
inline double fract(double v) {
    return v - std::floor(v);
}
inline float fract(float v) {
    return v - std::floor(v);
}
inline double pingpong(double v, double length) {
    return length != 0.0 ? std::fabs(fract((v - length) / (length * 2.0)) * length * 2.0 - length) : 0.0;
}
inline int step_decimals(double step) {
    static constexpr double limits[] = {0.9999,      0.09999,      0.009999,      0.0009999,      0.00009999,
                                        0.000009999, 0.0000009999, 0.00000009999, 0.000000009999, 0.0000000009999};
    const double a = std::fabs(step);
    const double decimal = a - double(int64_t(a));
    for (int i = 0; i < 10; ++i) {
        if (decimal >= limits[i]) {
            return i;
        }
    }
    return 0;
}
inline double ease(double x, double c) {
    x = std::clamp(x, 0.0, 1.0);
    if (c > 0) {
        return c < 1.0 ? 1.0 - std::pow(1.0 - x, 1.0 / c) : std::pow(x, c);
    }
    if (c < 0) {
        return x < 0.5 ? std::pow(x * 2.0, -c) * 0.5 : (1.0 - std::pow(1.0 - (x - 0.5) * 2.0, -c)) * 0.5 + 0.5;
    }
    return 0;
}
inline double linear_to_db(double linear) {
    return std::log(linear) * 8.6858896380650365530225783783321;
}
inline float linear_to_db(float linear) {
    return std::log(linear) * 8.6858896380650365530225783783321f;
}
inline double db_to_linear(double db) {
    return std::exp(db * 0.11512925464970228420089957273422);
}
inline float db_to_linear(float db) {
    return std::exp(db * 0.11512925464970228420089957273422f);
}

inline uint32_t rand_from_seed(uint64_t *seed) {
    *seed = *seed * 6364136223846793005ULL + 1442695040888963407ULL;
    return uint32_t(*seed >> 32);
}
double random(double from, double to);
float random(float from, float to);
int random(int from, int to);
double randf();
uint32_t rand();

inline int fast_ftoi(float v) {
    return int(std::rint(v));
}

} // namespace godot::Math
