#include "game/shell/farm_document.h"

#include <cmath>
#include <unordered_set>

#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_items/zone_core.h"
#include "game/actors/cash_tile.h"
#include "game/actors/item.h"
#include "game/actors/player.h"
#include "game/actors/producer.h"
#include "game/actors/stack_carrier.h"
#include "game/data/farm_data.h"
#include "game/shell/logistics.h"
#include "game/shell/world.h"
#include "game/shell/world_options.h"
#include "rules/rounding.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr double LOAD_FLIGHT = 0.05;
constexpr int CASH_PIECES = 30;
constexpr int64_t LOTS_FORM = 2;
constexpr double FARTHEST = 2000.0; // no farm reaches so far: a saved place beyond it is damage

// Id -> whole number above 0, other rows left out.
Dictionary counts_of(const Dictionary &from) {
    Dictionary out;
    Array keys = from.keys();
    for (int i = 0; i < keys.size(); i++) {
        String key = keys[i];
        int64_t n = read_whole(from, key);
        if (n > 0) {
            out[key] = n;
        }
    }
    return out;
}

bool is_vehicle(const String &zone) {
    return zone.begins_with("truck") || zone.begins_with("dock_");
}

} // namespace

void FarmDocument::open(const Dictionary &doc) {
    source = doc;
}

Dictionary FarmDocument::saved_levels() const {
    return counts_of(read_table(source, "levels"));
}

void FarmDocument::load_core() {
    Dictionary saved = saved_levels();
    Array ids = saved.keys();
    for (int i = 0; i < ids.size(); i++) {
        if (!world.levels_by_id.has(ids[i])) {
            stray_levels[ids[i]] = saved[ids[i]];
            if (FarmData::entry_by_id(ids[i]).is_empty()) {
                WARN_PRINT("TILMARCH farm: unknown entry " + String(ids[i]) + ": kept, not shown");
            }
        } else if (static_cast<int64_t>(saved[ids[i]]) > world.level_of(ids[i])) {
            WARN_PRINT(vformat("TILMARCH farm: %s has level %d of %d: lowered", ids[i], saved[ids[i]],
                               world.level_of(ids[i])));
        }
    }
    world.tile_office().load_paid(counts_of(read_table(source, "paid")));
    world.tools = counts_of(read_table(source, "tools"));
    Player *player = world.farmer();
    StackCarrier *tower = player->carrier();
    int stacks = static_cast<int>(CLAMP(read_whole(world.tools, "stack"), int64_t(0), int64_t(1000)));
    int shoes = static_cast<int>(CLAMP(read_whole(world.tools, "shoes"), int64_t(0), int64_t(100)));
    tower->set_capacity(tower->get_capacity() + 6 * stacks);
    player->set_speed(player->get_speed() * std::pow(1.08, shoes));
    for (const char *tool : {"stack", "shoes"}) {
        world.tools[tool] = read_whole(world.tools, tool);
    }
    world.money = read_whole(source, "money");
    if (world.money < 0) {
        WARN_PRINT(vformat("TILMARCH farm: money %d: taken as 0", world.money));
        world.money = 0;
    }
    world.gold_eggs = MAX(int64_t(0), read_whole(source, "gold_eggs"));
    world.won = read_flag(source, "won");
    world.trucking().load(source);
    if (WorldOptions::get().money && !world.visiting) {
        world.money = *WorldOptions::get().money;
    }
}

bool FarmDocument::load_state(uint64_t until) {
    const WorldOptions &options = WorldOptions::get();
    if (source.is_empty() || std::isfinite(options.at_x)) {
        return true;
    }
    Dictionary state = read_table(source, "state");
    if (!load_piles(read_table(state, "piles"), until)) {
        return false;
    }
    load_cash(read_table(state, "cash"));
    load_player(state);
    if (!world.visiting) {
        load_carry(read_list(state, "carry"));
    }
    return true;
}

String FarmDocument::pile_key(const ZoneCore &zone) {
    Vector3 at = zone.get_pos();
    return vformat("%s@%d,%d", zone.get_group(), rules::round_half_away(at.x * 10.0),
                   rules::round_half_away(at.z * 10.0));
}

String FarmDocument::cash_key(const Vector3 &pos) {
    return vformat("%d,%d", rules::round_half_away(pos.x * 10.0), rules::round_half_away(pos.z * 10.0));
}

bool FarmDocument::load_piles(const Dictionary &piles, uint64_t until) {
    if (next_zone == 0) {
        piles_left = piles.duplicate();
    }
    while (next_zone < world.zones.size()) {
        Ref<ZoneCore> zone = world.zones[next_zone++];
        String key = pile_key(**zone);
        PileCore *pile = zone->get_pile();
        if (!pile || !piles_left.has(key)) {
            continue;
        }
        const Dictionary by_kind = counts_of(read_table(piles_left, key));
        piles_left.erase(key);
        fill_pile(pile, by_kind, key);
        if (Time::get_singleton()->get_ticks_usec() > until) {
            return false;
        }
    }
    Array homeless = piles_left.keys();
    for (int i = 0; i < homeless.size(); i++) {
        WARN_PRINT("TILMARCH farm: no place for the goods of " + String(homeless[i]) + ": skipped");
    }
    return true;
}

