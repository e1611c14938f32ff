#include "game/art/mesh_baker.h"

#include <algorithm>

#include <godot_cpp/classes/standard_material3d.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/art/prim_cache.h"
#include "glebworks/mesh_cluster.h"

namespace tilm::mesh_baker {
namespace {

float visible_size(MeshInstance3D *node, const Node *root) {
    const Vector3 size = node->get_mesh()->get_aabb().size;
    const Vector3 scale = local_to(node, root).basis.get_scale().abs();
    return float(std::max({size.x * scale.x, size.y * scale.y, size.z * scale.z}));
}

Color paint_of(MeshInstance3D *node) {
    const Ref<StandardMaterial3D> paint = node->get_material_override();
    return paint.is_valid() ? paint->get_albedo() : Color(1, 1, 1, 1);
}

const Limb *limb_of(const Node *node, const Node *root, const std::vector<Limb> &limbs) {
    for (const Node *at = node; at != nullptr && at != root; at = at->get_parent()) {
        for (const Limb &limb : limbs) {
            if (limb.node == at) {
                return &limb;
            }
        }
    }
    return nullptr;
}

struct Surface {
    PackedVector3Array vertices;
    PackedVector3Array normals;
    PackedColorArray colors;
    PackedInt32Array indices;
    PackedVector2Array pivots;
    PackedVector2Array numbers;
};

void append(Surface &out, MeshInstance3D *node, const Node *root, const MergeOptions &options) {
    const Ref<Mesh> mesh = node->get_mesh();
    if (mesh.is_null()) {
        return;
    }
    prim_cache::clamp_detail(mesh);
    const Array arrays = prim_cache::arrays_of(mesh);
    if (arrays.size() <= Mesh::ARRAY_INDEX) {
        return;
    }
    const PackedVector3Array points = arrays[Mesh::ARRAY_VERTEX];
    const PackedVector3Array facings = arrays[Mesh::ARRAY_NORMAL];
    const Transform3D place = local_to(node, root);
    // A part that is scaled flat has no inverse; its facings stay as they are turned.
    const bool flat = place.basis.determinant() == 0;
    const Basis turn = flat ? place.basis : place.basis.inverse().transposed();
    const Color paint = paint_of(node);
    const Limb *limb = options.limbs.empty() ? nullptr : limb_of(node, root, options.limbs);
    const int64_t base = out.vertices.size();
    const int64_t count = points.size();

    out.vertices.resize(base + count);
    out.normals.resize(base + count);
    out.colors.resize(base + count);
    Vector3 *vertex = out.vertices.ptrw() + base;
    Vector3 *normal = out.normals.ptrw() + base;
    Color *color = out.colors.ptrw() + base;
    for (int64_t i = 0; i < count; i++) {
        vertex[i] = place.xform(points[i]);
        const Vector3 facing = i < facings.size() ? turn.xform(facings[i]) : Vector3();
        normal[i] = facing.normalized(); // zero stays zero
        const float k = options.shade_height > 0
                            ? shade_factor(float(vertex[i].y), float(normal[i].y), options.shade_height)
                            : 1.0f;
        color[i] = Color(paint.r * k, paint.g * k, paint.b * k, paint.a);
    }
    if (!options.limbs.empty()) {
        const Vector2 pivot = limb != nullptr ? limb->pivot : Vector2();
        const Vector2 number(limb != nullptr ? limb->number : 0.0f, 0.0f);
        for (int64_t i = 0; i < count; i++) {
            out.pivots.push_back(pivot);
            out.numbers.push_back(number);
        }
    }

    const Variant listed = arrays[Mesh::ARRAY_INDEX];
    const PackedInt32Array indices =
        listed.get_type() == Variant::PACKED_INT32_ARRAY ? PackedInt32Array(listed) : PackedInt32Array();
    const int64_t first = out.indices.size();
    const int64_t corners = indices.is_empty() ? count : indices.size();
    out.indices.resize(first + corners);
    int32_t *index = out.indices.ptrw() + first;
    // A mirrored part would show its inside: turn its triangles round.
    const bool mirrored = place.basis.determinant() < 0;
    for (int64_t i = 0; i < corners; i++) {
        const int64_t from = mirrored && i % 3 != 0 ? (i % 3 == 1 ? i + 1 : i - 1) : i;
        const int64_t at = std::min(from, corners - 1);
        index[i] = int32_t(base + (indices.is_empty() ? at : int64_t(indices[at])));
    }
}

} // namespace

float shade_height_of(const String &key) {
    for (const char *prefix : {"house_", "machine_", "depot", "table_", "trade_box"}) {
        if (key.begins_with(prefix)) {
            return 1.4f;
        }
    }
    return 0.0f;
}

int grid_of(const String &key) {
    return key.begins_with("house_") ? 48 : key.begins_with("item_") ? 8 : 0;
}

float shade_factor(float y, float normal_y, float shade_height) {
    const float height = y / shade_height;
    const float shade = height < 0 ? 0.74f : 0.74f + 0.26f * std::min(1.0f, height);
    return shade * (1.0f + 0.05f * std::max(0.0f, normal_y));
}

std::vector<MeshInstance3D *> meshes_below(Node *root) {
    std::vector<MeshInstance3D *> found;
    for (int32_t i = 0; i < root->get_child_count(); i++) {
        Node *child = root->get_child(i);
        if (auto *mesh = Object::cast_to<MeshInstance3D>(child)) {
            found.push_back(mesh);
        }
        const std::vector<MeshInstance3D *> below = meshes_below(child);
        found.insert(found.end(), below.begin(), below.end());
    }
    return found;
}

Transform3D local_to(const Node3D *node, const Node *root) {
    Transform3D place = node->get_transform();
    for (const Node *at = node->get_parent(); at != nullptr && at != root; at = at->get_parent()) {
        if (const auto *parent = Object::cast_to<Node3D>(at)) {
            place = parent->get_transform() * place;
        }
    }
    return place;
}

void simplify(Node3D *root, float smallest) {
    for (MeshInstance3D *node : meshes_below(root)) {
        if (node->get_mesh().is_null()) {
            continue;
        }
        const float size = visible_size(node, root);
        if (size < smallest) {
            // Parts that hang on a dropped one may be larger; they stay where they are.
            if (node->get_child_count() > 0) {
                node->set_mesh(Ref<Mesh>());
            } else {
                node->get_parent()->remove_child(node);
                memdelete(node);
            }
            continue;
        }
        const bool big = size > 0.6f;
        const int radial = big ? 10 : 6;
        prim_cache::cap_detail(node->get_mesh(), {.sphere_radial = radial,
                                                  .sphere_rings = big ? 5 : 3,
                                                  .cylinder_radial = radial,
                                                  .capsule_radial = 8,
                                                  .capsule_rings = 2,
                                                  .torus_rings = 10,
                                                  .torus_segments = 5});
    }
}

void simplify_more(Node3D *root) {
    for (MeshInstance3D *node : meshes_below(root)) {
        if (node->get_mesh().is_null()) {
            continue;
        }
        const float size = visible_size(node, root);
        if (size < 0.3f) {
            prim_cache::cap_detail(node->get_mesh(), {.sphere_radial = 5, .sphere_rings = 2, .cylinder_radial = 4});
        } else if (size <= 1.2f) {
            prim_cache::cap_detail(node->get_mesh(), {.sphere_radial = 8, .sphere_rings = 4, .cylinder_radial = 7});
        }
    }
}

Ref<ArrayMesh> merge(const std::vector<MeshInstance3D *> &meshes, const Node *root, const String &key,
                     const MergeOptions &options) {
    Surface out;
    for (MeshInstance3D *node : meshes) {
        append(out, node, root, options);
    }
    if (options.grid > 0) {
        cluster_arrays(out.vertices, out.normals, out.colors, out.indices, options.grid);
    }
    Ref<ArrayMesh> mesh;
    mesh.instantiate();
    mesh->set_name(key);
    if (out.vertices.is_empty() || out.indices.is_empty()) {
        UtilityFunctions::print("TILMARCH empty mesh skipped");
        return mesh;
    }
    Array arrays;
    arrays.resize(Mesh::ARRAY_MAX);
    arrays[Mesh::ARRAY_VERTEX] = out.vertices;
    arrays[Mesh::ARRAY_NORMAL] = out.normals;
    arrays[Mesh::ARRAY_COLOR] = out.colors;
    arrays[Mesh::ARRAY_INDEX] = out.indices;
    if (!options.limbs.empty()) {
        arrays[Mesh::ARRAY_TEX_UV] = out.pivots;
        arrays[Mesh::ARRAY_TEX_UV2] = out.numbers;
    }
    mesh->add_surface_from_arrays(Mesh::PRIMITIVE_TRIANGLES, arrays);
    return mesh;
}

} // namespace tilm::mesh_baker
