#include "rules/vertex_cluster.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace tilm::rules {
namespace {

struct Sum {
    double pos[3] = {0, 0, 0};
    double normal[3] = {0, 0, 0};
    double color[4] = {0, 0, 0, 0};
    int count = 0;
};

uint64_t channel(float v) {
    return uint64_t(std::lround(std::clamp(v, 0.0f, 1.0f) * 255.0f));
}

uint64_t cluster_key(const ClusterVertex &v, const float low[3], float cell) {
    uint64_t key = 0;
    for (int axis = 0; axis < 3; axis++) {
        const uint64_t index = uint64_t(std::max(0.0f, std::floor((v.pos[axis] - low[axis]) / cell)));
        key |= (index & 0xFFF) << (12 * axis);
        const int64_t facing = std::lround(double(v.normal[axis]) * 1.4) + 2;
        key |= (uint64_t(facing) & 7) << (36 + 3 * axis);
    }
    const uint64_t rgba =
        channel(v.color[0]) << 24 | channel(v.color[1]) << 16 | channel(v.color[2]) << 8 | channel(v.color[3]);
    return key ^ ((rgba & 0xF0F0F0F0u) * 0x9E3779B97F4A7C15ull);
}

ClusterVertex mean_of(const Sum &sum) {
    ClusterVertex out;
    double length = 0;
    for (int axis = 0; axis < 3; axis++) {
        out.pos[axis] = float(sum.pos[axis] / sum.count);
        length += sum.normal[axis] * sum.normal[axis];
    }
    length = std::sqrt(length);
    for (int axis = 0; axis < 3; axis++) {
        out.normal[axis] = length > 0 ? float(sum.normal[axis] / length) : 0.0f;
    }
    for (int i = 0; i < 4; i++) {
        out.color[i] = float(sum.color[i] / sum.count);
    }
    return out;
}

} // namespace

void cluster_vertices(ClusterMesh &mesh, int grid) {
    if (grid < 1 || mesh.vertices.empty()) {
        return;
    }
    float low[3], high[3];
    for (int axis = 0; axis < 3; axis++) {
        low[axis] = high[axis] = mesh.vertices[0].pos[axis];
    }
    for (const ClusterVertex &v : mesh.vertices) {
        for (int axis = 0; axis < 3; axis++) {
            low[axis] = std::min(low[axis], v.pos[axis]);
            high[axis] = std::max(high[axis], v.pos[axis]);
        }
    }
    const float side = std::max({high[0] - low[0], high[1] - low[1], high[2] - low[2]});
    const float cell = std::max(side / float(grid), 0.0001f);

    std::unordered_map<uint64_t, int32_t> numbers;
    std::vector<Sum> sums;
    std::vector<int32_t> cluster_of(mesh.vertices.size());
    for (size_t i = 0; i < mesh.vertices.size(); i++) {
        const ClusterVertex &v = mesh.vertices[i];
        const auto [it, fresh] = numbers.try_emplace(cluster_key(v, low, cell), int32_t(sums.size()));
        if (fresh) {
            sums.emplace_back();
        }
        Sum &sum = sums[size_t(it->second)];
        for (int axis = 0; axis < 3; axis++) {
            sum.pos[axis] += v.pos[axis];
            sum.normal[axis] += v.normal[axis];
        }
        for (int c = 0; c < 4; c++) {
            sum.color[c] += v.color[c];
        }
        sum.count++;
        cluster_of[i] = it->second;
    }

    std::vector<int32_t> kept;
    kept.reserve(mesh.indices.size());
    const int32_t count = int32_t(mesh.vertices.size());
    for (size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
        int32_t corner[3];
        bool valid = true;
        for (size_t k = 0; k < 3; k++) {
            const int32_t index = mesh.indices[i + k];
            valid = valid && index >= 0 && index < count;
            corner[k] = valid ? cluster_of[size_t(index)] : 0;
        }
        if (valid && corner[0] != corner[1] && corner[1] != corner[2] && corner[0] != corner[2]) {
            kept.insert(kept.end(), corner, corner + 3);
        }
    }

    mesh.vertices.clear();
    for (const Sum &sum : sums) {
        mesh.vertices.push_back(mean_of(sum));
    }
    mesh.indices = std::move(kept);
}

} // namespace tilm::rules
