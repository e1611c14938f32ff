#pragma once
// Price tiles: how money drains into them, what they ask for, and which one to aim at next.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tilm::rules {

inline constexpr double tile_wait = 0.3;   // seconds of standing before money flows
inline constexpr double tile_slice = 0.03; // seconds for one payment
inline constexpr double tile_width = 2.4;  // of the plate
inline constexpr double step_off_reach = 1.6;

// The money side of one tile.
struct TileDrain {
    int64_t total = 100;
    int64_t paid = 0;
    double stand_time = 0;
    double drain_acc = 0;

    int64_t remaining() const { return total - paid; }
    bool full() const { return paid >= total; }
    double share() const; // 0..1
    // The next payment out of `money`, 0 when nothing is due.
    int64_t slice(int64_t money) const;
    void leave() { stand_time = drain_acc = 0; }
};

// `already_paid` as a new tile of price `total` takes it: never full.
int64_t paid_at_setup(int64_t already_paid, int64_t total);
double tile_scale(bool land_at_level_0);
// Half side of the square to stand in.
double tile_half(double sign_scale);
double price_label_scale(size_t characters);

struct TileNeed {
    std::string id;
    int level = 1;
};
// "coop_a@2" needs coop_a at level 2 or more, a plain id at level 1; a level that is no number counts as 1.
TileNeed tile_need(std::string_view text);

// A tile as the guide sees it.
struct TileOffer {
    int64_t remaining = 0;
    int64_t price = 0; // of the whole level
    int level = 0;     // being bought, from 0
    bool land = false;
    bool held_back = false; // new outer land while free lots are left
    bool extra = false;
    bool done = false;
};
// Index of the tile to aim at with `free` money, -1 for none: the cheapest, but near a purchase of land no upgrade that
// would set it back.
int next_tile(std::span<const TileOffer> offers, int64_t free);

// Factor on what a product sells for, by the level of what makes it.
double level_price_factor(int level, bool producer);

// Extra goods a hauler carries: `steps` are the capacity steps of a standing machine it serves, 0 for none.
int hauler_extra_room(std::string_view dst, int steps);

} // namespace tilm::rules
