#include "rules/stacking.h"

#include <algorithm>
#include <cmath>

namespace tilm::rules {

int tower_columns(int capacity, int max_cols) {
    const int wanted = capacity < 15 ? 1 : capacity < 27 ? 2 : 3;
    return std::max(1, std::min(max_cols, wanted));
}

Place pile_place(const PileGrid &grid, int i) {
    const int cols = std::max(1, grid.cols);
    const int rows = std::max(1, grid.rows);
    const int cells = cols * rows;
    int index = std::max(0, i);
    if (grid.show_limit > 0) {
        index = std::min(index, grid.show_limit - 1);
    }
    if (grid.flat) {
        index = std::min(index, cells - 1);
    }
    const int layer = index / cells;
    const int rest = index % cells;
    const int row = rest / cols;
    const int col = rest % cols;
    return {(col - (cols - 1) / 2.0) * grid.spacing_x, layer * grid.layer_h, (row - (rows - 1) / 2.0) * grid.spacing_z};
}

MoneyShow money_show(int64_t total) {
    if (total < 1) {
        return {};
    }
    const double t = (double)total;
    if (total < 1000) {
        return {0, std::clamp((int)std::ceil(std::sqrt(t) * 1.9), 1, 60)};
    }
    if (total < 20000) {
        return {1, std::clamp((int)std::ceil(std::sqrt(t / 20000.0) * 48.0), 1, 48)};
    }
    return {2, (int)std::clamp(std::ceil(std::sqrt(t / 200000.0) * 30.0), 1.0, 30.0)};
}

} // namespace tilm::rules
