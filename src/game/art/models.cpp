#include "game/art/models.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/capsule_mesh.hpp>
#include <godot_cpp/classes/cylinder_mesh.hpp>
#include <godot_cpp/classes/font_file.hpp>
#include <godot_cpp/classes/resource_loader.hpp>
#include <godot_cpp/classes/sphere_mesh.hpp>
#include <godot_cpp/classes/theme_db.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/art/art_materials.h"
#include "game/art/art_state.h"
#include "game/art/mesh_baker.h"
#include "game/art/node_builder.h"
#include "game/art/prim_cache.h"
#include "statics.h"

namespace tilm {
namespace {

const char *const FONT_PATH = "res://assets/fonts/NotoSans-Black.ttf";
const char *const ARABIC_FONT_PATH = "res://assets/fonts/NotoSansArabic-Black.ttf";

void wear_baked(MeshInstance3D *node, const String &key, bool cast_shadow, bool plain) {
    if (plain) {
        node->set_material_override(Models::vertex_material());
    } else {
        node->set_material_override(Models::farm_material(mesh_baker::shade_height_of(key) > 0));
    }
    if (!cast_shadow) {
        node->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    }
}

Ref<FontFile> load_font_file(const String &path) {
    if (!ResourceLoader::get_singleton()->exists(path)) {
        UtilityFunctions::print("TILMARCH font missing: ", path);
        return Ref<FontFile>();
    }
    const Ref<FontFile> file = ResourceLoader::get_singleton()->load(path);
    if (file.is_valid()) {
        file->set_generate_mipmaps(true);
    }
    return file;
}

} // namespace

void Models::setup_statics() {
    Statics::on_release(release_art);
}

MeshInstance3D *Models::mesh_instance(const Ref<Mesh> &mesh, const Color &color, const Vector3 &pos, Node *parent,
                                      bool cast_shadow) {
    MeshInstance3D *node = memnew(MeshInstance3D);
    node->set_mesh(mesh);
    node->set_material_override(color_material(color));
    node->set_position(pos);
    if (!cast_shadow) {
        node->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    }
    if (parent != nullptr) {
        parent->add_child(node);
    }
    return node;
}

MeshInstance3D *Models::box(const Vector3 &size, const Color &color, const Vector3 &pos, Node *parent,
                            bool cast_shadow) {
    Ref<BoxMesh> mesh;
    mesh.instantiate();
    mesh->set_size(size);
    return mesh_instance(mesh, color, pos, parent, cast_shadow);
}

MeshInstance3D *Models::sphere(float radius, const Color &color, const Vector3 &pos, Node *parent, const Vector3 &scale,
                               int segments) {
    if (low_detail()) {
        segments = segments / 2 < 6 ? 5 : segments / 2;
    }
    Ref<SphereMesh> mesh;
    mesh.instantiate();
    mesh->set_radius(radius);
    mesh->set_height(radius * 2);
    mesh->set_radial_segments(segments);
    mesh->set_rings(std::max(4, segments / 2));
    MeshInstance3D *node = mesh_instance(mesh, color, pos, parent);
    node->set_scale(scale);
    return node;
}

MeshInstance3D *Models::cyl(float top, float bottom, float height, const Color &color, const Vector3 &pos, Node *parent,
                            int segments) {
    if (low_detail() && segments >= 7) {
        segments = std::max(5, segments / 2);
    }
    Ref<CylinderMesh> mesh;
    mesh.instantiate();
    mesh->set_top_radius(top);
    mesh->set_bottom_radius(bottom);
    mesh->set_height(height);
    mesh->set_radial_segments(segments);
    mesh->set_rings(1);
    return mesh_instance(mesh, color, pos, parent);
}

MeshInstance3D *Models::capsule(float radius, float height, const Color &color, const Vector3 &pos, Node *parent) {
    Ref<CapsuleMesh> mesh;
    mesh.instantiate();
    mesh->set_radius(radius);
    mesh->set_height(height);
    mesh->set_radial_segments(low_detail() ? 7 : 12);
    mesh->set_rings(low_detail() ? 2 : 4);
    return mesh_instance(mesh, color, pos, parent);
}

Label3D *Models::label3d(const String &text, int size, const Color &color, const Vector3 &pos, Node *parent,
                         bool billboard, int outline) {
    Label3D *label = memnew(Label3D);
    label->set_text(text);
    label->set_font(font());
    label->set_font_size(size);
    label->set_outline_size(outline);
    label->set_modulate(color);
    label->set_outline_modulate(Color(0.12f, 0.09f, 0.10f));
    label->set_pixel_size(0.01);
    label->set_position(pos);
    label->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    label->set_visibility_range_end(24);
    label->set_visibility_range_end_margin(1.5);
    if (billboard) {
        label->set_billboard_mode(BaseMaterial3D::BILLBOARD_ENABLED);
    } else {
        label->set_rotation_degrees(Vector3(-90, 0, 0));
    }
    if (parent != nullptr) {
        parent->add_child(label);
    }
    return label;
}

Ref<Font> Models::font() {
    if (art().font.is_valid()) {
        return art().font;
    }
    const Ref<FontFile> main = load_font_file(FONT_PATH);
    const Ref<FontFile> arabic = load_font_file(ARABIC_FONT_PATH);
    if (main.is_valid()) {
        if (arabic.is_valid()) {
            TypedArray<Font> fallbacks;
            fallbacks.push_back(arabic);
            main->set_fallbacks(fallbacks);
        }
        art().font = main;
    } else {
        art().font = ThemeDB::get_singleton()->get_fallback_font();
    }
    return art().font;
}

Callable Models::builder(std::function<Node3D *()> fn) {
    return make_node_builder(std::move(fn));
}

Callable Models::fn_node(Node3D *(*fn)()) {
    return make_node_builder(fn);
}

Array Models::mesh_arrays(const Ref<Mesh> &mesh) {
    return prim_cache::arrays_of(mesh);
}

String Models::shape_key(const Ref<Mesh> &mesh) {
    return prim_cache::shape_key(mesh);
}

Ref<ArrayMesh> Models::baked_mesh(const String &key, const Callable &build) {
    const Ref<ArrayMesh> known = art().baked.get(key, Variant());
    if (known.is_valid()) {
        return known;
    }
    Node3D *tree = Object::cast_to<Node3D>(build.call());
    if (tree == nullptr) {
        ERR_PRINT(String("TILMARCH model without a builder: ") + key);
        tree = memnew(Node3D);
    }
    mesh_baker::simplify(tree, 0.03f);
    if (key.begins_with("item_") || key.begins_with("house_")) {
        mesh_baker::simplify_more(tree);
    }
    mesh_baker::MergeOptions options;
    options.shade_height = mesh_baker::shade_height_of(key);
    options.grid = mesh_baker::grid_of(key);
    const Ref<ArrayMesh> mesh = mesh_baker::merge(mesh_baker::meshes_below(tree), tree, key, options);
    art().baked[key] = mesh;
    memdelete(tree);
    return mesh;
}

MeshInstance3D *Models::bake(const String &key, const Callable &build, bool cast_shadow, bool plain) {
    MeshInstance3D *node = memnew(MeshInstance3D);
    node->set_mesh(baked_mesh(key, build));
    wear_baked(node, key, cast_shadow, plain);
    return node;
}

Node3D *Models::merge_children(Node3D *node, const String &key, bool cast_shadow, bool plain) {
    const std::vector<MeshInstance3D *> meshes = mesh_baker::meshes_below(node);
    if (meshes.empty()) {
        return node;
    }
    Ref<ArrayMesh> mesh = art().baked.get(key, Variant());
    if (mesh.is_null()) {
        mesh_baker::MergeOptions options;
        options.shade_height = mesh_baker::shade_height_of(key);
        mesh = mesh_baker::merge(meshes, node, key, options);
        art().baked[key] = mesh;
    }
    // Moving parts and signs that hang on a merged mesh outlive it, where they stand.
    std::vector<Node *> kept;
    for (MeshInstance3D *merged : meshes) {
        for (int32_t i = 0; i < merged->get_child_count(); i++) {
            if (Node *child = merged->get_child(i); Object::cast_to<MeshInstance3D>(child) == nullptr) {
                kept.push_back(child);
            }
        }
    }
    for (Node *child : kept) {
        auto *placed = Object::cast_to<Node3D>(child);
        const Transform3D place = placed != nullptr ? mesh_baker::local_to(placed, node) : Transform3D();
        child->get_parent()->remove_child(child);
        node->add_child(child);
        if (placed != nullptr) {
            placed->set_transform(place);
        }
    }
    // Deepest first: a mesh may hang on another one.
    for (auto it = meshes.rbegin(); it != meshes.rend(); ++it) {
        (*it)->get_parent()->remove_child(*it);
        memdelete(*it);
    }
    MeshInstance3D *whole = memnew(MeshInstance3D);
    whole->set_mesh(mesh);
    wear_baked(whole, key, cast_shadow, plain);
    node->add_child(whole);
    return node;
}

void Models::simplify(Node3D *node, float smallest) {
    mesh_baker::simplify(node, smallest);
}

void Models::nearest_visible(const Array &nodes, const Vector3 &pos, float radius, int count, bool use_parent) {
    // What is shown: the node itself or the parent that carries it.
    std::vector<std::pair<float, Node3D *>> nearest;
    std::vector<Node3D *> all;
    for (int64_t i = 0; i < nodes.size(); i++) {
        const Variant &listed = nodes[i];
        auto *node = Object::cast_to<Node3D>(listed.get_validated_object());
        Node3D *shown = node != nullptr && use_parent ? Object::cast_to<Node3D>(node->get_parent()) : node;
        if (shown == nullptr) {
            continue;
        }
        all.push_back(shown);
        const Vector3 at = node->is_inside_tree() ? node->get_global_position() : node->get_position();
        const float away = float(at.distance_to(pos));
        if (!(away <= radius) || count < 1) {
            continue;
        }
        const std::pair<float, Node3D *> entry(away, shown);
        nearest.insert(std::upper_bound(nearest.begin(), nearest.end(), entry,
                                        [](const auto &a, const auto &b) { return a.first < b.first; }),
                       entry);
        if (int(nearest.size()) > count) {
            nearest.pop_back();
        }
    }
    // One that stays as it is must not be told so: each change of sight goes down its whole branch.
    for (Node3D *shown : all) {
        const bool near =
            std::any_of(nearest.begin(), nearest.end(), [shown](const auto &entry) { return entry.second == shown; });
        if (shown->is_visible() != near) {
            shown->set_visible(near);
        }
    }
}

void Models::dump_prims() {
    int64_t count = 0;
    const Error result = prim_cache::save("res://assets/prims.bin", count);
    UtilityFunctions::print("PRIMS ", int64_t(result), " shapes: ", count);
}

bool Models::low_detail() {
    return art().low_detail;
}

void Models::set_low_detail(bool on) {
    art().low_detail = on;
}

} // namespace tilm
