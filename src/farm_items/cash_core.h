#pragma once
// Where earned money lies as bills.

#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>

#include "farm_items/item_list.h"

namespace tilm {
using namespace godot;

class CashCore : public Node3D {
    GDCLASS(CashCore, Node3D)

public:
    CashCore();
    ~CashCore() override;

    const ItemList &bill_list() const { return bills; }
    Array get_bills() const { return bills.to_array(); }
    void set_bills(const Array &from) { bills.assign(from); }

    // The tiles with bills at most `reach` from p, in their order.
    static Array near(const Array &tiles, const Vector3 &p, double reach);

protected:
    static void _bind_methods();

    ItemList bills;
};

} // namespace tilm
