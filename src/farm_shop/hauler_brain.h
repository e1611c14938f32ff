#pragma once
// A carrier: picks the neediest destination, claims goods at a source and room at the destination, carries, gives up in
// good order. Claims go with the walker: they are released when it is freed.

#include <cstdint>
#include <vector>

#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/string.hpp>

#include "farm_items/zone_core.h"
#include "glebworks/live_ref.h"
#include "glebworks/walker_brain.h"

namespace tilm {
using namespace godot;

class StackCore;

class HaulerBrain : public WalkerBrain {
    GDCLASS(HaulerBrain, WalkerBrain)

public:
    enum State { choose = 0, to_source = 1, load = 2, to_destination = 3, unload = 4, resting = 5, give_back = 6 };

    ~HaulerBrain() override;

    void tick(double dt) override;
    void detach() override;

    bool can_break() const;
    bool quiet() const;
    // Carries feed and some trough has more than trough_half room: not a moment for a break.
    bool feed_busy() const;
    void drop_claims();
    // Starts over after a break or a move.
    void reset();

    static void set_road_z(double z) { road_z = z; }
    static double get_road_z() { return road_z; }

    // The farm's shared list; looked through again whenever its length changes.
    void set_zones(const Array &z);
    Array get_zones() const { return zones; }
    // Empty: whatever the destination accepts.
    void set_kinds(const Array &k);
    Array get_kinds() const;
    // "@feed", or groups joined by "|".
    void set_dst_group(const String &g);
    String get_dst_group() const { return dst_group; }
    void set_state(int64_t s) { state = static_cast<int>(s); }
    int64_t get_state() const { return state; }
    void set_trough_half(int64_t n) { trough_half = n; }
    int64_t get_trough_half() const { return trough_half; }
    void set_sfx(Object *s) { sfx.set(s); }
    Object *get_sfx() const { return sfx.get(); }
    Ref<ZoneCore> get_source() const { return source; }
    Ref<ZoneCore> get_destination() const { return destination; }
    String get_kind() const { return kind; }
    int64_t get_delivered() const { return delivered; }

    // Hens sent by all haulers: to the stall, to the plant. Cleared when a farm starts.
    static int64_t hens_to_stall() { return hen_stall; }
    static int64_t hens_to_plant() { return hen_plant; }
    static void clear_hens();

protected:
    static void _bind_methods();

private:
    static constexpr int64_t trough_reserve = 20; // left at the source while troughs are hungry

    // A kind as the rules name it, as a key of `accepts`, and as its number.
    struct Cargo {
        Cargo(const String &k) : name(k), key(k), id(item_kinds::intern(k)) {}
        String name;
        Variant key;
        KindId id;
    };
    struct Candidate {
        int64_t want;
        ZoneCore *zone;
        Cargo cargo;
    };

    void refresh_lists();
    void step_choose();
    bool try_candidate(const Candidate &c);
    ZoneCore *best_source(KindId id, const ZoneCore *to, int64_t &available) const;
    bool feed_first(const Cargo &c) const;
    bool machine_wants(const Cargo &c) const;
    bool hens_forbid(const ZoneCore *to, int64_t available);
    void count_hen(const ZoneCore *to);
    void step_load(double dt);
    void step_unload(double dt);
    void step_give_back(double dt);
    void look_elsewhere(StackCore *stack);
    String fitting_kind(StackCore *stack, const ZoneCore *zone) const;
    void finish();
    void rest(); // gives up its claims and idles a second
    void route_to(const Vector3 &point);
    void release(const Ref<ZoneCore> &zone);
    const std::vector<Cargo> &kinds_for(const ZoneCore *zone) const;
    bool next_move(); // one good each tenth of a second

    Array zones;
    std::vector<Cargo> kinds;
    mutable std::vector<Cargo> accepted; // stands in for empty `kinds`, read anew for each zone
    String dst_group;
    KindId dst_group_id = item_kinds::none; // of the whole text
    std::vector<KindId> dst_groups;         // of its parts
    bool to_feed = false;
    int64_t seen_zones = -1;
    std::vector<Ref<ZoneCore>> destinations;
    std::vector<Ref<ZoneCore>> takes;
    std::vector<Ref<ZoneCore>> feeds;
    std::vector<Ref<ZoneCore>> machines;
    std::vector<Candidate> candidates;

    int state = choose;
    int64_t trough_half = 20;
    Ref<ZoneCore> source;
    Ref<ZoneCore> destination;
    String kind;
    double timer = 0.0;
    double retarget_clock = 0.0;
    double wait_clock = 0.0;
    int64_t delivered = 0;
    LiveRef<Object> sfx;

    static double road_z;
    static int64_t last_stall_trip; // msec, -1: never
    static int64_t hen_stall;
    static int64_t hen_plant;
};

} // namespace tilm
