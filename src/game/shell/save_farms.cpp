// The part of Save that keeps the list of farms.

#include <algorithm>

#include "game/data/farm_data.h"
#include "game/shell/save.h"
#include "game/shell/save_rows.h"
#include "names.h"
#include "safe_read.h"

namespace tilm {

bool Save::switch_farm(int64_t i) {
    if (visiting || !is_row(i)) {
        return false;
    }
    write();
    active = i;
    data = read_table(as<Dictionary>(farms[i]), TM_NAME("farm"));
    write();
    return true;
}

bool Save::new_farm() {
    if (visiting || farms.size() >= MAX_FARMS) {
        return false;
    }
    // A farm that has been played and never written is no row yet.
    if (!farms.is_empty() || !data.is_empty()) {
        store_active_farm();
    }
    PackedStringArray names;
    for (int64_t i = 0; i < farms.size(); ++i) {
        names.append(read_text(as<Dictionary>(farms[i]), TM_NAME("name")));
    }
    int64_t number = 1;
    while (names.has("FARM " + String::num_int64(number))) {
        ++number;
    }
    farms.append(farm_row(random_id(), "FARM " + String::num_int64(number), Dictionary()));
    active = farms.size() - 1;
    data = read_table(as<Dictionary>(farms[active]), TM_NAME("farm"));
    write();
    return true;
}

void Save::delete_farm(int64_t i) {
    if (!is_row(i)) {
        return;
    }
    write();
    farms.remove_at(i);
    const bool lost_active = i == active;
    if (farms.is_empty()) {
        farms.append(farm_row(random_id(), "FARM 1", Dictionary()));
    }
    active = std::clamp<int64_t>(i < active ? active - 1 : active, 0, farms.size() - 1);
    if (lost_active) {
        (visiting ? stash : data) = read_table(as<Dictionary>(farms[active]), TM_NAME("farm"));
    }
    write();
}

double Save::farm_progress(int64_t i) const {
    const Array levels = read_table(row_farm(i), TM_NAME("levels")).values();
    double got = 0;
    for (int64_t k = 0; k < levels.size(); ++k) {
        got += static_cast<double>(to_whole(levels[k], 0));
    }
    const Array plan = FarmData::plan();
    int64_t all = 0;
    for (int64_t k = 0; k < plan.size(); ++k) {
        all += read_list(as<Dictionary>(plan[k]), TM_NAME("costs")).size();
    }
    return std::clamp(got / static_cast<double>(std::max<int64_t>(1, all)), 0.0, 1.0);
}

String Save::farm_id(int64_t i) const {
    const int64_t row = i < 0 ? active : i;
    return is_row(row) ? read_text(as<Dictionary>(farms[row]), TM_NAME("id")) : String();
}

int64_t Save::find_farm(const String &id) const {
    for (int64_t i = 0; i < farms.size(); ++i) {
        if (read_text(as<Dictionary>(farms[i]), TM_NAME("id")) == id) {
            return i;
        }
    }
    return -1;
}

} // namespace tilm
