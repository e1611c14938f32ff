#include "game/actors/worker.h"

#include <limits>

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/cpu_particles3d.hpp>

#include "farm_items/stack_core.h"
#include "game/actors/item.h"
#include "game/actors/person_look.h"
#include "game/art/models.h"
#include "game/data/farm_data.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/field_rules.h"

namespace tilm {

namespace {

CPUParticles3D *make_puff(const String &crop) {
    Ref<BoxMesh> bit;
    bit.instantiate();
    bit->set_size(Vector3(0.09, 0.09, 0.09));
    const Color soil = FarmData::bed_colors().get(crop, Color(0.6f, 0.5f, 0.3f));
    bit->set_material(Models::color_material(soil.lightened(0.3f)));
    CPUParticles3D *puff = memnew(CPUParticles3D);
    puff->set_name("Puff");
    puff->set_emitting(false);
    puff->set_amount(10);
    puff->set_lifetime(0.5);
    puff->set_mesh(bit);
    puff->set_direction(Vector3(0, 1, 0));
    puff->set_spread(60);
    puff->set_param_min(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 1.0);
    puff->set_param_max(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 2.0);
    puff->set_position(Vector3(0, 0.3, -0.4));
    return puff;
}

} // namespace

void Worker::setup(const String &name, const String &kind, const Vector3 &pos, FieldCore *f, PileCore *p,
                   const Vector3 &drop) {
    id = name;
    crop = kind;
    home = pos;
    field.set(f);
    pallet.set(p);
    spot = drop;
    set_name(name.replace("#", "_"));
    set_position(pos);
}

void Worker::_ready() {
    if (in_editor()) {
        set_process(false);
        return;
    }
    build(PersonLook::of_role("worker"));
    make_staff(3.1, 4);
    CPUParticles3D *puff = make_puff(crop);
    get_model()->add_child(puff);
    FieldCore *f = field.get();
    if (f != nullptr) {
        const real_t inf = std::numeric_limits<real_t>::infinity();
        set_position(f->random_alive(Vector3(inf, inf, inf), 3.0));
    }
    worker_brain.instantiate();
    worker_brain->setup(f, pallet.get(), spot, rules::cells_per_good, puff, Sfx::get());
    set_brain(worker_brain);
}

ItemCore *Worker::new_item() {
    return Item::spawn(crop, get_position() + Vector3(0, 0.3, 0));
}

bool Worker::can_break() {
    return worker_brain.is_null() || worker_brain->can_break();
}

bool Worker::quiet() {
    const FieldCore *f = field.get();
    return can_break() && (stack == nullptr || stack->count() == 0) && f != nullptr && f->alive_ratio() < 0.25;
}

void Worker::_bind_methods() {
    ClassDB::bind_method(D_METHOD("setup", "name", "crop", "pos", "field", "pallet", "spot"), &Worker::setup);
    ClassDB::bind_method(D_METHOD("new_item"), &Worker::new_item);
    ClassDB::bind_method(D_METHOD("get_crop"), &Worker::get_crop);
}

} // namespace tilm
