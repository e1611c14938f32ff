// The model pipeline and what it draws.

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/capsule_mesh.hpp>
#include <godot_cpp/classes/cylinder_mesh.hpp>
#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/classes/plane_mesh.hpp>
#include <godot_cpp/classes/prism_mesh.hpp>
#include <godot_cpp/classes/sphere_mesh.hpp>
#include <godot_cpp/classes/torus_mesh.hpp>
#include <godot_cpp/variant/packed_color_array.hpp>
#include <godot_cpp/variant/packed_float32_array.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>
#include <godot_cpp/variant/packed_vector2_array.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "engine_test.h"
#include "game/art/addon_models.h"
#include "game/art/buildings.h"
#include "game/art/icon_models.h"
#include "game/art/item_models.h"
#include "game/art/mesh_baker.h"
#include "game/art/models.h"
#include "game/art/prim_cache.h"
#include "game/art/scenery.h"
#include "game/art/shapes.h"
#include "game/data/farm_data.h"
#include "glebworks/mesh_cluster.h"
#include "glebworks/pose_batch.h"
#include "rules/garden.h"
#include "rules/items.h"

namespace tilm {
namespace {

template <class T>
Ref<T> made() {
    Ref<T> mesh;
    mesh.instantiate();
    return mesh;
}

PackedVector3Array vertices_of(const Ref<Mesh> &mesh) {
    return mesh->surface_get_arrays(0)[Mesh::ARRAY_VERTEX];
}

// A loose tree freed at the end of its scope.
struct Tree {
    Node3D *root = memnew(Node3D);
    ~Tree() { memdelete(root); }
};

TEST(ShapeKey, NamesPrimitivesByWhatShapesThem) {
    Ref<BoxMesh> box = made<BoxMesh>();
    box->set_size(Vector3(1, 2, 3));
    EXPECT_EQ(Models::shape_key(box), String("b(1.000000, 2.000000, 3.000000)/0/0/0"));
    const String before = Models::shape_key(box);
    box->set_subdivide_depth(2);
    EXPECT_NE(Models::shape_key(box), before);

    Ref<CylinderMesh> cyl = made<CylinderMesh>();
    cyl->set_cap_top(false);
    EXPECT_EQ(Models::shape_key(cyl), String("c0.500000/0.500000/2.000000/64/4/false/true"));
    Ref<SphereMesh> ball = made<SphereMesh>();
    EXPECT_EQ(Models::shape_key(ball), String("s0.500000/1.000000/64/32/false"));
    Ref<PlaneMesh> plane = made<PlaneMesh>();
    EXPECT_TRUE(Models::shape_key(plane).begins_with("p(2.000000, 2.000000)/0/0/"));

    // Any other primitive goes by its class and stored properties.
    Ref<PrismMesh> prism = made<PrismMesh>();
    const String first = Models::shape_key(prism);
    EXPECT_TRUE(first.begins_with("PrismMesh"));
    prism->set_left_to_right(0.1f);
    EXPECT_NE(Models::shape_key(prism), first);
}

TEST(PrimCache, OneShapeIsComputedOnce) {
    Ref<BoxMesh> a = made<BoxMesh>(), b = made<BoxMesh>();
    a->set_size(Vector3(0.7f, 0.7f, 0.7f));
    b->set_size(Vector3(0.7f, 0.7f, 0.7f));
    Array first = Models::mesh_arrays(a);
    ASSERT_EQ(first.size(), int64_t(Mesh::ARRAY_MAX));
    Array second = Models::mesh_arrays(b);
    // Arrays are shared by reference: a mark on one shows on the other.
    first[Mesh::ARRAY_CUSTOM3] = 5;
    EXPECT_EQ(int64_t(second[Mesh::ARRAY_CUSTOM3]), 5);
    first[Mesh::ARRAY_CUSTOM3] = Variant();
    EXPECT_TRUE(Models::mesh_arrays(Ref<Mesh>()).is_empty());
}

TEST(DetailClamp, OnlyDefaultsAreCutDown) {
    Ref<SphereMesh> small = made<SphereMesh>(), large = made<SphereMesh>(), chosen = made<SphereMesh>();
    large->set_radius(0.6f);
    chosen->set_radial_segments(40);
    for (const Ref<SphereMesh> &mesh : {small, large, chosen}) {
        prim_cache::clamp_detail(mesh);
    }
    EXPECT_EQ(small->get_radial_segments(), 12);
    EXPECT_EQ(small->get_rings(), 6);
    EXPECT_EQ(large->get_radial_segments(), 20);
    EXPECT_EQ(chosen->get_radial_segments(), 40);

    Ref<CylinderMesh> cone = made<CylinderMesh>();
    cone->set_bottom_radius(0.7f);
    prim_cache::clamp_detail(cone);
    EXPECT_EQ(cone->get_radial_segments(), 20) << "the larger radius decides";
    EXPECT_EQ(cone->get_rings(), 1);
    Ref<CapsuleMesh> pill = made<CapsuleMesh>();
    prim_cache::clamp_detail(pill);
    EXPECT_EQ(pill->get_radial_segments(), 12);
    EXPECT_EQ(pill->get_rings(), 4);
    Ref<TorusMesh> ring = made<TorusMesh>();
    prim_cache::clamp_detail(ring);
    EXPECT_EQ(ring->get_rings(), 24);
    EXPECT_EQ(ring->get_ring_segments(), 8);
}

TEST(LowDetail, HalvesSegmentsWithAFloor) {
    Tree t;
    const auto radial = [](MeshInstance3D *node) {
        const Ref<SphereMesh> ball = node->get_mesh();
        const Ref<CylinderMesh> cyl = node->get_mesh();
        return ball.is_valid() ? ball->get_radial_segments() : cyl->get_radial_segments();
    };
    EXPECT_EQ(radial(Models::sphere(0.5f, Color(), Vector3(), t.root)), 12);
    Models::set_low_detail(true);
    EXPECT_EQ(radial(Models::sphere(0.5f, Color(), Vector3(), t.root)), 6);
    EXPECT_EQ(radial(Models::sphere(0.5f, Color(), Vector3(), t.root, Vector3(1, 1, 1), 10)), 5);
    EXPECT_EQ(radial(Models::cyl(0.5f, 0.5f, 1, Color(), Vector3(), t.root, 8)), 5);
    EXPECT_EQ(radial(Models::cyl(0.5f, 0.5f, 1, Color(), Vector3(), t.root, 6)), 6) << "already coarse";
    Models::set_low_detail(false);
}

TEST(Simplify, DropsTheTinyAndCapsTheRest) {
    Tree t;
    Models::box(Vector3(0.02f, 0.02f, 0.02f), Color(), Vector3(), t.root);
    MeshInstance3D *grown = Models::box(Vector3(0.02f, 0.02f, 0.02f), Color(), Vector3(), t.root);
    grown->set_scale(Vector3(1, 5, 1));
    MeshInstance3D *big = Models::sphere(0.5f, Color(), Vector3(), t.root, Vector3(1, 1, 1), 20);
    MeshInstance3D *small = Models::sphere(0.2f, Color(), Vector3(), t.root, Vector3(1, 1, 1), 20);
    MeshInstance3D *coarse = Models::cyl(0.5f, 0.5f, 1, Color(), Vector3(), t.root, 5);
    Models::simplify(t.root, 0.03f);
    EXPECT_EQ(t.root->get_child_count(), 4) << "only the unscaled speck goes";
    const auto ball = [](MeshInstance3D *node) { return Ref<SphereMesh>(node->get_mesh()); };
    EXPECT_EQ(ball(big)->get_radial_segments(), 10);
    EXPECT_EQ(ball(big)->get_rings(), 5);
    EXPECT_EQ(ball(small)->get_radial_segments(), 6);
    EXPECT_EQ(ball(small)->get_rings(), 3);
    EXPECT_EQ(Ref<CylinderMesh>(coarse->get_mesh())->get_radial_segments(), 5) << "never raised";

    mesh_baker::simplify_more(t.root);
    EXPECT_EQ(ball(big)->get_radial_segments(), 8);
    EXPECT_EQ(ball(big)->get_rings(), 4);
    EXPECT_EQ(ball(small)->get_radial_segments(), 6) << "0.4 is in the middle band: 8 is no lower";
}

TEST(Simplify, EachShapeHasItsCaps) {
    Tree t;
    const auto put = [&t](const Ref<Mesh> &mesh) { return Models::mesh_instance(mesh, Color(), Vector3(), t.root); };
    Ref<CylinderMesh> post = made<CylinderMesh>(), peg = made<CylinderMesh>(), log = made<CylinderMesh>();
    peg->set_top_radius(0.1f);
    peg->set_bottom_radius(0.1f);
    peg->set_height(0.29f);
    log->set_height(1.21f);
    Ref<CapsuleMesh> pill = made<CapsuleMesh>();
    Ref<TorusMesh> ring = made<TorusMesh>();
    Ref<SphereMesh> bead = made<SphereMesh>();
    bead->set_radius(0.1f);
    bead->set_height(0.2f);
    for (const Ref<Mesh> &mesh : std::vector<Ref<Mesh>>{post, peg, log, pill, ring, bead}) {
        put(mesh);
    }
    Models::simplify(t.root, 0);
    EXPECT_EQ(post->get_radial_segments(), 10);
    EXPECT_EQ(post->get_rings(), 1);
    EXPECT_EQ(peg->get_radial_segments(), 6);
    EXPECT_EQ(pill->get_radial_segments(), 8);
    EXPECT_EQ(pill->get_rings(), 2);
    EXPECT_EQ(ring->get_rings(), 10);
    EXPECT_EQ(ring->get_ring_segments(), 5);
    EXPECT_EQ(bead->get_radial_segments(), 6);
    mesh_baker::simplify_more(t.root);
    EXPECT_EQ(peg->get_radial_segments(), 4);
    EXPECT_EQ(log->get_radial_segments(), 10) << "above 1.2";
    EXPECT_EQ(bead->get_radial_segments(), 5);
    EXPECT_EQ(bead->get_rings(), 2);
    EXPECT_EQ(pill->get_radial_segments(), 8) << "the second pass is for balls and rods";
}

TEST(Merge, TakesBareSurfacesAndTurnsNormals) {
    // One triangle without indices or paint, its normal halfway between x and y; then scaled along x, then mirrored.
    PackedVector3Array points, normals;
    for (const Vector3 &p : {Vector3(0, 0, 0), Vector3(1, 0, 0), Vector3(0, 1, 0)}) {
        points.push_back(p);
        normals.push_back(Vector3(1, 1, 0).normalized());
    }
    normals.set(2, Vector3());
    Array arrays;
    arrays.resize(Mesh::ARRAY_MAX);
    arrays[Mesh::ARRAY_VERTEX] = points;
    arrays[Mesh::ARRAY_NORMAL] = normals;
    Ref<ArrayMesh> bare = made<ArrayMesh>();
    bare->add_surface_from_arrays(Mesh::PRIMITIVE_TRIANGLES, arrays);
    Tree t;
    for (const float x : {2.0f, -2.0f}) {
        MeshInstance3D *node = memnew(MeshInstance3D);
        node->set_mesh(bare);
        node->set_scale(Vector3(x, 1, 1));
        t.root->add_child(node);
    }
    const Ref<ArrayMesh> mesh = mesh_baker::merge(mesh_baker::meshes_below(t.root), t.root, "bare", {});
    const Array out = mesh->surface_get_arrays(0);
    const PackedInt32Array indices = out[Mesh::ARRAY_INDEX];
    ASSERT_EQ(indices.size(), 6);
    const int expected[] = {0, 1, 2, 3, 5, 4}; // the mirrored one turns round
    for (int i = 0; i < 6; i++) {
        EXPECT_EQ(indices[i], expected[i]) << i;
    }
    const PackedColorArray colors = out[Mesh::ARRAY_COLOR];
    EXPECT_EQ(colors[0], Color(1, 1, 1, 1));
    const PackedVector3Array turned = out[Mesh::ARRAY_NORMAL];
    EXPECT_NEAR(turned[0].x, 0.4472, 0.01) << "by the inverse transpose: flatter along x";
    EXPECT_NEAR(turned[0].y, 0.8944, 0.01);
    EXPECT_NEAR(turned[3].x, -0.4472, 0.01);
}

TEST(Shade, DarkensTheFootAndLiftsTheTop) {
    EXPECT_FLOAT_EQ(mesh_baker::shade_factor(-0.001f, 0, 1.4f), 0.74f);
    EXPECT_FLOAT_EQ(mesh_baker::shade_factor(-9, 0, 1.4f), 0.74f) << "whatever the depth";
    EXPECT_FLOAT_EQ(mesh_baker::shade_factor(0.7f, -1, 1.4f), 0.87f);
    EXPECT_FLOAT_EQ(mesh_baker::shade_factor(5, 0, 1.4f), 1.0f);
    EXPECT_FLOAT_EQ(mesh_baker::shade_factor(5, 1, 1.4f), 1.05f);
    EXPECT_EQ(mesh_baker::shade_height_of("house_egg"), 1.4f);
    EXPECT_EQ(mesh_baker::shade_height_of("trade_box"), 1.4f);
    EXPECT_EQ(mesh_baker::shade_height_of("item_egg"), 0.0f);
    EXPECT_EQ(mesh_baker::grid_of("house_egg"), 48);
    EXPECT_EQ(mesh_baker::grid_of("item_egg"), 8);
    EXPECT_EQ(mesh_baker::grid_of("depot"), 0);
}

TEST(Bake, MergesWithTransformsColoursAndShade) {
    Node3D *node = Models::bake("depot_test_merge", Models::builder([]() {
                                    Node3D *tree = memnew(Node3D);
                                    tree->set_position(Vector3(100, 100, 100)); // the root's own place does not count
                                    Node3D *arm = memnew(Node3D);
                                    arm->set_position(Vector3(0, 10, 0));
                                    tree->add_child(arm);
                                    MeshInstance3D *box =
                                        Models::box(Vector3(2, 2, 2), Color(0.5f, 1, 0, 0.25f), Vector3(3, 0, 0), arm);
                                    box->set_scale(Vector3(2, 1, 1));
                                    return tree;
                                }));
    const Ref<Mesh> mesh = Object::cast_to<MeshInstance3D>(node)->get_mesh();
    const AABB bounds = mesh->get_aabb();
    EXPECT_NEAR(bounds.position.x, 1, 1e-4);
    EXPECT_NEAR(bounds.position.y, 9, 1e-4);
    EXPECT_NEAR(bounds.size.x, 4, 1e-4);
    const PackedColorArray colors = mesh->surface_get_arrays(0)[Mesh::ARRAY_COLOR];
    ASSERT_EQ(colors.size(), 24);
    const PackedVector3Array normals = mesh->surface_get_arrays(0)[Mesh::ARRAY_NORMAL];
    for (int64_t i = 0; i < colors.size(); i++) {
        const float lift = normals[i].y > 0.5 ? 1.05f : 1.0f;
        EXPECT_NEAR(colors[i].r, 0.5f * lift, 0.005f) << "above the shade height only the lift is left";
        EXPECT_NEAR(colors[i].a, 0.25f, 0.005f);
    }
    memdelete(node);
}

TEST(Bake, AKnownKeyIsNeverBuiltAgain) {
    int built = 0;
    const Callable build = Models::builder([&built]() {
        built++;
        Node3D *tree = memnew(Node3D);
        Models::box(Vector3(1, 1, 1), Color(1, 0, 0), Vector3(), tree);
        return tree;
    });
    MeshInstance3D *first = Models::bake("once_only", build), *second = Models::bake("once_only", build, false, true);
    EXPECT_EQ(built, 1);
    EXPECT_EQ(first->get_mesh(), second->get_mesh());
    EXPECT_EQ(first->get_mesh()->get_name(), String("once_only"));
    EXPECT_EQ(second->get_cast_shadows_setting(), GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    EXPECT_EQ(second->get_material_override(), Ref<Material>(Models::vertex_material()));
    EXPECT_EQ(first->get_material_override(), Ref<Material>(Models::farm_material()));
    memdelete(first);
    memdelete(second);
}

TEST(Bake, OnlySpecksGiveAnEmptyMesh) {
    MeshInstance3D *node = Models::bake("specks", Models::builder([]() {
                                            Node3D *tree = memnew(Node3D);
                                            Models::box(Vector3(0.01f, 0.01f, 0.01f), Color(), Vector3(), tree);
                                            return tree;
                                        }));
    EXPECT_EQ(node->get_mesh()->get_surface_count(), 0);
    memdelete(node);
}

TEST(MergeChildren, KeepsSignsAndMovingParts) {
    Tree t;
    MeshInstance3D *wall = Models::box(Vector3(1, 1, 1), Color(1, 1, 1), Vector3(0, 2, 0), t.root);
    Node3D *hub = memnew(Node3D);
    hub->set_name("Hub");
    hub->set_position(Vector3(0, 1, 0));
    wall->add_child(hub);
    Models::merge_children(t.root, "kept_parts");
    ASSERT_EQ(t.root->get_child_count(), 2);
    Node3D *kept = Object::cast_to<Node3D>(t.root->get_node_or_null(NodePath("Hub")));
    ASSERT_NE(kept, nullptr);
    EXPECT_NEAR(kept->get_position().y, 3, 1e-5) << "it stays where it stood";

    // Nodes without a place in space outlive their mesh too, and a flattened part merges without an error.
    Tree wired;
    MeshInstance3D *slab = Models::box(Vector3(1, 1, 1), Color(), Vector3(), wired.root);
    slab->set_scale(Vector3(1, 0, 1));
    Node *plain = memnew(Node);
    plain->set_name("Plain");
    slab->add_child(plain);
    Models::merge_children(wired.root, "kept_plain", false, true);
    EXPECT_EQ(plain->get_parent(), wired.root);
    ASSERT_EQ(wired.root->get_child_count(), 2);
    auto *merged = Object::cast_to<MeshInstance3D>(wired.root->get_child(1));
    EXPECT_EQ(merged->get_cast_shadows_setting(), GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    EXPECT_EQ(merged->get_material_override(), Ref<Material>(Models::vertex_material()));

    Tree bare;
    Models::label3d("SIGN", 20, Color(), Vector3(), bare.root);
    Models::merge_children(bare.root, "nothing_to_merge");
    EXPECT_EQ(bare.root->get_child_count(), 1);
}

TEST(NearestVisible, ShowsTheNearestFew) {
    Array nodes;
    for (int i = 0; i < 5; i++) {
        Node3D *node = add<Node3D>();
        node->set_position(Vector3(float(4 - i), 0, 0));
        nodes.push_back(node);
    }
    Models::nearest_visible(nodes, Vector3(), 2.5f, 2);
    for (int i = 0; i < 5; i++) {
        EXPECT_EQ(Object::cast_to<Node3D>(nodes[i])->is_visible(), i >= 3) << i;
    }
    Models::nearest_visible(nodes, Vector3(), 0.5f, 4);
    EXPECT_FALSE(Object::cast_to<Node3D>(nodes[3])->is_visible()) << "out of the radius";
}

TEST(NearestVisible, ShowsParentsAndPassesOverWhatIsNone) {
    Array lamps;
    for (int i = 0; i < 3; i++) {
        Node3D *post = add<Node3D>();
        Node3D *lamp = memnew(Node3D);
        lamp->set_position(Vector3(float(i), 0, 0));
        post->add_child(lamp);
        lamps.push_back(lamp);
    }
    const auto post = [&lamps](int i) {
        return Object::cast_to<Node3D>(Object::cast_to<Node>(lamps[i])->get_parent());
    };
    Node3D *gone = add<Node3D>();
    lamps.push_back(gone);
    lamps.push_back("no node");
    memdelete(gone);
    // A node that stays in sight is not told that it was hidden for a moment.
    int changes = 0;
    const Callable count = Models::builder([&changes]() -> Node3D * {
        changes++;
        return nullptr;
    });
    post(0)->connect("visibility_changed", count);
    Models::nearest_visible(lamps, Vector3(), 10, 1, true);
    EXPECT_TRUE(post(0)->is_visible());
    EXPECT_FALSE(post(1)->is_visible());
    EXPECT_FALSE(post(2)->is_visible());
    EXPECT_TRUE(Object::cast_to<Node3D>(lamps[2])->is_visible()) << "only its parent is hidden";
    EXPECT_EQ(changes, 0);
    Models::nearest_visible(lamps, Vector3(2, 0, 0), 10, 2, true);
    EXPECT_FALSE(post(0)->is_visible());
    EXPECT_TRUE(post(1)->is_visible());
    EXPECT_EQ(changes, 1);
    Models::nearest_visible(lamps, Vector3(), 10, 0, true);
    EXPECT_FALSE(post(2)->is_visible());
}

TEST(Trees, TheirKindFollowsTheNumber) {
    const auto key = [](float v) {
        MeshInstance3D *tree = Models::any_tree(v);
        const String name = tree->get_mesh()->get_name();
        EXPECT_EQ(tree->get_material_override(), Ref<Material>(Models::tree_material()));
        EXPECT_NE(tree->get_cast_shadows_setting(), GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
        memdelete(tree);
        return std::string(name.utf8().get_data());
    };
    EXPECT_EQ(key(0), "tree");
    EXPECT_EQ(key(0.599f), "tree");
    EXPECT_EQ(key(0.6f), "tree_pine");
    EXPECT_EQ(key(0.819f), "tree_pine");
    EXPECT_EQ(key(0.82f), "tree_birch");
    EXPECT_EQ(key(1), "tree_birch");
}

TEST(Labels, LieFlatUnlessTheyTurnToTheCamera) {
    Tree t;
    Label3D *flat = Models::label3d("SELL", 46, Color(1, 0, 0), Vector3(1, 2, 3), t.root, false, 14);
    EXPECT_NEAR(flat->get_rotation_degrees().x, -90, 1e-3);
    EXPECT_EQ(flat->get_billboard_mode(), BaseMaterial3D::BILLBOARD_DISABLED);
    EXPECT_FLOAT_EQ(flat->get_pixel_size(), 0.01f);
    EXPECT_FLOAT_EQ(flat->get_visibility_range_end(), 24);
    EXPECT_FLOAT_EQ(flat->get_visibility_range_end_margin(), 1.5f);
    EXPECT_EQ(flat->get_cast_shadows_setting(), GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    EXPECT_EQ(flat->get_outline_size(), 14);
    Label3D *facing = Models::label3d("LV1", 40, Color(), Vector3(), t.root);
    EXPECT_EQ(facing->get_billboard_mode(), BaseMaterial3D::BILLBOARD_ENABLED);
    EXPECT_EQ(facing->get_rotation_degrees(), Vector3());
}

TEST(Paint, MaterialsAreSharedByColourRoughnessAndShade) {
    const Ref<StandardMaterial3D> red = Models::color_material(Color(1, 0, 0));
    EXPECT_EQ(red, Models::color_material(Color(1, 0, 0), 0.85f, false));
    EXPECT_NE(red, Models::color_material(Color(1, 0, 0, 0.5f)));
    EXPECT_NE(red, Models::color_material(Color(1, 0, 0), 0.5f));
    EXPECT_NE(red, Models::color_material(Color(1, 0, 0), 0.85f, true));
    EXPECT_FLOAT_EQ(red->get_roughness(), 0.85f);
    const Ref<ShaderMaterial> plain = Models::farm_material(), snowy = Models::farm_material(true);
    EXPECT_NE(plain, snowy);
    EXPECT_EQ(plain->get_shader(), snowy->get_shader());
    EXPECT_EQ(double(snowy->get_shader_parameter("snowy")), 1.0);
    EXPECT_TRUE(Models::vertex_material()->get_flag(BaseMaterial3D::FLAG_ALBEDO_FROM_VERTEX_COLOR));
    EXPECT_TRUE(Models::vertex_material()->get_flag(BaseMaterial3D::FLAG_SRGB_VERTEX_COLOR));
    // What a shade height has wears the snowy one.
    for (const auto &[key, wears] : {std::pair("depot_paint", snowy), std::pair("item_paint", plain)}) {
        MeshInstance3D *node = Models::bake(key, Models::builder([] {
                                                Node3D *at = memnew(Node3D);
                                                Models::box(Vector3(1, 1, 1), Color(), Vector3(), at);
                                                return at;
                                            }));
        EXPECT_EQ(node->get_material_override(), Ref<Material>(wears)) << key;
        memdelete(node);
    }
}

TEST(Shapes, FacesLookOutward) {
    const std::map<std::string, Ref<ArrayMesh>> convex = {
        {"bevel_box", shapes::bevel_box(Vector3(1, 2, 0.5f), 0.1f, 0.8f)},
        {"ball", shapes::ball(Vector3(0.5f, 0.3f, 0.4f), 8, 4)},
        {"loft", shapes::loft({{-1, 0.5f, 0.4f}, {1, 0.3f, 0.3f}}, 6, 0.7f)},
        {"extrude", shapes::extrude({Vector2(-1, -1), Vector2(1, -1), Vector2(1, 1), Vector2(-1, 1)}, 0.5f)}};
    for (const auto &[name, mesh] : convex) {
        const Array arrays = mesh->surface_get_arrays(0);
        const PackedVector3Array points = arrays[Mesh::ARRAY_VERTEX];
        const PackedInt32Array corners = arrays[Mesh::ARRAY_INDEX];
        ASSERT_GT(corners.size(), 0) << name;
        for (int64_t i = 0; i + 2 < corners.size(); i += 3) {
            const Vector3 a = points[corners[i]], b = points[corners[i + 1]], c = points[corners[i + 2]];
            // The engine's front faces run clockwise.
            EXPECT_GT((c - a).cross(b - a).dot(a + b + c), -1e-6) << name << " triangle " << i / 3;
        }
    }
}

TEST(Rigs, PeopleCarryLimbChannelsAndShareTheirMesh) {
    Dictionary look;
    look["shirt"] = "ff0000";
    look["hat"] = "straw";
    Node3D *a = Models::person(look), *b = Models::person(look);
    stage()->add_child(a);
    stage()->add_child(b);
    auto *drawn = Object::cast_to<MultiMeshInstance3D>(a->get_node_or_null(NodePath("Mesh")));
    auto *other = Object::cast_to<MultiMeshInstance3D>(b->get_node_or_null(NodePath("Mesh")));
    ASSERT_NE(drawn, nullptr);
    EXPECT_EQ(drawn->get_multimesh()->get_mesh(), other->get_multimesh()->get_mesh());
    EXPECT_NE(drawn->get_multimesh(), other->get_multimesh());
    EXPECT_FLOAT_EQ(drawn->get_extra_cull_margin(), 0.8f);
    for (const char *part : {"Body/LegL/Knee", "Body/LegR", "Body/ArmL/Elbow", "Body/ArmR", "Body/Head"}) {
        EXPECT_NE(a->get_node_or_null(NodePath(part)), nullptr) << part;
    }
    const Array arrays = drawn->get_multimesh()->get_mesh()->surface_get_arrays(0);
    const PackedVector2Array pivots = arrays[Mesh::ARRAY_TEX_UV], numbers = arrays[Mesh::ARRAY_TEX_UV2];
    ASSERT_EQ(pivots.size(), PackedVector3Array(arrays[Mesh::ARRAY_VERTEX]).size());
    const Vector3 arm = Object::cast_to<Node3D>(a->get_node_or_null(NodePath("Body/ArmR")))->get_position();
    std::map<int, int> seen;
    for (int64_t i = 0; i < numbers.size(); i++) {
        const int limb = int(std::lround(numbers[i].x));
        seen[limb]++;
        if (limb == 4) {
            EXPECT_NEAR(pivots[i].x, arm.y, 1e-3);
            EXPECT_NEAR(pivots[i].y, arm.z, 1e-3);
        }
    }
    EXPECT_EQ(seen.size(), 5u) << "the body and four limbs";

    look["hd"] = true;
    Node3D *full = Models::person(look);
    EXPECT_EQ(full->get_node_or_null(NodePath("Mesh")), nullptr);
    EXPECT_LE(mesh_baker::meshes_below(full).size(), 12u) << "one draw for each joint";
    AABB whole, rigged = drawn->get_multimesh()->get_mesh()->get_aabb();
    for (MeshInstance3D *part : mesh_baker::meshes_below(full)) {
        whole = whole.merge(mesh_baker::local_to(part, full).xform(part->get_mesh()->get_aabb()));
    }
    EXPECT_NEAR(whole.size.y, rigged.size.y, 0.15) << "every part is where it was";
    Node3D *twin = Models::person(look);
    EXPECT_EQ(mesh_baker::meshes_below(full)[0]->get_mesh(), mesh_baker::meshes_below(twin)[0]->get_mesh());
    memdelete(twin);
    memdelete(full);
}

// A second person of a look is put together from kept joints; it must be what the first one was.
TEST(Rigs, TheSecondOfALookEqualsTheFirst) {
    const auto tell = [](Node3D *root) {
        std::string text;
        TypedArray<Node> all = root->find_children("*", "", true, false);
        for (int64_t i = 0; i < all.size(); i++) {
            auto *node = Object::cast_to<Node3D>(all[i]);
            const String line = String(root->get_path_to(node)) + " " + node->get_class() + " " +
                                UtilityFunctions::str(node->get_transform()) + "\n";
            text += line.utf8().get_data();
        }
        memdelete(root);
        return text;
    };
    Dictionary look;
    look["shirt"] = "123456";
    look["style"] = "curly";
    const std::string first = tell(Models::person(look));
    EXPECT_NE(first.find("Body/LegL/Knee"), std::string::npos);
    EXPECT_EQ(tell(Models::person(look)), first);
    for (const char *product : {"egg", "milk", "fish2", "wool_shorn"}) {
        const std::string beast = tell(Models::animal(product));
        EXPECT_NE(beast.find("MultiMeshInstance3D"), std::string::npos) << product;
        EXPECT_EQ(tell(Models::animal(product)), beast) << product;
    }
    const std::string wolf = tell(AddonModels::raider("wolf"));
    EXPECT_EQ(tell(AddonModels::raider("wolf")), wolf);
}

// What is written can be read back on a display only (tests/scenario/shaders.gd); here it is counted.
TEST(Rigs, PosesAreWrittenWhenTheyChangeAndSurviveALostLimb) {
    Node3D *person = Models::person(Dictionary());
    stage()->add_child(person);
    const auto part = [person](const char *path) {
        return Object::cast_to<Node3D>(person->get_node_or_null(NodePath(path)));
    };
    const auto written = [person] {
        PoseBatch::mark_moved(PoseBatch::find(person));
        PoseBatch::sync_poses();
        return PoseBatch::written();
    };
    written();
    EXPECT_EQ(written(), 0);
    part("Body")->set_position(Vector3(0, 0.1f, 0));
    EXPECT_EQ(written(), 1);
    for (const char *limb : {"Body/LegL", "Body/LegR", "Body/ArmL", "Body/ArmR"}) {
        part(limb)->set_rotation(Vector3(0.3f, 0, 0));
        EXPECT_EQ(written(), 1) << limb;
    }
    EXPECT_EQ(written(), 0);
    memdelete(part("Body/ArmL"));
    EXPECT_EQ(written(), 1) << "its angle is gone with it";
    EXPECT_EQ(written(), 0);
}

TEST(Rigs, AFifthLegIsPartOfTheBody) {
    Node3D *body = memnew(Node3D);
    for (int i = 0; i < 5; i++) {
        Node3D *leg = shapes::joint(body, vformat("Leg%d", i).utf8().get_data(), Vector3(float(i), 0.5f, 0.25f));
        Models::box(Vector3(0.1f, 0.1f, 0.1f), Color(), Vector3(), leg);
    }
    Models::box(Vector3(0.1f, 0.1f, 0.1f), Color(), Vector3(), shapes::joint(body, "Tail", Vector3(0, 0.7f, 0.9f)));
    Node3D *animal = Models::animal_rig(body, "five_legs");
    stage()->add_child(animal);
    auto *drawn = Object::cast_to<MultiMeshInstance3D>(animal->get_node_or_null(NodePath("Mesh")));
    const Array arrays = drawn->get_multimesh()->get_mesh()->surface_get_arrays(0);
    const PackedVector3Array points = arrays[Mesh::ARRAY_VERTEX];
    const PackedVector2Array pivots = arrays[Mesh::ARRAY_TEX_UV], numbers = arrays[Mesh::ARRAY_TEX_UV2];
    ASSERT_EQ(points.size(), 6 * 24);
    for (int64_t i = 0; i < points.size(); i++) {
        const int part = int(i / 24);
        EXPECT_EQ(std::lround(numbers[i].x), part == 5 ? 5 : part == 4 ? 0 : part + 1) << part;
        EXPECT_EQ(numbers[i].y, 0);
        const Vector2 pivot = part == 5 ? Vector2(0.7f, 0.9f) : part == 4 ? Vector2() : Vector2(0.5f, 0.25f);
        EXPECT_TRUE(pivots[i].is_equal_approx(pivot)) << part;
    }
    EXPECT_FLOAT_EQ(drawn->get_extra_cull_margin(), 0.5f);
    EXPECT_EQ(drawn->get_multimesh()->get_mesh()->get_name(), String("five_legs/single"));
}

TEST(Rigs, AnimalsHaveLegsAndATail) {
    for (const char *product : {"egg", "milk", "fish", "calf", "hen", "honey", "wool", "wool_shorn"}) {
        Node3D *animal = Models::animal(product);
        ASSERT_NE(animal, nullptr) << product;
        stage()->add_child(animal);
        auto *drawn = Object::cast_to<MultiMeshInstance3D>(animal->get_node_or_null(NodePath("Mesh")));
        ASSERT_NE(drawn, nullptr) << product;
        const Array arrays = drawn->get_multimesh()->get_mesh()->surface_get_arrays(0);
        const PackedVector2Array numbers = arrays[Mesh::ARRAY_TEX_UV2];
        bool tail = false;
        for (int64_t i = 0; i < numbers.size(); i++) {
            tail = tail || std::lround(numbers[i].x) == 5;
        }
        EXPECT_TRUE(tail) << product << ": limb 5 is the tail, whatever the number of legs";
    }
    EXPECT_EQ(Models::animal("egg_plant"), nullptr);
}

TEST(Goods, EveryKindFillsItsLayer) {
    const PackedStringArray kinds = item_models::kinds();
    ASSERT_EQ(kinds.size(), 46);
    for (int64_t i = 0; i < kinds.size(); i++) {
        const std::string kind = kinds[i].utf8().get_data();
        MeshInstance3D *node = Models::item_model(kinds[i]);
        const Ref<Mesh> mesh = node->get_mesh();
        ASSERT_EQ(mesh->get_surface_count(), 1) << kind;
        const AABB box = mesh->get_aabb();
        const float layer = rules::item_height(kind);
        EXPECT_GT(box.size.y, layer * 0.7f) << kind;
        EXPECT_LT(box.size.y, layer * 1.6f + 0.06f) << kind << ": it would stick through the next layer";
        EXPECT_GT(box.position.y, -0.08f) << kind;
        EXPECT_LT(std::max(box.size.x, box.size.z), 0.95f) << kind;
        EXPECT_LT(vertices_of(mesh).size(), 700) << kind << ": thousands of these lie about";
        memdelete(node);
    }
}

TEST(Houses, EveryProducerStandsOnItsPlot) {
    for (const char *product : {"egg", "milk", "fish", "calf", "hen", "honey", "apple", "orange", "wool", "bean"}) {
        Node3D *node = Buildings::house(product);
        const Ref<Mesh> mesh = Object::cast_to<MeshInstance3D>(node)->get_mesh();
        ASSERT_EQ(mesh->get_surface_count(), 1) << product;
        const AABB box = mesh->get_aabb();
        EXPECT_GT(box.position.x, -3.3f) << product;
        EXPECT_LT(box.position.x + box.size.x, 3.3f) << product;
        EXPECT_GT(box.position.z, -3.4f) << product;
        EXPECT_LT(box.position.z + box.size.z, 2.1f) << product << ": the tray stands in front";
        EXPECT_GT(box.size.y, 1.0f) << product;
        EXPECT_LT(box.size.y, 3.9f) << product;
        const Rect2 solid = Buildings::house_solid(product);
        EXPECT_GT(solid.size.x, 1.0f) << product;
        EXPECT_LT(solid.position.y + solid.size.y, 1.9f) << product;
        memdelete(node);
    }
    EXPECT_EQ(Buildings::anim("egg"), nullptr);
    Node3D *sails = Buildings::anim("flour");
    ASSERT_NE(sails, nullptr);
    EXPECT_NEAR(sails->get_position().y, 4.5, 1e-5);
    memdelete(sails);
}

TEST(Houses, EachMachineOfThePlanHasItsOwnWithinItsGround) {
    std::map<std::string, std::string> by_shape;
    std::map<std::string, bool> seen;
    const Array plan = FarmData::plan();
    for (int i = 0; i < plan.size(); i++) {
        const Dictionary e = plan[i];
        const String kind = e["kind"];
        const String product = e.get("product", "");
        if ((kind != "machine" && kind != "factory" && kind != "restaurant") ||
            !seen.emplace(product.utf8().get_data(), true).second) {
            continue;
        }
        const Color roof = e.get("roof", Buildings::machine_roof());
        Node3D *node = Buildings::machine(product, roof);
        MeshInstance3D *shown = Object::cast_to<MeshInstance3D>(node->get_child(0));
        ASSERT_NE(shown, nullptr);
        const AABB box = shown->get_mesh()->get_aabb();
        EXPECT_GT(box.position.x, -3.2f) << product;
        EXPECT_LT(box.position.x + box.size.x, 3.2f) << product;
        EXPECT_GT(box.position.z, -3.4f) << product;
        EXPECT_LT(box.position.z + box.size.z, 2.2f) << product << ": people stand in front";
        EXPECT_GT(box.size.y, 2.5f) << product;
        EXPECT_LT(box.size.y, 5.6f) << product;
        const int64_t corners = vertices_of(shown->get_mesh()).size();
        const PackedInt32Array indices = shown->get_mesh()->surface_get_arrays(0)[Mesh::ARRAY_INDEX];
        const int64_t triangles = (indices.is_empty() ? corners : indices.size()) / 3;
        EXPECT_LE(triangles, 6000) << product;
        const std::string shape = std::to_string(triangles) + "/" + std::to_string(box.size.length());
        EXPECT_TRUE(by_shape.emplace(shape, product.utf8().get_data()).second)
            << product << " looks like " << by_shape[shape];
        memdelete(node);
    }
    EXPECT_EQ(seen.size(), 19u);
}

TEST(Icons, KindsAndProductsAreToldApart) {
    std::map<std::string, std::string> by_shape;
    const auto look_at = [&by_shape](const char *kind, const char *product) {
        Node3D *tree = IconModels::tile_icon(kind, product);
        double sum = 0;
        int64_t parts = 0;
        for (MeshInstance3D *node : mesh_baker::meshes_below(tree)) {
            const AABB box = mesh_baker::local_to(node, tree).xform(node->get_mesh()->get_aabb());
            const Ref<StandardMaterial3D> paint = node->get_material_override();
            sum += box.size.length() + 10 * paint->get_albedo().r + 3 * paint->get_albedo().g;
            parts++;
            EXPECT_LT(std::abs(box.get_center().x), 1.2) << kind << " " << product << ": off its tile";
        }
        EXPECT_GT(parts, 0) << kind;
        const std::string shape = std::to_string(parts) + "/" + std::to_string(sum);
        const std::string name = std::string(kind) + " " + product;
        EXPECT_TRUE(by_shape.emplace(shape, name).second) << name << " looks like " << by_shape[shape];
        memdelete(tree);
    };
    for (const char *product : {"egg", "milk", "fish", "calf", "hen", "honey", "apple", "orange", "wool", "bean"}) {
        look_at("producer", product);
    }
    for (const char *kind :
         {"stall",    "machine", "restaurant", "crew",    "depot",   "belt",     "field",  "workers", "harvester",
          "waterman", "hauler",  "tables",     "truck",   "waiter",  "stack",    "shoes",  "feed",    "magnet",
          "land",     "homes",   "ahwa",       "canteen", "service", "security", "guards", "final"}) {
        look_at(kind, kind == std::string("machine") || kind == std::string("stall") ? "bread" : "");
    }
}

TEST(Scenery, BuildsTheLandOnce) {
    Node3D *land = Scenery::ground(stage());
    EXPECT_NE(land->get_node_or_null(NodePath("Ground")), nullptr);
    // Grass grows all over, but neither on the walkways nor where the plan builds.
    const Vector2 coop(-7, -8), tile(-9.5f, 1.2f);
    const Vector2 stall = FarmData::entry_by_id("stall_egg").get("pos", Vector2(99, 99));
    ASSERT_NE(stall, Vector2(99, 99));
    int64_t tufts = 0;
    for (int32_t i = 0; i < land->get_child_count(); i++) {
        auto *batch = Object::cast_to<MultiMeshInstance3D>(land->get_child(i));
        if (batch == nullptr || !String(batch->get_name()).begins_with("Tufts")) {
            continue;
        }
        const PackedFloat32Array rows = batch->get_multimesh()->get_buffer();
        for (int64_t k = 0; k + 11 < rows.size(); k += 12) {
            const Vector2 at(rows[k + 3], rows[k + 11]);
            tufts++;
            EXPECT_GT(at.distance_to(coop), 2.5) << at.x << " " << at.y;
            EXPECT_GT(at.distance_to(tile), 1.4) << at.x << " " << at.y;
            EXPECT_FALSE(at.y > 6.5f && at.y < 22 && std::abs(at.x - stall.x) < 1)
                << "in the customers' way at " << at.y;
        }
    }
    EXPECT_GT(tufts, 5000);
    // The lane passes behind the last row of decorations.
    float widest = 0;
    for (const rules::DecorRow &row : rules::decor_rows()) {
        widest = std::max(widest, row.radius);
    }
    EXPECT_GT(Scenery::LANE_Z - Scenery::LANE_HALF, 15 + widest);
    Node3D *fence = Scenery::fence(37.2f);
    const AABB box = Object::cast_to<MeshInstance3D>(fence)->get_mesh()->get_aabb();
    EXPECT_NEAR(box.size.z, 37.2f, 0.6f);
    EXPECT_LT(box.size.x, 1.6f);
    memdelete(fence);
    Node3D *cover = Scenery::cover(-24);
    Scenery::cover_words(cover, "DAIRY FARM", -24);
    EXPECT_EQ(cover->get_child_count(), 3);
    memdelete(cover);
}

TEST(Shaders, AMissingOneIsReplacedOnce) {
    const Ref<ShaderMaterial> first = Models::shader_material("no_such_shader");
    ASSERT_TRUE(first.is_valid());
    EXPECT_TRUE(first->get_shader().is_valid());
    EXPECT_EQ(first, Models::shader_material("no_such_shader"));
}

TEST(Clustering, RefusesUnevenArrays) {
    expect_engine_error("differ in number");
    PackedVector3Array vertices, normals;
    PackedColorArray colors;
    PackedInt32Array indices;
    vertices.push_back(Vector3());
    cluster_arrays(vertices, normals, colors, indices, 8);
    EXPECT_EQ(vertices.size(), 1);
}

} // namespace
} // namespace tilm
