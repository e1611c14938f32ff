#pragma once
// Walkers out of sight: stepped a few times a second within a time budget, whatever their number.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tilm {

class WalkerCore;

class FarList {
public:
    // The walker must have stamped itself; it leaves the list when it wakes up or dies.
    static void join(WalkerCore *walker);
    // Once a frame. Every member is visited about each 0.3 seconds, within 2.5 ms a frame.
    static void tick(double dt);

    static double clock() { return list_clock; }
    static int size() { return static_cast<int>(members.size()); }
    static int last_visits() { return visits_done; } // of the last tick

    // Visits that a frame of `dt` seconds owes to `n` members.
    static int visits_for(double dt, int n);

private:
    struct Member {
        uint64_t id;
        WalkerCore *walker;
    };
    static std::vector<Member> members;
    static std::size_t cursor;
    static double list_clock;
    static int visits_done;
};

} // namespace tilm
