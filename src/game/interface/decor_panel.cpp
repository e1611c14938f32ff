#include "game/interface/decor_panel.h"

#include <string>

#include <godot_cpp/classes/texture_rect.hpp>

#include "game/art/icons.h"
#include "game/interface/hud.h"
#include "game/interface/offer_row.h"
#include "game/kit/ui.h"
#include "game/ports/garden_shop.h"
#include "rules/garden.h"

namespace tilm {
namespace {

const Color ink = Color(0.16f, 0.20f, 0.25f);
const Color soft_ink = Color(0.36f, 0.25f, 0.22f);

void add_row(Hud *hud, VBoxContainer *content, const DecorOffer &offer) {
    const double buy_width = 150.0 + 0.4 * (UI::text_size() - 100);
    OfferRow card(content, Icons::rect(decor_picture_key(offer.type), 84), buy_width + 40);
    card.texts->add_child(UI::text_line(offer.name, 26, ink, card.text_width));
    card.texts->add_child(UI::text_line(vformat("+%d CHARM", offer.charm), 22, UI::hex("00695c"), card.text_width));
    if (offer.placed > 0) {
        card.texts->add_child(UI::text_line(vformat("YOU BUILT %d", offer.placed), 20, soft_ink, card.text_width));
    }
    const String type = offer.type;
    card.add_buy(hud, offer.price > 0 ? UI::money_short(offer.price) : String("FREE"), offer.payable, buy_width,
                 [type] { return GardenShop::current() != nullptr ? GardenShop::current()->buy(type) : String(); });
}

} // namespace

String decor_picture_key(const String &type) {
    const String own = "decor_" + type; // a statue with its pedestal
    const rules::DecorRow *row = rules::find_decor(type.utf8().get_data());
    return row == nullptr || Icons::knows(own) ? own : String(std::string(row->key).c_str());
}

void fill_decor_panel(Hud *hud, VBoxContainer *content) {
    const GardenShop *shop = GardenShop::current();
    const std::vector<DecorOffer> list = shop != nullptr ? shop->list() : std::vector<DecorOffer>();
    if (list.empty()) {
        content->add_child(UI::text_line("NOTHING IS FOR SALE RIGHT NOW.", 28, ink, OfferRow::width - 20));
        return;
    }
    // One point is a hundredth of patience and 0.4 hundredths of the prices; what is not whole is not promised.
    const int charm = shop->charm();
    content->add_child(UI::text_line(vformat("CHARM %d/%d:  +%d%% CUSTOMER PATIENCE,  +%d%% PRICES", charm,
                                             rules::CHARM_LIMIT, charm, charm * 4 / 10),
                                     26, ink, OfferRow::width - 20));
    content->add_child(UI::text_line("BUILT ON THE CUSTOMERS' LAWN NEAR YOU", 22, soft_ink, OfferRow::width - 20));
    for (const DecorOffer &offer : list) {
        add_row(hud, content, offer);
    }
}

uint64_t decor_panel_state() {
    const GardenShop *shop = GardenShop::current();
    uint64_t state = 1469598103934665603u;
    if (shop == nullptr) {
        return state;
    }
    for (const DecorOffer &offer : shop->list()) {
        const uint64_t row = (static_cast<uint64_t>(offer.price) << 20) ^ (static_cast<uint64_t>(offer.placed) << 1) ^
                             (offer.payable ? 1u : 0u);
        state = (state ^ row) * 1099511628211u;
    }
    return state;
}

} // namespace tilm
