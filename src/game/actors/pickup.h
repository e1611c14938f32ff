#pragma once
// What the player does by standing somewhere: goods change hands at zones, bills come off cash tiles.

#include <functional>

#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/vector3.hpp>

#include "farm_items/stack_core.h"

namespace tilm {
using namespace godot;

class Item;
class PileCore;
class ZoneCore;

class Pickup {
public:
    static constexpr double zone_seconds = 0.055;
    static constexpr double bills_per_second = 50.0;
    static constexpr double reach = 1.25;
    static constexpr double magnet_reach = 3.4;

    // Runs zone_step as often as zone_seconds have passed.
    void zones(const Array &zones, const Vector3 &p, StackCore *stack, double dt);
    // One step: at most one good a zone each way. Tells the farm's tutorial about goods given to stalls.
    void zone_step(const Array &zones, const Vector3 &p, StackCore *stack);
    // Takes bills off the tiles within `radius`, up to 50 a second; each goes to `collect`, which then owns it.
    void cash_step(const Array &tiles, const Vector3 &p, double radius, double dt,
                   const std::function<void(Item *)> &collect);

    // The stack was full at a zone with goods, and has not had room since.
    bool stack_full_told() const { return full_told; }

private:
    void give_one(ZoneCore &zone, PileCore &pile, StackCore &stack);

    double zone_clock = 0.0;
    double cash_clock = 0.0;
    bool full_told = false;
};

} // namespace tilm
