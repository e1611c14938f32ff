#pragma once
// What a running farm offers to the rooms below it: money verbs, levels, look-ups and events. World implements it.

#include <cstdint>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class ItemCore;

class Farm {
public:
    virtual ~Farm() = default;

    // The farm that is running or being built, null without one.
    static Farm *current() { return slot(); }
    static void set_current(Farm *farm) { slot() = farm; }
    // The farm behind an engine object, null if it is none.
    static Farm *of(Object *object) { return dynamic_cast<Farm *>(object); }

    // Money. All changes of the farm's money go through these.
    virtual int64_t money_now() const = 0;
    virtual void pay(int64_t amount, const Vector3 &to) = 0;
    virtual void gain(int64_t amount, const Vector3 &from) = 0;
    virtual bool spend_quiet(int64_t amount) = 0;

    // Events.
    virtual void mission_event(const String &type, const String &kind, int64_t n) = 0;
    virtual void note_mood(double mood, const String &src) = 0;
    virtual void stat_add(const String &key, int64_t n) = 0; // flow counters, such as "made:egg"
    virtual void tutorial_event(const String &step) = 0;
    // A truck of `dock` was loaded in full; `mult` is its speed_mult().
    virtual void order_done(Object * /*dock*/, int64_t /*reward*/, double /*mult*/) {}
    virtual void tip(const String & /*key*/) {} // something new happened that a tip may explain

    // Look-ups.
    virtual Node3D *root() = 0; // the world node: parent of actors
    virtual Node3D *player_node() = 0;
    virtual Array zone_list() = 0; // all zones, shared: grows as the farm grows
    virtual int level_of(const String &entry_id) const = 0;
    virtual Node *node_of(const String &entry_id) const = 0;
    virtual Dictionary staff_table() = 0;          // staff id -> experience, shared and saved
    virtual void add_solid(const Rect2 &rect) = 0; // the player slides round it
    virtual int feed_level() const = 0;            // BETTER FEED upgrades
    virtual double animal_multiplier() const = 0;
    virtual int season() const = 0; // 0..3
    virtual bool is_night() const { return false; }
    virtual Array stall_list() { return Array(); } // SellCounters, shared
    virtual Array truck_list() { return Array(); } // TruckDepots, shared
    virtual bool is_building() const = 0;          // the staged build runs
    virtual bool is_visiting() const = 0;
    virtual Node *services() const = 0;                   // FarmServices or null
    virtual bool has_perk(const String &boost) const = 0; // a boost such as "magnet" runs

private:
    static Farm *&slot() {
        static Farm *farm = nullptr;
        return farm;
    }
};

} // namespace tilm
