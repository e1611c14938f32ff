#include "game/shell/warm_list.h"

#include <algorithm>

#include <godot_cpp/classes/font_file.hpp>
#include <godot_cpp/classes/label3d.hpp>

#include "game/actors/crop_field.h"
#include "game/actors/customer.h"
#include "game/actors/harvester.h"
#include "game/actors/person_look.h"
#include "game/actors/unlock_tile.h"
#include "game/art/buildings.h"
#include "game/art/icon_models.h"
#include "game/art/models.h"
#include "game/art/scenery.h"
#include "game/art/truck_models.h"
#include "game/data/farm_data.h"
#include "game/kit/ui.h"
#include "rules/producers.h"
#include "safe_read.h"

namespace tilm::warm_list {
namespace {

// Builders leave what they make in the caches; the node itself was only the way there.
void drop(Node *node) {
    if (node != nullptr) {
        memdelete(node);
    }
}

// Sizes of signs in the world. Their glyphs are drawn when a sign is first laid out, dozens of signs in one frame.
constexpr int sign_sizes[] = {34, 38, 40, 44, 46, 48, 52, 56, 60, 64};
constexpr int sign_outline = 16;
// Words that lie on closed land: their own sizes, with outlines of their own.
struct LandText {
    int size;
    int outline;
};
constexpr LandText land_texts[] = {{170, 26}, {170, 0}, {90, 18}, {90, 0}, {58, 14}, {58, 0}, {46, 14}};
// Sizes of the interface's own texts over a farm.
constexpr int text_sizes[] = {22, 24, 26, 28, 30, 34, 36, 40, 44};
constexpr const char *hud_icons[] = {"money", "golden_egg", "smile", "pause", "zoom",  "flag",
                                     "menu",  "friends",    "boost", "style", "decor", "goals"};
constexpr const char *staff_roles[] = {"farmer", "worker", "feed", "loader", "seller", "machine"};

void glyphs(const Ref<Font> &font, int size, int outline, int64_t from, int64_t to) {
    const Ref<FontFile> file = font;
    if (file.is_valid()) {
        file->render_range(0, Vector2i(size, outline), from, to);
    }
}

void texts(const Add &add) {
    add("font", [] { Models::font(); });
    for (const int size : sign_sizes) {
        for (const int outline : {0, sign_outline}) {
            const String name = vformat("sign_%d_%d", size, outline);
            add(name, [=] { glyphs(Models::font(), size, outline, ' ', '9'); });
            add(name + "_capitals", [=] { glyphs(Models::font(), size, outline, 'A', 'Z'); });
        }
    }
    for (const LandText &text : land_texts) {
        for (char from = 'A'; from <= 'Z'; from += 5) { // big glyphs: a few at a time
            const char to = from + 4 < 'Z' ? static_cast<char>(from + 4) : 'Z';
            add(vformat("land_%d_%d_%d", text.size, text.outline, from),
                [=] { glyphs(Models::font(), text.size, text.outline, from, to); });
        }
    }
    add("text_theme", [] { Models::font()->get_string_size("$0", HORIZONTAL_ALIGNMENT_LEFT, -1, 34); });
    for (const int size : text_sizes) {
        add(vformat("text_%d", size), [size] {
            if (const Ref<Font> font = UI::font_at(size); font.is_valid()) {
                font->get_string_size("$0 ABCDEFGHIJKLMNOPQRSTUVWXYZ", HORIZONTAL_ALIGNMENT_LEFT, -1, size);
            }
        });
    }
    for (const char *icon : hud_icons) {
        add(String("icon_") + icon, [icon] { UI::icon(icon); });
    }
}

void people(const Add &add) {
    for (const char *role : staff_roles) {
        const Array skins = PersonLook::staff_skin_list();
        for (int64_t i = 0; i < skins.size(); ++i) {
            const String skin = skins[i];
            add(vformat("person_%s_%s", role, skin),
                [role, skin] { drop(Models::person(PersonLook::of_role(role, skin))); });
        }
    }
    const Array pool = PersonLook::customer_looks();
    for (int64_t i = 0; i < pool.size(); ++i) {
        const Dictionary look = pool[i];
        add(vformat("customer_%d", i), [look] { drop(Models::person(look)); });
    }
    add("bubbles", [] { Customer::warm(); });
}

void producer(const Add &add, const Dictionary &entry) {
    const String product = entry.get("product", "");
    add("p_" + product, [product] { drop(Buildings::house(product)); });
    if (product == "fish") { // its ponds hold all three kinds
        for (const char *kind : {"fish0", "fish1", "fish2"}) {
            add(String("animal_") + kind, [kind] { drop(Models::animal(kind)); });
        }
    } else {
        add("animal_" + product, [product] { drop(Models::animal(product)); });
    }
    add("tray", [] { drop(Buildings::tray()); });
    const rules::ProducerKind *row = rules::producer_kind(product.utf8().get_data());
    if (row != nullptr && !row->feed.empty()) {
        const String feed = String::utf8(row->feed.data(), static_cast<int64_t>(row->feed.size()));
        add("trough_" + feed, [feed] { drop(Buildings::trough(feed)); });
    }
    if (product == "wool") {
        add("animal_wool_shorn", [] { drop(Models::animal("wool_shorn")); });
    }
}

void machine(const Add &add, const Dictionary &entry) {
    const String product = entry.get("product", "");
    const Color roof = entry.get("roof", Buildings::machine_roof());
    add(vformat("m_%s_%s", product, roof.to_html(false)), [product, roof] { drop(Buildings::machine(product, roof)); });
    add("anim_" + product, [product] { drop(Buildings::anim(product)); });
}

void truck(const Add &add, const Dictionary &entry, bool dock) {
    const Color paint = entry.get("roof", Color::html("1e88e5"));
    add("truck_" + paint.to_html(false), [paint] { drop(truck_models::truck(paint)); });
    add("gold_truck", [] { drop(truck_models::gold_truck()); });
    add(dock ? "bay_dock" : "bay_market", [dock] { drop(truck_models::bay(dock)); });
}

void field(const Add &add, const Dictionary &entry) {
    const String crop = entry.get("crop", "");
    add("f_" + crop, [crop] { Models::crop_mesh(crop); });
    add("bed_" + String(entry.get("id", "")), [entry] { CropField::warm(entry); });
}

void plan_entry(const Add &add, const Dictionary &entry) {
    const String kind = entry.get("kind", "");
    if (kind == "producer") {
        producer(add, entry);
    } else if (kind == "machine" || kind == "factory" || kind == "restaurant") {
        machine(add, entry);
        if (kind == "factory") {
            truck(add, entry, true);
        }
    } else if (kind == "field") {
        field(add, entry);
    } else if (kind == "stall") {
        const Color paint = entry.get("color", Color::html("ef6c00"));
        add("stall_" + paint.to_html(false), [paint] { drop(Buildings::stall(paint)); });
    } else if (kind == "truck") {
        truck(add, entry, false);
    } else if (kind == "depot") {
        add("depot", [] { drop(truck_models::depot()); });
        add("supply_van", [] { drop(truck_models::flying_van()); });
    } else if (kind == "harvester") {
        const Color paint = entry.get("color", Color(0.94f, 0.42f, 0));
        add("harvester_" + paint.to_html(false), [paint] { Harvester::warm(paint); });
    }
}

// Bases of an entry's requirements all stand: its tile may lie there, to be bought.
bool in_reach(const Dictionary &entry, const std::function<int64_t(const Dictionary &)> &level) {
    const Variant req = entry.get("req", Variant());
    if (req.get_type() != Variant::ARRAY) {
        return true;
    }
    const Array wanted = req;
    for (int64_t i = 0; i < wanted.size(); ++i) {
        const Dictionary other = FarmData::entry_by_id(wanted[i]);
        if (!other.is_empty() && level(other) < 1) {
            return false;
        }
    }
    return true;
}

} // namespace

void common(const Add &add) {
    const Array kinds = FarmData::prices().keys();
    for (int64_t i = 0; i < kinds.size(); ++i) {
        const String key = String("item_") + String(kinds[i]);
        add(key, [key] { Models::item_mesh(key); });
    }
    for (const char *piece : {"money_bill", "money_gold", "money_case"}) {
        add(piece, [piece] { Models::item_mesh(piece); });
    }
    add("tree", [] { drop(Models::any_tree(0.1f)); });
    add("tree_pine", [] { drop(Models::any_tree(0.7f)); });
    add("tree_birch", [] { drop(Models::any_tree(0.9f)); });
    for (int i = 0; i < 3; ++i) {
        add(vformat("stone_%d", i), [i] { drop(Scenery::stone(i)); });
    }
    add("pallet", [] { drop(Buildings::pallet()); });
    add("fence", [] { drop(Scenery::fence(37.2f)); });
    add("farmhouse", [] { drop(Scenery::farmhouse(0)); });
    add("bench", [] { drop(Scenery::bench()); });
    add("homestead", [] { drop(Scenery::homestead()); });
    add("region_sign", [] { drop(Scenery::region_sign()); });
    add("cash_mat", [] { drop(Scenery::cash_mat()); });
    add("path", [] { drop(Scenery::path_strip(Vector2(2.0f, 15.5f))); });
    add("arrow", [] { drop(IconModels::ground_arrow(Color::html("ffb300"))); });
    texts(add);
    people(add);
}

void entries(const Add &add, const Dictionary &levels, bool full) {
    const auto level = [&](const Dictionary &entry) {
        const int64_t steps = static_cast<Array>(entry.get("costs", Array())).size();
        const int64_t wanted = full ? static_cast<int64_t>(entry.get("base", steps))
                                    : std::max<int64_t>(0, read_whole(levels, entry.get("id", "")));
        return std::min(wanted, steps);
    };
    const Array plan = FarmData::plan();
    for (int64_t i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        const String id = entry.get("id", "");
        const int64_t stands = level(entry);
        if (id == "coop_a" || stands >= 1) {
            plan_entry(add, entry);
        }
        if (stands < static_cast<Array>(entry.get("costs", Array())).size() && in_reach(entry, level)) {
            const String kind = entry.get("kind", "");
            const String product = entry.get("product", "");
            add("tile_" + id, [id, kind, product] { drop(UnlockTile::plate_model(id, kind, product)); });
        }
    }
}

} // namespace tilm::warm_list
