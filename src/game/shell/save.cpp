#include "game/shell/save.h"

#include <algorithm>

#include <godot_cpp/classes/file_access.hpp>
#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/core/error_macros.hpp>

#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "game/shell/save_rows.h"
#include "game/shell/save_text.h"
#include "names.h"
#include "safe_read.h"
#include "statics.h"

namespace tilm {

namespace {

constexpr int64_t DEBUG_ARGS_LIMIT = 65536;

} // namespace

Save *Save::instance = nullptr;

Save::Save() {
    instance = this;
    Store::set_current(this);
}

Save::~Save() {
    if (language_set_up) {
        Lang::shutdown();
    }
    if (instance == this) {
        instance = nullptr;
        Store::set_current(nullptr);
    }
    Statics::release_all();
}

Save *Save::get() {
    return instance;
}

void Save::_ready() {
    if (in_editor()) {
        return;
    }
    collect_arguments();
    read();
    choose_language();
}

void Save::collect_arguments() {
    OS *os = OS::get_singleton();
    arg_list = os->get_cmdline_user_args();
    const String extra = "user://debug_args.txt";
    if (os->is_debug_build() && FileAccess::file_exists(extra)) {
        const Ref<FileAccess> file = FileAccess::open(extra, FileAccess::READ);
        if (file.is_valid() && static_cast<int64_t>(file->get_length()) <= DEBUG_ARGS_LIMIT) {
            const String words = file->get_as_text().replace("\n", " ").replace("\r", " ").replace("\t", " ");
            arg_list.append_array(words.split(" ", false));
        } else {
            ERR_PRINT("TILMARCH cannot read " + extra);
        }
    }
    const String option = "--save=";
    for (int64_t i = 0; i < arg_list.size(); ++i) {
        const String word = arg_list[i];
        if (!word.begins_with(option)) {
            continue;
        }
        const String slot = word.substr(option.length());
        if (slot.is_empty() || !slot.is_valid_filename()) {
            ERR_PRINT("TILMARCH bad save name in " + word + ": ignored");
        } else {
            path = "user://save_" + slot + ".json";
        }
    }
}

void Save::choose_language() {
    String code = lang;
    if (code.is_empty()) {
        code = OS::get_singleton()->get_locale_language() == "ar" ? "ar" : "en";
    }
    const String option = "--lang=";
    for (int64_t i = 0; i < arg_list.size(); ++i) {
        const String word = arg_list[i];
        if (word.begins_with(option) && word.length() > option.length()) {
            code = word.substr(option.length());
        }
    }
    Lang::setup();
    language_set_up = true;
    Lang::set_trmiss(arg_list.has("--trmiss"));
    Lang::apply(code);
    UI::set_text_size(text_size);
}

void Save::enter_visit(const Dictionary &farm) {
    if (!visiting) {
        stash = data;
        visiting = true;
    }
    data = farm;
}

void Save::leave_visit() {
    if (!visiting) {
        return;
    }
    data = stash;
    stash = Dictionary();
    visiting = false;
}

Dictionary Save::own_farm() const {
    return visiting ? stash : data;
}

void Save::set_lang(const String &code) {
    lang = code;
    write();
}

Dictionary Save::row_farm(int64_t i) const {
    if (i == active) {
        return own_farm();
    }
    return is_row(i) ? read_table(as<Dictionary>(farms[i]), TM_NAME("farm")) : Dictionary();
}

void Save::store_active_farm() {
    if (farms.is_empty()) {
        farms.append(farm_row(random_id(), "FARM 1", Dictionary()));
        active = 0;
    }
    active = std::clamp<int64_t>(active, 0, farms.size() - 1);
    Dictionary row = farms[active];
    row[TM_NAME("farm")] = own_farm();
}

bool Save::has_progress() const {
    const Dictionary farm = own_farm();
    return read_whole(farm, TM_NAME("money")) >= 1 || read_table(farm, TM_NAME("levels")).size() >= 3;
}

String Save::net_token() {
    if (net_tok.is_empty()) {
        net_tok = random_id() + random_id();
        write(); // others know this install by it from now on
    }
    return net_tok;
}

void Save::_bind_methods() {
    ClassDB::bind_method(D_METHOD("read"), &Save::read);
    ClassDB::bind_method(D_METHOD("write"), &Save::write);
    ClassDB::bind_method(D_METHOD("enter_visit", "farm"), &Save::enter_visit);
    ClassDB::bind_method(D_METHOD("leave_visit"), &Save::leave_visit);
    ClassDB::bind_method(D_METHOD("is_visiting"), &Save::is_visiting);
    ClassDB::bind_method(D_METHOD("own_farm"), &Save::own_farm);
    ClassDB::bind_method(D_METHOD("has_progress"), &Save::has_progress);
    ClassDB::bind_method(D_METHOD("switch_farm", "i"), &Save::switch_farm);
    ClassDB::bind_method(D_METHOD("new_farm"), &Save::new_farm);
    ClassDB::bind_method(D_METHOD("delete_farm", "i"), &Save::delete_farm);
    ClassDB::bind_method(D_METHOD("farm_progress", "i"), &Save::farm_progress);
    ClassDB::bind_method(D_METHOD("farm_id", "i"), &Save::farm_id, DEFVAL(-1));
    ClassDB::bind_method(D_METHOD("find_farm", "id"), &Save::find_farm);
    ClassDB::bind_method(D_METHOD("net_token"), &Save::net_token);
    ClassDB::bind_method(D_METHOD("args"), &Save::args);
    ClassDB::bind_method(D_METHOD("setting", "key"), &Save::setting);
    ClassDB::bind_method(D_METHOD("put_setting", "key", "value"), &Save::put_setting);
    ClassDB::bind_static_method("Save", D_METHOD("peek_farm", "file"), &Save::peek_farm);

    TM_BIND_FIELD(Save, Variant::INT, version);
    TM_BIND_FIELD(Save, Variant::BOOL, sound_on);
    TM_BIND_FIELD(Save, Variant::BOOL, music_on);
    TM_BIND_FIELD(Save, Variant::BOOL, moved);
    TM_BIND_FIELD(Save, Variant::BOOL, notify_on);
    TM_BIND_FIELD(Save, Variant::BOOL, notify_asked);
    TM_BIND_FIELD(Save, Variant::BOOL, vibrate_on);
    TM_BIND_FIELD(Save, Variant::FLOAT, vol_music);
    TM_BIND_FIELD(Save, Variant::FLOAT, vol_ambience);
    TM_BIND_FIELD(Save, Variant::FLOAT, vol_effects);
    TM_BIND_FIELD(Save, Variant::FLOAT, vol_voice);
    TM_BIND_FIELD(Save, Variant::STRING, avatar);
    TM_BIND_FIELD(Save, Variant::BOOL, voice_open);
    TM_BIND_FIELD(Save, Variant::INT, zoom);
    TM_BIND_FIELD(Save, Variant::INT, quality);
    TM_BIND_FIELD(Save, Variant::INT, text_size);
    TM_BIND_FIELD(Save, Variant::STRING, lang);
    TM_BIND_FIELD(Save, Variant::STRING, player_name); // `name` is every node's own
    TM_BIND_FIELD(Save, Variant::ARRAY, farms);
    TM_BIND_FIELD(Save, Variant::INT, active);
    TM_BIND_FIELD(Save, Variant::STRING, net_tok);
    TM_BIND_FIELD(Save, Variant::INT, net_nudge_at);
    TM_BIND_FIELD(Save, Variant::DICTIONARY, net_last);
    TM_BIND_FIELD(Save, Variant::DICTIONARY, net_done);
    TM_BIND_FIELD(Save, Variant::DICTIONARY, net_await);
    TM_BIND_FIELD(Save, Variant::DICTIONARY, net_ship);
    TM_BIND_FIELD(Save, Variant::DICTIONARY, net_gift);
    TM_BIND_FIELD(Save, Variant::DICTIONARY, coop);
    TM_BIND_FIELD(Save, Variant::DICTIONARY, data);
    TM_BIND_FIELD(Save, Variant::STRING, path);
}

} // namespace tilm
