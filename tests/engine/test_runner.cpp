#include "test_runner.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>

#include "engine_test.h"
#include "statics.h"

namespace tilm {

namespace {

TestRunner *s_runner = nullptr;

// Frees the stage after each test, while frames can still pass.
class StageKeeper : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo &) override { s_runner->clear_stage(); }
};

std::string file_name(const char *path) {
    const char *slash = path == nullptr ? nullptr : std::strrchr(path, '/');
    return slash == nullptr ? std::string(path == nullptr ? "" : path) : std::string(slash + 1);
}

// The names of all tests that one source file holds, as a filter.
std::string filter_of_file(const std::string &file) {
    std::string filter;
    const testing::UnitTest &all = *testing::UnitTest::GetInstance();
    for (int s = 0; s < all.total_test_suite_count(); ++s) {
        const testing::TestSuite &suite = *all.GetTestSuite(s);
        for (int t = 0; t < suite.total_test_count(); ++t) {
            const testing::TestInfo &info = *suite.GetTestInfo(t);
            if (file_name(info.file()) == file) {
                filter += (filter.empty() ? "" : ":") + std::string(suite.name()) + "." + info.name();
            }
        }
    }
    return filter;
}

} // namespace

TestRunner *TestRunner::get() {
    return s_runner;
}

TestRunner::~TestRunner() {
    Statics::release_all();
}

void TestRunner::_ready() {
    s_runner = this;
    // Engine errors go to the same pipe unbuffered: only whole lines keep the two in order.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    set_process_priority(-1000);
    set_process_mode(PROCESS_MODE_ALWAYS);
    tests = std::make_unique<test::Fiber>([this] { run_tests(); });
}

void TestRunner::_process(double) {
    if (frames_left > 0) {
        --frames_left;
    }
    if (frames_left > 0 || tests == nullptr) {
        return;
    }
    tests->resume();
    if (tests->done()) {
        tests.reset();
        get_tree()->quit(status);
    }
}

void TestRunner::wait_frames(int frames) {
    if (frames > 0) {
        frames_left = frames;
        tests->pause();
    }
}

Node3D *TestRunner::stage() {
    if (stage_node == nullptr) {
        stage_node = memnew(Node3D);
        stage_node->set_name("Stage");
        get_tree()->get_root()->add_child(stage_node);
    }
    return stage_node;
}

void TestRunner::clear_stage() {
    if (stage_node != nullptr) {
        stage_node->queue_free();
        stage_node = nullptr;
    }
    wait_frames(2);
}

void TestRunner::run_tests() {
    std::vector<std::string> words = {"tests"};
    std::string file;
    const PackedStringArray args = OS::get_singleton()->get_cmdline_user_args();
    for (int64_t i = 0; i < args.size(); ++i) {
        const std::string word = String(args[i]).utf8().get_data();
        if (word.starts_with("--test-file=")) {
            file = word.substr(word.find('=') + 1);
        } else if (word.starts_with("--gtest_")) {
            words.push_back(word);
        }
    }
    std::vector<char *> argv;
    for (std::string &word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    int argc = static_cast<int>(words.size());
    testing::InitGoogleTest(&argc, argv.data());
    if (!file.empty() && testing::GTEST_FLAG(filter) == "*") {
        testing::GTEST_FLAG(filter) = filter_of_file(file);
    }
    testing::UnitTest &all = *testing::UnitTest::GetInstance();
    all.listeners().Append(new StageKeeper);
    const int failed = RUN_ALL_TESTS();
    if (all.test_to_run_count() == 0) {
        std::printf("no test of %s was found\n", file.c_str());
    }
    status = failed != 0 || all.test_to_run_count() == 0 ? 1 : 0;
}

namespace test {

SceneTree *tree() {
    return TestRunner::get()->get_tree();
}

Window *root() {
    return tree()->get_root();
}

Node3D *stage() {
    return TestRunner::get()->stage();
}

void step(int frames) {
    TestRunner::get()->wait_frames(frames);
}

void step_seconds(double seconds) {
    constexpr double FRAMES_PER_SECOND = 60.0;
    step(static_cast<int>(std::ceil(seconds * FRAMES_PER_SECOND)));
}

void expect_engine_error(const String &text, int times) {
    for (int i = 0; i < times; ++i) {
        std::printf("[ EXPECTS  ] %s\n", text.utf8().get_data());
    }
}

} // namespace test

} // namespace tilm
