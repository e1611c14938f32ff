#pragma once
// The garden decorations that a farm sells, for their panel. The shell implements it; null without a farm.

#include <cstdint>
#include <vector>

#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

struct DecorOffer {
    String type;
    String name;
    int charm = 0;     // of one
    int64_t price = 0; // of the next one
    int placed = 0;
    bool payable = false; // nothing but room may stand in the way
};

class GardenShop {
public:
    virtual ~GardenShop() = default;

    static GardenShop *current() { return slot(); }
    static void set_current(GardenShop *shop) { slot() = shop; }

    virtual std::vector<DecorOffer> list() const = 0; // in the table's order; empty on a visit
    virtual int charm() const = 0;                    // of all that stands, 0..50
    virtual String buy(const String &type) = 0;       // "" or the refusal

private:
    static GardenShop *&slot() {
        static GardenShop *shop = nullptr;
        return shop;
    }
};

} // namespace tilm
