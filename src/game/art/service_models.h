#pragma once
// The trades: huts with lit signs, what breaks and what warns of it, lamps and heaters, the security posts.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class ServiceModels : public RefCounted {
    GDCLASS(ServiceModels, RefCounted)

protected:
    static void _bind_methods() {}

public:
    // Hut of "carpenter", "electric" or "vet", front to +z, with its sign in a child `NightGlow`.
    static Node3D *hut(const String &trade);
    // The look of a trade's worker; also of "security" and "night_guard", "butcher", "griller", "waiter", "waterman",
    // "thief".
    static Dictionary staff_look(const String &trade);
    // What lies on a building while this trade is needed there.
    static Node3D *damage(const String &trade);
    // Lamps with a `Bulb` of their own: on a wall, on a post by the road.
    static Node3D *wall_lamp();
    static Node3D *road_post();
    // Grill heater of a cold winter.
    static Node3D *heater();
    // Office of the guards, front to +z; sentry box; brazier with `Flame` and `Glow`.
    static Node3D *security_office();
    static Node3D *sentry_box();
    static Node3D *brazier();
    // Pieces of the uniform and the sign of danger: "guard_baton", "guard_badge", "sign_alert"; null for others.
    static Node3D *prop(const String &key);
};

} // namespace tilm
