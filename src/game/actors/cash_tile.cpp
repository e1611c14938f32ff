#include "game/actors/cash_tile.h"

#include <algorithm>
#include <limits>

#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/world_place.h"
#include "game/art/models.h"
#include "game/art/scenery.h"
#include "game/kit/ui.h"

namespace tilm {

namespace {

constexpr int sign_size = 46;
constexpr uint32_t sign_color = 0xc5f542ff;

// Money on one bill: stops at the largest number instead of turning round.
void add_value(ItemCore *bill, int64_t amount) {
    int64_t sum = 0;
    if (__builtin_add_overflow(bill->get_value(), amount, &sum)) {
        sum = std::numeric_limits<int64_t>::max();
    }
    bill->set_value(sum);
}

} // namespace

CashTile::CashTile() = default;

void CashTile::_bind_methods() {
    ClassDB::bind_method(D_METHOD("total"), &CashTile::total);
    ClassDB::bind_method(D_METHOD("add_money", "amount", "unit", "from"), &CashTile::add_money);
    ClassDB::bind_method(D_METHOD("add_quiet", "amount", "unit"), &CashTile::add_quiet);
    ClassDB::bind_method(D_METHOD("settle"), &CashTile::settle);
    ClassDB::bind_method(D_METHOD("take_bill"), &CashTile::take_bill);
    ClassDB::bind_method(D_METHOD("get_pile"), &CashTile::get_pile);
    ClassDB::bind_method(D_METHOD("get_sign_text"), &CashTile::get_sign_text);
    TM_BIND_FIELD(CashTile, Variant::INT, max_bills);
    TM_BIND_FIELD(CashTile, Variant::INT, pending_unit);
}

void CashTile::_ready() {
    add_child(Scenery::cash_mat());
    get_pile();
}

Pile *CashTile::get_pile() {
    if (!pile) {
        pile = memnew(Pile);
        pile->set_cols(2);
        pile->set_rows(3);
        pile->set_spacing(Vector2(0.55f, 0.36f));
        pile->set_layer_h(0.07);
        add_child(pile);
    }
    return pile;
}

String CashTile::get_sign_text() const {
    return sign && sign->is_visible() ? sign->get_text() : String();
}

int64_t CashTile::total() const {
    int64_t sum = 0;
    for (const ItemCore *bill : bills) {
        if (__builtin_add_overflow(sum, bill->get_value(), &sum)) {
            return std::numeric_limits<int64_t>::max();
        }
    }
    return sum;
}

void CashTile::add_money(int64_t amount, int64_t unit, const Vector3 &from) {
    unit = std::max<int64_t>(unit, 1);
    booked += static_cast<uint64_t>(std::max<int64_t>(amount, 0));
    const int room = std::max(1, max_bills);
    while (amount > 0) {
        if (bills.size() >= room) {
            add_value(bills.back(), amount);
            break;
        }
        const int64_t chunk = std::min(unit, amount);
        const Vector3 scatter((real_t)UtilityFunctions::randf_range(-0.2, 0.2), 1.2f,
                              (real_t)UtilityFunctions::randf_range(-0.2, 0.2));
        Item *bill = Item::spawn("bill", from + scatter);
        bill->set_value(chunk);
        get_pile()->add(bill, UtilityFunctions::randf_range(0.3, 0.55));
        bills.push(bill);
        amount -= chunk;
    }
    refresh_sign();
}

void CashTile::add_quiet(int64_t amount, int64_t unit) {
    if (amount <= 0) {
        return;
    }
    pending_unit = std::max<int64_t>(unit, 1);
    if (bills.empty()) {
        add_money(amount, amount, world_position(this));
        return;
    }
    booked += static_cast<uint64_t>(amount);
    add_value(bills.back(), amount);
    refresh_sign();
}

void CashTile::settle() {
    if (pending_unit > 0 && bills.size() < max_bills) {
        // The newest bill that holds more than one unit: the bills laid out before it hold just that.
        for (int i = bills.size() - 1; i >= 0; i--) {
            ItemCore *bill = bills[i];
            if (bill->get_value() > pending_unit) {
                bill->set_value(bill->get_value() - pending_unit);
                booked -= static_cast<uint64_t>(pending_unit); // it only moves
                add_money(pending_unit, pending_unit, world_position(this) + Vector3(0, 0.4f, 0));
                return;
            }
        }
    }
    pending_unit = 0;
}

Item *CashTile::take_bill() {
    if (bills.empty()) {
        return nullptr;
    }
    Item *bill = Object::cast_to<Item>(bills.back());
    if (!bill) {
        ERR_PRINT("CashTile: the newest bill is no Item and stays where it is.");
        return nullptr;
    }
    bills.remove(bill);
    get_pile()->take_item(bill);
    booked -= static_cast<uint64_t>(bill->get_value());
    refresh_sign();
    return bill;
}

void CashTile::refresh_sign() {
    if (bills.size() < max_bills) {
        if (shown >= 0) {
            shown = -1;
            sign->set_visible(false);
        }
        return;
    }
    const int64_t sum = total();
    if (shown == sum) {
        return;
    }
    if (!sign) {
        sign = Models::label3d(String(), sign_size, Color::hex(sign_color), Vector3(0, 0.95f, 0), this);
    }
    sign->set_text(UI::money(sum));
    sign->set_visible(true);
    shown = sum;
}

} // namespace tilm
