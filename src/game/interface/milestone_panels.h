#pragma once
// The content of the panels that mark a moment: the pay for an absence, and the end of the game.

#include <cstdint>

#include <godot_cpp/classes/v_box_container.hpp>

namespace tilm {
using namespace godot;

void fill_offline_panel(VBoxContainer *content, int64_t seconds, int64_t paid);
void fill_victory_panel(VBoxContainer *content, int64_t level, int64_t money);

} // namespace tilm
