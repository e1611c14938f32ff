#pragma once
// A place on the ground where sales lay their money, at most six bills; more money makes the newest bill worth more.

#include <cstdint>

#include <godot_cpp/classes/label3d.hpp>

#include "farm_items/cash_core.h"
#include "fields.h"
#include "game/actors/item.h"
#include "game/actors/pile.h"

namespace tilm {
using namespace godot;

class CashTile : public CashCore {
    GDCLASS(CashTile, CashCore)

public:
    CashTile();

    TM_FIELD(int, max_bills, 6)
    TM_FIELD(int64_t, pending_unit, 0) // worth of a bill that quiet money is still to be laid out in, 0 none

    // Dollars on the tile.
    int64_t total() const;
    // Lays `amount` in bills worth `unit`, falling from a global position.
    void add_money(int64_t amount, int64_t unit, const Vector3 &from);
    // Adds money with at most one new bill; settle() lays it out later.
    void add_quiet(int64_t amount, int64_t unit);
    // Lays out one bill of quiet money; pending_unit is 0 when all is done.
    void settle();
    bool has_quiet() const { return pending_unit > 0; }
    // The newest bill, now the caller's; null on an empty tile.
    Item *take_bill();
    Pile *get_pile();
    String get_sign_text() const; // "" while hidden
    // What was laid here less what was taken: total(), unless money got lost or was made twice.
    void rebook() { booked = static_cast<uint64_t>(total()); }
    int64_t get_booked() const { return static_cast<int64_t>(booked); }

    void _ready() override;

protected:
    static void _bind_methods();

private:
    void refresh_sign();

    Pile *pile = nullptr; // a child, made when first needed
    Label3D *sign = nullptr;
    int64_t shown = -1;
    uint64_t booked = 0;
};

} // namespace tilm
