#pragma once
// Interned names and the editor test, for code that runs often.

#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/variant/string_name.hpp>

// A StringName made once per place of use. It is never destroyed: the engine's name table is gone before our statics.
#define TM_NAME(m_text)                                                                                                \
    ([]() -> const ::godot::StringName & {                                                                             \
        static const ::godot::StringName *const name = new ::godot::StringName(m_text);                                \
        return *name;                                                                                                  \
    }())

namespace tilm {

// True while the editor (or an import run) has loaded the module: nothing may act then.
inline bool in_editor() {
    return ::godot::Engine::get_singleton()->is_editor_hint();
}

} // namespace tilm
