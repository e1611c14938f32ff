#pragma once
// A rectangle of floor that lets people take from a pile or give to it, with the rules and the haulers' claims.

#include <cmath>
#include <cstdint>
#include <vector>

#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/vector2.hpp>

#include "farm_items/item_kinds.h"
#include "farm_items/pile_core.h"
#include "fields.h"
#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class ZoneCore : public RefCounted {
    GDCLASS(ZoneCore, RefCounted)

public:
    static constexpr int64_t claim_msec = 180000;

    TM_FIELD(Vector3, pos, Vector3())
    TM_FIELD(Vector2, size, Vector2(2.4, 1.8))  // full width in x and z
    TM_FIELD(Dictionary, accepts, Dictionary()) // kind -> level of the pile to fill up to
    TM_FIELD(bool, active, true)

    ZoneCore();

    // What haulers know the zone by: its own group ("..._feed" for troughs) and its building's.
    void set_group(const String &g);
    String get_group() const { return group; }
    void set_owner_group(const String &g);
    String get_owner_group() const { return owner_group; }
    // Whether one of the two has this number, given by item_kinds::intern.
    bool in_group(KindId id) const { return group_id == id || owner_id == id; }
    bool is_feed() const { return feed; }

    void set_makes(const String &k);
    String get_makes() const { return makes; }
    KindId makes_id() const { return makes_kind; }
    // "take" or "give".
    void set_mode(const String &m);
    String get_mode() const { return mode; }
    bool is_take() const { return takes; }
    bool is_give() const { return !takes; }

    // Null once the pile is freed.
    PileCore *get_pile() const { return pile.get(); }
    void set_pile(PileCore *p) { pile.set(p); }

    bool has_point(const Vector3 &p) const {
        return std::fabs(p.x - pos.x) < size.x * 0.5 && std::fabs(p.z - pos.z) < size.y * 0.5;
    }
    // How many more of a kind the pile wants; negative when it holds more than its level, 0 when the zone does not take
    // it.
    int room(const String &kind) const { return room_of(kind, item_kinds::find(kind)); }
    // The same for callers that keep a kind as the key of `accepts` beside its number.
    int room_of(const Variant &key, KindId id) const;
    bool has_room_for_any(const Array &kinds) const;
    // The active zones that hold p, in their order.
    static Array at(const Array &zones, const Vector3 &p);

    // Claims. The claimant is an engine object's instance id; the claims of a freed one do not count.
    // Sum of what others than the claimant have claimed of a kind. Forgets claims past their time.
    int claimed(const String &kind, uint64_t claimant);
    int claimed_of(KindId id, uint64_t claimant) { return claims.empty() ? 0 : sum_claims(id, claimant, now_msec()); }
    int claimed_at(const String &kind, uint64_t claimant, int64_t now) {
        return sum_claims(item_kinds::find(kind), claimant, now);
    }
    static int64_t now_msec();
    void claim(uint64_t claimant, const String &kind, int n);
    void release(uint64_t claimant);
    int claim_count() const { return (int)claims.size(); }

protected:
    static void _bind_methods();

private:
    struct Claim {
        uint64_t claimant;
        KindId kind;
        int n;
        int64_t expires; // engine milliseconds
        bool object;     // the claimant was a live object: its claims end with it
    };

    int sum_claims(KindId id, uint64_t claimant, int64_t now);

    String mode;
    bool takes = true;
    String makes;
    KindId makes_kind = item_kinds::none;
    String group;
    String owner_group;
    KindId group_id = item_kinds::none;
    KindId owner_id = item_kinds::none;
    bool feed = false;
    LiveRef<PileCore> pile;
    std::vector<Claim> claims;
};

} // namespace tilm
