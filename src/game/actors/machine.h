#pragma once
// A machine of the farm: mill, press, butcher, kitchen, bakery. Its building, piles, zones and labels on top of the
// step engine. Put together by build().

#include <vector>

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/dictionary.hpp>

#include "farm_items/zone_core.h"
#include "farm_shop/machine_core.h"
#include "game/art/buildings.h"
#include "rules/machine_rules.h"

namespace tilm {
using namespace godot;

class Farm;

class Machine : public MachineCore {
    GDCLASS(Machine, MachineCore)

public:
    // Makes the machine of a plan entry (id, title, pos, product, recipe, flavors, yield, roof, alias, carry_to) at
    // level 1. Add it to the tree at once after: it then hands its zones and solids to the farm. Null, with one log
    // line, for an entry that could make goods from nothing or goods that nobody knows.
    static Machine *build(const Dictionary &entry);

    static int speed_steps(int l) { return rules::speed_steps(l); }
    static int cap_steps(int l) { return rules::cap_steps(l); }
    static String next_perk(int l);
    int input_cap() const { return rules::input_cap(get_level()); }
    void set_level(int l);

    // Kinds that a batch lacks; none while a flavour is ready.
    Array missing() const;
    // Whether any of what it works on lies in the input.
    bool has_input() const;
    void show_need();
    // One batch: consumes its inputs and lays the product out, or owes it to the cook. Nothing without all inputs.
    void make();
    // The hand-over of all that is owed, from a cook's hand at `from`.
    void deliver_meat(const Vector3 &from);
    // Ground rectangles (Rect2, world) that the player goes round.
    Array solids() const;

    // Who hands the goods out; null: they come out by themselves.
    void set_cook(Node *node) { cook.set(node); }
    Node *get_cook() const { return cook.get(); }
    void set_world(Node3D *node) { world.set(node); }
    Node3D *get_world() const { return world.get(); }
    Ref<ZoneCore> get_give_zone() const { return give_zone; }
    Array get_take_zones() const { return take_zones; }
    String get_need_text() const; // "" while hidden

    TM_FIELD(String, id, String())
    TM_FIELD(String, title, String())
    TM_FIELD(String, product, String())
    TM_FIELD(int, yield, 1)              // units of one batch
    TM_FIELD(String, alias, String())    // id of the machine that this one repeats
    TM_FIELD(String, carry_to, String()) // where its own helper takes the output
    TM_FIELD(Color, roof, Buildings::machine_roof())

    void _ready() override;

protected:
    static void _bind_methods();

private:
    String fault() const;
    void build_piles();
    void build_zones();
    void build_labels();
    void build_smoke();
    Ref<ZoneCore> give_point(const Vector2 &size, const String &group);
    void set_limits();
    void swallow(ItemCore *item, const Vector3 &at);
    void squash();

    LiveRef<Node> cook;
    LiveRef<Node3D> world;
    Node3D *body = nullptr; // the building; null until _ready
    Label3D *level_label = nullptr;
    Label3D *need_label = nullptr;
    Ref<ZoneCore> give_zone;
    Ref<ZoneCore> repeat_zone; // where the helpers of `alias` give; nobody stands in it
    Array take_zones;
    Ref<Tween> squashing;
};

} // namespace tilm
