#pragma once
// The resident owner of the save file: settings of the device, up to six farms, network bookkeeping. Created before all
// other residents and the last to die.

#include <cstdint>

#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>
#include <godot_cpp/variant/string.hpp>

#include "fields.h"
#include "game/ports/store.h"

namespace tilm {
using namespace godot;

class Save : public Node, public Store {
    GDCLASS(Save, Node)

public:
    static constexpr int64_t MAX_FARMS = 6;

    Save();
    ~Save() override;
    static Save *get(); // null before the residents exist
    // The active farm of another save file, empty where there is none. Changes nothing.
    static Dictionary peek_farm(const String &file);

    void _ready() override;

    // The file. Failures are logged; read() leaves defaults, write() leaves the old file.
    void read();
    void write() override;

    // While a visit runs `data` is the friend's farm and the own one is kept aside; only the own one is ever written.
    void enter_visit(const Dictionary &farm);
    void leave_visit();
    bool is_visiting() const { return visiting; }
    Dictionary own_farm() const; // the own document, on a visit too

    // Farms.
    bool has_progress() const;
    bool switch_farm(int64_t i);
    bool new_farm();
    void delete_farm(int64_t i);
    double farm_progress(int64_t i) const; // 0 .. 1
    String farm_id(int64_t i = -1) const;  // of the active farm by default
    int64_t find_farm(const String &id) const;

    String net_token(); // 16 hexadecimal digits, made on first use
    PackedStringArray args() const { return arg_list; }

    // Store
    Variant setting(const StringName &key) const override;
    void put_setting(const StringName &key, const Variant &value) override;
    Dictionary farm_doc() const override { return data; }
    PackedStringArray arguments() const override { return arg_list; }

    // Settings and bookkeeping: the top-level keys of the file.
    TM_FIELD(int64_t, version, 3)
    TM_FIELD(bool, sound_on, true)
    TM_FIELD(bool, music_on, true)
    TM_FIELD(bool, moved, false)
    TM_FIELD(bool, notify_on, true)
    TM_FIELD(bool, notify_asked, false)
    TM_FIELD(bool, vibrate_on, true)
    TM_FIELD(double, vol_music, 0.8)
    TM_FIELD(double, vol_ambience, 0.8)
    TM_FIELD(double, vol_effects, 0.8)
    TM_FIELD(double, vol_voice, 0.8)
    TM_FIELD(String, avatar, String())
    TM_FIELD(bool, voice_open, false)
    TM_FIELD(int64_t, zoom, 1)
    TM_FIELD(int64_t, quality, 0)
    TM_FIELD(int64_t, text_size, 100) // percent
    String lang;
    void set_lang(const String &code); // stores and writes; applying it is Lang's
    String get_lang() const { return lang; }
    String name; // the player's; the node's own name stays what it was
    void set_player_name(const String &v) { name = v; }
    String get_player_name() const { return name; }
    TM_FIELD(Array, farms, Array()) // rows {id, name, farm}
    TM_FIELD(int64_t, active, 0)
    TM_FIELD(String, net_tok, String())
    TM_FIELD(int64_t, net_nudge_at, 0)
    TM_FIELD(Dictionary, net_last, Dictionary())
    TM_FIELD(Dictionary, net_done, Dictionary())
    TM_FIELD(Dictionary, net_await, Dictionary())
    TM_FIELD(Dictionary, net_ship, Dictionary())
    TM_FIELD(Dictionary, net_gift, Dictionary())
    TM_FIELD(Dictionary, coop, Dictionary())

    // Not in the file.
    TM_FIELD(Dictionary, data, Dictionary()) // the farm that is shown
    TM_FIELD(String, path, String("user://save.json"))

protected:
    static void _bind_methods();

private:
    static Save *instance;

    bool visiting = false;
    Dictionary stash;
    PackedStringArray arg_list;

    bool language_set_up = false;

    void collect_arguments();
    void choose_language();
    // Takes every known key, defaults for what is missing or of a wrong type; the latter are named in `faults`.
    void take_document(const Dictionary &doc, PackedStringArray &faults);
    void take_settings(const Dictionary &doc, PackedStringArray &faults);
    Dictionary document() const;
    void store_active_farm();
    Dictionary row_farm(int64_t i) const;
    bool is_row(int64_t i) const { return i >= 0 && i < farms.size(); }
};

} // namespace tilm
