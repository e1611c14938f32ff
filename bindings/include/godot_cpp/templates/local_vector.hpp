#pragma once
// A growing array with 32-bit indices.

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

namespace godot {

template <typename T, typename U = uint32_t>
class LocalVector {
    std::vector<T> items;

public:
    LocalVector() = default;
    LocalVector(std::initializer_list<T> list) : items(list) {}
    U size() const { return U(items.size()); }
    bool is_empty() const { return items.empty(); }
    void resize(U n) { items.resize(n); }
    void reserve(U n) { items.reserve(n); }
    void clear() { items.clear(); }
    void reset() { std::vector<T>().swap(items); }
    void push_back(T v) { items.push_back(std::move(v)); }
    void insert(U at, T v) { items.insert(items.begin() + at, std::move(v)); }
    void remove_at(U i) { items.erase(items.begin() + i); }
    // Quick: the last element takes the place.
    void remove_at_unordered(U i) {
        items[i] = std::move(items.back());
        items.pop_back();
    }
    bool erase(const T &v) {
        const int64_t i = find(v);
        if (i >= 0) {
            remove_at(U(i));
        }
        return i >= 0;
    }
    int64_t find(const T &v, U from = 0) const {
        for (U i = from; i < size(); ++i) {
            if (items[i] == v) {
                return int64_t(i);
            }
        }
        return -1;
    }
    bool has(const T &v) const { return find(v) >= 0; }
    void sort() { std::sort(items.begin(), items.end()); }
    template <typename C>
    void sort_custom() {
        std::sort(items.begin(), items.end(), C());
    }
    T *ptr() { return items.data(); }
    const T *ptr() const { return items.data(); }
    T &operator[](U i) { return items[i]; }
    const T &operator[](U i) const { return items[i]; }
    auto begin() { return items.begin(); }
    auto end() { return items.end(); }
    auto begin() const { return items.begin(); }
    auto end() const { return items.end(); }
};

} // namespace godot
