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
         {"kind", "value", "height", "target", "target_yaw", "follow_speed", "animal", "mesh_node"}},
        {"Item", {"create", "spawn", "_show_rig"}, {}},
        {"ItemBatchCore", {"configure", "add_self", "push", "stats"}, {"mat"}},
        {"StackCore",
         {"count", "total_cap", "is_full", "space", "count_kind", "has_kind", "set_side", "cols", "goods_count",
          "top_height", "top_global", "add", "take"},
         {"items", "capacity", "helper", "cart", "cart_cap", "cart_grid", "max_cols", "base", "sway"}},
        {"StackCarrier", {"_rope", "_ropes"}, {}},
        {"PileCore",
         {"count", "is_full", "count_kind", "recount", "slot_global", "add", "take", "drop", "_reflow", "_count_sign"},
         {"items", "cols", "rows", "spacing", "layer_h", "max_items", "flat"}},
        {"ZoneCore",
         {"has_point", "room", "has_room_for_any", "at", "claimed", "claim", "release"},
         {"pos", "size", "mode", "pile", "accepts", "makes", "group", "active"}},
        {"CashCore", {"near"}, {"bills"}},
        {"CashTile", {"total", "add_money", "add_quiet", "settle", "take_bill"}, {}},
        {"MoneyCore", {}, {"items", "base", "tier_h"}},
        {"MoneyStack", {"show_money"}, {}},
        {"Glebworks",
         {"set_view", "slow_add", "slow_tick", "square_at", "pose_add", "sync_poses", "push_moving", "cluster"},
         {}},
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

} // namespace
} // namespace tilm
