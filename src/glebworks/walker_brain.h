#pragma once
// What a walker wants: the decisions behind a WalkerCore, called by it each frame or by the far list now and then.

#include <cstdint>

#include <godot_cpp/classes/ref_counted.hpp>

namespace tilm {
using namespace godot;

class WalkerCore;

class WalkerBrain : public RefCounted {
    GDCLASS(WalkerBrain, RefCounted)

public:
    // One step of `dt` seconds. The base only moves and animates the walker.
    virtual void tick(double dt);

    // The walker takes and gives up its brain through these; a brain without a walker does nothing.
    virtual void attach(WalkerCore *walker);
    virtual void detach();

    WalkerCore *get_walker() const { return walker; }

protected:
    static void _bind_methods();

    // Calls play_at(event, walker id, walker position) on a sound player, if there is one.
    void play(uint64_t sfx_id, const StringName &event) const;

    WalkerCore *walker = nullptr;
    uint64_t walker_id = 0; // kept after the walker is gone
};

} // namespace tilm
