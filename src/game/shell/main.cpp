#include "game/shell/main.h"

#include <algorithm>

#include <godot_cpp/classes/audio_server.hpp>
#include <godot_cpp/classes/camera3d.hpp>
#include <godot_cpp/classes/dir_access.hpp>
#include <godot_cpp/classes/display_server.hpp>
#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/image.hpp>
#include <godot_cpp/classes/input_event_key.hpp>
#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/viewport_texture.hpp>
#include <godot_cpp/classes/window.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/interface/hud.h"
#include "game/interface/menu.h"
#include "game/kit/lang.h"
#include "game/shell/farm_scan.h"
#include "game/shell/loading.h"
#include "game/shell/save.h"
#include "game/shell/world.h"
#include "game/shell/world_options.h"
#include "names.h"
#include "statics.h"

namespace tilm {
namespace {

constexpr int kMaxFitDepth = 4;
const Vector2i kWide(720, 1250);
const Vector2i kTall(720, 1560);
constexpr int64_t kMaxFarmMoney = 3000000000;

String *s_shot_folder = nullptr; // empty: no screenshots

Object *system_plugin() {
    Engine *engine = Engine::get_singleton();
    const StringName &name = TM_NAME("FarmNet");
    return engine->has_singleton(name) ? engine->get_singleton(name) : nullptr;
}

void log_line(const String &text) {
    UtilityFunctions::print("TILMARCH ", text);
}

} // namespace

Main::Main() = default;
Main::~Main() = default;

void Main::setup_statics() {
    s_shot_folder = new String();
    Statics::on_release([]() { *s_shot_folder = String(); });
}

void Main::_bind_methods() {
    ClassDB::bind_method(D_METHOD("_start"), &Main::_start);
    ClassDB::bind_method(D_METHOD("_start_world"), &Main::_start_world);
    ClassDB::bind_method(D_METHOD("_show_menu"), &Main::_show_menu);
    ClassDB::bind_method(D_METHOD("_end_visit"), &Main::_end_visit);
    ClassDB::bind_method(D_METHOD("_visit", "peer", "farm"), &Main::_visit);
    ClassDB::bind_method(D_METHOD("_fit_ui"), &Main::_fit_ui);
    ClassDB::bind_method(D_METHOD("_maximize"), &Main::_maximize);
    ClassDB::bind_method(D_METHOD("_noproc_node", "n"), &Main::_noproc_node);
    ClassDB::bind_method(D_METHOD("_labelscan"), &Main::_labelscan);
    ClassDB::bind_method(D_METHOD("_moves"), &Main::_moves);
    ClassDB::bind_method(D_METHOD("_tris"), &Main::_tris);
    ClassDB::bind_method(D_METHOD("_census"), &Main::_census);
    ClassDB::bind_method(D_METHOD("_pick_switch_test"), &Main::_pick_switch_test);
    ClassDB::bind_method(D_METHOD("get_current"), &Main::get_current);
    ClassDB::bind_method(D_METHOD("get_host"), &Main::get_host);
}

void Main::_ready() {
    if (in_editor()) {
        return;
    }
    scan = std::make_unique<FarmScan>();
    SceneTree *tree = get_tree();
    tree->set_auto_accept_quit(false);
    tree->set_quit_on_go_back(false);

    if (Node *net = tree->get_root()->get_node_or_null(NodePath("Net"))) {
        if (net->has_signal(TM_NAME("visit_ready"))) {
            net->connect(TM_NAME("visit_ready"), callable_mp(this, &Main::_visit), CONNECT_DEFERRED);
        }
    }
    hold_window();
    read_options();
    apply_options();
    if (!s_shot_folder->is_empty()) {
        make_shot_viewport();
    }
    tree->get_root()->connect(TM_NAME("size_changed"), callable_mp(this, &Main::_fit_ui));
    _fit_ui();
    if (options.start) {
        _start();
    } else {
        _show_menu();
    }
}

// A desktop window opens maximized, unless it is already full or a film of a given size is made.
void Main::hold_window() {
    OS *os = OS::get_singleton();
    if (!os->has_feature("pc") || os->get_cmdline_args().has("--write-movie")) {
        return;
    }
    if (DisplayServer::get_singleton()->window_get_mode() != DisplayServer::WINDOW_MODE_FULLSCREEN) {
        callable_mp(this, &Main::_maximize).call_deferred();
    }
}

void Main::_maximize() {
    // One frame later: some window managers ignore a request made before the window is on the screen.
    const auto set_mode = [](DisplayServer::WindowMode mode) { DisplayServer::get_singleton()->window_set_mode(mode); };
    if (maximize_asked) {
        set_mode(DisplayServer::WINDOW_MODE_WINDOWED);
        set_mode(DisplayServer::WINDOW_MODE_MAXIMIZED);
        maximize_asked = false;
        return;
    }
    maximize_asked = true;
    get_tree()->connect(TM_NAME("process_frame"), callable_mp(this, &Main::_maximize), CONNECT_ONE_SHOT);
}

void Main::read_options() {
    PackedStringArray words;
    if (Save *save = Save::get()) {
        words = save->arguments();
    } else {
        words = OS::get_singleton()->get_cmdline_user_args();
    }
    std::vector<std::string> list;
    for (int64_t i = 0; i < words.size(); ++i) {
        list.emplace_back(words[i].utf8().get_data());
    }
    options = rules::parse_options(list);
    for (const std::string &problem : options.problems) {
        log_line(String::utf8(problem.c_str()));
    }
    for (const std::string &name : options.idle) {
        log_line(vformat("option %s has no effect yet", String::utf8(name.c_str())));
    }
}

void Main::apply_options() {
    if (options.given && !options.sound) {
        AudioServer::get_singleton()->set_bus_mute(0, true);
    }
    WorldOptions &world_options = WorldOptions::get();
    world_options = WorldOptions();
    world_options.max_farm = options.max_farm;
    world_options.hide_player = options.hide_player;
    world_options.autoplay = options.autoplay;
    world_options.coffee = options.coffee;
    world_options.annex = options.annex;
    world_options.tutorial = options.tutorial;
    world_options.at_x = options.at_x;
    world_options.at_z = options.at_z;
    world_options.zoom = options.zoom;
    world_options.stage = options.stage;
    world_options.money = options.money;
    world_options.away = options.away;
    world_options.day_clock = options.day_clock;
    apply_farm_steps();

    if (!options.tab.empty()) {
        Hud::set_start_tab(String::utf8(options.tab.c_str()));
    }
    if (options.time_scale) {
        Engine::get_singleton()->set_time_scale(*options.time_scale);
    }
    if (options.scale_3d) {
        get_tree()->get_root()->set_scaling_3d_scale(static_cast<float>(*options.scale_3d));
    }
    if (options.no_vsync) {
        DisplayServer::get_singleton()->window_set_vsync_mode(DisplayServer::VSYNC_DISABLED);
    }
    *s_shot_folder = String::utf8(options.shots.c_str());
    if (!options.visit_save.empty()) {
        after(3.0, callable_mp(this, &Main::open_visit_save));
    }
}

void Main::apply_farm_steps() {
    Save *save = Save::get();
    if (save == nullptr) {
        return;
    }
    Dictionary farm = save->get_data(); // shared: what is written here is the active farm
    for (const rules::FarmStep step : options.farm_steps) {
        if (step == rules::FarmStep::Clear) {
            farm.clear();
        } else {
            farm["money"] = kMaxFarmMoney;
        }
    }
}

Node *Main::get_current() const {
    return Object::cast_to<Node>(ObjectDB::get_instance(current_id));
}

Node *Main::get_host() const {
    return viewport != nullptr ? static_cast<Node *>(viewport) : const_cast<Main *>(this);
}

World *Main::world() const {
    return Object::cast_to<World>(get_current());
}

void Main::swap(Node *next) {
    get_tree()->set_pause(false);
    if (Node *old = get_current()) {
        old->queue_free();
    }
    current_id = next->get_instance_id();
    get_host()->add_child(next);
}

void Main::_start() {
    const Loading *running = Object::cast_to<Loading>(ObjectDB::get_instance(loading_id));
    if (running != nullptr && running->is_before_world()) {
        return; // a second press while the first is being answered
    }
    Loading *loading = memnew(Loading);
    loading->connect(TM_NAME("build_world"), callable_mp(this, &Main::_start_world));
    loading_id = loading->get_instance_id();
    get_host()->add_child(loading);
}

void Main::_start_world() {
    if (World *old = world()) {
        old->save_now(); // its own save on leaving comes only after the new farm has read the document
    }
    World *farm = memnew(World);
    farm->set_name("World");
    farm->connect(TM_NAME("go_home"), callable_mp(this, &Main::_end_visit), CONNECT_DEFERRED);
    farm->connect(TM_NAME("go_menu"), callable_mp(this, &Main::_show_menu), CONNECT_DEFERRED);
    farm->connect(TM_NAME("go_reload"), callable_mp(this, &Main::_start), CONNECT_DEFERRED);
    farm->connect(TM_NAME("built"),
                  callable_mp(this, &Main::_world_built).bind(static_cast<int64_t>(farm->get_instance_id())),
                  CONNECT_DEFERRED);
    swap(farm);
}

void Main::_show_menu() {
    leave_visit_state();
    Menu *menu = memnew(Menu);
    menu->set_name("Menu");
    menu->connect(TM_NAME("play_pressed"), callable_mp(this, &Main::_start), CONNECT_DEFERRED);
    swap(menu);
}

void Main::leave_visit_state() {
    Save *save = Save::get();
    if (save != nullptr && save->is_visiting()) {
        save->leave_visit();
    }
    WorldOptions::get().visit_peer = 0;
}

void Main::_end_visit() {
    leave_visit_state();
    _start();
}

void Main::_visit(int64_t peer, const Dictionary &farm) {
    WorldOptions &world_options = WorldOptions::get();
    World *mine = world();
    if (mine != nullptr && world_options.visit_peer == 0) {
        mine->save_now();
    }
    if (Save *save = Save::get()) {
        save->enter_visit(farm);
    }
    world_options.visit_peer = static_cast<int>(peer);
    _start();
}

void Main::_fit_ui() {
    Window *window = get_tree()->get_root();
    const Vector2i size = window->get_size();
    const Vector2i wanted = size.x > size.y ? kWide : kTall;
    if (window->get_content_scale_size() == wanted || fit_depth >= kMaxFitDepth) {
        return;
    }
    // Setting the size may change the window's and bring us back here.
    ++fit_depth;
    window->set_content_scale_size(wanted);
    --fit_depth;
}

void Main::_input(const Ref<InputEvent> &event) {
    const Ref<InputEventKey> key = event;
    if (key.is_null() || !key->is_pressed() || key->is_echo() || key->get_keycode() != KEY_F11) {
        return;
    }
    DisplayServer *display = DisplayServer::get_singleton();
    const bool full = display->window_get_mode() == DisplayServer::WINDOW_MODE_FULLSCREEN;
    display->window_set_mode(full ? DisplayServer::WINDOW_MODE_MAXIMIZED : DisplayServer::WINDOW_MODE_FULLSCREEN);
}

void Main::make_shot_viewport() {
    set_process_mode(PROCESS_MODE_ALWAYS);
    const Error made = DirAccess::make_dir_recursive_absolute(*s_shot_folder);
    if (made != OK) {
        log_line(vformat("no screenshots: folder %s cannot be made (error %d)", *s_shot_folder, made));
        *s_shot_folder = String();
        return;
    }
    viewport = memnew(SubViewport);
    viewport->set_name("Shots");
    viewport->set_size(Vector2i(options.shot_width, options.shot_height));
    viewport->set_size_2d_override(options.shot_width > options.shot_height ? kWide : kTall);
    viewport->set_size_2d_override_stretch(true);
    viewport->set_update_mode(SubViewport::UPDATE_ALWAYS);
    viewport->set_msaa_3d(Viewport::MSAA_2X);
    add_child(viewport);
}

void Main::_process(double delta) {
    if (s_shot_folder == nullptr || s_shot_folder->is_empty() || viewport == nullptr) {
        return;
    }
    shot_timer += delta / std::max(0.01, Engine::get_singleton()->get_time_scale());
    if (shot_timer >= options.every) {
        shot_timer = 0.0;
        take_shot();
    }
}

void Main::take_shot() {
    ++shot_count;
    const Ref<Image> image = viewport->get_texture()->get_image();
    if (image.is_null() || image->is_empty()) {
        log_line("no screenshot: this display draws nothing");
        return;
    }
    const Error saved = image->save_png(vformat("%s/shot_%03d.png", *s_shot_folder, shot_count));
    if (saved != OK) {
        log_line(vformat("screenshot %d was not saved (error %d)", shot_count, saved));
        return;
    }
    if (const Camera3D *camera = viewport->get_camera_3d()) {
        UtilityFunctions::print("shot ", shot_count, " cam ", camera->get_global_position(), " fov ", camera->get_fov(),
                                " cur ", camera->get_name());
    } else {
        UtilityFunctions::print("shot ", shot_count);
    }
}

void Main::_notification(int what) {
    if (!is_inside_tree() || in_editor()) {
        return;
    }
    switch (what) {
    case NOTIFICATION_WM_CLOSE_REQUEST:
        get_tree()->quit();
        break;
    case NOTIFICATION_WM_GO_BACK_REQUEST:
        if (Object::cast_to<Menu>(get_current()) != nullptr) {
            get_tree()->quit();
        }
        break;
    case NOTIFICATION_APPLICATION_PAUSED:
        on_paused();
        break;
    case NOTIFICATION_APPLICATION_RESUMED:
        on_resumed();
        break;
    default:
        break;
    }
}

// The player leaves: the system shall remind him. Only where the phone's plugin is there.
void Main::on_paused() {
    Object *plugin = system_plugin();
    Save *save = Save::get();
    if (plugin == nullptr || save == nullptr || world() == nullptr || WorldOptions::get().visit_peer != 0 ||
        !save->get_notify_on()) {
        return;
    }
    if (!save->get_notify_asked()) {
        save->set_notify_asked(true);
        save->write();
        plugin->call(TM_NAME("notifyAsk"));
    }
    plugin->call(TM_NAME("notifySet"), 1, "Tilmarch", Lang::t("YOUR WAREHOUSE IS FULL, COME COLLECT"), 28800);
    const Variant gifts = save->get_data().get("gifts", Variant());
    if (gifts.get_type() == Variant::DICTIONARY) {
        const Variant waiting = Dictionary(gifts).get("waiting", Variant());
        if (waiting.get_type() == Variant::ARRAY && !Array(waiting).is_empty()) {
            plugin->call(TM_NAME("notifySet"), 2, "Tilmarch", Lang::t("A GIFT IS WAITING FOR YOU"), 7200);
        }
    }
}

void Main::on_resumed() {
    if (Object *plugin = system_plugin()) {
        plugin->call(TM_NAME("notifyClear"));
    }
}

} // namespace tilm
