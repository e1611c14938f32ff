#pragma once
// What the ten packed arrays share; each has its own header with its methods.

#include <initializer_list>

#include <godot_cpp/variant/opaque.hpp>

namespace godot {

namespace internal {

template <typename Self, typename T, GDExtensionVariantType TYPE>
class PackedBase : public Opaque<TYPE, 2> {
protected:
    constexpr PackedBase() = default;
    void fill_from(std::initializer_list<T> items) {
        if (items.size()) {
            self().resize(int64_t(items.size()));
            T *to = ptrw();
            for (const T &item : items) {
                *to++ = item;
            }
        }
    }

private:
    Self &self() { return static_cast<Self &>(*this); }
    const Self &self() const { return static_cast<const Self &>(*this); }
    // Stands in for elements out of bounds.
    static T &nowhere(int64_t i) {
        out_of_bounds(i);
        alignas(T) static unsigned char zero[sizeof(T)];
        std::memset(zero, 0, sizeof(zero));
        return *reinterpret_cast<T *>(zero);
    }

public:
    // The elements in place; null if empty.
    const T *ptr() const { return static_cast<const T *>(this->words[1]); }
    // The same, after making sure that nobody else shares them.
    T *ptrw() { return ptr() ? static_cast<T *>(Self::element(this->words, 0)) : nullptr; }
    const T &operator[](int64_t i) const {
        const void *p = Self::element_const(this->words, i);
        return likely(p != nullptr) ? *static_cast<const T *>(p) : nowhere(i);
    }
    T &operator[](int64_t i) {
        void *p = Self::element(this->words, i);
        return likely(p != nullptr) ? *static_cast<T *>(p) : nowhere(i);
    }
    using Iterator = T *;
    using ConstIterator = const T *;
    T *begin() { return ptrw(); }
    T *end() { return ptrw() + self().size(); }
    const T *begin() const { return ptr(); }
    const T *end() const { return ptr() + self().size(); }

    bool operator==(const Self &o) const {
        const int64_t n = self().size();
        if (n != o.size()) {
            return false;
        }
        for (int64_t i = 0; i < n; ++i) {
            if (!(ptr()[i] == o.ptr()[i])) {
                return false;
            }
        }
        return true;
    }
    bool operator!=(const Self &o) const { return !(*this == o); }
    Self operator+(const Self &o) const {
        Self sum = self();
        sum.append_array(o);
        return sum;
    }
    void operator+=(const Self &o) { self().append_array(o); }
};

} // namespace internal
} // namespace godot

#define GDE_PACKED_ARRAY(m_class, m_type, m_enum, m_accessor)                                                          \
    friend class Variant;                                                                                              \
    friend class internal::PackedBase<m_class, m_type, m_enum>;                                                        \
    static void *element(void *self, int64_t i) {                                                                      \
        return internal::gde.m_accessor(self, i);                                                                      \
    }                                                                                                                  \
    static const void *element_const(const void *self, int64_t i) {                                                    \
        return internal::gde.m_accessor##_const(self, i);                                                              \
    }                                                                                                                  \
                                                                                                                       \
public:                                                                                                                \
    constexpr m_class() = default;                                                                                     \
    GDE_FROM_VARIANT(m_class)                                                                                          \
    m_class(std::initializer_list<m_type> items) {                                                                     \
        fill_from(items);                                                                                              \
    }                                                                                                                  \
    m_class(const Array &from) {                                                                                       \
        const void *args[] = {internal::native_ptr_of(from)};                                                          \
        construct(2, args);                                                                                            \
    }
