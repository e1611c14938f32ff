#include "game/shell/save_text.h"

#include <cerrno>
#include <cmath>

#include <godot_cpp/classes/json.hpp>
#include <godot_cpp/classes/project_settings.hpp>
#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/char_string.hpp>

#include "game/shell/durable_file.h"
#include "rules/json_guard.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr rules::JsonLimits LIMITS;

bool needs_repair(const Variant &value, int depth) {
    switch (value.get_type()) {
    case Variant::FLOAT:
        return !std::isfinite(as<double>(value));
    case Variant::DICTIONARY: {
        if (depth >= LIMITS.depth) {
            return true;
        }
        const Array values = as<Dictionary>(value).values();
        for (int64_t i = 0; i < values.size(); ++i) {
            if (needs_repair(values[i], depth + 1)) {
                return true;
            }
        }
        return false;
    }
    case Variant::ARRAY: {
        if (depth >= LIMITS.depth) {
            return true;
        }
        const Array list = as<Array>(value);
        for (int64_t i = 0; i < list.size(); ++i) {
            if (needs_repair(list[i], depth + 1)) {
                return true;
            }
        }
        return false;
    }
    default:
        return false;
    }
}

// `depth` counts the objects and arrays around the value.
Variant repaired(const Variant &value, int depth, int &repairs) {
    const Variant::Type type = value.get_type();
    if (type == Variant::FLOAT && !std::isfinite(as<double>(value))) {
        ++repairs;
        return 0.0;
    }
    if (type != Variant::DICTIONARY && type != Variant::ARRAY) {
        return value;
    }
    if (depth >= LIMITS.depth) {
        ++repairs;
        return Variant();
    }
    if (type == Variant::ARRAY) {
        const Array list = as<Array>(value);
        Array out;
        for (int64_t i = 0; i < list.size(); ++i) {
            out.append(repaired(list[i], depth + 1, repairs));
        }
        return out;
    }
    const Dictionary table = as<Dictionary>(value);
    const Array keys = table.keys();
    Dictionary out;
    for (int64_t i = 0; i < keys.size(); ++i) {
        out[keys[i]] = repaired(table[keys[i]], depth + 1, repairs);
    }
    return out;
}

void write_failed(int code, const String &temporary) {
    ERR_PRINT("TILMARCH save write failed (" + String::num_int64(code) + "): the old save is kept");
    remove_file(native_path(temporary));
}

} // namespace

Variant storable(const Variant &value, int &repairs) {
    return needs_repair(value, 0) ? repaired(value, 0, repairs) : value;
}

std::string document_bytes(const Dictionary &doc) {
    int repairs = 0;
    const Variant safe = storable(doc, repairs);
    if (repairs > 0) {
        ERR_PRINT("TILMARCH save: " + String::num_int64(repairs) + " values that cannot be stored were left out");
    }
    const CharString text = JSON::stringify(safe, "", true, false).utf8();
    return std::string(text.get_data(), static_cast<size_t>(text.length()));
}

bool parse_document(const std::string &bytes, Dictionary &doc) {
    if (!rules::json_refusal(bytes, LIMITS).empty()) {
        return false;
    }
    std::string mended;
    std::string_view text = bytes;
    if (rules::good_utf8_prefix(text) < text.size()) {
        mended = rules::repaired_utf8(text);
        text = mended;
    }
    Ref<JSON> json;
    json.instantiate();
    if (json->parse(String::utf8(text.data(), static_cast<int>(text.size()))) != OK) {
        return false;
    }
    const Variant data = json->get_data();
    if (data.get_type() != Variant::DICTIONARY) {
        return false;
    }
    doc = as<Dictionary>(data);
    return true;
}

LoadState load_document(const String &path, Dictionary &doc, std::string &bytes) {
    switch (read_file(native_path(path), LIMITS.bytes, bytes)) {
    case FileState::missing:
        return LoadState::missing;
    case FileState::unreadable:
        return LoadState::unreadable;
    case FileState::good:
        break;
    }
    return parse_document(bytes, doc) ? LoadState::good : LoadState::unreadable;
}

bool store_document(const String &path, const Dictionary &doc) {
    const String temporary = path + String(".tmp");
    const std::string bytes = document_bytes(doc);
    const WriteResult result = write_durable(native_path(temporary), bytes);
    if (!result.opened) {
        ERR_PRINT("TILMARCH cannot write " + temporary);
        return false;
    }
    if (result.error != 0) {
        write_failed(result.error, temporary);
        return false;
    }
    std::string stored;
    const FileState state = read_file(native_path(temporary), LIMITS.bytes, stored);
    if (state != FileState::good || stored != bytes || !rules::is_json_object(stored, LIMITS)) {
        write_failed(EIO, temporary);
        return false;
    }
    const int code =
        replace_keeping_backup(native_path(path), native_path(temporary), native_path(path + String(".bak")));
    if (code != 0) {
        write_failed(code, temporary);
        return false;
    }
    return true;
}

void set_aside(const String &path) {
    const int code = move_file(native_path(path), native_path(path + String(".corrupt")));
    if (code != 0) {
        ERR_PRINT("TILMARCH cannot set aside " + path + " (" + String::num_int64(code) + ")");
    }
}

std::string native_path(const String &path) {
    const CharString bytes = ProjectSettings::get_singleton()->globalize_path(path).utf8();
    return std::string(bytes.get_data(), static_cast<size_t>(bytes.length()));
}

} // namespace tilm
