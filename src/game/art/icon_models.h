#pragma once
// Small 3D icons for price tiles and signs: one per kind of plan entry, one per product for producers.

#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class IconModels : public RefCounted {
    GDCLASS(IconModels, RefCounted)

protected:
    static void _bind_methods() {}

public:
    // An unbaked tree about 1.3 wide and 1 tall on y 0, for merging into a tile's plate. `product` may be empty.
    static Node3D *tile_icon(const String &kind, const String &product);
    // A kind that has an icon of its own; tile_icon shows a crate for any other.
    static bool knows(const String &kind);
    // Five-pointed star of two radii, `thick` deep, facing +z.
    static MeshInstance3D *star(float outer, float inner, float thick, const Color &color, const Vector3 &pos,
                                Node *parent);
    // Arrow that lies on the ground and points to -z.
    static Node3D *ground_arrow(const Color &color);
};

} // namespace tilm
