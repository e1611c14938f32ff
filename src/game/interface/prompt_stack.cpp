#include "game/interface/prompt_stack.h"

#include <algorithm>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/texture2d.hpp>
#include <godot_cpp/classes/texture_rect.hpp>
#include <godot_cpp/classes/tween.hpp>

#include "game/kit/ui.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {
namespace {

constexpr double answer_time = 20.0;
constexpr double card_width = 640.0;

} // namespace

PromptStack::PromptStack(Control *root) {
    stack = memnew(VBoxContainer);
    stack->add_theme_constant_override(TM_NAME("separation"), 10);
    stack->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    stack->set_anchors_preset(Control::PRESET_CENTER_BOTTOM);
    stack->set_h_grow_direction(Control::GROW_DIRECTION_BOTH);
    stack->set_v_grow_direction(Control::GROW_DIRECTION_BEGIN);
    root->add_child(stack);
}

void PromptStack::relayout(const Vector2 &screen) {
    stack->set_offset(SIDE_BOTTOM,
                      (screen.y > screen.x && UI::text_size() == 100 ? -120 : -28) - UI::safe_margins(screen).w);
}

bool PromptStack::has(const String &key) const {
    return std::any_of(cards.begin(), cards.end(), [&](const Card &c) { return c.key == key; });
}

void PromptStack::open(const String &key, const String &title, const String &sub, const String &yes,
                       const Callable &on_yes, const Callable &on_no, const Dictionary &options) {
    remove(key);
    Card card;
    card.key = key;
    card.on_no = on_no;
    card.panel = memnew(PanelContainer);
    card.panel->add_theme_stylebox_override(TM_NAME("panel"),
                                            UI::box(Color(0.10f, 0.13f, 0.22f, 0.95f), 30, UI::hex("ffb300"), 4, 8));
    card.panel->set_custom_minimum_size(Vector2(card_width, 0));
    card.panel->set_meta(TM_NAME("key"), key);
    VBoxContainer *column = memnew(VBoxContainer);
    column->add_theme_constant_override(TM_NAME("separation"), 8);
    card.panel->add_child(column);

    HBoxContainer *head = memnew(HBoxContainer);
    head->add_theme_constant_override(TM_NAME("separation"), 14);
    column->add_child(head);
    const Ref<Texture2D> icon = options.get("icon", Variant());
    if (icon.is_valid()) {
        TextureRect *rect = memnew(TextureRect);
        rect->set_texture(icon);
        rect->set_custom_minimum_size(Vector2(56, 56));
        rect->set_expand_mode(TextureRect::EXPAND_IGNORE_SIZE);
        rect->set_stretch_mode(TextureRect::STRETCH_KEEP_ASPECT_CENTERED);
        rect->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
        head->add_child(rect);
    }
    const double text_width = icon.is_valid() ? 510.0 : 590.0;
    VBoxContainer *texts = memnew(VBoxContainer);
    texts->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    head->add_child(texts);
    texts->add_child(UI::text_line(title, 30, UI::hex("ffd54f"), text_width));
    if (!sub.is_empty()) {
        texts->add_child(UI::text_line(sub, 22, UI::hex("eceff1"), text_width));
    }
    if (Control *body = Object::cast_to<Control>(static_cast<Object *>(options.get("body", Variant())))) {
        column->add_child(body);
    }

    HBoxContainer *buttons = memnew(HBoxContainer);
    buttons->add_theme_constant_override(TM_NAME("separation"), 12);
    buttons->set_alignment(BoxContainer::ALIGNMENT_CENTER);
    column->add_child(buttons);
    Button *accept = UI::button(yes, UI::hex("43a047"), 28, Vector2(260, 76));
    accept->connect(TM_NAME("pressed"), UI::callback(card.panel, [this, key, on_yes] { answer(key, on_yes); }));
    buttons->add_child(accept);
    const String alt = options.get("alt", "");
    if (!alt.is_empty()) {
        const Callable on_alt = options.get("on_alt", Callable());
        Button *third = UI::button(alt, UI::hex("1e88e5"), 24, Vector2(160, 76));
        third->connect(TM_NAME("pressed"), UI::callback(card.panel, [this, key, on_alt] { answer(key, on_alt); }));
        buttons->add_child(third);
    }
    Button *refuse = UI::button(options.get("no", "NO"), UI::hex("607d8b"), 26, Vector2(160, 76));
    refuse->connect(TM_NAME("pressed"), UI::callback(card.panel, [this, key, on_no] { answer(key, on_no); }));
    buttons->add_child(refuse);

    if (bool(options.get("auto", true))) {
        Control *track = memnew(Control);
        track->set_custom_minimum_size(Vector2(0, 8));
        track->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
        card.bar = memnew(Panel);
        card.bar->add_theme_stylebox_override(TM_NAME("panel"), UI::box(UI::hex("ffb300"), 4));
        card.bar->set_anchors_preset(Control::PRESET_FULL_RECT);
        card.bar->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
        track->add_child(card.bar);
        column->add_child(track);
        card.left = answer_time;
    }
    stack->add_child(card.panel);
    if (bool(options.get("front", false))) {
        stack->move_child(card.panel, 0);
    }
    card.panel->set_modulate(Color(1, 1, 1, 0));
    card.panel->set_pivot_offset(Vector2(320, 120));
    card.panel->set_scale(Vector2(0.8f, 0.8f));
    const Ref<Tween> tween = card.panel->create_tween();
    tween->set_parallel(true);
    tween->tween_property(card.panel, NodePath("modulate:a"), 1.0, 0.15);
    tween->tween_property(card.panel, NodePath("scale"), Vector2(1, 1), 0.2)
        ->set_trans(Tween::TRANS_BACK)
        ->set_ease(Tween::EASE_OUT);
    Sfx::sound(TM_NAME("ui_open"));
    cards.push_back(card);
}

void PromptStack::answer(const String &key, const Callable &then) {
    // Copies: the caller's closure dies with the card that is removed here.
    const String answered = key;
    const Callable next = then;
    remove(answered);
    if (next.is_valid()) {
        next.call();
    }
}

void PromptStack::remove(const String &key) {
    const auto it = std::find_if(cards.begin(), cards.end(), [&](const Card &c) { return c.key == key; });
    if (it == cards.end()) {
        return;
    }
    PanelContainer *panel = it->panel;
    cards.erase(it);
    panel->set_visible(false);
    panel->queue_free();
}

void PromptStack::step(double delta) {
    for (size_t i = 0; i < cards.size(); ++i) {
        Card &card = cards[i];
        if (card.bar == nullptr) {
            continue;
        }
        card.left -= delta;
        card.bar->set_anchor(SIDE_RIGHT, std::clamp(card.left / answer_time, 0.0, 1.0), true, false);
        if (card.left <= 0.0) {
            answer(card.key, card.on_no); // changes the list: the rest is stepped next frame
            return;
        }
    }
}

} // namespace tilm
