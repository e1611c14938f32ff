#include "farm_fields/field_core.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <godot_cpp/variant/utility_functions.hpp>

#include "glebworks/glebworks.h"
#include "glebworks/water_meta.h"
#include "names.h"

namespace tilm {

namespace {

double s_weather_mult = 1.0;
constexpr real_t longest_side = 400; // of a bed: beyond it a row is damage

float between(double a, double b) {
    return static_cast<float>(UtilityFunctions::randf_range(a, b));
}

} // namespace

void FieldCore::set_weather_mult(double v) {
    if (std::isfinite(v)) {
        s_weather_mult = std::max(0.0, v);
    }
}

double FieldCore::get_weather_mult() {
    return s_weather_mult;
}

void FieldCore::core_build(const Ref<MultiMesh> &mm, const Rect2 &r, double y_off, bool tilt) {
    if (!r.position.is_finite() || !r.size.is_finite() || r.size.x > longest_side || r.size.y > longest_side) {
        ERR_PRINT("TILMARCH field: no ground to plant");
        return;
    }
    rect = r;
    plants = mm;
    grid.build(static_cast<int>(r.size.x / rules::cell_spacing), static_cast<int>(r.size.y / rules::cell_spacing));
    const int n = grid.total();
    places.clear();
    places.reserve(static_cast<size_t>(n));
    // The grid is centred: what the last whole cell leaves over is shared between both edges.
    const double x0 = r.position.x + (r.size.x - (grid.nx() - 1) * rules::cell_spacing) * 0.5;
    const double z0 = r.position.y + (r.size.y - (grid.nz() - 1) * rules::cell_spacing) * 0.5;
    for (int cell = 0; cell < n; ++cell) {
        const int col = cell % grid.nx();
        const int row = cell / grid.nx();
        Basis basis = Basis(Vector3(0, 1, 0), between(0, 2 * std::numbers::pi));
        if (tilt) {
            basis = basis * Basis(Vector3(1, 0, 0), between(-0.15, 0.15));
        }
        const float size = between(0.88, 1.12);
        const Vector3 at(static_cast<float>(x0 + col * rules::cell_spacing) + between(-0.07, 0.07),
                         static_cast<float>(y_off),
                         static_cast<float>(z0 + row * rules::cell_spacing) + between(-0.07, 0.07));
        places.emplace_back(basis.scaled_local(Vector3(size, size, size)), at);
    }
    if (plants.is_valid()) {
        plants->set_instance_count(n);
        for (int cell = 0; cell < n; ++cell) {
            plants->set_instance_transform(cell, places[static_cast<size_t>(cell)]);
        }
    }
    Glebworks::slow_remove(this);
    Glebworks::slow_add_step(this, [](Node *node, double dt) { static_cast<FieldCore *>(node)->grow(dt); });
}

double FieldCore::alive_ratio() const {
    return static_cast<double>(grid.alive()) / std::max(1, grid.total());
}

bool FieldCore::contains(const Vector3 &p, double margin) const {
    return p.x >= rect.position.x - margin && p.x <= rect.position.x + rect.size.x + margin &&
           p.z >= rect.position.y - margin && p.z <= rect.position.y + rect.size.y + margin;
}

Vector3 FieldCore::cell_pos(int cell) const {
    const Vector3 at = places[static_cast<size_t>(cell)].origin;
    return Vector3(at.x, 0, at.z);
}

void FieldCore::show_cell(int cell, float scale) {
    if (plants.is_null()) {
        return;
    }
    const Transform3D &place = places[static_cast<size_t>(cell)];
    plants->set_instance_transform(cell,
                                   Transform3D(place.basis.scaled_local(Vector3(scale, scale, scale)), place.origin));
}

int FieldCore::collect_at(const Vector3 &p, int max_cells, double radius) {
    if (max_cells <= 0 || grid.total() == 0 || !contains(p, radius)) {
        return 0;
    }
    // A plant stands up to a cell's jitter away from its place in the grid.
    const double reach = radius + rules::cell_spacing;
    const auto first = [&](double at, double edge) {
        return std::max(0, static_cast<int>(std::floor((at - reach - edge) / rules::cell_spacing)));
    };
    const auto last = [&](double at, double edge, int count) {
        return std::min(count - 1, static_cast<int>(std::floor((at + reach - edge) / rules::cell_spacing)));
    };
    const int col0 = first(p.x, rect.position.x);
    const int col1 = last(p.x, rect.position.x, grid.nx());
    const int row0 = first(p.z, rect.position.y);
    const int row1 = last(p.z, rect.position.y, grid.nz());
    int cut = 0;
    for (int row = row0; row <= row1; ++row) {
        for (int col = col0; col <= col1; ++col) {
            const int cell = row * grid.nx() + col;
            if (!grid.is_alive(cell)) {
                continue;
            }
            const Vector3 &at = places[static_cast<size_t>(cell)].origin;
            const double dx = at.x - p.x;
            const double dz = at.z - p.z;
            if (dx * dx + dz * dz > radius * radius) {
                continue;
            }
            grid.cut(cell, between(9.0, 15.0));
            show_cell(cell, rules::cut_scale);
            if (++cut >= max_cells) {
                return cut;
            }
        }
    }
    return cut;
}

Vector3 FieldCore::random_alive(const Vector3 &near, double within) {
    const bool anywhere = !std::isfinite(near.x) || !std::isfinite(near.z);
    const int n = grid.total();
    for (int tries = 0; n > 0 && tries < 24; ++tries) {
        const int cell = static_cast<int>(UtilityFunctions::randi_range(0, n - 1));
        if (!grid.is_alive(cell)) {
            continue;
        }
        const Vector3 at = cell_pos(cell);
        if (anywhere || std::hypot(at.x - near.x, at.z - near.z) < within) {
            return at;
        }
    }
    if (anywhere) {
        return Vector3(rect.position.x + rect.size.x * 0.5f, 0, rect.position.y + rect.size.y * 0.5f);
    }
    return Vector3(std::clamp(near.x + between(-2, 2), rect.position.x, rect.position.x + rect.size.x), 0,
                   std::clamp(near.z + between(-2, 2), rect.position.y, rect.position.y + rect.size.y));
}

void FieldCore::grow(double dt) {
    if (water_dry(this)) {
        return;
    }
    grid.grow(dt, grow_mult * s_weather_mult, [this](int cell, float scale) { show_cell(cell, scale); });
}

void FieldCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("core_build", "mm", "r", "y_off", "tilt"), &FieldCore::core_build);
    ClassDB::bind_method(D_METHOD("regrowing"), &FieldCore::regrowing);
    ClassDB::bind_method(D_METHOD("alive_ratio"), &FieldCore::alive_ratio);
    ClassDB::bind_method(D_METHOD("contains", "p", "margin"), &FieldCore::contains, DEFVAL(0.0));
    ClassDB::bind_method(D_METHOD("collect_at", "p", "max_cells", "radius"), &FieldCore::collect_at);
    ClassDB::bind_method(D_METHOD("random_alive", "near", "within"), &FieldCore::random_alive);
    ClassDB::bind_static_method("FieldCore", D_METHOD("set_weather_mult", "v"), &FieldCore::set_weather_mult);
    ClassDB::bind_static_method("FieldCore", D_METHOD("get_weather_mult"), &FieldCore::get_weather_mult);
    ClassDB::bind_method(D_METHOD("grow", "dt"), &FieldCore::grow);
    ClassDB::bind_method(D_METHOD("get_rect"), &FieldCore::get_rect);
    ClassDB::bind_method(D_METHOD("get_nx"), &FieldCore::get_nx);
    ClassDB::bind_method(D_METHOD("get_nz"), &FieldCore::get_nz);
    TM_BIND_FIELD(FieldCore, Variant::FLOAT, grow_mult);
    ADD_PROPERTY(PropertyInfo(Variant::RECT2, "rect"), "", "get_rect");
    ADD_PROPERTY(PropertyInfo(Variant::INT, "nx"), "", "get_nx");
    ADD_PROPERTY(PropertyInfo(Variant::INT, "nz"), "", "get_nz");
}

} // namespace tilm
