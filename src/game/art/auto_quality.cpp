#include "game/art/auto_quality.h"

#include <algorithm>
#include <string>
#include <vector>

#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/classes/project_settings.hpp>
#include <godot_cpp/classes/rendering_server.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/classes/window.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/art/scenery.h"
#include "game/ports/farm.h"
#include "game/ports/store.h"
#include "names.h"
#include "rules/options.h"
#include "rules/quality.h"

namespace tilm {
namespace {

rules::Options launch_options() {
    std::vector<std::string> list;
    if (const Store *store = Store::current()) {
        const PackedStringArray words = store->arguments();
        for (int64_t i = 0; i < words.size(); i++) {
            list.emplace_back(words[i].utf8().get_data());
        }
    }
    return rules::parse_options(list);
}

} // namespace

void AutoQuality::_bind_methods() {
    ClassDB::bind_method(D_METHOD("apply"), &AutoQuality::apply);
    TM_BIND_FIELD(AutoQuality, Variant::FLOAT, wait);
    TM_BIND_FIELD(AutoQuality, Variant::INT, start_ticks);
    TM_BIND_FIELD(AutoQuality, Variant::INT, frames);
}

void AutoQuality::_ready() {
    if (in_editor()) {
        return;
    }
    set_process_mode(PROCESS_MODE_ALWAYS);
    const rules::Options options = launch_options();
    fixed = options.quality;
    own_scale = !options.scale_3d;
    apply();
    const bool asked = options.auto_quality || OS::get_singleton()->has_feature("mobile");
    set_process(asked && fixed < 0 && level() < rules::QUALITY_WORST);
}

int AutoQuality::level() const {
    if (fixed >= 0) {
        return rules::quality_level(fixed);
    }
    const Store *store = Store::current();
    return store != nullptr ? rules::quality_level(store->setting(TM_NAME("quality"))) : 0;
}

void AutoQuality::apply() {
    const rules::QualityLevel &row = rules::QUALITY_LEVELS[level()];
    Window *root = get_tree()->get_root();
    const int64_t project_msaa =
        ProjectSettings::get_singleton()->get_setting("rendering/anti_aliasing/quality/msaa_3d", Viewport::MSAA_4X);
    root->set_msaa_3d(row.msaa ? Viewport::MSAA(project_msaa) : Viewport::MSAA_DISABLED);
    if (own_scale) {
        root->set_scaling_3d_scale(row.scale_3d);
    }
    RenderingServer::get_singleton()->directional_shadow_atlas_set_size(row.shadow_atlas, true);
    Farm *farm = Farm::current();
    Node *light = farm != nullptr ? farm->root()->get_node_or_null(NodePath("Light")) : nullptr;
    if (auto *lamps = Object::cast_to<Node3D>(light)) {
        Scenery::tune_light(lamps, row.sun_shadow);
    }
}

void AutoQuality::_process(double delta) {
    if (delta > rules::QUALITY_HICCUP_SEC) {
        wait = std::max(wait, rules::QUALITY_HICCUP_WAIT);
    }
    if (wait > 0) {
        wait -= delta / std::max(Engine::get_singleton()->get_time_scale(), 0.01);
        if (wait <= 0) {
            wait = 0;
            start_ticks = int64_t(Time::get_singleton()->get_ticks_usec());
            frames = 0;
        }
        return;
    }
    frames++;
    measure();
}

void AutoQuality::measure() {
    const int64_t now = int64_t(Time::get_singleton()->get_ticks_usec());
    const double seconds = double(now - start_ticks) / 1e6;
    if (seconds < rules::QUALITY_MEASURE_SEC) {
        return;
    }
    const double fps = double(frames) / seconds;
    start_ticks = now;
    frames = 0;
    Store *store = Store::current();
    if (fps >= rules::QUALITY_LOW_FPS || store == nullptr) {
        return;
    }
    const int next = rules::quality_level(level() + 1);
    store->put_setting(TM_NAME("quality"), next);
    UtilityFunctions::print(vformat("AUTOQ fps %.1f -> level %d", fps, next));
    apply();
    store->write();
    wait = rules::QUALITY_STEP_WAIT;
    set_process(next < rules::QUALITY_WORST);
}

} // namespace tilm
