#pragma once
// Small grey pictures of models, drawn on the processor, and how much two of them differ: what tells models apart where
// colour does not help. The view is that of tools/gallery: from above and aside, the whole model in the frame.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <vector>

#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/standard_material3d.hpp>
#include <godot_cpp/variant/packed_color_array.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>

#include "game/art/mesh_baker.h"

namespace tilm {

struct Silhouette {
    static constexpr int SIDE = 64;
    std::array<uint8_t, SIDE *SIDE> grey = {}; // 0: nothing there, else 1 black .. 255 white
};

namespace silhouette {

struct Corner {
    Vector3 at;
    Color color;
};

inline Basis turned(float x, float y) {
    return Basis::from_euler(Vector3(x, y, 0) * (std::numbers::pi_v<float> / 180));
}

inline void add_corners(std::vector<Corner> &out, const MeshInstance3D *node, const Transform3D &place) {
    const Ref<Mesh> mesh = node->get_mesh();
    for (int32_t s = 0; mesh.is_valid() && s < mesh->get_surface_count(); s++) {
        const Array arrays = mesh->surface_get_arrays(s);
        const PackedVector3Array points = arrays[Mesh::ARRAY_VERTEX];
        const PackedColorArray colors = arrays[Mesh::ARRAY_COLOR];
        const PackedInt32Array indices = arrays[Mesh::ARRAY_INDEX];
        const auto *flat =
            Object::cast_to<StandardMaterial3D>(const_cast<MeshInstance3D *>(node)->get_active_material(s).ptr());
        const Color plain = flat != nullptr ? flat->get_albedo() : Color(1, 1, 1);
        for (const int32_t i : indices) {
            out.push_back({place.xform(points[i]), colors.is_empty() ? plain : colors[i]});
        }
    }
}

inline std::vector<Corner> corners_of(Node3D *root) {
    std::vector<Corner> out;
    if (auto *own = Object::cast_to<MeshInstance3D>(root)) {
        add_corners(out, own, Transform3D());
    }
    for (MeshInstance3D *node : mesh_baker::meshes_below(root)) {
        bool shown = true;
        for (Node *up = node; up != root; up = up->get_parent()) {
            const auto *part = Object::cast_to<Node3D>(up);
            shown = shown && (part == nullptr || part->is_visible());
        }
        if (shown) {
            add_corners(out, node, mesh_baker::local_to(node, root));
        }
    }
    return out;
}

} // namespace silhouette

inline Silhouette silhouette_of(Node3D *root) {
    using silhouette::turned;
    constexpr int SIDE = Silhouette::SIDE;
    const Basis to_camera = turned(-28, 26).transposed();
    const Vector3 to_sun = to_camera.xform(turned(-50, 35).xform(Vector3(0, 0, 1)));
    std::vector<silhouette::Corner> corners = silhouette::corners_of(root);
    Silhouette out;
    if (corners.empty()) {
        return out;
    }
    for (silhouette::Corner &c : corners) {
        c.at = to_camera.xform(c.at);
    }
    AABB box(corners[0].at, Vector3());
    for (const silhouette::Corner &c : corners) {
        box = box.merge(AABB(c.at, Vector3()));
    }
    const float scale = SIDE / (std::max(0.05f, float(std::max(box.size.x, box.size.y))) * 1.12f);
    const Vector3 middle = box.get_center();
    std::array<float, SIDE * SIDE> depth;
    depth.fill(-std::numeric_limits<float>::infinity());
    for (size_t i = 0; i + 2 < corners.size(); i += 3) {
        Vector3 p[3];
        for (size_t k = 0; k < 3; k++) {
            const Vector3 at = (corners[i + k].at - middle) * scale;
            p[k] = Vector3(SIDE * 0.5f + at.x, SIDE * 0.5f - at.y, at.z);
        }
        const float area = float((p[1].x - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (p[1].y - p[0].y));
        if (std::abs(area) < 1e-6f) {
            continue;
        }
        Vector3 normal = (corners[i + 1].at - corners[i].at).cross(corners[i + 2].at - corners[i].at).normalized();
        normal = normal.z < 0 ? -normal : normal;
        const float lit = 0.6f + 0.4f * std::max(0.0f, float(normal.dot(to_sun)));
        const auto bound = [](float v) { return std::clamp(int(v), 0, SIDE - 1); };
        const int x0 = bound(std::min({p[0].x, p[1].x, p[2].x})), x1 = bound(std::max({p[0].x, p[1].x, p[2].x}));
        const int y0 = bound(std::min({p[0].y, p[1].y, p[2].y})), y1 = bound(std::max({p[0].y, p[1].y, p[2].y}));
        for (int y = y0; y <= y1; y++) {
            for (int x = x0; x <= x1; x++) {
                const float px = float(x) + 0.5f, py = float(y) + 0.5f;
                const float u = float((px - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (py - p[0].y)) / area;
                const float v = float((p[1].x - p[0].x) * (py - p[0].y) - (px - p[0].x) * (p[1].y - p[0].y)) / area;
                const size_t at = size_t(y * SIDE + x);
                const float z = float(p[0].z + u * (p[1].z - p[0].z) + v * (p[2].z - p[0].z));
                if (u < 0 || v < 0 || u + v > 1 || z <= depth[at]) {
                    continue;
                }
                depth[at] = z;
                const Color &a = corners[i].color, &b = corners[i + 1].color, &c = corners[i + 2].color;
                const Color mix = a * (1 - u - v) + b * u + c * v;
                const float light = (0.299f * mix.r + 0.587f * mix.g + 0.114f * mix.b) * lit;
                out.grey[at] = uint8_t(1 + int(std::clamp(light, 0.0f, 1.0f) * 254));
            }
        }
    }
    return out;
}

// 0 alike .. 1 nothing in common: mean over all that either covers, of the difference in grey where both are and 1
// where one is; the least of nine, as one picture is moved by up to a pixel.
inline double difference(const Silhouette &a, const Silhouette &b) {
    constexpr int SIDE = Silhouette::SIDE;
    double least = 1;
    for (int dy = -1; dy <= 1; dy++) {
        for (int dx = -1; dx <= 1; dx++) {
            int64_t sum = 0, covered = 0;
            for (int y = 1; y < SIDE - 1; y++) {
                const uint8_t *row = &a.grey[size_t(y * SIDE)], *other = &b.grey[size_t((y + dy) * SIDE + dx)];
                for (int x = 1; x < SIDE - 1; x++) {
                    const int p = row[x], q = other[x];
                    covered += (p | q) != 0;
                    sum += p != 0 && q != 0 ? std::abs(p - q) : (p | q) != 0 ? 255 : 0;
                }
            }
            if (covered > 0) {
                least = std::min(least, double(sum) / double(covered) / 255.0);
            }
        }
    }
    return least;
}

} // namespace tilm
