// Goods at rest and in the air, piles, the slow list.

#include "bench_stage.h"

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/core/class_db.hpp>

#include "farm_items/item_batch_core.h"
#include "farm_items/item_core.h"
#include "farm_items/pile_core.h"
#include "glebworks/glebworks.h"

namespace tilm::bench {

namespace {

constexpr double step = 1.0 / 60.0;

// Writes the moving goods after they have moved, as the game's own batch does.
class BenchBatch : public ItemBatchCore {
    GDCLASS(BenchBatch, ItemBatchCore)

public:
    void _ready() override { set_process_priority(1000); }
    void _process(double) override { push(); }

protected:
    static void _bind_methods() {}
};

// A node that only notes its time: what is left is the list's own work.
class BenchSlow : public Node3D {
    GDCLASS(BenchSlow, Node3D)

public:
    void _process(double dt) override { time += dt; }
    double time = 0.0;

protected:
    static void _bind_methods() {}
};

ItemCore *good(Stage &stage, const Ref<Mesh> &mesh, const Vector3 &at) {
    ItemCore *it = memnew(ItemCore);
    MeshInstance3D *shape = memnew(MeshInstance3D);
    shape->set_mesh(mesh);
    it->add_child(shape);
    it->set_mesh_node(shape);
    it->set_kind("egg");
    it->set_as_top_level(true);
    stage.top->add_child(it);
    it->place(at);
    return it;
}

Ref<Mesh> box() {
    Ref<BoxMesh> mesh;
    mesh.instantiate();
    return mesh;
}

PileCore *pile = nullptr;

} // namespace

void goods_cases() {
    // The drawer of goods stands on every farm, with or without goods.
    frames("empty", [](Stage &stage) { stage.top->add_child(memnew(BenchBatch)); });
    frames("core resting", [](Stage &stage) {
        stage.top->add_child(memnew(BenchBatch));
        const Ref<Mesh> mesh = box();
        for (int i = 0; i < scaled(10000); i++) {
            good(stage, mesh, Vector3(real_t(i % 100 - 50), 0, real_t(i / 100 - 50)));
        }
    });
    frames("script resting", [](Stage &stage) { scripts()->call("resting", stage.top, scaled(10000)); });
    frames("core flying", [](Stage &stage) {
        stage.top->add_child(memnew(BenchBatch));
        const Ref<Mesh> mesh = box();
        for (int i = 0; i < scaled(2000); i++) {
            good(stage, mesh, Vector3(real_t(i % 40), 0, real_t(i / 50)))->fly_to(Vector3(20, 0, -20), 100000.0);
        }
    });
    frames("script flying", [](Stage &stage) { scripts()->call("flying", stage.top, scaled(2000)); });
    ops(
        "core pile", 200,
        [](Stage &stage) {
            stage.top->add_child(memnew(BenchBatch));
            pile = memnew(PileCore);
            pile->set_cols(4);
            pile->set_rows(2);
            pile->set_show_limit(8);
            stage.top->add_child(pile);
            const Ref<Mesh> mesh = box();
            for (int i = 0; i < 24; i++) {
                pile->add(good(stage, mesh, Vector3()), 0.0);
            }
        },
        [](int n) {
            const String any;
            for (int i = 0; i < n; i++) {
                pile->add(pile->take(any), 0.3);
            }
        });
    ops(
        "script pile", 200, [](Stage &stage) { scripts()->call("pile", stage.top, 24); },
        [](int n) { scripts()->call("run_pile", n); });
    ops(
        "core slow list", 100,
        [](Stage &stage) {
            for (int i = 0; i < 500; i++) {
                BenchSlow *node = memnew(BenchSlow);
                stage.top->add_child(node);
                Glebworks::slow_add(node);
            }
        },
        [](int n) {
            for (int i = 0; i < n; i++) {
                Glebworks::slow_tick(step);
            }
        });
    ops(
        "script slow list", 100, [](Stage &stage) { scripts()->call("slow", stage.top, 500); },
        [](int n) { scripts()->call("run_slow", n); });
}

void register_goods_classes() {
    GDREGISTER_CLASS(BenchBatch);
    GDREGISTER_CLASS(BenchSlow);
}

} // namespace tilm::bench
