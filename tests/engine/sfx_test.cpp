#include <gtest/gtest.h>

#include <godot_cpp/classes/audio_server.hpp>
#include <godot_cpp/classes/audio_stream_player.hpp>
#include <godot_cpp/classes/engine.hpp>

#include "engine_test.h"
#include "fake_store.h"
#include "find_control.h"
#include "game/sound/sfx.h"
#include "rules/sound_events.h"

using namespace tilm;

namespace {

float bus_db(const char *name) {
    AudioServer *server = AudioServer::get_singleton();
    return server->get_bus_volume_db(server->get_bus_index(name));
}

bool bus_muted(const char *name) {
    AudioServer *server = AudioServer::get_singleton();
    return server->is_bus_mute(server->get_bus_index(name));
}

} // namespace

TEST(Sfx, MakesItsBusesAndSetsLevels) {
    FakeStore store;
    Sfx *sfx = add<Sfx>();
    EXPECT_EQ(Sfx::get(), sfx);
    for (const rules::BusRow &row : rules::buses()) {
        const std::string name(row.name);
        SCOPED_TRACE(name);
        ASSERT_GE(AudioServer::get_singleton()->get_bus_index(name.c_str()), 0);
        EXPECT_NEAR(bus_db(name.c_str()), row.base_db, 1e-3) << "0.8 is the neutral volume";
        EXPECT_FALSE(bus_muted(name.c_str()));
    }
    sfx->set_volume("effects", 0.4);
    EXPECT_NEAR(bus_db("Feedback"), -6.0 - 6.0206, 1e-2);
    EXPECT_NEAR(bus_db("Music"), 0.0, 1e-3);
    EXPECT_DOUBLE_EQ(store.values["vol_effects"], 0.4);

    sfx->set_volume("ambience", 0.0);
    EXPECT_TRUE(bus_muted("Animals"));
    EXPECT_LE(bus_db("Ambience"), -80.0f);

    store.values["sound_on"] = false;
    sfx->apply_volumes();
    EXPECT_TRUE(bus_muted("UI"));
    EXPECT_FALSE(bus_muted("Music")) << "the sound switch leaves the music alone";
    sfx->set_volume("music", 0.0);
    EXPECT_TRUE(bus_muted("Music"));
}

TEST(Sfx, BadSettingsReadAsNeutral) {
    FakeStore store;
    store.values["vol_music"] = NAN;
    store.values["vol_effects"] = 9.0;
    Sfx *sfx = add<Sfx>();
    EXPECT_DOUBLE_EQ(sfx->volume("music"), 0.8);
    EXPECT_DOUBLE_EQ(sfx->volume("effects"), 1.0);
    sfx->set_volume("music", INFINITY);
    EXPECT_DOUBLE_EQ(sfx->volume("music"), 0.8);
    expect_engine_error("no volume group nonsense");
    sfx->set_volume("nonsense", 0.5);
    EXPECT_FALSE(store.values.has("vol_nonsense"));
}

TEST(Sfx, MissingSoundsAreCountedDrops) {
    FakeStore store;
    Sfx *sfx = add<Sfx>();
    sfx->play("no_such_event");
    sfx->play_at("no_such_event", 4, Vector3(1, 0, 1));
    sfx->loop("no_such_loop", true);
    sfx->loop_at("slot", "no_such_loop", 1.0, 1.0, true, Vector3());
    EXPECT_EQ(int64_t(sfx->stats()["missing"]), 4);
    sfx->ambient("no_such_bed", 1.0);
    sfx->ambient("no_such_bed", -3.0);
    EXPECT_EQ(int64_t(sfx->stats()["missing"]), 5);
    step(3);
    EXPECT_EQ(int64_t(sfx->stats()["plays"]), 0);
    EXPECT_EQ(int64_t(sfx->stats()["loops"]), 0);
}

TEST(Sfx, SilentGameAsksForNothing) {
    FakeStore store;
    store.values["sound_on"] = false;
    Sfx *sfx = add<Sfx>();
    sfx->play("no_such_event");
    EXPECT_EQ(int64_t(sfx->stats()["dropped"]), 0);
}

TEST(Sfx, DuckLowersMusicAndLetsGo) {
    FakeStore store;
    Sfx *sfx = add<Sfx>();
    sfx->duck(-6.0, 0.5);
    sfx->duck(-3.0, 1.0);
    step_seconds(0.45);
    EXPECT_NEAR(bus_db("Music"), -6.0, 0.05) << "the deepest asked";
    step_seconds(0.4);
    EXPECT_LT(bus_db("Music"), -2.0f) << "until the latest end";
    step_seconds(1.0);
    EXPECT_NEAR(bus_db("Music"), 0.0, 1e-3);
}

TEST(Sfx, PauseMufflesMusic) {
    FakeStore store;
    Sfx *sfx = add<Sfx>();
    AudioServer *server = AudioServer::get_singleton();
    const int bus = server->get_bus_index("Music");
    step();
    EXPECT_FALSE(server->is_bus_effect_enabled(bus, 0));
    tree()->set_pause(true);
    sfx->_process(1.0 / 60.0);
    EXPECT_TRUE(server->is_bus_effect_enabled(bus, 0));
    tree()->set_pause(false);
    sfx->_process(1.0 / 60.0);
    EXPECT_FALSE(server->is_bus_effect_enabled(bus, 0));
}

TEST(Sfx, LeavesWithTheTreeWhileSounding) {
    FakeStore store;
    Sfx *sfx = add<Sfx>();
    sfx->set_listener(Vector3());
    for (const rules::SoundEvent &event : rules::sound_events()) {
        const StringName name(std::string(event.name).c_str());
        sfx->play_at(name, 1, Vector3(0, 0, 1));
        sfx->loop_hold(name, 5.0, 1.0);
    }
    step(5);
    stage()->remove_child(sfx);
    sfx->play("ui_tap");
    EXPECT_EQ(int64_t(sfx->stats()["loops"]), 0);
    memdelete(sfx);
    EXPECT_EQ(Sfx::get(), nullptr);
    Sfx::sound("ui_tap"); // no resident: silence, no fault
    Sfx::vibrate(20);
}
