// What a phone does otherwise. The engine is told that this process has the feature "mobile", as a phone's build has;
// it cannot be taken back, so nothing else is tested here.

#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/classes/project_settings.hpp>

#include "engine_test.h"
#include "fake_farm.h"
#include "fake_store.h"
#include "game/art/auto_quality.h"
#include "game/art/scenery.h"
#include "game/kit/ui.h"

namespace tilm {
namespace {

struct Mobile : testing::Test {
    FakeStore store;
    FakeFarm farm{stage()};

    Mobile() {
        ProjectSettings::get_singleton()->set_setting("_custom_features", "mobile");
        Scenery::light(farm.root());
    }
    bool watches(int saved, const char *word = nullptr) {
        store.values["quality"] = saved;
        store.words.clear();
        if (word != nullptr) {
            store.words.push_back(word);
        }
        const bool on = add<AutoQuality>()->is_processing();
        return on;
    }
};

TEST_F(Mobile, PhonesWatchTheirFramesUnasked) {
    ASSERT_TRUE(OS::get_singleton()->has_feature("mobile"));
    for (int level = 0; level < 3; level++) {
        EXPECT_TRUE(watches(level)) << level;
        EXPECT_FALSE(watches(level, "--quality=1")) << level;
    }
    EXPECT_FALSE(watches(3)) << "nothing is left to take away";
    EXPECT_FALSE(watches(3, "--autoq"));
}

// From the first frame to the worst level on the engine's own frames, which come faster than real ones: the clock of
// the measurement is set back instead of waiting for it.
TEST_F(Mobile, ASlowPhoneEndsAtTheWorstLevelAndStaysThere) {
    AutoQuality *watch = add<AutoQuality>();
    const auto *sun = Object::cast_to<DirectionalLight3D>(farm.root()->get_node_or_null(NodePath("Light/Sun")));
    for (int level = 1; level <= 3; level++) {
        step_seconds(level == 1 ? 11.9 : 5.9);
        EXPECT_GT(watch->wait, 0) << "still waiting";
        step_seconds(0.2);
        EXPECT_EQ(watch->wait, 0);
        EXPECT_EQ(watch->level(), level - 1);
        EXPECT_GT(watch->frames, 0);
        EXPECT_LT(watch->frames, 12) << "counted from the end of the wait";
        EXPECT_EQ(sun->has_shadow(), true);
        watch->start_ticks -= 5000000;
        step();
        EXPECT_EQ(watch->level(), level);
        EXPECT_EQ(store.writes, level);
    }
    EXPECT_FALSE(sun->has_shadow());
    EXPECT_FALSE(watch->is_processing());
    memdelete(watch);
    watch = add<AutoQuality>(); // the next farm
    EXPECT_EQ(watch->level(), 3);
    EXPECT_FALSE(watch->is_processing());
    EXPECT_FLOAT_EQ(root()->get_scaling_3d_scale(), 0.8f);
}

// The display of a test has no notch; margins_of() is tested with the panels.
TEST_F(Mobile, TheSafeAreaIsAskedForAndStaysWithinAQuarter) {
    const Vector4 margins = UI::safe_margins(Vector2(720, 1280));
    EXPECT_GE(margins.x, 0);
    EXPECT_LE(margins.x, 180);
    EXPECT_GE(margins.y, 0);
    EXPECT_LE(margins.y, 320);
}

} // namespace
} // namespace tilm
