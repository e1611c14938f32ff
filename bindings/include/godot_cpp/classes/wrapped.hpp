#pragma once
// The C++ side of an engine object, and what GDCLASS adds to a class of the game.

#include <type_traits>
#include <vector>

#include <godot_cpp/core/engine_interface.hpp>
#include <godot_cpp/core/property_info.hpp>
#include <godot_cpp/templates/list.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

class ClassDB;
class MethodBind;
class Wrapped;

namespace internal {

// A class's override of an engine virtual: called with the arguments behind pointers.
using VirtualThunk = void (*)(Wrapped *self, const void *const *args, void *ret);

struct VirtualEntry {
    const void *name; // data of the interned name
    uint32_t hash;
    VirtualThunk thunk;
};

// Bound methods by the data of their names: a table with open addressing, sized once.
class MethodTable {
    struct Slot {
        const void *name;
        MethodBind *bind;
    };
    std::vector<Slot> slots;

    size_t slot_of(const void *name) const {
        return size_t((uint64_t(reinterpret_cast<uintptr_t>(name)) * 0x9e3779b97f4a7c15ull) >> 32) & (slots.size() - 1);
    }

public:
    void reserve(size_t count) {
        size_t size = 4;
        while (size < count * 2) {
            size *= 2;
        }
        slots.assign(size, {nullptr, nullptr});
    }
    void put(const void *name, MethodBind *bind) {
        size_t i = slot_of(name);
        while (slots[i].name && slots[i].name != name) {
            i = (i + 1) & (slots.size() - 1);
        }
        slots[i] = {name, bind};
    }
    MethodBind *find(const void *name) const {
        if (slots.empty()) {
            return nullptr;
        }
        for (size_t i = slot_of(name); slots[i].name; i = (i + 1) & (slots.size() - 1)) {
            if (slots[i].name == name) {
                return slots[i].bind;
            }
        }
        return nullptr;
    }
    template <typename F>
    void each(const F &fn) const {
        for (const Slot &s : slots) {
            if (s.name) {
                fn(s.name, s.bind);
            }
        }
    }
    size_t room() const { return slots.size(); }
};

// Functions of a class that the engine asks for. Each list runs from the base class to the derived one.
struct ClassHooks {
    std::vector<bool (*)(Wrapped *, const StringName &, const Variant &)> set;
    std::vector<bool (*)(const Wrapped *, const StringName &, Variant &)> get;
    std::vector<void (*)(const Wrapped *, List<PropertyInfo> *)> property_list;
    std::vector<bool (*)(const Wrapped *, const StringName &)> can_revert;
    std::vector<bool (*)(const Wrapped *, const StringName &, Variant &)> get_revert;
    std::vector<void (*)(const Wrapped *, PropertyInfo &)> validate;
    String (*to_string)(const Wrapped *) = nullptr;
    bool notified = false;
    std::vector<VirtualEntry> virtuals; // including those of the bases
    MethodTable methods;                // likewise
};

// One for each class, engine's and ours. Constant-initialised.
struct ClassRecord {
    StaticName name;
    ClassRecord *parent;
    const GDExtensionInstanceBindingCallbacks *callbacks;
    bool is_extension;
    ClassHooks *hooks = nullptr; // of registered classes of ours

