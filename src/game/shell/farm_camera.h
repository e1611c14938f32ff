#pragma once
// The farm's camera: follows the player or a focus point, zooms, and tells the cores which ground it sees.

#include <godot_cpp/classes/camera3d.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class FarmCamera {
public:
    // Makes the camera under `parent`.
    void build(Node *parent);
    Camera3D *node() const { return camera; }

    // Keep-aspect and field of view by the shape of the viewport.
    void fit();
    // Zoom option 0 .. 2: near, normal, far.
    void set_zoom_option(int option);
    // --zoom=: a factor on the distance, at least 1.
    void set_distance(float factor);

    // Looks at `pos` for `seconds` instead of at the player.
    void focus(const Vector3 &pos, double seconds);
    // A scene's step back: a factor on the distance that the camera eases to; place() takes it at once.
    void set_wide(float factor) { wide_target = factor; }
    bool focusing() const { return focus_left > 0; }

    // Jumps to its place over `player`.
    void place(const Vector3 &player);
    void step(const Vector3 &player, double delta);
    // The ground rectangle (x, z) that the four screen corners see, widened by 4, given to the cores.
    void publish_view();

private:
    Camera3D *camera = nullptr;
    Vector3 look;
    Vector3 focus_point;
    double focus_left = 0;
    float zoom = 1.0f;
    float zoom_target = 1.0f;
    float distance = 1.0f;
    float wide = 1.0f;
    float wide_target = 1.0f;

    void apply();
};

} // namespace tilm
