#pragma once
// Launch options: the words after `--` on the command line, read into one plain struct.

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tilm::rules {

// Changes of the active farm's document, in the order in which they were asked for.
enum class FarmStep { Clear, MaxFarm };

struct Options {
    bool given = false; // the list held at least one word
    bool start = false; // skip the menu
    bool sound = false; // do not mute
    std::vector<FarmStep> farm_steps;

    // The farm and its camera.
    bool max_farm = false;
    bool hide_player = false;
    double at_x = std::numeric_limits<double>::infinity();
    double at_z = std::numeric_limits<double>::infinity();
    double zoom = 1.0; // at least 1
    int stage = 0;
    std::optional<int64_t> money;
    int64_t away = -1;       // seconds, -1: as measured
    double day_clock = -1.0; // 0..480, -1: as saved
    std::string season;      // upper case
    std::string weather;
    bool autoplay = false;
    bool coffee = false;
    bool annex = false;
    bool tutorial = false;
    int horse = -1;
    int cart = -1;
    std::vector<std::string> pets;
    double bank_day = 0.0; // seconds, 0: as usual

    // What is shown.
    bool no_hud = false;
    bool start_paused = false;
    std::string panel;
    std::string tab;
    std::string shots; // folder of the screenshots, empty: none
    int shot_width = 720;
    int shot_height = 1560;
    double every = 4.0; // seconds between screenshots
    std::optional<double> time_scale;
    std::optional<double> scale_3d;
    bool no_vsync = false;
    bool auto_quality = false;
    int quality = -1; // 0 best .. 3, -1: as saved

    // Scripted checks and scans.
    bool all_cash = false;
    double all_cash_at = 14.0; // seconds
    bool perk_test = false;
    bool market = false;
    bool market_run = false;
    std::string bank_test;
    int fill = 0;
    double walk = 0.0; // seconds, 0: none
    std::vector<std::string> frozen_classes;
    std::vector<std::string> feature_groups;
    bool perfx = false;
    bool sound_log = false;
    bool label_scan = false;
    bool moves = false;
    bool triangles = false;
    bool census = false;
    bool dump_prims = false;
    bool bench = false;
    int fake_map = -1; // 0..3
    std::string map_theme;
    bool fake_trade = false;
    std::string visit_save;

    // Name and value of the diagnostics that start once a farm stands.
    std::vector<std::pair<std::string, std::string>> after_build;

    std::vector<std::string> idle;     // options given whose system is not in the game yet
    std::vector<std::string> problems; // one line for each word that was not understood
};

// Reads the words in their order, so that a later one overrides an earlier one. Never fails: what cannot be used is
// told in `problems` and leaves the default.
Options parse_options(std::span<const std::string> words);

// The workday clock (0..480, 0 at six in the morning) at an hour of the day, 0 <= hour < 24.
double clock_of_hour(double hour);

// The whole text as a number: no blanks, no rest, finite.
std::optional<double> number_in(std::string_view text);

} // namespace tilm::rules
