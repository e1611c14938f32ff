#include "game/actors/truck_depot.h"

#include <algorithm>

#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/variant/callable_method_pointer.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_items/world_place.h"
#include "game/actors/cash_tile.h"
#include "game/actors/sell_counter.h"
#include "game/data/farm_data.h"
#include "game/ports/notices.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/trucks.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr double far_away = 26.0; // local z where a truck comes from and goes to
constexpr double arrive_seconds = 2.2;
constexpr double leave_seconds = 2.0;
constexpr double pause_day = 8.0;
constexpr double pause_night = 16.0;
constexpr double stall_reach = 30.0; // on x
constexpr int most_kinds = 3;
const Vector3 bill_source(0, 1.5f, 0.9f);

} // namespace

double TruckDepot::tips_factor = 1.0;

Farm *TruckDepot::farm() const {
    Farm *running = Farm::current();
    Node3D *node = world.get();
    return running != nullptr && node != nullptr && running->root() == node ? running : nullptr;
}

Vector3 TruckDepot::at(float x, float y, float z) const {
    return world_position(this) + Vector3(x, y, z);
}

// Each kind once that stalls near by sell; of all stalls when none is near.
Array TruckDepot::pool() const {
    Array near, all;
    Farm *f = farm();
    const Array stalls = f != nullptr ? f->stall_list() : Array();
    for (int64_t i = 0; i < stalls.size(); i++) {
        const SellCounter *stall = Object::cast_to<SellCounter>(stalls[i].get_validated_object());
        if (stall == nullptr) {
            continue;
        }
        const bool close = std::fabs(world_position(stall).x - world_position(this).x) <= stall_reach;
        const Array kinds = stall->get_products();
        for (int64_t k = 0; k < kinds.size(); k++) {
            if (!all.has(kinds[k])) {
                all.push_back(kinds[k]);
            }
            if (close && !near.has(kinds[k])) {
                near.push_back(kinds[k]);
            }
        }
    }
    return near.is_empty() ? all : near;
}

void TruckDepot::order_of_stalls() {
    Array kinds = pool();
    kinds.shuffle();
    const int64_t n = std::min<int64_t>(kinds.size(), UtilityFunctions::randi_range(1, most_kinds));
    for (int64_t i = 0; i < n; i++) {
        order[kinds[i]] = rules::main_order_count(UtilityFunctions::randi_range(0, 4), served);
    }
}

// What another dock sends, for the second line of a VIP order; "" where no dock differs.
String TruckDepot::second_kind(Farm *f) const {
    Array others;
    const Array trucks = f != nullptr ? f->truck_list() : Array();
    for (int64_t i = 0; i < trucks.size(); i++) {
        const TruckDepot *other = Object::cast_to<TruckDepot>(trucks[i].get_validated_object());
        if (other != nullptr && other != this && other->is_dock() && other->goods[0] != goods[0]) {
            others.push_back(other->goods[0]);
        }
    }
    return others.is_empty() ? String() : String(others[UtilityFunctions::randi_range(0, others.size() - 1)]);
}

void TruckDepot::order_of_dock(Farm *f) {
    const String kind = goods[0];
    const int64_t count = rules::dock_order_count(UtilityFunctions::randi_range(0, 2), served, base);
    if (!vip) {
        order[kind] = count;
        return;
    }
    order[kind] = rules::vip_order_count(count);
    const String second = second_kind(f);
    if (!second.is_empty()) {
        order[second] = rules::vip_second_count(base);
    }
}

void TruckDepot::_new_order() {
    Farm *f = farm();
    order = Dictionary();
    if (is_dock()) {
        order_of_dock(f);
    } else {
        order_of_stalls();
    }
    int64_t sum = 0;
    const Array counts = order.values();
    for (int64_t i = 0; i < counts.size(); i++) {
        sum += to_whole(counts[i], 0);
    }
    good_time = rules::truck_good_time(sum, vip, f != nullptr && f->is_night());
    elapsed = 0;
    order_changed();
}

int64_t TruckDepot::reward() const {
    double value = 0;
    const Array kinds = order.keys();
    for (int64_t i = 0; i < kinds.size(); i++) {
        value += static_cast<double>(std::max<int64_t>(0, read_whole(order, kinds[i]))) *
                 static_cast<double>(FarmData::price_of(kinds[i]));
    }
    rules::TruckPay pay;
    pay.tips = tips_factor;
    pay.stars = stars;
    pay.speed_mult = speed_mult();
    pay.dock = is_dock();
    pay.vip = vip;
    return rules::truck_reward(value, pay);
}

int64_t TruckDepot::_delivered_value() const {
    int64_t sum = 0;
    if (const PileCore *bed = get_bed()) {
        for (const ItemCore *it : bed->list()) {
            sum += FarmData::price_of(it->kind);
        }
    }
    return sum;
}

