#pragma once
// The one node of the boot scene and the switchboard of a session: menu or farm, the swap between them, the launch
// options, and the answers to the window's and the system's events.

#include <cstdint>
#include <memory>

#include <godot_cpp/classes/input_event.hpp>
#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/classes/sub_viewport.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>
#include <godot_cpp/variant/string.hpp>

#include "rules/options.h"

namespace tilm {
using namespace godot;

class FarmScan;
class World;

class Main : public Node {
    GDCLASS(Main, Node)

public:
    Main();
    ~Main() override;
    static void setup_statics();

    void _ready() override;
    void _process(double delta) override;
    void _input(const Ref<InputEvent> &event) override;

    void _start();       // shows the loading screen, which asks for the farm
    void _start_world(); // makes the farm and shows it; its build goes on in steps
    void _show_menu();
    void _visit(int64_t peer, const Dictionary &farm);
    void _end_visit();

    void _fit_ui();
    void _maximize();
    void _world_built(int64_t id); // of the world whose build ended; it may be gone

    // Diagnostics, each started by its launch option.
    void _noproc_node(Node *node);
    void _labelscan();
    void _moves();
    void _tris();
    void _census();
    void _pick_switch_test();

    Node *get_current() const; // the live World or Menu, null before the first
    Node *get_host() const;    // what every scene hangs under

protected:
    static void _bind_methods();
    void _notification(int what);

private:
    void read_options();
    void apply_options();
    void apply_farm_steps();
    void make_shot_viewport();
    void take_shot();
    void swap(Node *next);
    void hold_window();
    void leave_visit_state();
    World *world() const;

    void start_diagnostics(World &farm);
    void start_after_build(World &farm);
    void _perfx(const PackedStringArray &groups);
    void after(double seconds, const Callable &then);
    void tap_at(const Vector2 &at);
    void move_to(const Vector2 &at);
    void open_panel(const String &name);
    void open_visit_save();

    void on_paused();
    void on_resumed();

    rules::Options options;
    uint64_t current_id = 0;
    uint64_t loading_id = 0;
    SubViewport *viewport = nullptr; // of the screenshots
    double shot_timer = 0.0;
    int shot_count = 0;
    int fit_depth = 0;
    bool maximize_asked = false;
    std::unique_ptr<FarmScan> scan;
};

} // namespace tilm
