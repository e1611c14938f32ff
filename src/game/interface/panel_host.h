#pragma once
// The one modal panel: a dark sheet over the farm, a framed box with title, tabs, scrolled content and CLOSE.

#include <functional>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/callable.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

// How a panel differs from a full list.
struct PanelForm {
    float height = 0; // of the scrolled content; 0: that of a list
    String close_text = "CLOSE";
    const char *close_color = "1e88e5";
    Callable on_close_press; // besides closing
};

class PanelHost {
public:
    explicit PanelHost(Control *root);

    void open(const String &title, const Array &tabs, const String &tab, const Callable &on_tab, const Callable &fill,
              const PanelForm &form = PanelForm());
    void close();
    void refill();
    bool is_open() const { return box != nullptr; }
    VBoxContainer *content() const { return content_box; }
    String title() const { return open_title; }
    String tab() const { return open_tab; }
    Control *layer() const { return overlay; }
    Control *panel_box() const { return box; }

    std::function<void()> on_closed; // runs after each close

private:
    void add_tabs(VBoxContainer *column, const Array &tabs);
    void style_tabs();
    float list_height(float wanted) const;

    Control *overlay = nullptr;
    Control *sheet = nullptr; // all of one opening, freed with it
    VBoxContainer *box = nullptr;
    VBoxContainer *content_box = nullptr;
    Control *tab_row = nullptr;
    Callable fill;
    Callable on_tab;
    String open_title;
    String open_tab;
};

} // namespace tilm
