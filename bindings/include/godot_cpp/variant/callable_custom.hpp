#pragma once

#include <godot_cpp/core/object_id.hpp>
#include <godot_cpp/variant/string_name.hpp>

namespace godot {

// A Callable with a C++ body: derive, then Callable(memnew(MyCallable)).
class CallableCustom {
public:
    using CompareEqualFunc = bool (*)(const CallableCustom *a, const CallableCustom *b);
    using CompareLessFunc = bool (*)(const CallableCustom *a, const CallableCustom *b);

    virtual ~CallableCustom() = default;
    virtual uint32_t hash() const = 0;
    virtual String get_as_text() const = 0;
    virtual CompareEqualFunc get_compare_equal_func() const = 0;
    virtual CompareLessFunc get_compare_less_func() const = 0;
    virtual bool is_valid() const { return true; }
    // The object that the callable speaks for, 0 for none.
    virtual ObjectID get_object() const = 0;
    virtual int get_argument_count(bool &r_is_valid) const {
        r_is_valid = false;
        return 0;
    }
    virtual void call(const Variant **args, int count, Variant &ret, GDExtensionCallError &error) const = 0;
};

} // namespace godot
