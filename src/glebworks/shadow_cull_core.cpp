#include "glebworks/shadow_cull_core.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/rendering_server.hpp>

#include "glebworks/glebworks.h"

namespace tilm {
namespace {

constexpr double LEAST_VISITS = 64;
constexpr double ROUNDS_A_SECOND = 2;
constexpr double JUMP = 6; // of the view rectangle, all changes added up

double moved_by(const Rect2 &a, const Rect2 &b) {
    const Vector2 at = (a.position - b.position).abs(), size = (a.size - b.size).abs();
    return double(at.x) + at.y + size.x + size.y;
}

} // namespace

void ShadowCullCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("add_caster", "g", "casts", "half", "mid", "reach"), &ShadowCullCore::add_caster);
    ClassDB::bind_method(D_METHOD("tick", "dt", "has_cam", "cam"), &ShadowCullCore::tick);
    ClassDB::bind_method(D_METHOD("set_max_dist", "v"), &ShadowCullCore::set_max_dist);
    ClassDB::bind_method(D_METHOD("get_max_dist"), &ShadowCullCore::get_max_dist);
    ADD_PROPERTY(PropertyInfo(Variant::FLOAT, "max_dist"), "set_max_dist", "get_max_dist");
}

void ShadowCullCore::add_caster(Object *g, bool casts, double half, const Vector2 &mid, double reach) {
    auto *node = Object::cast_to<GeometryInstance3D>(g);
    if (node == nullptr) {
        ERR_PRINT("TILMARCH add_caster: needs a GeometryInstance3D");
        return;
    }
    listed.insert(node->get_instance_id());
    casters.push_back({static_cast<uint64_t>(node->get_instance_id()), node, static_cast<float>(half),
                       static_cast<float>(reach), mid, casts, false, false});
}

std::size_t ShadowCullCore::budget_for(double dt) {
    const std::size_t all = casters.size();
    const Rect2 view = Glebworks::get_view();
    const bool jumped = moved_by(view, last_view) > JUMP;
    last_view = view;
    if (jumped) {
        return all;
    }
    const double share = std::trunc(ROUNDS_A_SECOND * dt * static_cast<double>(all));
    return static_cast<std::size_t>(std::min(std::max(LEAST_VISITS, share), static_cast<double>(all)));
}

void ShadowCullCore::tick(double dt, bool has_cam, const Vector3 &cam) {
    visits = 0;
    if (casters.empty()) {
        return;
    }
    const std::size_t budget = budget_for(dt);
    for (std::size_t n = 0; n < budget && !casters.empty(); n++) {
        visits++;
        if (cursor >= casters.size()) {
            cursor = 0;
        }
        Caster &c = casters[cursor];
        if (ObjectDB::get_instance(c.id) == nullptr) {
            listed.erase(c.id);
            c = casters.back();
            casters.pop_back();
            continue;
        }
        cursor++;
        if (!c.node->is_inside_tree()) {
            continue;
        }
        const Vector3 at = c.node->get_global_position();
        hide_or_show(c, at);
        if (c.casts) {
            shade_or_not(c, at, has_cam, cam);
        }
    }
}

void ShadowCullCore::hide_or_show(Caster &c, const Vector3 &at) {
    const bool out = !Glebworks::in_view_xz(at.x + c.mid.x, at.z + c.mid.y, c.half);
    if (out == c.hidden) {
        return;
    }
    c.hidden = out;
    if (out) {
        RenderingServer::get_singleton()->instance_set_visible(c.node->get_instance(), false);
    } else if (c.node->is_visible_in_tree()) {
        RenderingServer::get_singleton()->instance_set_visible(c.node->get_instance(), true);
    }
}

void ShadowCullCore::shade_or_not(Caster &c, const Vector3 &at, bool has_cam, const Vector3 &cam) const {
    const bool keeps =
        Glebworks::in_view(at, c.reach) && (!has_cam || at.distance_to(cam) < double(c.reach) + max_dist);
    if (keeps) {
        if (c.shadow_off) {
            c.shadow_off = false;
            c.node->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_ON);
        }
        return;
    }
    if (c.shadow_off) {
        return;
    }
    if (c.node->get_cast_shadows_setting() == GeometryInstance3D::SHADOW_CASTING_SETTING_OFF) {
        c.casts = false;
        return;
    }
    c.shadow_off = true;
    c.node->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
}

} // namespace tilm
