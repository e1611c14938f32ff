#pragma once

#include <vector>

#include <godot_cpp/classes/global_constants.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

struct PropertyInfo {
    Variant::Type type = Variant::NIL;
    StringName name;
    StringName class_name;
    uint32_t hint = PROPERTY_HINT_NONE;
    String hint_string;
    uint32_t usage = PROPERTY_USAGE_DEFAULT;

    PropertyInfo() = default;
    PropertyInfo(Variant::Type p_type, const StringName &p_name, PropertyHint p_hint = PROPERTY_HINT_NONE,
                 const String &p_hint_string = String(), uint32_t p_usage = PROPERTY_USAGE_DEFAULT,
                 const StringName &p_class_name = StringName())
        : type(p_type), name(p_name), class_name(p_class_name), hint(p_hint), hint_string(p_hint_string),
          usage(p_usage) {
        if (hint == PROPERTY_HINT_RESOURCE_TYPE) {
            class_name = hint_string;
        }
    }
    PropertyInfo(GDExtensionVariantType p_type, const StringName &p_name, PropertyHint p_hint = PROPERTY_HINT_NONE,
                 const String &p_hint_string = String(), uint32_t p_usage = PROPERTY_USAGE_DEFAULT,
                 const StringName &p_class_name = StringName())
        : PropertyInfo(Variant::Type(p_type), p_name, p_hint, p_hint_string, p_usage, p_class_name) {}
    PropertyInfo(const StringName &p_class_name) : type(Variant::OBJECT), class_name(p_class_name) {}

    operator Dictionary() const;
    static PropertyInfo from_dict(const Dictionary &dict);
    bool operator==(const PropertyInfo &o) const {
        return type == o.type && name == o.name && class_name == o.class_name && hint == o.hint &&
               hint_string == o.hint_string && usage == o.usage;
    }
    // A view for the engine: valid as long as this stands.
    GDExtensionPropertyInfo _gde() const;
};

struct MethodInfo {
    StringName name;
    PropertyInfo return_val;
    uint32_t flags = METHOD_FLAGS_DEFAULT;
    int id = 0;
    std::vector<PropertyInfo> arguments;
    std::vector<Variant> default_arguments;
    GDExtensionClassMethodArgumentMetadata return_val_metadata = GDEXTENSION_METHOD_ARGUMENT_METADATA_NONE;
    std::vector<GDExtensionClassMethodArgumentMetadata> arguments_metadata;

    MethodInfo() = default;
    MethodInfo(const StringName &p_name) : name(p_name) {}
    template <typename... Args>
    MethodInfo(const StringName &p_name, const Args &...args) : name(p_name), arguments{PropertyInfo(args)...} {}
    MethodInfo(Variant::Type ret) { return_val.type = ret; }
    MethodInfo(Variant::Type ret, const StringName &p_name) : name(p_name) { return_val.type = ret; }
    template <typename... Args>
    MethodInfo(Variant::Type ret, const StringName &p_name, const Args &...args)
        : name(p_name), arguments{PropertyInfo(args)...} {
        return_val.type = ret;
    }
    MethodInfo(const PropertyInfo &ret, const StringName &p_name) : name(p_name), return_val(ret) {}
    template <typename... Args>
    MethodInfo(const PropertyInfo &ret, const StringName &p_name, const Args &...args)
        : name(p_name), return_val(ret), arguments{PropertyInfo(args)...} {}
};

} // namespace godot
