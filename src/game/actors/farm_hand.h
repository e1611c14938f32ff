#pragma once
// The small walker inside a producer: milks, shears, picks and carries goods to the tray, or rows on the pond.

#include "game/actors/walker.h"
#include "glebworks/live_ref.h"

namespace tilm {

class Producer;

class FarmHand : public Walker {
    GDCLASS(FarmHand, Walker)

public:
    enum State {
        waiting = 0,
        to_job = 1,
        working = 2,
        to_gate = 3,
        handing = 4,
        rowing_out = 5,
        fishing = 6,
        rowing_back = 7,
    };

    // Dresses the hand for `home`'s product and starts its cycle. Call once, then add it as a child of the producer:
    // it still walks in world coordinates.
    void setup(Producer *home);
    // One step of the job cycle.
    void tick(double dt);

    String get_product() const { return product; }
    void set_product(const String &v) { product = v; }
    int get_state() const { return state; }
    void set_state(int v) { state = v; }
    double get_timer() const { return timer; }
    void set_timer(double v) { timer = v; }
    Dictionary get_held() const { return held; }

    void _process(double dt) override;

protected:
    static void _bind_methods();

private:
    void next_job();
    void next_fishing_job();
    bool hold_an_animal();
    void start_job(const Vector3 &local);
    void to_the_gate(int via);
    void work(double dt);
    void hand_over();
    void finish_work();
    void show_load(bool on);
    void lean(float angle, double dt);
    void row(double dt);
    void stand_aside(double dt);
    Vector3 base() const;
    Producer *get_home() const;

    String product = "milk";
    int state = waiting;
    double timer = 0;
    double work_seconds = 1.4;
    int idle_rounds = 0;
    float row_phase = 0;
    Dictionary held;
    LiveRef<Producer> home;
    Node3D *load = nullptr;
    Node3D *boat = nullptr;
    Node3D *oars[2] = {};
};

} // namespace tilm
