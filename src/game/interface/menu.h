#pragma once
// The title menu: a card over a living little farm. The player starts the active farm, picks among up to six, gives his
// name, or hears of a new version. One way out: the signal play_pressed.

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/canvas_layer.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/line_edit.hpp>
#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/variant/dictionary.hpp>

namespace tilm {
using namespace godot;

class Menu : public CanvasLayer {
    GDCLASS(Menu, CanvasLayer)

public:
    void _ready() override;

    void _fill_card();
    void _fill_name();
    void _show_farms();
    Control *_farm_row(int i);
    void _show_update(const Dictionary &info);
    void _fit();
    static Control *logo(double scale);

    static void forget_later() { s_name_later = false; } // the name question may come again

protected:
    static void _bind_methods();
    void _notification(int what);

private:
    void start_farm();
    void save_name();
    void close_sheet();
    VBoxContainer *open_sheet();

    static bool s_name_later;

    Control *screen = nullptr;
    Control *card_holder = nullptr;
    Button *language = nullptr;
    VBoxContainer *card = nullptr;
    Control *sheet = nullptr;
    LineEdit *name_edit = nullptr;
};

} // namespace tilm
