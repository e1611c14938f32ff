#pragma once
// What pets ask of the farm: who is sent home, and where there is something for them to do. World implements PetYard;
// the events and the sky implement PetQuarry, and without them there is no fox, no egg and no gold.

#include <godot_cpp/core/object.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class PetYard {
public:
    virtual ~PetYard() = default;

    // The farm behind an engine object, null if it is none.
    static PetYard *of(Object *object) { return dynamic_cast<PetYard *>(object); }

    virtual bool pet_is_home(const String &kind) const = 0;
    virtual const Array &pet_cash_tiles() const = 0;
    // Takes over a bill that the cat brings.
    virtual void collect_bill(Object *bill) = 0;
};

class PetQuarry {
public:
    virtual ~PetQuarry() = default;

    static PetQuarry *current() { return slot(); }
    static void set_current(PetQuarry *quarry) { slot() = quarry; }

    // True, with the place, while there is a fox that can still be chased.
    virtual bool fox(Vector3 &at) const = 0;
    virtual void chase_fox(const String &who) = 0;
    virtual bool golden_egg(Vector3 &at) const = 0;
    virtual void collect_egg(const String &who) = 0;
    // The nearest gold that lightning left in a puddle, within `reach` of `from`.
    virtual bool puddle(const Vector3 &from, double reach, Vector3 &at) const = 0;
    virtual void dig_puddle(const Vector3 &at, const String &who) = 0;

private:
    static PetQuarry *&slot() {
        static PetQuarry *quarry = nullptr;
        return quarry;
    }
};

} // namespace tilm
