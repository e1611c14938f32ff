#pragma once

#include <godot_cpp/core/defs.hpp>

namespace godot {

// A handle of the engine's servers.
class RID {
    uint64_t id = 0;

public:
    constexpr RID() = default;

    GDExtensionTypePtr _native_ptr() const { return const_cast<uint64_t *>(&id); }
    int64_t get_id() const { return int64_t(id); }
    bool is_valid() const { return id != 0; }
    bool operator==(const RID &o) const { return id == o.id; }
    bool operator!=(const RID &o) const { return id != o.id; }
    bool operator<(const RID &o) const { return id < o.id; }
    bool operator>(const RID &o) const { return id > o.id; }
};

} // namespace godot
