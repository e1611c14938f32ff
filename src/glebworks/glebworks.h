#pragma once
// Module-wide helpers of the cores: the ground that the camera sees, the slow and timed lists, square look-ups.

#include <cstdint>

#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/vector3.hpp>

#include "glebworks/slow_list.h"

namespace tilm {
using namespace godot;

class Glebworks : public Object {
    GDCLASS(Glebworks, Object)

public:
    // Ground rectangle that the camera sees: x and z as x and y. Before the first call everything counts as seen.
    static void set_view(const Rect2 &r);
    static Rect2 get_view(); // an empty one while everything counts as seen
    static void see_everything();
    // Whether a ground point lies in the view widened by `margin` units.
    static bool in_view(const Vector3 &p, double margin) { return in_view_xz(p.x, p.z, margin); }
    static bool in_view_xz(double x, double z, double margin) {
        return x >= view.x0 - margin && x <= view.x1 + margin && z >= view.z0 - margin && z <= view.z1 + margin;
    }

    // Slow list: each node steps on one frame in four with the time since its last step.
    static void slow_add(Node *node);
    static void slow_add_step(Node *node, SlowList::Step fn);
    static void slow_remove(Node *node);
    static void slow_tick(double dt);
    static int slow_count();
    // Timed list: each node steps every `every` seconds (at least every frame).
    static void timed_add(Node *node, double every);
    static void timed_add_step(Node *node, double every, SlowList::Step fn);
    static void timed_remove(Node *node);
    static void timed_tick(double dt);

    // First entry (x, half, z) whose square holds p, or -1.
    static int square_at(const PackedVector3Array &squares, const Vector3 &p);

protected:
    static void _bind_methods();

private:
    struct View {
        double x0, z0, x1, z1;
    };
    static View view;
};

} // namespace tilm
