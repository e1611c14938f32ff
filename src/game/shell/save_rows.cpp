#include "game/shell/save_rows.h"

#include <cstdio>
#include <random>

#include "safe_read.h"

namespace tilm {

namespace {

enum class Section { whole, real, flag, text, list, table, counts };

struct SectionRow {
    const char *key;
    Section type;
};

// clang-format off
constexpr SectionRow SECTIONS[] = {
    {"money", Section::whole}, {"gold_eggs", Section::whole}, {"levels", Section::counts}, {"paid", Section::counts},
    {"won", Section::flag}, {"trucks", Section::whole}, {"stars", Section::counts}, {"dock_done", Section::counts},
    {"truck_done", Section::counts}, {"missions", Section::list}, {"day", Section::text}, {"state", Section::table},
    {"extras", Section::list}, {"tools", Section::counts}, {"bank", Section::table}, {"saved_at", Section::whole},
    {"earn_rate", Section::real}, {"earn_slow", Section::real}, {"boosts", Section::table}, {"gifts", Section::table},
    {"services", Section::table}, {"security", Section::table}, {"wolves", Section::table}, {"ach", Section::table},
    {"sky", Section::table}, {"outfit", Section::text}, {"outfits", Section::list}, {"pets", Section::list},
    {"pets_home", Section::list}, {"horse_lv", Section::whole}, {"cart_lv", Section::whole}, {"decor", Section::list},
    {"tut", Section::text}, {"tips", Section::list}, {"daily", Section::table}, {"rgoals", Section::table},
    {"album", Section::table}, {"staff", Section::table}, {"escrow", Section::list}, {"moves", Section::table},
    {"lots", Section::whole}, {"sched", Section::table},
};
constexpr SectionRow GROUND[] = {
    {"piles", Section::table}, {"cash", Section::counts}, {"carry", Section::list}, {"feed_given", Section::table},
    {"px", Section::real}, {"pz", Section::real},
};
// clang-format on

bool is_number(const Variant &v) {
    return v.get_type() == Variant::INT || (v.get_type() == Variant::FLOAT && std::isfinite(as<double>(v)));
}

// Makes every value whole; what is no number goes. False where something went.
bool mend_counts(Dictionary counts) {
    bool good = true;
    const Array keys = counts.keys();
    for (int64_t i = 0; i < keys.size(); ++i) {
        const Variant value = counts[keys[i]];
        if (is_number(value)) {
            counts[keys[i]] = to_whole(value, 0);
        } else {
            counts.erase(keys[i]);
            good = false;
        }
    }
    return good;
}

// False where the value cannot stay.
bool mend_value(Dictionary doc, const SectionRow &row, bool &whole_section) {
    const String key(row.key);
    const Variant value = doc[key];
    switch (row.type) {
    case Section::whole:
        doc[key] = to_whole(value, 0);
        return is_number(value);
    case Section::real:
        return is_number(value);
    case Section::flag:
        return value.get_type() == Variant::BOOL;
    case Section::text:
        return value.get_type() == Variant::STRING;
    case Section::list:
        return value.get_type() == Variant::ARRAY;
    case Section::table:
        return value.get_type() == Variant::DICTIONARY;
    case Section::counts:
        if (value.get_type() != Variant::DICTIONARY) {
            return false;
        }
        whole_section = mend_counts(as<Dictionary>(value));
        return true;
    }
    return true;
}

template <size_t N>
void mend(Dictionary doc, const SectionRow (&rows)[N], const String &label, PackedStringArray &faults) {
    for (const SectionRow &row : rows) {
        const String key(row.key);
        if (!doc.has(key)) {
            continue;
        }
        bool whole_section = true;
        const bool stays = mend_value(doc, row, whole_section);
        if (!stays) {
            doc.erase(key);
        }
        if (!stays || !whole_section) {
            faults.append(label + String(".") + key);
        }
    }
}

void mend_piles(Dictionary piles, const String &label, PackedStringArray &faults) {
    const Array keys = piles.keys();
    for (int64_t i = 0; i < keys.size(); ++i) {
        const Variant pile = piles[keys[i]];
        bool good = pile.get_type() == Variant::DICTIONARY;
        if (good) {
            good = mend_counts(as<Dictionary>(pile));
        } else {
            piles.erase(keys[i]);
        }
        if (!good) {
            faults.append(label + String(".state.piles.") + keys[i].stringify());
        }
    }
}

} // namespace

void mend_farm(Dictionary farm, const String &label, PackedStringArray &faults) {
    mend(farm, SECTIONS, label, faults);
    Dictionary levels = read_table(farm, "levels");
    const Array ids = levels.keys();
    for (int64_t i = 0; i < ids.size(); ++i) {
        if (to_whole(levels[ids[i]], 0) < 0) {
            levels[ids[i]] = 0;
            faults.append(label + String(".levels.") + ids[i].stringify());
        }
    }
    if (farm.has("state")) {
        const Dictionary state = read_table(farm, "state");
        mend(state, GROUND, label + String(".state"), faults);
        mend_piles(read_table(state, "piles"), label, faults);
    }
}

Array mended_rows(const Array &stored, PackedStringArray &faults) {
    Array rows;
    for (int64_t i = 0; i < stored.size(); ++i) {
        const String label = String("farms[") + String::num_int64(i) + String("]");
        if (stored[i].get_type() != Variant::DICTIONARY) {
            faults.append(label);
            continue;
        }
        const Dictionary row = as<Dictionary>(stored[i]);
        if (row.has("farm") && row["farm"].get_type() != Variant::DICTIONARY) {
            faults.append(label + String(".farm"));
        }
        const Dictionary farm = read_table(row, "farm");
        mend_farm(farm, label, faults);
        String id = read_text(row, "id");
        if (id.is_empty()) {
            id = random_id();
        }
        const String usual_name = String("FARM ") + String::num_int64(rows.size() + 1);
        rows.append(farm_row(id, read_text(row, "name", usual_name), farm));
    }
    return rows;
}

Dictionary farm_row(const String &id, const String &name, const Dictionary &farm) {
    Dictionary row;
    row["id"] = id;
    row["name"] = name;
    row["farm"] = farm;
    return row;
}

String random_id() {
    static std::random_device source;
    char text[16];
    std::snprintf(text, sizeof text, "%08x", static_cast<unsigned>(source()));
    return String(text);
}

} // namespace tilm
