#pragma once
// The swaying tower of goods on a carrier, with the herd of live animals behind it.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/vector2i.hpp>

#include "farm_items/item_core.h"
#include "farm_items/item_list.h"
#include "fields.h"

// A bound field whose change lays the tower out anew.
#define TM_LAYOUT_FIELD(m_type, m_name, m_default)                                                                     \
    m_type m_name = m_default;                                                                                         \
    void set_##m_name(const m_type &v) {                                                                               \
        if (m_name != v) {                                                                                             \
            m_name = v;                                                                                                \
            touch();                                                                                                   \
        }                                                                                                              \
    }                                                                                                                  \
    m_type get_##m_name() const {                                                                                      \
        return m_name;                                                                                                 \
    }

namespace tilm {
using namespace godot;

class StackCore : public Node3D {
    GDCLASS(StackCore, Node3D)

public:
    StackCore();
    ~StackCore() override;

    TM_FIELD(int, cart_cap, 0)
    TM_FIELD(bool, no_sign, false)
    TM_LAYOUT_FIELD(int, capacity, 20)
    TM_LAYOUT_FIELD(Vector2i, cart_grid, Vector2i(2, 2))
    TM_LAYOUT_FIELD(int, max_cols, 3)
    TM_LAYOUT_FIELD(int, show_limit, 0) // goods shown in the tower, 0 all
    TM_LAYOUT_FIELD(int, animal_limit, 6)
    TM_LAYOUT_FIELD(Vector3, base, Vector3(0, 0.95, -0.55)) // the tower's foot in the carrier's space

    // Oldest first; the last is the top.
    const ItemList &list() const { return items; }
    Array get_items() const { return items.to_array(); }
    void set_items(const Array &from);
    void set_helper(Object *node);
    Node3D *get_helper() const;
    void set_cart(Object *node);
    Node3D *get_cart() const;
    Vector3 get_sway() const { return sway; }

    int count() const { return items.size(); }
    int total_cap() const;
    bool is_full() const { return count() >= total_cap(); }
    int space() const { return total_cap() - count(); }
    int count_kind(const String &k) const;
    bool has_kind(const String &k) const;
    // The x of the tower's foot; lays the tower out anew if it changed.
    void set_side(double x);
    int cols() const;
    int goods_count() const;
    int animal_count() const { return count() - goods_count(); }
    double top_height() const;
    Vector3 top_global() const;
    // The item becomes the stack's and comes flying. There is no room check: callers ask is_full().
    void add(ItemCore *it);
    // The newest item of a kind (any for ""), now the caller's; null if there is none.
    ItemCore *take(const String &k);
    // Makes the next frame step lay everything out.
    void touch();

    // Signs of the game class: for the goods in the tower, and for a herd of that many animals.
    virtual void _count_sign() {}
    virtual void _animal_sign(int animals) { (void)animals; }

    void _process(double dt) override;
    void _ready() override;

protected:
    static void _bind_methods();

    // Local place of animal `index` in the herd.
    Vector3 herd_slot(int index) const;

    ItemList items;

private:
    struct Herd {
        int per_row;
        double spacing, row_gap, first;
    };

    static void lost_item(void *self, ItemCore *it);
    Herd herd_shape() const;
    int shown_in_helper() const;
    Vector3 tower_slot(int good, double stacked) const;
    // World place of overflow good `i` on the helper or cart, with what lies under it.
    Vector3 helper_slot(int i, double stacked) const;
    int helper_cell(int i) const;
    int helper_cells() const;
    double overflow_under(int i) const;
    void add_animal(ItemCore *it);
    void lay_herd(const Transform3D &xf, double yaw);
    void lay_goods(const Transform3D &xf, double yaw);
    void rest_sway();
    void call_ropes(int n);

    uint64_t helper_id = 0;
    uint64_t cart_id = 0;
    Vector3 sway;
    Vector3 last_pos;
    Vector3 velocity;
    Transform3D seen_transform;
    bool seen_valid = false;
    int seen_count = -1;
    int ropes_out = 0;
    int herd_shown = 0;
    bool herd_walks = false;
    std::vector<double> column_heights;
    std::vector<double> cell_heights;
};

} // namespace tilm
