#include "game/interface/star_badge.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <godot_cpp/classes/font.hpp>
#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/core/class_db.hpp>

#include "game/kit/ui.h"
#include "names.h"

namespace tilm {
namespace {

constexpr float inner_share = 0.48f; // of the outer radius

// Corner i of ten, tips at even ones, the first one up.
Vector2 corner(const Vector2 &center, float radius, int i) {
    const float a = -1.5708f + static_cast<float>(i) * 0.62832f;
    return center + Vector2(std::cos(a), std::sin(a)) * (i % 2 == 0 ? radius : radius * inner_share);
}

// The part of a triangle that lies below `top`; empty when it is too thin to be painted.
PackedVector2Array below(const std::array<Vector2, 3> &triangle, float top) {
    PackedVector2Array kept;
    for (size_t i = 0; i < 3; ++i) {
        const Vector2 &a = triangle[i];
        const Vector2 &b = triangle[(i + 1) % 3];
        if (a.y >= top) {
            kept.push_back(a);
        }
        if ((a.y >= top) != (b.y >= top)) {
            kept.push_back(a + (b - a) * ((top - a.y) / (b.y - a.y)));
        }
    }
    float twice_area = 0.0f;
    for (int64_t i = 0; i < kept.size(); ++i) {
        twice_area += kept[i].cross(kept[(i + 1) % kept.size()]);
    }
    return std::abs(twice_area) < 0.1f ? PackedVector2Array() : kept;
}

} // namespace

Hud::StarBadge::StarBadge() {
    set_mouse_filter(MOUSE_FILTER_IGNORE);
    set_v_size_flags(SIZE_SHRINK_CENTER);
}

void Hud::StarBadge::_bind_methods() {
    ClassDB::bind_method(D_METHOD("set_number", "n"), &StarBadge::set_number);
    ClassDB::bind_method(D_METHOD("get_number"), &StarBadge::get_number);
    ClassDB::bind_method(D_METHOD("set_lit", "share"), &StarBadge::set_lit);
    ClassDB::bind_method(D_METHOD("get_lit"), &StarBadge::get_lit);
    ClassDB::bind_method(D_METHOD("jump"), &StarBadge::jump);
}

void Hud::StarBadge::set_number(int64_t n) {
    if (n != number) {
        number = n;
        queue_redraw();
    }
}

void Hud::StarBadge::set_lit(double share) {
    const double bounded = std::isfinite(share) ? std::clamp(share, 0.0, 1.0) : 0.0;
    if (bounded != lit) {
        lit = bounded;
        queue_redraw();
    }
}

void Hud::StarBadge::jump() {
    UI::pop(this, 0.55);
}

void Hud::StarBadge::_draw() {
    const Vector2 size = get_size();
    const float room = static_cast<float>(std::min(size.x, size.y));
    if (room < 4.0f) {
        return;
    }
    const float radius = room * 0.5f;
    const Vector2 center(size.x * 0.5f, size.y * 0.5f + radius * 0.05f); // a star's middle lies above its box's
    PackedVector2Array edge;
    for (int i = 0; i < 10; ++i) {
        edge.push_back(corner(center, radius, i));
    }
    draw_colored_polygon(edge, UI::hex("7a4a00"));
    edge.push_back(edge[0]);
    draw_polyline(edge, UI::hex("7a4a00"), std::max(1.0f, radius * 0.1f), true);
    const float face = radius * 0.86f;
    const float top = center.y + face * (1.0f - 2.0f * static_cast<float>(lit));
    for (int i = 0; i < 10; ++i) {
        const std::array<Vector2, 3> facet = {center, corner(center, face, i), corner(center, face, i + 1)};
        const bool bright = i % 2 == 1; // each tip has a side to the light and one away from it
        draw_colored_polygon(PackedVector2Array({facet[0], facet[1], facet[2]}), UI::hex(bright ? "8d8578" : "786f62"));
        const PackedVector2Array golden = below(facet, top);
        if (golden.size() >= 3) {
            draw_colored_polygon(golden, UI::hex(bright ? "ffd54f" : "ffb300"));
        }
    }
    if (number < 0) {
        return;
    }
    const String text = String::num_int64(number);
    const Ref<Font> font = UI::font();
    const int full = std::max(1, static_cast<int>(radius * 0.72f));
    const float wide = font->get_string_size(text, HORIZONTAL_ALIGNMENT_LEFT, -1, full).x;
    const float fitting = static_cast<float>(full) * std::min(1.0f, radius * 0.95f / std::max(1.0f, wide));
    const int letters = std::max(1, static_cast<int>(fitting));
    const Vector2 line = font->get_string_size(text, HORIZONTAL_ALIGNMENT_LEFT, -1, letters);
    const float rise = 0.5f * static_cast<float>(font->get_ascent(letters) - font->get_descent(letters));
    const Vector2 at(center.x - line.x * 0.5f, center.y + rise);
    draw_string_outline(font, at, text, HORIZONTAL_ALIGNMENT_LEFT, -1, letters, std::max(2, letters / 4),
                        UI::hex("5d3500"));
    draw_string(font, at, text, HORIZONTAL_ALIGNMENT_LEFT, -1, letters, Color(1, 1, 1));
}

} // namespace tilm
