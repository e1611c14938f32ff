#pragma once
// What generated sources lean on.

#include <array>
#include <atomic>
#include <utility>

#include <godot_cpp/classes/ref.hpp>
#include <godot_cpp/core/bit_field.hpp>
#include <godot_cpp/core/object.hpp>
#include <godot_cpp/variant/callable_custom.hpp>
#include <godot_cpp/variant/typed_array.hpp>
#include <godot_cpp/variant/typed_dictionary.hpp>

namespace godot::internal {

// The memory that the engine sees of a value.
template <typename T>
inline void *address_of(const T &v) {
    if constexpr (requires { v._native_ptr(); }) {
        return v._native_ptr();
    } else {
        return const_cast<T *>(&v);
    }
}

// Prints an error if the engine refuses the call.
Variant call_vararg(MethodRef &m, GodotObject *owner, const Variant **args, int count);

// A call by name (the first argument) of an object of ours goes straight to the bound method, unless a script overrides
// it. False if the engine has to look for the method.
bool call_directly(Object *self, const Variant **args, int count, Variant &ret);

// A singleton, asked for once and forgotten when the engine frees it.
struct SingletonRef {
    StaticName name;
    std::atomic<Wrapped *> object{nullptr};

    Wrapped *get() {
        Wrapped *w = object.load(std::memory_order_relaxed);
        return likely(w != nullptr) ? w : fetch();
    }
    void drop(const Wrapped *w) {
        if (object.load(std::memory_order_relaxed) == w) {
            object.store(nullptr, std::memory_order_relaxed);
        }
    }

private:
    Wrapped *fetch();
};

// Which wrapper class an engine class gets: its own if it was generated, else its nearest base.
struct StandIn {
    const char *name;
    ClassRecord *record;
};
extern const StandIn stand_ins[]; // sorted by name
extern const int stand_in_count;

} // namespace godot::internal
