// What the launch options start once a farm stands. Diagnostics only: no rule of the game rests on them.

#include <godot_cpp/classes/file_access.hpp>
#include <godot_cpp/classes/input.hpp>
#include <godot_cpp/classes/input_event_screen_touch.hpp>
#include <godot_cpp/classes/json.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/scene_tree_timer.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/actors/player.h"
#include "game/art/models.h"
#include "game/interface/hud.h"
#include "game/shell/farm_scan.h"
#include "game/shell/main.h"
#include "game/shell/world.h"
#include "game/shell/world_options.h"
#include "names.h"

namespace tilm {
namespace {

PackedStringArray engine_list(const std::vector<std::string> &words) {
    PackedStringArray list;
    for (const std::string &word : words) {
        list.push_back(String::utf8(word.c_str()));
    }
    return list;
}

// "a,b" as two numbers.
std::optional<Vector2> pair_in(const std::string &text) {
    const size_t comma = text.find(',');
    if (comma == std::string::npos) {
        return std::nullopt;
    }
    const std::string_view view = text;
    const std::optional<double> a = rules::number_in(view.substr(0, comma));
    const std::optional<double> b = rules::number_in(view.substr(comma + 1));
    if (!a || !b) {
        return std::nullopt;
    }
    return Vector2(static_cast<float>(*a), static_cast<float>(*b));
}

} // namespace

void Main::after(double seconds, const Callable &then) {
    get_tree()->create_timer(seconds)->connect(TM_NAME("timeout"), then);
}

void Main::_world_built(int64_t id) {
    World *farm = Object::cast_to<World>(ObjectDB::get_instance(static_cast<uint64_t>(id)));
    if (farm == nullptr || !options.given) {
        return;
    }
    if (options.no_hud && farm->hud() != nullptr) {
        farm->hud()->set_visible(false);
    }
    if (options.start_paused) {
        get_tree()->set_pause(true);
    }
    start_diagnostics(*farm);
    start_after_build(*farm);
}

void Main::start_diagnostics(World &farm) {
    if (!options.frozen_classes.empty()) {
        scan->freeze(engine_list(options.frozen_classes), &farm);
        const Callable each = callable_mp(this, &Main::_noproc_node);
        if (!get_tree()->is_connected(TM_NAME("node_added"), each)) {
            get_tree()->connect(TM_NAME("node_added"), each);
        }
    }
    if (options.label_scan) {
        after(25.0, callable_mp(this, &Main::_labelscan));
    }
    if (options.moves) {
        after(25.0, callable_mp(this, &Main::_moves));
    }
    if (options.census) {
        after(30.0, callable_mp(this, &Main::_census));
    }
    if (options.dump_prims) {
        after(40.0, callable_mp_static(&Models::dump_prims));
    }
    if (options.perfx) {
        after(45.0, callable_mp(this, &Main::_perfx).bind(engine_list(options.feature_groups)));
    }
    if (options.triangles) {
        after(55.0, callable_mp(this, &Main::_tris));
    }
}

void Main::start_after_build(World &) {
    if (!options.panel.empty()) {
        after(options.perk_test ? 5.0 : 1.5, callable_mp(this, &Main::open_panel).bind(options.panel.c_str()));
    }
    for (const auto &[name, value] : options.after_build) {
        if (name == "--notify") {
            after(2.0, callable_mp(this, &Main::on_paused));
            continue;
        }
        if (name != "--tapat" && name != "--moveto") {
            continue;
        }
        const std::optional<Vector2> at = pair_in(value);
        if (!at) {
            UtilityFunctions::print("TILMARCH option ", name.c_str(), ": '", value.c_str(), "' is no pair of numbers");
        } else if (name == "--tapat") {
            after(2.0, callable_mp(this, &Main::tap_at).bind(*at));
        } else {
            after(2.0, callable_mp(this, &Main::move_to).bind(*at));
        }
    }
}

void Main::tap_at(const Vector2 &at) {
    for (const bool pressed : {true, false}) {
        Ref<InputEventScreenTouch> touch;
        touch.instantiate();
        touch->set_position(at);
        touch->set_pressed(pressed);
        Input::get_singleton()->parse_input_event(touch);
    }
}

void Main::open_panel(const String &name) {
    World *farm = world();
    if (farm == nullptr || farm->hud() == nullptr || !farm->hud()->open_offered(name)) {
        UtilityFunctions::print("TILMARCH option --panel: the farm has no panel ", name);
    }
}

void Main::move_to(const Vector2 &at) {
    World *farm = world();
    if (farm != nullptr && farm->player_node() != nullptr) {
        farm->player_node()->set_global_position(Vector3(at.x, 0, at.y));
    }
}

// Opens the active farm of another save as if a friend had sent it.
void Main::open_visit_save() {
    const String path = vformat("user://save_%s.json", String::utf8(options.visit_save.c_str()));
    const bool there = FileAccess::file_exists(path);
    const Variant read = there ? JSON::parse_string(FileAccess::get_file_as_string(path)) : Variant();
    const Dictionary doc = read.get_type() == Variant::DICTIONARY ? Dictionary(read) : Dictionary();
    const Variant rows = doc.get("farms", Variant());
    const Array farms = rows.get_type() == Variant::ARRAY ? Array(rows) : Array();
    const Variant active = doc.get("active", 0);
    const int64_t index =
        active.get_type() == Variant::FLOAT || active.get_type() == Variant::INT ? int64_t(active) : 0;
    if (index < 0 || index >= farms.size() || farms[index].get_type() != Variant::DICTIONARY) {
        UtilityFunctions::print("TILMARCH no visit: ", path, " holds no farm");
        return;
    }
    const Variant farm = Dictionary(farms[index]).get("farm", Variant());
    _visit(1, farm.get_type() == Variant::DICTIONARY ? Dictionary(farm) : Dictionary());
}

void Main::_noproc_node(Node *node) {
    if (scan != nullptr) {
        scan->freeze_node(node);
    }
}

void Main::_labelscan() {
    if (scan->texts(get_host())) {
        after(FarmScan::INTERVAL, callable_mp(this, &Main::_labelscan));
    }
}

void Main::_moves() {
    if (scan->places(get_host())) {
        after(FarmScan::INTERVAL, callable_mp(this, &Main::_moves));
    }
}

void Main::_tris() {
    scan->triangles(get_host());
}

void Main::_census() {
    scan->census(get_host());
}

void Main::_perfx(const PackedStringArray &groups) {
    const double next = scan->next_group(get_host(), groups);
    if (next > 0.0) {
        after(next, callable_mp(this, &Main::_perfx).bind(groups));
    }
}

void Main::_pick_switch_test() {
    const World *farm = world();
    UtilityFunctions::print("TILMARCH pick switch: ", farm != nullptr && farm->hud() != nullptr
                                                          ? "the farm has no team panel"
                                                          : "no farm is shown");
}

} // namespace tilm
