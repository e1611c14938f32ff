#include "game/interface/offer_row.h"

#include <utility>

#include <godot_cpp/classes/panel_container.hpp>

#include "game/interface/hud.h"
#include "game/kit/ui.h"
#include "names.h"

namespace tilm {

OfferRow::OfferRow(VBoxContainer *content, Control *picture, double others) {
    constexpr float margin = 12;
    PanelContainer *card = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style = UI::box(UI::hex("ffecb3"), 24, UI::hex("a1887f"), 2);
    style->set_content_margin_all(margin);
    card->add_theme_stylebox_override(TM_NAME("panel"), style);
    content->add_child(card);
    row = memnew(HBoxContainer);
    row->add_theme_constant_override(TM_NAME("separation"), 10);
    card->add_child(row);
    row->add_child(picture);
    text_width = width - 2 * margin - picture->get_custom_minimum_size().x - others;
    texts = memnew(VBoxContainer);
    texts->add_theme_constant_override(TM_NAME("separation"), 0);
    texts->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    texts->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    row->add_child(texts);
}

Button *OfferRow::add_buy(Hud *hud, const String &price, bool payable, double button_width,
                          std::function<String()> pay) {
    Button *buy =
        UI::button(price, UI::hex(payable ? "2e7d32" : "607d8b"), 26, Vector2(static_cast<float>(button_width), 76));
    if (!payable) {
        UI::set_icon(buy, "lock"); // not told by colour alone
    }
    UI::fit_width(buy, button_width - (payable ? 36.0 : 82.0));
    buy->set_name("Buy");
    buy->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    buy->connect(TM_NAME("pressed"), UI::callback(hud, [hud, pay = std::move(pay)] {
                     const String refusal = pay();
                     if (!refusal.is_empty()) {
                         hud->toast(refusal, 3);
                     }
                     hud->refresh_panel();
                 }));
    row->add_child(buy);
    return buy;
}

} // namespace tilm