void FarmDocument::fill_pile(PileCore *pile, const Dictionary &by_kind, const String &key) {
    const GoodsVerb verb("loaded");
    Array kinds = by_kind.keys();
    for (int k = 0; k < kinds.size(); k++) {
        String kind = kinds[k];
        int64_t n = by_kind[kind];
        if (kind == "juice") {
            kind = "orange_juice";
        }
        if (!FarmData::prices().has(kind)) {
            WARN_PRINT("TILMARCH unknown good " + kind + " in " + key + ": dropped");
            continue;
        }
        int64_t laid = 0;
        for (; laid < n && !pile->is_full(); laid++) {
            pile->add(Item::spawn(kind, pile->slot_global(pile->count())), LOAD_FLIGHT);
        }
        if (laid < n) {
            WARN_PRINT(vformat("TILMARCH farm: %d %s of %d do not fit in %s: dropped", n - laid, kind, n, key));
        }
    }
}

void FarmDocument::load_cash(const Dictionary &cash) {
    Dictionary left = cash.duplicate();
    for (CashTile *tile : world.cash_list()) {
        left.erase(tile->get_meta("pkey", ""));
        int64_t amount = read_whole(cash, tile->get_meta("pkey", ""));
        if (amount > 0) {
            int64_t unit = amount / CASH_PIECES;
            tile->add_money(amount, unit < 2 ? 1 : unit, tile->get_global_position());
        }
    }
    Array homeless = left.keys();
    for (int i = 0; i < homeless.size(); i++) {
        WARN_PRINT("TILMARCH farm: no cash tile at " + String(homeless[i]) + ": skipped");
    }
}

void FarmDocument::load_player(const Dictionary &state) {
    Player *player = world.farmer();
    Vector3 at = player->get_position();
    double x = read_real(state, "px", at.x);
    double z = read_real(state, "pz", at.z);
    if (std::abs(x) < FARTHEST && std::abs(z) < FARTHEST) {
        player->set_position(Vector3(x, at.y, z));
    }
    world.tile_office().guard_step_off(player->get_position());
}

void FarmDocument::load_carry(const Array &kinds) {
    StackCarrier *tower = world.farmer()->carrier();
    for (int i = 0; i < kinds.size() && !tower->is_full(); i++) {
        String kind = kinds[i];
        if (FarmData::prices().has(kind)) {
            const GoodsVerb verb("loaded");
            tower->add(Item::spawn(kind, tower->top_global()));
        } else {
            WARN_PRINT("TILMARCH unknown good " + kind + " on the back: dropped");
        }
    }
}

void FarmDocument::load_feed() {
    feed_given = read_table(read_table(source, "state"), "feed_given").duplicate();
    Array ids = world.nodes.keys();
    for (int i = 0; i < ids.size(); i++) {
        give_feed(ids[i], Object::cast_to<Producer>(world.nodes[ids[i]]));
    }
}

void FarmDocument::give_feed(const String &id, Producer *producer) {
    if (!producer || world.visiting || feed_given.has(id)) {
        return;
    }
    feed_given[id] = true;
    producer->give_start_feed();
}

Dictionary FarmDocument::state_now() const {
    Dictionary piles;
    std::unordered_set<const PileCore *> written;
    for (int i = 0; i < world.zones.size(); i++) {
        Ref<ZoneCore> zone = world.zones[i];
        PileCore *pile = zone->get_pile();
        if (!pile || is_vehicle(zone->get_group()) || !written.insert(pile).second) {
            continue;
        }
        Dictionary by_kind;
        for (ItemCore *item : pile->list()) {
            by_kind[item->get_kind()] = static_cast<int64_t>(by_kind.get(item->get_kind(), 0)) + 1;
        }
        if (!by_kind.is_empty()) {
            piles[pile_key(**zone)] = by_kind;
        }
    }
    Dictionary cash;
    for (CashTile *tile : world.cash_list()) {
        if (int64_t total = tile->total()) {
            cash[tile->get_meta("pkey", "")] = total;
        }
    }
    Array carry;
    for (ItemCore *item : world.farmer()->carrier()->list()) {
        carry.push_back(item->get_kind());
    }
    Vector3 at = world.farmer()->get_position();
    Dictionary state;
    state["piles"] = piles;
    state["cash"] = cash;
    state["carry"] = carry;
    state["feed_given"] = feed_given;
    state["px"] = at.x;
    state["pz"] = at.z;
    return state;
}

Dictionary FarmDocument::build() {
    Dictionary doc = source.duplicate();
    Dictionary levels = stray_levels.duplicate();
    levels.merge(world.levels_by_id, true);
    doc["money"] = world.money;
    doc["gold_eggs"] = world.gold_eggs;
    doc["levels"] = levels;
    doc["paid"] = world.tile_office().paid_map();
    doc["won"] = world.won;
    world.trucking().save(doc);
    doc["state"] = state_now();
    doc["tools"] = world.tools;
    doc["saved_at"] = static_cast<int64_t>(Time::get_singleton()->get_unix_time_from_system());
    doc["earn_rate"] = world.earn_rate;
    doc["earn_slow"] = world.earn_slow;
    doc["staff"] = world.staff;
    doc["lots"] = LOTS_FORM;
    world.pet_house().store(doc);
    world.decorations().store(doc);
    source = doc;
    return doc;
}

} // namespace tilm
