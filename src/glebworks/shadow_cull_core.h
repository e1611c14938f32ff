#pragma once
// Hides geometry outside the view and takes the shadow from what is too far to show one, a slice of the list a frame.

#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <vector>

#include <godot_cpp/classes/geometry_instance3d.hpp>
#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/vector2.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class ShadowCullCore : public Node {
    GDCLASS(ShadowCullCore, Node)

public:
    // g: a GeometryInstance3D. casts: its shadow may be taken. half: half its larger ground side. mid: x, z of its
    // middle seen from its position. reach: half and the length of its shadow.
    void add_caster(Object *g, bool casts, double half, const Vector2 &mid, double reach);
    void tick(double dt, bool has_cam, const Vector3 &cam);
    void set_max_dist(double v) { max_dist = v; }
    double get_max_dist() const { return max_dist; }

    // Whether a node of this id is in the list. The dead leave it as the scan meets them.
    bool lists(uint64_t id) const { return listed.count(id) > 0; }
    int count() const { return static_cast<int>(casters.size()); }
    int last_visits() const { return visits; } // of the last tick()

protected:
    static void _bind_methods();

private:
    struct Caster {
        uint64_t id;
        GeometryInstance3D *node;
        float half, reach;
        Vector2 mid;
        bool casts, shadow_off, hidden;
    };

    std::vector<Caster> casters;
    std::unordered_set<uint64_t> listed; // ids of casters
    double max_dist = 0;                 // from the camera, beside the reach
    Rect2 last_view;
    std::size_t cursor = 0;
    int visits = 0;

    std::size_t budget_for(double dt);
    static void hide_or_show(Caster &c, const Vector3 &at);
    void shade_or_not(Caster &c, const Vector3 &at, bool has_cam, const Vector3 &cam) const;
};

} // namespace tilm
