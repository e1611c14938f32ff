#pragma once
// The shop of garden decorations: what each adds to the farm's charm, how many stand, and what the next one costs.

#include <cstdint>

#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class Hud;

// What `Icons` shows for a type of decoration.
String decor_picture_key(const String &type);
void fill_decor_panel(Hud *hud, VBoxContainer *content);
// Changes whenever the panel would look different.
uint64_t decor_panel_state();

} // namespace tilm
