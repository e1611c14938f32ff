#pragma once
// The swaying stack of money on a carrier's back.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>

#include "farm_items/item_list.h"
#include "fields.h"

namespace tilm {
using namespace godot;

class MoneyCore : public Node3D {
    GDCLASS(MoneyCore, Node3D)

public:
    MoneyCore();
    ~MoneyCore() override;

    TM_FIELD(Vector3, base, Vector3())
    TM_FIELD(double, tier_h, 0.07) // height of one layer of two

    const ItemList &list() const { return items; }
    Array get_items() const { return items.to_array(); }
    void set_items(const Array &from) { items.assign(from); }
    int count() const { return items.size(); }
    Vector3 get_sway() const { return sway; }
    // Makes it lean like another stack from now on.
    void set_sway(const Vector3 &v) { sway = v; }
    // World place of item `i` with the present lean.
    Vector3 slot_global(int i) const;

    void _process(double dt) override;
    void _ready() override;

protected:
    static void _bind_methods();

    ItemList items;

private:
    Vector3 slot_in(const Transform3D &xf, int i) const;

    Vector3 sway;
    Vector3 velocity;
    Vector3 last_pos;
};

} // namespace tilm
