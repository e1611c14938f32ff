#include "rules/field_rules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tilm::rules {

double season_growth(int season) {
    static constexpr std::array<double, 4> figures = {1.3, 1.1, 0.9, 0.6};
    return figures[season < 0 || season > 3 ? 0 : static_cast<size_t>(season)];
}

double crop_growth(int season, bool wet, bool boosted) {
    return season_growth(season) * (wet ? 2.0 : 1.0) * (boosted ? 2.0 : 1.0);
}

float growth_scale(float s) {
    if (s >= 1.0f) {
        return 1.0f;
    }
    return std::max(cut_scale, s * (1.0f + std::sin(std::numbers::pi_v<float> * s) * 0.25f));
}

void CellGrid::build(int nx, int nz) {
    columns = std::max(nx, 0);
    rows = std::max(nz, 0);
    living = total();
    phase = 0;
    const size_t n = static_cast<size_t>(total());
    alive_flags.assign(n, 1);
    waits.assign(n, 0.0f);
    sizes.assign(n, 1.0f);
    sprouts.clear();
    sprouts.reserve(n);
}

bool CellGrid::cut(int cell, float seconds) {
    const size_t i = static_cast<size_t>(cell);
    if (alive_flags[i] == 0) {
        return false;
    }
    alive_flags[i] = 0;
    waits[i] = seconds;
    living -= 1;
    // A sprout that is cut must not go on growing while it is dead.
    if (sizes[i] < 1.0f) {
        std::erase(sprouts, cell);
    }
    return true;
}

void CellGrid::grow(double dt, double rate, const Shown &shown) {
    const int n = total();
    if (n == 0) {
        return;
    }
    phase = (phase + 1) % 4;
    const int chunk = std::max(1, n / 4);
    // The last quarter takes the cells that do not divide by four as well, or they would never come back.
    const int end = phase == 3 ? n : std::min(n, (phase + 1) * chunk);
    const float gone = static_cast<float>(4.0 * dt * rate);
    for (int cell = std::min(n, phase * chunk); cell < end; ++cell) {
        const size_t i = static_cast<size_t>(cell);
        if (alive_flags[i] != 0) {
            continue;
        }
        waits[i] -= gone;
        if (waits[i] <= 0.0f) {
            alive_flags[i] = 1;
            living += 1;
            sizes[i] = 0.0f;
            sprouts.push_back(cell);
        }
    }
    size_t kept = 0;
    for (const int cell : sprouts) {
        float &s = sizes[static_cast<size_t>(cell)];
        s = std::min(1.0f, s + static_cast<float>(3.0 * dt));
        shown(cell, growth_scale(s));
        if (s < 1.0f) {
            sprouts[kept++] = cell;
        }
    }
    sprouts.resize(kept);
}

double harvester_speed(int level) {
    return (0.05 * (level - 1) + 1.0) * 2.8;
}

double harvester_growth(int level) {
    return (level - 1) * 0.15 + 1.0;
}

int harvester_pallet_room(int level) {
    return level + 44;
}

int harvester_gain(int cut, int level) {
    return static_cast<int>(std::round(cut * (1.0 + (level - 1) * 0.12)));
}

std::vector<RoutePoint> serpentine(float x, float z, float width, float depth) {
    std::vector<RoutePoint> points;
    const float left = x + 0.9f;
    const float right = x + width - 0.9f;
    if (right <= left) {
        return points;
    }
    bool eastward = true;
    for (float row = z + 1.0f; row <= z + depth - 0.5f; row += 1.6f) {
        points.push_back({eastward ? left : right, row});
        points.push_back({eastward ? right : left, row});
        eastward = !eastward;
    }
    return points;
}

RoutePoint harvester_parking(float x, float z, float width, float depth) {
    return {x + width + 1.5f, z + depth + 2.0f};
}

} // namespace tilm::rules
