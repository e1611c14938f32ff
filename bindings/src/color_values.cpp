// Color beyond its header.

#include <cmath>
#include <cstdio>

#include <godot_cpp/core/generated_support.hpp>
#include <godot_cpp/gen/value_hashes.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

using internal::BuiltinRef;

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
