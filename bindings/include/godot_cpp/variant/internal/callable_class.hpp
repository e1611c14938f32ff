#pragma once

#include <array>

#include <godot_cpp/variant/internal/string_name_class.hpp>

namespace godot {

class CallableCustom;
class Callable : public internal::Opaque<GDEXTENSION_VARIANT_TYPE_CALLABLE, 2> {
    friend class Variant;

public:
    constexpr Callable() = default;
    Callable(const Object *object, const StringName &method);
    // Takes ownership.
    explicit Callable(CallableCustom *custom);

    // The custom callable behind it if it came from this module, else null.
    CallableCustom *get_custom() const;
    bool operator==(const Callable &o) const;
    bool operator!=(const Callable &o) const { return !(*this == o); }

#include <godot_cpp/gen/callable_methods.inc>
};

} // namespace godot
