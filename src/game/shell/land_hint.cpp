#include "game/shell/land_hint.h"

#include "game/data/farm_data.h"
#include "game/interface/hud.h"
#include "game/shell/world.h"
#include "rules/money_text.h"
#include "rules/tiles.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr double LOOK_SECONDS = 2.5;
constexpr float LOOK_AHEAD = 2.2f; // the camera looks before the tile

void travel(World &world, const Dictionary &land) {
    if (world.hud() != nullptr) {
        world.hud()->close_panel();
    }
    const Variant pad = land.get("pad", Variant());
    const Vector2 at = pad.get_type() == Variant::VECTOR2 ? as<Vector2>(pad) : Vector2(land.get("pos", Vector2()));
    world._focus(Vector3(at.x, 0, at.y + LOOK_AHEAD), LOOK_SECONDS);
}

String waits_for(World &world, const Dictionary &land) {
    const String title = read_text(land, "title");
    const Array needs = read_list(land, "req");
    for (int64_t i = 0; i < needs.size(); ++i) {
        const rules::TileNeed need = rules::tile_need(String(needs[i]).utf8().get_data());
        const String id = String::utf8(need.id.c_str());
        if (world.level_of(id) < need.level) {
            return vformat("NO FREE LAND: %s OPENS AFTER %s LEVEL %d", title,
                           read_text(FarmData::entry_by_id(id), "title", id), need.level);
        }
    }
    // All that it needs stands: only the farm's own level is missing.
    return vformat("NO FREE LAND: %s OPENS AFTER %s LEVEL %d", title, "MY FARM",
                   FarmData::unlock_level(read_text(land, "id")));
}

} // namespace

String land_hint(World &world, bool jump) {
    const Array plan = FarmData::plan();
    Dictionary locked;
    for (int64_t i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        const String id = read_text(entry, "id");
        if (read_text(entry, "kind") != "land" || world.level_of(id) > 0) {
            continue;
        }
        if (world.unlocked(id)) {
            if (jump) {
                travel(world, entry);
            }
            return vformat("NO FREE LAND: BUY %s FOR $%s", read_text(entry, "title"),
                           String(rules::group_digits(world.price(id)).c_str()));
        }
        if (locked.is_empty()) {
            locked = entry;
        }
    }
    return locked.is_empty() ? String("NO FREE LAND: THE WHOLE FARM IS BUILT") : waits_for(world, locked);
}

} // namespace tilm
