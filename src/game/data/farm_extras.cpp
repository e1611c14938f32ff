// The part of FarmData that turns stored additions of a farm into plan entries.

#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/vector2.hpp>

#include "game/data/catalog.h"
#include "game/data/farm_data.h"
#include "game/data/plan_entries.h"
#include "names.h"
#include "rules/costs.h"
#include "rules/goods.h"
#include "rules/regions.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr float PAD_OFFSET = 5.8F; // from a building on a lot to its price tile

// Columns of a row of extra_types().
enum Column { TITLE, KIND, PRODUCT, HOME_REGION, TEMPLATE, CARRY_TO, REQUIRED = CARRY_TO };

struct Place {
    String id;
    String region;
    float x = 0;
    float z = 0;
    rules::Rect bed;
};

// False, after a log line, where the region is none.
bool find_place(const Dictionary &e, Place &place) {
    place.region = read_text(e, TM_NAME("region"));
    const Dictionary region = FarmData::region_by_id(place.region);
    const String type = read_text(e, TM_NAME("type"));
    if (region.is_empty()) {
        ERR_PRINT("TILMARCH extra " + type + ": no region \"" + place.region + "\": skipped");
        return false;
    }
    const int64_t slot = read_whole(e, TM_NAME("slot"), 0);
    const float centre = static_cast<float>(read_real(region, TM_NAME("x")));
    place.id = "x_" + type + "_" + String::num_int64(read_whole(e, TM_NAME("n"), 0));
    place.x = rules::lot_x(centre, slot);
    place.z = rules::lot_row(slot);
    place.bed = rules::lot_bed(centre, slot);
    return true;
}

Array free_first_level(const Dictionary &entry) {
    Array costs = read_list(entry, TM_NAME("costs")).duplicate();
    costs[0] = 0;
    return costs;
}

Dictionary base_entry(const String &id, const String &kind, const String &title, const String &region,
                      const Vector2 &pos, const Array &costs) {
    Dictionary d;
    d["id"] = id;
    d["kind"] = kind;
    d["title"] = title;
    d["region"] = region;
    d["pos"] = pos;
    d["costs"] = costs;
    d["req"] = Array();
    d["extra"] = true;
    d["base"] = 0;
    return d;
}

Array publish(const Array &entries) {
    for (int64_t i = 0; i < entries.size(); ++i) {
        Catalog::get().add_entry(entries[i]);
    }
    return entries;
}

Dictionary building(const Place &place, const Array &row, const Dictionary &original) {
    const String kind = row[KIND];
    Dictionary d =
        base_entry(place.id, kind, row[TITLE], place.region, Vector2(place.x, place.z), free_first_level(original));
    d["product"] = row[PRODUCT];
    d["pad"] = Vector2(place.x, place.z + PAD_OFFSET);
    if (kind != "machine") {
        return d;
    }
    const Dictionary recipe = read_table(original, TM_NAME("recipe")).duplicate(true);
    const Dictionary flavors = read_table(original, TM_NAME("flavors")).duplicate(true);
    Array out_kinds = flavors.keys();
    if (out_kinds.is_empty()) {
        out_kinds.append(original[TM_NAME("product")]);
    }
    d["recipe"] = recipe;
    d["product"] = original[TM_NAME("product")];
    d["roof"] = original.get(TM_NAME("roof"), Color(1, 1, 1));
    d["yield"] = original.get(TM_NAME("yield"), 1);
    d["flavors"] = flavors;
    d["alias"] = original[TM_NAME("id")];
    d["feed_kinds"] = recipe.keys();
    d["out_kinds"] = out_kinds;
    d["carry_to"] = row.size() > CARRY_TO ? Variant(row[CARRY_TO]) : Variant(String());
    return d;
}

