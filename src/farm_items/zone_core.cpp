#include "farm_items/zone_core.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/core/object.hpp>

namespace tilm {

ZoneCore::ZoneCore() : mode("take") {}

void ZoneCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("has_point", "p"), &ZoneCore::has_point);
    ClassDB::bind_method(D_METHOD("room", "kind"), &ZoneCore::room);
    ClassDB::bind_method(D_METHOD("has_room_for_any", "kinds"), &ZoneCore::has_room_for_any);
    ClassDB::bind_static_method("ZoneCore", D_METHOD("at", "zones", "p"), &ZoneCore::at);
    ClassDB::bind_method(D_METHOD("claimed", "kind", "claimant"), &ZoneCore::claimed);
    ClassDB::bind_method(D_METHOD("claim", "claimant", "kind", "n"), &ZoneCore::claim);
    ClassDB::bind_method(D_METHOD("release", "claimant"), &ZoneCore::release);
    ClassDB::bind_method(D_METHOD("claim_count"), &ZoneCore::claim_count);

    TM_BIND_FIELD(ZoneCore, Variant::VECTOR3, pos);
    TM_BIND_FIELD(ZoneCore, Variant::VECTOR2, size);
    TM_BIND_FIELD(ZoneCore, Variant::STRING, mode);
    TM_BIND_FIELD(ZoneCore, Variant::OBJECT, pile);
    TM_BIND_FIELD(ZoneCore, Variant::DICTIONARY, accepts);
    TM_BIND_FIELD(ZoneCore, Variant::STRING, makes);
    TM_BIND_FIELD(ZoneCore, Variant::STRING, group);
    TM_BIND_FIELD(ZoneCore, Variant::STRING, owner_group);
    TM_BIND_FIELD(ZoneCore, Variant::BOOL, active);
}

void ZoneCore::set_mode(const String &m) {
    if (m != "take" && m != "give") {
        ERR_PRINT("ZoneCore: the mode is \"take\" or \"give\"; another word was ignored.");
        return;
    }
    mode = m;
    takes = m == "take";
}

void ZoneCore::set_makes(const String &k) {
    makes = k;
    makes_kind = item_kinds::intern(k);
}

void ZoneCore::set_group(const String &g) {
    group = g;
    group_id = item_kinds::intern(g);
    feed = g.ends_with("_feed");
}

void ZoneCore::set_owner_group(const String &g) {
    owner_group = g;
    owner_id = item_kinds::intern(g);
}

namespace {

// A level that is no number counts as 0.
int level_of(const Variant &level) {
    switch (level.get_type()) {
    case Variant::INT:
        return (int)std::clamp<int64_t>((int64_t)level, -1000000, 1000000);
    case Variant::FLOAT: {
        const double d = (double)level;
        return std::isfinite(d) ? (int)std::clamp(d, -1e6, 1e6) : 0;
    }
    default:
        return 0;
    }
}

} // namespace

int ZoneCore::room_of(const Variant &key, KindId id) const {
    if (!active || takes) {
        return 0;
    }
    const Variant level = accepts.get(key, Variant());
    const PileCore *p = level.get_type() == Variant::NIL ? nullptr : get_pile();
    return p ? level_of(level) - p->count_of(id) : 0;
}

bool ZoneCore::has_room_for_any(const Array &kinds) const {
    for (int64_t i = 0; i < kinds.size(); i++) {
        if (room(kinds[i]) > 0) {
            return true;
        }
    }
    return false;
}

Array ZoneCore::at(const Array &zones, const Vector3 &p) {
    Array out;
    for (int64_t i = 0; i < zones.size(); i++) {
        const ZoneCore *zone = Object::cast_to<ZoneCore>(zones[i].get_validated_object());
        if (zone && zone->active && zone->has_point(p)) {
            out.push_back(zones[i]);
        }
    }
    return out;
}

int64_t ZoneCore::now_msec() {
    return (int64_t)Time::get_singleton()->get_ticks_msec();
}

int ZoneCore::claimed(const String &kind, uint64_t claimant) {
    return claimed_of(item_kinds::find(kind), claimant);
}

int ZoneCore::sum_claims(KindId id, uint64_t claimant, int64_t now) {
    int sum = 0;
    for (size_t i = 0; i < claims.size();) {
        const Claim &c = claims[i];
        if (c.expires <= now || (c.object && !ObjectDB::get_instance(c.claimant))) {
            claims[i] = claims.back();
            claims.pop_back();
            continue;
        }
        if (c.kind == id && c.claimant != claimant) {
            sum += c.n;
        }
        i++;
    }
    return sum;
}

void ZoneCore::claim(uint64_t claimant, const String &kind, int n) {
    release(claimant);
    if (n <= 0) {
        return;
    }
    const bool object = ObjectDB::get_instance(claimant) != nullptr;
    claims.push_back({claimant, item_kinds::intern(kind), n, now_msec() + claim_msec, object});
}

void ZoneCore::release(uint64_t claimant) {
    claims.erase(
        std::remove_if(claims.begin(), claims.end(), [claimant](const Claim &c) { return c.claimant == claimant; }),
        claims.end());
}

} // namespace tilm
