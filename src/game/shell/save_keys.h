#pragma once
// The settings of the save file that are simple values, as rows: key, field, default.

#include <span>

#include "game/shell/save.h"

namespace tilm {

template <class T>
struct SaveKey {
    const char *key;
    T Save::*field;
    T fallback;
    // Numbers are kept within these ends.
    T least = {};
    T most = {};
};

struct TextKey {
    const char *key;
    String Save::*field;
};

struct TableKey {
    const char *key;
    Dictionary Save::*field;
};

// clang-format off
inline constexpr SaveKey<bool> FLAG_KEYS[] = {
    {"sound_on", &Save::sound_on, true}, {"music_on", &Save::music_on, true}, {"moved", &Save::moved, false},
    {"notify_on", &Save::notify_on, true}, {"notify_asked", &Save::notify_asked, false},
    {"vibrate_on", &Save::vibrate_on, true}, {"voice_open", &Save::voice_open, false},
};
inline constexpr SaveKey<double> VOLUME_KEYS[] = {
    {"vol_music", &Save::vol_music, 0.8, 0.0, 1.0}, {"vol_ambience", &Save::vol_ambience, 0.8, 0.0, 1.0},
    {"vol_effects", &Save::vol_effects, 0.8, 0.0, 1.0}, {"vol_voice", &Save::vol_voice, 0.8, 0.0, 1.0},
};
inline constexpr SaveKey<int64_t> WHOLE_KEYS[] = {
    {"zoom", &Save::zoom, 1, 0, 2}, {"quality", &Save::quality, 0, 0, 3},
    {"text_size", &Save::text_size, 100, 100, 150},
    {"net_nudge_at", &Save::net_nudge_at, 0, INT64_MIN, INT64_MAX},
};
inline constexpr TextKey TEXT_KEYS[] = {
    {"avatar", &Save::avatar}, {"lang", &Save::lang}, {"name", &Save::name}, {"net_tok", &Save::net_tok},
};
inline constexpr TableKey TABLE_KEYS[] = {
    {"net_last", &Save::net_last}, {"net_done", &Save::net_done}, {"net_await", &Save::net_await},
    {"net_ship", &Save::net_ship}, {"net_gift", &Save::net_gift}, {"coop", &Save::coop},
};
// clang-format on

} // namespace tilm
