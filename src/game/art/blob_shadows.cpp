#include "game/art/blob_shadows.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include <godot_cpp/classes/array_mesh.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/standard_material3d.hpp>
#include <godot_cpp/variant/packed_color_array.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>

#include "game/ports/farm.h"
#include "glebworks/glebworks.h"

namespace tilm {
namespace {

constexpr int SIDES = 16;
constexpr float DARK = 0.42f;        // opacity in the middle
constexpr float CORE = 0.55f;        // part of the radius that is nearly as dark
constexpr float WALL_LIFT = 0.03f;   // above the ground
constexpr float BODY_LIFT = 0.07f;   // above the floors of yards
constexpr float BODY_SPREAD = 0.62f; // of a body's bounds, which its stretched limbs widen
constexpr float WALL_SPREAD = 1.25f;
constexpr float FARMER = 0.5f;
constexpr int GROW_BY = 64;

// Beginnings of the mesh names of all that stands with walls or a trunk.
constexpr const char *WALLS[] = {"house_",          "machine_",    "depot",      "table_stall", "trade_box",
                                 "canteen_",        "worker_",     "service_",   "pharmacy",    "bank",
                                 "security_office", "sentry_box",  "ahwa_kiosk", "tree",        "decor_windmill",
                                 "decor_gazebo",    "decor_statue"};
// Those that drive: round, as they turn.
constexpr const char *WHEELS[] = {"truck_", "supply_van", "van_"};

template <size_t N>
bool begins(const String &name, const char *const (&list)[N]) {
    return std::any_of(std::begin(list), std::end(list), [&name](const char *with) { return name.begins_with(with); });
}

// A round spot of radius 1, dark in its middle, clear at the rim.
Ref<ArrayMesh> spot_mesh() {
    PackedVector3Array points;
    PackedColorArray colors;
    PackedInt32Array corners;
    points.push_back(Vector3());
    colors.push_back(Color(0.08f, 0.10f, 0.16f, DARK));
    for (const float radius : {CORE, 1.0f}) {
        for (int i = 0; i < SIDES; i++) {
            const float a = float(i) / SIDES * 2.0f * std::numbers::pi_v<float>;
            points.push_back(Vector3(std::cos(a) * radius, 0, std::sin(a) * radius));
            colors.push_back(Color(0.08f, 0.10f, 0.16f, radius < 1.0f ? DARK * 0.8f : 0.0f));
        }
    }
    const auto triangle = [&corners](int a, int b, int c) {
        for (const int corner : {a, b, c}) {
            corners.push_back(corner);
        }
    };
    for (int i = 0; i < SIDES; i++) {
        const int a = 1 + i, b = 1 + (i + 1) % SIDES;
        triangle(0, a, b);
        triangle(a, a + SIDES, b + SIDES);
        triangle(a, b + SIDES, b);
    }
    Array arrays;
    arrays.resize(Mesh::ARRAY_MAX);
    arrays[Mesh::ARRAY_VERTEX] = points;
    arrays[Mesh::ARRAY_COLOR] = colors;
    arrays[Mesh::ARRAY_INDEX] = corners;
    Ref<ArrayMesh> mesh;
    mesh.instantiate();
    mesh->add_surface_from_arrays(Mesh::PRIMITIVE_TRIANGLES, arrays);
    return mesh;
}

Ref<StandardMaterial3D> spot_material() {
    Ref<StandardMaterial3D> material;
    material.instantiate();
    material->set_flag(BaseMaterial3D::FLAG_ALBEDO_FROM_VERTEX_COLOR, true);
    material->set_transparency(BaseMaterial3D::TRANSPARENCY_ALPHA);
    material->set_shading_mode(BaseMaterial3D::SHADING_MODE_UNSHADED);
    material->set_depth_draw_mode(BaseMaterial3D::DEPTH_DRAW_DISABLED);
    material->set_cull_mode(BaseMaterial3D::CULL_DISABLED);
    return material;
}

} // namespace

void BlobShadows::take(GeometryInstance3D *g, const AABB &bounds) {
    const Vector3 off = bounds.get_center() - g->get_global_position();
    const Vector2 half = Vector2(bounds.size.x, bounds.size.z) / 2;
    if (const auto *rig = Object::cast_to<MultiMeshInstance3D>(g)) {
        if (String(rig->get_name()) == "Mesh") {
            const float round = std::max(0.2f, std::min(float(half.x), float(half.y)) * BODY_SPREAD * 1.6f);
            spots.push_back({g->get_instance_id(), g, Vector2(round, round), Vector2(), BODY_LIFT});
        }
        return;
    }
    const auto *single = Object::cast_to<MeshInstance3D>(g);
    const String name =
        single != nullptr && single->get_mesh().is_valid() ? String(single->get_mesh()->get_name()) : "";
    if (name.begins_with("hd_") && name.ends_with("/Body")) { // the farmer, who has no rig
        spots.push_back({g->get_instance_id(), g, Vector2(FARMER, FARMER), Vector2(), BODY_LIFT});
    } else if (begins(name, WALLS)) {
        spots.push_back({g->get_instance_id(), g, half * WALL_SPREAD, Vector2(off.x, off.z), WALL_LIFT});
    } else if (begins(name, WHEELS)) {
        const float round = std::min(half.x, half.y) * 1.3f;
        spots.push_back({g->get_instance_id(), g, Vector2(round, round), Vector2(off.x, off.z), WALL_LIFT});
    }
}

bool BlobShadows::sun_throws() {
    if (sun.get() == nullptr) {
        Farm *farm = Farm::current();
        Node *found = farm != nullptr ? farm->root()->get_node_or_null(NodePath("Light/Sun")) : nullptr;
        sun.set(Object::cast_to<DirectionalLight3D>(found));
    }
    const DirectionalLight3D *light = sun.get();
    return light == nullptr || light->has_shadow();
}

void BlobShadows::build(Node *parent) {
    mesh.instantiate();
    mesh->set_transform_format(MultiMesh::TRANSFORM_3D);
    mesh->set_mesh(spot_mesh());
    MultiMeshInstance3D *node = memnew(MultiMeshInstance3D);
    node->set_name("Blobs");
    node->set_multimesh(mesh);
    node->set_material_override(spot_material());
    node->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    node->set_custom_aabb(AABB(Vector3(-1000, -1, -1000), Vector3(2000, 2, 2000))); // in view wherever the camera is
    drawn.set(node);
    parent->add_child(node);
}

void BlobShadows::step(Node *parent) {
    if (sun_throws()) {
        if (MultiMeshInstance3D *node = drawn.get()) {
            node->set_visible(false);
        }
        count = 0;
        drop_one_dead();
        return;
    }
    if (drawn.get() == nullptr) {
        build(parent);
    }
    drawn.get()->set_visible(true);
    lay();
}

// One look a frame: while nothing is laid the list must not grow with everybody who ever came.
void BlobShadows::drop_one_dead() {
    if (spots.empty()) {
        return;
    }
    cursor = (cursor + 1) % spots.size();
    if (ObjectDB::get_instance(spots[cursor].id) == nullptr) {
        spots[cursor] = spots.back();
        spots.pop_back();
    }
}

void BlobShadows::lay() {
    count = 0;
    for (size_t i = 0; i < spots.size();) {
        Spot &spot = spots[i];
        if (ObjectDB::get_instance(spot.id) == nullptr) {
            spot = spots.back();
            spots.pop_back();
            continue;
        }
        i++;
        if (!spot.node->is_inside_tree() || !spot.node->is_visible_in_tree()) {
            continue;
        }
        const Vector3 at = spot.node->get_global_position() + Vector3(spot.mid.x, 0, spot.mid.y);
        if (!Glebworks::in_view(at, std::max(spot.half.x, spot.half.y))) {
            continue;
        }
        if (count >= mesh->get_instance_count()) {
            // Growing empties it: all are laid again.
            mesh->set_instance_count(mesh->get_instance_count() + GROW_BY);
            count = 0;
            i = 0;
            continue;
        }
        const Basis shape = Basis::from_scale(Vector3(spot.half.x, 1, spot.half.y));
        mesh->set_instance_transform(count++, Transform3D(shape, Vector3(at.x, spot.lift, at.z)));
    }
    mesh->set_visible_instance_count(count);
}

} // namespace tilm
