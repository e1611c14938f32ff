#include "game/shell/purchases.h"

#include <algorithm>

#include <godot_cpp/core/object.hpp>

#include "game/actors/unlock_tile.h"
#include "game/ports/farm.h"
#include "game/ports/session.h"
#include "names.h"
#include "rules/machine_perks.h"
#include "rules/tiles.h"

namespace tilm {

namespace {

constexpr double lot_test_pause = 30.0;
constexpr double refresh_delay = 0.45; // the finished tile is still being removed until then

String text_of(const Dictionary &entry, const StringName &key) {
    return entry.get(key, String());
}

} // namespace

void Purchases::on_tile_done(UnlockTile *tile) {
    if (tile == nullptr || tile_of(tile->entry_id()) != tile) {
        return;
    }
    const Dictionary entry = tile->get_data();
    const String id = tile->entry_id();
    const String kind = tile->entry_kind();
    const Vector3 at = tile->get_position();
    bought_count += 1;
    lot_test_t = 0;
    guard_step_off(at);
    tiles.erase(id);
    squares_stale = true;
    paid.erase(id);
    host.burst(at + Vector3(0, 0.5f, 0));

    const int farm_level = host.farm_level();
    const int level = level_of(id) + 1;
    host.apply_level(entry, level, false);
    host.recalc();
    if (host.farm_level() > farm_level) {
        host.level_up();
    }
    if (kind == "hauler") {
        const String dst = text_of(entry, TM_NAME("dst"));
        if (UnlockTile *other = tile_of(dst)) {
            other->set_title(title_of(other->get_data(), other->get_level()));
        }
    }
    host.buzz(40);
    Farm &farm = host.farm();
    farm.mission_event("upgrade", "", 1);
    if (kind == "land") {
        farm.mission_event("land", "", 1);
    }
    farm.tutorial_event("upgrade");
    tell_friends(entry, kind, level);
    host.log_line("TILMARCH bought " + id + " lv" + String::num_int64(level) +
                  " money_left=" + String::num_int64(farm.money_now()) + " t=" + String::num(host.elapsed(), 1));
    host.progress();
    host.save();
    host.after(refresh_delay, host.refresh_call());
}

void Purchases::tell_friends(const Dictionary &entry, const String &kind, int level) {
    Session *session = Session::current();
    if (session == nullptr || !session->in_session()) {
        return;
    }
    const String title = text_of(entry, TM_NAME("title"));
    const bool built =
        kind == "producer" || kind == "machine" || kind == "factory" || kind == "restaurant" || kind == "stall";
    if (kind == "land") {
        host.announce("BOUGHT NEW LAND: " + title, 2);
    } else if (level == 1 && built) {
        host.announce("BUILT " + title, 1);
    } else if (level >= 10 && level % 10 == 0) {
        host.announce(title + " REACHED LV" + String::num_int64(level), 1);
    } else {
        host.announce("UPGRADED " + title, 0);
    }
}

String Purchases::buy(UnlockTile *tile) {
    const int64_t rest = tile->remaining();
    Farm &farm = host.farm();
    if (farm.money_now() < rest) {
        return "NOT ENOUGH MONEY";
    }
    farm.pay(rest, tile->get_position() + Vector3(0, 0.1f, 0));
    tile->fill();
    return String();
}

String Purchases::buy_now(const String &id) {
    UnlockTile *tile = tile_of(id);
    if (tile == nullptr || tile->is_done() || host.farm().is_visiting()) {
        return "NOT AVAILABLE";
    }
    return buy(tile);
}

String Purchases::buy_guard() {
    if (tile_of("guards") != nullptr) {
        return buy_now("guards");
    }
    if (host.farm().is_visiting()) {
        return "NOT AVAILABLE";
    }
    const Array plan = host.plan();
    for (int i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        if (text_of(entry, TM_NAME("id")) != "guards") {
            continue;
        }
        const int64_t cost = price(entry);
        if (cost <= 0 || !unlocked(entry)) {
            break;
        }
        if (host.farm().money_now() < cost) {
            return "NOT ENOUGH MONEY";
        }
        host.farm().pay(cost, host.player_pos());
        host.apply_level(entry, level_of("guards") + 1, false);
        host.recalc();
        return String();
    }
    return "NOT AVAILABLE";
}

UnlockTile *Purchases::next_tile() {
    if (lot_test_t <= 0) {
        lot_test_t = lot_test_pause;
        lots_free = host.free_lot();
    }
    std::vector<rules::TileOffer> offers;
    std::vector<UnlockTile *> standing;
    const Array ids = tiles.keys();
    for (int i = 0; i < ids.size(); ++i) {
        UnlockTile *tile = tile_of(ids[i]);
        if (tile == nullptr) {
            continue;
        }
        const Dictionary entry = tile->get_data();
        rules::TileOffer offer;
        offer.remaining = tile->remaining();
        offer.price = tile->get_total();
        offer.level = tile->get_level();
        offer.land = tile->entry_kind() == "land";
        offer.held_back = offer.land && lots_free && text_of(entry, TM_NAME("target")).begins_with("ext");
        offer.extra = entry.get(TM_NAME("extra"), false);
        offer.done = tile->is_done();
        offers.push_back(offer);
        standing.push_back(tile);
    }
    const int best = rules::next_tile(offers, host.farm().money_now() - host.loan_reserve());
    return best < 0 ? nullptr : standing[static_cast<size_t>(best)];
}

UnlockTile *Purchases::cheapest_tile() const {
    UnlockTile *cheapest = nullptr;
    const Array ids = tiles.keys();
    for (int i = 0; i < ids.size(); ++i) {
        UnlockTile *tile = tile_of(ids[i]);
        if (tile != nullptr && !tile->is_done() && (cheapest == nullptr || tile->remaining() < cheapest->remaining())) {
            cheapest = tile;
        }
    }
    return cheapest;
}

Dictionary price_factors(const Array &plan, const Dictionary &levels) {
    Dictionary factors;
    const auto raise = [&](const Variant &kind, double m) {
        factors[kind] = std::max(m, static_cast<double>(factors.get(kind, 1.0)));
    };
    for (int i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        const String kind = text_of(entry, TM_NAME("kind"));
        const bool producer = kind == "producer";
        if ((!producer && kind != "machine" && kind != "factory" && kind != "restaurant") ||
            !entry.has(TM_NAME("product"))) {
            continue;
        }
        const double m = rules::level_price_factor(level_in(levels, text_of(entry, TM_NAME("id"))), producer);
        const Array flavors = static_cast<Dictionary>(entry.get(TM_NAME("flavors"), Dictionary())).keys();
        for (int f = 0; f < flavors.size(); ++f) {
            raise(flavors[f], m);
        }
        raise(entry[TM_NAME("product")], m);
    }
    return factors;
}

int hauler_extra_room(const String &dst, const Dictionary &levels, const std::function<bool(const String &)> &stands) {
    const int level = level_in(levels, dst);
    const int steps = level > 0 && stands(dst) ? rules::cap_steps(level) : 0;
    return rules::hauler_extra_room(dst.utf8().get_data(), steps);
}

} // namespace tilm
