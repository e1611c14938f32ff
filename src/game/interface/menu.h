#pragma once
// The title menu: a card over a living little farm. The player starts the active farm, picks among up to six, gives his
// name, or hears of a new version. One way out: the signal play_pressed.

#include <memory>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/canvas_layer.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/input_event.hpp>
#include <godot_cpp/classes/line_edit.hpp>
#include <godot_cpp/classes/margin_container.hpp>
#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/variant/dictionary.hpp>

namespace tilm {
using namespace godot;

class FocusRing;

class Menu : public CanvasLayer {
    GDCLASS(Menu, CanvasLayer)

public:
    Menu();
    ~Menu() override;
    void _ready() override;
    void _input(const Ref<InputEvent> &event) override;

    void _fill_card();
    void _fill_name();
    void _show_farms();
    Control *_farm_row(int i);
    void _show_update(const Dictionary &info);
    void _fit();
    void close_sheet();
    static Control *logo(double scale);
    static String name_from(const String &typed); // as it is kept: no blanks around, no marks of direction, 16 letters

    static void forget_later() { s_name_later = false; } // the name question may come again

protected:
    static void _bind_methods();
    void _notification(int what);

private:
    void start_farm();
    void save_name();
    VBoxContainer *open_sheet();

    void reveal();     // the card grows and fades in
    void start_keys(); // at the first button of what is in front

    static bool s_name_later;

    Control *screen = nullptr;
    std::unique_ptr<FocusRing> ring;
    Control *card_holder = nullptr;
    Control *title_holder = nullptr;
    Button *language = nullptr;
    VBoxContainer *card = nullptr;
    Control *sheet = nullptr;
    LineEdit *name_edit = nullptr;
    bool sheet_stays = false; // the sheet has no way round it
};

} // namespace tilm
