#pragma once
// The finished farm plan: every entry with its place and with the prices that the player pays.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "rules/plan_rows.h"

namespace tilm::rules {

struct PlanEntry {
    std::string id;
    std::string kind;
    std::string title;
    std::string region;
    Vec2 pos;
    std::optional<Vec2> pad;    // where the upgrade tile stands from level 1 on
    std::vector<int64_t> costs; // costs[level] buys the next level
    int base = 0;               // levels that were written by hand; they make up the progress percent
    std::vector<std::string> req;

    std::string product;
    std::vector<std::string> products;
    std::vector<Need> recipe;
    std::optional<int> yield;
    std::vector<Flavor> flavors;
    std::optional<uint32_t> roof;
    std::optional<std::vector<std::string>> kinds; // hauler: none means any
    std::string dst;
    std::string field;
    std::string crop;
    std::optional<uint32_t> bed;
    std::optional<Rect> rect;
    std::optional<Vec2> pallet;
    std::optional<uint32_t> color;
    std::optional<Rect> block;
    std::string target;
    std::string factory;
    std::string depot;
    bool feed_only = false;
    std::vector<Supply> machines;
    std::string trade;
};

// "coop_a@2" -> {"coop_a", 2}; the level is 1 where none is told, 0 where it is no whole number above 0.
struct Requirement {
    std::string_view id;
    int level;
};
Requirement parse_requirement(std::string_view text);

// What is wrong with an entry that would be added to `so_far`; empty when it is good.
std::string entry_fault(const PlanEntry &entry, std::span<const PlanEntry> so_far);

// The whole plan in order. Rows that are wrong are left out and named in `faults`.
std::vector<PlanEntry> build_plan(std::vector<std::string> &faults);

// Brings hand-written prices to what the player pays: region factor, third carrier level, added levels.
void finish_costs(PlanEntry &entry);

} // namespace tilm::rules
