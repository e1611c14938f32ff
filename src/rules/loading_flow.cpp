#include "rules/loading_flow.h"

#include <algorithm>
#include <cmath>

namespace tilm::rules {
namespace {

constexpr double kPlanShare = 0.4; // of the display, for the warm-up
constexpr double kWorldEnd = 0.98; // where a finished world build would stand
constexpr double kHandOver = 0.55; // of the plan's share: the bar moves before the first heavy frame
constexpr double kFull = 0.99;     // shown before the screen may go
constexpr int kWaitHandOver = 2;   // frames
constexpr int kWaitSettle = 8;     // frames

} // namespace

double LoadingFlow::plan_target() const {
    const double r = std::clamp(static_cast<double>(done) / total, 0.0, 1.0);
    return now == Stage::WarmUp || now == Stage::HandOver ? r * kPlanShare : r;
}

LoadingFlow::Order LoadingFlow::step(bool tasks_left, bool world_ready) {
    switch (now) {
    case Stage::WarmUp:
        // Not below is enough: an empty plan has a target of 0.
        if (!tasks_left && display >= plan_target() * kHandOver) {
            now = Stage::HandOver;
            wait = kWaitHandOver;
        }
        return Order::None;
    case Stage::HandOver:
        if (wait-- < 2) {
            base = plan_target();
            now = Stage::WorldBuild;
            return Order::MakeWorld;
        }
        return Order::None;
    case Stage::WorldBuild:
        if (world_ready) {
            base = 0.0;
            done += 2;
            now = Stage::Settle;
            wait = kWaitSettle;
        }
        return Order::None;
    case Stage::Settle:
        if (wait-- < 2) {
            done = total;
            if (display >= kFull) {
                now = Stage::Fading;
                return Order::Fade;
            }
        }
        return Order::None;
    case Stage::Fading:
        break;
    }
    return Order::None;
}

void LoadingFlow::show(double delta, bool world, double world_progress) {
    const double target =
        now == Stage::WorldBuild && world ? base + world_progress * (kWorldEnd - base) : plan_target();
    double rate = 0.9;
    if (now == Stage::Settle || now == Stage::Fading) {
        rate = 1.6;
    } else if (now == Stage::WorldBuild) {
        rate = 3.0;
    }
    const double step = std::max(0.0, delta) * rate;
    const double distance = target - display;
    display = std::abs(distance) <= step ? target : display + std::copysign(step, distance);
}

int LoadingFlow::percent() const {
    return static_cast<int>(std::lround(display * 100.0));
}

} // namespace tilm::rules
