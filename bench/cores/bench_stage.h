#pragma once
// What the cases of the core benchmarks build on: a stage that is fresh for each, real frames, and the scripted twins.

#include <chrono>

#include <benchmark/benchmark.h>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace tilm::bench {
using namespace godot;

using Clock = std::chrono::steady_clock;

// Parent of all that a case builds; gone with everything below it when the case ends.
class Stage {
public:
    Stage();
    ~Stage();
    Stage(const Stage &) = delete;
    Node3D *top = nullptr;
};

bool quick();      // a smoke run: few of everything
int scaled(int n); // n, or a tenth of it in a smoke run
Object *scripts(); // the twins of script_cores.gd
double frame();    // lets the engine run one frame; its whole length in seconds

// Registers a case whose iterations are whole frames. The builder returns when the scene stands.
void frames(const char *name, void (*build)(Stage &stage));
// Registers a case of `ops` operations an iteration; `run` does them once.
void ops(const char *name, int ops, void (*build)(Stage &stage), void (*run)(int ops));

void goods_cases();
void staff_cases();
void people_cases();
void register_goods_classes();
void register_staff_classes();
void register_people_classes();
void drop_farm(); // what the staff cases keep between stages

} // namespace tilm::bench
