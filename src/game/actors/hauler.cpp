#include "game/actors/hauler.h"

#include "game/actors/person_look.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {

void Hauler::setup(const String &name, const Array &carried, const String &to, const Vector3 &pos,
                   const Array &all_zones) {
    id = name;
    kinds = carried;
    dst = to;
    home = pos;
    zones = all_zones;
    set_name(name.replace("#", "_"));
    set_position(pos);
}

void Hauler::_ready() {
    if (in_editor()) {
        set_process(false);
        return;
    }
    build(PersonLook::of_role(PersonLook::hauler_role(dst)));
    make_staff(3.3, 5);
    hauler_brain.instantiate();
    hauler_brain->set_zones(zones);
    hauler_brain->set_kinds(kinds);
    hauler_brain->set_dst_group(dst);
    hauler_brain->set_trough_half(20);
    hauler_brain->set_sfx(Sfx::get());
    HaulerBrain::set_road_z(1.2);
    set_brain(hauler_brain);
}

bool Hauler::can_break() {
    return hauler_brain.is_null() || hauler_brain->can_break();
}

bool Hauler::needed() {
    return hauler_brain.is_valid() && hauler_brain->feed_busy();
}

void Hauler::before_break() {
    if (hauler_brain.is_valid()) {
        hauler_brain->drop_claims();
    }
}

bool Hauler::quiet() {
    return hauler_brain.is_valid() && hauler_brain->quiet();
}

void Hauler::after_break() {
    reset();
}

void Hauler::reset() {
    clear_path();
    if (hauler_brain.is_valid()) {
        hauler_brain->reset();
    }
}

void Hauler::_bind_methods() {
    ClassDB::bind_method(D_METHOD("setup", "name", "kinds", "dst", "pos", "zones"), &Hauler::setup);
    ClassDB::bind_method(D_METHOD("reset"), &Hauler::reset);
    ClassDB::bind_method(D_METHOD("get_dst"), &Hauler::get_dst);
}

} // namespace tilm
