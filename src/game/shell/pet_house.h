#pragma once
// The farm's pets: which are owned, which are sent home, the horse's level and cart, and the nodes that walk about.

#include <cstdint>
#include <vector>

#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class Pet;
class World;

class PetHouse {
public:
    explicit PetHouse(World &farm) : world(farm) {}

    // Keys `pets`, `pets_home`, `horse_lv` and `cart_lv` of a farm document. Pets that are not known are kept, not
    // shown.
    void load(const Dictionary &doc);
    void store(Dictionary &doc) const;
    // Each pet stands by the player.
    void settle();

    void set_owned(const Array &kinds);
    void set_home(const Array &kinds);
    void set_horse_lv(int64_t lv);
    void set_cart_lv(int64_t lv);
    Array get_owned() const { return owned.duplicate(); }
    Array get_home() const { return home.duplicate(); }
    int64_t get_horse_lv() const { return horse_lv; }
    int64_t get_cart_lv() const { return cart_lv; }
    bool is_home(const String &kind) const { return home.has(kind); }
    Pet *find(const String &kind) const; // null while it does not walk about

private:
    static Array names_of(const Array &from);
    void spawn_missing();
    void dress_horse();

    World &world;
    Array owned, home; // Strings, each once
    int64_t horse_lv = 1;
    int64_t cart_lv = 0;
    std::vector<LiveRef<Pet>> pets;
};

} // namespace tilm
