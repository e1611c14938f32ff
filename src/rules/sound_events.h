#pragma once
// The table of all sound events: how each sounds, on which bus, and how often it may be heard.

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tilm::rules {

enum class Bus : unsigned char { music, ambience, animals, feedback, ui, jingles, voice };
inline constexpr int bus_count = 7;

struct BusRow {
    std::string_view name;  // bus name in the mixer
    std::string_view group; // volume group: music, ambience, effects or voice
    float base_db;
    int voices; // players kept ready, 0 for buses that are not played by events
};

// In the order of Bus.
const std::array<BusRow, bus_count> &buses();

struct SoundEvent {
    std::string_view name;
    Bus bus = Bus::feedback;
    std::string_view src = {};   // file stem, empty: the name
    int n = 0;                   // numbered files <stem>_1 .. <stem>_n, 0: the stem alone
    std::string_view files = {}; // explicit stems separated by blanks, instead of src and n
    float db = 0.0f;
    float pitch = 1.0f;
    float rand = 0.0f;   // pitch factor varies by +-rand
    float cd = 0.05f;    // least seconds between two plays
    float src_cd = 0.0f; // the same for one source, 0: no such limit
    int voices = 1;      // plays of this event that may sound at once
    int prio = 1;        // 0 low, 1 normal, 2 high
    float near = 10.0f;  // full level up to this distance
    float maxd = 0.0f;   // heard up to this distance, 0: not given, 18 stands in
    float far_db = 0.0f;
    float far_cd = 0.0f;              // above 0: the event has a far version
    std::array<float, 8> streak = {}; // pitch steps of quick series, ends at the first 0
    int tier = 0;                     // above 0: a jingle
    float duck = 0.0f;                // dB taken off the music, negative
    bool alert = false;
    bool loop = false;   // plain loop
    bool loop3d = false; // positioned loop

    bool has_far() const { return far_cd > 0.0f; }
    float reach() const { return maxd > 0.0f ? maxd : 18.0f; }
    bool is_jingle() const { return tier > 0; }
    int streak_steps() const;
};

std::span<const SoundEvent> sound_events();
const SoundEvent *find_sound_event(std::string_view name);

// All file stems that a row may play.
std::vector<std::string> sound_stems(const SoundEvent &event);

} // namespace tilm::rules
