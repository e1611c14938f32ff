// Calls that come from the engine, passed on to the classes.

#include "class_callbacks.h"

#include <algorithm>

namespace godot::internal {

namespace {

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
    Wrapped *w = static_cast<ClassEntry *>(entry)->create(nullptr);
    GodotObject *owner = w->_owner;
    if (notify) {
        post_initialize(w);
    }
    return owner;
}

GDExtensionClassInstancePtr recreate_instance(void *entry, GDExtensionObjectPtr object) {
    return static_cast<ClassEntry *>(entry)->create(object);
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
    for (const VirtualEntry &v : static_cast<ClassEntry *>(entry)->record->hooks->virtuals) {
        if (v.name == data) {
            // Another hash is another signature: better not called than called wrongly.
            return v.hash == hash ? reinterpret_cast<void *>(v.thunk) : nullptr;
        }
    }
    return nullptr;
}

void call_virtual(GDExtensionClassInstancePtr p, GDExtensionConstStringNamePtr, void *thunk,
                  const GDExtensionConstTypePtr *args, GDExtensionTypePtr ret) {
    reinterpret_cast<VirtualThunk>(thunk)(instance(p), args, ret);
}

} // namespace

GDExtensionClassCreationInfo4 creation_info(ClassEntry &entry) {
    const ClassHooks &h = *entry.record->hooks;
    GDExtensionClassCreationInfo4 info{};
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
    info.create_instance_func = entry.create ? create_instance : nullptr;
    info.free_instance_func = free_instance;
    info.recreate_instance_func = entry.create ? recreate_instance : nullptr;
    info.get_virtual_call_data_func = get_virtual;
    info.call_virtual_with_data_func = call_virtual;
    info.class_userdata = &entry;
    return info;
}

} // namespace godot::internal
