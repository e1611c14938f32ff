#pragma once
// A short list with fixed room, for tables that are known at compile time.

#include <cstddef>
#include <initializer_list>

namespace tilm::rules {

template <class T, size_t N>
class Few {
public:
    constexpr Few() = default;
    // Too long a list does not compile in a constant table: the index leaves the array.
    constexpr Few(std::initializer_list<T> list) {
        for (const T &v : list) {
            items[count++] = v;
        }
    }

    constexpr const T *begin() const { return items; }
    constexpr const T *end() const { return items + count; }
    constexpr size_t size() const { return count; }
    constexpr bool empty() const { return count == 0; }
    constexpr const T &operator[](size_t i) const { return items[i]; }

private:
    T items[N] = {};
    size_t count = 0;
};

} // namespace tilm::rules
