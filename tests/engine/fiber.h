#pragma once
// A second stack in the same thread, so that a test body can pause while the engine runs a frame.

#include <functional>
#include <memory>

namespace tilm::test {

class Fiber {
public:
    explicit Fiber(std::function<void()> body);
    ~Fiber();
    Fiber(const Fiber &) = delete;
    Fiber &operator=(const Fiber &) = delete;

    void resume(); // from outside: runs the body up to its next pause or to its end
    void pause();  // from inside
    bool done() const;

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace tilm::test
