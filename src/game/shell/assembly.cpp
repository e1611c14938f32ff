#include "game/shell/assembly.h"

#include <godot_cpp/variant/callable_method_pointer.hpp>
#include <godot_cpp/variant/utility_functions.hpp>
#include <godot_cpp/variant/vector2.hpp>

#include "game/actors/crop_field.h"
#include "game/actors/harvester.h"
#include "game/actors/hauler.h"
#include "game/actors/machine.h"
#include "game/actors/player.h"
#include "game/actors/producer.h"
#include "game/actors/sell_counter.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/worker.h"
#include "game/data/farm_data.h"
#include "game/interface/hud.h"
#include "game/kit/ui.h"
#include "game/ports/notices.h"
#include "game/shell/logistics.h"
#include "game/shell/world.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/machine_perks.h"

namespace tilm {

namespace {

constexpr double FOCUS_SECONDS = 1.8;
constexpr int STACK_STEP = 6;
constexpr double SHOES_STEP = 1.15;
constexpr double VICTORY_DELAY = 1.0;

Vector3 ground(const Dictionary &e, const Vector2 &offset = Vector2()) {
    Vector2 pos = e.get("pos", Vector2());
    return Vector3(pos.x + offset.x, 0, pos.y + offset.y);
}

} // namespace

Assembly::Assembly(World &world) : world(world) {
    builders = {
        {"producer", &Assembly::producer}, {"stall", &Assembly::stall},     {"field", &Assembly::field},
        {"workers", &Assembly::workers},   {"hauler", &Assembly::hauler},   {"harvester", &Assembly::harvester},
        {"stack", &Assembly::stack},       {"shoes", &Assembly::shoes},     {"feed", &Assembly::feed},
        {"magnet", &Assembly::magnet},     {"land", &Assembly::land},       {"final", &Assembly::final},
        {"machine", &Assembly::machine},   {"factory", &Assembly::factory}, {"crew", &Assembly::crew},
        {"truck", &Assembly::truck},       {"depot", &Assembly::depot},     {"belt", &Assembly::belt},
    };
}

bool Assembly::can_build(const String &kind) const {
    return builders.contains(kind.utf8().get_data());
}

void Assembly::apply(const Dictionary &e, int level, bool quiet) {
    String id = e["id"];
    String kind = e["kind"];
    world.levels()[id] = level;
    auto builder = builders.find(kind.utf8().get_data());
    if (builder == builders.end()) {
        return;
    }
    Outcome out;
    out.sound = level == 1 ? "build_done" : "upgrade_done";
    (this->*builder->second)(e, level, quiet, out);
    if (quiet) {
        return;
    }
    if (!out.toast.is_empty()) {
        Notices::say(out.toast, ToastLevel::good);
    }
    if (out.sound) {
        Sfx::sound(StringName(out.sound));
    }
    if (out.has_focus) {
        world._focus(out.focus, FOCUS_SECONDS);
    }
}

void Assembly::producer(const Dictionary &e, int level, bool quiet, Outcome &out) {
    String id = e["id"];
    out.look_at(ground(e));
    if (level == 1) {
        Producer *made = Producer::build(e);
        if (!made) {
            return;
        }
        world.add_child(made);
        world.keep_node(id, made);
        if (!quiet) {
            world.start_feed(id, made);
        }
        out.toast = String(e["title"]) + " BUILT!";
        return;
    }
    Producer *stands = Object::cast_to<Producer>(world.node_of(id));
    if (stands) {
        stands->set_level(level);
        out.toast = "MORE " + stands->animals_word() + "!";
    }
}

void Assembly::stall(const Dictionary &e, int level, bool, Outcome &out) {
    String id = e["id"];
    if (level == 1) {
        SellCounter *made = memnew(SellCounter);
        if (!made->build(e, &world)) {
            memdelete(made);
            return;
        }
        world.keep_node(id, made);
        world.add_cash_tile(made->cash_tile());
        world.add_stall(made);
        out.toast = "NEW STALL!";
        return;
    }
    if (SellCounter *stands = Object::cast_to<SellCounter>(world.node_of(id))) {
        stands->set_level(level);
    }
    out.toast = "PRICES UP!";
}

// The machine of an entry stands under the entry's id; null, with a log line, for a bad row.
Machine *Assembly::raise_machine(const Dictionary &e) {
    Machine *made = Machine::build(e);
    if (made) {
        world.add_child(made);
        world.keep_node(e["id"], made);
    }
    return made;
}

void Assembly::machine(const Dictionary &e, int level, bool, Outcome &out) {
    String title = e["title"];
    if (level > 1) {
        if (Machine *stands = Object::cast_to<Machine>(world.node_of(e["id"]))) {
            stands->set_level(level);
            out.toast = rules::next_perk_is_speed(level - 1) ? "FASTER " + title + "!" : title + " HOLDS MORE!";
        }
        return;
    }
    out.look_at(ground(e));
    if (raise_machine(e)) {
        out.toast = title + " BUILT!";
        own_helpers(e);
    }
}

// An added machine brings the two who feed it and carry its goods away.
void Assembly::own_helpers(const Dictionary &e) {
    String carry_to = e.get("carry_to", "");
    if (carry_to.is_empty()) {
        return;
    }
    const Array kinds[2] = {e.get("feed_kinds", Array()), e.get("out_kinds", Array())};
    const String to[2] = {e.get("alias", ""), carry_to};
    for (int i = 0; i < 2; i++) {
        hire(vformat("%s#%d", e["id"], i + 1), kinds[i], to[i], ground(e, Vector2(0.8f * i - 0.4f, 3.4f)));
    }
}

void Assembly::hire(const String &name, const Array &kinds, const String &to, const Vector3 &at) {
    Hauler *made = memnew(Hauler);
    made->setup(name, kinds, to, at, world.zone_list());
    world.add_child(made);
}

void Assembly::factory(const Dictionary &e, int level, bool, Outcome &out) {
    String title = e["title"];
    String id = e["id"];
    if (level > 1) {
        if (Machine *stands = Object::cast_to<Machine>(world.node_of(id))) {
            stands->set_level(level);
            world.trucking().set_dock_level(id, level);
            out.toast = title + (rules::next_perk_is_speed(level - 1) ? " FASTER!" : " HOLDS MORE!");
        }
        return;
    }
    out.look_at(ground(e));
    if (raise_machine(e)) {
        world.trucking().build_dock(e);
        out.toast = title + " FACTORY BUILT!";
    }
}

// One who brings what the building needs, and one who takes its goods to the dock; a kitchen's dishes are not carried.
void Assembly::crew(const Dictionary &e, int level, bool, Outcome &out) {
    String building = e["factory"];
    hire(vformat("%s#%dc", e["id"], level), e.get("kinds", Array()), building, ground(e));
    if (static_cast<bool>(e.get("feed_only", false))) {
        out.toast = "COOKS HIRED!";
        return;
    }
    hire(vformat("%s#%dl", e["id"], level), Array::make(e["product"]), "dock_" + building, ground(e, Vector2(0.8f, 0)));
    out.toast = "CREW HIRED!";
}

void Assembly::field(const Dictionary &e, int level, bool, Outcome &) {
    if (level != 1) {
        return;
    }
    CropField *made = CropField::build(e);
    if (!made) {
        return;
    }
    world.add_child(made);
    world.keep_node(e["id"], made);
    world.add_field(made);
}

// The field that workers or a harvester serve; null, with a log line, when it does not stand.
CropField *Assembly::field_of(const Dictionary &e) const {
    CropField *field = Object::cast_to<CropField>(world.node_of(e["field"]));
    if (!field) {
        ERR_PRINT("TILMARCH workers for " + String(e["id"]) + ": field not built");
    }
    return field;
}

void Assembly::workers(const Dictionary &e, int level, bool, Outcome &out) {
    String id = e["id"];
    out.toast = "WORKERS HIRED!";
    CropField *field = field_of(e);
    if (!field) {
        return;
    }
    for (int i = 0; i < 2; i++) {
        Worker *worker = memnew(Worker);
        String name = vformat("%s#%d_%d", id, level, i);
        worker->setup(name, field->get_crop(), ground(e, Vector2(0.8f * i, 0)), field, field->get_pallet(),
                      field->drop_spot(i, level));
        world.add_child(worker);
    }
    out.look_at(field->centre());
}

void Assembly::harvester(const Dictionary &e, int level, bool, Outcome &out) {
    String id = e["id"];
    String title = e["title"];
    if (level > 1) {
        if (Harvester *stands = Object::cast_to<Harvester>(world.node_of(id))) {
            stands->set_level(level);
        }
        out.toast = "FASTER " + title + "!";
        return;
    }
    out.toast = title + "!";
    CropField *field = field_of(e);
    if (!field) {
        return;
    }
    if (Harvester *made = Harvester::build(e, field)) {
        world.add_child(made);
        world.keep_node(id, made);
    }
}

void Assembly::hauler(const Dictionary &e, int level, bool, Outcome &out) {
    hire(vformat("%s#%d", e["id"], level), e.get("kinds", Array()), e["dst"], ground(e));
    out.toast = "HELPER HIRED!";
}

void Assembly::truck(const Dictionary &e, int level, bool, Outcome &out) {
    if (level == 1) {
        world.trucking().build_truck(e);
    }
    out.toast = "TRUCK ORDERS!";
}

void Assembly::depot(const Dictionary &e, int level, bool, Outcome &out) {
    world.trucking().raise_depot(e, level);
    out.look_at(ground(e));
    out.toast = level == 1 ? "INGREDIENT DEPOT!" : level == 2 ? "SUPPLY TRUCK!" : "MORE SUPPLIES!";
}

void Assembly::belt(const Dictionary &e, int level, bool, Outcome &out) {
    world.trucking().raise_belt(e, level);
    out.toast = level == 1 ? "INGREDIENT BELT!" : level == 2 ? "TRUCK BELT!" : "FASTER BELTS!";
}

void Assembly::stack(const Dictionary &, int, bool, Outcome &out) {
    StackCarrier *tower = world.farmer()->carrier();
    tower->set_capacity(tower->get_capacity() + STACK_STEP);
    out.toast = "BIGGER STACK!";
    out.sound = "upgrade_done";
}

void Assembly::shoes(const Dictionary &, int, bool, Outcome &out) {
    world.farmer()->set_speed(world.farmer()->get_speed() * SHOES_STEP);
    out.toast = "FASTER!";
    out.sound = "upgrade_done";
}

void Assembly::feed(const Dictionary &, int, bool, Outcome &out) {
    out.toast = "BETTER FEED!";
    out.sound = "upgrade_done";
}

void Assembly::magnet(const Dictionary &, int, bool, Outcome &out) {
    world.set_magnet(true);
    out.toast = "MONEY MAGNET!";
    out.sound = "upgrade_done";
}

void Assembly::land(const Dictionary &e, int, bool quiet, Outcome &out) {
    String target = e["target"];
    if (!quiet) {
        world.show_land(target);
    }
    world.open_region(target, quiet);
    out.toast = "NEW LAND: " + String(e["title"]) + "!";
    out.sound = "land_open";
    Dictionary row = FarmData::region_by_id(target);
    if (!row.is_empty() && !world.land_scene()) {
        out.look_at(Vector3(row["x"], 0, -6));
    }
}

void Assembly::final(const Dictionary &, int, bool quiet, Outcome &out) {
    out.sound = nullptr;
    if (quiet) {
        return;
    }
    world.set_won(true);
    Sfx::sound(TM_NAME("jingle_victory"));
    static const char *const colors[4] = {"ffd54f", "ef5350", "4fc3f7", "81c784"};
    for (int i = 0; i < 8; i++) {
        Vector3 offset(UtilityFunctions::randf_range(-3, 3), 2, UtilityFunctions::randf_range(-3, 3));
        world._burst(world.player_pos() + offset, Color::html(colors[i % 4]));
    }
    World *farm = &world;
    world.after(VICTORY_DELAY,
                UI::callback(farm, [farm] { farm->hud()->show_victory(farm->level(), farm->money_now()); }));
}

} // namespace tilm
