#pragma once
// Answers the list of buildings from the price tiles that stand.

#include <godot_cpp/variant/dictionary.hpp>

#include "game/ports/offers.h"

namespace tilm {

class World;

// The good that a plan entry makes, sells, grows or carries; "" for none or several.
String good_of_entry(const Dictionary &entry);

class OfferDesk : public Offers {
public:
    explicit OfferDesk(World &world);
    ~OfferDesk() override;

    std::vector<Offer> list() const override;
    String buy(const String &id) override;
    String show(const String &id) override;
    // The entry that the player asked the way to, "" for none or when it is no longer for sale.
    const String &wanted();

private:
    World &world;
    String wanted_id;
};

} // namespace tilm
