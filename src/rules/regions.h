#pragma once
// The strip of land: regions, their level gates and cost factors, and the grid of lots for added buildings. Metres on
// the ground plane, (x, z), the player's side at +z.

#include <cstdint>
#include <span>
#include <string_view>

namespace tilm::rules {

struct Vec2 {
    float x = 0.0F;
    float y = 0.0F; // z of the world
    bool operator==(const Vec2 &) const = default;
};

struct Rect {
    float x = 0.0F;
    float y = 0.0F;
    float w = 0.0F;
    float h = 0.0F;
    bool operator==(const Rect &) const = default;
    // Strict: rectangles that only touch do not overlap.
    bool overlaps(const Rect &o) const { return x < o.x + o.w && o.x < x + w && y < o.y + o.h && o.y < y + h; }
    bool empty() const { return w <= 0.0F || h <= 0.0F; }
};

struct Region {
    std::string_view id;
    float x; // centre
    std::string_view title;
    std::string_view land; // the entry that opens it, empty where it is open from the start
    int gate;              // farm level from which that entry can be bought
};

struct RegionScale {
    std::string_view region;
    float scale;
};

std::span<const Region> regions();
const Region *find_region(std::string_view id);
std::span<const RegionScale> region_scales();
std::span<const std::string_view> levelled_kinds();

// Farm level of a land entry, 0 for any other id.
int unlock_level(std::string_view entry_id);

int lot_count(std::string_view region);
float lot_x(float region_x, int64_t slot);
float lot_row(int64_t slot); // z of the building
Rect lot_footprint(float region_x, int64_t slot);
Rect lot_pad(float region_x, int64_t slot);
// The bed of a field that stands on a lot.
Rect lot_bed(float region_x, int64_t slot);

// True when the building or its price tile on this lot would stand on the given ground.
bool lot_overlaps(float region_x, int64_t slot, const Rect &ground);

// The farmhouse's ground, on which nothing is built.
constexpr Rect HOMESTEAD = {6.0F, -21.5F, 8.5F, 9.5F};
constexpr Vec2 HOMESTEAD_POINT = {10.0F, -17.0F};

} // namespace tilm::rules
