#pragma once
// A card of a shop's list: a picture, some lines of text, buttons. The build list and the garden shop are made of it.

#include <functional>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class Hud;

struct OfferRow {
    static constexpr double width = 600; // of the whole card

    HBoxContainer *row = nullptr;   // buttons go here
    VBoxContainer *texts = nullptr; // lines go here, as wide as `text_width`
    double text_width = 0;

    // `others`: what the buttons and gaps beside picture and text take.
    OfferRow(VBoxContainer *content, Control *picture, double others);

    // Pays on a press and says a refusal that `pay` answers. A price out of reach is grey and wears a lock.
    Button *add_buy(Hud *hud, const String &price, bool payable, double button_width, std::function<String()> pay);
};

} // namespace tilm
