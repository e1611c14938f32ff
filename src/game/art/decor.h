#pragma once
// Garden decorations: their models, and the rules of prices, charm and places over the farm's `decor` list of
// {type, x, z}.

#include <godot_cpp/classes/material.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_float32_array.hpp>
#include <godot_cpp/variant/packed_vector2_array.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class Decor : public RefCounted {
    GDCLASS(Decor, RefCounted)

protected:
    static void _bind_methods() {}

public:
    static void setup_statics();

    // Rows by type: name, charm, price, r, key, and coop where one is earned. Filled once; not to be changed.
    static Dictionary table();
    // The model, its moving parts turning by tweens of their own. `material` is worn by a fountain's water; without
    // one water has a plain glossy blue. An empty node, with a log line, for an unknown type.
    static Node3D *build(const String &type, const Ref<Material> &material = Ref<Material>());

    static int count(const String &type, const Array &placed);
    // -1 for an unknown type.
    static int64_t next_price(const String &type, const Array &placed);
    // 0..50.
    static int charm(const Array &placed);
    // Why this type cannot be bought now, "" when it can; `earned`: its reward, where it has one, is the farm's.
    static String refusal(const String &type, const Array &placed, double money, bool earned);
    // Where the next one goes: `blocked_x` of counters, docks and stands, `lawn` of what grows there, `lands` the
    // centres of the lands to look through. Infinite in all three coordinates when there is no room.
    static Vector3 find_spot(const String &type, float player_x, const PackedFloat32Array &blocked_x,
                             const Array &placed, const PackedVector2Array &lawn, const PackedFloat32Array &lands);
};

} // namespace tilm
