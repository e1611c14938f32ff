#include "rules/plan.h"

#include <algorithm>
#include <charconv>

#include "rules/costs.h"
#include "rules/goods.h"

namespace tilm::rules {

namespace {

constexpr float PAD_ROW = -2.2F;
constexpr float WALKWAY = 1.2F;
constexpr float FACTORY_ROW = -8.5F;
constexpr float BELT_OFFSET = -3.5F;
constexpr float SERVICE_FRONT = -8.5F;
constexpr float SERVICE_STEP = -6.5F;

template <class List>
std::vector<std::string> to_strings(const List &list) {
    return {list.begin(), list.end()};
}

std::vector<std::string> recipe_kinds(const Recipe &recipe) {
    std::vector<std::string> kinds;
    for (const Need &need : recipe) {
        kinds.emplace_back(need.kind);
    }
    return kinds;
}

// Where the upgrade tile of a kind stands when the row does not tell.
std::optional<Vec2> usual_pad(std::string_view kind, Vec2 pos) {
    if (kind == "producer" || kind == "machine" || kind == "factory" || kind == "restaurant" || kind == "depot") {
        return Vec2{pos.x, PAD_ROW};
    }
    if (kind == "stall") {
        return Vec2{pos.x, WALKWAY};
    }
    if (kind == "guards") {
        return pos;
    }
    return std::nullopt;
}

PlanEntry from_row(const PlanRow &row) {
    PlanEntry e;
    e.id = row.id;
    e.kind = row.kind;
    e.title = row.title;
    e.region = row.region;
    e.pos = row.pos;
    e.costs.assign(row.costs.begin(), row.costs.end());
    if (row.kind == "waterman") {
        e.costs = water_worker_costs();
    } else if (row.kind == "guards") {
        e.costs = guard_costs();
    }
    e.req = to_strings(row.req);
    if (row.pad != NO_PLACE) {
        e.pad = row.pad;
    } else if (!row.no_pad) {
        e.pad = usual_pad(row.kind, row.pos);
    }
    e.product = row.product;
    e.products = to_strings(row.products);
    e.recipe.assign(row.recipe.begin(), row.recipe.end());
    if (row.yield > 0) {
        e.yield = row.yield;
    }
    e.flavors.assign(row.flavors.begin(), row.flavors.end());
    if (row.kind == "machine") {
        e.roof = row.roof;
    }
    if (row.kind == "hauler" || row.kind == "depot") {
        e.kinds = to_strings(row.kinds);
    }
    e.dst = row.dst;
    e.field = row.field;
    if (row.kind == "field") {
        e.crop = row.crop;
        e.bed = bed_color(row.crop);
        e.rect = row.rect;
        e.pallet = row.pallet;
    }
    if (row.kind == "stall" || row.kind == "harvester") {
        e.color = row.color;
    }
    if (!row.block.empty()) {
        e.block = row.block;
    }
    e.target = row.target;
    e.machines.assign(row.machines.begin(), row.machines.end());
    return e;
}

PlanEntry from_maker(const MakerRow &maker, std::string_view kind) {
    PlanEntry e;
    const std::string id(maker.id);
    const std::string title(maker.title);
    e.kind = kind;
    e.region = maker.region;
    if (kind == "crew") {
        e.id = id + "_crew";
        e.title = title + " CREW";
        e.pos = {maker.x, WALKWAY};
        e.costs.assign(maker.crew_costs.begin(), maker.crew_costs.end());
        e.req = {id};
        e.factory = id;
        e.kinds = recipe_kinds(maker.recipe);
        e.product = maker.product;
        e.feed_only = maker.restaurant;
    } else if (kind == "belt") {
        e.id = id + "_belt";
        e.title = title + " BELTS";
        e.pos = {maker.x + BELT_OFFSET, WALKWAY};
        e.costs.assign(maker.belt_costs.begin(), maker.belt_costs.end());
        e.req = {id, std::string(maker.depot)};
        e.factory = id;
        e.depot = maker.depot;
    } else {
        e.id = id;
        e.title = title;
        e.pos = {maker.x, FACTORY_ROW};
        e.pad = usual_pad(kind, e.pos);
        e.costs.assign(maker.costs.begin(), maker.costs.end());
        e.req = to_strings(maker.req);
        e.recipe.assign(maker.recipe.begin(), maker.recipe.end());
        e.product = maker.product;
        e.roof = maker.roof;
        if (!maker.restaurant) {
            e.yield = maker.yield;
        }
    }
    return e;
}

const MakerRow *find_maker(std::string_view id) {
    for (const MakerRow &m : maker_rows()) {
        if (m.id == id) {
            return &m;
        }
    }
    return nullptr;
}

std::vector<PlanEntry> trade_entries(const TradeRow &row) {
    std::vector<PlanEntry> entries;
    for (size_t i = 0; i < row.costs.size(); ++i) {
        PlanEntry e;
        e.id = "svc_" + std::string(row.trade) + "_" + std::to_string(i + 1);
        e.kind = "service";
        e.title = row.title;
        e.region = "service";
        e.pos = {row.x, static_cast<float>(row.row + static_cast<int>(i)) * SERVICE_STEP + SERVICE_FRONT};
        e.costs = {row.costs[i]};
        e.trade = row.trade;
        if (i > 0) {
            e.req = {entries.back().id};
        } else if (!row.req.empty()) {
            e.req = {std::string(row.req)};
        }
        entries.push_back(std::move(e));
    }
    return entries;
}

} // namespace

Requirement parse_requirement(std::string_view text) {
    const size_t at = text.find('@');
    if (at == std::string_view::npos) {
        return {text, 1};
    }
    const std::string_view digits = text.substr(at + 1);
    int level = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), level);
    const bool good = error == std::errc() && end == digits.data() + digits.size() && level > 0;
    return {text.substr(0, at), good ? level : 0};
}

