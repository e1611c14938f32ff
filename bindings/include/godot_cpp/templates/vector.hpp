#pragma once
// A growing array by value.

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace godot {

template <typename T>
class Vector {
    std::vector<T> items;

public:
    using Size = int64_t;

    Vector() = default;
    Vector(std::initializer_list<T> list) : items(list) {}
    Size size() const { return Size(items.size()); }
    bool is_empty() const { return items.empty(); }
    int resize(Size n) {
        items.resize(size_t(n));
        return 0;
    }
    void reserve(Size n) { items.reserve(size_t(n)); }
    void clear() { items.clear(); }
    bool push_back(T v) {
        items.push_back(std::move(v));
        return false;
    }
    bool append(T v) { return push_back(std::move(v)); }
    void append_array(const Vector &o) { items.insert(items.end(), o.items.begin(), o.items.end()); }
    int insert(Size at, T v) {
        items.insert(items.begin() + at, std::move(v));
        return 0;
    }
    void remove_at(Size i) { items.erase(items.begin() + i); }
    bool erase(const T &v) {
        const Size i = find(v);
        if (i >= 0) {
            remove_at(i);
        }
        return i >= 0;
    }
    Size find(const T &v, Size from = 0) const {
        for (Size i = from; i < size(); ++i) {
            if (items[size_t(i)] == v) {
                return i;
            }
        }
        return -1;
    }
    bool has(const T &v) const { return find(v) >= 0; }
    void fill(T v) { std::fill(items.begin(), items.end(), v); }
    void reverse() { std::reverse(items.begin(), items.end()); }
    void sort() { std::sort(items.begin(), items.end()); }
    template <typename C>
    void sort_custom() {
        std::sort(items.begin(), items.end(), C());
    }
    const T &get(Size i) const { return items[size_t(i)]; }
    void set(Size i, const T &v) { items[size_t(i)] = v; }
    T *ptrw() { return items.data(); }
    const T *ptr() const { return items.data(); }
    const T &operator[](Size i) const { return items[size_t(i)]; }
    bool operator==(const Vector &o) const { return items == o.items; }
    auto begin() { return items.begin(); }
    auto end() { return items.end(); }
    auto begin() const { return items.begin(); }
    auto end() const { return items.end(); }

    // vector.write[i] = v, as upstream spells it.
    struct Write {
        Vector *owner;
        T &operator[](Size i) { return owner->items[size_t(i)]; }
    };
    Write write{this};
    Vector(const Vector &o) : items(o.items) {}
    Vector(Vector &&o) noexcept : items(std::move(o.items)) {}
    Vector &operator=(const Vector &o) {
        items = o.items;
        return *this;
    }
    Vector &operator=(Vector &&o) noexcept {
        items = std::move(o.items);
        return *this;
    }
};

} // namespace godot
