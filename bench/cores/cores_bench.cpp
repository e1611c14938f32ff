// Google Benchmark inside the engine: its cases run on a stack of their own and let frames pass in their middle.

#include "bench_stage.h"

#include <cstdio>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gdextension_interface.h>

#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/classes/resource.hpp>
#include <godot_cpp/classes/resource_loader.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/window.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/godot.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>

#include "fiber.h"
#include "glebworks/glebworks.h"
#include "register.h"
#include "statics.h"

namespace tilm::bench {

namespace {

constexpr int repetitions = 9;
constexpr int warm_up = 20; // frames

// Microseconds by case, and how many operations one iteration does.
std::map<std::string, double> medians;
std::map<std::string, int> ops_of;

class Medians : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs) {
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (median || (quick() && run.run_type == Run::RT_Iteration)) {
                const std::string &name = run.run_name.function_name;
                medians[name] = run.GetAdjustedRealTime() / ops_of[name];
            }
        }
    }
};

// One line of the table: the two cases it compares, the frame that both stand in, the goal.
struct Row {
    const char *title;
    const char *core;
    const char *script; // null: there is no twin
    const char *empty;  // taken off both: null for operations
    const char *goal;
};
constexpr Row rows[] = {
    {"10,000 resting goods, whole frame", "core resting", "script resting", nullptr, "at most 2% over an empty frame"},
    {"2,000 flying goods, frame", "core flying", "script flying", "empty", "5 times the script"},
    {"300 walkers in view without models, frame", "core walkers", "script walkers", "empty", "5 times the script"},
    {"300 rigged people in view, posed, frame", "people", nullptr, "empty", "at most 600"},
    {"1,000 far walkers, frame", "core far list", "script far list", nullptr, "at most 2,500"},
    {"hauler's choice over 250 zones", "core choice", "script choice", nullptr, "5 times the script"},
    {"pile, take one of 24 and add it", "core pile", "script pile", nullptr, "5 times the script"},
    {"slow list of 500, frame", "core slow list", "script slow list", nullptr, "5 times the script"},
};

// False when a case did not run.
bool print_table() {
    bool whole = true;
    const auto time_of = [&](const char *name) {
        const auto found = medians.find(name);
        whole = whole && found != medians.end();
        return found == medians.end() ? 0.0 : found->second;
    };
    std::printf("| case | core, us | script, us | ratio | goal |\n|---|---|---|---|---|\n");
    for (const Row &row : rows) {
        const double base = row.empty ? time_of(row.empty) : 0.0;
        const double core = time_of(row.core) - base;
        if (row.script == nullptr) {
            std::printf("| %s | %.2f | | | %s |\n", row.title, core, row.goal);
            continue;
        }
        const double script = time_of(row.script) - base;
        std::printf("| %s | %.2f | %.2f | %.1f | %s |\n", row.title, core, script, core > 0.0 ? script / core : 0.0,
                    row.goal);
    }
    const double empty = time_of("empty");
    std::printf("\nAn empty frame takes %.2f us, one with the resting goods %+.1f%%.\n", empty,
                empty > 0.0 ? 100.0 * (time_of("core resting") / empty - 1.0) : 0.0);
    return whole;
}

} // namespace

class CoresBench : public Node {
    GDCLASS(CoresBench, Node)

public:
    static CoresBench *instance;

    ~CoresBench() override { Statics::release_all(); }

    void _ready() override {
        instance = this;
        std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
        set_process_priority(-100000);
        Engine::get_singleton()->set_max_fps(0);
        OS::get_singleton()->set_low_processor_usage_mode(false);
        is_quick = OS::get_singleton()->get_cmdline_user_args().has("--quick");
        const Ref<Resource> script = ResourceLoader::get_singleton()->load("res://script_cores.gd");
        if (script.is_valid() && script->has_method("new")) {
            twins = script->call("new");
        }
        body = std::make_unique<test::Fiber>([this] { run(); });
    }

    void _process(double) override {
        if (body) {
            body->resume();
            if (body->done()) {
                body.reset();
                twins = Variant();
                get_tree()->quit(whole ? 0 : 1);
            }
        }
    }

    double pass() {
        const auto from = Clock::now();
        body->pause();
        return std::chrono::duration<double>(Clock::now() - from).count();
    }

