#include "fiber.h"

#include <sys/mman.h>
#include <ucontext.h>

#include <cstdint>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace tilm::test {

namespace {
constexpr size_t STACK_SIZE = 16U * 1024U * 1024U;
} // namespace

struct Fiber::State {
    std::function<void()> body;
    ucontext_t inside = {};
    ucontext_t outside = {};
    void *stack = nullptr;
    bool done = false;
    const void *outer_stack = nullptr;
    size_t outer_size = 0;

    // The sanitizer has to know of every change of stack.
    void switch_to(ucontext_t &from, ucontext_t &to, const void *bottom, size_t size) {
#if defined(__SANITIZE_ADDRESS__)
        void *fake = nullptr;
        __sanitizer_start_switch_fiber(&fake, bottom, size);
        swapcontext(&from, &to);
        __sanitizer_finish_switch_fiber(fake, nullptr, nullptr);
#else
        (void)bottom;
        (void)size;
        swapcontext(&from, &to);
#endif
    }

    static void enter(uint32_t high, uint32_t low) {
        auto *self = reinterpret_cast<State *>((static_cast<uintptr_t>(high) << 32U) | low);
#if defined(__SANITIZE_ADDRESS__)
        __sanitizer_finish_switch_fiber(nullptr, &self->outer_stack, &self->outer_size);
#endif
        self->body();
        self->done = true;
        self->switch_to(self->inside, self->outside, self->outer_stack, self->outer_size);
    }
};

Fiber::Fiber(std::function<void()> body) : state(std::make_unique<State>()) {
    state->body = std::move(body);
    state->stack = mmap(nullptr, STACK_SIZE, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK | MAP_NORESERVE, -1, 0);
    if (state->stack == MAP_FAILED) {
        std::abort();
    }
    getcontext(&state->inside);
    state->inside.uc_stack.ss_sp = state->stack;
    state->inside.uc_stack.ss_size = STACK_SIZE;
    state->inside.uc_link = nullptr;
    const auto address = reinterpret_cast<uintptr_t>(state.get());
    makecontext(&state->inside, reinterpret_cast<void (*)()>(&State::enter), 2, static_cast<uint32_t>(address >> 32U),
                static_cast<uint32_t>(address));
}

Fiber::~Fiber() {
    munmap(state->stack, STACK_SIZE);
}

void Fiber::resume() {
    if (!state->done) {
        state->switch_to(state->outside, state->inside, state->stack, STACK_SIZE);
    }
}

void Fiber::pause() {
    state->switch_to(state->inside, state->outside, state->outer_stack, state->outer_size);
}

bool Fiber::done() const {
    return state->done;
}

} // namespace tilm::test
