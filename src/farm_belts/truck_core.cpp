#include "farm_belts/truck_core.h"

#include "farm_items/world_place.h"
#include "glebworks/glebworks.h"
#include "names.h"
#include "rules/trucks.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr double far_step = 0.25; // seconds between steps off view
constexpr double near_margin = 8.0;
constexpr double board_step = 0.1;

} // namespace

void TruckCore::core_join(PileCore *bed_pile) {
    bed.set(bed_pile);
    set_process(true);
}

void TruckCore::order_changed() {
    lines.clear();
    const Array kinds = order.keys();
    for (int64_t i = 0; i < kinds.size(); i++) {
        lines.push_back({item_kinds::intern(kinds[i]), read_whole(order, kinds[i])});
    }
}

double TruckCore::speed_mult() const {
    return rules::truck_speed_mult(elapsed, good_time);
}

bool TruckCore::order_met() const {
    const PileCore *pile = bed.get();
    for (const Line &line : lines) {
        if ((pile != nullptr ? pile->count_of(line.kind) : 0) < line.count) {
            return false;
        }
    }
    return true;
}

void TruckCore::tell(const StringName &method) {
    if (has_method(method)) {
        call(method);
    }
}

void TruckCore::_process(double dt) {
    step(dt);
}

void TruckCore::step(double dt) {
    if (!(dt >= 0.0)) {
        return;
    }
    slow_clock += dt;
    const bool near = Glebworks::in_view(world_position(this), near_margin);
    if (!near && slow_clock < far_step) {
        return;
    }
    const double d = slow_clock;
    slow_clock = 0;
    switch (state) {
    case AWAY:
        t -= d;
        if (t <= 0.0) {
            tell(TM_NAME("arrive"));
        }
        break;
    case WAIT:
        step_wait(d, near);
        break;
    case LEAVE:
        // The goods ride along.
        if (PileCore *pile = bed.get()) {
            pile->_reflow();
        }
        break;
    default:
        break;
    }
}

void TruckCore::step_wait(double d, bool near) {
    elapsed += d;
    board_clock += d;
    if (near && board_clock >= board_step) {
        board_clock = 0;
        tell(TM_NAME("_update_board"));
    }
    if (!hurried && rules::truck_hurries(elapsed, good_time)) {
        hurried = true;
        tell(TM_NAME("hurry"));
    }
    if (order_met()) {
        tell(TM_NAME("on_full"));
    } else if (rules::truck_is_late(elapsed, good_time)) {
        tell(TM_NAME("on_late"));
    }
}

#define BIND_PRIVATE(m_type, m_name)                                                                                   \
    ClassDB::bind_method(D_METHOD("set_" #m_name, "v"), &TruckCore::set_##m_name);                                     \
    ClassDB::bind_method(D_METHOD("get_" #m_name), &TruckCore::get_##m_name);                                          \
    ADD_PROPERTY(PropertyInfo(m_type, "_" #m_name), "set_" #m_name, "get_" #m_name)

void TruckCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("core_join", "bed"), &TruckCore::core_join);
    ClassDB::bind_method(D_METHOD("order_changed"), &TruckCore::order_changed);
    ClassDB::bind_method(D_METHOD("speed_mult"), &TruckCore::speed_mult);
    ClassDB::bind_method(D_METHOD("step", "dt"), &TruckCore::step);
    ClassDB::bind_method(D_METHOD("get_bed"), &TruckCore::get_bed);
    TM_BIND_FIELD(TruckCore, Variant::INT, state);
    TM_BIND_FIELD(TruckCore, Variant::DICTIONARY, order);
    BIND_PRIVATE(Variant::FLOAT, t);
    BIND_PRIVATE(Variant::FLOAT, elapsed);
    BIND_PRIVATE(Variant::FLOAT, good_time);
    BIND_PRIVATE(Variant::BOOL, hurried);
}

#undef BIND_PRIVATE

} // namespace tilm
