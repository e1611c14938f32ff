#pragma once
// What a farm writes to the log about itself: frame figures, who is at work, goods and money a minute.

#include <cstdint>

#include "game/shell/flow_log.h"

namespace tilm {

class World;

class FarmReport {
public:
    explicit FarmReport(World &world) : world(world) {}

    // One frame of `delta` seconds. `bot`: the bot plays, so that long frames are counted and money is told.
    void step(double delta, bool bot);

    FlowLog flow;

private:
    World &world;

    void frame_line() const;
    void busy_line() const;
    void money_lines();
    void check_books();

    double clock = 0;
    int count = 0;
    int long_frames = 0;
    double longest = 0;
};

} // namespace tilm
