#pragma once
// Registration of the game's classes with the engine.

#include <initializer_list>
#include <vector>

#include <godot_cpp/classes/object.hpp>
#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/core/internal/method_binding.hpp>
#include <godot_cpp/core/internal/method_callable.hpp>
#include <godot_cpp/core/internal/object_cast.hpp>

namespace godot {

#define DEFVAL(m_defval) (m_defval)

struct MethodDefinition {
    StringName name;
    std::vector<StringName> args;

    MethodDefinition() = default;
    MethodDefinition(const char *p_name) : name(p_name) {}
    MethodDefinition(const StringName &p_name) : name(p_name) {}
    MethodDefinition(const String &p_name) : name(p_name) {}
};

MethodDefinition make_method_definition(const StringName &name, std::initializer_list<const char *> args);

template <typename... Args>
MethodDefinition D_METHOD(const StringName &name, const Args &...args) {
    return make_method_definition(name, {static_cast<const char *>(args)...});
}

class ClassDB {
public:
    template <typename T>
    static void register_class(bool is_virtual = false, bool is_exposed = true, bool is_runtime = false) {
        static_assert(std::is_same_v<typename T::self_type, T>, "The class lacks GDCLASS.");
        Setup s = setup_of<T>();
        s.is_virtual = is_virtual;
        s.is_exposed = is_exposed;
        s.is_runtime = is_runtime;
        register_setup(s);
    }
    template <typename T>
    static void register_abstract_class() {
        Setup s = setup_of<T>();
        s.is_abstract = true;
        s.create = nullptr;
        register_setup(s);
    }
    template <typename T>
    static void register_internal_class() {
        register_class<T>(false, false);
    }
    template <typename T>
    static void register_runtime_class() {
        register_class<T>(false, true, true);
    }
    // Engine classes need no registration of their own.
    template <typename T>
    static void register_engine_class() {}

    template <typename N, typename M, typename... Defaults>
    static MethodBind *bind_method(N &&name, M method, const Defaults &...defaults) {
        const Variant values[] = {Variant(defaults)..., Variant()};
        return bind_prepared(StringName(), create_method_bind(method), MethodDefinition(name), values,
                             sizeof...(defaults));
    }
    template <typename N, typename M, typename... Defaults>
    static MethodBind *bind_static_method(const StringName &class_name, N &&name, M method,
                                          const Defaults &...defaults) {
        const Variant values[] = {Variant(defaults)..., Variant()};
        return bind_prepared(class_name, create_static_method_bind(method), MethodDefinition(name), values,
                             sizeof...(defaults));
    }
    template <typename T, typename R>
    static MethodBind *bind_vararg_method(uint32_t flags, const StringName &name,
                                          R (T::*method)(const Variant **, GDExtensionInt, GDExtensionCallError &),
                                          const MethodInfo &info = MethodInfo(),
                                          const std::vector<Variant> &defaults = {},
                                          bool return_nil_is_variant = true) {
        using Bind = internal::MethodBindVararg<R>;
        return bind_vararg(new Bind(static_cast<typename Bind::Method>(method)), flags, name, info, defaults,
                           return_nil_is_variant);
    }

    static void add_property(const StringName &class_name, const PropertyInfo &info, const StringName &setter,
                             const StringName &getter, int index = -1);
    static void add_property_group(const StringName &class_name, const String &name, const String &prefix);
    static void add_property_subgroup(const StringName &class_name, const String &name, const String &prefix);
    static void add_signal(const StringName &class_name, const MethodInfo &signal);
    static void bind_integer_constant(const StringName &class_name, const StringName &enum_name,
                                      const StringName &constant, int64_t value, bool is_bitfield = false);
    // The method bound under this name in the class or its bases of ours, null if none.
    static MethodBind *get_method(const StringName &class_name, const StringName &method);

