#pragma once
// What the engine calls of a registered class: making and freeing instances, properties, notifications, virtuals.

#include <unordered_map>

#include <godot_cpp/core/class_db.hpp>

namespace godot::internal {

// A registered class; the engine hands it back as the class's user data.
struct ClassEntry {
    ClassRecord *record;
    Wrapped *(*create)(GodotObject *);
    std::unordered_map<const void *, MethodBind *> methods; // its own, by the name's data
};

// Only what the class or its bases define is filled in, so that the engine asks for nothing else.
GDExtensionClassCreationInfo4 creation_info(ClassEntry &entry);

} // namespace godot::internal
