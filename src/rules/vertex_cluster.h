#pragma once
// Vertex clustering: welds the vertices of a triangle list that share a cell of a coarse grid, a rough normal and a
// rough colour. Engine-free.

#include <cstdint>
#include <vector>

namespace tilm::rules {

struct ClusterVertex {
    float pos[3] = {0, 0, 0};
    float normal[3] = {0, 0, 0};
    float color[4] = {1, 1, 1, 1}; // 0..1
};

struct ClusterMesh {
    std::vector<ClusterVertex> vertices;
    std::vector<int32_t> indices; // three a triangle
};

// Clusters in place; `grid` is the number of cells along the largest side. Grids under 1 leave the mesh as it is.
void cluster_vertices(ClusterMesh &mesh, int grid);

} // namespace tilm::rules
