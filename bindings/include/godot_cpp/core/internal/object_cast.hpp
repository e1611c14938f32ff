#pragma once

#include <type_traits>

#include <godot_cpp/classes/object.hpp>
#include <godot_cpp/core/memory.hpp>
#include <godot_cpp/core/object_id.hpp>

namespace godot {

// Engine and game classes are told apart by their records, other C++ classes (interfaces) by dynamic_cast.
template <typename T>
T *Object::cast_to(Object *object) {
    if constexpr (requires { requires std::is_same_v<typename T::self_type, T>; }) {
        return object && object->_gde_class()->inherits(&T::_gde_record) ? static_cast<T *>(object) : nullptr;
    } else {
        return dynamic_cast<T *>(object);
    }
}
template <typename T>
const T *Object::cast_to(const Object *object) {
    return cast_to<T>(const_cast<Object *>(object));
}

class ObjectDB {
public:
    // Null if the object is gone.
    static Object *get_instance(uint64_t id) {
        return id ? static_cast<Object *>(internal::wrap_object(internal::gde.object_get_instance_from_id(id)))
                  : nullptr;
    }
    static Object *get_instance(ObjectID id) { return get_instance(uint64_t(id)); }
};

template <typename T>
T *cast_to(Object *object) {
    return Object::cast_to<T>(object);
}

} // namespace godot
