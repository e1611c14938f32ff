#include <gdextension_interface.h>

#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/core/defs.hpp>
#include <godot_cpp/godot.hpp>

#include "engine_test.h"
#include "register.h"
#include "test_runner.h"

namespace {

void initialize_tests(godot::ModuleInitializationLevel level) {
    tilm::initialize_module(level);
    if (level == godot::MODULE_INITIALIZATION_LEVEL_SCENE) {
        GDREGISTER_CLASS(tilm::TestRunner);
        for (const auto register_classes : tilm::test::RegisterClasses::all()) {
            register_classes();
        }
    }
}

} // namespace

extern "C" {

GDExtensionBool GDE_EXPORT tilmarch_tests_init(GDExtensionInterfaceGetProcAddress get_proc_address,
                                               GDExtensionClassLibraryPtr library,
                                               GDExtensionInitialization *initialization) {
    godot::GDExtensionBinding::InitObject init(get_proc_address, library, initialization);
    init.register_initializer(initialize_tests);
    init.register_terminator(tilm::uninitialize_module);
    init.set_minimum_library_initialization_level(godot::MODULE_INITIALIZATION_LEVEL_SCENE);
    return init.init();
}
}
