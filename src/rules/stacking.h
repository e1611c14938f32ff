#pragma once
// How goods are stacked: columns of a carrier's tower, cells of a ground pile, and the money shown on the player's
// back.

#include <cstdint>

namespace tilm::rules {

// Columns of a tower for a carrier's capacity, at most max_cols and at least 1.
int tower_columns(int capacity, int max_cols);

struct PileGrid {
    int cols = 3;
    int rows = 3;
    double spacing_x = 0.68;
    double spacing_z = 0.58;
    double layer_h = 0.34;
    bool flat = false;
    int show_limit = 0;
};

struct Place {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

// Local place of good number `i` of a pile; beyond the show limit (or the cells of a flat pile) the last place.
Place pile_place(const PileGrid &grid, int i);

struct MoneyShow {
    int tier = -1; // 0 bills, 1 gold bars, 2 cases; -1 leaves the tier as it is
    int count = 0;
};

// What is shown of a sum of money.
MoneyShow money_show(int64_t total);

} // namespace tilm::rules
