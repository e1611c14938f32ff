#pragma once
// The catalogue of the game: prices, titles, the farm plan, regions, lots and the buildings that can be added. All
// values are shared and built on first use; callers read them and do not change them.

#include <cstdint>

#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class FarmData : public RefCounted {
    GDCLASS(FarmData, RefCounted)

public:
    // Goods.
    static Dictionary prices(); // kind -> int dollars, in the order that lists show
    static Dictionary titles(); // kind -> "EGGS"
    static int64_t price_of(const String &kind, int64_t otherwise = 0);
    static String title_of(const String &kind); // the kind itself in upper case where it has no title
    static Array album_groups();                // rows {title, kinds}
    static Array market_goods();                // kinds, in the order of the market
    static Dictionary bed_colors();             // crop -> Color
    static double item_height(const String &kind);

    // The plan: dictionaries with id, kind, title, region, pos, costs, req, base and further keys by kind.
    static Array plan();
    static Dictionary entry_by_id(const String &id); // empty where there is none
    static bool entry_in_region(const Dictionary &entry, const String &region);
    static Array levelled_kinds();
    static Dictionary region_scale(); // region -> cost scale

    // Land.
    static Array regions();                              // rows {id, x, title}, west of the strip first as told
    static Dictionary region_by_id(const String &id);    // empty where there is none
    static int64_t unlock_level(const String &entry_id); // farm level of a land, 0 without a gate
    static int64_t lot_count(const String &region);
    static double lot_x(const String &region, int64_t slot);
    static double lot_row(int64_t slot); // z
    static bool lot_blocked(const String &region, int64_t slot);

    // Buildings added by the player: type -> [title, kind, product, region, template id, carry_to].
    static Dictionary extra_types();
    // Each appends its entries to the plan and returns them; bad rows are logged and give nothing.
    static Array extra_nodes(const Dictionary &e);
    static Array annex_nodes(const Dictionary &e);
    static Array helper_node(const Dictionary &e);
    static void strip_extras();

    static void setup_statics();

protected:
    static void _bind_methods();
};

} // namespace tilm
