#pragma once
// One object for each bound method. Calls with Variants are checked here, in every build: their number and types may
// come from anybody.

#include <utility>
#include <vector>

#include <godot_cpp/core/internal/type_traits.hpp>

namespace godot {

class MethodBind {
public:
    StringName name;
    const internal::ArgCheck *checks = nullptr;
    int argument_count = 0;
    uint32_t flags = GDEXTENSION_METHOD_FLAGS_DEFAULT;
    bool is_static = false;
    bool has_return = false;
    bool is_vararg = false;
    std::vector<Variant> default_arguments; // of the last parameters
    // Only for telling the engine: the return value first, then the parameters.
    std::vector<PropertyInfo> infos;
    std::vector<GDExtensionClassMethodArgumentMetadata> metadata;

    virtual ~MethodBind() = default;
    // The arguments are complete and fit.
    virtual void call(Wrapped *self, const Variant *const *args, int64_t count, Variant &ret,
                      GDExtensionCallError &error) const = 0;
    virtual void ptrcall(Wrapped *self, const void *const *args, void *ret) const = 0;

    StringName get_name() const { return name; }
    int get_argument_count() const { return argument_count; }

    static void call_from_engine(void *bind, GDExtensionClassInstancePtr self, const GDExtensionConstVariantPtr *args,
                                 GDExtensionInt count, GDExtensionVariantPtr ret, GDExtensionCallError *error);
    static void ptrcall_from_engine(void *bind, GDExtensionClassInstancePtr self, const GDExtensionConstTypePtr *args,
                                    GDExtensionTypePtr ret);

    static constexpr int MAX_ARGUMENTS = 24;
};

namespace internal {

template <typename R, typename F, size_t... I, typename... P>
void invoke_variant(const F &f, const Variant *const *args, Variant &ret, std::index_sequence<I...>,
                    std::type_identity<void(P...)>) {
    if constexpr (std::is_void_v<R>) {
        f(TypeOf<P>::from_variant(*args[I])...);
    } else {
        ret = Variant(f(TypeOf<P>::from_variant(*args[I])...));
    }
}
template <typename R, typename F, size_t... I, typename... P>
void invoke_ptr(const F &f, const void *const *args, void *ret, std::index_sequence<I...>,
                std::type_identity<void(P...)>) {
    if constexpr (std::is_void_v<R>) {
        f(TypeOf<P>::from_ptr(args[I])...);
    } else if (ret) {
        TypeOf<R>::to_ptr(ret, f(TypeOf<P>::from_ptr(args[I])...));
    } else {
        f(TypeOf<P>::from_ptr(args[I])...);
    }
}

// M: pointer to a method of Object (cast from the real class), or to a free function.
template <typename M, typename R, typename... P>
class MethodBindOf final : public MethodBind {
    M method;

    auto on(Wrapped *self) const {
        if constexpr (std::is_member_function_pointer_v<M>) {
            return [self, this](P... p) -> R { return (static_cast<Object *>(self)->*method)(std::forward<P>(p)...); };
        } else {
            (void)self;
            return [this](P... p) -> R { return method(std::forward<P>(p)...); };
        }
    }

public:
    explicit MethodBindOf(M m) : method(m) {
        static_assert(sizeof...(P) <= MAX_ARGUMENTS);
        checks = ArgChecks<P...>::table;
        argument_count = sizeof...(P);
        has_return = !std::is_void_v<R>;
        is_static = !std::is_member_function_pointer_v<M>;
        infos = {TypeOf<R>::info(), TypeOf<P>::info()...};
        metadata = {TypeOf<R>::metadata(), TypeOf<P>::metadata()...};
    }
    void call(Wrapped *self, const Variant *const *args, int64_t, Variant &ret, GDExtensionCallError &) const override {
        invoke_variant<R>(on(self), args, ret, std::index_sequence_for<P...>(), std::type_identity<void(P...)>());
    }
    void ptrcall(Wrapped *self, const void *const *args, void *ret) const override {
        invoke_ptr<R>(on(self), args, ret, std::index_sequence_for<P...>(), std::type_identity<void(P...)>());
    }
};

template <typename R>
class MethodBindVararg final : public MethodBind {
public:
    using Method = R (Object::*)(const Variant **, GDExtensionInt, GDExtensionCallError &);

    explicit MethodBindVararg(Method m) : method(m) {
        is_vararg = true;
        has_return = !std::is_void_v<R>;
    }
    void call(Wrapped *self, const Variant *const *args, int64_t count, Variant &ret,
              GDExtensionCallError &error) const override {
        auto list = const_cast<const Variant **>(args);
        if constexpr (std::is_void_v<R>) {
            (static_cast<Object *>(self)->*method)(list, count, error);
        } else {
            ret = Variant((static_cast<Object *>(self)->*method)(list, count, error));
        }
    }
    void ptrcall(Wrapped *, const void *const *, void *) const override {
        ERR_PRINT("A method with a variable number of arguments cannot be called by pointer.");
    }

private:
    Method method;
};

} // namespace internal

template <typename T, typename R, typename... P>
MethodBind *create_method_bind(R (T::*m)(P...)) {
    using M = R (Object::*)(P...);
    return new internal::MethodBindOf<M, R, P...>(static_cast<M>(m));
}
template <typename T, typename R, typename... P>
MethodBind *create_method_bind(R (T::*m)(P...) const) {
    using M = R (Object::*)(P...) const;
    auto *bind = new internal::MethodBindOf<M, R, P...>(static_cast<M>(m));
    bind->flags |= GDEXTENSION_METHOD_FLAG_CONST;
    return bind;
}
template <typename R, typename... P>
MethodBind *create_static_method_bind(R (*m)(P...)) {
    auto *bind = new internal::MethodBindOf<R (*)(P...), R, P...>(m);
    bind->flags |= GDEXTENSION_METHOD_FLAG_STATIC;
    return bind;
}

namespace internal {

// The thunk behind an overridden engine virtual.
template <auto M>
struct Virtual;
template <typename C, typename R, typename... P, R (C::*M)(P...)>
struct Virtual<M> {
    static void thunk(Wrapped *self, const void *const *args, void *ret) {
        C *c = static_cast<C *>(self);
        invoke_ptr<R>([c](P... p) -> R { return (c->*M)(std::forward<P>(p)...); }, args, ret,
                      std::index_sequence_for<P...>(), std::type_identity<void(P...)>());
    }
};
template <typename C, typename R, typename... P, R (C::*M)(P...) const>
struct Virtual<M> {
    static void thunk(Wrapped *self, const void *const *args, void *ret) {
        const C *c = static_cast<const C *>(self);
        invoke_ptr<R>([c](P... p) -> R { return (c->*M)(std::forward<P>(p)...); }, args, ret,
                      std::index_sequence_for<P...>(), std::type_identity<void(P...)>());
    }
};

} // namespace internal
} // namespace godot