void TruckDepot::slide(double z, double seconds, bool leaving) {
    if (sliding.is_valid()) {
        sliding->kill();
        sliding.unref();
    }
    const Callable done = leaving ? callable_mp(this, &TruckDepot::_gone) : callable_mp(this, &TruckDepot::_parked);
    Node3D *moved = body.get();
    if (moved == nullptr || !is_inside_tree()) {
        done.call();
        return;
    }
    sliding = create_tween();
    sliding->tween_property(moved, NodePath("position:z"), z, seconds)
        ->set_trans(Tween::TRANS_QUAD)
        ->set_ease(leaving ? Tween::EASE_IN : Tween::EASE_OUT);
    sliding->tween_callback(done);
}

void TruckDepot::arrive() {
    vip = next_vip;
    next_vip = false;
    Node3D *wanted = bodies.size() > 1 ? Object::cast_to<Node3D>(bodies[vip ? 1 : 0].get_validated_object()) : nullptr;
    if (wanted != nullptr && wanted != body.get()) {
        _set_body(wanted);
    }
    _new_order();
    state = ARRIVE;
    if (Node3D *shown = body.get()) {
        shown->set_position(Vector3(0, 0, (real_t)far_away));
        shown->set_visible(true);
    }
    slide(0.0, arrive_seconds, false);
}

void TruckDepot::_set_body(Node3D *t) {
    Node3D *old = body.get();
    if (t == nullptr || t == old) {
        return;
    }
    if (old != nullptr) {
        old->set_visible(false);
    }
    if (PileCore *bed = get_bed()) {
        const Transform3D place = bed->get_transform();
        if (Node *holder = bed->get_parent()) {
            holder->remove_child(bed);
        }
        t->add_child(bed);
        bed->set_transform(place);
    }
    body.set(t);
}

void TruckDepot::_parked() {
    state = WAIT;
    if (zone.is_valid()) {
        zone->set_accepts(order.duplicate());
        zone->set_active(true);
    }
    show_boards(true);
    _update_board();
    hurried = false;
    Sfx::sound_at(TM_NAME("toot"), get_instance_id(), world_position(this));
    if (vip) {
        Notices::say(vformat("VIP TRUCK! %s", order_titles()), ToastLevel::plain);
    }
    if (Farm *f = farm()) {
        f->tip(vip ? "vip" : "truck");
    }
}

String TruckDepot::order_titles() const {
    String text;
    const Array kinds = order.keys();
    for (int64_t i = 0; i < kinds.size(); i++) {
        text += (i > 0 ? String(" + ") : String()) + String(kinds[i]).to_upper();
    }
    return text;
}

void TruckDepot::hurry() {
    Sfx::sound(TM_NAME("truck_hurry"));
}

void TruckDepot::pay_out(int64_t amount, int64_t unit) {
    if (amount <= 0) {
        return;
    }
    if (CashTile *tile = cash.get()) {
        tile->add_money(amount, unit, world_position(this) + bill_source);
    } else if (Farm *f = farm()) {
        f->gain(amount, world_position(this) + bill_source);
    }
}

void TruckDepot::on_full() {
    const int64_t r = reward();
    const double m = speed_mult();
    pay_out(r, std::max<int64_t>(10, r / 40));
    if (Notices *notices = Notices::current()) {
        notices->fly_money(r, at(0, 2.0f, 1.9f));
    }
    if (m >= 1.0) {
        pop_label(vip ? "VIP FAST!" : "FAST!");
    } else if (m < 0.75) {
        Notices::say("SLOW...", ToastLevel::warning);
    }
    if (vip) {
        Sfx::vibrate(200);
    }
    Farm *f = farm();
    if (f != nullptr) {
        f->note_mood(m, "truck");
    }
    Sfx::sound(vip ? TM_NAME("jingle_star") : TM_NAME("jingle_small"));
    served += 1;
    if (f != nullptr) {
        f->order_done(this, r, m);
        const Array kinds = order.keys();
        for (int64_t i = 0; i < kinds.size(); i++) {
            f->stat_add("ship:" + String(kinds[i]), read_whole(order, kinds[i]));
        }
    }
    _leave();
}

void TruckDepot::on_late() {
    const int64_t p = rules::truck_late_pay(_delivered_value());
    pay_out(p, std::max<int64_t>(5, p / 20));
    Notices::say(vip ? "VIP TRADER LEFT..." : "TRADER LEFT ANGRY!", ToastLevel::refusal);
    Sfx::sound(TM_NAME("alert_soft"));
    if (Farm *f = farm()) {
        f->note_mood(0.0, "angrytruck");
    }
    _leave();
}

void TruckDepot::_leave() {
    state = LEAVE;
    if (zone.is_valid()) {
        zone->set_active(false);
        zone->set_accepts(Dictionary());
    }
    show_boards(false);
    slide(far_away, leave_seconds, true);
}

void TruckDepot::_gone() {
    if (PileCore *bed = get_bed()) {
        const GoodsVerb verb("shipped");
        bed->drop(String(), bed->count());
    }
    if (Node3D *shown = body.get()) {
        shown->set_visible(false);
    }
    state = AWAY;
    const Farm *f = farm();
    t = f != nullptr && f->is_night() ? pause_night : pause_day;
}

} // namespace tilm
