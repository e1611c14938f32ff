#pragma once
// Plan entries as the dictionaries that the rest of the game reads.

#include <string_view>

#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector2.hpp>

#include "rules/plan.h"

namespace tilm {
using namespace godot;

String to_string(std::string_view text);
Vector2 to_vector(rules::Vec2 v);
Rect2 to_rect(const rules::Rect &r);
Color to_color(uint32_t rgb); // 0xrrggbb

Dictionary entry_dictionary(const rules::PlanEntry &entry);

} // namespace tilm
