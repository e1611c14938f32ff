#pragma once
// What the farm has for sale now, for the list of buildings. The shell implements it; null without a farm.

#include <cstdint>
#include <vector>

#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

struct Offer {
    String id;
    String title; // may hold a line feed
    String kind;
    String product;    // of what is built, "" for none
    String land;       // title of the region that it stands in
    int64_t price = 0; // what is left to pay
    int64_t steps = 0; // whole metres from the player
    bool payable = false;
    String good; // the one good that it is about, "" for none or several
};

class Offers {
public:
    virtual ~Offers() = default;

    static Offers *current() { return slot(); }
    static void set_current(Offers *offers) { slot() = offers; }

    virtual std::vector<Offer> list() const = 0; // cheapest first
    virtual String buy(const String &id) = 0;    // "" or the refusal
    virtual String show(const String &id) = 0;   // looks there and lets the guide point at it; "" or the refusal

private:
    static Offers *&slot() {
        static Offers *offers = nullptr;
        return offers;
    }
};

} // namespace tilm
