// Walking in and out of sight, the far list, breaks, staff levels, and a field worker's whole job.

#include <cmath>

#include <godot_cpp/classes/multi_mesh.hpp>

#include "farm_fields/field_core.h"
#include "game/actors/worker.h"
#include "game/ports/workday.h"
#include "glebworks/far_list.h"
#include "glebworks/pose_batch.h"
#include "staff_kit.h"

using namespace godot;

namespace tilm {
namespace {

constexpr double FRAME = 1.0 / 60.0;

// Counts its steps and the seconds it was given, then walks.
class CountingBrain : public WalkerBrain {
    GDCLASS(CountingBrain, WalkerBrain)

public:
    void tick(double dt) override {
        double step = walker->lod(dt);
        ++ticks;
        seconds += step;
        walker->core_step(step);
    }
    int ticks = 0;
    double seconds = 0;

protected:
    static void _bind_methods() {}
};

CountingBrain *give_brain(WalkerCore *walker) {
    static const bool known = (ClassDB::register_class<CountingBrain>(), true);
    EXPECT_TRUE(known);
    CountingBrain *brain = memnew(CountingBrain);
    walker->set_brain(Ref<WalkerBrain>(brain));
    return brain;
}

class FixedDay : public Workday {
public:
    FixedDay() { Workday::set_current(this); }
    ~FixedDay() override { Workday::set_current(nullptr); }
    bool staff_step(Walker *walker, double dt) override {
        ++asked;
        last_dt = dt;
        Dictionary record = walker->get_cfg();
        record["st"] = away ? 2 : 0;
        walker->set_cfg(record);
        return away;
    }
    bool away = false;
    int asked = 0;
    double last_dt = 0;
};

TEST(Walkers, FollowsItsPathAndStopsForNothing) {
    Workplace place;
    WalkerCore *walker = place.put<WalkerCore>();
    Node3D *model = memnew(Node3D);
    walker->add_child(model);
    walker->core_bind(model, nullptr, Array());
    walker->go(Vector3(0.1f, 0, 0), Vector3(3, 7, 0), Vector3(3, 0, 4));
    EXPECT_TRUE(walker->core_step(FRAME)); // the first point is too near to walk to
    EXPECT_EQ(walker->way().size(), 2u);
    EXPECT_EQ(walker->get_position(), Vector3());
    double longest = 0;
    for (int i = 0; i < 240; ++i) {
        const Vector3 before = walker->get_position();
        walker->core_step(FRAME);
        longest = std::max<double>(longest, before.distance_to(walker->get_position()));
    }
    EXPECT_TRUE(walker->arrived());
    EXPECT_LT(walker->get_position().distance_to(Vector3(3, 0, 4)), 0.35); // it runs out over the last point
    EXPECT_LE(longest, 3.4 * FRAME + 1e-4);
    EXPECT_NEAR(std::abs(model->get_rotation().y), Math_PI, 0.1); // it walked towards +z
    EXPECT_TRUE(walker->get_idle());
    EXPECT_FALSE(walker->core_step(FRAME));
}

TEST(Walkers, FacesTheShorterWayRound) {
    Workplace place;
    WalkerCore *walker = place.put<WalkerCore>();
    Node3D *model = memnew(Node3D);
    walker->add_child(model);
    walker->core_bind(model, nullptr, Array());
    model->set_rotation(Vector3(0, 3.0, 0));
    walker->face(Vector3(std::sin(3.0), 0, -std::cos(3.0)), FRAME); // yaw -3: 0.28 away over pi
    EXPECT_GT(model->get_rotation().y, 3.0);
    EXPECT_LT(model->get_rotation().y, 3.2);
    walker->face(Vector3(0.01f, 0, 0), 1.0); // too slow to mean anything
    EXPECT_LT(model->get_rotation().y, 3.2);
}

TEST(Walkers, SpeedTakesAllFactorsAndWalksFarAtTheSamePace) {
    Workplace place;
    Glebworks::set_view(Rect2(-5, -5, 10, 10));
    WalkerCore *walker = place.put<WalkerCore>(Vector3(100, 0, 0));
    walker->set_rest_mult(1.5);
    walker->set_cover_speed(1.2);
    WalkerCore::set_boost(1.5);
    walker->go(Vector3(100, 0, 5), Vector3(105, 0, 5));
    EXPECT_FALSE(walker->core_step(0.06));
    EXPECT_EQ(walker->get_position(), Vector3(100, 0, 0)); // gathers a tenth of a second first
    EXPECT_FALSE(walker->core_step(0.94));
    WalkerCore::set_boost(1.0);
    const double way = 3.4 * 1.5 * 1.2 * 1.5;
    EXPECT_NEAR(walker->get_position().x, 100 + way - 5, 1e-4);
    EXPECT_NEAR(walker->get_position().z, 5, 1e-4);
    EXPECT_EQ(walker->way().size(), 1u);
}

TEST(Walkers, FarOnesLeaveTheFrameAndComeBack) {
    Workplace place;
    Glebworks::set_view(Rect2(-5, -5, 10, 10));
    WalkerCore *walker = place.put<WalkerCore>(Vector3(15.5f, 0, 0));
    WalkerCore *lazy = place.put<WalkerCore>(Vector3(40, 0, 0));
    CountingBrain *brain = give_brain(walker);
    CountingBrain *idle = give_brain(lazy);
    lazy->set_far_skip(true);
    lazy->go(Vector3(60, 0, 0));
    walker->_process(FRAME);
    lazy->_process(FRAME);
    EXPECT_TRUE(walker->in_far_list());
    EXPECT_FALSE(walker->is_processing());
    walker->go(Vector3(100, 0, 0));
    for (int i = 0; i < 60; ++i) {
        WalkerCore::tick_far(FRAME);
    }
    EXPECT_NEAR(walker->get_position().x, 15.5 + 3.4, 0.4 * 3.4);
    EXPECT_GE(brain->ticks, 4);
    EXPECT_LT(brain->ticks, 62);
    EXPECT_NEAR(brain->seconds, 1.0 + FRAME, 0.35);
    EXPECT_EQ(idle->ticks, 1);
    EXPECT_EQ(lazy->get_position(), Vector3(40, 0, 0));
    Glebworks::set_view(Rect2(5, -5, 60, 10));
    for (int i = 0; i < 20; ++i) {
        WalkerCore::tick_far(FRAME);
    }
    EXPECT_FALSE(walker->in_far_list());
    EXPECT_TRUE(walker->is_processing());
    EXPECT_TRUE(lazy->is_processing());
}

TEST(Walkers, SixUnitsOutTheModelIsLeftAsItIs) {
    Workplace place;
    Glebworks::set_view(Rect2(-5, -5, 10, 10));
    for (const float x : {10.9f, 11.1f}) {
        WalkerCore *walker = place.put<WalkerCore>(Vector3(x, 0, 0));
        Node3D *model = memnew(Node3D);
        Node3D *lost = memnew(Node3D);
        Array parts;
        parts.push_back(lost); // freed before it is bound: a part that is not there
        memdelete(lost);
        walker->add_child(model);
        walker->core_bind(model, nullptr, parts);
        walker->set_idle(true);
        walker->go(Vector3(x, 0, 4));
        for (int i = 0; i < 10; ++i) {
            EXPECT_EQ(walker->core_step(FRAME), x < 11);
        }
        walker->core_animate(FRAME, false);
        EXPECT_FALSE(walker->get_idle());
        EXPECT_GT(walker->get_position().z, 0.1);
        EXPECT_EQ(model->get_rotation().y == 0, x > 11);
    }
}

TEST(Walkers, FarListVisitsEverybodyAThirdOfASecondApart) {
    EXPECT_EQ(FarList::visits_for(0.016, 100), 7);
    EXPECT_EQ(FarList::visits_for(5.0, 100), 100);
    Workplace place;
    Glebworks::set_view(Rect2(-5, -5, 10, 10));
    std::vector<CountingBrain *> brains;
    std::vector<WalkerCore *> crowd;
    const int before = FarList::size();
    for (int i = 0; i < 50; ++i) {
        crowd.push_back(place.put<WalkerCore>(Vector3(100, 0, static_cast<float>(i))));
        brains.push_back(give_brain(crowd.back()));
        crowd.back()->_process(FRAME);
    }
    for (int i = 0; i < 10; ++i) {
        memdelete(crowd[static_cast<size_t>(i) * 5]); // dead ones fall out
    }
    for (int i = 0; i < 60; ++i) {
        WalkerCore::tick_far(FRAME);
    }
    EXPECT_EQ(FarList::size(), before + 40);
    for (size_t i = 0; i < brains.size(); ++i) {
        if (i % 5 != 0 || i >= 50) {
            EXPECT_GE(brains[i]->ticks, 3) << i;
            EXPECT_LE(brains[i]->ticks, 8) << i;
        }
    }
}

TEST(Walkers, PosesAreWrittenWhenTheyChange) {
    Workplace place;
    Walker *walker = place.put<Walker>();
    Dictionary look;
    look["shirt"] = "aa3344";
    walker->build(look);
    ASSERT_GE(PoseBatch::find(walker->get_model()), 0);
    for (int i = 0; i < 11; ++i) {
        PoseBatch::sync_poses();
    }
    EXPECT_EQ(PoseBatch::written(), 0);
    walker->go(Vector3(5, 0, 0));
    for (int i = 0; i < 10; ++i) {
        walker->step_path(FRAME);
    }
    PoseBatch::sync_poses();
    EXPECT_EQ(PoseBatch::written(), 1);
    const int known = PoseBatch::count();
    memdelete(walker);
    for (int i = 0; i < 11; ++i) {
        PoseBatch::sync_poses();
    }
    EXPECT_EQ(PoseBatch::count(), known - 1);
}

TEST(Walkers, AskTheWorkdayOnceASecondAndEachFrameOnABreak) {
    Workplace place;
    Walker *walker = place.put<Walker>();
    walker->set_id("egg_hauler#1");
    for (int i = 0; i < 120; ++i) {
        EXPECT_FALSE(walker->rest_tick(FRAME)); // nobody keeps a schedule
    }
    FixedDay day;
    for (int i = 0; i < 180; ++i) {
        walker->rest_tick(FRAME);
    }
    EXPECT_GE(day.asked, 2);
    EXPECT_LE(day.asked, 4);
    EXPECT_NEAR(day.last_dt, 1.0, 0.05);
    day.away = true;
    for (int i = 0; i < 70; ++i) {
        walker->rest_tick(FRAME);
    }
    const int asked = day.asked;
    EXPECT_TRUE(walker->rest_tick(FRAME));
    EXPECT_TRUE(walker->rest_tick(FRAME));
    EXPECT_EQ(day.asked, asked + 2);
    walker->set_id(String());
    walker->rest_tick(FRAME);
    EXPECT_FALSE(walker->rest_tick(2.0));
}

TEST(Walkers, StaffGrowsByWorkAndCarriesDoubleOnCover) {
    Workplace place;
    place.farm.staff["helper#1"] = 70; // from the save
    Hauler *hauler = place.hire({"egg"}, "stall_egg");
    EXPECT_EQ(hauler->get_level(), 2);
    EXPECT_EQ(hauler->get_stack()->get_capacity(), 6);
    hauler->work_done(4);
    EXPECT_EQ(hauler->get_level(), 2);
    hauler->work_done(1);
    EXPECT_EQ(hauler->get_level(), 3);
    EXPECT_EQ(static_cast<int64_t>(place.farm.staff["helper#1"]), 75);
    EXPECT_NEAR(hauler->get_speed(), 3.3 * 1.14, 1e-9);
    hauler->set_extra_capacity(20);
    hauler->_staff_apply(false);
    EXPECT_EQ(hauler->get_stack()->get_capacity(), 27);
    EXPECT_EQ(hauler->get_stack()->get_show_limit(), 12);
    hauler->set_cover(true);
    hauler->set_cover(true);
    EXPECT_EQ(hauler->get_stack()->get_capacity(), 54);
    EXPECT_DOUBLE_EQ(hauler->get_cover_speed(), 1.2);
    hauler->set_cover(false);
    EXPECT_EQ(hauler->get_stack()->get_capacity(), 27);
    EXPECT_DOUBLE_EQ(hauler->get_cover_speed(), 1.0);
}

struct Field {
    explicit Field(Workplace &place) {
        field = place.put<FieldCore>();
        Ref<MultiMesh> plants;
        plants.instantiate();
        plants->set_transform_format(MultiMesh::TRANSFORM_3D);
        field->core_build(plants, Rect2(-1.5f, -10, 3, 3), 0, false);
        field->set_process(false);
        pallet = place.put<Pile>(Vector3(0, 0, -4));
    }
    Worker *hire(Workplace &place, const char *name) {
        Worker *worker = memnew(Worker);
        worker->setup(name, "corn", Vector3(), field, pallet, pallet->get_position() + Vector3(0, 0, -1.6f));
        place.farm.ground->add_child(worker);
        return worker;
    }
    FieldCore *field;
    Pile *pallet;
};

TEST(Walkers, WorkersClearAFieldOntoThePallet) {
    Workplace place;
    Field work(place);
    const int cells = work.field->get_nx() * work.field->get_nz();
    Worker *a = work.hire(place, "corn_workers#1_0");
    Worker *b = work.hire(place, "corn_workers#1_1");
    EXPECT_TRUE(a->can_break());
    place.run(240.0);
    EXPECT_EQ(work.field->alive_ratio(), 0.0);
    const int64_t made = work.pallet->count_kind("corn") + a->get_stack()->count() + b->get_stack()->count();
    const int64_t rest = a->mind()->get_tally() + b->mind()->get_tally();
    EXPECT_EQ(made * 3 + rest, cells); // three plants make one good, none is lost
    EXPECT_GT(work.pallet->count(), cells / 3 - 8);
    EXPECT_EQ(static_cast<int64_t>(place.farm.staff["corn_workers#1_0"]) +
                  static_cast<int64_t>(place.farm.staff["corn_workers#1_1"]),
              work.pallet->count());
    EXPECT_TRUE(a->get_stack()->count() > 0 || a->quiet());
}

TEST(Walkers, WorkerWaitsAtAFullPallet) {
    Workplace place;
    Field work(place);
    work.pallet->set_max_items(2);
    Worker *worker = work.hire(place, "corn_workers#1_0");
    place.run(60.0);
    EXPECT_EQ(work.pallet->count(), 2);
    EXPECT_EQ(worker->get_stack()->count(), 2);
    EXPECT_EQ(worker->mind()->get_state(), WorkerBrain::unload);
    EXPECT_FALSE(worker->can_break());
    memdelete(work.field); // sold under the worker's feet
    place.run(1.0);
    EXPECT_EQ(worker->get_stack()->count(), 2);
}

} // namespace
} // namespace tilm
