// The tie between C++ objects and engine objects: construction, wrappers, counted references.

#include <algorithm>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include <godot_cpp/classes/class_db_singleton.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/core/generated_support.hpp>

namespace godot {

namespace internal {

Construction &next_construction() {
    static thread_local Construction next{nullptr, nullptr};
    return next;
}

static void *no_wrapper(void *, void *) {
    return nullptr; // objects of our classes always come with theirs
}
static void keep_wrapper(void *, void *, void *) {} // freed with the instance
static GDExtensionBool any_reference(void *, void *, GDExtensionBool) {
    return true;
}
constinit const GDExtensionInstanceBindingCallbacks extension_callbacks{no_wrapper, keep_wrapper, any_reference};

void post_initialize(Wrapped *w) {
    static_cast<Object *>(w)->notification(Object::NOTIFICATION_POSTINITIALIZE);
}

// The wrapper class for an engine object, by the name of its class.
static const ClassRecord *record_for(const StringName &name) {
    static std::shared_mutex mutex;
    static std::unordered_map<const void *, const ClassRecord *> known;
    const void *key = name.data_unique_pointer();
    {
        std::shared_lock lock(mutex);
        const auto it = known.find(key);
        if (it != known.end()) {
            return it->second;
        }
    }
    const CharString text = String(name).utf8();
    const std::string_view wanted(text.get_data(), size_t(text.length()));
    const StandIn *end = stand_ins + stand_in_count;
    const StandIn *it = std::lower_bound(
        stand_ins, end, wanted, [](const StandIn &s, std::string_view v) { return std::string_view(s.name) < v; });
    const ClassRecord *record = &Object::_gde_record;
    if (it != end && wanted == it->name) {
        record = it->record;
    } else {
        // A class that the dump did not know: its nearest base that it did.
        const StringName parent = ClassDBSingleton::get_singleton()->get_parent_class(name);
        if (parent.data_unique_pointer()) {
            record = record_for(parent);
        }
    }
    std::unique_lock lock(mutex);
    known[key] = record;
    new StringName(name); // keeps the name, and with it the key, for good
    return record;
}

Wrapped *wrap_object(GodotObject *object) {
    if (!object) {
        return nullptr;
    }
    if (void *w = gde.object_get_instance_binding(object, token, nullptr)) {
        return static_cast<Wrapped *>(w);
    }
    StringName name;
    if (!gde.object_get_class_name(object, library, name._native_ptr())) {
        return nullptr;
    }
    const ClassRecord *record = record_for(name);
    return static_cast<Wrapped *>(gde.object_get_instance_binding(object, token, record->callbacks));
}

Wrapped *SingletonRef::fetch() {
    Wrapped *w = wrap_object(gde.global_get_singleton(name.ptr()));
    object.store(w, std::memory_order_relaxed);
    return w;
}

static void report_refusal(const char *method, const Object *object, const Variant **args, int count,
                           const GDExtensionCallError &error) {
    static const char *const reasons[] = {"",
                                          "no such method",
                                          "an argument of a wrong type",
                                          "too many arguments",
                                          "too few arguments",
                                          "no instance",
                                          "the method is not const"};
    const String target = count > 0 && args[0]->is_string() ? args[0]->stringify() : String();
    const size_t reason = size_t(error.error) < std::size(reasons) ? size_t(error.error) : 1;
    ERR_PRINT(vformat("%s('%s') on %s failed: %s (argument %d).", method, target,
                      object ? object->get_class() : String("null"), reasons[reason], error.argument));
}

Variant call_vararg(MethodRef &m, GodotObject *owner, const Variant **args, int count) {
    Variant ret;
    GDExtensionMethodBindPtr bind = m.get();
    if (unlikely(!bind)) {
        return ret;
    }
    GDExtensionCallError error{GDEXTENSION_CALL_OK, 0, 0};
    gde.object_method_bind_call(bind, owner, reinterpret_cast<const GDExtensionConstVariantPtr *>(args), count, &ret,
                                &error);
    if (unlikely(error.error != GDEXTENSION_CALL_OK)) {
        report_refusal(m.method, static_cast<Object *>(wrap_object(owner)), args, count, error);
    }
    return ret;
}

bool call_directly(Object *self, const Variant **args, int count, Variant &ret) {
    const ClassHooks *hooks = self->_gde_class()->hooks;
    const void *name = args[0]->_name_data();
    if (!hooks || !name) {
        return false;
    }
    MethodBind *bind = hooks->methods.find(name);
    if (!bind || gde.object_has_script_method(self->_owner, &name)) {
        return false;
    }
    GDExtensionCallError error{GDEXTENSION_CALL_OK, 0, 0};
    MethodBind::call_from_engine(bind, static_cast<Wrapped *>(self),
                                 reinterpret_cast<const GDExtensionConstVariantPtr *>(args + 1), count - 1, &ret,
                                 &error);
    if (unlikely(error.error != GDEXTENSION_CALL_OK)) {
        report_refusal("call", self, args, count, error);
    }
    return true;
}

bool ref_init(Object *o) {
    return static_cast<RefCounted *>(o)->init_ref();
}

void ref_add(Object *o) {
    static_cast<RefCounted *>(o)->reference();
}

void ref_drop(Object *o) {
    if (static_cast<RefCounted *>(o)->unreference()) {
        gde.object_destroy(o->_owner);
    }
}

GodotObject *ref_owner(const Object *o) {
    return o->_owner;
}

Object *ref_from_variant(const Variant &v) {
    return v.get_validated_object();
}

} // namespace internal

Wrapped::Wrapped() {
    internal::Construction &next = internal::next_construction();
    const internal::ClassRecord *record = next.record;
    GodotObject *owner = next.owner;
    next = {nullptr, nullptr};
    if (!record) {
        CRASH_COND_MSG(!owner, "An object of the engine is made by memnew only.");
        _owner = owner; // the wrapper of an engine object
        return;
    }
    _owner = owner ? owner : internal::gde.classdb_construct_object2(record->native()->name.ptr());
    CRASH_COND_MSG(!_owner, "The engine cannot make this class.");
    if (record->is_extension) {
        internal::gde.object_set_instance(_owner, record->name.ptr(), this);
    }
    internal::gde.object_set_instance_binding(_owner, internal::token, this, record->callbacks);
}

} // namespace godot
