#pragma once
// The engine's C functions, fetched once when the module is loaded, and the lazily resolved handles that generated code
// calls through. Internal: game code has no need of it.

#include <atomic>

#include <godot_cpp/core/defs.hpp>

// Every engine function that the bindings call: the type's suffix and the name the engine knows it by.
#define GDE_INTERFACE(X)                                                                                               \
    X(MemAlloc, mem_alloc)                                                                                             \
    X(MemRealloc, mem_realloc)                                                                                         \
    X(MemFree, mem_free)                                                                                               \
    X(PrintError, print_error)                                                                                         \
    X(PrintErrorWithMessage, print_error_with_message)                                                                 \
    X(PrintWarning, print_warning)                                                                                     \
    X(PrintWarningWithMessage, print_warning_with_message)                                                             \
    X(VariantNewCopy, variant_new_copy)                                                                                \
    X(VariantDestroy, variant_destroy)                                                                                 \
    X(VariantCall, variant_call)                                                                                       \
    X(VariantCallStatic, variant_call_static)                                                                          \
    X(VariantEvaluate, variant_evaluate)                                                                               \
    X(VariantSet, variant_set)                                                                                         \
    X(VariantSetNamed, variant_set_named)                                                                              \
    X(VariantSetIndexed, variant_set_indexed)                                                                          \
    X(VariantSetKeyed, variant_set_keyed)                                                                              \
    X(VariantGet, variant_get)                                                                                         \
    X(VariantGetNamed, variant_get_named)                                                                              \
    X(VariantGetIndexed, variant_get_indexed)                                                                          \
    X(VariantGetKeyed, variant_get_keyed)                                                                              \
    X(VariantIterInit, variant_iter_init)                                                                              \
    X(VariantIterNext, variant_iter_next)                                                                              \
    X(VariantIterGet, variant_iter_get)                                                                                \
    X(VariantHash, variant_hash)                                                                                       \
    X(VariantRecursiveHash, variant_recursive_hash)                                                                    \
    X(VariantHashCompare, variant_hash_compare)                                                                        \
    X(VariantBooleanize, variant_booleanize)                                                                           \
    X(VariantDuplicate, variant_duplicate)                                                                             \
    X(VariantStringify, variant_stringify)                                                                             \
    X(VariantHasMethod, variant_has_method)                                                                            \
    X(VariantHasMember, variant_has_member)                                                                            \
    X(VariantHasKey, variant_has_key)                                                                                  \
    X(VariantGetTypeName, variant_get_type_name)                                                                       \
    X(VariantCanConvert, variant_can_convert)                                                                          \
    X(VariantCanConvertStrict, variant_can_convert_strict)                                                             \
    X(GetVariantFromTypeConstructor, get_variant_from_type_constructor)                                                \
    X(GetVariantToTypeConstructor, get_variant_to_type_constructor)                                                    \
    X(VariantGetPtrOperatorEvaluator, variant_get_ptr_operator_evaluator)                                              \
    X(VariantGetPtrBuiltinMethod, variant_get_ptr_builtin_method)                                                      \
    X(VariantGetPtrConstructor, variant_get_ptr_constructor)                                                           \
    X(VariantGetPtrDestructor, variant_get_ptr_destructor)                                                             \
    X(VariantConstruct, variant_construct)                                                                             \
    X(VariantGetPtrUtilityFunction, variant_get_ptr_utility_function)                                                  \
    X(StringNewWithLatin1CharsAndLen, string_new_with_latin1_chars_and_len)                                            \
    X(StringNewWithUtf8CharsAndLen, string_new_with_utf8_chars_and_len)                                                \
    X(StringNewWithUtf16CharsAndLen, string_new_with_utf16_chars_and_len)                                              \
    X(StringNewWithUtf32CharsAndLen, string_new_with_utf32_chars_and_len)                                              \
    X(StringNewWithWideCharsAndLen, string_new_with_wide_chars_and_len)                                                \
    X(StringToLatin1Chars, string_to_latin1_chars)                                                                     \
    X(StringToUtf8Chars, string_to_utf8_chars)                                                                         \
    X(StringToUtf16Chars, string_to_utf16_chars)                                                                       \
    X(StringToUtf32Chars, string_to_utf32_chars)                                                                       \
    X(StringOperatorIndex, string_operator_index)                                                                      \
    X(StringOperatorIndexConst, string_operator_index_const)                                                           \
    X(StringOperatorPlusEqString, string_operator_plus_eq_string)                                                      \
    X(StringOperatorPlusEqChar, string_operator_plus_eq_char)                                                          \
    X(StringOperatorPlusEqCstr, string_operator_plus_eq_cstr)                                                          \
    X(StringResize, string_resize)                                                                                     \
    X(StringNameNewWithLatin1Chars, string_name_new_with_latin1_chars)                                                 \
    X(StringNameNewWithUtf8CharsAndLen, string_name_new_with_utf8_chars_and_len)                                       \
    X(FileAccessStoreBuffer, file_access_store_buffer)                                                                 \
    X(FileAccessGetBuffer, file_access_get_buffer)                                                                     \
    X(PackedByteArrayOperatorIndex, packed_byte_array_operator_index)                                                  \
    X(PackedByteArrayOperatorIndexConst, packed_byte_array_operator_index_const)                                       \
    X(PackedInt32ArrayOperatorIndex, packed_int32_array_operator_index)                                                \
    X(PackedInt32ArrayOperatorIndexConst, packed_int32_array_operator_index_const)                                     \
    X(PackedInt64ArrayOperatorIndex, packed_int64_array_operator_index)                                                \
    X(PackedInt64ArrayOperatorIndexConst, packed_int64_array_operator_index_const)                                     \
    X(PackedFloat32ArrayOperatorIndex, packed_float32_array_operator_index)                                            \
    X(PackedFloat32ArrayOperatorIndexConst, packed_float32_array_operator_index_const)                                 \
    X(PackedFloat64ArrayOperatorIndex, packed_float64_array_operator_index)                                            \
    X(PackedFloat64ArrayOperatorIndexConst, packed_float64_array_operator_index_const)                                 \
    X(PackedStringArrayOperatorIndex, packed_string_array_operator_index)                                              \
    X(PackedStringArrayOperatorIndexConst, packed_string_array_operator_index_const)                                   \
    X(PackedVector2ArrayOperatorIndex, packed_vector2_array_operator_index)                                            \
    X(PackedVector2ArrayOperatorIndexConst, packed_vector2_array_operator_index_const)                                 \
    X(PackedVector3ArrayOperatorIndex, packed_vector3_array_operator_index)                                            \
    X(PackedVector3ArrayOperatorIndexConst, packed_vector3_array_operator_index_const)                                 \
    X(PackedVector4ArrayOperatorIndex, packed_vector4_array_operator_index)                                            \
    X(PackedVector4ArrayOperatorIndexConst, packed_vector4_array_operator_index_const)                                 \
    X(PackedColorArrayOperatorIndex, packed_color_array_operator_index)                                                \
    X(PackedColorArrayOperatorIndexConst, packed_color_array_operator_index_const)                                     \
    X(ArrayOperatorIndex, array_operator_index)                                                                        \
    X(ArrayOperatorIndexConst, array_operator_index_const)                                                             \
    X(ArraySetTyped, array_set_typed)                                                                                  \
    X(DictionaryOperatorIndex, dictionary_operator_index)                                                              \
    X(DictionaryOperatorIndexConst, dictionary_operator_index_const)                                                   \
    X(DictionarySetTyped, dictionary_set_typed)                                                                        \
    X(ObjectMethodBindCall, object_method_bind_call)                                                                   \
    X(ObjectMethodBindPtrcall, object_method_bind_ptrcall)                                                             \
    X(ObjectDestroy, object_destroy)                                                                                   \
    X(GlobalGetSingleton, global_get_singleton)                                                                        \
    X(ObjectGetInstanceBinding, object_get_instance_binding)                                                           \
    X(ObjectSetInstanceBinding, object_set_instance_binding)                                                           \
    X(ObjectSetInstance, object_set_instance)                                                                          \
    X(ObjectGetClassName, object_get_class_name)                                                                       \
    X(ObjectGetInstanceFromId, object_get_instance_from_id)                                                            \
    X(ObjectGetInstanceId, object_get_instance_id)                                                                     \
    X(ObjectHasScriptMethod, object_has_script_method)                                                                 \
    X(RefGetObject, ref_get_object)                                                                                    \
    X(RefSetObject, ref_set_object)                                                                                    \
    X(CallableCustomCreate2, callable_custom_create2)                                                                  \
    X(CallableCustomGetUserData, callable_custom_get_userdata)                                                         \
    X(ClassdbConstructObject2, classdb_construct_object2)                                                              \
    X(ClassdbGetMethodBind, classdb_get_method_bind)                                                                   \
    X(ClassdbRegisterExtensionClass4, classdb_register_extension_class4)                                               \
    X(ClassdbRegisterExtensionClassMethod, classdb_register_extension_class_method)                                    \
    X(ClassdbRegisterExtensionClassIntegerConstant, classdb_register_extension_class_integer_constant)                 \
    X(ClassdbRegisterExtensionClassProperty, classdb_register_extension_class_property)                                \
    X(ClassdbRegisterExtensionClassPropertyIndexed, classdb_register_extension_class_property_indexed)                 \
    X(ClassdbRegisterExtensionClassPropertyGroup, classdb_register_extension_class_property_group)                     \
    X(ClassdbRegisterExtensionClassPropertySubgroup, classdb_register_extension_class_property_subgroup)               \
    X(ClassdbRegisterExtensionClassSignal, classdb_register_extension_class_signal)                                    \
    X(ClassdbUnregisterExtensionClass, classdb_unregister_extension_class)                                             \
    X(GetLibraryPath, get_library_path)

