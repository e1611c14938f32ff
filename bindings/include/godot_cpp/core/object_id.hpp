#pragma once

#include <godot_cpp/core/defs.hpp>

namespace godot {

// The number by which an object can be asked for without keeping it alive.
class ObjectID {
    uint64_t id = 0;

public:
    constexpr ObjectID() = default;
    constexpr explicit ObjectID(uint64_t p_id) : id(p_id) {}
    constexpr explicit ObjectID(int64_t p_id) : id(uint64_t(p_id)) {}
    constexpr bool is_ref_counted() const { return (id >> 63) != 0; }
    constexpr bool is_valid() const { return id != 0; }
    constexpr bool is_null() const { return id == 0; }
    constexpr operator uint64_t() const { return id; }
    constexpr operator int64_t() const { return int64_t(id); }
    constexpr bool operator==(const ObjectID &o) const { return id == o.id; }
    constexpr bool operator!=(const ObjectID &o) const { return id != o.id; }
    constexpr bool operator<(const ObjectID &o) const { return id < o.id; }
    void operator=(uint64_t p_id) { id = p_id; }
};

} // namespace godot
