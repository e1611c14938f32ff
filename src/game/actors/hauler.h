#pragma once
// A hired carrier between two places.

#include "farm_shop/hauler_brain.h"
#include "game/actors/walker.h"

namespace tilm {
using namespace godot;

class Hauler : public Walker {
    GDCLASS(Hauler, Walker)

public:
    // Before it enters the tree. `name` is its id ("egg_hauler#1"), `zones` the farm's shared list, `kinds` empty for
    // whatever the destination accepts.
    void setup(const String &name, const Array &kinds, const String &dst, const Vector3 &pos, const Array &zones);
    void _ready() override;

    bool can_break() override;
    bool needed() override;
    void before_break() override;
    bool quiet() override;
    void after_break() override;

    Ref<HaulerBrain> mind() const { return hauler_brain; }
    String get_dst() const { return dst; }
    void reset();

protected:
    static void _bind_methods();

private:
    Array kinds;
    String dst;
    Vector3 home;
    Array zones;
    Ref<HaulerBrain> hauler_brain;
};

} // namespace tilm
