#include "glebworks/mesh_cluster.h"

#include <algorithm>

#include <godot_cpp/core/error_macros.hpp>

#include "rules/vertex_cluster.h"

namespace tilm {

void cluster_arrays(PackedVector3Array &vertices, PackedVector3Array &normals, PackedColorArray &colors,
                    PackedInt32Array &indices, int grid) {
    if (normals.size() != vertices.size() || colors.size() != vertices.size()) {
        ERR_PRINT("TILMARCH clustering: vertices, normals and colours differ in number");
        return;
    }
    if (grid < 1 || vertices.is_empty()) {
        return;
    }
    rules::ClusterMesh mesh;
    mesh.vertices.resize(size_t(vertices.size()));
    for (int64_t i = 0; i < vertices.size(); i++) {
        rules::ClusterVertex &v = mesh.vertices[size_t(i)];
        const Vector3 p = vertices[i], n = normals[i];
        const Color c = colors[i];
        v = {{float(p.x), float(p.y), float(p.z)}, {float(n.x), float(n.y), float(n.z)}, {c.r, c.g, c.b, c.a}};
    }
    mesh.indices.assign(indices.ptr(), indices.ptr() + indices.size());
    rules::cluster_vertices(mesh, grid);

    const int64_t count = int64_t(mesh.vertices.size());
    vertices.resize(count);
    normals.resize(count);
    colors.resize(count);
    for (int64_t i = 0; i < count; i++) {
        const rules::ClusterVertex &v = mesh.vertices[size_t(i)];
        vertices.set(i, Vector3(v.pos[0], v.pos[1], v.pos[2]));
        normals.set(i, Vector3(v.normal[0], v.normal[1], v.normal[2]));
        colors.set(i, Color(v.color[0], v.color[1], v.color[2], v.color[3]));
    }
    indices.resize(int64_t(mesh.indices.size()));
    std::copy(mesh.indices.begin(), mesh.indices.end(), indices.ptrw());
}

} // namespace tilm
