#pragma once
// A hash map that keeps the order of insertion.

#include <functional>
#include <initializer_list>
#include <list>
#include <type_traits>
#include <unordered_map>

#include <godot_cpp/templates/pair.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

// Hashes of the types that serve as keys.
struct HashMapHasherDefault {
    template <typename T>
    static uint32_t hash(const T &v) {
        if constexpr (std::is_same_v<T, StringName>) {
            return uint32_t(std::hash<const void *>()(v.data_unique_pointer()));
        } else if constexpr (std::is_same_v<T, String> || std::is_same_v<T, Variant> || std::is_same_v<T, NodePath>) {
            return uint32_t(v.hash());
        } else if constexpr (std::is_same_v<T, RID>) {
            return hash_murmur3(uint32_t(v.get_id()) ^ uint32_t(v.get_id() >> 32));
        } else if constexpr (std::is_same_v<T, Vector2i>) {
            return hash_murmur3(uint32_t(v.x) * 31u + uint32_t(v.y));
        } else if constexpr (std::is_same_v<T, Vector3i>) {
            return hash_murmur3((uint32_t(v.x) * 31u + uint32_t(v.y)) * 31u + uint32_t(v.z));
        } else if constexpr (std::is_same_v<T, ObjectID>) {
            return hash_murmur3(uint32_t(uint64_t(v)) ^ uint32_t(uint64_t(v) >> 32));
        } else {
            return uint32_t(std::hash<T>()(v));
        }
    }
    template <typename T>
    size_t operator()(const T &v) const {
        return hash(v);
    }
};

template <typename K, typename V, typename Hasher = HashMapHasherDefault>
class HashMap {
    using Items = std::list<KeyValue<K, V>>;
    Items items;
    std::unordered_map<K, typename Items::iterator, Hasher> index;

    template <typename Base>
    struct It : Base {
        It() = default;
        It(Base b, bool v) : Base(b), valid(v) {}
        It(Base b) : Base(b), valid(true) {}
        explicit operator bool() const { return valid; }
        bool valid = false;
    };

public:
    using Iterator = It<typename Items::iterator>;
    using ConstIterator = It<typename Items::const_iterator>;

    HashMap() = default;
    HashMap(std::initializer_list<KeyValue<K, V>> list) {
        for (const KeyValue<K, V> &e : list) {
            insert(e.key, e.value);
        }
    }
    HashMap(const HashMap &o) { *this = o; }
    HashMap(HashMap &&) noexcept = default;
    HashMap &operator=(HashMap &&) noexcept = default;
    HashMap &operator=(const HashMap &o) {
        if (this != &o) {
            clear();
            for (const KeyValue<K, V> &e : o.items) {
                insert(e.key, e.value);
            }
        }
        return *this;
    }

    uint32_t size() const { return uint32_t(items.size()); }
    bool is_empty() const { return items.empty(); }
    void clear() {
        index.clear();
        items.clear();
    }
    void reserve(uint32_t n) { index.reserve(n); }
    bool has(const K &k) const { return index.count(k) != 0; }
    V *getptr(const K &k) {
        const auto it = index.find(k);
        return it == index.end() ? nullptr : &it->second->value;
    }
    const V *getptr(const K &k) const {
        const auto it = index.find(k);
        return it == index.end() ? nullptr : &it->second->value;
    }
    const V &get(const K &k) const {
        const V *v = getptr(k);
        CRASH_COND_MSG(!v, "The map has no such key.");
        return *v;
    }
    V &operator[](const K &k) {
        V *v = getptr(k);
        return v ? *v : insert(k, V())->value;
    }
    const V &operator[](const K &k) const { return get(k); }
    Iterator insert(const K &k, const V &v) {
        const auto it = index.find(k);
        if (it != index.end()) {
            it->second->value = v;
            return it->second;
        }
        items.emplace_back(k, v);
        const auto last = std::prev(items.end());
        index.emplace(k, last);
        return last;
    }
    bool erase(const K &k) {
        const auto it = index.find(k);
        if (it == index.end()) {
            return false;
        }
        items.erase(it->second);
        index.erase(it);
        return true;
    }
    void remove(const Iterator &it) { erase(it->key); }
    Iterator find(const K &k) {
        const auto it = index.find(k);
        return it == index.end() ? Iterator(items.end(), false) : Iterator(it->second);
    }
    ConstIterator find(const K &k) const {
        const auto it = index.find(k);
        return it == index.end() ? ConstIterator(items.end(), false) : ConstIterator(it->second);
    }
    Iterator begin() { return {items.begin(), !items.empty()}; }
    Iterator end() { return {items.end(), false}; }
    ConstIterator begin() const { return {items.begin(), !items.empty()}; }
    ConstIterator end() const { return {items.end(), false}; }
};

} // namespace godot
