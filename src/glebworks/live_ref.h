#pragma once
// A pointer to an engine object that somebody else owns and may free at any time: get() is null from then on.

#include <cstdint>

#include <godot_cpp/core/object.hpp>

namespace tilm {

template <class T>
class LiveRef {
public:
    LiveRef() = default;
    LiveRef(T *object) { set(object); }

    void set(T *object) {
        pointer = object;
        instance = object == nullptr ? 0 : static_cast<uint64_t>(object->get_instance_id());
    }
    T *get() const { return instance != 0 && ::godot::ObjectDB::get_instance(instance) != nullptr ? pointer : nullptr; }
    uint64_t id() const { return instance; }
    explicit operator bool() const { return get() != nullptr; }

private:
    T *pointer = nullptr;
    uint64_t instance = 0;
};

} // namespace tilm
