#pragma once
// Decides which asked-for sounds are played, so that a busy farm does not become noise. Knows no audio engine: it is
// told the time, answers with what to play, and is told which voices end.

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "rules/sound_events.h"

namespace tilm::rules {

enum class Drop : unsigned char { none, missing, cooldown, source, alert, cap, voices, queue, far };
inline constexpr int drop_count = 9;
std::string_view drop_name(Drop drop); // as counted in the log: "cd" for cooldown, source and alert

// One request. Times are seconds on the caller's clock, distances in world units.
struct SoundAsk {
    const SoundEvent *event = nullptr;
    bool has_file = true;
    double now = 0.0;
    uint64_t source = 0; // 0: from no particular source
    bool positioned = false;
    bool far = false;     // the quiet version for sounds beyond the near range
    float jitter = -1.0f; // negative: the row's rand
    float vol_db = 0.0f;
    float min_gap = -1.0f; // negative: the row's cd (or far_cd)
};

struct SoundGo {
    Drop drop = Drop::none;
    float pitch = 1.0f;
    float db = 0.0f;
    int steal = -1;           // voice id to stop first, -1: none
    bool stop_jingle = false; // the sounding jingle gives way
    bool queued = false;      // a jingle that waits: nothing to play now
    bool positioned = false;

    bool plays() const { return drop == Drop::none && !queued; }
};

// How far-off sounds are heard.
struct RangeGo {
    Drop drop = Drop::none;
    bool far = false;
    bool positioned = true;
    float vol_db = 0.0f;
};
RangeGo range_rule(const SoundEvent &event, bool has_listener, float distance);

class SoundMixer {
public:
    static constexpr int max_voices = 16;
    static constexpr double alert_gap = 4.0;

    explicit SoundMixer(uint32_t seed = 1) : random(seed) {}

    SoundGo ask(const SoundAsk &ask);

    // A play that ask() allowed has started as voice `id` and lasts `seconds`.
    void started(int id, const SoundAsk &ask, double seconds);
    void ended(int id);
    // Drops voices whose time is over; the caller's players may end a little earlier or later.
    void step(double now);
    // The waiting jingle whose time has come, null if none; taking it empties the slot.
    const SoundEvent *due_jingle(double now);

    int sounding() const { return static_cast<int>(voices.size()); }
    int sounding_of(const SoundEvent *event) const;
    const SoundEvent *waiting_jingle() const { return queued; }
    int current_jingle_voice() const { return jingle ? jingle_voice : -1; }
    uint64_t plays() const { return played; }
    uint64_t drops(Drop drop) const { return dropped[static_cast<size_t>(drop)]; }
    uint64_t drops() const;
    uint64_t drops_named(std::string_view reason) const; // as in drop_name()
    void note_drop(Drop drop) { ++dropped[static_cast<size_t>(drop)]; }
    int pick(int count); // random index below count

private:
    struct Voice {
        int id;
        const SoundEvent *event;
        double start;
        double end;
        bool may_steal;
    };
    struct Series {
        double last = -1000.0;
        int step = 0;
        int run = 0;
    };

    SoundGo refuse(Drop drop);
    bool over_cap(const SoundAsk &ask);

    std::vector<Voice> voices;
    std::unordered_map<const SoundEvent *, double> last_play;
    std::unordered_map<const SoundEvent *, double> last_far;
    std::unordered_map<const SoundEvent *, std::unordered_map<uint64_t, double>> last_source;
    std::unordered_map<const SoundEvent *, Series> series;
    std::vector<double> recent; // times of capped plays within the last second
    double last_alert = -1000.0;
    const SoundEvent *jingle = nullptr;
    int jingle_voice = -1;
    double jingle_start = 0.0;
    double jingle_end = 0.0;
    const SoundEvent *queued = nullptr;
    std::array<uint64_t, drop_count> dropped{};
    uint64_t played = 0;
    std::mt19937 random;
};

} // namespace tilm::rules
