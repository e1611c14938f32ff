#include "game/interface/build_panel.h"

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/panel_container.hpp>
#include <godot_cpp/classes/texture_rect.hpp>

#include "game/art/icons.h"
#include "game/interface/hud.h"
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

void told(Hud *hud, const String &refusal) {
    if (!refusal.is_empty()) {
        hud->toast(refusal, 3);
    }
}

void add_row(Hud *hud, VBoxContainer *content, const Offer &offer) {
    PanelContainer *card = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style = UI::box(UI::hex("ffecb3"), 24, UI::hex("a1887f"), 2);
    style->set_content_margin_all(12);
    card->add_theme_stylebox_override(TM_NAME("panel"), style);
    content->add_child(card);
    HBoxContainer *row = memnew(HBoxContainer);
    row->add_theme_constant_override(TM_NAME("separation"), 10);
    card->add_child(row);
    row->add_child(picture_of(offer));
    const double buy_width = 130.0 + 0.4 * (UI::text_size() - 100);
    const double text_width = 600.0 - 24.0 - picture_side - 76.0 - buy_width - 50.0;
    VBoxContainer *texts = memnew(VBoxContainer);
    texts->add_theme_constant_override(TM_NAME("separation"), 0);
    texts->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    texts->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    row->add_child(texts);
    texts->add_child(UI::text_line(offer.title, 26, ink, text_width));
    texts->add_child(UI::text_line(offer.land, 20, soft_ink, text_width));

    const String id = offer.id;
    Button *show = UI::button("", UI::hex("1e88e5"), 30, Vector2(76, 76));
    UI::set_icon(show, "pin");
    show->set_tooltip_text("SHOW");
    show->set_name("Show");
    show->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    show->connect(TM_NAME("pressed"), UI::callback(hud, [hud, id] {
                      const String refusal = Offers::current() != nullptr ? Offers::current()->show(id) : String();
                      hud->close_panel();
                      told(hud, refusal);
                  }));
    row->add_child(show);
    Button *buy = UI::button(UI::money_short(offer.price), UI::hex(offer.payable ? "2e7d32" : "607d8b"), 26,
                             Vector2(static_cast<float>(buy_width), 76));
    if (!offer.payable) {
        UI::set_icon(buy, "lock"); // not told by colour alone
    }
    UI::fit_width(buy, buy_width - (offer.payable ? 36.0 : 82.0));
    buy->set_name("Buy");
    buy->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    buy->connect(TM_NAME("pressed"), UI::callback(hud, [hud, id] {
                     if (Offers *offers = Offers::current()) {
                         told(hud, offers->buy(id));
                     }
                     hud->refresh_panel();
                 }));
    row->add_child(buy);
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
