// The goods as an engine script sees them: everything goes by name, through the bound methods and properties.

#include <algorithm>

#include <godot_cpp/classes/class_db_singleton.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/typed_array.hpp>

#include "game/actors/pile.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/zone.h"
#include "goods_kit.h"

using namespace godot;

namespace tilm {
namespace {

TEST(GoodsScript, PublishedNamesAreThere) {
    const struct {
        const char *type;
        std::vector<const char *> methods;
        std::vector<const char *> fields;
    } table[] = {
        {"ItemCore",
         {"wake", "set_target", "set_target_yaw", "place", "fly_to", "is_flying", "is_batched", "core_gait",
          "core_legs", "rig_shown"},
         {"kind", "value", "height", "target", "target_yaw", "follow_speed", "animal", "hide_on_arrival", "mesh_node"}},
        {"Item", {"create", "spawn", "_show_rig"}, {}},
        {"ItemBatchCore", {"configure", "add_self", "push", "stats"}, {"mat"}},
        {"StackCore",
         {"count", "total_cap", "is_full", "space", "count_kind", "has_kind", "set_side", "cols", "goods_count",
          "top_height", "top_global", "add", "take"},
         {"items", "capacity", "helper", "cart", "cart_cap", "cart_grid", "max_cols", "show_limit", "no_sign",
          "animal_limit", "base", "sway"}},
        {"StackCarrier", {"_rope", "_ropes"}, {}},
        {"PileCore",
         {"count", "is_full", "count_kind", "recount", "slot_global", "add", "take", "drop", "_reflow", "_count_sign"},
         {"items", "cols", "rows", "spacing", "layer_h", "max_items", "flat", "show_limit", "sign_height", "no_sign"}},
        {"ZoneCore",
         {"has_point", "room", "has_room_for_any", "at", "claimed", "claim", "release"},
         {"pos", "size", "mode", "pile", "accepts", "makes", "group", "owner_group", "active"}},
        {"CashCore", {"near"}, {"bills"}},
        {"CashTile", {"total", "add_money", "add_quiet", "settle", "take_bill"}, {}},
        {"MoneyCore", {}, {"items", "base", "tier_h"}},
        {"MoneyStack", {"show_money"}, {}},
        {"Glebworks",
         {"set_view", "slow_add", "slow_tick", "square_at", "pose_add", "sync_poses", "push_moving", "cluster"},
         {}},
        {"WalkerCore",
         {"core_bind", "walk_to", "arrived", "face", "core_step", "lod", "rest_step", "rest_due", "core_animate",
          "tick_far", "set_boost"},
         {"speed", "rest_mult", "cover_speed", "phase", "velocity", "path", "idle", "idle_count", "rest_wait", "asleep",
          "far_skip", "brain"}},
        {"Walker",
         {"build", "step_path", "rest_tick", "set_cover", "make_staff", "work_done", "_staff_apply", "can_break",
          "feed_busy", "drop_claims", "quiet", "animate"},
         {"id", "level", "cfg"}},
        {"WalkerBrain", {"tick"}, {"walker"}},
        {"WorkerBrain", {"setup", "can_break"}, {"walker", "field", "pallet", "spot", "cells", "puff", "sfx", "state"}},
        {"HaulerBrain",
         {"can_break", "quiet", "feed_busy", "drop_claims", "reset", "set_road_z"},
         {"walker", "zones", "kinds", "dst_group", "state", "trough_half", "sfx"}},
    };
    ClassDBSingleton *db = ClassDBSingleton::get_singleton();
    for (const auto &row : table) {
        for (const char *method : row.methods) {
            EXPECT_TRUE(db->class_has_method(row.type, method)) << row.type << "." << method;
        }
        std::vector<String> known;
        const TypedArray<Dictionary> list = db->class_get_property_list(row.type);
        for (int64_t i = 0; i < list.size(); i++) {
            known.push_back(Dictionary(list[i])["name"]);
        }
        for (const char *field : row.fields) {
            EXPECT_NE(std::find(known.begin(), known.end(), String(field)), known.end()) << row.type << "." << field;
        }
    }
}

TEST(GoodsScript, APileIsBuiltFilledAndClaimedFromByName) {
    Yard yard;
    Object *pile = yard.put<Pile>();
    pile->set("cols", 2);
    pile->set("rows", 1);
    pile->set("spacing", Vector2(1, 1));
    EXPECT_EQ((int)pile->get("max_items"), 999);
    for (int i = 0; i < 3; i++) {
        pile->call("add", Item::create("egg"), 0.2);
    }
    EXPECT_EQ((int)pile->call("count_kind", "egg"), 3);
    EXPECT_EQ((int)Array(pile->get("items")).size(), 3);
    expect_near(pile->call("slot_global", 2), Vector3(-0.5f, 0.34f, 0));

    Ref<Zone> zone;
    zone.instantiate();
    Object *z = zone.ptr();
    z->set("mode", "give");
    z->set("pile", pile);
    z->set("size", Vector2(2, 2));
    Dictionary accepts;
    accepts["egg"] = 10;
    z->set("accepts", accepts);
    accepts["egg"] = 8; // shared with whoever set it, as engine dictionaries are
    EXPECT_EQ((int)z->call("room", "egg"), 5);
    const int64_t me = (int64_t)yard.top->get_instance_id();
    z->call("claim", me, "egg", 4);
    EXPECT_EQ((int)z->call("claimed", "egg", 0), 4);
    EXPECT_EQ((int)z->call("claimed", "egg", me), 0);
    z->call("release", me);
    EXPECT_EQ((int)z->call("claimed", "egg", 0), 0);

    Object *stack = yard.put<StackCarrier>();
    stack->set("capacity", 2);
    stack->set("helper", yard.top);
    EXPECT_EQ((int)stack->call("total_cap"), 4);
    stack->set("helper", Variant());
    Object *egg = pile->call("take", "");
    stack->call("add", egg);
    EXPECT_EQ((int)stack->call("space"), 1);
    EXPECT_EQ((Object *)pile->call("take", "milk"), nullptr);
    memdelete(Object::cast_to<Node>(egg));
    EXPECT_EQ((int)stack->call("count"), 0);
    for (const Variant &it : Array(pile->get("items"))) {
        memdelete(Object::cast_to<Node>(it)); // made loose, in no tree
    }
    EXPECT_EQ((int)pile->call("count"), 0);
}

// A whole haul written as an engine script: piles filled, a claim, a carrier and its brain stepped by hand.
const char *const haul_script = R"(extends RefCounted

func run(root: Node3D) -> Array:
	var piles: Array[PileCore] = []
	var zones := []
	for i in 2:
		var pile := Pile.new()
		pile.cols = 2
		pile.position = Vector3(6 * i, 0, 0)
		root.add_child(pile)
		piles.append(pile)
		var zone := Zone.new()
		zone.mode = "take" if i == 0 else "give"
		zone.pile = pile
		zone.pos = pile.position
		zone.makes = "egg" if i == 0 else ""
		zone.group = "tray" if i == 0 else "stall_egg"
		zone.accepts = {} if i == 0 else {"egg": 5}
		zones.append(zone)
	for i in 8:
		piles[0].add(Item.spawn("egg", Vector3.ZERO), 0.0)
	zones[1].claim(root.get_instance_id(), "egg", 2)
	var stack := StackCarrier.new()
	stack.capacity = 4
	var walker := Walker.new()
	root.add_child(walker)
	walker.add_child(stack)
	walker.core_bind(null, stack, [])
	var brain := HaulerBrain.new()
	brain.zones = zones
	brain.kinds = ["egg"]
	brain.dst_group = "stall_egg"
	walker.brain = brain
	var taken := []
	for i in 600:
		brain.tick(1.0 / 60.0)
		if brain.state == 3 and taken.is_empty():
			taken = [stack.count(), zones[1].claimed("egg", 0)]
			zones[1].release(root.get_instance_id())
			walker.drop_claims()
	return [piles[0].count_kind("egg"), piles[1].count_kind("egg"), stack.count(), taken, brain.walker == walker]
)";

TEST(GoodsScript, AnEngineScriptHaulsEggsByItself) {
    Yard yard;
    Variant script = ClassDBSingleton::get_singleton()->instantiate("GDScript");
    Object *source = script;
    source->set("source_code", haul_script);
    ASSERT_EQ((int)source->call("reload"), 0);
    Variant runner = source->call("new");
    const Array out = static_cast<Object *>(runner)->call("run", yard.top);
    ASSERT_EQ(out.size(), 5);
    EXPECT_EQ((int)out[0], 3);
    EXPECT_EQ((int)out[1], 5);
    EXPECT_EQ((int)out[2], 0);
    const Array under_way = out[3];
    ASSERT_EQ(under_way.size(), 2);
    EXPECT_EQ((int)under_way[0], 3); // two of the five were spoken for
    EXPECT_EQ((int)under_way[1], 5);
    EXPECT_TRUE((bool)out[4]);
}

} // namespace
} // namespace tilm
