#pragma once
// The animals in a producer's yard: flat states that are stepped while in view, and a Dictionary each for everybody
// else.

#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>

#include "rules/producers.h"

namespace tilm {
using namespace godot;

class Producer;

class ProducerAnimals {
public:
    enum State { resting = 0, walking = 1, eating = 2, held = 3, lying = 4 };
    enum class Gait { legs, fins, wings };

    ProducerAnimals(Producer *owner, const rules::ProducerKind &kind);

    // Adds or frees animals (last first) until there are `n`.
    void set_count(int n);
    int count() const { return static_cast<int>(herd.size()); }
    // One frame in view.
    void step(double dt);
    // Fleeces come back, seen or not.
    void regrow(double dt);
    // Stops the best animal near a point (world) for `sec` seconds; empty without one.
    Dictionary hold(const Vector3 &near, double sec);
    void shear(const Dictionary &d);
    // A random animal as index, -1 without any.
    int random() const;
    // Where animal `i` is, in the world.
    Vector3 place_of(int i) const;
    // A hop, as when it lays.
    void hop(int i) { herd[static_cast<size_t>(i)].hop = 0; }
    // Per animal: n, state, goal, face, phase, feed, legs, lie, drink, rush, graze and for sheep shorn. Written at each
    // change of state and when asked for.
    Array views();

private:
    struct Model {
        Node3D *root = nullptr;
        Node3D *body = nullptr;
        Node3D *legs[4] = {};
        int leg_count = 0;
        int pose = -1;
    };
    struct Animal {
        Node3D *node = nullptr;
        Model full;
        Model bare; // a shorn sheep; made when first needed
        int state = resting;
        Vector3 at;   // local to the producer
        Vector3 goal; // the same
        float face = 0;
        float phase = 0;
        float timer = 0;
        float shorn = 0;       // seconds until the fleece is back
        float lie = 0;         // 0 standing, 1 lying
        float hop = 1;         // seconds since the hop began
        double held_until = 0; // on the owner's clock: a hold ends unseen too
        bool feed = false;
        bool drink = false;
        bool graze = false;
        bool rush = false;
        Dictionary view;
    };

    Model make_model(const String &what, Node3D *parent) const;
    Model &shown(Animal &a) { return a.shorn > 0 && a.bare.root != nullptr ? a.bare : a.full; }
    Animal make();
    void publish(Animal &a);
    void choose(Animal &a);
    void arrive(Animal &a);
    bool walk(Animal &a, float dt);
    void pose(Animal &a, float dt, bool moving);
    void show_fleece(Animal &a);
    bool is_held(Animal &a);
    Vector3 yard_spot() const;

    Producer *owner;
    const rules::ProducerKind &kind;
    String product;
    Gait gait;
    float pace; // units a second
    std::vector<Animal> herd;
    Array shared;
};

} // namespace tilm
