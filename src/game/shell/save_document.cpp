// The part of Save that reads and writes the document.

#include <algorithm>
#include <cmath>

#include <godot_cpp/core/error_macros.hpp>

#include "game/shell/durable_file.h"
#include "game/shell/save.h"
#include "game/shell/save_keys.h"
#include "game/shell/save_rows.h"
#include "game/shell/save_text.h"
#include "names.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr int64_t FILE_VERSION = 3;
constexpr int64_t TOKEN_LENGTH = 16;

// 0.8 as a single-precision number is 0.800000011920929 as a double; it is stored as 0.8.
double short_decimal(double v) {
    constexpr int DIGITS = 7;
    const bool single = std::isfinite(v) && static_cast<double>(static_cast<float>(v)) == v;
    return single ? String::num(v, DIGITS).to_float() : v;
}

bool wrong_type(const Dictionary &doc, const String &key, std::initializer_list<Variant::Type> types) {
    return doc.has(key) && std::find(types.begin(), types.end(), doc[key].get_type()) == types.end();
}

template <class Rows>
const auto *find_key(const Rows &rows, const String &key) {
    const auto *row = std::find_if(std::begin(rows), std::end(rows), [&](const auto &r) { return key == r.key; });
    return row == std::end(rows) ? nullptr : row;
}

} // namespace

void Save::take_settings(const Dictionary &doc, PackedStringArray &faults) {
    const auto check = [&](const char *key, std::initializer_list<Variant::Type> types) {
        if (wrong_type(doc, key, types)) {
            faults.append(key);
        }
    };
    for (const auto &row : FLAG_KEYS) {
        check(row.key, {Variant::BOOL});
        this->*row.field = read_flag(doc, row.key, row.fallback);
    }
    for (const auto &row : VOLUME_KEYS) {
        check(row.key, {Variant::FLOAT, Variant::INT});
        this->*row.field = std::clamp(read_real(doc, row.key, row.fallback), row.least, row.most);
    }
    for (const auto &row : WHOLE_KEYS) {
        check(row.key, {Variant::FLOAT, Variant::INT});
        this->*row.field = std::clamp(read_whole(doc, row.key, row.fallback), row.least, row.most);
    }
    for (const auto &row : TEXT_KEYS) {
        check(row.key, {Variant::STRING});
        this->*row.field = read_text(doc, row.key);
    }
    for (const auto &row : TABLE_KEYS) {
        check(row.key, {Variant::DICTIONARY});
        this->*row.field = read_table(doc, row.key);
    }
    if (!net_tok.is_empty() && (net_tok.length() != TOKEN_LENGTH || !net_tok.is_valid_hex_number(false))) {
        faults.append("net_tok");
        net_tok = String();
    }
}

void Save::take_document(const Dictionary &doc, PackedStringArray &faults) {
    take_settings(doc, faults);
    version = FILE_VERSION;
    if (wrong_type(doc, "farms", {Variant::ARRAY})) {
        faults.append("farms");
    }
    const Array stored = read_list(doc, "farms");
    farms = mended_rows(stored, faults);
    active = read_whole(doc, "active", 0);
    if (wrong_type(doc, "active", {Variant::FLOAT, Variant::INT})) {
        faults.append("active");
    }
    if (stored.is_empty()) {
        // A file from before there was more than one farm.
        const Dictionary only = read_table(doc, "farm");
        mend_farm(only, "farm", faults);
        farms.append(farm_row(random_id(), "FARM 1", only));
        active = 0;
    } else if (farms.is_empty()) {
        farms.append(farm_row(random_id(), "FARM 1", Dictionary()));
    }
    active = std::clamp<int64_t>(active, 0, farms.size() - 1);
    visiting = false;
    stash = Dictionary();
    data = read_table(as<Dictionary>(farms[active]), TM_NAME("farm"));
}

