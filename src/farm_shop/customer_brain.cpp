#include "farm_shop/customer_brain.h"

#include "farm_items/stack_core.h"
#include "glebworks/walker_core.h"
#include "names.h"
#include "rules/shop.h"

namespace tilm {

double CustomerBrain::patience = 1.0;

void CustomerBrain::tick(double dt) {
    if (walker == nullptr) {
        return;
    }
    const double step = walker->lod(dt);
    if (step <= 0.0) {
        return;
    }
    if (!leaving) {
        wait += step;
        const double now = mood();
        if (now != told_mood) {
            told_mood = now;
            walker->call(TM_NAME("mood_changed"), now);
        }
        Node3D *node = bubble.get();
        const bool up = node != nullptr && node->is_visible();
        if (up != face_up) {
            face_up = up;
            walker->call(TM_NAME("lift_face"), up);
        }
    }
    if (walker == nullptr) {
        return;
    }
    if (walker->core_step(step)) {
        StackCore *stack = walker->get_stack();
        walker->core_animate(step, stack != nullptr && stack->count() > 0);
    }
    if (leaving && walker->arrived()) {
        walker->call(TM_NAME("gone"));
    }
}

void CustomerBrain::reset() {
    got = 0;
    leaving = false;
    wait = 0.0;
    told_mood = -1.0;
    face_up = false;
}

double CustomerBrain::mood() const {
    return rules::mood_after(wait, patience);
}

bool CustomerBrain::gives_up() const {
    return rules::gives_up(wait, patience);
}

void CustomerBrain::show_bubble(bool on) {
    Node3D *node = bubble.get();
    if (node != nullptr && node->is_visible() != on) {
        node->set_visible(on);
    }
}

void CustomerBrain::_bind_methods() {
    TM_BIND_FIELD(CustomerBrain, Variant::INT, want);
    TM_BIND_FIELD(CustomerBrain, Variant::INT, got);
    TM_BIND_FIELD(CustomerBrain, Variant::BOOL, leaving);
    TM_BIND_FIELD(CustomerBrain, Variant::BOOL, vip);
    TM_BIND_FIELD(CustomerBrain, Variant::FLOAT, wait);
    TM_BIND_FIELD(CustomerBrain, Variant::STRING, kind);
    ClassDB::bind_method(D_METHOD("reset"), &CustomerBrain::reset);
    ClassDB::bind_method(D_METHOD("mood"), &CustomerBrain::mood);
    ClassDB::bind_method(D_METHOD("set_bubble", "node"), &CustomerBrain::set_bubble);
    ClassDB::bind_method(D_METHOD("get_bubble"), &CustomerBrain::get_bubble);
    ClassDB::bind_static_method("CustomerBrain", D_METHOD("set_patience", "v"), &CustomerBrain::set_patience);
    ClassDB::bind_static_method("CustomerBrain", D_METHOD("get_patience"), &CustomerBrain::get_patience);
}

} // namespace tilm
