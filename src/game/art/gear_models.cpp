#include "game/art/gear_models.h"

#include <cmath>

#include <godot_cpp/core/error_macros.hpp>

#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm::gear_models {
namespace {

Node3D *shoe_model() {
    Node3D *root = memnew(Node3D);
    shapes::put(root, shapes::bevel_box(Vector3(0.23f, 0.06f, 0.36f), 0.025f), pal::WHITE, Vector3(0, 0.0f, -0.05f));
    shapes::put(root,
                shapes::loft({{-0.2f, 0.06f, 0.045f, 0, -0.02f},
                              {-0.1f, 0.105f, 0.07f},
                              {0.06f, 0.11f, 0.075f},
                              {0.16f, 0.07f, 0.05f, 0, -0.02f}},
                             8, 0.4f),
                pal::RED, Vector3(0, 0.08f, -0.06f), Vector3(-90, 0, 0));
    shapes::put(root, shapes::loft({{0.0f, 0.1f, 0.1f}, {0.12f, 0.085f, 0.085f}}, 8), pal::RED,
                Vector3(0, 0.08f, 0.03f));
    for (const float side : {-1.0f, 1.0f}) { // a little wing at each heel
        shapes::put(root, shapes::ball(Vector3(0.02f, 0.05f, 0.1f), 6, 3), pal::YELLOW,
                    Vector3(side * 0.115f, 0.13f, 0.08f), Vector3(28, side * 22, 0));
    }
    return root;
}

Node3D *bag_model() {
    Node3D *root = memnew(Node3D);
    const Color canvas(0.55f, 0.4f, 0.22f);
    shapes::put(root, shapes::bevel_box(Vector3(0.46f, 0.5f, 0.26f), 0.07f, 0.9f), canvas, Vector3());
    shapes::put(root, shapes::bevel_box(Vector3(0.46f, 0.18f, 0.29f), 0.06f, 0.92f), pal::tone(canvas, -0.25f),
                Vector3(0, 0.19f, 0.01f));
    shapes::put(root, shapes::bevel_box(Vector3(0.3f, 0.2f, 0.12f), 0.04f), pal::tone(canvas, 0.14f),
                Vector3(0, -0.09f, 0.15f));
    shapes::put(root, shapes::bevel_box(Vector3(0.08f, 0.07f, 0.03f), 0.012f), pal::YELLOW, Vector3(0, 0.1f, 0.16f));
    shapes::put(
        root,
        shapes::loft(
            {{-0.27f, 0.075f, 0.075f}, {-0.22f, 0.095f, 0.095f}, {0.22f, 0.095f, 0.095f}, {0.27f, 0.075f, 0.075f}}, 8),
        pal::TEAL, Vector3(0, 0.35f, 0), Vector3(0, 0, 90));
    return root;
}

Node3D *paw_model() {
    Node3D *root = memnew(Node3D);
    const Color pink(1.0f, 0.31f, 0.506f); // ff4f81
    Models::sphere(0.16f, pink, Vector3(0, -0.06, 0), root, Vector3(1.1, 0.9, 0.4), 8);
    for (int i = 0; i < 4; ++i) {
        const double a = (i - 1.5) * 0.55;
        Models::sphere(0.07f, pink, Vector3(std::sin(a) * 0.24, std::cos(a) * 0.2, 0), root, Vector3(1, 1.2, 0.4), 8);
    }
    return root;
}

} // namespace

Node3D *build(const String &name) {
    const String key = "gear_" + name;
    if (name == String("shoe_L") || name == String("shoe_R")) {
        return Models::bake(key, Models::fn_node(&shoe_model));
    }
    if (name == String("bag")) {
        return Models::bake(key, Models::fn_node(&bag_model));
    }
    if (name == String("paw")) { // floats above the head: no shadow, no snow
        return Models::bake(key, Models::fn_node(&paw_model), false, true);
    }
    WARN_PRINT("TILMARCH no gear " + name.left(40));
    return memnew(Node3D);
}

} // namespace tilm::gear_models
