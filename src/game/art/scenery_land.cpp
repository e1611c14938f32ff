// Light, sky and the land itself: the strip's ground, its tufts and stones, hedge trees and hills behind.

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

#include <godot_cpp/classes/directional_light3d.hpp>
#include <godot_cpp/classes/environment.hpp>
#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/classes/plane_mesh.hpp>
#include <godot_cpp/classes/procedural_sky_material.hpp>
#include <godot_cpp/classes/rendering_server.hpp>
#include <godot_cpp/classes/sky.hpp>
#include <godot_cpp/classes/world_environment.hpp>
#include <godot_cpp/variant/packed_float32_array.hpp>

#include "game/art/art_materials.h"
#include "game/art/art_state.h"
#include "game/art/farm_light.h"
#include "game/art/house_parts.h"
#include "game/art/models.h"
#include "game/art/scenery.h"
#include "game/art/shapes.h"
#include "game/data/farm_data.h"
#include "names.h"
#include "rules/regions.h"

namespace tilm {
namespace {

using shapes::ball;
using shapes::loft;
using shapes::put;
using shapes::rnd;

constexpr float LEFT = -84, RIGHT = 516, CHUNK = 24;

struct Spread {
    const char *name;
    Ref<Mesh> mesh;
    Ref<Material> material;
    bool shadows = false;
};

void add_batch(Node3D *land, const Spread &what, const std::vector<Transform3D> &places, const AABB &box) {
    if (places.empty()) {
        return;
    }
    Ref<MultiMesh> multi;
    multi.instantiate();
    multi->set_transform_format(MultiMesh::TRANSFORM_3D);
    multi->set_mesh(what.mesh);
    multi->set_instance_count(int32_t(places.size()));
    multi->set_custom_aabb(box);
    // One write for all: rows of the basis with the origin's part at their ends.
    PackedFloat32Array rows;
    rows.resize(int64_t(places.size()) * 12);
    float *out = rows.ptrw();
    for (const Transform3D &at : places) {
        for (int row = 0; row < 3; row++) {
            const Vector3 &axis = at.basis.rows[row];
            const float part[4] = {float(axis.x), float(axis.y), float(axis.z), float(at.origin[row])};
            out = std::copy(part, part + 4, out);
        }
    }
    multi->set_buffer(rows);
    MultiMeshInstance3D *node = memnew(MultiMeshInstance3D);
    node->set_name(what.name);
    node->set_multimesh(multi);
    node->set_material_override(what.material);
    if (!what.shadows) {
        node->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    }
    land->add_child(node, true);
}

Transform3D place(const Vector3 &at, float yaw, float scale) {
    return Transform3D(Basis(Vector3(0, 1, 0), yaw).scaled(Vector3(scale, scale, scale)), at);
}

Ref<Mesh> tuft_mesh() {
    return Models::baked_mesh("grass_tuft", Models::builder([]() {
                                  Node3D *at = memnew(Node3D);
                                  for (int i = 0; i < 7; i++) {
                                      put(at,
                                          shapes::blade(0.10f, rnd(301, i, 0.20f, 0.38f), rnd(302, i, 0.05f, 0.17f)),
                                          pal::tone(i % 2 ? 0x4f9a3a : 0x64b146, rnd(304, i, -0.06f, 0.10f)),
                                          Vector3(rnd(305, i, -0.10f, 0.10f), 0, rnd(306, i, -0.08f, 0.08f)),
                                          Vector3(0, 51.0f * float(i), 0));
                                  }
                                  return at;
                              }));
}

Ref<Mesh> flower_mesh() {
    return Models::baked_mesh(
        "meadow_flowers", Models::builder([]() {
            Node3D *at = memnew(Node3D);
            const uint32_t paints[] = {pal::WHITE, pal::YELLOW, pal::PINK};
            for (int i = 0; i < 3; i++) {
                const Vector3 foot(rnd(311, i, -0.24f, 0.24f), 0, rnd(312, i, -0.2f, 0.2f));
                const float tall = rnd(313, i, 0.14f, 0.24f);
                put(at, shapes::blade(0.06f, tall * 1.1f, 0.02f), pal::LEAF, foot);
                put(at, ball(Vector3(0.075f, 0.035f, 0.075f), 6, 2), paints[i], foot + Vector3(0, tall, 0));
                put(at, ball(Vector3(0.03f, 0.03f, 0.03f), 5, 2), pal::ORANGE, foot + Vector3(0, tall + 0.03f, 0));
            }
            return at;
        }));
}

Ref<Mesh> stone_mesh() {
    MeshInstance3D *node = Object::cast_to<MeshInstance3D>(Scenery::stone(1));
    const Ref<Mesh> mesh = node->get_mesh();
    memdelete(node);
    return mesh;
}

Ref<Mesh> tree_mesh(float v) {
    MeshInstance3D *node = Models::any_tree(v);
    const Ref<Mesh> mesh = node->get_mesh();
    memdelete(node);
    return mesh;
}

bool on_lake(float x, float z, float margin) {
    const float dx = (x - Scenery::LAKE_X) / (Scenery::LAKE_HALF_X + margin);
    const float dz = (z - Scenery::LAKE_Z) / (Scenery::LAKE_HALF_Z + margin);
    return dx * dx * dx * dx + dz * dz * dz * dz < 1.0f;
}

// Where the plan puts something on the ground: rectangles that grass keeps off.
std::vector<Rect2> taken_ground() {
    const rules::Rect home = rules::HOMESTEAD;
    std::vector<Rect2> taken = {Rect2(home.x, home.y, home.w, home.h)};
    const Array plan = FarmData::plan();
    for (int64_t i = 0; i < plan.size(); i++) {
        const Dictionary entry = plan[i];
        const bool producer = entry.get("kind", Variant()) == Variant("producer");
        for (const char *key : {"pos", "pad", "pallet"}) {
            if (entry.has(key)) {
                const Vector2 at = entry[key];
                const Vector2 half = producer && key[1] == 'o' ? Vector2(3.2f, 4.2f) : Vector2(1.75f, 1.75f);
                taken.push_back(Rect2(at - half, half * 2));
            }
        }
        if (entry.has("rect")) {
            taken.push_back(entry["rect"]);
        }
        if (entry.get("kind", Variant()) == Variant("stall")) {
            // The customers' way, and the mat where their money lies.
            const Vector2 at = entry["pos"];
            taken.push_back(Rect2(at.x - 1.25f, 6.4f, 2.5f, 16.0f));
            taken.push_back(Rect2(at.x + 1.5f, at.y - 1.1f, 2.2f, 2.2f));
        }
    }
    return taken;
}

std::vector<Rect2> within(const std::vector<Rect2> &all, float x0) {
    std::vector<Rect2> near;
    std::copy_if(all.begin(), all.end(), std::back_inserter(near), [x0](const Rect2 &area) {
        return area.position.x < x0 + CHUNK && area.position.x + area.size.x > x0;
    });
    return near;
}

// Grass keeps off the walkways and off whatever the plan puts down.
bool free_ground(const std::vector<Rect2> &taken, float x, float z) {
    if (std::fabs(z - 1.2f) < 1.7f || std::fabs(z - Scenery::LANE_Z) < Scenery::LANE_HALF || on_lake(x, z, 0.0f)) {
        return false;
    }
    for (const Rect2 &area : taken) {
        if (area.has_point(Vector2(x, z))) {
            return false;
        }
    }
    return true;
}

// A meadow grows in companies of `company` plants within `reach` metres, every third plant alone between them: evenly
// strewn it would look like a pattern.
struct Growth {
    int count, company;
    float reach, low, high;
};

std::vector<Transform3D> scatter(const std::vector<Rect2> &taken, int seed, float x0, const Growth &growth) {
    const auto &[count, company, reach, low, high] = growth;
    std::vector<Transform3D> out;
    for (int i = 0; i < count; i++) {
        const int at = i % 3 == 0 ? i : count + i / company; // whose place it shares
        float x = x0 + CHUNK * rnd(seed, at), z = rnd(seed + 1, at, -34, 26);
        if (i % 3 != 0) {
            const float turn = 6.283f * rnd(seed + 4, i), away = reach * std::sqrt(rnd(seed + 5, i));
            x = std::clamp(x + away * std::cos(turn), x0, x0 + CHUNK);
            z += 0.7f * away * std::sin(turn);
        }
        if (free_ground(taken, x, z)) {
            out.push_back(place(Vector3(x, 0, z), rnd(seed + 2, i) * 6.283f, rnd(seed + 3, i, low, high)));
        }
    }
    return out;
}

// A dense hedge of trees along the back, thinner woods behind it.
void plant_trees(Node3D *land, int chunk, float x0) {
    const Spread kinds[] = {{"Trees", tree_mesh(0.1f), Models::tree_material()},
                            {"Pines", tree_mesh(0.7f), Models::tree_material()},
                            {"Birches", tree_mesh(0.9f), Models::tree_material()}};
    std::vector<Transform3D> rows[3];
    constexpr int COUNT = 46;
    const int seed = 400 + 10 * chunk;
    for (int i = 0; i < COUNT; i++) {
        const float depth = rnd(seed, i);
        const float x = x0 + CHUNK * (float(i % (COUNT / 2)) + rnd(seed + 1, i)) / float(COUNT / 2);
        const float z = -35.2f - depth * depth * 16.0f;
        const float pick = rnd(seed + 2, i);
        if (on_lake(x, z, 1.6f)) {
            continue;
        }
        rows[pick < 0.45f  ? 0
             : pick < 0.8f ? 1
                           : 2]
            .push_back(
                place(Vector3(x, -0.05f, z), rnd(seed + 3, i) * 6.283f, rnd(seed + 4, i, 0.95f, 1.45f) + depth * 0.3f));
    }
    const AABB box(Vector3(x0 - 3, -1, -56), Vector3(CHUNK + 6, 8, 24));
    for (size_t k = 0; k < 3; k++) {
        add_batch(land, kinds[k], rows[k], box);
    }
}

void raise_hills(Node3D *land) {
    MeshInstance3D *hills =
        Models::bake("hills", Models::builder([]() {
                         Node3D *at = memnew(Node3D);
                         for (int i = 0; i < 30; i++) {
                             const float r = rnd(501, i, 16, 34);
                             const float far = i % 2 ? -78.0f : -62.0f;
                             put(at, ball(Vector3(r, r * rnd(502, i, 0.28f, 0.42f), r * 0.7f), 11, 4),
                                 pal::tone(i % 2 ? 0x86b98d : 0x7fb55c, rnd(503, i, -0.05f, 0.08f)),
                                 Vector3(LEFT - 30 + 24.0f * float(i) + rnd(504, i, -6, 6), -1.5f, far - r * 0.3f),
                                 Vector3(0, rnd(505, i, 0, 40), 0));
                         }
                         return at;
                     }),
                     false);
    hills->set_name("Hills");
    land->add_child(hills);
}

// A rowing boat beside the landing stage, its bow to the shore.
void moor_boat(Node3D *parent, const Vector3 &where) {
    Node3D *at = shapes::joint(parent, "Boat", where);
    at->set_rotation_degrees(Vector3(0, 14, 0));
    const auto hull = [at](float low, float high, float k, uint32_t paint) {
        put(at,
            shapes::extrude({Vector2(-0.52f * k, -1.1f * k), Vector2(0.52f * k, -1.1f * k), Vector2(0.66f * k, 0.1f),
                             Vector2(0.40f * k, 0.9f * k), Vector2(0, 1.35f * k), Vector2(-0.40f * k, 0.9f * k),
                             Vector2(-0.66f * k, 0.1f)},
                            high - low),
            paint, Vector3(0, (low + high) / 2, 0), Vector3(90, 0, 0));
    };
    hull(-0.1f, 0.30f, 0.92f, pal::RED);
    hull(0.26f, 0.36f, 1.0f, pal::CREAM);
    hull(0.30f, 0.37f, 0.84f, pal::WOOD_DARK);
    for (const float z : {-0.5f, 0.45f}) {
        put(at, shapes::bevel_box(Vector3(1.0f, 0.08f, 0.26f), 0.03f), pal::WOOD_LIGHT, Vector3(0, 0.40f, z));
    }
    for (const float side : {-1.0f, 1.0f}) {
        put(at, shapes::bevel_box(Vector3(0.07f, 0.07f, 1.9f), 0.02f), pal::WOOD_LIGHT,
            Vector3(side * 0.30f, 0.47f, -0.1f), Vector3(0, side * 9, 0));
        put(at, shapes::bevel_box(Vector3(0.20f, 0.05f, 0.46f), 0.02f), pal::CREAM,
            Vector3(side * 0.47f, 0.47f, -1.05f), Vector3(0, side * 9, 0));
    }
}

// Reeds, stones, lilies and a landing stage on the near side, where water is fetched.
Node3D *shore() {
    MeshInstance3D *node = Models::bake(
        "lake_shore", Models::builder([]() {
            Node3D *at = memnew(Node3D);
            for (int i = 0; i < 34; i++) {
                const float a = 6.283f * (float(i) + rnd(511, i, -0.3f, 0.3f)) / 34.0f;
                const float c = std::cos(a), s = std::sin(a);
                if (std::fabs(a - 1.571f) < 0.35f) {
                    continue; // the landing stage
                }
                const auto side = [](float v) { return std::copysign(std::sqrt(std::fabs(v)), v); };
                const Vector3 edge(side(c) * Scenery::LAKE_HALF_X * 0.93f, 0, side(s) * Scenery::LAKE_HALF_Z * 0.93f);
                const float r = rnd(512, i, 0.2f, 0.5f);
                if (i % 3 != 1) {
                    put(at, ball(Vector3(r, r * 0.55f, r * 0.8f), 7, 3),
                        pal::tone(pal::STONE, rnd(513, i, -0.12f, 0.1f)), edge, Vector3(0, rnd(514, i, 0, 180), 0));
                }
                for (int k = 0; i % 3 == 1 && k < 5; k++) {
                    const Vector3 foot = edge + Vector3(rnd(515 + k, i, -0.4f, 0.4f), 0, rnd(521 + k, i, -0.3f, 0.3f));
                    const float tall = rnd(527 + k, i, 0.7f, 1.15f);
                    put(at, loft({{0, 0.045f, 0.045f}, {tall, 0.02f, 0.02f}}, 4), pal::LEAF_DARK, foot,
                        Vector3(rnd(533 + k, i, -8, 8), 0, rnd(539 + k, i, -8, 8)));
                    put(at, loft({{0, 0.07f, 0.07f}, {0.26f, 0.06f, 0.06f}}, 5), pal::BROWN,
                        foot + Vector3(0, tall - 0.12f, 0));
                }
            }
            const float front = Scenery::LAKE_HALF_Z;
            moor_boat(at, Vector3(2.3f, 0.02f, front - 1.7f));
            // Water lilies in the shallows on both sides of the stage.
            for (int i = 0; i < 9; i++) {
                const float side = i % 2 ? 1.0f : -1.0f;
                const Vector3 pad(side * rnd(561, i, 1.9f, 5.2f), 0.05f, front - rnd(562, i, 1.0f, 2.1f));
                const float r = rnd(563, i, 0.24f, 0.46f);
                put(at, loft({{0, r, r * 0.85f}, {0.03f, r * 0.9f, r * 0.76f}}, 8),
                    pal::tone(pal::LEAF, rnd(564, i, -0.12f, 0.12f)), pad, Vector3(0, rnd(565, i, 0, 90), 0));
                if (i % 3 == 0) {
                    put(at, ball(Vector3(0.15f, 0.09f, 0.15f), 7, 3), pal::PINK, pad + Vector3(0.05f, 0.07f, 0));
                    put(at, ball(Vector3(0.06f, 0.06f, 0.06f), 5, 3), pal::YELLOW, pad + Vector3(0.05f, 0.15f, 0));
                }
            }
            for (int i = 0; i < 6; i++) {
                put(at, shapes::bevel_box(Vector3(1.9f, 0.1f, 0.34f), 0.03f),
                    pal::tone(pal::WOOD_LIGHT, rnd(551, i, -0.1f, 0.06f)),
                    Vector3(0, 0.3f, front + 0.35f - 0.4f * float(i)));
            }
            for (const float x : {-0.85f, 0.85f}) {
                for (const float z : {0.2f, -1.6f}) {
                    put(at, loft({{-0.3f, 0.1f, 0.1f}, {0.75f, 0.08f, 0.08f}}, 6), pal::WOOD_DARK,
                        Vector3(x, 0, front + z));
                }
            }
            return at;
        }));
    node->set_name("Shore");
    node->set_position(Vector3(Scenery::LAKE_X, 0, Scenery::LAKE_Z));
    return node;
}

} // namespace

Node3D *Scenery::light(Node *parent) {
    Node3D *sky_root = memnew(Node3D);
    sky_root->set_name("Light");
    DirectionalLight3D *sun = memnew(DirectionalLight3D);
    sun->set_name("Sun");
    sun->set_param(Light3D::PARAM_SHADOW_OPACITY, 0.9f);
    sun->set_param(Light3D::PARAM_SHADOW_MAX_DISTANCE, 32);
    sun->set_shadow_mode(DirectionalLight3D::SHADOW_ORTHOGONAL);
    sky_root->add_child(sun);

    Ref<ProceduralSkyMaterial> paint;
    paint.instantiate();
    Ref<Sky> dome;
    dome.instantiate();
    dome->set_material(paint);
    Ref<Environment> air;
    air.instantiate();
    air->set_background(Environment::BG_SKY);
    air->set_sky(dome);
    air->set_ambient_source(Environment::AMBIENT_SOURCE_COLOR);
    air->set_tonemapper(Environment::TONE_MAPPER_LINEAR);
    air->set_fog_enabled(true);
    air->set_fog_mode(Environment::FOG_MODE_DEPTH);
    air->set_fog_light_energy(1.0f);
    air->set_fog_depth_curve(1.2f);
    air->set_fog_density(0.85f);
    air->set_fog_sky_affect(0.25f);
    WorldEnvironment *env = memnew(WorldEnvironment);
    env->set_name("Env");
    env->set_environment(air);
    sky_root->add_child(env);
    air->set_reflection_source(Environment::REFLECTION_SOURCE_DISABLED); // nothing here mirrors
    sun->set_shadow(true);
    FarmLight::apply(sky_root, rules::SkyState());
    // The camera sees some 30 metres: a small map is sharp enough and much cheaper.
    RenderingServer::get_singleton()->directional_shadow_atlas_set_size(2048, true);
    parent->add_child(sky_root);
    return sky_root;
}

void Scenery::tune_light(Node3D *light, bool shadows) {
    auto *sun = Object::cast_to<DirectionalLight3D>(light->get_node_or_null(NodePath("Sun")));
    if (sun == nullptr) {
        return;
    }
    sun->set_shadow(shadows);
    FarmLight::refresh(light);
}

Scenery::Strengths Scenery::strengths(bool shadows) {
    return shadows ? Strengths{0.36f, 1.0f} : Strengths{0.92f, 1.55f};
}

Ref<ShaderMaterial> Scenery::ground_material() {
    if (art().ground.is_null()) {
        Ref<ShaderMaterial> material;
        material.instantiate();
        material->set_shader(Models::shader_material(art_shader::GROUND)->get_shader());
        material->set_shader_parameter(TM_NAME("paths"), 1.0);
        material->set_shader_parameter(TM_NAME("lane_z"), Scenery::LANE_Z);
        art().ground = material;
    }
    return art().ground;
}

Ref<ShaderMaterial> Scenery::dry_ground_material(const Color &color, float dry) {
    const String key = vformat("ground@%s_%.2f", color.to_html(false), dry);
    Ref<ShaderMaterial> material = art().shaders.get(key, Variant());
    if (material.is_null()) {
        material.instantiate();
        material->set_shader(ground_material()->get_shader());
        material->set_shader_parameter(TM_NAME("dry_color"), color);
        material->set_shader_parameter(TM_NAME("dry_amount"), dry);
        art().shaders[key] = material;
    }
    return material;
}

void Scenery::wet_ground(bool wet) {
    const Ref<Shader> shader = Models::shader_material(wet ? art_shader::GROUND_WET : art_shader::GROUND)->get_shader();
    if (ground_material()->get_shader() == shader) {
        return;
    }
    ground_material()->set_shader(shader);
    const Array keys = art().shaders.keys();
    for (int64_t i = 0; i < keys.size(); i++) {
        if (static_cast<String>(keys[i]).begins_with("ground@")) {
            const Ref<ShaderMaterial> ground = art().shaders[keys[i]];
            ground->set_shader(shader);
        }
    }
}

Node3D *Scenery::lake(const Vector2 &half) {
    Ref<PlaneMesh> plane;
    plane.instantiate();
    plane->set_size(half * 2);
    const String key = vformat("lake@%.1fx%.1f", half.x, half.y);
    Ref<ShaderMaterial> material = art().shaders.get(key, Variant());
    if (material.is_null()) {
        material.instantiate();
        material->set_shader(Models::shader_material(art_shader::LAKE)->get_shader());
        material->set_shader_parameter(TM_NAME("half_size"), half);
        art().shaders[key] = material;
    }
    MeshInstance3D *water = memnew(MeshInstance3D);
    water->set_name("Lake");
    water->set_mesh(plane);
    water->set_material_override(material);
    water->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    return water;
}

Node3D *Scenery::ground(Node *parent) {
    Node3D *land = memnew(Node3D);
    land->set_name("Land");
    Ref<PlaneMesh> plane;
    plane.instantiate();
    plane->set_size(Vector2(RIGHT - LEFT + 200, 200));
    MeshInstance3D *floor = memnew(MeshInstance3D);
    floor->set_name("Ground");
    floor->set_mesh(plane);
    floor->set_material_override(ground_material());
    floor->set_position(Vector3((LEFT + RIGHT) / 2, 0, -25));
    floor->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    land->add_child(floor);

    const Spread tufts = {"Tufts", tuft_mesh(), Models::shader_material(art_shader::TUFT)};
    const Spread blooms = {"Flowers", flower_mesh(), Models::shader_material(art_shader::TUFT)};
    const Spread stones = {"Stones", stone_mesh(), Models::farm_material(true)};
    const std::vector<Rect2> all_taken = taken_ground();
    int chunk = 0;
    for (float x = LEFT; x < RIGHT; x += CHUNK, chunk++) {
        const AABB box(Vector3(x - 1, -1, -35), Vector3(CHUNK + 2, 3, 64));
        const std::vector<Rect2> taken = within(all_taken, x);
        add_batch(land, tufts, scatter(taken, 1000 + 40 * chunk, x, {620, 9, 1.5f, 0.6f, 1.25f}), box);
        add_batch(land, blooms, scatter(taken, 1010 + 40 * chunk, x, {110, 11, 1.3f, 0.8f, 1.3f}), box);
        add_batch(land, stones, scatter(taken, 1020 + 40 * chunk, x, {26, 3, 0.9f, 0.5f, 1.1f}), box);
        plant_trees(land, chunk, x);
    }
    raise_hills(land);
    Node3D *water = lake(Vector2(LAKE_HALF_X, LAKE_HALF_Z));
    water->set_position(Vector3(LAKE_X, 0.03f, LAKE_Z));
    land->add_child(water);
    land->add_child(shore());
    parent->add_child(land);
    return land;
}

} // namespace tilm
