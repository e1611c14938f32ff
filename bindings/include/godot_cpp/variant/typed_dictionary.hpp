#pragma once

#include <godot_cpp/variant/typed_array.hpp>

namespace godot {

template <typename K, typename V>
class TypedDictionary : public Dictionary {
    void set_type() {
        set_typed(internal::ElementOf<K>::type, internal::ElementOf<K>::class_name(), Variant(),
                  internal::ElementOf<V>::type, internal::ElementOf<V>::class_name(), Variant());
    }

public:
    TypedDictionary() { set_type(); }
    TypedDictionary(const Dictionary &d) {
        set_type();
        if (is_same_typed(d)) {
            Dictionary::operator=(d);
        } else {
            assign(d);
        }
    }
    TypedDictionary(const Variant &v) : TypedDictionary(Dictionary(v)) {}
    void operator=(const Dictionary &d) { Dictionary::operator=(TypedDictionary(d)); }
    TypedDictionary(const TypedDictionary &) = default;
    TypedDictionary &operator=(const TypedDictionary &) = default;

    static TypedDictionary _gde_adopt(Dictionary &&d) { return TypedDictionary(std::move(d), 0); }

private:
    TypedDictionary(Dictionary &&d, int) : Dictionary(std::move(d)) {}
};

} // namespace godot
