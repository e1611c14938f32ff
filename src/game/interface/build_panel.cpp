#include "game/interface/build_panel.h"

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/panel_container.hpp>
#include <godot_cpp/classes/texture_rect.hpp>

#include "game/art/icons.h"
#include "game/interface/hud.h"
#include "game/interface/offer_row.h"
#include "game/kit/ui.h"
#include "game/ports/offers.h"
#include "names.h"

namespace tilm {
namespace {

const Color ink = Color(0.16f, 0.20f, 0.25f);
const Color soft_ink = Color(0.36f, 0.25f, 0.22f);

constexpr float picture_side = 76;
constexpr float badge_side = 40;

// What it looks like, with the good that it is about in its corner where the picture does not show that already.
Control *picture_of(const Offer &offer) {
    TextureRect *picture = Icons::rect(Icons::thing_key(offer.kind, offer.product), picture_side);
    const bool told = offer.kind == String("producer") || offer.kind == String("restaurant");
    if (offer.good.is_empty() || told) {
        return picture;
    }
    PanelContainer *badge = UI::portrait(badge_side, UI::hex("fffaf0"), Icons::good(offer.good));
    const Ref<StyleBoxFlat> face = UI::box(UI::hex("fffaf0"), badge_side / 2, UI::hex("a1887f"), 2);
    face->set_content_margin_all(3);
    badge->add_theme_stylebox_override(TM_NAME("panel"), face);
    badge->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    badge->set_name("Good");
    badge->set_position(Vector2(picture_side - badge_side + 4, picture_side - badge_side + 4));
    badge->set_size(Vector2(badge_side, badge_side));
    picture->add_child(badge);
    return picture;
}

void add_row(Hud *hud, VBoxContainer *content, const Offer &offer) {
    constexpr double show_side = 76;
    const double buy_width = 130.0 + 0.4 * (UI::text_size() - 100);
    OfferRow card(content, picture_of(offer), show_side + buy_width + 50);
    card.texts->add_child(UI::text_line(offer.title, 26, ink, card.text_width));
    card.texts->add_child(UI::text_line(offer.land, 20, soft_ink, card.text_width));

    const String id = offer.id;
    Button *show = UI::button("", UI::hex("1e88e5"), 30, Vector2(show_side, show_side));
    UI::set_icon(show, "pin");
    show->set_tooltip_text("SHOW");
    show->set_name("Show");
    show->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    show->connect(TM_NAME("pressed"), UI::callback(hud, [hud, id] {
                      const String refusal = Offers::current() != nullptr ? Offers::current()->show(id) : String();
                      hud->close_panel();
                      if (!refusal.is_empty()) {
                          hud->toast(refusal, 3);
                      }
                  }));
    card.row->add_child(show);
    card.add_buy(hud, UI::money_short(offer.price), offer.payable, buy_width,
                 [id] { return Offers::current() != nullptr ? Offers::current()->buy(id) : String(); });
}

} // namespace

void fill_build_panel(Hud *hud, VBoxContainer *content) {
    const Offers *offers = Offers::current();
    const std::vector<Offer> list = offers != nullptr ? offers->list() : std::vector<Offer>();
    if (list.empty()) {
        content->add_child(UI::text_line("NOTHING IS FOR SALE RIGHT NOW.", 28, ink, 580));
    }
    for (const Offer &offer : list) {
        add_row(hud, content, offer);
    }
}

uint64_t build_panel_state() {
    uint64_t state = 1469598103934665603u;
    const Offers *offers = Offers::current();
    if (offers == nullptr) {
        return state;
    }
    for (const Offer &offer : offers->list()) {
        const uint64_t row = offer.id.hash() ^ (static_cast<uint64_t>(offer.price) << 20) ^ (offer.payable ? 7u : 0u);
        state = (state ^ row) * 1099511628211u;
    }
    return state;
}

} // namespace tilm
