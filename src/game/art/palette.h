#pragma once
// The one palette that all models draw from: muted ground, saturated things to touch, brightest goods and people.

#include <cstdint>

#include <godot_cpp/variant/color.hpp>

namespace tilm::pal {

constexpr uint32_t GRASS = 0x8cc152;
constexpr uint32_t GRASS_DEEP = 0x6aa544;
constexpr uint32_t LEAF = 0x57a639;
constexpr uint32_t LEAF_DARK = 0x3a7d3c;
constexpr uint32_t LEAF_LIGHT = 0xa4d65e;
constexpr uint32_t SOIL = 0x8d6244;
constexpr uint32_t SOIL_DARK = 0x6b4630;
constexpr uint32_t SAND = 0xe8cf97;
constexpr uint32_t STRAW = 0xf2c94c;
constexpr uint32_t STRAW_DARK = 0xd29f35;
constexpr uint32_t WOOD = 0xb47a45;
constexpr uint32_t WOOD_LIGHT = 0xd9a066;
constexpr uint32_t WOOD_DARK = 0x7c4f2e;
constexpr uint32_t STONE = 0xb8b5ad;
constexpr uint32_t STONE_DARK = 0x85858c;
constexpr uint32_t PLASTER = 0xfbeed5;
constexpr uint32_t WHITE = 0xfffdf7;
constexpr uint32_t CREAM = 0xffe9c2;
constexpr uint32_t RED = 0xe5484d;
constexpr uint32_t RED_DARK = 0xb8323f;
constexpr uint32_t ORANGE = 0xff8f3a;
constexpr uint32_t YELLOW = 0xffd23f;
constexpr uint32_t GREEN = 0x53c14b;
constexpr uint32_t TEAL = 0x2fb5a8;
constexpr uint32_t BLUE = 0x3f8fe0;
constexpr uint32_t SKY = 0x8fd3f4;
constexpr uint32_t PURPLE = 0x8e5bd0;
constexpr uint32_t PINK = 0xff8fb1;
constexpr uint32_t BROWN = 0x6d4327;
constexpr uint32_t CHOCOLATE = 0x4e2e1e;
constexpr uint32_t METAL = 0xc9d3dc;
constexpr uint32_t INK = 0x2b2630;
// Paint of this opacity is lit from within by night (farm.gdshader): panes, lantern glass. Models are never
// see-through.
constexpr float GLASS = 0.5f;
constexpr uint32_t ACCENT = 0x4dd0e1; // only for "do this now"

inline godot::Color col(uint32_t rgb, float alpha = 1.0f) {
    return godot::Color(float((rgb >> 16) & 255) / 255.0f, float((rgb >> 8) & 255) / 255.0f, float(rgb & 255) / 255.0f,
                        alpha);
}

// Lighter (k above 0) towards white or darker (k below 0) towards black; k is in -1..1.
inline godot::Color tone(godot::Color c, float k) {
    const float to = k > 0.0f ? 1.0f : 0.0f;
    const float t = k > 0.0f ? k : -k;
    return godot::Color(c.r + (to - c.r) * t, c.g + (to - c.g) * t, c.b + (to - c.b) * t, c.a);
}
inline godot::Color tone(uint32_t rgb, float k) {
    return tone(col(rgb), k);
}

} // namespace tilm::pal
