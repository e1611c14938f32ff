#pragma once
// The shared engine values behind FarmData, made together on first use and dropped before the engine goes.

#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>

namespace tilm {
using namespace godot;

struct Catalog {
    Dictionary prices;
    Dictionary titles;
    Array album_groups;
    Array market_goods;
    Dictionary bed_colors;
    Array levelled_kinds;
    Dictionary region_scale;
    Array regions;
    Dictionary region_index; // id -> row
    Dictionary extra_types;
    Array plan;
    Dictionary plan_index; // id -> position; a hint, checked on use

    // Puts an entry at the end of the plan.
    void add_entry(const Dictionary &entry);
    void index_plan();

    static Catalog &get();
    static void release();
};

} // namespace tilm
