#include "game/art/shadow_cull.h"

#include <algorithm>

#include <godot_cpp/classes/camera3d.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/viewport.hpp>
#include <godot_cpp/classes/window.hpp>

#include "farm_items/item_batch_core.h"
#include "farm_items/item_core.h"
#include "game/ports/farm.h"
#include "names.h"

namespace tilm {
namespace {

constexpr double WIDEST = 40;      // larger pieces are ground
constexpr double SHADOW_SLACK = 3; // beside the height: the sun stands lower than 45 degrees
constexpr int LAST = 1000;
constexpr double SUN_DISTANCE = 32; // as far as the sun's shadow map reaches

AABB bounds_of(const GeometryInstance3D *g) {
    const AABB own = g->get_custom_aabb();
    return g->get_global_transform().xform(own.has_surface() ? own : g->get_aabb());
}

} // namespace

void ShadowCull::_ready() {
    if (in_editor()) {
        return;
    }
    set_max_dist(SUN_DISTANCE);
    set_process_priority(LAST); // what walks has made its step: spots lie under feet, not where they were
    get_tree()->connect(TM_NAME("node_added"), callable_mp(this, &ShadowCull::note));
    note_below(get_tree()->get_root());
}

void ShadowCull::note_below(Node *node) {
    note(node);
    for (int32_t i = 0; i < node->get_child_count(true); i++) {
        note_below(node->get_child(i, true));
    }
}

void ShadowCull::note(Node *node) {
    if (Object::cast_to<GeometryInstance3D>(node) != nullptr) {
        fresh.push_back(node->get_instance_id());
    }
}

void ShadowCull::examine(uint64_t id, const Node *root) {
    if (lists(id)) { // customers are kept out of the tree between two visits
        return;
    }
    auto *g = Object::cast_to<GeometryInstance3D>(ObjectDB::get_instance(id));
    if (g == nullptr || !g->is_inside_tree() || !root->is_ancestor_of(g) || g == blobs.node() ||
        Object::cast_to<ItemCore>(g->get_parent()) != nullptr ||
        Object::cast_to<ItemBatchCore>(g->get_parent()) != nullptr) {
        return;
    }
    const AABB box = bounds_of(g);
    if (box.size.x > WIDEST || box.size.z > WIDEST) {
        return;
    }
    // Instances that are not laid out yet may come to lie anywhere.
    if (Object::cast_to<MultiMeshInstance3D>(g) != nullptr && !box.has_surface()) {
        return;
    }
    blobs.take(g, box);
    const double half = std::max(box.size.x, box.size.z) / 2;
    const Vector3 off = box.get_center() - g->get_global_position();
    add_caster(g, g->get_cast_shadows_setting() == GeometryInstance3D::SHADOW_CASTING_SETTING_ON, half,
               Vector2(off.x, off.z), half + std::max(0.0, double(box.position.y + box.size.y)) + SHADOW_SLACK);
}

void ShadowCull::_process(double delta) {
    Farm *farm = Farm::current();
    if (farm == nullptr) {
        return;
    }
    const Node3D *root = farm->root();
    for (size_t i = 0; i < fresh.size(); i++) {
        examine(fresh[i], root);
    }
    fresh.clear();
    const Camera3D *camera = get_viewport()->get_camera_3d();
    tick(delta, camera != nullptr, camera != nullptr ? camera->get_global_position() : Vector3());
    blobs.step(this);
}

} // namespace tilm
