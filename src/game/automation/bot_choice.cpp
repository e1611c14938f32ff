#include "game/automation/bot_choice.h"

#include <algorithm>
#include <cmath>

#include "farm_items/item_kinds.h"
#include "farm_items/pile_core.h"
#include "farm_items/zone_core.h"
#include "game/actors/cash_tile.h"
#include "game/actors/crop_field.h"
#include "game/actors/player.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/unlock_tile.h"
#include "game/data/farm_data.h"
#include "game/shell/world.h"

namespace tilm {

namespace {

constexpr double PICK_SECONDS = 0.055;
constexpr double CUT_SECONDS = 0.22; // a good cut while walking through the crop
constexpr double START_SECONDS = 0.6;
constexpr double CASH_WEIGHT = 1.5; // money in hand buys, goods on a shelf do not yet
constexpr int HUNGRY_BELOW = 4;
constexpr double HUNGRY_WEIGHT = 4.0;

struct Sink {
    ZoneCore *zone;
    String good;
    KindId id;
    int room;
    double worth; // dollars a good
    Vector3 pos;
};

struct Source {
    uint64_t target;
    bool field;
    String good;
    KindId id;
    int count;
    Vector3 pos;
    const PileCore *pile;
};

double flat(const Vector3 &a, const Vector3 &b) {
    return Vector2(a.x - b.x, a.z - b.z).length();
}

bool banned(const std::vector<BotBan> &bans, uint64_t target) {
    return std::any_of(bans.begin(), bans.end(), [&](const BotBan &ban) { return ban.target == target; });
}

// What a good is worth where it is given: its price on a shelf, more where it is missed, its product's where it is
// made into something.
double worth_at(const ZoneCore &zone, const String &good, int room) {
    const String group = zone.get_group();
    const double price = static_cast<double>(FarmData::price_of(good, 1));
    const double level = std::max(1.0, static_cast<double>(zone.get_accepts().get(good, 1)));
    const double missing = std::min(1.0, room / level);
    if (group.begins_with("stall_")) {
        return price * (0.3 + 0.7 * missing);
    }
    if (group.begins_with("dock_")) {
        return price * 2.5;
    }
    if (group.begins_with("truck")) {
        return price * 1.6;
    }
    const bool feed = group.ends_with("_feed");
    const Dictionary entry = FarmData::entry_by_id(feed ? group.trim_suffix("_feed") : group);
    const String product = entry.get("product", "");
    if (product.is_empty()) {
        return price * 0.3; // a store room
    }
    const double made = static_cast<double>(FarmData::price_of(product, 1));
    if (feed) {
        const PileCore *pile = zone.get_pile();
        return made * (pile && pile->count() < HUNGRY_BELOW ? HUNGRY_WEIGHT : 0.3 + missing);
    }
    return made * (0.3 + 0.7 * missing);
}

std::vector<Sink> find_sinks(World &world, const std::vector<BotBan> &bans) {
    std::vector<Sink> sinks;
    const Array zones = world.zone_list();
    for (int i = 0; i < zones.size(); i++) {
        ZoneCore *zone = Object::cast_to<ZoneCore>(zones[i]);
        if (!zone || !zone->get_active() || !zone->is_give() || !zone->get_pile() ||
            banned(bans, zone->get_instance_id())) {
            continue;
        }
        const Array kinds = zone->get_accepts().keys();
        for (int k = 0; k < kinds.size(); k++) {
            const KindId id = item_kinds::find(kinds[k]);
            const int room = zone->room_of(kinds[k], id);
            if (room > 0) {
                sinks.push_back({zone, kinds[k], id, room, worth_at(*zone, kinds[k], room), zone->get_pos()});
            }
        }
    }
    return sinks;
}

std::vector<Source> find_sources(World &world, const std::vector<BotBan> &bans, const Vector3 &me) {
    std::vector<Source> sources;
    const Array zones = world.zone_list();
    for (int i = 0; i < zones.size(); i++) {
        ZoneCore *zone = Object::cast_to<ZoneCore>(zones[i]);
        if (zone && zone->get_active() && zone->is_take() && zone->get_pile() && zone->get_pile()->count() > 0 &&
            !zone->get_makes().is_empty() && !banned(bans, zone->get_instance_id())) {
            sources.push_back({zone->get_instance_id(), false, zone->get_makes(), zone->makes_id(),
                               zone->get_pile()->count(), zone->get_pos(), zone->get_pile()});
        }
    }
    for (CropField *field : world.field_list()) {
        const int goods =
            static_cast<int>(field->alive_ratio() * field->get_nx() * field->get_nz() / field->get_cells());
        if (goods >= 2 && !banned(bans, field->get_instance_id())) {
            const Rect2 r = field->get_rect();
            const Vector3 edge(CLAMP(me.x, r.position.x + 0.5f, r.get_end().x - 0.5f), 0,
                               CLAMP(me.z, r.position.y + 0.5f, r.get_end().y - 0.5f));
            sources.push_back({field->get_instance_id(), true, field->get_crop(), item_kinds::find(field->get_crop()),
                               goods, edge, nullptr});
        }
    }
    return sources;
}

int carried(const StackCarrier &tower, KindId id) {
    int n = 0;
    for (const ItemCore *item : tower.list()) {
        n += item_kinds::find(item->get_kind()) == id ? 1 : 0;
    }
    return n;
}

} // namespace

BotErrand buying_errand(World &world, const std::vector<BotBan> &bans) {
    BotErrand errand;
    UnlockTile *tile = Object::cast_to<UnlockTile>(world.next_tile());
    if (tile && !banned(bans, tile->get_instance_id())) {
        errand.kind = BotErrand::BUY;
        errand.target = tile->get_instance_id();
        errand.pos = tile->get_position();
        errand.words = "buying " + tile->entry_id();
    }
    return errand;
}

BotErrand choose_errand(World &world, const std::vector<BotBan> &bans) {
    BotErrand best = buying_errand(world, bans);
    if (best.kind != BotErrand::NONE) {
        return best;
    }
    const Vector3 me = world.player_pos();
    const Player &player = *world.farmer();
    const StackCarrier &tower = *player.carrier();
    const double speed = std::max(0.5, player.get_speed() * player.get_speed_mult());
    auto offer = [&best](BotErrand::Kind kind, uint64_t target, const String &good, int until, const Vector3 &pos,
                         double rate, const String &words) {
        if (rate > best.rate) {
            best = {kind, target, good, until, pos, rate, words};
        }
    };

    for (const CashTile *tile : world.cash_list()) {
        const double sum = static_cast<double>(tile->total());
        if (sum > 0 && !banned(bans, tile->get_instance_id())) {
            const Vector3 at = tile->get_position();
            offer(BotErrand::COLLECT, tile->get_instance_id(), String(), 0, at,
                  CASH_WEIGHT * sum / (flat(me, at) / speed + START_SECONDS), "collecting money");
        }
    }

    const std::vector<Sink> sinks = find_sinks(world, bans);
    // The best place for what is on the back already.
    double load_value = 0;
    Vector3 load_at = me;
    double load_rate = 0;
    for (const Sink &sink : sinks) {
        const int n = std::min(sink.room, carried(tower, sink.id));
        if (n <= 0) {
            continue;
        }
        const double rate = n * sink.worth / (flat(me, sink.pos) / speed + n * PICK_SECONDS + START_SECONDS);
        offer(BotErrand::GIVE, sink.zone->get_instance_id(), sink.good, 0, sink.pos, rate,
              "delivering " + sink.good + " to " + sink.zone->get_group());
        if (rate > load_rate) {
            load_rate = rate;
            load_value = n * sink.worth;
            load_at = sink.pos;
        }
    }
    if (tower.is_full()) {
        return best;
    }
    for (const Source &source : find_sources(world, bans, me)) {
        const int have = carried(tower, source.id);
        for (const Sink &sink : sinks) {
            if (sink.id != source.id || sink.zone->get_pile() == source.pile) {
                continue;
            }
            const int n = std::min({source.count, tower.space(), sink.room - have});
            if (n <= 0) {
                continue;
            }
            const double seconds =
                (flat(me, source.pos) + flat(source.pos, sink.pos) + (load_value > 0 ? flat(sink.pos, load_at) : 0.0)) /
                    speed +
                n * (PICK_SECONDS + (source.field ? CUT_SECONDS : PICK_SECONDS)) + 2 * START_SECONDS;
            offer(source.field ? BotErrand::CUT : BotErrand::PICK, source.target, source.good, have + n, source.pos,
                  (n * sink.worth + load_value) / seconds,
                  (source.field ? "cutting " : "fetching ") + source.good + " for " + sink.zone->get_group());
        }
    }
    return best;
}

} // namespace tilm
