#include "game/actors/machine.h"

#include <algorithm>
#include <string>

#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/scene_tree_timer.hpp>
#include <godot_cpp/variant/callable_method_pointer.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_items/world_place.h"
#include "game/actors/item.h"
#include "game/data/farm_data.h"
#include "game/ports/farm.h"
#include "game/sound/sfx.h"
#include "glebworks/glebworks.h"
#include "names.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr double swallow_seconds = 0.25;
constexpr double squash_seconds = 0.25;
constexpr int64_t most_yield = 100;
const Vector3 heart(0, 1.4f, 0); // where inputs vanish and goods appear
const Vector3 squashed(1.06f, 0.94f, 1.06f);

String text(std::string_view s) {
    return String::utf8(s.data(), static_cast<int>(s.size()));
}

float between(double a, double b) {
    return static_cast<float>(UtilityFunctions::randf_range(a, b));
}

// The first kind that is no good of the game, "" for none.
String unknown_of(const Array &kinds) {
    for (int64_t i = 0; i < kinds.size(); ++i) {
        if (!FarmData::prices().has(kinds[i])) {
            return kinds[i].stringify();
        }
    }
    return String();
}

} // namespace

Machine *Machine::build(const Dictionary &entry) {
    Machine *m = memnew(Machine);
    m->id = read_text(entry, TM_NAME("id"));
    m->title = read_text(entry, TM_NAME("title"));
    m->product = read_text(entry, TM_NAME("product"));
    m->recipe = read_table(entry, TM_NAME("recipe"));
    m->flavors = read_table(entry, TM_NAME("flavors"));
    m->yield = static_cast<int>(std::clamp(read_whole(entry, TM_NAME("yield"), 1), int64_t(1), most_yield));
    m->alias = read_text(entry, TM_NAME("alias"));
    m->carry_to = read_text(entry, TM_NAME("carry_to"));
    m->roof = entry.get(TM_NAME("roof"), m->roof);
    const String fault = m->fault();
    if (!fault.is_empty()) {
        ERR_PRINT(fault);
        memdelete(m);
        return nullptr;
    }
    if (!m->id.is_empty()) {
        m->set_name(m->id);
    }
    const Vector2 at = entry.get(TM_NAME("pos"), Vector2());
    m->set_position(Vector3(at.x, 0, at.y));
    return m;
}

// Why this machine cannot be, "" if it can.
String Machine::fault() const {
    const String who = "TILMARCH machine " + id + ": ";
    if (!FarmData::prices().has(product)) {
        return who + "unknown product \"" + product + "\"";
    }
    if (recipe.is_empty()) {
        return who + "no recipe";
    }
    String unknown = unknown_of(recipe.keys()) + unknown_of(flavors.keys());
    const Array own = flavors.values();
    for (int64_t i = 0; i < own.size() && unknown.is_empty(); ++i) {
        if (own[i].get_type() != Variant::DICTIONARY || static_cast<Dictionary>(own[i]).is_empty()) {
            return who + "a flavour without a recipe";
        }
        unknown = unknown_of(static_cast<Dictionary>(own[i]).keys());
    }
    return unknown.is_empty() ? String() : who + "unknown good \"" + unknown + "\"";
}

void Machine::_ready() {
    if (in_editor() || body != nullptr) {
        return;
    }
    const String why_not = fault();
    if (!why_not.is_empty()) {
        ERR_PRINT(why_not);
        return;
    }
    Farm *farm = Farm::current();
    if (world.get() == nullptr && farm != nullptr) {
        world.set(farm->root());
    }
    build_piles();
    build_zones();
    build_labels();
    build_smoke();
    if (farm != nullptr) {
        const Array shapes = solids();
        for (int64_t i = 0; i < shapes.size(); ++i) {
            farm->add_solid(shapes[i]);
        }
    }
    set_level(get_level());
    slow_join();
}

String Machine::next_perk(int l) {
    return text(rules::next_perk(l));
}

void Machine::set_level(int l) {
    set_level_raw(std::max(1, l));
    if (body == nullptr) {
        return; // not assembled yet: _ready takes the level
    }
    level_label->set_text("LV" + String::num_int64(get_level()));
    set_limits();
    PileCore *in = get_input();
    if (in != nullptr && !in->get_flat()) {
        const bool wide = input_cap() >= rules::wide_input_cap;
        in->set_cols(wide ? 3 : 2);
        in->set_spacing(Vector2(wide ? 0.42f : 0.36f, in->get_spacing().y));
        in->_reflow();
    }
}

