#pragma once
// Surface arrays of engine primitives, computed once per shape and kept across runs in an optional file.

#include <godot_cpp/classes/mesh.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

namespace prim_cache {

// Names a primitive by all that shapes its triangles.
String shape_key(const Ref<Mesh> &mesh);
// The mesh's first surface, through the cache when it is a primitive. Empty for a null or empty mesh.
Array arrays_of(const Ref<Mesh> &mesh);
// Cuts segment counts that were left at the engine's defaults down to what a farm needs.
void clamp_detail(const Ref<Mesh> &mesh);
// Lowers segment counts in place, never raising one. `rings` of 0 leaves cylinders at 1.
struct Caps {
    int sphere_radial, sphere_rings, cylinder_radial;
    int capsule_radial = 0, capsule_rings = 0, torus_rings = 0, torus_segments = 0; // 0: left as it is
};
void cap_detail(const Ref<Mesh> &mesh, const Caps &caps);
// Takes over the shapes that an earlier run left in `path`; their number. A file that is damaged gives one log line and
// nothing else.
int64_t load(const String &path);
// Writes the cache to `path` for later runs; the count of shapes goes to `count`.
Error save(const String &path, int64_t &count);

} // namespace prim_cache
} // namespace tilm
