#include "game/shell/logistics.h"

#include <algorithm>

#include "game/actors/cash_tile.h"
#include "game/actors/conveyor.h"
#include "game/actors/pile.h"
#include "game/actors/supply_van.h"
#include "game/actors/truck_depot.h"
#include "game/actors/zone.h"
#include "game/art/scenery.h"
#include "game/art/truck_models.h"
#include "game/data/farm_data.h"
#include "game/ports/notices.h"
#include "game/ports/session.h"
#include "game/shell/world.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/trucks.h"
#include "safe_read.h"

namespace tilm {

namespace {

const char *const main_truck = "truck";
constexpr double fast_belt = 3.6;
constexpr double overflow_after = 1.0; // seconds until an ingredient is pushed in
constexpr double out_belt_height = 0.16;
const Vector3 depot_pile(0, 0.14f, -0.5f); // on the back of the depot's floor: its front is left to people
constexpr float depot_row = -4.4f;
const Vector2 depot_zone(2.6f, 1.6f);

String dock_of(const String &factory_id) {
    return "dock_" + factory_id;
}

Dictionary whole_counts(const Dictionary &from) {
    Dictionary out;
    const Array keys = from.keys();
    for (int64_t i = 0; i < keys.size(); i++) {
        const int64_t n = read_whole(from, keys[i]);
        if (n > 0) {
            out[keys[i]] = n;
        }
    }
    return out;
}

} // namespace

TruckDepot *Logistics::build(const String &group, const Array &goods, const Variant &colour, double x) {
    TruckDepot *made = memnew(TruckDepot);
    made->set_name(group);
    made->set_group(group);
    made->set_goods(goods);
    if (colour.get_type() == Variant::COLOR) {
        made->set_colour(colour);
    }
    made->build(x, &world);
    world.add_cash_tile(made->get_cash());
    trucks.push_back(made);
    restore(made);
    return made;
}

TruckDepot *Logistics::build_truck(const Dictionary &entry) {
    const String id = entry["id"];
    const Vector2 at = entry["pos"];
    TruckDepot *made = build(id, Array(), entry.get("roof", Variant()), at.x);
    world.keep_node(id, made);
    return made;
}

TruckDepot *Logistics::build_dock(const Dictionary &factory) {
    const String id = factory["id"];
    const Vector2 at = factory["pos"];
    Array goods;
    goods.push_back(factory["product"]);
    TruckDepot *made = build(dock_of(id), goods, factory.get("roof", Variant()), at.x);
    world.keep_node(id + "_dock", made);
    return made;
}

void Logistics::set_dock_level(const String &factory_id, int level) {
    if (TruckDepot *dock = Object::cast_to<TruckDepot>(world.node_of(factory_id + "_dock"))) {
        dock->set_level(level);
    }
}

void Logistics::raise_depot(const Dictionary &entry, int level) {
    const String id = entry["id"];
    const Array kinds = entry.get("kinds", Array());
    Node3D *stands = Object::cast_to<Node3D>(world.node_of(id));
    if (stands == nullptr) {
        const Vector2 at = entry["pos"];
        const Vector3 floor(at.x, 0, at.y);
        stands = truck_models::depot();
        stands->set_name(id);
        stands->set_position(floor);
        world.add_child(stands);
        Pile *pile = memnew(Pile);
        pile->set_name("Stock");
        pile->set_cols(5);
        pile->set_rows(3);
        pile->set_spacing(Vector2(0.48f, 0.5f));
        pile->set_layer_h(0.38);
        pile->set_max_items(120);
        pile->set_show_limit(15);
        pile->set_position(depot_pile);
        stands->add_child(pile);
        Ref<Zone> zone = Zone::make("give", pile, floor, depot_zone, id);
        Dictionary accepts;
        for (int64_t i = 0; i < kinds.size(); i++) {
            accepts[kinds[i]] = rules::van_stock;
        }
        zone->set_accepts(accepts);
        stands->set_meta("zone", zone);
        world.zone_list().push_back(zone);
        Node3D *plate = Scenery::zone_plate(depot_zone, "DEPOT");
        plate->set_position(Vector3(0, depot_pile.y, 0));
        stands->add_child(plate);
        world.keep_node(id, stands);
    }
    if (level < 2) {
        return;
    }
    SupplyVan *van = Object::cast_to<SupplyVan>(world.node_of(id + "_van"));
    if (van == nullptr) {
        Ref<ZoneCore> zone = stands->get_meta("zone", Variant());
        van = SupplyVan::build(zone.is_valid() ? zone->get_pile() : nullptr, zone, kinds);
        world.add_child(van);
        world.keep_node(id + "_van", van);
    }
    van->set_level(level - 1);
}

// The first zone of a group that takes goods in, or gives them out.
ZoneCore *Logistics::zone_of(const String &group, bool give) const {
    const Array zones = world.zone_list();
    for (int64_t i = 0; i < zones.size(); i++) {
        ZoneCore *zone = Object::cast_to<ZoneCore>(zones[i]);
        if (zone != nullptr && zone->is_give() == give && zone->get_group() == group) {
            return zone;
        }
    }
    return nullptr;
}

Conveyor *Logistics::belt(const String &name, const Array &path, const Array &kinds, PileCore *from, ZoneCore *to) {
    if (world.node_of(name) != nullptr || from == nullptr || to == nullptr) {
        return nullptr;
    }
    Conveyor *made = Conveyor::build(path, kinds, from, Ref<ZoneCore>(to));
    made->set_name(name);
    world.keep_node(name, made);
    return made;
}

void Logistics::raise_belt(const Dictionary &entry, int level) {
    const String id = entry["id"];
    const String factory_id = entry.get("factory", String());
    const Dictionary factory = FarmData::entry_by_id(factory_id);
    const Dictionary depot = FarmData::entry_by_id(entry.get("depot", String()));
    const Node3D *machine = Object::cast_to<Node3D>(world.node_of(factory_id));
    if (factory.is_empty() || depot.is_empty() || machine == nullptr) {
        return;
    }
    const float x = (float)machine->get_position().x;
    const Vector2 depot_at = depot["pos"];
    const ZoneCore *store = zone_of(depot["id"], true);
    Array in_path, out_path, product;
    in_path.push_back(Vector3(depot_at.x + 1.4f, 0, depot_row));
    in_path.push_back(Vector3(x, 0, depot_row));
    in_path.push_back(Vector3(x, 0, -5.9f));
    if (Conveyor *made = belt(id, in_path, read_table(factory, "recipe").keys(), store ? store->get_pile() : nullptr,
                              zone_of(factory_id, true))) {
        made->set_force_after(overflow_after);
        world.add_child(made);
    }
    if (level >= 2) {
        const ZoneCore *output = zone_of(factory_id + "_out", false);
        out_path.push_back(Vector3(x, 0, -6.0f));
        out_path.push_back(Vector3(x, 0, 3.1f));
        product.push_back(factory["product"]);
        if (Conveyor *made = belt(id + "_out", out_path, product, output ? output->get_pile() : nullptr,
                                  zone_of(dock_of(factory_id), true))) {
            made->set_height(out_belt_height);
            world.add_child(made);
        }
    }
    if (level >= 3) {
        for (const char *which : {"", "_out", "_kitchen_belt"}) {
            if (Conveyor *stands = Object::cast_to<Conveyor>(world.node_of(id + which))) {
                stands->set_belt_speed(fast_belt);
            }
        }
    }
}

void Logistics::order_done(TruckDepot *dock, int64_t reward, double mult) {
    if (dock == nullptr) {
        return;
    }
    world.mission_event("order", "", 1);
    if (Session *session = Session::current(); session != nullptr && session->in_session()) {
        session->post_activity(dock->get_vip() ? "FINISHED A VIP TRUCK ORDER" : "FINISHED A TRUCK ORDER", 0);
    }
    Sfx::vibrate(60);
    if (!(mult >= 1.0) || !dock->is_dock()) {
        return;
    }
    const String id = dock->get_group();
    const int64_t before = read_whole(dock_done, id);
    dock_done[id] = before + 1;
    const int now = rules::dock_stars(before);
    if (now <= dock->get_stars()) {
        return;
    }
    stars[id] = now;
    dock->set_stars(now);
    int64_t prize = 0;
    if (__builtin_mul_overflow(reward, int64_t(2), &prize)) {
        prize = reward;
    }
    const Vector3 at = dock->get_position();
    world.gain(prize, at + Vector3(0, 2.0f, -14.35f));
    Notices::say(vformat("%s %d STAR%s! +$%d", String(dock->get_goods()[0]).to_upper(), now, now > 1 ? "S" : "", prize),
                 ToastLevel::good);
    Sfx::sound(TM_NAME("jingle_star"));
    Sfx::vibrate(160);
    world._burst(at + Vector3(0, 2.0f, 0), Color::html("ffc107"));
}

int64_t Logistics::star_count() const {
    int64_t sum = 0;
    for (int64_t i = 0; i < trucks.size(); i++) {
        if (const TruckDepot *truck = Object::cast_to<TruckDepot>(trucks[i].get_validated_object())) {
            sum += truck->get_stars();
        }
    }
    return sum;
}

void Logistics::restore(TruckDepot *truck) const {
    truck->set_served(read_whole(served, truck->get_group()));
    truck->set_stars(read_whole(stars, truck->get_group()));
}

void Logistics::load(const Dictionary &doc) {
    served = whole_counts(read_table(doc, "truck_done"));
    dock_done = whole_counts(read_table(doc, "dock_done"));
    stars = whole_counts(read_table(doc, "stars"));
    served[main_truck] = std::max<int64_t>(0, read_whole(doc, "trucks"));
    for (int64_t i = 0; i < trucks.size(); i++) {
        if (TruckDepot *truck = Object::cast_to<TruckDepot>(trucks[i].get_validated_object())) {
            restore(truck);
        }
    }
}

void Logistics::save(Dictionary doc) const {
    Dictionary done = served.duplicate();
    for (int64_t i = 0; i < trucks.size(); i++) {
        const TruckDepot *truck = Object::cast_to<TruckDepot>(trucks[i].get_validated_object());
        if (truck != nullptr && (truck->get_served() > 0 || done.has(truck->get_group()))) {
            done[truck->get_group()] = truck->get_served();
        }
    }
    doc["trucks"] = read_whole(done, main_truck);
    done.erase(main_truck);
    doc["truck_done"] = done;
    doc["dock_done"] = dock_done.duplicate();
    doc["stars"] = stars.duplicate();
}

} // namespace tilm
