#include "rules/ghost_path.h"

#include <algorithm>
#include <cmath>

namespace tilm::rules {

namespace {

constexpr double full_turn = 6.283185307179586;
constexpr double least_span = 0.001;

} // namespace

GhostPlace ghost_place(const std::vector<GhostSample> &samples, double now) {
    const double at = now - ghost_delay;
    const GhostSample &newest = samples.back();
    if (newest.t <= at) {
        const double age = std::min(at - newest.t, ghost_age_limit);
        return {newest.x + newest.vx * age, newest.z + newest.vz * age, newest.heading};
    }
    for (size_t i = samples.size() - 1; i > 0; --i) {
        const GhostSample &a = samples[i - 1];
        const GhostSample &b = samples[i];
        if (a.t <= at) {
            const double f = std::clamp((at - a.t) / std::max(b.t - a.t, least_span), 0.0, 1.0);
            return {a.x + (b.x - a.x) * f, a.z + (b.z - a.z) * f,
                    a.heading + std::remainder(b.heading - a.heading, full_turn) * f};
        }
    }
    return {samples.front().x, samples.front().z, samples.front().heading};
}

} // namespace tilm::rules
