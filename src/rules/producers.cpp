#include "rules/producers.h"

#include <algorithm>
#include <array>

namespace tilm::rules {

namespace {

constexpr std::array<ProducerKind, 10> kinds = {{
    {"egg", "COOP", "CHICKENS", false, 2, 4.0, "corn", 3, HandWork::stroll, 1.4},
    {"milk", "BARN", "COWS", true, 1, 6.5, "hay", 2, HandWork::stroll, 5.0},
    {"fish", "POND", "FISH", false, 2, 5.0, "", 0, HandWork::bring, 1.4},
    {"calf", "PEN", "CALVES", true, 1, 9.0, "hay", 1, HandWork::none, 1.4},
    {"hen", "HEN HOUSE", "HENS", false, 2, 6.0, "corn", 1, HandWork::none, 1.4},
    {"honey", "APIARY", "BEEHIVES", false, 3, 7.0, "", 0, HandWork::bring, 2.6},
    {"apple", "ORCHARD", "APPLE TREES", false, 0, 4.0, "", 0, HandWork::bring, 2.0},
    {"orange", "ORCHARD", "ORANGE TREES", false, 0, 4.0, "", 0, HandWork::bring, 2.0},
    {"wool", "SHEEP SHED", "SHEEP", true, 1, 8.0, "hay", 1, HandWork::bring, 4.0},
    {"bean", "COFFEE FARM", "COFFEE SHRUBS", false, 0, 4.0, "", 0, HandWork::bring, 2.2},
}};

struct SeasonRow {
    std::string_view product;
    std::array<double, 4> factor;
};

constexpr std::array<SeasonRow, 4> seasons = {{
    {"honey", {1.2, 1.0, 0.8, 0.25}},
    {"apple", {1.0, 1.1, 1.3, 0.3}},
    {"orange", {1.0, 1.2, 1.1, 0.5}},
    {"bean", {1.0, 1.15, 1.1, 0.6}},
}};

constexpr int shown_levels = 5; // more levels add no more animals to the yard

} // namespace

std::span<const ProducerKind> producer_kinds() {
    return kinds;
}

const ProducerKind *producer_kind(std::string_view product) {
    const auto it = std::find_if(kinds.begin(), kinds.end(), [&](const auto &k) { return k.product == product; });
    return it == kinds.end() ? nullptr : &*it;
}

int animal_count(const ProducerKind &kind, int level) {
    return (kind.per != 0 ? kind.per * level : level) + 1;
}

int visible_animals(const ProducerKind &kind, int level) {
    return kind.per == 0 ? 0 : std::min(level, shown_levels) * kind.per + 1;
}

int tray_room(int level) {
    return std::max(level, shown_levels) + 19;
}

double season_factor(std::string_view product, int season) {
    if (season < 0 || season > 3) {
        return 1.0;
    }
    for (const SeasonRow &row : seasons) {
        if (row.product == product) {
            return row.factor[static_cast<size_t>(season)];
        }
    }
    return 1.0;
}

double unit_seconds(const ProducerKind &kind, int level, int feed_level, double animal_factor, double season) {
    const double rate = animal_count(kind, level) * (1.0 + 0.35 * feed_level) * animal_factor * season;
    return kind.base / std::max(rate, 1e-6);
}

double overwork_chance(int level) {
    return std::min(0.12, level * 0.006);
}

int feed_to_buy(int count) {
    return count > 7 ? 0 : std::min(trough_room - count, 12);
}

} // namespace tilm::rules
