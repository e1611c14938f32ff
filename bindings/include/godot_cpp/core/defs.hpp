#pragma once
// Small macros and numbers that everything else uses.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include <gdextension_interface.h>

namespace godot {}

#if defined(_WIN32)
#define GDE_EXPORT __declspec(dllexport)
#else
#define GDE_EXPORT __attribute__((visibility("default")))
#endif

#ifndef _FORCE_INLINE_
#define _FORCE_INLINE_ inline __attribute__((always_inline))
#endif
#ifndef _ALWAYS_INLINE_
#define _ALWAYS_INLINE_ _FORCE_INLINE_
#endif
#ifndef _NO_DISCARD_
#define _NO_DISCARD_ [[nodiscard]]
#endif

#define likely(x) __builtin_expect(!!(x), 1)
#define unlikely(x) __builtin_expect(!!(x), 0)

#define _STR(m_x) #m_x
#define _MKSTR(m_x) _STR(m_x)
#define FUNCTION_STR __FUNCTION__
#define GENERATE_TRAP() __builtin_trap()
#define COMMA ,

namespace godot {

class Variant;

// Lets Type(variant) compile where the conversions of the type's other constructors would make it ambiguous.
#define GDE_FROM_VARIANT(m_class)                                                                                      \
    template <typename AVariant>                                                                                       \
    requires(std::is_same_v<AVariant, ::godot::Variant>) explicit m_class(const AVariant &v)                           \
        : m_class(v.operator m_class()) {}

// The engine's packages come with single precision.
using real_t = float;

// A type that is only ever pointed to: the engine's own object.
using GodotObject = void;

template <typename T>
constexpr T ABS(T v) {
    return v < 0 ? -v : v;
}
template <typename T>
constexpr int SIGN(const T v) {
    return v > 0 ? 1 : (v < 0 ? -1 : 0);
}
template <typename T, typename T2>
constexpr auto MIN(const T a, const T2 b) {
    return a < b ? a : b;
}
template <typename T, typename T2>
constexpr auto MAX(const T a, const T2 b) {
    return a > b ? a : b;
}
template <typename T, typename T2, typename T3>
constexpr auto CLAMP(const T a, const T2 lo, const T3 hi) {
    return a < lo ? lo : (a > hi ? hi : a);
}
template <typename T>
inline void SWAP(T &a, T &b) {
    T tmp = static_cast<T &&>(a);
    a = static_cast<T &&>(b);
    b = static_cast<T &&>(tmp);
}

constexpr uint32_t next_power_of_2(uint32_t x) {
    if (x == 0) {
        return 0;
    }
    --x;
    x |= x >> 1;
    x |= x >> 2;
    x |= x >> 4;
    x |= x >> 8;
    x |= x >> 16;
    return ++x;
}

} // namespace godot
