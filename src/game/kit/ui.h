#pragma once
// The kit of controls that every panel is made of: one font, one theme, raised buttons, cards, icons. All static.

#include <cstdint>
#include <functional>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/font.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/panel_container.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/classes/style_box_flat.hpp>
#include <godot_cpp/classes/texture2d.hpp>
#include <godot_cpp/classes/texture_rect.hpp>
#include <godot_cpp/classes/theme.hpp>
#include <godot_cpp/variant/callable.hpp>
#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector4.hpp>

namespace tilm {
using namespace godot;

class UI : public RefCounted {
    GDCLASS(UI, RefCounted)

public:
    static void setup_statics();

    static Ref<Font> font(); // Latin with the Arabic font behind it; the engine's own when the files are missing
    // The same font with lines as tight as Latin text needs them; its Arabic part alone would set them far apart.
    static Ref<Font> font_at(int size);
    static Ref<Theme> theme(); // shared by the whole game: the font at size 34

    // Text size in percent, 100, 125 or 150: all text of the kit is drawn by it. A change reaches every control that
    // stands; what was laid out by hand has to be made anew.
    static int text_size();
    static void set_text_size(int64_t percent);
    static int scaled(int size);                           // a font size by the chosen text size
    static void set_font_size(Control *control, int size); // of a label, button or line edit, unscaled
    static void fit_width(Control *control, double width); // smaller letters until its text fits
    // Margins that a notch or a rounded corner takes off a screen of this logical size: left, top, right, bottom.
    static Vector4 safe_margins(const Vector2 &screen);
    static Vector4 margins_of(const Vector2 &window, const Rect2 &safe, const Vector2 &screen);
    // A keyboard or a pad walks the buttons below; a ring shows where it is (focus_ring.h).
    static void let_focus(Node *content, bool on);

    // res://assets/icons/<name>.svg, null (and one log line) when it is not there.
    static Ref<Texture2D> icon(const String &name);
    static TextureRect *icon_rect(const String &name, double size);
    static TextureRect *picture(const Ref<Texture2D> &texture, double size); // square, the texture whole in its middle
    static void set_icon(Button *button, const String &name);                // sized after the button's font

    static Ref<StyleBoxFlat> box(const Color &color, int radius, const Color &border = Color(0, 0, 0, 0),
                                 int border_width = 0, int shadow = 0);
    static Label *label(const String &text, int size, const Color &color = Color(1, 1, 1));
    // A wrapped line of free text that begins at the reading side: right in Arabic.
    static Label *text_line(const String &text, int size, const Color &color, double width);
    static Button *button(const String &text, const Color &color, int size, const Vector2 &min_size);
    static void restyle(Button *button, const Color &color); // the same raised look in another colour
    // A sliding switch; emits `toggled(on)`.
    static Control *toggle(bool on, double scale, const Callable &on_toggled);
    static void pop(Control *control, double from = 0.7); // entrance: grows to full size
    // Shows the other language and changes to it when pressed.
    static Button *lang_button(int size, const Vector2 &min_size);
    static void label_lang_button(Button *button); // after a change of language from elsewhere
    static PanelContainer *card(const String &text, const Ref<Texture2D> &portrait_texture, double width);
    static bool card_repeat(Control *card); // one more of the same text: raises the count
    static PanelContainer *portrait(double size, const Color &color, const Ref<Texture2D> &texture);
    static String isolate(const String &text); // for names and chat: keeps Latin runs and numbers in order
    static String wrapped(const String &text, int size, double width); // with line feeds between words
    static double text_width(const String &text, int size);
    static Control *glyph(const String &name, double size, const Color &color);

    static String money(int64_t amount);       // "$1,234"
    static String money_short(int64_t amount); // "$1.2K"
    static Color hex(const char *rgb);

    // A Callable around C++ code, bound to the life of `owner`: it does nothing once the owner is gone.
    static Callable callback(Object *owner, std::function<void()> fn);
    // The same for signals with one argument.
    static Callable callback_arg(Object *owner, std::function<void(const Variant &)> fn);
    // Containers below mirror themselves in Arabic.
    static void mirror(Control *root);
    static void fill_parent(Control *control);
    // Lets a finger that begins on a button below still scroll the list around it.
    static void let_scroll(Node *content);

protected:
    static void _bind_methods();
};

} // namespace tilm
