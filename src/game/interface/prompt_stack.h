#pragma once
// Cards that ask the player something while the farm goes on: one per key, stacked at the bottom of the screen.

#include <functional>
#include <vector>

#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/panel.hpp>
#include <godot_cpp/classes/panel_container.hpp>
#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/variant/callable.hpp>
#include <godot_cpp/variant/dictionary.hpp>

namespace tilm {
using namespace godot;

class PromptStack {
public:
    explicit PromptStack(Control *root);

    // options: icon (Texture2D), body (Control), alt (text), on_alt (Callable), no (text), auto (bool), front (bool)
    void open(const String &key, const String &title, const String &sub, const String &yes, const Callable &on_yes,
              const Callable &on_no, const Dictionary &options);
    void remove(const String &key);
    bool has(const String &key) const;
    int count() const { return static_cast<int>(cards.size()); }
    void step(double delta);
    void relayout(const Vector2 &screen);
    VBoxContainer *box() const { return stack; }

private:
    struct Card {
        String key;
        PanelContainer *panel = nullptr;
        Panel *bar = nullptr; // the running-out bar, null without
        double left = 0.0;
        Callable on_no;
    };
    void answer(const String &key, const Callable &then);

    VBoxContainer *stack = nullptr;
    std::vector<Card> cards;
};

} // namespace tilm
