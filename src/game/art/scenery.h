#pragma once
// What stands round the farm: ground, light, sky, fences, covers, signs, paths, plates, hills. Plain static functions;
// each adds to `parent` and returns its node, or returns a loose node when it takes no parent.

#include <godot_cpp/classes/directional_light3d.hpp>
#include <godot_cpp/classes/environment.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/shader_material.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector2.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

struct Scenery {
    // Sun "Sun" (DirectionalLight3D) and WorldEnvironment "Env" with sky, ambient and fog.
    static Node3D *light(Node *parent);
    // Sets the sun's shadow and the strengths that go with it: a shadowed sun is added after encoding, a plain one
    // before, so the same picture needs other numbers. `light` is what light() returned.
    static void tune_light(Node3D *light, bool shadows);
    struct Strengths {
        float sun, ambient;
    };
    static Strengths strengths(bool shadows);
    // Whole strip x -84..516: ground, back hills, hedge trees, tufts, stones, customers' lawn and lane.
    static Node3D *ground(Node *parent);
    // The ground's material, for the change to the wet shader.
    static Ref<ShaderMaterial> ground_material();
    // A ground of one's own, `dry` of the way to `color`; it follows wet_ground() too.
    static Ref<ShaderMaterial> dry_ground_material(const Color &color, float dry);
    // All grounds change between the dry and the wet shader.
    static void wet_ground(bool wet);
    // The lake behind the farm, a plane of twice `half` at the origin, its shore wound by the shader.
    static Node3D *lake(const Vector2 &half);
    // Where the farm's own lake lies, and its half size; hedge and grass keep off it.
    static constexpr float LAKE_X = 1.0f, LAKE_Z = -39.5f, LAKE_HALF_X = 11.0f, LAKE_HALF_Z = 6.5f;
    // Middle of the lane along x on which customers come, and half its width with the frayed edge; the decorations of
    // their lawn stand before it.
    static constexpr float LANE_Z = 20.0f, LANE_HALF = 2.1f;
    // Fence of `length` along z, centred on its origin (37.2 between regions).
    static Node3D *fence(float length);
    // Small pasture fence along x of `length`, centred.
    static Node3D *rail_fence(float length);
    // Dark cover over a closed land whose centre is x; the node itself stands at the origin.
    static Node3D *cover(float x);
    // Its words; big glyphs, laid out at the end of the frame: not for many covers at once.
    static void cover_words(Node3D *cover, const String &title, float x);
    static Node3D *farmhouse(int stage = 1);
    // Another stage, 0..3, of the house that farmhouse() returned.
    static void set_farmhouse_stage(Node3D *house, int stage);
    // Well, wood pile, washing line, beds and lantern round the house, merged; origin as the house.
    static Node3D *homestead();
    // Warm light on the ground round a lantern, shown by night.
    static Node3D *glow_pool(float radius);
    static Node3D *bench();
    // Hanging name board of a region on two posts, front to +z.
    static Node3D *region_sign();
    static void sign_words(Node3D *sign, const String &title);
    // Worn strip on the ground, flat at y 0.022, size x by z.
    static Node3D *path_strip(const Vector2 &size);
    // Plate under a zone with a text on its front edge (baked under zone_plate_<size>).
    static Node3D *zone_plate(const Vector2 &size, const String &text);
    // Mat of a cash tile, 1.9 x 1.9, with a coin on it.
    static Node3D *cash_mat();
    // Price board on a pole for a stall.
    static Node3D *price_pole();
    // Soft dark disc just above the ground, where no shadow map falls.
    static Node3D *blob_shadow(float radius);
    static Node3D *stone(int variant);
};

} // namespace tilm
