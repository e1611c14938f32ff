// What price tiles ask of the farm that holds them.

#include <godot_cpp/classes/cpu_particles3d.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/scene_tree_timer.hpp>
#include <godot_cpp/classes/sphere_mesh.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/actors/hauler.h"
#include "game/actors/player.h"
#include "game/actors/sell_counter.h"
#include "game/art/models.h"
#include "game/data/farm_data.h"
#include "game/interface/hud.h"
#include "game/ports/notices.h"
#include "game/ports/session.h"
#include "game/shell/assembly.h"
#include "game/shell/land_hint.h"
#include "game/shell/world.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double BURST_LIFE = 0.9;
constexpr float TRAVEL_NEAR = 3.0f;

} // namespace

Callable World::tile_done_call() {
    return Callable(this, TM_NAME("_on_tile_done"));
}

Callable World::refresh_call() {
    return Callable(this, TM_NAME("_refresh_tiles"));
}

Array World::plan() {
    return FarmData::plan();
}

int World::gate_of(const String &entry_id) {
    return static_cast<int>(FarmData::unlock_level(entry_id));
}

bool World::can_build(const String &kind) {
    return assembly->can_build(kind);
}

void World::apply_level(const Dictionary &entry, int to, bool quiet) {
    assembly->apply(entry, to, quiet);
}

Vector3 World::player_pos() {
    return player->get_position();
}

void World::burst(const Vector3 &at) {
    _burst(at, Color::html("ffd54f"));
}

void World::recalc() {
    for (int i = 0; i < get_child_count(); i++) {
        if (Hauler *hauler = Object::cast_to<Hauler>(get_child(i))) {
            int extra = hauler_extra_room(hauler->get_dst(), levels_by_id,
                                          [this](const String &id) { return node_of(id) != nullptr; });
            if (hauler->get_extra_capacity() != extra) {
                hauler->set_extra_capacity(extra);
                hauler->_staff_apply(false);
            }
        }
    }
    Dictionary mults = SellCounter::price_mults();
    mults.clear();
    mults.merge(price_factors(FarmData::plan(), levels_by_id), true);
}

void World::level_up() {
    int64_t now = level();
    String text = vformat("LEVEL %d!", now);
    Array entries = FarmData::plan();
    Dictionary next;
    int64_t next_gate = 0;
    for (int i = 0; i < entries.size(); i++) {
        Dictionary e = entries[i];
        int64_t gate = FarmData::unlock_level(e["id"]);
        if (gate <= 0 || level_of(e["id"]) > 0) {
            continue;
        }
        if (gate <= now) {
            Notices::say(text + " " + vformat("%s IS OPEN", e["title"]), ToastLevel::good);
            return;
        }
        if (next.is_empty() || gate < next_gate) {
            next = e;
            next_gate = gate;
        }
    }
    if (!next.is_empty()) {
        text += " " + vformat("NEXT: %s AT LEVEL %d", next["title"], next_gate);
    }
    Notices::say(text, ToastLevel::good);
    // The tiles follow with the refresh that every purchase ends with: this one runs inside a tile's own callback.
}

String World::no_land_hint(bool jump) {
    return land_hint(*this, jump);
}

void World::buzz(int ms) {
    Sfx::vibrate(ms);
}

void World::announce(const String &text, int type) {
    if (Session *session = Session::current()) {
        session->post_activity(text, type);
    }
}

void World::log_line(const String &line) {
    UtilityFunctions::print(line);
}

void World::progress() {
    int64_t base_sum = 0;
    int64_t got = 0;
    Array entries = FarmData::plan();
    for (int i = 0; i < entries.size(); i++) {
        Dictionary e = entries[i];
        int64_t base = e["base"];
        base_sum += base;
        got += MIN(static_cast<int64_t>(level_of(e["id"])), base);
    }
    progress_percent = static_cast<int>(100 * got / MAX(int64_t(1), base_sum));
    hud_node->set_level_line(static_cast<int>(level()), progress_percent);
}

void World::after(double sec, const Callable &then) {
    get_tree()->create_timer(sec, false)->connect("timeout", then, CONNECT_ONE_SHOT);
}

void World::_burst(const Vector3 &pos, const Color &color) {
    CPUParticles3D *puff = memnew(CPUParticles3D);
    Ref<SphereMesh> bead;
    bead.instantiate();
    bead->set_radius(0.09);
    bead->set_height(0.18);
    bead->set_radial_segments(6);
    bead->set_rings(3);
    bead->set_material(Models::color_material(color, 0.85f, true));
    puff->set_mesh(bead);
    puff->set_amount(24);
    puff->set_lifetime(BURST_LIFE);
    puff->set_one_shot(true);
    puff->set_explosiveness_ratio(1);
    puff->set_direction(Vector3(0, 1, 0));
    puff->set_spread(70);
    puff->set_param_min(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 3);
    puff->set_param_max(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 6);
    puff->set_param_min(CPUParticles3D::PARAM_SCALE, 0.7);
    puff->set_param_max(CPUParticles3D::PARAM_SCALE, 1.3);
    puff->set_position(pos);
    add_child(puff);
    puff->set_emitting(true);
    after(BURST_LIFE + 0.1, Callable(puff, "queue_free"));
}

void World::_focus(const Vector3 &pos, double seconds) {
    if (travel_target && player->get_position().distance_to(*travel_target) < TRAVEL_NEAR) {
        return;
    }
    camera.focus(pos, seconds);
}

void World::_fit_cam() {
    camera.fit();
}

} // namespace tilm
