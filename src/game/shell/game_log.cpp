#include "game/shell/game_log.h"

#include <godot_cpp/classes/dir_access.hpp>
#include <godot_cpp/classes/display_server.hpp>
#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/classes/performance.hpp>
#include <godot_cpp/classes/project_settings.hpp>
#include <godot_cpp/classes/rendering_server.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "names.h"

namespace tilm {
namespace {

constexpr double kEvery = 5.0; // seconds between lines of figures
constexpr int64_t kMiB = 1024 * 1024;

String log_name(const char *part, bool previous) {
    return String("Tilmarch_") + part + (previous ? "_previous.txt" : ".txt");
}

void rotate(const String &dir, const char *part) {
    const String now = dir.path_join(log_name(part, false));
    const String previous = dir.path_join(log_name(part, true));
    if (!FileAccess::file_exists(now)) {
        return;
    }
    if (FileAccess::file_exists(previous)) {
        DirAccess::remove_absolute(previous);
    }
    DirAccess::rename_absolute(now, previous);
}

bool can_write_in(const String &dir) {
    DirAccess::make_dir_recursive_absolute(dir);
    const String probe = dir.path_join(".write_test");
    const Ref<FileAccess> file = FileAccess::open(probe, FileAccess::WRITE);
    if (file.is_null()) {
        return false;
    }
    file->close();
    DirAccess::remove_absolute(probe);
    return true;
}

String joined(const PackedStringArray &words) {
    return String(" ").join(words);
}

} // namespace

GameLog *GameLog::s_instance = nullptr;

GameLog::GameLog() {
    s_instance = this;
}

GameLog::~GameLog() {
    if (s_instance == this) {
        s_instance = nullptr;
    }
}

void GameLog::_bind_methods() {
    ClassDB::bind_method(D_METHOD("line", "msg"), &GameLog::line);
    ClassDB::bind_method(D_METHOD("get_dir"), &GameLog::get_dir);
    ClassDB::bind_method(D_METHOD("open_in", "folder"), &GameLog::open_in);
}

void GameLog::_ready() {
    if (in_editor()) {
        return;
    }
    if (!OS::get_singleton()->has_feature("pc")) {
        set_process(false);
        return;
    }
    set_process_mode(PROCESS_MODE_ALWAYS);
    engine_log = ProjectSettings::get_singleton()->get_setting("debug/file_logging/log_path", "user://logs/godot.log");
    if (!open_in(choose_dir())) {
        set_process(false);
        return;
    }
    start_block();
    copy_engine_log();
}

String GameLog::choose_dir() const {
    if (OS::get_singleton()->has_feature("template")) {
        const String beside = OS::get_singleton()->get_executable_path().get_base_dir().path_join("logs");
        if (can_write_in(beside)) {
            return beside;
        }
    }
    return ProjectSettings::get_singleton()->globalize_path("user://logs");
}

bool GameLog::open_in(const String &folder) {
    dir = folder;
    DirAccess::make_dir_recursive_absolute(dir);
    rotate(dir, "engine_log");
    rotate(dir, "log");
    copied = -1;
    file = FileAccess::open(dir.path_join(log_name("log", false)), FileAccess::WRITE);
    if (file.is_null()) {
        UtilityFunctions::print("TILMARCH no log: ", dir, " cannot be written");
        return false;
    }
    return true;
}

void GameLog::line(const String &msg) {
    if (file.is_null()) {
        return;
    }
    file->store_line(vformat("[%s] %s", Time::get_singleton()->get_time_string_from_system(), msg));
    file->flush();
}

void GameLog::start_block() {
    OS *os = OS::get_singleton();
    DisplayServer *display = DisplayServer::get_singleton();
    RenderingServer *rendering = RenderingServer::get_singleton();
    ProjectSettings *settings = ProjectSettings::get_singleton();
    const Dictionary memory = os->get_memory_info();
    const auto mib = [&memory](const char *key) { return int64_t(memory.get(key, 0)) / kMiB; };

    line("===== Tilmarch started =====");
    line(vformat("date: %s", Time::get_singleton()->get_datetime_string_from_system(false, true)));
    line(vformat("game: %s  godot: %s  debug_build: %s", settings->get_setting("application/config/version", "dev"),
                 Engine::get_singleton()->get_version_info().get("string", ""), os->is_debug_build()));
    line(vformat("os: %s %s  locale: %s", os->get_name(), os->get_version(), os->get_locale()));
    line(vformat("cpu: %s  cores: %d", os->get_processor_name(), os->get_processor_count()));
    line(vformat("ram: %d MB total, %d MB free", mib("physical"), mib("available")));
    line(vformat("gpu: %s | %s", rendering->get_video_adapter_name(), rendering->get_video_adapter_vendor()));
    line(vformat("gpu driver: %s", joined(os->get_video_adapter_driver_info())));
    line(vformat("graphics api: %s  renderer: %s", rendering->get_video_adapter_api_version(),
                 settings->get_setting("rendering/renderer/rendering_method", "")));
    line(vformat("screen: %s @ %.0f Hz, scale %.2f  window: %s", display->screen_get_size(),
                 display->screen_get_refresh_rate(), display->screen_get_scale(), display->window_get_size()));
    line(vformat("exe: %s", os->get_executable_path()));
    line(vformat("save/user dir: %s", os->get_user_data_dir()));
    PackedStringArray args = os->get_cmdline_args();
    args.append_array(os->get_cmdline_user_args());
    line(vformat("args: %s", joined(args)));
    line(vformat("log dir: %s", dir));
}

void GameLog::copy_engine_log() {
    if (file.is_null() || !FileAccess::file_exists(engine_log)) {
        return;
    }
    const Ref<FileAccess> from = FileAccess::open(engine_log, FileAccess::READ);
    if (from.is_null() || static_cast<int64_t>(from->get_length()) == copied) {
        return;
    }
    const Ref<FileAccess> to = FileAccess::open(dir.path_join(log_name("engine_log", false)), FileAccess::WRITE);
    if (to.is_valid()) {
        copied = static_cast<int64_t>(from->get_length());
        to->store_buffer(from->get_buffer(copied));
    }
}

void GameLog::_process(double delta) {
    timer += delta;
    if (timer < kEvery || file.is_null()) {
        return;
    }
    timer = 0.0;
    Performance *performance = Performance::get_singleton();
    const Node *scene = get_tree()->get_current_scene();
    line(vformat("fps %d  mem %d MB  nodes %d  draw_calls %d  scene %s",
                 static_cast<int64_t>(Engine::get_singleton()->get_frames_per_second()),
                 static_cast<int64_t>(OS::get_singleton()->get_static_memory_usage()) / kMiB,
                 static_cast<int64_t>(performance->get_monitor(Performance::OBJECT_NODE_COUNT)),
                 static_cast<int64_t>(performance->get_monitor(Performance::RENDER_TOTAL_DRAW_CALLS_IN_FRAME)),
                 scene != nullptr ? String(scene->get_name()) : String("-")));
    copy_engine_log();
}

void GameLog::_notification(int what) {
    switch (what) {
    case NOTIFICATION_WM_CLOSE_REQUEST:
        line("close requested");
        break;
    case NOTIFICATION_APPLICATION_FOCUS_IN:
        line("window focused");
        break;
    case NOTIFICATION_APPLICATION_FOCUS_OUT:
        line("window lost focus");
        break;
    case NOTIFICATION_CRASH:
        line("CRASH");
        copy_engine_log();
        break;
    case NOTIFICATION_PREDELETE:
        line("===== Tilmarch closed normally =====");
        copy_engine_log();
        break;
    default:
        break;
    }
}

} // namespace tilm
