// UI::glyph: small vector signs that need no picture file.

#include <algorithm>
#include <cmath>
#include <vector>

#include <godot_cpp/variant/packed_vector2_array.hpp>

#include "game/kit/ui.h"
#include "names.h"

namespace tilm {
namespace {

struct Stroke {
    std::vector<Vector2> points; // in a square of 1 x 1
};

struct Glyph {
    const char *name;
    std::vector<Stroke> strokes;
    std::vector<Vector2> dots;
};

std::vector<Vector2> arc(const Vector2 &center, float radius, float from, float to) {
    std::vector<Vector2> points;
    constexpr int steps = 20;
    for (int i = 0; i <= steps; ++i) {
        const float a = from + (to - from) * static_cast<float>(i) / steps;
        points.emplace_back(center.x + radius * std::cos(a), center.y + radius * std::sin(a));
    }
    return points;
}

const std::vector<Glyph> &glyphs() {
    static const std::vector<Glyph> list = {
        {"check", {{{{0.16f, 0.52f}, {0.40f, 0.76f}, {0.84f, 0.26f}}}}, {}},
        {"cross", {{{{0.22f, 0.22f}, {0.78f, 0.78f}}}, {{{0.78f, 0.22f}, {0.22f, 0.78f}}}}, {}},
        {"info", {{{{0.5f, 0.44f}, {0.5f, 0.82f}}}}, {{0.5f, 0.22f}}},
        {"bang", {{{{0.5f, 0.16f}, {0.5f, 0.58f}}}}, {{0.5f, 0.82f}}},
        {"refresh", {{arc({0.5f, 0.5f}, 0.32f, -0.6f, 4.4f)}, {{{0.94f, 0.12f}, {0.78f, 0.34f}, {0.54f, 0.24f}}}}, {}},
        {"arrow", {{{{0.14f, 0.5f}, {0.84f, 0.5f}}}, {{{0.56f, 0.22f}, {0.84f, 0.5f}, {0.56f, 0.78f}}}}, {}},
        {"pin",
         {{arc({0.5f, 0.36f}, 0.24f, 2.5f, 6.92f)}, {{{0.31f, 0.5f}, {0.5f, 0.9f}, {0.69f, 0.5f}}}},
         {{0.5f, 0.36f}}},
        {"wave",
         {{arc({0.3f, 0.5f}, 0.1f, -0.9f, 0.9f)},
          {arc({0.3f, 0.5f}, 0.28f, -0.9f, 0.9f)},
          {arc({0.3f, 0.5f}, 0.46f, -0.9f, 0.9f)}},
         {}},
    };
    return list;
}

} // namespace

Control *UI::glyph(const String &name, double size, const Color &color) {
    const auto &list = glyphs();
    const auto it = std::find_if(list.begin(), list.end(), [&](const Glyph &g) { return name == String(g.name); });
    Control *control = memnew(Control);
    control->set_custom_minimum_size(Vector2(size, size));
    control->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    control->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    if (it == list.end()) {
        WARN_PRINT("TILMARCH no sign \"" + name + "\"");
        return control;
    }
    const Glyph *g = &*it;
    control->connect(TM_NAME("draw"), callback(control, [control, g, color] {
                         const Vector2 room = control->get_size();
                         const float k = std::min(room.x, room.y);
                         const Vector2 corner = (room - Vector2(k, k)) * 0.5f;
                         const float width = std::max(2.0f, k * 0.14f);
                         for (const Stroke &stroke : g->strokes) {
                             PackedVector2Array line;
                             for (const Vector2 &p : stroke.points) {
                                 line.push_back(corner + p * k);
                             }
                             control->draw_polyline(line, color, width, true);
                             control->draw_circle(line[0], width * 0.5f, color);
                             control->draw_circle(line[line.size() - 1], width * 0.5f, color);
                         }
                         for (const Vector2 &dot : g->dots) {
                             control->draw_circle(corner + dot * k, width * 0.6f, color);
                         }
                     }));
    return control;
}

} // namespace tilm