    // Look-ups in the engine's own class table.
    static bool class_exists(const StringName &name);
    static bool is_parent_class(const StringName &name, const StringName &base);
    static bool can_instantiate(const StringName &name);
    static Variant instantiate(const StringName &name);
    static StringName get_parent_class(const StringName &name);
    static bool class_has_method(const StringName &name, const StringName &method, bool no_inheritance = false);
    static bool class_has_signal(const StringName &name, const StringName &signal);

    // Called by the module's end: the engine forgets our classes, derived ones first.
    static void _unregister_all();

private:
    using Create = Wrapped *(*)(GodotObject *);
    struct Setup {
        internal::ClassRecord *record;
        Create create;
        void (*collect)(internal::ClassHooks &);
        void (*initialize)();
        bool is_virtual = false;
        bool is_abstract = false;
        bool is_exposed = true;
        bool is_runtime = false;
    };
    template <typename T>
    static Setup setup_of() {
        Create create = nullptr;
        if constexpr (!std::is_abstract_v<T>) {
            create = [](GodotObject *owner) -> Wrapped * {
                internal::next_construction() = {&T::_gde_record, owner};
                return new T;
            };
        }
        return {&T::_gde_record, create, &T::_gde_collect, &T::initialize_class};
    }
    static void register_setup(const Setup &setup);
    static MethodBind *bind_prepared(const StringName &class_name, MethodBind *bind, const MethodDefinition &definition,
                                     const Variant *defaults, int default_count);
    static MethodBind *bind_vararg(MethodBind *bind, uint32_t flags, const StringName &name, const MethodInfo &info,
                                   const std::vector<Variant> &defaults, bool return_nil_is_variant);
};

#define BIND_CONSTANT(m_constant)                                                                                      \
    ::godot::ClassDB::bind_integer_constant(get_class_static(), "", #m_constant, m_constant);
#define BIND_ENUM_CONSTANT(m_constant)                                                                                 \
    ::godot::ClassDB::bind_integer_constant(get_class_static(), ::godot::internal::enum_name_of(m_constant),           \
                                            #m_constant, int64_t(m_constant));
#define BIND_BITFIELD_FLAG(m_constant)                                                                                 \
    ::godot::ClassDB::bind_integer_constant(get_class_static(), ::godot::internal::enum_name_of(m_constant),           \
                                            #m_constant, int64_t(m_constant), true);

namespace internal {
String enum_short_name(const char *text);
template <typename T>
StringName enum_name_of(T) {
    return enum_short_name(EnumName<T>::text);
}
} // namespace internal

#define ADD_SIGNAL(m_signal) ::godot::ClassDB::add_signal(get_class_static(), m_signal)
#define ADD_GROUP(m_name, m_prefix) ::godot::ClassDB::add_property_group(get_class_static(), m_name, m_prefix)
#define ADD_SUBGROUP(m_name, m_prefix) ::godot::ClassDB::add_property_subgroup(get_class_static(), m_name, m_prefix)
#define ADD_PROPERTY(m_property, m_setter, m_getter)                                                                   \
    ::godot::ClassDB::add_property(get_class_static(), m_property, m_setter, m_getter)
#define ADD_PROPERTYI(m_property, m_setter, m_getter, m_index)                                                         \
    ::godot::ClassDB::add_property(get_class_static(), m_property, m_setter, m_getter, m_index)

#define GDREGISTER_CLASS(m_class) ::godot::ClassDB::register_class<m_class>();
#define GDREGISTER_VIRTUAL_CLASS(m_class) ::godot::ClassDB::register_class<m_class>(true);
#define GDREGISTER_ABSTRACT_CLASS(m_class) ::godot::ClassDB::register_abstract_class<m_class>();
#define GDREGISTER_INTERNAL_CLASS(m_class) ::godot::ClassDB::register_internal_class<m_class>();
#define GDREGISTER_RUNTIME_CLASS(m_class) ::godot::ClassDB::register_runtime_class<m_class>();

} // namespace godot
