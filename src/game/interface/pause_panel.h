#pragma once
// Content of the pause panel: resume, switches, volumes, language, help, save and the way back to the title.

#include <functional>

#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class Hud;

void fill_pause_panel(Hud *hud, VBoxContainer *content);
void fill_how_to_panel(VBoxContainer *content);

// Kept and written at once.
void store_setting(const char *key, const Variant &value);
Variant stored_setting(const char *key, const Variant &fallback);

// A ten-step bar for a value 0 .. 1, 48 units high, changed by press and drag.
Control *volume_bar(double value, double width, std::function<void(double)> on_change);

} // namespace tilm