namespace godot {

class StringName;

namespace internal {

struct EngineInterface {
#define GDE_DECLARE(m_type, m_name) GDExtensionInterface##m_type m_name;
    GDE_INTERFACE(GDE_DECLARE)
#undef GDE_DECLARE
    GDExtensionInterfaceClassdbRegisterExtensionClass4 classdb_register_extension_class5; // null before engine 4.5
};

extern EngineInterface gde;
extern GDExtensionClassLibraryPtr library;
extern void *token;

// A name interned on first use and kept for the life of the process. Constant-initialised, so it needs no constructor
// call before the engine is up and no destructor call after it is gone.
struct StaticName {
    const char *text;
    mutable std::atomic<void *> data{nullptr};

    GDExtensionConstStringNamePtr ptr() const {
        if (unlikely(!data.load(std::memory_order_acquire))) {
            intern();
        }
        return &data;
    }
    const StringName &name() const { return *static_cast<const StringName *>(ptr()); }

private:
    void intern() const;
};
static_assert(sizeof(std::atomic<void *>) == sizeof(void *));

// An engine method, resolved on the first call.
struct MethodRef {
    const char *class_name;
    const char *method;
    int64_t hash;
    std::atomic<GDExtensionMethodBindPtr> bind{nullptr};

    GDExtensionMethodBindPtr get() {
        GDExtensionMethodBindPtr p = bind.load(std::memory_order_relaxed);
        return likely(p != nullptr) ? p : resolve();
    }

private:
    GDExtensionMethodBindPtr resolve();
};

// A method of a builtin type, resolved on the first call.
struct BuiltinRef {
    GDExtensionVariantType type;
    const char *method;
    int64_t hash;
    std::atomic<GDExtensionPtrBuiltInMethod> fn{nullptr};

    void call(const void *base, const void *const *args, void *ret, int32_t count) {
        GDExtensionPtrBuiltInMethod f = fn.load(std::memory_order_relaxed);
        if (unlikely(!f)) {
            f = resolve();
        }
        f(const_cast<void *>(base), args, ret, count);
    }

private:
    GDExtensionPtrBuiltInMethod resolve();
};

// A global function of the engine, resolved on the first call.
struct UtilityRef {
    const char *function;
    int64_t hash;
    std::atomic<GDExtensionPtrUtilityFunction> fn{nullptr};

    void call(void *ret, const void *const *args, int32_t count) {
        GDExtensionPtrUtilityFunction f = fn.load(std::memory_order_relaxed);
        if (unlikely(!f)) {
            f = resolve();
        }
        f(ret, args, count);
    }

private:
    GDExtensionPtrUtilityFunction resolve();
};

inline void ptrcall(MethodRef &m, GodotObject *owner, const void *const *args, void *ret) {
    GDExtensionMethodBindPtr bind = m.get();
    if (likely(bind != nullptr)) {
        gde.object_method_bind_ptrcall(bind, owner, args, ret);
    }
}

} // namespace internal
} // namespace godot
