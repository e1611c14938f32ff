#pragma once
// What a player without free land is told: which land to buy next, or what it waits for.

#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class World;

// With `jump` the panels close and the camera travels to the land that can be bought now.
String land_hint(World &world, bool jump);

} // namespace tilm
