#pragma once

#include <godot_cpp/core/defs.hpp>

#define CMP_EPSILON 0.00001
#define CMP_EPSILON2 (CMP_EPSILON * CMP_EPSILON)
#define CMP_NORMALIZE_TOLERANCE 0.000001
#define CMP_POINT_IN_PLANE_EPSILON 0.00001
#define UNIT_EPSILON 0.001

#define Math_SQRT12 0.7071067811865475244008443621048490
#define Math_SQRT2 1.4142135623730950488016887242
#define Math_LN2 0.6931471805599453094172321215
#define Math_TAU 6.2831853071795864769252867666
#define Math_PI 3.1415926535897932384626433833
#define Math_E 2.7182818284590452353602874714
#define Math_INF ::godot::Math::INF
#define Math_NAN ::godot::Math::NaN

namespace godot {

enum ClockDirection : int { CLOCKWISE, COUNTERCLOCKWISE };

enum EulerOrder : int {
    EULER_ORDER_XYZ,
    EULER_ORDER_XZY,
    EULER_ORDER_YXZ,
    EULER_ORDER_YZX,
    EULER_ORDER_ZXY,
    EULER_ORDER_ZYX,
};

namespace Math {
inline constexpr double SQRT2 = Math_SQRT2;
inline constexpr double SQRT12 = Math_SQRT12;
inline constexpr double LN2 = Math_LN2;
inline constexpr double TAU = Math_TAU;
inline constexpr double PI = Math_PI;
inline constexpr double E = Math_E;
inline constexpr double INF = __builtin_inf();
inline constexpr double NaN = __builtin_nan("");
} // namespace Math

} // namespace godot
