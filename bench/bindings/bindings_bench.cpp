// What our layer over the engine costs: the same loops as in bench.gd, timed from C++.

#include <algorithm>
#include <chrono>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/godot.hpp>
#include <godot_cpp/variant/dictionary.hpp>

using namespace godot;

namespace {

class BenchTarget : public Node3D {
    GDCLASS(BenchTarget, Node3D)

public:
    int64_t bump(int64_t by) { return count += by; }
    void heard(int64_t by) { count += by; }
    int64_t count = 0;

protected:
    static void _bind_methods() {
        ClassDB::bind_method(D_METHOD("bump", "by"), &BenchTarget::bump);
        ClassDB::bind_method(D_METHOD("heard", "by"), &BenchTarget::heard);
        ADD_SIGNAL(MethodInfo("rang", PropertyInfo(Variant::INT, "by")));
    }
};

class BenchProcessed : public Node3D {
    GDCLASS(BenchProcessed, Node3D)

public:
    void _process(double delta) override { time += delta; }
    double time = 0;

protected:
    static void _bind_methods() {}
};

class BindingsBench : public RefCounted {
    GDCLASS(BindingsBench, RefCounted)

    // Nanoseconds of one call: the median of nine batches.
    template <typename F>
    static double time(const F &body) {
        constexpr int ROUNDS = 9, CALLS = 20000;
        std::vector<double> rounds;
        for (int r = 0; r < ROUNDS; ++r) {
            const auto from = std::chrono::steady_clock::now();
            for (int i = 0; i < CALLS; ++i) {
                body(i);
            }
            const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - from;
            rounds.push_back(took.count() / CALLS);
        }
        std::nth_element(rounds.begin(), rounds.begin() + ROUNDS / 2, rounds.end());
        return rounds[ROUNDS / 2];
    }

public:
    // Times by case, nanoseconds a call. The node stands in the tree.
    Dictionary run(Node3D *node) {
        Dictionary out;
        BenchTarget *target = memnew(BenchTarget);
        node->add_child(target);
        Node3D *plain = memnew(Node3D);
        double sink = 0;
        out["set_position"] = time([&](int i) { plain->set_position(Vector3(real_t(i), 0, 0)); });
        out["get_global_position"] = time([&](int) { sink += target->get_global_position().x; });
        Dictionary prices;
        for (int i = 0; i < 100; ++i) {
            prices["good_" + String::num_int64(i)] = i;
        }
        const Variant key = "good_42";
        out["dictionary, prepared key"] = time([&](int) { sink += int64_t(prices[key]); });
        out["dictionary, literal key"] = time([&](int) { sink += int64_t(prices["good_42"]); });
        const StringName bump("bump");
        out["call by prepared name"] = time([&](int) { sink += int64_t(target->call(bump, 1)); });
        out["call by literal name"] = time([&](int) { sink += int64_t(target->call("bump", 1)); });
        out["node made and freed"] = time([&](int) { memdelete(memnew(Node3D)); });
        out["own node made and freed"] = time([&](int) { memdelete(memnew(BenchTarget)); });
        target->connect("rang", callable_mp(target, &BenchTarget::heard));
        const StringName rang("rang");
        out["signal to a method"] = time([&](int) { target->emit_signal(rang, 1); });
        out["get_child and cast"] =
            time([&](int) { sink += Object::cast_to<BenchTarget>(node->get_child(0)) != nullptr; });
        Array list;
        list.resize(100);
        list.fill(1);
        out["array of 100 summed"] = time([&](int) {
            for (const Variant &v : static_cast<const Array &>(list)) {
                sink += int64_t(v);
            }
        });
        const String name = "good_";
        out["text joined and compared"] = time([&](int) { sink += (name + "42") == "good_42"; });
        Transform3D turn = Transform3D(Basis(Vector3(0, 1, 0), 0.01f), Vector3());
        Transform3D all;
        out["transform multiplied"] = time([&](int) { all = all * turn; });
        memdelete(plain);
        memdelete(target);
        out["sink"] = sink + all.basis[0][0];
        return out;
    }

protected:
    static void _bind_methods() { ClassDB::bind_method(D_METHOD("run", "node"), &BindingsBench::run); }
};

void initialize(ModuleInitializationLevel level) {
    if (level == MODULE_INITIALIZATION_LEVEL_SCENE) {
        GDREGISTER_CLASS(BenchTarget);
        GDREGISTER_CLASS(BenchProcessed);
        GDREGISTER_CLASS(BindingsBench);
    }
}

} // namespace

extern "C" GDExtensionBool GDE_EXPORT bindings_bench_init(GDExtensionInterfaceGetProcAddress get_proc_address,
                                                          GDExtensionClassLibraryPtr library,
                                                          GDExtensionInitialization *initialization) {
    GDExtensionBinding::InitObject init(get_proc_address, library, initialization);
    init.register_initializer(initialize);
    init.set_minimum_library_initialization_level(MODULE_INITIALIZATION_LEVEL_SCENE);
    return init.init();
}
