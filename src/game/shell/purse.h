#pragma once
// The farm's money and its display on the player's back. World's money verbs are these.

#include <cstdint>

#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class Item;
class World;

class Purse {
public:
    explicit Purse(World &world) : world(world) {}

    void pay(int64_t amount, const Vector3 &to);
    void gain(int64_t amount, const Vector3 &from);
    bool spend_quiet(int64_t amount);
    // A bill from a cash tile becomes money; the bill is shown flying to the player's back and freed.
    void collect(Item *bill);
    // Shows the sum without a source.
    void show();

    // The sum is set from outside the verbs: by a loaded farm, an option, a test.
    void rebase();
    // What the farm holds beyond what the verbs account for; 0 unless money was made or lost outside of them.
    int64_t unaccounted() const;

    // Session totals, not saved.
    int64_t sales = 0;
    int64_t missions = 0;
    int64_t other = 0;
    double cash_multiplier = 1.0;

private:
    World &world;
    int64_t accounted = 0;

    void change(int64_t by);

    void display(Item *from, const Vector3 *to);
    void note_tier(int before);
};

} // namespace tilm
