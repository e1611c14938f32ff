#pragma once
// A pile with the sign that tells how many goods it holds when not all are shown.

#include <godot_cpp/classes/label3d.hpp>

#include "farm_items/pile_core.h"

namespace tilm {
using namespace godot;

class Pile : public PileCore {
    GDCLASS(Pile, PileCore)

public:
    void _count_sign() override;
    String get_sign_text() const; // "" while hidden

protected:
    static void _bind_methods();

private:
    Label3D *sign = nullptr;
    int shown = -1; // count on the sign, -1 while hidden
};

} // namespace tilm
