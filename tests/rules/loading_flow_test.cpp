#include "rules/loading_flow.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace tilm::rules;
using Stage = LoadingFlow::Stage;
using Order = LoadingFlow::Order;

namespace {

struct Course {
    LoadingFlow flow;
    std::vector<double> shown;
    int frame = 0;
    int world_made_at = -1;
    int faded_at = -1;
};

// Plays a whole load at 60 frames a second: `per_frame` of `tasks` warm-ups a frame, then `world_frames` of building
// (negative: no world appears).
Course play(int tasks, int per_frame, int world_frames) {
    Course run;
    run.flow.plan_tasks(tasks);
    int left = tasks;
    int built = 0;
    for (; run.frame < 5000 && run.faded_at < 0; ++run.frame) {
        if (run.flow.stage() == Stage::WarmUp) {
            for (int i = 0; i < per_frame && left > 0; ++i) {
                --left;
                run.flow.task_done();
            }
        }
        const bool world = run.flow.stage() == Stage::WorldBuild && world_frames >= 0;
        const bool ready = run.flow.stage() == Stage::WorldBuild && (!world || ++built > world_frames);
        const Order order = run.flow.step(left > 0, ready);
        if (order == Order::MakeWorld) {
            run.world_made_at = run.frame;
        }
        if (order == Order::Fade) {
            run.faded_at = run.frame;
        }
        run.flow.show(1.0 / 60.0, world && !ready, world_frames > 0 ? 0.92 * built / world_frames : 0.0);
        run.shown.push_back(run.flow.shown());
    }
    return run;
}

TEST(LoadingFlow, EveryLoadEndsAndNeverJumps) {
    for (const int tasks : {0, 1, 50, 400}) {
        for (const int world_frames : {-1, 0, 3, 200}) {
            const Course run = play(tasks, 5, world_frames);
            SCOPED_TRACE(testing::Message() << tasks << " tasks, world of " << world_frames << " frames");
            ASSERT_GE(run.world_made_at, 0);
            ASSERT_GT(run.faded_at, run.world_made_at);
            EXPECT_GE(run.shown.back(), 0.99);
            double last = 0.0;
            for (const double s : run.shown) {
                EXPECT_LE(std::abs(s - last), 3.0 / 60.0 + 1e-9);
                EXPECT_GE(s, 0.0);
                EXPECT_LE(s, 1.0);
                last = s;
            }
        }
    }
}

TEST(LoadingFlow, TheBarMovesBeforeTheWorldIsMade) {
    const Course run = play(96, 96, 10); // all warm in one frame
    // 96 of 100 is a share of 0.384, of which 55% must be on the screen.
    EXPECT_GE(run.shown[run.world_made_at - 2], 0.384 * 0.55);
    EXPECT_GE(run.world_made_at, static_cast<int>(0.384 * 0.55 / 0.9 * 60));
}

TEST(LoadingFlow, AnEmptyPlanIsHandedOverAtOnce) {
    const Course run = play(0, 1, 5);
    EXPECT_EQ(run.world_made_at, 2);
    for (size_t i = 1; i < run.shown.size(); ++i) {
        EXPECT_GE(run.shown[i], run.shown[i - 1]);
    }
}

TEST(LoadingFlow, WithoutAWorldTheBuildPassesInOneFrame) {
    LoadingFlow flow;
    flow.plan_tasks(0);
    flow.step(false, false);
    flow.step(false, false);
    EXPECT_EQ(flow.step(false, false), Order::MakeWorld);
    EXPECT_EQ(flow.stage(), Stage::WorldBuild);
    flow.step(false, true);
    EXPECT_EQ(flow.stage(), Stage::Settle);
}

TEST(LoadingFlow, TheDisplayFollowsAFallingTargetAtTheLimitedRate) {
    LoadingFlow flow;
    flow.plan_tasks(0);
    while (flow.step(false, false) != Order::MakeWorld) {}
    flow.show(1.0, true, 0.92); // far ahead: 0.9016
    const double high = flow.shown();
    EXPECT_NEAR(high, 0.92 * 0.98, 1e-9);
    flow.show(0.01, true, 0.0);
    EXPECT_NEAR(flow.shown(), high - 0.03, 1e-9);
    flow.show(-1.0, true, 0.0); // a clock that runs backwards moves nothing
    EXPECT_NEAR(flow.shown(), high - 0.03, 1e-9);
}

TEST(LoadingFlow, TheScreenStaysUntilItShowsNearlyAll) {
    LoadingFlow flow;
    flow.plan_tasks(10);
    for (int i = 0; i < 10; ++i) {
        flow.task_done();
    }
    flow.show(10.0, false, 0.0);
    while (flow.step(false, false) != Order::MakeWorld) {}
    flow.step(false, true);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(flow.step(false, false), Order::None);
    }
    EXPECT_LT(flow.percent(), 99);
    flow.show(10.0, false, 0.0);
    EXPECT_EQ(flow.step(false, false), Order::Fade);
    EXPECT_EQ(flow.percent(), 100);
    EXPECT_EQ(flow.step(false, false), Order::None);
}

} // namespace
