#include "game/interface/milestone_panels.h"

#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/texture_rect.hpp>

#include "game/art/icons.h"
#include "game/kit/ui.h"
#include "names.h"
#include "rules/offline.h"

namespace tilm {
namespace {

const Color ink = Color(0.16f, 0.20f, 0.25f);
constexpr double text_width = 560;

void picture(VBoxContainer *content, const char *key) {
    TextureRect *rect = Icons::rect(key, UI::text_size() > 100 ? 80 : 120);
    rect->set_h_size_flags(Control::SIZE_SHRINK_CENTER);
    content->add_child(rect);
}

void line(VBoxContainer *content, const String &text, int size, const Color &color = ink) {
    Label *label = UI::label(text, size, color);
    if (color == ink) {
        label->add_theme_constant_override(TM_NAME("outline_size"), 0);
    }
    label->set_autowrap_mode(TextServer::AUTOWRAP_WORD_SMART);
    label->set_custom_minimum_size(Vector2(text_width, 0));
    label->set_h_size_flags(Control::SIZE_SHRINK_CENTER);
    if (!text.contains(" ")) { // a sum has no place to break
        UI::fit_width(label, text_width);
    }
    content->add_child(label);
}

} // namespace

void fill_offline_panel(VBoxContainer *content, int64_t seconds, int64_t paid) {
    picture(content, "money_bill");
    line(content, vformat("YOU WERE AWAY %s", String(rules::absence_text(seconds).c_str())), 32);
    line(content, "YOUR WORKERS EARNED", 32);
    line(content, UI::money(paid), 76, UI::hex("c5f542"));
    if (seconds >= rules::absence_most) {
        line(content, "(UP TO 8 HOURS)", 26);
    }
}

void fill_victory_panel(VBoxContainer *content, int64_t level, int64_t money) {
    picture(content, "icon_final");
    line(content, "EVERY LAND IS YOURS: YOU ARE THE GREATEST FARMER OF ALL!", 34);
    line(content, vformat("LEVEL %d", level), 40, UI::hex("ffca28"));
    line(content, UI::money(money), 64, UI::hex("c5f542"));
}

} // namespace tilm
