#pragma once
// memnew and memdelete. Objects of the engine go back to the engine, plain ones to the heap.

#include <new>
#include <type_traits>
#include <utility>

#include <godot_cpp/classes/wrapped.hpp>

inline void *operator new(size_t size, const char *, const char *) noexcept(false) {
    return ::operator new(size);
}
inline void operator delete(void *mem, const char *, const char *) {
    ::operator delete(mem);
}

namespace godot {

class Memory {
public:
    static void *alloc_static(size_t bytes, bool = false) { return internal::gde.mem_alloc(bytes); }
    static void *realloc_static(void *p, size_t bytes, bool = false) { return internal::gde.mem_realloc(p, bytes); }
    static void free_static(void *p, bool = false) { internal::gde.mem_free(p); }
};

namespace internal {

template <typename T>
inline void pre_initialize() {
    if constexpr (std::is_base_of_v<Wrapped, T>) {
        next_construction() = {&T::_gde_record, nullptr};
    }
}

template <typename T>
inline T *finish(T *object) {
    if constexpr (std::is_base_of_v<Wrapped, T>) {
        post_initialize(object);
    }
    return object;
}

} // namespace internal

#define memnew(m_class)                                                                                                \
    (::godot::internal::pre_initialize<std::remove_pointer_t<decltype(new ("", "") m_class)>>(),                       \
     ::godot::internal::finish(new ("", "") m_class))

#define memnew_placement(m_placement, m_class) ::godot::internal::finish(new (m_placement) m_class)

template <typename T>
void memdelete(T *object) {
    if constexpr (std::is_base_of_v<Wrapped, std::remove_const_t<T>>) {
        internal::gde.object_destroy(object->_owner);
    } else {
        delete object;
    }
}

template <typename T>
void memdelete_safe(T *&object) {
    if (object) {
        memdelete(object);
        object = nullptr;
    }
}
#define memdelete_notnull(m_v)                                                                                         \
    do {                                                                                                               \
        if (m_v) {                                                                                                     \
            ::godot::memdelete(m_v);                                                                                   \
        }                                                                                                              \
    } while (false)

#define memalloc(m_size) ::godot::Memory::alloc_static(m_size)
#define memrealloc(m_mem, m_size) ::godot::Memory::realloc_static(m_mem, m_size)
#define memfree(m_mem) ::godot::Memory::free_static(m_mem)
#define memnew_arr(m_class, m_count) (new m_class[m_count])
template <typename T>
void memdelete_arr(T *p) {
    delete[] p;
}

} // namespace godot
