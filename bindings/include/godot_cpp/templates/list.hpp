#pragma once

#include <list>

namespace godot {

// The few operations that property lists need.
template <typename T>
class List {
    std::list<T> items;

public:
    T *push_back(const T &v) {
        items.push_back(v);
        return &items.back();
    }
    T *push_front(const T &v) {
        items.push_front(v);
        return &items.front();
    }
    int size() const { return int(items.size()); }
    bool is_empty() const { return items.empty(); }
    void clear() { items.clear(); }
    auto begin() { return items.begin(); }
    auto end() { return items.end(); }
    auto begin() const { return items.begin(); }
    auto end() const { return items.end(); }
};

} // namespace godot
