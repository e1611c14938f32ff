#include "rules/daylight.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tilm::rules {

namespace {

struct Row {
    double hour;
    Tint sun;
    float sun_power;
    Tint ambient;
    float height, turn;
    Tint top, horizon, shade, rim;
    float darkness;
};

// Shade stays violet and ambient never falls under two thirds of noon's: goods must be told apart by night.
// clang-format off
constexpr Row ROWS[] = {
    // hour  sun                    power  ambient                height turn top                    horizon                shade                  rim                    dark
    {0.0,  {0.64F, 0.74F, 1.00F}, 0.42F, {0.30F, 0.36F, 0.55F}, 56, 46, {0.07F, 0.10F, 0.27F}, {0.21F, 0.26F, 0.47F}, {0.60F, 0.80F, 1.20F}, {0.42F, 0.52F, 0.95F}, 1.0F},
    {4.6,  {0.64F, 0.74F, 1.00F}, 0.42F, {0.30F, 0.36F, 0.55F}, 52, 58, {0.08F, 0.12F, 0.30F}, {0.24F, 0.28F, 0.49F}, {0.60F, 0.80F, 1.20F}, {0.42F, 0.52F, 0.95F}, 1.0F},
    {5.8,  {1.00F, 0.76F, 0.62F}, 0.66F, {0.40F, 0.39F, 0.56F}, 27, 66, {0.30F, 0.38F, 0.68F}, {0.97F, 0.69F, 0.58F}, {0.95F, 0.85F, 1.05F}, {0.95F, 0.66F, 0.68F}, 0.35F},
    {6.6,  {1.00F, 0.86F, 0.62F}, 1.10F, {0.43F, 0.45F, 0.59F}, 31, 63, {0.37F, 0.56F, 0.86F}, {0.99F, 0.84F, 0.70F}, {1.00F, 0.92F, 1.00F}, {0.90F, 0.74F, 0.76F}, 0.0F},
    {8.5,  {1.00F, 0.92F, 0.74F}, 0.98F, {0.44F, 0.46F, 0.58F}, 42, 52, {0.36F, 0.64F, 0.93F}, {0.86F, 0.92F, 0.94F}, {1.00F, 1.00F, 1.00F}, {0.58F, 0.76F, 1.00F}, 0.0F},
    {12.0, {1.00F, 0.95F, 0.80F}, 1.00F, {0.44F, 0.47F, 0.60F}, 50, 40, {0.36F, 0.65F, 0.93F}, {0.80F, 0.91F, 0.96F}, {1.00F, 1.00F, 1.00F}, {0.55F, 0.75F, 1.00F}, 0.0F},
    {16.0, {1.00F, 0.93F, 0.76F}, 1.00F, {0.44F, 0.46F, 0.59F}, 46, 34, {0.36F, 0.63F, 0.92F}, {0.84F, 0.91F, 0.94F}, {1.00F, 1.00F, 1.00F}, {0.57F, 0.75F, 1.00F}, 0.0F},
    {18.0, {1.00F, 0.86F, 0.58F}, 1.14F, {0.43F, 0.45F, 0.58F}, 33, 30, {0.35F, 0.52F, 0.83F}, {0.99F, 0.83F, 0.63F}, {1.00F, 0.90F, 1.05F}, {1.00F, 0.74F, 0.58F}, 0.0F},
    {19.2, {1.00F, 0.78F, 0.47F}, 1.24F, {0.40F, 0.43F, 0.62F}, 27, 28, {0.28F, 0.34F, 0.66F}, {0.98F, 0.64F, 0.48F}, {1.00F, 0.80F, 1.15F}, {1.00F, 0.62F, 0.50F}, 0.35F},
    {20.3, {0.74F, 0.70F, 0.94F}, 0.48F, {0.33F, 0.36F, 0.58F}, 40, 34, {0.12F, 0.15F, 0.37F}, {0.42F, 0.36F, 0.54F}, {0.70F, 0.78F, 1.20F}, {0.52F, 0.52F, 0.92F}, 0.9F},
    {21.5, {0.64F, 0.74F, 1.00F}, 0.42F, {0.30F, 0.36F, 0.55F}, 54, 40, {0.07F, 0.10F, 0.28F}, {0.22F, 0.27F, 0.48F}, {0.60F, 0.80F, 1.20F}, {0.42F, 0.52F, 0.95F}, 1.0F},
};
// clang-format on

constexpr Tint WHITE = {1, 1, 1};

constexpr float mix(float a, float b, float k) {
    return a + (b - a) * k;
}
constexpr Tint mix(const Tint &a, const Tint &b, float k) {
    return {mix(a.r, b.r, k), mix(a.g, b.g, k), mix(a.b, b.b, k)};
}
constexpr Tint times(const Tint &a, const Tint &b) {
    return {a.r * b.r, a.g * b.g, a.b * b.b};
}

// The same brightness with the colour gone over to a cold grey.
Tint clouded(const Tint &c, float k) {
    const float y = luma(c);
    return mix(c, {y * 0.93F, y * 1.0F, y * 1.10F}, k);
}

Daylight clear_sky(double hour) {
    constexpr size_t count = std::size(ROWS);
    size_t next = 0;
    while (next < count && ROWS[next].hour <= hour) {
        next++;
    }
    const Row &a = ROWS[next - 1];
    const Row &b = ROWS[next % count];
    const double end = next < count ? b.hour : 24.0;
    const auto k = static_cast<float>((hour - a.hour) / (end - a.hour));
    Daylight out;
    out.sun = mix(a.sun, b.sun, k);
    out.sun_power = mix(a.sun_power, b.sun_power, k);
    out.ambient = mix(a.ambient, b.ambient, k);
    out.height = mix(a.height, b.height, k);
    out.turn = mix(a.turn, b.turn, k);
    out.top = mix(a.top, b.top, k);
    out.horizon = mix(a.horizon, b.horizon, k);
    out.key = WHITE;
    out.shade = mix(a.shade, b.shade, k);
    out.rim = mix(a.rim, b.rim, k);
    out.darkness = mix(a.darkness, b.darkness, k);
    return out;
}

float share(float x) {
    return std::isfinite(x) ? std::clamp(x, 0.0F, 1.0F) : 0.0F;
}

} // namespace

