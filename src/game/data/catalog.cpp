#include "game/data/catalog.h"

#include <cmath>

#include <godot_cpp/core/error_macros.hpp>

#include "game/data/plan_entries.h"
#include "names.h"
#include "rules/costs.h"
#include "rules/extras.h"
#include "rules/goods.h"
#include "rules/plan.h"
#include "rules/regions.h"

namespace tilm {

namespace {

Catalog *s_catalog = nullptr;

Array to_array(std::span<const std::string_view> list) {
    Array out;
    for (const std::string_view v : list) {
        out.append(to_string(v));
    }
    return out;
}

void fill_goods(Catalog &c) {
    for (const rules::Good &g : rules::goods()) {
        const String kind = to_string(g.kind);
        c.prices[kind] = g.price;
        c.titles[kind] = to_string(g.title);
    }
    for (const rules::AlbumGroup &group : rules::album_groups()) {
        Dictionary row;
        row["title"] = to_string(group.title);
        row["kinds"] = to_array(group.kinds);
        c.album_groups.append(row);
    }
    c.market_goods = to_array(rules::market_goods());
    for (const rules::BedColor &bed : rules::bed_colors()) {
        c.bed_colors[to_string(bed.crop)] = to_color(bed.rgb);
    }
}

void fill_land(Catalog &c) {
    constexpr double DECIMALS =
        1e6; // the factors are single precision; as doubles they should read 0.6, not 0.60000002
    for (const rules::RegionScale &row : rules::region_scales()) {
        c.region_scale[to_string(row.region)] = std::round(static_cast<double>(row.scale) * DECIMALS) / DECIMALS;
    }
    for (const rules::Region &r : rules::regions()) {
        Dictionary row;
        row["id"] = to_string(r.id);
        row["x"] = static_cast<double>(r.x);
        row["title"] = to_string(r.title);
        c.regions.append(row);
        c.region_index[to_string(r.id)] = row;
    }
    for (const rules::ExtraType &t : rules::extra_types()) {
        Array row;
        for (const std::string_view column : {t.title, t.kind, t.product, t.region, t.plan_id}) {
            row.append(to_string(column));
        }
        if (!t.carry_to.empty()) {
            row.append(to_string(t.carry_to));
        }
        c.extra_types[to_string(t.type)] = row;
    }
}

void fill_plan(Catalog &c) {
    c.levelled_kinds = to_array(rules::levelled_kinds());
    std::vector<std::string> faults;
    for (const rules::PlanEntry &entry : rules::build_plan(faults)) {
        c.plan.append(entry_dictionary(entry));
    }
    for (const std::string &fault : faults) {
        ERR_PRINT("TILMARCH " + to_string(fault));
    }
    c.index_plan();
}

} // namespace

Catalog &Catalog::get() {
    if (s_catalog == nullptr) {
        s_catalog = new Catalog;
        fill_goods(*s_catalog);
        fill_land(*s_catalog);
        fill_plan(*s_catalog);
    }
    return *s_catalog;
}

void Catalog::release() {
    delete s_catalog;
    s_catalog = nullptr;
}

void Catalog::add_entry(const Dictionary &entry) {
    plan_index[entry[TM_NAME("id")]] = plan.size();
    plan.append(entry);
}

void Catalog::index_plan() {
    plan_index.clear();
    for (int64_t i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        plan_index[entry[TM_NAME("id")]] = i;
    }
}

} // namespace tilm
