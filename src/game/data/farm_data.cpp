#include "game/data/farm_data.h"

#include <string>

#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/char_string.hpp>
#include <godot_cpp/variant/rect2.hpp>

#include "game/data/catalog.h"
#include "names.h"
#include "rules/items.h"
#include "rules/regions.h"
#include "safe_read.h"
#include "statics.h"

namespace tilm {

namespace {

std::string plain(const String &text) {
    const CharString bytes = text.utf8();
    return std::string(bytes.get_data(), static_cast<size_t>(bytes.length()));
}

rules::Rect plain(const Rect2 &r) {
    return {static_cast<float>(r.position.x), static_cast<float>(r.position.y), static_cast<float>(r.size.x),
            static_cast<float>(r.size.y)};
}

// The ground that a plan entry keeps free of lots; empty where it keeps none.
rules::Rect kept_ground(const Dictionary &entry) {
    if (entry.has(TM_NAME("block"))) {
        return plain(as<Rect2>(entry[TM_NAME("block")]));
    }
    if (entry.has(TM_NAME("rect")) && read_text(entry, TM_NAME("kind")) == "field" &&
        !read_flag(entry, TM_NAME("extra"))) {
        return plain(as<Rect2>(entry[TM_NAME("rect")]));
    }
    return {};
}

float region_x(const String &region) {
    const rules::Region *row = rules::find_region(plain(region));
    return row == nullptr ? 0.0F : row->x;
}

} // namespace

Dictionary FarmData::prices() {
    return Catalog::get().prices;
}

Dictionary FarmData::titles() {
    return Catalog::get().titles;
}

int64_t FarmData::price_of(const String &kind, int64_t otherwise) {
    return read_whole(Catalog::get().prices, kind, otherwise);
}

String FarmData::title_of(const String &kind) {
    const Dictionary &titles = Catalog::get().titles;
    return titles.has(kind) ? as<String>(titles[kind]) : kind.replace("_", " ").to_upper();
}

Array FarmData::album_groups() {
    return Catalog::get().album_groups;
}

Array FarmData::market_goods() {
    return Catalog::get().market_goods;
}

Dictionary FarmData::bed_colors() {
    return Catalog::get().bed_colors;
}

double FarmData::item_height(const String &kind) {
    return rules::item_height(plain(kind));
}

Array FarmData::plan() {
    return Catalog::get().plan;
}

Dictionary FarmData::entry_by_id(const String &id) {
    Catalog &c = Catalog::get();
    const int64_t at = read_whole(c.plan_index, id, -1);
    if (at >= 0 && at < c.plan.size()) {
        const Dictionary entry = c.plan[at];
        if (read_text(entry, TM_NAME("id")) == id) {
            return entry;
        }
    }
    for (int64_t i = 0; i < c.plan.size(); ++i) {
        const Dictionary entry = c.plan[i];
        if (read_text(entry, TM_NAME("id")) == id) {
            c.plan_index[id] = i;
            return entry;
        }
    }
    return Dictionary();
}

bool FarmData::entry_in_region(const Dictionary &entry, const String &region) {
    const bool land = read_text(entry, TM_NAME("kind")) == "land";
    return read_text(entry, land ? TM_NAME("target") : TM_NAME("region")) == region;
}

Array FarmData::levelled_kinds() {
    return Catalog::get().levelled_kinds;
}

Dictionary FarmData::region_scale() {
    return Catalog::get().region_scale;
}

Array FarmData::regions() {
    return Catalog::get().regions;
}

Dictionary FarmData::region_by_id(const String &id) {
    return read_table(Catalog::get().region_index, id);
}

int64_t FarmData::unlock_level(const String &entry_id) {
    return rules::unlock_level(plain(entry_id));
}

int64_t FarmData::lot_count(const String &region) {
    return rules::lot_count(plain(region));
}

double FarmData::lot_x(const String &region, int64_t slot) {
    return rules::lot_x(region_x(region), slot);
}

double FarmData::lot_row(int64_t slot) {
    return rules::lot_row(slot);
}

bool FarmData::lot_blocked(const String &region, int64_t slot) {
    const rules::Region *row = rules::find_region(plain(region));
    if (row == nullptr || rules::lot_overlaps(row->x, slot, rules::HOMESTEAD)) {
        return true;
    }
    const Array plan = Catalog::get().plan;
    for (int64_t i = 0; i < plan.size(); ++i) {
        const rules::Rect ground = kept_ground(plan[i]);
        if (!ground.empty() && rules::lot_overlaps(row->x, slot, ground)) {
            return true;
        }
    }
    return false;
}

Dictionary FarmData::extra_types() {
    return Catalog::get().extra_types;
}

void FarmData::setup_statics() {
    Statics::on_release(&Catalog::release);
}

void FarmData::_bind_methods() {
    ClassDB::bind_static_method("FarmData", D_METHOD("prices"), &FarmData::prices);
    ClassDB::bind_static_method("FarmData", D_METHOD("titles"), &FarmData::titles);
    ClassDB::bind_static_method("FarmData", D_METHOD("price_of", "kind", "otherwise"), &FarmData::price_of, DEFVAL(0));
    ClassDB::bind_static_method("FarmData", D_METHOD("title_of", "kind"), &FarmData::title_of);
    ClassDB::bind_static_method("FarmData", D_METHOD("album_groups"), &FarmData::album_groups);
    ClassDB::bind_static_method("FarmData", D_METHOD("market_goods"), &FarmData::market_goods);
    ClassDB::bind_static_method("FarmData", D_METHOD("bed_colors"), &FarmData::bed_colors);
    ClassDB::bind_static_method("FarmData", D_METHOD("item_height", "kind"), &FarmData::item_height);
    ClassDB::bind_static_method("FarmData", D_METHOD("plan"), &FarmData::plan);
    ClassDB::bind_static_method("FarmData", D_METHOD("entry_by_id", "id"), &FarmData::entry_by_id);
    ClassDB::bind_static_method("FarmData", D_METHOD("entry_in_region", "entry", "region"), &FarmData::entry_in_region);
    ClassDB::bind_static_method("FarmData", D_METHOD("levelled_kinds"), &FarmData::levelled_kinds);
    ClassDB::bind_static_method("FarmData", D_METHOD("region_scale"), &FarmData::region_scale);
    ClassDB::bind_static_method("FarmData", D_METHOD("regions"), &FarmData::regions);
    ClassDB::bind_static_method("FarmData", D_METHOD("region_by_id", "id"), &FarmData::region_by_id);
    ClassDB::bind_static_method("FarmData", D_METHOD("unlock_level", "id"), &FarmData::unlock_level);
    ClassDB::bind_static_method("FarmData", D_METHOD("lot_count", "region"), &FarmData::lot_count);
    ClassDB::bind_static_method("FarmData", D_METHOD("lot_x", "region", "slot"), &FarmData::lot_x);
    ClassDB::bind_static_method("FarmData", D_METHOD("lot_row", "slot"), &FarmData::lot_row);
    ClassDB::bind_static_method("FarmData", D_METHOD("lot_blocked", "region", "slot"), &FarmData::lot_blocked);
    ClassDB::bind_static_method("FarmData", D_METHOD("extra_types"), &FarmData::extra_types);
    ClassDB::bind_static_method("FarmData", D_METHOD("extra_nodes", "e"), &FarmData::extra_nodes);
    ClassDB::bind_static_method("FarmData", D_METHOD("annex_nodes", "e"), &FarmData::annex_nodes);
    ClassDB::bind_static_method("FarmData", D_METHOD("helper_node", "e"), &FarmData::helper_node);
    ClassDB::bind_static_method("FarmData", D_METHOD("strip_extras"), &FarmData::strip_extras);
}

} // namespace tilm
