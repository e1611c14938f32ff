#include "glebworks/walker_brain.h"

#include "glebworks/walker_core.h"
#include "names.h"

namespace tilm {

void WalkerBrain::tick(double dt) {
    if (walker == nullptr) {
        return;
    }
    double step = walker->lod(dt);
    if (step > 0.0 && walker->core_step(step)) {
        walker->core_animate(step, false);
    }
}

void WalkerBrain::attach(WalkerCore *to) {
    walker = to;
    walker_id = to == nullptr ? 0 : static_cast<uint64_t>(to->get_instance_id());
}

void WalkerBrain::detach() {
    walker = nullptr;
}

void WalkerBrain::play(uint64_t sfx_id, const StringName &event) const {
    Object *sfx = sfx_id == 0 || walker == nullptr ? nullptr : ObjectDB::get_instance(sfx_id);
    if (sfx != nullptr) {
        sfx->call(TM_NAME("play_at"), event, static_cast<int64_t>(walker_id), walker->get_position());
    }
}

void WalkerBrain::_bind_methods() {
    ClassDB::bind_method(D_METHOD("tick", "dt"), &WalkerBrain::tick);
    ClassDB::bind_method(D_METHOD("get_walker"), &WalkerBrain::get_walker);
    ADD_PROPERTY(PropertyInfo(Variant::OBJECT, "walker"), "", "get_walker");
}

} // namespace tilm