float luma(const Tint &c) {
    return 0.2126F * c.r + 0.7152F * c.g + 0.0722F * c.b;
}

double hour_of_clock(double t) {
    const double clock = t - 480.0 * std::floor(t / 480.0);
    if (clock < 330.0) {
        return 6.0 + clock * 13.0 / 330.0;
    }
    const double hour = 19.0 + (clock - 330.0) * 11.0 / 150.0;
    return hour < 24.0 ? hour : hour - 24.0;
}

Daylight daylight(const SkyState &sky) {
    const double hour = std::isfinite(sky.hour) ? sky.hour - 24.0 * std::floor(sky.hour / 24.0) : 12.0;
    Daylight out = clear_sky(std::min(hour, 23.999999));
    const float summer = share(sky.season[1]), autumn = share(sky.season[2]), winter = share(sky.season[3]);
    out.sun = mix(out.sun, times(out.sun, {1.0F, 0.98F, 0.92F}), summer);
    out.sun = mix(out.sun, times(out.sun, {1.0F, 0.93F, 0.80F}), autumn);
    out.horizon = mix(out.horizon, times(out.horizon, {1.0F, 0.96F, 0.88F}), autumn);
    out.sun = mix(out.sun, times(out.sun, {0.96F, 0.98F, 1.06F}), winter);
    // White ground throws back so much light that the same sun would burn it out.
    out.sun_power *= mix(1.0F, 0.84F, winter);
    out.ambient_power *= mix(1.0F, 0.97F, winter);
    // Nor may it shine blue under the moon.
    const float moonlit = winter * out.darkness;
    out.sun = clouded(out.sun, 0.45F * moonlit);
    out.sun_power *= mix(1.0F, 0.72F, moonlit);
    out.ambient = mix(out.ambient, {0.31F, 0.355F, 0.47F}, moonlit);
    out.top = mix(out.top, mix(out.top, out.horizon, 0.35F), winter);

    const float snowing = share(sky.snow);
    const float cloud = std::max(share(sky.wet), snowing);
    out.sun = clouded(out.sun, 0.75F * cloud);
    out.sun_power *= mix(1.0F, mix(0.58F, 0.85F, out.darkness), cloud);
    out.ambient = clouded(out.ambient, 0.45F * cloud);
    out.ambient_power *= mix(1.0F, 1.10F, cloud);
    out.top = mix(out.top, times(clouded(out.horizon, 1.0F), {0.70F, 0.72F, 0.76F}), 0.85F * cloud);
    out.horizon = mix(out.horizon, times(clouded(out.horizon, 1.0F), {0.82F, 0.84F, 0.87F}), cloud);
    out.rim = clouded(out.rim, 0.6F * cloud);
    out.fog_begin = mix(mix(26.0F, 19.0F, cloud), 14.0F, snowing);
    out.fog_end = mix(mix(120.0F, 84.0F, cloud), 62.0F, snowing);

    const float flash = share(sky.flash);
    out.ambient = mix(out.ambient, {0.80F, 0.84F, 0.95F}, 0.7F * flash);
    out.top = mix(out.top, {0.85F, 0.88F, 1.0F}, 0.6F * flash);
    return out;
}

} // namespace tilm::rules