void Machine::set_limits() {
    const Array kinds = recipe.keys();
    Dictionary accepts;
    for (int64_t i = 0; i < kinds.size(); ++i) {
        accepts[kinds[i]] = rules::give_limit(get_level(), static_cast<int>(kinds.size()));
    }
    give_zone->set_accepts(accepts);
    if (repeat_zone.is_valid()) {
        repeat_zone->set_accepts(accepts);
    }
}

Array Machine::missing() const {
    Array kinds;
    const int64_t mask = short_inputs();
    for (size_t i = 0; i < recipe_list().size(); ++i) {
        if ((mask >> i & 1) != 0) {
            kinds.push_back(recipe_list()[i].kind);
        }
    }
    return kinds;
}

bool Machine::has_input() const {
    const PileCore *in = get_input();
    return in != nullptr && std::any_of(recipe_list().begin(), recipe_list().end(),
                                        [in](const Need &need) { return in->count_of(need.id) > 0; });
}

void Machine::show_need() {
    if (need_label == nullptr) {
        return;
    }
    const Array kinds = missing();
    std::vector<std::string> names;
    for (int64_t i = 0; i < kinds.size(); ++i) {
        names.emplace_back(static_cast<String>(kinds[i]).utf8().get_data());
    }
    const String need = text(rules::need_text(names, has_flavors()));
    need_label->set_visible(!need.is_empty());
    if (!need.is_empty() && need_label->get_text() != need) {
        need_label->set_text(need);
    }
}

String Machine::get_need_text() const {
    return need_label != nullptr && need_label->is_visible() ? need_label->get_text() : String();
}

void Machine::make() {
    PileCore *in = get_input();
    PileCore *out = get_output();
    const int chosen = has_flavors() ? flavor_index(true) : -1;
    if (in == nullptr || out == nullptr || (has_flavors() ? chosen < 0 : !all_there(recipe_list()))) {
        return;
    }
    const Needs &list = chosen >= 0 ? flavor_at(chosen).needs : recipe_list();
    const String &kind = chosen >= 0 ? flavor_at(chosen).kind : product;
    const Vector3 at = world_position(this) + heart;
    Farm *farm = Farm::current();
    for (const Need &need : list) {
        for (int i = 0; i < need.n; ++i) {
            ItemCore *item = in->take(need.kind);
            if (item == nullptr) {
                break;
            }
            if (farm != nullptr) {
                farm->stat_add(need.used, 1);
            }
            swallow(item, at);
        }
    }
    for (int i = 0; i < yield; ++i) {
        // A cook hands out one kind of goods only.
        if (chosen < 0 && get_cook() != nullptr) {
            meat_pending += 1;
        } else {
            const GoodsVerb verb("manufactured");
            out->add(Item::spawn(kind, at), i * 0.08 + 0.35);
        }
    }
    squash();
}

void Machine::swallow(ItemCore *item, const Vector3 &at) {
    item->fly_to(at, swallow_seconds);
    GoodsLedger::mark_leaving(item, "used");
    if (!is_inside_tree()) {
        item->queue_free();
        return;
    }
    Ref<SceneTreeTimer> timer = get_tree()->create_timer(swallow_seconds, false);
    timer->connect(TM_NAME("timeout"), callable_mp(static_cast<Node *>(item), &Node::queue_free));
}

// Only the building: the piles keep the places of their goods.
void Machine::squash() {
    if (body == nullptr || !is_inside_tree() || !Glebworks::in_view(world_position(this), 2.0) ||
        (squashing.is_valid() && squashing->is_running())) {
        return;
    }
    body->set_scale(squashed);
    squashing = create_tween();
    squashing->tween_property(body, NodePath("scale"), Vector3(1, 1, 1), squash_seconds);
}

void Machine::deliver_meat(const Vector3 &from) {
    PileCore *out = get_output();
    const int n = meat_pending;
    pend_wait = 0;
    if (out == nullptr || n <= 0) {
        return;
    }
    meat_pending = 0;
    for (int i = 0; i < n; ++i) {
        const Vector3 jitter(between(-0.12, 0.12), between(-0.12, 0.12), between(-0.12, 0.12));
        const GoodsVerb verb("manufactured");
        out->add(Item::spawn(product, from + jitter), std::min(i, 12) * 0.03 + 0.3);
    }
    Sfx::sound_at(TM_NAME("worker_pick"), get_instance_id(), from);
}

} // namespace tilm
