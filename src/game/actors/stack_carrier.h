#pragma once
// The stack of a person: adds the count signs and the ropes of led calves.

#include <vector>

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>

#include "farm_items/stack_core.h"

namespace tilm {
using namespace godot;

class StackCarrier : public StackCore {
    GDCLASS(StackCarrier, StackCore)

public:
    void _count_sign() override;
    void _animal_sign(int animals) override;
    // Rope `i` from a to b, both global.
    void _rope(int i, const Vector3 &a, const Vector3 &b);
    // Hides the ropes from number `n` on.
    void _ropes(int n);

    int get_rope_count() const;
    String get_sign_text() const;        // "" while hidden
    String get_animal_sign_text() const; // "" while hidden

protected:
    static void _bind_methods();

private:
    Label3D *sign = nullptr;
    Label3D *animal_label = nullptr;
    int shown_count = -1;
    int shown_animals = -1;
    std::vector<MeshInstance3D *> ropes;
};

} // namespace tilm
