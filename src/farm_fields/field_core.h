#pragma once
// The per-frame engine of a crop field: one MultiMesh with a plant in each cell, cut by anybody and growing back.

#include <vector>

#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/node3d.hpp>

#include "fields.h"
#include "rules/field_rules.h"

namespace tilm {
using namespace godot;

class FieldCore : public Node3D {
    GDCLASS(FieldCore, Node3D)

public:
    // Plants `mm` over `r` (world ground plane); `y_off` lifts the plants, `tilt` leans them a little.
    void core_build(const Ref<MultiMesh> &mm, const Rect2 &r, double y_off, bool tilt);
    bool regrowing() const { return grid.alive() < grid.total(); }
    double alive_ratio() const;
    bool contains(const Vector3 &p, double margin = 0) const;
    // Cuts living plants within `radius` of `p`, at most `max_cells`; returns how many.
    int collect_at(const Vector3 &p, int max_cells, double radius);
    // A living plant closer than `within` to `near` (anywhere when `near` is infinite), else a random spot.
    Vector3 random_alive(const Vector3 &near, double within);

    // Crop growth by season, weather and boosts, for all fields.
    static void set_weather_mult(double v);
    static double get_weather_mult();

    Rect2 get_rect() const { return rect; }
    int get_nx() const { return grid.nx(); }
    int get_nz() const { return grid.nz(); }
    TM_FIELD(double, grow_mult, 1.0)

    // One slow-list visit with the time gathered since the last.
    void grow(double dt);

    const rules::CellGrid &cells() const { return grid; }

protected:
    static void _bind_methods();

private:
    void show_cell(int cell, float scale);
    Vector3 cell_pos(int cell) const;

    Rect2 rect;
    Ref<MultiMesh> plants;
    rules::CellGrid grid;
    std::vector<Transform3D> places; // at full size
};

} // namespace tilm
