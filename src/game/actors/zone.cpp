#include "game/actors/zone.h"

namespace tilm {

Ref<Zone> Zone::make(const String &mode, PileCore *pile, const Vector3 &pos, const Vector2 &size, const String &group) {
    Ref<Zone> zone;
    zone.instantiate();
    zone->set_mode(mode);
    zone->set_pile(pile);
    zone->set_pos(pos);
    zone->set_size(size);
    zone->set_group(group);
    return zone;
}

} // namespace tilm
