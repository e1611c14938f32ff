#include "game/sound/sfx.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/audio_effect_low_pass_filter.hpp>
#include <godot_cpp/classes/audio_listener3d.hpp>
#include <godot_cpp/classes/audio_server.hpp>
#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/input.hpp>
#include <godot_cpp/classes/resource_loader.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/core/math.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/ports/store.h"
#include "game/sound/sfx_text.h"
#include "names.h"

namespace tilm {
namespace {

constexpr double neutral_volume = 0.8;
constexpr float silence_db = -80.0f;
constexpr int music_files = 8;
constexpr uint64_t buzz_gap_ms = 120;

Variant setting(const char *key, const Variant &fallback) {
    const Store *store = Store::current();
    if (store == nullptr) {
        return fallback;
    }
    const Variant value = store->setting(StringName(key));
    return value.get_type() == Variant::NIL ? fallback : value;
}

} // namespace

Sfx *Sfx::s_instance = nullptr;

Sfx::Sfx()
    : mixer(std::make_unique<rules::SoundMixer>(static_cast<uint32_t>(Time::get_singleton()->get_ticks_usec()))) {
    s_instance = this;
}

Sfx::~Sfx() {
    if (s_instance == this) {
        s_instance = nullptr;
    }
}

void Sfx::_bind_methods() {
    ClassDB::bind_method(D_METHOD("volume", "group"), &Sfx::volume);
    ClassDB::bind_method(D_METHOD("set_volume", "group", "v"), &Sfx::set_volume);
    ClassDB::bind_method(D_METHOD("apply_volumes"), &Sfx::apply_volumes);
    ClassDB::bind_method(D_METHOD("play", "n", "pitch_jitter", "vol_db", "min_gap"), &Sfx::play, DEFVAL(-1.0),
                         DEFVAL(0.0), DEFVAL(-1.0));
    ClassDB::bind_method(D_METHOD("play_at", "n", "src", "pos"), &Sfx::play_at);
    ClassDB::bind_method(D_METHOD("loop_at", "slot", "id", "hold", "pitch", "on", "pos"), &Sfx::loop_at);
    ClassDB::bind_method(D_METHOD("duck", "depth", "hold"), &Sfx::duck);
    ClassDB::bind_method(D_METHOD("loop", "n", "on"), &Sfx::loop);
    ClassDB::bind_method(D_METHOD("loop_hold", "n", "hold", "pitch"), &Sfx::loop_hold);
    ClassDB::bind_method(D_METHOD("ambient", "n", "v"), &Sfx::ambient);
    ClassDB::bind_method(D_METHOD("set_music", "on"), &Sfx::set_music);
    ClassDB::bind_method(D_METHOD("buzz", "ms"), &Sfx::buzz);
    ClassDB::bind_method(D_METHOD("set_listener", "pos"), &Sfx::set_listener);
    ClassDB::bind_method(D_METHOD("clear_listener"), &Sfx::clear_listener);
    ClassDB::bind_method(D_METHOD("stats"), &Sfx::stats);
}

void Sfx::sound(const StringName &event) {
    if (s_instance != nullptr) {
        s_instance->play(event);
    }
}

void Sfx::sound_at(const StringName &event, uint64_t source, const Vector3 &pos) {
    if (s_instance != nullptr) {
        s_instance->play_at(event, static_cast<int64_t>(source), pos);
    }
}

void Sfx::sound_hold(const StringName &event, float hold, float pitch) {
    if (s_instance != nullptr) {
        s_instance->loop_hold(event, hold, pitch);
    }
}

void Sfx::sound_stop(const StringName &event) {
    if (s_instance != nullptr) {
        s_instance->loop(event, false);
    }
}

void Sfx::vibrate(int ms) {
    if (s_instance != nullptr) {
        s_instance->buzz(ms);
    }
}

void Sfx::_ready() {
    if (in_editor()) {
        return;
    }
    set_process_mode(PROCESS_MODE_ALWAYS);
    make_buses();
    load_streams();
    if (const Store *store = Store::current()) {
        log_on = store->arguments().has("--sfxlog");
    }
    ready = true;
    apply_volumes();
    set_music(setting("music_on", true));
}

void Sfx::_exit_tree() {
    stop_all();
}

void Sfx::make_buses() {
    AudioServer *server = AudioServer::get_singleton();
    for (const rules::BusRow &row : rules::buses()) {
        const StringName name = engine_text(row.name);
        if (server->get_bus_index(name) >= 0) {
            continue;
        }
        server->add_bus();
        const int index = server->get_bus_count() - 1;
        server->set_bus_name(index, name);
        server->set_bus_send(index, TM_NAME("Master"));
    }
    const int music_bus = server->get_bus_index(TM_NAME("Music"));
    if (server->get_bus_effect_count(music_bus) == 0) {
        Ref<AudioEffectLowPassFilter> filter;
        filter.instantiate();
        filter->set_cutoff(900.0);
        server->add_bus_effect(music_bus, filter);
    }
    server->set_bus_effect_enabled(music_bus, 0, false);
}

void Sfx::load_streams() {
    ResourceLoader *loader = ResourceLoader::get_singleton();
    std::unordered_map<std::string, Ref<AudioStream>> by_stem;
    int missing = 0;
    for (const rules::SoundEvent &event : rules::sound_events()) {
        Streams list;
        for (const std::string &stem : rules::sound_stems(event)) {
            auto it = by_stem.find(stem);
            if (it == by_stem.end()) {
                const String path = "res://assets/sfx/" + engine_text(stem) + ".wav";
                Ref<AudioStream> stream;
                if (loader->exists(path)) {
                    stream = loader->load(path);
                }
                it = by_stem.emplace(stem, stream).first;
            }
            if (it->second.is_valid()) {
                list.push_back(it->second);
            }
        }
        if (list.empty()) {
            ++missing;
        } else {
            streams.emplace(&event, std::move(list));
        }
        names.emplace(event.name, &event);
    }
    for (int i = 1; i <= music_files; ++i) {
        const String path = "res://assets/sfx/amb/music_" + String::num_int64(i) + ".ogg";
        if (loader->exists(path)) {
            const Ref<AudioStream> track = loader->load(path);
            if (track.is_valid()) {
                tracks.push_back(track);
            }
        }
    }
    if (missing > 0) {
        UtilityFunctions::print("TILMARCH sounds: ", missing, " of ",
                                static_cast<int64_t>(rules::sound_events().size()),
                                " events have no file and stay silent");
    }
}

const rules::SoundEvent *Sfx::event_of(const StringName &n) {
    if (n == TM_NAME("thunder")) {
        const bool near_one = thunder_asks % 3 == 0;
        ++thunder_asks;
        return rules::find_sound_event(near_one ? "thunder_near" : "thunder_far");
    }
    const auto it = names.find(text_of(n));
    return it == names.end() ? nullptr : it->second;
}

const Sfx::Streams *Sfx::streams_of(const rules::SoundEvent *event) const {
    const auto it = streams.find(event);
    return it == streams.end() ? nullptr : &it->second;
}

double Sfx::volume(const String &group) const {
    const double v = setting(("vol_" + group).utf8().get_data(), neutral_volume);
    return std::isfinite(v) ? std::clamp(v, 0.0, 1.0) : neutral_volume;
}

void Sfx::set_volume(const String &group, double v) {
    if (!std::isfinite(v)) {
        return;
    }
    if (group != String("music") && group != String("ambience") && group != String("effects") &&
        group != String("voice")) {
        WARN_PRINT("TILMARCH no volume group " + group);
        return;
    }
    if (Store *store = Store::current()) {
        store->put_setting(StringName("vol_" + group), std::clamp(v, 0.0, 1.0));
    }
    apply_volumes();
}

float Sfx::bus_level(rules::Bus bus) const {
    const rules::BusRow &row = rules::buses()[static_cast<size_t>(bus)];
    const double v = volume(engine_text(row.group));
    const float level = v > 0.001 ? static_cast<float>(UtilityFunctions::linear_to_db(v / neutral_volume)) : silence_db;
    return row.base_db + level + (bus == rules::Bus::music ? duck_now : 0.0f);
}

void Sfx::apply_volumes() {
    AudioServer *server = AudioServer::get_singleton();
    sound_on = setting("sound_on", true);
    for (int i = 0; i < rules::bus_count; ++i) {
        const rules::Bus bus = static_cast<rules::Bus>(i);
        const rules::BusRow &row = rules::buses()[static_cast<size_t>(i)];
        const int index = server->get_bus_index(engine_text(row.name));
        if (index < 0) {
            continue;
        }
        server->set_bus_volume_db(index, bus_level(bus));
        const bool silent = volume(engine_text(row.group)) <= 0.001;
        server->set_bus_mute(index, silent || (bus != rules::Bus::music && !sound_on));
    }
}

void Sfx::play(const StringName &n, double pitch_jitter, double vol_db, double min_gap) {
    if (!ready || !sound_on) {
        return;
    }
    rules::SoundAsk ask;
    ask.event = event_of(n);
    ask.jitter = static_cast<float>(pitch_jitter);
    ask.vol_db = std::isfinite(vol_db) ? static_cast<float>(vol_db) : 0.0f;
    ask.min_gap = static_cast<float>(min_gap);
    play_ask(ask, Vector3());
}

void Sfx::play_at(const StringName &n, int64_t src, const Vector3 &pos) {
    if (!ready || !sound_on) {
        return;
    }
    rules::SoundAsk ask;
    ask.event = event_of(n);
    if (ask.event != nullptr) {
        const float distance = has_listener ? static_cast<float>(listener.distance_to(pos)) : 0.0f;
        const rules::RangeGo range = rules::range_rule(*ask.event, has_listener, distance);
        if (range.drop != rules::Drop::none) {
            mixer->note_drop(range.drop);
            return;
        }
        ask.far = range.far;
        ask.positioned = range.positioned;
        ask.vol_db = range.vol_db;
        ask.source = range.far ? 0 : static_cast<uint64_t>(src);
    }
    play_ask(ask, pos);
}

void Sfx::play_ask(rules::SoundAsk &ask, const Vector3 &pos) {
    ask.now = clock;
    const Streams *list = ask.event != nullptr ? streams_of(ask.event) : nullptr;
    ask.has_file = list != nullptr;
    const rules::SoundGo go = mixer->ask(ask);
    if (!go.plays()) {
        return;
    }
    if (go.steal >= 0) {
        for (Voice &voice : voices) {
            if (voice.id == go.steal) {
                stop_voice(voice);
            }
        }
    }
    const Ref<AudioStream> stream = (*list)[static_cast<size_t>(mixer->pick(static_cast<int>(list->size())))];
    const double seconds = std::max(stream->get_length(), 0.05) / std::max(go.pitch, 0.05f);
    Voice *voice = free_voice(go.positioned);
    voice->id = next_voice++;
    voice->end = clock + seconds;
    const StringName bus = engine_text(rules::buses()[static_cast<size_t>(ask.event->bus)].name);
    if (go.positioned) {
        voice->spot->set_stream(stream);
        voice->spot->set_bus(bus);
        voice->spot->set_pitch_scale(go.pitch);
        voice->spot->set_volume_db(go.db);
        voice->spot->set_max_db(std::clamp(go.db, -24.0f, 3.0f));
        voice->spot->set_max_distance(ask.event->reach() + 2.0f);
        voice->spot->set_position(pos);
        voice->spot->play();
    } else {
        voice->flat->set_stream(stream);
        voice->flat->set_bus(bus);
        voice->flat->set_pitch_scale(go.pitch);
        voice->flat->set_volume_db(go.db);
        voice->flat->play();
    }
    mixer->started(voice->id, ask, seconds);
    if (ask.event->duck < 0.0f) {
        duck(ask.event->duck, seconds);
    }
}

Sfx::Voice *Sfx::free_voice(bool positioned) {
    for (Voice &voice : voices) {
        if (voice.id < 0 && (positioned ? voice.spot != nullptr : voice.flat != nullptr)) {
            return &voice;
        }
    }
    Voice voice;
    if (positioned) {
        voice.spot = memnew(AudioStreamPlayer3D);
        voice.spot->set_attenuation_model(AudioStreamPlayer3D::ATTENUATION_DISABLED);
        add_child(voice.spot);
    } else {
        voice.flat = memnew(AudioStreamPlayer);
        add_child(voice.flat);
    }
    voices.push_back(voice);
    return &voices.back();
}

void Sfx::stop_voice(Voice &voice) {
    if (voice.flat != nullptr) {
        voice.flat->stop();
    }
    if (voice.spot != nullptr) {
        voice.spot->stop();
    }
    mixer->ended(voice.id);
    voice.id = -1;
}

void Sfx::buzz(int ms) {
    if (ms <= 0 || !bool(setting("vibrate_on", true))) {
        return;
    }
    const uint64_t now = Time::get_singleton()->get_ticks_msec();
    if (now - last_buzz_ms < buzz_gap_ms && last_buzz_ms != 0) {
        return;
    }
    last_buzz_ms = now;
    Input::get_singleton()->vibrate_handheld(ms);
}

void Sfx::set_listener(const Vector3 &pos) {
    if (ear == nullptr && ready) {
        ear = memnew(AudioListener3D);
        add_child(ear);
        ear->make_current();
    }
    if (ear != nullptr && pos != listener) {
        ear->set_position(pos);
    }
    listener = pos;
    has_listener = true;
}

void Sfx::clear_listener() {
    has_listener = false;
}

void Sfx::_process(double delta) {
    if (!ready) {
        return;
    }
    // Slow motion and quick runs must not change how long a sound lasts.
    const double real = delta / std::max(Engine::get_singleton()->get_time_scale(), 0.001);
    clock += real;
    step_voices();
    step_loops(static_cast<float>(real));
    step_beds(static_cast<float>(real));
    step_music(static_cast<float>(real));
    step_duck(static_cast<float>(real));
    if (const rules::SoundEvent *jingle = mixer->due_jingle(clock)) {
        rules::SoundAsk ask;
        ask.event = jingle;
        if (sound_on) {
            play_ask(ask, Vector3());
        }
    }
    const bool paused = get_tree()->is_paused();
    if (paused != muffled) {
        muffled = paused;
        AudioServer *server = AudioServer::get_singleton();
        const int bus = server->get_bus_index(TM_NAME("Music"));
        if (bus >= 0 && server->get_bus_effect_count(bus) > 0) {
            server->set_bus_effect_enabled(bus, 0, paused);
        }
    }
    if (log_on) {
        step_log(real);
    }
}

void Sfx::step_voices() {
    mixer->step(clock);
    for (Voice &voice : voices) {
        if (voice.id >= 0 && clock >= voice.end) {
            voice.id = -1; // the player has run out by itself
        }
    }
}

void Sfx::step_log(double delta) {
    log_timer += delta;
    if (log_timer < 1.0) {
        return;
    }
    log_timer = 0.0;
    String bed_names;
    for (const auto &[name, bed] : beds) {
        bed_names += engine_text(name) + ":" + String::num(bed.now, 2) + " ";
    }
    String loop_names;
    for (const auto &[name, l] : loops) {
        loop_names += engine_text(name) + " ";
    }
    String drops;
    for (const char *reason : {"missing", "cd", "cap", "voices", "queue", "far"}) {
        drops += String(reason) + "=" + String::num_int64(static_cast<int64_t>(mixer->drops_named(reason))) + " ";
    }
    const rules::SoundEvent *waiting = mixer->waiting_jingle();
    UtilityFunctions::print(
        "TILMARCH sfx t=", static_cast<int64_t>(clock), " plays=", static_cast<int64_t>(mixer->plays()),
        " dropped=", static_cast<int64_t>(mixer->drops()), " voices=", mixer->sounding(),
        " beds=", bed_names.strip_edges(), " loops=", loop_names.strip_edges(), " ", drops.strip_edges(),
        " duck:", String::num(duck_now, 1), " queue:", waiting != nullptr ? engine_text(waiting->name) : String("-"));
}

Dictionary Sfx::stats() const {
    Dictionary d;
    d["plays"] = static_cast<int64_t>(mixer->plays());
    d["dropped"] = static_cast<int64_t>(mixer->drops());
    d["voices"] = mixer->sounding();
    d["loops"] = static_cast<int64_t>(loops.size());
    d["beds"] = static_cast<int64_t>(beds.size());
    for (const char *reason : {"missing", "cd", "cap", "voices", "queue", "far"}) {
        d[reason] = static_cast<int64_t>(mixer->drops_named(reason));
    }
    return d;
}

// The audio server goes after us but before the engine's last breath: nothing of ours may still hold a stream then.
void Sfx::stop_all() {
    ready = false;
    for (Voice &voice : voices) {
        if (voice.flat != nullptr) {
            voice.flat->stop();
            voice.flat->set_stream(Ref<AudioStream>());
        }
        if (voice.spot != nullptr) {
            voice.spot->stop();
            voice.spot->set_stream(Ref<AudioStream>());
        }
    }
    for (auto &[name, l] : loops) {
        free_loop(l);
    }
    for (auto &[name, bed] : beds) {
        if (bed.player != nullptr) {
            bed.player->stop();
            bed.player->set_stream(Ref<AudioStream>());
        }
    }
    for (AudioStreamPlayer *player : music) {
        if (player != nullptr) {
            player->stop();
            player->set_stream(Ref<AudioStream>());
        }
    }
    voices.clear();
    loops.clear();
    beds.clear();
    music[0] = music[1] = nullptr;
    ear = nullptr;
    streams.clear();
    tracks.clear();
}

} // namespace tilm
