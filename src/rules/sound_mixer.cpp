#include "rules/sound_mixer.h"

#include <algorithm>

namespace tilm::rules {
namespace {

constexpr double least_gap = 0.03;
constexpr double streak_gap = 0.4;
constexpr double jingle_swap = 0.3;  // a jingle this young still gives way to a better one
constexpr double jingle_pause = 0.4; // silence between two jingles
constexpr float streak_fall_db = 0.4f;
constexpr float streak_fall_most = 6.0f;

// Times are sums of frame lengths: a gap that is short by less than this counts as full.
constexpr double slack = 1e-6;

int cap_of(const SoundAsk &ask) {
    if (ask.far || ask.event->prio <= 0) {
        return 8;
    }
    return ask.event->prio == 1 ? 12 : -1;
}

bool capped_bus(Bus bus) {
    return bus == Bus::feedback || bus == Bus::animals || bus == Bus::ambience;
}

} // namespace

std::string_view drop_name(Drop drop) {
    switch (drop) {
    case Drop::none:
        return "none";
    case Drop::missing:
        return "missing";
    case Drop::cooldown:
    case Drop::source:
    case Drop::alert:
        return "cd";
    case Drop::cap:
        return "cap";
    case Drop::voices:
        return "voices";
    case Drop::queue:
        return "queue";
    case Drop::far:
        return "far";
    }
    return "none";
}

RangeGo range_rule(const SoundEvent &event, bool has_listener, float distance) {
    RangeGo go;
    if (!has_listener) {
        go.positioned = false;
        return go;
    }
    if (distance <= event.near) {
        return go;
    }
    if (!event.has_far()) {
        if (distance >= event.reach()) {
            go.drop = Drop::far;
            return go;
        }
        go.vol_db = -(distance - event.near) * 14.0f / std::max(event.reach() - event.near, 0.1f);
        return go;
    }
    if (event.maxd > 0.0f && distance <= 1.5f * event.near) {
        return go;
    }
    go.far = true;
    go.positioned = false;
    return go;
}

SoundGo SoundMixer::refuse(Drop drop) {
    ++dropped[static_cast<size_t>(drop)];
    SoundGo go;
    go.drop = drop;
    return go;
}

bool SoundMixer::over_cap(const SoundAsk &ask) {
    std::erase_if(recent, [&](double t) { return ask.now - t > 1.0; });
    if (!capped_bus(ask.event->bus)) {
        return false;
    }
    const int cap = cap_of(ask);
    return cap >= 0 && static_cast<int>(recent.size()) >= cap;
}

int SoundMixer::sounding_of(const SoundEvent *event) const {
    return static_cast<int>(
        std::count_if(voices.begin(), voices.end(), [&](const Voice &v) { return v.event == event; }));
}

SoundGo SoundMixer::ask(const SoundAsk &ask) {
    const SoundEvent *event = ask.event;
    if (event == nullptr || !ask.has_file) {
        return refuse(Drop::missing);
    }
    step(ask.now);

    auto &last = ask.far ? last_far : last_play;
    double gap = ask.far ? event->far_cd : event->cd;
    if (ask.min_gap >= 0.0f) {
        gap = ask.min_gap;
    }
    gap = std::max(gap, least_gap);
    if (const auto it = last.find(event); it != last.end() && ask.now - it->second < gap - slack) {
        return refuse(Drop::cooldown);
    }
    const bool by_source = ask.source != 0 && !ask.far && event->src_cd > 0.0f;
    if (by_source) {
        auto &times = last_source[event];
        // Sources come and go for hours: forget those whose time is over once there are many.
        if (times.size() > 64) {
            std::erase_if(times, [&](const auto &entry) { return ask.now - entry.second >= event->src_cd; });
        }
        if (const auto it = times.find(ask.source); it != times.end() && ask.now - it->second < event->src_cd - slack) {
            return refuse(Drop::source);
        }
    }
    if (event->alert && ask.now - last_alert < alert_gap - slack) {
        return refuse(Drop::alert);
    }
    if (over_cap(ask)) {
        return refuse(Drop::cap);
    }

    SoundGo go;
    if (sounding() >= max_voices) {
        if (event->prio < 2 || ask.far) {
            return refuse(Drop::voices);
        }
        const Voice *oldest = nullptr;
        for (const Voice &v : voices) {
            if (v.may_steal && (oldest == nullptr || v.start < oldest->start)) {
                oldest = &v;
            }
        }
        if (oldest == nullptr) {
            return refuse(Drop::voices);
        }
        go.steal = oldest->id;
    } else if (!event->is_jingle() && sounding_of(event) >= event->voices) {
        // An event at its own limit goes on in its oldest voice.
        const Voice *oldest = nullptr;
        for (const Voice &v : voices) {
            if (v.event == event && (oldest == nullptr || v.start < oldest->start)) {
                oldest = &v;
            }
        }
        go.steal = oldest != nullptr ? oldest->id : -1;
    }

    if (event->is_jingle() && jingle != nullptr && ask.now < jingle_end) {
        if (event->tier > jingle->tier && ask.now - jingle_start < jingle_swap) {
            go.stop_jingle = true;
            go.steal = jingle_voice;
        } else if (queued != nullptr && queued->tier >= event->tier) {
            return refuse(Drop::queue);
        } else {
            queued = event;
            go.queued = true;
            go.steal = -1;
            return go;
        }
    }

    last[event] = ask.now;
    if (by_source) {
        last_source[event][ask.source] = ask.now;
    }
    if (event->alert) {
        last_alert = ask.now;
    }
    recent.push_back(ask.now);

    go.pitch = event->pitch;
    go.db = ask.far ? event->far_db : ask.vol_db + event->db;
    go.positioned = ask.positioned && !ask.far;
    if (const int steps = event->streak_steps(); steps > 0) {
        Series &run = series[event];
        if (ask.now - run.last < streak_gap) {
            run.step = std::min(run.step + 1, steps - 1);
            ++run.run;
        } else {
            run.step = 0;
            run.run = 0;
        }
        run.last = ask.now;
        go.pitch *= event->streak[static_cast<size_t>(run.step)];
        go.db -= std::min(streak_fall_db * static_cast<float>(run.run), streak_fall_most);
    }
    const float jitter = ask.jitter >= 0.0f ? ask.jitter : event->rand;
    if (jitter > 0.0f) {
        go.pitch *= 1.0f + std::uniform_real_distribution<float>(-jitter, jitter)(random);
    }
    if (go.steal >= 0) {
        ended(go.steal);
    }
    ++played;
    return go;
}

void SoundMixer::started(int id, const SoundAsk &ask, double seconds) {
    const bool is_jingle = ask.event->is_jingle();
    voices.push_back({id, ask.event, ask.now, ask.now + seconds, !is_jingle && !ask.event->alert});
    if (is_jingle) {
        jingle = ask.event;
        jingle_voice = id;
        jingle_start = ask.now;
        jingle_end = ask.now + seconds;
    }
}

void SoundMixer::ended(int id) {
    std::erase_if(voices, [&](const Voice &v) { return v.id == id; });
    if (id == jingle_voice) {
        jingle_voice = -1; // its end stays known: the waiting one keeps its distance
    }
}

void SoundMixer::step(double now) {
    std::erase_if(voices, [&](const Voice &v) { return now >= v.end; });
}

const SoundEvent *SoundMixer::due_jingle(double now) {
    if (queued == nullptr || now < jingle_end + jingle_pause) {
        return nullptr;
    }
    const SoundEvent *next = queued;
    queued = nullptr;
    return next;
}

uint64_t SoundMixer::drops() const {
    uint64_t sum = 0;
    for (const uint64_t n : dropped) {
        sum += n;
    }
    return sum;
}

uint64_t SoundMixer::drops_named(std::string_view reason) const {
    uint64_t sum = 0;
    for (int i = 1; i < drop_count; ++i) {
        if (drop_name(static_cast<Drop>(i)) == reason) {
            sum += dropped[static_cast<size_t>(i)];
        }
    }
    return sum;
}

int SoundMixer::pick(int count) {
    return count <= 1 ? 0 : std::uniform_int_distribution<int>(0, count - 1)(random);
}

} // namespace tilm::rules
