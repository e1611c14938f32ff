#include "game/art/model_rigs.h"

#include <vector>

#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>

#include "game/art/art_state.h"
#include "game/art/mesh_baker.h"
#include "game/art/models.h"
#include "glebworks/pose_batch.h"
#include "names.h"

namespace tilm {
namespace model_rigs {
namespace {

Ref<ArrayMesh> rig_mesh(Node3D *body, const Array &limbs, const Node *tail, const String &key) {
    const Ref<ArrayMesh> known = art().rigs.get(key, Variant());
    if (known.is_valid()) {
        return known;
    }
    mesh_baker::simplify(body, 0);
    mesh_baker::MergeOptions options;
    for (int64_t i = 0; i < limbs.size(); i++) {
        const auto *limb = Object::cast_to<Node3D>(limbs[i]);
        const Vector3 pivot = limb->get_position();
        options.limbs.push_back({limb, Vector2(pivot.y, pivot.z), float(i + 1)});
    }
    if (const auto *last = Object::cast_to<Node3D>(tail)) {
        const Vector3 pivot = last->get_position();
        options.limbs.push_back({last, Vector2(pivot.y, pivot.z), 5.0f});
    }
    const Ref<ArrayMesh> mesh = mesh_baker::merge(mesh_baker::meshes_below(body), body, key, options);
    art().rigs[key] = mesh;
    return mesh;
}

// A row for `node` and each joint below it: its parent's row, name and transform.
void record_bones(const Node3D *node, int parent, Array &rows) {
    Array row;
    row.push_back(parent);
    row.push_back(node->get_name());
    row.push_back(node->get_transform());
    const int self = int(rows.size());
    rows.push_back(row);
    for (int32_t i = 0; i < node->get_child_count(); i++) {
        if (const auto *joint = Object::cast_to<Node3D>(node->get_child(i))) {
            record_bones(joint, self, rows);
        }
    }
}

} // namespace

Node3D *known_body(const String &key) {
    const Array rows = art().bones.get(key, Array());
    std::vector<Node3D *> made;
    for (int64_t i = 0; i < rows.size(); i++) {
        const Array row = rows[i];
        Node3D *joint = memnew(Node3D);
        joint->set_name(row[1]);
        joint->set_transform(row[2]);
        if (const int64_t parent = row[0]; parent >= 0) {
            made[size_t(parent)]->add_child(joint);
        }
        made.push_back(joint);
    }
    return made.empty() ? nullptr : made.front();
}

void make_rig(Node3D *root, Node3D *body, const Array &limbs, const Node *tail, const String &key,
              const Ref<Material> &material, float cull_margin) {
    const Ref<ArrayMesh> mesh = rig_mesh(body, limbs, tail, key);
    const std::vector<MeshInstance3D *> drawn = mesh_baker::meshes_below(body);
    for (auto it = drawn.rbegin(); it != drawn.rend(); ++it) {
        (*it)->get_parent()->remove_child(*it);
        memdelete(*it);
    }
    if (!art().bones.has(key)) {
        Array rows;
        record_bones(body, -1, rows);
        art().bones[key] = rows;
    }
    Ref<MultiMesh> multi;
    multi.instantiate();
    multi->set_transform_format(MultiMesh::TRANSFORM_3D);
    multi->set_use_colors(true);
    multi->set_use_custom_data(true);
    multi->set_mesh(mesh);
    multi->set_instance_count(1);
    multi->set_instance_color(0, Color(1, 1, 1, 1));
    multi->set_instance_custom_data(0, Color(0, 0, 0, 0));
    multi->set_instance_transform(0, body->get_transform());

    MultiMeshInstance3D *node = memnew(MultiMeshInstance3D);
    node->set_name("Mesh");
    node->set_multimesh(multi);
    node->set_material_override(material);
    node->set_extra_cull_margin(cull_margin);
    root->add_child(node);
    PoseBatch::pose_add(root, body, limbs, multi);
}

void merge_parts(Node3D *part, const String &key) {
    std::vector<MeshInstance3D *> own;
    for (int32_t i = 0; i < part->get_child_count(); i++) {
        Node *child = part->get_child(i);
        if (auto *mesh = Object::cast_to<MeshInstance3D>(child)) {
            const Ref<StandardMaterial3D> paint = mesh->get_material_override();
            if (mesh->get_child_count() == 0 && paint.is_valid() && paint->get_albedo().a >= 1.0f) {
                own.push_back(mesh);
            }
        } else if (auto *joint = Object::cast_to<Node3D>(child)) {
            merge_parts(joint, key + String("/") + String(joint->get_name()));
        }
    }
    if (own.size() < 2) {
        return;
    }
    Ref<ArrayMesh> mesh = art().rigs.get(key, Variant());
    if (mesh.is_null()) {
        mesh = mesh_baker::merge(own, part, key, {});
        art().rigs[key] = mesh;
    }
    for (MeshInstance3D *merged : own) {
        part->remove_child(merged);
        memdelete(merged);
    }
    MeshInstance3D *whole = memnew(MeshInstance3D);
    whole->set_mesh(mesh);
    whole->set_material_override(Models::vertex_material());
    part->add_child(whole);
}

} // namespace model_rigs

Node3D *Models::person(const Dictionary &look) {
    if (bool(look.get("hd", false))) {
        Node3D *full = model_rigs::person_tree(look);
        model_rigs::merge_parts(full, String("hd_") + Variant(look).stringify());
        return full;
    }
    // A look that was drawn before needs its joints only.
    const String key = String("rig_") + Variant(look).stringify();
    Node3D *body = model_rigs::known_body(key), *root = nullptr;
    if (body != nullptr) {
        root = memnew(Node3D);
        root->add_child(body);
    } else {
        root = model_rigs::person_tree(look);
        body = Object::cast_to<Node3D>(root->get_node_or_null(NodePath("Body")));
    }
    Array limbs;
    for (const char *name : {"LegL", "LegR", "ArmL", "ArmR"}) {
        limbs.push_back(body->get_node_or_null(NodePath(name)));
    }
    model_rigs::make_rig(root, body, limbs, nullptr, key, person_material(), 0.8f);
    return root;
}

Node3D *Models::animal_rig(Node3D *body, const String &key) {
    Node3D *root = memnew(Node3D);
    if (body->get_parent() != nullptr) {
        body->get_parent()->remove_child(body);
    }
    body->set_name("Body");
    root->add_child(body);
    Array limbs;
    Node *tail = nullptr;
    for (int32_t i = 0; i < body->get_child_count(); i++) {
        Node *child = body->get_child(i);
        const String name = child->get_name();
        if (name.begins_with("Leg") && limbs.size() < 4) {
            limbs.push_back(child);
        } else if (name == String("Tail")) {
            tail = child;
        }
    }
    model_rigs::make_rig(root, body, limbs, tail, key + String("/single"), animal_material(), 0.5f);
    return root;
}

Node3D *Models::animal(const String &product) {
    if (Node3D *known = model_rigs::known_body(String("rig_") + product + String("/single"))) {
        return animal_rig(known, String("rig_") + product);
    }
    Node3D *tree = model_rigs::animal_tree(product);
    if (tree == nullptr) {
        return nullptr;
    }
    auto *body = Object::cast_to<Node3D>(tree->get_node_or_null(NodePath("Body")));
    tree->remove_child(body);
    memdelete(tree);
    return animal_rig(body, String("rig_") + product);
}

float Models::pen_scale(const String &product) {
    return product == String("calf") ? 0.62f : product == String("egg") || product == String("hen") ? 0.8f : 1.0f;
}

} // namespace tilm
