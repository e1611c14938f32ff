#include "game/shell/decorations.h"

#include <cmath>
#include <limits>

#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/core/error_macros.hpp>

#include "game/actors/player.h"
#include "game/actors/sell_counter.h"
#include "game/actors/truck_depot.h"
#include "game/art/decor.h"
#include "game/data/farm_data.h"
#include "game/ports/notices.h"
#include "game/ports/session.h"
#include "game/shell/land_hint.h"
#include "game/shell/world.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/garden.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr int MOST_SHOWN = 600;       // of a damaged save; prices keep honest farms far below
constexpr float CUSTOMER_SIDE = 2.3f; // a counter's customers stand that far along it
constexpr float STAND_ROW = 4.0f;     // what stands at or beyond this z faces the customers
// A saved place outside of the strip's lawn is damage.
constexpr float LAWN_LEFT = -84, LAWN_RIGHT = 516, LAWN_NEAR = 7, LAWN_FAR = 17;
constexpr float POP_FROM = 0.05f;
constexpr double POP_SECONDS = 0.45;
constexpr float MONEY_RISE = 3.0f;

const rules::DecorRow *row_of(const String &type) {
    return rules::find_decor(type.utf8().get_data());
}

Vector3 place_of(const Dictionary &row) {
    constexpr double nowhere = std::numeric_limits<double>::infinity();
    return Vector3(static_cast<real_t>(read_real(row, "x", nowhere)), 0,
                   static_cast<real_t>(read_real(row, "z", nowhere)));
}

bool on_the_lawn(const Vector3 &at) {
    return at.x >= LAWN_LEFT && at.x <= LAWN_RIGHT && at.z >= LAWN_NEAR && at.z <= LAWN_FAR;
}

bool is_earned(const rules::DecorRow &row) {
    return row.coop.empty() ||
           (Session::current() != nullptr && Session::current()->reward_earned(String(row.coop.data())));
}

Dictionary row_at(const String &type, const Vector3 &at) {
    Dictionary row;
    row["type"] = type;
    row["x"] = at.x;
    row["z"] = at.z;
    return row;
}

void tell(int rows, const char *what) {
    if (rows > 0) {
        WARN_PRINT(vformat("TILMARCH decor: %d %s", rows, what));
    }
}

} // namespace

Decorations::~Decorations() {
    if (GardenShop::current() == this) {
        GardenShop::set_current(nullptr);
    }
}

void Decorations::load(const Dictionary &doc) {
    GardenShop::set_current(this);
    take(read_list(doc, "decor"));
}

void Decorations::set_placed(const Array &rows) {
    take(rows);
    raise(std::numeric_limits<uint64_t>::max());
}

void Decorations::take(const Array &rows) {
    if (Node3D *old = ground.get()) {
        old->queue_free();
        ground.set(nullptr);
    }
    placed = Array();
    kept = Array();
    next = 0;
    Array homeless;
    Dictionary seen_once;
    int dropped = 0, unknown = 0, moved = 0;
    for (int64_t i = 0; i < rows.size(); ++i) {
        const Dictionary given = rows[i].get_type() == Variant::DICTIONARY ? as<Dictionary>(rows[i]) : Dictionary();
        const String type = read_text(given, "type");
        const rules::DecorRow *known = row_of(type);
        if (type.is_empty() || (known != nullptr && !known->coop.empty() && seen_once.has(type))) {
            ++dropped;
            continue;
        }
        seen_once[type] = true;
        if (known == nullptr) {
            ++unknown;
            kept.push_back(given.duplicate());
        } else if (const Vector3 at = place_of(given);
                   placed.size() < MOST_SHOWN && on_the_lawn(at) && fits_among(type, at)) {
            placed.push_back(row_at(type, at));
        } else {
            homeless.push_back(given.duplicate());
        }
    }
    // They were paid for: each gets a place of its own after all others have theirs.
    for (int64_t i = 0; i < homeless.size(); ++i) {
        const Dictionary row = homeless[i];
        const String type = read_text(row, "type");
        const Vector3 at = placed.size() < MOST_SHOWN ? free_spot(type) : place_of(Dictionary());
        if (at.is_finite()) {
            ++moved;
            placed.push_back(row_at(type, at));
        } else {
            kept.push_back(row);
        }
    }
    tell(dropped, "rows are no decorations: dropped");
    tell(unknown, "decorations of unknown types: kept, not shown");
    tell(moved, "decorations had no possible place: moved to a free one");
    tell(static_cast<int>(kept.size()) - unknown, "decorations have no possible place: kept, not shown");
    world.set_charm(charm());
}

Array Decorations::owned() const {
    Array all = placed.duplicate();
    all.append_array(kept);
    return all;
}

Array Decorations::get_placed() const {
    return owned().duplicate(true);
}

