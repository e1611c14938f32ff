#pragma once
// What the levels of a machine bring: speed at every even level, room for inputs at every odd one.

namespace tilm::rules {

constexpr int speed_steps(int level) {
    return level / 2;
}

constexpr int cap_steps(int level) {
    return level >= 1 ? (level - 1) / 2 : 0;
}

// Whether the level after `level` brings speed rather than room.
constexpr bool next_perk_is_speed(int level) {
    return level % 2 != 0;
}

} // namespace tilm::rules
