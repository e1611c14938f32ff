#include "rules/vertex_cluster.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace tilm::rules;

namespace {

ClusterVertex vertex(float x, float y, float z, float nx = 0, float ny = 1, float nz = 0, float red = 1) {
    return {{x, y, z}, {nx, ny, nz}, {red, 1, 1, 1}};
}

// Two corners that fix the bounds at 8 along x, so that the cell of grid 8 is 1.
ClusterMesh framed() {
    ClusterMesh mesh;
    mesh.vertices = {vertex(0, 0, 0), vertex(8, 0, 0)};
    return mesh;
}

TEST(VertexCluster, LeavesTheMeshAloneWithoutAGridOrVertices) {
    ClusterMesh mesh = framed();
    mesh.vertices.push_back(vertex(0.1f, 0, 0));
    mesh.indices = {0, 1, 2};
    cluster_vertices(mesh, 0);
    EXPECT_EQ(mesh.vertices.size(), 3u);
    EXPECT_EQ(mesh.indices.size(), 3u);

    ClusterMesh empty;
    empty.indices = {0, 0, 0};
    cluster_vertices(empty, 8);
    EXPECT_TRUE(empty.vertices.empty());
    EXPECT_EQ(empty.indices.size(), 3u);
}

TEST(VertexCluster, WeldsWithinACellAndTakesMeans) {
    ClusterMesh mesh = framed();
    mesh.vertices.push_back(vertex(3.2f, 0, 0, 0, 1, 0, 1.0f));
    mesh.vertices.push_back(vertex(3.8f, 0, 0, 0, 1, 0, 0.98f));
    mesh.vertices.push_back(vertex(4.1f, 0, 0));
    mesh.indices = {0, 2, 4, 0, 2, 3};
    cluster_vertices(mesh, 8);
    ASSERT_EQ(mesh.vertices.size(), 4u) << "3.2 and 3.8 share the cell from 3 to 4, 4.1 does not";
    EXPECT_FLOAT_EQ(mesh.vertices[2].pos[0], 3.5f);
    EXPECT_FLOAT_EQ(mesh.vertices[2].color[0], 0.99f);
    // Clusters are numbered in order of first sight, and the triangle inside one cluster is gone.
    EXPECT_EQ(mesh.indices, (std::vector<int32_t>{0, 2, 3}));
}

TEST(VertexCluster, KeepsThreeNormalsAtABoxCorner) {
    ClusterMesh mesh = framed();
    mesh.vertices.push_back(vertex(5, 1, 1, 1, 0, 0));
    mesh.vertices.push_back(vertex(5, 1, 1, 0, 1, 0));
    mesh.vertices.push_back(vertex(5, 1, 1, 0, 0, 1));
    cluster_vertices(mesh, 48);
    EXPECT_EQ(mesh.vertices.size(), 5u);
}

TEST(VertexCluster, NormalIsTheNormalisedSumAndOppositesStayApart) {
    ClusterMesh mesh = framed();
    // Both round to (1, 1, 0) in the rough normal, so they weld; the opposite one does not.
    mesh.vertices.push_back(vertex(5, 0, 0, 0.6f, 0.8f, 0));
    mesh.vertices.push_back(vertex(5.1f, 0, 0, 0.8f, 0.6f, 0));
    mesh.vertices.push_back(vertex(5, 0, 0, -0.6f, -0.8f, 0));
    cluster_vertices(mesh, 8);
    ASSERT_EQ(mesh.vertices.size(), 4u);
    EXPECT_NEAR(mesh.vertices[2].normal[0], std::sqrt(0.5), 1e-5);
    EXPECT_NEAR(mesh.vertices[2].normal[1], std::sqrt(0.5), 1e-5);
}

TEST(VertexCluster, ColoursMergeOnTheirUpperFourBits) {
    const float low = float(0xA0) / 255.0f, same = float(0xAF) / 255.0f, next = float(0xB0) / 255.0f;
    ClusterMesh mesh = framed();
    mesh.vertices.push_back(vertex(5, 0, 0, 0, 1, 0, low));
    mesh.vertices.push_back(vertex(5, 0, 0, 0, 1, 0, same));
    mesh.vertices.push_back(vertex(5, 0, 0, 0, 1, 0, next));
    cluster_vertices(mesh, 8);
    EXPECT_EQ(mesh.vertices.size(), 4u);
}

TEST(VertexCluster, SurvivesDegenerateInput) {
    ClusterMesh point;
    point.vertices = {vertex(2, 2, 2), vertex(2, 2, 2), vertex(2, 2, 2)};
    point.indices = {0, 1, 2, 0, 7, -1, 1};
    cluster_vertices(point, 8);
    EXPECT_EQ(point.vertices.size(), 1u) << "no extent: the cell is the smallest allowed, not zero";
    EXPECT_TRUE(point.indices.empty());
}

} // namespace
