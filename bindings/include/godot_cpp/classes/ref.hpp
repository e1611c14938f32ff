#pragma once
// A counted reference. Works with a class that is only declared, so headers may name Ref<T> freely.

#include <cstddef>
#include <utility>

#include <godot_cpp/core/defs.hpp>

namespace godot {

class Object;
class RefCounted;
class Variant;

namespace internal {
bool ref_init(Object *o);
void ref_add(Object *o);
void ref_drop(Object *o); // frees the object with the last count
GodotObject *ref_owner(const Object *o);
Object *ref_from_variant(const Variant &v);
} // namespace internal

template <typename T>
class Ref {
    template <typename U>
    friend class Ref;

    Object *reference = nullptr;

    void take(Object *o) {
        if (o != reference) {
            if (o) {
                internal::ref_add(o);
            }
            Object *old = std::exchange(reference, o);
            if (old) {
                internal::ref_drop(old);
            }
        }
    }

public:
    constexpr Ref() = default;
    constexpr Ref(std::nullptr_t) {}
    Ref(const Ref &o) : reference(o.reference) {
        if (reference) {
            internal::ref_add(reference);
        }
    }
    Ref(Ref &&o) noexcept : reference(std::exchange(o.reference, nullptr)) {}
    Ref(T *object) {
        if (object && internal::ref_init(object)) {
            reference = object;
        }
    }
    template <typename U>
    Ref(const Ref<U> &o) {
        if (T *t = o.reference ? T::template cast_to<T>(o.reference) : nullptr) {
            take(t);
        }
    }
    // Null if the value holds no object of this class.
    Ref(const Variant &v) {
        if (Object *o = internal::ref_from_variant(v)) {
            if (T *t = T::template cast_to<T>(o)) {
                take(t);
            }
        }
    }
    ~Ref() {
        if (reference) {
            internal::ref_drop(reference);
        }
    }
    Ref &operator=(const Ref &o) {
        take(o.reference);
        return *this;
    }
    Ref &operator=(Ref &&o) noexcept {
        std::swap(reference, o.reference);
        return *this;
    }
    template <typename U>
    void operator=(const Ref<U> &o) {
        *this = Ref(o);
    }
    void operator=(T *object) { *this = Ref(object); }
    void operator=(std::nullptr_t) { unref(); }
    void operator=(const Variant &v) { *this = Ref(v); }

    T *ptr() const { return static_cast<T *>(reference); }
    T *operator*() const { return ptr(); }
    T *operator->() const { return ptr(); }
    bool is_valid() const { return reference != nullptr; }
    bool is_null() const { return reference == nullptr; }
    operator Variant() const;

    bool operator==(const T *o) const { return ptr() == o; }
    bool operator!=(const T *o) const { return ptr() != o; }
    bool operator==(const Ref &o) const { return reference == o.reference; }
    bool operator!=(const Ref &o) const { return reference != o.reference; }
    bool operator<(const Ref &o) const { return reference < o.reference; }

    void unref() {
        if (Object *old = std::exchange(reference, nullptr)) {
            internal::ref_drop(old);
        }
    }
    void reference_ptr(T *object) { *this = Ref(object); }
    void ref(const Ref &o) { take(o.reference); }
    template <typename... Args>
    void instantiate(Args &&...args);

    GodotObject *_gde_owner() const { return reference ? internal::ref_owner(reference) : nullptr; }
    // Takes over a count that the engine has already given.
    static Ref _gde_internal_constructor(Object *o) {
        Ref r;
        r.reference = o;
        return r;
    }
};

} // namespace godot

#include <godot_cpp/core/memory.hpp>

namespace godot {

template <typename T>
Ref<T>::operator Variant() const {
    return Variant(reference);
}

template <typename T>
template <typename... Args>
void Ref<T>::instantiate(Args &&...args) {
    *this = Ref(memnew(T(std::forward<Args>(args)...)));
}

} // namespace godot
