#pragma once
// callable_mp: a Callable straight to a C++ method, and callable_mp_static to a function. Calls are checked as calls of
// bound methods are.

#include <godot_cpp/core/internal/method_binding.hpp>
#include <godot_cpp/variant/callable_custom.hpp>

namespace godot {

namespace internal {

// Two are equal if object and method are.
class MethodCallable : public CallableCustom {
public:
    uint32_t hash() const override;
    String get_as_text() const override { return text; }
    CompareEqualFunc get_compare_equal_func() const override { return &equal; }
    CompareLessFunc get_compare_less_func() const override { return &less; }
    bool is_valid() const override;
    ObjectID get_object() const override { return ObjectID(object_id); }
    int get_argument_count(bool &r_is_valid) const override {
        r_is_valid = true;
        return wanted;
    }
    void call(const Variant **args, int count, Variant &ret, GDExtensionCallError &error) const override;

protected:
    MethodCallable(Wrapped *p_self, const char *p_text, const ArgCheck *p_checks, int p_wanted);
    virtual void run(const Variant *const *args, Variant &ret) const = 0;

    template <typename M>
    void set_key(M m) {
        static_assert(sizeof(M) <= sizeof(key));
        std::memcpy(key, &m, sizeof(M));
    }

    Wrapped *self;
    uint64_t object_id;
    uint64_t key[2] = {};
    const char *text;
    const ArgCheck *checks;
    int wanted;

private:
    static bool equal(const CallableCustom *a, const CallableCustom *b);
    static bool less(const CallableCustom *a, const CallableCustom *b);
};

template <typename M, typename R, typename... P>
class MethodCallableOf final : public MethodCallable {
    M method;

    void run(const Variant *const *args, Variant &ret) const override {
        if constexpr (std::is_member_function_pointer_v<M>) {
            Object *o = static_cast<Object *>(self);
            M m = method;
            invoke_variant<R>([o, m](P... p) -> R { return (o->*m)(std::forward<P>(p)...); }, args, ret,
                              std::index_sequence_for<P...>(), std::type_identity<void(P...)>());
        } else {
            invoke_variant<R>(method, args, ret, std::index_sequence_for<P...>(), std::type_identity<void(P...)>());
        }
    }

public:
    MethodCallableOf(Wrapped *p_self, M m, const char *p_text)
        : MethodCallable(p_self, p_text, ArgChecks<P...>::table, sizeof...(P)), method(m) {
        set_key(m);
    }
};

} // namespace internal

template <typename I, typename T, typename R, typename... P>
Callable create_custom_callable_function_pointer(I *instance, const char *text, R (T::*method)(P...)) {
    static_assert(std::is_base_of_v<T, I>);
    using M = R (Object::*)(P...);
    return Callable(new internal::MethodCallableOf<M, R, P...>(instance, static_cast<M>(method), text));
}
template <typename I, typename T, typename R, typename... P>
Callable create_custom_callable_function_pointer(I *instance, const char *text, R (T::*method)(P...) const) {
    static_assert(std::is_base_of_v<T, I>);
    using M = R (Object::*)(P...) const;
    return Callable(new internal::MethodCallableOf<M, R, P...>(const_cast<std::remove_const_t<I> *>(instance),
                                                               static_cast<M>(method), text));
}
template <typename R, typename... P>
Callable create_custom_callable_static_function_pointer(const char *text, R (*method)(P...)) {
    return Callable(new internal::MethodCallableOf<R (*)(P...), R, P...>(nullptr, method, text));
}

#define callable_mp(I, M) ::godot::create_custom_callable_function_pointer(I, #M, M)
#define callable_mp_static(M) ::godot::create_custom_callable_static_function_pointer(#M, M)

} // namespace godot
