#pragma once
// The player's money on his back: bills, then gold bars, then cases.

#include <cstdint>
#include <vector>

#include "farm_items/item_core.h"
#include "farm_items/money_core.h"

namespace tilm {
using namespace godot;

class MoneyStack : public MoneyCore {
    GDCLASS(MoneyStack, MoneyCore)

public:
    // Shows a sum. `from_item`: a money item that the stack takes over when it fits, otherwise lets fly in and fade.
    // `to_pos`: a Vector3 that surplus items fly to, nil to let them shrink away.
    void show_money(int64_t total, Object *from_item, const Variant &to_pos);
    // 0 bills, 1 gold bars, 2 cases.
    int get_tier() const { return tier; }
    // Whole bars or cases now shown; 0 with bills.
    int bars() const { return tier == 0 ? 0 : count(); }

    void _process(double dt) override;
    void _notification(int what);

protected:
    static void _bind_methods();

private:
    // A timed change of an item's size; from == to only waits for its end.
    struct Scaling {
        uint64_t id;
        double t, dur;
        double from, to;
        bool free_after;
    };

    void shrink_away(ItemCore *it);
    void scale_over(ItemCore *it, double to, double dur, bool free_after);
    void step_scaling(double dt);

    int tier = 0;
    std::vector<Scaling> scaling;
};

} // namespace tilm
