#pragma once
// The resident node that plays every sound of the game by name. Callers name an event; the event table and SoundMixer
// decide how it sounds and whether it is heard. A missing file never hurts: the play is counted as dropped.

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <godot_cpp/classes/audio_listener3d.hpp>
#include <godot_cpp/classes/audio_stream.hpp>
#include <godot_cpp/classes/audio_stream_player.hpp>
#include <godot_cpp/classes/audio_stream_player3d.hpp>
#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string_name.hpp>
#include <godot_cpp/variant/vector3.hpp>

#include "rules/sound_events.h"
#include "rules/sound_mixer.h"

namespace tilm {
using namespace godot;

class Sfx : public Node {
    GDCLASS(Sfx, Node)

public:
    Sfx();
    ~Sfx() override;

    // The resident, null in tests and in the editor.
    static Sfx *get() { return s_instance; }

    // For callers anywhere: do nothing without a resident.
    static void sound(const StringName &event);
    static void sound_at(const StringName &event, uint64_t source, const Vector3 &pos);
    // Keeps a plain loop sounding for `hold` more seconds at this pitch.
    static void sound_hold(const StringName &event, float hold, float pitch);
    static void sound_stop(const StringName &event);
    static void vibrate(int ms);

    void _ready() override;
    void _process(double delta) override;
    void _exit_tree() override;

    double volume(const String &group) const; // 0 .. 1, 0.8 is neutral
    void set_volume(const String &group, double v);
    void apply_volumes();

    // Negative pitch_jitter or min_gap (seconds) take the row's own.
    void play(const StringName &n, double pitch_jitter = -1.0, double vol_db = 0.0, double min_gap = -1.0);
    void play_at(const StringName &n, int64_t src, const Vector3 &pos);
    // A positioned loop in the caller's slot: event `id` sounds for `hold` more seconds.
    void loop_at(const StringName &slot, const StringName &id, double hold, double pitch, bool on, const Vector3 &pos);
    void loop(const StringName &n, bool on);
    void loop_hold(const StringName &n, double hold, double pitch);
    // Lowers the music by depth dB (negative) for hold seconds.
    void duck(double depth, double hold);
    void ambient(const StringName &n, double v); // 0 .. 1
    void set_music(bool on);
    void buzz(int ms);

    // The camera's point of attention, told by the farm each frame.
    void set_listener(const Vector3 &pos);
    void clear_listener();

    Dictionary stats() const; // plays, voices and drops by reason, for tests and the log

protected:
    static void _bind_methods();

private:
    struct Voice {
        AudioStreamPlayer *flat = nullptr;
        AudioStreamPlayer3D *spot = nullptr;
        int id = -1; // -1: free
        double end = 0.0;
    };
    struct Loop {
        const rules::SoundEvent *event = nullptr;
        AudioStreamPlayer *flat = nullptr;
        AudioStreamPlayer3D *spot = nullptr;
        double until = 0.0;
        float pitch = 1.0f;
        float level = 0.0f; // 0 .. 1, fades
    };
    struct Bed {
        AudioStreamPlayer *player = nullptr;
        float now = 0.0f;
        float target = 0.0f;
    };
    using Streams = std::vector<Ref<AudioStream>>;

    void make_buses();
    void load_streams();
    const rules::SoundEvent *event_of(const StringName &n);
    const Streams *streams_of(const rules::SoundEvent *event) const;
    void play_ask(rules::SoundAsk &ask, const Vector3 &pos);
    Voice *free_voice(bool positioned);
    void stop_voice(Voice &voice);
    void hold_loop(const StringName &slot, const StringName &id, double hold, double pitch, const Vector3 *pos);
    void free_loop(Loop &slot_loop);
    void step_voices();
    void step_loops(float delta);
    void step_beds(float delta);
    void step_music(float delta);
    void step_duck(float delta);
    void step_log(double delta);
    void start_track(int player);
    void stop_all();
    float bus_level(rules::Bus bus) const;

    static Sfx *s_instance;

    std::unique_ptr<rules::SoundMixer> mixer;
    std::unordered_map<const rules::SoundEvent *, Streams> streams;
    std::unordered_map<std::string, const rules::SoundEvent *> names;
    std::vector<Voice> voices;
    std::unordered_map<std::string, Loop> loops;
    std::unordered_map<std::string, Bed> beds;
    std::vector<Ref<AudioStream>> tracks;
    AudioStreamPlayer *music[2] = {nullptr, nullptr};
    float music_level[2] = {0.0f, 0.0f};
    int music_current = 0;
    int last_track = -1;
    bool music_wanted = false;

    double clock = 0.0;
    double duck_until = 0.0;
    float duck_depth = 0.0f;
    float duck_now = 0.0f;
    double log_timer = 0.0;
    bool log_on = false;
    int thunder_asks = 0;
    uint64_t last_buzz_ms = 0;
    int next_voice = 0;
    AudioListener3D *ear = nullptr;
    Vector3 listener;
    bool muffled = false;
    bool has_listener = false;
    bool sound_on = true;
    bool ready = false;
};

} // namespace tilm
