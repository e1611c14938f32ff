#include "game/interface/side_deck.h"

#include <algorithm>

#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/tween.hpp>

#include "game/interface/hud.h"
#include "game/kit/ui.h"
#include "names.h"

namespace tilm {
namespace {

struct Row {
    const char *name;
    const char *color;
    const char *icon;
};

constexpr std::array<Row, 5> rows = {{{"FRIENDS", "3949ab", "friends"},
                                      {"BOOST", "f4511e", "boost"},
                                      {"STYLE", "d81b60", "style"},
                                      {"DECOR", "00897b", "decor"},
                                      {"GOALS", "fb8c00", "goals"}}};

} // namespace

SideDeck::SideDeck(Hud *hud, VBoxContainer *side) {
    round = UI::button("", UI::hex("6d4c41"), 40, Vector2(92, 92));
    UI::set_icon(round, "menu");
    round->set_tooltip_text("MENU");
    round->set_visible(false);
    round->set_h_size_flags(Control::SIZE_SHRINK_END);
    round->connect(TM_NAME("pressed"), Callable(hud, TM_NAME("toggle_deck")));
    side->add_child(round);
    list = memnew(VBoxContainer);
    list->add_theme_constant_override(TM_NAME("separation"), 10);
    list->set_visible(false);
    list->set_h_size_flags(Control::SIZE_SHRINK_END);
    side->add_child(list);
    for (size_t i = 0; i < rows.size(); ++i) {
        Button *b = UI::button(rows[i].name, UI::hex(rows[i].color), 26, Vector2(210, 78));
        UI::set_icon(b, rows[i].icon);
        b->set_visible(false);
        b->connect(TM_NAME("pressed"), UI::callback(b, [this, i] {
                       close();
                       if (slots[i].open.is_valid()) {
                           slots[i].open.call();
                       }
                   }));
        list->add_child(b);
        slots[i].button = b;
    }
}

bool SideDeck::offer(const String &name, const Callable &call) {
    for (size_t i = 0; i < rows.size(); ++i) {
        if (name == String(rows[i].name)) {
            slots[i].open = call;
            slots[i].button->set_visible(call.is_valid());
            round->set_visible(offered() > 0);
            return true;
        }
    }
    return false;
}

bool SideDeck::press(const String &name) {
    for (size_t i = 0; i < rows.size(); ++i) {
        if (name == String(rows[i].name) && slots[i].open.is_valid()) {
            slots[i].button->emit_signal(TM_NAME("pressed"));
            return true;
        }
    }
    return false;
}

int SideDeck::offered() const {
    return static_cast<int>(std::count_if(slots.begin(), slots.end(), [](const Slot &s) { return s.open.is_valid(); }));
}

void SideDeck::toggle() {
    show_buttons(!open);
}

void SideDeck::close() {
    if (open) {
        show_buttons(false);
    }
}

void SideDeck::show_buttons(bool on) {
    open = on;
    if (on_toggled) {
        on_toggled(on);
    }
    UI::set_icon(round, on ? "close" : "menu");
    const Ref<Tween> tween = list->create_tween();
    tween->set_parallel(true);
    if (on) {
        list->set_visible(true);
        list->set_modulate(Color(1, 1, 1, 0));
    }
    tween->tween_property(list, NodePath("modulate:a"), on ? 1.0 : 0.0, 0.16);
    int nth = 0;
    for (const Slot &slot : slots) {
        if (!slot.open.is_valid()) {
            continue;
        }
        if (on) {
            slot.button->set_pivot_offset(Vector2(210, 39));
            slot.button->set_scale(Vector2(0.5f, 0.9f));
        }
        tween->tween_property(slot.button, NodePath("scale"), on ? Vector2(1, 1) : Vector2(0.5f, 0.9f), 0.18)
            ->set_delay(on ? 0.03 * nth : 0.0);
        ++nth;
    }
    if (!on) {
        tween->chain()->tween_callback(UI::callback(list, [this] { list->set_visible(open); }));
    }
}

} // namespace tilm
