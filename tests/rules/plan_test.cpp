#include "rules/plan.h"

#include <cstdio>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "plan_table.h"
#include "rules/costs.h"
#include "rules/extras.h"
#include "rules/goods.h"

namespace tilm::rules {
namespace {

const std::vector<PlanEntry> &the_plan() {
    static std::vector<std::string> faults;
    static const std::vector<PlanEntry> plan = build_plan(faults);
    return plan;
}

const PlanEntry *entry(std::string_view id) {
    for (const PlanEntry &e : the_plan()) {
        if (e.id == id) {
            return &e;
        }
    }
    return nullptr;
}

std::string number(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", v);
    return text;
}

std::string point(Vec2 v) {
    return number(v.x) + "," + number(v.y);
}

std::string area(const Rect &r) {
    return number(r.x) + "," + number(r.y) + "," + number(r.w) + "," + number(r.h);
}

std::string color(uint32_t rgb) {
    char text[8];
    std::snprintf(text, sizeof text, "%06x", rgb);
    return text;
}

template <class List, class Fn>
std::string joined(const List &list, const char *between, Fn fn) {
    std::string out;
    for (const auto &v : list) {
        out += (out.empty() ? "" : between) + fn(v);
    }
    return out;
}

std::string needs(const auto &recipe) {
    return joined(recipe, ",", [](const Need &n) { return std::string(n.kind) + ":" + std::to_string(n.units); });
}

// An entry as a line of the table.
std::string line_of(const PlanEntry &e) {
    const auto same = [](const auto &s) { return std::string(s); };
    std::map<std::string, std::string> more;
    const auto text = [&](const char *key, const std::string &v) {
        if (!v.empty()) {
            more[key] = v;
        }
    };
    text("product", e.product);
    text("products", joined(e.products, ",", same));
    text("recipe", needs(e.recipe));
    text("flavors",
         joined(e.flavors, ",", [](const Flavor &f) { return std::string(f.kind) + "(" + needs(f.recipe) + ")"; }));
    text("dst", e.dst);
    text("field", e.field);
    text("crop", e.crop);
    text("target", e.target);
    text("factory", e.factory);
    text("depot", e.depot);
    text("trade", e.trade);
    text("feed_only", e.feed_only ? "true" : "");
    text("machines", joined(e.machines, ",", [&](const Supply &s) {
             return std::string(s.machine) + "(" + joined(s.kinds, ",", same) + ")";
         }));
    if (e.kinds) {
        more["kinds"] = joined(*e.kinds, ",", same);
    }
    text("yield", e.yield ? std::to_string(*e.yield) : "");
    text("roof", e.roof ? color(*e.roof) : "");
    text("bed", e.bed ? color(*e.bed) : "");
    text("color", e.color ? color(*e.color) : "");
    text("rect", e.rect ? area(*e.rect) : "");
    text("block", e.block ? area(*e.block) : "");
    text("pallet", e.pallet ? point(*e.pallet) : "");
    const auto or_dash = [](const std::string &s) { return s.empty() ? std::string("-") : s; };
    return e.id + "\t" + e.kind + "\t" + e.title + "\t" + e.region + "\t" + point(e.pos) + "\t" +
           (e.pad ? point(*e.pad) : "-") + "\t" + joined(e.costs, " ", [](int64_t c) { return std::to_string(c); }) +
           "\t" + std::to_string(e.base) + "\t" + or_dash(joined(e.req, " ", same)) + "\t" +
           or_dash(joined(more, ";", [](const auto &kv) { return kv.first + "=" + kv.second; }));
}

TEST(Plan, EveryEntryIsAsInTheTableAndInItsOrder) {
    const std::vector<std::string> table = read_plan_table(TILMARCH_TEST_DATA "/plan.tsv");
    ASSERT_EQ(table.size(), 222U);
    ASSERT_EQ(the_plan().size(), table.size());
    for (size_t i = 0; i < table.size(); ++i) {
        EXPECT_EQ(line_of(the_plan()[i]), table[i]);
    }
}

TEST(Plan, NoRowIsFaultyAndAllReferencesResolve) {
    std::vector<std::string> faults;
    build_plan(faults);
    EXPECT_TRUE(faults.empty()) << faults.front();
    for (const PlanEntry &e : the_plan()) {
        for (const std::string &req : e.req) {
            const Requirement r = parse_requirement(req);
            const PlanEntry *other = entry(r.id);
            ASSERT_NE(other, nullptr) << e.id << " needs " << req;
            EXPECT_LE(static_cast<size_t>(r.level), other->costs.size()) << e.id << " needs " << req;
        }
        for (const std::string &id : {e.factory, e.depot, e.field}) {
            EXPECT_TRUE(id.empty() || entry(id) != nullptr) << e.id << " names " << id;
        }
        if (e.kind == "land") {
            EXPECT_NE(find_region(e.target), nullptr) << e.id;
            EXPECT_GT(unlock_level(e.id), 0) << e.id;
        }
        for (const Supply &s : e.machines) {
            ASSERT_NE(entry(s.machine), nullptr) << s.machine;
        }
    }
}

TEST(Plan, EveryPriceCanBeReachedFromAnEmptyFarm) {
    std::set<std::string, std::less<>> bought;
    for (bool more = true; more;) {
        more = false;
        for (const PlanEntry &e : the_plan()) {
            bool open = !bought.contains(e.id);
            for (const std::string &req : e.req) {
                open = open && bought.contains(parse_requirement(req).id);
            }
            if (open) {
                bought.insert(e.id);
                more = true;
            }
        }
    }
    EXPECT_EQ(bought.size(), the_plan().size());
}

TEST(Plan, CarriersAndGoodsExist) {
    for (const PlanEntry &e : the_plan()) {
        for (const std::string &kind : e.kinds.value_or(std::vector<std::string>{})) {
            EXPECT_NE(find_good(kind), nullptr) << e.id << " carries " << kind;
        }
        if (!e.product.empty()) {
            EXPECT_NE(find_good(e.product), nullptr) << e.id << " makes " << e.product;
        }
        for (const Need &need : e.recipe) {
            EXPECT_NE(find_good(need.kind), nullptr) << e.id << " eats " << need.kind;
            EXPECT_GT(need.units, 0) << e.id;
        }
        if (e.kind != "hauler") {
            continue;
        }
        ASSERT_FALSE(e.dst.empty()) << e.id;
        if (e.dst == "@feed") {
            EXPECT_EQ(entry(e.req.front())->kind, "producer") << e.id;
            continue;
        }
        for (size_t at = 0; at <= e.dst.size();) {
            const size_t bar = std::min(e.dst.find('|', at), e.dst.size());
            const std::string_view target = std::string_view(e.dst).substr(at, bar - at);
            EXPECT_NE(entry(target), nullptr) << e.id << " goes to " << target;
            at = bar + 1;
        }
    }
    for (const ExtraType &t : extra_types()) {
        EXPECT_NE(entry(t.plan_id), nullptr) << t.type;
        EXPECT_NE(find_region(t.region), nullptr) << t.type;
        EXPECT_NE(find_good(t.product), nullptr) << t.type;
        EXPECT_EQ(t.kind == "machine", !t.carry_to.empty()) << t.type;
    }
    EXPECT_EQ(extra_types().size(), 35U);
}

TEST(Plan, PricesFollowTheFinishingRules) {
    using List = std::vector<int64_t>;
    const auto first = [](std::string_view id, size_t n) {
        const List &c = entry(id)->costs;
        return List(c.begin(), c.begin() + static_cast<long>(std::min(n, c.size())));
    };
    EXPECT_EQ(first("coop_a", 2), (List{25, 30}));                                // factor 1 leaves small prices alone
    EXPECT_EQ(first("mayo_factory", 3), (List{13500, 7500, 15000}));              // scaled
    EXPECT_EQ(first("bread_factory", 5), (List{6000, 4000, 8000, 15000, 25000})); // exempt in the same region
    EXPECT_EQ(entry("bread_factory")->costs[5], 37500);
    EXPECT_EQ(entry("cake_factory")->costs.front(), 72000);
    EXPECT_EQ(entry("diner_bakery")->costs.front(), 0);
    EXPECT_EQ(entry("final")->costs, (List{8000000}));
    EXPECT_EQ(first("mill_feeder", 9), (List{2000, 4500, 9000}));         // third level
    EXPECT_EQ(first("truck_mill_loader", 9), (List{7000, 14000, 28000})); // a truck is no stall
    EXPECT_EQ(first("ahwa_helper", 9), (List{150000, 300000}));
    EXPECT_EQ(first("flour_hauler", 9), (List{2500, 5000}));
    EXPECT_EQ(first("veggie_hauler", 9), (List{94500, 189000}));
    EXPECT_EQ(first("water_workers", 5), (List{0, 600, 930, 1440, 2230}));
    EXPECT_EQ(entry("water_workers")->costs.size(), 26U);
    const List &guards = entry("guards")->costs;
    ASSERT_EQ(guards.size(), 60U);
    EXPECT_EQ(guards[0], 1500);
    EXPECT_EQ(guards[1], 2000); // 1950 rounds up
    EXPECT_EQ(guards[2], 2500);
    EXPECT_EQ(entry("guards")->base, 20);
    EXPECT_EQ(entry("svc_vet_2")->base, 0);
    EXPECT_EQ(entry("wheat_harvester")->costs[1], 6000);
    EXPECT_EQ(entry("wheat_harvester")->costs[2], 6700); // grows by 1.12
    EXPECT_EQ(entry("coop_a")->base, 5);
    EXPECT_EQ(entry("coop_a")->costs.size(), 20U);
}

TEST(Costs, RoundInSinglePrecisionAndAwayFromZero) {
    EXPECT_EQ(scaled_cost(250, 0.75F), 200);
    EXPECT_EQ(scaled_cost(200, 0.75F), 200); // 150 is half way
    EXPECT_EQ(scaled_cost(25, 1.0F), 25);
    EXPECT_EQ(scaled_cost(0, 0.05F), 0);
    EXPECT_EQ(scaled_cost(75000, 0.21F), 15700); // just below the half in single precision; double would give 15800
    EXPECT_EQ(annex_cost(14000, 1), 21000);
    EXPECT_EQ(annex_cost(14000, 2), 28000);
    std::vector<int64_t> none;
    extend_costs(none, 1.3);
    EXPECT_TRUE(none.empty());
}

TEST(Plan, WrongRowsAreNamedOneByOne) {
    const std::vector<PlanEntry> so_far = {*entry("coop_a")};
    const auto fault = [&](auto spoil) {
        PlanEntry e = *entry("coop_b");
        spoil(e);
        return entry_fault(e, so_far);
    };
    EXPECT_EQ(fault([](PlanEntry &) {}), "");
    EXPECT_NE(fault([](PlanEntry &e) { e.id.clear(); }), "");
    EXPECT_NE(fault([](PlanEntry &e) { e.id = "coop_a"; }).find("twice"), std::string::npos);
    EXPECT_NE(fault([](PlanEntry &e) { e.region = "moon"; }).find("moon"), std::string::npos);
    EXPECT_NE(fault([](PlanEntry &e) { e.costs.clear(); }), "");
    EXPECT_NE(fault([](PlanEntry &e) { e.costs[1] = -5; }), "");
    EXPECT_NE(fault([](PlanEntry &e) { e.req = {"coop_a@two"}; }).find("coop_a@two"), std::string::npos);
    EXPECT_EQ(parse_requirement("coop_a@12").level, 12);
    EXPECT_EQ(parse_requirement("coop_a").level, 1);
    EXPECT_EQ(parse_requirement("coop_a@-1").level, 0);
}

} // namespace
} // namespace tilm::rules
