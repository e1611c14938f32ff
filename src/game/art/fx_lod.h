#pragma once
// Switches particles off while they are out of view, and trims meshes that keep the engine's default detail.

#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/variant/dictionary.hpp>

#include "fields.h"

namespace tilm {
using namespace godot;

class FxLod : public Node {
    GDCLASS(FxLod, Node)

public:
    void _ready() override;
    void _process(double delta) override;

    // Trims the mesh of a node that may have got it just after it was added.
    void _late(int64_t id);

    TM_FIELD(Dictionary, tracked, Dictionary()) // instance id of CPUParticles3D -> true
    TM_FIELD(double, timer, 0.0)                // seconds since the last look

protected:
    static void _bind_methods();

private:
    void take(Node *node);
    void take_below(Node *node);
    void look();
};

} // namespace tilm
