#include "game/kit/ui.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <godot_cpp/classes/font_file.hpp>
#include <godot_cpp/classes/font_variation.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/input_event_mouse_button.hpp>
#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/resource_loader.hpp>
#include <godot_cpp/classes/style_box_empty.hpp>
#include <godot_cpp/classes/text_server.hpp>
#include <godot_cpp/classes/theme_db.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_vector2_array.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/kit/lang.h"
#include "game/ports/store.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/translator.h"
#include "statics.h"

namespace tilm {
namespace {

const Color dark_outline(0.08f, 0.10f, 0.18f);

// Everything of the engine that the kit shares; dropped before the engine goes.
struct Shared {
    Dictionary icons;
    Ref<Font> font;
    Dictionary fonts_by_size;
    Ref<Theme> theme;
};
Shared *shared = nullptr;

Shared &kit() {
    if (shared == nullptr) {
        shared = new Shared();
    }
    return *shared;
}

void release() {
    delete shared;
    shared = nullptr;
}

Ref<FontFile> load_font(const String &path) {
    if (!ResourceLoader::get_singleton()->exists(path)) {
        WARN_PRINT("TILMARCH font " + path + " is missing: the engine's own stands in");
        return Ref<FontFile>();
    }
    const Ref<FontFile> file = ResourceLoader::get_singleton()->load(path);
    if (file.is_null()) {
        WARN_PRINT("TILMARCH font " + path + " cannot be read: the engine's own stands in");
        return Ref<FontFile>();
    }
    file->set_generate_mipmaps(true);
    // Each size would analyse the whole face for hints: milliseconds that letters of this weight do not show.
    file->set_hinting(TextServer::HINTING_NONE);
    return file;
}

// A line's height is taken from the font with all its fallbacks, each run's from its own part: both are to be lowered.
Ref<FontVariation> lowered(const Ref<Font> &base, int size) {
    constexpr double ascent = 1.06; // of the size: capitals with an outline and Arabic marks fit
    constexpr double descent = 0.42;
    Ref<FontVariation> low;
    low.instantiate();
    low->set_base_font(base);
    low->set_spacing(TextServer::SPACING_TOP, -static_cast<int>(std::max(0.0, base->get_ascent(size) - ascent * size)));
    low->set_spacing(TextServer::SPACING_BOTTOM,
                     -static_cast<int>(std::max(0.0, base->get_descent(size) - descent * size)));
    return low;
}

Color dim(const Color &c, float k) {
    return Color(c.r * k, c.g * k, c.b * k, c.a);
}

// Lines that words of these widths take when a line holds `room`.
int line_count(const std::vector<double> &widths, double blank, double room) {
    int count = 1;
    double used = 0.0;
    for (size_t i = 0; i < widths.size(); ++i) {
        const bool fresh = i > 0 && used + blank + widths[i] > room;
        count += fresh ? 1 : 0;
        used = i == 0 || fresh ? widths[i] : used + blank + widths[i];
    }
    return count;
}

int outline_of(int size) {
    return size / 4 + 2;
}

Ref<StyleBoxFlat> raised(const Color &face, const Color &edge, int top, int bottom, int shadow) {
    const Ref<StyleBoxFlat> s = UI::box(face, 30, edge, 2, shadow);
    s->set_border_width(SIDE_LEFT, 2);
    s->set_border_width(SIDE_RIGHT, 2);
    s->set_border_width(SIDE_TOP, top);
    s->set_border_width(SIDE_BOTTOM, bottom);
    s->set_content_margin(SIDE_TOP, 6 + top);
    s->set_content_margin(SIDE_BOTTOM, 2 + bottom);
    return s;
}

} // namespace

void UI::setup_statics() {
    kit();
    Statics::on_release(&release);
}

void UI::_bind_methods() {
    ClassDB::bind_static_method("UI", D_METHOD("theme"), &UI::theme);
    ClassDB::bind_static_method("UI", D_METHOD("icon", "name"), &UI::icon);
    ClassDB::bind_static_method("UI", D_METHOD("label", "text", "size", "color"), &UI::label);
    ClassDB::bind_static_method("UI", D_METHOD("button", "text", "color", "size", "min_size"), &UI::button);
    ClassDB::bind_static_method("UI", D_METHOD("pop", "control", "from"), &UI::pop);
    ClassDB::bind_static_method("UI", D_METHOD("lang_button", "size", "min_size"), &UI::lang_button);
    ClassDB::bind_static_method("UI", D_METHOD("isolate", "text"), &UI::isolate);
    ClassDB::bind_static_method("UI", D_METHOD("text_width", "text", "size"), &UI::text_width);
    ClassDB::bind_static_method("UI", D_METHOD("glyph", "name", "size", "color"), &UI::glyph);
    ClassDB::bind_static_method("UI", D_METHOD("money", "amount"), &UI::money);
    ClassDB::bind_static_method("UI", D_METHOD("card", "text", "portrait", "width"), &UI::card);
    ClassDB::bind_static_method("UI", D_METHOD("card_repeat", "card"), &UI::card_repeat);
    ClassDB::bind_static_method("UI", D_METHOD("set_icon", "button", "name"), &UI::set_icon);
    ClassDB::bind_static_method("UI", D_METHOD("box", "color", "radius", "border", "border_width", "shadow"), &UI::box,
                                DEFVAL(Color(0, 0, 0, 0)), DEFVAL(0), DEFVAL(0));
    ClassDB::bind_static_method("UI", D_METHOD("toggle", "on", "scale", "on_toggled"), &UI::toggle);
    ClassDB::bind_static_method("UI", D_METHOD("portrait", "size", "color", "texture"), &UI::portrait);
    ClassDB::bind_static_method("UI", D_METHOD("text_size"), &UI::text_size);
    ClassDB::bind_static_method("UI", D_METHOD("set_text_size", "percent"), &UI::set_text_size);
}

Ref<Font> UI::font() {
    if (kit().font.is_valid()) {
        return kit().font;
    }
    const Ref<FontFile> latin = load_font("res://assets/fonts/NotoSans-Black.ttf");
    const Ref<FontFile> arabic = load_font("res://assets/fonts/NotoSansArabic-Black.ttf");
    if (latin.is_valid()) {
        if (arabic.is_valid()) {
            TypedArray<Font> fallbacks;
            fallbacks.push_back(arabic);
            latin->set_fallbacks(fallbacks);
        }
        kit().font = latin;
    } else if (arabic.is_valid()) {
        kit().font = arabic;
    } else {
        kit().font = ThemeDB::get_singleton()->get_fallback_font();
    }
    return kit().font;
}

Ref<Font> UI::font_at(int size) {
    const Variant known = kit().fonts_by_size.get(size, Variant());
    if (known.get_type() == Variant::OBJECT) {
        return known;
    }
    const Ref<FontVariation> tight = lowered(font(), size);
    const TypedArray<Font> behind = font()->get_fallbacks();
    TypedArray<Font> fallbacks;
    for (int64_t i = 0; i < behind.size(); ++i) {
        fallbacks.push_back(lowered(behind[i], size));
    }
    tight->set_fallbacks(fallbacks);
    kit().fonts_by_size[size] = tight;
    return tight;
}

Ref<Theme> UI::theme() {
    if (kit().theme.is_null()) {
        kit().theme.instantiate();
        kit().theme->set_default_font(font());
        kit().theme->set_default_font_size(34);
    }
    return kit().theme;
}

Ref<Texture2D> UI::icon(const String &name) {
    if (kit().icons.has(name)) {
        return kit().icons[name];
    }
    const String path = "res://assets/icons/" + name + ".svg";
    Ref<Texture2D> texture;
    if (ResourceLoader::get_singleton()->exists(path)) {
        texture = ResourceLoader::get_singleton()->load(path);
    }
    if (texture.is_null()) {
        WARN_PRINT("TILMARCH icon \"" + name + "\" is missing");
    }
    kit().icons[name] = texture; // a missing one too: it is looked for and reported once
    return texture;
}

TextureRect *UI::icon_rect(const String &name, double size) {
    return picture(icon(name), size);
}

TextureRect *UI::picture(const Ref<Texture2D> &texture, double size) {
    TextureRect *rect = memnew(TextureRect);
    rect->set_texture(texture);
    rect->set_custom_minimum_size(Vector2(size, size));
    rect->set_expand_mode(TextureRect::EXPAND_IGNORE_SIZE);
    rect->set_stretch_mode(TextureRect::STRETCH_KEEP_ASPECT_CENTERED);
    rect->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    rect->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    return rect;
}

void UI::set_icon(Button *button, const String &name) {
    const int size = button->get_theme_font_size(TM_NAME("font_size"));
    button->set_button_icon(icon(name));
    button->set_expand_icon(true);
    button->add_theme_constant_override(TM_NAME("icon_max_width"), static_cast<int>(size * 1.3));
    button->add_theme_constant_override(TM_NAME("h_separation"), static_cast<int>(size * 0.3));
    if (button->get_text().is_empty()) {
        button->set_icon_alignment(HORIZONTAL_ALIGNMENT_CENTER);
    }
}

Ref<StyleBoxFlat> UI::box(const Color &color, int radius, const Color &border, int border_width, int shadow) {
    Ref<StyleBoxFlat> s;
    s.instantiate();
    s->set_bg_color(color);
    s->set_corner_radius_all(radius);
    if (border_width > 0) {
        s->set_border_color(border);
        s->set_border_width_all(border_width);
    }
    if (shadow > 0) {
        s->set_shadow_size(shadow);
        s->set_shadow_color(Color(0, 0, 0, 0.35f));
        s->set_shadow_offset(Vector2(0, 0.6f * static_cast<float>(shadow)));
    }
    s->set_content_margin(SIDE_LEFT, 18);
    s->set_content_margin(SIDE_RIGHT, 18);
    s->set_content_margin(SIDE_TOP, 8);
    s->set_content_margin(SIDE_BOTTOM, 8);
    return s;
}

Label *UI::label(const String &text, int size, const Color &color) {
    Label *l = memnew(Label);
    l->set_text(text);
    set_font_size(l, size);
    l->add_theme_color_override(TM_NAME("font_color"), color);
    l->add_theme_color_override(TM_NAME("font_outline_color"), dark_outline);
    l->add_theme_constant_override(TM_NAME("outline_size"), outline_of(scaled(size)));
    l->set_horizontal_alignment(HORIZONTAL_ALIGNMENT_CENTER);
    l->set_vertical_alignment(VERTICAL_ALIGNMENT_CENTER);
    l->set_text_direction(Control::TEXT_DIRECTION_AUTO);
    l->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    return l;
}

Label *UI::text_line(const String &text, int size, const Color &color, double width) {
    Label *l = label(text, size, color);
    l->add_theme_constant_override(TM_NAME("outline_size"), 0);
    l->set_autowrap_mode(TextServer::AUTOWRAP_WORD_SMART);
    l->set_custom_minimum_size(Vector2(width, 0));
    // Fixed left to right, so that "right" means right whatever the parent's direction is.
    l->set_layout_direction(Control::LAYOUT_DIRECTION_LTR);
    l->set_horizontal_alignment(Lang::arabic() ? HORIZONTAL_ALIGNMENT_RIGHT : HORIZONTAL_ALIGNMENT_LEFT);
    return l;
}

Button *UI::button(const String &text, const Color &color, int size, const Vector2 &min_size) {
    Button *b = memnew(Button);
    b->set_text(text);
    b->set_custom_minimum_size(min_size);
    set_font_size(b, size);
    b->add_theme_constant_override(TM_NAME("outline_size"), outline_of(scaled(size)));
    b->add_theme_color_override(TM_NAME("font_outline_color"), dark_outline);
    for (const char *state :
         {"font_color", "font_hover_color", "font_pressed_color", "font_hover_pressed_color", "font_focus_color"}) {
        b->add_theme_color_override(StringName(state), Color(1, 1, 1));
    }
    b->add_theme_color_override(TM_NAME("font_disabled_color"), Color(0.85f, 0.87f, 0.9f));
    b->set_text_direction(Control::TEXT_DIRECTION_AUTO);
    b->set_focus_mode(Control::FOCUS_NONE); // keys walk the farmer, they do not press buttons
    restyle(b, color);
    b->connect(TM_NAME("pressed"), callback(b, [] { Sfx::sound(TM_NAME("ui_tap")); }));
    return b;
}

void UI::restyle(Button *button, const Color &color) {
    const Ref<StyleBoxFlat> normal = raised(color, dim(color, 0.65f), 2, 12, 8);
    const Ref<StyleBoxFlat> pressed = raised(dim(color, 0.9f), dim(color, 0.6f), 8, 6, 2);
    const Color grey(color.r * 0.35f + 0.28f, color.g * 0.35f + 0.28f, color.b * 0.35f + 0.28f);
    button->add_theme_stylebox_override(TM_NAME("normal"), normal);
    button->add_theme_stylebox_override(TM_NAME("hover"), normal);
    button->add_theme_stylebox_override(TM_NAME("pressed"), pressed);
    button->add_theme_stylebox_override(TM_NAME("hover_pressed"), pressed);
    button->add_theme_stylebox_override(TM_NAME("disabled"), raised(grey, dim(grey, 0.65f), 2, 12, 0));
    Ref<StyleBoxEmpty> none;
    none.instantiate();
    button->add_theme_stylebox_override(TM_NAME("focus"), none);
}

Control *UI::toggle(bool on, double scale, const Callable &on_toggled) {
    Button *b = memnew(Button);
    b->set_toggle_mode(true);
    b->set_flat(true);
    b->set_focus_mode(Control::FOCUS_NONE);
    b->set_custom_minimum_size(Vector2(78, 52) * scale);
    b->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    b->set_layout_direction(Control::LAYOUT_DIRECTION_LTR); // its two ends carry signs, they do not mirror
    for (const char *state : {"normal", "hover", "pressed", "hover_pressed", "focus", "disabled"}) {
        Ref<StyleBoxEmpty> none;
        none.instantiate();
        b->add_theme_stylebox_override(StringName(state), none);
    }
    b->set_pressed_no_signal(on);
    b->set_meta(TM_NAME("slide"), on ? 1.0 : 0.0);
    const float k = static_cast<float>(scale);
    b->connect(TM_NAME("draw"), callback(b, [b, k] {
                   const float slide = static_cast<float>(static_cast<double>(b->get_meta(TM_NAME("slide"))));
                   const bool is_on = b->is_pressed();
                   const Rect2 track(Vector2(4, 5) * k, Vector2(70, 42) * k);
                   const Color face = hex(is_on ? "43a047" : "90a4ae");
                   const Ref<StyleBoxFlat> s = box(face, static_cast<int>(21 * k), hex(is_on ? "1b5e20" : "546e7a"),
                                                   std::max(2, static_cast<int>(3 * k)));
                   b->draw_style_box(s, track);
                   const Vector2 knob = track.position + Vector2((21 + 28 * slide) * k, 21 * k);
                   b->draw_circle(knob + Vector2(0, 2) * k, 17 * k, Color(0, 0, 0, 0.25f));
                   b->draw_circle(knob, 17 * k, hex(is_on ? "a5d6a7" : "cfd8dc"));
                   b->draw_circle(knob, 14 * k, Color(1, 1, 1));
                   // A sign on the knob tells the state without colour.
                   PackedVector2Array line;
                   if (is_on) {
                       line.push_back(knob + Vector2(-6, 0) * k);
                       line.push_back(knob + Vector2(-2, 5) * k);
                       line.push_back(knob + Vector2(7, -5) * k);
                   } else {
                       line.push_back(knob + Vector2(-6, 0) * k);
                       line.push_back(knob + Vector2(6, 0) * k);
                   }
                   b->draw_polyline(line, hex(is_on ? "2e7d32" : "546e7a"), 4 * k, true);
               }));
    b->connect(TM_NAME("toggled"), callback_arg(b, [b, on_toggled](const Variant &value) {
                   const bool is_on = value;
                   Sfx::sound(is_on ? TM_NAME("ui_toggle_on") : TM_NAME("ui_toggle_off"));
                   const Ref<Tween> tween = b->create_tween();
                   tween->tween_method(callback_arg(b,
                                                    [b](const Variant &at) {
                                                        b->set_meta(TM_NAME("slide"), at);
                                                        b->queue_redraw();
                                                    }),
                                       b->get_meta(TM_NAME("slide")), is_on ? 1.0 : 0.0, 0.12);
                   if (on_toggled.is_valid()) {
                       on_toggled.call(is_on);
                   }
               }));
    return b;
}

void UI::pop(Control *control, double from) {
    if (control == nullptr || !control->is_inside_tree()) {
        return;
    }
    control->set_pivot_offset(control->get_size() * 0.5);
    control->set_scale(Vector2(from, from));
    const Ref<Tween> tween = control->create_tween();
    tween->set_pause_mode(Tween::TWEEN_PAUSE_PROCESS);
    tween->tween_property(control, NodePath("scale"), Vector2(1, 1), 0.18)
        ->set_trans(Tween::TRANS_BACK)
        ->set_ease(Tween::EASE_OUT);
}

Button *UI::lang_button(int size, const Vector2 &min_size) {
    Button *b = button("", hex("6d4c41"), size, min_size);
    b->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
    label_lang_button(b);
    set_icon(b, "lang");
    b->connect(TM_NAME("pressed"), callback(b, [b] {
                   const String code = Lang::arabic() ? "en" : "ar";
                   if (Store *store = Store::current()) {
                       store->put_setting(TM_NAME("lang"), code);
                       store->write();
                   }
                   Lang::apply(code);
                   label_lang_button(b);
               }));
    return b;
}

void UI::label_lang_button(Button *button) {
    button->set_text(Lang::arabic() ? String("ENGLISH") : String::utf8("العربية"));
}

PanelContainer *UI::card(const String &text, const Ref<Texture2D> &picture, double width) {
    PanelContainer *panel = memnew(PanelContainer);
    panel->add_theme_stylebox_override(TM_NAME("panel"), box(hex("fffaf0"), 26, hex("ffb300"), 4, 8));
    panel->set_custom_minimum_size(Vector2(width, 0));
    HBoxContainer *row = memnew(HBoxContainer);
    row->add_theme_constant_override(TM_NAME("separation"), 14);
    row->set_layout_direction(Lang::arabic() ? Control::LAYOUT_DIRECTION_RTL : Control::LAYOUT_DIRECTION_LTR);
    panel->add_child(row);
    double text_room = width - 36.0;
    if (picture.is_valid()) {
        row->add_child(portrait(72, hex("ffe0b2"), picture));
        text_room -= 86.0;
    }
    Label *line = text_line(text, 26, hex("37474f"), text_room - 60.0);
    line->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
    line->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    row->add_child(line);
    Label *count = label("", 26, hex("ffd54f"));
    count->set_visible(false);
    row->add_child(count);
    panel->set_meta(TM_NAME("text"), text);
    panel->set_meta(TM_NAME("count"), 1);
    panel->set_meta(TM_NAME("count_label"), count);
    return panel;
}

bool UI::card_repeat(Control *card) {
    if (card == nullptr || !card->has_meta(TM_NAME("count_label"))) {
        return false;
    }
    const int count = static_cast<int>(card->get_meta(TM_NAME("count"))) + 1;
    card->set_meta(TM_NAME("count"), count);
    if (Label *l = Object::cast_to<Label>(static_cast<Object *>(card->get_meta(TM_NAME("count_label"))))) {
        l->set_text(String::utf8("×") + String::num_int64(count));
        l->set_visible(true);
    }
    return true;
}

PanelContainer *UI::portrait(double size, const Color &color, const Ref<Texture2D> &texture) {
    PanelContainer *panel = memnew(PanelContainer);
    const Ref<StyleBoxFlat> s = box(color, static_cast<int>(size * 0.5));
    s->set_content_margin_all(static_cast<float>(size * 0.14));
    panel->add_theme_stylebox_override(TM_NAME("panel"), s);
    panel->set_custom_minimum_size(Vector2(size, size));
    panel->set_v_size_flags(Control::SIZE_SHRINK_CENTER);
    if (texture.is_valid()) {
        TextureRect *rect = memnew(TextureRect);
        rect->set_texture(texture);
        rect->set_expand_mode(TextureRect::EXPAND_IGNORE_SIZE);
        rect->set_stretch_mode(TextureRect::STRETCH_KEEP_ASPECT_CENTERED);
        rect->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
        panel->add_child(rect);
    }
    return panel;
}

String UI::isolate(const String &text) {
    if (!Lang::arabic() || text.is_empty()) {
        return text;
    }
    const CharString utf8 = text.utf8();
    const std::string out = rules::isolate_latin({utf8.get_data(), static_cast<size_t>(utf8.length())});
    return String::utf8(out.data(), static_cast<int64_t>(out.size()));
}

String UI::wrapped(const String &text, int size, double width) {
    String out;
    const PackedStringArray lines = text.split("\n");
    const double blank = text_width(" ", size);
    for (int64_t i = 0; i < lines.size(); ++i) {
        const PackedStringArray words = lines[i].split(" ");
        std::vector<double> widths;
        for (int64_t w = 0; w < words.size(); ++w) {
            widths.push_back(text_width(words[w], size));
        }
        // As many lines as the width asks for, but none of them much shorter than the others.
        const int wanted = line_count(widths, blank, width);
        double room = width;
        for (double less = width * 0.95; wanted > 1 && less > width * 0.4; less -= width * 0.05) {
            if (line_count(widths, blank, less) > wanted) {
                break;
            }
            room = less;
        }
        double used = 0.0;
        for (int64_t w = 0; w < words.size(); ++w) {
            const double one = widths[static_cast<size_t>(w)];
            const bool fresh = w == 0 || used + blank + one > room;
            out += (w == 0 ? String() : (fresh ? String("\n") : String(" "))) + words[w];
            used = fresh ? one : used + blank + one;
        }
        out += i + 1 < lines.size() ? "\n" : "";
    }
    return out;
}

double UI::text_width(const String &text, int size) {
    return font()->get_string_size(text, HORIZONTAL_ALIGNMENT_LEFT, -1, scaled(size)).x;
}

String UI::money(int64_t amount) {
    const bool below = amount < 0;
    // Digits by hand: the smallest number has no positive twin.
    const String digits = String::num_uint64(below ? 0 - static_cast<uint64_t>(amount) : static_cast<uint64_t>(amount));
    String out;
    for (int64_t i = 0; i < digits.length(); ++i) {
        if (i > 0 && (digits.length() - i) % 3 == 0) {
            out += ",";
        }
        out += digits.substr(i, 1);
    }
    return (below ? String("-$") : String("$")) + out;
}

String UI::money_short(int64_t amount) {
    const double v = static_cast<double>(amount);
    const double size = std::abs(v);
    if (size >= 1e9) {
        return "$" + String::num(v / 1e9, 1).pad_decimals(1) + "B";
    }
    if (size >= 1e6) {
        return "$" + String::num(v / 1e6, 1).pad_decimals(1) + "M";
    }
    if (size >= 1e3) {
        return "$" + String::num(v / 1e3, 1).pad_decimals(1) + "K";
    }
    return money(amount);
}

Color UI::hex(const char *rgb) {
    return Color::html(rgb);
}

void UI::mirror(Control *root) {
    root->set_layout_direction(Lang::arabic() ? Control::LAYOUT_DIRECTION_RTL : Control::LAYOUT_DIRECTION_LTR);
}

void UI::fill_parent(Control *control) {
    control->set_anchors_and_offsets_preset(Control::PRESET_FULL_RECT);
}

void UI::let_scroll(Node *content) {
    if (Control *control = Object::cast_to<Control>(content)) {
        if (control->get_mouse_filter() == Control::MOUSE_FILTER_STOP) {
            control->set_mouse_filter(Control::MOUSE_FILTER_PASS);
        }
    }
    for (int i = 0; i < content->get_child_count(); ++i) {
        let_scroll(content->get_child(i));
    }
}

} // namespace tilm