    bool inherits_named(const char *name_text) const {
        for (const ClassRecord *r = this; r; r = r->parent) {
            if (std::strcmp(r->name.text, name_text) == 0) {
                return true;
            }
        }
        return false;
    }
    const ClassRecord *native() const {
        const ClassRecord *r = this;
        while (r->is_extension) {
            r = r->parent;
        }
        return r;
    }
    bool inherits(const ClassRecord *base) const {
        for (const ClassRecord *r = this; r; r = r->parent) {
            if (r == base) {
                return true;
            }
        }
        return false;
    }
};

extern const GDExtensionInstanceBindingCallbacks extension_callbacks;

// What the next Wrapped() on this thread stands for: a fresh object of a class, or an engine object to wrap.
struct Construction {
    const ClassRecord *record;
    GodotObject *owner;
};
Construction &next_construction();
void post_initialize(Wrapped *w);

// The wrapper of an engine object, made if need be; null for null.
Wrapped *wrap_object(GodotObject *object);

// Makes and unmakes the wrappers of one engine class.
template <typename T>
struct EngineBinding {
    static void *create(void *, void *instance) {
        next_construction() = {nullptr, instance};
        return static_cast<Wrapped *>(new T);
    }
    static void free(void *, void *, void *binding) { delete static_cast<T *>(static_cast<Wrapped *>(binding)); }
    static GDExtensionBool reference(void *, void *, GDExtensionBool) { return true; }
    static constexpr GDExtensionInstanceBindingCallbacks callbacks{create, free, reference};
};

template <typename T>
struct MethodParts;
template <typename C, typename R, typename... A>
struct MethodParts<R (C::*)(A...)> {
    using Class = C;
    using Signature = R(A...);
};
template <typename C, typename R, typename... A>
struct MethodParts<R (C::*)(A...) const> {
    using Class = C;
    using Signature = R(A...);
};

// Whether the method that the name means in T is declared by T itself.
template <typename T, typename M>
constexpr bool is_own(M) {
    return std::is_same_v<typename MethodParts<M>::Class, T>;
}
// Whether T's method overrides B's in between: declared nearer, with the same signature.
template <typename MB, typename MT>
constexpr bool overrides() {
    return !std::is_same_v<MB, MT> &&
           std::is_same_v<typename MethodParts<MB>::Signature, typename MethodParts<MT>::Signature>;
}

// The thunk behind an overridden engine virtual; see method_bind.hpp.
template <auto M>
struct Virtual;
void add_virtual(ClassHooks &hooks, const char *name, uint32_t hash, VirtualThunk thunk);
ClassHooks &hooks_of(ClassRecord &record);

} // namespace internal

class Wrapped {
    friend class ClassDB;
    friend void internal::post_initialize(Wrapped *);

protected:
    static void _bind_methods() {}
    static void (*_get_bind_methods())() { return &Wrapped::_bind_methods; }
    void _notification(int) {}
    bool _set(const StringName &, const Variant &) { return false; }
    bool _get(const StringName &, Variant &) const { return false; }
    void _get_property_list(List<PropertyInfo> *) const {}
    bool _property_can_revert(const StringName &) const { return false; }
    bool _property_get_revert(const StringName &, Variant &) const { return false; }
    void _validate_property(PropertyInfo &) const {}
    String _to_string() const { return String(); }

    Wrapped();

public:
    Wrapped(const Wrapped &) = delete;
    Wrapped &operator=(const Wrapped &) = delete;
    virtual ~Wrapped() = default;

    virtual internal::ClassRecord *_gde_class() const = 0;
    virtual void _notificationv(int, bool) {}
    static void _gde_collect(internal::ClassHooks &) {}
    static void initialize_class() {}
    template <typename T, typename B>
    static void register_virtuals(internal::ClassHooks &) {}

    GodotObject *_owner = nullptr;
};

namespace internal {
inline GodotObject *owner_of(const void *wrapped) {
    return wrapped ? static_cast<const Wrapped *>(wrapped)->_owner : nullptr;
}
} // namespace internal

} // namespace godot

// The same for the engine's own classes, written by the generator.
#define GDE_ENGINE_CLASS(m_class, m_inherits)                                                                          \
public:                                                                                                                \
    using self_type = m_class;                                                                                         \
    using parent_type = m_inherits;                                                                                    \
    static internal::ClassRecord _gde_record;                                                                          \
    static const StringName &get_class_static() {                                                                      \
        return _gde_record.name.name();                                                                                \
    }                                                                                                                  \
    internal::ClassRecord *_gde_class() const override {                                                               \
        return &_gde_record;                                                                                           \
    }

// Stands first in every class of ours that derives from an engine class.
#define GDCLASS(m_class, m_inherits)                                                                                   \
private:                                                                                                               \
    friend class ::godot::ClassDB;                                                                                     \
                                                                                                                       \
protected:                                                                                                             \
    static void (*_get_bind_methods())() {                                                                             \
        return &m_class::_bind_methods;                                                                                \
    }                                                                                                                  \
                                                                                                                       \
