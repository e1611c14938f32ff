#include "game/shell/offer_desk.h"

#include <algorithm>
#include <cmath>

#include "game/actors/unlock_tile.h"
#include "game/data/farm_data.h"
#include "game/shell/world.h"
#include "names.h"
#include "safe_read.h"

namespace tilm {
namespace {

constexpr double look_seconds = 2.5;

String own_good(const Dictionary &entry) {
    for (const StringName &key : {TM_NAME("product"), TM_NAME("crop")}) {
        const String kind = entry.get(key, String());
        if (FarmData::prices().has(kind)) {
            return kind;
        }
    }
    return String();
}

} // namespace

String good_of_entry(const Dictionary &entry) {
    const String own = own_good(entry);
    if (!own.is_empty()) {
        return own;
    }
    const Variant kinds = entry.get(TM_NAME("kinds"), Variant());
    if (kinds.get_type() == Variant::ARRAY && as<Array>(kinds).size() == 1) {
        const String kind = as<Array>(kinds)[0];
        return FarmData::prices().has(kind) ? kind : String();
    }
    // Workers go with their field, belts with their factory.
    for (const StringName &key : {TM_NAME("field"), TM_NAME("factory")}) {
        const String id = entry.get(key, String());
        if (!id.is_empty()) {
            return own_good(FarmData::entry_by_id(id));
        }
    }
    return String();
}

OfferDesk::OfferDesk(World &world) : world(world) {
    Offers::set_current(this);
}

OfferDesk::~OfferDesk() {
    if (Offers::current() == this) {
        Offers::set_current(nullptr);
    }
}

std::vector<Offer> OfferDesk::list() const {
    std::vector<Offer> offers;
    if (world.is_visiting() || world.is_building()) {
        return offers;
    }
    const Array tiles = world.get_tiles().values();
    const Vector3 here = world.player_pos();
    for (int64_t i = 0; i < tiles.size(); ++i) {
        const UnlockTile *tile = Object::cast_to<UnlockTile>(tiles[i]);
        if (tile == nullptr || tile->is_done()) {
            continue;
        }
        const Dictionary entry = tile->get_data();
        Offer offer;
        offer.id = tile->entry_id();
        offer.title = tile->get_title();
        offer.kind = tile->entry_kind();
        offer.product = entry.get(TM_NAME("product"), String());
        offer.good = good_of_entry(entry);
        offer.land = FarmData::region_by_id(entry.get(TM_NAME("region"), String())).get(TM_NAME("title"), String());
        offer.price = tile->remaining();
        offer.payable = offer.price <= world.money_now();
        const Vector3 away = tile->get_position() - here;
        offer.steps = std::llround(std::hypot(away.x, away.z));
        offers.push_back(offer);
    }
    std::stable_sort(offers.begin(), offers.end(), [](const Offer &a, const Offer &b) { return a.price < b.price; });
    return offers;
}

String OfferDesk::buy(const String &id) {
    return world.buy_now(id);
}

String OfferDesk::show(const String &id) {
    const UnlockTile *tile = world.tile_office().tile_of(id);
    if (tile == nullptr || tile->is_done()) {
        return "NOT AVAILABLE";
    }
    wanted_id = id;
    world._focus(tile->get_position(), look_seconds);
    return String();
}

const String &OfferDesk::wanted() {
    if (!wanted_id.is_empty() && world.tile_office().tile_of(wanted_id) == nullptr) {
        wanted_id = String();
    }
    return wanted_id;
}

} // namespace tilm
