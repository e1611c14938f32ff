// Money for the time that the game was closed.

#include <cmath>

#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/actors/player.h"
#include "game/interface/hud.h"
#include "game/kit/ui.h"
#include "game/ports/store.h"
#include "game/shell/world.h"
#include "game/shell/world_options.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/offline.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr double DIALOG_DELAY = 1.0;

} // namespace

void World::_offline_check(const Dictionary &doc) {
    if (Store *store = Store::current(); store && store->arguments().has("--calm")) {
        return;
    }
    earn_rate = read_real(doc, "earn_rate");
    int64_t away = WorldOptions::get().away;
    if (away < 0) {
        const int64_t saved_at = read_whole(doc, "saved_at");
        if (saved_at <= 0) {
            return;
        }
        const double now = Time::get_singleton()->get_unix_time_from_system();
        away = static_cast<int64_t>(std::floor(now - static_cast<double>(saved_at)));
    }
    WorldOptions::get().away = -1;
    if (bot) {
        return;
    }
    const rules::OfflinePay pay = rules::offline_pay(away, total_levels(), earn_rate);
    if (pay.paid <= 0) {
        return;
    }
    UtilityFunctions::print(vformat("TILMARCH offline away=%d rate=%.2f paid=%d", pay.seconds, pay.rate, pay.paid));
    gain(pay.paid, player->get_position() + Vector3(0, 3, 0));
    _after_cine(DIALOG_DELAY, UI::callback(this, [this, pay] {
                    Sfx::sound(TM_NAME("welcome_back"));
                    hud_node->show_offline(pay.seconds, pay.paid);
                }));
}

} // namespace tilm
