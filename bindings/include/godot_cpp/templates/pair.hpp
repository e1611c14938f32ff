#pragma once

#include <utility>

namespace godot {

template <typename F, typename S>
struct Pair {
    F first{};
    S second{};

    Pair() = default;
    Pair(const F &f, const S &s) : first(f), second(s) {}
    bool operator==(const Pair &o) const { return first == o.first && second == o.second; }
    bool operator!=(const Pair &o) const { return !(*this == o); }
};

template <typename K, typename V>
struct KeyValue {
    const K key;
    V value;

    KeyValue(const K &k, const V &v) : key(k), value(v) {}
    KeyValue(const KeyValue &) = default;
};

} // namespace godot
