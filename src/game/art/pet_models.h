#pragma once
// The four pets and the horse's carts. A pet's root holds `Body`, under it `LegFL`, `LegFR`, `LegBL`, `LegBR` (each
// with `Low`), `Tail` and `Neck`/`Head`/`Jaw`: one mesh to a joint, so that the core can turn each. All face -z.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class PetModels : public RefCounted {
    GDCLASS(PetModels, RefCounted)

protected:
    static void _bind_methods() {}

public:
    // Makes the cache of joints and registers its release.
    static void setup_statics();

    // "dog", "cat", "pig" or "horse"; an empty node, with a log line, for anything else.
    static Node3D *pet(const String &kind);
    // The cart of a level from 1: `Bed`, `WheelL` and `WheelR`; its bed is 0.55 high, its shafts reach to the horse.
    static Node3D *cart(int cart_lv);

    // The tree of a pet before its meshes are merged, null for an unknown kind.
    static Node3D *tree(const String &kind);
};

} // namespace tilm
