#pragma once
// The resource form of the prim cache: shape key to surface arrays of one primitive.

#include <godot_cpp/classes/resource.hpp>
#include <godot_cpp/variant/dictionary.hpp>

namespace tilm {
using namespace godot;

class PrimStore : public Resource {
    GDCLASS(PrimStore, Resource)

protected:
    static void _bind_methods();

public:
    void set_shapes(const Dictionary &v) { shapes = v; }
    Dictionary get_shapes() const { return shapes; }

private:
    Dictionary shapes;
};

} // namespace tilm
