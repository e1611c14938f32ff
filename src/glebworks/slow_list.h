#pragma once
// Process-wide lists that step nodes less often than every frame, with the time that really passed.

#include <cstdint>
#include <vector>

#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/variant/callable.hpp>

namespace tilm {
using namespace godot;

class SlowList {
public:
    using Step = void (*)(Node *node, double dt);

    // Adds a node that steps by `fn`, or by its own _process without one. Its own processing is turned off.
    // every: seconds between steps; 0 joins the round-robin list that visits a quarter of its nodes each frame.
    void add(Node *node, Step fn = nullptr, double every = 0.0);
    void remove(Node *node);
    // Visits ceil(count / 4) nodes from a cursor.
    void tick(double dt);
    // Visits the nodes whose time has come.
    void tick_timed(double dt);
    int count() const { return (int)entries.size(); }
    void clear() { entries.clear(); }

private:
    struct Entry {
        uint64_t id;
        Node *node;
        double stamp;
        Step fn;
        double every;
        bool scripted;
    };

    // False when the entry's node is dead.
    bool visit(size_t i);

    std::vector<Entry> entries;
    double clock = 0.0;
    size_t cursor = 0;
};

} // namespace tilm
