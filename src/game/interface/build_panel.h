#pragma once
// The list of what can be bought now: picture, name, place and price, with a way there and a way to pay at once.

#include <cstdint>

#include <godot_cpp/classes/v_box_container.hpp>

namespace tilm {
using namespace godot;

class Hud;

void fill_build_panel(Hud *hud, VBoxContainer *content);
// Changes whenever the list would look different.
uint64_t build_panel_state();

} // namespace tilm
