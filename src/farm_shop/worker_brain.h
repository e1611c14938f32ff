#pragma once
// A field hand: cuts a field cell by cell, makes goods of the cells and stacks them on the pallet.

#include <godot_cpp/classes/cpu_particles3d.hpp>

#include "farm_fields/field_core.h"
#include "farm_items/pile_core.h"
#include "glebworks/live_ref.h"
#include "glebworks/walker_brain.h"

namespace tilm {
using namespace godot;

class WorkerBrain : public WalkerBrain {
    GDCLASS(WorkerBrain, WalkerBrain)

public:
    enum State { to_field = 0, harvest = 1, to_pallet = 2, unload = 3 };

    // `cells` are cut for one good, `spot` is where to stand at the pallet; puff and sfx may be null. The walker must
    // offer new_item() and work_done(n).
    void setup(FieldCore *field, PileCore *pallet, const Vector3 &spot, int64_t cells, CPUParticles3D *puff,
               Object *sfx);
    void tick(double dt) override;

    bool can_break() const { return state < to_pallet; }
    int64_t get_state() const { return state; }
    void set_state(int64_t s) { state = static_cast<int>(s); }
    int64_t get_cells() const { return cells; }
    void set_cells(int64_t n) { cells = n < 1 ? 1 : n; }
    int64_t get_tally() const { return tally; }
    void set_tally(int64_t n) { tally = n; }
    Vector3 get_spot() const { return spot; }
    void set_spot(const Vector3 &p) { spot = p; }
    FieldCore *get_field() const { return field.get(); }
    void set_field(FieldCore *f) { field.set(f); }
    PileCore *get_pallet() const { return pallet.get(); }
    void set_pallet(PileCore *p) { pallet.set(p); }
    CPUParticles3D *get_puff() const { return puff.get(); }
    void set_puff(CPUParticles3D *p) {
        puff.set(p);
        puffing = false;
    }
    Object *get_sfx() const { return sfx.get(); }
    void set_sfx(Object *s) { sfx.set(s); }

protected:
    static void _bind_methods();

private:
    void step_harvest(FieldCore *f);
    void step_unload(FieldCore *f, double dt);
    void puff_on(bool on);

    LiveRef<FieldCore> field;
    LiveRef<PileCore> pallet;
    LiveRef<CPUParticles3D> puff;
    LiveRef<Object> sfx;
    Vector3 spot;
    int64_t cells = 3;
    int64_t tally = 0;
    int state = to_field;
    double drop_clock = 0.0;
    bool puffing = false;
};

} // namespace tilm
