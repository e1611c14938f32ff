#pragma once
// The screen on top of everything while a farm is made: warms the model caches, then drives the world's staged build,
// both in slices of 12 ms a frame.

#include <cstdint>
#include <functional>
#include <vector>

#include <godot_cpp/classes/canvas_layer.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/panel.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

#include "rules/loading_flow.h"

namespace tilm {
using namespace godot;

class Loading : public CanvasLayer {
    GDCLASS(Loading, CanvasLayer)

public:
    void _ready() override;
    void _process(double delta) override;

    // True until it has asked for the world: a second request for a farm needs no second screen.
    bool is_before_world() const { return flow.stage() < rules::LoadingFlow::Stage::Settle; }
    double get_shown() const { return flow.shown(); }
    int get_stage() const { return static_cast<int>(flow.stage()); }
    int get_task_count() const { return static_cast<int>(tasks.size()); }

protected:
    static void _bind_methods();

private:
    struct Task {
        String name;
        std::function<void()> run;
    };

    void build_display();
    void plan();
    void add_task(const String &name, std::function<void()> run);
    void run_tasks(uint64_t frame_start);
    bool step_world();
    void show_progress(double delta);
    void fade();
    void finish();

    rules::LoadingFlow flow;
    std::vector<Task> tasks;
    Dictionary planned; // names of the tasks
    size_t next_task = 0;
    int shown_percent = -1;

    Control *screen = nullptr;
    Control *backdrop = nullptr;
    Control *bar = nullptr;
    Label *label = nullptr;
    Control *star = nullptr;
};

} // namespace tilm
