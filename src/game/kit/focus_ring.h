#pragma once
// Shows which control a keyboard or a pad is on: a ring round it, hidden again when a finger or the mouse is used.

#include <cstdint>

#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/input_event.hpp>

namespace tilm {
using namespace godot;

class FocusRing {
public:
    explicit FocusRing(Node *owner); // in the tree; the ring lives in its viewport

    void see(const Ref<InputEvent> &event); // each event that the owner gets, before anything else
    bool keys_used() const { return keys; }
    void use_keys() { keys = true; }
    // Keys begin at the first control below `area` that they can reach; nothing while a finger or the mouse is used.
    void start(Node *area);
    void show();
    Control *focused() const;

    static Control *first_reachable(Node *area);

private:
    void hide();

    Node *owner;
    uint64_t ring_id = 0;
    bool keys = false;
};

} // namespace tilm
