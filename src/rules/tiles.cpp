#include "rules/tiles.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace tilm::rules {

double TileDrain::share() const {
    return total <= 0 ? 1.0 : std::clamp(static_cast<double>(paid) / static_cast<double>(total), 0.0, 1.0);
}

int64_t TileDrain::slice(int64_t money) const {
    const int64_t chunk = std::max<int64_t>(1, (total + 39) / 40);
    return std::max<int64_t>(0, std::min({chunk, money, remaining()}));
}

int64_t paid_at_setup(int64_t already_paid, int64_t total) {
    return std::clamp<int64_t>(already_paid, 0, std::max<int64_t>(0, total - 1));
}

double tile_scale(bool land_at_level_0) {
    return land_at_level_0 ? 1.3 : 1.0;
}

double tile_half(double sign_scale) {
    return sign_scale * tile_width * 0.5 + 0.1;
}

double price_label_scale(size_t characters) {
    if (characters > 6) {
        return 0.54;
    }
    return characters == 6 ? 0.62 : characters == 5 ? 0.8 : 1.0;
}

TileNeed tile_need(std::string_view text) {
    TileNeed r;
    const size_t at = text.find('@');
    r.id = text.substr(0, at);
    if (at != std::string_view::npos) {
        const std::string_view number = text.substr(at + 1);
        int level = 1;
        const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), level);
        r.level = error == std::errc() && end == number.data() + number.size() ? level : 1;
    }
    return r;
}

int next_tile(std::span<const TileOffer> offers, int64_t free) {
    constexpr int64_t none = std::numeric_limits<int64_t>::max();
    free = std::max<int64_t>(0, free);
    int64_t land = none;
    for (const TileOffer &o : offers) {
        if (o.land && !o.held_back && !o.done) {
            land = std::min(land, o.remaining);
        }
    }
    const bool saving = land != none && static_cast<double>(free) >= 0.5 * static_cast<double>(land);
    int best = -1;
    for (size_t i = 0; i < offers.size(); ++i) {
        const TileOffer &o = offers[i];
        if (o.done || o.held_back || o.remaining > free) {
            continue;
        }
        const bool costly = static_cast<double>(o.price) > 0.15 * static_cast<double>(land);
        if (saving && o.level >= 1 && (costly || o.extra)) {
            continue;
        }
        if (best < 0 || o.price < offers[static_cast<size_t>(best)].price) {
            best = static_cast<int>(i);
        }
    }
    return best;
}

double level_price_factor(int level, bool producer) {
    return 1.0 + (std::max(level, 8) - 8) * (producer ? 0.015 : 0.02);
}

int hauler_extra_room(std::string_view dst, int steps) {
    if (dst == "@feed" || dst == "stall_hen" || dst == "stall_calf") {
        return 20;
    }
    return 4 * steps;
}

} // namespace tilm::rules
