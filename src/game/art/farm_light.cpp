#include "game/art/farm_light.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/directional_light3d.hpp>
#include <godot_cpp/classes/environment.hpp>
#include <godot_cpp/classes/procedural_sky_material.hpp>
#include <godot_cpp/classes/rendering_server.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/sky.hpp>
#include <godot_cpp/classes/world_environment.hpp>
#include <godot_cpp/core/error_macros.hpp>

#include "game/art/scenery.h"
#include "names.h"

namespace tilm {
namespace {

using rules::Daylight;
using rules::SkyState;
using rules::Tint;

// Below this a change of any share is not seen; a sky that is touched is drawn anew.
constexpr float LEAST = 1.0f / 400;
constexpr float WET_GROUND = 0.5f;
constexpr float DARK = 0.35f; // lamps are lit from here
constexpr float GLOW_SPAN = 0.4f;

struct Applied {
    SkyState sky;
    uint64_t light = 0; // whose node it was put on
    bool lit = false;
};
Applied last;

Color paint(const Tint &c) {
    return Color(c.r, c.g, c.b);
}

bool seen(const SkyState &a, const SkyState &b) {
    float most = std::max({std::fabs(float(a.hour - b.hour)) * 0.25f, std::fabs(a.wet - b.wet),
                           std::fabs(a.snow - b.snow), std::fabs(a.flash - b.flash)});
    for (size_t i = 0; i < a.season.size(); i++) {
        most = std::max(most, std::fabs(a.season[i] - b.season[i]));
    }
    return most >= LEAST;
}

void tell_shaders(const SkyState &sky, const Daylight &day, float glow) {
    RenderingServer *server = RenderingServer::get_singleton();
    server->global_shader_parameter_set(TM_NAME("farm_spring"), sky.season[0]);
    server->global_shader_parameter_set(TM_NAME("farm_summer"), sky.season[1]);
    server->global_shader_parameter_set(TM_NAME("farm_autumn"), sky.season[2]);
    server->global_shader_parameter_set(TM_NAME("farm_snow"), sky.season[3]);
    server->global_shader_parameter_set(TM_NAME("farm_wet"), sky.wet);
    server->global_shader_parameter_set(TM_NAME("farm_key"), paint(day.key));
    server->global_shader_parameter_set(TM_NAME("farm_shade"), paint(day.shade));
    server->global_shader_parameter_set(TM_NAME("farm_rim"), paint(day.rim));
    server->global_shader_parameter_set(TM_NAME("farm_glow"), glow);
}

void paint_sky(Environment *air, const Daylight &day) {
    const Color horizon = paint(day.horizon);
    air->set_ambient_light_color(paint(day.ambient));
    air->set_fog_light_color(horizon);
    air->set_fog_depth_begin(day.fog_begin);
    air->set_fog_depth_end(day.fog_end);
    const Ref<Sky> dome = air->get_sky();
    auto *cover = dome.is_valid() ? Object::cast_to<ProceduralSkyMaterial>(dome->get_material().ptr()) : nullptr;
    if (cover != nullptr) {
        cover->set_sky_top_color(paint(day.top));
        cover->set_sky_horizon_color(horizon);
        cover->set_ground_horizon_color(horizon);
        const Color grass(0.56f, 0.76f, 0.50f);
        cover->set_ground_bottom_color(grass.lerp(horizon, 0.4f) * (1.0f - 0.7f * day.darkness));
    }
}

} // namespace

void FarmLight::apply(Node3D *light, const SkyState &sky) {
    auto *sun = light ? Object::cast_to<DirectionalLight3D>(light->get_node_or_null(NodePath("Sun"))) : nullptr;
    auto *env = light ? Object::cast_to<WorldEnvironment>(light->get_node_or_null(NodePath("Env"))) : nullptr;
    if (sun == nullptr || env == nullptr) {
        ERR_PRINT("TILMARCH no sun and sky to set the light of");
        return;
    }
    const bool same_light = last.light == light->get_instance_id();
    if (same_light && !seen(sky, last.sky)) {
        return;
    }
    last.sky = sky;
    last.light = light->get_instance_id();
    const Daylight day = rules::daylight(sky);
    const float glow = std::clamp((day.darkness - DARK) / GLOW_SPAN, 0.0f, 1.0f);
    const Scenery::Strengths base = Scenery::strengths(sun->has_shadow());
    sun->set_rotation_degrees(Vector3(-day.height, -day.turn, 0));
    sun->set_color(paint(day.sun));
    sun->set_param(Light3D::PARAM_ENERGY, base.sun * day.sun_power);
    const Ref<Environment> air = env->get_environment();
    air->set_ambient_light_energy(base.ambient * day.ambient_power);
    paint_sky(air.ptr(), day);
    tell_shaders(sky, day, glow);
    Scenery::wet_ground(sky.wet > WET_GROUND);
    if ((glow > 0) != last.lit || !same_light) {
        last.lit = glow > 0;
        if (light->is_inside_tree()) {
            light->get_tree()->set_group(TM_NAME("night_glow"), "visible", last.lit);
        }
    }
}

void FarmLight::apply(Node3D *light, double hour, int season, float wet, float snow) {
    SkyState sky;
    sky.hour = hour;
    sky.season = {};
    sky.season[size_t(std::clamp(season, 0, 3))] = 1;
    sky.wet = wet;
    sky.snow = snow;
    apply(light, sky);
}

void FarmLight::refresh(Node3D *light) {
    last.light = 0;
    apply(light, last.sky);
}

bool FarmLight::night_now() {
    return last.lit;
}

const SkyState &FarmLight::current() {
    return last.sky;
}

} // namespace tilm
