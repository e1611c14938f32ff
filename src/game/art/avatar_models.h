#pragma once
// The looks that a player can choose from: a table of rows by id, a model of each, and its face for lists.

#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class AvatarModels : public RefCounted {
    GDCLASS(AvatarModels, RefCounted)

protected:
    static void _bind_methods() {}

public:
    static PackedStringArray ids();
    // The look of a person with `girl`, `style`, `hat` and `acc`; the first row's for an unknown id.
    static Dictionary look_of(const String &id);
    static Node3D *build(const String &id);
    // Draws head and shoulders of a look into the control's rectangle; to be called while it draws itself.
    static void draw_face(Control *on, const Dictionary &look);
};

} // namespace tilm
