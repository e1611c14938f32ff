#pragma once
// The module's road into the engine: entry levels, statics, class registration.

#include <vector>

#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/godot.hpp>

namespace tilm {

void initialize_module(godot::ModuleInitializationLevel level);
void uninitialize_module(godot::ModuleInitializationLevel level);
void register_core_classes();
void register_game_classes();

// Names of our classes in the order of their registration.
const std::vector<const char *> &registered_classes();

} // namespace tilm
