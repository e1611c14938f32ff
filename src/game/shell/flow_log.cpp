#include "game/shell/flow_log.h"

#include <godot_cpp/variant/utility_functions.hpp>

namespace tilm {

void FlowLog::add(const String &key, int64_t n) {
    counts[key] += n;
}

void FlowLog::flush() {
    if (counts.empty()) {
        return;
    }
    String line = "TILMARCH flow/min";
    for (const auto &[key, n] : counts) {
        line += " " + key + "=" + String::num_int64(n);
        totals[key] += n;
    }
    counts.clear();
    UtilityFunctions::print(line);
}

int64_t FlowLog::minute(const String &key) const {
    const auto it = counts.find(key);
    return it != counts.end() ? it->second : 0;
}

int64_t FlowLog::total(const String &key) const {
    const auto it = totals.find(key);
    return (it != totals.end() ? it->second : 0) + minute(key);
}

} // namespace tilm
