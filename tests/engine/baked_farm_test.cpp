// Every mesh that a full farm has baked: whole, within the triangles of its kind, and under a key that is accounted
// for.

#include <cmath>
#include <set>
#include <string>

#include <godot_cpp/classes/mesh.hpp>
#include <godot_cpp/variant/packed_color_array.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>
#include <godot_cpp/variant/packed_vector3_array.hpp>

#include "game/art/art_state.h"
#include "game/art/model_keys.h"
#include "world_kit.h"

namespace tilm {
namespace {

// Made where they are used, so that the table cannot build them.
const char *const ELSEWHERE[] = {"tileplate_",    "lockedplate",    "order_bubble", "crown",
                                 "harvester_",    "hills",          "grass_tuft",   "star_board",
                                 "belt_",         "blob_shadow",    "fence_",       "bed_",
                                 "home_windows_", "meadow_flowers", "lake_shore",   "ground_arrow_"};

std::string plain(const Variant &text) {
    return String(text).utf8().get_data();
}

bool is_known(const std::string &key) {
    for (const ModelFamily &family : model_families()) {
        if (!family.prefix.empty() && key.rfind(family.prefix, 0) == 0) {
            return true;
        }
    }
    for (const ModelKey &row : model_keys()) {
        if (plain(row.key) == key) {
            return true;
        }
    }
    for (const char *prefix : ELSEWHERE) {
        if (key.rfind(prefix, 0) == 0) {
            return true;
        }
    }
    return false;
}

int64_t sound_triangles(const std::string &key, const Ref<Mesh> &mesh) {
    EXPECT_EQ(plain(mesh->get_name()), key);
    EXPECT_EQ(mesh->get_surface_count(), 1) << key << " is empty";
    if (mesh->get_surface_count() != 1) {
        return 0;
    }
    const Array arrays = mesh->surface_get_arrays(0);
    const PackedVector3Array points = arrays[Mesh::ARRAY_VERTEX], normals = arrays[Mesh::ARRAY_NORMAL];
    const PackedInt32Array indices = arrays[Mesh::ARRAY_INDEX];
    EXPECT_EQ(normals.size(), points.size()) << key;
    EXPECT_EQ(PackedColorArray(arrays[Mesh::ARRAY_COLOR]).size(), points.size()) << key;
    for (int64_t i = 0; i < points.size(); i++) {
        EXPECT_TRUE(points[i].is_finite() && normals[i].is_finite()) << key;
    }
    for (const int32_t index : indices) {
        EXPECT_LT(uint32_t(index), points.size()) << key;
    }
    EXPECT_EQ(indices.size() % 3, 0) << key;
    return indices.size() / 3;
}

using BakedFarm = FarmTest;

TEST_F(BakedFarm, EveryMeshIsWholeAndAccountedFor) {
    WorldOptions::get().max_farm = true;
    open();
    step(120);
    const Array baked = art().baked.keys();
    EXPECT_GT(baked.size(), 120);
    for (int64_t i = 0; i < baked.size(); i++) {
        const std::string key = plain(baked[i]);
        EXPECT_TRUE(is_known(key)) << key;
        const int64_t triangles = sound_triangles(key, art().baked[baked[i]]);
        EXPECT_LE(triangles, key.rfind("item_", 0) == 0 ? 250 : 6000) << key;
    }
    std::set<std::string> fish;
    const Array rigs = art().rigs.keys();
    EXPECT_GT(rigs.size(), 20);
    for (int64_t i = 0; i < rigs.size(); i++) {
        const std::string key = plain(rigs[i]);
        const int64_t triangles = sound_triangles(key, art().rigs[rigs[i]]);
        EXPECT_LE(triangles, key.find("/single") != std::string::npos ? 1200 : 1500) << key;
        if (key.rfind("rig_fish", 0) == 0) {
            fish.insert(key);
        }
    }
    EXPECT_EQ(fish, (std::set<std::string>{"rig_fish0/single", "rig_fish1/single", "rig_fish2/single"}));
}

} // namespace
} // namespace tilm
