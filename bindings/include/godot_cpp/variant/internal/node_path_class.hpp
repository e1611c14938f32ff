#pragma once

#include <godot_cpp/variant/internal/string_name_class.hpp>

namespace godot {

class NodePath : public internal::Opaque<GDEXTENSION_VARIANT_TYPE_NODE_PATH, 1> {
    friend class Variant;

public:
    constexpr NodePath() = default;
    GDE_FROM_VARIANT(NodePath)
    NodePath(const String &path);
    NodePath(const char *path) : NodePath(String(path)) {}

    bool operator==(const NodePath &o) const;
    bool operator!=(const NodePath &o) const { return !(*this == o); }

#include <godot_cpp/gen/node_path_methods.inc>
};

} // namespace godot