Array field_with_workers(const Place &place, const Array &row, const Dictionary &original) {
    const String crop = row[PRODUCT];
    Array free_cost;
    free_cost.append(0);
    Dictionary field = base_entry(place.id, "field", row[TITLE], place.region, Vector2(place.x, place.z), free_cost);
    field["crop"] = crop;
    field["rect"] = to_rect(place.bed);
    field["pallet"] = Vector2(place.x - 1.4F, place.z + 5.2F);
    field["bed"] = FarmData::bed_colors().get(crop, to_color(rules::bed_color({})));
    Dictionary workers = base_entry(place.id + "_w", "workers", "WORKERS", place.region,
                                    Vector2(place.x + 2.0F, place.z + 5.3F), free_first_level(original));
    Array req;
    req.append(place.id);
    workers["req"] = req;
    workers["field"] = place.id;
    Array entries;
    entries.append(field);
    entries.append(workers);
    return entries;
}

} // namespace

Array FarmData::extra_nodes(const Dictionary &e) {
    const String type = read_text(e, TM_NAME("type"));
    const Dictionary types = extra_types();
    if (!types.has(type)) {
        ERR_PRINT("TILMARCH unknown extra type " + type + ": skipped");
        return Array();
    }
    const Array row = types[type];
    if (row.size() < REQUIRED) {
        ERR_PRINT("TILMARCH extra " + type + ": bad template");
        return Array();
    }
    const String original_id = row[TEMPLATE];
    const Dictionary original = entry_by_id(original_id);
    if (original.is_empty()) {
        ERR_PRINT("TILMARCH extra " + type + ": template node " + original_id + " missing");
        return Array();
    }
    Place place;
    if (!find_place(e, place)) {
        return Array();
    }
    if (as<String>(row[KIND]) == "field") {
        return publish(field_with_workers(place, row, original));
    }
    Array entries;
    entries.append(building(place, row, original));
    return publish(entries);
}

Array FarmData::annex_nodes(const Dictionary &e) {
    const String type = read_text(e, TM_NAME("type"));
    const bool homes = type == "homes";
    if (!homes && type != "canteen") {
        ERR_PRINT("TILMARCH unknown extra type " + type + ": skipped");
        return Array();
    }
    const Dictionary original = entry_by_id(homes ? "worker_homes" : "canteen");
    Place place;
    if (original.is_empty() || !find_place(e, place)) {
        return Array();
    }
    Array costs = read_list(original, TM_NAME("costs")).duplicate();
    costs[0] = rules::annex_cost(to_whole(costs[0], 0), read_whole(e, TM_NAME("k"), 1));
    const Vector2 tile(place.x, place.z + PAD_OFFSET);
    Dictionary d = base_entry(place.id, original[TM_NAME("kind")], homes ? "ANOTHER WORKERS' HOME" : "ANOTHER CANTEEN",
                              place.region, tile, costs);
    Array req;
    req.append(original[TM_NAME("id")]);
    d["req"] = req;
    d["pad"] = tile;
    d["at"] = Vector2(place.x, place.z);
    d["annex"] = true;
    Array entries;
    entries.append(d);
    return publish(entries);
}

Array FarmData::helper_node(const Dictionary &e) {
    const String of = read_text(e, TM_NAME("of"));
    const Dictionary original = entry_by_id(of);
    if (original.is_empty()) {
        ERR_PRINT("TILMARCH extra helper: template node " + of + " missing");
        return Array();
    }
    Dictionary d = original.duplicate(true);
    Array free_cost;
    free_cost.append(0);
    d["id"] = "x_helper_" + String::num_int64(read_whole(e, TM_NAME("n"), 0));
    d["costs"] = free_cost;
    d["req"] = Array();
    d["extra"] = true;
    d["base"] = 0;
    Array entries;
    entries.append(d);
    return publish(entries);
}

void FarmData::strip_extras() {
    Catalog &c = Catalog::get();
    for (int64_t i = c.plan.size() - 1; i >= 0; --i) {
        const Dictionary entry = c.plan[i];
        if (read_flag(entry, TM_NAME("extra"))) {
            c.plan.remove_at(i);
        }
    }
    c.index_plan();
}

} // namespace tilm
