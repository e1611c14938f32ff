// Sheets over the title: the list of farms and the news of a new version.

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/button.hpp>
#include <godot_cpp/classes/center_container.hpp>
#include <godot_cpp/classes/color_rect.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/panel_container.hpp>
#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/scroll_container.hpp>
#include <godot_cpp/classes/style_box_flat.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/interface/menu.h"
#include "game/interface/menu_parts.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "game/ports/store.h"
#include "names.h"

namespace tilm {

using namespace title;

void Menu::close_sheet() {
    if (sheet != nullptr) {
        sheet->queue_free();
        sheet = nullptr;
        sheet_stays = false;
        start_keys();
    }
}

VBoxContainer *Menu::open_sheet() {
    if (sheet != nullptr) {
        sheet->queue_free();
    }
    sheet_stays = false;
    sheet = memnew(Control);
    sheet->set_mouse_filter(Control::MOUSE_FILTER_STOP);
    screen->add_child(sheet);
    UI::fill_parent(sheet);
    ColorRect *dim = memnew(ColorRect);
    dim->set_color(Color(0.03f, 0.05f, 0.10f, 0.72f));
    dim->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    sheet->add_child(dim);
    UI::fill_parent(dim);
    CenterContainer *center = memnew(CenterContainer);
    center->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    sheet->add_child(center);
    UI::fill_parent(center);
    PanelContainer *panel = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style = UI::box(Color(0.12f, 0.16f, 0.26f, 0.98f), 44, UI::hex("ffb300"), 6, 12);
    style->set_content_margin_all(30);
    panel->add_theme_stylebox_override(TM_NAME("panel"), style);
    panel->set_custom_minimum_size(Vector2(660, 0));
    center->add_child(panel);
    VBoxContainer *column = memnew(VBoxContainer);
    column->add_theme_constant_override(TM_NAME("separation"), 16);
    panel->add_child(column);
    center->set_position(Vector2(0, 400));
    const Ref<Tween> tween = center->create_tween();
    tween->tween_property(center, NodePath("position:y"), 0.0, 0.3)
        ->set_trans(Tween::TRANS_BACK)
        ->set_ease(Tween::EASE_OUT);
    return column;
}

void Menu::_show_farms() {
    VBoxContainer *column = open_sheet();
    column->add_child(UI::label("MY FARMS", 46, UI::hex("ffd54f")));
    const bool joined = plays_with_friends();
    if (joined) {
        column->add_child(UI::text_line("YOU PLAY THIS FARM WITH FRIENDS. LEAVE THE GAME TO SWITCH FARMS.", 26,
                                        UI::hex("ffcc80"), 580));
    }
    ScrollContainer *scroll = memnew(ScrollContainer);
    scroll->set_horizontal_scroll_mode(ScrollContainer::SCROLL_MODE_DISABLED);
    const int64_t count = farm_rows().size();
    column->add_child(scroll);
    VBoxContainer *list = memnew(VBoxContainer);
    list->add_theme_constant_override(TM_NAME("separation"), 12);
    list->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    scroll->add_child(list);
    for (int64_t i = 0; i < count; ++i) {
        if (Control *row = _farm_row(static_cast<int>(i))) {
            list->add_child(row);
        }
    }
    UI::let_scroll(list);
    scroll->set_custom_minimum_size(
        Vector2(600, std::min(660.0f, static_cast<float>(list->get_combined_minimum_size().y))));
    Button *fresh = wide("NEW FARM", "43a047", 34);
    fresh->set_disabled(joined || count >= farm_limit);
    fresh->set_name("NewFarm");
    fresh->connect(TM_NAME("pressed"), UI::callback(this, [this] {
                       Object *owner = farms_owner();
                       if (owner != nullptr && bool(owner->call(TM_NAME("new_farm")))) {
                           start_farm();
                       }
                   }));
    column->add_child(fresh);
    Button *close = wide("CLOSE", "546e7a", 34);
    close->connect(TM_NAME("pressed"), UI::callback(this, [this] { close_sheet(); }));
    column->add_child(close);
    start_keys();
}

Control *Menu::_farm_row(int i) {
    const Array farms = farm_rows();
    if (i < 0 || i >= farms.size()) {
        return nullptr;
    }
    const bool active = active_farm() == i;
    const Dictionary row = farms[i];
    const Variant farm_value = row.get("farm", Dictionary());
    Dictionary farm = farm_value.get_type() == Variant::DICTIONARY ? Dictionary(farm_value) : Dictionary();
    if (active && farm.is_empty() && Store::current() != nullptr) {
        farm = Store::current()->farm_doc(); // newer than the row
    }
    PanelContainer *panel = memnew(PanelContainer);
    const Ref<StyleBoxFlat> style =
        UI::box(Color(0.20f, 0.26f, 0.40f), 26, active ? UI::hex("ffd54f") : UI::hex("546e7a"), active ? 6 : 2);
    style->set_content_margin_all(14);
    panel->add_theme_stylebox_override(TM_NAME("panel"), style);
    HBoxContainer *line = memnew(HBoxContainer);
    line->add_theme_constant_override(TM_NAME("separation"), 12);
    panel->add_child(line);
    VBoxContainer *texts = memnew(VBoxContainer);
    texts->set_h_size_flags(Control::SIZE_EXPAND_FILL);
    line->add_child(texts);
    Label *name = plain_label(Lang::t(row.get("name", "")), 32, UI::hex("ffffff"));
    name->set_horizontal_alignment(HORIZONTAL_ALIGNMENT_LEFT);
    UI::fit_width(name, 260);
    texts->add_child(name);
    const double progress = progress_of(i);
    const int64_t money = farm.get("money", 0);
    Label *state = nullptr;
    if (farm.is_empty() || (money < 1 && progress <= 0.0)) {
        state = UI::label("NEW", 26, UI::hex("a5d6a7"));
    } else {
        state = plain_label(String::num_int64(static_cast<int64_t>(std::llround(progress * 100.0))) + "%    " +
                                UI::money_short(money),
                            26, UI::hex("ffe082"));
    }
    state->set_horizontal_alignment(HORIZONTAL_ALIGNMENT_LEFT);
    texts->add_child(state);

    Button *play = UI::button(active ? "PLAYING" : "PLAY", UI::hex(active ? "1e88e5" : "43a047"), 28, Vector2(190, 84));
    play->connect(TM_NAME("pressed"), UI::callback(this, [this, i] {
                      if (Object *owner = farms_owner()) {
                          owner->call(TM_NAME("switch_farm"), i);
                          start_farm();
                      }
                  }));
    line->add_child(play);
    Button *remove = UI::button("", UI::hex("e53935"), 30, Vector2(96, 84));
    remove->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED); // a sign, not a word
    remove->set_text("X");
    remove->connect(TM_NAME("pressed"), UI::callback(this, [this, i, remove] {
                        if (remove->get_text() == String("X")) {
                            remove->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_INHERIT);
                            remove->set_text("SURE?");
                            UI::set_font_size(remove, 20);
                            return;
                        }
                        if (Object *owner = farms_owner()) {
                            owner->call(TM_NAME("delete_farm"), i);
                        }
                        _fill_card();
                        _show_farms();
                    }));
    line->add_child(remove);
    // Friends play in this farm: none may be switched or thrown away under them.
    if (plays_with_friends()) {
        play->set_disabled(!active);
        remove->set_disabled(true);
    }
    return panel;
}

