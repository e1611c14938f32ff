#include "game/shell/loading.h"

#include <algorithm>

#include <godot_cpp/classes/center_container.hpp>
#include <godot_cpp/classes/h_box_container.hpp>
#include <godot_cpp/classes/random_number_generator.hpp>
#include <godot_cpp/classes/style_box_flat.hpp>
#include <godot_cpp/classes/texture_rect.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/classes/v_box_container.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/interface/menu.h"
#include "game/interface/title_scene.h"
#include "game/kit/lang.h"
#include "game/kit/ui.h"
#include "game/ports/store.h"
#include "game/shell/warm_list.h"
#include "game/shell/world.h"
#include "game/shell/world_options.h"
#include "names.h"
#include "safe_read.h"

namespace tilm {
namespace {

constexpr uint64_t kBudget = 11999; // microseconds of work in a frame
constexpr double kStarTurn = 0.06;  // radians a frame
constexpr double kBarFoot = 0.04;   // the bar is never empty
constexpr double kFade = 0.35;      // seconds

const char *const kTips[] = {
    "TIP: UPGRADE FACTORIES FOR SPEED AND BIGGER INPUT",
    "TIP: HELPERS LEVEL UP AS THEY WORK",
    "TIP: HAPPY CUSTOMERS PAY MORE",
    "TIP: FILL TRUCK ORDERS FAST FOR STARS",
    "TIP: GOLDEN EGGS ARE WORTH A LOT",
    "TIP: RAIN MAKES CROPS GROW FASTER",
    "TIP: HIRE SERVICE WORKERS EARLY TO FIX BREAKDOWNS",
    "TIP: SERVICE WORKERS FIX FASTER AS THEY LEVEL UP",
    "TIP: A GIFT BOX EVERY 20 MINUTES OF PLAY",
    "TIP: MORE GOLDEN EGGS = MORE PER EGG",
    "TIP: TAP A TRUCK ON THE MAP TO GO THERE",
};

} // namespace

void Loading::_bind_methods() {
    ADD_SIGNAL(MethodInfo("build_world"));
    ClassDB::bind_method(D_METHOD("get_shown"), &Loading::get_shown);
    ClassDB::bind_method(D_METHOD("get_stage"), &Loading::get_stage);
    ClassDB::bind_method(D_METHOD("get_task_count"), &Loading::get_task_count);
}

void Loading::_ready() {
    if (in_editor()) {
        return;
    }
    set_layer(120);
    set_process_mode(PROCESS_MODE_ALWAYS);
    build_display();
    plan();
}

void Loading::build_display() {
    screen = memnew(Control);
    screen->set_anchors_preset(Control::PRESET_FULL_RECT);
    screen->set_layout_direction(Control::LAYOUT_DIRECTION_LTR);
    screen->set_theme(UI::theme());
    screen->set_mouse_filter(Control::MOUSE_FILTER_STOP);
    add_child(screen);

    backdrop = TitleScene::backdrop();
    if (backdrop != nullptr) {
        screen->add_child(backdrop);
    }

    CenterContainer *top = memnew(CenterContainer);
    top->set_anchors_preset(Control::PRESET_FULL_RECT);
    top->set_offset(SIDE_TOP, 120);
    top->set_offset(SIDE_BOTTOM, -460);
    screen->add_child(top);
    if (Control *logo = Menu::logo(1.0)) {
        top->add_child(logo);
    }

    VBoxContainer *column = memnew(VBoxContainer);
    column->set_anchors_preset(Control::PRESET_BOTTOM_WIDE);
    column->set_offset(SIDE_TOP, -400);
    column->set_offset(SIDE_BOTTOM, -120);
    column->set_offset(SIDE_LEFT, 60);
    column->set_offset(SIDE_RIGHT, -60);
    column->add_theme_constant_override("separation", 26);
    screen->add_child(column);

    HBoxContainer *row = memnew(HBoxContainer);
    row->set_alignment(BoxContainer::ALIGNMENT_CENTER);
    row->add_theme_constant_override("separation", 18);
    column->add_child(row);
    TextureRect *icon = UI::icon_rect("star", 52);
    if (icon != nullptr) {
        icon->set_pivot_offset(Vector2(26, 26));
        row->add_child(icon);
        star = icon;
    }
    label = UI::label("LOADING 0%", 36);
    row->add_child(label);

    Panel *track = memnew(Panel);
    track->set_custom_minimum_size(Vector2(0, 40));
    track->add_theme_stylebox_override("panel", UI::box(Color(0.08f, 0.10f, 0.18f, 0.75f), 20));
    column->add_child(track);
    Panel *fill = memnew(Panel);
    fill->add_theme_stylebox_override("panel", UI::box(UI::hex("ffd54f"), 16));
    fill->set_anchors_preset(Control::PRESET_FULL_RECT);
    fill->set_anchor(SIDE_RIGHT, kBarFoot, true);
    fill->set_offset(SIDE_LEFT, 4);
    fill->set_offset(SIDE_TOP, 4);
    fill->set_offset(SIDE_RIGHT, -4);
    fill->set_offset(SIDE_BOTTOM, -4);
    track->add_child(fill);
    bar = fill;

    const int64_t pick = UtilityFunctions::randi() % std::size(kTips);
    Label *tip = UI::label(kTips[pick], 26, UI::hex("c5e1a5"));
    tip->set_autowrap_mode(TextServer::AUTOWRAP_WORD_SMART);
    column->add_child(tip);
}

void Loading::add_task(const String &name, std::function<void()> run) {
    if (planned.has(name)) {
        return;
    }
    planned[name] = true;
    tasks.push_back({name, std::move(run)});
}

void Loading::plan() {
    const warm_list::Add add = [this](const String &name, std::function<void()> run) {
        add_task(name, std::move(run));
    };
    warm_list::common(add);
    const Store *store = Store::current();
    const Dictionary saved = store != nullptr ? store->farm_doc() : Dictionary();
    warm_list::entries(add, read_table(saved, "levels"), WorldOptions::get().max_farm);
    flow.plan_tasks(static_cast<int>(tasks.size()));
}

void Loading::run_tasks(uint64_t frame_start) {
    Time *clock = Time::get_singleton();
    while (next_task < tasks.size() && clock->get_ticks_usec() - frame_start <= kBudget) {
        tasks[next_task++].run();
        flow.task_done();
    }
}

bool Loading::step_world() {
    World *world = World::under_construction();
    return world == nullptr || world->build_step();
}

void Loading::_process(double delta) {
    if (in_editor()) {
        return;
    }
    using Stage = rules::LoadingFlow::Stage;
    using Order = rules::LoadingFlow::Order;
    const uint64_t frame_start = Time::get_singleton()->get_ticks_usec();
    if (flow.stage() == Stage::WarmUp) {
        run_tasks(frame_start);
    }
    const bool world_ready = flow.stage() == Stage::WorldBuild && step_world();
    const Order order = flow.step(next_task < tasks.size(), world_ready);
    if (order == Order::MakeWorld) {
        emit_signal(TM_NAME("build_world"));
    } else if (order == Order::Fade) {
        fade();
    }
    show_progress(delta);
}

void Loading::show_progress(double delta) {
    const World *world = World::under_construction();
    flow.show(delta, world != nullptr, world != nullptr ? world->build_progress() : 0.0);
    bar->set_anchor(SIDE_RIGHT, static_cast<float>(std::max(kBarFoot, flow.shown())), true);
    if (star != nullptr) {
        star->set_rotation(star->get_rotation() + static_cast<float>(kStarTurn));
    }
    if (flow.percent() != shown_percent) {
        shown_percent = flow.percent();
        label->set_text(vformat("LOADING %d%%", shown_percent));
    }
}

void Loading::fade() {
    const Ref<Tween> tween = create_tween();
    tween->tween_property(screen, NodePath("modulate:a"), 0.0, kFade);
    tween->tween_callback(callable_mp(this, &Loading::finish));
}

void Loading::finish() {
    if (backdrop != nullptr) {
        backdrop->queue_free();
        backdrop = nullptr;
    }
    TitleScene::release();
    queue_free();
}

} // namespace tilm
