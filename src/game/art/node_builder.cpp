#include "game/art/node_builder.h"

#include <godot_cpp/variant/callable_custom.hpp>

namespace tilm {
namespace {

class NodeBuilder : public CallableCustom {
public:
    explicit NodeBuilder(std::function<Node3D *()> f) : fn(std::move(f)) {}

    uint32_t hash() const override { return uint32_t(reinterpret_cast<uintptr_t>(this) >> 4); }
    String get_as_text() const override { return "node builder"; }
    CompareEqualFunc get_compare_equal_func() const override { return &same; }
    CompareLessFunc get_compare_less_func() const override { return &before; }
    bool is_valid() const override { return bool(fn); }
    ObjectID get_object() const override { return ObjectID(); }
    void call(const Variant **, int, Variant &result, GDExtensionCallError &error) const override {
        error.error = GDEXTENSION_CALL_OK;
        result = fn ? fn() : nullptr;
    }

private:
    static bool same(const CallableCustom *a, const CallableCustom *b) { return a == b; }
    static bool before(const CallableCustom *a, const CallableCustom *b) { return a < b; }

    std::function<Node3D *()> fn;
};

} // namespace

Callable make_node_builder(std::function<Node3D *()> fn) {
    return Callable(memnew(NodeBuilder(std::move(fn))));
}

} // namespace tilm
