// What sounds for longer: loops, ambient beds, music and its ducking.

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/audio_server.hpp>
#include <godot_cpp/classes/audio_stream_ogg_vorbis.hpp>
#include <godot_cpp/classes/resource_loader.hpp>
#include <godot_cpp/core/math.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/sound/sfx.h"
#include "game/sound/sfx_text.h"
#include "names.h"

namespace tilm {
namespace {

constexpr float loop_fade = 4.0f; // levels a second
constexpr float bed_fade = 0.8f;
constexpr float music_fade = 0.5f;
constexpr float duck_speed = 24.0f; // dB a second
constexpr float silence_db = -80.0f;

float level_db(float level) {
    return level > 0.001f ? static_cast<float>(UtilityFunctions::linear_to_db(level)) : silence_db;
}

} // namespace

void Sfx::loop(const StringName &n, bool on) {
    if (on) {
        loop_hold(n, 0.25, 1.0);
        return;
    }
    if (const auto it = loops.find(text_of(n)); it != loops.end()) {
        it->second.until = 0.0;
    }
}

void Sfx::loop_hold(const StringName &n, double hold, double pitch) {
    hold_loop(n, n, hold, pitch, nullptr);
}

void Sfx::loop_at(const StringName &slot, const StringName &id, double hold, double pitch, bool on,
                  const Vector3 &pos) {
    if (on) {
        hold_loop(slot, id, hold, pitch, &pos);
    } else {
        loop(slot, false);
    }
}

void Sfx::hold_loop(const StringName &slot, const StringName &id, double hold, double pitch, const Vector3 *pos) {
    if (!ready || !sound_on || !std::isfinite(hold) || !std::isfinite(pitch)) {
        return;
    }
    const rules::SoundEvent *event = event_of(id);
    const Streams *list = event != nullptr ? streams_of(event) : nullptr;
    if (list == nullptr) {
        mixer->note_drop(rules::Drop::missing);
        return;
    }
    Loop &slot_loop = loops[text_of(slot)];
    const bool other_player = pos != nullptr ? slot_loop.spot == nullptr : slot_loop.flat == nullptr;
    if (slot_loop.event != event || other_player) {
        free_loop(slot_loop);
        slot_loop.event = event;
        slot_loop.level = 0.0f;
        const StringName bus = engine_text(rules::buses()[static_cast<size_t>(event->bus)].name);
        if (pos != nullptr) {
            slot_loop.spot = memnew(AudioStreamPlayer3D);
            slot_loop.spot->set_attenuation_model(AudioStreamPlayer3D::ATTENUATION_DISABLED);
            slot_loop.spot->set_max_distance(event->reach() + 2.0f);
            slot_loop.spot->set_stream(list->front());
            slot_loop.spot->set_bus(bus);
            add_child(slot_loop.spot);
        } else {
            slot_loop.flat = memnew(AudioStreamPlayer);
            slot_loop.flat->set_stream(list->front());
            slot_loop.flat->set_bus(bus);
            add_child(slot_loop.flat);
        }
    }
    slot_loop.until = clock + std::clamp(hold, 0.0, 60.0);
    slot_loop.pitch = static_cast<float>(std::clamp(pitch, 0.1, 4.0)) * event->pitch;
    if (slot_loop.spot != nullptr) {
        slot_loop.spot->set_position(*pos);
    }
}

void Sfx::free_loop(Loop &slot_loop) {
    for (Node *player : {static_cast<Node *>(slot_loop.flat), static_cast<Node *>(slot_loop.spot)}) {
        if (player != nullptr) {
            player->queue_free();
        }
    }
    slot_loop.flat = nullptr;
    slot_loop.spot = nullptr;
}

void Sfx::duck(double depth, double hold) {
    if (!std::isfinite(depth) || !std::isfinite(hold) || hold <= 0.0) {
        return;
    }
    const float deep = -static_cast<float>(std::min(std::abs(depth), 60.0));
    duck_depth = clock < duck_until ? std::min(duck_depth, deep) : deep;
    duck_until = std::max(duck_until, clock + hold);
}

void Sfx::ambient(const StringName &n, double v) {
    if (!ready) {
        return;
    }
    const std::string key = text_of(n);
    const float target = std::isfinite(v) ? static_cast<float>(std::clamp(v, 0.0, 1.0)) : 0.0f;
    auto it = beds.find(key);
    if (it == beds.end()) {
        if (target <= 0.0f) {
            return;
        }
        Bed bed;
        const String path = "res://assets/sfx/amb/" + String(n) + ".ogg";
        Ref<AudioStream> stream;
        if (ResourceLoader::get_singleton()->exists(path)) {
            stream = ResourceLoader::get_singleton()->load(path);
        }
        if (stream.is_valid()) {
            if (AudioStreamOggVorbis *ogg = Object::cast_to<AudioStreamOggVorbis>(stream.ptr())) {
                ogg->set_loop(true);
            }
            bed.player = memnew(AudioStreamPlayer);
            bed.player->set_stream(stream);
            bed.player->set_bus(TM_NAME("Ambience"));
            add_child(bed.player);
        }
        it = beds.emplace(key, bed).first; // without a player the missing file is not looked for again
    }
    if (it->second.player == nullptr && target > 0.0f) {
        mixer->note_drop(rules::Drop::missing);
    }
    it->second.target = target;
}

void Sfx::set_music(bool on) {
    music_wanted = on;
    if (!ready) {
        return;
    }
    for (int i = 0; i < 2; ++i) {
        if (!on && music[i] != nullptr) {
            music_level[i] = 0.0f;
            music[i]->set_volume_db(silence_db);
            music[i]->stop();
        }
    }
    const bool playing =
        (music[0] != nullptr && music[0]->is_playing()) || (music[1] != nullptr && music[1]->is_playing());
    if (on && !playing) {
        start_track(music_current);
    }
}

void Sfx::start_track(int player) {
    if (tracks.empty()) {
        return;
    }
    int track = mixer->pick(static_cast<int>(tracks.size()));
    if (track == last_track) {
        track = (track + 1) % static_cast<int>(tracks.size());
    }
    last_track = track;
    if (music[player] == nullptr) {
        music[player] = memnew(AudioStreamPlayer);
        music[player]->set_bus(TM_NAME("Music"));
        add_child(music[player]);
    }
    music_current = player;
    music_level[player] = 0.0f;
    music[player]->set_stream(tracks[static_cast<size_t>(track)]);
    music[player]->set_volume_db(silence_db);
    music[player]->play();
}

void Sfx::step_loops(float delta) {
    for (auto it = loops.begin(); it != loops.end();) {
        Loop &l = it->second;
        const bool wanted = clock < l.until && sound_on;
        l.level = std::clamp(l.level + (wanted ? loop_fade : -loop_fade) * delta, 0.0f, 1.0f);
        if (!wanted && l.level <= 0.0f) {
            free_loop(l);
            it = loops.erase(it);
            continue;
        }
        const float db = l.event->db + level_db(l.level);
        if (l.flat != nullptr) {
            l.flat->set_volume_db(db);
            l.flat->set_pitch_scale(l.pitch);
            if (!l.flat->is_playing()) {
                l.flat->play();
            }
        } else if (l.spot != nullptr) {
            l.spot->set_volume_db(db);
            l.spot->set_pitch_scale(l.pitch);
            if (!l.spot->is_playing()) {
                l.spot->play();
            }
        }
        ++it;
    }
}

void Sfx::step_beds(float delta) {
    for (auto &[name, bed] : beds) {
        if (bed.player == nullptr || (bed.now == bed.target && bed.player->is_playing() == (bed.now > 0.0f))) {
            continue;
        }
        const float step = bed_fade * delta;
        bed.now = bed.now < bed.target ? std::min(bed.now + step, bed.target) : std::max(bed.now - step, bed.target);
        if (bed.now <= 0.0f) {
            bed.player->stop();
            continue;
        }
        bed.player->set_volume_db(level_db(bed.now));
        if (!bed.player->is_playing()) {
            bed.player->play();
        }
    }
}

void Sfx::step_music(float delta) {
    if (!music_wanted || tracks.empty()) {
        return;
    }
    for (int i = 0; i < 2; ++i) {
        if (music[i] == nullptr || !music[i]->is_playing()) {
            continue;
        }
        const float target = i == music_current ? 1.0f : 0.0f;
        if (music_level[i] != target) {
            const float step = music_fade * delta;
            music_level[i] =
                target > 0.5f ? std::min(music_level[i] + step, 1.0f) : std::max(music_level[i] - step, 0.0f);
            music[i]->set_volume_db(level_db(music_level[i]));
            if (music_level[i] <= 0.0f) {
                music[i]->stop();
            }
        }
    }
    AudioStreamPlayer *current = music[music_current];
    const bool over = current == nullptr || !current->is_playing();
    const bool ending = !over && current->get_stream()->get_length() > 8.0 &&
                        current->get_playback_position() > current->get_stream()->get_length() - 1.0 / music_fade;
    if (over || ending) {
        start_track(1 - music_current);
    }
}

void Sfx::step_duck(float delta) {
    const float target = clock < duck_until ? duck_depth : 0.0f;
    if (duck_now == target) {
        return;
    }
    const float step = duck_speed * delta;
    duck_now = duck_now < target ? std::min(duck_now + step, target) : std::max(duck_now - step, target);
    AudioServer *server = AudioServer::get_singleton();
    if (const int bus = server->get_bus_index(TM_NAME("Music")); bus >= 0) {
        server->set_bus_volume_db(bus, bus_level(rules::Bus::music));
    }
}

} // namespace tilm
