// Loading of the engine's functions, lazy look-ups by name, and the module's entry.

#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/godot.hpp>

namespace godot {

namespace internal {

EngineInterface gde;
GDExtensionClassLibraryPtr library = nullptr;
void *token = nullptr;
BuiltinFns builtin_fns[GDEXTENSION_VARIANT_TYPE_VARIANT_MAX];

void StaticName::intern() const {
    // Interning twice gives the same data, so a race costs a count at most.
    void *fresh = nullptr;
    gde.string_name_new_with_latin1_chars(&fresh, text, true);
    data.store(fresh, std::memory_order_release);
}

// Called in place of what the engine does not have.
static void missing_builtin(GDExtensionTypePtr, const GDExtensionConstTypePtr *, GDExtensionTypePtr, int32_t) {}
static void missing_utility(GDExtensionTypePtr, const GDExtensionConstTypePtr *, int32_t) {}

static void report_missing(const char *kind, const char *owner, const char *name) {
    char text[256];
    std::snprintf(text, sizeof(text), "This engine has no %s %s%s%s that fits; calls of it do nothing.", kind, owner,
                  *owner ? "::" : "", name);
    _err_print_error("resolve", __FILE__, __LINE__, text);
}

GDExtensionMethodBindPtr MethodRef::resolve() {
    const StringName c(class_name), n(method);
    GDExtensionMethodBindPtr found = gde.classdb_get_method_bind(c._native_ptr(), n._native_ptr(), hash);
    if (!found) {
        report_missing("method", class_name, method);
        return nullptr;
    }
    bind.store(found, std::memory_order_relaxed);
    return found;
}

GDExtensionPtrBuiltInMethod BuiltinRef::resolve() {
    const StringName n(method);
    GDExtensionPtrBuiltInMethod found = gde.variant_get_ptr_builtin_method(type, n._native_ptr(), hash);
    if (!found) {
        report_missing("builtin method", "", method);
        found = missing_builtin;
    }
    fn.store(found, std::memory_order_relaxed);
    return found;
}

GDExtensionPtrUtilityFunction UtilityRef::resolve() {
    const StringName n(function);
    GDExtensionPtrUtilityFunction found = gde.variant_get_ptr_utility_function(n._native_ptr(), hash);
    if (!found) {
        report_missing("function", "", function);
        found = missing_utility;
    }
    fn.store(found, std::memory_order_relaxed);
    return found;
}

static bool load_interface(GDExtensionInterfaceGetProcAddress get_proc_address) {
    const char *lacking = nullptr;
#define GDE_LOAD(m_type, m_name)                                                                                       \
    gde.m_name = reinterpret_cast<GDExtensionInterface##m_type>(get_proc_address(#m_name));                            \
    if (!gde.m_name) {                                                                                                 \
        lacking = #m_name;                                                                                             \
    }
    GDE_INTERFACE(GDE_LOAD)
#undef GDE_LOAD
    gde.classdb_register_extension_class5 = reinterpret_cast<GDExtensionInterfaceClassdbRegisterExtensionClass4>(
        get_proc_address("classdb_register_extension_class5"));
    if (lacking) {
        if (gde.print_error) {
            char text[160];
            std::snprintf(text, sizeof(text), "The engine is too old for this module: it lacks '%s'.", lacking);
            gde.print_error(text, "load_interface", __FILE__, __LINE__, false);
        }
        return false;
    }
    for (int t = GDEXTENSION_VARIANT_TYPE_STRING; t < GDEXTENSION_VARIANT_TYPE_VARIANT_MAX; ++t) {
        const auto type = GDExtensionVariantType(t);
        if (type == GDEXTENSION_VARIANT_TYPE_OBJECT) {
            continue;
        }
        builtin_fns[t] = {gde.variant_get_ptr_constructor(type, 0), gde.variant_get_ptr_constructor(type, 1),
                          gde.variant_get_ptr_destructor(type)};
    }
    if (!Variant::_check_layout()) {
        gde.print_error("The engine lays out its values unlike what this module was built for.", "load_interface",
                        __FILE__, __LINE__, false);
        return false;
    }
    return true;
}

} // namespace internal

namespace {

GDExtensionBinding::Callback initializer = nullptr;
GDExtensionBinding::Callback terminator = nullptr;

void initialize_level(void *, GDExtensionInitializationLevel level) {
    if (initializer) {
        initializer(ModuleInitializationLevel(level));
    }
}

void deinitialize_level(void *, GDExtensionInitializationLevel level) {
    if (terminator) {
        terminator(ModuleInitializationLevel(level));
    }
    if (level == GDEXTENSION_INITIALIZATION_SCENE) {
        ClassDB::_unregister_all();
    }
}

} // namespace

GDExtensionBool GDExtensionBinding::InitObject::init() const {
    internal::library = library;
    internal::token = library;
    initialization->initialize = initialize_level;
    initialization->deinitialize = deinitialize_level;
    initialization->minimum_initialization_level = GDExtensionInitializationLevel(level);
    ::godot::initializer = initializer;
    ::godot::terminator = terminator;
    return internal::load_interface(get_proc_address);
}

} // namespace godot
