#pragma once
// Crop cells and the arithmetic of fields and harvesters.

#include <cstdint>
#include <functional>
#include <vector>

namespace tilm::rules {

inline constexpr double cell_spacing = 0.42;
inline constexpr int cells_per_good = 3;
inline constexpr float cut_scale = 0.001f;

// Growth figure of a season 0..3 from spring to winter; others count as spring, in which a farm begins.
double season_growth(int season);
// Crop growth of the hour: the season's, twice it under rain, twice it again under the boost of crops.
double crop_growth(int season, bool wet, bool boosted);

// Shown size of a plant that is `s` (0..1) through its regrowth: quick at first.
float growth_scale(float s);

// The living state of a grid of plants: flat arrays, row by row along z then x.
class CellGrid {
public:
    // Calls `shown(cell, scale)` whenever a plant's visible size changes.
    using Shown = std::function<void(int cell, float scale)>;

    void build(int nx, int nz);
    int nx() const { return columns; }
    int nz() const { return rows; }
    int total() const { return columns * rows; }
    int alive() const { return living; }
    bool is_alive(int cell) const { return alive_flags[static_cast<size_t>(cell)] != 0; }
    int growing() const { return static_cast<int>(sprouts.size()); }
    // Cuts a living plant; it comes back after `seconds` at growth rate 1. False if it was cut already.
    bool cut(int cell, float seconds);
    // One slow step: a quarter of the cells loses 4 x dt x rate seconds of waiting, sprouts grow by dt.
    void grow(double dt, double rate, const Shown &shown);

private:
    int columns = 0;
    int rows = 0;
    int living = 0;
    int phase = 0;
    std::vector<uint8_t> alive_flags;
    std::vector<float> waits; // seconds until a cut plant lives again
    std::vector<float> sizes; // growth 0..1
    std::vector<int> sprouts; // cells that are growing now
};

// Harvester figures by level.
double harvester_speed(int level);
double harvester_growth(int level);
int harvester_pallet_room(int level);
// Plants counted for `cut` plants.
int harvester_gain(int cut, int level);

struct RoutePoint {
    float x = 0;
    float z = 0;
};
// Serpentine rows over a bed, in driving order; empty for a bed too small for one row.
std::vector<RoutePoint> serpentine(float x, float z, float width, float depth);
RoutePoint harvester_parking(float x, float z, float width, float depth);

} // namespace tilm::rules
