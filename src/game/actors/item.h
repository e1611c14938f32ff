#pragma once
// A good of the game: the mesh of its kind, and for live animals the rig that walks.

#include <godot_cpp/classes/node3d.hpp>

#include "farm_items/item_core.h"

namespace tilm {
using namespace godot;

class Item : public ItemCore {
    GDCLASS(Item, ItemCore)

public:
    // Where spawned items live. Set by the running farm, null without one.
    static void set_items_root(Node3D *root);
    static Node3D *items_root();

    // A loose item of any kind, in no tree yet.
    static Item *create(const String &kind);
    // An item standing in the world at a global position; loose, with a log line, when there is no items root.
    static Item *spawn(const String &kind, const Vector3 &pos);
    static bool is_money(const String &kind);

    // Shows the walking rig in place of the mesh, or the reverse. Does nothing for goods without a rig.
    void _show_rig(bool on);
    Node3D *get_rig() const { return rig; }

protected:
    static void _bind_methods();

private:
    Node3D *rig = nullptr; // a child, made when first shown
};

} // namespace tilm
