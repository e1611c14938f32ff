#pragma once
// The coffee house where the staff rests: floor, kiosk, stock, tables, cups and the servers trays.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class CoffeeModels : public RefCounted {
    GDCLASS(CoffeeModels, RefCounted)

protected:
    static void _bind_methods() {}

public:
    // Planked terrace 12.0 x 5.3, centred on its origin.
    static Node3D *floor();
    // The kiosk with its tiled `Roof`, front to +z, about 3.6 wide.
    static Node3D *kiosk();
    // Crates and sacks under the pile of ground coffee, 2.2 x 1.4.
    static Node3D *stock();
    // Round table, its top at 0.62, and the stool beside it, its seat at 0.36.
    static Node3D *table();
    static Node3D *stool();
    // "cup" of coffee or "glass" of tea on its saucer.
    static Node3D *drink(const String &which);
    // A round brass tray with what a server brings: 0 tea, 1 coffee.
    static Node3D *tray(int which);
    // The look of a server by index.
    static Dictionary server_look(int index);
};

} // namespace tilm
