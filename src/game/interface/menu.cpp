#include "game/interface/menu.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/center_container.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/margin_container.hpp>
#include <godot_cpp/classes/panel_container.hpp>
#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/style_box_flat.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/classes/viewport.hpp>
#include <godot_cpp/core/class_db.hpp>

#include "game/interface/menu_parts.h"
#include "game/interface/title_scene.h"
#include "game/kit/focus_ring.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "game/ports/store.h"
#include "names.h"

namespace tilm {

using namespace title;

namespace {

constexpr int translation_changed = 2010;
constexpr int name_limit = 16;

void drop_children(Node *parent) {
    while (parent->get_child_count() > 0) {
        Node *child = parent->get_child(parent->get_child_count() - 1);
        parent->remove_child(child);
        child->queue_free(); // the pressed button may be among them
    }
}

// The logo is a picture: the text size does not change it.
void fixed_size(Label *label, int size) {
    label->remove_meta(TM_NAME("text_size"));
    label->add_theme_font_override(TM_NAME("font"), UI::font_at(size));
    label->add_theme_font_size_override(TM_NAME("font_size"), size);
}

} // namespace

bool Menu::s_name_later = false;

Menu::Menu() = default;
Menu::~Menu() = default;

void Menu::_bind_methods() {
    ClassDB::bind_method(D_METHOD("_fill_card"), &Menu::_fill_card);
    ClassDB::bind_method(D_METHOD("_fill_name"), &Menu::_fill_name);
    ClassDB::bind_method(D_METHOD("_show_farms"), &Menu::_show_farms);
    ClassDB::bind_method(D_METHOD("_farm_row", "i"), &Menu::_farm_row);
    ClassDB::bind_method(D_METHOD("_show_update", "info"), &Menu::_show_update);
    ClassDB::bind_method(D_METHOD("_fit"), &Menu::_fit);
    ClassDB::bind_method(D_METHOD("close_sheet"), &Menu::close_sheet);
    ClassDB::bind_static_method("Menu", D_METHOD("logo", "scale"), &Menu::logo);
    ClassDB::bind_static_method("Menu", D_METHOD("name_from", "typed"), &Menu::name_from);
    ClassDB::bind_static_method("Menu", D_METHOD("forget_later"), &Menu::forget_later);
    ADD_SIGNAL(MethodInfo("play_pressed"));
    ADD_SIGNAL(MethodInfo("download_pressed", PropertyInfo(Variant::DICTIONARY, "info")));
}

void Menu::_ready() {
    if (in_editor()) {
        return;
    }
    screen = memnew(Control);
    screen->set_name("Screen");
    screen->set_theme(UI::theme());
    add_child(screen);
    UI::fill_parent(screen);
    UI::mirror(screen);
    screen->add_child(TitleScene::backdrop());

    ring = std::make_unique<FocusRing>(this);
    MarginContainer *top = memnew(MarginContainer);
    title_holder = top;
    top->set_anchors_preset(Control::PRESET_FULL_RECT);
    top->set_offset(SIDE_TOP, 120);
    top->set_offset(SIDE_BOTTOM, -520);
    top->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    screen->add_child(top);
    Control *sign = logo(1.0);
    sign->set_h_size_flags(Control::SIZE_SHRINK_CENTER);
    sign->set_v_size_flags(Control::SIZE_SHRINK_BEGIN);
    top->add_child(sign);

    card_holder = memnew(Control);
    card_holder->set_anchors_preset(Control::PRESET_FULL_RECT);
    card_holder->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    screen->add_child(card_holder);
    CenterContainer *middle = memnew(CenterContainer);
    middle->set_anchors_preset(Control::PRESET_BOTTOM_WIDE);
    middle->set_offset(SIDE_TOP, -560);
    middle->set_offset(SIDE_BOTTOM, -40);
    middle->set_v_grow_direction(Control::GROW_DIRECTION_BEGIN);
    middle->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    card_holder->add_child(middle);
    PanelContainer *panel = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style = UI::box(Color(0.10f, 0.13f, 0.22f, 0.88f), 44, Color(1, 1, 1, 0.2f), 3, 12);
    style->set_content_margin_all(32);
    panel->add_theme_stylebox_override(TM_NAME("panel"), style);
    panel->set_custom_minimum_size(Vector2(600, 0));
    middle->add_child(panel);
    card = memnew(VBoxContainer);
    card->add_theme_constant_override(TM_NAME("separation"), 16);
    panel->add_child(card);

    language = UI::lang_button(26, Vector2(220, 72));
    language->set_anchors_preset(Control::PRESET_TOP_RIGHT);
    language->set_h_grow_direction(Control::GROW_DIRECTION_BEGIN);
    language->set_offset(SIDE_RIGHT, -24);
    language->set_offset(SIDE_LEFT, -24);
    language->set_offset(SIDE_TOP, 24);
    screen->add_child(language);

    _fill_card();
    screen->connect(TM_NAME("resized"), Callable(this, TM_NAME("_fit")));
    _fit();
    if (const Store *store = Store::current()) {
        if (store->arguments().has("--showfarms")) {
            _show_farms();
        }
    }
}

void Menu::_notification(int what) {
    if (what == translation_changed && card != nullptr) {
        UI::mirror(screen);
        UI::label_lang_button(language);
        _fit();
        call_deferred(TM_NAME("_fill_card"));
    }
}

void Menu::_fit() {
    const Vector2 size = screen->get_size();
    const bool wide = size.x > size.y;
    const Vector4 safe = UI::safe_margins(size);
    // On a wide screen the card stands at the reading side and leaves the farm its own half.
    const float given = wide ? -std::max(0.0f, static_cast<float>(size.x) * 0.44f) : 0.0f;
    title_holder->set_offset(SIDE_RIGHT, given);
    title_holder->set_offset(SIDE_TOP, 120.0f + safe.y);
    card_holder->set_offset(SIDE_RIGHT, given);
    card_holder->set_offset(SIDE_BOTTOM, -safe.w);
    language->set_offset(SIDE_TOP, 24.0f + safe.y);
    const float lean = wide ? (Lang::arabic() ? 0.44f : -0.44f) : 0.0f;
    TitleScene::lean(lean);
    card_holder->set_pivot_offset(Vector2((size.x + given) * 0.5f, size.y - 280.0f));
}

void Menu::reveal() {
    card_holder->set_modulate(Color(1, 1, 1, 0));
    card_holder->set_scale(Vector2(0.9f, 0.9f));
    const Ref<Tween> tween = card_holder->create_tween();
    tween->set_parallel(true);
    tween->tween_property(card_holder, NodePath("modulate:a"), 1.0, 0.55);
    tween->tween_property(card_holder, NodePath("scale"), Vector2(1, 1), 0.55)
        ->set_trans(Tween::TRANS_BACK)
        ->set_ease(Tween::EASE_OUT);
}

void Menu::start_keys() {
    UI::let_focus(card_holder, sheet == nullptr);
    UI::let_focus(language, sheet == nullptr);
    if (sheet != nullptr) {
        UI::let_focus(sheet, true);
    }
    ring->start(sheet != nullptr ? sheet : card_holder);
}

void Menu::_input(const Ref<InputEvent> &event) {
    if (card == nullptr) {
        return;
    }
    ring->see(event);
    const bool typing = name_edit != nullptr && name_edit->has_focus();
    if (event->is_action_pressed(TM_NAME("ui_cancel")) && sheet != nullptr && !sheet_stays) {
        close_sheet();
    } else if (ring->keys_used() && ring->focused() == nullptr && event->is_pressed() && !typing) {
        start_keys();
    } else {
        return;
    }
    get_viewport()->set_input_as_handled();
}

Control *Menu::logo(double scale) {
    const float k = static_cast<float>(scale);
    VBoxContainer *box = memnew(VBoxContainer);
    box->set_layout_direction(Control::LAYOUT_DIRECTION_LTR);
    box->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    box->add_theme_constant_override(TM_NAME("separation"), static_cast<int>(-10 * k));
    PanelContainer *plate = memnew(PanelContainer);
    const Ref<StyleBoxFlat> wood = UI::box(UI::hex("a5682a"), static_cast<int>(36 * k), UI::hex("5d3a1a"),
                                           std::max(2, static_cast<int>(8 * k)), static_cast<int>(14 * k));
    wood->set_content_margin(SIDE_LEFT, 34 * k);
    wood->set_content_margin(SIDE_RIGHT, 34 * k);
    wood->set_content_margin(SIDE_TOP, 2 * k);
    wood->set_content_margin(SIDE_BOTTOM, 10 * k);
    plate->add_theme_stylebox_override(TM_NAME("panel"), wood);
    plate->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    box->add_child(plate);
    Label *word = plain_label("TILMARCH", static_cast<int>(108 * k), UI::hex("ffe082"));
    fixed_size(word, static_cast<int>(108 * k));
    word->add_theme_color_override(TM_NAME("font_outline_color"), UI::hex("3e2210"));
    word->add_theme_constant_override(TM_NAME("outline_size"), static_cast<int>(30 * k));
    word->add_theme_color_override(TM_NAME("font_shadow_color"), Color(0, 0, 0, 0.45f));
    word->add_theme_constant_override(TM_NAME("shadow_offset_y"), static_cast<int>(8 * k));
    word->add_theme_constant_override(TM_NAME("shadow_offset_x"), 0);
    word->add_theme_constant_override(TM_NAME("shadow_outline_size"), static_cast<int>(30 * k));
    plate->add_child(word);

    PanelContainer *ribbon = memnew(PanelContainer);
    ribbon->add_theme_stylebox_override(TM_NAME("panel"),
                                        UI::box(UI::hex("fff3c4"), static_cast<int>(22 * k), UI::hex("5d3a1a"),
                                                std::max(2, static_cast<int>(4 * k)), static_cast<int>(6 * k)));
    ribbon->set_h_size_flags(Control::SIZE_SHRINK_CENTER);
    ribbon->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    box->add_child(ribbon);
    HBoxContainer *slogan = memnew(HBoxContainer);
    // The blanks at the ends of the words fall away where the line runs to the left.
    slogan->add_theme_constant_override(TM_NAME("separation"), static_cast<int>(6 * k));
    UI::mirror(slogan);
    ribbon->add_child(slogan);
    for (const char *part : {"GROW ", "•", " BUILD ", "•", " TRADE"}) {
        Label *l = UI::label(String::utf8(part), static_cast<int>(34 * k), UI::hex("1b5e20"));
        fixed_size(l, static_cast<int>(34 * k));
        l->add_theme_constant_override(TM_NAME("outline_size"), 0);
        slogan->add_child(l);
    }
    return box;
}

void Menu::_fill_card() {
    if (card == nullptr) {
        return;
    }
    drop_children(card);
    name_edit = nullptr;
    reveal();
    const String name = String(stored(TM_NAME("name"))).strip_edges();
    if (name.is_empty() && !s_name_later) {
        _fill_name();
        return;
    }
    const bool progress = has_progress();
    Label *head = UI::label(progress ? "WELCOME BACK, FARMER!" : "WELCOME, FARMER!", 38, UI::hex("c5e1a5"));
    UI::fit_width(head, 530);
    card->add_child(head);
    if (progress) {
        const Array farms = farm_rows();
        const int64_t active = active_farm();
        String line = UI::isolate(name);
        if (active >= 0 && active < farms.size()) {
            const Dictionary farm = farms[active];
            line += (name.is_empty() ? String() : String::utf8("  •  ")) + Lang::t(farm.get("name", ""));
        }
        if (!line.is_empty()) {
            Label *who = plain_label(line, 30, UI::hex("ffffff"));
            UI::fit_width(who, 530);
            // A Latin name at its beginning must not turn the Arabic line round.
            who->set_text_direction(Lang::arabic() ? Control::TEXT_DIRECTION_RTL : Control::TEXT_DIRECTION_LTR);
            card->add_child(who);
        }
        const int64_t percent = static_cast<int64_t>(std::llround(progress_of(active) * 100.0));
        card->add_child(UI::label(String::num_int64(percent) + "%", 30, UI::hex("ffd54f")));
    }
    Button *play = wide(progress ? "CONTINUE" : "PLAY", "43a047", 46);
    UI::set_icon(play, "play");
    play->connect(TM_NAME("pressed"), UI::callback(this, [this] { start_farm(); }));
    card->add_child(play);
    Button *farms = wide("MY FARMS", "ef6c00", 34);
    UI::set_icon(farms, "home");
    farms->connect(TM_NAME("pressed"), Callable(this, TM_NAME("_show_farms")));
    card->add_child(farms);
    card->add_child(plain_label("v" + own_version(), 22, UI::hex("b0bec5")));
    start_keys();
}

void Menu::_fill_name() {
    if (card == nullptr) {
        return;
    }
    drop_children(card);
    Label *head = UI::label("WHAT'S YOUR NAME?", 38, UI::hex("c5e1a5"));
    UI::fit_width(head, 530);
    card->add_child(head);
    name_edit = memnew(LineEdit);
    name_edit->set_placeholder("NAME");
    name_edit->set_max_length(200);
    name_edit->set_custom_minimum_size(Vector2(460, 88));
    name_edit->set_h_size_flags(Control::SIZE_SHRINK_CENTER);
    name_edit->set_horizontal_alignment(HORIZONTAL_ALIGNMENT_CENTER);
    UI::set_font_size(name_edit, 36);
    name_edit->add_theme_color_override(TM_NAME("font_color"), UI::hex("263238"));
    name_edit->add_theme_color_override(TM_NAME("font_placeholder_color"), UI::hex("90a4ae"));
    name_edit->add_theme_color_override(TM_NAME("caret_color"), UI::hex("263238"));
    name_edit->add_theme_stylebox_override(TM_NAME("normal"), UI::box(Color(1, 1, 1), 24, UI::hex("90a4ae"), 4));
    name_edit->add_theme_stylebox_override(TM_NAME("focus"), UI::box(Color(1, 1, 1), 24, UI::hex("43a047"), 5));
    card->add_child(name_edit);
    HBoxContainer *row = memnew(HBoxContainer);
    row->set_alignment(BoxContainer::ALIGNMENT_CENTER);
    row->add_theme_constant_override(TM_NAME("separation"), 16);
    card->add_child(row);
    Button *save = UI::button("SAVE", UI::hex("43a047"), 36, Vector2(250, 92));
    save->connect(TM_NAME("pressed"), UI::callback(this, [this] { save_name(); }));
    row->add_child(save);
    Button *later = UI::button("LATER", UI::hex("607d8b"), 32, Vector2(194, 92));
    later->connect(TM_NAME("pressed"), UI::callback(this, [this] {
                       s_name_later = true;
                       if (name_edit != nullptr) {
                           name_edit->release_focus();
                       }
                       _fill_card();
                   }));
    row->add_child(later);
    name_edit->connect(TM_NAME("text_submitted"), UI::callback(this, [this] { save_name(); }));
    start_keys();
}

String Menu::name_from(const String &typed) {
    String plain;
    for (int64_t i = 0; i < typed.length(); ++i) {
        const char32_t c = typed[i];
        const bool direction =
            c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
        if (c >= 0x20 && c != 0x7F && !direction) {
            plain += String::chr(static_cast<int64_t>(c));
        }
    }
    return plain.strip_edges().left(name_limit).strip_edges();
}

void Menu::save_name() {
    if (name_edit == nullptr) {
        return;
    }
    const String name = name_from(name_edit->get_text());
    if (name.is_empty()) {
        return;
    }
    if (Store *store = Store::current()) {
        store->put_setting(TM_NAME("name"), name);
        store->write();
    }
    name_edit->release_focus();
    _fill_card();
}

void Menu::start_farm() {
    emit_signal(TM_NAME("play_pressed"));
}

} // namespace tilm
