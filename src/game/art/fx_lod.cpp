#include "game/art/fx_lod.h"

#include <godot_cpp/classes/cpu_particles3d.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/window.hpp>

#include "game/art/prim_cache.h"
#include "glebworks/glebworks.h"
#include "names.h"

namespace tilm {
namespace {

constexpr double LOOK_SEC = 0.25;
constexpr double MARGIN = 6.0;

void set_running(CPUParticles3D *fx, bool run) {
    const Node::ProcessMode mode = run ? Node::PROCESS_MODE_INHERIT : Node::PROCESS_MODE_DISABLED;
    if (fx->get_process_mode() == mode) {
        return;
    }
    fx->set_process_mode(mode);
    const StringName &mark = TM_NAME("lod_was");
    if (!run) {
        if (fx->is_visible()) {
            fx->set_visible(false);
            fx->set_meta(mark, true);
        }
    } else if (fx->has_meta(mark)) {
        fx->set_visible(true);
        fx->remove_meta(mark);
    }
}

} // namespace

void FxLod::_bind_methods() {
    ClassDB::bind_method(D_METHOD("_late", "id"), &FxLod::_late);
    TM_BIND_FIELD(FxLod, Variant::DICTIONARY, tracked);
    TM_BIND_FIELD(FxLod, Variant::FLOAT, timer);
}

void FxLod::_ready() {
    if (in_editor()) {
        return;
    }
    get_tree()->connect(TM_NAME("node_added"), callable_mp(this, &FxLod::take));
    take_below(get_tree()->get_root());
}

void FxLod::take_below(Node *node) {
    take(node);
    for (int32_t i = 0; i < node->get_child_count(true); i++) {
        take_below(node->get_child(i, true));
    }
}

void FxLod::take(Node *node) {
    auto *drawn = Object::cast_to<GeometryInstance3D>(node);
    if (drawn == nullptr) {
        return;
    }
    if (auto *fx = Object::cast_to<CPUParticles3D>(drawn)) {
        tracked[int64_t(fx->get_instance_id())] = true;
        prim_cache::clamp_detail(fx->get_mesh());
    } else if (Object::cast_to<MeshInstance3D>(drawn) != nullptr ||
               Object::cast_to<MultiMeshInstance3D>(drawn) != nullptr) {
        call_deferred(TM_NAME("_late"), int64_t(drawn->get_instance_id()));
    }
}

void FxLod::_late(int64_t id) {
    Object *node = ObjectDB::get_instance(uint64_t(id));
    if (auto *single = Object::cast_to<MeshInstance3D>(node)) {
        prim_cache::clamp_detail(single->get_mesh());
    } else if (auto *many = Object::cast_to<MultiMeshInstance3D>(node)) {
        if (many->get_multimesh().is_valid()) {
            prim_cache::clamp_detail(many->get_multimesh()->get_mesh());
        }
    }
}

void FxLod::_process(double delta) {
    timer += delta;
    if (timer >= LOOK_SEC) {
        timer = 0;
        look();
    }
}

void FxLod::look() {
    const Array ids = tracked.keys();
    for (int64_t i = 0; i < ids.size(); i++) {
        auto *fx = Object::cast_to<CPUParticles3D>(ObjectDB::get_instance(uint64_t(int64_t(ids[i]))));
        if (fx == nullptr) {
            tracked.erase(ids[i]);
        } else if (fx->is_inside_tree()) {
            set_running(fx, Glebworks::in_view(fx->get_global_position(), MARGIN));
        }
    }
}

} // namespace tilm
