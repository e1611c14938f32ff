#pragma once
// The common part of the builtin types whose layout belongs to the engine: a few machine words that are copied and
// destroyed by functions of the engine. All of them are empty when zero, so an empty value costs no call at all.

#include <utility>

#include <godot_cpp/core/engine_interface.hpp>

namespace godot {

class Array;
class Callable;
class Dictionary;
class NodePath;
class Object;
class PackedByteArray;
class PackedColorArray;
class PackedFloat32Array;
class PackedFloat64Array;
class PackedInt32Array;
class PackedInt64Array;
class PackedStringArray;
class PackedVector2Array;
class PackedVector3Array;
class PackedVector4Array;
class RID;
class Signal;
class String;
class StringName;
class Variant;
struct AABB;
struct Basis;
struct Color;
struct Plane;
struct Projection;
struct Quaternion;
struct Rect2;
struct Rect2i;
struct Transform2D;
struct Transform3D;
struct Vector2;
struct Vector2i;
struct Vector3;
struct Vector3i;
struct Vector4;
struct Vector4i;

} // namespace godot

namespace godot::internal {

// T, but only looked at when Args are known: lets a template return a class that is complete later.
template <typename T, typename...>
struct Later {
    using Type = T;
};

class BorrowedName;

struct BuiltinFns {
    GDExtensionPtrConstructor make;
    GDExtensionPtrConstructor copy;
    GDExtensionPtrDestructor destroy;
};
extern BuiltinFns builtin_fns[GDEXTENSION_VARIANT_TYPE_VARIANT_MAX];

const void *native_ptr_of(const Array &a);
// Prints the error; the caller goes on with a stand-in.
void out_of_bounds(int64_t index);
void builtin_construct(GDExtensionVariantType type, int32_t constructor, void *dest, const void *const *args);

// LAZY: the engine has no zero value for the type (arrays and dictionaries); one is made when first asked for.
template <GDExtensionVariantType TYPE, int WORDS, bool LAZY = false>
class Opaque {
protected:
    mutable void *words[WORDS] = {};

    bool held() const {
        for (void *w : words) {
            if (w) {
                return true;
            }
        }
        return false;
    }
    void ensure() const {
        if constexpr (LAZY) {
            if (unlikely(!words[0])) {
                builtin_fns[TYPE].make(words, nullptr);
            }
        }
    }
    void construct(int32_t constructor, const void *const *args) { builtin_construct(TYPE, constructor, words, args); }

    constexpr Opaque() = default;
    Opaque(const Opaque &o) {
        o.ensure();
        if (o.held()) {
            const void *args[] = {o.words};
            builtin_fns[TYPE].copy(words, args);
        }
    }
    Opaque(Opaque &&o) noexcept {
        for (int i = 0; i < WORDS; ++i) {
            words[i] = std::exchange(o.words[i], nullptr);
        }
    }
    Opaque &operator=(const Opaque &o) {
        if (this != &o) {
            *this = Opaque(o);
        }
        return *this;
    }
    Opaque &operator=(Opaque &&o) noexcept {
        for (int i = 0; i < WORDS; ++i) {
            std::swap(words[i], o.words[i]);
        }
        return *this;
    }
    ~Opaque() {
        if (held()) {
            builtin_fns[TYPE].destroy(words);
        }
    }

public:
    static constexpr GDExtensionVariantType GDE_TYPE = TYPE;

    GDExtensionTypePtr _native_ptr() const {
        ensure();
        return words;
    }
};

} // namespace godot::internal
