#pragma once
// The root node of the test project: runs the tests of one file and ends the engine with their status.

#include <memory>

#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/classes/node3d.hpp>

#include "fiber.h"

namespace tilm {
using namespace godot;

class TestRunner : public Node {
    GDCLASS(TestRunner, Node)

public:
    static TestRunner *get();
    ~TestRunner() override;

    void _ready() override;
    void _process(double delta) override;

    void wait_frames(int frames);
    Node3D *stage();
    void clear_stage();

protected:
    static void _bind_methods() {}

private:
    std::unique_ptr<test::Fiber> tests;
    int frames_left = 0;
    int status = 1;
    Node3D *stage_node = nullptr;

    void run_tests();
};

} // namespace tilm
