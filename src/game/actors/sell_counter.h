#pragma once
// A stall: its looks, prices, customers' nodes and cash tile on top of the counter engine.

#include <vector>

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/variant/color.hpp>

#include "farm_items/zone_core.h"
#include "farm_shop/counter_core.h"
#include "game/ports/farm.h"

namespace tilm {
using namespace godot;

class CashTile;
class Customer;

class SellCounter : public CounterCore {
    GDCLASS(SellCounter, CounterCore)

public:
    TM_FIELD(int64_t, base_price, 4)
    TM_FIELD(Color, color, Color(0.827f, 0.184f, 0.184f)) // d32f2f

    ~SellCounter() override;

    // Builds the whole stall of a plan entry (id, pos, product, products, color) under the farm's root: node, stock,
    // give zone (appended to the farm's list), cash tile, price label, solid, ground marks. The counter must be loose.
    // False, with a line in the log, for an entry that sells nothing known; the counter is then as it was.
    bool build(const Dictionary &entry, Farm *farm);
    // For counters that stand elsewhere (restaurants): products and prices only; the owner sets the stock and tile.
    void set_goods(const String &main_kind, const Array &kinds);

    int64_t unit_price() const;
    void set_level(int64_t l);
    void give(WalkerCore *front);
    void serve(WalkerCore *front);
    void settle_cash() override;
    int64_t _pay(const String &k, int64_t n, bool is_vip, double m, bool quiet);
    void _lost();
    int64_t recent_losses() const { return static_cast<int64_t>(losses.size()); } // 0 again once the alarm rang
    void show_ghosts() override;

    // The farm that is told of sales; its node is also the customers' parent.
    void set_world(Node3D *node) { world.set(node); }
    Node3D *get_world() const { return world.get(); }
    void set_cash_tile(CashTile *tile);
    CashTile *cash_tile() const { return tile.get(); }
    Ref<ZoneCore> zone() const { return give_zone; }

    // Process-wide, written by the farm: charm and night; and what each kind pays more by its maker's level.
    static void set_price_factor(double v) { price_factor = v; }
    static double get_price_factor() { return price_factor; }
    static Dictionary price_mults();
    static void setup_statics();

protected:
    static void _bind_methods();

private:
    Farm *farm() const;
    Customer *free_customer(const String &kind);

    LiveRef<Node3D> world;
    LiveRef<CashTile> tile;
    Ref<ZoneCore> give_zone;
    Label3D *price_label = nullptr;
    std::vector<double> losses;
    Array pool; // loose Customer nodes, owned here
    std::vector<LiveRef<Customer>> customers;

    static double price_factor;
};

} // namespace tilm
