#include "game/art/art_state.h"

#include <memory>

namespace tilm {
namespace {

std::unique_ptr<ArtState> &slot() {
    // Leaked on purpose: a static destructor would run after the engine has gone.
    static auto *state = new std::unique_ptr<ArtState>();
    return *state;
}

} // namespace

ArtState &art() {
    if (!slot()) {
        slot() = std::make_unique<ArtState>();
    }
    return *slot();
}

void release_art() {
    slot().reset();
}

} // namespace tilm
