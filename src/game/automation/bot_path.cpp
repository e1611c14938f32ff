#include "game/automation/bot_path.h"

#include <algorithm>
#include <cmath>
#include <queue>

namespace tilm {

namespace {

constexpr float CELL = 0.5f;
constexpr float CLEARANCE = 0.42f; // the body's 0.35 and a little
constexpr float AROUND = 12.0f;    // how far beyond start and goal the search looks, metres
constexpr float CORNER = 0.35f;
constexpr double STUCK_SECONDS = 0.7;
constexpr float STUCK_WAY = 0.2f;
constexpr double ASIDE_SECONDS = 0.4;

} // namespace

void BotPath::plan(const Vector2 &from, const Vector2 &to, const Rect2 &area, const std::vector<Rect2> &solids) {
    box = Rect2(from, Vector2()).expand(to).grow(AROUND).intersection(area.grow(CELL));
    box = box.expand(from).expand(to);
    columns = static_cast<int>(box.size.x / CELL) + 1;
    rows = static_cast<int>(box.size.y / CELL) + 1;
    taken.assign(static_cast<size_t>(columns) * rows, 0);
    for (const Rect2 &solid : solids) {
        const Rect2 r = solid.grow(CLEARANCE);
        if (!r.intersects(box)) {
            continue;
        }
        const int x0 = std::max(0, static_cast<int>(std::ceil((r.position.x - box.position.x) / CELL)));
        const int z0 = std::max(0, static_cast<int>(std::ceil((r.position.y - box.position.y) / CELL)));
        const int x1 = std::min(columns - 1, static_cast<int>((r.get_end().x - box.position.x) / CELL));
        const int z1 = std::min(rows - 1, static_cast<int>((r.get_end().y - box.position.y) / CELL));
        for (int z = z0; z <= z1; z++) {
            for (int x = x0; x <= x1; x++) {
                taken[static_cast<size_t>(z) * columns + x] = 1;
            }
        }
    }
    points.clear();
    next = 0;
    last = from;
    stuck_clock = 0;
    if (clear_line(from, to)) {
        points.push_back(to);
    } else {
        search(from, to);
    }
}

bool BotPath::blocked(const Vector2 &p) const {
    const int x = static_cast<int>(std::lround((p.x - box.position.x) / CELL));
    const int z = static_cast<int>(std::lround((p.y - box.position.y) / CELL));
    return x < 0 || z < 0 || x >= columns || z >= rows || taken[static_cast<size_t>(z) * columns + x] != 0;
}

bool BotPath::clear_line(const Vector2 &a, const Vector2 &b) const {
    const float way = a.distance_to(b);
    for (float s = CELL * 0.5f; s < way; s += CELL * 0.5f) {
        if (blocked(a.lerp(b, s / way))) {
            return false;
        }
    }
    return true;
}

void BotPath::search(const Vector2 &from, const Vector2 &to) {
    auto cell_of = [this](const Vector2 &p) {
        const int x = std::clamp(static_cast<int>(std::lround((p.x - box.position.x) / CELL)), 0, columns - 1);
        const int z = std::clamp(static_cast<int>(std::lround((p.y - box.position.y) / CELL)), 0, rows - 1);
        return z * columns + x;
    };
    auto place = [this](int cell) {
        return box.position + Vector2(static_cast<float>(cell % columns), static_cast<float>(cell / columns)) * CELL;
    };
    const int start = cell_of(from);
    const int end = cell_of(to);
    std::vector<float> cost(taken.size(), INFINITY);
    std::vector<int> before(taken.size(), -1);
    using Row = std::pair<float, int>;
    std::priority_queue<Row, std::vector<Row>, std::greater<>> open;
    cost[start] = 0;
    open.emplace(place(start).distance_to(to), start);
    int best = start;
    while (!open.empty()) {
        const auto [guess, cell] = open.top();
        open.pop();
        const float left = place(cell).distance_to(to);
        if (guess > cost[cell] + left + 0.001f) {
            continue; // found shorter since
        }
        if (left < place(best).distance_to(to)) {
            best = cell;
        }
        if (cell == end) {
            break;
        }
        const int cx = cell % columns;
        const int cz = cell / columns;
        for (int dz = -1; dz <= 1; dz++) {
            for (int dx = -1; dx <= 1; dx++) {
                const int x = cx + dx;
                const int z = cz + dz;
                if (x < 0 || z < 0 || x >= columns || z >= rows) {
                    continue;
                }
                const int other = z * columns + x;
                // No cutting of corners; out of a blocked start any way leads.
                const bool corner = dx != 0 && dz != 0 && (taken[cz * columns + x] || taken[z * columns + cx]);
                if (other != end && (taken[other] || corner) && !taken[cell]) {
                    continue;
                }
                const float sum = cost[cell] + CELL * (dx != 0 && dz != 0 ? 1.4142f : 1.0f);
                if (sum < cost[other] - 0.0001f) {
                    cost[other] = sum;
                    before[other] = cell;
                    open.emplace(sum + place(other).distance_to(to), other);
                }
            }
        }
    }
    std::vector<Vector2> way;
    for (int cell = best; cell >= 0; cell = before[cell]) {
        way.push_back(place(cell));
    }
    std::reverse(way.begin(), way.end());
    if (best == end) {
        way.back() = to;
    }
    for (size_t i = 0; i + 1 < way.size();) {
        size_t far = i + 1;
        while (far + 1 < way.size() && clear_line(way[i], way[far + 1])) {
            far++;
        }
        points.push_back(way[far]);
        i = far;
    }
    if (points.empty()) {
        points.push_back(way.back());
    }
}

Vector2 BotPath::steer(const Vector2 &at, double reach, double dt) {
    while (next + 1 < points.size() && at.distance_to(points[next]) < CORNER) {
        next++;
    }
    if (points.empty() || (next + 1 == points.size() && at.distance_to(points[next]) <= reach)) {
        stuck_clock = 0;
        last = at;
        return Vector2();
    }
    stuck_clock += dt;
    if (stuck_clock >= STUCK_SECONDS) {
        if (at.distance_to(last) < STUCK_WAY) {
            stuck = true;
            aside = ASIDE_SECONDS;
            side = -side;
        }
        stuck_clock = 0;
        last = at;
    }
    const Vector2 way = points[next] - at;
    const Vector2 ahead = way.normalized();
    if (aside > 0) {
        aside -= dt;
        return Vector2(-ahead.y, ahead.x) * side;
    }
    // Slower at the last metre, so that the goal is not overrun.
    const float slow = next + 1 == points.size() ? std::min(1.0f, way.length() / 0.8f + 0.15f) : 1.0f;
    return ahead * slow;
}

bool BotPath::take_stuck() {
    const bool was = stuck;
    stuck = false;
    return was;
}

} // namespace tilm
