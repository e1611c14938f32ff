#include "game/art/pet_models.h"

#include <vector>

#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>

#include "farm_animals/pet_core.h"
#include "game/art/mesh_baker.h"
#include "game/art/models.h"
#include "game/art/shapes.h"
#include "rules/pets.h"
#include "statics.h"

namespace tilm {

namespace {

using shapes::bevel_box;
using shapes::loft;
using shapes::put;

Dictionary *joints = nullptr; // kind -> Array of rows: parent's index, name, position, mesh or null

Dictionary &the_joints() {
    if (joints == nullptr) {
        joints = new Dictionary;
    }
    return *joints;
}

// One row for `node` and each joint below it; the meshes that hang on a joint itself become one.
void record(Node3D *node, int parent, const String &key, Array &rows) {
    std::vector<MeshInstance3D *> skin;
    std::vector<Node3D *> below;
    for (int32_t i = 0; i < node->get_child_count(); ++i) {
        if (auto *mesh = Object::cast_to<MeshInstance3D>(node->get_child(i))) {
            skin.push_back(mesh);
        } else if (auto *joint = Object::cast_to<Node3D>(node->get_child(i))) {
            below.push_back(joint);
        }
    }
    Array row;
    row.push_back(parent);
    row.push_back(node->get_name());
    row.push_back(node->get_position());
    row.push_back(skin.empty() ? Variant() : Variant(mesh_baker::merge(skin, node, key, mesh_baker::MergeOptions())));
    const int self = static_cast<int>(rows.size());
    rows.push_back(row);
    for (Node3D *joint : below) {
        record(joint, self, key + "/" + String(joint->get_name()), rows);
    }
}

Array rows_of(const String &kind) {
    Dictionary &all = the_joints();
    if (!all.has(kind)) {
        Node3D *tree = PetModels::tree(kind);
        if (tree == nullptr) {
            ERR_PRINT("TILMARCH no pet model: " + kind.left(40));
            return Array();
        }
        Array rows;
        record(tree, -1, "pet_" + kind, rows);
        memdelete(tree);
        all[kind] = rows;
    }
    return all[kind];
}

struct CartShape {
    float width, length, wall, wheel;
    uint32_t paint, trim;
};

CartShape cart_shape(int cart_lv) {
    const rules::Cart *cart = rules::cart_of_level(cart_lv);
    const float wide = 0.46f * float(cart->cols) + 0.16f, deep = 0.46f * float(cart->rows) + 0.16f;
    const uint32_t paints[] = {pal::WOOD_LIGHT, pal::RED, pal::BLUE};
    const uint32_t trims[] = {pal::WOOD_DARK, pal::YELLOW, pal::CREAM};
    const size_t i = static_cast<size_t>(cart_lv - 1);
    return {wide, deep, 0.14f + 0.05f * float(cart_lv), 0.36f + 0.03f * float(cart_lv), paints[i], trims[i]};
}

Node3D *cart_body(int cart_lv) {
    const CartShape c = cart_shape(cart_lv);
    Node3D *root = memnew(Node3D);
    const float floor = 0.55f;
    put(root, bevel_box(Vector3(c.width, 0.09f, c.length), 0.02f), pal::WOOD, Vector3(0, floor - 0.045f, 0));
    for (int i = 0; i < 3; i++) { // planks stand out a little
        put(root, bevel_box(Vector3(c.width * 0.3f, 0.02f, c.length * 0.97f), 0.008f),
            pal::tone(pal::WOOD, i % 2 == 0 ? 0.12f : -0.08f),
            Vector3((float(i) - 1) * c.width * 0.32f, floor + 0.003f, 0));
    }
    for (const float side : {-1.0f, 1.0f}) {
        put(root, bevel_box(Vector3(0.06f, c.wall, c.length + 0.1f), 0.02f), c.paint,
            Vector3(side * c.width * 0.5f, floor + c.wall * 0.5f, 0), Vector3(0, 0, side * -9));
        put(root, bevel_box(Vector3(c.width, c.wall, 0.06f), 0.02f), c.paint,
            Vector3(0, floor + c.wall * 0.5f, side * c.length * 0.5f), Vector3(side * 9, 0, 0));
        put(root, bevel_box(Vector3(0.09f, 0.06f, c.length + 0.16f), 0.02f), c.trim,
            Vector3(side * (c.width * 0.5f + 0.02f), floor + c.wall, 0));
        for (const float end : {-1.0f, 1.0f}) {
            put(root, bevel_box(Vector3(0.1f, c.wall + 0.12f, 0.1f), 0.025f), c.trim,
                Vector3(side * c.width * 0.5f, floor + c.wall * 0.5f, end * c.length * 0.5f));
        }
        // A shaft along the horse's flank.
        const float reach = float(PetCore::hitch) - c.length * 0.5f;
        put(root, loft({{0, 0.04f, 0.04f}, {reach + 0.25f, 0.028f, 0.028f}}, 6), pal::WOOD_DARK,
            Vector3(side * 0.33f, floor - 0.06f, -c.length * 0.5f), Vector3(-84, 0, 0));
    }
    put(root, loft({{-0.5f * c.width - 0.14f, 0.045f, 0.045f}, {0.5f * c.width + 0.14f, 0.045f, 0.045f}}, 6),
        pal::STONE_DARK, Vector3(0, c.wheel, 0.04f), Vector3(0, 0, 90));
    return root;
}

// Lies in the y-z plane round the origin, seen from both sides.
Node3D *cart_wheel(int cart_lv) {
    const CartShape c = cart_shape(cart_lv);
    Node3D *root = memnew(Node3D);
    constexpr int pieces = 12;
    const float step = float(Math_PI) * 2 / pieces;
    for (int i = 0; i < pieces; i++) {
        const float a = step * float(i);
        put(root, bevel_box(Vector3(0.09f, 0.08f, c.wheel * step * 1.06f), 0.015f),
            i % 2 == 0 ? pal::col(pal::WOOD_DARK) : pal::tone(pal::WOOD_DARK, 0.12f),
            Vector3(0, std::cos(a) * (c.wheel - 0.04f), std::sin(a) * (c.wheel - 0.04f)),
            Vector3(a * 180.0f / float(Math_PI), 0, 0));
    }
    for (int i = 0; i < 3; i++) {
        put(root, bevel_box(Vector3(0.05f, c.wheel * 1.85f, 0.06f), 0.015f), c.trim, Vector3(),
            Vector3(float(i) * 60, 0, 0));
    }
    put(root, loft({{-0.075f, 0.06f, 0.06f}, {0, 0.09f, 0.09f}, {0.075f, 0.06f, 0.06f}}, 8), c.paint, Vector3(),
        Vector3(0, 0, 90));
    return root;
}

} // namespace

void PetModels::setup_statics() {
    the_joints();
    Statics::on_release([] {
        delete joints;
        joints = nullptr;
    });
}

Node3D *PetModels::pet(const String &kind) {
    const Array rows = rows_of(kind);
    std::vector<Node3D *> made;
    for (int64_t i = 0; i < rows.size(); ++i) {
        const Array row = rows[i];
        const Ref<ArrayMesh> mesh = row[3];
        Node3D *node = nullptr;
        if (mesh.is_valid()) {
            MeshInstance3D *skin = memnew(MeshInstance3D);
            skin->set_mesh(mesh);
            skin->set_material_override(Models::farm_material());
            node = skin;
        } else {
            node = memnew(Node3D);
        }
        node->set_position(row[2]);
        const int64_t parent = row[0];
        if (parent >= 0) {
            node->set_name(row[1]);
            if (const String name = row[1]; name == "Low" || name == "Jaw" || name == "Tail") {
                Object::cast_to<GeometryInstance3D>(node)->set_cast_shadows_setting(
                    GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
            }
            made[static_cast<size_t>(parent)]->add_child(node);
        }
        made.push_back(node);
    }
    Node3D *root = made.empty() ? memnew(Node3D) : made.front();
    root->set_name("Model");
    return root;
}

Node3D *PetModels::cart(int cart_lv) {
    Node3D *root = memnew(Node3D);
    if (rules::cart_of_level(cart_lv) == nullptr) {
        ERR_PRINT(vformat("TILMARCH no cart of level %d", cart_lv));
        return root;
    }
    const CartShape c = cart_shape(cart_lv);
    MeshInstance3D *bed =
        Models::bake(vformat("cart_body_%d", cart_lv), Models::builder([cart_lv] { return cart_body(cart_lv); }));
    bed->set_name("Bed");
    root->add_child(bed);
    for (const char *name : {"WheelL", "WheelR"}) {
        MeshInstance3D *wheel =
            Models::bake(vformat("cart_wheel_%d", cart_lv), Models::builder([cart_lv] { return cart_wheel(cart_lv); }));
        wheel->set_name(name);
        const float side = name[5] == 'L' ? -1.0f : 1.0f;
        wheel->set_position(Vector3(side * (c.width * 0.5f + 0.12f), c.wheel, 0.04f));
        root->add_child(wheel);
    }
    return root;
}

} // namespace tilm
