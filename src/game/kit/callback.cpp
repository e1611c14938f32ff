// UI::callback: C++ closures as engine callables.

#include <utility>

#include <godot_cpp/core/object.hpp>
#include <godot_cpp/variant/callable.hpp>
#include <godot_cpp/variant/callable_custom.hpp>

#include "game/kit/ui.h"

namespace tilm {
namespace {

class Closure : public CallableCustom {
public:
    Closure(Object *owner, std::function<void(const Variant &)> fn)
        : owner_id(owner->get_instance_id()), fn(std::move(fn)) {}

    uint32_t hash() const override { return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(this) >> 4); }
    String get_as_text() const override { return "closure"; }
    CompareEqualFunc get_compare_equal_func() const override { return &same; }
    CompareLessFunc get_compare_less_func() const override { return &before; }
    bool is_valid() const override { return ObjectDB::get_instance(owner_id) != nullptr; }
    ObjectID get_object() const override { return ObjectID(owner_id); }

    void call(const Variant **arguments, int count, Variant &result, GDExtensionCallError &error) const override {
        error.error = GDEXTENSION_CALL_OK;
        result = Variant();
        if (is_valid()) {
            fn(count > 0 ? *arguments[0] : Variant());
        }
    }

private:
    static bool same(const CallableCustom *a, const CallableCustom *b) { return a == b; }
    static bool before(const CallableCustom *a, const CallableCustom *b) { return a < b; }

    uint64_t owner_id;
    std::function<void(const Variant &)> fn;
};

} // namespace

Callable UI::callback(Object *owner, std::function<void()> fn) {
    return Callable(memnew(Closure(owner, [fn = std::move(fn)](const Variant &) { fn(); })));
}

Callable UI::callback_arg(Object *owner, std::function<void(const Variant &)> fn) {
    return Callable(memnew(Closure(owner, std::move(fn))));
}

} // namespace tilm
