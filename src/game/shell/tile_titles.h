#pragma once
// Labels of price tiles by kind of entry and level.

#include <functional>

#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

// What the labels ask about systems that a farm may not have; unset answers count as the system missing.
struct TitleHooks {
    // Guards hired and wanted; false without a security system.
    std::function<bool(int &hired, int &wanted)> guards;
    // True when a hauler to this entry has not been bought yet.
    std::function<bool(const String &id)> helper_is_limit;
    // True when the level after n (>= 1) adds beds or seats rather than comfort. Without an answer: it does.
    std::function<bool(const String &kind, int n)> adds_places;
};

// The label of the tile that buys the level after `n` of `entry`.
String tile_title(const Dictionary &entry, int n, const TitleHooks &hooks);

} // namespace tilm
