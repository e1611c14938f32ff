#pragma once
// The MENU button and the side buttons that it unfolds. Only panels whose system exists are offered.

#include <array>
#include <functional>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/variant/callable.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class Hud;

class SideDeck {
public:
    // The round button goes into `side`, below the buttons that are there.
    SideDeck(Hud *hud, VBoxContainer *side);

    bool offer(const String &name, const Callable &open); // false: no such side button
    bool press(const String &name);                       // as a finger does; false where nothing is offered
    void toggle();
    void close();
    bool is_open() const { return open; }
    int offered() const;

    std::function<void(bool)> on_toggled; // open or not

private:
    struct Slot {
        Button *button = nullptr;
        Callable open;
    };
    void show_buttons(bool on);

    static constexpr int slot_count = 5;
    std::array<Slot, slot_count> slots;
    Button *round = nullptr;
    VBoxContainer *list = nullptr;
    bool open = false;
};

} // namespace tilm
