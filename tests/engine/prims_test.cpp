// The file of computed shapes: a good one is taken over, a bad one is told once and ignored.

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/file_access.hpp>
#include <godot_cpp/classes/sphere_mesh.hpp>
#include <godot_cpp/variant/packed_int32_array.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "engine_test.h"
#include "game/art/art_state.h"
#include "game/art/models.h"
#include "game/art/prim_cache.h"
#include "rules/surface_table.h"

namespace tilm {
namespace {

const char *const FILE_PATH = "user://prims_test.bin";

void write(const PackedByteArray &bytes) {
    FileAccess::open(FILE_PATH, FileAccess::WRITE)->store_buffer(bytes);
}

// A fresh cache that holds the shapes of a box and a ball.
struct Prims : testing::Test {
    Ref<BoxMesh> box;
    Ref<SphereMesh> ball;
    Prims() {
        box.instantiate();
        ball.instantiate();
        clear();
        Models::mesh_arrays(box);
        Models::mesh_arrays(ball);
    }
    ~Prims() override { clear(); }
    void clear() {
        art().prims = Dictionary();
        art().prims_loaded = true; // the project's own file stays out of this
    }
};

TEST_F(Prims, WhatIsSavedIsTakenOver) {
    int64_t count = 0;
    EXPECT_EQ(prim_cache::save(FILE_PATH, count), OK);
    EXPECT_EQ(count, 2);
    const Variant bare = UtilityFunctions::bytes_to_var(FileAccess::get_file_as_bytes(FILE_PATH));
    ASSERT_EQ(bare.get_type(), Variant::DICTIONARY) << "no header of our own";
    const Array kept = Dictionary(bare)[Models::shape_key(box)];
    ASSERT_EQ(kept.size(), int64_t(Mesh::ARRAY_MAX));

    clear();
    EXPECT_EQ(prim_cache::load(FILE_PATH), 2);
    const Array read = Models::mesh_arrays(ball), computed = ball->get_mesh_arrays();
    for (const int slot : {Mesh::ARRAY_VERTEX, Mesh::ARRAY_NORMAL, Mesh::ARRAY_INDEX}) {
        EXPECT_EQ(read[slot], computed[slot]) << slot;
    }
    EXPECT_EQ(prim_cache::load("user://no_such_file.bin"), 0);
}

TEST_F(Prims, ACutFileIsIgnoredAtEveryLength) {
    art().prims.erase(Models::shape_key(ball)); // a small file
    const PackedByteArray whole = UtilityFunctions::var_to_bytes(art().prims);
    ASSERT_TRUE(rules::is_surface_table({whole.ptr(), size_t(whole.size())}));
    for (int64_t length = 0; length < whole.size(); length++) {
        EXPECT_FALSE(rules::is_surface_table({whole.ptr(), size_t(length)})) << length;
    }
    PackedByteArray longer = whole;
    longer.push_back(0);
    EXPECT_FALSE(rules::is_surface_table({longer.ptr(), size_t(longer.size())}));
    clear();
    write(whole.slice(0, whole.size() / 2));
    EXPECT_EQ(prim_cache::load(FILE_PATH), 0);
    EXPECT_TRUE(art().prims.is_empty());
}

// Whatever byte was turned: the engine logs no error, and no index leads out of its surface.
TEST_F(Prims, ATurnedByteNeverLeadsAstray) {
    art().prims.erase(Models::shape_key(ball));
    const PackedByteArray whole = UtilityFunctions::var_to_bytes(art().prims);
    for (int64_t at = 0; at < whole.size(); at += 3) {
        PackedByteArray turned = whole;
        turned[at] = uint8_t(turned[at] ^ 0xFF);
        write(turned);
        clear();
        prim_cache::load(FILE_PATH);
        const Array surfaces = art().prims.values();
        for (int64_t i = 0; i < surfaces.size(); i++) {
            const Array arrays = surfaces[i];
            const int64_t count = PackedVector3Array(arrays[Mesh::ARRAY_VERTEX]).size();
            const PackedInt32Array indices = arrays[Mesh::ARRAY_INDEX];
            for (int64_t k = 0; k < indices.size(); k++) {
                ASSERT_LT(uint32_t(indices[k]), count) << "byte " << at;
            }
        }
    }
}

TEST_F(Prims, SurfacesOfAnotherFormAreRefused) {
    const String key = Models::shape_key(box);
    const Array good = Models::mesh_arrays(box);
    Array few_normals = good.duplicate(), astray = good.duplicate(), short_one = good.duplicate();
    few_normals[Mesh::ARRAY_NORMAL] = PackedVector3Array();
    PackedInt32Array indices = good[Mesh::ARRAY_INDEX];
    indices.set(4, 24); // a box has 24 vertices
    astray[Mesh::ARRAY_INDEX] = indices;
    short_one.resize(9);
    for (const Array &arrays : {few_normals, astray, short_one}) {
        Dictionary table;
        table["another shape"] = good;
        table[key] = arrays;
        write(UtilityFunctions::var_to_bytes(table));
        clear();
        EXPECT_EQ(prim_cache::load(FILE_PATH), 0);
        EXPECT_TRUE(art().prims.is_empty()) << "nothing of a damaged file is trusted";
    }
}

} // namespace
} // namespace tilm
