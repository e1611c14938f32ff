// Registration with the engine: classes, methods, properties, signals, constants.

#include <vector>

#include <godot_cpp/classes/class_db_singleton.hpp>
#include <godot_cpp/core/error_macros.hpp>

#include "class_callbacks.h"

namespace godot {

using internal::ClassEntry;
using internal::ClassHooks;
using internal::ClassRecord;
using internal::gde;

namespace {

// Never destroyed: the engine may call into the module until the very end.
std::vector<ClassEntry *> &entries() {
    static auto *list = new std::vector<ClassEntry *>;
    return *list;
}

ClassEntry *entry_of(const ClassRecord *record) {
    for (ClassEntry *e : entries()) {
        if (e->record == record) {
            return e;
        }
    }
    return nullptr;
}

ClassEntry *entry_named(const StringName &name) {
    for (ClassEntry *e : entries()) {
        if (e->record->name.name() == name) {
            return e;
        }
    }
    return nullptr;
}

// The class whose _bind_methods runs.
ClassEntry *current = nullptr;

} // namespace

namespace internal {

void add_virtual(ClassHooks &hooks, const char *name, uint32_t hash, VirtualThunk thunk) {
    // Never released, as the table keeps only the address of its data.
    const StringName &n = *new StringName(name, true);
    for (VirtualEntry &v : hooks.virtuals) {
        if (v.name == n.data_unique_pointer()) {
            v = {v.name, hash, thunk};
            return;
        }
    }
    hooks.virtuals.push_back({n.data_unique_pointer(), hash, thunk});
}

String enum_qualified_name(const char *text) {
    // "tilm::Farm::Kind" is "Farm.Kind" to the engine, which knows no namespaces.
    const String full(text);
    const PackedStringArray parts = full.split("::");
    const int64_t n = parts.size();
    return n >= 2 ? parts[n - 2] + "." + parts[n - 1] : full;
}

String enum_short_name(const char *text) {
    const PackedStringArray parts = String(text).split("::");
    return parts[parts.size() - 1];
}

} // namespace internal

GDExtensionPropertyInfo PropertyInfo::_gde() const {
    return {GDExtensionVariantType(type), name._native_ptr(),
            class_name._native_ptr(),     hint,
            hint_string._native_ptr(),    usage};
}

PropertyInfo::operator Dictionary() const {
    Dictionary d;
    d["name"] = name;
    d["class_name"] = class_name;
    d["type"] = type;
    d["hint"] = hint;
    d["hint_string"] = hint_string;
    d["usage"] = usage;
    return d;
}

PropertyInfo PropertyInfo::from_dict(const Dictionary &d) {
    PropertyInfo p;
    p.type = Variant::Type(int(d.get("type", 0)));
    p.name = d.get("name", StringName()).operator StringName();
    p.class_name = d.get("class_name", StringName()).operator StringName();
    p.hint = uint32_t(d.get("hint", 0));
    p.hint_string = d.get("hint_string", String()).operator String();
    p.usage = uint32_t(d.get("usage", int64_t(PROPERTY_USAGE_DEFAULT)));
    return p;
}

void ClassDB::register_setup(const Setup &setup) {
    ClassRecord &record = *setup.record;
    ERR_FAIL_COND_MSG(entry_of(&record), String("Class registered twice: ") + record.name.text);
    if (record.parent->is_extension && !entry_of(record.parent)) {
        ERR_FAIL_MSG(String("Class ") + record.name.text + " is registered before its base " +
                     record.parent->name.text);
    }
    auto *entry = new ClassEntry{&record, setup.create, {}};
    entries().push_back(entry);
    record.hooks = new ClassHooks;
    setup.collect(*record.hooks);

    GDExtensionClassCreationInfo4 info = internal::creation_info(*entry);
    info.is_virtual = setup.is_virtual;
    info.is_abstract = setup.is_abstract || !setup.create;
    info.is_exposed = setup.is_exposed;
    info.is_runtime = setup.is_runtime;
    (gde.classdb_register_extension_class5 ? gde.classdb_register_extension_class5
                                           : gde.classdb_register_extension_class4)(
        internal::library, record.name.ptr(), record.parent->name.ptr(), &info);

    current = entry;
    setup.initialize();
    current = nullptr;

    // Calls by name find inherited methods in the same table.
    const ClassHooks *base = record.parent->hooks;
    internal::MethodTable &table = record.hooks->methods;
    table.reserve(entry->methods.size() + (base ? base->methods.room() : 0));
    if (base) {
        base->methods.each([&](const void *name, MethodBind *bind) { table.put(name, bind); });
    }
    for (const auto &[name, bind] : entry->methods) {
        table.put(name, bind);
    }
}

void ClassDB::_unregister_all() {
    std::vector<ClassEntry *> &list = entries();
    for (auto it = list.rbegin(); it != list.rend(); ++it) {
        gde.classdb_unregister_extension_class(internal::library, (*it)->record->name.ptr());
        for (auto &[name, bind] : (*it)->methods) {
            delete bind;
        }
        delete (*it)->record->hooks;
        (*it)->record->hooks = nullptr;
        delete *it;
    }
    list.clear();
}

MethodDefinition make_method_definition(const StringName &name, std::initializer_list<const char *> args) {
    MethodDefinition d(name);
    for (const char *a : args) {
        d.args.push_back(StringName(a));
    }
    return d;
}

// Tells the engine of a method that the class now owns.
static MethodBind *publish(ClassEntry *entry, MethodBind *bind) {
    const void *key = bind->name.data_unique_pointer();
    if (entry->methods.count(key)) {
        const String what =
            String("Method bound twice: ") + entry->record->name.text + "::" + String(StringName(bind->name));
        delete bind;
        ERR_FAIL_V_MSG(nullptr, what);
    }
    entry->methods[key] = bind;

    std::vector<GDExtensionPropertyInfo> views;
    for (const PropertyInfo &p : bind->infos) {
        views.push_back(p._gde());
    }
    std::vector<GDExtensionVariantPtr> defaults;
    for (const Variant &v : bind->default_arguments) {
        defaults.push_back(v._native_ptr());
    }
    GDExtensionClassMethodInfo info{};
    info.name = bind->name._native_ptr();
    info.method_userdata = bind;
    info.call_func = &MethodBind::call_from_engine;
    info.ptrcall_func = &MethodBind::ptrcall_from_engine;
    info.method_flags = bind->flags;
    info.has_return_value = bind->has_return;
    info.return_value_info = &views[0];
    info.return_value_metadata = bind->metadata[0];
    info.argument_count = uint32_t(views.size() - 1);
    info.arguments_info = views.data() + 1;
    info.arguments_metadata = bind->metadata.data() + 1;
    info.default_argument_count = uint32_t(defaults.size());
    info.default_arguments = defaults.data();
    gde.classdb_register_extension_class_method(internal::library, entry->record->name.ptr(), &info);
    return bind;
}

MethodBind *ClassDB::bind_prepared(const StringName &class_name, MethodBind *bind, const MethodDefinition &definition,
                                   const Variant *defaults, int default_count) {
    ClassEntry *entry = class_name.data_unique_pointer() ? entry_named(class_name) : current;
    bind->name = definition.name;
    if (!entry || int(definition.args.size()) > bind->argument_count || default_count > bind->argument_count) {
        const String what = bind->name;
        delete bind;
        ERR_FAIL_V_MSG(nullptr,
                       "Method '" + what + "' is bound outside of a class or with too many names or defaults.");
    }
    for (size_t i = 0; i < definition.args.size(); ++i) {
        bind->infos[i + 1].name = definition.args[i];
    }
    for (size_t i = definition.args.size() + 1; i < bind->infos.size(); ++i) {
        bind->infos[i].name = "arg" + itos(int64_t(i) - 1);
    }
    bind->default_arguments.assign(defaults, defaults + default_count);
    return publish(entry, bind);
}

MethodBind *ClassDB::bind_vararg(MethodBind *bind, uint32_t flags, const StringName &name, const MethodInfo &info,
                                 const std::vector<Variant> &defaults, bool return_nil_is_variant) {
    if (!current) {
        delete bind;
        ERR_FAIL_V_MSG(nullptr, "A method is bound outside of a class.");
    }
    bind->name = name;
    bind->flags = flags | GDEXTENSION_METHOD_FLAG_VARARG;
    bind->infos.push_back(info.return_val);
    if (return_nil_is_variant && bind->has_return && info.return_val.type == Variant::NIL) {
        bind->infos[0].usage |= PROPERTY_USAGE_NIL_IS_VARIANT;
    }
    bind->infos.insert(bind->infos.end(), info.arguments.begin(), info.arguments.end());
    bind->metadata.resize(bind->infos.size(), GDEXTENSION_METHOD_ARGUMENT_METADATA_NONE);
    bind->default_arguments = defaults;
    return publish(current, bind);
}

MethodBind *ClassDB::get_method(const StringName &class_name, const StringName &method) {
    const ClassEntry *entry = entry_named(class_name);
    return entry ? entry->record->hooks->methods.find(method.data_unique_pointer()) : nullptr;
}

void ClassDB::add_property(const StringName &class_name, const PropertyInfo &info, const StringName &setter,
                           const StringName &getter, int index) {
    const GDExtensionPropertyInfo view = info._gde();
    if (index < 0) {
        gde.classdb_register_extension_class_property(internal::library, class_name._native_ptr(), &view,
                                                      setter._native_ptr(), getter._native_ptr());
    } else {
        gde.classdb_register_extension_class_property_indexed(internal::library, class_name._native_ptr(), &view,
                                                              setter._native_ptr(), getter._native_ptr(), index);
    }
}

void ClassDB::add_property_group(const StringName &class_name, const String &name, const String &prefix) {
    gde.classdb_register_extension_class_property_group(internal::library, class_name._native_ptr(), name._native_ptr(),
                                                        prefix._native_ptr());
}

void ClassDB::add_property_subgroup(const StringName &class_name, const String &name, const String &prefix) {
    gde.classdb_register_extension_class_property_subgroup(internal::library, class_name._native_ptr(),
                                                           name._native_ptr(), prefix._native_ptr());
}

void ClassDB::add_signal(const StringName &class_name, const MethodInfo &signal) {
    std::vector<GDExtensionPropertyInfo> views;
    for (const PropertyInfo &p : signal.arguments) {
        views.push_back(p._gde());
    }
    gde.classdb_register_extension_class_signal(internal::library, class_name._native_ptr(), signal.name._native_ptr(),
                                                views.data(), GDExtensionInt(views.size()));
}

void ClassDB::bind_integer_constant(const StringName &class_name, const StringName &enum_name,
                                    const StringName &constant, int64_t value, bool is_bitfield) {
    gde.classdb_register_extension_class_integer_constant(internal::library, class_name._native_ptr(),
                                                          enum_name._native_ptr(), constant._native_ptr(), value,
                                                          is_bitfield);
}

bool ClassDB::class_exists(const StringName &name) {
    return ClassDBSingleton::get_singleton()->class_exists(name);
}

bool ClassDB::is_parent_class(const StringName &name, const StringName &base) {
    return ClassDBSingleton::get_singleton()->is_parent_class(name, base);
}

bool ClassDB::can_instantiate(const StringName &name) {
    return ClassDBSingleton::get_singleton()->can_instantiate(name);
}

Variant ClassDB::instantiate(const StringName &name) {
    return ClassDBSingleton::get_singleton()->instantiate(name);
}

StringName ClassDB::get_parent_class(const StringName &name) {
    return ClassDBSingleton::get_singleton()->get_parent_class(name);
}

bool ClassDB::class_has_method(const StringName &name, const StringName &method, bool no_inheritance) {
    return ClassDBSingleton::get_singleton()->class_has_method(name, method, no_inheritance);
}

bool ClassDB::class_has_signal(const StringName &name, const StringName &signal) {
    return ClassDBSingleton::get_singleton()->class_has_signal(name, signal);
}

} // namespace godot
