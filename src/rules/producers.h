#pragma once
// Kinds of producers and the arithmetic of making goods: intervals, seasons, tray sizes, feed purchases.

#include <span>
#include <string_view>

namespace tilm::rules {

enum class HandWork {
    none,   // nobody works there
    stroll, // the hand is for show, goods are laid directly
    bring,  // goods reach the tray only in the hand's arms
};

struct ProducerKind {
    std::string_view product;
    std::string_view title;  // of the building
    std::string_view plural; // the word for what grows with a level, such as "CHICKENS"
    bool big;                // large animals: barns, pens, sheds
    int per;                 // animals for each level, 0 for trees and shrubs
    double base;             // seconds
    std::string_view feed;   // empty: takes none
    int meals;               // units made from one feed item
    HandWork hand;
    double work_seconds; // of the hand at one job
};

inline constexpr int tray_room_floor = 24; // room of a tray up to level 5
inline constexpr int top_level = 10000;    // beyond it a level is damage
inline constexpr int trough_room = 40;
inline constexpr int start_feed_items = 6;
inline constexpr double hunger_sign = 3.0;  // seconds of hunger until the sign shows
inline constexpr double hunger_sick = 75.0; // seconds of hunger until illness
inline constexpr double hunger_spared = 55.0;
inline constexpr double hunger_feed_late = 12.0;
inline constexpr double catch_patience = 25.0; // seconds until a catch goes to the tray without its hand
inline constexpr double buy_pause = 3.0;       // seconds between purchases of feed
inline constexpr double fleece_seconds = 30.0;

std::span<const ProducerKind> producer_kinds();
// Null for an unknown product.
const ProducerKind *producer_kind(std::string_view product);

int animal_count(const ProducerKind &kind, int level);
int visible_animals(const ProducerKind &kind, int level);
int tray_room(int level);
// Factor of production, by season 0..3 (others count as 1).
double season_factor(std::string_view product, int season);
// Seconds for one unit.
double unit_seconds(const ProducerKind &kind, int level, int feed_level, double animal_factor, double season);
// Chance of an illness at one roll.
double overwork_chance(int level);
// Items to buy for a trough holding `count`, 0 when it holds enough.
int feed_to_buy(int count);

} // namespace tilm::rules
