#pragma once
// A bare yard for tests of goods: an items root, a batch, and a clock that steps what is processing at 60 Hz without
// letting the engine's own frames pass.

#include <cmath>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <gtest/gtest.h>

#include "engine_test.h"
#include "farm_items/item_batch_core.h"
#include "farm_items/stack_core.h"
#include "game/actors/item.h"
#include "glebworks/glebworks.h"

namespace tilm {

class Yard {
public:
    Yard() {
        top = memnew(Node3D);
        stage()->add_child(top);
        items = memnew(Node3D);
        top->add_child(items);
        batch = memnew(ItemBatchCore);
        top->add_child(batch);
        Item::set_items_root(items);
        Glebworks::set_view(Rect2(-50, -50, 100, 100));
    }
    ~Yard() {
        Item::set_items_root(nullptr);
        Glebworks::see_everything();
        memdelete(top);
    }
    Yard(const Yard &) = delete;

    template <class T>
    T *put(const Vector3 &pos = Vector3()) {
        T *node = memnew(T);
        top->add_child(node);
        node->set_global_position(pos);
        return node;
    }

    // Steps carriers first, then goods, then the drawing, as frames do.
    void run(double seconds) {
        for (int n = (int)std::lround(seconds * 60.0); n > 0; n--) {
            for (int i = 0; i < top->get_child_count(); i++) {
                step_if_processing(top->get_child(i));
            }
            for (int i = 0; i < items->get_child_count(); i++) {
                step_if_processing(items->get_child(i));
            }
            batch->push();
        }
    }

    int processing() const {
        int n = 0;
        for (int i = 0; i < items->get_child_count(); i++) {
            n += items->get_child(i)->is_processing() ? 1 : 0;
        }
        return n;
    }
    int instances() const { return (int)(batch->stats() & 0xffffffff); }
    int chunks() const { return (int)(batch->stats() >> 32); }

    Node3D *top = nullptr;
    Node3D *items = nullptr;
    ItemBatchCore *batch = nullptr;

private:
    static void step_if_processing(Node *node) {
        if (node->is_processing() && !node->is_queued_for_deletion()) {
            node->_process(1.0 / 60.0);
        }
    }
};

inline void expect_near(const Vector3 &a, const Vector3 &b, double by = 1e-3) {
    EXPECT_LT(a.distance_to(b), by) << "(" << a.x << ", " << a.y << ", " << a.z << ") against (" << b.x << ", " << b.y
                                    << ", " << b.z << ")";
}

} // namespace tilm
