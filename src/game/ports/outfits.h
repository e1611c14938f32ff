#pragma once
// How outfits and chosen avatars look. The wardrobe implements it; without one everybody is a plain farmer.

#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class Outfits {
public:
    virtual ~Outfits() = default;

    static Outfits *current() { return slot(); }
    static void set_current(Outfits *outfits) { slot() = outfits; }

    // The look (see Models::person) of an outfit key worn by an avatar id; empty for an outfit that is not known.
    virtual Dictionary look_of(const String &outfit, const String &avatar) const = 0;

private:
    static Outfits *&slot() {
        static Outfits *outfits = nullptr;
        return outfits;
    }
};

} // namespace tilm
