#include "game/interface/money_pops.h"

#include <godot_cpp/classes/callback_tweener.hpp>
#include <godot_cpp/classes/property_tweener.hpp>

#include "game/kit/ui.h"
#include "names.h"

namespace tilm {

MoneyPops::MoneyPops(Control *root) {
    for (Label *&label : labels) {
        label = UI::label("", 38, UI::hex("b9f6ca"));
        label->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
        label->set_layout_direction(Control::LAYOUT_DIRECTION_LTR);
        label->set_visible(false);
        root->add_child(label);
    }
}

void MoneyPops::fly(int64_t amount, const Vector2 &from, const Vector2 &to, const Callable &on_landed) {
    ++count;
    const size_t slot = next;
    next = (next + 1) % most;
    Label *label = labels[slot];
    if (tweens[slot].is_valid()) {
        tweens[slot]->kill(); // the oldest gives way
    }
    const bool gain = amount >= 0;
    label->set_text((gain ? "+" : "") + UI::money(amount));
    label->add_theme_color_override(TM_NAME("font_color"), UI::hex(gain ? "b9f6ca" : "ff8a80"));
    label->set_position(from - Vector2(60, 30));
    label->set_pivot_offset(Vector2(60, 24));
    label->set_scale(Vector2(0.6f, 0.6f));
    label->set_modulate(Color(1, 1, 1, 1));
    label->set_visible(true);
    const Ref<Tween> tween = label->create_tween();
    tweens[slot] = tween;
    tween->tween_property(label, NodePath("scale"), Vector2(1.1f, 1.1f), 0.16)
        ->set_trans(Tween::TRANS_BACK)
        ->set_ease(Tween::EASE_OUT);
    tween->parallel()->tween_property(label, NodePath("position"), from - Vector2(60, 100), 0.3);
    tween->tween_property(label, NodePath("position"), to - Vector2(60, 24), 0.4)
        ->set_trans(Tween::TRANS_CUBIC)
        ->set_ease(Tween::EASE_IN);
    tween->parallel()->tween_property(label, NodePath("scale"), Vector2(0.6f, 0.6f), 0.4);
    tween->parallel()->tween_property(label, NodePath("modulate:a"), 0.3, 0.4);
    tween->tween_callback(UI::callback(label, [label, on_landed] {
        label->set_visible(false);
        if (on_landed.is_valid()) {
            on_landed.call();
        }
    }));
}

} // namespace tilm
