#pragma once

#include <initializer_list>

#include <godot_cpp/templates/pair.hpp>
#include <godot_cpp/variant/internal/string_name_class.hpp>

namespace godot {

class Dictionary : public internal::Opaque<GDEXTENSION_VARIANT_TYPE_DICTIONARY, 1, true> {
    friend class Variant;

public:
    constexpr Dictionary() = default;
    GDE_FROM_VARIANT(Dictionary)
    Dictionary(std::initializer_list<KeyValue<Variant, Variant>> entries);
    // A typed view: the same dictionary if the types fit, else a converted copy.
    Dictionary(const Dictionary &base, int64_t key_type, const StringName &key_class_name, const Variant &key_script,
               int64_t value_type, const StringName &value_class_name, const Variant &value_script);

    // The value in place; a missing key reads as null, without being added.
    const Variant &operator[](const Variant &key) const;
    // The value in place; a missing key is added with null.
    Variant &operator[](const Variant &key);
    // Null where the key is missing.
    const Variant *getptr(const Variant &key) const;

    bool operator==(const Dictionary &o) const;
    bool operator!=(const Dictionary &o) const { return !(*this == o); }

    void set_typed(uint32_t key_type, const StringName &key_class_name, const Variant &key_script, uint32_t value_type,
                   const StringName &value_class_name, const Variant &value_script);

    // Range-for goes over keys as they were when the loop began.
    struct Iterator;
    Iterator begin() const;
    Iterator end() const;

#include <godot_cpp/gen/dictionary_methods.inc>
};

} // namespace godot
