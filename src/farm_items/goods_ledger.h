#pragma once
// The books of goods. Every good comes by a verb (laid, cut, bought, loaded ...) and leaves by one (sold, eaten ...);
// what comes or goes without one is a fault that the farm's report tells.

#include <cstdint>
#include <map>
#include <string>

#include "farm_items/item_kinds.h"

namespace tilm {

class ItemCore;

// Goods that are spawned or dropped while one of these lives come or leave by its verb; the innermost counts.
class GoodsVerb {
public:
    explicit GoodsVerb(const char *verb);
    ~GoodsVerb();
    GoodsVerb(const GoodsVerb &) = delete;
    GoodsVerb &operator=(const GoodsVerb &) = delete;

private:
    const char *outer;
};

class GoodsLedger {
public:
    struct Faults {
        std::map<std::string, int64_t> came; // kind -> goods that came without a verb
        std::map<std::string, int64_t> went; // kind -> goods that went without one
        bool none() const { return came.empty() && went.empty(); }
    };

    // A farm begins: the books are empty. Closed books count nothing: a farm that is torn down takes its goods along.
    static void open();
    static void close();
    // A good was spawned for the world.
    static void born(ItemCore *item);
    // The good leaves by `verb` (a literal; null: that of the innermost GoodsVerb) and is freed at the end of the
    // frame.
    static void leave(ItemCore *item, const char *verb = nullptr);
    // The same without freeing: somebody else does it later.
    static void mark_leaving(ItemCore *item, const char *verb);
    // The good is freed now.
    static void died(const ItemCore *item);

    // Sums since open(); came() == went() + here() always holds, by how they are counted.
    static int64_t came();
    static int64_t went();
    static int64_t here();
    static int64_t came_by(const std::string &verb);
    static int64_t went_by(const std::string &verb);
    // Faults since the last call.
    static Faults take_faults();
};

} // namespace tilm
