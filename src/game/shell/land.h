#pragma once
// The bought land of a farm: which regions are open, the covers over the others, the fences between, where one may
// walk.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class Land {
public:
    // Covers over every closed region and the first fences, under `world`.
    void build(Node3D *world);
    // The next few words on covers and signs; true when all are written.
    bool write_words();
    // Opens a region; not quietly, its cover and the fences sink away, in a scene (`shown`) a moment later.
    void open(const String &region, bool quiet, bool shown = false);
    bool is_open(const String &region) const { return regions.has(region); }
    int open_count() const { return regions.size(); }
    Dictionary table() const { return regions; }
    Dictionary cover_table() const { return covers; }
    Dictionary fence_table() const { return fences; }

    // Where the player may walk: the main area, and the service land while it stands apart (width 0 otherwise).
    Rect2 first_area() const { return first; }
    Rect2 second_area() const { return second; }

private:
    Node3D *world = nullptr;
    Dictionary regions; // id -> true
    Dictionary covers;  // id -> node
    Dictionary fences;  // x -> node
    int next_words = 0;
    std::vector<uint64_t> signs; // instance ids, by region row
    Rect2 first;
    Rect2 second;

    void refresh_fences(bool quiet, bool shown);
    void work_out_areas();
    void sink(Node3D *node, double depth, double wait, double seconds) const;
};

} // namespace tilm
