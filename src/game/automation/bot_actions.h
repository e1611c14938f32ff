#pragma once
// The bot: plays the farm like a person would, by walking. It looks at the same things that a player sees and answers
// with a wish for the stick; the farm does the rest. BotChoice says what to do, BotPath how to get there.

#include <vector>

#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector2.hpp>
#include <godot_cpp/variant/vector3.hpp>

#include "game/automation/bot_choice.h"
#include "game/automation/bot_path.h"

namespace tilm {
using namespace godot;

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
    String get_doing() const { return errand.kind == BotErrand::NONE ? String("nothing") : errand.words; }

    // For pictures of all models: rows of key, class and whether a builder is there; a fresh node of a key, or null.
    static Array model_rows();
    static Node3D *model(const String &key);
    // The light of an hour, 0 up to 24, in season 0..3, on a farm's node "Light".
    static void set_sky(Object *light, double hour, int season, double wet, double snow);
    // Keeps the shapes computed so far for later runs, as --dumpprims does.
    static void dump_prims();
    // The face of a player's look, into a control that draws itself just now.
    static void draw_face(Object *control, const String &avatar);

protected:
    static void _bind_methods();

private:
    World *farm() const;
    void look(double dt);
    bool finished() const;
    void begin(const BotErrand &next);
    void plan_way();
    void step_off_tile();

    uint64_t world_id = 0;
    BotErrand errand;
    Vector3 goal;
    BotPath path;
    std::vector<BotBan> bans;
    double look_clock = 0;
    double patience = 0; // seconds that the errand may still take
    double at_goal = 0;  // seconds spent where the errand is done
};

} // namespace tilm
