#include "farm_shop/worker_brain.h"

#include <limits>

#include "farm_items/goods_ledger.h"
#include "farm_items/stack_core.h"
#include "glebworks/walker_core.h"
#include "names.h"

namespace tilm {

namespace {
constexpr double cut_ahead = 0.4;
constexpr double cut_radius = 0.55;
constexpr int cut_cells = 3;
constexpr double drop_every = 0.09; // seconds
constexpr double edge_gap = 0.6;    // the path round the field
constexpr double look_near = 2.5;
constexpr double look_anywhere = 3.0;

double far_edge(const FieldCore *field) {
    const Rect2 r = field->get_rect();
    return r.position.y + r.size.y + edge_gap;
}

Vector3 anywhere() {
    const real_t inf = std::numeric_limits<real_t>::infinity();
    return Vector3(inf, inf, inf);
}
} // namespace

void WorkerBrain::setup(FieldCore *f, PileCore *p, const Vector3 &at, int64_t n, CPUParticles3D *dust, Object *sounds) {
    field.set(f);
    pallet.set(p);
    spot = at;
    set_cells(n);
    puff.set(dust);
    sfx.set(sounds);
}

void WorkerBrain::tick(double dt) {
    if (walker == nullptr) {
        return;
    }
    const double step = walker->lod(dt);
    if (step <= 0.0) {
        return;
    }
    if (walker->rest_step(step)) {
        puff_on(false);
        return;
    }
    FieldCore *f = field.get();
    if (f == nullptr || walker->get_stack() == nullptr) {
        puff_on(false);
        return;
    }
    if (state == harvest) {
        puff_on(true);
    }
    switch (state) {
    case to_field:
        if (walker->arrived()) {
            state = harvest;
            puff_on(true);
        }
        break;
    case harvest:
        step_harvest(f);
        break;
    case to_pallet:
        if (walker->arrived()) {
            state = unload;
        }
        break;
    default:
        step_unload(f, step);
        break;
    }
    if (walker != nullptr && walker->core_step(step)) {
        walker->core_animate(step, false);
    }
}

void WorkerBrain::step_harvest(FieldCore *f) {
    StackCore *stack = walker->get_stack();
    const Vector3 p = walker->get_position() + walker->forward() * cut_ahead;
    tally += f->collect_at(p, cut_cells, cut_radius);
    while (tally >= cells && !stack->is_full()) {
        const GoodsVerb verb("cut");
        ItemCore *item = Object::cast_to<ItemCore>(walker->call(TM_NAME("new_item")));
        if (item == nullptr) {
            break;
        }
        tally -= cells;
        stack->add(item);
    }
    if (stack->is_full()) {
        state = to_pallet;
        puff_on(false);
        walker->go(Vector3(p.x, 0, far_edge(f)), spot);
    } else if (walker->arrived()) {
        walker->go(f->random_alive(p, look_near));
    }
}

void WorkerBrain::step_unload(FieldCore *f, double dt) {
    StackCore *stack = walker->get_stack();
    drop_clock += dt;
    while (drop_clock >= drop_every) {
        PileCore *pile = pallet.get();
        if (stack->count() > 0 && (pile == nullptr || pile->is_full())) {
            drop_clock = 0.0;
            return;
        }
        drop_clock -= drop_every;
        ItemCore *item = stack->take(String());
        if (item == nullptr) {
            drop_clock = 0.0;
            state = to_field;
            const Vector3 goal = f->random_alive(anywhere(), look_anywhere);
            walker->go(Vector3(goal.x, 0, far_edge(f)), goal);
            return;
        }
        pile->add(item, 0.3);
        walker->call(TM_NAME("work_done"), 1);
        play(sfx.id(), TM_NAME("worker_drop"));
    }
}

void WorkerBrain::puff_on(bool on) {
    if (on == puffing) {
        return;
    }
    puffing = on;
    if (CPUParticles3D *dust = puff.get()) {
        dust->set_emitting(on);
    }
}

void WorkerBrain::_bind_methods() {
    ClassDB::bind_method(D_METHOD("setup", "field", "pallet", "spot", "cells", "puff", "sfx"), &WorkerBrain::setup);
    ClassDB::bind_method(D_METHOD("can_break"), &WorkerBrain::can_break);
    TM_BIND_FIELD(WorkerBrain, Variant::INT, state);
    TM_BIND_FIELD(WorkerBrain, Variant::INT, cells);
    TM_BIND_FIELD(WorkerBrain, Variant::INT, tally);
    TM_BIND_FIELD(WorkerBrain, Variant::VECTOR3, spot);
    TM_BIND_FIELD(WorkerBrain, Variant::OBJECT, field);
    TM_BIND_FIELD(WorkerBrain, Variant::OBJECT, pallet);
    TM_BIND_FIELD(WorkerBrain, Variant::OBJECT, puff);
    TM_BIND_FIELD(WorkerBrain, Variant::OBJECT, sfx);
}

} // namespace tilm
