#pragma once
// What the bot may do next, each with its value in dollars per second of walking and handling; the best is chosen.

#include <cstdint>
#include <vector>

#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class World;

// One errand. `target` is the instance id of the cash tile, price tile, zone or field.
struct BotErrand {
    enum Kind { NONE, COLLECT, BUY, PICK, CUT, GIVE };
    Kind kind = NONE;
    uint64_t target = 0;
    String good;     // PICK, CUT and GIVE
    int until = 0;   // PICK and CUT: so many of the good on the back are enough
    Vector3 pos;     // where to stand
    double rate = 0; // dollars a second
    String words;
};

// Errands that did not work out, for a while.
struct BotBan {
    uint64_t target;
    double seconds;
};

// The best errand now; kind NONE when nothing is worth a step.
BotErrand choose_errand(World &world, const std::vector<BotBan> &bans);
// The errand of buying what the farm's guide points at; NONE without one.
BotErrand buying_errand(World &world, const std::vector<BotBan> &bans);

} // namespace tilm
