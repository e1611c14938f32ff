#pragma once
// Shows toasts in a lane at the top; ToastQueue decides which and how long.

#include <unordered_map>

#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/classes/v_box_container.hpp>

#include "rules/toast_queue.h"

namespace tilm {
using namespace godot;

class ToastLane {
public:
    explicit ToastLane(Control *root);

    void add(const String &text, int level);
    void step(double delta);
    void relayout(const Vector2 &screen);
    void keep_below(double bars_end); // of a tall screen: its bars take the whole width
    void make_way(bool panel_open);   // an open panel's title must stay readable
    void follow_language();           // rows on the screen are written anew

    int rows() const { return static_cast<int>(queue.lane().size()); }
    int waiting() const { return static_cast<int>(queue.waiting()); }
    VBoxContainer *box() const { return lane; }

private:
    struct Row {
        Control *slot = nullptr;
        Control *panel = nullptr;
        Control *line = nullptr;
        Label *label = nullptr;
        Label *count = nullptr;
        Ref<Tween> entrance;
        String text; // untranslated
    };
    void sync();
    Row make_row(const rules::ToastQueue::Toast &toast);
    void write(Row &row) const;
    void leave(int id);

    rules::ToastQueue queue;
    VBoxContainer *lane = nullptr;
    std::unordered_map<int, Row> shown;
    double text_room = 560.0;
    bool tall = true;
    bool over_panel = false;
    float below_bars = 430.0f;
    float top = 24.0f;
};

} // namespace tilm