// Whether it keeps clear of those that stand. A hair less than the shop asks for: numbers come back from a file.
bool Decorations::fits_among(const String &type, const Vector3 &at) const {
    constexpr float apart = 0.4f - 0.01f;
    const float radius = row_of(type)->radius;
    for (int64_t i = 0; i < placed.size(); ++i) {
        const Dictionary other = placed[i];
        const rules::DecorRow *row = row_of(read_text(other, "type"));
        const Vector3 there = place_of(other);
        if (row != nullptr && std::hypot(there.x - at.x, there.z - at.z) < row->radius + radius + apart) {
            return false;
        }
    }
    return true;
}

bool Decorations::raise(uint64_t until) {
    for (; next < placed.size(); ++next) {
        if (Time::get_singleton()->get_ticks_usec() > until) {
            return false;
        }
        stand(placed[next]);
    }
    return true;
}

Node3D *Decorations::stand(const Dictionary &row) {
    const String type = read_text(row, "type");
    const Vector3 at = place_of(row);
    if (!ground) {
        Node3D *holder = memnew(Node3D);
        holder->set_name("Decorations");
        world.add_child(holder);
        ground.set(holder);
    }
    Node3D *model = Decor::build(type);
    model->set_position(at);
    ground.get()->add_child(model);
    return model;
}

Vector3 Decorations::free_spot(const String &type) const {
    PackedFloat32Array blocked, lands;
    PackedVector2Array lawn;
    const Array stalls = world.stall_list();
    for (int64_t i = 0; i < stalls.size(); ++i) {
        if (const Node3D *stall = Object::cast_to<Node3D>(stalls[i])) {
            blocked.push_back(stall->get_position().x);
            blocked.push_back(stall->get_position().x + CUSTOMER_SIDE);
        }
    }
    const Array trucks = world.truck_list();
    for (int64_t i = 0; i < trucks.size(); ++i) {
        if (const Node3D *dock = Object::cast_to<Node3D>(trucks[i])) {
            blocked.push_back(dock->get_position().x);
        }
    }
    const Array standing = world.get_nodes().values();
    for (int64_t i = 0; i < standing.size(); ++i) {
        const Node3D *other = Object::cast_to<Node3D>(standing[i]);
        const bool listed = Object::cast_to<SellCounter>(other) != nullptr || Object::cast_to<TruckDepot>(other);
        if (other != nullptr && !listed && other->get_position().z >= STAND_ROW) {
            blocked.push_back(other->get_position().x);
        }
    }
    for (int i = 0; i < world.get_child_count(); ++i) {
        const Node3D *child = Object::cast_to<Node3D>(world.get_child(i));
        if (child != nullptr && child->has_meta(TM_NAME("lawn"))) {
            lawn.push_back(Vector2(child->get_position().x, child->get_position().z));
        }
    }
    const Array rows = FarmData::regions();
    for (int64_t i = 0; i < rows.size(); ++i) {
        const Dictionary land = rows[i];
        const String id = read_text(land, "id");
        if (!id.is_empty() && id != "service") {
            lands.push_back(static_cast<float>(read_real(land, "x")));
        }
    }
    return Decor::find_spot(type, world.player_pos().x, blocked, placed, lawn, lands);
}

std::vector<DecorOffer> Decorations::list() const {
    std::vector<DecorOffer> offers;
    if (world.is_visiting() || world.is_building()) {
        return offers;
    }
    const Array all = owned();
    for (const rules::DecorRow &row : rules::decor_rows()) {
        DecorOffer offer;
        offer.type = row.type.data();
        offer.name = row.name.data();
        offer.charm = row.charm;
        offer.price = Decor::next_price(offer.type, all);
        offer.placed = Decor::count(offer.type, all);
        offer.payable =
            Decor::refusal(offer.type, all, static_cast<double>(world.money_now()), is_earned(row)).is_empty();
        offers.push_back(offer);
    }
    return offers;
}

int Decorations::charm() const {
    return Decor::charm(owned());
}

String Decorations::buy(const String &type) {
    const rules::DecorRow *row = row_of(type);
    if (row == nullptr || world.is_visiting() || world.is_building()) {
        return "NOT AVAILABLE";
    }
    const String refusal = Decor::refusal(type, owned(), static_cast<double>(world.money_now()), is_earned(*row));
    if (!refusal.is_empty()) {
        return refusal;
    }
    const Vector3 spot = free_spot(type);
    if (!spot.is_finite()) {
        return land_hint(world, false);
    }
    if (const int64_t price = Decor::next_price(type, owned()); price > 0) {
        world.pay(price, world.player_pos() + Vector3(0, MONEY_RISE, 0));
    }
    placed.push_back(row_at(type, spot));
    next = placed.size();
    Node3D *model = stand(placed.back());
    model->set_scale(Vector3(POP_FROM, POP_FROM, POP_FROM));
    model->create_tween()
        ->tween_property(model, NodePath("scale"), Vector3(1, 1, 1), POP_SECONDS)
        ->set_trans(Tween::TRANS_BACK)
        ->set_ease(Tween::EASE_OUT);
    world.set_charm(charm());
    world.mission_event("decor", "", 1);
    Notices::say(vformat("%s! +%d CHARM", String(row->name.data()), row->charm), ToastLevel::good);
    Sfx::sound(TM_NAME("jingle_small"));
    world.save_now();
    return String();
}

} // namespace tilm
