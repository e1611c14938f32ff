#pragma once
// A stall's engine: draws customers, serves the head of the line, and sells by plain records while nobody looks.
// A record is a customer without a node; it turns into a real one when the counter comes into view.
// Prices, sounds and the customers' nodes belong to the derived class, reached by name: give(front), serve(front),
// _pay(kind, n, vip, mood, quiet), and change_order(kind) on the head.

#include <cstdint>
#include <deque>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

#include "farm_items/pile_core.h"
#include "farm_shop/customer_brain.h"
#include "fields.h"
#include "glebworks/live_ref.h"
#include "glebworks/walker_core.h"

namespace tilm {
using namespace godot;

class CounterCore : public Node3D {
    GDCLASS(CounterCore, Node3D)

public:
    TM_FIELD(double, spawn_z, 22.0)
    TM_FIELD(bool, settle_pending, false)
    TM_FIELD(double, clock, 0.0)
    TM_FIELD(double, spawn_clock, 0.0) // seconds to the next customer, may be negative
    TM_FIELD(double, serve_clock, 0.0) // since the last unit handed over
    TM_FIELD(double, swap_clock, 0.0)  // that the head has stood before an empty kind
    TM_FIELD(double, pay_clock, 0.0)   // of the records' payments
    TM_FIELD(double, slow_clock, 0.0)  // gathered out of sight

    // Makes real customers of records, as many as the frame allows.
    virtual void show_ghosts();
    // Lays quiet money out on the cash tile, one step a call.
    virtual void settle_cash();

    void _process(double dt) override;
    void slow_join();

    Vector3 slot(int64_t i) const;
    int64_t stocked() const;
    int64_t waiting() const;
    int64_t ghost_count() const { return static_cast<int64_t>(ghosts.size()); }
    Dictionary peek_ghost() const; // empty without one
    void pop_ghost();
    // Appends a record: for tests and scripts.
    void add_ghost(const String &kind, int64_t n, bool vip, double wait, bool walk);

    void set_product(const String &k);
    String get_product() const { return product; }
    // One that holds no kind leaves the main one.
    void set_products(const Array &k);
    Array get_products() const;
    void set_level_raw(int64_t l) { level = l < 1 ? 1 : l; }
    int64_t get_level() const { return level; }
    void set_stock(PileCore *pile) { stock.set(pile); }
    PileCore *get_stock() const { return stock.get(); }
    // Walkers in line, the head first. The Array is a copy.
    void set_queue(const Array &customers);
    Array get_queue();
    void join_queue(WalkerCore *customer);
    // Takes a customer out of the line; those behind move up.
    void leave_queue(WalkerCore *customer);

    static void set_rush(bool v) { rush = v; }
    static bool get_rush() { return rush; }
    static void set_spawn_mult(double v) { spawn_mult = v; }
    static double get_spawn_mult() { return spawn_mult; }

protected:
    static void _bind_methods();

    struct GhostRecord {
        String kind;
        int64_t n = 0;
        bool vip = false;
        double wait = 0.0;
        bool walk = false;
    };

    // Marks the head as leaving, sends it out past the counter and moves the line up.
    void send_away(WalkerCore *front);
    static CustomerBrain *mind(const WalkerCore *customer);
    int64_t stock_of(const String &kind) const;

    String product = "egg";
    std::vector<String> products = {String("egg")};
    int64_t level = 1;
    LiveRef<PileCore> stock;
    std::vector<LiveRef<WalkerCore>> queue;
    std::deque<GhostRecord> ghosts;

private:
    bool is_near() const;
    void drop_dead();
    void calm_line(double d);
    void step_spawn(double d, bool near);
    void step_head(double d);
    void step_swap(WalkerCore *front, CustomerBrain *m, double d);
    void step_ghosts(double d);
    void new_ghost(bool near);
    void give_up(WalkerCore *front, CustomerBrain *m);
    String first_stocked() const;

    static bool rush;
    static double spawn_mult;
};

} // namespace tilm
