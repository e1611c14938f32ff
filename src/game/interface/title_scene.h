#pragma once
// The living backdrop of the title: a small farm in a viewport of its own, with no link to the saved game. One instance
// is shared by menu and loading screen.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/camera3d.hpp>
#include <godot_cpp/classes/mesh.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/sub_viewport.hpp>
#include <godot_cpp/classes/texture_rect.hpp>

namespace tilm {
using namespace godot;

class TitleScene : public SubViewport {
    GDCLASS(TitleScene, SubViewport)

public:
    // A full-rect picture of the shared scene, which is made when none lives.
    static TextureRect *backdrop();
    static TitleScene *current(); // null when none lives
    static void release();        // frees the shared scene, as when the farm is on the screen
    // Shifts the farm aside by this share of half the screen's width, below 0 to the right.
    static void lean(float share);

    void _ready() override;
    void _process(double delta) override;

protected:
    static void _bind_methods();

private:
    struct Wanderer {
        Node3D *node = nullptr;
        float phase = 0.0f;
        float speed = 0.4f;
        float heading = 0.0f;
        float turn_in = 0.0f;
        float rest = 0.0f;
        float home_x = 0.0f;
        float home_z = 0.0f;
        float range = 2.0f;
    };

    static void attach(TextureRect *picture);
    static Ref<Mesh> round_plane(float radius);
    void fit_to(const Vector2 &size);
    void _fit();
    void build_ground();
    void build_farm();
    void wander(Wanderer &w, float delta);

    static uint64_t s_instance;
    static float s_lean;

    Node3D *stage = nullptr;
    Node3D *sails = nullptr;
    Node3D *bobbing = nullptr;
    Camera3D *camera = nullptr;
    std::vector<Wanderer> wanderers;
    double time = 0.0;
    Vector2 wanted; // of the picture, in the interface's units
    uint32_t seed = 0x2f6e2b1u;
    float random();
};

} // namespace tilm
