#pragma once
// The shop of garden decorations: what each adds to the farm's charm, how many stand, and what the next one costs.

#include <cstdint>

#include <godot_cpp/classes/v_box_container.hpp>

namespace tilm {
using namespace godot;

class Hud;

void fill_decor_panel(Hud *hud, VBoxContainer *content);
// Changes whenever the panel would look different.
uint64_t decor_panel_state();

} // namespace tilm
