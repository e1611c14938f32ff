#pragma once
// Goods on the ground in a grid of layers: trays, stocks, troughs, depots, truck beds. Works only when goods come or
// go.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/vector2.hpp>

#include "farm_items/item_core.h"
#include "farm_items/item_list.h"
#include "fields.h"
#include "rules/stacking.h"

namespace tilm {
using namespace godot;

class PileCore : public Node3D {
    GDCLASS(PileCore, Node3D)

public:
    PileCore();
    ~PileCore() override;

    TM_FIELD(int, cols, 3)
    TM_FIELD(int, rows, 3)
    TM_FIELD(Vector2, spacing, Vector2(0.68, 0.58)) // cell size in x and z
    TM_FIELD(double, layer_h, 0.34)
    TM_FIELD(int, max_items, 999)
    TM_FIELD(bool, flat, false)  // one layer, overflow shares the last cell
    TM_FIELD(int, show_limit, 0) // items shown, 0 all; the rest are held hidden
    TM_FIELD(double, sign_height, 0.75)
    TM_FIELD(bool, no_sign, false)

    // Oldest first.
    const ItemList &list() const { return items; }
    Array get_items() const { return items.to_array(); }
    // Replaces the list and leaves the counts as they are: call recount() after it.
    void set_items(const Array &from) { items.assign(from); }

    int count() const { return items.size(); }
    bool is_full() const { return count() >= max_items; }
    int count_kind(const String &k) const;
    int count_of(KindId id) const;
    void recount();
    Vector3 slot_global(int i) const;
    // The item becomes the pile's and flies to its slot in `dur` seconds (0: with the next step). No room check.
    void add(ItemCore *it, double dur);
    // The newest item of a kind (any for ""), now the caller's; null if there is none.
    ItemCore *take(const String &k);
    // Takes out one given item; false if it is not here.
    bool take_item(ItemCore *it);
    // Frees up to `n` of the newest items of a kind.
    void drop(const String &k, int n);
    void _reflow();

    virtual void _count_sign() {}

protected:
    static void _bind_methods();

    ItemList items;

private:
    struct KindCount {
        KindId id;
        int n;
    };

    static void lost_item(void *self, ItemCore *it);
    void count_up(KindId id, int by);
    rules::PileGrid grid() const;
    static Vector3 slot_in(const rules::PileGrid &cells, const Transform3D &at, int i);

    std::vector<KindCount> counts;
};

} // namespace tilm
