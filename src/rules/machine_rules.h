#pragma once
// What a machine makes and takes in: time of a batch, room of its piles, the words of its need label, its cook.

#include <span>
#include <string>
#include <string_view>

#include "rules/machine_perks.h"

namespace tilm::rules {

inline constexpr int machine_output_room = 40;
inline constexpr int machine_batches = 8;        // at most in one step
inline constexpr double machine_far_step = 0.25; // seconds between steps off view
inline constexpr double cook_patience = 45.0;    // seconds until goods owed to a cook come by themselves

// Seconds of one batch: 1.6 s, at each speed step 0.62 of it, from level 10 on slower gains. `boost` divides it.
double machine_interval(int level, double boost);

// Goods made and owed at which a machine stops; its output pile stops at machine_output_room before.
constexpr int machine_cap(int level) {
    return machine_output_room * (level / 4 + 1);
}

// Units of one flavour in the output at which the machine turns to the others.
constexpr int flavor_cap(int flavors) {
    return flavors > 0 ? machine_output_room / flavors : 0;
}

// Inputs that the pile is laid out for.
constexpr int input_cap(int level) {
    return cap_steps(level) * 10 + 10;
}

// From this input_cap() on the input pile is a column wider.
inline constexpr int wide_input_cap = 21;

// How far each of `kinds` inputs is filled up by those who bring it.
int give_limit(int level, int kinds);

// "SPEED" or "INPUT": what the level after `level` brings.
constexpr std::string_view next_perk(int level) {
    return next_perk_is_speed(level) ? "SPEED" : "INPUT";
}

// The label's text for the kinds that are short, "" for none. With flavours two kinds are alternatives.
std::string need_text(std::span<const std::string> missing, bool flavors);

// Class of the cook who hands out this product, "" for none.
std::string_view cook_class(std::string_view product);

} // namespace tilm::rules
