#pragma once
// Measures a model tree: triangles, box, what breaks the limits of its class, and how high its surface lies at a point.

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>

#include "game/art/mesh_baker.h"
#include "game/art/model_keys.h"

namespace tilm {

struct Measure {
    int meshes = 0, triangles = 0;
    bool empty = true; // no mesh has a surface
    AABB box;
    std::vector<Vector3> corners; // three a triangle
};

inline void add_mesh(Measure &m, const Ref<Mesh> &mesh, const Transform3D &place) {
    if (mesh.is_null()) {
        return;
    }
    m.meshes++;
    for (int32_t i = 0; i < mesh->get_surface_count(); i++) {
        const Array arrays = mesh->surface_get_arrays(i);
        const PackedVector3Array points = arrays[Mesh::ARRAY_VERTEX];
        const PackedInt32Array indices = arrays[Mesh::ARRAY_INDEX];
        for (const int32_t index : indices) {
            m.corners.push_back(place.xform(points[index]));
        }
        m.triangles += int(indices.size() / 3);
        const AABB box = place.xform(mesh->get_aabb());
        m.box = m.empty ? box : m.box.merge(box);
        m.empty = false;
    }
}

inline Measure measured(Node3D *root) {
    Measure m;
    TypedArray<Node> all = root->find_children("*", "", true, false);
    all.push_back(root);
    for (int64_t i = 0; i < all.size(); i++) {
        auto *node = Object::cast_to<Node3D>(all[i]);
        if (node == nullptr) {
            continue;
        }
        const Transform3D place = node == root ? Transform3D() : mesh_baker::local_to(node, root);
        if (auto *drawn = Object::cast_to<MeshInstance3D>(node)) {
            add_mesh(m, drawn->get_mesh(), place);
        } else if (auto *many = Object::cast_to<MultiMeshInstance3D>(node)) {
            add_mesh(m, many->get_multimesh()->get_mesh(), place);
        }
    }
    return m;
}

// What is wrong with a model by its class, each fault once; empty for a good one.
inline std::vector<std::string> faults_of(Node3D *node, const ModelLimits &limits) {
    if (node == nullptr) {
        return {"no model"};
    }
    const Measure m = measured(node);
    if (m.meshes == 0) {
        return {"no mesh"};
    }
    if (m.empty || m.triangles == 0) {
        return {"empty mesh"};
    }
    std::vector<std::string> faults;
    if (m.triangles > limits.triangles) {
        faults.push_back("too many triangles: " + std::to_string(m.triangles));
    }
    if (m.box.size.y < limits.lowest) {
        faults.push_back("too low: " + std::to_string(m.box.size.y));
    }
    if (m.box.size.y > limits.highest) {
        faults.push_back("too high: " + std::to_string(m.box.size.y));
    }
    if (const real_t wide = std::max(m.box.size.x, m.box.size.z); wide > limits.widest) {
        faults.push_back("too wide: " + std::to_string(wide));
    }
    const bool stands = limits.group == ModelClass::building || limits.group == ModelClass::person;
    if (stands && std::abs(m.box.position.y) > 0.2f) {
        faults.push_back("off the ground: " + std::to_string(m.box.position.y));
    }
    return faults;
}

// Height of the highest face over the ground point (x, z) that is no higher than `below`; minus infinity over nothing.
inline float surface_at(const Measure &m, float x, float z, float below) {
    float best = -std::numeric_limits<float>::infinity();
    for (size_t i = 0; i + 2 < m.corners.size(); i += 3) {
        const Vector3 &a = m.corners[i], &b = m.corners[i + 1], &c = m.corners[i + 2];
        const float area = float((b.x - a.x) * (c.z - a.z) - (c.x - a.x) * (b.z - a.z));
        if (std::abs(area) < 1e-9f) {
            continue;
        }
        const float u = float((x - a.x) * (c.z - a.z) - (c.x - a.x) * (z - a.z)) / area;
        const float v = float((b.x - a.x) * (z - a.z) - (x - a.x) * (b.z - a.z)) / area;
        const float y = float(a.y + u * (b.y - a.y) + v * (c.y - a.y));
        if (u >= 0 && v >= 0 && u + v <= 1 && y <= below) {
            best = std::max(best, y);
        }
    }
    return best;
}

} // namespace tilm
