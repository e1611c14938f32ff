#pragma once
// The bot: plays the farm like a person would, by walking. It looks at the same things that a player sees and answers
// with a wish for the stick; the farm does the rest.

#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector2.hpp>
#include <godot_cpp/variant/vector3.hpp>

#include "farm_items/zone_core.h"

namespace tilm {
using namespace godot;

class CropField;
class World;

class BotActions : public Node {
    GDCLASS(BotActions, Node)

public:
    // The farm to play; must outlive the bot or be its parent.
    void setup(Object *world);
    // One look at the farm after `dt` seconds: the direction to walk in, x to the right and y towards the camera,
    // length 0 .. 1.
    Vector2 wish(double dt);
    // What it is doing, in words, for logs.
    String get_doing() const { return doing; }

    // For pictures of all models: rows of key, class and whether a builder is there; a fresh node of a key, or null.
    static Array model_rows();
    static Node3D *model(const String &key);
    // The face of a player's look, into a control that draws itself just now.
    static void draw_face(Object *control, const String &avatar);

protected:
    static void _bind_methods();

private:
    World *farm() const;
    void choose();
    bool aim_at_cash();
    bool aim_at_tile();
    bool aim_at_delivery();
    bool aim_at_goods();
    bool aim_at_crop();
    bool wanted_anywhere(const String &kind) const;
    void aim(const String &what, const Vector3 &at, double reach);
    Vector2 steer(double dt);

    uint64_t world_id = 0;
    uint64_t field_id = 0; // while a crop is being cut
    String doing = "nothing";
    bool has_goal = false;
    Vector3 goal;
    double reach = 0.3;
    double look_clock = 0;
    double linger = 0; // seconds to stay where it stands
    double stuck_clock = 0;
    double sidestep = 0;
    double side = 1;
    Vector3 last;
};

} // namespace tilm
