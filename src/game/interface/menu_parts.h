#pragma once
// What the title's pages share: the owner of the farms by name, wide buttons, labels that are not translated.

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/string_name.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace tilm::title {
using namespace godot;

inline constexpr int64_t farm_limit = 6;

Object *farms_owner();
Variant stored(const StringName &key); // a setting, null without a store
bool has_progress();
double progress_of(int64_t i); // 0 .. 1
bool plays_with_friends();
Array farm_rows();
int64_t active_farm();
String own_version();
int compare_versions(const String &a, const String &b); // "1.10.2" is above "1.9"
Button *wide(const String &text, const char *color, int size = 38);
Label *plain_label(const String &text, int size, const Color &color);

} // namespace tilm::title
