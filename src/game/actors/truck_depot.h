#pragma once
// A loading bay: trucks come with an order of goods, pay by how quickly it is loaded, and leave. The market trucks take
// what the stalls around sell, a factory's dock takes its product.

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/color.hpp>

#include "farm_belts/truck_core.h"
#include "farm_items/zone_core.h"
#include "game/ports/farm.h"

namespace tilm {
using namespace godot;

class CashTile;

class TruckDepot : public TruckCore {
    GDCLASS(TruckDepot, TruckCore)

public:
    TM_FIELD(Array, goods, Array())                        // a dock's product; empty on a market truck
    TM_FIELD(int, base, 1)                                 // scale of a dock's orders
    TM_FIELD(int, level, 1)                                // of the dock's factory
    TM_FIELD(Color, colour, Color(0.118f, 0.533f, 0.898f)) // 1e88e5
    TM_FIELD(String, group, "truck")
    TM_FIELD(int64_t, served, 0) // orders done
    TM_FIELD(bool, vip, false)
    TM_FIELD(bool, next_vip, false)

    // Builds the whole bay at `x` under the farm's root: bodies, bed, give zone (appended to the farm's list), cash
    // tile, boards, ground mark and, for a dock, the star markers. The node must be loose; set goods, group and colour
    // before.
    void build(double x, Farm *farm);

    bool is_dock() const { return !goods.is_empty(); }
    int64_t get_stars() const { return stars; }
    void set_stars(int64_t n);
    Ref<ZoneCore> get_zone() const { return zone; }
    CashTile *get_cash() const { return cash.get(); }
    Array get_bodies() const { return bodies; }
    Node3D *get_body() const { return body.get(); }
    void set_world(Node3D *node) { world.set(node); }
    Node3D *get_world() const { return world.get(); }
    String get_board_text() const; // "" while hidden
    String get_clock_text() const;

    void _new_order();
    int64_t reward() const;
    int64_t _delivered_value() const;
    void arrive();
    void hurry();
    void on_full();
    void on_late();
    void _parked();
    void _update_board();
    void _leave();
    void _set_body(Node3D *t);
    void _gone();

    // Process-wide, written by the farm.
    static void set_tips_factor(double v) { tips_factor = v; }
    static double get_tips_factor() { return tips_factor; }

protected:
    static void _bind_methods();

private:
    Farm *farm() const;
    Array pool() const;
    void order_of_stalls();
    void order_of_dock(Farm *f);
    String second_kind(Farm *f) const;
    void pay_out(int64_t amount, int64_t unit);
    void slide(double z, double seconds, bool leaving);
    void show_boards(bool on);
    void pop_label(const String &text);
    String order_titles() const;
    Vector3 at(float x, float y, float z) const;

    LiveRef<Node3D> world;
    LiveRef<CashTile> cash;
    LiveRef<Node3D> body; // the one in use
    Ref<ZoneCore> zone;
    Array bodies; // plain, gold
    Array star_nodes;
    int64_t stars = 0;
    Label3D *board = nullptr;
    Label3D *clock_board = nullptr;
    Label3D *vip_sign = nullptr;
    String board_text;
    String clock_text;
    Ref<Tween> sliding;

    static double tips_factor;
};

} // namespace tilm
