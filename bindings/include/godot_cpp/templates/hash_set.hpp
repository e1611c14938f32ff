#pragma once

#include <initializer_list>
#include <unordered_set>

#include <godot_cpp/templates/hash_map.hpp>

namespace godot {

template <typename T, typename Hasher = HashMapHasherDefault>
class HashSet {
    std::unordered_set<T, Hasher> items;

public:
    using Iterator = typename std::unordered_set<T, Hasher>::iterator;

    HashSet() = default;
    HashSet(std::initializer_list<T> list) : items(list) {}
    uint32_t size() const { return uint32_t(items.size()); }
    bool is_empty() const { return items.empty(); }
    bool has(const T &v) const { return items.count(v) != 0; }
    Iterator insert(const T &v) { return items.insert(v).first; }
    bool erase(const T &v) { return items.erase(v) != 0; }
    void remove(Iterator it) { items.erase(it); }
    Iterator find(const T &v) const { return items.find(v); }
    void clear() { items.clear(); }
    void reserve(uint32_t n) { items.reserve(n); }
    Iterator begin() const { return items.begin(); }
    Iterator end() const { return items.end(); }
};

} // namespace godot
