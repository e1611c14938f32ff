#pragma once
// Feeds the shadow culling of the running farm with every piece of geometry below it, and draws soft blobs under
// people, animals and buildings while the sun throws no shadow.

#include <cstdint>
#include <vector>

#include "game/art/blob_shadows.h"
#include "glebworks/shadow_cull_core.h"

namespace tilm {
using namespace godot;

class ShadowCull : public ShadowCullCore {
    GDCLASS(ShadowCull, ShadowCullCore)

public:
    void _ready() override;
    void _process(double delta) override;

protected:
    static void _bind_methods() {}

private:
    std::vector<uint64_t> fresh; // added since the last frame
    BlobShadows blobs;

    void note(Node *node);
    void note_below(Node *node);
    void examine(uint64_t id, const Node *root);
};

} // namespace tilm
