#pragma once
// The bot's way round solids: a search on a half-metre grid, pulled straight, followed point by point.

#include <vector>

#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/vector2.hpp>

namespace tilm {
using namespace godot;

class BotPath {
public:
    // Plans from `from` to `to` (world x and z, metres) inside `area`, clear of `solids` by the body's width. A goal
    // that cannot be reached is approached as near as can be.
    void plan(const Vector2 &from, const Vector2 &to, const Rect2 &area, const std::vector<Rect2> &solids);
    // The direction to walk in at `at` after `dt` seconds, length 0 .. 1; zero within `reach` of the goal.
    Vector2 steer(const Vector2 &at, double reach, double dt);
    // No way was made for a while although one was wished: asks for a new plan, or another goal. Forgets on reading.
    bool take_stuck();

private:
    bool blocked(const Vector2 &p) const;
    bool clear_line(const Vector2 &a, const Vector2 &b) const;
    void search(const Vector2 &from, const Vector2 &to);

    Rect2 box;
    int columns = 0;
    int rows = 0;
    std::vector<unsigned char> taken; // a byte a cell of the box
    std::vector<Vector2> points;
    size_t next = 0;
    Vector2 last;
    double stuck_clock = 0;
    double aside = 0; // seconds of a step aside still to go
    float side = 1;
    bool stuck = false;
};

} // namespace tilm
