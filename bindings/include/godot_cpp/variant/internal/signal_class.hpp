#pragma once

#include <godot_cpp/variant/internal/callable_class.hpp>

namespace godot {

class Signal : public internal::Opaque<GDEXTENSION_VARIANT_TYPE_SIGNAL, 2> {
    friend class Variant;

public:
    constexpr Signal() = default;
    Signal(const Object *object, const StringName &signal);

    bool operator==(const Signal &o) const;
    bool operator!=(const Signal &o) const { return !(*this == o); }

#include <godot_cpp/gen/signal_methods.inc>
};

} // namespace godot