void Menu::_show_update(const Dictionary &info) {
    if (screen == nullptr) {
        return;
    }
    const String version = info.get("version", "");
    const bool forced = compare_versions(own_version(), info.get("min", "")) < 0;
    VBoxContainer *column = open_sheet();
    column->add_child(UI::label("NEW VERSION " + version, 44, UI::hex("ffd54f")));
    column->add_child(UI::label("YOU HAVE " + own_version(), 28, UI::hex("cfd8dc")));
    if (forced) {
        column->add_child(UI::text_line("THIS VERSION IS TOO OLD, PLEASE UPDATE", 28, UI::hex("ffcc80"), 580));
    }
    const Variant notes_value = info.get("notes", Dictionary());
    if (notes_value.get_type() == Variant::DICTIONARY) {
        const Variant lines_value = Dictionary(notes_value).get(Lang::current(), Array());
        if (lines_value.get_type() == Variant::ARRAY && !Array(lines_value).is_empty()) {
            column->add_child(UI::label("WHAT'S NEW", 32, UI::hex("c5e1a5")));
            const Array lines = lines_value;
            for (int64_t i = 0; i < std::min<int64_t>(lines.size(), 12); ++i) {
                Label *line =
                    UI::text_line(String::utf8("• ") + String(lines[i]).left(200), 26, UI::hex("ffffff"), 580);
                line->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
                column->add_child(line);
            }
        }
    }
    Button *download = wide("DOWNLOAD", "43a047", 36);
    download->connect(TM_NAME("pressed"), UI::callback(this, [this, info, version] {
                          UtilityFunctions::print("UPDATE download ", version);
                          emit_signal(TM_NAME("download_pressed"), info);
                      }));
    column->add_child(download);
    if (!forced) {
        Button *keep = wide("KEEP PLAYING THIS VERSION", "546e7a", 26);
        keep->connect(TM_NAME("pressed"), UI::callback(this, [this] { close_sheet(); }));
        column->add_child(keep);
    }
    sheet_stays = forced;
    start_keys();
}

} // namespace tilm
