#include "game/shell/farm_camera.h"

#include <cmath>

#include <godot_cpp/classes/viewport.hpp>

#include "glebworks/glebworks.h"

namespace tilm {

namespace {

constexpr float HEIGHT = 11.5f;
constexpr float BACK = 9.6f;
constexpr float LEAD = 1.5f; // the look point lies this far before the screen's centre line
constexpr float RAY_END = 80.0f;
constexpr float VIEW_MARGIN = 4.0f;
constexpr float WIDE_RATE = 2.2f; // 1/s
constexpr float ZOOMS[3] = {0.62f, 1.0f, 1.55f};

float ease(float rate, double delta) {
    return 1.0f - std::exp(-rate * static_cast<float>(delta));
}

} // namespace

void FarmCamera::build(Node *parent) {
    camera = memnew(Camera3D);
    camera->set_name("Camera");
    camera->set_near(0.5);
    camera->set_far(140.0);
    camera->set_rotation(Vector3(-std::atan2(HEIGHT, BACK), 0, 0));
    parent->add_child(camera);
    camera->make_current();
    fit();
}

void FarmCamera::fit() {
    Viewport *viewport = camera && camera->is_inside_tree() ? camera->get_viewport() : nullptr;
    if (!viewport) {
        return;
    }
    Vector2 size = viewport->get_visible_rect().size;
    bool wide = size.x > size.y;
    camera->set_keep_aspect_mode(wide ? Camera3D::KEEP_WIDTH : Camera3D::KEEP_HEIGHT);
    camera->set_fov(wide ? 64.0 : 46.0);
}

void FarmCamera::set_zoom_option(int option) {
    zoom_target = ZOOMS[CLAMP(option, 0, 2)];
}

void FarmCamera::set_distance(float factor) {
    distance = MAX(1.0f, factor);
}

void FarmCamera::focus(const Vector3 &pos, double seconds) {
    focus_point = pos;
    focus_left = seconds;
}

void FarmCamera::place(const Vector3 &player) {
    look = player;
    zoom = zoom_target;
    wide = wide_target;
    apply();
}

void FarmCamera::step(const Vector3 &player, double delta) {
    bool away = focus_left > 0;
    focus_left = MAX(0.0, focus_left - delta);
    look = look.lerp(away ? focus_point : player, ease(away ? 3.0f : 6.0f, delta));
    zoom += (zoom_target - zoom) * ease(8.0f, delta);
    wide += (wide_target - wide) * ease(WIDE_RATE, delta);
    apply();
}

void FarmCamera::apply() {
    camera->set_position(look + Vector3(0, HEIGHT, BACK - LEAD) * zoom * wide * distance);
}

void FarmCamera::publish_view() {
    Viewport *viewport = camera->get_viewport();
    if (!viewport) {
        return;
    }
    Vector2 size = viewport->get_visible_rect().size;
    Rect2 seen;
    for (int i = 0; i < 4; i++) {
        Vector2 corner((i & 1) ? size.x : 0.0f, (i & 2) ? size.y : 0.0f);
        Vector3 from = camera->project_ray_origin(corner);
        Vector3 along = camera->project_ray_normal(corner);
        float reach = along.y < -0.0001f ? MIN(RAY_END, from.y / -along.y) : RAY_END;
        Vector3 at = from + along * reach;
        Vector2 ground(at.x, at.z);
        seen = i == 0 ? Rect2(ground, Vector2()) : seen.expand(ground);
    }
    Glebworks::set_view(seen.grow(VIEW_MARGIN));
}

} // namespace tilm
