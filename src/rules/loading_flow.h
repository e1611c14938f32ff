#pragma once
// The loading screen's course: which stage comes when, and a progress display that never jumps.

namespace tilm::rules {

class LoadingFlow {
public:
    enum class Stage { WarmUp = 0, HandOver = 1, Settle = 2, Fading = 3, WorldBuild = 4 };
    // What the caller must do now.
    enum class Order { None, MakeWorld, Fade };

    void plan_tasks(int count) { total = count + 4; }
    void task_done() { ++done; }

    // One frame's step. `tasks_left`: of the warm-up plan. `world_ready`: only in the world build, true when the world
    // says that it is built or when there is none.
    Order step(bool tasks_left, bool world_ready);
    // One frame's move of the display. `world`: a world is being built, `world_progress` its share, 0..0.92.
    void show(double delta, bool world, double world_progress);

    Stage stage() const { return now; }
    double shown() const { return display; } // 0..1
    int percent() const;

private:
    double plan_target() const;

    Stage now = Stage::WarmUp;
    int done = 0;
    int total = 1;
    int wait = 0;
    double display = 0.0;
    double base = 0.0; // progress at which the world build began
};

} // namespace tilm::rules
