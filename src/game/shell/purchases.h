#pragma once
// World's side of price tiles: which stand, who stands on them, what a finished one does, and the other ways to buy.

#include <functional>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>

#include "game/shell/tile_titles.h"

namespace tilm {
using namespace godot;

class Farm;
class UnlockTile;

// What Purchases asks of the farm that holds it. World implements it.
class PurchaseHost {
public:
    virtual ~PurchaseHost() = default;

    virtual Farm &farm() = 0;
    virtual Node3D *tile_parent() = 0;
    virtual Callable tile_done_call() = 0; // connected to each tile's `completed`
    virtual Array plan() = 0;              // all entries, extras included
    virtual Dictionary levels() = 0;       // entry id -> level, shared
    virtual int farm_level() = 0;
    // Level gate of an entry, 0 for none.
    virtual int gate_of(const String &entry_id) = 0;
    // Raises an entry by one level (building it at level 1).
    virtual void apply_level(const Dictionary &entry, int level, bool quiet) = 0;
    virtual bool building() = 0;
    virtual Vector3 player_pos() = 0;

    // After a purchase, in this order of calls. Missions and the tutorial go through farm().
    virtual void burst(const Vector3 &at) = 0; // gold
    virtual void recalc() = 0;
    virtual void level_up() = 0;
    virtual void buzz(int ms) = 0;
    virtual void announce(const String &text, int type) = 0; // to friends; called in a session only
    virtual double elapsed() = 0;                            // seconds times the time scale, for the log
    virtual void log_line(const String &line) = 0;
    virtual void progress() = 0;
    virtual void save() = 0;
    virtual void after(double sec, const Callable &then) = 0;
    virtual Callable refresh_call() = 0; // _refresh_tiles

    // Systems a farm may lack; the defaults answer as if they were missing.
    virtual bool can_build(const String &) { return true; } // a kind that nobody builds is not for sale
    virtual bool wants_guard() { return false; }
    virtual bool wants_waterman() { return false; }
    virtual bool guard_counts([[maybe_unused]] int &hired, [[maybe_unused]] int &wanted) { return false; }
    virtual bool adds_places(const String &, int) { return true; } // does the level after n add beds or seats?
    virtual bool free_lot() { return false; }                      // has the region `eggs` a free lot?
    virtual int64_t loan_reserve() { return 0; }                   // money kept back for an installment
    virtual void rebuild_lots() {}
};

class Purchases {
public:
    explicit Purchases(PurchaseHost &host) : host(host) {}

    // Next price of an entry, -1 when it has no further level.
    int64_t price(const Dictionary &entry) const;
    // Gate and requirements hold.
    bool unlocked(const Dictionary &entry) const;
    bool requirements_hold(const Dictionary &entry) const;
    void auto_free();
    // Brings tiles and locked signs into line with the state.
    void refresh_tiles();
    // Lays at most so many of the missing tiles, so that a farm that is being built spreads them over frames; true when
    // none is missing.
    bool lay_ahead(int most);
    // One frame of the player at `player_pos`: drains the tile under him.
    void stand_step(const Vector3 &player_pos, double dt);
    // Nothing is paid until the player is more than 1.6 from `at`.
    void guard_step_off(const Vector3 &at);
    bool step_off_guarded() const { return guard_on; }
    void on_tile_done(UnlockTile *tile);
    // The shop's button: "" on success, else "NOT AVAILABLE" or "NOT ENOUGH MONEY".
    String buy_now(const String &id);
    String buy_guard();
    // The tile to aim at, null for none.
    UnlockTile *next_tile();
    // The tile to save up for, whatever it costs; null for none.
    UnlockTile *cheapest_tile() const;
    // Each frame: the test of free lots in next_tile() is repeated every 30 s at most.
    void tick(double dt) { lot_test_t -= dt; }

    UnlockTile *tile_of(const String &id) const;
    // The tile whose square holds a ground point, null for none.
    UnlockTile *tile_at(const Vector3 &at);
    // Entry id -> node, made anew at each call.
    Dictionary tile_table() const;
    Dictionary locked_table() const;
    int tile_count() const { return static_cast<int>(tiles.size()); }
    bool locked_sign_of(const String &id) const { return signs.has(id); }
    int bought() const { return bought_count; }
    // Part payments: taken as they are at load, gathered from the standing tiles at a save.
    void load_paid(const Dictionary &saved) { paid = saved.duplicate(); }
    Dictionary paid_map();
    String title_of(const Dictionary &entry, int level) const;

private:
    void place(const Dictionary &entry, const String &id);
    void keep_up(UnlockTile *tile, const Dictionary &entry, const String &id);
    void drop_tile(const String &id);
    void show_sign(const Dictionary &entry, const String &id);
    void drop_sign(const String &id);
    bool may_show(const String &kind) const;
    void rebuild_squares();
    bool helper_is_limit(const String &id) const;
    TitleHooks hooks() const;
    String buy(UnlockTile *tile);
    void tell_friends(const Dictionary &entry, const String &kind, int level);
    int level_of(const String &id) const;

    PurchaseHost &host;
    Dictionary tiles; // entry id -> instance id of its UnlockTile
    Dictionary signs; // entry id -> instance id of its sign
    Dictionary paid;  // part payments of tiles that do not stand now
    PackedVector3Array squares;
    std::vector<uint64_t> square_tiles;
    bool squares_stale = true;
    uint64_t under_player = 0;
    bool guard_on = false;
    Vector3 guard_at;
    int bought_count = 0;
    double lot_test_t = 0;
    bool lots_free = false;
};

// Factors on the selling price by good, from the levels of what makes it (kinds with factor 1 included).
Dictionary price_factors(const Array &plan, const Dictionary &levels);
// Extra goods each hauler to `dst` carries; `stands` tells whether an entry's building stands.
int hauler_extra_room(const String &dst, const Dictionary &levels, const std::function<bool(const String &)> &stands);
// Whole number of a Dictionary that may hold a double, 0 where there is none.
int level_in(const Dictionary &levels, const String &id);

} // namespace tilm
