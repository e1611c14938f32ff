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

} // namespace

void make_rig(Node3D *root, Node3D *body, const Array &limbs, const Node *tail, const String &key,
              const Ref<Material> &material, float cull_margin) {
    const Ref<ArrayMesh> mesh = rig_mesh(body, limbs, tail, key);
    const std::vector<MeshInstance3D *> drawn = mesh_baker::meshes_below(body);
    for (auto it = drawn.rbegin(); it != drawn.rend(); ++it) {
        (*it)->get_parent()->remove_child(*it);
        memdelete(*it);
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
    Node3D *root = model_rigs::person_tree(look);
    if (bool(look.get("hd", false))) {
        model_rigs::merge_parts(root, String("hd_") + Variant(look).stringify());
        return root;
    }
    auto *body = Object::cast_to<Node3D>(root->get_node_or_null(NodePath("Body")));
    Array limbs;
    for (const char *name : {"LegL", "LegR", "ArmL", "ArmR"}) {
        limbs.push_back(body->get_node_or_null(NodePath(name)));
    }
    model_rigs::make_rig(root, body, limbs, nullptr, String("rig_") + Variant(look).stringify(), person_material(),
                         0.8f);
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
