#include "game/interface/decor_picture.h"

#include <algorithm>
#include <cmath>
#include <span>

#include <godot_cpp/variant/packed_vector2_array.hpp>
#include <godot_cpp/variant/transform2d.hpp>

#include "game/kit/ui.h"
#include "names.h"

namespace tilm {
namespace {

enum class Form { box, oval, roof };

// In a square of 1 x 1: middle, size, and a turn in degrees.
struct Dab {
    Form form;
    uint32_t rgb;
    float x, y, w, h;
    float turn = 0;
};

// clang-format off
constexpr Dab FLOWERS[] = {
    {Form::oval, 0x9e9a90, 0.5f, 0.78f, 0.86f, 0.26f}, {Form::oval, 0x5d4037, 0.5f, 0.74f, 0.72f, 0.18f},
    {Form::box, 0x43a047, 0.28f, 0.62f, 0.04f, 0.26f}, {Form::box, 0x43a047, 0.5f, 0.54f, 0.04f, 0.40f},
    {Form::box, 0x43a047, 0.72f, 0.62f, 0.04f, 0.26f}, {Form::oval, 0xe53935, 0.28f, 0.46f, 0.20f, 0.18f},
    {Form::oval, 0xf06292, 0.5f, 0.32f, 0.24f, 0.22f}, {Form::oval, 0x8e24aa, 0.72f, 0.46f, 0.20f, 0.18f},
    {Form::oval, 0xffd54f, 0.28f, 0.46f, 0.08f, 0.07f}, {Form::oval, 0xfff176, 0.5f, 0.32f, 0.10f, 0.09f},
    {Form::oval, 0xffd54f, 0.72f, 0.46f, 0.08f, 0.07f},
};
constexpr Dab BENCH[] = {
    {Form::box, 0x6d6a64, 0.24f, 0.72f, 0.07f, 0.24f}, {Form::box, 0x6d6a64, 0.76f, 0.72f, 0.07f, 0.24f},
    {Form::box, 0x8d6e63, 0.5f, 0.34f, 0.80f, 0.09f}, {Form::box, 0xa1887f, 0.5f, 0.46f, 0.80f, 0.09f},
    {Form::box, 0x8d6e63, 0.5f, 0.62f, 0.86f, 0.10f},
};
constexpr Dab TREE[] = {
    {Form::box, 0x6d4c41, 0.5f, 0.76f, 0.12f, 0.28f}, {Form::oval, 0x2e7d32, 0.34f, 0.46f, 0.44f, 0.40f},
    {Form::oval, 0x2e7d32, 0.66f, 0.46f, 0.44f, 0.40f}, {Form::oval, 0x43a047, 0.5f, 0.32f, 0.50f, 0.44f},
    {Form::oval, 0x66bb6a, 0.44f, 0.25f, 0.20f, 0.16f},
};
constexpr Dab LAMP[] = {
    {Form::oval, 0xfff3c4, 0.5f, 0.26f, 0.62f, 0.50f}, {Form::oval, 0x6d6a64, 0.5f, 0.88f, 0.36f, 0.10f},
    {Form::box, 0x2f4f46, 0.5f, 0.64f, 0.07f, 0.46f}, {Form::box, 0xffd54f, 0.5f, 0.30f, 0.20f, 0.20f},
    {Form::roof, 0x2f4f46, 0.5f, 0.14f, 0.36f, 0.14f}, {Form::box, 0x2f4f46, 0.5f, 0.42f, 0.24f, 0.05f},
};
constexpr Dab FOUNTAIN[] = {
    {Form::oval, 0x9e9a90, 0.5f, 0.78f, 0.90f, 0.28f}, {Form::oval, 0x4fc3f7, 0.5f, 0.74f, 0.76f, 0.18f},
    {Form::box, 0xb5b0a6, 0.5f, 0.60f, 0.12f, 0.30f}, {Form::oval, 0x9e9a90, 0.5f, 0.46f, 0.46f, 0.14f},
    {Form::oval, 0x4fc3f7, 0.5f, 0.44f, 0.36f, 0.08f}, {Form::roof, 0xb3e5fc, 0.5f, 0.28f, 0.12f, 0.32f},
    {Form::oval, 0x81d4fa, 0.36f, 0.32f, 0.08f, 0.16f, 30}, {Form::oval, 0x81d4fa, 0.64f, 0.32f, 0.08f, 0.16f, -30},
};
constexpr Dab STATUE[] = {
    {Form::box, 0x9e9a90, 0.5f, 0.84f, 0.54f, 0.10f}, {Form::box, 0xb5b0a6, 0.5f, 0.70f, 0.40f, 0.20f},
    {Form::box, 0xffc81f, 0.5f, 0.70f, 0.22f, 0.10f}, {Form::oval, 0xffc81f, 0.47f, 0.46f, 0.44f, 0.32f},
    {Form::roof, 0xffb300, 0.24f, 0.36f, 0.20f, 0.24f, -40}, {Form::oval, 0xffc81f, 0.66f, 0.28f, 0.20f, 0.22f},
    {Form::roof, 0xff8f00, 0.79f, 0.30f, 0.08f, 0.10f, 90}, {Form::oval, 0xff8f00, 0.65f, 0.16f, 0.12f, 0.08f},
    {Form::oval, 0x4e342e, 0.69f, 0.26f, 0.04f, 0.04f}, {Form::oval, 0xffb300, 0.43f, 0.47f, 0.22f, 0.14f},
};
constexpr Dab WINDMILL[] = {
    {Form::box, 0x6d6a64, 0.5f, 0.90f, 0.50f, 0.08f}, {Form::box, 0xe8f0f5, 0.5f, 0.66f, 0.34f, 0.44f},
    {Form::roof, 0x1e88e5, 0.5f, 0.35f, 0.46f, 0.24f}, {Form::box, 0x8d6e63, 0.5f, 0.79f, 0.12f, 0.18f},
    {Form::box, 0xe53935, 0.37f, 0.29f, 0.09f, 0.36f, -45}, {Form::box, 0xb0bec5, 0.63f, 0.29f, 0.09f, 0.36f, 45},
    {Form::box, 0xb0bec5, 0.37f, 0.55f, 0.09f, 0.36f, 45}, {Form::box, 0xe53935, 0.63f, 0.55f, 0.09f, 0.36f, -45},
    {Form::oval, 0x6d4c41, 0.5f, 0.42f, 0.10f, 0.10f},
};
constexpr Dab GAZEBO[] = {
    {Form::box, 0xb5b0a6, 0.5f, 0.86f, 0.86f, 0.10f}, {Form::box, 0xffffff, 0.20f, 0.66f, 0.06f, 0.34f},
    {Form::box, 0xffffff, 0.40f, 0.66f, 0.06f, 0.34f}, {Form::box, 0xffffff, 0.60f, 0.66f, 0.06f, 0.34f},
    {Form::box, 0xffffff, 0.80f, 0.66f, 0.06f, 0.34f}, {Form::box, 0xfff3d6, 0.29f, 0.74f, 0.16f, 0.12f},
    {Form::box, 0xfff3d6, 0.71f, 0.74f, 0.16f, 0.12f}, {Form::roof, 0x26a69a, 0.5f, 0.34f, 0.94f, 0.34f},
    {Form::oval, 0xffc81f, 0.5f, 0.15f, 0.09f, 0.09f},
};
constexpr Dab FRIENDS[] = {
    {Form::box, 0xf48fb1, 0.5f, 0.84f, 0.56f, 0.12f}, {Form::box, 0xf8bbd0, 0.5f, 0.72f, 0.44f, 0.14f},
    {Form::roof, 0xffc81f, 0.36f, 0.52f, 0.24f, 0.30f}, {Form::roof, 0xffc81f, 0.64f, 0.54f, 0.24f, 0.26f},
    {Form::oval, 0xffc81f, 0.36f, 0.34f, 0.17f, 0.17f}, {Form::oval, 0xffc81f, 0.64f, 0.38f, 0.16f, 0.16f},
    {Form::oval, 0xe53935, 0.46f, 0.16f, 0.11f, 0.11f}, {Form::oval, 0xe53935, 0.54f, 0.16f, 0.11f, 0.11f},
    {Form::roof, 0xe53935, 0.5f, 0.225f, 0.17f, 0.12f, 180},
};
// clang-format on

struct Row {
    const char *type;
    std::span<const Dab> dabs;
};
constexpr Row PICTURES[] = {{"flowers", FLOWERS},   {"bench", BENCH},       {"tree", TREE},
                            {"lamp", LAMP},         {"fountain", FOUNTAIN}, {"statue", STATUE},
                            {"windmill", WINDMILL}, {"gazebo", GAZEBO},     {"friends", FRIENDS}};

PackedVector2Array outline_of(const Dab &dab, float side) {
    PackedVector2Array points;
    switch (dab.form) {
    case Form::box:
        for (const Vector2 &p : {Vector2(-1, -1), Vector2(1, -1), Vector2(1, 1), Vector2(-1, 1)}) {
            points.push_back(p);
        }
        break;
    case Form::roof:
        for (const Vector2 &p : {Vector2(0, -1), Vector2(1, 1), Vector2(-1, 1)}) {
            points.push_back(p);
        }
        break;
    case Form::oval: {
        constexpr int corners = 20;
        for (int i = 0; i < corners; ++i) {
            const float a = static_cast<float>(Math_TAU) * static_cast<float>(i) / corners;
            points.push_back(Vector2(std::cos(a), std::sin(a)));
        }
        break;
    }
    }
    const float turn = dab.turn * static_cast<float>(Math_PI) / 180.0f;
    for (int64_t i = 0; i < points.size(); ++i) {
        const Vector2 p = Vector2(points[i].x * dab.w, points[i].y * dab.h) * 0.5f;
        points.set(i, (p.rotated(turn) + Vector2(dab.x, dab.y)) * side);
    }
    return points;
}

} // namespace

Control *decor_picture(const String &type, double size) {
    Control *control = memnew(Control);
    control->set_custom_minimum_size(Vector2(static_cast<real_t>(size), static_cast<real_t>(size)));
    control->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    control->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    std::span<const Dab> dabs;
    for (const Row &row : PICTURES) {
        dabs = type == String(row.type) ? row.dabs : dabs;
    }
    control->connect(TM_NAME("draw"), UI::callback(control, [control, dabs] {
                         const float side = std::min(control->get_size().x, control->get_size().y);
                         const Dab lawn = {Form::oval, 0xaed581, 0.5f, 0.88f, 1.0f, 0.22f};
                         control->draw_colored_polygon(outline_of(lawn, side), Color::hex((lawn.rgb << 8) | 0xff));
                         for (const Dab &dab : dabs) {
                             control->draw_colored_polygon(outline_of(dab, side), Color::hex((dab.rgb << 8) | 0xff));
                         }
                     }));
    return control;
}

} // namespace tilm
