// Callables with a C++ body.

#include <godot_cpp/core/generated_support.hpp>
#include <godot_cpp/variant/callable_method_pointer.hpp>

namespace godot {

using internal::gde;

namespace {

const CallableCustom *custom(void *p) {
    return static_cast<const CallableCustom *>(p);
}

void call_custom(void *p, const GDExtensionConstVariantPtr *args, GDExtensionInt count, GDExtensionVariantPtr ret,
                 GDExtensionCallError *error) {
    *error = {GDEXTENSION_CALL_OK, 0, 0};
    custom(p)->call(const_cast<const Variant **>(reinterpret_cast<const Variant *const *>(args)), int(count),
                    *static_cast<Variant *>(ret), *error);
}

GDExtensionBool custom_is_valid(void *p) {
    return custom(p)->is_valid();
}

void free_custom(void *p) {
    delete custom(p);
}

uint32_t hash_custom(void *p) {
    return custom(p)->hash();
}

GDExtensionBool custom_equal(void *a, void *b) {
    const auto fn = custom(a)->get_compare_equal_func();
    return fn == custom(b)->get_compare_equal_func() && fn(custom(a), custom(b));
}

GDExtensionBool custom_less(void *a, void *b) {
    const auto fn = custom(a)->get_compare_less_func();
    return fn == custom(b)->get_compare_less_func() ? fn(custom(a), custom(b)) : a < b;
}

void custom_to_string(void *p, GDExtensionBool *valid, GDExtensionStringPtr out) {
    *valid = true;
    *static_cast<String *>(out) = custom(p)->get_as_text();
}

GDExtensionInt custom_argument_count(void *p, GDExtensionBool *valid) {
    bool known = false;
    const int n = custom(p)->get_argument_count(known);
    *valid = known;
    return n;
}

} // namespace

Callable::Callable(CallableCustom *c) {
    GDExtensionCallableCustomInfo2 info{};
    info.callable_userdata = c;
    info.token = internal::token;
    info.object_id = uint64_t(c->get_object());
    info.call_func = call_custom;
    info.is_valid_func = custom_is_valid;
    info.free_func = free_custom;
    info.hash_func = hash_custom;
    info.equal_func = custom_equal;
    info.less_than_func = custom_less;
    info.to_string_func = custom_to_string;
    info.get_argument_count_func = custom_argument_count;
    gde.callable_custom_create2(words, &info);
}

CallableCustom *Callable::get_custom() const {
    return static_cast<CallableCustom *>(gde.callable_custom_get_userdata(words, internal::token));
}

namespace internal {

MethodCallable::MethodCallable(Wrapped *p_self, const char *p_text, const ArgCheck *p_checks, int p_wanted)
    : self(p_self), object_id(p_self ? gde.object_get_instance_id(p_self->_owner) : 0), text(p_text), checks(p_checks),
      wanted(p_wanted) {}

uint32_t MethodCallable::hash() const {
    return hash_murmur3(uint32_t(object_id) ^ uint32_t(object_id >> 32) * 31u ^ uint32_t(key[0]) ^
                        uint32_t(key[1]) * 7u);
}

bool MethodCallable::is_valid() const {
    return !self || gde.object_get_instance_from_id(object_id) != nullptr;
}

void MethodCallable::call(const Variant **args, int count, Variant &ret, GDExtensionCallError &error) const {
    if (unlikely(!is_valid())) {
        error.error = GDEXTENSION_CALL_ERROR_INSTANCE_IS_NULL;
        return;
    }
    if (check_args(checks, wanted, args, count, error)) {
        run(args, ret);
    }
}

bool MethodCallable::equal(const CallableCustom *pa, const CallableCustom *pb) {
    const auto *a = static_cast<const MethodCallable *>(pa), *b = static_cast<const MethodCallable *>(pb);
    return a->object_id == b->object_id && a->key[0] == b->key[0] && a->key[1] == b->key[1];
}

bool MethodCallable::less(const CallableCustom *pa, const CallableCustom *pb) {
    const auto *a = static_cast<const MethodCallable *>(pa), *b = static_cast<const MethodCallable *>(pb);
    if (a->object_id != b->object_id) {
        return a->object_id < b->object_id;
    }
    return a->key[0] != b->key[0] ? a->key[0] < b->key[0] : a->key[1] < b->key[1];
}

} // namespace internal
} // namespace godot
