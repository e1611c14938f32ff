#pragma once
// The module's entry: hands the engine's functions to the bindings and says what runs at which level.

#include <godot_cpp/core/engine_interface.hpp>

namespace godot {

enum ModuleInitializationLevel {
    MODULE_INITIALIZATION_LEVEL_CORE = GDEXTENSION_INITIALIZATION_CORE,
    MODULE_INITIALIZATION_LEVEL_SERVERS = GDEXTENSION_INITIALIZATION_SERVERS,
    MODULE_INITIALIZATION_LEVEL_SCENE = GDEXTENSION_INITIALIZATION_SCENE,
    MODULE_INITIALIZATION_LEVEL_EDITOR = GDEXTENSION_INITIALIZATION_EDITOR,
    MODULE_INITIALIZATION_LEVEL_MAX
};

class GDExtensionBinding {
public:
    using Callback = void (*)(ModuleInitializationLevel level);

    class InitObject {
    public:
        InitObject(GDExtensionInterfaceGetProcAddress get_proc_address, GDExtensionClassLibraryPtr library,
                   GDExtensionInitialization *initialization)
            : get_proc_address(get_proc_address), library(library), initialization(initialization) {}
        void register_initializer(Callback callback) { initializer = callback; }
        void register_terminator(Callback callback) { terminator = callback; }
        void set_minimum_library_initialization_level(ModuleInitializationLevel p_level) { level = p_level; }
        // False if the engine lacks what the bindings need; the engine then leaves the module out.
        GDExtensionBool init() const;

    private:
        GDExtensionInterfaceGetProcAddress get_proc_address;
        GDExtensionClassLibraryPtr library;
        GDExtensionInitialization *initialization;
        Callback initializer = nullptr;
        Callback terminator = nullptr;
        ModuleInitializationLevel level = MODULE_INITIALIZATION_LEVEL_CORE;
    };
};

} // namespace godot
