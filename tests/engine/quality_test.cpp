// Levels of graphics quality, particles out of view, and geometry whose shadow or whole self is not worth drawing.

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/cpu_particles3d.hpp>
#include <godot_cpp/classes/directional_light3d.hpp>
#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/classes/sphere_mesh.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/classes/torus_mesh.hpp>

#include "engine_test.h"
#include "fake_farm.h"
#include "fake_store.h"
#include "game/art/auto_quality.h"
#include "game/art/blob_shadows.h"
#include "game/art/fx_lod.h"
#include "game/art/scenery.h"
#include "game/art/shadow_cull.h"
#include "glebworks/glebworks.h"

namespace tilm {
namespace {

constexpr auto ON = GeometryInstance3D::SHADOW_CASTING_SETTING_ON;
constexpr auto OFF = GeometryInstance3D::SHADOW_CASTING_SETTING_OFF;

struct Quality : testing::Test {
    FakeStore store;
    FakeFarm farm{stage()};
    AutoQuality *watch = nullptr;

    AutoQuality *start(std::initializer_list<const char *> words, int saved = 0) {
        for (const char *word : words) {
            store.words.push_back(word);
        }
        store.values["quality"] = saved;
        Scenery::light(farm.root());
        watch = add<AutoQuality>();
        return watch;
    }
    DirectionalLight3D *sun() {
        return Object::cast_to<DirectionalLight3D>(farm.root()->get_node_or_null(NodePath("Light/Sun")));
    }
    // A measurement of 5 s in which so many frames came, the one under way included.
    void measured(int frames) {
        watch->set_process(true);
        watch->wait = 0;
        watch->start_ticks = int64_t(Time::get_singleton()->get_ticks_usec()) - 5000000;
        watch->frames = frames - 1;
        watch->_process(0.02);
    }
};

TEST_F(Quality, EachLevelSetsViewportAndSun) {
    start({}, 0);
    const struct {
        int level;
        double scale;
        bool msaa, sun;
    } rows[] = {{0, 1.0, true, true}, {1, 1.0, false, true}, {2, 0.8, false, true}, {3, 0.8, false, false}};
    for (const auto &row : rows) {
        store.values["quality"] = row.level;
        watch->apply();
        EXPECT_FLOAT_EQ(root()->get_scaling_3d_scale(), float(row.scale)) << row.level;
        EXPECT_EQ(root()->get_msaa_3d() != Viewport::MSAA_DISABLED, row.msaa) << row.level;
        EXPECT_EQ(sun()->has_shadow(), row.sun) << row.level;
    }
    EXPECT_FALSE(watch->is_processing()) << "no phone, and not asked for";
    EXPECT_EQ(watch->get_process_mode(), Node::PROCESS_MODE_ALWAYS);
}

TEST_F(Quality, AFixedLevelHoldsAndIsNotSaved) {
    start({"--autoq", "--quality=2"}, 1);
    EXPECT_EQ(watch->level(), 2);
    EXPECT_FALSE(watch->is_processing());
    EXPECT_FLOAT_EQ(root()->get_scaling_3d_scale(), 0.8f);
    EXPECT_EQ(int64_t(store.values["quality"]), 1);
}

TEST_F(Quality, SlowFramesStepDownToTheWorstAndNeverBack) {
    start({"--autoq"});
    EXPECT_TRUE(watch->is_processing());
    EXPECT_DOUBLE_EQ(watch->wait, 12.0);
    measured(240); // 48 a second
    EXPECT_EQ(watch->level(), 0);
    EXPECT_EQ(watch->frames, 0) << "measured anew";
    EXPECT_EQ(store.writes, 0);
    for (int level = 1; level <= 3; level++) {
        measured(234); // 46.8
        EXPECT_EQ(watch->level(), level);
        EXPECT_EQ(store.writes, level);
        EXPECT_DOUBLE_EQ(watch->wait, 6.0);
        EXPECT_EQ(watch->is_processing(), level < 3);
    }
    EXPECT_FALSE(sun()->has_shadow());
    measured(600);
    EXPECT_EQ(watch->level(), 3);
}

TEST_F(Quality, TheWaitIsRealTimeAndHiccupsStretchIt) {
    start({"--autoq"});
    watch->set_process(false);
    watch->_process(0.5);
    EXPECT_DOUBLE_EQ(watch->wait, 11.5) << "half a second is no hiccup";
    Engine::get_singleton()->set_time_scale(2.0);
    watch->_process(0.5);
    Engine::get_singleton()->set_time_scale(1.0);
    EXPECT_DOUBLE_EQ(watch->wait, 11.25);
    watch->wait = 0;
    watch->frames = 7;
    watch->_process(0.6);
    EXPECT_DOUBLE_EQ(watch->wait, 0.4);
    EXPECT_EQ(watch->frames, 7) << "not counted";
    watch->_process(0.4);
    EXPECT_EQ(watch->frames, 0) << "the measurement starts";
    EXPECT_GT(watch->start_ticks, 0);
}

// A view of 20 by 20 round the origin for one test.
struct Seen : testing::Test {
    Seen() { Glebworks::set_view(Rect2(-10, -10, 20, 20)); }
    ~Seen() override { Glebworks::see_everything(); }
};

using Particles = Seen;
TEST_F(Particles, OutOfViewTheyStopAndHideAndComeBack) {
    CPUParticles3D *here = add<CPUParticles3D>(), *away = add<CPUParticles3D>(), *hidden = add<CPUParticles3D>();
    away->set_position(Vector3(16.1f, 0, 0));
    hidden->set_position(Vector3(0, 0, -20));
    hidden->set_visible(false);
    Ref<SphereMesh> ball;
    ball.instantiate();
    here->set_mesh(ball);
    FxLod *lod = add<FxLod>();
    lod->set_process(false);
    EXPECT_EQ(lod->tracked.size(), 3);
    EXPECT_EQ(ball->get_radial_segments(), 12);
    lod->_process(0.24);
    EXPECT_TRUE(away->is_visible()) << "four looks a second";
    lod->_process(0.01);
    EXPECT_EQ(here->get_process_mode(), Node::PROCESS_MODE_INHERIT);
    for (CPUParticles3D *fx : {away, hidden}) {
        EXPECT_EQ(fx->get_process_mode(), Node::PROCESS_MODE_DISABLED);
        EXPECT_FALSE(fx->is_visible());
    }
    EXPECT_TRUE(away->has_meta("lod_was"));
    away->set_position(Vector3(15.9f, 0, 0));
    hidden->set_position(Vector3());
    memdelete(here);
    lod->_process(0.25);
    EXPECT_TRUE(away->is_visible());
    EXPECT_FALSE(away->has_meta("lod_was"));
    EXPECT_EQ(hidden->get_process_mode(), Node::PROCESS_MODE_INHERIT);
    EXPECT_FALSE(hidden->is_visible()) << "the game hid it, the game shows it";
    EXPECT_EQ(lod->tracked.size(), 2) << "the dead one is forgotten";
}

TEST_F(Particles, MeshesThatComeLateAreTrimmed) {
    add<FxLod>();
    MeshInstance3D *node = add<MeshInstance3D>();
    Ref<TorusMesh> ring;
    ring.instantiate();
    node->set_mesh(ring); // after it entered the tree
    MeshInstance3D *gone = add<MeshInstance3D>();
    memdelete(gone);
    step();
    EXPECT_EQ(ring->get_rings(), 24);
}

using Culling = Seen;
TEST_F(Culling, ShadowsEndAtTheReachAndComeBack) {
    ShadowCullCore *core = add<ShadowCullCore>();
    core->set_max_dist(30);
    MeshInstance3D *near = add<MeshInstance3D>(), *beyond = add<MeshInstance3D>(), *never = add<MeshInstance3D>();
    beyond->set_position(Vector3(15.5f, 0, 0));
    never->set_cast_shadows_setting(OFF);
    never->set_position(Vector3(40, 0, 0));
    for (MeshInstance3D *node : {near, beyond, never}) {
        core->add_caster(node, true, 1, Vector2(), 5);
    }
    core->tick(0.1, true, Vector3(0, 34.9f, 0));
    EXPECT_EQ(near->get_cast_shadows_setting(), ON) << "nearer than reach + max_dist";
    EXPECT_EQ(beyond->get_cast_shadows_setting(), OFF);
    core->tick(0.1, true, Vector3(0, 35.1f, 0));
    EXPECT_EQ(near->get_cast_shadows_setting(), OFF);
    beyond->set_position(Vector3(14.5f, 0, 0));
    never->set_position(Vector3());
    core->tick(0.1, false, Vector3(0, 500, 0));
    EXPECT_EQ(near->get_cast_shadows_setting(), ON) << "without a camera only the view counts";
    EXPECT_EQ(beyond->get_cast_shadows_setting(), ON);
    EXPECT_EQ(never->get_cast_shadows_setting(), OFF) << "it never had one";
    expect_engine_error("add_caster");
    core->add_caster(core, true, 1, Vector2(), 1);
}

TEST_F(Culling, TheBudgetIsTwoRoundsASecondAndAJumpTakesAll) {
    ShadowCullCore *core = add<ShadowCullCore>();
    std::vector<MeshInstance3D *> nodes;
    for (int i = 0; i < 1000; i++) {
        nodes.push_back(add<MeshInstance3D>());
        core->add_caster(nodes.back(), true, 1, Vector2(), 5);
    }
    core->tick(0.01, false, Vector3());
    EXPECT_EQ(core->last_visits(), 1000) << "the first view is a jump";
    core->tick(0.01, false, Vector3());
    EXPECT_EQ(core->last_visits(), 64);
    core->tick(0.0999, false, Vector3());
    EXPECT_EQ(core->last_visits(), 199);
    Glebworks::set_view(Rect2(-7, -7, 20, 20)); // moved by 6 in all: no jump yet
    core->tick(0.01, false, Vector3());
    EXPECT_EQ(core->last_visits(), 64);
    Glebworks::set_view(Rect2(-7, -7, 24, 22.5f));
    core->tick(9, false, Vector3());
    EXPECT_EQ(core->last_visits(), 1000) << "never more than there are";
    // The dead leave the list as the scan meets them, and the last record takes their place.
    for (int i = 0; i < 990; i++) {
        memdelete(nodes[size_t(i)]);
    }
    nodes.back()->set_position(Vector3(100, 0, 0));
    for (int i = 0; i < 40; i++) {
        core->tick(0.1, false, Vector3());
    }
    EXPECT_EQ(core->count(), 10);
    EXPECT_EQ(nodes.back()->get_cast_shadows_setting(), OFF);
}

TEST_F(Culling, TakesTheFarmsPiecesButNeitherGroundNorGoods) {
    FakeFarm farm(stage());
    const auto piece = [](Node *parent, double side) {
        MeshInstance3D *node = memnew(MeshInstance3D);
        Ref<BoxMesh> box;
        box.instantiate();
        box->set_size(Vector3(side, 2, 1));
        node->set_mesh(box);
        parent->add_child(node);
        return node;
    };
    piece(farm.root(), 3);
    piece(farm.root(), 40.5);
    piece(stage(), 3); // not of the farm
    Item *good = memnew(Item);
    farm.root()->add_child(good);
    piece(good, 0.2);
    ShadowCull *cull = add<ShadowCull>();
    step(2);
    EXPECT_EQ(cull->count(), 1);
    MeshInstance3D *late = piece(farm.root(), 4);
    late->set_position(Vector3(20.5f, 0, 0)); // half 2, reach 2 + 1 + 3
    step(60);
    EXPECT_EQ(cull->count(), 2);
    EXPECT_EQ(late->get_cast_shadows_setting(), OFF) << "further than 10 + 6";
    late->set_position(Vector3(15.5f, 0, 0));
    step(60);
    EXPECT_EQ(late->get_cast_shadows_setting(), ON);
    // A customer between two visits: out of the tree and in again.
    for (int i = 0; i < 3; i++) {
        farm.root()->remove_child(late);
        step(2);
        farm.root()->add_child(late);
        step(2);
    }
    EXPECT_EQ(cull->count(), 2) << "once in the list, however often it comes";
    memdelete(late);
    step(2);
    EXPECT_EQ(cull->count(), 1);
    EXPECT_NE(piece(farm.root(), 4), nullptr);
    step(2);
    EXPECT_EQ(cull->count(), 2);
}

TEST_F(Culling, SpotsLieUnderHousesOnlyWithoutTheSunsShadow) {
    FakeFarm farm(stage());
    Node3D *light = Scenery::light(farm.root());
    MeshInstance3D *house = memnew(MeshInstance3D);
    Ref<BoxMesh> box;
    box.instantiate();
    box->set_name("house_test");
    house->set_mesh(box);
    farm.root()->add_child(house);
    BlobShadows blobs;
    for (int i = 0; i < 70; i++) {
        blobs.take(house, AABB(Vector3(-1, 0, -1), Vector3(2, 2, 2)));
    }
    blobs.step(farm.root());
    EXPECT_EQ(blobs.shown(), 0);
    EXPECT_EQ(blobs.node(), nullptr);
    Scenery::tune_light(light, false);
    blobs.step(farm.root());
    EXPECT_EQ(blobs.shown(), 70) << "more than one step of growth";
    EXPECT_TRUE(Object::cast_to<Node3D>(const_cast<Node *>(blobs.node()))->is_visible());
    house->set_visible(false);
    blobs.step(farm.root());
    EXPECT_EQ(blobs.shown(), 0);
    house->set_visible(true);
    Scenery::tune_light(light, true);
    blobs.step(farm.root());
    EXPECT_FALSE(Object::cast_to<Node3D>(const_cast<Node *>(blobs.node()))->is_visible());
    // The dead are forgotten also while no spot is drawn.
    memdelete(house);
    for (int i = 0; i < 70; i++) {
        blobs.step(farm.root());
    }
    EXPECT_EQ(blobs.known(), 0);
}

} // namespace
} // namespace tilm
