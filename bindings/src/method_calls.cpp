// Calls of bound methods from outside: the check that every call with Variants passes.

#include <algorithm>

#include <godot_cpp/core/class_db.hpp>

namespace godot {

namespace internal {

bool check_args(const ArgCheck *checks, int wanted, const Variant *const *args, int64_t given,
                GDExtensionCallError &error) {
    if (unlikely(given != wanted)) {
        error.error =
            given > wanted ? GDEXTENSION_CALL_ERROR_TOO_MANY_ARGUMENTS : GDEXTENSION_CALL_ERROR_TOO_FEW_ARGUMENTS;
        error.argument = wanted;
        error.expected = wanted;
        return false;
    }
    for (int i = 0; i < wanted; ++i) {
        const Variant &v = *args[i];
        const ArgCheck &check = checks[i];
        bool fits = v.get_type() == check.type || check.type == Variant::NIL ||
                    Variant::can_convert_strict(v.get_type(), check.type);
        if (fits && check.record && v.get_object_instance_id() != 0) {
            const Object *o = v.get_validated_object();
            fits = o && o->_gde_class()->inherits(check.record);
        }
        if (unlikely(!fits)) {
            error.error = GDEXTENSION_CALL_ERROR_INVALID_ARGUMENT;
            error.argument = i;
            error.expected = check.type;
            return false;
        }
    }
    return true;
}

} // namespace internal

void MethodBind::call_from_engine(void *p_bind, GDExtensionClassInstancePtr self,
                                  const GDExtensionConstVariantPtr *p_args, GDExtensionInt count,
                                  GDExtensionVariantPtr p_ret, GDExtensionCallError *r_error) {
    const MethodBind *bind = static_cast<const MethodBind *>(p_bind);
    GDExtensionCallError ignored;
    GDExtensionCallError &error = r_error ? *r_error : ignored;
    error = {GDEXTENSION_CALL_OK, 0, 0};
    Variant &ret = *static_cast<Variant *>(p_ret);
    if (unlikely(!self && !bind->is_static)) {
        error.error = GDEXTENSION_CALL_ERROR_INSTANCE_IS_NULL;
        return;
    }
    auto args = reinterpret_cast<const Variant *const *>(p_args);
    if (bind->is_vararg) {
        bind->call(static_cast<Wrapped *>(self), args, count, ret, error);
        return;
    }
    const int wanted = bind->argument_count;
    const Variant *full[MAX_ARGUMENTS];
    if (count < wanted) {
        const int64_t missing = wanted - count;
        const int64_t have = int64_t(bind->default_arguments.size());
        if (unlikely(missing > have)) {
            error.error = GDEXTENSION_CALL_ERROR_TOO_FEW_ARGUMENTS;
            error.argument = int32_t(wanted - have);
            error.expected = int32_t(wanted - have);
            return;
        }
        std::copy(args, args + count, full);
        for (int64_t i = count; i < wanted; ++i) {
            full[i] = &bind->default_arguments[size_t(have - (wanted - i))];
        }
        args = full;
        count = wanted;
    }
    if (internal::check_args(bind->checks, wanted, args, count, error)) {
        bind->call(static_cast<Wrapped *>(self), args, count, ret, error);
    }
}

void MethodBind::ptrcall_from_engine(void *bind, GDExtensionClassInstancePtr self, const GDExtensionConstTypePtr *args,
                                     GDExtensionTypePtr ret) {
    static_cast<const MethodBind *>(bind)->ptrcall(static_cast<Wrapped *>(self), args, ret);
}

} // namespace godot
