#pragma once
// Finds controls by what they show, as a player does.

#include <vector>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/label.hpp>

#include "engine_test.h"

namespace tilm {

template <class T>
void collect(Node *node, std::vector<T *> &found) {
    if (T *match = Object::cast_to<T>(node)) {
        if (!match->is_queued_for_deletion()) {
            found.push_back(match);
        }
    }
    for (int i = 0; i < node->get_child_count(); ++i) {
        collect(node->get_child(i), found);
    }
}

template <class T>
std::vector<T *> all_of(Node *node) {
    std::vector<T *> found;
    collect(node, found);
    return found;
}

inline Button *button_of(Node *node, const String &text) {
    for (Button *b : all_of<Button>(node)) {
        if (b->get_text() == text && b->is_visible_in_tree()) {
            return b;
        }
    }
    return nullptr;
}

inline Label *label_of(Node *node, const String &text) {
    for (Label *l : all_of<Label>(node)) {
        if (l->get_text() == text && l->is_visible_in_tree()) {
            return l;
        }
    }
    return nullptr;
}

// Presses a button through its own signal; a missing one fails the test.
inline bool press(Node *node, const String &text) {
    Button *b = button_of(node, text);
    EXPECT_NE(b, nullptr) << "no button \"" << text << "\"";
    if (b == nullptr) {
        return false;
    }
    b->emit_signal("pressed");
    return true;
}

} // namespace tilm
