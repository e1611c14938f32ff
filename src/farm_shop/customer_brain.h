#pragma once
// What a customer thinks: how long it has waited, its mood, whether it is on its way out.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/string.hpp>

#include "fields.h"
#include "glebworks/live_ref.h"
#include "glebworks/walker_brain.h"

namespace tilm {
using namespace godot;

class CustomerBrain : public WalkerBrain {
    GDCLASS(CustomerBrain, WalkerBrain)

public:
    TM_FIELD(int64_t, want, 0)
    TM_FIELD(int64_t, got, 0)
    TM_FIELD(bool, leaving, false)
    TM_FIELD(bool, vip, false)
    TM_FIELD(double, wait, 0.0) // seconds
    TM_FIELD(String, kind, String())

    // The walker must offer mood_changed(m), lift_face(up) and gone().
    void tick(double dt) override;
    void reset();
    double mood() const; // 1.0, 0.7 or 0.4 by the wait
    bool gives_up() const;

    void set_bubble(Node3D *node) { bubble.set(node); }
    Node3D *get_bubble() const { return bubble.get(); }
    // Visibility of the order bubble, written only when it changes.
    void show_bubble(bool on);

    static void set_patience(double v) { patience = v; }
    static double get_patience() { return patience; }

protected:
    static void _bind_methods();

private:
    LiveRef<Node3D> bubble;
    double told_mood = -1.0;
    bool face_up = false;

    static double patience;
};

} // namespace tilm
