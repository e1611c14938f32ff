#pragma once
// What running boosts look like on the player: shoes, a bag, floating signs, a speed trail.

#include <vector>

#include <godot_cpp/classes/cpu_particles3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class Walker;

class PlayerGear {
public:
    explicit PlayerGear(Walker *wearer) : wearer(wearer) {}

    // Takes off what is not in `ids` and puts on what is new.
    void wear(const Array &ids);
    Array worn() const;
    Dictionary nodes() const; // boost -> Array of its nodes
    CPUParticles3D *trail_node() const { return trail.get(); }
    double get_clock() const { return clock; }
    // Floats the signs and runs the trail; `v` is the wearer's speed.
    void step(double dt, double v, bool sitting);

private:
    struct Piece {
        String boost;
        std::vector<LiveRef<Node3D>> nodes;
        bool floats = false;
    };

    void put_on(const String &boost);
    void hang(Piece &piece, Node3D *node, const char *part, const Vector3 &pos, double scale);
    void make_trail();

    Walker *wearer;
    std::vector<Piece> pieces;
    LiveRef<CPUParticles3D> trail;
    double clock = 0.0;
};

} // namespace tilm
