#pragma once
// Later additions: pharmacy, water works, tools in hands, and the beasts that raid the farm.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class AddonModels : public RefCounted {
    GDCLASS(AddonModels, RefCounted)

protected:
    static void _bind_methods() {}

public:
    // Shop with the sign "PHARMACY" in a child `NightGlow`, front to +z.
    static Node3D *pharmacy();
    // The bank's house with its sign in a child `Sign`.
    static Node3D *bank();
    // What a farm hand works with, by product; "stool" for the milking stool. Grip at the origin.
    static Node3D *hand(const String &kind);
    // A trade's tool, grip at the origin; the vet's syringe has its needle in a child `Needle`.
    static Node3D *tool(const String &trade);
    // Beekeeper's hat for a head at the origin.
    static Node3D *veil_hat();
    // "water_tank", "water_well", "trade_box"; null for others.
    static Node3D *prop(const String &key);
    // Rigged "wolf", "fox" or "crow", facing -z; null for others.
    static Node3D *raider(const String &kind);
};

} // namespace tilm
