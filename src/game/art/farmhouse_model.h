#pragma once
// The family's house, growing by stages.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>

namespace tilm {
using namespace godot;

class FarmhouseModel : public RefCounted {
    GDCLASS(FarmhouseModel, RefCounted)

protected:
    static void _bind_methods() {}

public:
    // Stage 0..3, about 6.5 wide, 4.5 deep; front to +z.
    static Node3D *build(int stage);
};

} // namespace tilm
