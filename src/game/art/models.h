#pragma once
// The model pipeline and the common builders. All static: trees of primitives are built once per key, merged into one
// mesh with vertex colours, kept for the run and handed out as cheap nodes that share it.
// Everything that can face somewhere faces -z at yaw 0: people, animals, vans. Buildings and signs face +z, the camera.

#include <functional>

#include <godot_cpp/classes/array_mesh.hpp>
#include <godot_cpp/classes/font.hpp>
#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/classes/material.hpp>
#include <godot_cpp/classes/mesh.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/classes/shader_material.hpp>
#include <godot_cpp/classes/standard_material3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/callable.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class Models : public RefCounted {
    GDCLASS(Models, RefCounted)

protected:
    static void _bind_methods() {}

public:
    // Makes the caches and registers their release. Called once, before classes are registered.
    static void setup_statics();

    // Primitive builders: one node each, coloured by the material cache and added to `parent` (null: left loose).
    static MeshInstance3D *mesh_instance(const Ref<Mesh> &mesh, const Color &color, const Vector3 &pos, Node *parent,
                                         bool cast_shadow = true);
    static MeshInstance3D *box(const Vector3 &size, const Color &color, const Vector3 &pos, Node *parent,
                               bool cast_shadow = true);
    static MeshInstance3D *sphere(float radius, const Color &color, const Vector3 &pos, Node *parent,
                                  const Vector3 &scale = Vector3(1, 1, 1), int segments = 12);
    static MeshInstance3D *cyl(float top, float bottom, float height, const Color &color, const Vector3 &pos,
                               Node *parent, int segments = 12);
    static MeshInstance3D *capsule(float radius, float height, const Color &color, const Vector3 &pos, Node *parent);
    // A text in the world, 0.01 a pixel; without `billboard` it lies flat on the ground.
    static Label3D *label3d(const String &text, int size, const Color &color, const Vector3 &pos, Node *parent,
                            bool billboard = true, int outline = 16);
    // The game's font with the Arabic one as fallback; the engine's own if the files are missing.
    static Ref<Font> font();

    // Pipeline.
    static Callable builder(std::function<Node3D *()> fn);
    static Callable fn_node(Node3D *(*fn)());
    static Array mesh_arrays(const Ref<Mesh> &mesh);
    static String shape_key(const Ref<Mesh> &mesh);
    // A fresh node on the cached mesh of `key`; `build` runs only when the key is new.
    static MeshInstance3D *bake(const String &key, const Callable &build, bool cast_shadow = true, bool plain = false);
    // The cached mesh of `key`, baking it first when needed.
    static Ref<ArrayMesh> baked_mesh(const String &key, const Callable &build);
    // A fresh node for any key of the table of model keys; null for one that is unknown or without a builder.
    static Node3D *model(const String &key);
    static Node3D *merge_children(Node3D *node, const String &key, bool cast_shadow = true, bool plain = false);
    static void simplify(Node3D *node, float smallest);
    // Shows the `count` nodes nearest to `pos` within `radius`, hides the others (or their parents).
    static void nearest_visible(const Array &nodes, const Vector3 &pos, float radius, int count,
                                bool use_parent = false);
    // Writes the prim cache to res://assets/prims.bin and logs how it went.
    static void dump_prims();

    // People: a Dictionary of look keys (skin, shirt, pants, hair, shoes, style, overalls, apron, hat, cap, beard...).
    // The root holds `Body`, under it LegL, LegR, ArmL, ArmR and Head; without "hd" one instanced mesh draws them.
    static Node3D *person(const Dictionary &look);

    // Animals by the good that they give: egg, milk, fish, calf, hen, honey, wool, wool_shorn. The root holds `Body`,
    // under it LegFL, LegFR, LegBL, LegBR (or LegL, LegR) and Tail. In a pen they are shown at pen_scale().
    static Node3D *animal(const String &product);
    static float pen_scale(const String &product);
    static Node3D *animal_rig(Node3D *body, const String &key);

    // Goods. item_mesh takes "item_<kind>" or "money_<kind>"; it stands on y 0 and is about item_height tall.
    static MeshInstance3D *item_model(const String &kind);
    static Ref<ArrayMesh> item_mesh(const String &mesh_key);

    // One plant of a field cell (0.42 wide), standing on y 0.
    static Ref<Mesh> crop_mesh(const String &crop);

    static MeshInstance3D *any_tree(float v);

    // Shared materials. farm: all baked models; snowy: those that snow may whiten; vertex: plain vertex colours.
    static Ref<ShaderMaterial> farm_material(bool snowy = false);
    static Ref<ShaderMaterial> tree_material();
    static Ref<ShaderMaterial> person_material();
    static Ref<ShaderMaterial> animal_material();
    static Ref<StandardMaterial3D> vertex_material();
    static Ref<StandardMaterial3D> color_material(const Color &color, float roughness = 0.85f, bool unshaded = false);
    // A material on res://shaders/<name>.gdshader; a missing file is logged once and gives a plain green shader.
    static Ref<ShaderMaterial> shader_material(const String &name);

    static bool low_detail();
    static void set_low_detail(bool on);
};

} // namespace tilm
