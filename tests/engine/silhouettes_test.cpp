// No two goods and no two buildings look alike in 64 grey pixels.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include <godot_cpp/classes/box_mesh.hpp>

#include "engine_test.h"
#include "game/art/model_keys.h"
#include "game/art/models.h"
#include "silhouette.h"

namespace tilm {
namespace {

struct Looked {
    std::string key;
    Silhouette picture;
};

struct Pair {
    double apart;
    std::string a, b;
};

std::vector<Looked> pictures_of(std::initializer_list<ModelClass> groups) {
    std::vector<Looked> out;
    for (const ModelKey &key : model_keys()) {
        if (std::find(groups.begin(), groups.end(), key.family->group) != groups.end()) {
            Node3D *node = Models::model(key.key);
            out.push_back({key.key.utf8().get_data(), silhouette_of(node)});
            memdelete(node);
        }
    }
    return out;
}

// The closest pairs are told, alike or not.
void expect_apart(const std::vector<Looked> &all, double least) {
    std::vector<Pair> pairs;
    for (size_t i = 0; i < all.size(); i++) {
        const auto &grey = all[i].picture.grey;
        EXPECT_GT(std::count_if(grey.begin(), grey.end(), [](uint8_t v) { return v > 0; }), 300)
            << all[i].key << " hardly shows";
        for (size_t j = i + 1; j < all.size(); j++) {
            pairs.push_back({difference(all[i].picture, all[j].picture), all[i].key, all[j].key});
        }
    }
    std::sort(pairs.begin(), pairs.end(), [](const Pair &a, const Pair &b) { return a.apart < b.apart; });
    for (size_t i = 0; i < pairs.size() && (i < 8 || pairs[i].apart < least); i++) {
        std::printf("%.3f %s %s\n", pairs[i].apart, pairs[i].a.c_str(), pairs[i].b.c_str());
        EXPECT_GE(pairs[i].apart, least) << pairs[i].a << " and " << pairs[i].b << " look alike";
    }
}

TEST(Silhouettes, NoTwoGoodsAreAlike) {
    expect_apart(pictures_of({ModelClass::good, ModelClass::money}), 0.18);
}

// Levels of one house differ by less than houses do, and are held to the same.
TEST(Silhouettes, NoTwoBuildingsAreAlike) {
    expect_apart(pictures_of({ModelClass::building}), 0.09);
}

MeshInstance3D *painted_box(const Vector3 &size, const Color &paint, const Vector3 &at = Vector3()) {
    Ref<BoxMesh> box;
    box.instantiate();
    box->set_size(size);
    MeshInstance3D *node = memnew(MeshInstance3D);
    node->set_mesh(box);
    node->set_material_override(Models::color_material(paint));
    node->set_position(at);
    return node;
}

// The measure itself: what is told apart, and what is not.
TEST(Silhouettes, TheMeasureTellsOutlineAndGreyButNeitherSizeNorHue) {
    const auto seen = [](MeshInstance3D *node, MeshInstance3D *part = nullptr) {
        Node3D *root = memnew(Node3D);
        root->add_child(node);
        if (part != nullptr) {
            root->add_child(part);
        }
        const Silhouette out = silhouette_of(root);
        memdelete(root);
        return out;
    };
    const Color grey(0.5f, 0.5f, 0.5f);
    const Silhouette cube = seen(painted_box(Vector3(1, 1, 1), grey));
    EXPECT_EQ(difference(cube, cube), 0);
    EXPECT_LT(difference(cube, seen(painted_box(Vector3(3, 3, 3), grey, Vector3(7, 0, 0)))), 0.01);
    EXPECT_LT(difference(cube, seen(painted_box(Vector3(1, 1, 1), Color(1, 0.245f, 0.5f)))), 0.01);
    EXPECT_NEAR(difference(cube, seen(painted_box(Vector3(1, 1, 1), Color(1, 1, 1)))), 0.4, 0.1);
    EXPECT_GT(difference(cube, seen(painted_box(Vector3(0.3f, 1, 0.3f), grey))), 0.5);
    // What is behind does not show, nor what is hidden.
    MeshInstance3D *inside = painted_box(Vector3(0.5f, 0.5f, 0.5f), Color(1, 1, 1));
    EXPECT_EQ(difference(cube, seen(painted_box(Vector3(1, 1, 1), grey), inside)), 0);
    MeshInstance3D *unseen = painted_box(Vector3(9, 9, 9), Color(1, 1, 1));
    unseen->set_visible(false);
    EXPECT_EQ(difference(cube, seen(painted_box(Vector3(1, 1, 1), grey), unseen)), 0);
}

} // namespace
} // namespace tilm
