#pragma once
// The farm's garden decorations: the saved list of {type, x, z}, the models that stand for it, and their shop.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

#include "game/ports/garden_shop.h"
#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class World;

class Decorations : public GardenShop {
public:
    explicit Decorations(World &farm) : world(farm) {}
    ~Decorations() override;

    // Key `decor` of a farm document. Types that are not known are kept, not shown; one whose place cannot be gets a
    // free one; what is no decoration is dropped.
    void load(const Dictionary &doc);
    void store(Dictionary &doc) const { doc["decor"] = get_placed(); }
    // Sets up the models that are missing; false when the time is over (`until`, in the clock's microseconds): call
    // again.
    bool raise(uint64_t until);

    Array get_placed() const;           // all rows of the document, those that are not shown last
    void set_placed(const Array &rows); // all models anew, at once

    // GardenShop.
    std::vector<DecorOffer> list() const override;
    int charm() const override;
    String buy(const String &type) override;

private:
    void take(const Array &rows);
    bool fits_among(const String &type, const Vector3 &at) const;
    Vector3 free_spot(const String &type) const;
    Array owned() const;
    Node3D *stand(const Dictionary &row);

    World &world;
    Array placed;           // rows that stand
    Array kept;             // rows that have no model or no place now
    int64_t next = 0;       // the first row of `placed` whose model does not stand yet
    LiveRef<Node3D> ground; // holds the models
};

} // namespace tilm
