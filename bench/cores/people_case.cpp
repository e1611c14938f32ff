// People as a farm shows them: rigged models that walk in view, every limb of theirs moving, drawn by the pose batch.

#include "bench_stage.h"

#include <cmath>

#include <godot_cpp/core/class_db.hpp>

#include "game/actors/item_batch.h"
#include "game/actors/person_look.h"
#include "game/actors/walker.h"
#include "glebworks/pose_batch.h"

namespace tilm::bench {

namespace {

// Round and round four corners of a square, never at rest.
class BenchRound : public WalkerBrain {
    GDCLASS(BenchRound, WalkerBrain)

public:
    void tick(double dt) override {
        if (walker->arrived()) {
            corner = (corner + 1) % 4;
            walker->go(middle + Vector3(corner < 2 ? 3 : -3, 0, corner % 3 == 0 ? 3 : -3));
        }
        if (walker->core_step(walker->lod(dt))) {
            static_cast<Walker *>(walker)->animate(dt);
        }
    }
    Vector3 middle;
    int corner = 0;

protected:
    static void _bind_methods() {}
};

int crowd = 0;

// Looks at each frame's work: a frame in which somebody stood still would be measured too cheap.
class BenchWatch : public Node {
    GDCLASS(BenchWatch, Node)

public:
    void _ready() override { set_process_priority(2000); }
    void _process(double) override {
        if (frames++ > 1 && PoseBatch::written() != crowd) {
            ERR_PRINT(vformat("Only %d of %d people moved.", PoseBatch::written(), crowd));
        }
    }
    int frames = 0;

protected:
    static void _bind_methods() {}
};

void people(Stage &stage) {
    crowd = scaled(300);
    stage.top->add_child(memnew(ItemBatch));
    const Array looks = PersonLook::customer_looks();
    for (int i = 0; i < crowd; i++) {
        Walker *w = memnew(Walker);
        w->build(looks[i % looks.size()]);
        w->set_position(Vector3(real_t(i % 30 - 15), 0, real_t(i / 30 * 2 - 10)));
        stage.top->add_child(w);
        BenchRound *brain = memnew(BenchRound);
        brain->middle = w->get_position();
        brain->corner = i % 4;
        w->set_brain(Ref<WalkerBrain>(brain));
    }
    stage.top->add_child(memnew(BenchWatch));
}

} // namespace

void people_cases() {
    frames("people", people);
}

void register_people_classes() {
    GDREGISTER_CLASS(BenchRound);
    GDREGISTER_CLASS(BenchWatch);
}

} // namespace tilm::bench
