#include "farm_fields/producer_core.h"

#include <algorithm>

#include <godot_cpp/classes/node3d.hpp>

#include "farm_items/pile_core.h"
#include "glebworks/glebworks.h"
#include "glebworks/water_meta.h"
#include "names.h"
#include "rules/producers.h"

namespace tilm {

namespace {

constexpr double far_step = 0.25;       // seconds between steps off view
constexpr double least_interval = 1e-3; // seconds: no yard is faster
constexpr int most_units = 1000;        // in one step

} // namespace

void ProducerCore::Sign::bind(Node *node) {
    label.set(Object::cast_to<Node3D>(node));
    shown = -1;
}

void ProducerCore::Sign::show(bool on) {
    if (shown == static_cast<int8_t>(on)) {
        return;
    }
    shown = static_cast<int8_t>(on);
    if (Node3D *node = label.get()) {
        node->set_visible(on);
    }
}

void ProducerCore::core_join(PileCore *p_tray, Node *full, bool work, double carried) {
    tray.set(p_tray);
    full_sign.bind(full);
    works_by_hand = work;
    overwork_t = carried;
    set_process(true);
}

void ProducerCore::set_tray(PileCore *pile) {
    tray.set(pile);
}

void ProducerCore::set_trough(PileCore *pile) {
    trough.set(pile);
    bought_feed = -1;
}

void ProducerCore::set_hungry_label(Node *label) {
    hungry_sign.bind(label);
}

bool ProducerCore::has_room() const {
    const PileCore *pile = tray.get();
    return pile != nullptr && pile->count() + catch_pending < pile->get_max_items();
}

void ProducerCore::_process(double dt) {
    step(dt);
}

void ProducerCore::step(double dt) {
    if (!(dt >= 0)) {
        return;
    }
    const Vector3 pos = get_global_position();
    slow_clock += dt;
    if (!Glebworks::in_view(pos, 8.0) && slow_clock < far_step) {
        return;
    }
    const double d = slow_clock;
    slow_clock = 0;
    lived += d;
    animate_clock += d;
    if (Glebworks::in_view(pos, 9.0)) {
        animate(std::min(animate_clock, 0.1));
        animate_clock = 0;
    }
    if (regrows) {
        regrow_tick(d);
    }
    const PileCore *pile = tray.get();
    if (pile == nullptr) {
        return;
    }
    const int n = pile->count();
    const int room = pile->get_max_items();
    const bool full = n + catch_pending >= room;
    full_sign.show(n >= room);
    if (works_by_hand && catch_pending >= 1) {
        catch_wait += d;
        if (catch_wait > rules::catch_patience) {
            call(TM_NAME("deliver_catch"), pos + Vector3(1.4f, 0.6f, 2.4f));
        }
    }
    if (trough) {
        step_feed(d);
    }
    step_hunger(d, full);
    if (!full && !water_dry(this)) {
        produce(d);
    }
}

void ProducerCore::produce(double d) {
    interval_t -= d;
    if (interval_t <= 0) {
        interval_t = 1.0;
        interval_s = std::max(least_interval, static_cast<double>(call(TM_NAME("interval"))));
    }
    work_t += d;
    // A far step of a big yard is longer than its interval: it makes several, or an unwatched yard would make fewer.
    for (int made = 0; work_t >= interval_s && made < most_units && has_room(); ++made) {
        if (!static_cast<bool>(call(TM_NAME("_eat")))) {
            work_t = interval_s;
            return;
        }
        work_t -= interval_s;
        call(TM_NAME("made"));
    }
}

void ProducerCore::step_feed(double d) {
    if (bought_feed < 0) {
        bought_feed = call(TM_NAME("_bought_feed")) ? 1 : 0;
    }
    if (bought_feed == 0 && hunger <= rules::hunger_feed_late) {
        return;
    }
    buy_t -= d;
    if (buy_t > 0) {
        return;
    }
    buy_t = rules::buy_pause;
    if (bought_feed == 1 || call(TM_NAME("_feed_late"))) {
        call(TM_NAME("_buy_feed"));
    }
}

void ProducerCore::step_hunger(double d, bool full) {
    if (!services_known) {
        services_known = call(TM_NAME("services_ready"));
        if (!services_known) {
            return;
        }
    }
    const PileCore *feed = trough.get();
    const bool hungry = feed != nullptr && feed->count() == 0 && fed == 0 && !full;
    hunger = hungry ? hunger + d : std::max(0.0, hunger - 3.0 * d);
    hungry_sign.show(hunger > rules::hunger_sign);
    if (hunger >= rules::hunger_sick) {
        hunger = call(TM_NAME("sicken_hunger")) ? 0.0 : rules::hunger_spared;
        return;
    }
    overwork_t -= d;
    if (overwork_t <= 0) {
        overwork_t = call(TM_NAME("overwork"));
    }
}

void ProducerCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("core_join", "tray", "full", "work", "carried"), &ProducerCore::core_join);
    ClassDB::bind_method(D_METHOD("set_trough", "pile"), &ProducerCore::set_trough);
    ClassDB::bind_method(D_METHOD("get_trough"), &ProducerCore::get_trough);
    ClassDB::bind_method(D_METHOD("get_tray"), &ProducerCore::get_tray);
    ClassDB::bind_method(D_METHOD("set_hungry_label", "label"), &ProducerCore::set_hungry_label);
    ClassDB::bind_method(D_METHOD("set_regrows", "on"), &ProducerCore::set_regrows);
    ClassDB::bind_method(D_METHOD("step", "dt"), &ProducerCore::step);
    ClassDB::bind_method(D_METHOD("trough_lost"), &ProducerCore::trough_lost);
    ClassDB::bind_method(D_METHOD("set_tray", "pile"), &ProducerCore::set_tray);
    ClassDB::bind_method(D_METHOD("has_room"), &ProducerCore::has_room);
    ClassDB::bind_method(D_METHOD("get_lived"), &ProducerCore::get_lived);
    ADD_PROPERTY(PropertyInfo(Variant::OBJECT, "tray"), "set_tray", "get_tray");
    ADD_PROPERTY(PropertyInfo(Variant::OBJECT, "trough"), "set_trough", "get_trough");
    TM_BIND_FIELD(ProducerCore, Variant::INT, catch_pending);
    TM_BIND_FIELD(ProducerCore, Variant::FLOAT, hunger);
    ClassDB::bind_method(D_METHOD("set_fed", "v"), &ProducerCore::set_fed);
    ClassDB::bind_method(D_METHOD("get_fed"), &ProducerCore::get_fed);
    ADD_PROPERTY(PropertyInfo(Variant::INT, "_fed"), "set_fed", "get_fed");
    ClassDB::bind_method(D_METHOD("set_work_t", "v"), &ProducerCore::set_work_t);
    ClassDB::bind_method(D_METHOD("get_work_t"), &ProducerCore::get_work_t);
    ADD_PROPERTY(PropertyInfo(Variant::FLOAT, "_work_t"), "set_work_t", "get_work_t");
    ClassDB::bind_method(D_METHOD("set_catch_wait", "v"), &ProducerCore::set_catch_wait);
    ClassDB::bind_method(D_METHOD("get_catch_wait"), &ProducerCore::get_catch_wait);
    ADD_PROPERTY(PropertyInfo(Variant::FLOAT, "_catch_wait"), "set_catch_wait", "get_catch_wait");
    TM_BIND_FIELD(ProducerCore, Variant::FLOAT, overwork_t);
    TM_BIND_FIELD(ProducerCore, Variant::FLOAT, buy_t);
}

} // namespace tilm
