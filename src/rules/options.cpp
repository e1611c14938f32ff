#include "rules/options.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

namespace tilm::rules {
namespace {

enum class Value { None, Needed, Optional };

// Live: it works. Idle: its system is not in the game yet. Elsewhere: another class reads it.
enum class State { Live, Idle, Elsewhere };

using Apply = void (*)(Options &options, std::string_view value);

struct Row {
    std::string_view name;
    Value value;
    State state;
    Apply apply;
};

void problem(Options &options, std::string_view value, std::string_view wanted) {
    options.problems.push_back("value '" + std::string(value) + "' is not " + std::string(wanted));
}

// Reads a number between two bounds; one outside is moved to the bound, text that is no number changes nothing.
template <class T>
bool take(Options &options, std::string_view text, double low, double high, T &into) {
    const std::optional<double> n = number_in(text);
    if (!n) {
        problem(options, text, "a number");
        return false;
    }
    if (*n < low || *n > high) {
        problem(options, text, "in its range");
    }
    into = static_cast<T>(std::clamp(*n, low, high));
    return true;
}

std::string upper(std::string_view text) {
    std::string out(text);
    for (char &c : out) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return out;
}

std::vector<std::string> comma_list(std::string_view text) {
    std::vector<std::string> out;
    while (!text.empty()) {
        const size_t comma = std::min(text.find(','), text.size());
        if (comma > 0) {
            out.emplace_back(text.substr(0, comma));
        }
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return out;
}

void take_shot_size(Options &o, std::string_view text) {
    const size_t x = text.find('x');
    const std::optional<double> w = number_in(text.substr(0, x));
    const std::optional<double> h = x == text.npos ? std::nullopt : number_in(text.substr(x + 1));
    if (!w || !h || *w < 16 || *h < 16 || *w > 8192 || *h > 8192) {
        problem(o, text, "WIDTHxHEIGHT, each 16 to 8192");
        return;
    }
    o.shot_width = static_cast<int>(*w);
    o.shot_height = static_cast<int>(*h);
}

void take_horse(Options &o, std::string_view text) {
    const std::vector<std::string> parts = comma_list(text);
    if (parts.empty() || parts.size() > 2) {
        problem(o, text, "HORSE,CART");
        return;
    }
    take(o, parts[0], 0, 100, o.horse);
    if (parts.size() > 1) {
        take(o, parts[1], 0, 100, o.cart);
    }
}

void take_hour(Options &o, std::string_view text) {
    const std::optional<double> hour = number_in(text);
    if (!hour || *hour < 0 || *hour >= 24) {
        problem(o, text, "an hour from 0 to below 24");
        return;
    }
    o.day_clock = clock_of_hour(*hour);
}

constexpr double kSeconds = 1e9; // upper bound of times
constexpr double kPlace = 1e5;   // upper bound of coordinates

const Row kRows[] = {
    {"--play", Value::None, State::Live, [](Options &o, std::string_view) { o.start = true; }},
    {"--level", Value::Needed, State::Live, [](Options &o, std::string_view) { o.start = true; }},
    {"--fresh", Value::None, State::Live,
     [](Options &o, std::string_view) { o.farm_steps.push_back(FarmStep::Clear); }},
    {"--maxfarm", Value::None, State::Live,
     [](Options &o, std::string_view) {
         o.max_farm = true;
         o.farm_steps.push_back(FarmStep::MaxFarm);
     }},
    {"--hideplayer", Value::None, State::Live, [](Options &o, std::string_view) { o.hide_player = true; }},
    {"--nohud", Value::None, State::Live, [](Options &o, std::string_view) { o.no_hud = true; }},
    {"--atz", Value::Needed, State::Live,
     [](Options &o, std::string_view v) { take(o, v, -kPlace, kPlace, o.at_z); }},
    {"--at", Value::Needed, State::Live, [](Options &o, std::string_view v) { take(o, v, -kPlace, kPlace, o.at_x); }},
    {"--allcash", Value::Optional, State::Idle,
     [](Options &o, std::string_view v) {
         o.all_cash = true;
         if (!v.empty()) {
             take(o, v, 0, kSeconds, o.all_cash_at);
         }
     }},
    {"--stage", Value::Needed, State::Live, [](Options &o, std::string_view v) { take(o, v, 0, 10000, o.stage); }},
    {"--zoom", Value::Needed, State::Live, [](Options &o, std::string_view v) { take(o, v, 1, 20, o.zoom); }},
    {"--autoplay", Value::None, State::Live, [](Options &o, std::string_view) { o.autoplay = true; }},
    {"--shots", Value::Needed, State::Live, [](Options &o, std::string_view v) { o.shots = v; }},
    {"--shotsize", Value::Needed, State::Live, take_shot_size},
    {"--every", Value::Needed, State::Live, [](Options &o, std::string_view v) { take(o, v, 0.05, 3600, o.every); }},
    {"--timescale", Value::Needed, State::Live,
     [](Options &o, std::string_view v) {
         double scale = 1.0;
         if (take(o, v, 0.01, 100, scale)) {
             o.time_scale = scale;
         }
     }},
    {"--pause", Value::None, State::Live, [](Options &o, std::string_view) { o.start_paused = true; }},
    {"--night", Value::None, State::Idle, [](Options &o, std::string_view) { o.day_clock = 380.0; }},
    {"--hour", Value::Needed, State::Idle, take_hour},
    {"--coffee", Value::None, State::Idle, [](Options &o, std::string_view) { o.coffee = true; }},
    {"--annex", Value::None, State::Idle, [](Options &o, std::string_view) { o.annex = true; }},
    {"--whistle", Value::None, State::Idle, [](Options &o, std::string_view) { o.day_clock = 149.0; }},
    {"--season", Value::Needed, State::Idle, [](Options &o, std::string_view v) { o.season = upper(v); }},
    {"--weather", Value::Needed, State::Idle, [](Options &o, std::string_view v) { o.weather = v; }},
    {"--away", Value::Needed, State::Live, [](Options &o, std::string_view v) { take(o, v, 0, kSeconds, o.away); }},
    {"--tut", Value::None, State::Idle, [](Options &o, std::string_view) { o.tutorial = true; }},
    {"--panel", Value::Needed, State::Live, [](Options &o, std::string_view v) { o.panel = upper(v); }},
    {"--perktest", Value::None, State::Idle, [](Options &o, std::string_view) { o.perk_test = true; }},
    {"--market", Value::None, State::Idle, [](Options &o, std::string_view) { o.market = true; }},
    {"--mtest", Value::None, State::Idle, [](Options &o, std::string_view) { o.market_run = true; }},
    {"--btest", Value::Needed, State::Idle, [](Options &o, std::string_view v) { o.bank_test = v; }},
    {"--fill", Value::Needed, State::Idle, [](Options &o, std::string_view v) { take(o, v, 0, 100000, o.fill); }},
    {"--walk", Value::Optional, State::Idle,
     [](Options &o, std::string_view v) {
         o.walk = 20.0;
         if (!v.empty()) {
             take(o, v, 0, kSeconds, o.walk);
         }
     }},
    {"--tab", Value::Needed, State::Live, [](Options &o, std::string_view v) { o.tab = upper(v); }},
    {"--bankday", Value::Needed, State::Idle,
     [](Options &o, std::string_view v) { take(o, v, 1, kSeconds, o.bank_day); }},
    {"--horse", Value::Needed, State::Idle, take_horse},
    {"--pet", Value::Needed, State::Idle, [](Options &o, std::string_view v) { o.pets = comma_list(v); }},
    {"--money", Value::Needed, State::Live,
     [](Options &o, std::string_view v) {
         int64_t n = 0;
         if (take(o, v, 0, 9e15, n)) {
             o.money = n;
         }
     }},
    {"--noproc", Value::Needed, State::Live,
     [](Options &o, std::string_view v) { o.frozen_classes = comma_list(v); }},
    {"--sfxlog", Value::None, State::Elsewhere, [](Options &o, std::string_view) { o.sound_log = true; }},
    {"--fakemap", Value::Needed, State::Idle, [](Options &o, std::string_view v) { take(o, v, 0, 3, o.fake_map); }},
    {"--maptheme", Value::Needed, State::Idle, [](Options &o, std::string_view v) { o.map_theme = v; }},
    {"--faketrade", Value::None, State::Idle, [](Options &o, std::string_view) { o.fake_trade = true; }},
    {"--visitsave", Value::Needed, State::Live, [](Options &o, std::string_view v) { o.visit_save = v; }},
    {"--labelscan", Value::None, State::Live, [](Options &o, std::string_view) { o.label_scan = true; }},
    {"--moves", Value::None, State::Live, [](Options &o, std::string_view) { o.moves = true; }},
    {"--tris", Value::None, State::Live, [](Options &o, std::string_view) { o.triangles = true; }},
    {"--census", Value::None, State::Live, [](Options &o, std::string_view) { o.census = true; }},
    {"--perfx", Value::Needed, State::Live,
     [](Options &o, std::string_view v) {
         o.perfx = true;
         o.feature_groups = comma_list(v);
     }},
    {"--scale3d", Value::Needed, State::Live,
     [](Options &o, std::string_view v) {
         double scale = 1.0;
         if (take(o, v, 0.1, 2, scale)) {
             o.scale_3d = scale;
         }
     }},
    {"--novsync", Value::None, State::Live, [](Options &o, std::string_view) { o.no_vsync = true; }},
    {"--dumpprims", Value::None, State::Live, [](Options &o, std::string_view) { o.dump_prims = true; }},
    {"--autoq", Value::None, State::Live, [](Options &o, std::string_view) { o.auto_quality = true; }},
    {"--quality", Value::Needed, State::Live, [](Options &o, std::string_view v) { take(o, v, 0, 3, o.quality); }},
    {"--bench", Value::None, State::Idle, [](Options &o, std::string_view) { o.bench = true; }},
    {"--sound", Value::None, State::Live, [](Options &o, std::string_view) { o.sound = true; }},

    // Diagnostics that start once a farm stands.
    {"--notify", Value::None, State::Live, nullptr},
    {"--brk", Value::Needed, State::Idle, nullptr},
    {"--alertsign", Value::None, State::Idle, nullptr},
    {"--alerts", Value::Needed, State::Idle, nullptr},
    {"--alertgo", Value::None, State::Idle, nullptr},
    {"--tapat", Value::Needed, State::Live, nullptr},
    {"--moveto", Value::Needed, State::Live, nullptr},
    {"--buymed", Value::Needed, State::Idle, nullptr},
    {"--gifts", Value::Needed, State::Idle, nullptr},
    {"--gold", Value::Needed, State::Idle, nullptr},
};

struct Foreign {
    std::string_view name;
    Value value;
    State state;
};

// Words that other classes read from the same list.
const Foreign kForeign[] = {
    {"--save", Value::Needed, State::Elsewhere},    {"--lang", Value::Needed, State::Elsewhere},
    {"--trmiss", Value::None, State::Elsewhere},    {"--calm", Value::None, State::Elsewhere},
    {"--name", Value::Needed, State::Idle},         {"--net", Value::Needed, State::Idle},
    {"--autoaccept", Value::None, State::Idle},     {"--autotrade", Value::None, State::Idle},
    {"--nettest", Value::Needed, State::Idle},      {"--voicetest", Value::None, State::Idle},
    {"--avtest", Value::None, State::Idle},         {"--voicebench", Value::None, State::Idle},
    {"--hotspottest", Value::Needed, State::Idle},  {"--hotspotcode", Value::Needed, State::Idle},
    {"--cooptest", Value::Optional, State::Idle},   {"--helptest", Value::None, State::Idle},
    {"--chattest", Value::None, State::Idle},       {"--nodaily", Value::None, State::Idle},
    {"--inboxurl", Value::Needed, State::Idle},     {"--reporturl", Value::Needed, State::Idle},
    {"--pingurl", Value::Needed, State::Idle},      {"--reportnow", Value::None, State::Idle},
    {"--reporttest", Value::None, State::Idle},     {"--updurl", Value::Needed, State::Idle},
    {"--fakever", Value::Needed, State::Idle},      {"--thief", Value::None, State::Idle},
    {"--foltest", Value::None, State::Idle},        {"--folanswer", Value::Needed, State::Idle},
    {"--wolves", Value::Needed, State::Idle},       {"--watermen", Value::Needed, State::Idle},
    {"--tasks", Value::None, State::Idle},          {"--uitest", Value::None, State::Idle},
    {"--zoomtest", Value::None, State::Idle},       {"--hosttools", Value::None, State::Idle},
    {"--showfarms", Value::None, State::Elsewhere},
};

// Whether the word's form fits; a half one is told.
bool form_fits(Options &options, std::string_view name, Value kind, bool has_value, std::string_view value) {
    // Any value of --level will do, also none after the sign.
    if (kind == Value::Needed && (!has_value || (value.empty() && name != "--level"))) {
        options.problems.push_back("option " + std::string(name) + " needs a value: " + std::string(name) + "=...");
        return false;
    }
    if (kind == Value::None && has_value) {
        options.problems.push_back("option " + std::string(name) + " takes no value");
        return false;
    }
    return true;
}

void note_state(Options &options, std::string_view name, State state) {
    if (state == State::Idle && std::find(options.idle.begin(), options.idle.end(), name) == options.idle.end()) {
        options.idle.emplace_back(name);
    }
}

void read_word(Options &options, const std::string &word) {
    const size_t equals = word.find('=');
    const bool has_value = equals != std::string::npos;
    const std::string_view name = std::string_view(word).substr(0, equals);
    const std::string_view value = has_value ? std::string_view(word).substr(equals + 1) : std::string_view();

    for (const Row &row : kRows) {
        if (row.name != name) {
            continue;
        }
        if (form_fits(options, name, row.value, has_value, value)) {
            const size_t told = options.problems.size();
            if (row.apply != nullptr) {
                row.apply(options, value);
            } else {
                options.after_build.emplace_back(name, value);
            }
            for (size_t i = told; i < options.problems.size(); ++i) {
                options.problems[i] = "option " + std::string(name) + ": " + options.problems[i];
            }
            note_state(options, name, row.state);
        }
        return;
    }
    for (const Foreign &row : kForeign) {
        if (row.name == name) {
            if (form_fits(options, name, row.value, has_value, value)) {
                note_state(options, name, row.state);
            }
            return;
        }
    }
    options.problems.push_back("unknown word '" + word + "' ignored");
}

} // namespace

std::optional<double> number_in(std::string_view text) {
    double n = 0.0;
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, n);
    if (text.empty() || error != std::errc() || stop != end || !std::isfinite(n)) {
        return std::nullopt;
    }
    return n;
}

double clock_of_hour(double hour) {
    if (hour >= 6.0 && hour < 19.0) {
        return (hour - 6.0) / 13.0 * 330.0;
    }
    return ((hour < 6.0 ? hour + 24.0 : hour) - 19.0) / 11.0 * 150.0 + 330.0;
}

Options parse_options(std::span<const std::string> words) {
    Options options;
    options.given = !words.empty();
    for (const std::string &word : words) {
        read_word(options, word);
    }
    return options;
}

} // namespace tilm::rules