std::string entry_fault(const PlanEntry &entry, std::span<const PlanEntry> so_far) {
    if (entry.id.empty() || entry.kind.empty() || entry.title.empty()) {
        return "plan row \"" + entry.id + "\" lacks an id, a kind or a title: skipped";
    }
    if (find_region(entry.region) == nullptr) {
        return "plan row " + entry.id + ": no region " + entry.region + ": skipped";
    }
    if (entry.costs.empty() || std::any_of(entry.costs.begin(), entry.costs.end(), [](int64_t c) { return c < 0; })) {
        return "plan row " + entry.id + ": bad costs: skipped";
    }
    for (const PlanEntry &other : so_far) {
        if (other.id == entry.id) {
            return "plan row " + entry.id + " stands twice: the second is skipped";
        }
    }
    for (const std::string &req : entry.req) {
        if (parse_requirement(req).level == 0) {
            return "plan row " + entry.id + ": bad requirement " + req + ": skipped";
        }
    }
    return {};
}

void finish_costs(PlanEntry &entry) {
    const float scale = keeps_price(entry.id) ? 1.0F : region_scale(entry.region);
    for (int64_t &cost : entry.costs) {
        cost = scaled_cost(cost, scale);
    }
    if (entry.kind == "hauler" && gets_third_level(entry.dst, entry.costs.size())) {
        entry.costs.push_back(entry.costs.back() * 2);
    }
    entry.base = static_cast<int>(entry.costs.size());
    if (entry.kind == "service") {
        entry.base = 0;
    } else if (entry.kind == "guards") {
        entry.base = static_cast<int>(FULL_LEVELS);
    }
    if (is_levelled(entry.kind)) {
        extend_costs(entry.costs, cost_growth(entry.kind));
    }
}

std::vector<PlanEntry> build_plan(std::vector<std::string> &faults) {
    std::vector<PlanEntry> plan;
    const auto add = [&](PlanEntry entry) {
        std::string fault = entry_fault(entry, plan);
        if (!fault.empty()) {
            faults.push_back(std::move(fault));
            return;
        }
        finish_costs(entry);
        plan.push_back(std::move(entry));
    };
    for (const auto &rows : {plan_rows_start(), plan_rows_food(), plan_rows_ranch(), plan_rows_court(),
                             plan_rows_orchard(), plan_rows_coffee()}) {
        for (const PlanRow &row : rows) {
            if (row.maker.empty()) {
                add(from_row(row));
            } else if (const MakerRow *maker = find_maker(row.maker)) {
                add(from_maker(*maker, row.kind));
            } else {
                faults.push_back("plan row " + std::string(row.id) + ": no factory " + std::string(row.maker) +
                                 ": skipped");
            }
        }
    }
    for (const TradeRow &row : trade_rows()) {
        for (PlanEntry &entry : trade_entries(row)) {
            add(std::move(entry));
        }
    }
    return plan;
}

} // namespace tilm::rules