void Save::read() {
    PackedStringArray faults;
    Dictionary doc;
    std::string bytes;
    LoadState state = load_document(path, doc, bytes);
    if (state == LoadState::unreadable) {
        ERR_PRINT("TILMARCH save " + path + " unreadable: kept as .corrupt");
        set_aside(path);
    }
    if (state != LoadState::good) {
        const String backup = path + String(".bak");
        state = load_document(backup, doc, bytes);
        if (state == LoadState::good) {
            WARN_PRINT("TILMARCH save restored from " + backup);
        } else if (state == LoadState::unreadable) {
            ERR_PRINT("TILMARCH save " + backup + " unreadable: kept as .corrupt");
            set_aside(backup);
        }
    }
    if (state != LoadState::good) {
        take_settings(Dictionary(), faults);
        farms = Array();
        active = 0;
        visiting = false;
        stash = Dictionary();
        data = Dictionary();
        return;
    }
    int repairs = 0;
    take_document(as<Dictionary>(storable(doc, repairs)), faults);
    if (repairs > 0) {
        faults.append(String::num_int64(repairs) + String(" numbers"));
    }
    if (!faults.is_empty()) {
        // What could not be taken would be gone with the next two writes: the whole file stays for whoever looks.
        WARN_PRINT("TILMARCH save " + path +
                   ": bad values read as defaults, a copy is kept as .corrupt: " + String(", ").join(faults));
        write_durable(native_path(path + String(".corrupt")), bytes);
    }
}

Dictionary Save::document() const {
    Dictionary doc;
    doc["version"] = FILE_VERSION;
    for (const auto &row : FLAG_KEYS) {
        doc[row.key] = this->*row.field;
    }
    for (const auto &row : VOLUME_KEYS) {
        doc[row.key] = short_decimal(this->*row.field);
    }
    for (const auto &row : WHOLE_KEYS) {
        doc[row.key] = this->*row.field;
    }
    for (const auto &row : TEXT_KEYS) {
        doc[row.key] = this->*row.field;
    }
    for (const auto &row : TABLE_KEYS) {
        doc[row.key] = this->*row.field;
    }
    doc["farms"] = farms;
    doc["active"] = active;
    return doc;
}

void Save::write() {
    store_active_farm();
    store_document(path, document());
}

Dictionary Save::peek_farm(const String &file) {
    Dictionary doc;
    std::string bytes;
    if (load_document(file, doc, bytes) != LoadState::good) {
        return Dictionary();
    }
    PackedStringArray faults;
    const Array rows = mended_rows(read_list(doc, "farms"), faults);
    if (rows.is_empty()) {
        return read_table(doc, "farm");
    }
    const int64_t row = std::clamp<int64_t>(read_whole(doc, "active", 0), 0, rows.size() - 1);
    return read_table(as<Dictionary>(rows[row]), "farm");
}

Variant Save::setting(const StringName &key) const {
    const String text = key;
    if (const auto *row = find_key(FLAG_KEYS, text)) {
        return this->*row->field;
    }
    if (const auto *row = find_key(VOLUME_KEYS, text)) {
        return this->*row->field;
    }
    if (const auto *row = find_key(WHOLE_KEYS, text)) {
        return this->*row->field;
    }
    if (const auto *row = find_key(TEXT_KEYS, text)) {
        return this->*row->field;
    }
    if (const auto *row = find_key(TABLE_KEYS, text)) {
        return this->*row->field;
    }
    ERR_PRINT("TILMARCH no setting named " + text);
    return Variant();
}

void Save::put_setting(const StringName &key, const Variant &value) {
    const String text = key;
    Dictionary one;
    one[text] = value;
    if (const auto *row = find_key(FLAG_KEYS, text)) {
        this->*row->field = read_flag(one, text, this->*row->field);
    } else if (const auto *row = find_key(VOLUME_KEYS, text)) {
        this->*row->field = std::clamp(read_real(one, text, this->*row->field), row->least, row->most);
    } else if (const auto *row = find_key(WHOLE_KEYS, text)) {
        this->*row->field = std::clamp(read_whole(one, text, this->*row->field), row->least, row->most);
    } else if (const auto *row = find_key(TEXT_KEYS, text)) {
        this->*row->field = read_text(one, text, this->*row->field);
    } else if (const auto *row = find_key(TABLE_KEYS, text)) {
        if (value.get_type() == Variant::DICTIONARY) {
            this->*row->field = as<Dictionary>(value);
        }
    } else {
        ERR_PRINT("TILMARCH no setting named " + text);
    }
}

} // namespace tilm
