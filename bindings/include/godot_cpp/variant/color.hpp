#pragma once

#include <godot_cpp/core/math.hpp>

namespace godot {

class String;

struct Color {
    union {
        struct {
            float r;
            float g;
            float b;
            float a;
        };
        float components[4] = {0, 0, 0, 1.0f};
    };

    constexpr Color() : r(0), g(0), b(0), a(1) {}
    GDE_FROM_VARIANT(Color)
    constexpr Color(float p_r, float p_g, float p_b, float p_a) : r(p_r), g(p_g), b(p_b), a(p_a) {}
    constexpr Color(float p_r, float p_g, float p_b) : r(p_r), g(p_g), b(p_b), a(1) {}
    constexpr Color(const Color &c, float p_a) : r(c.r), g(c.g), b(c.b), a(p_a) {}
    constexpr Color(const Color &) = default;
    constexpr Color &operator=(const Color &) = default;
    // A code such as "#ff8800" or a name such as "tomato".
    Color(const String &code);
    Color(const String &code, float p_a);
    Color(const char *code);

    uint32_t to_rgba32() const;
    uint32_t to_argb32() const;
    uint32_t to_abgr32() const;
    uint64_t to_rgba64() const;
    String to_html(bool alpha = true) const;
    float get_h() const;
    float get_s() const;
    float get_v() const;
    void set_hsv(float h, float s, float v, float alpha = 1.0f);
    static Color from_hsv(float h, float s, float v, float alpha = 1.0f) {
        Color c;
        c.set_hsv(h, s, v, alpha);
        return c;
    }
    static Color html(const String &rgba);
    static bool html_is_valid(const String &color);
    static Color named(const String &name);
    static Color named(const String &name, const Color &fallback);
    static Color from_string(const String &str, const Color &fallback);
    static Color hex(uint32_t hex) {
        return Color(float((hex >> 24) & 0xff) / 255.0f, float((hex >> 16) & 0xff) / 255.0f,
                     float((hex >> 8) & 0xff) / 255.0f, float(hex & 0xff) / 255.0f);
    }
    static Color hex64(uint64_t hex) {
        return Color(float((hex >> 48) & 0xffff) / 65535.0f, float((hex >> 32) & 0xffff) / 65535.0f,
                     float((hex >> 16) & 0xffff) / 65535.0f, float(hex & 0xffff) / 65535.0f);
    }
    static Color from_rgba8(int64_t r8, int64_t g8, int64_t b8, int64_t a8 = 255) {
        return Color(float(r8) / 255.0f, float(g8) / 255.0f, float(b8) / 255.0f, float(a8) / 255.0f);
    }

    float get_luminance() const { return 0.2126f * r + 0.7152f * g + 0.0722f * b; }
    Color lerp(const Color &to, float w) const {
        return Color(Math::lerp(r, to.r, w), Math::lerp(g, to.g, w), Math::lerp(b, to.b, w), Math::lerp(a, to.a, w));
    }
    Color lightened(float by) const { return Color(r + (1.0f - r) * by, g + (1.0f - g) * by, b + (1.0f - b) * by, a); }
    Color darkened(float by) const { return Color(r * (1.0f - by), g * (1.0f - by), b * (1.0f - by), a); }
    void invert() { *this = inverted(); }
    Color inverted() const { return Color(1.0f - r, 1.0f - g, 1.0f - b, a); }
    Color blend(const Color &over) const {
        Color res;
        const float sa = 1.0f - over.a;
        res.a = a * sa + over.a;
        if (res.a == 0) {
            return Color(0, 0, 0, 0);
        }
        res.r = (r * a * sa + over.r * over.a) / res.a;
        res.g = (g * a * sa + over.g * over.a) / res.a;
        res.b = (b * a * sa + over.b * over.a) / res.a;
        return res;
    }
    Color clamp(const Color &lo = Color(0, 0, 0, 0), const Color &hi = Color(1, 1, 1, 1)) const {
        return Color(CLAMP(r, lo.r, hi.r), CLAMP(g, lo.g, hi.g), CLAMP(b, lo.b, hi.b), CLAMP(a, lo.a, hi.a));
    }
    Color srgb_to_linear() const { return Color(to_linear(r), to_linear(g), to_linear(b), a); }
    Color linear_to_srgb() const { return Color(to_srgb(r), to_srgb(g), to_srgb(b), a); }
    bool is_equal_approx(const Color &c) const {
        return Math::is_equal_approx(r, c.r) && Math::is_equal_approx(g, c.g) && Math::is_equal_approx(b, c.b) &&
               Math::is_equal_approx(a, c.a);
    }

    void set_r8(int32_t v) { r = float(CLAMP(v, 0, 255)) / 255.0f; }
    void set_g8(int32_t v) { g = float(CLAMP(v, 0, 255)) / 255.0f; }
    void set_b8(int32_t v) { b = float(CLAMP(v, 0, 255)) / 255.0f; }
    void set_a8(int32_t v) { a = float(CLAMP(v, 0, 255)) / 255.0f; }
    int32_t get_r8() const { return int32_t(CLAMP(std::round(r * 255.0f), 0.0f, 255.0f)); }
    int32_t get_g8() const { return int32_t(CLAMP(std::round(g * 255.0f), 0.0f, 255.0f)); }
    int32_t get_b8() const { return int32_t(CLAMP(std::round(b * 255.0f), 0.0f, 255.0f)); }
    int32_t get_a8() const { return int32_t(CLAMP(std::round(a * 255.0f), 0.0f, 255.0f)); }
    void set_h(float h) { set_hsv(h, get_s(), get_v(), a); }
    void set_s(float s) { set_hsv(get_h(), s, get_v(), a); }
    void set_v(float v) { set_hsv(get_h(), get_s(), v, a); }

    float &operator[](int i) { return components[i]; }
    const float &operator[](int i) const { return components[i]; }
    constexpr bool operator==(const Color &c) const { return r == c.r && g == c.g && b == c.b && a == c.a; }
    constexpr bool operator!=(const Color &c) const { return !(*this == c); }
    constexpr Color operator+(const Color &c) const { return Color(r + c.r, g + c.g, b + c.b, a + c.a); }
    constexpr Color operator-(const Color &c) const { return Color(r - c.r, g - c.g, b - c.b, a - c.a); }
    constexpr Color operator*(const Color &c) const { return Color(r * c.r, g * c.g, b * c.b, a * c.a); }
    constexpr Color operator/(const Color &c) const { return Color(r / c.r, g / c.g, b / c.b, a / c.a); }
    constexpr Color operator*(float s) const { return Color(r * s, g * s, b * s, a * s); }
    constexpr Color operator/(float s) const { return Color(r / s, g / s, b / s, a / s); }
    constexpr Color operator-() const { return Color(1.0f - r, 1.0f - g, 1.0f - b, 1.0f - a); }
    void operator+=(const Color &c) { *this = *this + c; }
    void operator-=(const Color &c) { *this = *this - c; }
    void operator*=(const Color &c) { *this = *this * c; }
    void operator*=(float s) { *this = *this * s; }
    void operator/=(float s) { *this = *this / s; }
    bool operator<(const Color &c) const;

    operator String() const;

private:
    static float to_linear(float v) {
        return v < 0.04045f ? v * (1.0f / 12.92f) : std::pow(float((v + 0.055) * (1.0 / 1.055)), 2.4f);
    }
    static float to_srgb(float v) { return v < 0.0031308f ? 12.92f * v : 1.055f * std::pow(v, 1.0f / 2.4f) - 0.055f; }
};

constexpr Color operator*(float s, const Color &c) {
    return c * s;
}

} // namespace godot
