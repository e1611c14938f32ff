#include "rules/sound_events.h"

#include <string>
#include <unordered_map>

namespace tilm::rules {
namespace {

constexpr std::array<BusRow, bus_count> bus_rows = {{
    {"Music", "music", 0.0f, 0},
    {"Ambience", "ambience", -6.0f, 3},
    {"Animals", "ambience", -4.0f, 3},
    {"Feedback", "effects", -6.0f, 6},
    {"UI", "effects", -6.0f, 3},
    {"Jingles", "effects", -6.0f, 3},
    {"Voice", "voice", 0.0f, 0},
}};

constexpr std::array<float, 8> rising = {1.0f, 1.06f, 1.12f, 1.19f, 1.26f, 1.33f, 1.41f, 1.5f};
constexpr std::array<float, 8> gentle = {1.0f, 1.04f, 1.08f, 1.12f, 1.16f};

constexpr SoundEvent rows[] = {
    // What the player's own hands do.
    {.name = "item_pick", .n = 3, .rand = 0.01f, .cd = 0.09f, .voices = 2, .streak = gentle},
    {.name = "item_drop", .n = 3, .rand = 0.01f, .cd = 0.09f, .voices = 2, .streak = gentle},
    {.name = "stack_full", .db = -2.0f, .cd = 1.5f, .prio = 2},
    {.name = "coin_pick", .n = 3, .rand = 0.01f, .cd = 0.12f, .voices = 2, .streak = rising},
    {.name = "coin_all", .cd = 0.5f, .prio = 2},
    {.name = "item_give", .n = 3, .rand = 0.02f, .cd = 0.09f, .voices = 2, .streak = gentle},
    // What the staff does, low in the mix.
    {.name = "worker_pick", .src = "item_pick", .n = 3, .db = -6.0f, .rand = 0.04f, .cd = 0.15f, .src_cd = 0.5f,
     .voices = 2, .prio = 0, .near = 4.0f, .maxd = 9.0f},
    {.name = "worker_drop", .src = "item_drop", .n = 3, .db = -6.0f, .rand = 0.04f, .cd = 0.15f, .src_cd = 0.5f,
     .voices = 2, .prio = 0, .near = 4.0f, .maxd = 9.0f},
    {.name = "sale", .n = 2, .rand = 0.03f, .cd = 0.02f, .src_cd = 0.35f, .voices = 2, .near = 9.0f, .far_db = -15.0f,
     .far_cd = 1.25f},
    {.name = "money_in", .rand = 0.02f, .cd = 0.15f, .voices = 2},
    {.name = "money_out", .rand = 0.02f, .cd = 0.15f, .voices = 2},
    {.name = "build_trickle", .db = -4.0f, .cd = 0.05f, .loop = true},
    {.name = "fox_steal", .cd = 1.0f, .prio = 2, .near = 8.0f, .maxd = 24.0f},
    {.name = "sit", .db = -4.0f, .cd = 0.5f},
    // Steps forward.
    {.name = "upgrade_done", .bus = Bus::jingles, .cd = 0.6f, .prio = 2, .tier = 1, .duck = -3.0f},
    {.name = "staff_level", .bus = Bus::feedback, .db = -3.0f, .rand = 0.02f, .cd = 1.0f, .src_cd = 3.0f, .near = 8.0f,
     .maxd = 18.0f},
    // The interface.
    {.name = "ui_tap", .bus = Bus::ui, .rand = 0.02f, .cd = 0.04f, .voices = 2, .prio = 2},
    {.name = "ui_open", .bus = Bus::ui, .cd = 0.1f, .prio = 2},
    {.name = "ui_toggle_on", .bus = Bus::ui, .cd = 0.05f, .prio = 2},
    {.name = "ui_toggle_off", .bus = Bus::ui, .cd = 0.05f, .prio = 2},
    {.name = "ui_deny", .bus = Bus::ui, .cd = 0.3f, .prio = 2},
    {.name = "travel", .bus = Bus::ui, .cd = 0.5f, .prio = 2},
    {.name = "gift_rattle", .bus = Bus::ui, .db = -2.0f, .rand = 0.03f, .cd = 0.3f},
    // Jingles, by rank.
    {.name = "build_done", .bus = Bus::jingles, .cd = 0.6f, .prio = 2, .tier = 2, .duck = -6.0f},
    {.name = "jingle_tut", .bus = Bus::jingles, .cd = 1.0f, .prio = 2, .tier = 1, .duck = -3.0f},
    {.name = "jingle_small", .bus = Bus::jingles, .cd = 1.0f, .prio = 2, .tier = 1, .duck = -3.0f},
    {.name = "jingle_mission", .bus = Bus::jingles, .cd = 1.0f, .prio = 2, .tier = 2, .duck = -6.0f},
    {.name = "gift_arrive", .bus = Bus::jingles, .cd = 1.0f, .prio = 2, .tier = 1, .duck = -3.0f},
    {.name = "rush_start", .bus = Bus::jingles, .cd = 2.0f, .prio = 2, .tier = 2, .duck = -6.0f},
    {.name = "vip_announce", .bus = Bus::jingles, .cd = 2.0f, .prio = 2, .tier = 2, .duck = -6.0f},
    {.name = "welcome_back", .bus = Bus::jingles, .cd = 2.0f, .prio = 2, .tier = 1, .duck = -4.0f},
    {.name = "season_spring", .bus = Bus::jingles, .cd = 2.0f, .prio = 2, .tier = 2, .duck = -6.0f},
    {.name = "season_summer", .bus = Bus::jingles, .cd = 2.0f, .prio = 2, .tier = 2, .duck = -6.0f},
    {.name = "season_autumn", .bus = Bus::jingles, .cd = 2.0f, .prio = 2, .tier = 2, .duck = -6.0f},
    {.name = "season_winter", .bus = Bus::jingles, .cd = 2.0f, .prio = 2, .tier = 2, .duck = -6.0f},
    {.name = "jingle_star", .bus = Bus::jingles, .cd = 1.0f, .prio = 2, .tier = 2, .duck = -6.0f},
    {.name = "land_open", .bus = Bus::jingles, .cd = 1.0f, .prio = 2, .tier = 3, .duck = -8.0f},
    {.name = "jingle_big", .bus = Bus::jingles, .cd = 1.0f, .prio = 2, .tier = 3, .duck = -8.0f},
    {.name = "jingle_victory", .bus = Bus::jingles, .cd = 2.0f, .prio = 2, .tier = 4, .duck = -12.0f},
    // Events of the farm.
    {.name = "toot", .rand = 0.04f, .cd = 0.4f, .src_cd = 2.0f, .near = 8.0f, .maxd = 26.0f},
    {.name = "truck_hurry", .cd = 1.0f, .prio = 2, .near = 10.0f, .maxd = 30.0f},
    {.name = "golden_egg_spawn", .cd = 1.0f, .prio = 2, .near = 10.0f, .maxd = 24.0f},
    {.name = "dusk", .bus = Bus::ambience, .db = -2.0f, .cd = 10.0f},
    {.name = "lunch_whistle", .cd = 10.0f, .prio = 2},
    {.name = "alert_soft", .cd = 1.0f, .prio = 2, .duck = -3.0f, .alert = true},
    {.name = "alert_loss", .cd = 1.0f, .prio = 2, .duck = -5.0f, .alert = true},
    {.name = "stall_losing", .db = -3.0f, .cd = 2.0f, .src_cd = 20.0f, .alert = true},
    {.name = "fox", .bus = Bus::animals, .db = -4.0f, .rand = 0.04f, .cd = 2.0f, .src_cd = 6.0f, .prio = 2,
     .near = 8.0f, .maxd = 26.0f},
    // Weather and far things.
    {.name = "owl", .bus = Bus::ambience, .n = 2, .db = -8.0f, .rand = 0.04f, .cd = 12.0f, .prio = 0},
    {.name = "thunder_near", .bus = Bus::ambience, .db = 0.0f, .rand = 0.06f, .cd = 1.0f, .prio = 2},
    {.name = "thunder_far", .bus = Bus::ambience, .n = 2, .db = -6.0f, .rand = 0.08f, .cd = 1.0f, .prio = 1},
    {.name = "rooster", .bus = Bus::animals, .db = -6.0f, .rand = 0.03f, .cd = 20.0f, .prio = 1},
    {.name = "crow_far", .bus = Bus::ambience, .n = 2, .db = -12.0f, .rand = 0.05f, .cd = 15.0f, .prio = 0},
    // Animals and what they give.
    {.name = "chicken_cluck", .bus = Bus::animals, .n = 3, .db = -11.0f, .rand = 0.06f, .cd = 2.5f, .src_cd = 9.0f,
     .prio = 0, .near = 3.0f, .maxd = 14.0f},
    {.name = "hen_brood", .bus = Bus::animals, .n = 2, .db = -12.0f, .rand = 0.05f, .cd = 5.0f, .src_cd = 15.0f,
     .prio = 0, .near = 3.0f, .maxd = 14.0f},
    {.name = "cow_moo", .bus = Bus::animals, .n = 3, .db = -11.0f, .rand = 0.05f, .cd = 4.0f, .src_cd = 15.0f,
     .voices = 1, .prio = 0, .near = 3.0f, .maxd = 18.0f},
    {.name = "calf_moo", .bus = Bus::animals, .n = 2, .db = -11.0f, .rand = 0.05f, .cd = 4.0f, .src_cd = 15.0f,
     .prio = 0, .near = 3.0f, .maxd = 18.0f},
    {.name = "sheep_baa", .bus = Bus::animals, .n = 3, .db = -11.0f, .rand = 0.06f, .cd = 4.0f, .src_cd = 14.0f,
     .prio = 0, .near = 3.0f, .maxd = 18.0f},
    {.name = "lay_egg", .n = 2, .db = -8.0f, .rand = 0.05f, .cd = 0.25f, .src_cd = 2.0f, .voices = 2, .prio = 0,
     .near = 4.0f, .maxd = 11.0f},
    {.name = "lay_milk", .db = -9.0f, .rand = 0.05f, .cd = 0.3f, .src_cd = 2.0f, .prio = 0, .near = 4.0f,
     .maxd = 11.0f},
    {.name = "fish_splash", .n = 3, .db = -8.0f, .rand = 0.06f, .cd = 0.4f, .src_cd = 2.5f, .prio = 0, .near = 4.0f,
     .maxd = 13.0f},
    {.name = "grain_pour", .db = -9.0f, .rand = 0.04f, .cd = 0.4f, .src_cd = 2.0f, .prio = 0, .near = 4.0f,
     .maxd = 12.0f},
    {.name = "scissors_snip", .n = 2, .db = -9.0f, .rand = 0.05f, .cd = 0.3f, .src_cd = 1.5f, .prio = 0, .near = 4.0f,
     .maxd = 11.0f},
    {.name = "chop", .n = 2, .db = -9.0f, .rand = 0.05f, .cd = 0.25f, .src_cd = 0.8f, .prio = 0, .near = 4.0f,
     .maxd = 12.0f},
    {.name = "crate_thud", .n = 2, .db = -8.0f, .rand = 0.06f, .cd = 0.25f, .src_cd = 1.0f, .prio = 0, .near = 4.0f,
     .maxd = 13.0f},
    {.name = "wood_creak", .n = 2, .db = -11.0f, .rand = 0.06f, .cd = 3.0f, .src_cd = 8.0f, .prio = 0, .near = 4.0f,
     .maxd = 12.0f},
    {.name = "press_squeak", .db = -11.0f, .rand = 0.06f, .cd = 2.0f, .src_cd = 6.0f, .prio = 0, .near = 4.0f,
     .maxd = 12.0f},
    // Pets.
    {.name = "dog_bark", .bus = Bus::animals, .n = 2, .db = -7.0f, .rand = 0.05f, .cd = 0.5f, .src_cd = 1.5f,
     .prio = 1, .near = 6.0f, .maxd = 22.0f},
    {.name = "dog_woof_soft", .bus = Bus::animals, .db = -10.0f, .rand = 0.05f, .cd = 3.0f, .src_cd = 8.0f, .prio = 0,
     .near = 4.0f, .maxd = 14.0f},
    {.name = "dog_pant", .bus = Bus::animals, .db = -14.0f, .rand = 0.04f, .cd = 4.0f, .src_cd = 10.0f, .prio = 0,
     .near = 3.0f, .maxd = 8.0f},
    {.name = "cat_meow", .bus = Bus::animals, .n = 2, .db = -10.0f, .rand = 0.06f, .cd = 4.0f, .src_cd = 10.0f,
     .prio = 0, .near = 4.0f, .maxd = 14.0f},
    {.name = "pig_oink", .bus = Bus::animals, .n = 2, .db = -10.0f, .rand = 0.06f, .cd = 3.0f, .src_cd = 8.0f,
     .prio = 0, .near = 4.0f, .maxd = 14.0f},
    {.name = "pig_snort", .bus = Bus::animals, .db = -12.0f, .rand = 0.06f, .cd = 3.0f, .src_cd = 8.0f, .prio = 0,
     .near = 3.0f, .maxd = 11.0f},
    {.name = "horse_neigh", .bus = Bus::animals, .db = -8.0f, .rand = 0.04f, .cd = 5.0f, .src_cd = 12.0f, .prio = 1,
     .near = 5.0f, .maxd = 20.0f},
    {.name = "horse_neigh_far", .bus = Bus::ambience, .src = "horse_neigh", .db = -16.0f, .rand = 0.04f, .cd = 20.0f,
     .prio = 0},
    // Trucks and carts.
    {.name = "truck_arrive", .db = -6.0f, .rand = 0.03f, .cd = 0.6f, .src_cd = 3.0f, .near = 7.0f, .maxd = 24.0f},
    {.name = "truck_air_brake", .db = -9.0f, .rand = 0.04f, .cd = 0.6f, .src_cd = 3.0f, .prio = 0, .near = 6.0f,
     .maxd = 18.0f},
    {.name = "truck_leave", .db = -7.0f, .rand = 0.03f, .cd = 0.6f, .src_cd = 3.0f, .near = 7.0f, .maxd = 24.0f},
    {.name = "truck_idle", .db = -14.0f, .cd = 0.1f, .prio = 0, .near = 5.0f, .maxd = 16.0f, .loop3d = true},
    {.name = "cart_roll", .db = -12.0f, .cd = 0.1f, .prio = 0, .near = 4.0f, .maxd = 12.0f, .loop3d = true},
    {.name = "horse_steps", .db = -10.0f, .cd = 0.1f, .prio = 0, .near = 4.0f, .maxd = 12.0f, .loop3d = true},
    // Places.
    {.name = "amb_bees", .bus = Bus::ambience, .db = -10.0f, .cd = 0.1f, .prio = 0, .near = 4.0f, .maxd = 13.0f,
     .loop3d = true},
    {.name = "amb_pond", .bus = Bus::ambience, .db = -10.0f, .cd = 0.1f, .prio = 0, .near = 5.0f, .maxd = 15.0f,
     .loop3d = true},
    {.name = "oven_hum_loop", .bus = Bus::ambience, .db = -13.0f, .cd = 0.1f, .prio = 0, .near = 4.0f, .maxd = 12.0f,
     .loop3d = true},
    {.name = "mill_loop", .bus = Bus::ambience, .db = -11.0f, .cd = 0.1f, .prio = 0, .near = 5.0f, .maxd = 14.0f,
     .loop3d = true},
    {.name = "loom_loop", .bus = Bus::ambience, .db = -12.0f, .cd = 0.1f, .prio = 0, .near = 4.0f, .maxd = 12.0f,
     .loop3d = true},
    {.name = "grill_sizzle_loop", .bus = Bus::ambience, .db = -12.0f, .cd = 0.1f, .prio = 0, .near = 4.0f,
     .maxd = 12.0f, .loop3d = true},
    {.name = "press_loop", .bus = Bus::ambience, .db = -12.0f, .cd = 0.1f, .prio = 0, .near = 4.0f, .maxd = 12.0f,
     .loop3d = true},
};

} // namespace

const std::array<BusRow, bus_count> &buses() {
    return bus_rows;
}

int SoundEvent::streak_steps() const {
    int steps = 0;
    while (steps < static_cast<int>(streak.size()) && streak[static_cast<size_t>(steps)] > 0.0f) {
        ++steps;
    }
    return steps;
}

std::span<const SoundEvent> sound_events() {
    return rows;
}

const SoundEvent *find_sound_event(std::string_view name) {
    static const auto index = [] {
        std::unordered_map<std::string_view, const SoundEvent *> by_name;
        for (const SoundEvent &row : rows) {
            by_name.emplace(row.name, &row);
        }
        return by_name;
    }();
    const auto it = index.find(name);
    return it == index.end() ? nullptr : it->second;
}

std::vector<std::string> sound_stems(const SoundEvent &event) {
    std::vector<std::string> stems;
    std::string_view list = event.files;
    while (!list.empty()) {
        const size_t end = list.find(' ');
        stems.emplace_back(list.substr(0, end));
        list = end == std::string_view::npos ? std::string_view() : list.substr(end + 1);
    }
    if (!stems.empty()) {
        return stems;
    }
    const std::string stem(event.src.empty() ? event.name : event.src);
    if (event.n <= 0) {
        return {stem};
    }
    for (int i = 1; i <= event.n; ++i) {
        stems.push_back(stem + "_" + std::to_string(i));
    }
    return stems;
}

} // namespace tilm::rules
