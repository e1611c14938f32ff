#pragma once
// What lies on the grill, in a cook's hand and on the plate of the four grilled dishes; trays and cuts of the butchers.

#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class GrillFood : public RefCounted {
    GDCLASS(GrillFood, RefCounted)

protected:
    static void _bind_methods() {}

public:
    // One piece as it comes from the tray and as it leaves the grill; `kind` is a dish. About 0.3 long, on y 0.
    static Node3D *raw_piece(const String &kind);
    static Node3D *done_piece(const String &kind);
    // The dish on its plate.
    static Node3D *plated(const String &kind);
    // "meat_tray", "chicken_tray", "chicken_piece", "meat_hook", "cut_shoulder", "cut_ribs", "cut_rump", "cut_loin";
    // null for any other key. Cuts are named `Shoulder`, `Ribs`, `Rump`, `Loin`.
    static Node3D *butchery(const String &key);
};

} // namespace tilm
