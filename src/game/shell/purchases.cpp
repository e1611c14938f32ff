#include "game/shell/purchases.h"

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/core/object.hpp>

#include "game/actors/unlock_tile.h"
#include "game/art/models.h"
#include "game/ports/farm.h"
#include "glebworks/glebworks.h"
#include "names.h"
#include "rules/tiles.h"

namespace tilm {

namespace {

String text_of(const Dictionary &entry, const StringName &key) {
    return entry.get(key, String());
}

std::string plain(const String &text) {
    return std::string(text.utf8().get_data());
}

template <class T>
T *live(const Variant &instance_id) {
    return Object::cast_to<T>(ObjectDB::get_instance(static_cast<uint64_t>(static_cast<int64_t>(instance_id))));
}

Dictionary nodes_of(const Dictionary &ids) {
    Dictionary nodes;
    const Array keys = ids.keys();
    for (int i = 0; i < keys.size(); ++i) {
        if (Node3D *node = live<Node3D>(ids[keys[i]])) {
            nodes[keys[i]] = node;
        }
    }
    return nodes;
}

Vector3 ground(const Dictionary &entry, const StringName &key) {
    const Vector2 at = entry.get(key, Vector2());
    return Vector3(at.x, 0, at.y);
}

} // namespace

int level_in(const Dictionary &levels, const String &id) {
    return static_cast<int>(static_cast<int64_t>(levels.get(id, 0)));
}

int Purchases::level_of(const String &id) const {
    return level_in(host.levels(), id);
}

int64_t Purchases::price(const Dictionary &entry) const {
    const Variant list = entry.get(TM_NAME("costs"), Variant());
    if (list.get_type() != Variant::ARRAY) {
        return -1;
    }
    const Array costs = list;
    const int level = level_of(text_of(entry, TM_NAME("id")));
    return level >= 0 && level < costs.size() ? static_cast<int64_t>(costs[level]) : -1;
}

bool Purchases::requirements_hold(const Dictionary &entry) const {
    const Variant list = entry.get(TM_NAME("req"), Variant());
    if (list.get_type() != Variant::ARRAY) {
        return true;
    }
    const Array req = list;
    const Dictionary levels = host.levels();
    for (int i = 0; i < req.size(); ++i) {
        const rules::TileNeed need = rules::tile_need(plain(req[i]));
        if (level_in(levels, String::utf8(need.id.c_str())) < need.level) {
            return false;
        }
    }
    return true;
}

bool Purchases::unlocked(const Dictionary &entry) const {
    return host.farm_level() >= host.gate_of(text_of(entry, TM_NAME("id"))) && requirements_hold(entry);
}

bool Purchases::may_show(const String &kind) const {
    if (!host.can_build(kind)) {
        return false;
    }
    if (kind == "guards") {
        return host.wants_guard();
    }
    return kind != "waterman" || host.wants_waterman();
}

void Purchases::auto_free() {
    for (bool changed = true; changed;) {
        changed = false;
        const Array plan = host.plan();
        for (int i = 0; i < plan.size(); ++i) {
            const Dictionary entry = plan[i];
            if (price(entry) != 0 || !unlocked(entry)) {
                continue;
            }
            const String id = text_of(entry, TM_NAME("id"));
            const int level = level_of(id) + 1;
            host.apply_level(entry, level, host.building());
            if (level_of(id) < level) {
                ERR_PRINT("TILMARCH free level of " + id + " was not taken");
                return;
            }
            changed = true;
        }
    }
}

bool Purchases::lay_ahead(int most) {
    if (host.farm().is_visiting()) {
        return true;
    }
    const Array plan = host.plan();
    for (int i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        const String id = text_of(entry, TM_NAME("id"));
        if (price(entry) <= 0 || !unlocked(entry) || !may_show(text_of(entry, TM_NAME("kind"))) || tile_of(id)) {
            continue;
        }
        if (most-- <= 0) {
            return false;
        }
        place(entry, id);
    }
    return true;
}

void Purchases::refresh_tiles() {
    if (host.farm().is_visiting()) {
        return;
    }
    auto_free();
    const Array plan = host.plan();
    for (int i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        const String id = text_of(entry, TM_NAME("id"));
        const bool for_sale = price(entry) > 0;
        if (for_sale && unlocked(entry) && may_show(text_of(entry, TM_NAME("kind")))) {
            drop_sign(id);
            if (UnlockTile *tile = tile_of(id)) {
                keep_up(tile, entry, id);
            } else {
                place(entry, id);
            }
            continue;
        }
        if (for_sale && host.gate_of(id) > host.farm_level() && requirements_hold(entry)) {
            show_sign(entry, id);
        } else {
            drop_sign(id);
        }
        drop_tile(id);
    }
    host.rebuild_lots();
}

void Purchases::place(const Dictionary &entry, const String &id) {
    const int level = level_of(id);
    UnlockTile *tile = memnew(UnlockTile);
    tile->setup(entry, static_cast<int64_t>(paid.get(id, 0)), title_of(entry, level), price(entry), level);
    tile->set_position(ground(entry, level > 0 && entry.has(TM_NAME("pad")) ? TM_NAME("pad") : TM_NAME("pos")));
    tile->connect(TM_NAME("completed"), host.tile_done_call());
    host.tile_parent()->add_child(tile);
    tiles[id] = static_cast<int64_t>(tile->get_instance_id());
    squares_stale = true;
}

// A standing tile whose entry lost or won a level in another way than by this tile is laid anew, with its money.
void Purchases::keep_up(UnlockTile *tile, const Dictionary &entry, const String &id) {
    const int level = level_of(id);
    if (tile->get_level() != level) {
        drop_tile(id);
        place(entry, id);
        return;
    }
    tile->set_title(title_of(entry, level));
}

void Purchases::drop_tile(const String &id) {
    if (!tiles.has(id)) {
        return;
    }
    if (UnlockTile *tile = live<UnlockTile>(tiles[id])) {
        if (tile->get_paid() > 0) {
            paid[id] = tile->get_paid();
        }
        tile->on_leave();
        tile->queue_free();
    }
    tiles.erase(id);
    squares_stale = true;
}

void Purchases::show_sign(const Dictionary &entry, const String &id) {
    if (signs.has(id)) {
        return;
    }
    Node3D *sign = memnew(Node3D);
    const Callable plates = Models::builder([]() {
        Node3D *tree = memnew(Node3D);
        Models::box(Vector3(5, 0.12f, 5), Color::html("8d9a86"), Vector3(0, 0.06f, 0), tree);
        Models::box(Vector3(4.4f, 0.14f, 4.4f), Color::html("b7c2ae"), Vector3(0, 0.07f, 0), tree);
        return tree;
    });
    sign->add_child(Models::bake("lockedplate", plates, false));
    Models::label3d(text_of(entry, TM_NAME("title")), 56, Color(1, 1, 1), Vector3(0, 1.5f, -0.4f), sign);
    Models::label3d("OPENS AT LEVEL " + String::num_int64(host.gate_of(id)), 44, Color::html("ffd54f"),
                    Vector3(0, 0.9f, 0.2f), sign);
    sign->set_position(ground(entry, TM_NAME("pos")));
    host.tile_parent()->add_child(sign);
    signs[id] = static_cast<int64_t>(sign->get_instance_id());
}

void Purchases::drop_sign(const String &id) {
    if (!signs.has(id)) {
        return;
    }
    if (Node3D *sign = live<Node3D>(signs[id])) {
        sign->queue_free();
    }
    signs.erase(id);
}

UnlockTile *Purchases::tile_of(const String &id) const {
    return tiles.has(id) ? live<UnlockTile>(tiles[id]) : nullptr;
}

Dictionary Purchases::tile_table() const {
    return nodes_of(tiles);
}

Dictionary Purchases::locked_table() const {
    return nodes_of(signs);
}

void Purchases::rebuild_squares() {
    squares.clear();
    square_tiles.clear();
    const Array ids = tiles.values();
    for (int i = 0; i < ids.size(); ++i) {
        if (UnlockTile *tile = live<UnlockTile>(ids[i])) {
            const Vector3 at = tile->get_position();
            squares.push_back(Vector3(at.x, static_cast<float>(tile->half()), at.z));
            square_tiles.push_back(tile->get_instance_id());
        }
    }
    squares_stale = false;
}

UnlockTile *Purchases::tile_at(const Vector3 &at) {
    if (squares_stale) {
        rebuild_squares();
    }
    const int index = Glebworks::square_at(squares, at);
    const uint64_t id = index < 0 ? 0 : square_tiles[static_cast<size_t>(index)];
    return Object::cast_to<UnlockTile>(ObjectDB::get_instance(id));
}

void Purchases::stand_step(const Vector3 &player_pos, double dt) {
    UnlockTile *tile = tile_at(player_pos);
    const uint64_t now = tile == nullptr ? 0 : tile->get_instance_id();
    if (now != under_player) {
        if (UnlockTile *left = Object::cast_to<UnlockTile>(ObjectDB::get_instance(under_player))) {
            left->on_leave();
        }
        under_player = now;
    }
    if (guard_on) {
        const Vector3 away(player_pos.x - guard_at.x, 0, player_pos.z - guard_at.z);
        if (away.length() <= rules::step_off_reach) {
            return;
        }
        guard_on = false;
    }
    if (tile != nullptr) {
        tile->stand(host.farm(), dt);
    }
}

void Purchases::guard_step_off(const Vector3 &at) {
    guard_on = true;
    guard_at = at;
}

Dictionary Purchases::paid_map() {
    Dictionary all = paid.duplicate();
    const Array keys = tiles.keys();
    for (int i = 0; i < keys.size(); ++i) {
        const UnlockTile *tile = live<UnlockTile>(tiles[keys[i]]);
        if (tile != nullptr && tile->get_paid() > 0) {
            all[keys[i]] = tile->get_paid();
        }
    }
    return all;
}

bool Purchases::helper_is_limit(const String &id) const {
    const Array plan = host.plan();
    for (int i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        if (text_of(entry, TM_NAME("kind")) == "hauler" && text_of(entry, TM_NAME("dst")) == id &&
            level_of(text_of(entry, TM_NAME("id"))) == 0) {
            return true;
        }
    }
    return false;
}

TitleHooks Purchases::hooks() const {
    TitleHooks h;
    h.guards = [this](int &hired, int &wanted) { return host.guard_counts(hired, wanted); };
    h.helper_is_limit = [this](const String &id) { return helper_is_limit(id); };
    h.adds_places = [this](const String &kind, int n) { return host.adds_places(kind, n); };
    return h;
}

String Purchases::title_of(const Dictionary &entry, int level) const {
    return tile_title(entry, level, hooks());
}

} // namespace tilm
