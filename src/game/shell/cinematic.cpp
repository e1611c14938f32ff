#include "game/shell/cinematic.h"

#include <algorithm>

#include <godot_cpp/classes/viewport.hpp>

#include "game/kit/ui.h"
#include "game/shell/farm_camera.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double LAND_SECONDS = 2.6;
constexpr double INTRO_SECONDS = 3.2;
constexpr double UNSKIPPED_SECONDS = 0.8;
constexpr double BAR_SECONDS = 0.35; // in and out
constexpr float BAR_SHARE = 0.085f;  // of the screen's height, each
constexpr float LAND_WIDE = 1.3f;
constexpr float INTRO_WIDE = 2.2f;

} // namespace

void Cinematic::_bind_methods() {
    ClassDB::bind_method(D_METHOD("is_playing"), &Cinematic::is_playing);
    ClassDB::bind_method(D_METHOD("get_region"), &Cinematic::get_region);
    ClassDB::bind_method(D_METHOD("skip"), &Cinematic::skip);
    ClassDB::bind_method(D_METHOD("play_land", "region", "title", "at"), &Cinematic::play_land);
    ClassDB::bind_method(D_METHOD("play_intro", "at"), &Cinematic::play_intro);
    ADD_SIGNAL(MethodInfo("ended", PropertyInfo(Variant::STRING, "region")));
}

void Cinematic::play_land(const String &id, const String &title, const Vector3 &at) {
    if (is_playing()) {
        end();
    }
    region = id;
    start(LAND_SECONDS, title);
    if (eye) {
        eye->focus(at, LAND_SECONDS);
        eye->set_wide(LAND_WIDE);
    }
}

void Cinematic::play_intro(const Vector3 &at) {
    if (is_playing()) {
        end();
    }
    region = String();
    start(INTRO_SECONDS, "TILMARCH");
    if (eye) {
        eye->set_wide(INTRO_WIDE);
        eye->place(at);
        eye->set_wide(1.0f);
    }
}

void Cinematic::start(double seconds, const String &title) {
    total = left = seconds;
    show_bars(title);
}

void Cinematic::show_bars(const String &title) {
    layer = memnew(CanvasLayer);
    layer->set_layer(9); // below the bars of the interface
    add_child(layer);
    for (ColorRect **bar : {&top, &bottom}) {
        *bar = memnew(ColorRect);
        (*bar)->set_color(Color(0.05f, 0.07f, 0.12f, 0.92f));
        (*bar)->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
        layer->add_child(*bar);
    }
    label = UI::label(title, 56, UI::hex("ffd54f"));
    label->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    layer->add_child(label);
    lay_bars();
}

void Cinematic::lay_bars() {
    if (!is_inside_tree()) {
        return;
    }
    const Vector2 screen = get_viewport()->get_visible_rect().size;
    const double passed = total - left;
    const float open = static_cast<float>(std::clamp(std::min(passed, left) / BAR_SECONDS, 0.0, 1.0));
    const float height = screen.y * BAR_SHARE * open;
    top->set_size(Vector2(screen.x, height));
    bottom->set_size(Vector2(screen.x, height));
    bottom->set_position(Vector2(0, screen.y - height));
    label->set_size(Vector2(screen.x, 90));
    label->set_position(Vector2(0, screen.y * 0.24f));
    label->set_modulate(Color(1, 1, 1, open));
}

void Cinematic::_process(double delta) {
    if (left <= 0) {
        return;
    }
    left -= delta;
    if (left <= 0) {
        end();
    } else {
        lay_bars();
    }
}

void Cinematic::skip() {
    if (is_playing() && total - left >= UNSKIPPED_SECONDS) {
        end();
    }
}

void Cinematic::end() {
    left = 0;
    layer->queue_free();
    layer = nullptr;
    if (eye) {
        eye->set_wide(1.0f);
        eye->focus(Vector3(), 0);
    }
    emit_signal(TM_NAME("ended"), region);
}

} // namespace tilm
