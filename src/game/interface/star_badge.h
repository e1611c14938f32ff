#pragma once
// A five-pointed star on the interface: golden, dull, or golden from its foot up to a share, with a number or without.

#include <cstdint>

#include <godot_cpp/classes/control.hpp>

#include "game/interface/hud.h"

namespace tilm {

class Hud::StarBadge : public Control {
    GDCLASS(StarBadge, Control)

public:
    StarBadge();

    void set_number(int64_t n); // below 0: no number
    int64_t get_number() const { return number; }
    void set_lit(double share); // 0 .. 1
    double get_lit() const { return lit; }
    void jump(); // it has grown: a small leap

    void _draw() override;

protected:
    static void _bind_methods();

private:
    int64_t number = -1;
    double lit = 1.0;
};

} // namespace tilm
