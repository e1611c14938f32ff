#pragma once
// Tests inside the real, headless engine. Every TEST body runs on a stack of its own within the engine's main thread,
// so it may let frames pass in its middle:
//
//     TEST(Coop, LaysAnEgg) {
//         Producer *coop = add<Producer>();      // on the stage
//         step_seconds(3.0);                     // the engine runs 180 whole frames
//         EXPECT_EQ(...);
//     }
//
// - Frames are exactly 1/60 s long and run as fast as they can. step(n) lets every node process exactly n times;
// timers,
//   tweens, deferred calls and queue_free do what they do in the game. To step one object alone call its _process(dt).
// - Nodes under stage() are freed after each test. Free what you add elsewhere.
// - A log without engine errors is part of every test: a line "ERROR:" or "SCRIPT ERROR:" fails it unless the
//   test said before that it is coming, with expect_engine_error("a part of its text"). Each announced line must come.
// - Each *_test.cpp runs in an engine process of its own with an empty user:// folder. No resident nodes exist: tests
//   make what they need. The project's assets and shaders are there.
// Run one file: ctest -R engine.save_test; one test: tests/engine/run build/dev save_test.cpp 'Save.Writes*'.

#include <vector>

#include <gtest/gtest.h>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/window.hpp>
#include <godot_cpp/core/memory.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {

namespace test {

using namespace godot;

SceneTree *tree();
Window *root();
Node3D *stage(); // parent of what a test builds, made anew for each test

void step(int frames = 1);
void step_seconds(double seconds);

// Classes that only a test needs, registered with the game's own:
//     const test::RegisterClasses probes([] { GDREGISTER_CLASS(Probe); });   // at namespace scope
struct RegisterClasses {
    using Register = void (*)();
    explicit RegisterClasses(Register run) { all().push_back(run); }
    static std::vector<Register> &all() {
        static std::vector<Register> list;
        return list;
    }
};

// Announces engine error or warning lines that hold this text, so many of them.
void expect_engine_error(const String &text, int times = 1);

// A node of ours or of the engine's, placed on the stage.
template <class T>
T *add() {
    T *node = memnew(T);
    stage()->add_child(node);
    return node;
}

} // namespace test

using namespace test;

} // namespace tilm

namespace tilm_test = tilm::test;

// For failure messages.
namespace godot {
inline std::ostream &operator<<(std::ostream &out, const String &text) {
    return out << text.utf8().get_data();
}
} // namespace godot
