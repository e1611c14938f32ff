// UI: the player's text size, the places that a screen keeps free, and which controls keys can reach.

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/base_button.hpp>
#include <godot_cpp/classes/display_server.hpp>
#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/line_edit.hpp>
#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/scroll_container.hpp>
#include <godot_cpp/classes/window.hpp>

#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "names.h"

namespace tilm {
namespace {

int percent = 100;

// A control's own text size, kept with it so that another choice finds it.
void apply_size(Control *control, int size) {
    const int shown = UI::scaled(size);
    control->add_theme_font_override(TM_NAME("font"), UI::font_at(shown));
    control->add_theme_font_size_override(TM_NAME("font_size"), shown);
}

void resize_all(Node *node) {
    if (Control *control = Object::cast_to<Control>(node)) {
        if (control->has_meta(TM_NAME("text_size"))) {
            const int before = control->get_theme_font_size(TM_NAME("font_size"));
            const int64_t size = control->get_meta(TM_NAME("text_size"));
            apply_size(control, static_cast<int>(size));
            const double k = UI::scaled(static_cast<int>(size)) / std::max(1.0, static_cast<double>(before));
            for (const StringName &name : {TM_NAME("outline_size"), TM_NAME("icon_max_width")}) {
                if (control->has_theme_constant_override(name)) {
                    const double width = control->get_theme_constant(name);
                    control->add_theme_constant_override(name, static_cast<int>(std::lround(width * k)));
                }
            }
        }
    }
    for (int i = 0; i < node->get_child_count(); ++i) {
        resize_all(node->get_child(i));
    }
}

} // namespace

int UI::text_size() {
    return percent;
}

void UI::set_text_size(int64_t wanted) {
    const int next = wanted >= 138 ? 150 : (wanted >= 113 ? 125 : 100);
    if (next == percent) {
        return;
    }
    percent = next;
    if (SceneTree *tree = Object::cast_to<SceneTree>(Engine::get_singleton()->get_main_loop())) {
        resize_all(tree->get_root());
    }
}

int UI::scaled(int size) {
    return static_cast<int>(std::lround(size * percent / 100.0));
}

void UI::set_font_size(Control *control, int size) {
    control->set_meta(TM_NAME("text_size"), size);
    apply_size(control, size);
}

void UI::fit_width(Control *control, double width) {
    const Button *button = Object::cast_to<Button>(control);
    const Label *label = Object::cast_to<Label>(control);
    if ((button == nullptr && label == nullptr) || !control->has_meta(TM_NAME("text_size"))) {
        return;
    }
    const String raw = button != nullptr ? button->get_text() : label->get_text();
    const String text = control->can_auto_translate() ? Lang::t(raw) : raw;
    int size = static_cast<int>(static_cast<int64_t>(control->get_meta(TM_NAME("text_size"))));
    constexpr int least = 16;
    while (size > least && text_width(text, size) > width) {
        --size;
    }
    set_font_size(control, size);
}

Vector4 UI::margins_of(const Vector2 &window, const Rect2 &safe, const Vector2 &screen) {
    if (window.x < 1.0f || window.y < 1.0f || safe.size.x < 1.0f || safe.size.y < 1.0f) {
        return Vector4();
    }
    const Vector2 k = screen / window;
    const Vector2 end = safe.position + safe.size;
    const auto inside = [](float v, float most) { return std::clamp(v, 0.0f, most * 0.25f); };
    return Vector4(inside(safe.position.x * k.x, screen.x), inside(safe.position.y * k.y, screen.y),
                   inside((window.x - end.x) * k.x, screen.x), inside((window.y - end.y) * k.y, screen.y));
}

Vector4 UI::safe_margins(const Vector2 &screen) {
    // On a desktop the safe area is that of the monitor, not of the window.
    if (!OS::get_singleton()->has_feature("mobile")) {
        return Vector4();
    }
    const DisplayServer *display = DisplayServer::get_singleton();
    const Rect2i safe = display->get_display_safe_area();
    return margins_of(Vector2(display->window_get_size()), Rect2(Vector2(safe.position), Vector2(safe.size)), screen);
}

void UI::let_focus(Node *content, bool on) {
    if (Control *control = Object::cast_to<Control>(content)) {
        const bool reachable = Object::cast_to<BaseButton>(control) != nullptr ||
                               Object::cast_to<LineEdit>(control) != nullptr || control->has_meta(TM_NAME("keys"));
        if (reachable) {
            control->set_focus_mode(on ? Control::FOCUS_ALL : Control::FOCUS_NONE);
        }
        if (ScrollContainer *scroll = Object::cast_to<ScrollContainer>(control)) {
            scroll->set_follow_focus(true);
        }
    }
    for (int i = 0; i < content->get_child_count(); ++i) {
        let_focus(content->get_child(i), on);
    }
}

} // namespace tilm