public:                                                                                                                \
    using self_type = m_class;                                                                                         \
    using parent_type = m_inherits;                                                                                    \
    static inline constinit ::godot::internal::ClassRecord _gde_record{                                                \
        {#m_class}, &m_inherits::_gde_record, &::godot::internal::extension_callbacks, true};                          \
    static const ::godot::StringName &get_class_static() {                                                             \
        return _gde_record.name.name();                                                                                \
    }                                                                                                                  \
    static const ::godot::StringName &get_parent_class_static() {                                                      \
        return m_inherits::get_class_static();                                                                         \
    }                                                                                                                  \
    ::godot::internal::ClassRecord *_gde_class() const override {                                                      \
        return &_gde_record;                                                                                           \
    }                                                                                                                  \
    void _notificationv(int what, bool reversed) override {                                                            \
        if (!reversed) {                                                                                               \
            m_inherits::_notificationv(what, reversed);                                                                \
        }                                                                                                              \
        if constexpr (::godot::internal::is_own<m_class>(&m_class::_notification)) {                                   \
            _notification(what);                                                                                       \
        }                                                                                                              \
        if (reversed) {                                                                                                \
            m_inherits::_notificationv(what, reversed);                                                                \
        }                                                                                                              \
    }                                                                                                                  \
    static void _gde_collect(::godot::internal::ClassHooks &h) {                                                       \
        using namespace ::godot;                                                                                       \
        using Self = m_class;                                                                                          \
        m_inherits::_gde_collect(h);                                                                                   \
        if constexpr (internal::is_own<Self>(&Self::_notification)) {                                                  \
            h.notified = true;                                                                                         \
        }                                                                                                              \
        if constexpr (internal::is_own<Self>(&Self::_set)) {                                                           \
            h.set.push_back([](Wrapped *w, const StringName &n, const Variant &v) -> bool {                            \
                return static_cast<Self *>(w)->Self::_set(n, v);                                                       \
            });                                                                                                        \
        }                                                                                                              \
        if constexpr (internal::is_own<Self>(&Self::_get)) {                                                           \
            h.get.push_back([](const Wrapped *w, const StringName &n, Variant &v) -> bool {                            \
                return static_cast<const Self *>(w)->Self::_get(n, v);                                                 \
            });                                                                                                        \
        }                                                                                                              \
        if constexpr (internal::is_own<Self>(&Self::_get_property_list)) {                                             \
            h.property_list.push_back([](const Wrapped *w, List<PropertyInfo> *l) {                                    \
                static_cast<const Self *>(w)->Self::_get_property_list(l);                                             \
            });                                                                                                        \
        }                                                                                                              \
        if constexpr (internal::is_own<Self>(&Self::_property_can_revert)) {                                           \
            h.can_revert.push_back([](const Wrapped *w, const StringName &n) -> bool {                                 \
                return static_cast<const Self *>(w)->Self::_property_can_revert(n);                                    \
            });                                                                                                        \
        }                                                                                                              \
        if constexpr (internal::is_own<Self>(&Self::_property_get_revert)) {                                           \
            h.get_revert.push_back([](const Wrapped *w, const StringName &n, Variant &v) -> bool {                     \
                return static_cast<const Self *>(w)->Self::_property_get_revert(n, v);                                 \
            });                                                                                                        \
        }                                                                                                              \
        if constexpr (internal::is_own<Self>(&Self::_validate_property)) {                                             \
            h.validate.push_back(                                                                                      \
                [](const Wrapped *w, PropertyInfo &p) { static_cast<const Self *>(w)->Self::_validate_property(p); }); \
        }                                                                                                              \
        if constexpr (internal::is_own<Self>(&Self::_to_string)) {                                                     \
            h.to_string = [](const Wrapped *w) -> String { return static_cast<const Self *>(w)->Self::_to_string(); }; \
        }                                                                                                              \
        m_inherits::template register_virtuals<Self, m_inherits>(h);                                                   \
    }                                                                                                                  \
    static void initialize_class() {                                                                                   \
        if (_get_bind_methods() != m_inherits::_get_bind_methods()) {                                                  \
            _bind_methods();                                                                                           \
        }                                                                                                              \
    }                                                                                                                  \
                                                                                                                       \
private:
