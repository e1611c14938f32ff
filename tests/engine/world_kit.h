#pragma once
// A Save on a file of its own and the farms built from it, one after the other.

#include "engine_test.h"
#include "game/shell/save.h"
#include "game/shell/world.h"
#include "game/shell/world_options.h"

namespace tilm {

class FarmTest : public testing::Test {
protected:
    void SetUp() override {
        static int number = 0;
        save = memnew(Save);
        save->path = String("user://farm") + String::num_int64(++number) + String(".json");
        WorldOptions::get() = WorldOptions();
    }
    void TearDown() override {
        close();
        memdelete(save);
        WorldOptions::get() = WorldOptions();
    }

    // Builds the farm of the save's document.
    template <class W = World>
    void open() {
        close();
        world = add<W>();
        for (int i = 0; i < 5000 && !world->build_step(); i++) {
            step();
        }
        ASSERT_TRUE(world->is_built());
    }
    void close() {
        if (world != nullptr) {
            world->queue_free();
            world = nullptr;
            step(2);
        }
    }
    // The farm as it lies in the file.
    void reopen() {
        close();
        save->read();
        open();
    }

    Save *save = nullptr;
    World *world = nullptr;
};

} // namespace tilm
