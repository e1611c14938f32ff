#pragma once
// The shapes of goods and money, each a loose tree on y 0 about as tall as the good's layer.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

namespace item_models {

// Null for a kind that none of the families knows.
Node3D *farm_good(const String &kind);
Node3D *made_good(const String &kind);
Node3D *dish(const String &kind);
Node3D *money(const String &kind);

// All kinds that have a shape, goods and money.
PackedStringArray kinds();

// Containers shared by several goods.
void sack(Node3D *parent, const Color &cloth, const Color &mark, float width, float height);
void bottle(Node3D *parent, const Color &body, const Color &cap, const Color &label, float width, float height);
void jar(Node3D *parent, const Color &filling, const Color &lid, float width, float height);
void plate(Node3D *parent, float radius);

} // namespace item_models
} // namespace tilm
