#pragma once
// The per-frame engine of a building that makes goods: its clocks, feed, hunger, and the goods in its hand's arms.

#include <godot_cpp/classes/node3d.hpp>

#include "fields.h"
#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class PileCore;

class ProducerCore : public Node3D {
    GDCLASS(ProducerCore, Node3D)

public:
    ~ProducerCore() override = default;

    // `tray` is where product waits, `full` the label of a full tray, `work` whether a hand carries the goods to the
    // tray, `carried` the seconds until the first overwork roll.
    void core_join(PileCore *tray, Node *full, bool work, double carried);
    // Feed pile; null for kinds without feed.
    void set_trough(PileCore *pile);
    PileCore *get_trough() const { return trough.get(); }
    // True once a trough that was set has been freed by somebody: without it there are no meals.
    bool trough_lost() const { return trough.id() != 0 && !trough; }
    void set_tray(PileCore *pile);
    PileCore *get_tray() const { return tray.get(); }
    // Seconds stepped so far, in view or not.
    double get_lived() const { return lived; }
    void set_hungry_label(Node *label);
    void set_regrows(bool on) { regrows = on; }

    // One frame of `dt` seconds; far off view it gathers time and runs four times a second.
    void step(double dt);
    // Goods made plus goods still carried, against the tray's room.
    bool has_room() const;

    // Upward operations, run with the time since their last run.
    virtual void animate(double) {}
    virtual void regrow_tick(double) {}

    void _process(double dt) override;

    TM_FIELD(int, catch_pending, 0)
    TM_FIELD(double, hunger, 0)
    TM_FIELD(int, fed, 0)           // meals left from the last feed item
    TM_FIELD(double, work_t, 0)     // production clock, seconds
    TM_FIELD(double, catch_wait, 0) // seconds since the first carried unit
    TM_FIELD(double, overwork_t, 0) // seconds to the next roll
    TM_FIELD(double, buy_t, 0)      // seconds to the next purchase of feed

protected:
    static void _bind_methods();

    // Makes the interval be asked anew at the next step, after a change of level.
    void forget_interval() { interval_t = 0; }
    bool catch_by_hand() const { return works_by_hand; }

private:
    void step_feed(double d);
    void step_hunger(double d, bool full);
    void produce(double d);

    // A sign that is written only when it changes.
    struct Sign {
        LiveRef<Node3D> label;
        int8_t shown = -1;
        void bind(Node *node);
        void show(bool on);
    };

    LiveRef<PileCore> tray;
    LiveRef<PileCore> trough;
    Sign full_sign;
    Sign hungry_sign;
    bool works_by_hand = false;
    bool services_known = false;
    bool regrows = false;
    int bought_feed = -1; // -1: not asked yet
    double lived = 0;
    double slow_clock = 0;
    double animate_clock = 0;
    double interval_t = 0;
    double interval_s = 1;
};

} // namespace tilm
