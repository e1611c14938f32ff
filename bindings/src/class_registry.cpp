// Registration with the engine: classes, methods, properties, signals, constants; and the calls that come back.

#include <algorithm>
#include <string>
#include <unordered_map>

#include <godot_cpp/classes/class_db_singleton.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/core/error_macros.hpp>

namespace godot {

using internal::ClassHooks;
using internal::ClassRecord;
using internal::gde;

namespace {

using CreateFn = Wrapped *(*)(GodotObject *);

struct Entry {
    ClassRecord *record;
    CreateFn create;
    std::unordered_map<const void *, MethodBind *> methods; // by the name's data
};

// Never destroyed: the engine may call into the module until the very end.
std::vector<Entry *> &entries() {
    static auto *list = new std::vector<Entry *>;
    return *list;
}

Entry *entry_of(const ClassRecord *record) {
    for (Entry *e : entries()) {
        if (e->record == record) {
            return e;
        }
    }
    return nullptr;
}

Entry *entry_named(const StringName &name) {
    for (Entry *e : entries()) {
        if (e->record->name.name() == name) {
            return e;
        }
    }
    return nullptr;
}

// The class whose _bind_methods runs.
Entry *current = nullptr;

Wrapped *instance(GDExtensionClassInstancePtr p) {
    return static_cast<Wrapped *>(p);
}
const ClassHooks &hooks_of_instance(GDExtensionClassInstancePtr p) {
    return *instance(p)->_gde_class()->hooks;
}
const StringName &as_name(GDExtensionConstStringNamePtr p) {
    return *static_cast<const StringName *>(p);
}

GDExtensionObjectPtr create_instance(void *entry, GDExtensionBool notify) {
    Wrapped *w = static_cast<Entry *>(entry)->create(nullptr);
    GodotObject *owner = w->_owner;
    if (notify) {
        internal::post_initialize(w);
    }
    return owner;
}

GDExtensionClassInstancePtr recreate_instance(void *entry, GDExtensionObjectPtr object) {
    return static_cast<Entry *>(entry)->create(object);
}

void free_instance(void *, GDExtensionClassInstancePtr p) {
    delete instance(p);
}

GDExtensionBool set_property(GDExtensionClassInstancePtr p, GDExtensionConstStringNamePtr name,
                             GDExtensionConstVariantPtr value) {
    const auto &list = hooks_of_instance(p).set;
    return std::any_of(list.rbegin(), list.rend(),
                       [&](auto fn) { return fn(instance(p), as_name(name), *static_cast<const Variant *>(value)); });
}

GDExtensionBool get_property(GDExtensionClassInstancePtr p, GDExtensionConstStringNamePtr name,
                             GDExtensionVariantPtr ret) {
    const auto &list = hooks_of_instance(p).get;
    return std::any_of(list.rbegin(), list.rend(),
                       [&](auto fn) { return fn(instance(p), as_name(name), *static_cast<Variant *>(ret)); });
}

// Names and texts live in the list that stands behind the engine's plain view of it.
struct PropertyListHold {
    std::vector<PropertyInfo> infos;
    std::vector<GDExtensionPropertyInfo> views;
};
std::unordered_map<const void *, PropertyListHold *> &held_lists() {
    static auto *map = new std::unordered_map<const void *, PropertyListHold *>;
    return *map;
}

const GDExtensionPropertyInfo *get_property_list(GDExtensionClassInstancePtr p, uint32_t *count) {
    List<PropertyInfo> list;
    for (auto fn : hooks_of_instance(p).property_list) {
        fn(instance(p), &list);
    }
    *count = uint32_t(list.size());
    if (list.is_empty()) {
        return nullptr;
    }
    auto *hold = new PropertyListHold;
    hold->infos.assign(list.begin(), list.end());
    for (const PropertyInfo &info : hold->infos) {
        hold->views.push_back(info._gde());
    }
    held_lists()[hold->views.data()] = hold;
    return hold->views.data();
}

void free_property_list(GDExtensionClassInstancePtr, const GDExtensionPropertyInfo *list, uint32_t) {
    const auto it = held_lists().find(list);
    if (it != held_lists().end()) {
        delete it->second;
        held_lists().erase(it);
    }
}

GDExtensionBool property_can_revert(GDExtensionClassInstancePtr p, GDExtensionConstStringNamePtr name) {
    const auto &list = hooks_of_instance(p).can_revert;
    return std::any_of(list.rbegin(), list.rend(), [&](auto fn) { return fn(instance(p), as_name(name)); });
}

GDExtensionBool property_get_revert(GDExtensionClassInstancePtr p, GDExtensionConstStringNamePtr name,
                                    GDExtensionVariantPtr ret) {
    const auto &list = hooks_of_instance(p).get_revert;
    return std::any_of(list.rbegin(), list.rend(),
                       [&](auto fn) { return fn(instance(p), as_name(name), *static_cast<Variant *>(ret)); });
}

GDExtensionBool validate_property(GDExtensionClassInstancePtr p, GDExtensionPropertyInfo *property) {
    PropertyInfo info;
    info.type = Variant::Type(property->type);
    info.name = as_name(property->name);
    info.class_name = as_name(property->class_name);
    info.hint = property->hint;
    info.hint_string = *static_cast<const String *>(property->hint_string);
    info.usage = property->usage;
    for (auto fn : hooks_of_instance(p).validate) {
        fn(instance(p), info);
    }
    property->type = GDExtensionVariantType(info.type);
    *static_cast<StringName *>(property->name) = info.name;
    *static_cast<StringName *>(property->class_name) = info.class_name;
    property->hint = info.hint;
    *static_cast<String *>(property->hint_string) = info.hint_string;
    property->usage = info.usage;
    return true;
}

void notification(GDExtensionClassInstancePtr p, int32_t what, GDExtensionBool reversed) {
    instance(p)->_notificationv(what, reversed != 0);
}

void to_string(GDExtensionClassInstancePtr p, GDExtensionBool *valid, GDExtensionStringPtr out) {
    *valid = true;
    *static_cast<String *>(out) = hooks_of_instance(p).to_string(instance(p));
}

void *get_virtual(void *entry, GDExtensionConstStringNamePtr name, uint32_t hash) {
    const void *data = as_name(name).data_unique_pointer();
    for (const internal::VirtualEntry &v : static_cast<Entry *>(entry)->record->hooks->virtuals) {
        if (v.name == data) {
            // Another hash is another signature: better not called than called wrongly.
            return v.hash == hash ? reinterpret_cast<void *>(v.thunk) : nullptr;
        }
    }
    return nullptr;
}

void call_virtual(GDExtensionClassInstancePtr p, GDExtensionConstStringNamePtr, void *thunk,
                  const GDExtensionConstTypePtr *args, GDExtensionTypePtr ret) {
    reinterpret_cast<internal::VirtualThunk>(thunk)(instance(p), args, ret);
}

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

bool check_args(const ArgCheck *checks, int wanted, const Variant *const *args, int64_t given,
                GDExtensionCallError &error) {
    if (unlikely(given != wanted)) {
        error.error =
            given > wanted ? GDEXTENSION_CALL_ERROR_TOO_MANY_ARGUMENTS : GDEXTENSION_CALL_ERROR_TOO_FEW_ARGUMENTS;
        error.argument = wanted;
        error.expected = wanted;
        return false;
    }
    for (int i = 0; i < wanted; ++i) {
        const Variant &v = *args[i];
        const ArgCheck &check = checks[i];
        bool fits = v.get_type() == check.type || check.type == Variant::NIL ||
                    Variant::can_convert_strict(v.get_type(), check.type);
        if (fits && check.record && v.get_object_instance_id() != 0) {
            const Object *o = v.get_validated_object();
            fits = o && o->_gde_class()->inherits(check.record);
        }
        if (unlikely(!fits)) {
            error.error = GDEXTENSION_CALL_ERROR_INVALID_ARGUMENT;
            error.argument = i;
            error.expected = check.type;
            return false;
        }
    }
    return true;
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
    auto *entry = new Entry{&record, setup.create, {}};
    entries().push_back(entry);
    record.hooks = new ClassHooks;
    setup.collect(*record.hooks);
    const ClassHooks &h = *record.hooks;

    GDExtensionClassCreationInfo4 info{};
    info.is_virtual = setup.is_virtual;
    info.is_abstract = setup.is_abstract || !setup.create;
    info.is_exposed = setup.is_exposed;
    info.is_runtime = setup.is_runtime;
    info.set_func = h.set.empty() ? nullptr : set_property;
    info.get_func = h.get.empty() ? nullptr : get_property;
    if (!h.property_list.empty()) {
        info.get_property_list_func = get_property_list;
        info.free_property_list_func = free_property_list;
    }
    info.property_can_revert_func = h.can_revert.empty() ? nullptr : property_can_revert;
    info.property_get_revert_func = h.get_revert.empty() ? nullptr : property_get_revert;
    info.validate_property_func = h.validate.empty() ? nullptr : validate_property;
    info.notification_func = h.notified ? notification : nullptr;
    info.to_string_func = h.to_string ? to_string : nullptr;
    info.create_instance_func = setup.create ? create_instance : nullptr;
    info.free_instance_func = free_instance;
    info.recreate_instance_func = setup.create ? recreate_instance : nullptr;
    info.get_virtual_call_data_func = get_virtual;
    info.call_virtual_with_data_func = call_virtual;
    info.class_userdata = entry;
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
    std::vector<Entry *> &list = entries();
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
static MethodBind *publish(Entry *entry, MethodBind *bind) {
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
    Entry *entry = class_name.data_unique_pointer() ? entry_named(class_name) : current;
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

void MethodBind::call_from_engine(void *p_bind, GDExtensionClassInstancePtr self,
                                  const GDExtensionConstVariantPtr *p_args, GDExtensionInt count,
                                  GDExtensionVariantPtr p_ret, GDExtensionCallError *r_error) {
    const MethodBind *bind = static_cast<const MethodBind *>(p_bind);
    GDExtensionCallError ignored;
    GDExtensionCallError &error = r_error ? *r_error : ignored;
    error = {GDEXTENSION_CALL_OK, 0, 0};
    Variant &ret = *static_cast<Variant *>(p_ret);
    if (unlikely(!self && !bind->is_static)) {
        error.error = GDEXTENSION_CALL_ERROR_INSTANCE_IS_NULL;
        return;
    }
    auto args = reinterpret_cast<const Variant *const *>(p_args);
    if (bind->is_vararg) {
        bind->call(static_cast<Wrapped *>(self), args, count, ret, error);
        return;
    }
    const int wanted = bind->argument_count;
    const Variant *full[MAX_ARGUMENTS];
    if (count < wanted) {
        const int64_t missing = wanted - count;
        const int64_t have = int64_t(bind->default_arguments.size());
        if (unlikely(missing > have)) {
            error.error = GDEXTENSION_CALL_ERROR_TOO_FEW_ARGUMENTS;
            error.argument = int32_t(wanted - have);
            error.expected = int32_t(wanted - have);
            return;
        }
        std::copy(args, args + count, full);
        for (int64_t i = count; i < wanted; ++i) {
            full[i] = &bind->default_arguments[size_t(have - (wanted - i))];
        }
        args = full;
        count = wanted;
    }
    if (internal::check_args(bind->checks, wanted, args, count, error)) {
        bind->call(static_cast<Wrapped *>(self), args, count, ret, error);
    }
}

void MethodBind::ptrcall_from_engine(void *bind, GDExtensionClassInstancePtr self, const GDExtensionConstTypePtr *args,
                                     GDExtensionTypePtr ret) {
    static_cast<const MethodBind *>(bind)->ptrcall(static_cast<Wrapped *>(self), args, ret);
}

MethodBind *ClassDB::get_method(const StringName &class_name, const StringName &method) {
    const Entry *entry = entry_named(class_name);
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
