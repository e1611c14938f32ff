#pragma once
// A person of the game: model, stack, staff level, cover. Everybody who is hired derives from it.

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

#include "fields.h"
#include "glebworks/walker_core.h"

namespace tilm {
using namespace godot;

class StackCarrier;

class Walker : public WalkerCore {
    GDCLASS(Walker, WalkerCore)

public:
    TM_FIELD(String, id, String()) // "egg_hauler#2"; empty for anyone but numbered staff
    TM_FIELD(int64_t, level, 1)
    TM_FIELD(Dictionary, cfg, Dictionary()) // the workday's record of this walker
    TM_FIELD(int64_t, extra_capacity, 0)    // call _staff_apply(false) after changing it
    TM_FIELD(bool, seated, false)           // sits on somebody's chair: no walk cycle

    // Virtual operations for the workday, in this order after the engine's.
    bool rest_due(double t) override;
    virtual bool can_break() { return true; } // may stop work now
    virtual bool needed() { return false; }   // must come back from a break
    virtual void before_break() {}            // gives up what it has reserved
    virtual bool quiet() { return false; }    // has nothing to do at all
    virtual void animate(double dt);
    virtual void after_break() {} // starts over after a break or a move

    // Makes the model from a look (see Models::person) and binds it with the stack. May be called again.
    void build(const Dictionary &look);
    bool step_path(double dt);
    bool rest_tick(double dt) { return rest_step(dt); }
    void set_cover(bool on);
    bool is_covering() const { return covering; }
    // Base speed (units a second) and base capacity of plain staff; applies the level from the farm's staff table.
    void make_staff(double spd, int64_t cap);
    void work_done(int64_t n);
    void _staff_apply(bool pop);
    void show_level(bool on); // the "LV" label, hidden by default

    StackCarrier *carrier() const { return tower; }
    double get_base_speed() const { return base_speed; }
    int64_t get_base_capacity() const { return base_capacity; }

protected:
    static void _bind_methods();

    // Frees the old model and takes this one in; `get_model()` is it from then on.
    void bind_model(Node3D *person);
    void apply_capacity();

    StackCarrier *tower = nullptr;
    bool plain_staff = false;

private:
    int64_t experience() const;

    double base_speed = 3.4;
    int64_t base_capacity = 5;
    bool covering = false;
    bool jointed = false;
    Label3D *level_label = nullptr;
    Label3D *cover_label = nullptr;
};

} // namespace tilm