    bool is_quick = false;
    Variant twins;

protected:
    static void _bind_methods() {}

private:
    void run() {
        if (twins.get_validated_object() == nullptr) {
            std::printf("the scripts did not load\n");
            return;
        }
        Glebworks::set_view(Rect2(-50, -50, 100, 100));
        std::vector<std::string> words = {"cores", "--benchmark_enable_random_interleaving=true"};
        const PackedStringArray args = OS::get_singleton()->get_cmdline_user_args();
        for (int64_t i = 0; i < args.size(); i++) {
            if (String(args[i]).begins_with("--benchmark_")) {
                words.emplace_back(String(args[i]).utf8().get_data());
            }
        }
        std::vector<char *> argv;
        for (std::string &word : words) {
            argv.push_back(word.data());
        }
        int argc = static_cast<int>(argv.size());
        benchmark::Initialize(&argc, argv.data());
        goods_cases();
        staff_cases();
        people_cases();
        Medians reporter;
        std::ostringstream unused; // the library's std::cout is not the engine's
        reporter.SetOutputStream(&unused);
        reporter.SetErrorStream(&unused);
        benchmark::RunSpecifiedBenchmarks(&reporter);
        benchmark::Shutdown();
        whole = print_table();
    }

    std::unique_ptr<test::Fiber> body;
    bool whole = false;
};

CoresBench *CoresBench::instance = nullptr;

Stage::Stage() : top(memnew(Node3D)) {
    CoresBench::instance->get_tree()->get_root()->add_child(top);
}

Stage::~Stage() {
    scripts()->call("clear");
    drop_farm();
    memdelete(top);
}

bool quick() {
    return CoresBench::instance->is_quick;
}

int scaled(int n) {
    return quick() ? n / 10 : n;
}

Object *scripts() {
    return CoresBench::instance->twins;
}

double frame() {
    return CoresBench::instance->pass();
}

void frames(const char *name, void (*build)(Stage &)) {
    ops_of[name] = 1;
    benchmark::RegisterBenchmark(name,
                                 [build](benchmark::State &state) {
                                     Stage stage;
                                     build(stage);
                                     for (int i = quick() ? 2 : warm_up; i > 0; i--) {
                                         frame();
                                     }
                                     for ([[maybe_unused]] auto _ : state) {
                                         state.SetIterationTime(frame());
                                     }
                                 })
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->Iterations(quick() ? 3 : 200)
        ->Repetitions(quick() ? 1 : repetitions)
        ->ReportAggregatesOnly(!quick());
}

void ops(const char *name, int n, void (*build)(Stage &), void (*run)(int)) {
    n = quick() ? 3 : n;
    ops_of[name] = n;
    benchmark::RegisterBenchmark(name,
                                 [build, run, n](benchmark::State &state) {
                                     Stage stage;
                                     build(stage);
                                     for (int i = 0; i < 5; i++) {
                                         frame();
                                     }
                                     run(n);
                                     for ([[maybe_unused]] auto _ : state) {
                                         const auto from = Clock::now();
                                         run(n);
                                         const std::chrono::duration<double> took = Clock::now() - from;
                                         state.SetIterationTime(took.count());
                                     }
                                 })
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->Iterations(quick() ? 2 : 20)
        ->Repetitions(quick() ? 1 : repetitions)
        ->ReportAggregatesOnly(!quick());
}

namespace {

void initialize(ModuleInitializationLevel level) {
    initialize_module(level);
    if (level == MODULE_INITIALIZATION_LEVEL_SCENE) {
        GDREGISTER_CLASS(CoresBench);
        register_goods_classes();
        register_staff_classes();
        register_people_classes();
    }
}

} // namespace

} // namespace tilm::bench

extern "C" GDExtensionBool GDE_EXPORT cores_bench_init(GDExtensionInterfaceGetProcAddress get_proc_address,
                                                       GDExtensionClassLibraryPtr library,
                                                       GDExtensionInitialization *initialization) {
    godot::GDExtensionBinding::InitObject init(get_proc_address, library, initialization);
    init.register_initializer(tilm::bench::initialize);
    init.register_terminator(tilm::uninitialize_module);
    init.set_minimum_library_initialization_level(godot::MODULE_INITIALIZATION_LEVEL_SCENE);
    return init.init();
}
