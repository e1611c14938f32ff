#pragma once
// Counters of goods made, sold and lost, written to the log once a minute and added to the totals of the session.

#include <cstdint>
#include <map>

#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class FlowLog {
public:
    void add(const String &key, int64_t n);
    // Logs "TILMARCH flow/min key=n ..." and clears the minute. Silent when nothing happened.
    void flush();
    int64_t minute(const String &key) const;
    int64_t total(const String &key) const; // of the session, the running minute included

private:
    std::map<String, int64_t> counts;
    std::map<String, int64_t> totals;
};

} // namespace tilm
