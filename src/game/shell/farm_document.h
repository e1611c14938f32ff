#pragma once
// A farm's document: World's fields and what lies on the ground, to and from the Dictionary in the save file.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class CashTile;
class PileCore;
class Producer;
class World;
class ZoneCore;

class FarmDocument {
public:
    explicit FarmDocument(World &world) : world(world) {}

    // Takes the document that the farm is built from; wrong types read as empty.
    void open(const Dictionary &doc);
    bool is_empty() const { return source.is_empty(); }
    const Dictionary &opened() const { return source; }

    // Entry id -> level as saved, whole numbers above 0 only.
    Dictionary saved_levels() const;
    // Money, part payments and tools; the levels stand already.
    void load_core();
    // Goods on the ground, money on cash tiles, the player's place and hands. False when the time is over (`until`, in
    // the clock's microseconds): call again.
    bool load_state(uint64_t until);
    // Feed given to producers so far; gives each producer that has had none its free start.
    void load_feed();
    void give_feed(const String &id, Producer *producer);

    // The whole document. Sections of systems that this build does not have are carried over as they were read.
    Dictionary build();

    // Keys of the state section.
    static String pile_key(const ZoneCore &zone);
    static String cash_key(const Vector3 &pos);

private:
    World &world;
    Dictionary source;
    Dictionary stray_levels; // saved levels of entries that the plan does not have now
    Dictionary feed_given;
    Dictionary piles_left; // saved piles that no zone has taken yet
    int next_zone = 0;     // from which on piles are to be filled

    Dictionary state_now() const;
    bool load_piles(const Dictionary &piles, uint64_t until);
    void fill_pile(PileCore *pile, const Dictionary &by_kind, const String &key);
    void load_cash(const Dictionary &cash);
    void load_player(const Dictionary &state);
    void load_carry(const Array &kinds);
};

} // namespace tilm
