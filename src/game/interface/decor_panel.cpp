#include "game/interface/decor_panel.h"

#include <string>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/panel_container.hpp>

#include "game/art/icons.h"
#include "game/interface/hud.h"
#include "game/kit/ui.h"
#include "game/ports/garden_shop.h"
#include "names.h"
#include "rules/garden.h"

namespace tilm {
namespace {

const Color ink = Color(0.16f, 0.20f, 0.25f);
const Color soft_ink = Color(0.36f, 0.25f, 0.22f);
constexpr double list_width = 600;

void add_row(Hud *hud, VBoxContainer *content, const DecorOffer &offer) {
    PanelContainer *card = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style = UI::box(UI::hex("ffecb3"), 24, UI::hex("a1887f"), 2);
    style->set_content_margin_all(12);
    card->add_theme_stylebox_override(TM_NAME("panel"), style);
    content->add_child(card);
    HBoxContainer *row = memnew(HBoxContainer);
    row->add_theme_constant_override(TM_NAME("separation"), 12);
    card->add_child(row);
    row->add_child(Icons::rect(decor_picture_key(offer.type), 84));
    const double buy_width = 150.0 + 0.4 * (UI::text_size() - 100);
    const double text_width = list_width - 24.0 - 84.0 - buy_width - 40.0;
    VBoxContainer *texts = memnew(VBoxContainer);
    texts->add_theme_constant_override(TM_NAME("separation"), 0);
    texts->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    texts->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    row->add_child(texts);
    texts->add_child(UI::text_line(offer.name, 26, ink, text_width));
    texts->add_child(UI::text_line(vformat("+%d CHARM", offer.charm), 22, UI::hex("00695c"), text_width));
    if (offer.placed > 0) {
        texts->add_child(UI::text_line(vformat("YOU BUILT %d", offer.placed), 20, soft_ink, text_width));
    }

    const String price = offer.price > 0 ? UI::money_short(offer.price) : String("FREE");
    Button *buy =
        UI::button(price, UI::hex(offer.payable ? "2e7d32" : "607d8b"), 26, Vector2(static_cast<float>(buy_width), 76));
    if (!offer.payable) {
        UI::set_icon(buy, "lock"); // not told by colour alone
    }
    UI::fit_width(buy, buy_width - (offer.payable ? 36.0 : 82.0));
    buy->set_name("Buy");
    buy->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    const String type = offer.type;
    buy->connect(TM_NAME("pressed"), UI::callback(hud, [hud, type] {
                     GardenShop *shop = GardenShop::current();
                     const String refusal = shop != nullptr ? shop->buy(type) : String();
                     if (!refusal.is_empty()) {
                         hud->toast(refusal, 3);
                     }
                     hud->refresh_panel();
                 }));
    row->add_child(buy);
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
        content->add_child(UI::text_line("NOTHING IS FOR SALE RIGHT NOW.", 28, ink, list_width - 20));
        return;
    }
    // One point is a hundredth of patience and 0.4 hundredths of the prices; what is not whole is not promised.
    const int charm = shop->charm();
    content->add_child(UI::text_line(vformat("CHARM %d/%d:  +%d%% CUSTOMER PATIENCE,  +%d%% PRICES", charm,
                                             rules::CHARM_LIMIT, charm, charm * 4 / 10),
                                     26, ink, list_width - 20));
    content->add_child(UI::text_line("BUILT ON THE CUSTOMERS' LAWN NEAR YOU", 22, soft_ink, list_width - 20));
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
