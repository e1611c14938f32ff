#include "game/art/shapes.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/geometry2d.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>
#include <godot_cpp/variant/packed_vector2_array.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>

#include "game/art/models.h"

namespace tilm::shapes {
namespace {

constexpr float TURN = 6.28318530718f;

// Triangles are given counter-clockwise as seen from outside; the engine wants them the other way round.
class Skin {
public:
    int vertex(const Vector3 &p) {
        points.push_back(p);
        return int(points.size()) - 1;
    }
    void triangle(int a, int b, int c) {
        if (a != b && b != c && a != c) {
            indices.insert(indices.end(), {a, c, b});
        }
    }
    void quad(int a, int b, int c, int d) {
        triangle(a, b, c);
        triangle(a, c, d);
    }

    // For convex bodies round the origin: whichever way the corners are listed, the face looks outward.
    void triangle_out(int a, int b, int c) {
        const Vector3 &p = points[size_t(a)], &q = points[size_t(b)], &r = points[size_t(c)];
        (q - p).cross(r - p).dot(p + q + r) > 0 ? triangle(a, b, c) : triangle(a, c, b);
    }
    void quad_out(int a, int b, int c, int d) {
        triangle_out(a, b, c);
        triangle_out(a, c, d);
    }

    Ref<ArrayMesh> mesh() const {
        std::vector<Vector3> sums(points.size());
        for (size_t i = 0; i + 2 < indices.size(); i += 3) {
            const Vector3 &a = points[size_t(indices[i])];
            const Vector3 facing = (points[size_t(indices[i + 2])] - a).cross(points[size_t(indices[i + 1])] - a);
            for (size_t k = 0; k < 3; k++) {
                sums[size_t(indices[i + k])] += facing;
            }
        }
        PackedVector3Array vertices, normals;
        PackedInt32Array corners;
        for (size_t i = 0; i < points.size(); i++) {
            vertices.push_back(points[i]);
            normals.push_back(sums[i].length_squared() > 0 ? sums[i].normalized() : Vector3(0, 1, 0));
        }
        for (const int index : indices) {
            corners.push_back(index);
        }
        Array arrays;
        arrays.resize(Mesh::ARRAY_MAX);
        arrays[Mesh::ARRAY_VERTEX] = vertices;
        arrays[Mesh::ARRAY_NORMAL] = normals;
        arrays[Mesh::ARRAY_INDEX] = corners;
        Ref<ArrayMesh> out;
        out.instantiate();
        out->add_surface_from_arrays(Mesh::PRIMITIVE_TRIANGLES, arrays);
        return out;
    }

private:
    std::vector<Vector3> points;
    std::vector<int> indices;
};

// Unit outline point at `turn` (0..1), between a circle and a square with cut corners.
Vector2 outline(float turn, float square) {
    const float a = turn * TURN;
    const float c = std::cos(a), s = std::sin(a);
    const float box = 1.0f / std::max(std::fabs(c), std::fabs(s));
    const float r = 1.0f + (std::min(box, 1.32f) - 1.0f) * square;
    return Vector2(c * r, s * r);
}

} // namespace

Ref<ArrayMesh> loft(const std::vector<Ring> &rings, int segments, float square) {
    Skin skin;
    std::vector<std::vector<int>> rows;
    // Squared sections turn half a step, so that their flat sides face the axes.
    const float offset = square > 0 ? 0.5f : 0.25f;
    for (const Ring &ring : rings) {
        std::vector<int> row(size_t(segments), 0);
        if (ring.rx <= 0.0001f && ring.rz <= 0.0001f) {
            std::fill(row.begin(), row.end(), skin.vertex(Vector3(ring.ox, ring.y, ring.oz)));
        } else {
            for (int i = 0; i < segments; i++) {
                const Vector2 p = outline((float(i) + offset) / float(segments), square);
                row[size_t(i)] = skin.vertex(Vector3(ring.ox + p.x * ring.rx, ring.y, ring.oz - p.y * ring.rz));
            }
        }
        rows.push_back(std::move(row));
    }
    for (size_t r = 0; r + 1 < rows.size(); r++) {
        for (size_t i = 0; i < size_t(segments); i++) {
            const size_t next = (i + 1) % size_t(segments);
            skin.quad(rows[r][i], rows[r][next], rows[r + 1][next], rows[r + 1][i]);
        }
    }
    if (rings.size() > 1) {
        // An end that runs out in a point is closed already.
        const bool open_low = rows.front()[0] != rows.front()[1], open_high = rows.back()[0] != rows.back()[1];
        const int low = open_low ? skin.vertex(Vector3(rings.front().ox, rings.front().y, rings.front().oz)) : 0;
        const int high = open_high ? skin.vertex(Vector3(rings.back().ox, rings.back().y, rings.back().oz)) : 0;
        for (size_t i = 0; i < size_t(segments); i++) {
            const size_t next = (i + 1) % size_t(segments);
            if (open_low) {
                skin.triangle(low, rows.front()[next], rows.front()[i]);
            }
            if (open_high) {
                skin.triangle(high, rows.back()[i], rows.back()[next]);
            }
        }
    }
    return skin.mesh();
}

Ref<ArrayMesh> bevel_box(const Vector3 &size, float bevel, float top) {
    Skin skin;
    const Vector3 h = size * 0.5f;
    const float b = std::min(bevel, 0.49f * float(std::min({size.x, size.y, size.z})));
    // corner[x][y][z][axis]: the corner's vertex on the face that looks along `axis`.
    int corner[2][2][2][3];
    for (int x = 0; x < 2; x++) {
        for (int y = 0; y < 2; y++) {
            for (int z = 0; z < 2; z++) {
                const Vector3 sign(x ? 1 : -1, y ? 1 : -1, z ? 1 : -1);
                const float k = y ? top : 1.0f;
                for (int axis = 0; axis < 3; axis++) {
                    const Vector3 in(axis == 0 ? 0 : b, axis == 1 ? 0 : b, axis == 2 ? 0 : b);
                    Vector3 p = (h - in) * sign;
                    p.x *= k;
                    p.z *= k;
                    corner[x][y][z][axis] = skin.vertex(p);
                }
            }
        }
    }
    const auto &c = corner;
    for (int i = 0; i < 2; i++) {
        skin.quad_out(c[i][0][0][0], c[i][1][0][0], c[i][1][1][0], c[i][0][1][0]);
        skin.quad_out(c[0][i][0][1], c[0][i][1][1], c[1][i][1][1], c[1][i][0][1]);
        skin.quad_out(c[0][0][i][2], c[1][0][i][2], c[1][1][i][2], c[0][1][i][2]);
        for (int j = 0; j < 2; j++) {
            skin.quad_out(c[0][i][j][1], c[1][i][j][1], c[1][i][j][2], c[0][i][j][2]);
            skin.quad_out(c[i][0][j][2], c[i][1][j][2], c[i][1][j][0], c[i][0][j][0]);
            skin.quad_out(c[i][j][0][0], c[i][j][1][0], c[i][j][1][1], c[i][j][0][1]);
            for (int k = 0; k < 2; k++) {
                skin.triangle_out(c[i][j][k][0], c[i][j][k][1], c[i][j][k][2]);
            }
        }
    }
    return skin.mesh();
}

Ref<ArrayMesh> ball(const Vector3 &half, int segments, int rings) {
    std::vector<Ring> list;
    for (int i = 0; i <= rings; i++) {
        const float a = (float(i) / float(rings) - 0.5f) * TURN * 0.5f;
        const float r = i == 0 || i == rings ? 0.0f : std::cos(a);
        list.push_back({float(half.y) * std::sin(a), float(half.x) * r, float(half.z) * r});
    }
    return loft(list, segments, 0);
}

Ref<ArrayMesh> gable(float width, float height, float depth) {
    return extrude({Vector2(-width / 2, 0), Vector2(width / 2, 0), Vector2(0, height)}, depth);
}

Ref<ArrayMesh> extrude(const std::vector<Vector2> &outline_points, float depth) {
    Skin skin;
    PackedVector2Array flat;
    std::vector<int> front, back;
    for (const Vector2 &p : outline_points) {
        flat.push_back(p);
    }
    const PackedInt32Array faces = Geometry2D::get_singleton()->triangulate_polygon(flat);
    for (const float side : {1.0f, -1.0f}) {
        std::vector<int> &row = side > 0 ? front : back;
        for (const Vector2 &p : outline_points) {
            row.push_back(skin.vertex(Vector3(p.x, p.y, side * depth / 2)));
        }
        for (int64_t i = 0; i + 2 < faces.size(); i += 3) {
            const int a = faces[i], b = faces[i + 1], c = faces[i + 2];
            const Vector2 pa = flat[a], pb = flat[b], pc = flat[c];
            const bool counter = (pb - pa).cross(pc - pa) > 0;
            const bool as_is = counter == (side > 0);
            skin.triangle(row[size_t(a)], row[size_t(as_is ? b : c)], row[size_t(as_is ? c : b)]);
        }
    }
    // The rim has vertices of its own: its edges with the two faces stay sharp.
    std::vector<int> rim_front, rim_back;
    for (const Vector2 &p : outline_points) {
        rim_front.push_back(skin.vertex(Vector3(p.x, p.y, depth / 2)));
        rim_back.push_back(skin.vertex(Vector3(p.x, p.y, -depth / 2)));
    }
    for (size_t i = 0; i < outline_points.size(); i++) {
        const size_t next = (i + 1) % outline_points.size();
        skin.quad(rim_back[i], rim_back[next], rim_front[next], rim_front[i]);
    }
    return skin.mesh();
}

Ref<ArrayMesh> arc(float radius, float thick, float width, float angle, int steps) {
    std::vector<Vector2> outside, inside;
    for (int i = 0; i <= steps; i++) {
        const float a = TURN * 0.25f + angle * (0.5f - float(i) / float(steps));
        const Vector2 dir(std::cos(a), std::sin(a));
        outside.push_back(dir * radius);
        inside.push_back(dir * (radius - thick));
    }
    // From right to left over the outside, back along the inside: counter-clockwise.
    std::vector<Vector2> points(outside.begin(), outside.end());
    std::reverse(points.begin(), points.end());
    points.insert(points.end(), inside.begin(), inside.end());
    return extrude(points, width);
}

Ref<ArrayMesh> blade(float width, float rise, float reach) {
    Skin skin;
    const int left = skin.vertex(Vector3(-width * 0.5f, 0, 0)), right = skin.vertex(Vector3(width * 0.5f, 0, 0));
    const float middle = reach * 0.4f;
    const int high_left = skin.vertex(Vector3(-width * 0.42f, rise * 0.6f, middle));
    const int high_right = skin.vertex(Vector3(width * 0.42f, rise * 0.6f, middle));
    skin.quad(left, right, high_right, high_left);
    skin.triangle(high_left, high_right, skin.vertex(Vector3(0, rise, reach)));
    return skin.mesh();
}

MeshInstance3D *put(Node *parent, const Ref<Mesh> &mesh, const Color &color, const Vector3 &pos, const Vector3 &turn,
                    const Vector3 &scale) {
    MeshInstance3D *node = Models::mesh_instance(mesh, color, pos, parent);
    node->set_rotation_degrees(turn);
    node->set_scale(scale);
    return node;
}

Node3D *joint(Node *parent, const char *name, const Vector3 &pos) {
    Node3D *node = memnew(Node3D);
    node->set_name(name);
    node->set_position(pos);
    parent->add_child(node);
    return node;
}

float rnd(int seed, int i) {
    uint32_t x = uint32_t(seed) * 0x9E3779B9u + uint32_t(i) * 0x85EBCA6Bu + 0x7F4A7C15u;
    x ^= x >> 16;
    x *= 0x7FEB352Du;
    x ^= x >> 15;
    x *= 0x846CA68Bu;
    x ^= x >> 16;
    return float(x >> 8) / float(1 << 24);
}

float rnd(int seed, int i, float low, float high) {
    return low + (high - low) * rnd(seed, i);
}

} // namespace tilm::shapes
