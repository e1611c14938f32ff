#include "game/art/prim_cache.h"

#include <algorithm>

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/capsule_mesh.hpp>
#include <godot_cpp/classes/cylinder_mesh.hpp>
#include <godot_cpp/classes/dir_access.hpp>
#include <godot_cpp/classes/file_access.hpp>
#include <godot_cpp/classes/plane_mesh.hpp>
#include <godot_cpp/classes/primitive_mesh.hpp>
#include <godot_cpp/classes/sphere_mesh.hpp>
#include <godot_cpp/classes/torus_mesh.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/art/art_state.h"
#include "names.h"
#include "rules/surface_table.h"

namespace tilm::prim_cache {
namespace {

const char *const STORE_PATH = "res://assets/prims.bin";

// All that merging takes for granted: as many normals as vertices, whole triangles, indices that exist.
bool is_sound(const Array &arrays) {
    const Variant points = arrays[Mesh::ARRAY_VERTEX], facings = arrays[Mesh::ARRAY_NORMAL];
    const Variant listed = arrays[Mesh::ARRAY_INDEX];
    if (points.get_type() != Variant::PACKED_VECTOR3_ARRAY || facings.get_type() != Variant::PACKED_VECTOR3_ARRAY) {
        return false;
    }
    const PackedVector3Array vertices = points, normals = facings;
    const int64_t count = vertices.size();
    if (count == 0 || normals.size() != count) {
        return false;
    }
    for (int64_t i = 0; i < count; i++) {
        if (!vertices[i].is_finite() || !normals[i].is_finite()) {
            return false;
        }
    }
    if (listed.get_type() == Variant::NIL) {
        return count % 3 == 0;
    }
    if (listed.get_type() != Variant::PACKED_INT32_ARRAY) {
        return false;
    }
    const PackedInt32Array indices = listed;
    const int32_t *index = indices.ptr();
    const bool within = std::all_of(index, index + indices.size(), [count](int32_t i) { return i >= 0 && i < count; });
    return within && indices.size() % 3 == 0;
}

void load_store() {
    if (!art().prims_loaded) {
        art().prims_loaded = true;
        load(STORE_PATH);
    }
}

String property_key(const Ref<Mesh> &mesh) {
    String key = mesh->get_class();
    const TypedArray<Dictionary> list = mesh->get_property_list();
    for (int64_t i = 0; i < list.size(); i++) {
        const Dictionary row = list[i];
        if ((int64_t(row["usage"]) & PROPERTY_USAGE_STORAGE) != 0) {
            key += UtilityFunctions::str(mesh->get(StringName(String(row["name"]))));
        }
    }
    return key;
}

template <class T>
Ref<T> as(const Ref<Mesh> &mesh) {
    return Ref<T>(Object::cast_to<T>(mesh.ptr()));
}

} // namespace

String shape_key(const Ref<Mesh> &mesh) {
    if (const Ref<BoxMesh> box = as<BoxMesh>(mesh); box.is_valid()) {
        return vformat("b%v/%d/%d/%d", box->get_size(), box->get_subdivide_width(), box->get_subdivide_height(),
                       box->get_subdivide_depth());
    }
    if (const Ref<CylinderMesh> cyl = as<CylinderMesh>(mesh); cyl.is_valid()) {
        return vformat("c%f/%f/%f/%d/%d/%s/%s", cyl->get_top_radius(), cyl->get_bottom_radius(), cyl->get_height(),
                       cyl->get_radial_segments(), cyl->get_rings(), cyl->is_cap_top(), cyl->is_cap_bottom());
    }
    if (const Ref<SphereMesh> ball = as<SphereMesh>(mesh); ball.is_valid()) {
        return vformat("s%f/%f/%d/%d/%s", ball->get_radius(), ball->get_height(), ball->get_radial_segments(),
                       ball->get_rings(), ball->get_is_hemisphere());
    }
    if (const Ref<PlaneMesh> plane = as<PlaneMesh>(mesh); plane.is_valid()) {
        return vformat("p%v/%d/%d/%d/%v", plane->get_size(), plane->get_subdivide_width(), plane->get_subdivide_depth(),
                       int64_t(plane->get_orientation()), plane->get_center_offset());
    }
    return mesh.is_valid() ? property_key(mesh) : String();
}

Array arrays_of(const Ref<Mesh> &mesh) {
    if (mesh.is_null()) {
        return Array();
    }
    const Ref<PrimitiveMesh> primitive = as<PrimitiveMesh>(mesh);
    if (primitive.is_null()) {
        return mesh->get_surface_count() > 0 ? mesh->surface_get_arrays(0) : Array();
    }
    load_store();
    const String key = shape_key(mesh);
    Array arrays = art().prims.get(key, Array());
    if (arrays.is_empty()) {
        arrays = primitive->get_mesh_arrays();
        art().prims[key] = arrays;
    }
    return arrays;
}

void clamp_detail(const Ref<Mesh> &mesh) {
    if (const Ref<SphereMesh> ball = as<SphereMesh>(mesh); ball.is_valid()) {
        if (ball->get_radial_segments() == 64 && ball->get_rings() == 32) {
            const int radial = ball->get_radius() < 0.6 ? 12 : 20;
            ball->set_radial_segments(radial);
            ball->set_rings(radial / 2);
        }
    } else if (const Ref<CylinderMesh> cyl = as<CylinderMesh>(mesh); cyl.is_valid()) {
        if (cyl->get_radial_segments() == 64 && cyl->get_rings() == 4) {
            cyl->set_radial_segments(std::max(cyl->get_top_radius(), cyl->get_bottom_radius()) < 0.6 ? 12 : 20);
            cyl->set_rings(1);
        }
    } else if (const Ref<CapsuleMesh> pill = as<CapsuleMesh>(mesh); pill.is_valid()) {
        if (pill->get_radial_segments() == 64 && pill->get_rings() == 8) {
            pill->set_radial_segments(12);
            pill->set_rings(4);
        }
    } else if (const Ref<TorusMesh> ring = as<TorusMesh>(mesh); ring.is_valid()) {
        if (ring->get_rings() == 64 && ring->get_ring_segments() == 32) {
            ring->set_rings(24);
            ring->set_ring_segments(8);
        }
    }
}

void cap_detail(const Ref<Mesh> &mesh, const Caps &caps) {
    if (const Ref<SphereMesh> ball = as<SphereMesh>(mesh); ball.is_valid()) {
        ball->set_radial_segments(std::min(ball->get_radial_segments(), caps.sphere_radial));
        ball->set_rings(std::min(ball->get_rings(), caps.sphere_rings));
    } else if (const Ref<CylinderMesh> cyl = as<CylinderMesh>(mesh); cyl.is_valid()) {
        cyl->set_radial_segments(std::min(cyl->get_radial_segments(), caps.cylinder_radial));
        cyl->set_rings(std::min(cyl->get_rings(), 1));
    } else if (const Ref<CapsuleMesh> pill = as<CapsuleMesh>(mesh); pill.is_valid() && caps.capsule_radial > 0) {
        pill->set_radial_segments(std::min(pill->get_radial_segments(), caps.capsule_radial));
        pill->set_rings(std::min(pill->get_rings(), caps.capsule_rings));
    } else if (const Ref<TorusMesh> ring = as<TorusMesh>(mesh); ring.is_valid() && caps.torus_rings > 0) {
        ring->set_rings(std::min(ring->get_rings(), caps.torus_rings));
        ring->set_ring_segments(std::min(ring->get_ring_segments(), caps.torus_segments));
    }
}

int64_t load(const String &path) {
    if (!FileAccess::file_exists(path)) {
        return 0;
    }
    const PackedByteArray bytes = FileAccess::get_file_as_bytes(path);
    // Looked over first: the engine logs an error of its own for each damage that it meets.
    bool sound = rules::is_surface_table({bytes.ptr(), size_t(bytes.size())});
    const Variant stored = sound ? UtilityFunctions::bytes_to_var(bytes) : Variant();
    const Dictionary shapes = stored.get_type() == Variant::DICTIONARY ? Dictionary(stored) : Dictionary();
    const Array surfaces = shapes.values();
    for (int64_t i = 0; sound && i < surfaces.size(); i++) {
        sound = is_sound(surfaces[i]);
    }
    if (!sound) {
        UtilityFunctions::print("TILMARCH ", path, " is damaged or outdated: shapes are computed");
        return 0;
    }
    art().prims.merge(shapes);
    return shapes.size();
}

Error save(const String &path, int64_t &count) {
    count = art().prims.size();
    // Whole or not at all: a game that starts meanwhile must not read half of it.
    const String half = path + String(".new");
    const Ref<FileAccess> file = FileAccess::open(half, FileAccess::WRITE);
    if (file.is_null()) {
        return FileAccess::get_open_error();
    }
    file->store_buffer(UtilityFunctions::var_to_bytes(art().prims));
    const Error written = file->get_error();
    file->close();
    return written != OK ? written : DirAccess::rename_absolute(half, path);
}

} // namespace tilm::prim_cache
