#include "game/shell/tile_titles.h"

#include "game/data/farm_data.h"
#include "names.h"
#include "rules/machine_perks.h"

namespace tilm {

namespace {

String numbered(const String &text, int n) {
    return text + String::num_int64(n);
}

String machine_title(const String &id, int n, const TitleHooks &hooks) {
    if (!rules::next_perk_is_speed(n)) {
        return numbered("BIGGER INPUT LV", n + 1);
    }
    // A faster machine would only wait for the carrier that has not been hired.
    if (hooks.helper_is_limit && hooks.helper_is_limit(id)) {
        return numbered("BIGGER INPUT LV", n + 1) + "\nHELPER IS THE LIMIT";
    }
    return numbered("SPEED LV", n + 1);
}

String belt_title(const Dictionary &entry, int n) {
    const Dictionary building = FarmData::entry_by_id(entry.get(TM_NAME("factory"), String()));
    const bool factory = static_cast<String>(building.get(TM_NAME("kind"), String())) == "factory";
    return factory && n == 1 ? "TRUCK BELT" : "FAST BELTS";
}

String places_title(const String &kind, int n, const TitleHooks &hooks) {
    const bool more = !hooks.adds_places || hooks.adds_places(kind, n);
    if (kind == "homes") {
        return more ? "MORE BEDS" : "COMFIER HOMES";
    }
    return more ? "MORE SEATS" : "BETTER FOOD";
}

String guard_title(const TitleHooks &hooks) {
    int hired = 0;
    int wanted = 0;
    if (!hooks.guards || !hooks.guards(hired, wanted)) {
        return "GUARD +1";
    }
    return numbered("GUARD ", hired) + numbered("/", wanted);
}

} // namespace

String tile_title(const Dictionary &entry, int n, const TitleHooks &hooks) {
    const String title = entry.get(TM_NAME("title"), String());
    if (n <= 0) {
        return title;
    }
    const String kind = entry.get(TM_NAME("kind"), String());
    if (kind == "producer") {
        return numbered(FarmData::title_of(entry.get(TM_NAME("product"), String())) + " LV", n + 1);
    }
    if (kind == "tables") {
        return "MORE TABLES";
    }
    if (kind == "waiter" || kind == "crew" || kind == "hauler") {
        return title + " +1";
    }
    if (kind == "stall") {
        return numbered("PRICES LV", n + 1);
    }
    if (kind == "machine") {
        return machine_title(entry.get(TM_NAME("id"), String()), n, hooks);
    }
    if (kind == "factory" || kind == "restaurant") {
        return numbered(title + " LV", n + 1) + (rules::next_perk_is_speed(n) ? "\nSPEED UP" : "\nBIGGER INPUT");
    }
    if (kind == "guards") {
        return guard_title(hooks);
    }
    if (kind == "waterman") {
        return "WATER WORKER +1";
    }
    if (kind == "workers") {
        return "MORE WORKERS";
    }
    if (kind == "belt") {
        return belt_title(entry, n);
    }
    if (kind == "depot") {
        return n == 1 ? String("SUPPLY TRUCK") : numbered("SUPPLY LV", n);
    }
    if (kind == "pantry") {
        return numbered("SUPPLY LV", n + 1);
    }
    if (kind == "homes" || kind == "canteen") {
        return places_title(kind, n, hooks);
    }
    if (kind == "ahwa") {
        return "MORE SEATS";
    }
    if (kind == "qahwagi") {
        return "FASTER QAHWAGI";
    }
    return numbered(title + " LV", n + 1);
}

} // namespace tilm
