#pragma once
// Producer houses, troughs, stalls, pallets, field furniture. Each returns a loose node whose origin is on the ground;
// fronts face +z. Sizes: a house with its yard fits x -2.9..2.9, z -2.9..1.9 and leaves z +1.9..+3.5 to the tray.

#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class Buildings : public RefCounted {
    GDCLASS(Buildings, RefCounted)

protected:
    static void _bind_methods() {}

public:
    // House and yard of a producer by its product (baked under house_<product>).
    static Node3D *house(const String &product);
    // Ground that walkers go round, relative to the producer's origin: the house itself, without its yard.
    static Rect2 house_solid(const String &product);
    // The light that falls out of a house's windows by night; hives, apple trees and pens have none.
    static void light_front(Node3D *owner, const String &product);
    // Building and yard of a machine by its product, its roof or awning in `roof`. Fits x -2.9..2.9, z -2.9..1.5; the
    // pallets under its two piles are machine_floor high; smoke leaves its chimney at (0.95, 2.9, -0.4).
    static Node3D *machine(const String &product, const Color &roof);
    static constexpr float machine_floor = 0.14f;
    static Color machine_roof() { return Color(0.937f, 0.424f, 0.0f); } // ef6c00, for entries without a roof
    static Rect2 machine_solid();
    // Feed trough (2 x 4 goods, 0.42 x 0.38 apart) for feed `kind`; its origin is the pile's.
    static Node3D *trough(const String &kind);
    // Tray slab under a producer's output pile, 2.6 x 1.7.
    static Node3D *tray();
    // Sales counter with a striped awning in `color`; the counter's top is at y 1.02, goods lie at (0.35, 1.02, -0.05).
    static Node3D *stall(const Color &color);
    // Wooden pallet under a field's harvest pile, 2.4 x 2.4.
    static Node3D *pallet();
    // Soil bed of a field of this size (metres), centred on its origin, furrows along x; `frame` adds the plank edge.
    static Node3D *field_bed(const Vector2 &size, const Color &soil, bool frame);
    // The moving part of a machine's building, null when it has none ("flour": the mill's sails).
    static Node3D *anim(const String &kind);
    // The flour mill's building.
    static Node3D *mill();
    // Delivery van, 3.2 long, its nose to -z.
    static Node3D *supply_van();
};

} // namespace tilm
