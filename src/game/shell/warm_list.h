#pragma once
// What a farm of given levels needs from the model caches, as a list of small tasks that the loading screen runs before
// the farm is built: one model, one look or one font size each.

#include <functional>

#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

namespace warm_list {

// Takes a task under its name; a name that it knows already is to be left out.
using Add = std::function<void(const String &name, std::function<void()> run)>;

// What every farm shows: goods, scenery, people, texts, the interface's icons.
void common(const Add &add);
// `levels`: id -> level of the saved farm. `full`: every entry stands at its last level, whatever was saved.
void entries(const Add &add, const Dictionary &levels, bool full);

} // namespace warm_list
} // namespace tilm
